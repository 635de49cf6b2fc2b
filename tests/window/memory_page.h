// SPDX-License-Identifier: MIT
// Plot windows on the desktop in memory, and users who do what a test says.

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "window/memory/memory_desktop.h"
#include "window/window_events.h"

namespace quorix::testing {

// How a device is opened; the defaults give a window of 200 x 150 pixels, device 72.
struct WindowWish {
  int32_t device = 72;
  int32_t page_width = 4, page_height = 3;
  int32_t placement = 2;
  int32_t x = 0, y = 0;
  int32_t width = 200, height = 150;
  uint8_t colour_mode = 0;
  int32_t buffering = 0;
  int32_t options = 0;
};

// Opens the device and loads a palette of greys, entry i being (i, i, i).
void open_device(const WindowWish &wish = {});
// Opens a further window.
void open_window(int32_t device);

// The window of a number from 1 on.
WindowId window_number(int32_t number);
WindowId current_window_id();
std::string title_of(WindowId window);

// Every test begins and ends without a record, on the standard desktop in memory.
class WindowTest : public ::testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;
  // The user: what happens, in turn, in the waits to come. After the last step the user goes on as
  // one does without a script.
  void user_does(std::vector<std::function<void()>> steps);
  size_t steps_left() const { return steps_.size() - next_; }

 private:
  static bool next_step(void *data);
  std::vector<std::function<void()>> steps_;
  size_t next_ = 0;
};

}  // namespace quorix::testing
