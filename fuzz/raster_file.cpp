// SPDX-License-Identifier: MIT
//
// The input is a raster file, loaded by qqvfil into rasters of several sizes and both kinds. What
// is loaded must be what the literal raster loads.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "base/files.h"
#include "fuzz/target.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "raster/raster_file.h"
#include "tests/raster/literal_raster.h"
#include "tests/support/memory_files.h"

namespace {

using quorix::literal::LiteralRaster;

struct Page {
  int32_t page_w;  // negative: RGBA
  int32_t w, h;
  int32_t transparent;
};

constexpr Page pages[] = {{1, 4, 3, -1}, {1, 9, 7, 5}, {-1, 4, 3, -1}, {-1, 9, 7, 0x01030201}};
constexpr uint32_t table[] = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00,
                              0x00FFFF, 0xFF00FF, 0x808080, 0xFFFFFF};

// The literal raster keeps whole rows, however long they claim to be.
constexpr int32_t longest_literal_row = 1000;

void require(bool condition) {
  if (!condition) std::abort();
}

bool claims_long_rows() {
  const quorix::OwnedFile file = quorix::open_file("input", "rb");
  quorix::RasterFileHeader header = {};
  return quorix::read_raster_header(file.get(), &header) &&
         header.bytes_per_row > longest_literal_row;
}

std::vector<uint8_t> load(Page page, int32_t *status) {
  qqvini(page.page_w, 1, &page.w, &page.h, 1, status);
  require(*status == 0);
  qqvvlt(0, table);
  qqwwid(32, &page.transparent, 1);
  *status = -1;
  qqvfil("input", 1, status);
  require(*status == 0 || *status == 2 || *status == 3);

  uint8_t *pixels = nullptr;
  qqvptr(&pixels);
  const int32_t bytes = page.w * page.h * (page.page_w < 0 ? 4 : 1);
  const std::vector<uint8_t> result(pixels, pixels + bytes);
  qqwfree();
  return result;
}

std::vector<uint8_t> load_literally(Page page, const std::vector<uint8_t> &file, int32_t *status) {
  LiteralRaster raster;
  *status = 0;
  quorix::literal::qqvini(raster, page.page_w, 1, &page.w, &page.h, 1, status);
  quorix::literal::qqvvlt(raster, 0, table);
  quorix::literal::qqwwid(raster, 32, &page.transparent, 1);
  quorix::literal::read_file(raster, file, status);
  return raster.pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::vector<uint8_t> input(data, data + size);
  quorix::testing::MemoryFiles files;
  files.put("input", input);
  const bool comparable = !claims_long_rows();
  for (const Page &page : pages) {
    int32_t status = 0;
    const std::vector<uint8_t> loaded = load(page, &status);
    if (!comparable) continue;
    int32_t expected_status = 0;
    require(loaded == load_literally(page, input, &expected_status));
    require(status == expected_status);
  }
  require(files.open_files() == 0);
  return 0;
}
