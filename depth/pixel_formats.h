// SPDX-License-Identifier: MIT
//
// What a target stores for a colour: one small record per layout (core/bitmap_pixels.h), for the
// loops that are templates over them.
//
// `ink` makes of a colour, and `index_ink` of a palette index, what `put` stores, so that a loop in
// one colour does this once. Formats that can blend have `get`, which gives the three channels.
#pragma once

#include <cstring>

#include "core/bitmap_pixels.h"
#include "depth/depth.h"
#include "raster/raster.h"

namespace quorix {

// Pure black for pure white and the other way round, for pictures that are printed.
inline Rgb swap_black_white_pixel(Rgb p) {
  if (p.r > 254 && p.g > 254 && p.b > 254) return {0, 0, 0};
  if (p.r == 0 && p.g == 0 && p.b == 0) return {255, 255, 255};
  return p;
}

inline Rgb palette_colour(const OutputContext *context, int32_t index) {
  const int32_t i = index & 255;
  return {context->colours.palette_r[i], context->colours.palette_g[i],
          context->colours.palette_b[i]};
}

struct RgbaPixels : RgbaLayout {
  static constexpr bool blends = true;
  const OutputContext *context;

  explicit RgbaPixels(const Target &t) : RgbaLayout(t.bitmap), context(t.context) {}
  uint32_t ink(Rgb c) const { return pack_rgba(c.r, c.g, c.b, context->colours.colour_alpha); }
  uint32_t index_ink(int32_t index) const { return ink(palette_colour(context, index)); }
  void put(int32_t x, int32_t y, uint32_t ink) const { store_word(at(x, y), ink); }
};

struct BgrPixels : BgrLayout {
  static constexpr bool blends = true;
  const OutputContext *context;

  explicit BgrPixels(const Target &t) : BgrLayout(t.bitmap), context(t.context) {}
  static Rgb ink(Rgb c) { return c; }
  Rgb index_ink(int32_t index) const { return palette_colour(context, index); }
  void put(int32_t x, int32_t y, Rgb ink) const { put_rgb(x, y, ink); }
};

// On palette displays bytes stand for indices.
struct IndexPixels : IndexLayout {
  static constexpr bool blends = false;
  const OutputContext *context;
  uint8_t (*index_to_pixel)(const OutputContext *context, int32_t index);

  explicit IndexPixels(const Target &t)
      : IndexLayout(t.bitmap), context(t.context), index_to_pixel(t.device->index_to_pixel) {}
  uint8_t ink(Rgb c) const { return index_ink(cached_nearest_colour(context, c.r, c.g, c.b)); }
  uint8_t index_ink(int32_t index) const {
    const int32_t i = index & 255;
    return index_to_pixel == nullptr ? static_cast<uint8_t>(i) : index_to_pixel(context, i);
  }
  void put(int32_t x, int32_t y, uint8_t ink) const { put_byte(x, y, ink); }
};

// Windows of 16 bits, which draw one pixel at a time.
struct SinglePixels {
  static constexpr bool blends = false;
  OutputContext *context;
  void (*set_pixel)(OutputContext *context, int32_t x, int32_t y, uint8_t r, uint8_t g, uint8_t b);

  explicit SinglePixels(const Target &t) : context(t.context), set_pixel(t.bitmap.set_pixel) {}
  static Rgb ink(Rgb c) { return c; }
  Rgb index_ink(int32_t index) const { return palette_colour(context, index); }
  void put(int32_t x, int32_t y, Rgb ink) const { set_pixel(context, x, y, ink.r, ink.g, ink.b); }
};

// Calls `draw` with the pixels of a target.
template <class Draw>
void with_pixels(const Target &t, Draw draw) {
  switch (t.bitmap.order) {
    case PixelOrder::rgba:
      return draw(RgbaPixels(t));
    case PixelOrder::bgr:
      return draw(BgrPixels(t));
    case PixelOrder::index:
      return draw(IndexPixels(t));
    case PixelOrder::set_pixel:
      return draw(SinglePixels(t));
  }
}

}  // namespace quorix
