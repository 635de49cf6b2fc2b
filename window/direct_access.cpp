// SPDX-License-Identifier: MIT
//
// Direct access to a window's bitmap (qqwimg): its bytes are copied into memory, drawing and pixel
// operations work there, and go back as a whole when it ends.
//
// While a translucent layer is open the picture is copied into the layer instead, with alpha 0, as
// what translucent shapes are blended with, and ending composites the layer onto the window.
#include "base/memory.h"
#include "depth/depth.h"
#include "quorix/windowpixels.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/palette_maps.h"
#include "window/window.h"

namespace quorix {

namespace {

constexpr int32_t failed = 1;

bool has_16_bits(const OutputContext *context) {
  return context->page.screen_bits == 16;
}

bool blends(const OutputContext *context) {
  return context->buffers.raster_state == raster_blending;
}

// Several indices share an entry of the palette.
bool is_compressed(const OutputContext *context) {
  const uint8_t kind = context->colours.palette_kind;
  return context->window.window_set->palette_size != 256 && kind != kind_of_8 && kind != kind_of_16;
}

bool open_access(WindowSet *set) {
  Canvas *canvas = set->draw_canvas;
  if (set->access_open) return true;
  if (canvas == nullptr || !ask(canvas->calls->begin_access, canvas, &set->bitmap_info))
    return false;
  set->access_open = true;
  return true;
}

void close_access(WindowSet *set, bool show) {
  if (!set->access_open) return;
  set->access_open = false;
  if (set->draw_canvas != nullptr) ask(set->draw_canvas->calls->end_access, set->draw_canvas, show);
}

bool image_bytes(const BitmapInfo &info, size_t *bytes) {
  if (info.row_bytes < 1 || info.height < 1 || info.planes < 1) return false;
  return checked_product(bytes, static_cast<size_t>(info.row_bytes),
                         static_cast<size_t>(info.height), static_cast<size_t>(info.planes));
}

// The picture under the layer, which shapes that are drawn into the layer blend with.
void copy_into_layer(OutputContext *context) {
  const PixelBuffer &layer = context->buffers.raster;
  if (layer.pixels == nullptr || layer.page.rgba == 0) return;
  const auto width = static_cast<size_t>(layer.page.width);
  for (int32_t y = 0; y < layer.page.height; ++y) {
    uint8_t *const row = layer.pixels + static_cast<size_t>(y) * width * 4;
    read_window_rectangle(context, row, 0, y, -layer.page.width, 1);
    // From triples to pixels of four bytes in place, the last one first.
    for (size_t x = width; x-- > 0;) {
      const uint8_t triple[3] = {row[x * 3], row[x * 3 + 1], row[x * 3 + 2]};
      row[x * 4] = triple[0];
      row[x * 4 + 1] = triple[1];
      row[x * 4 + 2] = triple[2];
      row[x * 4 + 3] = 0;
    }
  }
}

void write_back(const OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (set->image_bits == nullptr || set->draw_canvas == nullptr || has_16_bits(context)) return;
  ask(set->draw_canvas->calls->write_bits, set->draw_canvas,
      static_cast<const uint8_t *>(set->image_bits), set->image_size);
}

int32_t start_direct_access(OutputContext *context) {
  flush_window(context);
  if (context->window.opengl_on != 0 || context->window.direct_bitmap != 0) return 0;
  if (!load_image(context)) return failed;
  context->window.direct_bitmap = 1;
  if (!blends(context)) return 0;
  copy_into_layer(context);
  drop_image(context, false);
  return 0;
}

int32_t finish_direct_access(OutputContext *context) {
  const bool composites = blends(context);
  end_direct_access(context);
  return composites ? composite_blend_layer(context) : 0;
}

}  // namespace

PixelArea pixel_area(const OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (set == nullptr) return {PixelWay::none, 0, 0};
  if (context->window.opengl_on != 0)
    return {PixelWay::gl, context->page.width, context->page.height};
  if (context->window.direct_bitmap != 0 && set->image_bits != nullptr) {
    const PixelWay way = bytes_per_pixel(set) == 0 ? PixelWay::canvas : PixelWay::memory;
    return {way, bitmap_columns(set), set->bitmap_info.height};
  }
  if (set->draw_canvas == nullptr) return {PixelWay::none, 0, 0};
  const WindowSlot &slot = current_window(set);
  return {PixelWay::canvas, slot.bitmap_width, slot.bitmap_height};
}

bool load_image(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  if (!open_access(set)) return false;
  size_t bytes = 0;
  if (image_bytes(set->bitmap_info, &bytes)) {
    auto image = allocate_array<uint8_t>(bytes);
    set->image_bits = image.release();
  }
  if (set->image_bits == nullptr) {
    close_access(set, false);
    return false;
  }
  set->image_size = bytes;
  ask(set->draw_canvas->calls->read_bits, set->draw_canvas, set->image_bits, bytes);
  set->image_compressed = is_compressed(context);
  return true;
}

void drop_image(OutputContext *context, bool show) {
  WindowSet *set = context->window.window_set;
  release_bytes(set->image_bits);
  set->image_bits = nullptr;
  set->image_size = 0;
  close_access(set, show);
}

void end_direct_access(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (context->window.direct_bitmap == 0) return;
  flush_window(context);
  write_back(context);
  drop_image(context, !set->double_buffered && !has_16_bits(context));
  context->window.direct_bitmap = 0;
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwimg(int32_t mode, int32_t *status) {
  *status = failed;
  if (current_window_set() == nullptr) return 0;
  *status = mode == 0 ? start_direct_access(output_context) : finish_direct_access(output_context);
  return 0;
}
