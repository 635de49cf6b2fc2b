// SPDX-License-Identifier: MIT
//
// qqzbuf: switches the depth buffer on and off, clears it, erases the picture.
//
// The buffer's memory is owned by the record and kept by raster/depth_memory.cpp, since it follows
// the page. Where OpenGL keeps the depths there is none, and depth_on alone tells that they count.
#include <cstring>

#include "depth/depth.h"
#include "quorix/depth.h"
#include "raster/raster.h"

namespace quorix {

namespace {

enum Operation : int32_t { switch_on = 0, switch_off = 1, clear_depths = 2, erase_picture = 3 };

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

DepthStatus run(OutputContext *context, const DepthCalls &calls, int32_t op, int32_t device) {
  switch (op) {
    case switch_on:
    case switch_off: {
      const bool on = op == switch_on;
      const DepthStatus status = calls.switch_depths(context, on);
      if (status != DepthStatus::done) return status;
      context->depth.depth_on = on ? 1 : 0;
      if (!on) release_depth_buffer(context);
      return status;
    }
    case clear_depths:
      return calls.clear_depths(context);
    case erase_picture:
      return calls.clear_picture(context, device);
    default:
      return DepthStatus::done;
  }
}

}  // namespace

DepthStatus switch_bitmap_depths(OutputContext *context, bool on) {
  if (on == (context->depth.depth_on != 0)) return DepthStatus::wrong_state;
  if (on && !renew_depth_buffer(context, context->page.width, context->page.height)) {
    return DepthStatus::no_memory;
  }
  return DepthStatus::done;
}

DepthStatus clear_bitmap_depths(OutputContext *context) {
  if (context->depth.depth_on == 0) return DepthStatus::wrong_state;
  clear_depth_buffer(context);
  return DepthStatus::done;
}

DepthStatus clear_bitmap(OutputContext *context, int32_t device) {
  if (context->depth.depth_on == 0) return DepthStatus::wrong_state;
  if (window_device(device)) {
    erase_window(context);
  } else {
    fill_page(context);
  }
  return DepthStatus::done;
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqzbuf(int32_t op, int32_t *status) {
  OutputContext *context = output_context;
  const int32_t device = *status;
  DepthStatus result = context == nullptr ? DepthStatus::no_memory : DepthStatus::done;
  if (context != nullptr) {
    const DepthCalls *calls = depth_calls(context, OpenLayer::drawn_on);
    if (calls != nullptr) result = run(context, *calls, op, device);
  }
  *status = static_cast<int32_t>(result);
  return 0;
}
