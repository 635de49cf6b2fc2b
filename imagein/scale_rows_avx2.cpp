// SPDX-License-Identifier: MIT
//
// Interpolation with the three components of a pixel as lanes: the same products and sums, so the
// same bits. The fourth lane holds what stands behind the pixel and is overwritten by the next one.
#include "base/processor.h"

#if QUORIX_X86_64

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

// The sum of one place, its components as the low bytes of a word.
struct RowWeights {
  __m256d rest, share;
};

QUORIX_AVX2 inline int32_t mix(const ScaleRow &row, const RowWeights &rows,
                               const ScaleColumn &column) {
  const __m256d right = _mm256_broadcast_sd(&column.share);
  const __m256d left = _mm256_broadcast_sd(&column.rest);
  const uint8_t *const upper = row.upper + 3 * column.index;
  const uint8_t *const lower = row.lower + 3 * column.index;
  const __m256d a = _mm256_mul_pd(_mm256_mul_pd(rows.rest, left), load_pixel(upper));
  const __m256d b = _mm256_mul_pd(_mm256_mul_pd(rows.rest, right), load_pixel(upper + 3));
  const __m256d c = _mm256_mul_pd(_mm256_mul_pd(left, rows.share), load_pixel(lower));
  const __m256d d = _mm256_mul_pd(_mm256_mul_pd(rows.share, right), load_pixel(lower + 3));
  const __m256d sum = _mm256_add_pd(_mm256_add_pd(_mm256_add_pd(a, b), c), d);
  const __m128i low_bytes = _mm_setr_epi8(0, 4, 8, 12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  return _mm_cvtsi128_si32(_mm_shuffle_epi8(_mm256_cvttpd_epi32(sum), low_bytes));
}

}  // namespace

QUORIX_AVX2 void scale_rgb_avx2(const ScaleRow &row, const ScaleColumn *columns, size_t count,
                                uint8_t *to) {
  if (count == 0) return;
  const RowWeights rows = {_mm256_set1_pd(row.rest), _mm256_set1_pd(row.share)};
  const size_t last = count - 1;
  for (size_t i = 0; i < last; ++i, to += 3) {
    const int32_t pixel = mix(row, rows, columns[i]);
    std::memcpy(to, &pixel, sizeof pixel);
  }
  const int32_t pixel = mix(row, rows, columns[last]);
  std::memcpy(to, &pixel, 3);
}

}  // namespace quorix

#endif
