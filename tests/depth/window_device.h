// SPDX-License-Identifier: MIT
//
// A PlainWindow as the library's window device: its bitmap, its pixels one at a time, its colour
// map, its copies for compositing, and its OpenGL calls, each noted with its arguments.

#pragma once

#include "core/device.h"
#include "tests/depth/plain_window.h"

namespace quorix::testing {

// The window device of the library while in scope; one at a time. The record's screen_bits are not
// touched: see attach.
class WindowDevice {
 public:
  explicit WindowDevice(PlainWindow *window);
  ~WindowDevice();
  WindowDevice(const WindowDevice &) = delete;
  WindowDevice &operator=(const WindowDevice &) = delete;

  // Tells the drawing record, if there is one, what a window family would: the depth of the
  // display, and whether it draws through OpenGL.
  static void attach(bool opengl);

  // Copies handed out and not yet put back.
  static int32_t copies_out();
  // While set, no bitmap and no copy can be had.
  static void refuse_bitmaps(bool refuse);
};

}  // namespace quorix::testing
