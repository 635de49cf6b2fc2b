// SPDX-License-Identifier: MIT
//
// Rows of pixels on their way into a device or out of it: what the raster and the window device
// share.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/output_context.h"
#include "raster/surface.h"

namespace quorix {

inline constexpr int64_t rgb_bytes = 3;

// The part of a row that lies on a page.
struct RowPart {
  int64_t skipped;  // pixels before it
  int64_t count;    // 0 where the row misses the page
};

inline RowPart row_part(int64_t x, int64_t y, int64_t count, int32_t width, int32_t height) {
  if (y < 0 || y >= height) return {0, 0};
  const int64_t first = std::max<int64_t>(x, 0);
  const int64_t end = std::min<int64_t>(x + count, width);
  return end > first ? RowPart{first - x, end - first} : RowPart{0, 0};
}

// ---- Writing: transparent pixels are left out and stay as they were

template <class Store>
void write_triples(const OutputContext *context, const uint8_t *from, int64_t count, Store store) {
  const bool masked = context->colours.transparent_colour != -1;
  const uint8_t tr = context->colours.transparent_r;
  const uint8_t tg = context->colours.transparent_g;
  const uint8_t tb = context->colours.transparent_b;
  for (int64_t i = 0; i < count; ++i, from += rgb_bytes) {
    if (masked && from[0] == tr && from[1] == tg && from[2] == tb) continue;
    store(i, from[0], from[1], from[2]);
  }
}

template <class Store>
void write_indices(const OutputContext *context, const uint8_t *from, int64_t count, Store store) {
  const int32_t transparent = context->colours.transparent_colour;
  for (int64_t i = 0; i < count; ++i) {
    if (transparent != -1 && from[i] == transparent) continue;
    store(i, from[i]);
  }
}

// The nearest index of a colour, the last one remembered: pictures are made of runs.
class NearestIndex {
 public:
  explicit NearestIndex(const OutputContext *context) : context_(context) {}
  uint8_t operator()(uint8_t r, uint8_t g, uint8_t b) {
    const uint32_t colour = pack_rgba(r, g, b, 1);
    if (colour != colour_) {
      colour_ = colour;
      index_ = static_cast<uint8_t>(cached_nearest_colour(context_, r, g, b));
    }
    return index_;
  }

 private:
  const OutputContext *context_;
  uint32_t colour_ = 0;  // alpha 0: none yet
  uint8_t index_ = 0;
};

}  // namespace quorix
