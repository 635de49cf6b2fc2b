// SPDX-License-Identifier: MIT
//
// The plain form of compositing, for every layout of pixels, and the choice of the form for this
// processor. All forms give the same bytes.
#include "base/processor.h"
#include "depth/composite.h"

namespace quorix {

namespace {

// Arithmetic shift: rounds down on both sides of 0.
int32_t blended(int32_t d, int32_t s, int32_t a) {
  return ((a * (s - d)) >> 8) + d;
}

}  // namespace

void composite_row_plain(uint8_t *to, size_t step, bool reversed, FourthByte fourth, uint8_t *layer,
                         size_t count, CompositeRule rule) {
  const size_t red = reversed ? 2 : 0;
  for (size_t i = 0; i < count; ++i, to += step, layer += 4) {
    const uint8_t alpha = layer[3];
    if (alpha == 0) continue;
    const bool untouched = rule.replaces_background && to[0] == rule.background &&
                           to[1] == rule.background && to[2] == rule.background;
    const int32_t a = untouched ? 256 : alpha + 1;
    uint8_t *const r = to + red;
    uint8_t *const b = to + (2 - red);
    *r = static_cast<uint8_t>(blended(*r, layer[0], a));
    to[1] = static_cast<uint8_t>(blended(to[1], layer[1], a));
    *b = static_cast<uint8_t>(blended(*b, layer[2], a));
    if (fourth != FourthByte::untouched) to[3] = fourth == FourthByte::opaque ? 255 : alpha;
    layer[3] = 0;
  }
}

void composite_row_rgba(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule) {
  composite_row_plain(to, 4, false, FourthByte::takes_alpha, layer, count, rule);
}

CompositeRow composite_row() {
  if constexpr (compiled_for_x86_64) {
    return processor().avx2 ? composite_row_avx2 : composite_row_sse2;
  } else if constexpr (compiled_for_arm64) {
    return composite_row_neon;
  } else {
    return composite_row_rgba;
  }
}

}  // namespace quorix
