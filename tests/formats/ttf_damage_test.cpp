// SPDX-License-Identifier: MIT
//
// Damaged TrueType fonts: every answer must be one of the table, and no call may leave anything
// behind or take longer than it should.
#include <gtest/gtest.h>

#include <climits>

#include "quorix/fonts.h"
#include "tests/formats/made_font.h"
#include "tests/formats/outline_calls.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class DamagedFont : public ::testing::Test {
 protected:
  void TearDown() override { qqttf3(); }

  int32_t open(const Bytes &bytes) {
    files_.put("font", bytes);
    return open_font("font");
  }
  // B is this glyph.
  void open_with(const Bytes &glyph) { ASSERT_EQ(open(font_with({glyph}).bytes()), 0); }

  MemoryFiles files_;
};

// Asks for all characters that the small fonts have, and some that they have not.
void ask_for_everything() {
  for (const int32_t code : {64, 65, 66, 67, 68, 69, 70, 0, 126, 187, 65535, -1}) {
    for (const int32_t size : {20, 60}) {
      const Counted counted = count_outline(code, size);
      EXPECT_TRUE(counted.status == 0 || counted.status == 1 || counted.status == 7 ||
                  counted.status == 8)
          << counted.status;
      ASSERT_GE(counted.points, 0);
      ASSERT_GE(counted.contours, 0);
      if (counted.points > 2000000) continue;
      const Counted real = outline_with_room(code, size, counted.points, counted.contours);
      if (counted.points == 0) continue;
      EXPECT_EQ(real.status, counted.status);
      EXPECT_EQ(real.points, counted.points);
      if (counted.points < 2) continue;
      const Counted less = outline_with_room(code, size, counted.points - 1, counted.contours);
      EXPECT_TRUE(less.status == 6 || less.status == 7 || less.status == 8) << less.status;
    }
  }
}

Bytes small_seed(bool long_offsets) {
  MadeFont font = font_with({
      simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}, {{1, 1}, {300, 5, false}, {7, 800}}},
                   GlyphForm::repeated_flags, 3),
      composite_glyph({{part_scale, 1, 4, 5, {1 << 13}}, {part_words, 2, 600, -600, {}}}),
      {},
  });
  font.segments = {{'A' - 1, 'B', 1 - 'A', 0}, {'C', 'D', 0, 4}};
  font.glyph_ids = {3, 4};
  font.long_offsets = long_offsets;
  return font.bytes();
}

TEST_F(DamagedFont, MayBeCutAnywhere) {
  for (const bool long_offsets : {false, true}) {
    const Bytes whole = small_seed(long_offsets);
    for (size_t length = 0; length <= whole.size(); ++length) {
      open(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
      EXPECT_EQ(files_.open_files(), 0U);
      ask_for_everything();
    }
  }
}

TEST_F(DamagedFont, MayHaveAnyBytesChanged) {
  RandomNumbers random(91);
  const uint8_t telling[] = {0, 1, 2, 7, 8, 0x20, 0x7F, 0x80, 0xFE, 0xFF};
  for (int i = 0; i < 1000; ++i) {
    SCOPED_TRACE(i);
    FailingMemory memory;
    Bytes damaged = small_seed(i % 2 == 0);
    for (uint32_t changes = 1 + random.below(4); changes > 0; --changes) {
      uint8_t &byte = damaged[random.below(static_cast<uint32_t>(damaged.size()))];
      byte = random.below(3) == 0 ? static_cast<uint8_t>(random.word() & 255)
                                  : telling[random.below(sizeof(telling))];
    }
    open(damaged);
    ask_for_everything();
    qqttf3();
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_EQ(files_.open_files(), 0U);
    if (HasFailure()) return;
  }
}

TEST_F(DamagedFont, MayHaveEachByteOfItsGlyphsChanged) {
  const Bytes glyph =
      simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}, {{1, 1}, {300, 5, false}, {7, 800}}},
                   GlyphForm::repeated_flags, 3);
  const Bytes composite =
      composite_glyph({{part_scale, 1, 4, 5, {1 << 13}}, {part_words, 2, 600, -600, {}}});
  for (size_t place = 0; place < glyph.size() + composite.size(); ++place) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      Bytes first = glyph, second = composite;
      (place < glyph.size() ? first[place] : second[place - glyph.size()]) =
          static_cast<uint8_t>(value);
      ASSERT_EQ(open(font_with({first, second}).bytes()), 0);
      ask_for_everything();
    }
  }
}

// A glyph that ends where the table ends, cut at each place.
TEST_F(DamagedFont, EndsItsGlyphsWhereTheTableEnds) {
  const Bytes whole = simple_glyph({{{0, 0}, {400, 200, false}, {200, 0}, {90, -600}}});
  for (size_t length = 1; length < whole.size(); ++length) {
    open_with(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
    ask_for_everything();
  }
}

TEST_F(DamagedFont, TellsThatContoursDoNotRise) {
  const std::vector<std::vector<int32_t>> bad_ends = {
      {3, 2}, {5, 1}, {3, 0xFFFF, 4}, {0xFFFF}, {4, 3, 2}};
  for (const std::vector<int32_t> &ends : bad_ends) {
    FontBytes glyph;
    glyph.u16(static_cast<int64_t>(ends.size())).u16(0).u16(0).u16(9).u16(9);
    for (const int32_t end : ends)
      glyph.u16(end);
    glyph.u16(0);
    glyph.append(Bytes(8, 0x31));  // points that do not move
    open_with(glyph.pad(4).bytes());
    const Counted counted = count_outline('B', 20);
    EXPECT_EQ(counted.status, 8);
    EXPECT_EQ(counted.points, 0);
  }
}

TEST_F(DamagedFont, TellsThatThereAreMoreFlagsThanPoints) {
  FontBytes glyph;
  glyph.u16(1).u16(0).u16(0).u16(9).u16(9).u16(2).u16(0);
  glyph.u8(0x31).u8(0x39).u8(200);  // the second of three, with 200 copies
  open_with(glyph.append(Bytes(300, 0)).pad(4).bytes());
  EXPECT_EQ(count_outline('B', 20).status, 8);
}

TEST_F(DamagedFont, TellsThatItsPointsAreNotThere) {
  FontBytes glyph;
  glyph.u16(1).u16(0).u16(0).u16(9).u16(9).u16(65534).u16(0).u8(1);
  open_with(glyph.pad(4).bytes());
  FailingMemory memory;
  const Counted counted = count_outline('B', 20);
  EXPECT_TRUE(counted.status == 8 || counted.status == 0) << counted.status;
  EXPECT_LT(memory.peak_bytes(), 4000000U);
}

TEST_F(DamagedFont, EndsAListOfComponentsThatNeverEnds) {
  FontBytes glyph;
  glyph.u16(-1).u16(0).u16(0).u16(9).u16(9);
  for (int i = 0; i < 5000; ++i)
    glyph.u16(part_more).u16(1).u8(0).u8(0);
  open_with(glyph.pad(4).bytes());
  // 5000 squares, and whatever comes of the end.
  EXPECT_EQ(count_outline('B', 20).points, 25000);
}

// 2^16 points and contours a time, and an end as soon as they are more than 2^24.
TEST_F(DamagedFont, LeavesOutComponentsBehindMillionsOfPoints) {
  FontBytes large;
  large.u16(1).u16(0).u16(0).u16(9).u16(9).u16(65534).u16(0);
  for (int i = 0; i < 255; ++i)
    large.u8(0x39).u8(255);  // a point that does not move, and copies of it
  large.u8(0x39).u8(254);
  FontBytes glyph;
  glyph.u16(-1).u16(0).u16(0).u16(9).u16(9);
  for (int i = 0; i < 300; ++i)
    glyph.u16(part_more).u16(2).u8(0).u8(0);
  ASSERT_EQ(open(font_with({large.pad(4).bytes(), glyph.pad(4).bytes()}).bytes()), 0);
  EXPECT_EQ(count_outline('B', 20).points, 65536);
  const Counted counted = count_outline('C', 20);
  EXPECT_EQ(counted.status, 8);
  EXPECT_EQ(counted.contours, 257);
  EXPECT_EQ(counted.points, 257 * 65536);
}

TEST_F(DamagedFont, IsNotLedInCirclesByItself) {
  open_with(composite_glyph({{0, 2, 0, 0, {}}}));
  const Counted counted = count_outline('B', 20);
  EXPECT_EQ(counted.status, 7);
  EXPECT_EQ(counted.points, 0);
}

TEST_F(DamagedFont, MayHaveGlyphsThatLieOutsideOrBackwards) {
  MadeFont font = font_with({simple_glyph(square(90))});
  font.long_offsets = true;
  const Bytes good = font.bytes();
  // The offsets are the only table of 16 bytes: find its entry.
  size_t place = 0;
  for (size_t i = 12; i < 12 + 16 * 5; i += 16)
    if (good[i] == 'l' && good[i + 1] == 'o') place = size_t{good[i + 10]} << 8 | good[i + 11];
  ASSERT_GT(place, 0U);
  for (size_t entry = 0; entry < 4; ++entry) {
    for (const uint32_t offset : {0xFFFFFFFFU, 0x80000000U, 0x7FFFFFFFU, 10000U, 36U, 1U, 0U}) {
      Bytes damaged = good;
      for (size_t k = 0; k < 4; ++k)
        damaged[place + 4 * entry + k] = static_cast<uint8_t>(offset >> (24 - 8 * k));
      ASSERT_EQ(open(damaged), 0);
      ask_for_everything();
    }
  }
}

}  // namespace
}  // namespace quorix::testing
