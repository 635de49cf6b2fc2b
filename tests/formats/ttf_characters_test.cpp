// SPDX-License-Identifier: MIT
//
// Which glyph a character gets: the code map's segments and the library's own codes.
#include <gtest/gtest.h>

#include <climits>

#include "quorix/fonts.h"
#include "tests/formats/made_font.h"
#include "tests/formats/outline_calls.h"
#include "tests/support/character_tables.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

// Glyph g is a contour of g + 3 points, so that the count shows which glyph was found.
MadeFont numbered_font(int32_t glyphs) {
  MadeFont font;
  for (int32_t g = 0; g < glyphs; ++g) {
    Contour contour;
    for (int32_t i = 0; i < g + 3; ++i)
      contour.push_back({i, i});
    font.glyphs.push_back(simple_glyph({contour}));
  }
  return font;
}

constexpr int32_t blank = -1;
constexpr int32_t out_of_range = -8;

int32_t glyph_of(int32_t code, CodeOf code_of = CodeOf::unicode) {
  const Counted counted = count_outline(code, 20, code_of);
  if (counted.status == 8) {
    EXPECT_EQ(counted.points, 0);
    EXPECT_EQ(counted.contours, 0);
    return out_of_range;
  }
  EXPECT_EQ(counted.status, 0);
  return counted.points == 0 ? blank : counted.points - 4;
}

class FontCharacters : public ::testing::Test {
 protected:
  void TearDown() override { qqttf3(); }
  void open(const MadeFont &font) {
    files_.put("font", font.bytes());
    ASSERT_EQ(open_font("font"), 0);
  }
  MemoryFiles files_;
};

TEST_F(FontCharacters, AddTheDelta) {
  MadeFont font = numbered_font(20);
  font.segments = {{10, 12, 3}, {20, 22, -20}, {30, 31, 5 - 30 - 65536}, {65000, 65001, 540}};
  open(font);
  EXPECT_EQ(glyph_of(10), 13);
  EXPECT_EQ(glyph_of(12), 15);
  EXPECT_EQ(glyph_of(20), 0);
  EXPECT_EQ(glyph_of(22), 2);
  EXPECT_EQ(glyph_of(30), 5);
  EXPECT_EQ(glyph_of(65000), 4) << "modulo 65536";
}

TEST_F(FontCharacters, GetGlyphZeroOutsideAllSegments) {
  MadeFont font = numbered_font(20);
  font.segments = {{10, 12, 3}, {20, 22, -20}};
  open(font);
  for (const int32_t code : {9, 13, 19, 23, 0, -1, 65534, 65536, 65546, INT_MAX, INT_MIN})
    EXPECT_EQ(glyph_of(code), 0) << code;
}

TEST_F(FontCharacters, FollowTheLastSegmentThatHoldsThem) {
  MadeFont font = numbered_font(30);
  font.segments = {{10, 20, -10}, {15, 17, -5}, {16, 16, 4}, {12, 11, 0}};
  open(font);
  EXPECT_EQ(glyph_of(14), 4);
  EXPECT_EQ(glyph_of(15), 10);
  EXPECT_EQ(glyph_of(16), 20);
  EXPECT_EQ(glyph_of(17), 12);
  EXPECT_EQ(glyph_of(18), 8);
}

TEST_F(FontCharacters, NeedNoOrderOfSegments) {
  MadeFont font = numbered_font(30);
  font.segments = {{40, 45, -40}, {10, 20, -5}, {30, 35, -20}};
  open(font);
  EXPECT_EQ(glyph_of(41), 1);
  EXPECT_EQ(glyph_of(12), 7);
  EXPECT_EQ(glyph_of(33), 13);
}

TEST_F(FontCharacters, ReadTheListOfGlyphs) {
  MadeFont font = numbered_font(20);
  // Two segments and the closing one: the list begins 6, 4 and 2 bytes past their own places.
  font.segments = {{10, 12, 7, 6}, {20, 21, 9, 4 + 6}};
  font.glyph_ids = {5, 0, 17, 11, 12};
  open(font);
  EXPECT_EQ(glyph_of(10), 5) << "the delta is not added";
  EXPECT_EQ(glyph_of(11), 0) << "a stored 0 is a glyph like any other";
  EXPECT_EQ(glyph_of(12), 17);
  EXPECT_EQ(glyph_of(20), 11);
  EXPECT_EQ(glyph_of(21), 12);
}

TEST_F(FontCharacters, DropTheLowestBitOfTheOffset) {
  MadeFont font = numbered_font(20);
  font.segments = {{10, 12, 0, 5}};
  font.glyph_ids = {5, 6, 7};
  open(font);
  EXPECT_EQ(glyph_of(10), 5);
  EXPECT_EQ(glyph_of(12), 7);
}

TEST_F(FontCharacters, MayReadTheOffsetsThemselves) {
  MadeFont font = numbered_font(20);
  font.segments = {{10, 12, 0, 2}, {20, 20, -10, 0}};
  font.glyph_ids = {5, 6, 7};
  open(font);
  EXPECT_EQ(glyph_of(10), 0) << "the second segment's offset";
  EXPECT_EQ(glyph_of(11), 0) << "that of the closing one";
  EXPECT_EQ(glyph_of(12), 5);
  EXPECT_EQ(glyph_of(20), 10);
}

TEST_F(FontCharacters, AreOutOfRangeBehindTheLastGlyph) {
  MadeFont font = numbered_font(5);
  font.segments = {{10, 30, -10}, {40, 41, 0, 4}};
  font.glyph_ids = {65535, 6};
  open(font);
  EXPECT_EQ(glyph_of(14), 4);
  EXPECT_EQ(glyph_of(15), blank) << "the number of glyphs itself passes";
  EXPECT_EQ(glyph_of(16), out_of_range);
  EXPECT_EQ(glyph_of(30), out_of_range);
  EXPECT_EQ(glyph_of(40), out_of_range);
  EXPECT_EQ(glyph_of(41), out_of_range);
}

TEST_F(FontCharacters, AreOutOfRangeBehindTheListOfGlyphs) {
  MadeFont font = numbered_font(5);
  font.segments = {{10, 1000, 0, 6}, {2000, 2001, 0, 65534}};
  font.glyph_ids = {1, 2, 3};
  open(font);
  EXPECT_EQ(glyph_of(12), 3);
  EXPECT_EQ(glyph_of(13), out_of_range);
  EXPECT_EQ(glyph_of(1000), out_of_range);
  EXPECT_EQ(glyph_of(2000), out_of_range);
}

// The Unicode value that a library code stands for in a TrueType font.
int32_t literal_value(int32_t code) {
  if (code == 187 || code == 264) return 0xA9;
  if (code == 263) return 0xA4;
  if (code >= 127 && code <= 186) return latin1_letters[code - first_letter];
  return code;
}

TEST_F(FontCharacters, AreConvertedOnlyWhereTheyAreTheLibrarysCodes) {
  // A glyph for each value up to 400.
  MadeFont font = numbered_font(401);
  font.long_offsets = true;
  font.segments = {{0, 400, 0}};
  open(font);
  for (int32_t code = 0; code <= 300; ++code) {
    EXPECT_EQ(glyph_of(code, CodeOf::library), literal_value(code)) << code;
    EXPECT_EQ(glyph_of(code, CodeOf::unicode), code) << code;
  }
  EXPECT_EQ(glyph_of(187, CodeOf::library), 169) << "unlike the codes of bitmap fonts";
  EXPECT_EQ(glyph_of(188, CodeOf::library), 188);
  EXPECT_EQ(glyph_of(262, CodeOf::library), 262);
  for (const int32_t code : {-1, INT_MIN, 70000, INT_MAX})
    EXPECT_EQ(glyph_of(code, CodeOf::library), 0) << code;
}

TEST_F(FontCharacters, AreUnicodeUnderEveryStatusButZero) {
  MadeFont font = numbered_font(401);
  font.long_offsets = true;
  font.segments = {{0, 400, 0}};
  open(font);
  for (const int32_t status : {1, -1, 6, INT_MAX, INT_MIN})
    EXPECT_EQ(glyph_of(127, static_cast<CodeOf>(status)), 127) << status;
}

TEST_F(FontCharacters, ReachTheLastCode) {
  MadeFont font = numbered_font(8);
  font.segments = {{65533, 65534, 5}};
  open(font);
  EXPECT_EQ(glyph_of(65533), 2);
  EXPECT_EQ(glyph_of(65534), 3);
  EXPECT_EQ(glyph_of(65535), 0) << "the closing segment";
}

}  // namespace
}  // namespace quorix::testing
