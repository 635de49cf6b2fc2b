// SPDX-License-Identifier: MIT
//
// PNG filters with SSE2; see png_unfilter_lanes.h.
#include "base/processor.h"

#if QUORIX_X86_64

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace quorix {

namespace {

struct Bytes {
  __m128i v;  // in the low half
};

struct Words {
  __m128i v;
};

inline Bytes from_bits(uint64_t bits) {
  return {_mm_cvtsi64_si128(static_cast<int64_t>(bits))};
}

inline uint64_t to_bits(Bytes a) {
  return static_cast<uint64_t>(_mm_cvtsi128_si64(a.v));
}

inline Bytes sum(Bytes a, Bytes b) {
  return {_mm_add_epi8(a.v, b.v)};
}

// The mean that the processor knows rounds up.
inline Bytes floor_mean(Bytes a, Bytes b) {
  const __m128i odd = _mm_and_si128(_mm_xor_si128(a.v, b.v), _mm_set1_epi8(1));
  return {_mm_sub_epi8(_mm_avg_epu8(a.v, b.v), odd)};
}

inline Words widened(Bytes a) {
  return {_mm_unpacklo_epi8(a.v, _mm_setzero_si128())};
}

inline Bytes narrowed(Words a) {
  return {_mm_packus_epi16(a.v, a.v)};
}

inline Words low_bytes(Words a) {
  return {_mm_and_si128(a.v, _mm_set1_epi16(255))};
}

inline Words sum(Words a, Words b) {
  return {_mm_add_epi16(a.v, b.v)};
}

inline Words difference(Words a, Words b) {
  return {_mm_sub_epi16(a.v, b.v)};
}

inline Words lesser(Words a, Words b) {
  return {_mm_min_epi16(a.v, b.v)};
}

inline Words greater(Words a, Words b) {
  return {_mm_max_epi16(a.v, b.v)};
}

inline Words choose_above(Words a, Words b, Words yes, Words no) {
  const __m128i above = _mm_cmpgt_epi16(a.v, b.v);
  return {_mm_or_si128(_mm_and_si128(above, yes.v), _mm_andnot_si128(above, no.v))};
}

inline bool same_words(Words a, Words b, size_t count) {
  const int lanes = (1 << 2 * count) - 1;
  return (_mm_movemask_epi8(_mm_cmpeq_epi16(a.v, b.v)) & lanes) == lanes;
}

}  // namespace

}  // namespace quorix

#include "imagein/png_unfilter_lanes.h"

namespace quorix {

void unfilter_pixels_sse2(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                          size_t pixel) {
  unfilter_pixels_lanes(filter, row, above, bytes, pixel);
}

}  // namespace quorix

#endif
