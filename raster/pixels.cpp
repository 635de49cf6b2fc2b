// SPDX-License-Identifier: MIT
//
// Single pixels, rows and rectangles of pixels in and out.
//
// The page bounds every access, the clip rectangle none. Rows are cut to the page once; positions
// in the caller's buffer advance over what is cut off, which reads as 0.
#include <cstring>

#include "base/numbers.h"
#include "quorix/raster.h"
#include "raster/pixel_rows.h"
#include "raster/raster.h"

namespace quorix {

namespace {

RowPart part_on_page(const OutputContext *context, int64_t x, int64_t y, int64_t count) {
  if (!has_raster(context)) return {0, 0};
  const RasterPage &page = context->buffers.raster.page;
  return row_part(x, y, count, page.width, page.height);
}

uint8_t *raster_at(const OutputContext *context, int64_t x, int64_t y) {
  const int64_t bytes = context->buffers.raster.page.rgba != 0 ? 4 : 1;
  return context->buffers.raster.pixels + (y * context->buffers.raster.page.width + x) * bytes;
}

// ---- Writing

// The whole table as RGBA pixels.
struct RgbaTable {
  uint32_t pixel[256];
};

RgbaTable make_rgba_table(const OutputContext *context) {
  RgbaTable table;
  for (int32_t i = 0; i < 256; ++i) {
    table.pixel[i] = pack_rgba(context->colours.palette_r[i], context->colours.palette_g[i],
                               context->colours.palette_b[i], context->colours.colour_alpha);
  }
  return table;
}

void write_rgba_row(const OutputContext *context, const uint8_t *from, uint32_t *to, int64_t count,
                    bool rgb) {
  if (rgb) {
    const uint8_t alpha = context->colours.colour_alpha;
    write_triples(context, from, count, [&](int64_t i, uint8_t r, uint8_t g, uint8_t b) {
      to[i] = pack_rgba(r, g, b, alpha);
    });
  } else {
    const RgbaTable table = make_rgba_table(context);
    write_indices(context, from, count,
                  [&](int64_t i, uint8_t index) { to[i] = table.pixel[index]; });
  }
}

void write_palette_row(const OutputContext *context, const uint8_t *from, uint8_t *to,
                       int64_t count, bool rgb) {
  if (rgb) {
    NearestIndex nearest(context);
    write_triples(context, from, count,
                  [&](int64_t i, uint8_t r, uint8_t g, uint8_t b) { to[i] = nearest(r, g, b); });
  } else if (context->colours.transparent_colour == -1) {
    std::memcpy(to, from, static_cast<size_t>(count));
  } else {
    write_indices(context, from, count, [&](int64_t i, uint8_t index) { to[i] = index; });
  }
}

// ---- Reading

void read_rgba_row(const uint8_t *from, uint8_t *to, int64_t count, bool rgb,
                   NearestIndex *nearest) {
  if (!rgb) {
    for (int64_t i = 0; i < count; ++i, from += 4)
      to[i] = (*nearest)(from[0], from[1], from[2]);
    return;
  }
  // Four bytes at a time, the fourth of which the next pixel overwrites.
  int64_t i = 0;
  for (; i + 1 < count; ++i)
    std::memcpy(to + i * rgb_bytes, from + i * 4, 4);
  for (; i < count; ++i)
    std::memcpy(to + i * rgb_bytes, from + i * 4, 3);
}

void read_palette_row(const OutputContext *context, const uint8_t *from, uint8_t *to, int64_t count,
                      bool rgb) {
  if (!rgb) {
    std::memcpy(to, from, static_cast<size_t>(count));
    return;
  }
  for (int64_t i = 0; i < count; ++i, to += rgb_bytes) {
    to[0] = context->colours.palette_r[from[i]];
    to[1] = context->colours.palette_g[from[i]];
    to[2] = context->colours.palette_b[from[i]];
  }
}

void read_rows(const OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
               int32_t rows) {
  const bool rgb = n < 0;
  const int64_t count = magnitude(n);
  const int64_t pixel = rgb ? rgb_bytes : 1;
  const int64_t direction = rows < 0 ? -1 : 1;
  NearestIndex nearest(context);
  for (int64_t i = 0; i < magnitude(rows); ++i, buffer += count * pixel) {
    const int64_t row = y + i * direction;
    const RowPart part = part_on_page(context, x, row, count);
    if (part.count < count) std::memset(buffer, 0, static_cast<size_t>(count * pixel));
    if (part.count == 0) continue;
    const uint8_t *from = raster_at(context, x + part.skipped, row);
    uint8_t *to = buffer + part.skipped * pixel;
    if (context->page.rgba_mode != 0) {
      read_rgba_row(from, to, part.count, rgb, &nearest);
    } else {
      read_palette_row(context, from, to, part.count, rgb);
    }
  }
}

// Whether a colour argument is the one that pixel writes skip.
bool is_transparent(const OutputContext *context, int32_t colour) {
  if (context->colours.transparent_colour == -1) return false;
  if (!is_packed_colour(colour)) return context->colours.transparent_colour == (colour & 255);
  uint8_t r = 0;
  uint8_t g = 0;
  uint8_t b = 0;
  colour_to_rgb(context, colour, &r, &g, &b);
  return r == context->colours.transparent_r && g == context->colours.transparent_g &&
         b == context->colours.transparent_b;
}

}  // namespace

void read_raster_rectangle(OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                           int32_t rows) {
  flush_raster(context);
  read_rows(context, buffer, x, y, n, rows);
}

void write_raster_pixels(OutputContext *context, const uint8_t *buffer, int32_t x, int32_t y,
                         int32_t n) {
  flush_raster(context);
  const int64_t count = magnitude(n);
  write_raster_row(context, buffer, x, y, static_cast<int32_t>(std::min<int64_t>(count, INT32_MAX)),
                   n < 0);
}

void write_raster_row(OutputContext *context, const uint8_t *buffer, int32_t x, int32_t y,
                      int32_t n, bool rgb) {
  const RowPart part = part_on_page(context, x, y, n);
  if (part.count == 0) return;
  const uint8_t *from = buffer + part.skipped * (rgb ? rgb_bytes : 1);
  uint8_t *to = raster_at(context, x + part.skipped, y);
  if (context->page.rgba_mode != 0) {
    write_rgba_row(context, from, reinterpret_cast<uint32_t *>(to), part.count, rgb);
  } else {
    write_palette_row(context, from, to, part.count, rgb);
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvwpx(int32_t x, int32_t y, int32_t colour) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  flush_raster(context);
  if (part_on_page(context, x, y, 1).count == 0 || is_transparent(context, colour)) return 0;
  uint8_t *to = raster_at(context, x, y);
  if (context->page.rgba_mode != 0) {
    store_word(to, rgba_pixel(context, colour));
  } else {
    *to = palette_pixel(context, colour);
  }
  return 0;
}

extern "C" int32_t qqvrow(const uint8_t *buffer, int32_t x, int32_t y, int32_t n) {
  if (output_context != nullptr) write_raster_pixels(output_context, buffer, x, y, n);
  return 0;
}

extern "C" int32_t qqvrpx(int32_t x, int32_t y, int32_t *colour) {
  OutputContext *context = output_context;
  *colour = 0;
  if (context == nullptr) return 0;
  flush_raster(context);
  if (part_on_page(context, x, y, 1).count == 0) return 0;
  const uint8_t *from = raster_at(context, x, y);
  *colour = context->page.rgba_mode != 0 ? cached_nearest_colour(context, from[0], from[1], from[2])
                                         : from[0];
  return 0;
}

extern "C" int32_t qqvrdr(uint8_t *buffer, int32_t x, int32_t y, int32_t n, int32_t rows) {
  if (output_context != nullptr) {
    read_raster_rectangle(output_context, buffer, x, y, n, rows);
    return 0;
  }
  const auto bytes = magnitude(n) * magnitude(rows) * (n < 0 ? rgb_bytes : 1);
  std::memset(buffer, 0, static_cast<size_t>(bytes));
  return 0;
}
