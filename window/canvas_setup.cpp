// SPDX-License-Identifier: MIT
//
// What a window is drawn through, set up once it stands: a bitmap behind it, the window itself, or
// OpenGL.
#include <algorithm>

#include "base/text.h"
#include "platform/message.h"
#include "window/ask.h"
#include "window/opengl_depth.h"
#include "window/window.h"

namespace quorix {

namespace {

// The client area, and the bitmap's size: the client area's too, but in a window of the caller's
// that scrolls it may be larger.
void measure_canvas(OutputContext *context, WindowSlot *slot) {
  WindowSet *set = context->window.window_set;
  int32_t width = 0;
  int32_t height = 0;
  window_system()->client_size(slot->window, &width, &height);
  set->client_width = slot->client_width = width;
  set->client_height = slot->client_height = height;
  if (set->external && set->scroll_bitmap) {
    width = std::max(width, context->page.width);
    height = std::max(height, context->page.height);
  }
  slot->bitmap_width = std::max(width, 1);
  slot->bitmap_height = std::max(height, 1);
}

const char *gl_failure(GlStep step) {
  switch (step) {
    case GlStep::no_pixel_format:
      return "Pixel format for OPENGL not available:";
    case GlStep::pixel_format_refused:
      return "Can't set pixel format for OPENGL:";
    case GlStep::no_context:
      return "Can't create an OPENGL rendering context:";
    default:
      return "Can't activate the OPENGL rendering context:";
  }
}

}  // namespace

void show_device_message(const char *text) {
  const auto show = window_system()->show_message;
  (show != nullptr ? show : show_message)(text, "quoini");
}

void show_device_error(const char *text, int32_t error) {
  constexpr size_t limit = 100;
  char message[limit + 1];
  copy_bytes(message, text, limit);
  append_int(message, error, limit);
  show_device_message(message);
}

// Without a palette colours stay as they are.
void select_drawing_tools(OutputContext *context, Canvas *canvas) {
  WindowSet *set = context->window.window_set;
  const CanvasCalls *calls = canvas->calls;
  if (set->font_selected) ask(calls->select_font, canvas, set->font);
  ask(calls->set_pen, canvas, set->pen);
  ask(calls->set_text_colour, canvas, set->colorref);
  if (!uses_palette(set)) return;
  if (ask(calls->set_palette, canvas, set->palette_entries, set->palette_size)) return;
  show_device_message("Not enough memory to create color table");
  set->palette_mode = palette_none;
}

void set_up_canvas(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  WindowSlot &slot = current_window(set);
  measure_canvas(context, &slot);
  if (context->window.opengl_on != 0) return;
  const bool copies = set->double_buffered && set->external;
  slot.canvas = window_system()->open_canvas(
      {slot.window, set->double_buffered, slot.bitmap_width, slot.bitmap_height, copies});
  set->draw_canvas = slot.canvas;
  if (slot.canvas == nullptr) {
    if (!set->double_buffered) return;
    show_device_message("Cannot create Bitmap");
    window_system()->quit();
    return;
  }
  select_drawing_tools(context, slot.canvas);
  if (set->double_buffered && !set->external) {
    ask(slot.canvas->calls->fill_rectangle, slot.canvas,
        CanvasRect{0, 0, slot.bitmap_width, slot.bitmap_height},
        display_colour_of_index(context, 0));
  }
}

bool set_up_gl(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  WindowSlot &slot = current_window(set);
  const GlSystem *gl = window_system()->gl;
  int32_t error = 0;
  GlStep step = GlStep::no_pixel_format;
  if (gl != nullptr) {
    step =
        gl->open({slot.window, set->double_buffered, context->page.screen_bits, context->page.width,
                  context->page.height, context->page.white_background != 0},
                 &error);
  }
  if (step != GlStep::done) {
    show_device_error(gl_failure(step), error);
    return false;
  }
  slot.has_gl = true;
  use_gl_calls(gl->calls);
  if (set->font_selected) gl->select_font(slot.window, set->font);
  return true;
}

}  // namespace quorix
