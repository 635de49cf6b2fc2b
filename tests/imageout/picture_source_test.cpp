// SPDX-License-Identifier: MIT
//
// What all writers share: the rectangle, the device, and how pixels travel.
#include <gtest/gtest.h>

#include "imageout/imageout.h"
#include "quorix/imageout.h"
#include "quorix/raster.h"
#include "tests/imageout/writer_calls.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class PictureSourceTest : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }
};

TEST_F(PictureSourceTest, TheAreaIsThePictureWithoutTheSignsOfItsSize) {
  const PictureArea area = picture_area(-40, -30);
  EXPECT_EQ(area.x, 0);
  EXPECT_EQ(area.y, 0);
  EXPECT_EQ(area.width, 40);
  EXPECT_EQ(area.height, 30);
}

TEST_F(PictureSourceTest, TheAreaIsTheClipAsItStandsWhileThatIsEnabled) {
  set_clip(-7, 9, -3, 5);
  const PictureArea area = picture_area(-40, 30);
  EXPECT_EQ(area.x, -7);
  EXPECT_EQ(area.y, 9);
  EXPECT_EQ(area.width, -3);
  EXPECT_EQ(area.height, 5);
}

TEST_F(PictureSourceTest, AnyEnabledOtherThanZeroSetsTheClipAndZeroEndsIt) {
  const int32_t five = 5;
  for (const int32_t enabled : {1, -1, 256}) {
    qqpclp(&five, &five, &five, &five, &enabled);
    EXPECT_EQ(picture_area(40, 30).width, 5) << enabled;
  }
  const int32_t zero = 0;
  qqpclp(&five, &five, &five, &five, &zero);
  EXPECT_EQ(picture_area(40, 30).width, 40);
}

TEST_F(PictureSourceTest, TheSmallestIntegerIsASizeToo) {
  EXPECT_EQ(picture_area(INT32_MIN, INT32_MIN).width, int64_t{1} << 31);
  EXPECT_EQ(picture_area(INT32_MIN, INT32_MIN).height, int64_t{1} << 31);
}

TEST_F(PictureSourceTest, ANegativeDeviceIsTrueColourAndANegativeHeightAsksForAPalette) {
  EXPECT_EQ(pixel_path(-101, 10), PixelPath::true_colour);
  EXPECT_EQ(pixel_path(-101, -10), PixelPath::true_colour);
  EXPECT_EQ(pixel_path(101, 10), PixelPath::indexed);
  EXPECT_EQ(pixel_path(101, -10), PixelPath::quantised);
}

TEST_F(PictureSourceTest, TheSizeOfAPictureIsCheckedBeforeItIsMultiplied) {
  PictureSource source = {};
  size_t bytes = 1;
  source.area = {0, 0, 0, 100};
  EXPECT_TRUE(picture_bytes(source, Samples::rgb, &bytes));
  EXPECT_EQ(bytes, 0U);
  source.area = {0, 0, 7, 100};
  EXPECT_TRUE(picture_bytes(source, Samples::rgb, &bytes));
  EXPECT_EQ(bytes, 2100U);
  EXPECT_TRUE(picture_bytes(source, Samples::index, &bytes));
  EXPECT_EQ(bytes, 700U);
  source.area = {0, 0, int64_t{1} << 31, 1};  // no device counts so far
  EXPECT_FALSE(picture_bytes(source, Samples::index, &bytes));
}

TEST_F(PictureSourceTest, NumbersAbove100MeanTheRasterAndOthersTheWindow) {
  const DrawnPicture on_raster = plot_picture(12, 9, 1);
  const DrawnPicture on_window = plot_picture(12, 9, 2);
  show_on_raster(on_raster, true);
  const FakeWindow window(on_window);
  const auto pixels = [](int32_t device) {
    Bytes file = ppm_bytes(device, 12, 9);
    file.erase(file.begin(), file.begin() + 12);  // "P6\n12 9\n255\n"
    return file;
  };
  for (const int32_t device : {101, -101, 221, INT32_MAX, INT32_MIN})
    EXPECT_EQ(pixels(device), on_raster.rgb) << device;
  for (const int32_t device : {100, -100, 72, -80, 0})
    EXPECT_EQ(pixels(device), on_window.rgb) << device;
}

TEST_F(PictureSourceTest, SamplesAreAskedForAsThePathHasThem) {
  const DrawnPicture picture = plot_picture(20, 10, 3);
  show_on_raster(picture, false);  // makes the record that a window needs as well
  struct Case {
    int32_t device, height;
    bool rgb;
  };
  for (const Case &c :
       {Case{-100, 10, true}, Case{-100, -10, true}, Case{100, 10, false}, Case{100, -10, true}}) {
    const FakeWindow window(picture);
    png_bytes({c.device, 1, 20, c.height, picture.palette.data(), 256});
    EXPECT_EQ(window.rgb_reads() > 0, c.rgb) << c.device << " " << c.height;
    EXPECT_EQ(window.index_reads() > 0, !c.rgb) << c.device << " " << c.height;
  }
}

TEST_F(PictureSourceTest, WithoutARecordNoFileIsTouched) {
  MemoryFiles files;
  files.put("old", {1, 2, 3});
  EXPECT_EQ(write_ppm("old", raster_number, 4, 4), -1);
  EXPECT_EQ(write_png({-raster_number, 1, 4, 4, nullptr, 256}, "old"), -1);
  EXPECT_EQ(write_png({window_number, 1, 4, 4, nullptr, 256}, "new"), -1);
  EXPECT_EQ(files.bytes("old"), (Bytes{1, 2, 3}));
  EXPECT_FALSE(files.exists("new"));
}

TEST_F(PictureSourceTest, WithoutADeviceOfThatNumberNoFileIsTouched) {
  show_on_raster(plot_picture(4, 4, 1), false);
  MemoryFiles files;
  files.put("old", {1, 2, 3});
  EXPECT_EQ(write_ppm("old", window_number, 4, 4), -9);
  EXPECT_EQ(write_png({-window_number, 1, 4, 4, nullptr, 256}, "old"), -9);
  EXPECT_EQ(write_png({window_number, 1, 4, 4, nullptr, 256}, ""), -9);
  EXPECT_EQ(files.bytes("old"), (Bytes{1, 2, 3}));
}

TEST_F(PictureSourceTest, InMemoryAMissingRecordOrDeviceIsACountOfZero) {
  Bytes memory(1000, 7);
  EXPECT_EQ(write_png_to_memory({-raster_number, 1, 4, 4, nullptr, 256}, &memory, 1000), 0);
  show_on_raster(plot_picture(4, 4, 1), false);
  EXPECT_EQ(write_png_to_memory({-window_number, 1, 4, 4, nullptr, 256}, &memory, 1000), 0);
  EXPECT_EQ(write_png_to_memory({-window_number, 1, 4, 4, nullptr, 256}, nullptr, 0), 0);
  EXPECT_EQ(memory, Bytes(1000, 7));
}

}  // namespace
}  // namespace quorix::testing
