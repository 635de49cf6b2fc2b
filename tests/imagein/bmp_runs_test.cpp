// SPDX-License-Identifier: MIT
//
// What run-length coded bitmaps give.
#include "tests/imagein/bmp_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class BmpRuns : public ReaderTest {};

void check_runs(const BmpHeader &header, const Bytes &data, const std::string &what) {
  const Bytes colours = bmp_colours(header.bits == 8 ? 256 : 16, 21);
  check_reader(Format::bmp, bmp_file(header, colours, data), expect_bmp_runs(header, colours, data),
               what);
}

// The red of a row of the held picture, where the table's red is the index.
Bytes reds_of(const Bytes &data, uint32_t bits, int32_t width, int32_t height, int32_t row,
              int32_t status) {
  Bytes colours;
  for (uint32_t i = 0; i < (1U << bits); ++i)
    put_bytes(&colours, {9, 9, static_cast<uint8_t>(i), 9});
  const BmpHeader header = {width, height, bits, bits == 8 ? 1U : 2U, 0, 0};
  EXPECT_EQ(read_picture(Format::bmp, bmp_file(header, colours, data), store_number), status);
  Bytes reds;
  const Bytes rgb = picture_row(0, row, width);
  for (size_t i = 0; i < rgb.size(); i += 3)
    reds.push_back(rgb[i]);
  release_picture();
  return reds;
}

TEST_F(BmpRuns, RepeatAndListIndicesOf8Bits) {
  const Bytes data = {3, 7, 0, 3, 1, 2, 3, 99, 0, 4, 5, 6, 7, 8, 0, 1};
  EXPECT_EQ(reds_of(data, 8, 10, 1, 0, 0), (Bytes{7, 7, 7, 1, 2, 3, 5, 6, 7, 8}));
}

TEST_F(BmpRuns, AlternateTheHalvesOfAByteOf4Bits) {
  EXPECT_EQ(reds_of({5, 0x3A, 0, 4, 0x12, 0x34, 0, 1}, 4, 9, 1, 0, 0),
            (Bytes{3, 10, 3, 10, 3, 1, 2, 3, 4}));
}

TEST_F(BmpRuns, DropAByteAfterAnOddNumberOfPixelsIn4BitsToo) {
  // Three pixels take two bytes; one more is dropped, and the run of two 5s follows.
  EXPECT_EQ(reds_of({0, 3, 0x12, 0x30, 99, 2, 0x55, 0, 1}, 4, 5, 1, 0, 0), (Bytes{1, 2, 3, 5, 5}));
  // Six pixels take three bytes and nothing is dropped, though files have a byte more there.
  EXPECT_EQ(reds_of({0, 6, 0x12, 0x34, 0x56, 2, 0x77, 0, 1}, 4, 8, 1, 0, 0),
            (Bytes{1, 2, 3, 4, 5, 6, 7, 7}));
  // Seven take four and one more is dropped.
  EXPECT_EQ(reds_of({0, 7, 0x12, 0x34, 0x56, 0x70, 99, 1, 0x80, 0, 1}, 4, 8, 1, 0, 0),
            (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(BmpRuns, MoveWithoutDrawing) {
  // Two pixels, then two to the right and one up, then two more.
  const Bytes data = {2, 1, 0, 2, 2, 1, 2, 4, 0, 1};
  for (const int32_t row : {0, 1}) {
    const Bytes expected = row == 1 ? Bytes{1, 1, 0, 0, 0, 0} : Bytes{0, 0, 0, 0, 4, 4};
    EXPECT_EQ(reds_of(data, 8, 6, 2, row, 0), expected) << row;
  }
  check_runs({6, 2, 8, 1, 0, 0}, data, "delta");
}

TEST_F(BmpRuns, EndWithTheEndCodeAlone) {
  const Bytes whole = {2, 1, 0, 0, 2, 2, 0, 0};
  check_runs({2, 2, 8, 1, 0, 0}, whole, "no end code");
  EXPECT_TRUE(nothing_is_held());
  Bytes ended = whole;
  put_bytes(&ended, {0, 1});
  EXPECT_EQ(reds_of(ended, 8, 2, 2, 0, 0), (Bytes{2, 2}));
  put_bytes(&ended, {2, 9, 2, 9});
  EXPECT_EQ(reds_of(ended, 8, 2, 2, 0, 0), (Bytes{2, 2}));
}

TEST_F(BmpRuns, AreCutAtTheRightAndDroppedAboveTheTop) {
  check_runs({5, 2, 8, 1, 0, 0}, {255, 3, 4, 4, 0, 0, 3, 5, 9, 6, 0, 0, 5, 7, 0, 1}, "long runs");
  check_runs({5, 2, 8, 1, 0, 0}, {0, 2, 255, 0, 0, 2, 255, 255, 4, 4, 0, 0, 4, 4, 0, 1},
             "far away");
  check_runs({5, 3, 4, 2, 0, 0}, {3, 0x12, 0, 9, 1, 2, 3, 4, 5, 6, 0, 0, 7, 0x89, 0, 1},
             "long lists");
  Bytes columns;
  for (int i = 0; i < 300; ++i)
    put_bytes(&columns, {0, 2, 255, 0, 255, 9});
  put_bytes(&columns, {0, 0, 5, 9, 0, 1});
  check_runs({5, 2, 8, 1, 0, 0}, columns, "a column far past the width");
}

TEST_F(BmpRuns, CrossTheReadersBufferAnywhere) {
  for (const uint32_t bits : {4U, 8U}) {
    for (size_t shift = 0; shift < 6; ++shift) {
      Bytes data;
      for (size_t i = 0; i < shift; ++i)
        put_bytes(&data, {0, 2, 0, 0});  // moves nowhere
      RandomNumbers random(static_cast<uint32_t>(shift) + bits);
      for (int row = 0; row < 6; ++row) {
        put_bytes(&data, {0, 17});
        for (int i = 0; i < (bits == 8 ? 18 : 10); ++i)
          put_u8(&data, random.word());
        put_bytes(&data, {4, random.byte(), 0, 0});
      }
      put_bytes(&data, {0, 1});
      check_runs({21, 6, bits, bits == 8 ? 1U : 2U, 0, 0}, data, "shift " + std::to_string(shift));
    }
  }
}

TEST_F(BmpRuns, OfAnyBytesGiveWhatTheStepsGive) {
  for (uint32_t seed = 0; seed < 60; ++seed) {
    RandomNumbers random(seed);
    const uint32_t bits = seed % 2 == 0 ? 8 : 4;
    Bytes data;
    for (int i = 0; i < 40; ++i) {
      switch (random.below(6)) {
        case 0:
          put_bytes(&data, {0, 0});
          break;
        case 1:
          put_bytes(&data, {0, 2, static_cast<uint8_t>(random.below(5)), 0});
          break;
        case 2:
          put_bytes(&data, {0, static_cast<uint8_t>(3 + random.below(9))});
          break;
        default:
          put_u8(&data, random.below(9));
          put_u8(&data, random.word());
      }
    }
    if (seed % 3 != 0) put_bytes(&data, Bytes(24, 0)), put_bytes(&data, {0, 1, 0, 1, 0, 1});
    const BmpHeader header = {
        random.between(1, 25), random.between(1, 12), bits, bits == 8 ? 1U : 2U, 0, 0};
    check_runs(header, data, "seed " + std::to_string(seed));
  }
}

TEST_F(BmpRuns, CutAnywhereAreAFormatError) {
  const Bytes data = {3, 7, 0, 3, 1, 2, 3, 0, 0, 2, 1, 1, 0, 0, 2, 5, 0, 1};
  for (size_t length = 0; length < data.size(); ++length) {
    if (length == 7) continue;  // all pixels of a run, without the byte that is dropped behind it
    const Bytes cut(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(length));
    check_runs({7, 3, 8, 1, 0, 0}, cut, "cut to " + std::to_string(length));
  }
}

}  // namespace
}  // namespace quorix::testing
