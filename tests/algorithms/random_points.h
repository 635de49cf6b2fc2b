// SPDX-License-Identifier: MIT
//
// Point sets by number: scattered, gridded, in lines, in columns, on circles, in clusters, full of
// duplicates, smaller than the tolerances, with NaN and infinite coordinates.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

struct PointSet {
  std::string kind;
  std::vector<double> x;
  std::vector<double> y;

  size_t size() const { return x.size(); }
  void add(double px, double py) {
    x.push_back(px);
    y.push_back(py);
  }
};

PointSet random_points(uint64_t number);

// n points scattered evenly over the square from 0 to side.
PointSet scattered_points(uint64_t seed, size_t n, double side);

}  // namespace quorix::testing
