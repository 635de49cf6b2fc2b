// SPDX-License-Identifier: MIT
//
// The sort as it is defined, with every index checked.
#include "tests/algorithms/literal_index_sort.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <vector>

namespace quorix::literal {

namespace {

constexpr int32_t cut_off = 12;
constexpr size_t stack_pairs = 32;

struct Range {
  int32_t lo;
  int32_t hi;
};

bool stands_before(const double *keys, int32_t a, int32_t b) {
  return keys[a] < keys[b] || (keys[a] == keys[b] && a > b);
}

// Parts the range around its middle element; i and j are where the two parts begin and end.
void partition(const double *keys, int32_t *index, Range range, int32_t pivot, int32_t *from,
               int32_t *to) {
  int32_t i = range.lo;
  int32_t j = range.hi;
  for (;;) {
    while (stands_before(keys, index[i], pivot))
      i++;
    while (stands_before(keys, pivot, index[j]))
      j--;
    if (i >= j - 1) break;
    std::swap(index[i], index[j]);
    i++;
    j--;
  }
  if (i <= j) {
    if (i != j) std::swap(index[i], index[j]);
    i++;
    j--;
  }
  *from = i;
  *to = j;
}

void sort_ranges(const double *keys, int32_t *index, int32_t n) {
  std::vector<Range> stack;
  Range range = {0, n - 1};
  for (;;) {
    while (range.hi - range.lo < cut_off) {
      if (stack.empty()) return;
      range = stack.back();
      stack.pop_back();
    }
    const int32_t mid = (range.lo + range.hi) / 2;
    int32_t i = 0;
    int32_t j = 0;
    partition(keys, index, range, index[mid], &i, &j);
    if (stack.size() == stack_pairs) throw std::length_error("more ranges than the stack holds");
    if (j < mid) {
      stack.push_back({i, range.hi});
      range = {range.lo, j};
    } else {
      stack.push_back({range.lo, j});
      range = {i, range.hi};
    }
  }
}

}  // namespace

void index_sort(const double *keys, int32_t *index, int32_t n) {
  if (n < 1) return;
  sort_ranges(keys, index, n);
  int32_t first = 0;
  for (int32_t i = 1; i < std::min(n, cut_off); i++) {
    if (stands_before(keys, index[i], index[first])) first = i;
  }
  std::swap(index[0], index[first]);
  for (int32_t i = 1; i < n; i++) {
    const int32_t moved = index[i];
    int32_t k = i;
    // With numbers alone the front ends the shifting; a NaN there would not.
    while (k > 0 && stands_before(keys, moved, index[k - 1])) {
      index[k] = index[k - 1];
      k--;
    }
    index[k] = moved;
  }
}

}  // namespace quorix::literal
