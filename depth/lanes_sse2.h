// SPDX-License-Identifier: MIT
//
// Four doubles as two SSE2 registers; see shade_rows_lanes.h. For one source file only.
#pragma once

#include <emmintrin.h>

#define QUORIX_LANES __attribute__((always_inline)) inline

namespace quorix {

namespace {

struct Doubles {
  __m128d low, high;
};

QUORIX_LANES Doubles spread(double v) {
  return {_mm_set1_pd(v), _mm_set1_pd(v)};
}

// v, v + 1, v + 2, v + 3, exactly.
QUORIX_LANES Doubles count_up(double v) {
  return {_mm_setr_pd(v, v + 1.0), _mm_setr_pd(v + 2.0, v + 3.0)};
}

QUORIX_LANES Doubles load_doubles(const double *p) {
  return {_mm_loadu_pd(p), _mm_loadu_pd(p + 2)};
}

QUORIX_LANES void store_doubles(double *p, Doubles a) {
  _mm_storeu_pd(p, a.low);
  _mm_storeu_pd(p + 2, a.high);
}

QUORIX_LANES Doubles sum(Doubles a, Doubles b) {
  return {_mm_add_pd(a.low, b.low), _mm_add_pd(a.high, b.high)};
}

QUORIX_LANES Doubles difference(Doubles a, Doubles b) {
  return {_mm_sub_pd(a.low, b.low), _mm_sub_pd(a.high, b.high)};
}

QUORIX_LANES Doubles product(Doubles a, Doubles b) {
  return {_mm_mul_pd(a.low, b.low), _mm_mul_pd(a.high, b.high)};
}

QUORIX_LANES Doubles quotient(Doubles a, Doubles b) {
  return {_mm_div_pd(a.low, b.low), _mm_div_pd(a.high, b.high)};
}

// All bits of a lane set where a < b; a NaN is neither less nor at least.
QUORIX_LANES Doubles is_less(Doubles a, Doubles b) {
  return {_mm_cmplt_pd(a.low, b.low), _mm_cmplt_pd(a.high, b.high)};
}

QUORIX_LANES Doubles is_at_least(Doubles a, Doubles b) {
  return {_mm_cmpge_pd(a.low, b.low), _mm_cmpge_pd(a.high, b.high)};
}

QUORIX_LANES __m128d choose_pair(__m128d where, __m128d a, __m128d b) {
  return _mm_or_pd(_mm_and_pd(where, a), _mm_andnot_pd(where, b));
}

// a where the bits are set, else b.
QUORIX_LANES Doubles choose(Doubles where, Doubles a, Doubles b) {
  return {choose_pair(where.low, a.low, b.low), choose_pair(where.high, a.high, b.high)};
}

QUORIX_LANES __m128i choose_words(__m128i where, __m128i a, __m128i b) {
  return _mm_or_si128(_mm_and_si128(where, a), _mm_andnot_si128(where, b));
}

QUORIX_LANES Doubles from_floats(__m128 a) {
  return {_mm_cvtps_pd(a), _mm_cvtps_pd(_mm_movehl_ps(a, a))};
}

QUORIX_LANES __m128 to_floats(Doubles a) {
  return _mm_movelh_ps(_mm_cvtpd_ps(a.low), _mm_cvtpd_ps(a.high));
}

QUORIX_LANES __m128i truncated(Doubles a) {
  return _mm_unpacklo_epi64(_mm_cvttpd_epi32(a.low), _mm_cvttpd_epi32(a.high));
}

// The bits of a comparison as lanes of 32 bits.
QUORIX_LANES __m128i narrowed(Doubles where) {
  return _mm_castps_si128(
      _mm_shuffle_ps(_mm_castpd_ps(where.low), _mm_castpd_ps(where.high), 0x88));
}

}  // namespace

}  // namespace quorix
