// SPDX-License-Identifier: MIT
// Literal raster: colour arguments, the palette, and the nearest palette entry.

#include <cstdlib>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

bool is_packed(int32_t colour) {
  return (colour >> 24) == 1;
}

Rgb packed_bytes(int32_t colour) {
  return Rgb{low_byte(colour), low_byte(colour >> 8), low_byte(colour >> 16)};
}

uint8_t index_of(int32_t colour) {
  return low_byte(colour % 256);
}

Rgb palette_entry(const LiteralRaster &raster, uint8_t index) {
  return Rgb{raster.palette_r[index], raster.palette_g[index], raster.palette_b[index]};
}

namespace {

int last_index(const LiteralRaster &raster) {
  if (raster.palette_kind == 0) return 8;
  if (raster.palette_kind == 7) return 15;
  return 255;
}

bool entry_is(const LiteralRaster &raster, int index, uint8_t r, uint8_t g, uint8_t b) {
  return raster.palette_r[index] == r && raster.palette_g[index] == g &&
         raster.palette_b[index] == b;
}

}  // namespace

uint8_t nearest_colour(const LiteralRaster &raster, Rgb wanted) {
  const int last = last_index(raster);
  if (wanted.r == 0 && wanted.g == 0 && wanted.b == 0) {
    if (entry_is(raster, 0, 0, 0, 0)) return 0;
    if (entry_is(raster, last, 0, 0, 0)) return static_cast<uint8_t>(last);
  }
  if (wanted.r == 255 && wanted.g == 255 && wanted.b == 255) {
    if (entry_is(raster, 0, 255, 255, 255)) return 0;
    if (entry_is(raster, last, 255, 255, 255)) return static_cast<uint8_t>(last);
  }
  int best_distance = 1000;
  int best = 0;
  for (int i = 0; i <= last; i++) {
    const int candidate = wanted.b < 1 ? last - i : i;
    const int distance = std::abs(wanted.r - raster.palette_r[candidate]) +
                         std::abs(wanted.g - raster.palette_g[candidate]) +
                         std::abs(wanted.b - raster.palette_b[candidate]);
    if (distance < best_distance) {
      best_distance = distance;
      best = candidate;
    }
    if (distance == 0) break;
  }
  return static_cast<uint8_t>(best);
}

int32_t qqvclr(LiteralRaster &raster, int32_t colour) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  raster.colour_arg = colour;
  uint8_t index = 0;
  if (is_packed(colour)) {
    const Rgb rgb = packed_bytes(colour);
    raster.colour_r = rgb.r;
    raster.colour_g = rgb.g;
    raster.colour_b = rgb.b;
    if (raster.rgba_mode != 0) return 0;
    index = nearest_colour(raster, rgb);
  } else {
    index = index_of(colour);
  }
  raster.colour_index = index;
  raster.colour_r = raster.palette_r[index];
  raster.colour_g = raster.palette_g[index];
  raster.colour_b = raster.palette_b[index];
  return 0;
}

int32_t qqvvlt(LiteralRaster &raster, uint8_t kind, const uint32_t *table) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  raster.palette_kind = kind;
  for (int i = 0; i <= last_index(raster); i++) {
    raster.palette_r[i] = low_byte(table[i] >> 16);
    raster.palette_g[i] = low_byte(table[i] >> 8);
    raster.palette_b[i] = low_byte(table[i]);
  }
  return 0;
}

namespace {

void give_order(int32_t x, int32_t y, int32_t z, int32_t *first, int32_t *second, int32_t *third) {
  *first = x;
  *second = y;
  *third = z;
}

}  // namespace

void sort3_int(const int32_t *v, int32_t *first, int32_t *second, int32_t *third) {
  const int32_t a = v[0];
  const int32_t b = v[1];
  const int32_t c = v[2];
  if (a < b) {
    if (c <= a) give_order(2, 0, 1, first, second, third);
    if (c > a && c >= b) give_order(0, 1, 2, first, second, third);
    if (c > a && c < b) give_order(0, 2, 1, first, second, third);
  } else {
    if (c <= b) give_order(2, 1, 0, first, second, third);
    if (c > b && c >= a) give_order(1, 0, 2, first, second, third);
    if (c > b && c < a) give_order(1, 2, 0, first, second, third);
  }
}

}  // namespace quorix::literal
