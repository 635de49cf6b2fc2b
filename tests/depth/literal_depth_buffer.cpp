// SPDX-License-Identifier: MIT
//
// Literal depth renderer: the depth buffer, and the life of the page that it and the layer share.

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

namespace {

bool renew_depth(LiteralDepth &record) {
  const int32_t w = record.raster.width;
  const int32_t h = record.raster.height;
  if (w <= 0 || h <= 0) return false;
  record.depth_width = w;
  record.depth_height = h;
  record.depth.assign(static_cast<size_t>(w) * static_cast<size_t>(h), 0.0F);
  fill_depth(record);
  return true;
}

}  // namespace

int32_t qqvini(LiteralDepth &record, int32_t page_w, int32_t page_h, int32_t *w, int32_t *h,
               int32_t have_size, int32_t *status) {
  qqvini(record.raster, page_w, page_h, w, h, have_size, status);
  record.window_active = false;
  record.base = Buffer{};
  record.layer = Buffer{};
  record.layer_open = false;
  if (*status != 0) {
    record.raster.raster_state = 0;
    return 0;
  }
  if (record.depth_on) renew_depth(record);
  return 0;
}

int32_t qqvfin(LiteralDepth &record) {
  qqvfin(record.raster);
  record.base = Buffer{};
  record.layer = Buffer{};
  record.layer_open = false;
  return 0;
}

namespace {

void crop(Buffer &buffer, int32_t x, int32_t y, int32_t w, int32_t h) {
  const size_t bytes = buffer.rgba ? 4 : 1;
  std::vector<uint8_t> cropped;
  for (int32_t row = y; row < y + h; ++row) {
    const size_t start =
        (static_cast<size_t>(row) * static_cast<size_t>(buffer.width) + static_cast<size_t>(x)) *
        bytes;
    for (size_t i = 0; i < static_cast<size_t>(w) * bytes; ++i)
      cropped.push_back(buffer.pixels.at(start + i));
  }
  buffer.pixels = cropped;
  buffer.width = w;
  buffer.height = h;
}

// Depths stay with their pixels; those of another page, which does not reach over the rectangle,
// stay where they are.
void crop_depth(LiteralDepth &record, int32_t x, int32_t y, int32_t w, int32_t h) {
  if (x + w > record.depth_width || y + h > record.depth_height) return;
  std::vector<float> cropped;
  for (int32_t row = y; row < y + h; ++row) {
    for (int32_t column = x; column < x + w; ++column)
      cropped.push_back(depth_at(record, column, row));
  }
  record.depth = cropped;
  record.depth_width = w;
  record.depth_height = h;
}

}  // namespace

int32_t qqvwin(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *w,
               const int32_t *h, int32_t *status) {
  const int32_t result = qqvwin(record.raster, x, y, w, h, status);
  if (result != 0) return result;
  // While a layer is open both buffers are cropped; one that is not open is of the old size.
  if (record.base.valid) crop(record.base, *x, *y, *w, *h);
  record.layer = Buffer{};
  crop_depth(record, *x, *y, *w, *h);
  return 0;
}

// While a window is current, what the raster has gathered waits, and cap, join and the clip switch
// draw what the window has gathered.
int32_t qqwwid(LiteralDepth &record, int32_t option, int32_t *value, int32_t set) {
  LiteralRaster &raster = record.raster;
  if (!record.window_active) return qqwwid(raster, option, value, set);
  if (set != 0 && (option == 27 || option == 28 || option == 33)) flush_window(record);
  const int32_t gathered = raster.poly_count;
  raster.poly_count = 0;
  qqwwid(raster, option, value, set);
  raster.poly_count = gathered;
  return 0;
}

int32_t qqwfree(LiteralDepth &record) {
  testing::PlainWindow *window = record.window;
  record = LiteralDepth{};
  record.window = window;
  return 0;
}

namespace {

void erase_window(LiteralDepth &record) {
  if (record.window == nullptr) return;
  testing::PlainWindow &window = *record.window;
  const LiteralRaster &raster = record.raster;
  if (window.bits == 16) {
    const Rgb rgb = palette_entry(raster, 0);
    testing::fill_rectangle(window, 0, 0, raster.width, raster.height, 0,
                            rgb.r + rgb.g * 256U + rgb.b * 65536U);
    return;
  }
  uint8_t value = raster.white_background != 0 ? 255 : 0;
  if (window.bits < 9) {
    value = testing::index_to_pixel(window, nearest_colour(raster, Rgb{value, value, value}));
  }
  for (uint8_t &byte : window.bytes)
    byte = value;
}

void release_depth(LiteralDepth &record) {
  record.depth_on = false;
  record.depth.clear();
  record.depth_width = record.depth_height = 0;
}

void use_opengl(LiteralDepth &record, int32_t op) {
  switch (op) {
    case 0:
      call(record, "glEnable", {2929});
      call(record, "glDepthFunc", {515});
      call(record, "glClear", {256});
      record.depth_on = true;
      return;
    case 1:
      call(record, "glDisable", {2929});
      release_depth(record);
      return;
    case 2:
      call(record, "glClear", {256});
      return;
    case 3:
      call(record, "glClear", {16384});
      return;
    default:
      return;
  }
}

}  // namespace

int32_t qqzbuf(LiteralDepth &record, int32_t op, int32_t *status) {
  const int32_t device = *status;
  *status = 0;
  if (!record.raster.exists) {
    *status = 1;
    return 0;
  }
  if (forwards(record)) {
    use_opengl(record, op);
    return 0;
  }
  if (op < 0 || op > 3) return 0;
  if (op == 0 && !record.depth_on) {
    record.depth_on = renew_depth(record);
    if (!record.depth_on) *status = 1;
    return 0;
  }
  if (op == 0 || !record.depth_on) {
    *status = 2;
    return 0;
  }
  if (op == 1) release_depth(record);
  if (op == 2) fill_depth(record);
  if (op == 3 && is_raster(device)) clear_page(record.raster);
  if (op == 3 && !is_raster(device)) erase_window(record);
  return 0;
}

}  // namespace quorix::literal
