// SPDX-License-Identifier: MIT
//
// The operations of the seed grid with plain arguments, for its tests: the domain starts at 0, and
// what a call returns is checked against its status.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "quorix/algorithms.h"

namespace quorix::testing {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int32_t untouched = -123;

struct Point {
  double x;
  double y;
  double z = 0;
};

// --- The calls, with plain arguments ---

struct Opened {
  int32_t result;
  int32_t status;
};

inline Opened seed1(double xmax, double ymax, double zmax, double cell_size, int32_t ndim,
                    int32_t mode) {
  const double low = 0;
  Opened opened = {-1, -1};
  opened.result =
      qqseed1(&low, &xmax, &low, &ymax, &low, &zmax, &cell_size, &ndim, &mode, &opened.status);
  return opened;
}

inline void open_plane(double xmax, double ymax, double cell_size = 1) {
  const Opened opened = seed1(xmax, ymax, 0, cell_size, 2, 0);
  EXPECT_EQ(opened.result, 0);
  EXPECT_EQ(opened.status, 0);
}

inline void open_space(double xmax, double ymax, double zmax, double cell_size = 1) {
  const Opened opened = seed1(xmax, ymax, zmax, cell_size, 3, 0);
  EXPECT_EQ(opened.result, 0);
  EXPECT_EQ(opened.status, 0);
}

inline int32_t close_grid() {
  const Opened closed = seed1(0, 0, 0, 1, 2, 1);
  EXPECT_EQ(closed.result, 0);
  return closed.status;
}

inline int32_t add_line(const std::vector<Point> &points, int32_t flag, int32_t n1, int32_t n2) {
  std::vector<double> x, y, z;
  for (const Point &point : points) {
    x.push_back(point.x);
    y.push_back(point.y);
    z.push_back(point.z);
  }
  int32_t status = -1;
  const int32_t result = qqseed4(x.data(), y.data(), z.data(), &n1, &n2, &flag, &status);
  EXPECT_EQ(result, status);
  return status;
}

inline int32_t add_line(const std::vector<Point> &points, int32_t flag = 1) {
  return add_line(points, flag, static_cast<int32_t>(points.size()), 0);
}

inline bool is_accepted(const Point &point, double factor = 1) {
  int32_t rejected = -1;
  EXPECT_EQ(qqseed3(&point.x, &point.y, &point.z, &factor, &rejected), 0);
  EXPECT_TRUE(rejected == 0 || rejected == 1);
  return rejected == 0;
}

struct Delivered {
  int32_t status = -1;
  int32_t n1 = untouched;
  int32_t n2 = untouched;
  std::vector<double> x = std::vector<double>(200, untouched);
  std::vector<double> y = x;
  std::vector<double> z = x;
};

inline Delivered next_line() {
  Delivered line;
  const int32_t result =
      qqseed2(line.x.data(), line.y.data(), line.z.data(), &line.n1, &line.n2, &line.status);
  EXPECT_EQ(result, line.status);
  return line;
}

inline void expect_end_of_queue() {
  const Delivered line = next_line();
  EXPECT_EQ(line.status, 1);
  EXPECT_EQ(line.n1, untouched);
  EXPECT_EQ(line.n2, untouched);
  EXPECT_EQ(line.x, std::vector<double>(200, untouched));
  EXPECT_EQ(line.y, line.x);
  EXPECT_EQ(line.z, line.x);
}

// The line of one point that was added with this X.
inline void expect_line(double x) {
  const Delivered line = next_line();
  EXPECT_EQ(line.status, 0);
  EXPECT_EQ(line.n1, 1);
  EXPECT_EQ(line.n2, 0);
  EXPECT_EQ(line.x[0], x);
  EXPECT_EQ(line.x[1], untouched);
}

inline void expect_refused(const Opened &opened) {
  EXPECT_EQ(opened.result, 1);
  EXPECT_EQ(opened.status, 1);
}

// No grid is open before and after each test.
class SeedGrid : public ::testing::Test {
 protected:
  void SetUp() override { close_grid(); }
  void TearDown() override { close_grid(); }
};

}  // namespace quorix::testing
