// SPDX-License-Identifier: MIT
//
// Compositing RGBA onto RGBA, sixteen pixels at a time, a register for each channel.
//
// (a * (s - d)) >> 8 is the upper half of twice the product of 2a and 64 (s - d), both of which fit
// in 16 bits; the shift rounds down as the plain form's does.
#include "base/processor.h"

#if QUORIX_ARM64

#include <arm_neon.h>

#include "depth/composite.h"

namespace quorix {

namespace {

// Twice a, where a is the weight + 1, in two halves.
struct Factor {
  int16x8_t low, high;
};

inline int16x8_t twice_one_more(uint8x8_t weight) {
  return vaddq_s16(vreinterpretq_s16_u16(vshll_n_u8(weight, 1)), vdupq_n_s16(2));
}

inline uint8x8_t share(uint8x8_t d, uint8x8_t s, int16x8_t factor) {
  const int16x8_t apart = vreinterpretq_s16_u16(vsubl_u8(s, d));
  const int16x8_t product = vqdmulhq_s16(vshlq_n_s16(apart, 6), factor);
  return vmovn_u16(vreinterpretq_u16_s16(product));
}

inline uint8x16_t blended(uint8x16_t d, uint8x16_t s, const Factor &factor) {
  const uint8x8_t low = share(vget_low_u8(d), vget_low_u8(s), factor.low);
  const uint8x8_t high = share(vget_high_u8(d), vget_high_u8(s), factor.high);
  return vaddq_u8(d, vcombine_u8(low, high));
}

// Where a pixel of the picture has the background's colour, if that makes a difference.
inline uint8x16_t untouched_pixels(const uint8x16x4_t &d, CompositeRule rule) {
  if (!rule.replaces_background) return vdupq_n_u8(0);
  const uint8x16_t grey = vdupq_n_u8(rule.background);
  return vandq_u8(vandq_u8(vceqq_u8(d.val[0], grey), vceqq_u8(d.val[1], grey)),
                  vceqq_u8(d.val[2], grey));
}

}  // namespace

void composite_row_neon(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule) {
  constexpr size_t at_once = 16;
  for (; count >= at_once; count -= at_once, to += 4 * at_once, layer += 4 * at_once) {
    uint8x16x4_t s = vld4q_u8(layer);
    const uint8x16_t alpha = s.val[3];
    if (vmaxvq_u8(alpha) == 0) continue;
    uint8x16x4_t d = vld4q_u8(to);
    // 255 in full, which becomes 256.
    const uint8x16_t weight = vorrq_u8(alpha, untouched_pixels(d, rule));
    const Factor factor = {twice_one_more(vget_low_u8(weight)),
                           twice_one_more(vget_high_u8(weight))};
    const uint8x16_t clear = vceqzq_u8(alpha);
    for (int i = 0; i < 3; ++i)
      d.val[i] = vbslq_u8(clear, d.val[i], blended(d.val[i], s.val[i], factor));
    d.val[3] = vbslq_u8(clear, d.val[3], alpha);
    vst4q_u8(to, d);
    s.val[3] = vdupq_n_u8(0);
    vst4q_u8(layer, s);
  }
  composite_row_rgba(to, layer, count, rule);
}

}  // namespace quorix

#endif
