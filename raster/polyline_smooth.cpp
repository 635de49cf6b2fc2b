// SPDX-License-Identifier: MIT
//
// Antialiased lines of width 1 on an RGBA raster: in each column (or row) of a segment the two
// pixels beside the ideal line share the colour by their distance to it.
#include <cstdlib>

#include "base/numbers.h"
#include "raster/blend_pair.h"
#include "raster/blend_pair_sse2.h"
#include "raster/raster.h"
#include "raster/repeated_sum.h"

namespace quorix {

namespace {

#if QUORIX_X86_64
using Blend = BlendSse2;
#else
using Blend = BlendPlain;
#endif

// Both axes equally long: every pixel lies on the line.
void draw_diagonal(const RgbaSurface &s, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
  if (x0 > x1) {
    std::swap(x0, x1);
    std::swap(y0, y1);
  }
  const int64_t step = y0 > y1 ? -1 : 1;
  const int64_t first = std::max<int64_t>(x0, s.box.x1);
  const int64_t last = std::min<int64_t>(x1, s.box.x2);
  for (int64_t x = first; x <= last; ++x)
    put_pixel(s, x, y0 + step * (x - x0));
}

// The line along its major axis u. `at(u, v)` is where the pixel stands.
struct SmoothWalk {
  int32_t u0, u1;
  double v, slope;
  ptrdiff_t u_pitch, v_pitch;
  int32_t u_low, u_high, v_low, v_high;  // the box
};

// The steps u to last, every pixel tested.
void draw_guarded(uint32_t *base, const SmoothWalk &w, const Blend &blend, int64_t u, int64_t last,
                  double v) {
  for (; u <= last; ++u) {
    v += w.slope;
    const int64_t i = to_int32(v);
    const bool far_inside = i + 1 >= w.v_low && i + 1 <= w.v_high;
    const bool near_inside = i >= w.v_low && i <= w.v_high;
    if (!far_inside && !near_inside) continue;
    uint32_t *near = base + u * w.u_pitch + i * w.v_pitch;
    uint32_t *far = near + w.v_pitch;
    const PixelPair pair =
        blend.mixed({far_inside ? *far : 0, near_inside ? *near : 0}, v - static_cast<double>(i));
    if (far_inside) *far = pair.far;
    if (near_inside) *near = pair.near;
  }
}

// The same where both pixels of every step are known to lie in the box.
void draw_unguarded(uint32_t *base, const SmoothWalk &w, const Blend &blend, int64_t u,
                    int64_t last, double v) {
  // Steep lines touch a new row, far away in memory, with every step.
  constexpr int32_t steps_ahead = 8;
  const ptrdiff_t ahead =
      steps_ahead * w.u_pitch + static_cast<ptrdiff_t>(steps_ahead * w.slope) * w.v_pitch;
  uint32_t *column = base + u * w.u_pitch;
  for (; u <= last; ++u, column += w.u_pitch) {
    v += w.slope;
    const auto i = static_cast<int32_t>(v);
    uint32_t *near = column + i * w.v_pitch;
    uint32_t *far = near + w.v_pitch;
    __builtin_prefetch(near + ahead, 1);
    const PixelPair pair = blend.mixed({*far, *near}, v - i);
    *far = pair.far;
    *near = pair.near;
  }
}

void draw_smooth_walk(uint32_t *base, const SmoothWalk &w, const Blend &blend) {
  int64_t u = static_cast<int64_t>(w.u0) + 1;
  const int64_t last = std::min<int64_t>(static_cast<int64_t>(w.u1) - 1, w.u_high);
  // The position adds up step by step, also before the box: a product would round differently.
  const int64_t before = std::max<int64_t>(w.u_low - u, 0);
  const double v = repeated_sum(w.v, w.slope, before);
  u += before;
  if (u > last) return;
  // Where the walk ends, with a pixel of margin for what rounding adds up to.
  const double end = v + w.slope * static_cast<double>(last - u + 1);
  const double low = std::min(v, end) - 1.0;
  const double high = std::max(v, end) + 2.0;
  if (low >= w.v_low && low >= 0.0 && high <= w.v_high) {
    draw_unguarded(base, w, blend, u, last, v);
  } else {
    draw_guarded(base, w, blend, u, last, v);
  }
}

void draw_smooth_segment(const RgbaSurface &s, const Blend &blend, int32_t x0, int32_t y0,
                         int32_t x1, int32_t y1) {
  put_pixel(s, x1, y1);
  put_pixel(s, x0, y0);
  if (is_empty(s.box)) return;
  const double fx = static_cast<double>(x1) - x0;
  const double fy = static_cast<double>(y1) - y0;
  if (std::abs(fy) < std::abs(fx)) {
    if (x0 > x1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    draw_smooth_walk(s.base,
                     {x0, x1, static_cast<double>(y0), fy / fx, 1, s.pitch, s.box.x1, s.box.x2,
                      s.box.y1, s.box.y2},
                     blend);
  } else {
    if (y0 > y1) {
      std::swap(x0, x1);
      std::swap(y0, y1);
    }
    draw_smooth_walk(s.base,
                     {y0, y1, static_cast<double>(x0), fx / fy, s.pitch, 1, s.box.y1, s.box.y2,
                      s.box.x1, s.box.x2},
                     blend);
  }
}

}  // namespace

void draw_smooth_rgba(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
                      const int32_t *ys, int32_t n) {
  const Blend blend(s.ink);
  for (int32_t i = 1; i < n; ++i) {
    const int32_t x0 = xs[i - 1];
    const int32_t y0 = ys[i - 1];
    const int32_t x1 = xs[i];
    const int32_t y1 = ys[i];
    if (y0 == y1) {
      draw_hline(s, context, x0, y0, x1);
    } else if (x0 == x1) {
      draw_vline(s, context, x0, y0, y1);
    } else if (std::abs(static_cast<int64_t>(x1) - x0) == std::abs(static_cast<int64_t>(y1) - y0)) {
      draw_diagonal(s, x0, y0, x1, y1);
    } else {
      draw_smooth_segment(s, blend, x0, y0, x1, y1);
    }
  }
}

}  // namespace quorix
