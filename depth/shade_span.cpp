// SPDX-License-Identifier: MIT
//
// The plain form of shaded spans, for every layout of pixels.
#include "base/numbers.h"
#include "depth/pixel_formats.h"
#include "depth/shade.h"

namespace quorix {

namespace {

// What all pixels of a target have in common.
struct SpanRule {
  bool blended;
  bool swapped;
  double alpha;  // from 0 to 1
};

template <class Pixels>
SpanRule span_rule(const OutputContext *context) {
  return {Pixels::blends && context->depth.alpha_blend_on != 0,
          context->page.white_background != 0 && context->options.swap_black_white != 0,
          context->colours.colour_alpha / 255.0};
}

// A value along a span. Rounding can put a pixel outside the exact span; there the value of that
// end holds, so that none overshoots.
struct Ramp {
  double xa, xb, a, b, slope;

  double at(double x) const {
    if (x < xa) return a;
    if (x > xb) return b;
    return (x - xa) * slope + a;
  }
};

bool passes(const SpanRule &rule, double depth, double z) {
  if (rule.blended) return !(depth <= z + blended_distance);
  return depth >= z - opaque_tolerance;
}

uint8_t mixed(double alpha, uint8_t old_value, uint8_t new_value) {
  return to_byte((1.0 - alpha) * old_value + new_value * alpha + 0.5);
}

template <class Pixels>
void put_shaded(const Pixels &pixels, const SpanRule &rule, int32_t x, int32_t y, Rgb c) {
  if constexpr (Pixels::blends) {
    if (rule.blended) {
      const Rgb old = pixels.get(x, y);
      c = {mixed(rule.alpha, old.r, c.r), mixed(rule.alpha, old.g, c.g),
           mixed(rule.alpha, old.b, c.b)};
    }
  }
  if (rule.swapped) c = swap_black_white_pixel(c);
  pixels.put(x, y, pixels.ink(c));
}

// As shade_span, with what the rows have in common.
template <class Pixels>
void shade_row(const Target &t, const Pixels &pixels, const SpanRule &rule, const ShadePoint &a,
               const ShadePoint &b, int32_t y) {
  const int32_t ia = round_to_int32(a.v[shade_x]);
  const int32_t ib = round_to_int32(b.v[shade_x]);
  const int32_t left = std::max(ia, t.box.x1);
  const int32_t right = std::min(ib, t.box.x2);
  if (left > right || y < t.box.y1 || y > t.box.y2) return;
  Ramp ramps[span_shades];
  for (int i = 0; i < span_shades; ++i) {
    const double slope = ia != ib ? (a.v[i] - b.v[i]) / (a.v[shade_x] - b.v[shade_x]) : 0.0;
    ramps[i] = {a.v[shade_x], b.v[shade_x], a.v[i], b.v[i], slope};
  }
  float *depths = t.depth == nullptr ? nullptr : t.depth + y * t.depth_pitch;
  for (int32_t x = left; x <= right; ++x) {
    const double z = ramps[shade_z].at(x);
    if (depths != nullptr) {
      if (!passes(rule, static_cast<double>(depths[x]), z)) continue;
      depths[x] = static_cast<float>(z);
    }
    put_shaded(pixels, rule, x, y,
               {to_byte(ramps[shade_red].at(x) + 0.5), to_byte(ramps[shade_green].at(x) + 0.5),
                to_byte(ramps[shade_blue].at(x) + 0.5)});
  }
}

template <class Pixels>
void shade_rows(const Target &t, const Pixels &pixels, ShadeEdges *e, int32_t first, int32_t last) {
  const SpanRule rule = span_rule<Pixels>(t.context);
  for (int32_t y = first;; ++y) {
    // Where both stand at one x, the long edge comes first.
    if (e->on_short.v[shade_x] >= e->on_long.v[shade_x]) {
      shade_row(t, pixels, rule, e->on_long, e->on_short, y);
    } else {
      shade_row(t, pixels, rule, e->on_short, e->on_long, y);
    }
    step_edges(e);
    if (y == last) return;
  }
}

}  // namespace

void shade_span(const Target &t, const ShadePoint &a, const ShadePoint &b, int32_t y) {
  with_pixels(t, [&](const auto &pixels) {
    const SpanRule rule = span_rule<std::decay_t<decltype(pixels)>>(t.context);
    shade_row(t, pixels, rule, a, b, y);
  });
}

void shade_rows_plain(const Target &t, ShadeEdges *edges, int32_t first, int32_t last) {
  with_pixels(t, [&](const auto &pixels) { shade_rows(t, pixels, edges, first, last); });
}

}  // namespace quorix
