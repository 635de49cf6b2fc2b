// SPDX-License-Identifier: MIT
//
// Asking the user for points: qqwcu1 to qqwcu7. Each sets `cursor_mode`, waits in a nested loop
// while window_events.cpp fills the caller's arrays, and takes its results when the loop ends.
//
// The wait may end because the window was closed, or everything was released by a callback: what
// was collected so far is the result then.
#include "quorix/interaction.h"

#include <algorithm>

#include "window/window.h"

namespace quorix {

namespace {

struct Collected {
  int32_t count;
  bool overflow;
  ScrollOffset offset;
  int32_t x1, y1, x2, y2;  // the rubber band
  int32_t last_key;
};

// The set, if there is a window to ask in.
WindowSet *set_with_window() {
  WindowSet *set = current_window_set();
  return set != nullptr && set->window != no_window && any_window_open(set) ? set : nullptr;
}

// The user cannot close a window in which something is asked. The main window's close entry is
// disabled while a plot is drawn anyway.
void enable_close(const WindowSet *set, WindowId window, bool enabled) {
  if (set->current_slot == set->main_slot) return;
  if (open_slot_of(set, window) == no_slot) return;
  window_system()->enable_close(window, enabled);
}

// Waits in `mode`, and tells what came of it; nothing, if the record is gone.
Collected collect(WindowSet *set, CursorMode mode, int32_t *x, int32_t *y, int32_t capacity) {
  set->cursor_mode = mode;
  set->cursor_x = x;
  set->cursor_y = y;
  set->cursor_count = 0;
  set->cursor_capacity = capacity;
  set->cursor_overflow = false;
  set->rubber_state = rubber_none;
  set->rubber_x1 = set->rubber_y1 = set->rubber_x2 = set->rubber_y2 = 0;
  const WindowId window = set->window;
  enable_close(set, window, false);
  window_system()->wait();
  set = current_window_set();
  if (set == nullptr) return {};
  enable_close(set, window, true);
  Collected result = {set->cursor_count, set->cursor_overflow, {0, 0},         set->rubber_x1,
                      set->rubber_y1,    set->rubber_x2,       set->rubber_y2, set->last_key};
  const int32_t slot = open_slot_of(set, window);
  if (slot != no_slot) result.offset = scroll_offset(set, slot);
  set->cursor_mode = cursor_none;
  set->cursor_x = set->cursor_y = nullptr;
  return result;
}

int32_t ask_points(CursorMode mode, int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                   int32_t *overflow) {
  *count = 0;
  *overflow = 0;
  WindowSet *set = set_with_window();
  if (set == nullptr) return 0;
  const Collected result = collect(set, mode, x, y, capacity);
  for (int32_t i = 0; i < result.count; ++i) {
    x[i] += result.offset.x;
    y[i] += result.offset.y;
  }
  *count = result.count;
  *overflow = result.overflow ? 1 : 0;
  return 0;
}

// The pointer's place in the current window; false where the system cannot tell.
bool pointer_place(const WindowSet *set, PointerPlace *place) {
  const WindowSystem *system = window_system();
  return system->pointer != nullptr && system->pointer(set->window, place);
}

// The cursor shows at once if the pointer is over the window already.
void show_cursor_if_inside(const WindowSet *set) {
  PointerPlace place = {};
  if (set->active_cursor == cursor_kind_none || !pointer_place(set, &place)) return;
  const WindowSlot &slot = set->slots[set->current_slot];
  const bool inside =
      place.x >= 0 && place.y >= 0 && place.x < slot.client_width && place.y < slot.client_height;
  if (inside) window_system()->set_cursor(set->active_cursor);
}

int32_t ask_band(CursorMode mode, int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2) {
  WindowSet *set = set_with_window();
  if (set == nullptr) return 0;
  window_system()->raise(set->window);
  window_system()->focus(set->window);
  show_cursor_if_inside(set);
  const Collected result = collect(set, mode, nullptr, nullptr, 0);
  *x1 = result.x1 + result.offset.x;
  *y1 = result.y1 + result.offset.y;
  *x2 = result.x2 + result.offset.x;
  *y2 = result.y2 + result.offset.y;
  return 0;
}

// ---- qqwcu4

enum PointerRequest : int32_t {
  move_and_wait = 0,
  only_move = 1,
  only_wait = 2,
  report_place = 3,
  report_key = 4,
};

void move_pointer(const OutputContext *context, const WindowSet *set, int32_t x, int32_t y) {
  const ScrollOffset offset = scroll_offset(set, set->current_slot);
  const Page &page = context->page;
  const int32_t px = std::max(page.clip_x1, std::min(x - offset.x, page.clip_x2));
  const int32_t py = std::max(page.clip_y1, std::min(y - offset.y, page.clip_y2));
  window_system()->set_pointer(set->window, px, py);
}

void report_pointer(const WindowSet *set, int32_t *x, int32_t *y) {
  PointerPlace place = {};
  if (!pointer_place(set, &place)) return;
  const ScrollOffset offset = scroll_offset(set, set->current_slot);
  *x = place.x + offset.x;
  *y = place.y + offset.y;
}

int32_t wait_for_any_key(WindowSet *set) {
  set->last_key = key_none_yet;
  return collect(set, cursor_any_key, nullptr, nullptr, 0).last_key;
}

int32_t take_last_key(WindowSet *set, int32_t request) {
  const int32_t key = set->last_key;
  set->last_key = 0;
  const bool button = key == key_left_button || key == key_right_button;
  return request == report_key && button ? 0 : key;
}

// Waits as the request says, and gives what the caller's mode becomes.
int32_t ask_key(WindowSet *set, int32_t request, int32_t *x, int32_t *y) {
  if (request != only_move) window_system()->raise(set->window);
  if (request == move_and_wait || request == only_move) move_pointer(output_context, set, *x, *y);
  switch (request) {
    case move_and_wait:
    case only_wait: {
      const int32_t key = wait_for_any_key(set);
      set = set_with_window();
      if (set != nullptr) report_pointer(set, x, y);
      return key;
    }
    case report_place:
      report_pointer(set, x, y);
      return take_last_key(set, request);
    case report_key:
      return take_last_key(set, request);
    default:
      return 0;
  }
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwcu1(int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                          int32_t *overflow) {
  return ask_points(cursor_points, x, y, capacity, count, overflow);
}

extern "C" int32_t qqwcu2(int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                          int32_t *overflow) {
  return ask_points(cursor_path, x, y, capacity, count, overflow);
}

extern "C" int32_t qqwcu3(int32_t *x, int32_t *y) {
  WindowSet *set = set_with_window();
  if (set == nullptr) return 0;
  const Collected result = collect(set, cursor_click, x, y, 1);
  if (result.count == 0) return 0;
  *x += result.offset.x;
  *y += result.offset.y;
  return 0;
}

extern "C" int32_t qqwcu4(int32_t *x, int32_t *y, int32_t *mode) {
  const int32_t request = std::max(*mode, 0);
  *mode = 0;
  WindowSet *set = set_with_window();
  if (set != nullptr) *mode = ask_key(set, request, x, y);
  return 0;
}

extern "C" int32_t qqwcu5(int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2) {
  return ask_band(cursor_rectangle, x1, y1, x2, y2);
}

extern "C" int32_t qqwcu6(int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2) {
  return ask_band(cursor_line, x1, y1, x2, y2);
}

extern "C" int32_t qqwcu7(int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                          int32_t *overflow) {
  return ask_points(cursor_polygon, x, y, capacity, count, overflow);
}
