// SPDX-License-Identifier: MIT
//
// A bitmap font in memory: what a BDF file says of each glyph, with its bitmap as the list of the
// pixels that are set.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/memory.h"

namespace quorix {

// Counted from the upper left corner of the glyph.
struct BdfPixel {
  int16_t column, row;
};

struct BdfGlyph {
  int32_t box[4];     // "BBX ": width, height, and where the lower left corner lies
  int32_t dwidth[2];  // "DWIDTH "
  int32_t encoding;   // "ENCODING "
  size_t first_pixel, pixel_count;
};

// All that the library's character codes can become lies below.
inline constexpr int32_t bdf_indexed_codes = 384;

struct BdfFont {
  OwnedArray<BdfGlyph> glyphs;  // in the order of the file
  int32_t glyph_count;
  OwnedArray<BdfPixel> pixels;  // of all glyphs
  size_t pixel_count, pixel_room;
  int32_t glyph_of_code[bdf_indexed_codes];  // -1 none
};

enum BdfStatus : int32_t { bdf_done = 0, bdf_no_file = 1, bdf_no_memory = 2 };

// ---- bdf_file.cpp

// Reads a file, or the text of one, into a new font, which the caller releases; none with another
// status than bdf_done.
BdfStatus read_bdf_font(const char *path, BdfFont **font);
BdfStatus read_bdf_text(const uint8_t *text, size_t size, BdfFont **font);
void release_bdf_font(BdfFont *font);

// The first glyph of the file with this encoding, or null.
const BdfGlyph *find_bdf_glyph(const BdfFont &font, int32_t encoding);

// ---- bdf_places.cpp

// The same for the font of this name (as "helve10") where its file is not in the install directory:
// from the folders beside the library and the program, at last from the library itself.
BdfStatus read_bdf_font_beside(const char *name, BdfFont **font);
BdfStatus read_built_in_font(const char *name, BdfFont **font);

}  // namespace quorix
