// SPDX-License-Identifier: MIT
//
// The window device's part of the drawing record.
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

struct OutputContext;

// The record's WindowSet, made if it has none. Without memory it says so and ends the process with
// code 0.
WindowSet *require_window_set(OutputContext *context);

// All options back to their defaults: the record's, the window device's and the callbacks.
void restore_defaults(OutputContext *context);

}  // namespace quorix
