// SPDX-License-Identifier: MIT
//
// A desktop in memory: windows are records, their pictures bitmaps, and nobody looks.
//
// What a program does on a screen it does here too, and its files come out right. A wait ends at
// once, as if the user had gone on: the right button is released over each window, then the left
// one pressed and released where the pointer is, then the window closed, until the wait has ended.
// With a script of events it is the desktop that tests use. There is no OpenGL, and there are no
// fonts.
#pragma once

#include "window/window_system.h"

namespace quorix {

extern const WindowSystem memory_window_system;

// ---- For tests and for dialogs in memory

// The screen and the frames that windows get from now on. The default is a screen of 1920 x 1080
// pixels of 32 bits, frames of 4 pixels and captions of 22.
void set_memory_screen(const ScreenInfo &screen);
void set_memory_frame(const FrameMetrics &frame);

// Called by a wait, again and again until it quits, in place of a user who goes on at once. False:
// the script has nothing more, and the user goes on. Null: there is no script.
using MemoryScript = bool (*)(void *data);
void set_memory_script(MemoryScript script, void *data);

// A window that belongs to the caller, with a client area of this size; no_window without memory.
WindowId open_memory_host(int32_t width, int32_t height);
void set_memory_scroll(WindowId window, ScrollAxis axis, const ScrollState &state);
// The user changes the size of a client area and lets go of the frame.
void resize_memory_window(WindowId window, int32_t width, int32_t height);
void set_memory_pointer(WindowId window, int32_t x, int32_t y);

// What the tests see of a window; false where there is no such window.
struct MemoryWindowState {
  const char *title;
  int32_t left, top;
  int32_t width, height;  // of the client area
  bool bordered, shown, close_enabled;
  int32_t cursor;  // CursorKind of its class
};
bool memory_window_state(WindowId window, MemoryWindowState *state);
int32_t memory_window_count();
int32_t memory_cursor();

// From now on windows keep what they show, for memory_window_colour to tell: red in the low byte,
// 0 off the window.
void keep_memory_screens(bool keep);
uint32_t memory_window_colour(WindowId window, int32_t x, int32_t y);

}  // namespace quorix
