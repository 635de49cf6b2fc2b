// SPDX-License-Identifier: MIT
//
// Long runs of one RGBA pixel with 32-byte stores.
#include "base/processor.h"

#if QUORIX_X86_64

#include <immintrin.h>

#include "raster/surface.h"

namespace quorix {

__attribute__((target("avx"))) void fill_long_run_avx(uint32_t *to, size_t count, uint32_t ink) {
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

}  // namespace quorix

#endif
