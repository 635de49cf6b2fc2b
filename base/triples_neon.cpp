// SPDX-License-Identifier: MIT
//
// Sixteen pixels at a time: one instruction loads them as 16 reds, 16 greens and 16 blues, and one
// stores them again.
#include "base/processor.h"

#if QUORIX_ARM64

#include <arm_neon.h>

#include <utility>

#include "base/triples.h"

namespace quorix {

void swap_red_and_blue_neon(uint8_t *pixels, size_t count) {
  for (; count >= 16; count -= 16, pixels += 48) {
    uint8x16x3_t channels = vld3q_u8(pixels);
    std::swap(channels.val[0], channels.val[2]);
    vst3q_u8(pixels, channels);
  }
  swap_red_and_blue_plainly(pixels, count);
}

}  // namespace quorix

#endif
