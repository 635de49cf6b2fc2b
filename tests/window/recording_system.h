// SPDX-License-Identifier: MIT
// A window system that does nothing but note what it is asked, call by call, and answers what a
// test set: the screen, the frames, the failure of each step, OpenGL or none.

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/window/memory_page.h"
#include "window/window.h"

namespace quorix::testing {

struct Recording {
  std::vector<std::string> calls;
  // ---- Answers
  ScreenInfo screen = {1800, 1200, 32};
  FrameMetrics frame = {4, 4, 22};
  bool windows_fail = false, canvases_fail = false, bitmaps_fail = false, fonts_fail = false;
  bool icons_fail = false, palettes_fail = false;
  int32_t error = 1407;
  bool has_gl = true;
  GlStep gl_step = GlStep::done;
  int32_t client_width = 0, client_height = 0;  // 0: what the window was opened with
  int32_t measure_canvases = 0;                 // open at the moment
  int32_t canvases = 0;
  std::vector<WindowId> hosts;   // windows of the caller's that exist
  std::vector<uint8_t> bytes;    // of the one bitmap
  BitmapInfo info = {};          // of it; the width is 0 for the window's own size and depth
  uint32_t pixel_colour = 0;     // what every pixel of a canvas reads as
  std::vector<uint8_t> gl_rows;  // what rows of OpenGL read as, again and again
};

extern Recording recording;

// Each test has a fresh recording system, and no record before and after. Calls noted up to a
// point are forgotten by `forget`.
class RecordedWindow : public ::testing::Test {
 protected:
  RecordedWindow();
  ~RecordedWindow() override;
  static void forget() { recording.calls.clear(); }
  // What was noted since the last time.
  static std::vector<std::string> taken();
};

// qqwini and its results.
struct OpenedDevice {
  int32_t bits, width, height;
};
OpenedDevice open_recorded(const WindowWish &wish);
int32_t option(int32_t number, int32_t value);

using Calls = std::vector<std::string>;

}  // namespace quorix::testing
