// SPDX-License-Identifier: MIT
//
// Strings of 16-bit units, held against the standard library.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"

namespace quorix {
namespace {

constexpr uint16_t canary = 0x5A5A;

// Wide text for a call, and a destination of `limit` + 1 cells between canaries.
std::vector<uint16_t> units(const std::u16string &text) {
  std::vector<uint16_t> cells(text.begin(), text.end());
  cells.push_back(0);
  return cells;
}

struct Destination {
  std::vector<uint16_t> cells;
  size_t size;

  Destination(const std::u16string &text, size_t limit)
      : cells(std::max(text.size(), limit) + 1 + 8, canary), size(cells.size() - 8) {
    std::copy_n(units(text).begin(), text.size() + 1, cells.begin());
  }
  std::u16string text() const {
    EXPECT_EQ(std::count(cells.begin() + static_cast<ptrdiff_t>(size), cells.end(), canary), 8);
    return {cells.begin(), std::find(cells.begin(), cells.end(), uint16_t{0})};
  }
};

TEST(LengthWide, CountsUnitsBeforeTheTerminator) {
  EXPECT_EQ(length_wide(units(u"").data()), 0U);
  EXPECT_EQ(length_wide(units(u"a\u0416\uFFFF").data()), 3U);
}

TEST(CopyWide, CopiesAtMostTheLimit) {
  Destination destination(u"xxxxx", 5);
  EXPECT_EQ(copy_wide(destination.cells.data(), units(u"\u0416bc").data(), 5), 3U);
  EXPECT_EQ(destination.text(), u"\u0416bc");
  EXPECT_EQ(copy_wide(destination.cells.data(), units(u"\u0416bc").data(), 3), 3U);
  EXPECT_EQ(destination.text(), u"\u0416bc");
  EXPECT_EQ(copy_wide(destination.cells.data(), units(u"\u0416bc").data(), 1), 1U);
  EXPECT_EQ(destination.text(), u"\u0416");
  EXPECT_EQ(copy_wide(destination.cells.data(), units(u"\u0416bc").data(), 0), 0U);
  EXPECT_EQ(destination.text(), u"");
}

TEST(AppendWide, AppendsWhileTheWholeStaysWithinTheLimit) {
  Destination destination(u"ab", 5);
  EXPECT_EQ(append_wide(destination.cells.data(), units(u"\u0100").data(), 5), 3U);
  EXPECT_EQ(destination.text(), u"ab\u0100");
  EXPECT_EQ(append_wide(destination.cells.data(), units(u"cdef").data(), 5), 5U);
  EXPECT_EQ(destination.text(), u"ab\u0100cd");
  EXPECT_EQ(append_wide(destination.cells.data(), units(u"x").data(), 5), 5U);
  EXPECT_EQ(append_wide(destination.cells.data(), units(u"x").data(), 2), 5U);
  EXPECT_EQ(destination.text(), u"ab\u0100cd");
}

TEST(AppendWide, HandlesLimitsOfZeroAndOne) {
  Destination none(u"", 0);
  EXPECT_EQ(append_wide(none.cells.data(), units(u"abc").data(), 0), 0U);
  EXPECT_EQ(none.text(), u"");
  Destination one(u"", 1);
  EXPECT_EQ(append_wide(one.cells.data(), units(u"abc").data(), 1), 1U);
  EXPECT_EQ(one.text(), u"a");
}

TEST(UpperWide, TurnsOnlyTheLettersFromAToZ) {
  for (uint32_t unit = 1; unit < 0x10000; ++unit) {
    uint16_t text[] = {static_cast<uint16_t>(unit), 0};
    upper_wide(text);
    const bool letter = unit >= u'a' && unit <= u'z';
    ASSERT_EQ(text[0], letter ? unit - 32 : unit);
  }
  std::vector<uint16_t> text = units(u"C:\\data\u00E4z.bmp");
  upper_wide(text.data());
  EXPECT_EQ(text, units(u"C:\\DATA\u00E4Z.BMP"));
}

TEST(CompareWide, GivesTheDifferenceOfTheFirstUnequalUnits) {
  EXPECT_EQ(compare_wide(units(u"").data(), units(u"").data()), 0);
  EXPECT_EQ(compare_wide(units(u"abc").data(), units(u"abc").data()), 0);
  EXPECT_EQ(compare_wide(units(u"abd").data(), units(u"abb").data()), 2);
  EXPECT_EQ(compare_wide(units(u"ab").data(), units(u"abc").data()), -'c');
  EXPECT_EQ(compare_wide(units(u"abc").data(), units(u"ab").data()), 'c');
  EXPECT_EQ(compare_wide(units(u"\uFFFF").data(), units(u"").data()), 0xFFFF);
  EXPECT_EQ(compare_wide(units(u"").data(), units(u"\uFFFF").data()), -0xFFFF);
}

}  // namespace
}  // namespace quorix
