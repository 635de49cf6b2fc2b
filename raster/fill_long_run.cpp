// SPDX-License-Identifier: MIT
//
// Long runs of one RGBA pixel: with 32-byte stores where the processor has them.
#include <immintrin.h>

#include "raster/surface.h"

namespace quorix {

namespace {

void fill_with_16_bytes(uint32_t *to, size_t count, uint32_t ink) {
  const __m128i four = _mm_set1_epi32(static_cast<int32_t>(ink));
  uint32_t *const last = to + count - 4;
  for (; to < last; to += 4)
    _mm_storeu_si128(reinterpret_cast<__m128i *>(to), four);
  _mm_storeu_si128(reinterpret_cast<__m128i *>(last), four);
}

__attribute__((target("avx"))) void fill_with_32_bytes(uint32_t *to, size_t count, uint32_t ink) {
  const __m256i eight = _mm256_set1_epi32(static_cast<int32_t>(ink));
  uint32_t *const last = to + count - 8;
  _mm256_storeu_si256(reinterpret_cast<__m256i *>(to), eight);
  // From here on every store lies within one cache line.
  to += 8 - (reinterpret_cast<uintptr_t>(to) / 4 & 7);
  for (; to + 8 < last; to += 16) {
    _mm256_store_si256(reinterpret_cast<__m256i *>(to), eight);
    _mm256_store_si256(reinterpret_cast<__m256i *>(to + 8), eight);
  }
  if (to < last) _mm256_storeu_si256(reinterpret_cast<__m256i *>(to), eight);
  _mm256_storeu_si256(reinterpret_cast<__m256i *>(last), eight);
}

}  // namespace

void fill_long_run(uint32_t *to, size_t count, uint32_t ink) {
  static const bool has_wide_stores = __builtin_cpu_supports("avx") != 0;
  if (has_wide_stores) {
    fill_with_32_bytes(to, count, ink);
  } else {
    fill_with_16_bytes(to, count, ink);
  }
}

}  // namespace quorix
