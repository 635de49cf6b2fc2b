// SPDX-License-Identifier: MIT
//
// What options do to windows, canvases and OpenGL; which option does what stands in
// device_options.cpp.
#include "window/window_options.h"

#include <cstring>

#include "base/numbers.h"
#include "window/ask.h"
#include "window/window.h"

namespace quorix {

namespace {

// Handles are numbers of 32 bits on every system. A caller passes one as the argument itself or by
// its address. What is a handle now is one; small numbers are never addresses.
int32_t handle_from(void *value, bool (*is_handle)(int32_t handle)) {
  constexpr intptr_t lowest_address = 0x10000;
  const auto number = reinterpret_cast<intptr_t>(value);
  const auto handle = static_cast<int32_t>(static_cast<uint32_t>(number & 0xFFFFFFFF));
  const bool fits = number == handle || number == static_cast<intptr_t>(uint32_t(handle));
  if (fits && ((number > -lowest_address && number < lowest_address) || ask(is_handle, handle)))
    return handle;
  int32_t stored = 0;
  std::memcpy(&stored, value, sizeof(stored));
  return stored;
}

// Pens and clips of canvases concern windows and metafiles; OpenGL and the raster have their own.
bool draws_on_canvas(const OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  return (set->metafile != nullptr || context->window.window_active != 0) &&
         context->window.opengl_on == 0;
}

const GlSystem *gl_in_force(const OutputContext *context) {
  return context->window.opengl_on != 0 ? window_system()->gl : nullptr;
}

CanvasRect clip_of_page(const Page &page) {
  return {page.clip_x1, page.clip_y1, saturated_sum(page.clip_x2, 1),
          saturated_sum(page.clip_y2, 1)};
}

void clip_gl(const GlSystem *gl, const Page &page) {
  const int64_t width = static_cast<int64_t>(page.clip_x2) - page.clip_x1 + 1;
  const int64_t height = static_cast<int64_t>(page.clip_y2) - page.clip_y1 + 1;
  const int64_t lower = static_cast<int64_t>(page.height) - page.clip_y2 - 1;
  ask(gl->scissor, page.clip_x1, to_int32(static_cast<double>(lower)),
      to_int32(static_cast<double>(width)), to_int32(static_cast<double>(height)));
}

void clip_metafile(OutputContext *context, bool on) {
  WindowSet *set = context->window.window_set;
  const CanvasCalls *calls = set->metafile->calls;
  if (context->page.clip_on != 0) ask(calls->restore_clip, set->metafile, set->clip_save);
  if (!on) return;
  set->clip_save = ask(calls->save_clip, set->metafile);
  ask(calls->intersect_clip, set->metafile, clip_of_page(context->page));
}

uint32_t cap_bits(int32_t cap) {
  if (cap == cap_butt) return pen_cap_flat;
  return cap == cap_round ? 0 : pen_cap_square;
}

uint32_t join_bits(int32_t join) {
  if (join == join_bevel) return pen_join_bevel;
  return join == join_round ? 0 : pen_join_miter;
}

}  // namespace

void use_own_windows(OutputContext *context) {
  context->window.window_set->external = false;
  context->window.window_set->host_bitmap_set = false;
}

void use_host_window(OutputContext *context, void *value) {
  if (value == nullptr) return;
  context->window.window_set->host_window = handle_from(value, window_system()->exists);
  context->window.window_set->external = true;
}

void use_host_bitmap(OutputContext *context, void *value) {
  if (value == nullptr) return;
  context->window.window_set->host_bitmap = handle_from(value, window_system()->bitmap_exists);
  context->window.window_set->host_bitmap_set = true;
}

void store_window_clip(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  if (context->window.window_active == 0 || set == nullptr) return;
  WindowSlot &slot = current_window(set);
  slot.clip_x1 = context->page.clip_x1;
  slot.clip_y1 = context->page.clip_y1;
  slot.clip_x2 = context->page.clip_x2;
  slot.clip_y2 = context->page.clip_y2;
}

void set_pen_width(OutputContext *context, int32_t width) {
  if (draws_on_canvas(context)) flush_window(context);
  context->pen.line_width = width;
  if (const GlSystem *gl = gl_in_force(context); gl != nullptr) {
    ask(gl->line_width, width);
  } else if (draws_on_canvas(context)) {
    renew_pen(context);
  }
}

void apply_line_style(OutputContext *context) {
  if (!draws_on_canvas(context)) return;
  context->window.window_set->pen_style =
      pen_geometric | cap_bits(context->pen.line_cap) | join_bits(context->pen.line_join);
}

void apply_line_smooth(const OutputContext *context) {
  const GlSystem *gl = gl_in_force(context);
  if (gl != nullptr) ask(gl->line_smooth, context->pen.line_smooth_on != 0);
}

// Kept: a window is clipped when clipping is switched off, too.
void apply_clip(OutputContext *context, bool on) {
  WindowSet *set = context->window.window_set;
  if (const GlSystem *gl = gl_in_force(context); gl != nullptr) {
    clip_gl(gl, context->page);
  } else if (context->window.window_active != 0 && set->draw_canvas != nullptr) {
    ask(set->draw_canvas->calls->clip, set->draw_canvas, clip_of_page(context->page));
  }
  if (set->metafile != nullptr) clip_metafile(context, on);
}

void set_end_cursor(OutputContext *context, int32_t kind) {
  WindowSet *set = context->window.window_set;
  const bool known = kind >= cursor_cross && kind <= cursor_up;
  if (known && set->window != no_window) ask(window_system()->set_class_cursor, set->window, kind);
  set->end_cursor = kind;
}

int32_t current_window_handle(const OutputContext *context) {
  return context->window.window_set->window;
}

int32_t current_bitmap_handle(const OutputContext *context) {
  Canvas *canvas = context->window.window_set->draw_canvas;
  return canvas == nullptr ? 0 : ask(canvas->calls->bitmap, canvas);
}

}  // namespace quorix
