// SPDX-License-Identifier: MIT
//
// Compositing RGBA onto RGBA, a register of pixels at a time. A source file says first what its
// processor's registers can do (composite_row_sse2.cpp, composite_row_avx2.cpp), then includes
// this.
//
// (a * (s - d)) >> 8 is the upper half of the 32-bit product of 4a and 64 (s - d), both of which
// fit in 16 bits; the shift rounds down as the plain form's does.
#include <cstring>

#include "depth/composite.h"

namespace quorix {

namespace {

constexpr uint32_t colour_bits = 0x00FFFFFF;
constexpr size_t pixels_at_once = sizeof(Words) / sizeof(uint32_t);

QUORIX_LANES Words load_words(const uint8_t *from) {
  Words words;
  std::memcpy(&words, from, sizeof(Words));
  return words;
}

QUORIX_LANES void store_words(uint8_t *to, Words words) {
  std::memcpy(to, &words, sizeof(Words));
}

// What an untouched pixel looks like without its alpha; where the rule is off, what none does.
QUORIX_LANES uint32_t untouched_colour(CompositeRule rule) {
  constexpr uint32_t impossible = 0xFFFFFFFF;
  return rule.replaces_background ? rule.background * 0x010101U : impossible;
}

// Channels as halves; `factor` is 4a, for each of them.
QUORIX_LANES Halves blend_halves(Halves d, Halves s, Halves factor) {
  return d + upper_product((s - d) << 6, factor);
}

QUORIX_LANES Words composite_words(Words d, Words s, uint32_t untouched) {
  const Words alpha = s >> 24;
  const auto replaced = reinterpret_cast<Words>((d & colour_bits) == untouched);
  // 255 in full, which becomes 256; alpha 0 is sorted out below.
  const Words weight = alpha | (replaced & 255);
  const Words factors = ((weight + 1) | (weight + 1) << 16) << 2;
  const Halves low = blend_halves(low_bytes(d), low_bytes(s), low_words(factors));
  const Halves high = blend_halves(high_bytes(d), high_bytes(s), high_words(factors));
  const Words blended = (packed(low, high) & colour_bits) | (s & ~colour_bits);
  return alpha == 0 ? d : blended;
}

QUORIX_LANES void composite_row_lanes(uint8_t *to, uint8_t *layer, size_t count,
                                      CompositeRule rule) {
  const uint32_t untouched = untouched_colour(rule);
  size_t i = 0;
  for (; i + pixels_at_once <= count; i += pixels_at_once) {
    uint8_t *const d = to + 4 * i;
    uint8_t *const s = layer + 4 * i;
    const Words pixels = load_words(s);
    if (is_clear(pixels & ~colour_bits)) continue;  // no alpha anywhere
    store_words(d, composite_words(load_words(d), pixels, untouched));
    store_words(s, pixels & colour_bits);
  }
  composite_row_rgba(to + 4 * i, layer + 4 * i, count - i, rule);
}

}  // namespace

}  // namespace quorix
