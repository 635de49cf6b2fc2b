// SPDX-License-Identifier: MIT
//
// Makes the bitmap fonts of the folder `fonts` from outline fonts, with FreeType. From the root of
// the sources:
//
//   c++ -std=c++20 -I. tools/make_bdf_fonts.cpp base/char_codes.cpp
//       $(pkg-config --cflags --libs freetype2) -o build/make_bdf_fonts
//   build/make_bdf_fonts /usr/share/fonts/truetype/dejavu fonts
//
// The number in a font's name is the height of its capitals in pixels. Each is drawn, hinted for
// pixels that are on or off, at the size at which the outline's instructions give that height. It
// has all characters that the library's codes can become, in the order of their Unicode values, and
// at the 33rd place, which is drawn for any other character, an empty box without an encoding.
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "base/char_codes.h"

namespace {

struct Family {
  const char *name;
  const char *outlines;
  std::vector<int> heights;
};

const Family families[] = {
    {"complx", "DejaVuSerif.ttf", {10, 12, 14, 18}},
    {"simplx", "DejaVuSansMono.ttf", {8, 10, 12, 14}},
    {"helve", "DejaVuSans.ttf", {10, 12, 14, 18}},
};

constexpr char copyright[] =
    "Copyright 2003 Bitstream, Inc.; changes by others in the public domain; see LICENSE.txt";
constexpr int box_place = 32;
constexpr int no_encoding = -1;
constexpr FT_Int32 load_flags = FT_LOAD_RENDER | FT_LOAD_TARGET_MONO;

struct Glyph {
  int encoding;
  int advance;
  int width, height, x, y;  // lower left corner
  std::vector<std::vector<bool>> rows;
};

void require(bool condition, const std::string &what) {
  if (condition) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

Glyph rasterise(FT_Face face, int character) {
  const FT_UInt index = FT_Get_Char_Index(face, static_cast<FT_ULong>(character));
  require(index != 0, "no glyph for " + std::to_string(character));
  require(FT_Load_Glyph(face, index, load_flags) == 0, "cannot draw " + std::to_string(character));
  const FT_GlyphSlot slot = face->glyph;
  const FT_Bitmap &bitmap = slot->bitmap;
  Glyph glyph = {character,
                 static_cast<int>((slot->advance.x + 32) >> 6),
                 static_cast<int>(bitmap.width),
                 static_cast<int>(bitmap.rows),
                 slot->bitmap_left,
                 slot->bitmap_top - static_cast<int>(bitmap.rows),
                 {}};
  for (int y = 0; y < glyph.height; ++y) {
    const unsigned char *row = bitmap.buffer + y * bitmap.pitch;
    glyph.rows.emplace_back();
    for (int x = 0; x < glyph.width; ++x) {
      glyph.rows.back().push_back((row[x / 8] & (0x80 >> (x % 8))) != 0);
    }
  }
  if (glyph.rows.empty()) glyph = {character, glyph.advance, 1, 1, 0, 0, {{false}}};
  return glyph;
}

// The size at which capitals have the wanted height, the nearest to the outlines' own proportions.
int size_for_capitals(FT_Face face, int height) {
  int best = 0;
  double best_error = 1e9;
  require(FT_Load_Char(face, 'H', FT_LOAD_NO_SCALE) == 0, "no capitals");
  const double share = static_cast<double>(face->glyph->metrics.horiBearingY) / face->units_per_EM;
  for (int size = height; size <= 2 * height; ++size) {
    FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size));
    const double error = std::abs(size * share - height);
    if (rasterise(face, 'H').height == height && error < best_error) {
      best = size;
      best_error = error;
    }
  }
  require(best != 0, "no size has capitals of " + std::to_string(height));
  FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(best));
  return best;
}

Glyph empty_box(const Glyph &like) {
  Glyph box = {no_encoding, like.advance, like.advance - 2, like.height, 1, 0, {}};
  for (int y = 0; y < box.height; ++y) {
    const bool edge = y == 0 || y == box.height - 1;
    std::vector<bool> row(static_cast<size_t>(box.width), edge);
    row.front() = row.back() = true;
    box.rows.push_back(row);
  }
  return box;
}

std::vector<Glyph> all_glyphs(FT_Face face) {
  std::set<int> characters;
  for (int code = ' '; code <= quorix::last_national_code; ++code) {
    characters.insert(quorix::map_char_code(code, false, quorix::charset_unicode));
  }
  std::vector<Glyph> glyphs;
  for (const int character : characters)
    glyphs.push_back(rasterise(face, character));
  glyphs.insert(glyphs.begin() + box_place, empty_box(rasterise(face, 'H')));
  return glyphs;
}

struct Box {
  int left = INT_MAX, bottom = INT_MAX, right = INT_MIN, top = INT_MIN;
};

Box bounding_box(const std::vector<Glyph> &glyphs) {
  Box box;
  for (const Glyph &glyph : glyphs) {
    box.left = std::min(box.left, glyph.x);
    box.bottom = std::min(box.bottom, glyph.y);
    box.right = std::max(box.right, glyph.x + glyph.width);
    box.top = std::max(box.top, glyph.y + glyph.height);
  }
  return box;
}

int height_of(const std::vector<Glyph> &glyphs, int character) {
  return std::find_if(glyphs.begin(), glyphs.end(),
                      [&](const Glyph &glyph) { return glyph.encoding == character; })
      ->height;
}

void write_header(std::FILE *file, const Family &family, int size,
                  const std::vector<Glyph> &glyphs) {
  const Box box = bounding_box(glyphs);
  int sum = 0;
  for (const Glyph &glyph : glyphs)
    sum += glyph.advance;
  const int average = 10 * sum / static_cast<int>(glyphs.size());
  std::fprintf(file, "STARTFONT 2.1\nCOMMENT %s\n", copyright);
  std::fprintf(file, "FONT -Quorix-%s-Medium-R-Normal--%d-%d-72-72-P-%d-ISO10646-1\n", family.name,
               size, 10 * size, average);
  std::fprintf(file, "SIZE %d 72 72\nFONTBOUNDINGBOX %d %d %d %d\n", size, box.right - box.left,
               box.top - box.bottom, box.left, box.bottom);
  std::fprintf(file,
               "STARTPROPERTIES 11\nFAMILY_NAME \"%s\"\nCOPYRIGHT \"%s\"\n"
               "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nPIXEL_SIZE %d\n"
               "RESOLUTION_X 72\nRESOLUTION_Y 72\nFONT_ASCENT %d\nFONT_DESCENT %d\n"
               "CAP_HEIGHT %d\nX_HEIGHT %d\nENDPROPERTIES\nCHARS %zu\n",
               family.name, copyright, size, box.top, -box.bottom, height_of(glyphs, 'H'),
               height_of(glyphs, 'x'), glyphs.size());
}

void write_glyph(std::FILE *file, int size, const Glyph &glyph) {
  if (glyph.encoding == no_encoding) {
    std::fprintf(file, "STARTCHAR .notdef\n");
  } else {
    std::fprintf(file, "STARTCHAR uni%04X\n", static_cast<unsigned>(glyph.encoding));
  }
  std::fprintf(file, "ENCODING %d\nSWIDTH %d 0\nDWIDTH %d 0\nBBX %d %d %d %d\nBITMAP\n",
               glyph.encoding, 1000 * glyph.advance / size, glyph.advance, glyph.width,
               glyph.height, glyph.x, glyph.y);
  for (const std::vector<bool> &row : glyph.rows) {
    for (size_t x = 0; x < row.size(); x += 8) {
      unsigned byte = 0;
      for (size_t bit = 0; bit < 8; ++bit) {
        if (x + bit < row.size() && row[x + bit]) byte |= 0x80U >> bit;
      }
      std::fprintf(file, "%02X", byte);
    }
    std::fprintf(file, "\n");
  }
  std::fprintf(file, "ENDCHAR\n");
}

void make_font(FT_Face face, const Family &family, int height, const std::string &folder) {
  const int size = size_for_capitals(face, height);
  const std::vector<Glyph> glyphs = all_glyphs(face);
  const std::string path = folder + "/" + family.name + std::to_string(height) + ".bdf";
  std::FILE *const file = std::fopen(path.c_str(), "wb");
  require(file != nullptr, "cannot write " + path);
  write_header(file, family, size, glyphs);
  for (const Glyph &glyph : glyphs)
    write_glyph(file, size, glyph);
  std::fprintf(file, "ENDFONT\n");
  std::fclose(file);
  std::printf("%s: size %d, %zu glyphs\n", path.c_str(), size, glyphs.size());
}

}  // namespace

int main(int count, char **arguments) {
  require(count == 3, "usage: make_bdf_fonts <folder of outlines> <folder for the fonts>");
  FT_Library library = nullptr;
  require(FT_Init_FreeType(&library) == 0, "no FreeType");
  for (const Family &family : families) {
    FT_Face face = nullptr;
    const std::string outlines = std::string(arguments[1]) + "/" + family.outlines;
    require(FT_New_Face(library, outlines.c_str(), 0, &face) == 0, "cannot read " + outlines);
    for (const int height : family.heights)
      make_font(face, family, height, arguments[2]);
    FT_Done_Face(face);
  }
  FT_Done_FreeType(library);
}
