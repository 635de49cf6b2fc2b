// SPDX-License-Identifier: MIT
//
// What uncompressed bitmaps give.
#include "tests/imagein/bmp_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class BmpReader : public ReaderTest {};

std::vector<uint32_t> samples_for(const BmpHeader &header, uint32_t seed) {
  const size_t pixels = static_cast<size_t>(header.width) * static_cast<size_t>(header.height);
  return header.bits == 24 ? random_samples(3 * pixels, 8, seed)
                           : random_samples(pixels, header.bits, seed);
}

void check_uncompressed(const BmpHeader &header, size_t entries, uint32_t seed) {
  const Bytes colours = bmp_colours(entries, seed);
  const std::vector<uint32_t> samples = samples_for(header, seed);
  check_reader(Format::bmp, bmp_file(header, colours, bmp_rows(header, samples)),
               expect_bmp(header, colours, samples),
               std::to_string(header.bits) + " bits, width " + std::to_string(header.width));
}

TEST_F(BmpReader, ReadsEveryDepthAtAnyWidth) {
  uint32_t seed = 1;
  for (const uint32_t bits : {1U, 4U, 8U, 24U}) {
    for (const int32_t width : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 27}) {
      const BmpHeader header = {width, 3, bits};
      check_uncompressed(header, bits == 24 ? 0 : size_t{1} << bits, ++seed);
    }
  }
}

TEST_F(BmpReader, MeasuresRowsAGroupTooShortWhereBitsAreLeftOver) {
  // 33 pixels of 1 bit are 4 bytes and a bit, and 9 of 4 bits 4 bytes and a half: rows of 4 bytes.
  const Bytes two = {10, 20, 30, 0, 40, 50, 60, 0};
  const BmpHeader header = {33, 2, 1, 0, 0, 0};
  const Bytes file = bmp_file(header, two, {0xff, 0xff, 0xff, 0xff, 0x00, 0xff, 0x00, 0xff});
  ASSERT_EQ(read_picture(Format::bmp, file, store_number), 0);
  const Bytes lower = picture_row(0, 1, 33);
  for (size_t x = 0; x < 32; ++x)
    EXPECT_EQ(lower[3 * x], 60) << x;
  EXPECT_EQ(Bytes(lower.end() - 3, lower.end()), (Bytes{30, 20, 10}));  // index 0
  const Bytes upper = picture_row(0, 0, 33);
  EXPECT_EQ(upper[0], 30);
  EXPECT_EQ(upper[3 * 8], 60);
  release_picture();

  check_uncompressed({33, 3, 1}, 2, 5);
  check_uncompressed({9, 3, 4}, 16, 6);
  check_uncompressed({25, 4, 4}, 16, 7);
  check_uncompressed({65, 3, 1}, 2, 8);
}

TEST_F(BmpReader, ReturnsTwoRowsInTheRightOrder) {
  const BmpHeader header = {1, 2, 24};
  const Bytes file = bmp_file(header, {}, {1, 2, 3, 0, 4, 5, 6, 0});
  ASSERT_EQ(read_picture(Format::bmp, file, store_number), 0);
  EXPECT_EQ(picture_row(0, 0, 1), (Bytes{6, 5, 4}));
  EXPECT_EQ(picture_row(0, 1, 1), (Bytes{3, 2, 1}));
}

TEST_F(BmpReader, TakesPixelsRightBehindTheColourTableWhateverTheOffset) {
  BmpHeader header = {3, 2, 8};
  header.colours_used = 5;
  header.data_offset = 9999;
  const Bytes colours = bmp_colours(5, 3);
  const std::vector<uint32_t> samples = {0, 1, 2, 3, 4, 0};
  check_reader(Format::bmp, bmp_file(header, colours, bmp_rows(header, samples)),
               expect_bmp(header, colours, samples), "offset beyond the file");
}

TEST_F(BmpReader, DoesNotLookAtSignatureAndHeaderSize) {
  const BmpHeader header = {2, 2, 24};
  const std::vector<uint32_t> samples = random_samples(12, 8, 9);
  Bytes file = bmp_file(header, {}, bmp_rows(header, samples));
  file[0] = 'X';
  file[1] = 0;
  file[14] = 124;
  check_reader(Format::bmp, file, expect_bmp(header, {}, samples), "signature and header size");
}

TEST_F(BmpReader, GivesBlackForAnIndexPastTheColourTable) {
  BmpHeader header = {4, 1, 8};
  header.colours_used = 2;
  const Bytes colours = {1, 2, 3, 0, 4, 5, 6, 0};
  const std::vector<uint32_t> samples = {0, 1, 2, 255};
  const Bytes file = bmp_file(header, colours, bmp_rows(header, samples));
  ASSERT_EQ(read_picture(Format::bmp, file, store_number), 0);
  EXPECT_EQ(picture_row(0, 0, 4), (Bytes{3, 2, 1, 6, 5, 4, 0, 0, 0, 0, 0, 0}));
}

TEST_F(BmpReader, ReadsAndDropsWhatAColourTableHasTooMuch) {
  BmpHeader header = {3, 2, 8};
  header.colours_used = 300;
  const Bytes colours = bmp_colours(300, 4);
  const std::vector<uint32_t> samples = {0, 255, 17, 44, 128, 1};
  check_reader(Format::bmp, bmp_file(header, colours, bmp_rows(header, samples)),
               expect_bmp(header, colours, samples), "300 colours");
}

TEST_F(BmpReader, DecodesNothingOf16And32Bits) {
  for (const uint32_t bits : {16U, 32U}) {
    for (const uint32_t compression : {0U, 3U}) {
      const BmpHeader header = {3, 2, bits, compression, 0, 0};
      const Bytes table = bits == 16 ? Bytes(4 * 65536, 7) : Bytes();
      const Bytes file = bmp_file(header, table, Bytes(64, 0x5A));
      ExpectedPicture nothing;
      nothing.width = 3;
      nothing.height = 2;
      check_reader(Format::bmp, file, nothing, std::to_string(bits) + " bits");
    }
  }
}

TEST_F(BmpReader, ReadsNoRowsOfANegativeOrZeroHeight) {
  for (const int32_t height : {-2, 0, INT32_MIN}) {
    const BmpHeader header = {2, height, 24};
    const Bytes file = bmp_file(header, {}, Bytes(16, 0x5A));
    ExpectedPicture nothing;
    nothing.width = 2;
    check_reader(Format::bmp, file, nothing, "height " + std::to_string(height));
  }
}

TEST_F(BmpReader, RefusesAWidthBelow1) {
  for (const int32_t width : {0, -1, INT32_MIN}) {
    ExpectedPicture refused;
    refused.status = -3;
    check_reader(Format::bmp, bmp_file({width, 2, 24}, {}, Bytes(16, 0x5A)), refused,
                 "width " + std::to_string(width));
  }
}

TEST_F(BmpReader, RefusesRunLengthsWithOtherDepths) {
  ExpectedPicture refused;
  refused.status = -3;
  const Bytes data = {2, 1, 0, 1};
  for (const uint32_t bits : {1U, 4U, 16U, 24U, 32U}) {
    const BmpHeader header = {2, 1, bits, 1, 2, 0};
    check_reader(Format::bmp, bmp_file(header, Bytes(8, 1), data), refused, "RLE8 otherwise");
  }
  for (const uint32_t bits : {1U, 8U, 16U, 24U, 32U}) {
    const BmpHeader header = {2, 1, bits, 2, 2, 0};
    check_reader(Format::bmp, bmp_file(header, Bytes(8, 1), data), refused, "RLE4 otherwise");
  }
  check_reader(Format::bmp, bmp_file({2, 1, 24, 3, 0, 0}, {}, Bytes(8, 1)), refused,
               "24 bits compressed");
}

TEST_F(BmpReader, DecodesNothingOfAnUnknownCompression) {
  for (const uint32_t compression : {3U, 4U, 0xffffffffU}) {
    const BmpHeader header = {2, 1, 8, compression, 2, 0};
    ExpectedPicture nothing;
    nothing.width = 2;
    nothing.height = 1;
    check_reader(Format::bmp, bmp_file(header, Bytes(8, 1), Bytes(8, 1)), nothing,
                 "compression " + std::to_string(compression));
  }
}

TEST_F(BmpReader, StopsWithoutAnErrorWhereAnUncompressedFileEnds) {
  const BmpHeader header = {5, 4, 24};
  const std::vector<uint32_t> samples = random_samples(60, 8, 12);
  const Bytes whole = bmp_file(header, {}, bmp_rows(header, samples));
  for (size_t rows = 0; rows < 4; ++rows) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(54 + 16 * rows));
    ExpectedPicture expected = expect_bmp(header, {}, samples);
    expected.rows.resize(rows);
    check_reader(Format::bmp, cut, expected, std::to_string(rows) + " rows");
  }
}

TEST_F(BmpReader, NeedsAFile) {
  EXPECT_EQ(read_named(Format::bmp, "no such file.bmp", store_number), -1);
  EXPECT_TRUE(nothing_is_held());
}

}  // namespace
}  // namespace quorix::testing
