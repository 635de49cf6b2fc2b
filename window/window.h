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

// The slot of an open window, or no_slot.
int32_t open_slot_of(const WindowSet *set, WindowId window);
bool any_window_open(const WindowSet *set);

// ---- titles.cpp
// "QUORIX", " GL" where OpenGL draws, the number, and what stands behind.
void write_window_title(OutputContext *context, int32_t slot, const char *behind);
// So, unless the caller gave the window a title, or owns the window.
void write_own_title(OutputContext *context, int32_t slot, const char *behind);

// ---- open.cpp
// The bitmap or context that a window is drawn through, once it stands.
void set_up_canvas(OutputContext *context);

// ---- teardown.cpp
// Closes all windows and gives back what they shared.
void tear_down_windows(OutputContext *context);
// Closes one window and makes the main one current.
void close_window(OutputContext *context, int32_t slot);

// ---- select.cpp
void select_window(OutputContext *context, int32_t slot);

// ---- lines.cpp
inline constexpr int32_t pen_draw = 2;
inline constexpr int32_t pen_move = 3;
inline constexpr int32_t pen_keep = 999;  // draws what is gathered, the pen stays
void move_window_pen(OutputContext *context, int32_t x, int32_t y, int32_t pen);
// Draws what is gathered; the pen stays where it is.
void flush_window(OutputContext *context);

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
