// SPDX-License-Identifier: MIT
//
// The filters that look at the pixel on the left, one pixel a step, its samples side by side. Rows
// hold whole pixels.
#include "base/processor.h"

#if QUORIX_X86_64

#include <emmintrin.h>

#include <cstring>

#include "imagein/png_unfilter.h"

namespace quorix {

namespace {

// Reads up to png_row_spill bytes, of which the first `pixel` count.
template <size_t pixel>
__m128i load(const uint8_t *from) {
  if constexpr (pixel <= 4) {
    int32_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return _mm_cvtsi32_si128(word);
  } else {
    int64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return _mm_cvtsi64_si128(word);
  }
}

// Writes exactly `pixel` bytes: the next ones are still filtered.
template <size_t pixel>
void store(uint8_t *to, __m128i value) {
  if constexpr (pixel <= 4) {
    const int32_t word = _mm_cvtsi128_si32(value);
    std::memcpy(to, &word, pixel);
  } else {
    const int64_t word = _mm_cvtsi128_si64(value);
    std::memcpy(to, &word, pixel);
  }
}

__m128i select(__m128i mask, __m128i yes, __m128i no) {
  return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
}

// Whether two pixels in lanes of 16 bits are the same.
template <size_t pixel>
bool same(__m128i a, __m128i b) {
  constexpr int lanes = (1 << 2 * pixel) - 1;
  return (_mm_movemask_epi8(_mm_cmpeq_epi16(a, b)) & lanes) == lanes;
}

template <size_t pixel>
void sub(uint8_t *row, size_t bytes) {
  __m128i left = _mm_setzero_si128();
  for (size_t i = 0; i < bytes; i += pixel) {
    left = _mm_add_epi8(load<pixel>(row + i), left);
    store<pixel>(row + i, left);
  }
}

// The mean that the processor knows rounds up.
template <size_t pixel>
void average(uint8_t *row, const uint8_t *above, size_t bytes) {
  const __m128i ones = _mm_set1_epi8(1);
  __m128i left = _mm_setzero_si128();
  for (size_t i = 0; i < bytes; i += pixel) {
    const __m128i up = load<pixel>(above + i);
    const __m128i odd = _mm_and_si128(_mm_xor_si128(left, up), ones);
    const __m128i mean = _mm_sub_epi8(_mm_avg_epu8(left, up), odd);
    left = _mm_add_epi8(load<pixel>(row + i), mean);
    store<pixel>(row + i, left);
  }
}

// Eight pixels of 3 bytes, six of 4, four of 6 or three of 8.
constexpr size_t stretch = 24;

bool is_zero(const uint8_t *bytes) {
  uint64_t words[3];
  std::memcpy(words, bytes, stretch);
  return (words[0] | words[1] | words[2]) == 0;
}

// In lanes of 16 bits; the plain form says why this picks the right one. What depends on the pixel
// on the left is the way that counts, so all else is prepared beside it.
//
// Where left and upper left are the same, the pixel above is the nearest; and if nothing is added
// to it, the next pixel has the same on its left and upper left again. Rows of plots are like that.
template <size_t pixel>
void paeth(uint8_t *row, const uint8_t *above, size_t bytes) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i low_bytes = _mm_set1_epi16(255);
  __m128i left = zero;
  __m128i upper_left = zero;
  for (size_t i = 0; i < bytes; i += pixel) {
    while (i + stretch < bytes && is_zero(row + i) && same<pixel>(left, upper_left)) {
      std::memcpy(row + i, above + i, stretch);
      i += stretch;
      left = upper_left = _mm_unpacklo_epi8(load<pixel>(above + i - pixel), zero);
    }
    const __m128i up = _mm_unpacklo_epi8(load<pixel>(above + i), zero);
    const __m128i filtered = _mm_unpacklo_epi8(load<pixel>(row + i), zero);
    const __m128i three = _mm_add_epi16(upper_left, _mm_add_epi16(upper_left, upper_left));
    const __m128i threshold = _mm_sub_epi16(_mm_sub_epi16(three, up), left);
    const __m128i low = _mm_min_epi16(left, up);
    const __m128i high = _mm_max_epi16(left, up);
    const __m128i not_low = _mm_cmpgt_epi16(high, threshold);
    const __m128i not_high = _mm_cmpgt_epi16(threshold, low);
    const __m128i nearest = select(not_high, select(not_low, upper_left, low), high);
    left = _mm_and_si128(_mm_add_epi16(filtered, nearest), low_bytes);
    store<pixel>(row + i, _mm_packus_epi16(left, left));
    upper_left = up;
  }
}

template <size_t pixel>
void unfilter(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes) {
  if (filter == png_sub) return sub<pixel>(row, bytes);
  if (filter == png_average) return average<pixel>(row, above, bytes);
  paeth<pixel>(row, above, bytes);
}

}  // namespace

void unfilter_pixels_sse2(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                          size_t pixel) {
  switch (pixel) {
    case 3:
      return unfilter<3>(filter, row, above, bytes);
    case 4:
      return unfilter<4>(filter, row, above, bytes);
    case 6:
      return unfilter<6>(filter, row, above, bytes);
    default:
      return unfilter<8>(filter, row, above, bytes);
  }
}

}  // namespace quorix

#endif
