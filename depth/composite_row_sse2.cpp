// SPDX-License-Identifier: MIT
//
// Compositing RGBA onto RGBA, four pixels at a time; see composite_row_lanes.h.
#include "base/processor.h"

#if QUORIX_X86_64

#include <emmintrin.h>

#include <cstdint>

#define QUORIX_LANES __attribute__((always_inline)) inline

namespace quorix {

namespace {

using Register = __m128i;
using Words = uint32_t __attribute__((vector_size(sizeof(Register))));
using Halves = uint16_t __attribute__((vector_size(sizeof(Register))));

QUORIX_LANES Register bits(Words a) {
  return reinterpret_cast<Register>(a);
}

QUORIX_LANES Register bits(Halves a) {
  return reinterpret_cast<Register>(a);
}

QUORIX_LANES bool is_clear(Words a) {
  return _mm_movemask_epi8(_mm_cmpeq_epi8(bits(a), _mm_setzero_si128())) == 0xFFFF;
}

// Bytes become halves, of two pixels each.
QUORIX_LANES Halves low_bytes(Words a) {
  return reinterpret_cast<Halves>(_mm_unpacklo_epi8(bits(a), _mm_setzero_si128()));
}

QUORIX_LANES Halves high_bytes(Words a) {
  return reinterpret_cast<Halves>(_mm_unpackhi_epi8(bits(a), _mm_setzero_si128()));
}

// The words that belong to these halves, twice each.
QUORIX_LANES Halves low_words(Words a) {
  return reinterpret_cast<Halves>(_mm_unpacklo_epi32(bits(a), bits(a)));
}

QUORIX_LANES Halves high_words(Words a) {
  return reinterpret_cast<Halves>(_mm_unpackhi_epi32(bits(a), bits(a)));
}

// Halves become bytes, put together as low_bytes and high_bytes took them apart.
QUORIX_LANES Words packed(Halves low, Halves high) {
  return reinterpret_cast<Words>(_mm_packus_epi16(bits(low), bits(high)));
}

// The upper 16 of the 32 bits of a signed product.
QUORIX_LANES Halves upper_product(Halves a, Halves b) {
  return reinterpret_cast<Halves>(_mm_mulhi_epi16(bits(a), bits(b)));
}

}  // namespace

}  // namespace quorix

#include "depth/composite_row_lanes.h"

namespace quorix {

void composite_row_sse2(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule) {
  composite_row_lanes(to, layer, count, rule);
}

}  // namespace quorix

#endif
