// SPDX-License-Identifier: MIT
//
// BDF fonts as text, a plain reader of them, and characters drawn pixel by pixel.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

struct BdfGlyphText {
  int32_t encoding, dwidth;
  int32_t width, height, x_offset, y_offset;
  std::vector<std::string> rows;  // hexadecimal
};

// A font of these glyphs, written as the format's description has it.
std::string bdf_text(const std::vector<BdfGlyphText> &glyphs);

// The glyphs of a well-formed font; the test fails where it is none.
std::vector<BdfGlyphText> parse_bdf(const std::string &text);

// Which glyph is drawn for a code of the library: null where the font has neither the code's own
// nor a 33rd one. And the one that has the code itself.
const BdfGlyphText *drawn_glyph(const std::vector<BdfGlyphText> &font, int32_t code);
const BdfGlyphText *own_glyph(const std::vector<BdfGlyphText> &font, int32_t code);

struct Pixel {
  int32_t x, y;
  bool operator==(const Pixel &) const = default;
};
// The pixels of a character whose origin is (x, y), row by row.
std::vector<Pixel> literal_pixels(const BdfGlyphText &glyph, int32_t x, int32_t y, int32_t angle);

}  // namespace quorix::testing
