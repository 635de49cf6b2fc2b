// SPDX-License-Identifier: MIT
//
// The window device's part of the drawing record: up to eight plot windows, and what the events in
// them need.
//
// It hangs on the drawing record, made by the first operation of the device, released with the
// record. No field has a type of a platform: windows are numbers that the window system hands out
// (window_system.h), drawing goes to a Canvas (canvas.h), and cursors, colours and pens are the
// device's own numbers.
#pragma once

#include <cstddef>
#include <cstdint>

#include "window/canvas.h"
#include "window/window_system.h"

namespace quorix {

struct OutputContext;

inline constexpr uint32_t default_pen_style = 0x11100;  // geometric, square caps, bevel joins

inline constexpr int32_t window_slot_count = 8;
inline constexpr int32_t no_slot = -1;
inline constexpr int32_t line_capacity = 100;

enum PaletteMode : uint8_t {
  palette_none = 0,        // colours stay as they are
  palette_of_129 = 1,      // a screen of 8 bits
  palette_of_16 = 2,       // a screen of 4 bits
  palette_true_colour = 3  // above 8 bits
};

// The units digit of qqwfin's argument.
enum ContinueMode : uint8_t {
  continue_closes = 0,       // waits, then tears all windows down
  continue_leaves = 1,       // waits, the windows stay
  continue_at_once = 2,      // does not wait, the windows stay
  continue_tears_down = 3,   // does not wait, tears all windows down
  continue_after_delay = 4,  // sleeps, tears all windows down
  continue_when_closed = 5,  // waits until the user closes the window
  continue_idle = 10         // between plots
};

enum ContinueKey : uint8_t { continue_no_key = 0, continue_return = 1, continue_escape = 2 };

enum CursorMode : uint8_t {
  cursor_none = 0,
  cursor_points = 1,     // clicks until the right button
  cursor_path = 2,       // a path while the left button is held
  cursor_click = 3,      // one click
  cursor_any_key = 4,    // any key or button
  cursor_rectangle = 5,  // rubber rectangle
  cursor_line = 6,       // rubber line
  cursor_polygon = 7     // rubber polygon, ended by the right button
};

enum RubberState : uint8_t {
  rubber_none = 0,
  rubber_started = 1,  // no move yet
  rubber_moved = 2,
  rubber_point = 3  // a corner of the polygon was taken
};

enum LastKey : int32_t {
  key_none_yet = -1,
  key_left = 1,
  key_up = 2,
  key_right = 3,
  key_down = 4,
  key_left_button = 5,
  key_right_button = 6,
  key_escape = 27,
};

// One plot window. Windows are numbered from 1 on outside, from 0 on here.
struct WindowSlot {
  char *title;  // owned; null: the library writes its own
  WindowId window;
  Canvas *canvas;  // of this window, closed with it; null while OpenGL draws
  bool has_gl;     // OpenGL has a context for it
  int32_t client_width, client_height;
  int32_t bitmap_width, bitmap_height;
  int32_t width, height;            // the drawing size
  int32_t left, top;                // position after a change of size
  int32_t seen_width, seen_height;  // the client area's size as last seen
  int32_t clip_x1, clip_y1, clip_x2, clip_y2;
  bool open, external, finished, scrollable, hidden;
};

// A host window that outlives its plot: its bitmap goes on serving paint messages.
struct SubWindow {
  WindowId window;
  Canvas *canvas;  // owned
  int32_t client_width, client_height;
  int32_t bitmap_width, bitmap_height;
  bool scrollable;
};

struct PaletteEntry {
  uint8_t r, g, b, flags;
};

struct WindowSet {
  // ---- Windows
  WindowSlot slots[window_slot_count];
  WindowId window;       // the current window
  WindowId host_window;  // the caller's, from option 1
  int32_t host_bitmap;   // from option 2, kept for whoever asks
  Canvas *draw_canvas;   // the target of all drawing: the current window's, or a metafile's
  Canvas *metafile;      // while one is open
  int32_t client_width, client_height;  // of the current window
  int32_t current_slot, main_slot, previous_slot;
  int32_t position_mode;  // 0 to 5
  bool visible, initialised, double_buffered, external, host_bitmap_set, no_border;
  bool scroll_bitmap, class_registered;
  bool drawing;  // from opening to qqwfin

  // ---- Colours and pen
  PaletteEntry palette_entries[256];
  int32_t palette_size;  // 16, 129 or 256
  uint32_t colorref;     // red in the low byte, or 0x1000000 + index
  uint32_t pen_style;    // of pens wider than 1
  CanvasPen pen;         // the pen that draw_canvas has
  uint8_t palette_mode;  // PaletteMode
  uint8_t colour_mode;   // as given to qqwini

  // ---- Lines and polygons under construction
  int32_t line_x[line_capacity], line_y[line_capacity];
  int32_t line_count;
  bool line_started;            // the one stored point is only a start point
  CanvasPoint *polygon_points;  // owned, of the open qqwpol polygon
  int32_t polygon_count, polygon_capacity;
  int32_t clip_save;  // what the clip of a metafile goes back to

  // ---- Direct access to the bitmap
  uint8_t *image_bits;  // owned while direct access is on
  size_t image_size;
  BitmapInfo bitmap_info;
  bool image_compressed;
  bool access_open;  // the canvas has handed out its bitmap

  // ---- Text
  bool font_selected;
  CanvasFont font;    // the one selected
  int32_t font_lead;  // internal and external leading
  int32_t font_angle, font_size;

  // ---- Events
  int32_t *cursor_x, *cursor_y;  // the caller's arrays
  int32_t cursor_count, cursor_capacity;
  bool cursor_overflow;
  int32_t end_cursor, active_cursor;  // CursorKind; active 0: no cursor is ever set
  int32_t last_key;                   // LastKey, or a character
  int32_t rubber_x1, rubber_y1, rubber_x2, rubber_y2;
  uint8_t continue_mode, continue_key, cursor_mode, rubber_state;
  bool in_event_loop, next_page_wait, resize_pending;
};

// The record's WindowSet, made if it has none. Without memory it says so and ends the process with
// code 0.
WindowSet *require_window_set(OutputContext *context);

// All options back to their defaults: the record's, the window device's and the callbacks.
void restore_defaults(OutputContext *context);

}  // namespace quorix
