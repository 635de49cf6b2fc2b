// SPDX-License-Identifier: MIT
//
// Numbers of palettes on small displays, and the map between 256 indices and 16 entries.
#pragma once

#include <cstdint>

#include "base/numbers.h"

namespace quorix {

// Kinds of palettes; all others have 256 entries.
inline constexpr uint8_t kind_of_8 = 0;
inline constexpr uint8_t kind_of_16 = 7;

// How 256 indices share fewer entries: qqwini's colour mode.
inline constexpr uint8_t mode_spread = 0;     // every second one, or 16 spread over them
inline constexpr uint8_t mode_own = 1;        // each its own entry
inline constexpr uint8_t mode_first_128 = 2;  // the first 128, again and again

// The first and the last of 16 entries are exact, the others stand for what lies between.
inline constexpr double inner_entries = 13.0;
inline constexpr double inner_indices = 253.0;

inline int32_t spread_onto_16(int32_t index) {
  if (index == 0) return 0;
  if (index == 255) return 15;
  return to_int32((index - 1) * inner_entries / inner_indices + 1.5);
}

inline int32_t spread_from_16(int32_t entry) {
  if (entry == 0) return 0;
  if (entry == 15) return 255;
  return to_int32((entry - 1) * inner_indices / inner_entries + 1.5);
}

}  // namespace quorix
