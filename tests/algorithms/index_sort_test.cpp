// SPDX-License-Identifier: MIT
//
// The index sort against the literal one and against plain properties.
//
// QUORIX_SORT=<number> sorts that random case alone; QUORIX_SORTS=<count> compares that many.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "quorix/algorithms.h"
#include "tests/algorithms/literal_index_sort.h"
#include "tests/algorithms/random_cases.h"
#include "tests/algorithms/random_values.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {

namespace {

constexpr int32_t guard = -5555;
constexpr size_t guard_cells = 4;

struct SortCase {
  std::vector<double> keys;
  std::vector<int32_t> index;
};

std::vector<int32_t> counted(size_t n) {
  std::vector<int32_t> index(n);
  for (size_t i = 0; i < n; i++)
    index[i] = static_cast<int32_t>(i);
  return index;
}

// The library's permutation; guard cells and keys must come back as they were.
std::vector<int32_t> sorted_by_library(const SortCase &sort) {
  const std::vector<double> keys = sort.keys;
  std::vector<int32_t> index(guard_cells, guard);
  index.insert(index.end(), sort.index.begin(), sort.index.end());
  index.insert(index.end(), guard_cells, guard);
  const int32_t result =
      qqssrt(keys.data(), index.data() + guard_cells, static_cast<int32_t>(sort.index.size()));
  EXPECT_EQ(result, 0);
  if (!keys.empty()) {
    EXPECT_EQ(std::memcmp(keys.data(), sort.keys.data(), keys.size() * sizeof(double)), 0);
  }
  const auto first = index.begin() + guard_cells;
  const auto end = index.end() - guard_cells;
  EXPECT_EQ(std::count(index.begin(), first, guard), guard_cells);
  EXPECT_EQ(std::count(end, index.end(), guard), guard_cells);
  return {first, end};
}

std::vector<int32_t> sorted_literally(const SortCase &sort) {
  std::vector<int32_t> index = sort.index;
  literal::index_sort(sort.keys.data(), index.data(), static_cast<int32_t>(index.size()));
  return index;
}

size_t random_size(RandomValues *random) {
  const size_t choice = random->below(400);
  if (choice < 100) return random->below(15);
  if (choice < 390) return random->below(200);
  if (choice < 399) return random->below(3000);
  return 20000 + random->below(50000);
}

constexpr size_t key_kinds = 10;
constexpr size_t up_and_down = 4;

double random_key(RandomValues *random, size_t kind, size_t i, size_t n) {
  switch (kind) {
    case 0:
      return random->real(-1000, 1000);
    case 1:
      return random->between(0, 3);
    case 2:
      return static_cast<double>(i);
    case 3:
      return -static_cast<double>(i);
    case 4:
      return static_cast<double>(std::min(i, n - i));  // up, then down
    case 5:
      return 7.5;
    case 6:
      return random->one_of<double>({0.0, -0.0, 5e-324, -5e-324, 1, -1});
    case 7:
      return std::ldexp(random->real(-1, 1), random->between(-1070, 1020));
    case 8:
      return static_cast<double>(i % 17) + (random->one_in(50) ? 0.5 : 0);
    default:
      break;
  }
  const double infinity = std::numeric_limits<double>::infinity();
  return random->one_of<double>({infinity, -infinity, 1e308, -1e308, 0, random->unit()});
}

SortCase random_sort(uint64_t number) {
  RandomValues random(number);
  SortCase sort;
  size_t n = random_size(&random);
  // The literal sort takes its pivot from the middle, which is the worst place for these.
  if (number % key_kinds == up_and_down) n = std::min<size_t>(n, 2000);
  for (size_t i = 0; i < n; i++)
    sort.keys.push_back(random_key(&random, number % key_kinds, i, n));
  sort.index = counted(n);
  const size_t choice = random.below(4);
  if (choice == 1) random.shuffle(&sort.index);
  if (choice == 2) std::reverse(sort.index.begin(), sort.index.end());
  if (choice == 3 && n > 0) {  // only some of the keys, and some of them more than once
    sort.index.resize(1 + random.below(n));
    for (int32_t &place : sort.index)
      place = static_cast<int32_t>(random.below(n));
  }
  return sort;
}

std::string compare_sorts(const SortCase &sort) {
  const std::vector<int32_t> expected = sorted_literally(sort);
  const std::vector<int32_t> actual = sorted_by_library(sort);
  for (size_t i = 0; i < expected.size(); i++) {
    if (actual[i] == expected[i]) continue;
    return std::to_string(expected.size()) + " indices, number " + std::to_string(i) + " is " +
           std::to_string(actual[i]) + " instead of " + std::to_string(expected[i]);
  }
  return "";
}

}  // namespace

TEST(IndexSort, PermutesAsTheLiteralOneDoes) {
  compare_cases("QUORIX_SORT", 4000,
                [](uint64_t number) { return compare_sorts(random_sort(number)); });
}

TEST(IndexSort, PermutesAsTheLiteralOneDoesWithNaNAmongTheKeys) {
  compare_cases("QUORIX_NAN_SORT", 1500, [](uint64_t number) {
    SortCase sort = random_sort(number);
    RandomValues random(~number);
    const size_t rarity = 1 + random.below(30);
    for (double &key : sort.keys) {
      if (random.one_in(rarity)) key = std::nan("");
    }
    return compare_sorts(sort);
  });
}

TEST(IndexSort, PutsTheHigherIndexFirstAmongEqualKeys) {
  SortCase sort = {{2, 1, 2, 0, 1, 2}, counted(6)};
  EXPECT_EQ(sorted_by_library(sort), (std::vector<int32_t>{3, 4, 1, 5, 2, 0}));
  sort.index = {5, 0, 3, 1, 2, 4};
  EXPECT_EQ(sorted_by_library(sort), (std::vector<int32_t>{3, 4, 1, 5, 2, 0}));
}

TEST(IndexSort, TakesZeroAndMinusZeroForEqual) {
  EXPECT_EQ(sorted_by_library({{0.0, -0.0, 0.0, -0.0}, counted(4)}),
            (std::vector<int32_t>{3, 2, 1, 0}));
  EXPECT_EQ(sorted_by_library({{-0.0, 0.0, -1e-320, 1e-320}, counted(4)}),
            (std::vector<int32_t>{2, 1, 0, 3}));
}

TEST(IndexSort, PutsInfinitiesAtTheEnds) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(sorted_by_library({{infinity, 1e308, -infinity, -1e308, infinity}, counted(5)}),
            (std::vector<int32_t>{2, 3, 1, 4, 0}));
}

TEST(IndexSort, SortsOnlyTheKeysThatTheIndicesTell) {
  const SortCase sort = {{9, 8, 7, 6, 5, 4}, {1, 5, 3}};
  EXPECT_EQ(sorted_by_library(sort), (std::vector<int32_t>{5, 3, 1}));
}

TEST(IndexSort, IsRightOnBothSidesOfTheSizeFromWhichRangesAreParted) {
  RandomValues random(77);
  for (size_t n = 1; n < 40; n++) {
    SortCase sort = {{}, counted(n)};
    for (size_t i = 0; i < n; i++)
      sort.keys.push_back(random.between(0, 9));
    random.shuffle(&sort.index);
    const std::vector<int32_t> order = sorted_by_library(sort);
    for (size_t i = 1; i < n; i++) {
      const double before = sort.keys[static_cast<size_t>(order[i - 1])];
      const double after = sort.keys[static_cast<size_t>(order[i])];
      EXPECT_TRUE(before < after || (before == after && order[i - 1] > order[i])) << n;
    }
    std::vector<int32_t> all = order;
    std::sort(all.begin(), all.end());
    EXPECT_EQ(all, counted(n));
  }
}

TEST(IndexSort, TouchesNothingWithoutIndices) {
  int32_t index[] = {2, 1, 0};
  const double keys[] = {3, 2, 1};
  for (const int32_t n : {0, -1, std::numeric_limits<int32_t>::min()}) {
    EXPECT_EQ(qqssrt(keys, index, n), 0);
    EXPECT_EQ(qqssrt(nullptr, nullptr, n), 0);
  }
  EXPECT_EQ(index[0], 2);
  EXPECT_EQ(index[1], 1);
  EXPECT_EQ(index[2], 0);
  EXPECT_EQ(qqssrt(keys, index, 1), 0);
  EXPECT_EQ(index[0], 2);
}

TEST(IndexSort, SortsWithoutMemoryToo) {
  for (const uint64_t number : {10U, 11U, 16U, 17U}) {
    SortCase sort = random_sort(number);
    sort.keys.resize(30000, 0.25);
    sort.index = counted(sort.keys.size());
    const std::vector<int32_t> expected = sorted_literally(sort);
    for (size_t request = 1;; request++) {
      FailingMemory memory(request, Failures::that_and_all_later);
      EXPECT_EQ(sorted_by_library(sort), expected);
      EXPECT_EQ(memory.live_blocks(), 0U);
      if (!memory.failed()) break;
    }
  }
}

TEST(IndexSort, WithNaNAmongTheKeysStillGivesAPermutation) {
  RandomValues random(5);
  for (size_t n = 1; n < 300; n++) {
    SortCase sort = {{}, counted(n)};
    for (size_t i = 0; i < n; i++)
      sort.keys.push_back(random.one_in(1 + n % 5) ? std::nan("") : random.unit());
    std::vector<int32_t> order = sorted_by_library(sort);
    std::sort(order.begin(), order.end());
    EXPECT_EQ(order, counted(n));
  }
}

}  // namespace quorix::testing
