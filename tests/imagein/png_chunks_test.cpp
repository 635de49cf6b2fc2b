// SPDX-License-Identifier: MIT
//
// The chunks of PNG files, in every order and with mistakes, and streams that end early.
#include "tests/imagein/png_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class PngChunks : public ReaderTest {};

Bytes data_of(const PngPicture &picture) {
  return zlib_stream(png_raw_rows(picture, filters_in_turn));
}

ExpectedPicture refused(int32_t status) {
  ExpectedPicture expected;
  expected.status = status;
  return expected;
}

// The start, the given chunks and the end.
Bytes assembled(const PngPicture &picture, const std::vector<Bytes> &chunks, bool end = true) {
  Bytes file = png_start(picture);
  for (const Bytes &chunk : chunks)
    put_bytes(&file, chunk);
  if (end) put_bytes(&file, png_chunk("IEND", {}));
  return file;
}

TEST_F(PngChunks, WithWrongSumsAreReadAllTheSame) {
  const PngPicture picture = random_png(6, 8, 9, 5, 1);
  Bytes file = png_file(picture);
  file[29] ^= 0xff;  // of IHDR
  file[file.size() - 1] ^= 0xff;
  file[file.size() - 13] ^= 0xff;  // of IDAT
  check_reader(Format::png, file, expect_png(picture), "wrong sums");
}

TEST_F(PngChunks, OfTheStartAreNotLookedAt) {
  const PngPicture picture = random_png(2, 8, 9, 5, 2);
  Bytes file = png_file(picture);
  for (size_t i = 0; i < 16; ++i)
    file[i] = static_cast<uint8_t>(i);
  check_reader(Format::png, file, expect_png(picture), "signature, length and name");
}

TEST_F(PngChunks, UnknownOnesArePassedOver) {
  const PngPicture picture = random_png(2, 8, 9, 5, 3);
  const Bytes file =
      assembled(picture, {png_chunk("gAMA", {0, 0, 1, 2}), png_chunk("teXt", random_bytes(999, 1)),
                          png_chunk("IDAT", data_of(picture)), png_chunk("zzzz", {}),
                          png_chunk("gAMA", {1})});
  check_reader(Format::png, file, expect_png(picture), "unknown chunks");
}

TEST_F(PngChunks, OfDataMayBeEmptyAndAnywhere) {
  const PngPicture picture = random_png(2, 8, 9, 5, 4);
  const Bytes data = data_of(picture);
  std::vector<Bytes> chunks;
  for (const uint8_t byte : data) {
    chunks.push_back(png_chunk("IDAT", {byte}));
    chunks.push_back(png_chunk("IDAT", {}));
    chunks.push_back(png_chunk("tIME", {1, 2, 3}));
  }
  check_reader(Format::png, assembled(picture, chunks), expect_png(picture), "one byte a chunk");
}

TEST_F(PngChunks, MayStandBehindTheData) {
  PngPicture picture = random_png(3, 4, 9, 5, 5);
  picture.transparency = {1, 2, 3};
  const Bytes file = assembled(
      picture, {png_chunk("IDAT", data_of(picture)), png_chunk("tRNS", picture.transparency),
                png_chunk("PLTE", picture.palette)});
  check_reader(Format::png, file, expect_png(picture), "palette behind the data");
}

TEST_F(PngChunks, NeedNoEndChunk) {
  const PngPicture picture = random_png(2, 8, 9, 5, 6);
  const Bytes file = assembled(picture, {png_chunk("IDAT", data_of(picture))}, false);
  check_reader(Format::png, file, expect_png(picture), "no IEND");
  Bytes more = assembled(picture, {png_chunk("IDAT", data_of(picture))});
  put_bytes(&more, random_bytes(100, 3));
  check_reader(Format::png, more, expect_png(picture), "bytes behind IEND");
}

TEST_F(PngChunks, OfAPaletteThatComeTwiceCountOnce) {
  PngPicture picture = random_png(3, 2, 9, 5, 7);
  const Bytes file =
      assembled(picture, {png_chunk("PLTE", Bytes(12, 9)), png_chunk("PLTE", picture.palette),
                          png_chunk("IDAT", data_of(picture))});
  check_reader(Format::png, file, expect_png(picture), "two palettes");
}

TEST_F(PngChunks, OfABackgroundAheadOfThePaletteFindIt) {
  PngPicture picture = random_png(3, 4, 9, 5, 8);
  picture.background = {3};
  const Bytes file =
      assembled(picture, {png_chunk("bKGD", picture.background), png_chunk("PLTE", picture.palette),
                          png_chunk("IDAT", data_of(picture))});
  check_reader(Format::png, file, expect_png(picture), "background first");
}

TEST_F(PngChunks, OfABackgroundPastThePaletteAreNoError) {
  PngPicture picture = random_png(3, 2, 9, 5, 9);
  picture.background = {200};
  check_reader(Format::png, png_file(picture), expect_png(picture), "index 200 of 4");
}

TEST_F(PngChunks, OfTransparencyMeanNothingWhereTheFileHasAlpha) {
  for (const uint32_t type : {4U, 6U}) {
    PngPicture picture = random_png(type, 8, 9, 5, 10);
    PngPicture named = picture;
    named.transparency = {0, static_cast<uint8_t>(picture.samples[0]), 0, 1, 0, 2};
    check_reader(Format::png, png_file(named), expect_png(picture), "tRNS ignored");
  }
}

TEST_F(PngChunks, TooShortAreFilledWithZeros) {
  PngPicture grey = random_png(0, 8, 9, 5, 11);
  grey.samples[0] = 0;
  PngPicture named = grey;
  named.transparency = {0};  // the low byte is missing
  check_reader(Format::png, png_file(named), expect_png(named), "tRNS of one byte");
  PngPicture colour = random_png(2, 8, 9, 5, 12);
  colour.samples[3] = 7;
  colour.samples[4] = colour.samples[5] = 0;
  colour.transparency = {0, 7};
  check_reader(Format::png, png_file(colour), expect_png(colour), "tRNS of two bytes");
}

TEST_F(PngChunks, OfTransparencyTooLongAreNoError) {
  PngPicture palette = random_png(3, 2, 9, 5, 13);
  palette.transparency = random_bytes(600, 4);
  check_reader(Format::png, png_file(palette), expect_png(palette), "tRNS of 600 bytes");
}

TEST_F(PngChunks, OfAPaletteInATrueColourFileMeanNothing) {
  PngPicture picture = random_png(2, 8, 9, 5, 14);
  picture.palette = random_bytes(30, 3);
  check_reader(Format::png, png_file(picture), expect_png(picture), "suggested palette");
}

TEST_F(PngChunks, OfTheHeaderWithAnotherTypeOrDepthAreRefused) {
  for (uint32_t type = 0; type < 9; ++type) {
    for (const uint32_t depth : {0U, 1U, 2U, 3U, 4U, 5U, 8U, 9U, 16U, 32U, 255U}) {
      const bool low = type == 0 || type == 3;
      const bool known = (type <= 4 && type != 1) || type == 6;
      const bool few = depth == 1 || depth == 2 || depth == 4;
      if (known && ((few && low) || depth == 8 || (depth == 16 && type != 3))) continue;
      PngPicture picture = random_png(2, 8, 4, 3, 1);
      picture.type = type;
      picture.depth = depth;
      Bytes file = png_start(picture);
      put_bytes(&file, png_chunk("IDAT", zlib_stream(Bytes(100, 0))));
      EXPECT_EQ(read_picture(Format::png, file, store_number), -3) << type << ", " << depth;
      EXPECT_TRUE(nothing_is_held());
    }
  }
}

TEST_F(PngChunks, OfTheHeaderWithoutPixelsAreRefused) {
  const int32_t sizes[][2] = {{0, 3}, {3, 0}, {INT32_MIN, 3}, {3, INT32_MIN}, {-1, -1}};
  for (const auto &size : sizes) {
    PngPicture picture = random_png(2, 8, 4, 3, 1);
    const Bytes data = png_chunk("IDAT", data_of(picture));
    picture.width = size[0];
    picture.height = size[1];
    check_reader(Format::png, assembled(picture, {data}), refused(-3), "size");
  }
}

TEST_F(PngChunks, OfPicturesThatNoMemoryHoldsGiveAStatus) {
  PngPicture picture = random_png(6, 16, 4, 3, 1);
  const Bytes data = png_chunk("IDAT", data_of(picture));
  picture.width = picture.height = INT32_MAX;
  for (const bool interlaced : {false, true}) {
    picture.interlaced = interlaced;
    const int32_t status = read_picture(Format::png, assembled(picture, {data}), store_number);
    EXPECT_TRUE(status == -2 || status == -3) << status;
    EXPECT_TRUE(nothing_is_held());
  }
}

TEST_F(PngChunks, WithLengthsBeyondTheFileEndTheReading) {
  const PngPicture picture = random_png(2, 8, 9, 5, 15);
  for (const uint32_t length : {1000U, 0x7fffffffU, 0x80000000U, 0xffffffffU, 0xfffffff4U}) {
    Bytes chunk;
    put_big(&chunk, length, 4);
    put_text(&chunk, "junk");
    const Bytes file = assembled(picture, {chunk, png_chunk("IDAT", data_of(picture))});
    const int32_t status = read_picture(Format::png, file, store_number);
    EXPECT_TRUE(status == -3 || status == -4 || status == 0) << status;
    release_picture();
  }
}

TEST_F(PngChunks, OfDamagedDataGiveAStatus) {
  const PngPicture picture = random_png(2, 8, 9, 5, 16);
  Bytes data = data_of(picture);
  Bytes damaged = data;
  damaged[0] ^= 0x0f;  // not the method of zlib
  check_reader(Format::png, assembled(picture, {png_chunk("IDAT", damaged)}), refused(-4),
               "another method");
  damaged = data;
  damaged[2] |= 7;  // a block type that does not exist
  check_reader(Format::png, assembled(picture, {png_chunk("IDAT", damaged)}), refused(-4),
               "an unknown block");
  damaged = data;
  damaged.back() ^= 1;
  EXPECT_EQ(
      read_picture(Format::png, assembled(picture, {png_chunk("IDAT", damaged)}), store_number), -4)
      << "a wrong sum";
  EXPECT_TRUE(nothing_is_held());
}

TEST_F(PngChunks, OfAPresetDictionaryAreRefused) {
  const PngPicture picture = random_png(2, 8, 9, 5, 17);
  Bytes data = data_of(picture);
  data[1] = 0x20;  // FDICT
  data[1] = static_cast<uint8_t>(0x20 + (31 - (data[0] * 256 + 0x20) % 31) % 31);
  data.insert(data.begin() + 2, {1, 2, 3, 4});
  check_reader(Format::png, assembled(picture, {png_chunk("IDAT", data)}), refused(-4),
               "a dictionary");
}

TEST_F(PngChunks, OfDataThatEndsWithARowGiveTheRowsThatThereAre) {
  for (const bool interlaced : {false, true}) {
    PngPicture picture = random_png(2, 8, 9, 6, 18);
    picture.interlaced = interlaced;
    const Bytes raw = png_raw_rows(picture, 1);
    for (const size_t rows : {0U, 1U, 3U}) {
      if (interlaced && rows > 0) continue;
      const Bytes some(raw.begin(), raw.begin() + static_cast<std::ptrdiff_t>(28 * rows));
      ExpectedPicture expected = expect_png(picture);
      expected.rows.resize(rows);
      const Bytes file = assembled(picture, {png_chunk("IDAT", zlib_stream(some))});
      EXPECT_EQ(read_picture(Format::png, file, store_number), 0);
      const literal::Picture stored = stored_picture(expected);
      for (int32_t y = 0; y < static_cast<int32_t>(rows); ++y) {
        const auto start = stored.rgb.begin() + 27 * y;
        EXPECT_EQ(picture_row(0, y, 9), Bytes(start, start + 27));
      }
      for (int32_t y = static_cast<int32_t>(rows) + 1; y < 6; ++y)
        EXPECT_EQ(picture_row(0, y, 9), Bytes(27, 0)) << y;
      release_picture();
    }
  }
}

TEST_F(PngChunks, OfMoreDataThanThePictureHasAreNoError) {
  const PngPicture picture = random_png(2, 8, 9, 6, 19);
  Bytes raw = png_raw_rows(picture, 1);
  put_bytes(&raw, Bytes(500, 3));
  check_reader(Format::png, assembled(picture, {png_chunk("IDAT", zlib_stream(raw))}),
               expect_png(picture), "more rows");
}

}  // namespace
}  // namespace quorix::testing
