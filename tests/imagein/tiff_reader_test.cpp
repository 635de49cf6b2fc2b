// SPDX-License-Identifier: MIT
//
// What TIFF files give: samples of every kind, strips, tiles, compressions, both byte orders.
#include <bit>
#include <limits>

#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/imagein/tiff_files.h"

namespace quorix::testing {
namespace {

class TiffReader : public ReaderTest {};

struct Kind {
  uint32_t photometric, bits, samples, format;
};
constexpr Kind kinds[] = {{0, 1, 1, 1},  {0, 2, 1, 1},  {0, 4, 1, 1}, {0, 8, 1, 1}, {0, 32, 1, 3},
                          {1, 1, 1, 1},  {1, 2, 1, 1},  {1, 4, 1, 1}, {1, 8, 1, 1}, {1, 16, 1, 1},
                          {1, 32, 1, 1}, {1, 32, 1, 3}, {2, 2, 3, 1}, {2, 4, 3, 1}, {2, 8, 3, 1},
                          {2, 16, 3, 1}, {3, 2, 1, 1},  {3, 4, 1, 1}, {3, 8, 1, 1}};
constexpr uint32_t compressions[] = {1, 5, 32773};

TiffPicture picture_of(const Kind &kind, int32_t width, int32_t height, int32_t rows_per_strip) {
  TiffPicture picture;
  picture.width = width;
  picture.height = height;
  picture.photometric = kind.photometric;
  picture.bits = kind.bits;
  picture.samples = kind.samples;
  picture.format = kind.format;
  picture.rows_per_strip = rows_per_strip;
  if (kind.photometric == 3) picture.map = random_samples(size_t{3} << kind.bits, 16, kind.bits);
  return picture;
}

TiffPicture filled(TiffPicture picture, uint32_t seed) {
  cut_into_blocks(&picture, random_tiff_samples(picture, seed));
  return picture;
}

std::string name_of_picture(const TiffPicture &picture) {
  return "photometric " + std::to_string(picture.photometric) + ", " +
         std::to_string(picture.bits) + " bits, width " + std::to_string(picture.width) +
         (picture.rows_per_strip > 0 ? ", strips" : ", tiles") +
         (picture.big_endian ? ", big-endian" : "");
}

void check_tiff(const TiffPicture &picture, uint32_t compression) {
  check_reader(Format::tiff, tiff_file(tiff_parts(picture, compression)), expect_tiff(picture),
               name_of_picture(picture) + ", compression " + std::to_string(compression));
}

// One row of bytes as a picture of one strip.
Bytes stored_row(const Kind &kind, int32_t width, const Bytes &row, bool big_endian = false) {
  TiffPicture picture = picture_of(kind, width, 1, 1);
  picture.big_endian = big_endian;
  picture.data = {row};
  EXPECT_EQ(read_picture(Format::tiff, tiff_file(tiff_parts(picture, 1)), store_number), 0);
  const Bytes rgb = picture_row(0, 0, width);
  release_picture();
  return rgb;
}

Bytes greys(const Bytes &values) {
  Bytes rgb;
  for (const uint8_t value : values)
    put_bytes(&rgb, Bytes(3, value));
  return rgb;
}

TEST_F(TiffReader, ReadsStripsOfEveryKind) {
  uint32_t seed = 1;
  for (const Kind &kind : kinds) {
    for (const bool big_endian : {false, true}) {
      for (const uint32_t compression : compressions) {
        TiffPicture picture = picture_of(kind, 11, 7, 3);  // the last strip has one row
        picture.big_endian = big_endian;
        check_tiff(filled(picture, ++seed), compression);
      }
    }
  }
}

TEST_F(TiffReader, ReadsTilesOfEveryKind) {
  uint32_t seed = 500;
  for (const Kind &kind : kinds) {
    for (const uint32_t compression : compressions) {
      TiffPicture picture = picture_of(kind, 19, 11, 0);  // tiles reach over right and bottom
      picture.tile_width = 8;
      picture.tile_height = 4;
      picture.big_endian = seed % 2 == 0;
      check_tiff(filled(picture, ++seed), compression);
    }
  }
}

TEST_F(TiffReader, ReadsAnyWidthAndAnyNumberOfRowsInAStrip) {
  for (const int32_t width : {1, 2, 3, 5, 8, 9, 17}) {
    for (const Kind &kind : kinds)
      check_tiff(filled(picture_of(kind, width, 3, 2), 7), 1);
  }
  for (const int32_t rows : {1, 2, 4, 5, 6, 100})
    check_tiff(filled(picture_of({1, 8, 1, 1}, 6, 5, rows), 8), 32773);
}

TEST_F(TiffReader, BringsGreysOfFewBitsToTheWholeScale) {
  EXPECT_EQ(stored_row({1, 1, 1, 1}, 3, {0xA0}), greys({255, 0, 255}));
  EXPECT_EQ(stored_row({1, 2, 1, 1}, 4, {0x1B}), greys({0, 85, 170, 255}));
  EXPECT_EQ(stored_row({1, 4, 1, 1}, 2, {0x1E}), greys({17, 238}));
  EXPECT_EQ(stored_row({1, 8, 1, 1}, 3, {0, 7, 255}), greys({0, 7, 255}));
}

TEST_F(TiffReader, TurnsOnlyTheExtremesWhere0IsWhite) {
  EXPECT_EQ(stored_row({0, 1, 1, 1}, 3, {0xA0}), greys({0, 255, 0}));
  EXPECT_EQ(stored_row({0, 2, 1, 1}, 4, {0x1B}), greys({255, 85, 170, 0}));
  EXPECT_EQ(stored_row({0, 4, 1, 1}, 4, {0x01, 0xEF}), greys({255, 17, 238, 0}));
  EXPECT_EQ(stored_row({0, 8, 1, 1}, 4, {0, 1, 254, 255}), greys({255, 1, 254, 0}));
}

TEST_F(TiffReader, TakesTheFirstByteOf16BitsWhateverTheOrder) {
  const Bytes row = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(stored_row({2, 16, 3, 1}, 1, row, false), (Bytes{1, 3, 5}));
  EXPECT_EQ(stored_row({2, 16, 3, 1}, 1, row, true), (Bytes{1, 3, 5}));
}

TEST_F(TiffReader, DoesNotConvertGreysOf16Bits) {
  EXPECT_EQ(stored_row({1, 16, 1, 1}, 2, {1, 2, 3, 4}), Bytes(6, 0));
}

Bytes float_row(const std::vector<float> &values) {
  Bytes row;
  for (const float value : values)
    put_little(&row, std::bit_cast<uint32_t>(value), 4);
  return row;
}

TEST_F(TiffReader, SpreadsFloatsFromTheLeastToTheGreatest) {
  // 10 to 20: 15 gives 127.5 + 0.5, 12 gives 51 + 0.5, 20 gives 255 + 0.5.
  EXPECT_EQ(stored_row({1, 32, 1, 3}, 4, float_row({10, 15, 12, 20})), greys({0, 128, 51, 255}));
  EXPECT_EQ(stored_row({0, 32, 1, 3}, 4, float_row({10, 15, 12, 20})), greys({255, 128, 51, 0}));
}

TEST_F(TiffReader, MakesConstantFloatsBlackAndLeavesOutWhatIsNoNumber) {
  EXPECT_EQ(stored_row({1, 32, 1, 3}, 3, float_row({5, 5, 5})), Bytes(9, 0));
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(stored_row({1, 32, 1, 3}, 4, float_row({10, nan, 12, 20})), greys({0, 0, 51, 255}));
  EXPECT_EQ(stored_row({1, 32, 1, 3}, 2, float_row({nan, nan})), Bytes(6, 0));
  const float inf = std::numeric_limits<float>::infinity();
  for (const auto &values : {std::vector<float>{1, inf, 2}, {-inf, 0, inf}, {3e38F, -3e38F, 0}}) {
    TiffPicture picture = picture_of({1, 32, 1, 3}, 3, 1, 1);
    picture.data = {float_row(values)};
    EXPECT_EQ(read_picture(Format::tiff, tiff_file(tiff_parts(picture, 1)), store_number), 0);
  }
}

TEST_F(TiffReader, SumsPredictedDifferencesAcrossTheWholeBlock) {
  for (const Kind &kind :
       {Kind{0, 8, 1, 1}, Kind{1, 8, 1, 1}, Kind{2, 8, 3, 1}, Kind{3, 8, 1, 1}}) {
    for (const uint32_t compression : compressions) {
      TiffPicture picture = picture_of(kind, 7, 5, 2);
      picture.predictor = 2;
      check_tiff(filled(picture, 3), compression);
      picture.rows_per_strip = 0;
      picture.tile_width = picture.tile_height = 4;
      check_tiff(filled(picture, 4), compression);
    }
  }
  // Two rows of two: the second row's first value stands on the first row's last.
  TiffPicture picture = picture_of({1, 8, 1, 1}, 2, 2, 2);
  picture.predictor = 2;
  picture.data = {{10, 1, 5, 250}};
  ASSERT_EQ(read_picture(Format::tiff, tiff_file(tiff_parts(picture, 5)), store_number), 0);
  EXPECT_EQ(picture_row(0, 0, 2), greys({10, 11}));
  EXPECT_EQ(picture_row(0, 1, 2), greys({16, 10}));
}

TEST_F(TiffReader, SumsByThreesInRgbAndByOnesElsewhereThoughNoTagSaysHowManySamples) {
  for (const uint32_t compression : compressions) {
    TiffPicture colour = picture_of({2, 8, 3, 1}, 2, 2, 2);
    colour.predictor = 2;
    colour.data = {{1, 2, 3, 10, 20, 30, 1, 1, 1, 250, 0, 255}};
    TiffParts parts = tiff_parts(colour, compression);
    parts.drop(tiff_samples);
    ASSERT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), 0);
    EXPECT_EQ(picture_row(0, 0, 2), (Bytes{1, 2, 3, 11, 22, 33}));
    EXPECT_EQ(picture_row(0, 1, 2), (Bytes{12, 23, 34, 6, 23, 33}));
    TiffPicture grey = picture_of({1, 8, 1, 1}, 4, 1, 1);
    grey.predictor = 2;
    grey.data = {{10, 1, 5, 250}};
    parts = tiff_parts(grey, compression);
    parts.drop(tiff_samples);
    ASSERT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), 0);
    EXPECT_EQ(picture_row(0, 0, 4), greys({10, 11, 16, 10}));
  }
}

TEST_F(TiffReader, WarnsOfIndicesPastTheMapInStripsAlone) {
  for (const uint32_t bits : {2U, 4U}) {
    for (const bool strips : {true, false}) {
      TiffPicture picture = picture_of({3, bits, 1, 1}, 9, 5, strips ? 2 : 0);
      picture.map = random_samples(9, 16, 5);  // three entries
      picture.tile_width = picture.tile_height = 4;
      std::vector<uint32_t> values = random_tiff_samples(picture, 6);
      values[3] = 3;
      cut_into_blocks(&picture, values);
      EXPECT_EQ(expect_tiff(picture).status, strips ? -5 : 0);
      check_tiff(picture, 1);
    }
  }
}

TEST_F(TiffReader, TakesIndicesOf8BitsPastTheMapWithoutAWarning) {
  TiffPicture picture = picture_of({3, 8, 1, 1}, 9, 5, 2);
  picture.map = {0, 0x1100, 0x2200, 0, 0x3300, 0x4400, 0, 0x5500, 0x6600};  // entry 0 is black
  std::vector<uint32_t> values = random_tiff_samples(picture, 6);
  values[3] = 255;
  values[4] = 3;
  values[5] = 2;
  cut_into_blocks(&picture, values);
  check_tiff(picture, 1);
}

TEST_F(TiffReader, LeavesA1BitPaletteBlack) {
  const TiffPicture picture = picture_of({3, 1, 1, 1}, 9, 5, 2);
  check_tiff(filled(picture, 6), 1);
}

TEST_F(TiffReader, KeepsTheHighByteOfTheMap) {
  TiffPicture picture = picture_of({3, 8, 1, 1}, 2, 1, 1);
  picture.map = {0x12FF, 0x34FF, 0x56FF, 0x7801, 0x9A02, 0xBC03};
  picture.data = {{0, 1}};
  ASSERT_EQ(read_picture(Format::tiff, tiff_file(tiff_parts(picture, 1)), store_number), 0);
  EXPECT_EQ(picture_row(0, 0, 2), (Bytes{0x12, 0x56, 0x9A, 0x34, 0x78, 0xBC}));
}

TEST_F(TiffReader, ReadsLongLzwDataWithCodesOfEverySize) {
  TiffPicture picture = picture_of({1, 8, 1, 1}, 29, 23, 23);
  picture.data = {random_bytes(29 * 23, 1)};
  check_tiff(picture, 5);
  TiffPicture large = picture_of({1, 8, 1, 1}, 200, 100, 100);
  for (const uint32_t limit : {255U, 7U, 1U}) {
    Bytes data = random_bytes(20000, limit);
    for (uint8_t &byte : data)
      byte = static_cast<uint8_t>(byte & limit);
    large.data = {data};
    ASSERT_EQ(read_picture(Format::tiff, tiff_file(tiff_parts(large, 5)), store_number), 0);
    EXPECT_TRUE(is_held(stored_picture(expect_tiff(large)))) << limit;
  }
}

TEST_F(TiffReader, NeedsAFile) {
  EXPECT_EQ(read_named(Format::tiff, "no such file.tif", store_number), -1);
  EXPECT_TRUE(nothing_is_held());
}

}  // namespace
}  // namespace quorix::testing
