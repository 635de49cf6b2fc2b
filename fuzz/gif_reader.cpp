// SPDX-License-Identifier: MIT
//
// The input is a GIF file.
#include "fuzz/image_reader.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::fuzz::run_image_reader(qqpigif, data, size, {0, -2, -3}, true);
  return 0;
}
