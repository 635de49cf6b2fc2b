// SPDX-License-Identifier: MIT
//
// Pixels and rectangles out of a window: from the copy that direct access holds, through OpenGL, or
// from the canvas. What lies off the bitmap reads as 0.
//
// Without direct access a rectangle of some size is read from a copy made for it alone.
#include <algorithm>
#include <cstring>

#include "base/numbers.h"
#include "quorix/windowpixels.h"
#include "raster/pixel_rows.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/opengl_drawing.h"
#include "window/window.h"

namespace quorix {

namespace {

// The part of a row that lies on the bitmap, and where it goes.
struct RowToRead {
  uint8_t *to;
  bool rgb;  // triples, else indices
  int32_t x, y;
  int64_t count;
};

// ---- The copy in memory

// From blue, green, red and a fourth byte. A word at a time, whose fourth byte the next pixel
// overwrites.
void read_quads(const uint8_t *from, uint8_t *to, int64_t count) {
  int64_t i = 0;
  for (; i + 1 < count; ++i) {
    uint32_t word = 0;
    std::memcpy(&word, from + i * 4, 4);
    word = __builtin_bswap32(word) >> 8;
    std::memcpy(to + i * 3, &word, 4);
  }
  for (; i < count; ++i) {
    to[i * 3] = from[i * 4 + 2];
    to[i * 3 + 1] = from[i * 4 + 1];
    to[i * 3 + 2] = from[i * 4];
  }
}

void read_triples(const uint8_t *from, uint8_t *to, int64_t count) {
  for (int64_t i = 0; i < count; ++i, from += 3, to += 3) {
    to[0] = from[2];
    to[1] = from[1];
    to[2] = from[0];
  }
}

void read_true_colour(const OutputContext *context, const RowToRead &row) {
  const WindowSet *set = context->window.window_set;
  const uint8_t *const from = direct_pixel(set, row.x, row.y);
  const int64_t step = bytes_per_pixel(set);
  if (row.rgb) {
    return step == 4 ? read_quads(from, row.to, row.count) : read_triples(from, row.to, row.count);
  }
  NearestIndex nearest(context);
  for (int64_t i = 0; i < row.count; ++i) {
    const uint8_t *const pixel = from + i * step;
    row.to[i] = nearest(pixel[2], pixel[1], pixel[0]);
  }
}

void read_palette_bytes(const OutputContext *context, const RowToRead &row) {
  const uint8_t *const from = direct_pixel(context->window.window_set, row.x, row.y);
  const Colours &c = context->colours;
  for (int64_t i = 0; i < row.count; ++i) {
    const uint8_t index = pixel_to_index(context, from[i]);
    if (!row.rgb) {
      row.to[i] = index;
      continue;
    }
    row.to[i * 3] = c.palette_r[index];
    row.to[i * 3 + 1] = c.palette_g[index];
    row.to[i * 3 + 2] = c.palette_b[index];
  }
}

// ---- The canvas

void read_from_canvas(const OutputContext *context, const RowToRead &row) {
  Canvas *canvas = context->window.window_set->draw_canvas;
  NearestIndex nearest(context);
  for (int64_t i = 0; i < row.count; ++i) {
    const uint32_t colour =
        ask(canvas->calls->get_pixel, canvas, static_cast<int32_t>(row.x + i), row.y);
    const auto r = static_cast<uint8_t>(colour & 255);
    const auto g = static_cast<uint8_t>(colour >> 8 & 255);
    const auto b = static_cast<uint8_t>(colour >> 16 & 255);
    if (row.rgb) {
      row.to[i * 3] = r;
      row.to[i * 3 + 1] = g;
      row.to[i * 3 + 2] = b;
    } else {
      row.to[i] = nearest(r, g, b);
    }
  }
}

// ---- OpenGL

void read_by_gl(const OutputContext *context, const RowToRead &row) {
  const GlCalls *gl = drawing_gl(context);
  if (gl == nullptr) return;
  const int32_t y = turned_row(context, row.y);
  if (row.rgb) {
    gl->read_pixels(row.x, y, static_cast<int32_t>(row.count), 1, gl_rgb, gl_unsigned_byte, row.to);
    return;
  }
  NearestIndex nearest(context);
  for (int64_t i = 0; i < row.count; ++i) {
    uint8_t pixel[4] = {};
    gl->read_pixels(static_cast<int32_t>(row.x + i), y, 1, 1, gl_rgba, gl_unsigned_byte, pixel);
    row.to[i] = nearest(pixel[0], pixel[1], pixel[2]);
  }
}

void read_row(const OutputContext *context, PixelWay way, const RowToRead &row) {
  switch (way) {
    case PixelWay::gl:
      return read_by_gl(context, row);
    case PixelWay::canvas:
      return read_from_canvas(context, row);
    default:
      break;
  }
  if (bytes_per_pixel(context->window.window_set) == 1) {
    read_palette_bytes(context, row);
  } else {
    read_true_colour(context, row);
  }
}

void read_rows(const OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
               int32_t rows) {
  const PixelArea area = pixel_area(context);
  const bool rgb = n < 0;
  const int64_t count = magnitude(n);
  const int64_t pixel = rgb ? rgb_bytes : 1;
  const int64_t direction = rows < 0 ? -1 : 1;
  for (int64_t i = 0; i < magnitude(rows); ++i, buffer += count * pixel) {
    const int64_t at = y + i * direction;
    const RowPart part = row_part(x, at, count, area.width, area.height);
    if (part.count < count) std::memset(buffer, 0, static_cast<size_t>(count * pixel));
    if (part.count == 0) continue;
    read_row(context, area.way,
             {buffer + part.skipped * pixel, rgb, static_cast<int32_t>(x + part.skipped),
              static_cast<int32_t>(at), part.count});
  }
}

// A copy for one rectangle pays where single pixels would cost more; a display with a palette tells
// its indices by it alone.
bool wants_copy(const OutputContext *context, int64_t pixels) {
  constexpr int64_t few = 256;
  if (context->window.direct_bitmap != 0) return false;
  const PixelArea area = pixel_area(context);
  if (area.way != PixelWay::canvas || context->page.screen_bits == 16) return false;
  return pixels > few || context->page.screen_bits <= 8;
}

// Pixels of the rectangle that lie on the page at all.
int64_t pixels_of(const OutputContext *context, int32_t n, int32_t rows) {
  const PixelArea area = pixel_area(context);
  return std::min<int64_t>(magnitude(n), area.width) *
         std::min<int64_t>(magnitude(rows), area.height);
}

}  // namespace

void read_window_rectangle(OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                           int32_t rows) {
  flush_window(context);
  const bool copied = wants_copy(context, pixels_of(context, n, rows)) && load_image(context);
  if (copied) context->window.direct_bitmap = 1;
  read_rows(context, buffer, x, y, n, rows);
  if (!copied) return;
  context->window.direct_bitmap = 0;
  drop_image(context, false);
}

}  // namespace quorix

using namespace quorix;

// The window's operation names the bottom row where rows go upward, as reading does inside.
extern "C" int32_t qqwrdr(uint8_t *buffer, int32_t x, int32_t y, int32_t w, int32_t h) {
  if (current_window_set() != nullptr) {
    read_window_rectangle(output_context, buffer, x, y, w, h);
    return 0;
  }
  const auto bytes = magnitude(w) * magnitude(h) * (w < 0 ? rgb_bytes : 1);
  std::memset(buffer, 0, static_cast<size_t>(bytes));
  return 0;
}

extern "C" int32_t qqwrpx(int32_t x, int32_t y, int32_t *colour) {
  OutputContext *context = output_context;
  const bool packed = *colour == 1;
  *colour = 0;
  if (current_window_set() == nullptr) return 0;
  const PixelArea area = pixel_area(context);
  if (row_part(x, y, 1, area.width, area.height).count == 0) return 0;
  uint8_t pixel[3] = {};
  read_window_rectangle(context, pixel, x, y, packed ? -1 : 1, 1);
  if (packed) {
    *colour = 0x1000000 | pixel[2] << 16 | pixel[1] << 8 | pixel[0];
  } else {
    *colour = pixel[0];
  }
  return 0;
}
