// SPDX-License-Identifier: MIT
//
// Arrays that grow at their end.
//
// The owner keeps the array, how many values it holds and for how many it has room. It sets the
// room only after the array has it:
//
//   const int32_t room = grown_room(list->room, list->count + 1);
//   if (!grow_array(&list->values, list->count, room)) return false;  // the list is as it was
//   list->room = room;
#pragma once

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "base/memory.h"

namespace quorix {

// The next room of an array that must hold `needed` values: twice what it was, so that copying
// stays in proportion to what is stored, as far as the type of the numbers goes.
template <class Size>
Size grown_room(Size room, Size needed) {
  constexpr Size most = std::numeric_limits<Size>::max();
  const Size doubled = room > most / 2 ? most : static_cast<Size>(2 * room);
  return std::max(doubled, needed);
}

// What stands behind the values that were kept.
enum class NewValues { undefined, zero };

// Gives an array room for `room` values and keeps the first `used`. False without memory, and the
// array is as it was.
template <class T, class Size>
bool grow_array(OwnedArray<T> *array, Size used, Size room,
                NewValues new_values = NewValues::undefined) {
  static_assert(std::is_trivially_copyable_v<T>);
  const auto count = static_cast<size_t>(room);
  OwnedArray<T> grown =
      new_values == NewValues::zero ? allocate_zeroed_array<T>(count) : allocate_array<T>(count);
  if (grown == nullptr) return false;
  if (used > 0) std::memcpy(grown.get(), array->get(), static_cast<size_t>(used) * sizeof(T));
  *array = std::move(grown);
  return true;
}

}  // namespace quorix
