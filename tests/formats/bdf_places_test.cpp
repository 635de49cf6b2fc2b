// SPDX-License-Identifier: MIT
//
// Bitmap fonts that the install directory does not have: from beside the program, and at last from
// the library itself. Of the shared library the tests of the installed package tell.
#include <gtest/gtest.h>

#include <cstring>

#include "base/inflate.h"
#include "formats/built_in_fonts.h"
#include "platform/system.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/formats/bdf_calls.h"
#include "tests/support/environment_variable.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

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

std::vector<BdfGlyphText> font_of(int32_t width_of_a) {
  return {{'A', width_of_a, 8, 2, 0, 0, {"FF", "81"}}};
}

constexpr size_t a = 'A' - 32;

// No file but those that a test puts.
class FontsWithoutFiles : public ::testing::Test {
 protected:
  void SetUp() override { begin(); }
  void TearDown() override { qqwfree(); }

  void begin() {
    qqwfree();
    open_page(100, 100, false);
  }
  void put(const std::string &path, int32_t width_of_a) {
    const std::string text = bdf_text(font_of(width_of_a));
    files_.put(path, Bytes(text.begin(), text.end()));
  }

  const EnvironmentVariable no_variable_{"QUORIX", nullptr};
  MemoryFiles files_;
};

std::string folder_of_this_program() {
  char folder[4096] = "";
  EXPECT_TRUE(folder_of_program(folder, sizeof folder));
  return folder;
}

TEST_F(FontsWithoutFiles, AreInsideTheLibraryToTheLastByte) {
  size_t count = 0;
  for (const BuiltInFont *font = built_in_fonts; font->name != nullptr; ++font, ++count) {
    const std::string text = own_font_text(font->name);
    ASSERT_EQ(font->size, text.size()) << font->name;
    std::vector<uint8_t> unpacked(font->size);
    ASSERT_TRUE(inflate_block(font->bytes, font->count, unpacked.data(), unpacked.size()));
    EXPECT_EQ(std::memcmp(unpacked.data(), text.data(), text.size()), 0) << font->name;
  }
  EXPECT_EQ(count, 12U);
}

TEST_F(FontsWithoutFiles, AreTheLibrarysOwn) {
  for (const Row &row : rows) {
    const std::vector<BdfGlyphText> font = parse_bdf(own_font_text(row.name));
    for (const bool in_directory : {false, true}) {
      const Selected selected = in_directory ? select_font_in("nowhere", row.family, row.size)
                                             : select_font(row.family, row.size);
      ASSERT_EQ(selected.status, 0) << row.name;
      EXPECT_EQ(selected.widths, literal_widths(font)) << row.name;
    }
    qqvclr(7);
    qqvers();
    Bytes expected(100 * 100, 0);
    for (const Pixel &pixel : literal_pixels(*own_glyph(font, 'g'), 50, 50, 0))
      expected[static_cast<size_t>(100 * pixel.y + pixel.x)] = 7;
    draw_character('g', 50, 50);
    EXPECT_TRUE(page_bytes() == expected) << row.name;
  }
}

TEST_F(FontsWithoutFiles, AreUnpackedOnce) {
  ASSERT_EQ(select_font(3, 12).status, 0);
  ASSERT_EQ(select_font(1, 18).status, 0);
  const FailingMemory memory(1);
  EXPECT_EQ(select_font(3, 12).widths, own_widths("helve12"));
  EXPECT_FALSE(memory.failed());
}

TEST_F(FontsWithoutFiles, GiveWayToFilesThatAppear) {
  const std::string file = font_file("home", "helve12");
  ASSERT_EQ(select_font_in("home", 3, 12).widths, own_widths("helve12"));
  put(file, 9);
  ASSERT_EQ(select_font_in("home", 3, 12).widths[a], 90);
  qqvclr(7);
  qqvers();
  Bytes expected(100 * 100, 0);
  for (const Pixel &pixel : literal_pixels(font_of(9)[0], 50, 50, 0))
    expected[static_cast<size_t>(100 * pixel.y + pixel.x)] = 7;
  draw_character('A', 50, 50);
  EXPECT_TRUE(page_bytes() == expected);
  const FailingFiles files;
  EXPECT_EQ(select_font_in("home", 3, 12).widths[a], 90);
  EXPECT_EQ(files.calls(), 0U) << "a file is read once";
}

TEST_F(FontsWithoutFiles, StillAreOfThreeFamilies) {
  for (const int32_t family : {0, 4, -1})
    EXPECT_EQ(select_font(family, 10).status, 1) << family;
}

TEST_F(FontsWithoutFiles, TellThatMemoryIsRefused) {
  size_t refusals = 0;
  for (size_t n = 1;; ++n) {
    begin();
    FailingMemory memory(n);
    const Selected selected = select_font(3, 18);
    const bool refused = memory.failed();
    if (refused) {
      EXPECT_EQ(selected.status, 2) << n;
      draw_character('A', 50, 50);
    }
    EXPECT_EQ(select_font(3, 18).widths, own_widths("helve18")) << n;
    qqwfree();
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    if (!refused) break;
    ++refusals;
  }
  EXPECT_GE(refusals, 4U) << "the text, two blocks of zlib's, the font";
}

// ---- beside the program

TEST_F(FontsWithoutFiles, ComeFromBesideTheProgram) {
  const std::string folder = folder_of_this_program();
  for (const char *way : {"/fonts/", "/share/quorix/fonts/", "/../share/quorix/fonts/"}) {
    begin();
    const std::string file = folder + way + "simplx14.bdf";
    put(file, 21);
    EXPECT_EQ(select_font(2, 14).widths[a], 210) << way;
    EXPECT_EQ(select_font_in("nowhere", 2, 14).widths[a], 210) << way;
    begin();
    put(font_file("home", "simplx14"), 33);
    EXPECT_EQ(select_font_in("home", 2, 14).widths[a], 330) << "where it was sent, first";
  }
}

TEST_F(FontsWithoutFiles, ComeFromTheNearestPlaceBesideTheProgram) {
  const std::string folder = folder_of_this_program();
  put(folder + "/../share/quorix/fonts/simplx14.bdf", 13);
  EXPECT_EQ(select_font(2, 14).widths[a], 130);
  begin();
  put(folder + "/share/quorix/fonts/simplx14.bdf", 12);
  EXPECT_EQ(select_font(2, 14).widths[a], 120);
  begin();
  put(folder + "/fonts/simplx14.bdf", 11);
  EXPECT_EQ(select_font(2, 14).widths[a], 110);
}

}  // namespace
}  // namespace quorix::testing
