// SPDX-License-Identifier: MIT
//
// Who draws: the calls for bitmaps, which stand in this folder, or those of a window that draws
// through OpenGL. And the pixels that a device number means, with the depths beside them. Nothing
// is owned here; a Target is good until its operation ends.
#include "depth/depth.h"

namespace quorix {

namespace {

constexpr DepthCalls bitmap_calls = {.switch_depths = switch_bitmap_depths,
                                     .clear_depths = clear_bitmap_depths,
                                     .clear_picture = clear_bitmap,
                                     .line = draw_depth_line,
                                     .shaded_triangle = draw_shaded_triangle,
                                     .index_triangle = draw_index_triangle,
                                     .quad_half = draw_quad_half,
                                     .switch_blending = nullptr,
                                     .plain_point = nullptr,
                                     .plain_line = nullptr,
                                     .text_pixel = nullptr,
                                     .row_out = nullptr,
                                     .row_in = nullptr};

}  // namespace

const DepthCalls *depth_calls(const OutputContext *context, OpenLayer layer) {
  if (context->window.opengl_on == 0) return &bitmap_calls;
  const bool open = context->buffers.raster_state == raster_blending;
  if (open && layer == OpenLayer::drawn_on) return &bitmap_calls;
  const Device *window = window_family_device(context);
  return window == nullptr ? nullptr : window->depth;
}

bool open_target(OutputContext *context, int32_t device, Depths depths, Target *target) {
  Target &t = *target;
  t.context = context;
  t.device = device_for(context, device);
  if (t.device == nullptr || !t.device->bitmap(context, &t.bitmap)) return false;
  t.clip = {context->page.clip_x1, context->page.clip_y1, context->page.clip_x2,
            context->page.clip_y2};
  t.page = {0, 0, t.bitmap.width - 1, t.bitmap.height - 1};
  t.depth = nullptr;
  t.depth_pitch = 0;
  // depth_on without a buffer: OpenGL keeps the depths, and nothing is tested here.
  if (depths == Depths::used && context->depth.depth_on != 0 &&
      context->depth.buffer.values != nullptr) {
    t.depth = context->depth.buffer.values;
    t.depth_pitch = context->depth.buffer.width;
    t.page = intersection(
        t.page, {0, 0, context->depth.buffer.width - 1, context->depth.buffer.height - 1});
  }
  t.box = intersection(t.clip, t.page);
  return true;
}

}  // namespace quorix
