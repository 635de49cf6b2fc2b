// SPDX-License-Identifier: MIT
//
// What this library's own writers write comes back through its readers.
#include "quorix/imageout.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/imagein/byte_writing.h"
#include "tests/imagein/expected_picture.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class WrittenFiles : public ReaderTest {};

constexpr int32_t sizes[][2] = {{1, 1}, {1, 5}, {7, 1}, {8, 3}, {9, 6}, {33, 17}, {64, 40}};

struct Shown {
  int32_t width, height;
  std::vector<uint32_t> palette;
  Bytes indices;
  Bytes rgb;
};

// A raster with that many colours on it: few pixels of black and white among them.
Shown show(int32_t width, int32_t height, bool rgba, uint32_t colours = 256) {
  Shown shown = {width, height, std::vector<uint32_t>(256, 0), {}, {}};
  for (uint32_t i = 0; i < 256; ++i)
    shown.palette[i] = ((i + 77) * 0x9E3779B1U) & 0xffffffU;
  int32_t status = 0;
  qqvini(rgba ? -100 : 100, 100, &width, &height, 1, &status);
  qqvvlt(1, shown.palette.data());
  RandomNumbers random(static_cast<uint32_t>(width * 100 + height));
  for (int32_t y = 0; y < height; ++y) {
    Bytes row;
    for (int32_t x = 0; x < width; ++x) {
      put_u8(&row, random.below(colours));
      put_u8(&shown.indices, row.back());
      for (const int shift : {16, 8, 0})
        put_u8(&shown.rgb, shown.palette[row.back()] >> shift);
    }
    qqvrow(row.data(), 0, y, width);
  }
  return shown;
}

Bytes written(const MemoryFiles &files) {
  return files.exists("picture") ? files.bytes("picture") : Bytes();
}

void check_read_back(Format format, const Bytes &file, const Shown &shown, const Bytes &rgb) {
  SCOPED_TRACE(std::string(name_of(format)) + ", " + std::to_string(shown.width) + " by " +
               std::to_string(shown.height));
  ASSERT_EQ(read_picture(format, file, store_number), 0);
  EXPECT_TRUE(is_held(stored_picture(expect_rows(shown.width, shown.height, rgb))));
  release_picture();
}

TEST_F(WrittenFiles, OfPngComeBackWithTheirPixelsAndAlpha) {
  for (const auto &[width, height] : sizes) {
    for (const bool true_colour : {false, true}) {
      for (const bool transparent : {false, true}) {
        const Shown shown = show(width, height, true_colour);
        const int32_t device = true_colour ? -raster_number : raster_number;
        const int32_t signed_width = transparent ? -width : width;
        const int32_t order = 1;
        const int32_t colours = 256;
        int32_t status = 9;
        char name[] = "picture";
        Bytes file;
        {
          const MemoryFiles files;
          qqppng(name, &device, &order, &signed_width, &height, shown.palette.data(), &colours,
                 &status);
          EXPECT_EQ(status, 0);
          file = written(files);
        }
        check_read_back(Format::png, file, shown, shown.rgb);
      }
    }
  }
}

TEST_F(WrittenFiles, OfPngWithTransparencyShowWhatLiesBelow) {
  // Entry 0 of an indexed picture, white of a true colour one.
  for (const bool true_colour : {false, true}) {
    int32_t width = 3;
    int32_t height = 1;
    int32_t status = 0;
    qqvini(true_colour ? -100 : 100, 100, &width, &height, 1, &status);
    std::vector<uint32_t> palette(256, 0x102030);
    palette[0] = 0x445566;
    palette[1] = 0xffffff;
    qqvvlt(1, palette.data());
    const uint8_t row[] = {0, 1, 2};
    qqvrow(row, 0, 0, 3);
    const int32_t device = true_colour ? -raster_number : raster_number;
    const int32_t signed_width = -3;
    const int32_t order = 1;
    const int32_t colours = 256;
    char name[] = "picture";
    Bytes file;
    {
      const MemoryFiles files;
      qqppng(name, &device, &order, &signed_width, &height, palette.data(), &colours, &status);
      file = written(files);
    }
    qqwfree();
    width = 4;
    height = 2;
    qqvini(-100, 100, &width, &height, 1, &status);
    qqvfll(0, 0, 3, 1, 0x01070809);
    ASSERT_EQ(read_picture(Format::png, file, raster_number), 0);
    Bytes pixels(9);
    qqvrdr(pixels.data(), 0, 0, -3, 1);
    const Bytes below = {9, 8, 7};
    Bytes expected = true_colour ? Bytes{0x44, 0x55, 0x66} : below;
    put_bytes(&expected, true_colour ? below : Bytes(3, 255));
    put_bytes(&expected, {0x10, 0x20, 0x30});
    EXPECT_EQ(pixels, expected) << true_colour;
    qqwfree();
  }
}

TEST_F(WrittenFiles, OfGifComeBackWithTheirPixels) {
  for (const auto &[width, height] : sizes) {
    for (const int32_t transparent : {0, 1}) {
      const Shown shown = show(width, height, false);
      const int32_t order = 1;
      const uint8_t background = 3;
      const int32_t device = raster_number;
      int32_t status = 9;
      Bytes file;
      {
        const MemoryFiles files;
        qqpgif("picture", &device, &order, &width, &height, shown.palette.data(), nullptr,
               &background, &transparent, &status);
        EXPECT_EQ(status, 0);
        file = written(files);
      }
      check_read_back(Format::gif, file, shown, shown.rgb);
    }
  }
}

TEST_F(WrittenFiles, OfTiffComeBackWithTheirPixelsInEveryForm) {
  for (const auto &[width, height] : sizes) {
    for (const int32_t form : {0, 1}) {
      const bool true_colour = form == 1;
      const Shown shown = show(width, height, true_colour);
      const int32_t order = 1;
      const int32_t device = true_colour ? -raster_number : raster_number;
      const int32_t palette_form = 0;
      int32_t resolution = 100;
      Bytes file;
      {
        const MemoryFiles files;
        qqptif("picture", &device, &order, &width, &height, shown.palette.data(), &palette_form,
               &resolution);
        EXPECT_EQ(resolution, 0);
        file = written(files);
      }
      check_read_back(Format::tiff, file, shown, shown.rgb);
    }
  }
}

TEST_F(WrittenFiles, OfBilevelTiffComeBackBlackAndWhite) {
  for (const auto &[width, height] : sizes) {
    for (const bool only_white_is_1 : {false, true}) {
      Shown shown = show(width, height, true, 3);
      shown.rgb.clear();
      qqvfll(0, 0, width - 1, height - 1, 0x01808080);  // grey, with black and white in it
      for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
          const int32_t kind = (x + 3 * y) % 5;  // 0 black, 1 white, else grey
          if (kind == 0) qqvwpx(x, y, 0x01000000);
          if (kind == 1) qqvwpx(x, y, 0x01FFFFFF);
          const bool one = only_white_is_1 ? kind == 1 : kind != 0;
          put_bytes(&shown.rgb, Bytes(3, one ? 255 : 0));
        }
      }
      const int32_t device = raster_number;
      const int32_t order = 1;
      const int32_t signed_width = only_white_is_1 ? -width : width;
      const int32_t signed_height = -height;
      const int32_t form = -1;
      int32_t resolution = 0;
      Bytes file;
      {
        const MemoryFiles files;
        qqptif("picture", &device, &order, &signed_width, &signed_height, shown.palette.data(),
               &form, &resolution);
        EXPECT_EQ(resolution, 0);
        file = written(files);
      }
      check_read_back(Format::tiff, file, shown, shown.rgb);
    }
  }
}

TEST_F(WrittenFiles, OfBmpComeBackWithTheirPixels) {
  for (const auto &[width, height] : sizes) {
    for (const bool true_colour : {false, true}) {
      const Shown shown = show(width, height, true_colour);
      const int32_t resolution = 3000;
      const int32_t device = true_colour ? -raster_number : raster_number;
      const int32_t colours = 256;
      int32_t status = 9;
      Bytes file;
      {
        const MemoryFiles files;
        qqpbmp("picture", &device, &resolution, &width, &height, shown.palette.data(), &colours,
               &status);
        EXPECT_EQ(status, 0);
        file = written(files);
      }
      check_read_back(Format::bmp, file, shown, shown.rgb);
    }
  }
}

}  // namespace
}  // namespace quorix::testing
