// SPDX-License-Identifier: MIT
//
// Interpolation with the three components of a pixel as lanes: the same products and sums, so the
// same bits. The fourth lane holds what stands behind the pixel and is overwritten by the next one.
#include <immintrin.h>

#include <cstring>

#include "imagein/scale.h"

namespace quorix {

namespace {

#define QUORIX_AVX2 __attribute__((target("avx2")))

QUORIX_AVX2 inline __m256d load_pixel(const uint8_t *pixel) {
  int32_t word = 0;
  std::memcpy(&word, pixel, sizeof word);
  return _mm256_cvtepi32_pd(_mm_cvtepu8_epi32(_mm_cvtsi32_si128(word)));
}

QUORIX_AVX2 inline void store_pixel(uint8_t *to, __m256d sum) {
  const __m128i whole = _mm256_cvttpd_epi32(sum);
  const __m128i low_bytes = _mm_setr_epi8(0, 4, 8, 12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const int32_t word = _mm_cvtsi128_si32(_mm_shuffle_epi8(whole, low_bytes));
  std::memcpy(to, &word, sizeof word);
}

}  // namespace

QUORIX_AVX2 void scale_rgb_avx2(const ScaleRow &row, const ScaleColumn *columns, size_t count,
                                uint8_t *to) {
  const __m256d share = _mm256_set1_pd(row.share);
  const __m256d rest = _mm256_set1_pd(row.rest);
  for (size_t i = 0; i < count; ++i, to += 3) {
    const __m256d right = _mm256_broadcast_sd(&columns[i].share);
    const __m256d left = _mm256_broadcast_sd(&columns[i].rest);
    const uint8_t *const upper = row.upper + 3 * columns[i].index;
    const uint8_t *const lower = row.lower + 3 * columns[i].index;
    const __m256d a = _mm256_mul_pd(_mm256_mul_pd(rest, left), load_pixel(upper));
    const __m256d b = _mm256_mul_pd(_mm256_mul_pd(rest, right), load_pixel(upper + 3));
    const __m256d c = _mm256_mul_pd(_mm256_mul_pd(left, share), load_pixel(lower));
    const __m256d d = _mm256_mul_pd(_mm256_mul_pd(share, right), load_pixel(lower + 3));
    store_pixel(to, _mm256_add_pd(_mm256_add_pd(_mm256_add_pd(a, b), c), d));
  }
}

}  // namespace quorix
