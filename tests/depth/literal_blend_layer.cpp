// SPDX-License-Identifier: MIT
//
// Literal depth renderer: the layer of translucent drawing, and what becomes of it.

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

namespace {

// The raster's pixels as a buffer, and the other way round.
Buffer page_of(const LiteralRaster &raster) {
  Buffer buffer;
  buffer.valid = raster.page_valid;
  buffer.rgba = raster.page_rgba;
  buffer.width = raster.page_width;
  buffer.height = raster.page_height;
  buffer.pixels = raster.pixels;
  return buffer;
}

void draw_on(LiteralRaster &raster, const Buffer &buffer) {
  raster.page_valid = buffer.valid;
  raster.page_rgba = buffer.rgba;
  raster.page_width = buffer.width;
  raster.page_height = buffer.height;
  raster.pixels = buffer.pixels;
}

bool fits(const Buffer &layer, const LiteralRaster &raster) {
  return layer.valid && layer.width == raster.width && layer.height == raster.height;
}

bool make_layer(LiteralDepth &record) {
  LiteralRaster &raster = record.raster;
  if (raster.width <= 0 || raster.height <= 0) return false;
  if (!record.window_active && (raster.rgba_mode == 0 || !raster.page_valid)) return false;
  if (record.window_active) {
    raster.stride = raster.width * 4;
    raster.rgba_mode = 1;
    // A palette page is none that this mode could draw on.
    if (raster.page_valid && !raster.page_rgba) raster.page_valid = false;
  }
  record.layer = Buffer{};
  record.layer.valid = true;
  record.layer.rgba = true;
  record.layer.width = raster.width;
  record.layer.height = raster.height;
  const uint8_t value = raster.white_background != 0 ? 255 : 0;
  for (int64_t i = 0; i < int64_t{raster.width} * raster.height; ++i) {
    for (int k = 0; k < 3; ++k)
      record.layer.pixels.push_back(value);
    record.layer.pixels.push_back(0);
  }
  return true;
}

void set_window_colour(LiteralDepth &record) {
  if (record.window == nullptr) return;
  testing::note(*record.window,
                testing::call_text("set_colour", {double(record.raster.colour_arg)}));
}

int32_t open_layer(LiteralDepth &record, int32_t *status) {
  LiteralRaster &raster = record.raster;
  if (record.window_active) {
    flush_window(record);
  } else {
    flush_polyline(raster);
  }
  const bool open = raster.raster_state == 2 && record.layer_open;
  if (!open && !fits(record.layer, raster) && !make_layer(record)) {
    *status = 1;
    return 1;
  }
  if (record.window_active) qqvclr(raster, raster.colour_arg);
  if (raster.raster_state != 2) record.saved_state = raster.raster_state;
  if (!open) {
    record.base = page_of(raster);
    draw_on(raster, record.layer);
    record.layer = Buffer{};
    record.layer_open = true;
  }
  raster.raster_state = 2;
  return 0;
}

// --- Compositing ---

struct Box {
  int32_t x1;
  int32_t y1;
  int32_t x2;
  int32_t y2;
};

Box box_of(LiteralRaster &layer) {
  Box box{layer.page_width, layer.page_height, -1, -1};
  for (int32_t y = 0; y < layer.page_height; ++y) {
    for (int32_t x = 0; x < layer.page_width; ++x) {
      if (pixel_at(layer, x, y)[3] == 0) continue;
      if (x < box.x1) box.x1 = x;
      if (y < box.y1) box.y1 = y;
      if (x > box.x2) box.x2 = x;
      if (y > box.y2) box.y2 = y;
    }
  }
  return box;
}

// s is R, G, B, A; d points to the three colours, red first or, `reversed`, blue first. True if d
// was touched. The alpha of s is then 0.
bool blend(const LiteralRaster &raster, uint8_t *s, uint8_t *d, bool reversed) {
  const int a = s[3] + 1;
  if (a == 1) return false;
  const int bg = raster.white_background != 0 && raster.rgba_mode != 0 ? 255 : 0;
  const bool untouched = d[0] == bg && d[1] == bg && d[2] == bg;
  for (int k = 0; k < 3; ++k) {
    const int source = s[reversed ? 2 - k : k];
    int result = source;
    if (a != 256 && !(raster.blend_over_background == 0 && untouched)) {
      result = ((a * (source - d[k])) >> 8) + d[k];
    }
    d[k] = low_byte(result);
  }
  s[3] = 0;
  return true;
}

int32_t composite_on_page(LiteralDepth &record, const Box &box) {
  const Buffer &base = record.base;
  for (int32_t y = box.y1; y <= box.y2; ++y) {
    for (int32_t x = box.x1; x <= box.x2; ++x) {
      uint8_t *s = pixel_at(record.raster, x, y);
      if (!base.valid || !base.rgba || x >= base.width || y >= base.height) continue;
      const size_t at =
          4 * (static_cast<size_t>(y) * static_cast<size_t>(base.width) + static_cast<size_t>(x));
      uint8_t *d = &record.base.pixels.at(at);
      const uint8_t alpha = s[3];
      if (blend(record.raster, s, d, false)) d[3] = alpha;
    }
  }
  return 0;
}

int32_t composite_on_window(LiteralDepth &record, const Box &box) {
  if (record.window == nullptr) return 1;
  testing::PlainWindow &window = *record.window;
  if (window.bits != 24 && window.bits != 32) return 1;
  if (box.x2 >= window.width || box.y2 >= window.height) return 1;
  for (int32_t y = box.y1; y <= box.y2; ++y) {
    for (int32_t x = box.x1; x <= box.x2; ++x) {
      uint8_t *s = pixel_at(record.raster, x, y);
      blend(record.raster, s, testing::pixel_at(window, x, y), true);
    }
  }
  return 0;
}

int32_t composite_in_opengl(LiteralDepth &record, const Box &box) {
  if (record.window == nullptr) return 1;
  testing::PlainWindow &window = *record.window;
  const int32_t w = box.x2 - box.x1 + 1;
  std::vector<uint8_t> row(4 * static_cast<size_t>(w));
  for (int32_t y = box.y1; y <= box.y2; ++y) {
    const int32_t upward = record.raster.height - 1 - y;
    testing::read_pixels(window, box.x1, upward, w, row.data());
    for (int32_t i = 0; i < w; ++i) {
      uint8_t *d = &row[4 * static_cast<size_t>(i)];
      if (blend(record.raster, pixel_at(record.raster, box.x1 + i, y), d, false)) d[3] = 255;
    }
    testing::set_raster_position(window, box.x1, upward);
    testing::draw_pixels(window, w, row.data());
  }
  return 0;
}

int32_t composite(LiteralDepth &record) {
  if (!record.raster.page_valid) return 0;
  const Box box = box_of(record.raster);
  if (box.x2 < box.x1 || box.y2 < box.y1) return 0;
  if (record.opengl_on) return composite_in_opengl(record, box);
  if (record.window_active) return composite_on_window(record, box);
  return composite_on_page(record, box);
}

int32_t close_layer(LiteralDepth &record, int32_t *status) {
  LiteralRaster &raster = record.raster;
  flush_polyline(raster);
  if (raster.raster_state != 2) return 0;
  *status = composite(record);
  record.layer = page_of(raster);
  draw_on(raster, record.base);
  record.base = Buffer{};
  record.layer_open = false;
  raster.raster_state = record.saved_state;
  if (record.window_active) set_window_colour(record);
  return 0;
}

}  // namespace

int32_t qqwabl(LiteralDepth &record, int32_t op, int32_t *status) {
  *status = 0;
  if (!record.raster.exists) {
    *status = 1;
    return 0;
  }
  switch (op) {
    case 1:
      return open_layer(record, status);
    case 2:
      return close_layer(record, status);
    case 3:
      record.alpha_blend_on = true;
      if (record.opengl_on) {
        call(record, "glEnable", {3042});
        call(record, "glBlendFunc", {770, 771});
      }
      return 0;
    case 4:
      record.alpha_blend_on = false;
      if (record.opengl_on) call(record, "glDisable", {3042});
      return 0;
    default:
      return 0;
  }
}

}  // namespace quorix::literal
