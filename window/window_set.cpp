// SPDX-License-Identifier: MIT
//
// The window device's record: birth, defaults and end.
#include "window/window_set.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "base/memory.h"
#include "core/output_context.h"
#include "platform/callbacks.h"
#include "platform/message.h"
#include "window/window.h"

namespace quorix {

namespace {

// Windows and what hangs on them first, then the record.
void release_window_set(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  release_sub_windows(context);
  tear_down_windows(context);
  release_polygon(set);
  if (window_family_device(context) == &plot_window_device) register_window_device(nullptr);
  context->window.window_active = 0;
  release_bytes(set);
  context->window.window_set = nullptr;
}

}  // namespace

WindowSet *require_window_set(OutputContext *context) {
  if (context->window.window_set != nullptr) return context->window.window_set;
  void *block = allocate_zeroed_bytes(sizeof(WindowSet));
  if (block == nullptr) {
    show_message("Not enough memory for windows output", "quoini");
    std::exit(0);
  }
  auto *set = new (block) WindowSet();
  set->pen_style = default_pen_style;
  set->colorref = 0xFFFFFF;
  set->continue_mode = continue_idle;
  set->previous_slot = no_slot;
  set->active_cursor = cursor_cross;
  set->end_cursor = cursor_arrow;
  context->window.window_set = set;
  release_with_context(context, release_window_set);
  return set;
}

void restore_defaults(OutputContext *context) {
  set_output_defaults(context);
  clear_callbacks();
  if (context->window.window_set != nullptr) {
    context->window.window_set->pen_style = default_pen_style;
  }
}

int32_t open_slot_of(const WindowSet *set, WindowId window) {
  if (window == no_window) return no_slot;
  for (int32_t i = 0; i < window_slot_count; ++i) {
    if (set->slots[i].open && set->slots[i].window == window) return i;
  }
  return no_slot;
}

bool any_window_open(const WindowSet *set) {
  return std::any_of(set->slots, set->slots + window_slot_count,
                     [](const WindowSlot &slot) { return slot.open; });
}

}  // namespace quorix
