// SPDX-License-Identifier: MIT
//
// Opening TrueType fonts: every status, and what becomes of the font before.
#include <gtest/gtest.h>

#include "quorix/fonts.h"
#include "tests/formats/made_font.h"
#include "tests/formats/outline_calls.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

class OpenedFont : public ::testing::Test {
 protected:
  void TearDown() override { qqttf3(); }

  int32_t open(const Bytes &bytes, uint8_t swap_bytes = 1) {
    files_.put("font", bytes);
    return open_font("font", swap_bytes);
  }
  int32_t open(const MadeFont &font) { return open(font.bytes()); }

  MemoryFiles files_;
};

Bytes cut(Bytes bytes, size_t length) {
  bytes.resize(length);
  return bytes;
}

// Where a table's entry in the directory begins.
size_t entry_of(const Bytes &file, const std::string &name) {
  for (size_t i = 12; i + 16 <= file.size(); i += 16)
    if (std::string(file.begin() + static_cast<std::ptrdiff_t>(i),
                    file.begin() + static_cast<std::ptrdiff_t>(i) + 4) == name)
      return i;
  ADD_FAILURE() << name;
  return 12;
}

void put_u32(Bytes *file, size_t place, uint32_t value) {
  for (size_t i = 0; i < 4; ++i)
    (*file)[place + i] = static_cast<uint8_t>(value >> (24 - 8 * i));
}

TEST_F(OpenedFont, OpensAndIsReleased) {
  FailingMemory memory;
  ASSERT_EQ(open(font_with({})), 0);
  EXPECT_EQ(files_.open_files(), 0U) << "the file is closed again";
  EXPECT_EQ(count_outline('A', 10).points, 5);
  EXPECT_EQ(qqttf3(), 0);
  EXPECT_EQ(memory.live_blocks(), 0U);
  EXPECT_EQ(qqttf3(), 0) << "nothing to release";
}

TEST_F(OpenedFont, CannotBeOpenedWhereThereIsNone) {
  EXPECT_EQ(open_font("missing"), 1);
  EXPECT_EQ(open_font(""), 1);
  EXPECT_EQ(open_font(std::string(100000, 'n')), 1);
}

TEST_F(OpenedFont, ReplacesTheFontBefore) {
  FailingMemory memory;
  ASSERT_EQ(open(font_with({simple_glyph(square(300))})), 0);
  EXPECT_EQ(count_outline('B', 10).points, 5);
  MadeFont other = font_with({});
  other.glyphs[1] = simple_glyph({{{0, 0}, {0, 700}, {9, 9}}});
  ASSERT_EQ(open(other), 0);
  EXPECT_EQ(count_outline('A', 10).points, 4);
  EXPECT_EQ(qqttf3(), 0);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(OpenedFont, GivesWayEvenWhereTheNextCannotBeOpened) {
  ASSERT_EQ(open(font_with({})), 0);
  EXPECT_EQ(open_font("missing"), 1);
  const Counted counted = count_outline('A', 10);
  EXPECT_EQ(counted.points, 0);
}

TEST_F(OpenedFont, KnowsBothFormsOfOffsets) {
  for (const bool long_offsets : {false, true}) {
    MadeFont font = font_with({simple_glyph({{{0, 0}, {0, 100}, {50, 50}}})});
    font.long_offsets = long_offsets;
    ASSERT_EQ(open(font), 0);
    EXPECT_EQ(count_outline('A', 10).points, 5);
    EXPECT_EQ(count_outline('B', 10).points, 4);
  }
}

TEST_F(OpenedFont, TakesNumbersAsTheyStandWithoutSwapping) {
  MadeFont font;
  font.low_byte_first = true;
  font.glyphs = {simple_glyph(square(500), GlyphForm::words, 0, true),
                 simple_glyph(square(1400), GlyphForm::words, 3, true)};
  for (const bool long_offsets : {false, true}) {
    font.long_offsets = long_offsets;
    font.map_codes_from('A' - 1);
    ASSERT_EQ(open(font.bytes(), 0), 0);
    Polygons expected = literal_simple(square(1400), 35);
    scale_polygons(&expected, 35, 1400);
    expect_same(outline('A', 35), expected);
    EXPECT_NE(open(font.bytes(), 1), 0);
  }
}

TEST_F(OpenedFont, TellsWhichTableIsMissing) {
  const struct {
    const char *table;
    int32_t status;
  } rows[] = {{"cmap", 11}, {"loca", 12}, {"head", 13}, {"maxp", 14}, {"glyf", 15}};
  for (const auto &row : rows) {
    MadeFont font = font_with({});
    font.left_out = {row.table};
    EXPECT_EQ(open(font), row.status);
    EXPECT_EQ(files_.open_files(), 0U);
  }
}

TEST_F(OpenedFont, TellsTheLastOfSeveralFaults) {
  MadeFont font = font_with({});
  font.left_out = {"cmap", "loca"};
  EXPECT_EQ(open(font), 12);
  font.left_out = {"cmap", "loca", "head", "maxp", "glyf"};
  EXPECT_EQ(open(font), 15);
  font = font_with({});
  font.head_length = 53;
  EXPECT_EQ(open(font), 23);
  font.left_out = {"glyf"};
  EXPECT_EQ(open(font), 23);
  font.maxp_length = 33;
  EXPECT_EQ(open(font), 24);
}

TEST_F(OpenedFont, WantsTablesOfTheirLength) {
  for (const int32_t length : {0, 53, 55, 100}) {
    MadeFont font = font_with({});
    font.head_length = length;
    EXPECT_EQ(open(font), 23) << length;
  }
  for (const int32_t length : {0, 6, 31, 33}) {
    MadeFont font = font_with({});
    font.maxp_length = length;
    EXPECT_EQ(open(font), 24) << length;
  }
}

TEST_F(OpenedFont, TakesTheLaterOfTwoEqualTables) {
  MadeFont font = font_with({});
  MadeFont other = font_with({});
  other.segments = {{'A', 'A', 1 - 'A', 0}, {'Z', 'Z', -'Z', 0}};
  font.more_tables = {{"cmap", other.map_table()}};
  ASSERT_EQ(open(font), 0);
  Polygons expected = literal_simple(square(500), 7);
  scale_polygons(&expected, 7, 700);
  expect_same(outline('Z', 7), expected);
}

TEST_F(OpenedFont, PassesOverOtherTables) {
  MadeFont font = font_with({});
  font.more_tables = {{"name", Bytes(7, 1)}, {"CMAP", Bytes(3, 2)}};
  EXPECT_EQ(open(font), 0);
}

TEST_F(OpenedFont, WantsAMapForUnicode) {
  const int32_t others[][2] = {{1, 0}, {3, 0}, {0, 3}, {3, 10}, {1, 1}};
  for (const auto &[platform, encoding] : others) {
    MadeFont font = font_with({});
    font.platform = platform;
    font.encoding = encoding;
    EXPECT_EQ(open(font), 4) << platform << " " << encoding;
  }
  for (const int32_t format : {0, 2, 6, 12, 3, 5}) {
    MadeFont font = font_with({});
    font.map_format = format;
    EXPECT_EQ(open(font), 5) << format;
  }
}

// A map table with two records, the second one's subtable being the given one.
Bytes two_records(const MadeFont &font, int32_t first_platform, int32_t first_encoding) {
  const Bytes single = font.map_table();
  FontBytes map;
  const auto length = static_cast<int64_t>(single.size()) - 12;
  map.u16(0).u16(2).u16(first_platform).u16(first_encoding).u32(20 + length);
  map.u16(3).u16(1).u32(20);
  map.append(Bytes(single.begin() + 12, single.end()));
  map.u16(6).u16(20);
  return map.append(Bytes(30, 0)).bytes();
}

TEST_F(OpenedFont, TakesTheFirstMapForUnicode) {
  MadeFont font = font_with({});
  font.more_tables = {{"cmap", two_records(font, 1, 0)}};
  EXPECT_EQ(open(font), 0);
  font.more_tables = {{"cmap", two_records(font, 3, 1)}};
  EXPECT_EQ(open(font), 5) << "the first of the two has format 6";
}

TEST_F(OpenedFont, TellsThatATableIsNotAllThere) {
  const Bytes whole = font_with({}).bytes();
  for (const char *table : {"head", "maxp", "loca", "cmap", "glyf"}) {
    Bytes moved = whole;
    put_u32(&moved, entry_of(moved, table) + 8, static_cast<uint32_t>(whole.size() - 3));
    EXPECT_EQ(open(moved), 3) << table;
    put_u32(&moved, entry_of(moved, table) + 8, 0xFFFFFFF0U);
    EXPECT_EQ(open(moved), 3) << table;
    put_u32(&moved, entry_of(moved, table) + 8, 0x7FFFFFFFU);
    EXPECT_EQ(open(moved), 3) << table;
    EXPECT_EQ(files_.open_files(), 0U);
  }
  for (const char *table : {"loca", "cmap", "glyf"}) {
    Bytes longer = whole;
    put_u32(&longer, entry_of(longer, table) + 12, 0xFFFFFFFFU);
    EXPECT_EQ(open(longer), 3) << table;
  }
}

TEST_F(OpenedFont, AsksForNoMoreMemoryThanTheFileHasBytes) {
  Bytes longer = font_with({}).bytes();
  put_u32(&longer, entry_of(longer, "glyf") + 12, 0x7FFFFFFFU);
  FailingMemory memory;
  EXPECT_EQ(open(longer), 3);
  EXPECT_LT(memory.peak_bytes(), 10000000U);
}

TEST_F(OpenedFont, WantsAnOffsetForEachGlyphAndOneMore) {
  MadeFont font = font_with({});
  font.glyph_count = 2;
  EXPECT_EQ(open(font), 0);
  font.glyph_count = 3;
  EXPECT_EQ(open(font), 3);
  font.glyph_count = 65535;
  EXPECT_EQ(open(font), 3);
  font.long_offsets = true;
  EXPECT_EQ(open(font), 3);
}

TEST_F(OpenedFont, DoesNotTrustTheLengthOfAMap) {
  for (const int32_t length : {0, 16, 31, 65535}) {
    MadeFont font = font_with({});
    font.map_length = length;
    // Whatever the answer: nothing is read that is not there, and the font is none or works.
    const int32_t status = open(font);
    EXPECT_TRUE(status == 0 || status == 3 || status == 8) << status;
    EXPECT_TRUE(status != 0 || count_outline('A', 10).points == 5) << length;
  }
}

TEST_F(OpenedFont, RefusesAMapShorterThanItsSegments) {
  MadeFont font = font_with({});
  font.map_length = 24;
  EXPECT_EQ(open(font), 8);
}

TEST_F(OpenedFont, IsNoneWhereTheFileIsCut) {
  const Bytes whole = font_with({simple_glyph(square(90))}).bytes();
  for (size_t length = 0; length < whole.size() - 4; ++length) {
    const int32_t status = open(cut(whole, length));
    EXPECT_NE(status, 0) << length;
    EXPECT_TRUE(status == 3 || status == 24 || status == 23 || (status >= 11 && status <= 15))
        << status;
    EXPECT_EQ(files_.open_files(), 0U);
    count_outline('A', 10);
  }
}

TEST_F(OpenedFont, GivesNothingAfterItsRelease) {
  ASSERT_EQ(open(font_with({})), 0);
  qqttf3();
  const Counted counted = count_outline('A', 10);
  EXPECT_EQ(counted.points, 0);
  EXPECT_EQ(counted.contours, 0);
  EXPECT_EQ(counted.status, 1);
}

TEST_F(OpenedFont, TellsThatMemoryIsRefused) {
  files_.put("font", font_with({simple_glyph(square(90))}).bytes());
  size_t refusals = 0;
  for (size_t n = 1;; ++n) {
    FailingMemory memory(n);
    const int32_t status = open_font("font");
    if (!memory.failed()) {
      EXPECT_EQ(status, 0);
      break;
    }
    EXPECT_EQ(status, 2) << n;
    EXPECT_EQ(files_.open_files(), 0U);
    EXPECT_EQ(count_outline('A', 10).points, 0);
    qqttf3();
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    ++refusals;
  }
  EXPECT_GE(refusals, 4U);
}

TEST_F(OpenedFont, TellsThatFileCallsFail) {
  files_.put("font", font_with({simple_glyph(square(90))}).bytes());
  for (size_t n = 1;; ++n) {
    FailingFiles files(n, file_open | file_read | file_seek | file_tell);
    const int32_t status = open_font("font");
    EXPECT_EQ(files.open_files(), 0U);
    if (!files.failed()) {
      EXPECT_EQ(status, 0);
      break;
    }
    EXPECT_NE(status, 0) << n;
    count_outline('A', 10);
  }
}

TEST(OpenedFontOnDisk, MayBeMissing) {
  const TemporaryFolder folder;
  EXPECT_EQ(open_font(folder.file("missing")), 1);
  EXPECT_EQ(open_font(folder.file("no/folder")), 1);
  EXPECT_EQ(open_font(folder.file(std::string(100000, 'n'))), 1);
  qqttf3();
}

TEST(OpenedFontOnDisk, IsReadAsBytes) {
  const TemporaryFolder folder;
  // 0x1A and 0x0D 0x0A in the outline must come through.
  const std::vector<Contour> contours = {{{0, 0}, {0x1A, 0x0D0A}, {0x0D0A, 0x1A1A}, {10, 13}}};
  MadeFont font = font_with({simple_glyph(contours, GlyphForm::words)});
  write_whole_file(folder.file("a.ttf"), font.bytes());
  ASSERT_EQ(open_font(folder.file("a.ttf")), 0);
  Polygons expected = literal_simple(contours, 700);
  expect_same(outline('B', 700), expected);
  qqttf3();
}

}  // namespace
}  // namespace quorix::testing
