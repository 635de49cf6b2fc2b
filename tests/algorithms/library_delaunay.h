// SPDX-License-Identifier: MIT
//
// Calls qqdlau with arrays that show what was written beyond their ends.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/algorithms/literal_delaunay.h"

namespace quorix::testing {

// What stands in every coordinate and triangle entry that nobody has written.
constexpr double untouched_coordinate = -7777.25;
constexpr int32_t untouched_vertex = -7777;

// The points, followed by three untouched coordinates.
std::vector<double> with_room(std::vector<double> points);

struct LibraryTriangulation {
  int32_t result = -1;
  literal::Triangulation triangulation;  // triangles: as many as ntri says
  int32_t ntri = -1;
  size_t written = 0;  // entries at the start of the triangle arrays up to the last one changed
  std::string damage;  // what was written where nothing may be; empty if nothing
};

// x and y: n points and room for three, as with_room makes them.
LibraryTriangulation library_delaunay(const std::vector<double> &x, const std::vector<double> &y,
                                      int32_t n, int32_t nmax);

}  // namespace quorix::testing
