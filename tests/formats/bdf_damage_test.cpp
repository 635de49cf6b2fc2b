// SPDX-License-Identifier: MIT
//
// BDF files that are not as they should be.
#include <gtest/gtest.h>

#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/formats/bdf_calls.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/environment_variable.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

constexpr size_t a = 'A' - 32;
constexpr size_t b = 'B' - 32;
constexpr int32_t page_size = 40;

class DamagedBdf : public ::testing::Test {
 protected:
  void SetUp() override { qqwfree(); }
  void TearDown() override { qqwfree(); }

  // The status and widths, with a fresh drawing record.
  Selected select(const std::string &text) {
    qqwfree();
    open_page(page_size, page_size, false);
    qqvclr(3);
    files_.put(font_file("dir", "complx10"), Bytes(text.begin(), text.end()));
    const Selected selected = select_font_in("dir", 1, 10);
    EXPECT_EQ(files_.open_files(), 0U);
    return selected;
  }

  // What a character sets at (10, 20).
  static std::vector<Pixel> drawn(int32_t code) {
    qqvers();
    draw_character(code, 10, 20);
    std::vector<Pixel> pixels;
    const Bytes bytes = page_bytes();
    for (int32_t i = 0; i < page_size * page_size; ++i)
      if (bytes[static_cast<size_t>(i)] == 3) pixels.push_back({i % page_size, i / page_size});
    return pixels;
  }

  const EnvironmentVariable no_variable_{"QUORIX", nullptr};
  MemoryFiles files_;
};

const std::string letter_a =
    "STARTCHAR A\nENCODING 65\nDWIDTH 9 0\nBBX 4 1 0 0\nBITMAP\nF0\nENDCHAR\n";
const std::string letter_b =
    "STARTCHAR B\nENCODING 66\nDWIDTH 8 0\nBBX 2 1 0 0\nBITMAP\nC0\nENDCHAR\n";
const std::vector<Pixel> pixels_of_a = {{10, 20}, {11, 20}, {12, 20}, {13, 20}};

TEST_F(DamagedBdf, MayBeEmpty) {
  for (const char *text : {"", "\n", "ENDFONT\n", "STARTFONT 2.1", "CHARS 0\n", "CHARS 3\n"}) {
    const Selected selected = select(text);
    EXPECT_EQ(selected.status, 0) << text;
    EXPECT_EQ(selected.widths, Widths{}) << text;
    EXPECT_TRUE(drawn('A').empty()) << text;
  }
}

TEST_F(DamagedBdf, IsReadLineByLine) {
  const Selected selected = select("CHARS 2\n" + letter_a + letter_b);
  EXPECT_EQ(selected.status, 0);
  EXPECT_EQ(selected.widths[a], 90);
  EXPECT_EQ(selected.widths[b], 80);
  EXPECT_EQ(drawn('A'), pixels_of_a);
}

TEST_F(DamagedBdf, MayHaveCarriageReturns) {
  std::string text;
  for (const char c : "CHARS 2\n" + letter_a + letter_b)
    text.append(c == '\n' ? "\r\n" : std::string(1, c));
  EXPECT_EQ(select(text).widths[a], 90);
  EXPECT_EQ(drawn('A'), pixels_of_a);
  EXPECT_EQ(select("CHARS 2\n" + letter_a + "ENCODING 66\rDWIDTH 7\nENDCHAR\n").widths[b], 0)
      << "what follows a carriage return is cut off";
}

TEST_F(DamagedBdf, MayEndWithoutALineFeed) {
  std::string text = "CHARS 1\n" + letter_a;
  text.pop_back();
  EXPECT_EQ(select(text).widths[a], 90);
  EXPECT_EQ(drawn('A'), pixels_of_a);
}

TEST_F(DamagedBdf, MayLackItsCountOrTellItTwice) {
  const Selected without = select(letter_a + letter_b);
  EXPECT_EQ(without.status, 0);
  EXPECT_EQ(without.widths[a], 0);
  EXPECT_TRUE(drawn('A').empty());
  for (const std::string &text :
       {"CHARS 1\nCHARS 2\n" + letter_a + letter_b, "CHARS 2\n" + letter_a + "CHARS 2\n" + letter_b,
        "CHARS 5\n" + letter_a + letter_b + "CHARS 1\n"}) {
    const Selected twice = select(text);
    EXPECT_TRUE(twice.status == 0 || twice.status == 2) << twice.status;
    drawn('A');
    drawn('B');
  }
}

TEST_F(DamagedBdf, MayHaveMoreOrFewerGlyphsThanTold) {
  const Selected more = select("CHARS 1\n" + letter_a + letter_b);
  EXPECT_EQ(more.status, 0);
  EXPECT_EQ(more.widths[a], 90);
  EXPECT_EQ(more.widths[b], 0);
  const Selected fewer = select("CHARS 200\n" + letter_a + letter_b);
  EXPECT_EQ(fewer.status, 0);
  EXPECT_EQ(fewer.widths[b], 80);
  for (const int32_t code : {0, 65, 66, 67, 200})
    drawn(code);
}

TEST_F(DamagedBdf, AsksForNoMoreMemoryThanItsFileMayFill) {
  for (const char *count : {"2147483647", "100000000", "-1", "-2147483648", "99999999999", "x"}) {
    FailingMemory memory;
    const Selected selected = select(std::string("CHARS ").append(count) + "\n" + letter_a);
    EXPECT_TRUE(selected.status == 0 || selected.status == 2) << count;
    EXPECT_LT(memory.peak_bytes(), 10000000U) << count;
    drawn('A');
    qqwfree();
  }
}

TEST_F(DamagedBdf, TellsSmallLettersApart) {
  const Selected selected = select("CHARS 2\nencoding 66\nENCODING 65\nDWIDTH 4 0\nENDCHAR\n");
  EXPECT_EQ(selected.widths[a], 40);
  EXPECT_EQ(selected.widths[b], 0);
}

TEST_F(DamagedBdf, WantsABlankBehindItsNumbersWords) {
  const Selected selected =
      select("CHARS 2\nENCODING 65\nENCODINGS 66\nDWIDTH 4 0\nDWIDTH1 9 0\nDWIDTH\t7 0\nENDCHAR\n");
  EXPECT_EQ(selected.widths[a], 40);
  EXPECT_EQ(selected.widths[b], 0);
}

TEST_F(DamagedBdf, IgnoresCommentsAndAllElse) {
  const Selected selected = select(
      "COMMENT CHARS 5\nCHARS 1\nCOMMENT ENCODING 66\nFONT ENCODING 66\nSTARTFONT BITMAP\n"
      " ENCODING 66\n" +
      letter_a);
  EXPECT_EQ(selected.widths[a], 90);
  EXPECT_EQ(drawn('A'), pixels_of_a);
}

TEST_F(DamagedBdf, PassesOverCommentsWithinABitmap) {
  select("CHARS 1\nENCODING 65\nDWIDTH 9 0\nBBX 4 2 0 0\nBITMAP\nCOMMENT FF\nF0\nENDCHAR\n");
  // The bitmap's first row is the upper one.
  EXPECT_EQ(drawn('A'), (std::vector<Pixel>{{10, 19}, {11, 19}, {12, 19}, {13, 19}}));
}

TEST_F(DamagedBdf, TakesOtherLinesWithinABitmapForRows) {
  // A row of no digits lowers the pen all the same.
  select("CHARS 1\nENCODING 65\nDWIDTH 9 0\nBBX 4 3 0 0\nBITMAP\n\nxyz\nF0\nENDCHAR\n");
  EXPECT_EQ(drawn('A'), pixels_of_a);
}

TEST_F(DamagedBdf, CutsABitmapAt1023Characters) {
  // Rows of 101 characters with their line feeds: ten whole ones, and thirteen characters.
  std::string rows;
  for (int i = 0; i < 12; ++i)
    rows += std::string(99, '0') + "8\n";
  const std::string wide = "CHARS 1\nENCODING 65\nDWIDTH 9 0\nBBX 400 12 -396 0\nBITMAP\n";
  EXPECT_EQ(select(wide + rows + "ENDCHAR\n").status, 0);
  std::vector<Pixel> expected;
  for (int32_t row = 0; row < 10; ++row)
    expected.push_back({10, 9 + row});
  EXPECT_EQ(drawn('A'), expected);
}

TEST_F(DamagedBdf, MayHaveLinesOfAnyLength) {
  const std::string text = std::string("COMMENT ").append(300, 'c') + "\nCHARS 1\n" + letter_a;
  EXPECT_EQ(select(text).widths[a], 90);
  for (const size_t length : {511U, 512U, 513U, 1024U, 100000U}) {
    EXPECT_EQ(select(std::string(length, 'x') + "\nCHARS 1\n" + letter_a).status, 0) << length;
    EXPECT_EQ(
        select(std::string("CHARS 1\nENCODING 65\nBITMAP\n").append(length, 'F') + "\nENDCHAR\n")
            .status,
        0);
    drawn('A');
  }
}

TEST_F(DamagedBdf, MayHaveZeroBytes) {
  const std::string text = "CHARS 2\n" + letter_a + std::string(1, '\0') + "x\n" +
                           std::string("ENCODING 66") + '\0' + "\nDWIDTH 3 0\nENDCHAR\n";
  EXPECT_EQ(select(text).widths[a], 90);
  drawn('B');
}

TEST_F(DamagedBdf, MayHaveNumbersBeyondAllBounds) {
  for (const char *number : {"2147483647", "-2147483648", "99999999999999999999", "-1", "1e9"}) {
    const std::string pattern =
        "SIZE # # #\nFONTBOUNDINGBOX # # # #\nCHARS 1\nENCODING 65\nDWIDTH # #\nBBX # # # #\n"
        "BITMAP\nFF\nFF\nENDCHAR\n";
    std::string text;
    for (const char c : pattern)
      c == '#' ? text.append(number) : text.append(1, c);
    EXPECT_EQ(select(text).status, 0) << number;
    for (const int32_t angle : {0, 45, 90, 180})
      draw_character('A', 10, 20, angle);
  }
}

const std::string seed =
    "STARTFONT 2.1\nFONT x\nSIZE 9 75 75\nFONTBOUNDINGBOX 8 9 0 -2\nCHARS 3\n" + letter_a +
    "STARTCHAR B\nENCODING 66\nDWIDTH 8 0\nBBX 12 3 -1 -1\nBITMAP\nFFF0\n8010\n"
    "FFF0\nENDCHAR\nSTARTCHAR C\nENCODING 196\nDWIDTH 8 0\nBBX 0 0 0 0\nBITMAP\n"
    "ENDCHAR\nENDFONT\n";

TEST_F(DamagedBdf, MayBeCutAnywhere) {
  for (size_t length = 0; length <= seed.size(); ++length) {
    const Selected selected = select(seed.substr(0, length));
    EXPECT_EQ(selected.status, 0) << length;
    for (const int32_t code : {32, 65, 66, 127})
      draw_character(code, 10, 20, 30);
  }
}

TEST_F(DamagedBdf, MayHaveAnyBytesChanged) {
  RandomNumbers random(61);
  static const char telling[] = "\n\r 0-9FABCDEHRSN";
  for (int i = 0; i < 1000; ++i) {
    FailingMemory memory;
    std::string damaged = seed;
    for (uint32_t changes = 1 + random.below(5); changes > 0; --changes) {
      const size_t place = random.below(static_cast<uint32_t>(damaged.size()));
      switch (random.below(4)) {
        case 0:
          damaged.erase(place, random.below(12));
          break;
        case 1:
          damaged.insert(place, damaged.substr(random.below(static_cast<uint32_t>(damaged.size())),
                                               random.below(60)));
          break;
        case 2:
          damaged[place] = static_cast<char>(random.word() & 255);
          break;
        default:
          damaged[place] = telling[random.below(sizeof(telling))];
      }
    }
    const Selected selected = select(damaged);
    EXPECT_TRUE(selected.status == 0 || selected.status == 2) << selected.status;
    for (const int32_t code : {32, 65, 66, 127})
      draw_character(code, 10, 20, 30);
    qqwfree();
    EXPECT_EQ(memory.live_blocks(), 0U);
    if (HasFailure()) FAIL() << damaged;
  }
}

}  // namespace
}  // namespace quorix::testing
