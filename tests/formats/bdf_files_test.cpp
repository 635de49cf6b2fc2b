// SPDX-License-Identifier: MIT
//
// The twelve fonts that come with the library: their files, widths and characters.
#include <gtest/gtest.h>

#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/formats/bdf_calls.h"
#include "tests/support/character_tables.h"
#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

struct Row {
  const char *name;
  int32_t family, size;
};
const Row rows[] = {{"complx10", 1, 10}, {"complx12", 1, 12}, {"complx14", 1, 14},
                    {"complx18", 1, 18}, {"simplx8", 2, 8},   {"simplx10", 2, 10},
                    {"simplx12", 2, 12}, {"simplx14", 2, 14}, {"helve10", 3, 10},
                    {"helve12", 3, 12},  {"helve14", 3, 14},  {"helve18", 3, 18}};

class BdfFonts : public ::testing::Test {
 protected:
  void SetUp() override {
    qqwfree();
    open_page(100, 100, false);
  }
  void TearDown() override { qqwfree(); }
  const EnvironmentVariable here_{"QUORIX", QUORIX_SOURCE_DIR};
};

TEST_F(BdfFonts, TellTheWidthsOfTheirFiles) {
  for (const Row &row : rows) {
    const Selected selected = select_font(row.family, row.size);
    ASSERT_EQ(selected.status, 0) << row.name;
    EXPECT_EQ(selected.widths, literal_widths(parse_bdf(own_font_text(row.name)))) << row.name;
  }
}

TEST_F(BdfFonts, HaveEveryCharacter) {
  for (const Row &row : rows) {
    const Selected selected = select_font(row.family, row.size);
    for (int32_t code = 32; code <= 126; ++code)
      EXPECT_GT(selected.widths[static_cast<size_t>(code) - 32], 0) << row.name << " " << code;
    for (int32_t code = 127; code <= 264; ++code)
      EXPECT_GT(selected.widths[static_cast<size_t>(code) - 32], 0) << row.name << " " << code;
    EXPECT_EQ(selected.widths['M' - 32] == selected.widths['i' - 32], row.family == 2) << row.name;
  }
}

TEST_F(BdfFonts, DrawEveryCharacter) {
  for (const Row &row : rows) {
    const std::vector<BdfGlyphText> font = parse_bdf(own_font_text(row.name));
    ASSERT_EQ(select_font(row.family, row.size).status, 0);
    qqvclr(7);
    for (const int32_t angle : {0, 33, 90, 180, 270}) {
      for (int32_t code = 32; code <= 264; ++code) {
        qqvers();
        Bytes expected(100 * 100, 0);
        for (const Pixel &pixel : literal_pixels(*own_glyph(font, code), 50, 50, angle))
          expected[static_cast<size_t>(100 * pixel.y + pixel.x)] = 7;
        draw_character(code, 50, 50, angle);
        ASSERT_TRUE(page_bytes() == expected) << row.name << " " << code << " " << angle;
      }
    }
  }
}

// Capital A stands on the base line and is as high as the font is called, within a pixel.
TEST_F(BdfFonts, HaveTheHeightOfTheirNames) {
  for (const Row &row : rows) {
    const std::vector<BdfGlyphText> font = parse_bdf(own_font_text(row.name));
    const BdfGlyphText *glyph = own_glyph(font, 'A');
    EXPECT_EQ(glyph->y_offset, 0) << row.name;
    EXPECT_LE(std::abs(glyph->height - row.size), 1) << row.name;
  }
}

// What a row sets beyond the glyph's width would be drawn all the same.
TEST_F(BdfFonts, HavePaddingOfZeroes) {
  for (const Row &row : rows) {
    for (const BdfGlyphText &glyph : parse_bdf(own_font_text(row.name))) {
      for (const Pixel &pixel : literal_pixels(glyph, 0, 0, 0))
        ASSERT_LT(pixel.x, glyph.x_offset + glyph.width) << row.name << " " << glyph.encoding;
      for (const std::string &digits : glyph.rows) {
        ASSERT_EQ(digits.size(), static_cast<size_t>((glyph.width + 7) / 8 * 2)) << row.name;
        ASSERT_EQ(digits.find_first_not_of("0123456789ABCDEF"), std::string::npos) << row.name;
      }
    }
  }
}

TEST_F(BdfFonts, DrawAnUnknownCharacterAsTheir33rdGlyph) {
  for (const Row &row : rows) {
    const std::vector<BdfGlyphText> font = parse_bdf(own_font_text(row.name));
    ASSERT_EQ(select_font(row.family, row.size).status, 0);
    qqvclr(7);
    qqvers();
    Bytes expected(100 * 100, 0);
    for (const Pixel &pixel : literal_pixels(font[32], 50, 50, 0))
      expected[static_cast<size_t>(100 * pixel.y + pixel.x)] = 7;
    draw_character(1, 50, 50);
    EXPECT_TRUE(page_bytes() == expected) << row.name;
  }
}

}  // namespace
}  // namespace quorix::testing
