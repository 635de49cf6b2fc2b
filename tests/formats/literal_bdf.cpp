// SPDX-License-Identifier: MIT
//
// Reads a font by its words, and turns one pixel after another.
#include "tests/formats/literal_bdf.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "tests/support/character_tables.h"

namespace quorix::testing {

std::string bdf_text(const std::vector<BdfGlyphText> &glyphs) {
  std::ostringstream text;
  text << "STARTFONT 2.1\nCOMMENT made for tests\nFONT -test\nSIZE 10 75 75\n"
       << "FONTBOUNDINGBOX 8 10 0 -2\nCHARS " << glyphs.size() << "\n";
  for (const BdfGlyphText &glyph : glyphs) {
    text << "STARTCHAR C" << glyph.encoding << "\nENCODING " << glyph.encoding
         << "\nSWIDTH 500 0\nDWIDTH " << glyph.dwidth << " 0\nBBX " << glyph.width << " "
         << glyph.height << " " << glyph.x_offset << " " << glyph.y_offset << "\nBITMAP\n";
    for (const std::string &row : glyph.rows)
      text << row << "\n";
    text << "ENDCHAR\n";
  }
  text << "ENDFONT\n";
  return text.str();
}

std::vector<BdfGlyphText> parse_bdf(const std::string &text) {
  std::istringstream lines(text);
  std::vector<BdfGlyphText> glyphs;
  std::string line;
  size_t declared = 0;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == "CHARS") words >> declared;
    if (word == "STARTCHAR") glyphs.emplace_back();
    if (glyphs.empty()) continue;
    BdfGlyphText &glyph = glyphs.back();
    if (word == "ENCODING") words >> glyph.encoding;
    if (word == "DWIDTH") words >> glyph.dwidth;
    if (word == "BBX") words >> glyph.width >> glyph.height >> glyph.x_offset >> glyph.y_offset;
    if (word != "BITMAP") continue;
    while (std::getline(lines, line) && line != "ENDCHAR")
      glyph.rows.push_back(line);
    EXPECT_EQ(glyph.rows.size(), static_cast<size_t>(glyph.height)) << glyph.encoding;
  }
  EXPECT_EQ(glyphs.size(), declared);
  return glyphs;
}

const BdfGlyphText *own_glyph(const std::vector<BdfGlyphText> &font, int32_t code) {
  for (const BdfGlyphText &glyph : font)
    if (glyph.encoding == literal_unicode(code)) return &glyph;
  return nullptr;
}

const BdfGlyphText *drawn_glyph(const std::vector<BdfGlyphText> &font, int32_t code) {
  const BdfGlyphText *glyph = own_glyph(font, code);
  if (glyph != nullptr) return glyph;
  return font.size() > 32 ? &font[32] : nullptr;
}

std::vector<Pixel> literal_pixels(const BdfGlyphText &glyph, int32_t x, int32_t y, int32_t angle) {
  double sine = 0, cosine = 1;
  if (angle == 90) {
    sine = 1;
    cosine = 0;
  } else if (angle != 0) {
    sine = std::sin(angle * 3.1415927 / 180.0);
    cosine = std::cos(angle * 3.1415927 / 180.0);
  }
  std::vector<Pixel> pixels;
  int32_t row = glyph.height + glyph.y_offset - 1;
  for (const std::string &digits : glyph.rows) {
    int32_t column = glyph.x_offset;
    for (const char digit : digits) {
      const size_t value = std::string("0123456789ABCDEF").find(digit);
      if (value == std::string::npos) continue;  // and the column stays
      for (size_t bit = 8; bit > 0; bit /= 2, ++column) {
        if ((value & bit) == 0) continue;
        pixels.push_back({x + static_cast<int32_t>(column * cosine - row * sine + 0.5),
                          y - static_cast<int32_t>(column * sine + row * cosine + 0.5)});
      }
    }
    --row;
  }
  return pixels;
}

}  // namespace quorix::testing
