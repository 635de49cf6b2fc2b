// SPDX-License-Identifier: MIT
//
// The table of windows of the desktop in memory.
#pragma once

#include "window/bitmap_canvas.h"
#include "window/window_system.h"

namespace quorix {

struct MemoryWindow {
  char *title;           // owned
  BitmapCanvas *screen;  // owned: what it shows, where that is kept or drawn into directly
  int32_t left, top;
  int32_t width, height;  // of the client area
  bool bordered, shown, close_enabled;
  int32_t class_cursor;
  ScrollState scroll[2];
};

// Null for numbers without a window.
MemoryWindow *memory_window(WindowId window);
// A zeroed window, or no_window without memory.
WindowId add_memory_window();
void remove_memory_window(WindowId window);
// One more than the highest number that was ever given.
WindowId memory_windows_end();

}  // namespace quorix
