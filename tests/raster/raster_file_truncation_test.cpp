// SPDX-License-Identifier: MIT
//
// A file of each kind, cut at every byte, loaded into rasters smaller and larger than it. The
// literal raster tells what each must give.
#include <gtest/gtest.h>

#include <vector>

#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/raster/literal_raster.h"
#include "tests/raster/raster_file_bytes.h"
#include "tests/support/failing_files.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

using literal::LiteralRaster;

constexpr FileKind file_kinds[] = {
    {"indices", 6, 4, 8, 6, 1, 0},
    {"indices of an older file", 6, 4, 8, 6, 0, 0},
    {"older indices with an offset", 6, 4, 8, 6, 0, 3},
    {"rows with bytes to spare", 6, 4, 8, 9, 1, 0},
    {"RGB", 6, 4, 24, 18, 5, 0},
    {"RGB rows that end early", 6, 4, 24, 7, 5, 0},
    {"RGBX", 6, 4, 32, 24, 6, 0},
    {"BGRX", 6, 4, 32, 24, 4, 0},
    {"four bytes of no known order", 6, 4, 32, 24, 1, 0},
};

struct PageKind {
  int32_t page_w;
  int32_t w, h;
};

constexpr PageKind page_kinds[] = {{1, 6, 4},  {1, 4, 3},  {1, 9, 7},
                                   {-1, 6, 4}, {-1, 4, 3}, {-1, 9, 7}};

// Eight spread colours and white, so that the nearest of any triple is told clearly enough.
constexpr uint32_t table[] = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00,
                              0x00FFFF, 0xFF00FF, 0x808080, 0xFFFFFF};
constexpr int32_t fill_colour = 0x01446688;
int32_t alpha = 77;

std::vector<uint8_t> load_with_library(const PageKind &page, int32_t *status) {
  int32_t w = page.w;
  int32_t h = page.h;
  qqvini(page.page_w, 1, &w, &h, 1, status);
  qqvvlt(0, table);
  qqvfll(0, 0, w - 1, h - 1, fill_colour);
  qqwwid(19, &alpha, 1);
  *status = -1;
  qqvfil("file", 1, status);
  uint8_t *pixels = nullptr;
  qqvptr(&pixels);
  std::vector<uint8_t> result(pixels, pixels + w * h * (page.page_w < 0 ? 4 : 1));
  qqwfree();
  return result;
}

std::vector<uint8_t> load_literally(const PageKind &page, const std::vector<uint8_t> &file,
                                    int32_t *status) {
  LiteralRaster raster;
  int32_t w = page.w;
  int32_t h = page.h;
  literal::qqvini(raster, page.page_w, 1, &w, &h, 1, status);
  literal::qqvvlt(raster, 0, table);
  literal::qqvfll(raster, 0, 0, w - 1, h - 1, fill_colour);
  literal::qqwwid(raster, 19, &alpha, 1);
  literal::read_file(raster, file, status);
  return raster.pixels;
}

TEST(RasterFile, CutAtAnyByteLoadsTheRowsThatItHas) {
  for (const FileKind &kind : file_kinds) {
    const std::vector<uint8_t> whole = make_raster_file(kind);
    for (const PageKind &page : page_kinds) {
      for (size_t length = 0; length <= whole.size(); ++length) {
        const std::vector<uint8_t> cut(whole.begin(),
                                       whole.begin() + static_cast<std::ptrdiff_t>(length));
        MemoryFiles files;
        files.put("file", cut);
        int32_t status = 0;
        int32_t expected_status = 0;
        const std::vector<uint8_t> loaded = load_with_library(page, &status);
        const std::vector<uint8_t> expected = load_literally(page, cut, &expected_status);
        ASSERT_EQ(status, length < 80 ? 3 : 0) << kind.name << " cut to " << length;
        ASSERT_EQ(status, expected_status);
        ASSERT_EQ(loaded, expected) << kind.name << " cut to " << length << ", page " << page.w
                                    << " by " << page.h << (page.page_w < 0 ? " RGBA" : "");
        ASSERT_EQ(files.open_files(), 0U);
      }
    }
  }
}

TEST(RasterFile, WholeGivesEveryPixelOfARasterOfItsSize) {
  // Bytes 11, 48, 85 and so on, in steps of 37.
  MemoryFiles files;
  files.put("file", make_raster_file(file_kinds[4]));
  int32_t status = 0;
  const std::vector<uint8_t> pixels = load_with_library(page_kinds[3], &status);
  EXPECT_EQ(status, 0);
  for (size_t pixel = 0; pixel < 24; ++pixel) {
    for (size_t channel = 0; channel < 3; ++channel) {
      EXPECT_EQ(pixels[pixel * 4 + channel], ((pixel * 3 + channel) * 37 + 11) % 256);
    }
    EXPECT_EQ(pixels[pixel * 4 + 3], 77);
  }
}

TEST(RasterFile, IsClosedWhicheverCallOfTheDiskFails) {
  for (const FileKind &kind : file_kinds) {
    for (size_t n = 1;; ++n) {
      MemoryFiles disk;
      disk.put("file", make_raster_file(kind));
      FailingFiles files(n);
      int32_t status = 0;
      load_with_library(page_kinds[1], &status);
      EXPECT_TRUE(status == 0 || status == 1 || status == 3) << status;
      EXPECT_EQ(files.open_files(), 0U);
      if (!files.failed()) break;
      const bool opened = n > 1;
      EXPECT_EQ(status == 1, !opened);
    }
  }
}

}  // namespace
}  // namespace quorix::testing
