// SPDX-License-Identifier: MIT
//
// qqwwincb: tells the plotting layer that a plot window has another size.
#include "core/output_context.h"
#include "platform/callbacks.h"
#include "quorix/system.h"
#include "window/window_set.h"

namespace quorix {

namespace {

using WindowCallback = void (*)(int32_t *window, int32_t *x, int32_t *y, int32_t *width,
                                int32_t *height);

}  // namespace

}  // namespace quorix

extern "C" int32_t qqwwincb(void) {
  quorix::OutputContext *const context = quorix::output_context;
  void *const function = quorix::callback_slots.window;
  if (context == nullptr || function == nullptr || context->window.pending_window_event == 0)
    return 0;
  if (context->window.window_set == nullptr) return 0;
  int32_t window = context->window.pending_window_event;
  context->window.pending_window_event = 0;
  if (window < 1 || window > quorix::window_slot_count) return 0;
  quorix::WindowSlot &slot = context->window.window_set->slots[window - 1];
  reinterpret_cast<quorix::WindowCallback>(function)(&window, &slot.left, &slot.top,
                                                     &slot.seen_width, &slot.seen_height);
  return 0;
}
