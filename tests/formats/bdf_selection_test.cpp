// SPDX-License-Identifier: MIT
//
// Selecting bitmap fonts: which file, its widths, what happens without it. Where no file is found
// the library's own copy serves; bdf_places_test.cpp is about that.
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>

#include "quorix/fonts.h"
#include "quorix/window.h"
#include "tests/formats/bdf_calls.h"
#include "tests/support/environment_variable.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

const char *const font_names[] = {"complx10", "complx12", "complx14", "complx18",
                                  "simplx8",  "simplx10", "simplx12", "simplx14",
                                  "helve10",  "helve12",  "helve14",  "helve18"};

// Code A is as wide as asked; the letters differ.
std::vector<BdfGlyphText> small_font(int32_t width_of_a) {
  return {{'A', width_of_a, 8, 2, 0, 0, {"FF", "81"}},
          {'B', 5, 4, 1, 0, 0, {"F0"}},
          {0xC4, 6, 4, 1, 0, 0, {"F0"}},
          {0x104, 7, 4, 1, 0, 0, {"F0"}},
          {0xA9, 8, 4, 1, 0, 0, {"F0"}}};
}

Bytes bytes_of(const std::string &text) {
  return Bytes(text.begin(), text.end());
}

constexpr size_t a = 'A' - 32;

class BdfFont : public ::testing::Test {
 protected:
  void SetUp() override {
    qqwfree();
    open_page(40, 40, false);
  }
  void TearDown() override { qqwfree(); }

  void put(const std::string &directory, const std::string &name, int32_t width_of_a) {
    files_.put(font_file(directory, name), bytes_of(bdf_text(small_font(width_of_a))));
  }

  const EnvironmentVariable no_variable_{"QUORIX", nullptr};
  MemoryFiles files_;
};

TEST_F(BdfFont, IsChosenByFamilyAndSize) {
  for (int32_t i = 0; i < 12; ++i)
    put("dir", font_names[i], 100 + i);
  const struct {
    int32_t family, size, number;
  } rows[] = {
      {1, 10, 0}, {1, 11, 1}, {1, 12, 1},  {1, 13, 2},  {1, 16, 2},      {1, 17, 3},
      {1, 0, 0},  {1, -5, 0}, {1, 100, 3}, {2, 8, 4},   {2, 9, 5},       {2, 10, 5},
      {2, 11, 6}, {2, 12, 6}, {2, 13, 7},  {2, 17, 7},  {2, INT_MIN, 4}, {3, 10, 8},
      {3, 11, 9}, {3, 12, 9}, {3, 13, 10}, {3, 16, 10}, {3, 17, 11},     {3, INT_MAX, 11},
  };
  for (const auto &row : rows) {
    const Selected selected = select_font_in("dir", row.family, row.size);
    EXPECT_EQ(selected.status, 0);
    EXPECT_EQ(selected.widths[a], 10 * (100 + row.number)) << row.family << " " << row.size;
  }
  EXPECT_EQ(files_.open_files(), 0U);
}

TEST_F(BdfFont, GivesWidthsInTenthsAndZeroForWhatItLacks) {
  put("dir", "complx10", 9);
  const Selected selected = select_font_in("dir", 1, 10);
  ASSERT_EQ(selected.status, 0);
  Widths expected = {};
  expected['A' - 32] = 90;
  expected['B' - 32] = 50;
  expected[127 - 32] = 60;  // C4
  expected[191 - 32] = 70;  // 104
  expected[264 - 32] = 80;  // A9
  EXPECT_EQ(selected.widths, expected);
  EXPECT_EQ(selected.widths, literal_widths(small_font(9)));
}

TEST_F(BdfFont, TakesTheFirstOfTwoGlyphsOfOneCode) {
  files_.put(font_file("dir", "complx10"),
             bytes_of(bdf_text({{'A', 3, 4, 1, 0, 0, {"F0"}}, {'A', 4, 4, 1, 0, 0, {"F0"}}})));
  EXPECT_EQ(select_font_in("dir", 1, 10).widths[a], 30);
}

TEST_F(BdfFont, IsOfOneOfThreeFamilies) {
  put("dir", "complx10", 9);
  for (const int32_t family : {0, 4, -1, INT_MAX, INT_MIN})
    EXPECT_EQ(select_font_in("dir", family, 10).status, 1) << family;
}

TEST_F(BdfFont, MayAppearLater) {
  const Selected missing = select_font_in("dir", 1, 10);
  EXPECT_EQ(missing.status, 0);
  EXPECT_EQ(missing.widths, own_widths("complx10"));
  put("dir", "complx10", 9);
  const Selected found = select_font_in("dir", 1, 10);
  EXPECT_EQ(found.status, 0);
  EXPECT_EQ(found.widths, literal_widths(small_font(9)));
}

TEST_F(BdfFont, IsReadOnce) {
  put("dir", "complx10", 9);
  ASSERT_EQ(select_font_in("dir", 1, 10).widths[a], 90);
  put("dir", "complx10", 11);
  put("dir", "complx12", 12);
  FailingFiles files;
  EXPECT_EQ(select_font_in("dir", 1, 10).widths[a], 90);
  EXPECT_EQ(select_font_in("other", 1, 9).widths[a], 90);
  EXPECT_EQ(files.calls(), 0U);
  EXPECT_EQ(select_font_in("dir", 1, 11).widths[a], 120);
  EXPECT_EQ(select_font_in("dir", 1, 10).widths[a], 90);
}

TEST_F(BdfFont, StaysCurrentUntilTheNextSelection) {
  put("dir", "complx10", 9);
  files_.put(font_file("dir", "complx12"), bytes_of(bdf_text({{'A', 3, 4, 1, 0, 0, {"80"}}})));
  ASSERT_EQ(select_font_in("dir", 1, 10).status, 0);
  ASSERT_EQ(select_font_in("dir", 1, 12).status, 0);
  ASSERT_EQ(select_font_in("dir", 1, 10).status, 0);
  const Bytes before = page_bytes();
  draw_character('A', 10, 10);
  Bytes expected = before;
  for (const Pixel &pixel : literal_pixels(small_font(9)[0], 10, 10, 0))
    expected[static_cast<size_t>(40 * pixel.y + pixel.x)] = 0;
  EXPECT_EQ(page_bytes(), expected);
}

// ---- directories

TEST_F(BdfFont, IsLookedForInTheVariablesDirectory) {
  put("home", "complx10", 9);
  put("dir", "complx10", 10);
  const EnvironmentVariable variable("QUORIX", "home");
  EXPECT_EQ(select_font(1, 10).widths[a], 90);
}

TEST_F(BdfFont, IsLookedForInTheVariablesDirectoryBeforeTheGivenOne) {
  put("home", "complx10", 9);
  put("dir", "complx10", 10);
  put("dir", "complx12", 12);
  const EnvironmentVariable variable("QUORIX", "home");
  EXPECT_EQ(select_font_in("dir", 1, 10).widths[a], 90);
  EXPECT_EQ(select_font_in("dir", 1, 12).widths, own_widths("complx12"));
}

TEST_F(BdfFont, IsLookedForInTheGivenDirectoryOnlyWhereThatIsAsked) {
  put("home", "complx10", 9);
  put("dir", "complx10", 10);
  {
    const EnvironmentVariable variable("QUORIX", "home");
    EXPECT_EQ(select_font_in("dir", 1, 10, 0).widths[a], 90);
  }
  for (const int32_t use : {1, 2, -1}) {
    qqwfree();
    open_page(40, 40, false);
    EXPECT_EQ(select_font_in("dir", 1, 10, use).widths[a], 100) << use;
  }
}

TEST_F(BdfFont, IsMissingInDirectoriesOfAnyLength) {
  for (const size_t length :
       {0U, 1U, 200U, 230U, 240U, 250U, 254U, 255U, 256U, 257U, 5000U, 100000U}) {
    const auto expect_none = [length](const Selected &selected) {
      EXPECT_EQ(selected.status, 0) << length;
      EXPECT_EQ(selected.widths, own_widths("complx10")) << length;
    };
    expect_none(select_font_in(std::string(length, 'd'), 1, 10));
    const EnvironmentVariable variable("QUORIX", std::string(length % 30000, 'v').c_str());
    expect_none(select_font_in("dir", 1, 10));
    expect_none(select_font(1, 10));
  }
}

TEST_F(BdfFont, IsFoundInALongDirectoryThatJustFits) {
  // 255 characters altogether, the terminator apart.
  const size_t rest = font_file("", "complx10").size();
  for (const size_t length : {255 - rest, 254 - rest}) {
    qqwfree();
    open_page(40, 40, false);
    const std::string directory(length, 'd');
    put(directory, "complx10", 9);
    EXPECT_EQ(select_font_in(directory, 1, 10).status, 0) << length;
  }
}

TEST_F(BdfFont, NeedsADrawingRecord) {
  put("dir", "complx10", 9);
  qqwfree();
  EXPECT_EQ(select_font_in("dir", 1, 10).status, 1);
  draw_character('A', 1, 1);
}

// ---- failures

TEST_F(BdfFont, GoesAwayWithTheDrawingRecord) {
  qqwfree();
  for (int32_t i = 0; i < 12; ++i)
    put("dir", font_names[i], 9);
  FailingMemory memory;
  open_page(40, 40, false);
  for (int32_t family = 1; family <= 3; ++family)
    for (const int32_t size : {8, 10, 12, 14, 18})
      ASSERT_EQ(select_font_in("dir", family, size).status, 0);
  qqwfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(BdfFont, TellsThatMemoryIsRefusedAndIsReadAtTheNextTry) {
  put("dir", "complx10", 9);
  size_t refusals = 0;
  for (size_t n = 1;; ++n) {
    qqwfree();
    open_page(40, 40, false);
    int32_t status = 0;
    bool failed = false;
    {
      FailingMemory memory(n);
      status = select_font_in("dir", 1, 10).status;
      failed = memory.failed();
    }
    EXPECT_EQ(files_.open_files(), 0U);
    if (!failed) {
      EXPECT_EQ(status, 0);
      break;
    }
    EXPECT_EQ(status, 2) << n;
    draw_character('A', 10, 10);
    EXPECT_EQ(select_font_in("dir", 1, 10).status, 0);
    ++refusals;
  }
  EXPECT_GE(refusals, 2U);
}

TEST_F(BdfFont, LeaksNothingWhereMemoryIsRefused) {
  put("dir", "complx10", 9);
  qqwfree();
  for (size_t n = 1;; ++n) {
    open_page(40, 40, false);
    FailingMemory memory(n);
    select_font_in("dir", 1, 10);
    select_font_in("dir", 1, 10);
    const bool refused = memory.failed();
    qqwfree();
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    if (!refused) break;
  }
}

TEST_F(BdfFont, ClosesItsFileWhateverCallFails) {
  put("dir", "complx10", 9);
  bool failed = true;
  for (size_t n = 1; failed; ++n) {
    qqwfree();
    open_page(40, 40, false);
    FailingFiles files(n);
    const int32_t status = select_font_in("dir", 1, 10).status;
    EXPECT_TRUE(status == 0 || status == 1 || status == 2) << status;
    EXPECT_EQ(files.open_files(), 0U);
    draw_character('A', 10, 10);
    failed = files.failed();
    ASSERT_LT(n, 10000U);
  }
}

TEST(BdfFontOnDisk, IsFoundBelowItsDirectory) {
  const EnvironmentVariable no_variable("QUORIX", nullptr);
  const TemporaryFolder folder;
  qqwfree();
  open_page(40, 40, false);
  const std::string directory = folder.file("home");
  EXPECT_EQ(select_font_in(directory, 3, 18).widths, own_widths("helve18"));
  std::filesystem::create_directories(std::filesystem::path(directory) / "fonts");
  EXPECT_EQ(select_font_in(directory, 3, 18).widths, own_widths("helve18"));
  write_whole_file((std::filesystem::path(directory) / "fonts" / "helve18.bdf").string(),
                   bytes_of(bdf_text(small_font(9))));
  EXPECT_EQ(select_font_in(directory, 3, 18).widths[a], 90);
  qqwfree();
}

}  // namespace
}  // namespace quorix::testing
