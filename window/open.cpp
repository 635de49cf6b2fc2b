// SPDX-License-Identifier: MIT
//
// Setting up the window device (qqwini) and opening its windows (qqwini, qqwopn).
#include <cstring>

#include "base/numbers.h"
#include "quorix/window.h"
#include "raster/raster.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/window.h"

namespace quorix {

namespace {

constexpr uint32_t white = 0xFFFFFF;

int32_t slot_of_device(int32_t device) {
  return device <= last_numbered_device ? device - first_window_device : 0;
}

// ---- Setting up the device

// The decimal digits of qqwini's options.
void take_options(OutputContext *context, int32_t options) {
  WindowSet *set = context->window.window_set;
  constexpr int32_t on_white = 2;
  context->page.white_background = options % 10 == on_white ? 1 : 0;
  set->position_mode = options / 10 % 10;
  set->no_border = options / 100 % 10 != 0;
}

void take_buffering(WindowSet *set, uint8_t buffering) {
  constexpr uint8_t hidden_buffer = 3;
  set->visible = buffering != hidden_buffer;
  set->double_buffered = buffering == 0 || buffering == 2 || buffering == hidden_buffer;
}

void read_screen(OutputContext *context) {
  ScreenInfo screen = {};
  window_system()->screen(&screen);
  context->page.screen_width = screen.width;
  context->page.screen_height = screen.height;
  context->page.screen_bits = screen.bits;
}

void choose_palette(WindowSet *set, int32_t bits) {
  set->palette_size = 256;
  if (bits == 4) {
    set->palette_size = 16;
    set->palette_mode = palette_of_16;
  } else if (bits == 8) {
    set->palette_size = 129;
    set->palette_mode = palette_of_129;
  } else {
    set->palette_mode = bits > 8 ? palette_true_colour : palette_none;
  }
  if (!uses_palette(set)) return;
  constexpr uint8_t no_collapse = 4;  // entries of equal colour stay apart
  for (PaletteEntry &entry : set->palette_entries)
    entry = {0, 0, 0, no_collapse};
}

// What is done once, until the windows are torn down: palette and pen.
void set_up_device(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  choose_palette(set, context->page.screen_bits);
  set->colorref = white;
  set->pen = {0, 1, white};
}

void set_up(OutputContext *context, int32_t device, uint8_t buffering, uint8_t colour_mode,
            int32_t options) {
  WindowSet *set = context->window.window_set;
  context->window.window_active = 1;
  register_window_device(&plot_window_device);
  take_buffering(set, buffering);
  take_options(context, options);
  if (!set->class_registered)
    ask(window_system()->register_class, context->page.white_background != 0);
  set->class_registered = true;
  read_screen(context);
  set->colour_mode = colour_mode;
  set->main_slot = slot_of_device(device);
  context->window.opengl_on = device == full_size_gl_device ? 1 : 0;
  if (!set->initialised) set_up_device(context);
  if (set->palette_mode == palette_true_colour) {
    const uint8_t level = context->page.white_background != 0 ? 255 : 0;
    set->palette_entries[0] = {level, level, level, 0};
  }
}

// ---- Opening a window

// The slot stands empty, whatever was in it.
void prepare_slot(OutputContext *context, int32_t index) {
  WindowSet *set = context->window.window_set;
  WindowSlot &slot = set->slots[index];
  if (slot.open || slot.has_gl || slot.canvas != nullptr) close_slot(context, index);
  slot.open = true;
  slot.finished = slot.hidden = false;
  slot.scrollable = set->scroll_bitmap;
  release_title(&slot);
  const int32_t previous = set->previous_slot;
  const bool stands = previous != no_slot && previous != index && set->slots[previous].open;
  if (stands && !set->external) write_own_title(context, previous, "");
  set->previous_slot = index;
  set->drawing = true;
}

WindowPlacement placement_of(const OutputContext *context, const WindowRequest &request,
                             const FrameMetrics &frame) {
  const ScreenInfo screen = {context->page.screen_width, context->page.screen_height,
                             context->page.screen_bits};
  return place_window(request, screen, frame, context->window.window_set->position_mode);
}

WindowId create_window(const OutputContext *context, const WindowPlacement &place,
                       const FrameMetrics &frame) {
  const WindowSet *set = context->window.window_set;
  char title[title_capacity + 1] = " ";
  if (!set->no_border) compose_title(context, set->current_slot, title_working, title);
  int32_t error = 0;
  const WindowId window = window_system()->open(
      {title, !set->no_border, place.x, place.y, saturated_sum(place.width, 2 * frame.frame_width),
       saturated_sum(place.height, 2 * frame.frame_height + frame.caption_height), set->visible},
      &error);
  if (window == no_window) show_device_error("Window cannot be created:", error);
  return window;
}

// The window of the slot: a new one, or the caller's. False where there is none.
bool find_window(OutputContext *context, WindowSlot *slot, const WindowPlacement &place,
                 const FrameMetrics &frame) {
  WindowSet *set = context->window.window_set;
  slot->external = set->external;
  slot->window = set->external ? set->host_window : create_window(context, place, frame);
  if (set->external && !ask(window_system()->exists, slot->window)) slot->window = no_window;
  set->window = slot->window;
  slot->open = slot->window != no_window;
  return slot->open;
}

void store_size(OutputContext *context, WindowSlot *slot, int32_t width, int32_t height) {
  Page &page = context->page;
  page.width = slot->width = slot->seen_width = width;
  page.height = slot->height = slot->seen_height = height;
  page.clip_x1 = slot->clip_x1 = 0;
  page.clip_y1 = slot->clip_y1 = 0;
  page.clip_x2 = slot->clip_x2 = width - 1;
  page.clip_y2 = slot->clip_y2 = height - 1;
}

// A failure of OpenGL leaves the window running on a bitmap.
void set_up_drawing(OutputContext *context, WindowSlot *slot) {
  WindowSet *set = context->window.window_set;
  if (context->window.opengl_on != 0 && !set_up_gl(context)) context->window.opengl_on = 0;
  if (set->external) release_sub_window(context, slot->window);
  set_up_canvas(context);
  if (!set->external) window_system()->raise(slot->window);
  if (set->main_slot == set->current_slot) ask(window_system()->enable_close, slot->window, false);
}

}  // namespace

void open_window(OutputContext *context, const WindowRequest &request, int32_t *actual_width,
                 int32_t *actual_height) {
  WindowSet *set = context->window.window_set;
  flush_window(context);
  end_direct_access(context);
  set->current_slot = slot_of_device(request.device);
  set->draw_canvas = nullptr;
  prepare_slot(context, set->current_slot);
  WindowSlot &slot = current_window(set);
  FrameMetrics metrics = {};
  window_system()->frame(&metrics);
  const FrameMetrics frame = frame_in_use(metrics, !set->no_border);
  const WindowPlacement place = placement_of(context, request, frame);
  int32_t width = place.width;
  int32_t height = place.height;
  const bool found = find_window(context, &slot, place, frame);
  // Frame or menu may have taken room. A bitmap that scrolls keeps the size that was asked for.
  if (found && !(set->external && set->scroll_bitmap))
    window_system()->client_size(slot.window, &width, &height);
  store_size(context, &slot, width, height);
  *actual_width = width;
  *actual_height = height;
  if (found) set_up_drawing(context, &slot);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwini(int32_t device, const int32_t *page_width, const int32_t *page_height,
                          const int32_t *placement, const int32_t *x, const int32_t *y,
                          const int32_t *width, const int32_t *height, int32_t *bits,
                          const uint8_t *colour_mode, int32_t *actual_width, int32_t *buffering,
                          const int32_t *options) {
  uint8_t first_byte = 0;
  std::memcpy(&first_byte, buffering, 1);
  *bits = *actual_width = *buffering = 0;
  if (!is_window_device(device)) return 0;
  OutputContext *context = require_output_context();
  WindowSet *set = require_window_set(context);
  set_up(context, device, first_byte, *colour_mode, *options);
  *bits = context->page.screen_bits;
  open_window(context, {device, *page_width, *page_height, *placement, *x, *y, *width, *height},
              actual_width, buffering);
  set->initialised = true;
  return 0;
}

extern "C" int32_t qqwopn(int32_t device, const int32_t *page_width, const int32_t *page_height,
                          const int32_t *placement, const int32_t *x, const int32_t *y,
                          const int32_t *width, const int32_t *height, int32_t *actual_width,
                          int32_t *actual_height) {
  *actual_width = *actual_height = 0;
  const WindowSet *set = current_window_set();
  if (set == nullptr || !set->initialised || !is_window_device(device)) return 0;
  open_window(output_context,
              {device, *page_width, *page_height, *placement, *x, *y, *width, *height},
              actual_width, actual_height);
  return 0;
}
