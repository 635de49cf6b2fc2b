// SPDX-License-Identifier: MIT
//
// Questions about the screen and the current window (qqwwsc).
#include "quorix/window.h"
#include "window/ask.h"
#include "window/window.h"

namespace quorix {

namespace {

enum Question : int32_t { ask_client_size = 1, ask_place = 2 };  // all others: the screen

// The set, where windows have been opened and the events that wait are taken, so that a change of
// size that the user has just made counts. Taking them may release everything.
const WindowSet *set_after_events() {
  const WindowSet *set = current_window_set();
  if (set == nullptr || !set->initialised) return nullptr;
  ask(window_system()->pump);
  set = current_window_set();
  return set != nullptr && set->window != no_window ? set : nullptr;
}

void tell_client_size(int32_t *a, int32_t *b) {
  const WindowSet *set = set_after_events();
  if (set != nullptr) ask(window_system()->client_size, set->window, a, b);
}

void tell_place(int32_t *a, int32_t *b) {
  const WindowSet *set = set_after_events();
  WindowPlace place = {};
  if (set == nullptr || !ask(window_system()->place, set->window, &place)) return;
  *a = place.left;
  *b = place.top;
}

ScreenInfo screen_in_use() {
  const WindowSet *set = current_window_set();
  if (set != nullptr && set->initialised) {
    const Page &page = output_context->page;
    return {page.screen_width, page.screen_height, page.screen_bits};
  }
  ScreenInfo screen = {};
  ask(window_system()->screen, &screen);
  return screen;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqwwsc(int32_t *a, int32_t *b, int32_t *c, int32_t *mode) {
  *a = *b = *c = 0;
  switch (*mode) {
    case quorix::ask_client_size:
      quorix::tell_client_size(a, b);
      break;
    case quorix::ask_place:
      quorix::tell_place(a, b);
      break;
    default: {
      const quorix::ScreenInfo screen = quorix::screen_in_use();
      *a = screen.width;
      *b = screen.height;
      *c = screen.bits;
      break;
    }
  }
  return 0;
}
