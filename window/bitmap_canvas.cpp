// SPDX-License-Identifier: MIT
//
// The canvas over a bitmap of our own; bitmap_canvas.h says what its pixels are. An operation sets
// pen and colour of the private record and calls the raster.
#include "window/bitmap_canvas.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/memory.h"
#include "raster/raster.h"

namespace quorix {

namespace {

constexpr uint32_t palette_colour = 0x1000000;
constexpr uint32_t system_colours = 10;  // entries of the display's palette before ours

BitmapCanvas *of(Canvas *canvas) {
  return reinterpret_cast<BitmapCanvas *>(canvas);
}

bool has_words(const BitmapCanvas *c) {
  return c->bits > 8;
}

// Displays of 16 bits keep 5, 6 and 5 of them.
uint32_t displayed(const BitmapCanvas *c, uint32_t colour) {
  return c->bits == 16 ? colour & 0xF8FCF8 : colour;
}

uint8_t palette_byte(uint32_t colour) {
  return static_cast<uint8_t>((colour & palette_colour) != 0 ? (colour & 255) + system_colours : 0);
}

void use_colour(BitmapCanvas *c, uint32_t given) {
  const uint32_t colour = displayed(c, given);
  c->loops.colours.colour_r = static_cast<uint8_t>(colour >> 16 & 255);
  c->loops.colours.colour_g = static_cast<uint8_t>(colour >> 8 & 255);
  c->loops.colours.colour_b = static_cast<uint8_t>(colour & 255);
  c->loops.colours.colour_index = palette_byte(colour);
}

// As a colour argument of the raster, whose first byte of a pixel is our blue.
int32_t raster_colour(const BitmapCanvas *c, uint32_t given) {
  if (!has_words(c)) return palette_byte(given);
  const uint32_t colour = displayed(c, given);
  return static_cast<int32_t>(palette_colour | (colour & 255) << 16 | (colour & 0xFF00) |
                              (colour >> 16 & 255));
}

// ---- State

void close(Canvas *canvas) {
  if (!of(canvas)->borrowed) release_bitmap_canvas(of(canvas));
}

int32_t cap_of(uint32_t style) {
  if ((style & pen_cap_flat) != 0) return cap_butt;
  return (style & pen_cap_square) != 0 ? cap_square : cap_round;
}

int32_t join_of(uint32_t style) {
  if ((style & pen_join_miter) != 0) return join_miter;
  return (style & pen_join_bevel) != 0 ? join_bevel : join_round;
}

void set_pen(Canvas *canvas, const CanvasPen &pen) {
  BitmapCanvas *c = of(canvas);
  c->pen_colour = pen.colour;
  c->loops.pen.line_width = pen.width;
  c->loops.pen.line_cap = pen.style == 0 ? cap_square : cap_of(pen.style);
  c->loops.pen.line_join = pen.style == 0 ? join_bevel : join_of(pen.style);
}

void set_clip(OutputContext *loops, const CanvasRect &rect) {
  loops->page.clip_x1 = rect.left;
  loops->page.clip_y1 = rect.top;
  loops->page.clip_x2 = rect.right - 1;
  loops->page.clip_y2 = rect.bottom - 1;
}

void clip(Canvas *canvas, const CanvasRect &rect) {
  set_clip(&of(canvas)->loops, rect);
  of(canvas)->loops.page.clip_on = 1;
}

// ---- Drawing

void polyline(Canvas *canvas, const int32_t *xs, const int32_t *ys, int32_t count) {
  if (count < 1) return;
  use_colour(of(canvas), of(canvas)->pen_colour);
  render_polyline(&of(canvas)->loops, xs, ys, count);
}

void polygon(Canvas *canvas, const CanvasPoint *points, int32_t count, uint32_t colour) {
  if (count < 1) return;
  const auto n = static_cast<size_t>(count);
  auto corners = allocate_array<double>(2 * n);
  if (!corners) return;
  for (size_t i = 0; i < n; ++i) {
    corners[i] = points[i].x;
    corners[n + i] = points[i].y;
  }
  use_colour(of(canvas), colour);
  int32_t status = 0;
  fill_polygon(&of(canvas)->loops, corners.get(), corners.get() + n, count, &status);
}

void fill_rectangle(Canvas *canvas, const CanvasRect &rect, uint32_t colour) {
  BitmapCanvas *c = of(canvas);
  fill_raster_rectangle(&c->loops, rect.left, rect.top, rect.right - 1, rect.bottom - 1,
                        raster_colour(c, colour));
}

void set_pixel(Canvas *canvas, int32_t x, int32_t y, uint32_t colour) {
  use_colour(of(canvas), colour);
  with_surface(&of(canvas)->loops, [&](const auto &s) { put_pixel(s, x, y); });
}

uint32_t get_pixel(Canvas *canvas, int32_t x, int32_t y) {
  return bitmap_canvas_colour(of(canvas), x, y);
}

void round_shape(Canvas *canvas, const CanvasRect &box, int32_t symbol) {
  const int32_t h = (box.right - box.left) / 2;
  draw_symbol(&of(canvas)->loops, symbol, box.left + h, box.top + (box.bottom - box.top) / 2, h);
}

// Whole circles and upper halves, which are the arcs that markers have.
void arc(Canvas *canvas, const CanvasRect &box, CanvasPoint from, CanvasPoint to) {
  use_colour(of(canvas), of(canvas)->pen_colour);
  const bool whole = from.x == to.x && from.y == to.y;
  round_shape(canvas, box, whole ? symbol_circle : symbol_half_circle);
}

void chord(Canvas *canvas, const CanvasRect &box, CanvasPoint /*from*/, CanvasPoint /*to*/,
           uint32_t colour) {
  use_colour(of(canvas), colour);
  round_shape(canvas, box, symbol_half_disc);
}

void ellipse(Canvas *canvas, const CanvasRect &box, uint32_t colour) {
  use_colour(of(canvas), colour);
  round_shape(canvas, box, symbol_disc);
}

// ---- The bitmap's bytes

// Rows are padded to 16 bits.
int32_t row_bytes(int32_t width, int32_t bits) {
  return (width * (bits < 8 ? 8 : bits) + 15) / 16 * 2;
}

bool begin_access(Canvas *canvas, BitmapInfo *info) {
  const BitmapCanvas *c = of(canvas);
  const RasterPage &page = c->loops.buffers.raster.page;
  const int32_t bits = has_words(c) ? c->bits : 8;
  *info = {page.width, page.height, row_bytes(page.width, bits), 1, bits};
  return true;
}

uint32_t *word_row(BitmapCanvas *c, int32_t y) {
  const PixelBuffer &buffer = c->loops.buffers.raster;
  return reinterpret_cast<uint32_t *>(buffer.pixels) +
         static_cast<size_t>(y) * static_cast<size_t>(buffer.page.width);
}

// Calls move(row of the bitmap, row of the bytes) for all rows that `size` bytes hold.
template <class Move>
void for_each_row(BitmapCanvas *c, size_t size, Move move) {
  BitmapInfo info = {};
  begin_access(&c->canvas, &info);
  const auto pitch = static_cast<size_t>(info.row_bytes);
  const auto rows = static_cast<int32_t>(std::min(size / pitch, static_cast<size_t>(info.height)));
  for (int32_t y = 0; y < rows; ++y)
    move(y, static_cast<size_t>(y) * pitch);
}

void pack(const uint32_t *words, uint8_t *bytes, int32_t width, int32_t bits) {
  for (int32_t x = 0; x < width; ++x) {
    const uint32_t word = words[x];
    if (bits == 24) {
      std::memcpy(bytes + 3 * static_cast<ptrdiff_t>(x), &word, 3);
    } else {
      const auto packed = static_cast<uint16_t>((word >> 19 & 31) << 11 | (word >> 10 & 63) << 5 |
                                                (word >> 3 & 31));
      std::memcpy(bytes + 2 * static_cast<ptrdiff_t>(x), &packed, 2);
    }
  }
}

void unpack(const uint8_t *bytes, uint32_t *words, int32_t width, int32_t bits) {
  for (int32_t x = 0; x < width; ++x) {
    if (bits == 24) {
      uint32_t word = 0;
      std::memcpy(&word, bytes + 3 * static_cast<ptrdiff_t>(x), 3);
      words[x] = word;
    } else {
      uint16_t packed = 0;
      std::memcpy(&packed, bytes + 2 * static_cast<ptrdiff_t>(x), 2);
      words[x] = (packed >> 11 & 31U) << 19 | (packed >> 5 & 63U) << 10 | (packed & 31U) << 3;
    }
  }
}

void read_bits(Canvas *canvas, uint8_t *bytes, size_t size) {
  BitmapCanvas *c = of(canvas);
  const PixelBuffer &buffer = c->loops.buffers.raster;
  const auto width = static_cast<size_t>(buffer.page.width);
  if (c->bits == 32) {
    const size_t all = width * static_cast<size_t>(buffer.page.height) * 4;
    std::memcpy(bytes, buffer.pixels, std::min(size, all));
    return;
  }
  for_each_row(c, size, [&](int32_t y, size_t at) {
    if (has_words(c)) {
      pack(word_row(c, y), bytes + at, buffer.page.width, c->bits);
    } else {
      std::memcpy(bytes + at, buffer.pixels + static_cast<size_t>(y) * width, width);
    }
  });
}

void write_bits(Canvas *canvas, const uint8_t *bytes, size_t size) {
  BitmapCanvas *c = of(canvas);
  const PixelBuffer &buffer = c->loops.buffers.raster;
  const auto width = static_cast<size_t>(buffer.page.width);
  if (c->bits == 32) {
    const size_t all = width * static_cast<size_t>(buffer.page.height) * 4;
    std::memcpy(buffer.pixels, bytes, std::min(size, all));
    return;
  }
  for_each_row(c, size, [&](int32_t y, size_t at) {
    if (has_words(c)) {
      unpack(bytes + at, word_row(c, y), buffer.page.width, c->bits);
    } else {
      std::memcpy(buffer.pixels + static_cast<size_t>(y) * width, bytes + at, width);
    }
  });
}

// The bitmap is the picture itself, so there is nothing to show or take down.
void end_access(Canvas * /*canvas*/, bool /*show*/) {}

void set_text_colour(Canvas * /*canvas*/, uint32_t /*colour*/) {}

// Bytes stay what they are whatever the palette says.
bool set_palette(Canvas * /*canvas*/, const PaletteEntry * /*entries*/, int32_t /*count*/) {
  return true;
}

}  // namespace

const CanvasCalls bitmap_canvas_calls = {
    .close = close,
    .set_pen = set_pen,
    .set_text_colour = set_text_colour,
    .clip = clip,
    .save_clip = nullptr,
    .intersect_clip = nullptr,
    .restore_clip = nullptr,
    .set_palette = set_palette,
    .polyline = polyline,
    .polygon = polygon,
    .fill_rectangle = fill_rectangle,
    .set_pixel = set_pixel,
    .get_pixel = get_pixel,
    .arc = arc,
    .chord = chord,
    .ellipse = ellipse,
    .select_font = nullptr,
    .font_metrics = nullptr,
    .text_width = nullptr,
    .text = nullptr,
    .begin_access = begin_access,
    .read_bits = read_bits,
    .write_bits = write_bits,
    .end_access = end_access,
    .bitmap = nullptr,
};

void release_bitmap_canvas(BitmapCanvas *c) {
  release_bytes(c->loops.buffers.raster_base.pixels);
  release_bytes(c);
}

BitmapCanvas *create_bitmap_canvas(int32_t width, int32_t height, int32_t bits) {
  size_t bytes = 0;
  if (width < 1 || height < 1) return nullptr;
  const size_t pixel = bits > 8 ? 4 : 1;
  if (!checked_product(&bytes, static_cast<size_t>(width), static_cast<size_t>(height), pixel)) {
    return nullptr;
  }
  void *block = allocate_zeroed_bytes(sizeof(BitmapCanvas));
  auto *pixels = static_cast<uint8_t *>(block == nullptr ? nullptr : allocate_zeroed_bytes(bytes));
  if (pixels == nullptr) {
    release_bytes(block);
    return nullptr;
  }
  auto *c = new (block) BitmapCanvas();
  c->canvas.calls = &bitmap_canvas_calls;
  c->bits = bits;
  OutputContext &loops = c->loops;
  loops.page.width = width;
  loops.page.height = height;
  loops.page.rgba_mode = has_words(c) ? 1 : 0;
  set_clip(&loops, {0, 0, width, height});
  loops.pen = {1, cap_square, join_bevel, 0};
  loops.buffers.raster_base = {pixels, {width, height, loops.page.rgba_mode}};
  loops.buffers.raster = loops.buffers.raster_base;
  loops.buffers.raster_state = raster_open;
  return c;
}

uint32_t bitmap_canvas_colour(const BitmapCanvas *c, int32_t x, int32_t y) {
  const PixelBuffer &buffer = c->loops.buffers.raster;
  if (x < 0 || y < 0 || x >= buffer.page.width || y >= buffer.page.height) return 0;
  const size_t at =
      static_cast<size_t>(y) * static_cast<size_t>(buffer.page.width) + static_cast<size_t>(x);
  if (!has_words(c)) return buffer.pixels[at];
  const uint32_t word = reinterpret_cast<const uint32_t *>(buffer.pixels)[at];
  return (word & 255) << 16 | (word & 0xFF00) | (word >> 16 & 255);
}

}  // namespace quorix
