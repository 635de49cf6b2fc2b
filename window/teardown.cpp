// SPDX-License-Identifier: MIT
//
// Closing windows: one of them (qqwcls), or all together with what they shared.
#include <algorithm>
#include <iterator>

#include "quorix/window.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/window.h"

namespace quorix {

namespace {

bool any_gl(const WindowSet *set) {
  return std::any_of(std::begin(set->slots), std::end(set->slots),
                     [](const WindowSlot &slot) { return slot.has_gl; });
}

void release_gl_font(const WindowSet *set) {
  if (set->font_selected) ask(window_system()->gl->release_font);
}

// Everything of all slots but the current one first: whoever waits hears of the end when the
// current window goes.
void close_all_slots(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  for (int32_t i = 0; i < window_slot_count; ++i) {
    if (i != set->current_slot) close_slot(context, i);
  }
  close_slot(context, set->current_slot);
}

// What was drawn into memory alone goes with its window.
void leave_canvas(OutputContext *context) {
  drop_image(context, false);
  context->window.direct_bitmap = 0;
  context->window.window_set->draw_canvas = nullptr;
}

}  // namespace

void close_slot(OutputContext *context, int32_t index) {
  WindowSet *set = context->window.window_set;
  WindowSlot &slot = set->slots[index];
  const bool own = slot.window != no_window && !slot.external;
  slot.open = false;
  if (slot.has_gl) {
    window_system()->gl->make_current(no_window);
    window_system()->gl->close(slot.window);
    slot.has_gl = false;
  }
  if (slot.canvas != nullptr) {
    if (set->draw_canvas == slot.canvas) leave_canvas(context);
    slot.canvas->calls->close(slot.canvas);
    slot.canvas = nullptr;
  }
  // The window's end is heard by events as that of the window it was.
  if (own) window_system()->close(slot.window);
  if (index == set->current_slot) set->window = no_window;
  slot.window = no_window;
}

void tear_down_windows(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  for (WindowSlot &slot : set->slots)
    release_title(&slot);
  if (any_gl(set)) release_gl_font(set);
  close_all_slots(context);
  set->font_selected = false;
  set->initialised = false;
  if (set->class_registered) ask(window_system()->unregister_class);
  set->class_registered = false;
  context->window.opengl_on = 0;
}

void close_window(OutputContext *context, int32_t slot) {
  WindowSet *set = context->window.window_set;
  if (!set->slots[slot].open) return;
  release_title(&set->slots[slot]);
  const bool gl = set->slots[slot].has_gl;
  if (gl) release_gl_font(set);
  close_slot(context, slot);
  if (set->current_slot == set->main_slot) {
    // Nothing is selected anew, but closing took OpenGL's context away.
    if (gl) make_gl_current(context);
  } else {
    select_window(context, set->main_slot);
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwcls(int32_t number) {
  if (is_open_number(number)) close_window(output_context, number - 1);
  return 0;
}
