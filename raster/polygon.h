// SPDX-License-Identifier: MIT
//
// One edge of a polygon as the fillers prepare it.
#pragma once

#include <cstdint>

#include "raster/raster.h"

namespace quorix {

inline constexpr double flat_edge = 0.01;   // edges of less height cross at their first corner
inline constexpr double quick_range = 1e6;  // within it the reciprocal errs by less than 1e-8
inline constexpr double doubtful = 1e-6;

struct PolygonEdge {
  double x, y;          // first corner, in edge order
  double dx, dy;        // to the second
  double slope;         // dx / dy, where `quick`
  int32_t first, last;  // rows it crosses
  int32_t order;
  bool flat;
  bool quick;
};

PolygonEdge make_polygon_edge(double xi, double yi, double xj, double yj, int32_t first,
                              int32_t last, int32_t order);

}  // namespace quorix
