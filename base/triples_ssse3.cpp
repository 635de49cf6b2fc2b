// SPDX-License-Identifier: MIT
//
// Five pixels of a row stand in 15 bytes, which one instruction turns; the sixteenth belongs to the
// next pixel and stays. The next five are loaded before these are stored, since a load of what was
// stored in part just now would wait for it.
#include "base/processor.h"

#if QUORIX_X86_64

#include <immintrin.h>

#include "base/triples.h"

namespace quorix {

__attribute__((target("ssse3"))) void swap_red_and_blue_ssse3(uint8_t *pixels, size_t count) {
  const __m128i order = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
  constexpr size_t loaded = 11;  // pixels that two loads touch
  if (count >= loaded) {
    __m128i five = _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels));
    for (; count >= loaded; count -= 5, pixels += 15) {
      const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels + 15));
      _mm_storeu_si128(reinterpret_cast<__m128i *>(pixels), _mm_shuffle_epi8(five, order));
      five = next;
    }
  }
  swap_red_and_blue_plainly(pixels, count);
}

}  // namespace quorix

#endif
