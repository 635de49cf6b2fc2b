// SPDX-License-Identifier: MIT
//
// Where a plot window stands and how large it is: plain arithmetic on the screen, the frame and
// what the caller asked for.
#pragma once

#include <cstdint>

#include "window/window_system.h"

namespace quorix {

// Devices from 72 to 79 are the eight windows; the last two are full-size ones in the first slot.
inline constexpr int32_t first_window_device = 72;
inline constexpr int32_t last_numbered_device = 79;
inline constexpr int32_t full_size_device = 80;
inline constexpr int32_t full_size_gl_device = 81;

inline bool is_window_device(int32_t device) {
  return device >= first_window_device && device <= full_size_gl_device;
}

enum PlacementMode : int32_t {
  compute_size_and_place = 0,
  keep_size_and_place = 1  // all other numbers keep the size and compute the place
};

// The tens digit of qqwini's options.
enum PositionMode : int32_t {
  position_by_device = 0,
  position_lower_right = 1,
  position_upper_right = 2,
  position_upper_left = 3,
  position_lower_left = 4,
  position_centre = 5
};

struct WindowRequest {
  int32_t device;
  int32_t page_width, page_height;  // of the paper; their ratio is the window's
  int32_t placement;                // PlacementMode
  int32_t x, y, width, height;      // the caller's wish
};

struct WindowPlacement {
  int32_t x, y;           // of the outer window on the screen
  int32_t width, height;  // of what is drawn on
};

// The room that frame and caption take, which is none without a border.
FrameMetrics frame_in_use(const FrameMetrics &frame, bool bordered);

// Sizes below 1 become 1. `frame` is what frame_in_use gives.
WindowPlacement place_window(const WindowRequest &request, const ScreenInfo &screen,
                             const FrameMetrics &frame, int32_t position_mode);

}  // namespace quorix
