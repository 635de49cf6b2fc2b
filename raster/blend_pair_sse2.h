// SPDX-License-Identifier: MIT
//
// See blend_pair.h. The six components of two pixels are computed in doubles, as three pairs of
// lanes.
#pragma once

#include "base/processor.h"

#if QUORIX_X86_64

#include <emmintrin.h>

#include "raster/blend_pair.h"

namespace quorix {

struct BlendSse2 {
  __m128d rg, bb;  // red and green, and blue twice
  uint32_t alpha;  // in the high byte

  explicit BlendSse2(uint32_t ink)
      : rg(_mm_cvtepi32_pd(_mm_setr_epi32(ink & 255, ink >> 8 & 255, 0, 0))),
        bb(_mm_set1_pd(static_cast<double>(ink >> 16 & 255))),
        alpha(ink & 0xFF000000U) {}

  PixelPair mixed(PixelPair old, double weight) const {
    const __m128i zero = _mm_setzero_si128();
    const __m128i bytes =
        _mm_setr_epi32(static_cast<int32_t>(old.far), static_cast<int32_t>(old.near), 0, 0);
    const __m128i words = _mm_unpacklo_epi8(bytes, zero);
    const __m128i far = _mm_unpacklo_epi16(words, zero);   // r g b a
    const __m128i near = _mm_unpackhi_epi16(words, zero);  // r g b a
    const __m128d weights = _mm_setr_pd(weight, 1.0 - weight);
    const __m128i far_rg = lanes(_mm_cvtepi32_pd(far), rg, _mm_unpacklo_pd(weights, weights));
    const __m128i near_rg = lanes(_mm_cvtepi32_pd(near), rg, _mm_unpackhi_pd(weights, weights));
    const __m128i blues = lanes(_mm_cvtepi32_pd(_mm_unpackhi_epi32(far, near)), bb, weights);
    const __m128i low_bytes = _mm_set1_epi32(255);
    const __m128i new_far = _mm_and_si128(_mm_unpacklo_epi64(far_rg, blues), low_bytes);
    const __m128i new_near =
        _mm_and_si128(_mm_unpacklo_epi64(near_rg, _mm_srli_epi64(blues, 32)), low_bytes);
    const __m128i packed = _mm_packus_epi16(_mm_packs_epi32(new_far, new_near), zero);
    const auto both = static_cast<uint64_t>(_mm_cvtsi128_si64(packed));
    return {(static_cast<uint32_t>(both) & 0x00FFFFFFU) | alpha,
            (static_cast<uint32_t>(both >> 32) & 0x00FFFFFFU) | alpha};
  }

 private:
  // trunc(old + (wanted - old) * weight + 0.5) in two lanes.
  static __m128i lanes(__m128d old, __m128d wanted, __m128d weight) {
    const __m128d mixed = _mm_add_pd(old, _mm_mul_pd(_mm_sub_pd(wanted, old), weight));
    return _mm_cvttpd_epi32(_mm_add_pd(mixed, _mm_set1_pd(0.5)));
  }
};

}  // namespace quorix

#endif
