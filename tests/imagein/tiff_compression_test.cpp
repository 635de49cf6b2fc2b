// SPDX-License-Identifier: MIT
//
// Compressed data of TIFF files with mistakes and at its limits.
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/imagein/tiff_files.h"

namespace quorix::testing {
namespace {

class TiffCompression : public ReaderTest {};

// Greys of one strip, coded by hand.
TiffParts coded(int32_t width, int32_t height, int32_t rows_per_strip, uint32_t compression,
                const std::vector<Bytes> &blocks) {
  TiffPicture picture;
  picture.width = width;
  picture.height = height;
  picture.rows_per_strip = rows_per_strip;
  TiffParts parts = tiff_parts(picture, compression);
  parts.blocks = blocks;
  return parts;
}

// The greys of the rows that come out.
Bytes decoded(const TiffParts &parts, int32_t width, int32_t height, int32_t status = 0) {
  EXPECT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), status);
  Bytes greys;
  for (int32_t y = 0; y < height; ++y) {
    const Bytes rgb = picture_row(0, y, width);
    for (size_t i = 0; i < rgb.size(); i += 3)
      greys.push_back(rgb[i]);
  }
  release_picture();
  return greys;
}

void check_corrupt(const TiffParts &parts, const std::string &what) {
  EXPECT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), -12) << what;
  EXPECT_TRUE(nothing_is_held()) << what;
}

TEST_F(TiffCompression, PackBitsCopiesRepeatsAndSkips) {
  const Bytes block = {2, 1, 2, 3, 128, 0xFE, 9, 128, 0, 4};  // -128, and 3 times 9
  EXPECT_EQ(decoded(coded(7, 1, 1, 32773, {block}), 7, 1), (Bytes{1, 2, 3, 9, 9, 9, 4}));
}

TEST_F(TiffCompression, PackBitsRepeatsAndCopiesUpTo128Bytes) {
  Bytes block = {0x81, 7, 127};  // 128 times 7, then 128 bytes
  const Bytes bytes = random_bytes(128, 4);
  put_bytes(&block, bytes);
  Bytes expected(128, 7);
  put_bytes(&expected, bytes);
  EXPECT_EQ(decoded(coded(256, 1, 1, 32773, {block}), 256, 1), expected);
}

TEST_F(TiffCompression, PackBitsRunsMayCrossRowsButNotTheStrip) {
  EXPECT_EQ(decoded(coded(3, 2, 2, 32773, {{0xFC, 5, 0, 6}}), 3, 2), (Bytes{5, 5, 5, 5, 5, 6}));
  check_corrupt(coded(3, 2, 1, 32773, {{0xFC, 5}, {0xFE, 6}}), "a run longer than its only row");
  check_corrupt(coded(3, 2, 1, 32773, {{3, 5, 5, 5, 5}, {0xFE, 6}}), "a copy longer than the row");
}

TEST_F(TiffCompression, PackBitsMustFillTheStrip) {
  check_corrupt(coded(3, 1, 1, 32773, {{1, 5, 6}}), "too few bytes");
  check_corrupt(coded(3, 1, 1, 32773, {{2, 5, 6}}), "a copy past the data");
  check_corrupt(coded(3, 1, 1, 32773, {{0xFE}}), "a run without its byte");
  check_corrupt(coded(3, 1, 1, 32773, {{128, 128}}), "nothing");
}

TEST_F(TiffCompression, PackBitsLeavesDataBehindTheStripAlone) {
  EXPECT_EQ(decoded(coded(3, 1, 1, 32773, {{0xFE, 5, 9, 9, 9}}), 3, 1), (Bytes{5, 5, 5}));
}

TEST_F(TiffCompression, OfAShortLastStripHasFewerRows) {
  // Two rows to a strip, five rows: the last strip holds one, and that is enough.
  const Bytes two = {0xFB, 5};  // 6 bytes
  const Bytes one = {0xFE, 6};
  EXPECT_EQ(decoded(coded(3, 5, 2, 32773, {two, two, one}), 3, 5),
            (Bytes{5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6, 6, 6}));
  const Bytes lzw_two = lzw_coded(Bytes(6, 5));
  const Bytes lzw_one = lzw_coded(Bytes(3, 6));
  EXPECT_EQ(decoded(coded(3, 5, 2, 5, {lzw_two, lzw_two, lzw_one}), 3, 5),
            (Bytes{5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6, 6, 6}));
}

// Codes of 9 bits, highest bit first.
Bytes codes_of_9_bits(const std::vector<uint32_t> &codes) {
  Bytes bytes((codes.size() * 9 + 7) / 8, 0);
  for (size_t i = 0; i < 9 * codes.size(); ++i) {
    const uint32_t bit = codes[i / 9] >> (8 - i % 9) & 1;
    bytes[i / 8] = static_cast<uint8_t>(bytes[i / 8] | bit << (7 - i % 8));
  }
  return bytes;
}

TEST_F(TiffCompression, LzwNamesTheEntryThatItIsMaking) {
  // 7, then 258 = 7 7, then 259 = 7 7 7.
  EXPECT_EQ(decoded(coded(6, 1, 1, 5, {codes_of_9_bits({256, 7, 258, 259, 257})}), 6, 1),
            Bytes(6, 7));
}

TEST_F(TiffCompression, LzwMayClearAtAnyTime) {
  EXPECT_EQ(
      decoded(coded(4, 1, 1, 5, {codes_of_9_bits({256, 1, 256, 2, 256, 256, 3, 4, 257})}), 4, 1),
      (Bytes{1, 2, 3, 4}));
}

TEST_F(TiffCompression, LzwGoesOnWithAFullTable) {
  // Single bytes alone, as an encoder may write them that never clears: each but the first adds an
  // entry until there are 4096, and codes keep their 12 bits after that.
  const Bytes bytes = random_bytes(6000, 12);
  Bytes data;
  size_t bit = 0;
  const auto put = [&](uint32_t code, uint32_t size) {
    for (uint32_t i = size; i-- > 0; ++bit) {
      if (bit % 8 == 0) data.push_back(0);
      data.back() = static_cast<uint8_t>(data.back() | (code >> i & 1) << (7 - bit % 8));
    }
  };
  uint32_t size = 9;
  uint32_t next = 257;  // the first code adds none
  put(256, size);
  for (const uint8_t byte : bytes) {
    put(byte, size);
    if (next < 4096) ++next;
    if (next == (1U << size) - 1 && size < 12) ++size;
  }
  put(257, size);
  EXPECT_EQ(decoded(coded(60, 100, 100, 5, {data}), 60, 100), bytes);
}

TEST_F(TiffCompression, LzwBeyondTheStripIsCorrupt) {
  check_corrupt(coded(3, 1, 1, 5, {codes_of_9_bits({256, 1, 2, 3, 4, 257})}), "a code too many");
  check_corrupt(coded(3, 1, 1, 5, {codes_of_9_bits({256, 7, 258, 259, 257})}), "a string too long");
}

TEST_F(TiffCompression, LzwOfAnyBitsGivesAStatus) {
  for (uint32_t seed = 0; seed < 300; ++seed) {
    RandomNumbers random(seed);
    Bytes data = random_bytes(1 + random.below(200), seed);
    if (seed % 2 == 0) {
      Bytes start = lzw_coded(random_bytes(20, seed));
      start.pop_back();
      start.pop_back();
      put_bytes(&start, data);
      data = start;
    }
    const auto parts = coded(10, 20, random.between(1, 20), 5, {data});
    const int32_t status = read_picture(Format::tiff, tiff_file(parts), store_number);
    EXPECT_TRUE(status == 0 || status == -3 || status == -11 || status == -12) << status;
    release_picture();
  }
}

}  // namespace
}  // namespace quorix::testing
