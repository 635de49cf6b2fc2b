// SPDX-License-Identifier: MIT
//
// The seed grid at its edges: cells, limits that stand crosswise, distances, the
// queue, bad input.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/algorithms/seed_grid_calls.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {

// --- Cells and limits ---

TEST_F(SeedGrid, AcceptsAllOfTheDomainWhileThereIsNoLine) {
  open_plane(10, 10);
  for (double x = 0; x <= 10; x += 0.5) {
    for (double y = 0; y <= 10; y += 0.5)
      EXPECT_TRUE(is_accepted({x, y}));
  }
  EXPECT_FALSE(is_accepted({-1e-9, 5}));
  EXPECT_FALSE(is_accepted({10 + 1e-9, 5}));
  EXPECT_FALSE(is_accepted({5, -1e-9}));
  EXPECT_FALSE(is_accepted({5, 10 + 1e-9}));
}

TEST_F(SeedGrid, HasACellForTheUpperLimit) {
  // 11 cells along each axis, 0 to 10.
  open_plane(10, 10);
  EXPECT_TRUE(is_accepted({10, 10}));
  EXPECT_TRUE(is_accepted({10, 0}));
  add_line({{10, 10}});
  EXPECT_FALSE(is_accepted({10, 10}));
  EXPECT_FALSE(is_accepted({9.5, 9.5}));
  EXPECT_TRUE(is_accepted({9, 9}));
}

TEST_F(SeedGrid, CountsItsCellsByTheRangeAndOneAndAHalf) {
  // Ranges of 9.4 and 9.5 give 10 and 11 cells: X beyond the cells along Y is rejected.
  open_plane(20, 9.4);
  EXPECT_TRUE(is_accepted({9.9, 5}));
  EXPECT_FALSE(is_accepted({10, 5}));
  open_plane(20, 9.5);
  EXPECT_TRUE(is_accepted({10.9, 5}));
  EXPECT_FALSE(is_accepted({11, 5}));
}

TEST_F(SeedGrid, IsOfOneCellWithoutAnyRange) {
  open_plane(0, 0);
  EXPECT_TRUE(is_accepted({0, 0}));
  add_line({{0, 0}});
  EXPECT_FALSE(is_accepted({0, 0}));
  open_space(0, 0, 0);
  EXPECT_TRUE(is_accepted({0, 0, 0}));
}

TEST_F(SeedGrid, RejectsWhereXIsBeyondTheCellsAlongY) {
  // 21 cells by 6.
  open_plane(20, 5);
  EXPECT_TRUE(is_accepted({5.9, 3}));
  EXPECT_FALSE(is_accepted({6, 3}));
  EXPECT_FALSE(is_accepted({20, 3}));
}

TEST_F(SeedGrid, RejectsWhereYIsBeyondTheCellsAlongX) {
  // 6 cells by 21.
  open_plane(5, 20);
  EXPECT_TRUE(is_accepted({3, 5.9}));
  EXPECT_FALSE(is_accepted({3, 6}));
  EXPECT_FALSE(is_accepted({3, 20}));
}

TEST_F(SeedGrid, DoesNotFileWhereItRejects) {
  // 21 cells by 6. Filed by its place, (6.0, 0.5) would stand in cell 6 * 6 + 0 next to that of
  // (5.5, 0.5).
  open_plane(20, 5);
  add_line({{6.0, 0.5}});
  EXPECT_TRUE(is_accepted({5.5, 0.5}));
  add_line({{5.9, 0.5}});
  EXPECT_FALSE(is_accepted({5.5, 0.5}));
}

TEST_F(SeedGrid, StaysWithinItsCellsThoughTheLimitsStandCrosswise) {
  // 2 cells by 11, 22 in all: the place (10, 1) lets both limits through and is cell 111.
  open_plane(1, 10);
  add_line({{10.5, 1.5}, {10.5, 0}, {5, 1}, {2, 0}, {1.9, 1.9}});
  EXPECT_TRUE(is_accepted({1, 1}, 0.5));
  EXPECT_FALSE(is_accepted({1, 1.9}, 1));
  EXPECT_FALSE(is_accepted({0.5, 2}));
}

TEST_F(SeedGrid, FilesAPointJustBelowTheDomainInTheFirstCell) {
  open_plane(10, 10);
  add_line({{-0.9, 5.5}});
  EXPECT_FALSE(is_accepted({0, 5.5}));
  EXPECT_TRUE(is_accepted({0.1, 5.5}));
}

TEST_F(SeedGrid, DoesNotFileAPointACellBelowTheDomain) {
  open_plane(10, 10);
  add_line({{-1, 5.5}});
  EXPECT_TRUE(is_accepted({0, 5.5}, 2));
  add_line({{-0.99, 5.5}});
  EXPECT_FALSE(is_accepted({0, 5.5}, 2));
}

// --- Distances ---

TEST_F(SeedGrid, AcceptsExactlyAtTheDistance) {
  open_plane(10, 10, 5);
  add_line({{4, 4}});
  EXPECT_TRUE(is_accepted({7, 8}));  // 3, 4: 5 away
  EXPECT_FALSE(is_accepted({7, 7.999}));
  EXPECT_TRUE(is_accepted({4, 9}));
  EXPECT_FALSE(is_accepted({4, 8.999}));
}

TEST_F(SeedGrid, MeasuresTheDistanceInCellSizes) {
  open_plane(10, 10, 2);
  add_line({{5, 5}});
  EXPECT_TRUE(is_accepted({6, 5}, 0.5));
  EXPECT_FALSE(is_accepted({5.999, 5}, 0.5));
  EXPECT_TRUE(is_accepted({5, 5}, 0));
  EXPECT_TRUE(is_accepted({5, 5}, -1));
  EXPECT_TRUE(is_accepted({5, 5}, std::nan("")));
}

TEST_F(SeedGrid, SeesNoFurtherThanTheNextCell) {
  open_plane(10, 10);
  add_line({{5.1, 5.5}});
  EXPECT_FALSE(is_accepted({6.9, 5.5}, 4));
  EXPECT_TRUE(is_accepted({7, 5.5}, 4));
}

TEST_F(SeedGrid, ReachesTheFarEndOfTheNextColumnFromItsEdge) {
  // 5 cells by 5: from (2, 0) the cell before is (1, 4). With a factor of 5 its point is near.
  open_plane(4, 4);
  add_line({{1.5, 4}});
  EXPECT_FALSE(is_accepted({2.5, 0.5}, 5));
  EXPECT_FALSE(is_accepted({3.9, 0.5}, 5));
  EXPECT_TRUE(is_accepted({4, 0.5}, 5));
  EXPECT_TRUE(is_accepted({2.5, 1}, 5));
  EXPECT_TRUE(is_accepted({2.5, 0.5}, 1));
}

TEST_F(SeedGrid, MeasuresInThreeDimensions) {
  // 1, 2, 2: 3 away.
  open_space(12, 12, 12, 3);
  add_line({{4, 4, 4}});
  EXPECT_TRUE(is_accepted({5, 6, 6}));
  EXPECT_FALSE(is_accepted({5, 6, 5.999}));
  EXPECT_TRUE(is_accepted({4, 4, 7}));
  EXPECT_FALSE(is_accepted({4, 4, 6.999}));
  EXPECT_FALSE(is_accepted({4, 4, -0.001}));
  EXPECT_FALSE(is_accepted({4, 4, 12.001}));
  EXPECT_TRUE(is_accepted({12, 12, 12}));
}

TEST_F(SeedGrid, DoesNotReadZInTwoDimensions) {
  const double low = 0, high = 10, cell = 1, factor = 1;
  const int32_t open = 0, n1 = 1, n2 = 1, flag = 1;
  for (const int32_t ndim : {2, 1, 0, -3, 4, 30}) {
    int32_t status = -1;
    EXPECT_EQ(qqseed1(&low, &high, &low, &high, nullptr, nullptr, &cell, &ndim, &open, &status), 0);
    EXPECT_EQ(status, 0);
    const double x[] = {3, 4}, y[] = {3, 4};
    for (int32_t i = 0; i < 2; i++) {
      EXPECT_EQ(qqseed4(x, y, nullptr, &n1, &n2, &flag, &status), 0);
      EXPECT_EQ(status, 0);
    }
    double out_x[2] = {}, out_y[2] = {};
    int32_t out_n1 = 0, out_n2 = 0;
    EXPECT_EQ(qqseed2(out_x, out_y, nullptr, &out_n1, &out_n2, &status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out_n1, 1);
    EXPECT_EQ(out_n2, 1);
    EXPECT_EQ(out_x[1], 4);
    EXPECT_EQ(out_y[1], 4);
    int32_t rejected = -1;
    qqseed3(&x[1], &y[1], nullptr, &factor, &rejected);
    EXPECT_EQ(rejected, 1);
    const double free_x = 8;
    qqseed3(&free_x, &y[1], nullptr, &factor, &rejected);
    EXPECT_EQ(rejected, 0);
  }
}

// --- The queue ---

TEST_F(SeedGrid, DeliversTheLinesAfterTheOneThatWasChosen) {
  open_plane(10, 10);
  add_line({{1, 1}});
  add_line({{2, 1}}, 0);
  add_line({{3, 1}});
  add_line({{4, 1}});
  expect_line(3);
  add_line({{5, 1}}, 2);
  expect_line(4);
  expect_line(5);
  expect_end_of_queue();
  expect_end_of_queue();
}

TEST_F(SeedGrid, GoesOnAfterItsEndWhenALineIsAdded) {
  open_plane(10, 10);
  add_line({{1, 1}}, 0);
  expect_end_of_queue();
  expect_end_of_queue();
  add_line({{2, 1}});
  add_line({{3, 1}});
  expect_line(2);
  expect_line(3);
  expect_end_of_queue();
  add_line({{4, 1}}, 0);
  expect_end_of_queue();
  add_line({{5, 1}});
  expect_line(5);
}

TEST_F(SeedGrid, JumpsToALineThatIsChosen) {
  open_plane(10, 10);
  for (int32_t i = 0; i < 5; i++)
    add_line({{static_cast<double>(i), 1}});
  expect_line(1);
  add_line({{6, 1}}, 0);
  add_line({{7, 1}});
  expect_line(7);
  expect_end_of_queue();
}

TEST_F(SeedGrid, KeepsTheFirstLineForItselfWhenNoneWasChosen) {
  open_plane(10, 10);
  add_line({{1, 1}});
  expect_end_of_queue();
  add_line({{2, 1}});
  expect_line(2);
}

TEST_F(SeedGrid, HasNoLineToDeliverWhenEmpty) {
  open_plane(10, 10);
  expect_end_of_queue();
  expect_end_of_queue();
}

TEST_F(SeedGrid, GivesBothPartsAndEveryPointOfALine) {
  open_space(10, 10, 10);
  const std::vector<Point> points = {{1, 2, 3}, {20, -5, 1e300}, {7, 8, 9}, {-0.0, 0, 4}};
  add_line({{0, 0, 0}}, 0);
  for (const int32_t n1 : {0, 1, 3, 4, -2, 9}) {
    EXPECT_EQ(add_line(points, 1, n1, 4 - n1), 0);
    const Delivered line = next_line();
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.n1, n1);
    EXPECT_EQ(line.n2, 4 - n1);
    for (size_t i = 0; i < 4; i++) {
      EXPECT_EQ(line.x[i], points[i].x);
      EXPECT_EQ(line.y[i], points[i].y);
      EXPECT_EQ(line.z[i], points[i].z);
    }
    EXPECT_EQ(line.x[4], untouched);
    EXPECT_EQ(line.y[4], untouched);
    EXPECT_EQ(line.z[4], untouched);
  }
}

TEST_F(SeedGrid, LeavesTheQueueAloneWithoutPoints) {
  open_plane(10, 10);
  add_line({{1, 1}}, 0);
  add_line({{2, 1}});
  for (const int32_t n1 :
       {0, 5, -5, std::numeric_limits<int32_t>::max(), -std::numeric_limits<int32_t>::max()})
    EXPECT_EQ(add_line({}, 0, n1, -n1), 0);
  EXPECT_EQ(add_line({}, 0, -1, 0), 0);
  EXPECT_EQ(add_line({}, 0, -7, 2), 0);
  const int32_t least = std::numeric_limits<int32_t>::min();
  EXPECT_EQ(add_line({}, 0, least, least), 0);
  expect_line(2);
  expect_end_of_queue();
}

TEST_F(SeedGrid, QueuesLinesBeyondItsFirstHundred) {
  open_plane(500, 500);
  add_line({{0, 0}}, 0);
  for (int32_t i = 1; i < 350; i++)
    add_line({{static_cast<double>(i), 1}});
  for (int32_t i = 1; i < 350; i++)
    expect_line(i);
  expect_end_of_queue();
}

// --- Opening and closing ---

TEST_F(SeedGrid, DoesNothingBeforeItIsOpenedAndAfterItIsClosed) {
  for (int round = 0; round < 2; round++) {
    EXPECT_EQ(close_grid(), 0);
    EXPECT_EQ(close_grid(), 0);
    EXPECT_FALSE(is_accepted({5, 5}));
    EXPECT_EQ(add_line({{5, 5}}, 0), 1);
    expect_end_of_queue();
    open_plane(10, 10);
    add_line({{5, 5}}, 0);
    add_line({{6, 6}});
  }
}

TEST_F(SeedGrid, OpenedTwiceStartsAgainAndLeaksNothing) {
  FailingMemory memory;
  open_plane(10, 10);
  add_line({{5, 5}}, 0);
  add_line({{6, 6}});
  open_plane(20, 20);
  EXPECT_TRUE(is_accepted({5, 5}));
  expect_end_of_queue();
  add_line({{7, 7}});
  EXPECT_EQ(close_grid(), 0);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(SeedGrid, ClosesWhateverTheOtherArgumentsSay) {
  for (const double cell : {1.0, 0.001, 1000.0, 0.0, -1.0, std::nan(""), infinity}) {
    for (const double high : {10.0, 0.0, 1e9, -5.0, infinity, std::nan("")}) {
      FailingMemory memory;
      open_space(10, 8, 6);
      for (int32_t i = 0; i < 10; i++)
        add_line({{1.0 * i, 0.8 * i, 0.6 * i}, {1, 2, 3}}, 1);
      next_line();
      const Opened closed = seed1(high, high, high, cell, 2, 1);
      EXPECT_EQ(closed.result, 0);
      EXPECT_EQ(closed.status, 0);
      EXPECT_EQ(memory.live_blocks(), 0U);
      EXPECT_FALSE(is_accepted({5, 5, 5}));
    }
  }
}

TEST_F(SeedGrid, StaysAsItIsInAnUnknownMode) {
  open_plane(10, 10);
  add_line({{5, 5}});
  for (const int32_t mode : {2, 3, -1, 100}) {
    const Opened nothing = seed1(20, 20, 20, 1, 2, mode);
    EXPECT_EQ(nothing.result, 0);
    EXPECT_EQ(nothing.status, 0);
  }
  EXPECT_FALSE(is_accepted({5, 5}));
  EXPECT_TRUE(is_accepted({7, 7}));
  EXPECT_FALSE(is_accepted({15, 15}));
}

TEST_F(SeedGrid, RefusesCellSizesThatAreNotPositiveNumbers) {
  for (const double cell : {0.0, -0.0, -1.0, -1e-300, infinity, -infinity, std::nan("")}) {
    expect_refused(seed1(10, 10, 10, cell, 2, 0));
    expect_refused(seed1(10, 10, 10, cell, 3, 0));
    EXPECT_FALSE(is_accepted({5, 5}));
  }
}

TEST_F(SeedGrid, RefusesDomainsOfNegativeOrEndlessExtent) {
  for (const double high : {-1e-9, -10.0, infinity, -infinity, std::nan("")}) {
    expect_refused(seed1(high, 10, 10, 1, 2, 0));
    expect_refused(seed1(10, high, 10, 1, 2, 0));
    expect_refused(seed1(10, 10, high, 1, 3, 0));
    EXPECT_FALSE(is_accepted({5, 5}));
  }
  const Opened opened = seed1(10, 10, -1, 1, 2, 0);
  EXPECT_EQ(opened.status, 0);
}

TEST_F(SeedGrid, RefusesMoreCellsThanThereIsMemoryFor) {
  open_plane(10, 10);
  add_line({{5, 5}}, 0);
  add_line({{6, 6}});
  expect_refused(seed1(1e300, 1e300, 1e300, 1, 3, 0));
  expect_refused(seed1(1e9, 1e9, 0, 1, 2, 0));
  expect_refused(seed1(2e9, 2e9, 2e9, 1, 3, 0));
  expect_refused(seed1(1, 1, 1, 1e-300, 3, 0));
  expect_refused(seed1(1, 1, 1, 5e-324, 2, 0));
  // 2^32 cells, which is 0 in 32 bits.
  {
    FailingMemory memory(1, Failures::that_and_all_later);
    expect_refused(seed1(65535, 65535, 0, 1, 2, 0));
  }
  EXPECT_FALSE(is_accepted({5, 5}));
  EXPECT_TRUE(is_accepted({8, 8}));
  expect_line(6);
}

TEST_F(SeedGrid, RejectsAndDoesNotFileWhatIsNotANumber) {
  const double nan = std::nan("");
  open_plane(10, 10);
  EXPECT_FALSE(is_accepted({nan, 5}));
  EXPECT_FALSE(is_accepted({5, nan}));
  EXPECT_TRUE(is_accepted({5, 5, nan}));
  EXPECT_FALSE(is_accepted({infinity, 5}));
  EXPECT_FALSE(is_accepted({5, -infinity}));
  EXPECT_EQ(add_line({{nan, 0.5}, {0.5, nan}, {infinity, 0.5}, {0.5, -infinity}, {1e300, -1e300}}),
            0);
  for (double x = 0; x <= 10; x++) {
    for (double y = 0; y <= 10; y++)
      EXPECT_TRUE(is_accepted({x, y}));
  }
  open_space(10, 10, 10);
  EXPECT_FALSE(is_accepted({5, 5, nan}));
  EXPECT_FALSE(is_accepted({nan, 5, 5}));
  add_line({{0.5, 0.5, nan}, {nan, 0.5, 0.5}, {0.5, nan, 0.5}});
  EXPECT_TRUE(is_accepted({0.5, 0.5, 0.5}));
  EXPECT_TRUE(is_accepted({0, 0, 0}));
}

TEST_F(SeedGrid, DoesNotAddALineOfMorePointsThanThereIsMemoryFor) {
  open_plane(10, 10);
  const int32_t most = std::numeric_limits<int32_t>::max();
  FailingMemory memory(1, Failures::that_and_all_later);
  EXPECT_EQ(add_line({}, 0, most, most), 1);
  EXPECT_EQ(add_line({}, 0, most, 1), 1);
  expect_end_of_queue();
}

}  // namespace quorix::testing
