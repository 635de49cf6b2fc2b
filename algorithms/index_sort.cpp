// SPDX-License-Identifier: MIT
//
// Index sort by keys of double precision: ascending, equal keys by descending index.
//
// As long as no key is NaN that order is total, so every sort gives the same permutation: large
// inputs are distributed by the leading bits of their keys, and the few that share these are sorted
// among themselves. Small inputs, inputs with NaN and those for which there is no memory are sorted
// in place.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "algorithms/algorithms.h"
#include "base/memory.h"
#include "quorix/algorithms.h"

namespace quorix {

namespace {

// Below this the tables of a distribution cost more than they save.
constexpr int32_t least_to_distribute = 256;
// Ranges of quicksort whose ends are nearer than this are left to the insertion.
constexpr int32_t insertion_range = 12;
constexpr int32_t stack_size = 32;

constexpr int32_t digit_bits = 11;
constexpr int32_t digit_values = 1 << digit_bits;
constexpr int32_t digits = 3;

struct Range {
  int32_t lo, hi;
};

inline bool stands_before(const double *keys, int32_t a, int32_t b) {
  return keys[a] < keys[b] || (keys[a] == keys[b] && a > b);
}

// Splits lo..hi at its middle element: what stands in lo..j belongs before what stands in i..hi.
// The middle element itself stops both walks, whatever the keys are.
void partition(const double *keys, int32_t *index, int32_t pivot, int32_t *i, int32_t *j) {
  for (;;) {
    while (stands_before(keys, index[*i], pivot))
      ++*i;
    while (stands_before(keys, pivot, index[*j]))
      --*j;
    if (*i >= *j - 1) break;
    std::swap(index[(*i)++], index[(*j)--]);
  }
  if (*i <= *j) std::swap(index[(*i)++], index[(*j)--]);
}

// Sorts so far that only elements within one short range are still out of order.
void sort_roughly(const double *keys, int32_t *index, int32_t n) {
  Range stack[stack_size];
  int32_t depth = 0;
  Range r = {0, n - 1};
  for (;;) {
    while (r.hi - r.lo < insertion_range) {
      if (depth == 0) return;
      r = stack[--depth];
    }
    const int32_t mid = r.lo + (r.hi - r.lo) / 2;
    int32_t i = r.lo;
    int32_t j = r.hi;
    partition(keys, index, index[mid], &i, &j);
    // Going on with the shorter part keeps the stack below the number of bits of n.
    if (j < mid) {
      stack[depth++] = {i, r.hi};
      r.hi = j;
    } else {
      stack[depth++] = {r.lo, j};
      r.lo = i;
    }
  }
}

// Straight insertion. The first element of all goes to the front beforehand; with NaN keys there
// may be no such element, so the walk looks at its lower bound too.
void insert_all(const double *keys, int32_t *index, int32_t n) {
  int32_t first = 0;
  for (int32_t i = 1; i < std::min(n, insertion_range); ++i) {
    if (stands_before(keys, index[i], index[first])) first = i;
  }
  std::swap(index[0], index[first]);
  for (int32_t i = 1; i < n; ++i) {
    const int32_t element = index[i];
    int32_t at = i;
    for (; at > 0 && stands_before(keys, element, index[at - 1]); --at)
      index[at] = index[at - 1];
    index[at] = element;
  }
}

struct KeyedIndex {
  uint64_t bits;  // orders like the key
  int32_t index;
};

inline bool stands_before(const KeyedIndex &a, const KeyedIndex &b) {
  return a.bits != b.bits ? a.bits < b.bits : a.index > b.index;
}

inline uint64_t ordered_bits(double key) {
  const auto bits = std::bit_cast<uint64_t>(key + 0.0);  // -0.0 equals 0.0
  constexpr uint64_t sign = uint64_t{1} << 63;
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

// Fills `out` from the end, so that ascending indices, the usual case, stand as equal keys shall;
// notes in `differing` the bits in which keys differ. False if one is NaN.
bool gather(const double *keys, const int32_t *index, int32_t n, KeyedIndex *out,
            uint64_t *differing) {
  *differing = 0;
  const uint64_t first = ordered_bits(keys[index[0]]);
  for (int32_t i = 0; i < n; ++i) {
    const double key = keys[index[i]];
    if (key != key) return false;
    const uint64_t bits = ordered_bits(key);
    out[n - 1 - i] = {bits, index[i]};
    *differing |= bits ^ first;
  }
  return true;
}

inline uint32_t digit_of(const KeyedIndex &k, int32_t shift) {
  return static_cast<uint32_t>(k.bits >> shift) & (digit_values - 1);
}

// Distributes by one digit, keeping the order of equals.
void distribute(const KeyedIndex *from, KeyedIndex *to, int32_t n, int32_t shift,
                uint32_t *counts) {
  uint32_t start = 0;
  for (int32_t value = 0; value < digit_values; ++value)
    start += std::exchange(counts[value], start);
  for (int32_t i = 0; i < n; ++i)
    to[counts[digit_of(from[i], shift)]++] = from[i];
}

// Sorts by the `digits` digits that end at bit `shift`; gives the buffer with the result.
KeyedIndex *distribute_by_leading_digits(KeyedIndex *a, KeyedIndex *b, int32_t n, int32_t shift) {
  uint32_t counts[digits][digit_values];
  std::memset(counts, 0, sizeof counts);
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t d = 0; d < digits; ++d)
      ++counts[d][digit_of(a[i], shift + d * digit_bits)];
  }
  for (int32_t d = 0; d < digits; ++d) {
    distribute(a, b, n, shift + d * digit_bits, counts[d]);
    std::swap(a, b);
  }
  return a;
}

// Sorts what has the same leading digits.
void sort_groups(KeyedIndex *k, int32_t n, int32_t shift) {
  const auto before = [](const KeyedIndex &a, const KeyedIndex &b) { return stands_before(a, b); };
  for (int32_t first = 0; first < n;) {
    int32_t end = first + 1;
    bool sorted = true;
    for (; end < n && k[end].bits >> shift == k[first].bits >> shift; ++end)
      sorted = sorted && stands_before(k[end - 1], k[end]);
    if (!sorted) std::sort(k + first, k + end, before);
    first = end;
  }
}

bool sort_by_distribution(const double *keys, int32_t *index, int32_t n) {
  auto a = allocate_array<KeyedIndex>(static_cast<size_t>(n));
  auto b = allocate_array<KeyedIndex>(static_cast<size_t>(n));
  uint64_t differing = 0;
  if (a == nullptr || b == nullptr || !gather(keys, index, n, a.get(), &differing)) return false;
  const int32_t width = 64 - std::countl_zero(differing);
  const int32_t shift = std::max(0, width - digits * digit_bits);
  KeyedIndex *sorted = distribute_by_leading_digits(a.get(), b.get(), n, shift);
  sort_groups(sorted, n, shift);
  for (int32_t i = 0; i < n; ++i)
    index[i] = sorted[i].index;
  return true;
}

// It alone defines the order where keys are NaN.
void sort_in_place(const double *keys, int32_t *index, int32_t n) {
  if (n < 2) return;
  sort_roughly(keys, index, n);
  insert_all(keys, index, n);
}

}  // namespace

void sort_indices(const double *keys, int32_t *index, int32_t n) {
  if (n >= least_to_distribute && sort_by_distribution(keys, index, n)) return;
  sort_in_place(keys, index, n);
}

}  // namespace quorix

extern "C" int32_t qqssrt(const double *keys, int32_t *index, int32_t n) {
  quorix::sort_indices(keys, index, n);
  return 0;
}
