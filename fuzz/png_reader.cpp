// SPDX-License-Identifier: MIT
//
// The input is a PNG file.
#include "fuzz/image_reader.h"
#include "fuzz/target.h"

namespace {

// Where several pixels share an alpha, rows are blended with what the row before has left.
bool has_bits(const uint8_t *data, size_t size) {
  constexpr size_t depth = 24;  // where it stands
  return size > depth && data[depth] == 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::fuzz::run_image_reader(qqpipng, data, size, {0, -2, -3, -4, -5}, !has_bits(data, size));
  return 0;
}
