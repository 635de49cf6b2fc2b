// SPDX-License-Identifier: MIT
//
// The one TrueType font of the process: what the outlines of its characters need, in memory.
//
// Everything that a lookup can depend on is worked out when the font is opened, so a character
// costs one access for its glyph, and reading an outline asks for no memory.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

enum TtfStatus : int32_t {
  ttf_done = 0,
  ttf_no_file = 1,  // also where no font is open
  ttf_no_memory = 2,
  ttf_short_table = 3,
  ttf_no_unicode_map = 4,
  ttf_unknown_map_format = 5,
  ttf_arrays_too_small = 6,
  ttf_component_not_simple = 7,
  ttf_bad_glyph = 8,  // also one that its table cuts off
  ttf_no_cmap = 11,
  ttf_no_loca = 12,
  ttf_no_head = 13,
  ttf_no_maxp = 14,
  ttf_no_glyf = 15,
  ttf_bad_head = 23,
  ttf_bad_maxp = 24,
};

inline constexpr size_t ttf_codes = 65536;
inline constexpr size_t ttf_most_points = 65536;  // the last end point is a number of 16 bits
inline constexpr size_t ttf_most_repeats = 255;
inline constexpr size_t ttf_table_margin = 8;  // zeros behind `glyf`, for reads past its end
inline constexpr int32_t ttf_kept_points = 64;

// How much of its two ends and of the control point each point of a curve is made of.
struct CurveWeights {
  int32_t count;  // what it holds the weights for; 0 at first
  double start[ttf_kept_points], control[ttf_kept_points], end[ttf_kept_points];
};

struct TtfFont {
  bool ready;          // opened without a failure
  bool big_endian;     // order of the bytes of the file
  int16_t cap_height;  // top of the capital A in font units
  uint16_t glyph_count;
  int32_t *glyph_of_code;  // owned, ttf_codes entries; -1: the map leads out of itself
  uint32_t *offsets;       // owned, glyph_count + 1 places in `glyf`
  uint8_t *glyf;           // owned, glyf_size bytes and ttf_table_margin zeros
  size_t glyf_size;

  // Kept between calls.
  CurveWeights weights;
  uint8_t flags[ttf_most_points + ttf_most_repeats];  // of the points of a glyph
};

extern TtfFont *ttf_font;

// Where a glyph starts; false for a blank one, which has no bytes in the table.
bool find_glyph(const TtfFont &font, int32_t glyph, size_t *start);

// ---- truetype_map.cpp

struct ByteSource;

// Fills glyph_of_code from the map in the table of `length` bytes at `offset`.
TtfStatus read_character_map(ByteSource *source, uint64_t offset, uint64_t length, TtfFont *font);

}  // namespace quorix
