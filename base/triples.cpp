// SPDX-License-Identifier: MIT
//
// The plain form, and the choice of the form to use.
#include "base/triples.h"

#include <utility>

#include "base/processor.h"

namespace quorix {

void swap_red_and_blue_plainly(uint8_t *pixels, size_t count) {
  for (size_t i = 0; i < count; ++i, pixels += 3)
    std::swap(pixels[0], pixels[2]);
}

void swap_red_and_blue(uint8_t *pixels, size_t count) {
  if constexpr (compiled_for_x86_64) {
    if (processor().ssse3) return swap_red_and_blue_ssse3(pixels, count);
  }
  if constexpr (compiled_for_arm64) return swap_red_and_blue_neon(pixels, count);
  swap_red_and_blue_plainly(pixels, count);
}

}  // namespace quorix
