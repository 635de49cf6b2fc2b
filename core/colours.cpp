// SPDX-License-Identifier: MIT
//
// Colour arguments, the palette, and the search for its nearest colour.
//
// The search is the cost of every conversion from true colour to indices, so its answers are kept
// in a direct-mapped cache keyed by the exact colour. A change of the palette gives it a new
// version number, which empties the cache.
#include "core/colours.h"

#include <algorithm>
#include <cstdlib>

#include "core/nearest_in_cell.h"
#include "core/output_context.h"

namespace quorix {

namespace {

constexpr int32_t farther_than_any = 1000;  // distances end at 3 * 255

bool entry_is(const OutputContext *context, int32_t i, uint8_t value) {
  return context->colours.palette_r[i] == value && context->colours.palette_g[i] == value &&
         context->colours.palette_b[i] == value;
}

// City-block distances to the first `count` entries; a loop that the compiler turns into vectors.
void measure_distances(const OutputContext *context, int32_t count, uint8_t r, uint8_t g, uint8_t b,
                       uint16_t *distances) {
  const auto apart = [](uint8_t u, uint8_t v) {
    return static_cast<uint8_t>(std::max(u, v) - std::min(u, v));
  };
  for (int32_t i = 0; i < count; ++i) {
    distances[i] = static_cast<uint16_t>(apart(r, context->colours.palette_r[i]) +
                                         apart(g, context->colours.palette_g[i]) +
                                         apart(b, context->colours.palette_b[i]));
  }
}

// Black and white find an end of the table at once; -1 for any other colour, or without a match.
int32_t black_or_white_end(const OutputContext *context, int32_t last, uint8_t r, uint8_t g,
                           uint8_t b) {
  if (r != g || g != b || (r != 0 && r != 255)) return -1;
  if (entry_is(context, 0, r)) return 0;
  return entry_is(context, last, r) ? last : -1;
}

}  // namespace

int32_t palette_entries(uint8_t kind) {
  if (kind == palette_kind_9) return 9;
  return kind == palette_kind_16 ? 16 : 256;
}

// Ties go to the highest index where blue is 0 and to the lowest otherwise. Kept: pictures of
// palettes with repeated colours depend on it.
int32_t nearest_colour(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b) {
  const int32_t count = palette_entries(context->colours.palette_kind);
  const int32_t end = black_or_white_end(context, count - 1, r, g, b);
  if (end >= 0) return end;
  uint16_t distances[256];
  measure_distances(context, count, r, g, b, distances);
  uint16_t best = farther_than_any;
  for (int32_t i = 0; i < count; ++i)
    best = std::min(best, distances[i]);
  if (b < 1) {
    int32_t i = count - 1;
    while (distances[i] != best)
      --i;
    return i;
  }
  return static_cast<int32_t>(std::find(distances, distances + count, best) - distances);
}

void palette_changed(OutputContext *context) {
  static uint32_t versions = 0;
  context->colours.palette_version = ++versions;
}

int32_t cached_nearest_colour(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b) {
  constexpr uint32_t slots = 4096;
  struct Slot {
    uint32_t colour;  // with bit 24 set where the slot holds an answer
    int32_t index;
  };
  static Slot cache[slots];
  static uint32_t cached_version = 0;
  if (cached_version != context->colours.palette_version) {
    std::fill(cache, cache + slots, Slot{});
    cached_version = context->colours.palette_version;
  }
  const uint32_t colour = static_cast<uint32_t>(r) | static_cast<uint32_t>(g) << 8 |
                          static_cast<uint32_t>(b) << 16 | 1U << 24;
  Slot &slot = cache[(colour * 2654435761U) >> 20];  // multiplicative hashing, upper 12 bits
  if (slot.colour != colour) slot = {colour, nearest_in_cell(context, r, g, b)};
  return slot.index;
}

void colour_to_rgb(const OutputContext *context, int32_t colour, uint8_t *r, uint8_t *g,
                   uint8_t *b) {
  if (is_packed_colour(colour)) {
    *r = static_cast<uint8_t>(colour & 255);
    *g = static_cast<uint8_t>(colour >> 8 & 255);
    *b = static_cast<uint8_t>(colour >> 16 & 255);
    return;
  }
  const int32_t index = colour & 255;
  *r = context->colours.palette_r[index];
  *g = context->colours.palette_g[index];
  *b = context->colours.palette_b[index];
}

}  // namespace quorix
