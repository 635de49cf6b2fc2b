// SPDX-License-Identifier: MIT
//
// Pictures in memory: what qqpiwin, qqpiscl and qqpgrow do with them.
#include <algorithm>
#include <array>

#include "quorix/raster.h"
#include "tests/imagein/bmp_files.h"
#include "tests/imagein/expected_picture.h"
#include "tests/imagein/png_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/imagein/twin_pages.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

class HeldPicture : public ReaderTest {};

// Holds a picture of that size, with alpha or without, and returns what must be held.
literal::Picture hold(int32_t width, int32_t height, bool alpha, uint32_t seed,
                      const Place &place = {}) {
  const PngPicture picture = random_png(alpha ? 6 : 2, 8, width, height, seed);
  EXPECT_EQ(read_picture(Format::png, png_file(picture), store_number, place), 0);
  literal::Picture held = stored_picture(expect_png(picture));
  held.device_width = place.device_width;
  held.device_height = place.device_height;
  return held;
}

// Shows the held picture and the literal one at that size and place.
void check_scaled(const literal::Picture &picture, bool rgba, int32_t width, int32_t height,
                  int32_t x, int32_t y) {
  TwinPages pages(rgba, 31, 27);
  EXPECT_EQ(scale_picture(raster_number, width, height, x, y), 0);
  literal::show_scaled(pages.literal, picture, width, height, x, y);
  EXPECT_TRUE(pages.alike()) << picture.width << " by " << picture.height << " as " << width
                             << " by " << height << " at " << x << ", " << y
                             << (picture.has_alpha ? ", with alpha" : "");
  EXPECT_TRUE(nothing_is_held());
}

TEST_F(HeldPicture, OfTheSameSizeIsShownAsItIs) {
  for (const bool rgba : {false, true}) {
    for (const bool alpha : {false, true}) {
      const literal::Picture picture = hold(9, 7, alpha, 3);
      check_scaled(picture, rgba, 9, 7, 4, 5);
    }
  }
}

TEST_F(HeldPicture, ScaledFrom2By2To3By3HasTheMeanInItsCentre) {
  // Reds 10 20 30 41: mean 25.25; greens 0 0 0 255: 63.75; blues 1 2 2 2: 1.75; all truncated.
  PngPicture picture;
  picture.width = picture.height = 2;
  picture.samples = {10, 0, 1, 20, 0, 2, 30, 0, 2, 41, 255, 2};
  ASSERT_EQ(read_picture(Format::png, png_file(picture), store_number), 0);
  TwinPages pages(true, 10, 10);
  // A row keeps the old length of 2, so the centre is the second pixel of the second row.
  ASSERT_EQ(scale_picture(raster_number, 3, 3, 0, 0), 0);
  std::array<uint8_t, 6> row;
  qqvrdr(row.data(), 0, 1, -2, 1);
  EXPECT_EQ(row, (std::array<uint8_t, 6>{20, 0, 1, 25, 63, 1}));
}

TEST_F(HeldPicture, MadeWiderShowsItsFirstColumns) {
  PngPicture picture;
  picture.type = 0;
  picture.width = 2;
  picture.height = 1;
  picture.samples = {0, 100};
  ASSERT_EQ(read_picture(Format::png, png_file(picture), store_number), 0);
  TwinPages pages(true, 10, 10);
  ASSERT_EQ(scale_picture(raster_number, 5, 1, 0, 0), 0);  // 0 25 50 75 100
  std::array<uint8_t, 9> row;
  qqvrdr(row.data(), 0, 0, -3, 1);
  EXPECT_EQ(row[3], 25);
  EXPECT_EQ(row[6], pages.literal.pixels[8]);  // the third pixel stays as it was
}

TEST_F(HeldPicture, MadeNarrowerRunsOnIntoTheNextRow) {
  PngPicture picture;
  picture.type = 0;
  picture.width = 3;
  picture.height = 2;
  picture.samples = {10, 20, 30, 40, 50, 60};
  ASSERT_EQ(read_picture(Format::png, png_file(picture), store_number), 0);
  const TwinPages pages(true, 10, 10);
  ASSERT_EQ(scale_picture(raster_number, 2, 2, 0, 0), 0);  // 10 30 / 40 60
  std::array<uint8_t, 9> row;
  qqvrdr(row.data(), 0, 0, -3, 1);
  EXPECT_EQ(row[0], 10);
  EXPECT_EQ(row[3], 30);
  EXPECT_EQ(row[6], 40);  // the next row's first
  qqvrdr(row.data(), 0, 1, -3, 1);
  EXPECT_EQ(row[3], 60);
  EXPECT_EQ(row[6], 0);  // and nothing behind the last
}

TEST_F(HeldPicture, ConstantMayLoseAUnitByTruncation) {
  // kept: weights that do not add up to 1 exactly turn 255 into 254.
  PngPicture picture;
  picture.type = 0;
  picture.width = picture.height = 20;
  picture.samples.assign(400, 255);
  ASSERT_EQ(read_picture(Format::png, png_file(picture), store_number), 0);
  const literal::Picture scaled = literal::scale(stored_picture(expect_png(picture)), 31, 27);
  EXPECT_GT(std::count(scaled.rgb.begin(), scaled.rgb.end(), 254), 0);
  check_scaled(stored_picture(expect_png(picture)), true, 31, 27, 0, 0);
}

TEST_F(HeldPicture, ScalesToAndFromOneRowOrColumn) {
  const int32_t sizes[] = {1, 2, 3, 7};
  uint32_t seed = 1;
  for (const int32_t width : sizes) {
    for (const int32_t height : sizes) {
      for (const int32_t to_width : sizes) {
        for (const int32_t to_height : sizes) {
          ++seed;
          const literal::Picture picture = hold(width, height, seed % 2 == 0, seed);
          check_scaled(picture, true, to_width, to_height, 3, 2);
        }
      }
    }
  }
}

TEST_F(HeldPicture, ScaledAtRandomHasTheBitsOfThePlainLoop) {
  for (uint32_t seed = 0; seed < 400; ++seed) {
    RandomNumbers random(seed);
    const Place limits = {0, 0, random.between(1, 40), random.between(1, 35)};
    const literal::Picture picture =
        hold(random.between(1, 24), random.between(1, 20), random.below(2) == 1, seed, limits);
    check_scaled(picture, random.below(4) != 0, random.between(1, 45), random.between(1, 40),
                 random.between(-12, 33), random.between(-12, 29));
  }
}

TEST_F(HeldPicture, ScaledFarUpAndDownHasTheBitsOfThePlainLoop) {
  const int32_t sizes[][4] = {
      {300, 200, 29, 17}, {7, 5, 31, 500}, {640, 3, 64, 2}, {2, 2, 700, 27}, {255, 256, 17, 256}};
  for (const auto &size : sizes) {
    for (const bool alpha : {false, true}) {
      const literal::Picture picture = hold(size[0], size[1], alpha, 9);
      check_scaled(picture, true, size[2], size[3], 0, -1);
    }
  }
}

TEST_F(HeldPicture, IsCutAtTheDeviceSizeThatItsReaderGot) {
  for (const bool rgba : {false, true}) {
    const literal::Picture picture = hold(9, 7, true, 3, {0, 0, 8, 6});
    check_scaled(picture, rgba, 9, 7, 2, 1);
    const literal::Picture cropped = hold(9, 7, true, 3, {0, 0, 8, 6});
    ASSERT_EQ(crop_picture(1, 1, 7, 5), 0);
    check_scaled(literal::crop(cropped, 1, 1, 7, 5), rgba, 12, 9, 2, 1);
  }
}

TEST_F(HeldPicture, GoesNowhereWhereTheDeviceHasNoSize) {
  for (const int32_t size : {0, -1, INT32_MIN}) {
    const literal::Picture picture = hold(9, 7, true, 3, {0, 0, size, 6});
    check_scaled(picture, true, 9, 7, -2, 1);
    const literal::Picture flat = hold(9, 7, false, 3, {0, 0, 6, size});
    check_scaled(flat, true, 4, 4, -2, 1);
  }
}

TEST_F(HeldPicture, MayBePutFarAway) {
  const int32_t places[] = {INT32_MIN, INT32_MIN + 3, -1000000, -9,
                            1000000,   INT32_MAX - 2, INT32_MAX};
  for (const int32_t x : places) {
    for (const int32_t y : places) {
      TwinPages pages(true, 12, 10);
      hold(9, 7, x != y, 3);
      EXPECT_EQ(scale_picture(raster_number, 9, 7, x, y), 0);
      EXPECT_TRUE(pages.alike()) << x << ", " << y;
      hold(9, 7, x == y, 3);
      EXPECT_EQ(scale_picture(raster_number, 5, 5, x, y), 0);
      EXPECT_TRUE(pages.alike()) << x << ", " << y;
    }
  }
}

TEST_F(HeldPicture, IsGivenBackByEveryShow) {
  for (const int32_t device : {raster_number, store_number, window_number}) {
    for (const int32_t size : {5, 3, 0, -1}) {
      const FailingMemory memory;
      hold(5, 5, true, 2);
      const int32_t status = scale_picture(device, size, 5);
      if (size <= 0 && device != window_number) {
        EXPECT_EQ(status, -2) << device << ", " << size;
      }
      EXPECT_TRUE(nothing_is_held());
      EXPECT_EQ(memory.live_blocks(), 0U);
    }
  }
}

TEST_F(HeldPicture, ForDevice0IsOnlyGivenBack) {
  const TwinPages pages(true, 12, 10);
  for (const int32_t size : {5, 3, 12}) {
    hold(5, 5, true, 2);
    EXPECT_EQ(scale_picture(store_number, size, 5), 0);
    EXPECT_TRUE(nothing_is_held());
    EXPECT_TRUE(pages.alike());
  }
}

TEST_F(HeldPicture, ThatIsNotThereIsAnError) {
  EXPECT_EQ(scale_picture(raster_number, 5, 5), -3);
  EXPECT_EQ(scale_picture(store_number, 5, 5), -3);
  int32_t result = 0;
  EXPECT_EQ(crop_picture(0, 0, 1, 1, &result), -3);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(picture_row(0, 0, 2), Bytes(6, 0xEE));  // untouched
  release_picture();                                // and this does nothing
}

TEST_F(HeldPicture, OfADifferentFileTakesThePlaceOfTheFirst) {
  const FailingMemory memory;
  hold(9, 7, true, 1);
  const literal::Picture second = hold(4, 3, false, 2);
  EXPECT_TRUE(is_held(second));
  release_picture();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

// ---- rows

TEST_F(HeldPicture, HandsOutPartsOfRows) {
  const literal::Picture picture = hold(9, 7, false, 4);
  const Bytes row = picture_row(2, 3, 5);
  const auto start = picture.rgb.begin() + 3 * (3 * 9 + 2);
  EXPECT_EQ(row, Bytes(start, start + 15));
  EXPECT_EQ(picture_row(2, 3, 0), Bytes());
}

TEST_F(HeldPicture, HandsOutZerosOutside) {
  const literal::Picture picture = hold(4, 3, false, 4);
  const Bytes middle(picture.rgb.begin() + 12, picture.rgb.begin() + 24);
  Bytes expected(6, 0);
  put_bytes(&expected, middle);
  put_bytes(&expected, Bytes(9, 0));
  EXPECT_EQ(picture_row(-2, 1, 9), expected);
  for (const int32_t y : {-1, 3, INT32_MIN, INT32_MAX})
    EXPECT_EQ(picture_row(0, y, 4), Bytes(12, 0)) << y;
  for (const int32_t x : {4, -5, INT32_MIN, INT32_MAX})
    EXPECT_EQ(picture_row(x, 1, 4), Bytes(12, 0)) << x;
  EXPECT_EQ(picture_row(0, 0, -7), Bytes());  // and any other negative number gives nothing
}

// ---- crop

TEST_F(HeldPicture, CropsToARectangle) {
  for (const bool alpha : {false, true}) {
    for (const auto &[x, y, w, h] : {std::array{0, 0, 9, 7}, std::array{2, 1, 4, 5},
                                     std::array{8, 6, 1, 1}, std::array{0, 3, 9, 1}}) {
      const literal::Picture picture = hold(9, 7, alpha, 5);
      int32_t result = 9;
      ASSERT_EQ(crop_picture(x, y, w, h, &result), 0);
      EXPECT_EQ(result, 0);
      const literal::Picture part = literal::crop(picture, x, y, w, h);
      EXPECT_TRUE(is_held(part));
      check_scaled(part, true, w, h, 3, 3);  // with the alpha that belongs there
    }
  }
}

TEST_F(HeldPicture, MayBeCroppedAgainAndAgain) {
  literal::Picture picture = hold(20, 16, true, 5);
  for (int i = 0; i < 6; ++i) {
    const int32_t w = picture.width - 2;
    const int32_t h = picture.height - 1;
    ASSERT_EQ(crop_picture(1, i % 2, w, h), 0);
    picture = literal::crop(picture, 1, i % 2, w, h);
    EXPECT_TRUE(is_held(picture));
  }
  check_scaled(picture, false, 11, 9, 2, 2);
}

TEST_F(HeldPicture, StaysWhereTheRectangleReachesOutside) {
  const literal::Picture picture = hold(9, 7, true, 6);
  const int32_t most = INT32_MAX;
  const int32_t least = INT32_MIN;
  const std::array<int32_t, 4> rectangles[] = {
      {-1, 0, 5, 5},       {0, -1, 5, 5},    {9, 0, 0, 5},        {0, 7, 5, 0},
      {0, 0, 10, 7},       {0, 0, 9, 8},     {5, 0, 5, 5},        {0, 3, 5, 5},
      {0, 0, -1, 5},       {0, 0, 5, -1},    {2, 2, most, 1},     {2, 2, 1, most},
      {least, 0, most, 1}, {0, 0, least, 1}, {8, 6, least, least}};
  for (const auto &[x, y, w, h] : rectangles) {
    int32_t result = 0;
    EXPECT_EQ(crop_picture(x, y, w, h, &result), -3) << x << " " << y << " " << w << " " << h;
    EXPECT_EQ(result, 1);
  }
  EXPECT_TRUE(is_held(picture));
}

TEST_F(HeldPicture, CroppedToNoPixelsIsAPictureAllTheSame) {
  for (const auto &[w, h] : {std::array{0, 5}, std::array{5, 0}, std::array{0, 0}}) {
    const FailingMemory memory;
    hold(9, 7, true, 6);
    ASSERT_EQ(crop_picture(2, 2, w, h), 0);
    EXPECT_GT(memory.live_blocks(), 0U);
    EXPECT_EQ(crop_picture(0, 0, 1, 1), -3);
    release_picture();
    EXPECT_EQ(memory.live_blocks(), 0U);
  }
}

TEST_F(HeldPicture, WithoutPixelsShowsNothing) {
  for (const auto &[w, h] : {std::array{0, 5}, std::array{5, 0}, std::array{0, 0}}) {
    const TwinPages pages(true, 12, 10);
    hold(9, 7, true, 6);
    ASSERT_EQ(crop_picture(2, 2, w, h), 0);
    EXPECT_EQ(scale_picture(raster_number, 4, 3), 0);
    EXPECT_TRUE(pages.alike());
    EXPECT_TRUE(nothing_is_held());
  }
}

TEST_F(HeldPicture, StaysWhereACropGetsNoMemory) {
  const literal::Picture picture = hold(9, 7, true, 6);
  size_t n = 1;
  for (;; ++n) {
    const FailingMemory memory(n);
    int32_t result = 0;
    const int32_t status = crop_picture(1, 1, 3, 3, &result);
    if (!memory.failed()) break;
    EXPECT_EQ(status, -2);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_TRUE(is_held(picture));
  }
  EXPECT_GT(n, 1U);
  EXPECT_TRUE(is_held(literal::crop(picture, 1, 1, 3, 3)));
}

TEST_F(HeldPicture, IsGivenBackWhereAShowGetsNoMemory) {
  for (const int32_t size : {9, 12, 4}) {
    for (const bool alpha : {false, true}) {
      size_t n = 1;
      for (;; ++n) {
        hold(9, 7, alpha, 6);
        TwinPages pages(true, 20, 20);
        const FailingMemory memory(n);
        const int32_t status = scale_picture(raster_number, size, size - 2);
        EXPECT_TRUE(nothing_is_held());
        EXPECT_EQ(memory.live_blocks(), 0U);
        if (!memory.failed()) {
          EXPECT_EQ(status, 0);
          break;
        }
        EXPECT_EQ(status, -2) << n;
      }
      if (size != 9) {
        EXPECT_GT(n, 1U);
      }
    }
  }
}

TEST_F(HeldPicture, OfAFailedReadingIsNotHeld) {
  EXPECT_EQ(read_picture(Format::bmp, bmp_file({4, 4, 24, 1, 0, 0}, {}, {}), store_number), -3);
  EXPECT_TRUE(nothing_is_held());
}

}  // namespace
}  // namespace quorix::testing
