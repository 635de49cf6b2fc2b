// SPDX-License-Identifier: MIT
//
// Switching, clearing and erasing: qqzbuf.
#include <cstring>

#include "depth/opengl.h"
#include "quorix/depth.h"
#include "raster/raster.h"

namespace quorix {

namespace {

enum Operation : int32_t { switch_on = 0, switch_off = 1, clear_depths = 2, erase_picture = 3 };
enum Status : int32_t { done = 0, no_memory = 1, wrong_state = 2 };

void switch_gl(OutputContext *context, int32_t op) {
  const GlCalls *gl = window_gl(context);
  if (gl == nullptr) return;
  switch (op) {
    case switch_on:
      gl->enable(gl_depth_test);
      gl->depth_function(gl_lequal);
      gl->clear(gl_depth_buffer_bit);
      context->depth.depth_on = 1;
      break;
    case switch_off:
      gl->disable(gl_depth_test);
      context->depth.depth_on = 0;
      release_depth_buffer(context);
      break;
    case clear_depths:
      gl->clear(gl_depth_buffer_bit);
      break;
    case erase_picture:
      gl->clear(gl_color_buffer_bit);
      break;
    default:
      break;
  }
}

// The byte that fills an erased window.
uint8_t window_background(const OutputContext *context, const Device *device, PixelOrder order) {
  const uint8_t v = context->page.white_background != 0 ? 255 : 0;
  if (order != PixelOrder::index) return v;
  const int32_t index = nearest_colour(context, v, v, v);
  return device->index_to_pixel == nullptr ? static_cast<uint8_t>(index)
                                           : device->index_to_pixel(context, index);
}

void erase_window(OutputContext *context) {
  const Device *device = window_family_device(context);
  DeviceBitmap bitmap = {};
  if (device == nullptr || !device->bitmap(context, &bitmap)) return;
  if (bitmap.order == PixelOrder::set_pixel) {
    device->fill_rectangle(context, 0, 0, context->page.width, context->page.height, 0);
  } else if (bitmap.height > 0) {
    std::memset(bitmap.base, window_background(context, device, bitmap.order),
                bitmap.row_bytes * static_cast<size_t>(bitmap.height));
  }
}

Status switch_memory(OutputContext *context, int32_t op, int32_t device) {
  if (op < switch_on || op > erase_picture) return done;
  if ((op == switch_on) == (context->depth.depth_on != 0)) return wrong_state;
  switch (op) {
    case switch_on:
      if (!renew_depth_buffer(context, context->page.width, context->page.height)) return no_memory;
      context->depth.depth_on = 1;
      break;
    case switch_off:
      release_depth_buffer(context);
      context->depth.depth_on = 0;
      break;
    case clear_depths:
      clear_depth_buffer(context);
      break;
    default:
      if (!window_device(device)) {
        fill_page(context);
      } else {
        erase_window(context);
      }
      break;
  }
  return done;
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqzbuf(int32_t op, int32_t *status) {
  OutputContext *context = output_context;
  const int32_t device = *status;
  *status = no_memory;
  if (context == nullptr) return 0;
  *status = done;
  if (forwards_to_gl(context)) {
    switch_gl(context, op);
  } else {
    *status = switch_memory(context, op, device);
  }
  return 0;
}
