// SPDX-License-Identifier: MIT
//
// What other families need to know of the window device.
#pragma once

#include <cstdint>

namespace quorix {

struct WindowSet;
struct SubWindow;

struct WindowState {
  WindowSet *window_set;       // owned, null until the window device or a metafile needs it
  SubWindow **widget_windows;  // owned, sub-windows served by the window device
  int32_t widget_window_count;
  int32_t pending_window_event;
  uint8_t window_active;  // the current device is a window
  uint8_t direct_bitmap;
  uint8_t opengl_on;
};

}  // namespace quorix
