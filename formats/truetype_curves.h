// SPDX-License-Identifier: MIT
//
// Points and flattened curves into an outline. What happens for every point is inlined by force,
// which halves the time.
#pragma once

#include <algorithm>
#include <cstdint>

#include "formats/truetype_glyph.h"

namespace quorix {

struct OutlinePoint {
  double x, y;
};

[[gnu::always_inline]] inline void put_point(Outline *out, OutlinePoint p) {
  if (out->points < out->room) {
    out->x[out->points] = p.x * out->scale;
    out->y[out->points] = p.y * out->scale;
  }
  ++out->points;
}

// The points of a curve after its start, by weights that are at hand. The room is there.
template <int32_t Count>
[[gnu::always_inline]] inline void put_weighted(Outline *out, const CurveWeights &weights,
                                                OutlinePoint p, OutlinePoint c, OutlinePoint e) {
  const double scale = out->scale;
  const int32_t count = Count == 0 ? out->curve_points : Count;
  double *const __restrict x = out->x + out->points;
  double *const __restrict y = out->y + out->points;
  for (int32_t j = 0; j < count; ++j) {
    const double start = weights.start[j], control = weights.control[j], end = weights.end[j];
    x[j] = (start * p.x + control * c.x + end * e.x) * scale;
    y[j] = (start * p.y + control * c.y + end * e.y) * scale;
  }
  out->points += count;
}

struct WeightsAt {
  double start, control, end;
};

inline WeightsAt weights_at(int32_t j, int32_t last) {
  const double t = static_cast<double>(j) / last;
  return {(1 - t) * (1 - t), 2 * (1 - t) * t, t * t};
}

// Any curve, as far as there is room.
inline void put_long_curve(Outline *out, OutlinePoint p, OutlinePoint c, OutlinePoint e) {
  const int64_t left = std::max<int64_t>(out->room - out->points, 0);
  const int32_t stored = static_cast<int32_t>(std::min<int64_t>(out->curve_points, left));
  for (int32_t j = 1; j <= stored; ++j) {
    const WeightsAt w = weights_at(j, out->curve_points);
    put_point(out, {w.start * p.x + w.control * c.x + w.end * e.x,
                    w.start * p.y + w.control * c.y + w.end * e.y});
  }
  out->points += out->curve_points - stored;
}

[[gnu::always_inline]] inline void put_curve(Outline *out, const CurveWeights &weights,
                                             OutlinePoint p, OutlinePoint c, OutlinePoint e) {
  if (weights.count == out->curve_points && out->room - out->points >= out->curve_points) {
    if (out->curve_points == least_curve_steps - 1) {
      put_weighted<least_curve_steps - 1>(out, weights, p, c, e);
    } else {
      put_weighted<0>(out, weights, p, c, e);
    }
  } else {
    put_long_curve(out, p, c, e);
  }
}

inline void keep_weights(CurveWeights *weights, int32_t count) {
  if (weights->count == count || count > ttf_kept_points) return;
  weights->count = count;
  for (int32_t j = 1; j <= count; ++j) {
    const WeightsAt w = weights_at(j, count);
    weights->start[j - 1] = w.start;
    weights->control[j - 1] = w.control;
    weights->end[j - 1] = w.end;
  }
}

// Closes a contour with a copy of its first point. A contour of one control point has none, so
// that the copy is of whatever point the glyph came by last.
inline void close_contour(Outline *out, int64_t first, OutlinePoint last_on_curve) {
  if (first == out->points) return put_point(out, last_on_curve);
  if (out->points < out->room) {
    out->x[out->points] = out->x[first];
    out->y[out->points] = out->y[first];
  }
  ++out->points;
}

}  // namespace quorix
