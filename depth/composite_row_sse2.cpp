// SPDX-License-Identifier: MIT
//
// Compositing RGBA onto RGBA, four pixels at a time.
//
// (a * (s - d)) >> 8 is the upper half of the 32-bit product of 4a and 64 (s - d), both of which
// fit in 16 bits; the shift rounds down as the plain form's does.
#include "base/processor.h"

#if QUORIX_X86_64

#include <emmintrin.h>

#include "depth/composite.h"

namespace quorix {

namespace {

// What an untouched pixel looks like, with the alpha masked away; never equal where the rule is
// off.
struct Background {
  __m128i colour, mask;
};

inline Background background_of(CompositeRule rule) {
  const uint32_t grey = rule.background * 0x010101U;
  const __m128i colour = _mm_set1_epi32(static_cast<int32_t>(grey));
  // A masked pixel never has a bit in its high byte.
  const __m128i impossible = _mm_set1_epi32(-1);
  return {rule.replaces_background ? colour : impossible, _mm_set1_epi32(0x00FFFFFF)};
}

// Two pixels as words; `factor` is a in each of their four words.
inline __m128i blend_words(__m128i d, __m128i s, __m128i factor) {
  const __m128i apart = _mm_slli_epi16(_mm_sub_epi16(s, d), 6);
  return _mm_add_epi16(d, _mm_mulhi_epi16(apart, _mm_slli_epi16(factor, 2)));
}

inline __m128i composite_four(__m128i d, __m128i s, const Background &bg) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i one = _mm_set1_epi16(1);
  const __m128i alpha = _mm_srli_epi32(s, 24);
  const __m128i untouched = _mm_cmpeq_epi32(_mm_and_si128(d, bg.mask), bg.colour);
  // 255 in full, which becomes 256; alpha 0 is told apart below.
  const __m128i weight = _mm_or_si128(alpha, _mm_and_si128(untouched, _mm_set1_epi32(255)));
  const __m128i pairs = _mm_or_si128(weight, _mm_slli_epi32(weight, 16));
  const __m128i low = blend_words(_mm_unpacklo_epi8(d, zero), _mm_unpacklo_epi8(s, zero),
                                  _mm_add_epi16(_mm_unpacklo_epi32(pairs, pairs), one));
  const __m128i high = blend_words(_mm_unpackhi_epi8(d, zero), _mm_unpackhi_epi8(s, zero),
                                   _mm_add_epi16(_mm_unpackhi_epi32(pairs, pairs), one));
  const __m128i colour = _mm_and_si128(_mm_packus_epi16(low, high), bg.mask);
  const __m128i blended = _mm_or_si128(colour, _mm_andnot_si128(bg.mask, s));
  const __m128i clear = _mm_cmpeq_epi32(alpha, zero);
  return _mm_or_si128(_mm_and_si128(clear, d), _mm_andnot_si128(clear, blended));
}

}  // namespace

void composite_row_sse2(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule) {
  const Background bg = background_of(rule);
  size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    auto *d = reinterpret_cast<__m128i *>(to + 4 * i);
    auto *s = reinterpret_cast<__m128i *>(layer + 4 * i);
    const __m128i pixels = _mm_loadu_si128(s);
    const __m128i drawn = _mm_andnot_si128(bg.mask, pixels);
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(drawn, _mm_setzero_si128())) == 0xFFFF) continue;
    _mm_storeu_si128(d, composite_four(_mm_loadu_si128(d), pixels, bg));
    _mm_storeu_si128(s, _mm_and_si128(pixels, bg.mask));
  }
  composite_row_rgba(to + 4 * i, layer + 4 * i, count - i, rule);
}

}  // namespace quorix

#endif
