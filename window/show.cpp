// SPDX-License-Identifier: MIT
//
// Putting pictures on the screen: at the end of a plot, on demand (qqwsbf), and when the system
// asks for a window to be painted.
//
// A host window, which belongs to the caller, outlives its plot. Its bitmap then moves from the
// window's slot into a scroll record, which goes on serving paint messages until the window is
// opened again or everything is released.
#include "base/memory.h"
#include "quorix/interaction.h"
#include "window/window.h"

namespace quorix {

namespace {

int32_t axis_offset(WindowId window, ScrollAxis axis, int32_t bitmap, int32_t client) {
  const WindowSystem *system = window_system();
  ScrollState state = {};
  if (system->scroll_state == nullptr || !system->scroll_state(window, axis, &state)) return 0;
  const int64_t range = static_cast<int64_t>(state.maximum) - state.minimum;
  if (range == 0) return 0;
  const int64_t moved = static_cast<int64_t>(state.position) - state.minimum;
  const int64_t offset = moved * (static_cast<int64_t>(bitmap) - client) / range;
  return offset < 0 || offset > INT32_MAX ? 0 : static_cast<int32_t>(offset);
}

ScrollOffset offset_of(const SubWindow &sub) {
  if (!sub.scrollable) return {0, 0};
  return {axis_offset(sub.window, ScrollAxis::horizontal, sub.bitmap_width, sub.client_width),
          axis_offset(sub.window, ScrollAxis::vertical, sub.bitmap_height, sub.client_height)};
}

void present(WindowId window, Canvas *canvas, ScrollOffset offset, int32_t width, int32_t height) {
  if (canvas == nullptr) return;
  window_system()->present(window, canvas, offset.x, offset.y, width, height);
}

void present_slot(const WindowSet *set, int32_t slot) {
  const WindowSlot &s = set->slots[slot];
  present(s.window, s.canvas, scroll_offset(set, slot), s.client_width, s.client_height);
}

void present_sub_window(const SubWindow &sub) {
  present(sub.window, sub.canvas, offset_of(sub), sub.client_width, sub.client_height);
}

void show_gl_windows(const WindowSet *set) {
  const GlSystem *gl = window_system()->gl;
  if (set->double_buffered) {
    for (const WindowSlot &slot : set->slots) {
      if (slot.open) gl->show_back_buffer(slot.window, slot.width, slot.height);
    }
    gl->make_current(set->window);
  }
  gl->flush();
}

bool has_sub_windows(const OutputContext *context) {
  for (int32_t i = 0; i < context->window.widget_window_count; ++i) {
    if (context->window.widget_windows[i] != nullptr) return true;
  }
  return false;
}

void show_sub_windows(const OutputContext *context) {
  for (int32_t i = 0; i < context->window.widget_window_count; ++i) {
    const SubWindow *sub = context->window.widget_windows[i];
    if (sub != nullptr) present_sub_window(*sub);
  }
}

void release_entry(OutputContext *context, SubWindow **entry) {
  SubWindow *sub = *entry;
  if (sub == nullptr) return;
  WindowSet *set = context->window.window_set;
  if (set != nullptr && set->draw_canvas == sub->canvas) set->draw_canvas = nullptr;
  sub->canvas->calls->close(sub->canvas);
  release_bytes(sub);
  *entry = nullptr;
}

// An empty entry of the table, or null without memory.
SubWindow **free_entry(OutputContext *context) {
  WindowState &state = context->window;
  for (int32_t i = 0; i < state.widget_window_count; ++i) {
    if (state.widget_windows[i] == nullptr) return &state.widget_windows[i];
  }
  const int32_t count = state.widget_window_count;
  auto grown = allocate_zeroed_array<SubWindow *>(static_cast<size_t>(count) + 1);
  if (!grown) return nullptr;
  for (int32_t i = 0; i < count; ++i)
    grown[static_cast<size_t>(i)] = state.widget_windows[i];
  release_bytes(state.widget_windows);
  state.widget_windows = grown.release();
  ++state.widget_window_count;
  return &state.widget_windows[count];
}

}  // namespace

ScrollOffset scroll_offset(const WindowSet *set, int32_t slot) {
  const WindowSlot &s = set->slots[slot];
  if (!set->external || !s.scrollable) return {0, 0};
  return {axis_offset(s.window, ScrollAxis::horizontal, s.bitmap_width, s.client_width),
          axis_offset(s.window, ScrollAxis::vertical, s.bitmap_height, s.client_height)};
}

void show_windows(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (context->window.opengl_on != 0) return show_gl_windows(set);
  if (!set->double_buffered) return;
  for (int32_t i = 0; i < window_slot_count; ++i) {
    if (set->slots[i].open) present_slot(set, i);
  }
}

// Without memory for the record the window loses its picture with the plot.
void keep_for_repaint(OutputContext *context, int32_t slot) {
  WindowSet *set = context->window.window_set;
  WindowSlot &s = set->slots[slot];
  s.open = false;
  if (s.canvas == nullptr) return;
  Canvas *canvas = s.canvas;
  s.canvas = nullptr;
  SubWindow **entry = free_entry(context);
  auto *sub = entry == nullptr ? nullptr
                               : static_cast<SubWindow *>(allocate_zeroed_bytes(sizeof(SubWindow)));
  if (sub == nullptr) {
    if (set->draw_canvas == canvas) set->draw_canvas = nullptr;
    canvas->calls->close(canvas);
    return;
  }
  *sub = {s.window,       canvas,          s.client_width, s.client_height,
          s.bitmap_width, s.bitmap_height, s.scrollable};
  *entry = sub;
}

void release_sub_window(OutputContext *context, WindowId window) {
  for (int32_t i = 0; i < context->window.widget_window_count; ++i) {
    SubWindow **entry = &context->window.widget_windows[i];
    if (*entry != nullptr && (*entry)->window == window) release_entry(context, entry);
  }
}

void release_sub_windows(OutputContext *context) {
  for (int32_t i = 0; i < context->window.widget_window_count; ++i)
    release_entry(context, &context->window.widget_windows[i]);
  release_bytes(context->window.widget_windows);
  context->window.widget_windows = nullptr;
  context->window.widget_window_count = 0;
}

void show_now(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (set == nullptr || (!any_window_open(set) && !has_sub_windows(context))) return;
  flush_window(context);
  // What was painted on the way shows the picture already.
  if (window_system()->pump()) return;
  context = output_context;
  if (context == nullptr || context->window.window_set == nullptr) return;
  show_sub_windows(context);
  show_windows(context);
}

void window_needs_paint(WindowId window) {
  OutputContext *context = output_context;
  const WindowSet *set = current_window_set();
  if (set == nullptr) return;
  if (context->window.opengl_on != 0) {
    const GlSystem *gl = window_system()->gl;
    const int32_t slot = open_slot_of(set, window);
    if (set->double_buffered && slot != no_slot) {
      gl->show_back_buffer(window, set->slots[slot].width, set->slots[slot].height);
      gl->make_current(set->window);
    }
    gl->flush();
    return;
  }
  if (!set->double_buffered) return;
  const int32_t slot = open_slot_of(set, window);
  if (slot != no_slot) present_slot(set, slot);
  for (int32_t i = 0; i < context->window.widget_window_count; ++i) {
    const SubWindow *sub = context->window.widget_windows[i];
    if (sub != nullptr && sub->window == window) present_sub_window(*sub);
  }
}

}  // namespace quorix

extern "C" int32_t qqwsbf(void) {
  if (quorix::output_context != nullptr) quorix::show_now(quorix::output_context);
  return 0;
}
