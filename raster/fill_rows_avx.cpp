// SPDX-License-Identifier: MIT
//
// Rows of one colour with 32-byte stores, nearly all of which lie within one cache line.
#include "base/processor.h"

#if QUORIX_X86_64

#include <immintrin.h>

#include "raster/fill_run.h"

namespace quorix {

// The first and the last store of a row may overlap those between them. A pixel of four bytes
// stands at a multiple of four, so the colour goes on in step behind the first store.
__attribute__((target("avx"))) void fill_rows_avx(const Rows<uint8_t> &rows, uint32_t four_bytes) {
  const __m256i ink = _mm256_set1_epi32(static_cast<int32_t>(four_bytes));
  uint8_t *row = rows.first;
  for (size_t i = 0; i < rows.rows; ++i, row += rows.pitch) {
    uint8_t *const last = row + rows.width - avx_bytes;
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(row), ink);
    uint8_t *to = row + avx_bytes - (reinterpret_cast<uintptr_t>(row) & (avx_bytes - 1));
    for (; to < last; to += avx_bytes)
      _mm256_store_si256(reinterpret_cast<__m256i *>(to), ink);
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(last), ink);
  }
}

}  // namespace quorix

#endif
