// SPDX-License-Identifier: MIT
//
// Index sort of three values. The comparisons stand as they are so that equal values, and NaN,
// which fails every one of them, have one defined order: that of the last case.
#include "base/sort3.h"

namespace quorix {

namespace {

template <class Value>
void sort3(const Value *v, int32_t *first, int32_t *second, int32_t *third) {
  const auto order = [&](int32_t i, int32_t j, int32_t k) {
    *first = i;
    *second = j;
    *third = k;
  };
  if (v[0] < v[1]) {
    if (v[2] <= v[0]) return order(2, 0, 1);
    return v[2] >= v[1] ? order(0, 1, 2) : order(0, 2, 1);
  }
  if (v[2] <= v[1]) return order(2, 1, 0);
  return v[2] >= v[0] ? order(1, 0, 2) : order(1, 2, 0);
}

}  // namespace

void sort3_int(const int32_t *values, int32_t *first, int32_t *second, int32_t *third) {
  sort3(values, first, second, third);
}

void sort3_double(const double *values, int32_t *first, int32_t *second, int32_t *third) {
  sort3(values, first, second, third);
}

}  // namespace quorix
