// SPDX-License-Identifier: MIT
//
// The seed grid when memory runs out at each of its requests.
#include <gtest/gtest.h>

#include <vector>

#include "tests/algorithms/seed_grid_calls.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {

namespace {

using SeedGridMemory = SeedGrid;

}  // namespace

TEST_F(SeedGridMemory, ReportsAnOpeningWithoutMemoryAndKeepsAnOpenGrid) {
  size_t refused = 0;
  for (size_t request = 1;; request++) {
    open_plane(10, 10);
    add_line({{5, 5}});
    FailingMemory memory(request);
    const Opened opened = seed1(20, 20, 20, 1, 3, 0);
    if (!memory.failed()) {
      EXPECT_EQ(opened.result, 0);
      EXPECT_EQ(opened.status, 0);
      EXPECT_TRUE(is_accepted({15, 15, 15}));
      EXPECT_EQ(close_grid(), 0);
      break;
    }
    refused++;
    expect_refused(opened);
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_FALSE(is_accepted({5, 5}));
    EXPECT_TRUE(is_accepted({8, 8}));
  }
  EXPECT_GE(refused, 1U);
}

TEST_F(SeedGridMemory, ReportsAFirstOpeningWithoutMemory) {
  for (size_t request = 1;; request++) {
    FailingMemory memory(request);
    const Opened opened = seed1(10, 10, 0, 1, 2, 0);
    if (!memory.failed()) {
      EXPECT_EQ(close_grid(), 0);
      EXPECT_EQ(memory.live_blocks(), 0U);
      break;
    }
    expect_refused(opened);
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_FALSE(is_accepted({5, 5}));
  }
}

namespace {

constexpr int32_t run_lines = 210;

// Line i has its points at (i, 0.5), which no other has, and at (0.5, 0.5), which all have.
std::vector<Point> run_line(int32_t i) {
  return {{static_cast<double>(i), 0.5}, {0.5, 0.5}};
}

// Adds all lines; gives those that were not refused.
std::vector<int32_t> add_run(const FailingMemory &memory) {
  std::vector<int32_t> added;
  for (int32_t i = 0; i < run_lines; i++) {
    const int32_t status = add_line(run_line(i), i == 0 ? 0 : 1);
    if (status == 0) {
      added.push_back(i);
    } else {
      EXPECT_EQ(status, 1);
      EXPECT_TRUE(memory.failed());
    }
  }
  return added;
}

// What the queue delivers: all lines that were added but the first of them.
void expect_queue(const std::vector<int32_t> &added) {
  for (size_t k = 1; k < added.size(); k++) {
    const Delivered line = next_line();
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.n1, 2);
    EXPECT_EQ(line.x[0], added[k]);
    EXPECT_EQ(line.x[1], 0.5);
  }
  expect_end_of_queue();
}

// Lines whose own point does not keep candidates away, though the line was added.
size_t count_unfiled(const std::vector<int32_t> &added) {
  size_t unfiled = 0;
  for (const int32_t i : added) {
    if (is_accepted({static_cast<double>(i), 0.5}, 0.1)) unfiled++;
  }
  return unfiled;
}

// One run with a failing request; true if there was none left to fail.
bool run_with_failure(size_t request, Failures failures) {
  FailingMemory memory(request, failures);
  if (seed1(300, 300, 0, 1, 2, 0).status != 0) {
    EXPECT_TRUE(memory.failed());
    EXPECT_EQ(memory.live_blocks(), 0U);
    return false;
  }
  const std::vector<int32_t> added = add_run(memory);
  const size_t unfiled = count_unfiled(added);
  expect_queue(added);
  const int32_t status = close_grid();
  if (!memory.failed()) {
    EXPECT_EQ(added.size(), static_cast<size_t>(run_lines));
    EXPECT_EQ(unfiled, 0U);
    EXPECT_EQ(status, 0);
  }
  // A point that could not be filed is reported at the end.
  if (unfiled > 0) {
    EXPECT_EQ(status, 1) << "request " << request;
  }
  EXPECT_EQ(memory.live_blocks(), 0U) << "request " << request;
  return !memory.failed();
}

}  // namespace

TEST_F(SeedGridMemory, MayRunOutOfMemoryAtEveryRequest) {
  for (const Failures failures : {Failures::only_that_one, Failures::that_and_all_later}) {
    bool finished = false;
    for (size_t request = 1; !finished; request++)
      finished = run_with_failure(request, failures);
  }
}

namespace {

// More points than any room that a grid may start with, one in each cell.
constexpr int32_t long_line_side = 150;

std::vector<Point> long_line() {
  std::vector<Point> points;
  for (int32_t i = 0; i < long_line_side; i++) {
    for (int32_t k = 0; k < long_line_side; k++)
      points.push_back({i + 0.5, k + 0.5});
  }
  return points;
}

size_t count_unfiled(const std::vector<Point> &points) {
  size_t unfiled = 0;
  for (const Point &point : points) {
    if (is_accepted(point, 0.1)) unfiled++;
  }
  return unfiled;
}

}  // namespace

TEST_F(SeedGridMemory, ReportsPointsThatCouldNotBeFiledAtClosing) {
  const std::vector<Point> points = long_line();
  size_t with_missing_points = 0;
  bool finished = false;
  for (size_t request = 1; !finished; request++) {
    open_plane(long_line_side, long_line_side);
    add_line({{0, 0}}, 0);
    int32_t status = 0;
    {
      FailingMemory memory(request);
      status = add_line(points);
      finished = !memory.failed();
    }
    const size_t unfiled = count_unfiled(points);
    EXPECT_EQ(finished, status == 0 && unfiled == 0);
    if (status == 1) {
      EXPECT_EQ(unfiled, points.size());
      expect_end_of_queue();
      EXPECT_EQ(close_grid(), 0);
      continue;
    }
    // The others are filed, later lines too, and the line is in the queue.
    EXPECT_LT(unfiled, points.size());
    EXPECT_EQ(add_line({{0.125, 0.25}}), 0);
    EXPECT_FALSE(is_accepted({0.125, 0.25}, 0.1));
    if (unfiled > 0) with_missing_points++;
    EXPECT_EQ(close_grid(), unfiled > 0 ? 1 : 0);
    open_plane(10, 10);
    EXPECT_EQ(close_grid(), 0);
  }
  EXPECT_GE(with_missing_points, 1U);
}

TEST_F(SeedGridMemory, KeepsALineInTheQueueOfWhichPointsCouldNotBeFiled) {
  const std::vector<Point> points = long_line();
  open_plane(long_line_side, long_line_side);
  add_line({{0, 0}}, 0);
  {
    // All but the copy of the line is refused.
    FailingMemory memory(2, Failures::that_and_all_later);
    EXPECT_EQ(add_line(points), 0);
    EXPECT_TRUE(memory.failed());
  }
  EXPECT_GT(count_unfiled(points), 0U);
  std::vector<double> x(points.size()), y(points.size());
  int32_t n1 = 0, n2 = 0, status = -1;
  EXPECT_EQ(qqseed2(x.data(), y.data(), nullptr, &n1, &n2, &status), 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(n1, static_cast<int32_t>(points.size()));
  for (size_t i = 0; i < points.size(); i++) {
    ASSERT_EQ(x[i], points[i].x);
    ASSERT_EQ(y[i], points[i].y);
  }
  EXPECT_EQ(close_grid(), 1);
}

}  // namespace quorix::testing
