// SPDX-License-Identifier: MIT
//
// The drawing record's birth, defaults and end.
#include "core/output_context.h"

#include <algorithm>
#include <new>

#include "base/memory.h"

namespace quorix {

OutputContext *output_context = nullptr;

OutputContext *create_output_context() {
  // Zeroed: every field without a default of its own starts as 0 or null.
  void *block = allocate_zeroed_bytes(sizeof(OutputContext));
  if (block == nullptr) return nullptr;
  auto *context = new (block) OutputContext();
  set_output_defaults(context);
  palette_changed(context);
  return context;
}

// Called with option 99 too, so the text mapping level, which is set before a device opens, stays.
void set_output_defaults(OutputContext *context) {
  constexpr float default_depth_bias = 0.001F;
  context->options.font_charset = 0;
  context->options.swap_black_white = 0;
  context->depth.depth_bias = default_depth_bias;
  context->depth.blend_over_background = 1;
  context->window.pending_window_event = 0;
  context->colours.transparent_colour = -1;
  context->colours.colour_alpha = 255;
  context->pen.line_width = 1;
  context->pen.line_cap = cap_square;
  context->pen.line_join = join_bevel;
}

void release_with_context(OutputContext *context, ReleasePart release) {
  ReleasePart *const end = context->release + context->release_count;
  if (context->release_count == release_capacity) return;
  if (std::find(context->release, end, release) != end) return;
  *end = release;
  ++context->release_count;
}

void release_output_context() {
  OutputContext *context = output_context;
  if (context == nullptr) return;
  // What came last may stand on what was there before.
  for (int32_t i = context->release_count; i > 0; --i)
    context->release[i - 1](context);
  output_context = nullptr;
  release_bytes(context);
}

}  // namespace quorix
