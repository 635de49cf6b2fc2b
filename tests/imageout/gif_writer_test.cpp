// SPDX-License-Identifier: MIT
//
// GIF files worked out on paper, and against the literal encoder.
#include <gtest/gtest.h>

#include "tests/imageout/random_numbers.h"
#include "tests/imageout/writer_calls.h"

namespace quorix::testing {
namespace {

constexpr size_t table_start = 13;
constexpr size_t table_end = table_start + 768;
constexpr size_t descriptor_bytes = 10;

class GifWriter : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }

  WriterCall indexed(int32_t width, int32_t height) const {
    WriterCall call;
    call.width = width;
    call.height = height;
    call.palette = words_.data();
    return call;
  }

  const PaletteWords words_ = make_palette(5);
};

DrawnPicture picture_of(int32_t width, int32_t height, Bytes indices) {
  DrawnPicture picture = {width, height, make_palette(5), std::move(indices), {}};
  for (const uint8_t index : picture.indices)
    for (const int shift : {16, 8, 0})
      picture.rgb.push_back(static_cast<uint8_t>(picture.palette[index] >> shift & 255));
  return picture;
}

TEST_F(GifWriter, WritesOnePixelAsThreeCodesOfNineBits) {
  show_on_raster(picture_of(1, 1, {5}), false);
  WriterCall call = indexed(1, 1);
  call.background = 7;
  const Bytes file = file_bytes(write_gif, call);
  // clang-format off
  const Bytes start = {
      'G', 'I', 'F', '8', '7', 'a',
      1, 0, 1, 0,  // sizes of the screen
      0xF7, 7, 0,  // a table of 256 colours, the background, no aspect ratio
  };
  // clang-format on
  EXPECT_EQ(Bytes(file.begin(), file.begin() + table_start), start);
  // 256, 5, 257 with the low bit first: 0000 0000|1 1010 000|00 1000 000|01 and the rest of a byte.
  // clang-format off
  const Bytes rest = {
      0x2C, 0, 0, 0, 0, 1, 0, 1, 0, 0,  // the picture: left, top, sizes, no table of its own
      8, 4, 0x00, 0x0B, 0x04, 0x04,     // the minimum size of codes, and four bytes of them
      0, 0x3B,
  };
  // clang-format on
  EXPECT_EQ(Bytes(file.begin() + table_end, file.end()), rest);
}

TEST_F(GifWriter, WritesTheCallersPaletteAsTriples) {
  show_on_raster(picture_of(2, 2, {1, 2, 3, 4}), false);
  const Bytes file = file_bytes(write_gif, indexed(2, 2));
  for (size_t i = 0; i < 256; ++i) {
    EXPECT_EQ(file[table_start + 3 * i], words_[i] >> 16 & 255);
    EXPECT_EQ(file[table_start + 3 * i + 1], words_[i] >> 8 & 255);
    EXPECT_EQ(file[table_start + 3 * i + 2], words_[i] & 255);
  }
}

TEST_F(GifWriter, SaysWhichColourIsTransparent) {
  show_on_raster(picture_of(1, 1, {5}), false);
  WriterCall call = indexed(1, 1);
  call.background = 200;
  for (const int32_t none : {0, 2, -1}) {
    call.transparent = none;
    const Bytes file = file_bytes(write_gif, call);
    EXPECT_EQ(file[4], '7');
    EXPECT_EQ(file[table_end], 0x2C);
  }
  call.transparent = 1;
  const Bytes file = file_bytes(write_gif, call);
  EXPECT_EQ(file[4], '9');
  EXPECT_EQ(file[11], 200);
  const Bytes extension = {0x21, 0xF9, 4, 1, 0, 0, 200, 0, 0x2C};
  EXPECT_EQ(Bytes(file.begin() + table_end, file.begin() + table_end + 9), extension);
}

TEST_F(GifWriter, TurnsTheFourWordsOfItsSizeAndNoOthers) {
  show_on_raster(plot_picture(300, 2, 1), false);
  WriterCall call = indexed(300, 2);
  const Bytes plain = file_bytes(write_gif, call);
  call.order = 0;
  const Bytes turned = file_bytes(write_gif, call);
  ASSERT_EQ(plain.size(), turned.size());
  Bytes expected = plain;
  for (const size_t word : {size_t{6}, size_t{8}, table_end + 5, table_end + 7})
    std::swap(expected[word], expected[word + 1]);
  EXPECT_EQ(turned, expected);
  EXPECT_EQ(turned[6], 1);  // 300 is 0x012C
  EXPECT_EQ(turned[7], 0x2C);
}

TEST_F(GifWriter, WritesNothingButClearAndEndForAnEmptyPicture) {
  show_on_raster(picture_of(1, 1, {5}), false);
  set_clip(0, 0, 0, 0);
  const Bytes file = file_bytes(write_gif, indexed(1, 1));
  // 256 and 257 of nine bits each.
  // clang-format off
  const Bytes rest = {
      0x2C, 0, 0, 0, 0, 0, 0, 0, 0, 0,
      8, 3, 0x00, 0x03, 0x02,
      0, 0x3B,
  };
  // clang-format on
  EXPECT_EQ(Bytes(file.begin() + table_end, file.end()), rest);
}

TEST_F(GifWriter, WritesTheBytesOfTheLiteralEncoder) {
  const int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {2, 2}, {15, 15}, {64, 3}, {301, 299}};
  uint32_t seed = 0;
  for (const auto &[width, height] : sizes) {
    const DrawnPicture plot = plot_picture(width, height, ++seed);
    for (const bool rgba : {false, true}) {
      show_on_raster(plot, rgba);
      for (const int32_t device : {101, -101}) {
        for (const int32_t sign : {1, -1}) {
          // Colours of an RGBA page become indices only through its own palette.
          WriterCall call = indexed(width, sign * height);
          call.device = device;
          call.palette = plot.palette.data();
          EXPECT_EQ(file_bytes(write_gif, call), literal_gif(call, whole_area(plot)))
              << width << " by " << height << " rgba " << rgba << " " << device << " " << sign;
        }
      }
    }
  }
}

TEST_F(GifWriter, ComputesAPaletteForAWindowOfTrueColours) {
  const DrawnPicture photo = photo_picture(60, 40, 3);
  show_on_raster(picture_of(1, 1, {0}), false);  // for the drawing record
  const FakeWindow window(photo);
  for (const int32_t device : {100, -100, 1}) {
    WriterCall call = indexed(60, -40);
    call.device = device;
    EXPECT_EQ(file_bytes(write_gif, call), literal_gif(call, whole_area(photo))) << device;
  }
  EXPECT_EQ(window.index_reads(), 0);
  const DrawnPicture plot = plot_picture(60, 40, 3);
  const FakeWindow indices(plot);
  for (const int32_t device : {100, -100}) {
    WriterCall call = indexed(60, 40);
    call.device = device;
    EXPECT_EQ(file_bytes(write_gif, call), literal_gif(call, whole_area(plot))) << device;
  }
  EXPECT_EQ(indices.rgb_reads(), 0);
}

TEST_F(GifWriter, StartsItsTableAnewWhenTheCodesAreUsedUp) {
  // Flat, random and repeating pixels: all lengths of codes, and tables used up several times.
  RandomNumbers random(11);
  for (const uint32_t colours : {1U, 2U, 5U, 256U}) {
    Bytes indices(400 * 300);
    for (uint8_t &index : indices)
      index = static_cast<uint8_t>(random.below(colours));
    const DrawnPicture picture = picture_of(400, 300, indices);
    show_on_raster(picture, false);
    const WriterCall call = indexed(400, 300);
    EXPECT_EQ(file_bytes(write_gif, call), literal_gif(call, whole_area(picture))) << colours;
  }
}

// The encoder gathers 256 full blocks of 255 bytes; its last bytes may be those that fill them up.
TEST_F(GifWriter, EndsWhereverItsGatheredBlocksAreFull) {
  RandomNumbers random(12);
  Bytes noise(60000);
  for (uint8_t &index : noise)
    index = static_cast<uint8_t>(random.below(256));
  const auto file_of = [&](int32_t width) {
    const Bytes row(noise.begin(), noise.begin() + width);
    return literal_gif(indexed(width, 1), whole_area(picture_of(width, 1, row)));
  };
  const size_t full = table_end + descriptor_bytes + 1 + 256 * 256 + 2;
  int32_t below = 1, above = static_cast<int32_t>(noise.size());
  ASSERT_LE(file_of(below).size(), full);
  ASSERT_GT(file_of(above).size(), full);
  while (above - below > 1) {
    const int32_t middle = below + (above - below) / 2;
    (file_of(middle).size() <= full ? below : above) = middle;
  }
  for (int32_t width = below - 6; width <= above + 6; ++width) {
    const Bytes row(noise.begin(), noise.begin() + width);
    show_on_raster(picture_of(width, 1, row), false);
    EXPECT_EQ(file_bytes(write_gif, indexed(width, 1)), file_of(width)) << width;
  }
}

// 3,837 strings of 1, 2, 3 ... pixels take 7,363,203 pixels; one more writes the clear code.
TEST_F(GifWriter, ClearsItsTableInALongFlatPicture) {
  const int32_t side = 2720;
  const DrawnPicture picture =
      picture_of(side, side, Bytes(static_cast<size_t>(side) * static_cast<size_t>(side), 9));
  show_on_raster(picture, false);
  const WriterCall call = indexed(side, side);
  const Bytes file = file_bytes(write_gif, call);
  EXPECT_EQ(file, literal_gif(call, whole_area(picture)));
  EXPECT_GT(file.size(), table_end + descriptor_bytes + 3837 * 9 / 8);
}

}  // namespace
}  // namespace quorix::testing
