// SPDX-License-Identifier: MIT
//
// The table of bitmap fonts that were loaded.
#pragma once

#include <cstdint>

namespace quorix {

struct BdfFont;

inline constexpr int32_t bdf_font_count = 12;

struct BitmapFonts {
  BdfFont *bdf_current;                // one of bdf_fonts, or null
  BdfFont *bdf_fonts[bdf_font_count];  // owned, released with the record
  uint8_t bdf_loaded[bdf_font_count];  // 1: from its file, which is not read again
};

}  // namespace quorix
