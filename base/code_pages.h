// SPDX-License-Identifier: MIT
//
// The single-byte code pages that text may be written in.
#pragma once

#include <cstdint>

namespace quorix {

// A byte below `first` is a unit of the same value; the unit of any other is units[byte - first].
struct CodePage {
  uint32_t first;
  const uint16_t *units;
};

// The page of charset 2 or 3; for any other one in which every byte is its own unit.
CodePage code_page(int32_t charset);

}  // namespace quorix
