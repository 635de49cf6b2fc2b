// SPDX-License-Identifier: MIT
//
// The inverse of the bilinear map of a quadrilateral.
//
// With the corners numbered around it, a point is P0 + u (P1 - P0) + v (P3 - P0) + u v (P2 - P3 -
// P1 + P0). Given the point, v is a root of P v^2 + Q v + R = 0, u follows from v, and the value is
// interpolated at (u, v).
#pragma once

#include <cstdint>

namespace quorix {

// The coefficients that do not depend on the point.
struct QuadMap {
  double x0, y0, c0;
  double a1, b1, c1;
  double a2, b2, c2;
  double a3, b3, c3;
  double p;
};

inline constexpr int32_t outside_quad = -1;

QuadMap quad_map(const int32_t *xs, const int32_t *ys, const int32_t *cs);

// The value at a pixel, or outside_quad where the map does not reach it.
int32_t quad_value(const QuadMap &m, int32_t x, int32_t y);

}  // namespace quorix
