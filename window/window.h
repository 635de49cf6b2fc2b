// SPDX-License-Identifier: MIT
//
// What the files of the window family share, grouped by file.
//
// An exported operation finds the record, and the WindowSet in it, and hands both on as one
// OutputContext. Everything here is logic: what a platform does goes through window_system() and
// the Canvas of the current window, what happens in windows comes in through window_events.h.
#pragma once

#include <cstdint>

#include "core/device.h"
#include "core/output_context.h"
#include "window/canvas.h"
#include "window/placement.h"
#include "window/window_events.h"
#include "window/window_set.h"
#include "window/window_system.h"

namespace quorix {

// The WindowSet of the record of the process, or null.
inline WindowSet *current_window_set() {
  return output_context == nullptr ? nullptr : output_context->window.window_set;
}

inline WindowSlot &current_window(WindowSet *set) {
  return set->slots[set->current_slot];
}
inline const WindowSlot &current_window(const WindowSet *set) {
  return set->slots[set->current_slot];
}

// Colours on this display are entries of a palette.
inline bool uses_palette(const WindowSet *set) {
  return set->palette_mode == palette_of_129 || set->palette_mode == palette_of_16;
}
inline constexpr uint32_t palette_colour = 0x1000000;  // plus the entry

// The slot of an open window, or no_slot.
int32_t open_slot_of(const WindowSet *set, WindowId window);
bool any_window_open(const WindowSet *set);

// ---- titles.cpp
inline constexpr int32_t title_capacity = 100;  // of a title of the library's own, without its zero
inline constexpr char title_working[] = " / Working";
void compose_title(const OutputContext *context, int32_t slot, const char *behind, char *title);
// "QUORIX", " GL" where OpenGL draws, the number, and what stands behind.
void write_window_title(OutputContext *context, int32_t slot, const char *behind);
// So, unless the caller gave the window a title, or owns the window.
void write_own_title(OutputContext *context, int32_t slot, const char *behind);
void release_title(WindowSlot *slot);

// ---- open.cpp
// Opens the window of request.device, which becomes the current one, and tells the size of what is
// drawn on. The device has been set up.
void open_window(OutputContext *context, const WindowRequest &request, int32_t *actual_width,
                 int32_t *actual_height);

// ---- canvas_setup.cpp
// The bitmap that the current window is drawn through, or the window itself; nothing while OpenGL
// draws.
void set_up_canvas(OutputContext *context);
// OpenGL's context for the current window. False where it cannot be had, after a message.
bool set_up_gl(OutputContext *context);
// Gives a canvas the pen, text colour, font and palette in force.
void select_drawing_tools(OutputContext *context, Canvas *canvas);
// Words that the user has to see; an error is the system's number.
void show_device_message(const char *text);
void show_device_error(const char *text, int32_t error);

// ---- teardown.cpp
// Closes one window without a word to the others: what it is drawn through, and, unless it is the
// caller's, the window itself.
void close_slot(OutputContext *context, int32_t slot);
// Closes all windows and gives back what they shared.
void tear_down_windows(OutputContext *context);
// Closes one window and makes the main one current.
void close_window(OutputContext *context, int32_t slot);

// ---- select.cpp
// Makes another window the current one, if it is open.
void select_window(OutputContext *context, int32_t slot);

// Whether a window's number, counted from 1, is that of an open one.
bool is_open_number(int32_t number);
// OpenGL draws in the current window from now on, if it draws there.
void make_gl_current(OutputContext *context);

// ---- colours.cpp
void set_window_colour(OutputContext *context, int32_t colour);
// Gives the canvas a pen of the width, style and colour in force, if it has another.
void renew_pen(OutputContext *context);
// As a canvas takes it.
uint32_t display_colour_of_index(const OutputContext *context, int32_t index);
uint32_t display_colour_of_rgb(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b);
inline uint32_t display_rgb(uint8_t r, uint8_t g, uint8_t b) {
  return static_cast<uint32_t>(r) | static_cast<uint32_t>(g) << 8 | static_cast<uint32_t>(b) << 16;
}

// ---- lines.cpp
inline constexpr int32_t pen_draw = 2;
inline constexpr int32_t pen_move = 3;
inline constexpr int32_t pen_keep = 999;  // draws what is gathered, the pen stays
void move_window_pen(OutputContext *context, int32_t x, int32_t y, int32_t pen);
// Draws what is gathered; the pen stays where it is.
void flush_window(OutputContext *context);

// ---- direct_drawing.cpp: drawing into image_bits while direct access is on
// The pixel that the current colour makes; off the bitmap: nothing.
void put_direct_pixel(OutputContext *context, int64_t x, int64_t y);
void fill_direct_rectangle(OutputContext *context, int64_t x, int64_t y, int64_t width,
                           int64_t height);
// Both ends included.
void draw_direct_segment(OutputContext *context, CanvasPoint from, CanvasPoint to);

// ---- areas.cpp
void fill_window_rectangle(OutputContext *context, int32_t x, int32_t y, int32_t width,
                           int32_t height, int32_t colour);

// ---- write_pixels.cpp, read_pixels.cpp: as a Device's write_row and read_rectangle
void write_window_row(OutputContext *context, const uint8_t *row, int32_t x, int32_t y, int32_t n);
void read_window_rectangle(OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                           int32_t rows);

// ---- polygons.cpp
// Forgets the corners of the polygon under construction.
void release_polygon(WindowSet *set);

// ---- device.cpp
extern const Device plot_window_device;

// ---- show.cpp
struct ScrollOffset {
  int32_t x, y;
};
// Where in its bitmap a scrolled host window begins; 0, 0 for all others.
ScrollOffset scroll_offset(const WindowSet *set, int32_t slot);
// Draws what is gathered, takes the events that wait, and shows all windows.
void show_now(OutputContext *context);
// Puts what was drawn onto the screen, in all open windows.
void show_windows(OutputContext *context);
// A host window's plot ends but its picture lives on: makes its scroll record.
void keep_for_repaint(OutputContext *context, int32_t slot);
// Releases the scroll record of a window, or all of them.
void release_sub_window(OutputContext *context, WindowId window);
void release_sub_windows(OutputContext *context);

}  // namespace quorix
