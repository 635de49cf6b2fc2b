// SPDX-License-Identifier: MIT
//
// The triangulation, step by step: every triangle of the list is looked at for every point, every
// circle is computed each time, every pair of edges is compared. Quadratic, and easy to check by
// eye against the description.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorix::literal {

using Triangle = std::array<int32_t, 3>;

struct Triangulation {
  int32_t status = 0;
  std::vector<Triangle> triangles;  // those of the result; empty unless the status is 0
  std::vector<double> x;            // the points and the three corners, as they are afterwards
  std::vector<double> y;
  size_t largest_cavity = 0;  // triangles that one point removed, also the one that was too much
};

// x and y hold the n points and three more values, which stay where the corners are not written.
Triangulation delaunay(const std::vector<double> &x, const std::vector<double> &y, int32_t n,
                       int32_t nmax);

}  // namespace quorix::literal
