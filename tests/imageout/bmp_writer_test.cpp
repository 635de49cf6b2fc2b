// SPDX-License-Identifier: MIT
//
// BMP files worked out on paper, and against a file put together step by step.
#include <gtest/gtest.h>

#include "tests/imageout/writer_calls.h"

namespace quorix::testing {
namespace {

class BmpWriter : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }
};

DrawnPicture five_by_two() {
  DrawnPicture picture = {5, 2, {}, {0, 1, 2, 1, 0, 2, 2, 2, 1, 1}, {}};
  picture.palette = {0x102030, 0x405060, 0x708090};
  for (const uint8_t index : picture.indices)
    for (const int shift : {16, 8, 0})
      picture.rgb.push_back(static_cast<uint8_t>(picture.palette[index] >> shift & 255));
  return picture;
}

WriterCall call_for(const DrawnPicture &picture) {
  WriterCall call;
  call.width = picture.width;
  call.height = picture.height;
  call.palette = picture.palette.data();
  return call;
}

TEST_F(BmpWriter, WritesIndicesAsOnPaper) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, false);
  WriterCall call = call_for(picture);
  call.colours = 3;
  // clang-format off
  const Bytes expected = {
      'B', 'M',
      82, 0, 0, 0,           // size of the file: 54 + 4 * 3 + 2 * 8
      0, 0, 0, 0,
      66, 0, 0, 0,           // where the rows are: 54 + 4 * 3
      40, 0, 0, 0,           // size of the information header
      5, 0, 0, 0,            // width
      2, 0, 0, 0,            // height
      1, 0,                  // planes
      8, 0,                  // bits per pixel
      0, 0, 0, 0,            // not compressed
      16, 0, 0, 0,           // size of the rows: 2 * 8
      0xC4, 9, 0, 0,         // 2500 pixels per metre
      0xC4, 9, 0, 0,
      3, 0, 0, 0,            // colours, and those that matter
      3, 0, 0, 0,
      0x30, 0x20, 0x10, 0,   // blue first
      0x60, 0x50, 0x40, 0,
      0x90, 0x80, 0x70, 0,
      2, 2, 2, 1, 1, 0, 0, 0,  // the last row first
      0, 1, 2, 1, 0, 0, 0, 0,
  };
  // clang-format on
  EXPECT_EQ(file_bytes(write_bmp, call), expected);
}

TEST_F(BmpWriter, WritesTrueColoursAsOnPaper) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, true);
  WriterCall call = call_for(picture);
  call.device = -101;
  const Bytes file = file_bytes(write_bmp, call);
  ASSERT_EQ(file.size(), 54U + 2 * 16);
  EXPECT_EQ(file[10], 54);
  EXPECT_EQ(file[28], 24);
  EXPECT_EQ(file[34], 32);
  EXPECT_EQ(file[46], 0);
  // clang-format off
  const Bytes last_row = {
      0x90, 0x80, 0x70,
      0x90, 0x80, 0x70,
      0x90, 0x80, 0x70,
      0x60, 0x50, 0x40,
      0x60, 0x50, 0x40,
      0,
  };
  // clang-format on
  EXPECT_EQ(Bytes(file.begin() + 54, file.begin() + 70), last_row);
}

TEST_F(BmpWriter, TakesTheResolutionFromTheOrder) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, false);
  const struct {
    int32_t order;
    Bytes resolution, height;
  } cases[] = {
      {1, {0xC4, 9, 0, 0}, {2, 0, 0, 0}},
      {3000, {0xB8, 0x0B, 0, 0}, {2, 0, 0, 0}},
      {0, {0, 0, 9, 0xC4}, {0, 0, 0, 2}},
      {-3000, {0, 0, 0x0B, 0xB8}, {0, 0, 0, 2}},
  };
  for (const auto &[order, resolution, height] : cases) {
    WriterCall call = call_for(picture);
    call.order = order;
    const Bytes file = file_bytes(write_bmp, call);
    EXPECT_EQ(Bytes(file.begin() + 38, file.begin() + 42), resolution) << order;
    EXPECT_EQ(Bytes(file.begin() + 42, file.begin() + 46), resolution) << order;
    EXPECT_EQ(Bytes(file.begin() + 22, file.begin() + 26), height) << order;
    EXPECT_EQ(file[0], 'B');
    EXPECT_EQ(file[1], 'M');
  }
}

TEST_F(BmpWriter, NeedsNoColourTable) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, false);
  WriterCall call = call_for(picture);
  call.colours = 0;
  const Bytes file = file_bytes(write_bmp, call);
  EXPECT_EQ(file[10], 54);
  EXPECT_EQ(file.size(), 54U + 16);
}

TEST_F(BmpWriter, WritesNoEntriesForANegativeNumberOfColours) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, false);
  WriterCall call = call_for(picture);
  call.colours = -2;
  const Bytes file = file_bytes(write_bmp, call);
  EXPECT_EQ(Bytes(file.begin() + 10, file.begin() + 14), (Bytes{46, 0, 0, 0}));
  EXPECT_EQ(Bytes(file.begin() + 46, file.begin() + 50), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(file.size(), 54U + 16);
}

TEST_F(BmpWriter, WritesTheNumbersOfARectangleWithoutPixelsAndNoRows) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, false);
  const struct {
    int32_t width, height;
    Bytes words;
  } cases[] = {
      {5, 0, {5, 0, 0, 0, 0, 0, 0, 0}},
      {0, 2, {0, 0, 0, 0, 2, 0, 0, 0}},
      {-1, 2, {0xFF, 0xFF, 0xFF, 0xFF, 2, 0, 0, 0}},
      {5, -2, {5, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}},
  };
  for (const int32_t device : {101, -101}) {
    for (const int32_t height : {2, -2}) {
      for (const auto &[w, h, words] : cases) {
        set_clip(0, 0, w, h);
        WriterCall call = call_for(picture);
        call.device = device;
        call.height = height;
        call.colours = 3;
        const Bytes file = file_bytes(write_bmp, call);
        EXPECT_EQ(file.size(), device < 0 ? 54U : 54U + 4 * 3) << w << " by " << h;
        EXPECT_EQ(Bytes(file.begin() + 18, file.begin() + 26), words);
        EXPECT_EQ(Bytes(file.begin() + 34, file.begin() + 38), Bytes(4, 0));
      }
    }
  }
}

TEST_F(BmpWriter, FillsAComputedTableWithBlack) {
  const DrawnPicture picture = five_by_two();
  show_on_raster(picture, true);
  WriterCall call = call_for(picture);
  call.height = -2;
  for (const int32_t colours : {256, 300}) {
    call.colours = colours;
    const Bytes file = file_bytes(write_bmp, call);
    ASSERT_EQ(file.size(), 54U + 4 * static_cast<size_t>(colours) + 16);
    const size_t behind = 54 + 4 * 3;
    EXPECT_EQ(Bytes(file.begin() + behind, file.end() - 16),
              Bytes(4 * static_cast<size_t>(colours) - 12, 0));
  }
}

TEST_F(BmpWriter, WritesTheBytesOfTheLiteralFile) {
  const int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {8, 2}, {9, 3}, {66, 33}, {303, 150}};
  uint32_t seed = 0;
  for (const auto &[width, height] : sizes) {
    const DrawnPicture picture = plot_picture(width, height, ++seed);
    for (int flags = 0; flags < 32; ++flags) {
      show_on_raster(picture, (flags & 1) != 0);
      WriterCall call = call_for(picture);
      if ((flags & 2) != 0) call.device = -101;
      if ((flags & 4) != 0) call.width = -width;
      if ((flags & 8) != 0) call.height = -height;
      if ((flags & 16) != 0) call.order = 0;
      EXPECT_EQ(file_bytes(write_bmp, call), literal_bmp(call, whole_area(picture)))
          << width << " by " << height << ", " << flags;
    }
  }
}

TEST_F(BmpWriter, ComputesAPaletteOfAPhotograph) {
  const DrawnPicture photo = photo_picture(121, 90, 4);
  show_on_raster(photo, true);
  WriterCall call = call_for(photo);
  call.height = -90;
  EXPECT_EQ(file_bytes(write_bmp, call), literal_bmp(call, whole_area(photo)));
}

}  // namespace
}  // namespace quorix::testing
