// SPDX-License-Identifier: MIT
//
// The window device's part of the drawing record. Not installed.
#pragma once

#include <cstdint>

namespace quorix {

inline constexpr uint32_t default_pen_style = 0x11100;  // geometric, square caps, bevel joins

inline constexpr int32_t window_slot_count = 8;

// One plot window. Windows are numbered from 1 on outside, from 0 on here.
struct WindowSlot {
  int32_t left, top;                // position after a change of size
  int32_t seen_width, seen_height;  // the client area's size as last seen
};

struct WindowSet {
  WindowSlot slots[window_slot_count];
  uint32_t pen_style;
};

}  // namespace quorix
