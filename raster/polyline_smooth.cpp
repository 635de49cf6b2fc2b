// SPDX-License-Identifier: MIT
//
// Antialiased lines of width 1 on an RGBA raster: in each column (or row) of a segment the two
// pixels beside the ideal line share the colour by their distance to it.
#include <cstdlib>

#include "platform/numbers.h"
#include "raster/raster.h"
#include "raster/repeated_sum.h"

namespace quorix {

namespace {

// The colour of the pen, as the blending needs it.
struct Blend {
  double r, g, b;
  uint32_t alpha;  // in the high byte
};

Blend blend_of(uint32_t ink) {
  return {static_cast<double>(ink & 255), static_cast<double>(ink >> 8 & 255),
          static_cast<double>(ink >> 16 & 255), ink & 0xFF000000U};
}

// Not clamped: just above the page and left of it, where truncation rounds up, weights lie outside
// 0 to 1 and a component keeps the low byte of what comes out.
uint32_t blend_component(uint32_t old, double wanted, double weight) {
  const double value = static_cast<double>(old);
  return static_cast<uint32_t>(static_cast<int32_t>(value + (wanted - value) * weight + 0.5)) & 255;
}

void blend_pixel(uint32_t *pixel, const Blend &c, double weight) {
  const uint32_t old = *pixel;
  *pixel = blend_component(old & 255, c.r, weight) |
           blend_component(old >> 8 & 255, c.g, weight) << 8 |
           blend_component(old >> 16 & 255, c.b, weight) << 16 | c.alpha;
}

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

void blend_if_inside(uint32_t *base, const SmoothWalk &w, int64_t u, int64_t v, double weight,
                     const Blend &blend) {
  if (v < w.v_low || v > w.v_high) return;
  blend_pixel(base + u * w.u_pitch + v * w.v_pitch, blend, weight);
}

void draw_smooth_walk(uint32_t *base, const SmoothWalk &w, const Blend &blend) {
  int64_t u = static_cast<int64_t>(w.u0) + 1;
  const int64_t last = std::min<int64_t>(static_cast<int64_t>(w.u1) - 1, w.u_high);
  // The position adds up step by step, also before the box: a product would round differently.
  const int64_t before = std::max<int64_t>(w.u_low - u, 0);
  double v = repeated_sum(w.v, w.slope, before);
  for (u += before; u <= last; ++u) {
    v += w.slope;
    const int32_t i = to_int32(v);
    const double f = v - i;
    blend_if_inside(base, w, u, static_cast<int64_t>(i) + 1, f, blend);
    blend_if_inside(base, w, u, i, 1.0 - f, blend);
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
  const Blend blend = blend_of(s.ink);
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
