// SPDX-License-Identifier: MIT
//
// TIFF files worked out on paper, and against a file put together step by step.
#include <gtest/gtest.h>

#include "tests/imageout/writer_calls.h"

namespace quorix::testing {
namespace {

class TiffWriter : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }
};

WriterCall call_for(const DrawnPicture &picture) {
  WriterCall call;
  call.width = picture.width;
  call.height = picture.height;
  call.palette = picture.palette.data();
  return call;
}

uint32_t word_at(const Bytes &file, size_t place, int bytes) {
  uint32_t value = 0;
  for (int i = bytes; i-- > 0;)
    value = value << 8 | file.at(place + static_cast<size_t>(i));
  return value;
}

constexpr size_t entries_start = 10;

// The place of an entry; fails if there is none.
size_t entry_of(const Bytes &file, uint32_t tag) {
  const uint32_t count = word_at(file, 8, 2);
  for (size_t i = 0; i < count; ++i) {
    const size_t at = entries_start + 12 * i;
    if (word_at(file, at, 2) == tag) return at;
  }
  ADD_FAILURE() << "no entry " << tag;
  return entries_start;
}

uint32_t value_of(const Bytes &file, uint32_t tag) {
  const size_t at = entry_of(file, tag);
  return word_at(file, at + 8, word_at(file, at + 2, 2) == 3 ? 2 : 4);
}

DrawnPicture black_grey_white() {
  DrawnPicture picture = {9, 2, {}, {0, 1, 2, 0, 1, 2, 0, 1, 2, 2, 1, 0, 2, 1, 0, 2, 1, 0}, {}};
  picture.palette = {0x000000, 0x808080, 0xFFFFFF};
  for (const uint8_t index : picture.indices)
    picture.rgb.insert(picture.rgb.end(), 3, index == 0 ? 0 : index == 1 ? 0x80 : 0xFF);
  return picture;
}

TEST_F(TiffWriter, WritesABilevelFileAsOnPaper) {
  const DrawnPicture picture = black_grey_white();
  show_on_raster(picture, false);
  WriterCall call = call_for(picture);
  call.form = -1;
  // clang-format off
  const Bytes expected = {
      'I', 'I', 42, 0, 8, 0, 0, 0,             // header
      13, 0,                                   // entries
      0xFE, 0, 4, 0, 1, 0, 0, 0, 0, 0, 0, 0,   // NewSubfileType 0
      0x00, 1, 4, 0, 1, 0, 0, 0, 9, 0, 0, 0,   // ImageWidth 9
      0x01, 1, 4, 0, 1, 0, 0, 0, 2, 0, 0, 0,   // ImageLength 2
      0x02, 1, 3, 0, 1, 0, 0, 0, 1, 0, 0, 0,   // BitsPerSample 1
      0x03, 1, 3, 0, 1, 0, 0, 0, 1, 0, 0, 0,   // Compression: none
      0x06, 1, 3, 0, 1, 0, 0, 0, 1, 0, 0, 0,   // Photometric: black is zero
      0x11, 1, 4, 0, 2, 0, 0, 0, 170, 0, 0, 0, // StripOffsets
      0x15, 1, 3, 0, 1, 0, 0, 0, 1, 0, 0, 0,   // SamplesPerPixel 1
      0x16, 1, 3, 0, 1, 0, 0, 0, 1, 0, 0, 0,   // RowsPerStrip 1
      0x17, 1, 4, 0, 2, 0, 0, 0, 178, 0, 0, 0, // StripByteCounts
      0x1A, 1, 5, 0, 1, 0, 0, 0, 186, 0, 0, 0, // XResolution
      0x1B, 1, 5, 0, 1, 0, 0, 0, 194, 0, 0, 0, // YResolution
      0x28, 1, 3, 0, 1, 0, 0, 0, 2, 0, 0, 0,   // ResolutionUnit: inch
      0, 0, 0, 0,                              // no further directory
      202, 0, 0, 0, 204, 0, 0, 0,              // 170: where the rows are
      2, 0, 0, 0, 2, 0, 0, 0,                  // 178: and how long
      100, 0, 0, 0, 1, 0, 0, 0,                // 186: the resolutions, 100 to 1
      100, 0, 0, 0, 1, 0, 0, 0,
      0x6D, 0x80,                              // 202: 0110 1101 1
      0xDB, 0x00,                              // 204: 1101 1011 0
  };
  // clang-format on
  EXPECT_EQ(file_bytes(write_tiff, call), expected);
}

TEST_F(TiffWriter, MakesGreyBlackOrWhiteByTheSignOfTheWidth) {
  const DrawnPicture picture = black_grey_white();
  for (const bool rgba : {false, true}) {
    show_on_raster(picture, rgba);
    WriterCall call = call_for(picture);
    call.form = -1;
    if (rgba) call.height = -call.height;
    Bytes file = file_bytes(write_tiff, call);
    EXPECT_EQ(Bytes(file.end() - 4, file.end()), (Bytes{0x6D, 0x80, 0xDB, 0x00}));
    call.width = -call.width;  // 0010 0100 1, 1001 0010 0
    file = file_bytes(write_tiff, call);
    EXPECT_EQ(Bytes(file.end() - 4, file.end()), (Bytes{0x24, 0x80, 0x92, 0x00}));
  }
}

TEST_F(TiffWriter, MakesColoursThatAreNearlyBlackOrWhiteNeither) {
  // Black, and what differs in red, green or blue; white, and the same there.
  DrawnPicture picture = {8, 1, {}, {0, 1, 2, 3, 4, 5, 6, 7}, {}};
  picture.palette = {0x000000, 0x010000, 0x000100, 0x000001,
                     0xFFFFFF, 0xFEFFFF, 0xFFFEFF, 0xFFFFFE};
  for (const uint8_t index : picture.indices)
    for (const int shift : {16, 8, 0})
      picture.rgb.push_back(static_cast<uint8_t>(picture.palette[index] >> shift & 255));
  for (const bool rgba : {false, true}) {
    show_on_raster(picture, rgba);
    WriterCall call = call_for(picture);
    call.form = -1;
    if (rgba) call.height = -call.height;
    EXPECT_EQ(file_bytes(write_tiff, call).back(), 0x7F);
    call.width = -call.width;
    EXPECT_EQ(file_bytes(write_tiff, call).back(), 0x08);
  }
}

TEST_F(TiffWriter, IsBilevelRatherThanRgb) {
  const DrawnPicture picture = black_grey_white();
  show_on_raster(picture, true);
  WriterCall call = call_for(picture);
  call.device = -101;
  EXPECT_EQ(value_of(file_bytes(write_tiff, call), 262), 2U);
  EXPECT_EQ(value_of(file_bytes(write_tiff, call), 277), 3U);
  call.form = -1;
  const Bytes file = file_bytes(write_tiff, call);
  EXPECT_EQ(word_at(file, 8, 2), 13U);
  EXPECT_EQ(value_of(file, 258), 1U);
  EXPECT_EQ(value_of(file, 262), 1U);
}

TEST_F(TiffWriter, WritesTheResolutionPerInchOrCentimetre) {
  const DrawnPicture picture = plot_picture(3, 3, 1);
  show_on_raster(picture, false);
  const struct {
    int32_t asked;
    uint32_t resolution, unit;
  } cases[] = {{300, 300, 2}, {-118, 118, 3}, {0, 100, 2}, {INT32_MIN, 0x80000000U, 3}};
  for (const auto &[asked, resolution, unit] : cases) {
    WriterCall call = call_for(picture);
    call.resolution = asked;
    const Bytes file = file_bytes(write_tiff, call);
    for (const uint32_t tag : {282U, 283U}) {
      const size_t at = value_of(file, tag);
      EXPECT_EQ(word_at(file, at, 4), resolution) << asked;
      EXPECT_EQ(word_at(file, at + 4, 4), 1U) << asked;
    }
    EXPECT_EQ(value_of(file, 296), unit) << asked;
  }
}

TEST_F(TiffWriter, WritesColoursOf16Bits) {
  const DrawnPicture picture = plot_picture(3, 3, 1);
  show_on_raster(picture, false);
  const Bytes file = file_bytes(write_tiff, call_for(picture));
  const size_t map = value_of(file, 320);
  for (size_t i = 0; i < 256; ++i) {
    for (size_t plane = 0; plane < 3; ++plane) {
      const uint32_t component = picture.palette[i] >> (16 - 8 * plane) & 255;
      EXPECT_EQ(word_at(file, map + 512 * plane + 2 * i, 2), component << 8 | component);
    }
  }
}

TEST_F(TiffWriter, KeepsThePlaceAndSizeOfASingleRowInTheDirectory) {
  const DrawnPicture picture = plot_picture(5, 1, 1);
  show_on_raster(picture, false);
  const Bytes file = file_bytes(write_tiff, call_for(picture));
  EXPECT_EQ(value_of(file, 279), 5U);
  const size_t strip = value_of(file, 273);
  EXPECT_EQ(strip, file.size() - 5);
  EXPECT_EQ(Bytes(file.end() - 5, file.end()), picture.indices);
}

TEST_F(TiffWriter, WritesTheBytesOfTheLiteralFile) {
  const int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {8, 2}, {9, 3}, {65, 33}, {301, 150}};
  uint32_t seed = 0;
  for (const auto &[width, height] : sizes) {
    const DrawnPicture picture = plot_picture(width, height, ++seed);
    for (int flags = 0; flags < 64; ++flags) {
      const bool rgba = (flags & 1) != 0;
      show_on_raster(picture, rgba);
      WriterCall call = call_for(picture);
      if ((flags & 2) != 0) call.device = -101;
      if ((flags & 4) != 0) call.width = -width;
      if ((flags & 8) != 0) call.height = -height;
      if ((flags & 16) != 0) call.form = -5;
      if ((flags & 32) != 0) call.order = 0;
      call.resolution = 7 * flags - 100;
      EXPECT_EQ(file_bytes(write_tiff, call), literal_tiff(call, whole_area(picture)))
          << width << " by " << height << ", " << flags;
    }
  }
}

TEST_F(TiffWriter, ComputesAPaletteOfAPhotograph) {
  const DrawnPicture photo = photo_picture(120, 90, 4);
  show_on_raster(photo, true);
  WriterCall call = call_for(photo);
  call.height = -90;
  EXPECT_EQ(file_bytes(write_tiff, call), literal_tiff(call, whole_area(photo)));
}

TEST_F(TiffWriter, WritesADirectoryWithoutRowsForAnEmptyClip) {
  const DrawnPicture picture = plot_picture(5, 4, 1);
  show_on_raster(picture, false);
  set_clip(0, 0, 5, 0);
  EXPECT_EQ(file_bytes(write_tiff, call_for(picture)),
            literal_tiff(call_for(picture), {5, 0, {}, {}}));
}

TEST_F(TiffWriter, WritesNoStripsForRowsWithoutPixels) {
  const DrawnPicture picture = plot_picture(5, 4, 1);
  show_on_raster(picture, false);
  set_clip(0, 0, 0, INT32_MAX);
  const Bytes file = file_bytes(write_tiff, call_for(picture));
  // Header 8, directory 2 + 14 * 12 + 4, resolutions 16, map of 768 * 2 bytes.
  EXPECT_EQ(file.size(), 1734U);
  EXPECT_EQ(value_of(file, 256), 0U);
  EXPECT_EQ(value_of(file, 257), uint32_t{INT32_MAX});
  for (const uint32_t tag : {273U, 279U})
    EXPECT_EQ(word_at(file, entry_of(file, tag) + 4, 4), 0U) << tag;
}

}  // namespace
}  // namespace quorix::testing
