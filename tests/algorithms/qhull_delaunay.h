// SPDX-License-Identifier: MIT
//
// Delaunay triangles and the convex hull by qhull, a program of others that goes another way: it
// takes the lower hull of the points lifted to a paraboloid.
#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <vector>

namespace quorix::testing {

// Triangles as sorted numbers of points, the first point being number 1.
std::set<std::array<int32_t, 3>> qhull_delaunay(const std::vector<double> &x,
                                                const std::vector<double> &y);

// The numbers of the points at the corners of the convex hull.
std::vector<int32_t> qhull_hull(const std::vector<double> &x, const std::vector<double> &y);

}  // namespace quorix::testing
