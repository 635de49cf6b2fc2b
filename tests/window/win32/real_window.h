// SPDX-License-Identifier: MIT
// Plot windows on the real Win32 desktop, driven by a real mouse and keyboard.

#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include "quorix/quorix.h"
#include "tests/support/ui_driver_windows.h"
#include "window/win32/win32.h"
#include "window/window.h"

namespace quorix::testing {

class RealWindow : public ::testing::Test {
 protected:
  RealWindow() {
    qqwfree();
    choose_window_system(&win32_window_system);
  }
  ~RealWindow() override {
    qqwfree();
    choose_window_system(nullptr);
  }

  // A window of the given client size at (x, y), greys as its palette.
  static void open(int32_t device = 72, int32_t width = 300, int32_t height = 200,
                   int32_t buffering = 0, int32_t options = 0, int32_t x = 50, int32_t y = 60) {
    const int32_t page = 1;
    const int32_t placement = 1;
    const uint8_t colour_mode = 0;
    int32_t bits = 0;
    int32_t actual = 0;
    qqwini(device, &page, &page, &placement, &x, &y, &width, &height, &bits, &colour_mode, &actual,
           &buffering, &options);
    int32_t greys[256];
    for (int32_t i = 0; i < 256; ++i)
      greys[i] = i * 0x010101;
    qqwvlt(1, greys);
  }

  static void open_another(int32_t device, int32_t x, int32_t y) {
    const int32_t page = 1;
    const int32_t placement = 1;
    const int32_t width = 200;
    const int32_t height = 150;
    int32_t actual_width = 0;
    int32_t actual_height = 0;
    qqwopn(device, &page, &page, &placement, &x, &y, &width, &height, &actual_width,
           &actual_height);
  }

  static HWND window(int32_t number = 1) {
    return handle_of(current_window_set()->slots[number - 1].window);
  }

  static bool close_is_enabled(HWND w) {
    const UINT state = GetMenuState(GetSystemMenu(w, FALSE), SC_CLOSE, MF_BYCOMMAND);
    return (state & (MF_GRAYED | MF_DISABLED)) == 0;
  }

  static std::string title(HWND w) {
    char text[256] = "";
    GetWindowTextA(w, text, sizeof(text));
    return text;
  }
};

constexpr int32_t red = 0x010000FF;
constexpr int32_t green = 0x0100FF00;
constexpr int32_t blue = 0x01FF0000;

}  // namespace quorix::testing
