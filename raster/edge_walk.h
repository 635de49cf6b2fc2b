// SPDX-License-Identifier: MIT
//
// The edges of a triangle, row by row: for flat, indexed and shaded triangles.
//
// The corners stand on rows in their order downward, at least two of them on different rows. Two
// edges meet each row: the long one, from the first corner to the last, and the short one, which
// runs to the middle corner and starts again there. A point of an edge is an array of numbers, x
// among them, each the sum of what every row added to it; nothing is computed anew at a corner of
// the long edge, since pictures depend on every bit. Rows above the box are added up without being
// drawn (repeated_sum.h), rows below it are not walked, so time goes with the rows of the box.
#pragma once

#include <algorithm>
#include <cstdint>

#include "raster/repeated_sum.h"
#include "raster/surface.h"

namespace quorix {

// A point of an edge, or what one row adds to it.
template <int n>
struct EdgePoint {
  double v[n];
};

template <int n>
inline void step_point(EdgePoint<n> *p, const EdgePoint<n> &step) {
  for (int i = 0; i < n; ++i)
    p->v[i] += step.v[i];
}

template <int n>
inline void skip_rows(EdgePoint<n> *p, const EdgePoint<n> &step, int64_t rows) {
  for (int i = 0; i < n; ++i)
    p->v[i] = repeated_sum(p->v[i], step.v[i], rows);
}

// What a row adds on the way from a point on one row to a point on another.
template <int n>
inline EdgePoint<n> row_step(const EdgePoint<n> &from, const EdgePoint<n> &to, int32_t from_row,
                             int32_t to_row) {
  const double rows = static_cast<double>(to_row) - from_row;
  EdgePoint<n> step;
  for (int i = 0; i < n; ++i)
    step.v[i] = (to.v[i] - from.v[i]) / rows;
  return step;
}

// Both edges in the row that comes next.
template <int n>
struct EdgePair {
  EdgePoint<n> on_short, on_long;
  EdgePoint<n> short_step, long_step;
};

template <int n>
inline void step_edges(EdgePair<n> *edges) {
  step_point(&edges->on_short, edges->short_step);
  step_point(&edges->on_long, edges->long_step);
}

// The part of a triangle that has one short edge; rows as in walk_triangle_edges.
// Inlined always: the edges then stay in registers.
template <int n, class DrawRows>
__attribute__((always_inline)) inline void walk_edges(const Rect &box, EdgePair<n> *edges,
                                                      int64_t first, int64_t last,
                                                      DrawRows draw_rows) {
  if (first > last) return;
  const int64_t skipped = std::clamp<int64_t>(box.y1 - first, 0, last - first + 1);
  if (skipped > 0) {
    skip_rows(&edges->on_short, edges->short_step, skipped);
    skip_rows(&edges->on_long, edges->long_step, skipped);
  }
  first += skipped;
  last = std::min<int64_t>(last, box.y2);
  if (first <= last) draw_rows(edges, static_cast<int32_t>(first), static_cast<int32_t>(last));
}

// Calls draw_rows(edges, first, last) with rows of the box, at most twice. It draws these rows and
// steps both edges past each of them, as draw_each_row does.
template <int n, class DrawRows>
inline void walk_triangle_edges(const Rect &box, const EdgePoint<n> (&corner)[3],
                                const int32_t (&row)[3], DrawRows draw_rows) {
  EdgePair<n> edges;
  edges.on_long = corner[0];
  edges.long_step = row_step(corner[0], corner[2], row[0], row[2]);
  if (row[0] == row[1]) {
    edges.on_short = corner[1];
    edges.short_step = row_step(corner[1], corner[2], row[1], row[2]);
    return walk_edges(box, &edges, row[1], row[2], draw_rows);
  }
  edges.on_short = corner[0];
  edges.short_step = row_step(corner[0], corner[1], row[0], row[1]);
  walk_edges(box, &edges, row[0], row[1], draw_rows);
  if (row[1] == row[2] || row[1] >= box.y2) return;
  // The long edge goes on with its sums; the short one starts again, a row after the corner.
  edges.short_step = row_step(corner[1], corner[2], row[1], row[2]);
  edges.on_short = corner[1];
  step_point(&edges.on_short, edges.short_step);
  walk_edges(box, &edges, static_cast<int64_t>(row[1]) + 1, row[2], draw_rows);
}

// Calls draw_row(edges, y) row by row.
template <int n, class DrawRow>
inline void draw_each_row(EdgePair<n> *edges, int32_t first, int32_t last, DrawRow draw_row) {
  for (int32_t y = first; y <= last; ++y) {
    draw_row(*edges, y);
    step_edges(edges);
  }
}

}  // namespace quorix
