// SPDX-License-Identifier: MIT
//
// The blend layer: a second raster that translucent drawing goes into, and that is blended onto the
// first when it is closed.
//
// A layer has four bytes per pixel and is made for RGBA rasters and for windows. Its memory stays
// for the next time as long as the page keeps its size.
#include <cstring>

#include "base/memory.h"
#include "base/numbers.h"
#include "depth/composite.h"
#include "depth/depth.h"
#include "quorix/depth.h"
#include "raster/raster.h"

namespace quorix {

namespace {

enum Operation : int32_t { open_layer = 1, close_layer = 2, blend_on = 3, blend_off = 4 };

constexpr int32_t failed = 1;

bool has_alpha(const uint8_t *pixels, int32_t count) {
  uint8_t any = 0;
  for (int32_t i = 0; i < count; ++i)
    any = static_cast<uint8_t>(any | pixels[4 * static_cast<ptrdiff_t>(i) + 3]);
  return any != 0;
}

CompositeRule composite_rule(const OutputContext *context) {
  return {background_byte(context), context->depth.blend_over_background == 0};
}

uint8_t *layer_pixel(const OutputContext *context, int32_t x, int32_t y) {
  const auto width = static_cast<size_t>(context->buffers.blend_raster.page.width);
  return context->buffers.blend_raster.pixels +
         (static_cast<size_t>(y) * width + static_cast<size_t>(x)) * 4;
}

size_t columns(const Rect &box) {
  return static_cast<size_t>(box.x2 - box.x1) + 1;
}

// ---- Targets

int32_t composite_on_raster(OutputContext *context, Rect box) {
  const RasterPage &page = context->buffers.raster_base.page;
  box = intersection(box, {0, 0, page.width - 1, page.height - 1});
  if (context->buffers.raster_base.pixels == nullptr || page.rgba == 0 || is_empty(box))
    return failed;
  const CompositeRow composite = composite_row();
  for (int32_t y = box.y1; y <= box.y2; ++y) {
    const size_t pixel =
        static_cast<size_t>(y) * static_cast<size_t>(page.width) + static_cast<size_t>(box.x1);
    composite(context->buffers.raster_base.pixels + pixel * 4, layer_pixel(context, box.x1, y),
              columns(box), composite_rule(context));
  }
  return 0;
}

int32_t composite_on_window(OutputContext *context, const Rect &box) {
  const Device *device = window_family_device(context);
  if (device == nullptr || device->copy_out == nullptr) return failed;
  DeviceBitmap copy = {};
  const int32_t w = box.x2 - box.x1 + 1;
  const int32_t h = box.y2 - box.y1 + 1;
  if (!device->copy_out(context, box.x1, box.y1, w, h, &copy)) return failed;
  const bool fits = copy.order == PixelOrder::bgr && copy.width >= w && copy.height >= h;
  for (int32_t y = 0; fits && y < h; ++y) {
    composite_row_plain(copy.base + static_cast<size_t>(y) * copy.row_bytes,
                        copy.bits == 24 ? 3 : 4, true, FourthByte::untouched,
                        layer_pixel(context, box.x1, box.y1 + y), columns(box),
                        composite_rule(context));
  }
  device->copy_in(context, box.x1, box.y1, &copy);
  return fits ? 0 : failed;
}

int32_t composite_by_rows(OutputContext *context, const DepthCalls &calls, const Rect &box) {
  const auto owned_row = allocate_array<uint8_t>(columns(box) * 4);
  uint8_t *const row = owned_row.get();
  if (row == nullptr) return failed;
  const int32_t w = box.x2 - box.x1 + 1;
  for (int32_t y = box.y1; y <= box.y2; ++y) {
    calls.row_out(context, box.x1, y, w, row);
    composite_row_plain(row, 4, false, FourthByte::opaque, layer_pixel(context, box.x1, y),
                        columns(box), composite_rule(context));
    calls.row_in(context, box.x1, y, w, row);
  }
  return 0;
}

// ---- Life cycle

// The page a layer has to match; none where the target has palette pixels.
RasterPage wanted_page(const OutputContext *context) {
  if (context->window.window_active != 0) return {context->page.width, context->page.height, 1};
  return has_raster(context) && context->buffers.raster.page.rgba != 0
             ? context->buffers.raster.page
             : RasterPage{};
}

bool same_page(const RasterPage &a, const RasterPage &b) {
  return a.width == b.width && a.height == b.height && a.rgba == b.rgba;
}

// A layer of the wanted size, clean; nothing changes where its memory cannot be had.
bool make_layer(OutputContext *context, const RasterPage &page) {
  size_t bytes = 0;
  if (!checked_product(&bytes, static_cast<size_t>(page.width), static_cast<size_t>(page.height),
                       4)) {
    return false;
  }
  auto layer = allocate_array<uint8_t>(bytes);
  if (!layer) return false;
  release_bytes(context->buffers.blend_raster.pixels);
  context->buffers.blend_raster = {layer.release(), page};
  return true;
}

bool open_blend_layer(OutputContext *context) {
  const bool on_window = context->window.window_active != 0;
  flush_current_device(context);
  const RasterPage page = wanted_page(context);
  if (page.width < 1 || page.height < 1) return false;
  const bool stands = context->buffers.blend_raster.pixels != nullptr &&
                      same_page(context->buffers.blend_raster.page, page);
  if (!stands && !make_layer(context, page)) return false;
  if (on_window) {
    context->page.stride = to_int32(static_cast<double>(page.width) * 4.0);
    context->page.rgba_mode = 1;
    set_current_colour(context, context->colours.colour_arg);
  }
  select_raster_buffer(context, context->buffers.blend_raster);
  if (!stands) fill_page(context);
  if (context->buffers.raster_state != raster_blending) {
    context->buffers.saved_raster_state = context->buffers.raster_state;
    context->buffers.raster_state = raster_blending;
  }
  return true;
}

int32_t close_blend_layer(OutputContext *context) {
  flush_raster(context);
  if (context->buffers.raster_state != raster_blending) return 0;
  const int32_t status = composite_blend_layer(context);
  select_raster_buffer(context, context->buffers.raster_base);
  context->buffers.raster_state = context->buffers.saved_raster_state;
  const Device *window = window_family_device(context);
  if (context->window.window_active != 0 && window != nullptr) {
    window->set_colour(context, context->colours.colour_arg);
  }
  return status;
}

void switch_blending(OutputContext *context, bool on) {
  context->depth.alpha_blend_on = on ? 1 : 0;
  const DepthCalls *calls = depth_calls(context, OpenLayer::passed_by);
  if (calls != nullptr && calls->switch_blending != nullptr) calls->switch_blending(context, on);
}

}  // namespace

Rect blend_bbox(const OutputContext *context) {
  const RasterPage &page = context->buffers.blend_raster.page;
  Rect box = {page.width, page.height, -1, -1};
  for (int32_t y = 0; y < page.height; ++y) {
    const uint8_t *row = layer_pixel(context, 0, y);
    if (!has_alpha(row, page.width)) continue;
    if (box.y1 == page.height) box.y1 = y;
    box.y2 = y;
    const auto drawn = [&](int32_t x) { return row[4 * static_cast<ptrdiff_t>(x) + 3] != 0; };
    for (int32_t x = 0; x < box.x1; ++x) {
      if (drawn(x)) box.x1 = x;
    }
    for (int32_t x = page.width - 1; x > box.x2; --x) {
      if (drawn(x)) box.x2 = x;
    }
  }
  return box;
}

int32_t composite_blend_layer(OutputContext *context) {
  if (context->buffers.blend_raster.pixels == nullptr) return 0;
  const Rect box = blend_bbox(context);
  if (is_empty(box)) return 0;
  const DepthCalls *calls = depth_calls(context, OpenLayer::passed_by);
  if (calls == nullptr) return failed;
  if (calls->row_out != nullptr) return composite_by_rows(context, *calls, box);
  return context->window.window_active != 0 ? composite_on_window(context, box)
                                            : composite_on_raster(context, box);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwabl(int32_t op, int32_t *status) {
  OutputContext *context = output_context;
  *status = failed;
  if (context == nullptr) return 0;
  *status = 0;
  switch (op) {
    case open_layer:
      if (open_blend_layer(context)) break;
      *status = failed;
      return 1;
    case close_layer:
      *status = close_blend_layer(context);
      break;
    case blend_on:
    case blend_off:
      switch_blending(context, op == blend_on);
      break;
    default:
      break;
  }
  return 0;
}
