// SPDX-License-Identifier: MIT
//
// What happens in windows: one short function per event.
//
// A plotting program is sequential, so the user is heard only while some operation waits or pumps.
// Which events mean something, and what, depends on `cursor_mode` during an interaction and on
// `continue_mode` at the end of a plot. An event that ends a wait posts a quit; the operation that
// waits then takes its results out of the record.
#include "window/window_events.h"

#include <algorithm>

#include "platform/callbacks.h"
#include "window/window.h"

namespace quorix {

namespace {

// The set, if events of this window concern the interaction in progress.
WindowSet *set_of_current(WindowId window) {
  WindowSet *set = current_window_set();
  return set != nullptr && window != no_window && set->window == window ? set : nullptr;
}

void show_cursor(const WindowSet *set, int32_t kind) {
  if (set->active_cursor != cursor_kind_none) window_system()->set_cursor(kind);
}

// The interaction is over: the wait ends and the cursor says so.
void end_interaction(const WindowSet *set) {
  window_system()->quit();
  show_cursor(set, set->end_cursor);
}

void take_point(WindowSet *set, int32_t x, int32_t y) {
  if (set->cursor_count >= set->cursor_capacity) {
    set->cursor_overflow = true;
    return;
  }
  set->cursor_x[set->cursor_count] = x;
  set->cursor_y[set->cursor_count] = y;
  ++set->cursor_count;
}

// ---- The rubber band, which a second drawing takes away

bool has_rubber_band(const WindowSet *set) {
  return set->cursor_mode >= cursor_rectangle && set->cursor_mode <= cursor_polygon;
}

void draw_band(const WindowSet *set) {
  const RubberShape shape =
      set->cursor_mode == cursor_rectangle ? RubberShape::rectangle : RubberShape::line;
  window_system()->rubber_band(set->window, shape, set->rubber_x1, set->rubber_y1, set->rubber_x2,
                               set->rubber_y2);
}

void erase_polygon(const WindowSet *set) {
  for (int32_t i = 1; i < set->cursor_count; ++i) {
    window_system()->rubber_band(set->window, RubberShape::line, set->cursor_x[i - 1],
                                 set->cursor_y[i - 1], set->cursor_x[i], set->cursor_y[i]);
  }
}

void move_band_end(WindowSet *set, int32_t x, int32_t y) {
  if (x >= 0 && x < output_context->page.width) set->rubber_x2 = x;
  if (y >= 0 && y < output_context->page.height) set->rubber_y2 = y;
}

void start_band(WindowSet *set, int32_t x, int32_t y) {
  set->rubber_x1 = set->rubber_x2 = x;
  set->rubber_y1 = set->rubber_y2 = y;
  show_cursor(set, set->active_cursor);
  set->rubber_state = rubber_started;
  draw_band(set);
  window_system()->capture(set->window);
}

void move_band(WindowSet *set, int32_t x, int32_t y) {
  if (set->cursor_mode == cursor_polygon && set->cursor_count == 0) {
    take_point(set, set->rubber_x1, set->rubber_y1);
  }
  draw_band(set);
  move_band_end(set, x, y);
  draw_band(set);
  set->rubber_state = rubber_moved;
}

// ---- The right button at the end of a plot

void go_on(OutputContext *context, const WindowSet *set) {
  if (set->next_page_wait) {
    window_system()->quit();
  } else if (!set->external && set->continue_mode == continue_closes) {
    tear_down_windows(context);
  } else if (!set->external && set->continue_mode == continue_leaves && set->in_event_loop) {
    window_system()->quit();
  }
}

// ---- Keys

int32_t key_number(Key key) {
  switch (key) {
    case Key::left:
      return key_left;
    case Key::up:
      return key_up;
    case Key::right:
      return key_right;
    case Key::down:
      return key_down;
    case Key::escape:
      return key_escape;
    default:
      return 0;
  }
}

bool continues(const WindowSet *set, Key key) {
  return (set->continue_key == continue_return && key == Key::enter) ||
         (set->continue_key == continue_escape && key == Key::escape);
}

// ---- Changes of size

void note_place(OutputContext *context, WindowSlot *slot, int32_t number) {
  FrameMetrics frame = {};
  WindowPlace place = {};
  window_system()->frame(&frame);
  window_system()->place(slot->window, &place);
  slot->left = place.left + frame.frame_width;
  slot->top = place.top + frame.caption_height + frame.frame_height - 1;
  context->window.pending_window_event = number + 1;
}

int32_t scrolled_position(ScrollAxis axis, ScrollCode code, const ScrollState &state,
                          int32_t position) {
  constexpr int32_t page = 10;
  const bool horizontal = axis == ScrollAxis::horizontal;
  switch (code) {
    case ScrollCode::line_back:
      return state.position - 1;
    case ScrollCode::line_forward:
      return state.position + 1;
    case ScrollCode::page_back:
      return state.position - page;
    case ScrollCode::page_forward:
      return state.position + page;
    case ScrollCode::first:  // kept: the two bars differ in their ends
      return horizontal ? state.maximum : 0;
    case ScrollCode::last:
      return horizontal ? 0 : state.maximum;
    default:
      return position;
  }
}

}  // namespace

bool window_key_pressed(WindowId window, Key key) {
  WindowSet *set = current_window_set();
  if (set == nullptr) return false;
  if (key_number(key) != 0) {
    set->last_key = key_number(key);
    if (set->cursor_mode == cursor_any_key) {
      end_interaction(set);
      return true;
    }
  }
  if (set->cursor_mode != cursor_none || !continues(set, key)) return false;
  window_right_released(window);
  return true;
}

bool window_character(WindowId window, int32_t code) {
  WindowSet *set = set_of_current(window);
  if (set == nullptr) return false;
  set->last_key = code;
  if (set->cursor_mode != cursor_any_key) return false;
  end_interaction(set);
  return true;
}

void window_pointer_moved(WindowId window, int32_t x, int32_t y) {
  WindowSet *set = set_of_current(window);
  if (set == nullptr || set->cursor_mode == cursor_none) return;
  show_cursor(set, set->active_cursor);
  if (set->cursor_mode == cursor_path) take_point(set, x, y);
  if (has_rubber_band(set) && set->rubber_state != rubber_none) move_band(set, x, y);
}

void window_left_pressed(WindowId window, int32_t x, int32_t y) {
  WindowSet *set = set_of_current(window);
  if (set == nullptr) return;
  set->last_key = key_left_button;
  switch (set->cursor_mode) {
    case cursor_points:
      take_point(set, x, y);
      break;
    case cursor_path:  // what came before the button went down is forgotten
      set->cursor_count = 0;
      set->cursor_overflow = false;
      take_point(set, x, y);
      break;
    case cursor_click:
      take_point(set, x, y);
      end_interaction(set);
      break;
    case cursor_any_key:
      end_interaction(set);
      break;
    case cursor_rectangle:
    case cursor_line:
    case cursor_polygon:
      start_band(set, x, y);
      break;
    default:
      break;
  }
}

void window_left_released(WindowId window, int32_t x, int32_t y) {
  WindowSet *set = set_of_current(window);
  if (set == nullptr) return;
  switch (set->cursor_mode) {
    case cursor_path:
      end_interaction(set);
      break;
    case cursor_rectangle:
    case cursor_line:
      if (set->rubber_state == rubber_none) break;
      draw_band(set);
      move_band_end(set, x, y);
      window_system()->release_capture();
      end_interaction(set);
      break;
    case cursor_polygon:
      set->rubber_x1 = x;
      set->rubber_y1 = y;
      set->rubber_state = rubber_point;
      take_point(set, x, y);
      window_system()->release_capture();
      break;
    default:
      break;
  }
}

void window_right_released(WindowId window) {
  WindowSet *set = set_of_current(window);
  if (set == nullptr) return;
  set->last_key = key_right_button;
  switch (set->cursor_mode) {
    case cursor_none:
      go_on(output_context, set);
      break;
    case cursor_polygon:
      erase_polygon(set);
      if (set->rubber_state == rubber_moved) draw_band(set);
      end_interaction(set);
      break;
    case cursor_points:
    case cursor_any_key:
      end_interaction(set);
      break;
    default:
      break;
  }
}

// A window without a size is one that is hidden away, not one of another size.
void window_resized(WindowId window, bool minimised) {
  WindowSet *set = current_window_set();
  if (set == nullptr || minimised) return;
  for (int32_t i = 0; i < window_slot_count; ++i) {
    WindowSlot &slot = set->slots[i];
    int32_t width = 0;
    int32_t height = 0;
    if (!slot.open || slot.window != window) continue;
    if (!window_system()->client_size(window, &width, &height) || width < 1 || height < 1) continue;
    if (width == slot.seen_width && height == slot.seen_height) continue;
    slot.seen_width = width;
    slot.seen_height = height;
    if (callback_slots.window == nullptr) continue;
    note_place(output_context, &slot, i);
    if (set->in_event_loop) set->resize_pending = true;
  }
}

void window_resize_ended(WindowId window) {
  WindowSet *set = current_window_set();
  if (set == nullptr || !set->resize_pending) return;
  window_right_released(window);
  set = current_window_set();
  if (set != nullptr) set->resize_pending = false;
}

void window_close_requested(WindowId window) {
  WindowSet *set = current_window_set();
  if (set == nullptr) return;
  const int32_t slot = open_slot_of(set, window);
  if (slot == no_slot) return;
  const bool waiting = set->next_page_wait || set->cursor_mode != cursor_none;
  const bool ends_wait = waiting && (slot == set->main_slot || slot == set->current_slot);
  if (slot == set->main_slot) {
    tear_down_windows(output_context);
  } else {
    close_window(output_context, slot);
  }
  // A plot's own wait ends with its window; the others would wait for a window that is gone.
  if (ends_wait) window_system()->quit();
}

void window_destroyed(WindowId window) {
  const WindowSet *set = set_of_current(window);
  if (set != nullptr && set->in_event_loop) window_system()->quit();
}

void window_scrolled(WindowId window, ScrollAxis axis, ScrollCode code, int32_t position) {
  const WindowSystem *system = window_system();
  ScrollState state = {};
  if (code >= ScrollCode::ended || system->scroll_state == nullptr) return;
  if (!system->scroll_state(window, axis, &state)) return;
  const int32_t wanted = scrolled_position(axis, code, state, position);
  system->set_scroll_position(window, axis, std::max(0, std::min(wanted, state.maximum)));
  if (output_context != nullptr) show_now(output_context);
}

}  // namespace quorix
