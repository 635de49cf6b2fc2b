// SPDX-License-Identifier: MIT
//
// Compositing RGBA onto RGBA, eight pixels at a time; see composite_row_sse2.cpp.
#include "base/processor.h"

#if QUORIX_X86_64

#include <immintrin.h>

#include "depth/composite.h"

namespace quorix {

namespace {

#define QUORIX_AVX2 __attribute__((target("avx2")))

struct Background {
  __m256i colour, mask;
};

QUORIX_AVX2 inline Background background_of(CompositeRule rule) {
  const uint32_t grey = rule.background * 0x010101U;
  const __m256i impossible = _mm256_set1_epi32(-1);
  return {rule.replaces_background ? _mm256_set1_epi32(static_cast<int32_t>(grey)) : impossible,
          _mm256_set1_epi32(0x00FFFFFF)};
}

QUORIX_AVX2 inline __m256i blend_words(__m256i d, __m256i s, __m256i factor) {
  const __m256i apart = _mm256_slli_epi16(_mm256_sub_epi16(s, d), 6);
  return _mm256_add_epi16(d, _mm256_mulhi_epi16(apart, _mm256_slli_epi16(factor, 2)));
}

QUORIX_AVX2 inline __m256i composite_eight(__m256i d, __m256i s, const Background &bg) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i one = _mm256_set1_epi16(1);
  const __m256i alpha = _mm256_srli_epi32(s, 24);
  const __m256i untouched = _mm256_cmpeq_epi32(_mm256_and_si256(d, bg.mask), bg.colour);
  const __m256i weight =
      _mm256_or_si256(alpha, _mm256_and_si256(untouched, _mm256_set1_epi32(255)));
  const __m256i pairs = _mm256_or_si256(weight, _mm256_slli_epi32(weight, 16));
  const __m256i low = blend_words(_mm256_unpacklo_epi8(d, zero), _mm256_unpacklo_epi8(s, zero),
                                  _mm256_add_epi16(_mm256_unpacklo_epi32(pairs, pairs), one));
  const __m256i high = blend_words(_mm256_unpackhi_epi8(d, zero), _mm256_unpackhi_epi8(s, zero),
                                   _mm256_add_epi16(_mm256_unpackhi_epi32(pairs, pairs), one));
  const __m256i colour = _mm256_and_si256(_mm256_packus_epi16(low, high), bg.mask);
  const __m256i blended = _mm256_or_si256(colour, _mm256_andnot_si256(bg.mask, s));
  return _mm256_blendv_epi8(blended, d, _mm256_cmpeq_epi32(alpha, zero));
}

}  // namespace

QUORIX_AVX2 void composite_row_avx2(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule) {
  const Background bg = background_of(rule);
  size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    auto *d = reinterpret_cast<__m256i *>(to + 4 * i);
    auto *s = reinterpret_cast<__m256i *>(layer + 4 * i);
    const __m256i pixels = _mm256_loadu_si256(s);
    if (_mm256_testc_si256(bg.mask, pixels) != 0) continue;  // no alpha anywhere
    _mm256_storeu_si256(d, composite_eight(_mm256_loadu_si256(d), pixels, bg));
    _mm256_storeu_si256(s, _mm256_and_si256(pixels, bg.mask));
  }
  composite_row_rgba(to + 4 * i, layer + 4 * i, count - i, rule);
}

}  // namespace quorix

#endif
