// SPDX-License-Identifier: MIT
//
// The plot window as a Device: what writers, readers, depth rendering and bitmap fonts draw on.
#include "core/device.h"

#include "base/numbers.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/opengl_depth.h"
#include "window/window.h"

namespace quorix {

namespace {

void fill(OutputContext *context, int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t colour) {
  if (context->window.window_set == nullptr) return;
  const int64_t width = static_cast<int64_t>(x2) - x1 + 1;
  const int64_t height = static_cast<int64_t>(y2) - y1 + 1;
  fill_window_rectangle(context, x1, y1, to_int32(static_cast<double>(width)),
                        to_int32(static_cast<double>(height)), colour);
}

void set_pixel(OutputContext *context, int32_t x, int32_t y, uint8_t r, uint8_t g, uint8_t b) {
  Canvas *canvas = context->window.window_set->draw_canvas;
  if (canvas == nullptr) return;
  ask(canvas->calls->set_pixel, canvas, x, y, display_colour_of_rgb(context, r, g, b));
}

PixelOrder order_of(const WindowSet *set) {
  return bytes_per_pixel(set) == 1 ? PixelOrder::index : PixelOrder::bgr;
}

// Without direct access pixels are set one by one.
bool bitmap(OutputContext *context, DeviceBitmap *result) {
  const WindowSet *set = context->window.window_set;
  const PixelArea area = pixel_area(context);
  if (area.way == PixelWay::memory) {
    const BitmapInfo &info = set->bitmap_info;
    *result = {set->image_bits, static_cast<size_t>(info.row_bytes),
               area.width,      area.height,
               info.bits,       order_of(set),
               set_pixel};
    return true;
  }
  *result = {nullptr,  0, area.width, area.height, context->page.screen_bits, PixelOrder::set_pixel,
             set_pixel};
  return area.way == PixelWay::canvas;
}

// ---- Compositing on what the window shows: a copy of the whole bitmap, handed out from the
// ---- rectangle's corner on. While direct access is on, its copy serves, and goes back when it
// ends

bool copy_out(OutputContext *context, int32_t x, int32_t y, int32_t width, int32_t height,
              DeviceBitmap *copy) {
  WindowSet *set = context->window.window_set;
  if (set == nullptr) return false;
  const bool on = set->image_bits != nullptr;
  if (!on && !load_image(context)) return false;
  const int64_t right = static_cast<int64_t>(x) + width;
  const int64_t bottom = static_cast<int64_t>(y) + height;
  const bool fits = x >= 0 && y >= 0 && width > 0 && height > 0 && right <= bitmap_columns(set) &&
                    bottom <= set->bitmap_info.height;
  if (!fits || bytes_per_pixel(set) < 3) {
    if (!on) drop_image(context, false);
    return false;
  }
  *copy = {direct_pixel(set, x, y),
           static_cast<size_t>(set->bitmap_info.row_bytes),
           width,
           height,
           set->bitmap_info.bits,
           PixelOrder::bgr,
           nullptr};
  return true;
}

void copy_in(OutputContext *context, int32_t /*x*/, int32_t /*y*/, DeviceBitmap * /*copy*/) {
  const WindowSet *set = context->window.window_set;
  if (context->window.direct_bitmap != 0) return;
  ask(set->draw_canvas->calls->write_bits, set->draw_canvas,
      static_cast<const uint8_t *>(set->image_bits), set->image_size);
  drop_image(context, !set->double_buffered);
}

}  // namespace

const Device plot_window_device = {.flush = flush_window,
                                   .read_rectangle = read_window_rectangle,
                                   .write_row = write_window_row,
                                   .set_colour = set_window_colour,
                                   .fill_rectangle = fill,
                                   .bitmap = bitmap,
                                   .index_to_pixel = index_to_pixel,
                                   .copy_out = copy_out,
                                   .copy_in = copy_in,
                                   .depth = &opengl_depth_calls};

}  // namespace quorix
