// SPDX-License-Identifier: MIT
//
// The window device's front door: what happens in its windows.
//
// Called by the window system, and by tests. A window procedure or an event handler is a thin
// translation into these calls. Each finds the records anew, since the one before may have released
// them, and windows that the device does not know are nobody's affair. What returns bool says
// whether the event was used up; the system does its own default otherwise.
#pragma once

#include <cstdint>

#include "window/window_system.h"

namespace quorix {

// Keys that matter; all others have number 0.
enum class Key : uint8_t { other, left, up, right, down, escape, enter };

bool window_key_pressed(WindowId window, Key key);
bool window_character(WindowId window, int32_t code);

// Positions are client coordinates.
void window_pointer_moved(WindowId window, int32_t x, int32_t y);
void window_left_pressed(WindowId window, int32_t x, int32_t y);
void window_left_released(WindowId window, int32_t x, int32_t y);
void window_right_released(WindowId window);

void window_resized(WindowId window, bool minimised);
// The user let go of the frame.
void window_resize_ended(WindowId window);
void window_needs_paint(WindowId window);
void window_close_requested(WindowId window);
void window_destroyed(WindowId window);

// Codes of scroll events; their values are the platform's own.
enum class ScrollCode : uint8_t {
  line_back = 0,
  line_forward = 1,
  page_back = 2,
  page_forward = 3,
  thumb_released = 4,
  thumb_moved = 5,
  first = 6,
  last = 7,
  ended = 8
};
void window_scrolled(WindowId window, ScrollAxis axis, ScrollCode code, int32_t position);

}  // namespace quorix
