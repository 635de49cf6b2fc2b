// SPDX-License-Identifier: MIT
//
// Four doubles as an AVX register; see shade_rows_lanes.h. For one source file only, and to be used
// only where the processor has AVX2.
#pragma once

#include <immintrin.h>

#define QUORIX_LANES __attribute__((always_inline, target("avx2"))) inline

namespace quorix {

namespace {

using Doubles = __m256d;

QUORIX_LANES Doubles spread(double v) {
  return _mm256_set1_pd(v);
}

// v, v + 1, v + 2, v + 3, exactly.
QUORIX_LANES Doubles count_up(double v) {
  return _mm256_add_pd(_mm256_set1_pd(v), _mm256_setr_pd(0.0, 1.0, 2.0, 3.0));
}

QUORIX_LANES Doubles load_doubles(const double *p) {
  return _mm256_loadu_pd(p);
}

QUORIX_LANES void store_doubles(double *p, Doubles a) {
  _mm256_storeu_pd(p, a);
}

QUORIX_LANES Doubles sum(Doubles a, Doubles b) {
  return _mm256_add_pd(a, b);
}

QUORIX_LANES Doubles difference(Doubles a, Doubles b) {
  return _mm256_sub_pd(a, b);
}

QUORIX_LANES Doubles product(Doubles a, Doubles b) {
  return _mm256_mul_pd(a, b);
}

QUORIX_LANES Doubles quotient(Doubles a, Doubles b) {
  return _mm256_div_pd(a, b);
}

// All bits of a lane set where a < b; a NaN is neither less nor at least.
QUORIX_LANES Doubles is_less(Doubles a, Doubles b) {
  return _mm256_cmp_pd(a, b, _CMP_LT_OQ);
}

QUORIX_LANES Doubles is_at_least(Doubles a, Doubles b) {
  return _mm256_cmp_pd(a, b, _CMP_GE_OQ);
}

// a where the bits are set, else b.
QUORIX_LANES Doubles choose(Doubles where, Doubles a, Doubles b) {
  return _mm256_blendv_pd(b, a, where);
}

QUORIX_LANES __m128i choose_words(__m128i where, __m128i a, __m128i b) {
  return _mm_blendv_epi8(b, a, where);
}

QUORIX_LANES Doubles from_floats(__m128 a) {
  return _mm256_cvtps_pd(a);
}

QUORIX_LANES __m128 to_floats(Doubles a) {
  return _mm256_cvtpd_ps(a);
}

QUORIX_LANES __m128i truncated(Doubles a) {
  return _mm256_cvttpd_epi32(a);
}

// The bits of a comparison as lanes of 32 bits.
QUORIX_LANES __m128i narrowed(Doubles where) {
  return _mm_castps_si128(_mm_shuffle_ps(_mm_castpd_ps(_mm256_castpd256_pd128(where)),
                                         _mm_castpd_ps(_mm256_extractf128_pd(where, 1)), 0x88));
}

}  // namespace

}  // namespace quorix
