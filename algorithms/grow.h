// SPDX-License-Identifier: MIT
//
// Arrays that grow.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "base/memory.h"

namespace quorix {

// The next capacity of an array that a caller fills one by one: `step` more, or half as much again
// so that copying stays in proportion; 0 if there is none.
inline int32_t grown_capacity(int32_t capacity, int32_t step) {
  if (capacity == INT32_MAX) return 0;
  const int64_t grown = int64_t{capacity} + std::max(step, capacity / 2);
  return static_cast<int32_t>(std::min<int64_t>(grown, INT32_MAX));
}

// Makes room for `capacity` values, keeps the first `count`; the others are 0. False if there is no
// memory, and the array stays as it was.
template <class T>
bool grow_array(OwnedArray<T> *array, size_t count, size_t capacity) {
  static_assert(std::is_trivially_copyable_v<T>);
  auto grown = allocate_zeroed_array<T>(capacity);
  if (!grown) return false;
  if (count > 0) std::memcpy(grown.get(), array->get(), count * sizeof(T));
  *array = std::move(grown);
  return true;
}

}  // namespace quorix
