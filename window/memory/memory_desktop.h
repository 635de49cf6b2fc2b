// SPDX-License-Identifier: MIT
//
// A desktop in memory: windows are records, their pictures bitmaps, and nobody looks.
//
// What a program does on a screen it does here too, and its files come out right. A wait ends at
// once, as if the user had gone on; with a script of events it is the desktop that tests use.
// There is no OpenGL and there are no fonts.
#pragma once

#include "window/window_system.h"

namespace quorix {

extern const WindowSystem memory_window_system;

// ---- For tests

// The screen that windows open on from now on; the default is 1920 x 1080 of 32 bits.
void set_memory_screen(const ScreenInfo &screen);
void set_memory_frame(const FrameMetrics &frame);

// Called by a wait, again and again until it quits, in place of a user who goes on at once. False:
// the script has nothing more, and the user goes on.
using MemoryScript = bool (*)(void *data);
void set_memory_script(MemoryScript script, void *data);

// What a window's client area shows, 32 bits a pixel as blue, green, red, 0; null without it.
const uint8_t *memory_window_pixels(WindowId window, int32_t *width, int32_t *height);

}  // namespace quorix
