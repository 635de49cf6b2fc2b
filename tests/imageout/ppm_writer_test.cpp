// SPDX-License-Identifier: MIT
//
// qqpppm against what the test drew.
#include <gtest/gtest.h>

#include <string>

#include "quorix/raster.h"
#include "tests/imageout/random_numbers.h"
#include "tests/imageout/writer_calls.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

Bytes bytes_of(const std::string &text) {
  return Bytes(text.begin(), text.end());
}

// What the file must hold: this header, then these pixels.
Bytes ppm(const std::string &header, const Bytes &rgb) {
  Bytes file = bytes_of(header);
  file.insert(file.end(), rgb.begin(), rgb.end());
  return file;
}

class PpmWriter : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }
};

TEST_F(PpmWriter, WritesHeaderAndPixelsOfAnRgbaRaster) {
  const DrawnPicture picture = photo_picture(40, 30, 1);
  show_on_raster(picture, true);
  EXPECT_EQ(ppm_bytes(raster_number, 40, 30), ppm("P6\n40 30\n255\n", picture.rgb));
}

TEST_F(PpmWriter, WritesTheColoursOfAPaletteRasterAndNotItsIndices) {
  const DrawnPicture picture = plot_picture(40, 30, 1);
  show_on_raster(picture, false);
  EXPECT_EQ(ppm_bytes(raster_number, 40, 30), ppm("P6\n40 30\n255\n", picture.rgb));
}

TEST_F(PpmWriter, TakesNoNoticeOfSigns) {
  const DrawnPicture picture = plot_picture(40, 30, 2);
  show_on_raster(picture, false);
  const Bytes expected = ppm("P6\n40 30\n255\n", picture.rgb);
  for (const int32_t device : {101, -101})
    for (const int32_t width : {40, -40})
      for (const int32_t height : {30, -30})
        EXPECT_EQ(ppm_bytes(device, width, height), expected);
}

TEST_F(PpmWriter, WritesPicturesOfAwkwardSizes) {
  const int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {15, 15}, {16, 15}, {301, 301}, {1920, 1080}};
  for (const auto &[width, height] : sizes) {
    const DrawnPicture picture = plot_picture(width, height, 3);
    const std::string header =
        "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    for (const bool rgba : {false, true}) {
      show_on_raster(picture, rgba);
      ASSERT_EQ(ppm_bytes(raster_number, width, height), ppm(header, picture.rgb)) << header;
    }
  }
}

TEST_F(PpmWriter, WritesTheClipWhateverSizeTheCallHas) {
  const DrawnPicture picture = plot_picture(40, 30, 4);
  show_on_raster(picture, true);
  set_clip(3, 20, 10, 5);
  EXPECT_EQ(ppm_bytes(raster_number, 1000, -7),
            ppm("P6\n10 5\n255\n", picture.rgb_area(3, 20, 10, 5)));
  end_clip();
  EXPECT_EQ(ppm_bytes(raster_number, 40, 30), ppm("P6\n40 30\n255\n", picture.rgb));
}

TEST_F(PpmWriter, WritesZeroesWhereTheClipReachesPastThePicture) {
  const DrawnPicture picture = plot_picture(40, 30, 5);
  const int32_t areas[][2] = {{-4, -3},      {36, 26}, {-4, 26},        {36, -3},
                              {40, 0},       {0, 30},  {-8, INT32_MAX}, {INT32_MAX, INT32_MAX},
                              {INT32_MIN, 5}};
  for (const bool rgba : {false, true}) {
    show_on_raster(picture, rgba);
    for (const auto &[x, y] : areas) {
      set_clip(x, y, 8, 6);
      EXPECT_EQ(ppm_bytes(raster_number, 40, 30),
                ppm("P6\n8 6\n255\n", picture.rgb_area(x, y, 8, 6)))
          << x << " " << y;
    }
  }
}

TEST_F(PpmWriter, PassesOnSizesOfZeroAndBelowAndWritesNoPixels) {
  show_on_raster(plot_picture(40, 30, 6), true);
  EXPECT_EQ(ppm_bytes(raster_number, 0, 30), bytes_of("P6\n0 30\n255\n"));
  EXPECT_EQ(ppm_bytes(raster_number, 40, 0), bytes_of("P6\n40 0\n255\n"));
  const int32_t sizes[][2] = {{0, 5}, {5, 0}, {-3, 4}, {4, -3}, {-3, -4}, {INT32_MIN, 1}};
  const char *const headers[] = {"0 5", "5 0", "-3 4", "4 -3", "-3 -4", "- 1"};
  for (size_t i = 0; i < std::size(sizes); ++i) {
    set_clip(0, 0, sizes[i][0], sizes[i][1]);
    EXPECT_EQ(ppm_bytes(raster_number, 40, 30),
              bytes_of("P6\n" + std::string(headers[i]) + "\n255\n"));
  }
}

TEST_F(PpmWriter, FailsForMemoryOnPicturesBeyondAllCounting) {
  show_on_raster(plot_picture(4, 4, 7), true);
  MemoryFiles files;
  EXPECT_EQ(write_ppm("a", raster_number, INT32_MIN, 1), -2);
  EXPECT_EQ(write_ppm("b", raster_number, 1, INT32_MIN), -2);
  EXPECT_EQ(write_ppm("c", raster_number, INT32_MAX, INT32_MAX), -2);
  EXPECT_EQ(files.bytes("c"), bytes_of("P6\n2147483647 2147483647\n255\n"));
}

TEST_F(PpmWriter, ReadsZeroesOnceTheRasterIsGone) {
  show_on_raster(photo_picture(5, 4, 8), true);
  qqvfin();
  EXPECT_EQ(ppm_bytes(raster_number, 5, 4), ppm("P6\n5 4\n255\n", Bytes(60, 0)));
}

TEST_F(PpmWriter, DrawsTheGatheredLinesFirst) {
  DrawnPicture picture = plot_picture(20, 3, 9);
  show_on_raster(picture, true);
  qqvclr(0x01030201);
  qqvlin(0, 1, 19, 1);
  for (size_t x = 0; x < 20; ++x)
    for (size_t k = 0; k < 3; ++k)
      picture.rgb[3 * (20 + x) + k] = static_cast<uint8_t>(k + 1);
  EXPECT_EQ(ppm_bytes(raster_number, 20, 3), ppm("P6\n20 3\n255\n", picture.rgb));
}

TEST_F(PpmWriter, ReplacesAFileOnDisk) {
  const DrawnPicture picture = plot_picture(40, 30, 10);
  show_on_raster(picture, true);
  const TemporaryFolder folder;
  const std::string name = folder.file("picture.ppm");
  write_whole_file(name, Bytes(100000, 1));
  EXPECT_EQ(write_ppm(name, raster_number, 40, 30), 0);
  EXPECT_EQ(read_whole_file(name), ppm("P6\n40 30\n255\n", picture.rgb));
}

TEST_F(PpmWriter, SaysThatTheFileCannotBeOpened) {
  show_on_raster(plot_picture(4, 4, 11), true);
  const TemporaryFolder folder;
  EXPECT_EQ(write_ppm(folder.file("no/such/folder.ppm"), raster_number, 4, 4), -1);
  EXPECT_EQ(write_ppm("", raster_number, 4, 4), -1);
}

TEST_F(PpmWriter, KeepsTheHeaderWhenThereIsNoMemory) {
  show_on_raster(plot_picture(40, 30, 12), true);
  for (size_t n = 1;; ++n) {
    MemoryFiles files;
    const FailingMemory memory(n);
    const int32_t status = write_ppm("picture", raster_number, 40, 30);
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_EQ(files.open_files(), 0U);
    if (!memory.failed()) {
      EXPECT_EQ(n, 2U);
      EXPECT_EQ(status, 0);
      break;
    }
    EXPECT_EQ(status, -2);
    EXPECT_EQ(files.bytes("picture"), bytes_of("P6\n40 30\n255\n"));
  }
}

TEST_F(PpmWriter, HoldsOnePictureAndNoMore) {
  show_on_raster(plot_picture(400, 300, 13), true);
  MemoryFiles files;
  const FailingMemory memory;
  EXPECT_EQ(write_ppm("picture", raster_number, 400, 300), 0);
  EXPECT_EQ(memory.peak_bytes(), 400U * 300U * 3U);
}

TEST_F(PpmWriter, WritesAShortFileOntoAFullDiskWithoutAWord) {
  show_on_raster(plot_picture(4, 3, 14), true);
  const Bytes whole = ppm_bytes(raster_number, 4, 3);
  for (size_t limit = 0; limit <= whole.size(); ++limit) {
    MemoryFiles files;
    FailingFiles disk;
    disk.limit_written_bytes(limit);
    EXPECT_EQ(write_ppm("picture", raster_number, 4, 3), 0);
    EXPECT_EQ(disk.open_files(), 0U);
    EXPECT_EQ(files.bytes("picture"),
              Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(limit)));
  }
}

TEST_F(PpmWriter, GoesThroughWithWritesAndAClosingThatFail) {
  show_on_raster(plot_picture(4, 3, 15), true);
  for (size_t n = 1;; ++n) {
    MemoryFiles files;
    const FailingFiles gate(n);
    const int32_t status = write_ppm("picture", raster_number, 4, 3);
    EXPECT_EQ(gate.open_files(), 0U);
    EXPECT_EQ(status, gate.failed() && n == 1 ? -1 : 0);  // the first call opens the file
    if (!gate.failed()) break;
  }
}

TEST_F(PpmWriter, AgreesWithThePictureForRandomClips) {
  RandomNumbers random(16);
  const DrawnPicture picture = plot_picture(31, 23, 16);
  for (const bool rgba : {false, true}) {
    show_on_raster(picture, rgba);
    for (int i = 0; i < 300; ++i) {
      const int32_t x = random.between(-40, 40);
      const int32_t y = random.between(-40, 40);
      const int32_t w = random.between(1, 50);
      const int32_t h = random.between(1, 50);
      set_clip(x, y, w, h);
      const std::string header = "P6\n" + std::to_string(w) + " " + std::to_string(h) + "\n255\n";
      ASSERT_EQ(ppm_bytes(raster_number, 31, 23), ppm(header, picture.rgb_area(x, y, w, h)))
          << x << " " << y << " " << w << " " << h;
    }
  }
}

}  // namespace
}  // namespace quorix::testing
