// SPDX-License-Identifier: MIT
//
// The library's character codes, and what fonts know them as.
//
// Callers write all text in one code: ASCII up to 126, and from 127 to 264 the accented and
// national letters of the languages of Europe, and the signs for currency and copyright. Codes
// below 127, negative ones included, pass unchanged, so a caller that looks something up by the
// result has to bound it. What a font cannot show becomes a blank.
#pragma once

#include <cstdint>

namespace quorix {

inline constexpr int32_t first_national_code = 127;
inline constexpr int32_t last_national_code = 264;
inline constexpr int32_t code_copyright = 264;
inline constexpr int32_t latin1_copyright = 0xA9;
inline constexpr int32_t blank_character = 32;

// Values for `charset` of map_char_code; every other value means Unicode, too.
inline constexpr int32_t charset_latin1_alone = 1;
inline constexpr int32_t charset_unicode = 2;

// For fonts addressed by Latin-1 or Unicode value. With `raw` the code passes unchanged.
int32_t map_char_code(int32_t code, bool raw, int32_t charset);

// For the window's font: the byte of its character set, or for 11 the Unicode value. 0 and 1 are
// Latin-1, 2 and 3 two further sets; under any other number all letters are blanks.
int32_t map_char_for_font(int32_t font_charset, int32_t code);

// Codes 127 to 190 as Latin-1 values; any other is a blank.
int32_t latin1_of_code(int32_t code);

}  // namespace quorix
