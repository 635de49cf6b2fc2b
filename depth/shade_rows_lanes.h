// SPDX-License-Identifier: MIT
//
// Shaded spans of opaque RGBA pixels, four at a time. A source file includes its lanes
// (lanes_sse2.h or lanes_avx2.h) first, then this.
//
// Each lane does the operations of the plain form in their order, so the bits are the same. Colours
// are computed only where a pixel of a group passes its depth test. Clamping to the ends of a span
// concerns its first and its last pixel alone, so only the groups that hold these do it.
#include <algorithm>

#include "depth/shade.h"

namespace quorix {

namespace {

struct LaneSpan {
  const ShadePoint *a, *b;
  Doubles xa, xb;
  double slopes[span_shades];
  __m128i alpha;
};

// A value at four pixels. `ends`: some may lie outside the span.
QUORIX_LANES Doubles ramp(const LaneSpan &s, int i, Doubles x, bool ends) {
  const Doubles a = spread(s.a->v[i]);
  Doubles v = sum(product(difference(x, s.xa), spread(s.slopes[i])), a);
  if (ends) {
    v = choose(is_less(s.xb, x), spread(s.b->v[i]), v);
    v = choose(is_less(x, s.xa), a, v);
  }
  return v;
}

QUORIX_LANES __m128i channel(const LaneSpan &s, int i, Doubles x, bool ends) {
  const __m128i v = truncated(sum(ramp(s, i, x, ends), spread(0.5)));
  return _mm_and_si128(v, _mm_set1_epi32(255));
}

// Four pixels, of which those in `valid` belong to the span; the others are read and written back.
QUORIX_LANES void shade_group(const LaneSpan &s, Doubles x, bool ends, __m128i valid, float *depths,
                              uint32_t *pixels) {
  __m128i pass = valid;
  if (depths != nullptr) {
    const __m128 old = _mm_loadu_ps(depths);
    const Doubles z = ramp(s, shade_z, x, ends);
    const Doubles nearest = difference(z, spread(opaque_tolerance));
    pass = narrowed(is_at_least(from_floats(old), nearest));
    if (ends) pass = _mm_and_si128(pass, valid);
    if (_mm_movemask_ps(_mm_castsi128_ps(pass)) == 0) return;
    const __m128i depth = choose_words(pass, _mm_castps_si128(to_floats(z)), _mm_castps_si128(old));
    _mm_storeu_ps(depths, _mm_castsi128_ps(depth));
  }
  const __m128i r = channel(s, shade_red, x, ends);
  const __m128i g = _mm_slli_epi32(channel(s, shade_green, x, ends), 8);
  const __m128i b = _mm_slli_epi32(channel(s, shade_blue, x, ends), 16);
  const __m128i colour = _mm_or_si128(_mm_or_si128(r, g), _mm_or_si128(b, s.alpha));
  auto *to = reinterpret_cast<__m128i *>(pixels);
  _mm_storeu_si128(to, choose_words(pass, colour, _mm_loadu_si128(to)));
}

QUORIX_LANES __m128i first_lanes(int32_t count) {
  return _mm_cmpgt_epi32(_mm_set1_epi32(count), _mm_setr_epi32(0, 1, 2, 3));
}

// A group that holds an end of the span: `count` pixels from x on. Where the memory of the row ends
// within the group, it is drawn in a copy.
QUORIX_LANES void shade_end(const LaneSpan &s, const RgbaRows &rows, int32_t x, int32_t count,
                            float *depths, uint32_t *pixels) {
  const Doubles xs = count_up(static_cast<double>(x));
  const __m128i valid = first_lanes(count);
  if (x + 3 <= rows.last_column) {
    return shade_group(s, xs, true, valid, depths != nullptr ? depths + x : nullptr, pixels + x);
  }
  const auto n = static_cast<size_t>(std::min(count, 4));
  float depth_copy[4] = {};
  uint32_t pixel_copy[4] = {};
  std::memcpy(pixel_copy, pixels + x, n * sizeof(uint32_t));
  if (depths == nullptr) {
    shade_group(s, xs, true, valid, nullptr, pixel_copy);
  } else {
    std::memcpy(depth_copy, depths + x, n * sizeof(float));
    shade_group(s, xs, true, valid, depth_copy, pixel_copy);
    std::memcpy(depths + x, depth_copy, n * sizeof(float));
  }
  std::memcpy(pixels + x, pixel_copy, n * sizeof(uint32_t));
}

QUORIX_LANES int32_t rounded(double v) {
  return _mm_cvttsd_si32(_mm_set_sd(v + 0.5));
}

QUORIX_LANES void shade_row(const RgbaRows &rows, const ShadePoint &a, const ShadePoint &b,
                            float *depths, uint32_t *pixels) {
  const int32_t ia = rounded(a.v[shade_x]);
  const int32_t ib = rounded(b.v[shade_x]);
  const int32_t left = std::max(ia, rows.left);
  const int32_t right = std::min(ib, rows.right);
  if (left > right) return;
  LaneSpan s;
  s.a = &a;
  s.b = &b;
  s.xa = spread(a.v[shade_x]);
  s.xb = spread(b.v[shade_x]);
  s.alpha = _mm_set1_epi32(static_cast<int32_t>(rows.alpha));
  const Doubles slopes =
      quotient(difference(load_doubles(a.v), load_doubles(b.v)), difference(s.xa, s.xb));
  store_doubles(s.slopes, ia != ib ? slopes : spread(0.0));
  shade_end(s, rows, left, right - left + 1, depths, pixels);
  int32_t x = left + 4;
  if (depths != nullptr) {
    for (; x + 3 < right; x += 4) {
      shade_group(s, count_up(static_cast<double>(x)), false, _mm_set1_epi32(-1), depths + x,
                  pixels + x);
    }
  } else {
    for (; x + 3 < right; x += 4) {
      shade_group(s, count_up(static_cast<double>(x)), false, _mm_set1_epi32(-1), nullptr,
                  pixels + x);
    }
  }
  if (x <= right) shade_end(s, rows, x, right - x + 1, depths, pixels);
}

QUORIX_LANES void step_lanes(ShadePoint *p, const ShadePoint &step) {
  store_doubles(p->v, sum(load_doubles(p->v), load_doubles(step.v)));
  p->v[shade_x] += step.v[shade_x];
}

QUORIX_LANES void shade_rows_lanes(const RgbaRows &rows, ShadeEdges *e, int32_t first,
                                   int32_t last) {
  uint32_t *pixels = rows.pixels + first * rows.pitch;
  float *depths = rows.depths != nullptr ? rows.depths + first * rows.depth_pitch : nullptr;
  for (int32_t y = first;; ++y) {
    const bool long_first = e->on_short.v[shade_x] >= e->on_long.v[shade_x];
    const ShadePoint &a = long_first ? e->on_long : e->on_short;
    const ShadePoint &b = long_first ? e->on_short : e->on_long;
    shade_row(rows, a, b, depths, pixels);
    step_lanes(&e->on_short, e->short_step);
    step_lanes(&e->on_long, e->long_step);
    if (y == last) return;
    pixels += rows.pitch;
    if (depths != nullptr) depths += rows.depth_pitch;
  }
}

}  // namespace

}  // namespace quorix
