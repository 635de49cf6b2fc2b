// SPDX-License-Identifier: MIT
//
// The end of a plot (qqwfin) and of a page (qqwnnp): shows what was drawn, tells the user by the
// title how to go on, and waits. The wait is a nested loop; window_events.cpp ends it.
#include <cstdio>

#include "base/memory.h"
#include "base/text.h"
#include "quorix/interaction.h"
#include "raster/raster.h"
#include "window/window.h"

namespace quorix {

namespace {

constexpr int32_t title_capacity = 80;

struct EndOfPlot {
  int32_t mode;  // as given
  uint8_t continue_mode;
  uint8_t continue_key;
  int32_t delay;  // milliseconds
};

// A negative number has no digits that mean anything: 0, which waits for the right button.
EndOfPlot end_of_plot(int32_t mode) {
  const int32_t given = mode < 0 ? 0 : mode;
  EndOfPlot end = {mode, static_cast<uint8_t>(given % 10), continue_no_key, 0};
  if (end.continue_mode == continue_after_delay) {
    end.delay = given / 10;
  } else {
    end.continue_key = static_cast<uint8_t>(given / 10);
  }
  return end;
}

void delay_words(char *words, int32_t delay) {
  copy_bytes(words, " / Delay time", title_capacity);
  append_int(words, delay / 1000, title_capacity);
  append_bytes(words, " seconds", title_capacity);
}

// What the title says of how to go on.
void words_behind(char *words, const EndOfPlot &end) {
  const bool button = end.continue_mode != continue_when_closed;
  const char *text = "";
  if (end.mode == continue_at_once) {
    text = "";
  } else if (end.continue_mode == continue_after_delay) {
    return delay_words(words, end.delay);
  } else if (end.continue_key == continue_no_key) {
    text = button ? " / Click MB2 to continue ..." : "";
  } else if (end.continue_key == continue_return) {
    text = button ? " / Click MB2 or RETURN to continue ..." : " / Press RETURN to continue ...";
  } else if (end.continue_key == continue_escape) {
    text = button ? " / Click MB2 or ESC to continue ..." : " / Press ESC to continue ...";
  }
  copy_bytes(words, text, title_capacity);
}

void flush_and_show(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  move_window_pen(context, 0, 0, pen_move);
  flush_window(context);
  if (context->page.clip_on != 0 && set->metafile != nullptr && context->window.opengl_on == 0) {
    set->metafile->calls->restore_clip(set->metafile, set->clip_save);
  }
  show_windows(context);
}

void keep_host_windows(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (!set->double_buffered || !set->external) return;
  for (int32_t i = 0; i < window_slot_count; ++i) {
    if (set->slots[i].open && set->slots[i].external) keep_for_repaint(context, i);
  }
}

// A layer that is still open is given up: what drawing writes to must not dangle.
void release_blend_layer(OutputContext *context) {
  RasterBuffers &buffers = context->buffers;
  if (buffers.raster_state == raster_blending) {
    select_raster_buffer(context, buffers.raster_base);
    buffers.raster_state = buffers.saved_raster_state;
  }
  release_bytes(buffers.blend_raster.pixels);
  buffers.blend_raster = {};
}

void leave_standing(WindowSet *set) {
  for (WindowSlot &slot : set->slots) {
    if (slot.open && !slot.external) slot.finished = true;
  }
  set->continue_mode = continue_idle;
}

// The windows go at once, where nobody is to see them or nobody is to be waited for.
void end_without_user(OutputContext *context, const EndOfPlot &end) {
  const WindowSet *set = context->window.window_set;
  const bool unseen =
      end.continue_mode == continue_tears_down || !set->visible || current_window(set).hidden;
  if (!unseen && end.continue_mode != continue_after_delay) return;
  if (!unseen) window_system()->sleep(end.delay);
  tear_down_windows(context);
}

void finish(OutputContext *context, int32_t mode) {
  WindowSet *set = context->window.window_set;
  const EndOfPlot end = end_of_plot(mode);
  set->continue_mode = end.continue_mode;
  if (end.continue_mode != continue_after_delay) set->continue_key = end.continue_key;
  flush_and_show(context);
  if (set->current_slot != set->main_slot) select_window(context, set->main_slot);
  const bool has_window = any_window_open(set);
  if (has_window) window_system()->enable_close(set->window, true);
  char words[title_capacity + 1];
  words_behind(words, end);
  if (has_window) write_own_title(context, set->current_slot, words);
  keep_host_windows(context);
  release_blend_layer(context);
  set->drawing = false;
  if (end.continue_mode == continue_at_once || set->external) return leave_standing(set);
  set->in_event_loop = true;
  end_without_user(context, end);
  // Closing the window inside the loop ends it; without a window nothing ever would.
  if (has_window) window_system()->wait();
  set = current_window_set();
  if (set == nullptr) return;
  set->in_event_loop = false;
  set->continue_mode = continue_idle;
}

void wait_for_next_page(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  const int32_t slot = set->current_slot;
  write_window_title(context, slot, " / Click MB2 for next page ...");
  flush_window(context);
  if (!set->visible || set->slots[slot].hidden) return;
  window_system()->update(set->window);
  set->next_page_wait = true;
  window_system()->wait();
  set = current_window_set();
  if (set == nullptr) return;
  set->next_page_wait = false;
  if (!set->slots[slot].open) return;
  if (set->slots[slot].title != nullptr) {
    window_system()->set_title(set->slots[slot].window, set->slots[slot].title);
  } else {
    write_window_title(output_context, slot, "");
  }
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwfin(int32_t mode) {
  if (current_window_set() != nullptr) finish(output_context, mode);
  return 0;
}

extern "C" int32_t qqwnnp(void) {
  const WindowSet *set = current_window_set();
  if (set != nullptr && any_window_open(set)) wait_for_next_page(output_context);
  return 0;
}

extern "C" int32_t qqwmb2(void) {
  const WindowSet *set = current_window_set();
  if (set != nullptr && any_window_open(set)) window_right_released(set->window);
  return 0;
}
