// SPDX-License-Identifier: MIT
//
// The pen that lines are drawn with, and the polyline that its moves gather into.
#pragma once

#include <cstdint>

namespace quorix {

enum LineCap : int32_t { cap_butt = 0, cap_round = 1, cap_square = 2 };
enum LineJoin : int32_t { join_miter = 0, join_round = 1, join_bevel = 2 };

struct Pen {
  int32_t line_width;  // below 2: one pixel
  int32_t line_cap;    // LineCap
  int32_t line_join;   // LineJoin
  uint8_t line_smooth_on;
};

inline constexpr int32_t poly_capacity = 100;

struct Accumulator {
  int32_t poly_x[poly_capacity], poly_y[poly_capacity];
  int32_t poly_count;
  uint8_t poly_pen_up;  // the one gathered point is a start point, not a dot
};

}  // namespace quorix
