// SPDX-License-Identifier: MIT
//
// The drawing record's birth, defaults and end.
#include <cstdlib>
#include <new>

#include "base/memory.h"
#include "platform/callbacks.h"
#include "platform/message.h"
#include "raster/raster.h"

namespace quorix {

OutputContext *output_context = nullptr;

namespace {

// Zeroed: every field whose default is told elsewhere starts as 0 or null.
template <class Record>
Record *create_record() {
  void *block = allocate_zeroed_bytes(sizeof(Record));
  if (block == nullptr) {
    show_message("Not enough memory for windows output", "quoini");
    std::exit(0);
  }
  return new (block) Record();
}

}  // namespace

OutputContext *create_output_context(OutputContext *context, int32_t mode) {
  if (mode != 2) {
    context = create_record<OutputContext>();
    set_output_defaults(context);
    palette_changed(context);
  }
  if (mode != 1 && context != nullptr && context->window_set == nullptr) {
    context->window_set = create_record<WindowSet>();
    context->window_set->pen_style = default_pen_style;
  }
  return context;
}

// Called with option 99 too, so the text mapping level, which is set before a device opens, stays.
void set_output_defaults(OutputContext *context) {
  context->font_charset = 0;
  context->depth_bias = 0.001F;
  context->pending_window_event = 0;
  context->blend_over_background = 1;
  context->transparent_colour = -1;
  context->colour_alpha = 255;
  context->line_width = 1;
  context->line_cap = 2;
  context->line_join = 2;
  context->swap_black_white = 0;
  clear_callbacks();
  if (context->window_set != nullptr) context->window_set->pen_style = default_pen_style;
}

uint8_t *require_gl_row(OutputContext *context, int32_t width) {
  constexpr size_t bytes_per_pixel = 4;
  if (width < 1) return nullptr;
  if (context->gl_row_width >= width) return context->gl_row;
  auto row = allocate_zeroed_array<uint8_t>(static_cast<size_t>(width) * bytes_per_pixel);
  if (!row) return nullptr;
  release_bytes(context->gl_row);
  context->gl_row = row.release();
  context->gl_row_width = width;
  return context->gl_row;
}

OutputContext *require_output_context() {
  if (output_context == nullptr) output_context = create_output_context(nullptr, 1);
  return output_context;
}

void release_output_context() {
  OutputContext *context = output_context;
  if (context == nullptr) return;
  output_context = nullptr;
  release_bytes(context->raster_base);
  release_bytes(context->blend_raster);
  release_depth_buffer(context);
  release_bytes(context->gl_row);
  release_bytes(context->widget_windows);
  release_bytes(context->window_set);
  release_bytes(context);
}

}  // namespace quorix
