// SPDX-License-Identifier: MIT
//
// The current colour, the palette and the transparent colour.
#pragma once

#include <cstdint>

namespace quorix {

// By number of entries.
enum PaletteKind : uint8_t { palette_kind_9 = 0, palette_kind_16 = 7 };

struct Colours {
  int32_t transparent_colour;  // -1 none
  int32_t colour_arg;          // the colour as last given
  uint8_t transparent_r, transparent_g, transparent_b;
  uint8_t palette_kind;  // PaletteKind; all others have 256 entries
  uint8_t palette_r[256], palette_g[256], palette_b[256];
  uint8_t colour_index;
  uint8_t window_colour_index;
  uint8_t colour_r, colour_g, colour_b, colour_alpha;  // side by side: read as one word
  uint32_t palette_version;  // what the cache of nearest colours was filled from
};

struct OutputContext;

// A colour argument is 0x01BBGGRR, or a palette index.
inline bool is_packed_colour(int32_t colour) {
  return colour >> 24 == 1;
}

// How many entries a palette of a kind has.
int32_t palette_entries(uint8_t kind);

// Which entry of the palette is nearest to a colour, by city-block distance.
int32_t nearest_colour(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b);
// As nearest_colour, but remembers its answers until the palette changes.
int32_t cached_nearest_colour(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b);

// The three bytes of a colour argument.
void colour_to_rgb(const OutputContext *context, int32_t colour, uint8_t *r, uint8_t *g,
                   uint8_t *b);

// To be called by whoever changes a palette table or palette_kind.
void palette_changed(OutputContext *context);

}  // namespace quorix
