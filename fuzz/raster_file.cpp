// SPDX-License-Identifier: MIT
//
// The input is a raster file, loaded by qqvfil into rasters of several sizes and both kinds.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "fuzz/target.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/support/memory_files.h"

namespace {

struct Page {
  int32_t page_w;  // negative: RGBA
  int32_t w, h;
  int32_t transparent;
};

constexpr Page pages[] = {{1, 4, 3, -1}, {1, 9, 7, 5}, {-1, 4, 3, -1}, {-1, 9, 7, 0x01030201}};

void require(bool condition) {
  if (!condition) std::abort();
}

void load(Page page) {
  int32_t status = 0;
  qqvini(page.page_w, 1, &page.w, &page.h, 1, &status);
  require(status == 0);
  qqwwid(32, &page.transparent, 1);
  status = -1;
  qqvfil("input", 1, &status);
  require(status == 0 || status == 2 || status == 3);

  // What was loaded is a picture like any other.
  std::vector<uint8_t> pixels(static_cast<size_t>(page.w * page.h) * 3);
  qqvrdr(pixels.data(), 0, 0, -page.w, page.h);
  qqvfin();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::testing::MemoryFiles files;
  files.put("input", {data, data + size});
  for (const Page &page : pages)
    load(page);
  require(files.open_files() == 0);
  qqwfree();
  return 0;
}
