// SPDX-License-Identifier: MIT
//
// The input is a GIF file.
#include "fuzz/image_reader.h"
#include "fuzz/target.h"

namespace {

// Then the image can be shown, but no picture can be held.
bool has_empty_screen(const uint8_t *data, size_t size) {
  constexpr size_t width = 6, height = 8, behind = 10;
  if (size < behind) return false;
  return data[width] + data[width + 1] == 0 || data[height] + data[height + 1] == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const bool comparable = !has_empty_screen(data, size);
  quorix::fuzz::run_image_reader(qqpigif, data, size, {0, -2, -3}, comparable);
  return 0;
}
