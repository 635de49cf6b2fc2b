// SPDX-License-Identifier: MIT
//
// Flat triangles with integer corners.
//
// Both edges are stepped row by row in doubles, so an edge ends at the sum of its steps, which need
// not be its corner. Rows above the page are summed up without being drawn.
#include "base/numbers.h"
#include "base/sort3.h"
#include "quorix/raster.h"
#include "raster/raster.h"
#include "raster/repeated_sum.h"

namespace quorix {

namespace {

struct Corner {
  double x;
  int32_t y;
};

// x per row from one corner to another, which stand on different rows.
double slope(Corner from, Corner to) {
  return (to.x - from.x) / (static_cast<double>(to.y) - from.y);
}

struct EdgePair {
  double a, b;              // x of both edges in the row that comes next
  double a_slope, b_slope;  // what a row adds
};

template <class Pixel>
void fill_row(const Surface<Pixel> &s, int32_t a, int32_t b, int32_t y) {
  const int32_t x1 = std::max(std::min(a, b), s.box.x1);
  const int32_t x2 = std::min(std::max(a, b), s.box.x2);
  if (x1 <= x2) fill_span(s, x1, x2, y);
}

// Rows first to last, whether on the page or not.
template <class Pixel>
void fill_rows(const Surface<Pixel> &s, EdgePair *edges, int64_t first, int64_t last) {
  if (first > last) return;
  const int64_t skipped = std::clamp<int64_t>(s.box.y1 - first, 0, last - first + 1);
  edges->a = repeated_sum(edges->a, edges->a_slope, skipped);
  edges->b = repeated_sum(edges->b, edges->b_slope, skipped);
  int64_t y = first + skipped;
  for (; y <= last && y <= s.box.y2; ++y) {
    fill_row(s, round_to_int32(edges->a), round_to_int32(edges->b), static_cast<int32_t>(y));
    edges->a += edges->a_slope;
    edges->b += edges->b_slope;
  }
}

// All three corners on one row.
template <class Pixel>
void fill_flat(const Surface<Pixel> &s, const int32_t *xs, int32_t y) {
  if (y < s.box.y1 || y > s.box.y2) return;
  const auto [low, high] = std::minmax({xs[0], xs[1], xs[2]});
  fill_row(s, low, high, y);
}

template <class Pixel>
void fill_triangle(const Surface<Pixel> &s, const int32_t *xs, const int32_t *ys) {
  if (is_empty(s.box)) return;
  int32_t order[3];
  sort3_int(ys, &order[0], &order[1], &order[2]);
  const Corner a = {static_cast<double>(xs[order[0]]), ys[order[0]]};
  const Corner b = {static_cast<double>(xs[order[1]]), ys[order[1]]};
  const Corner c = {static_cast<double>(xs[order[2]]), ys[order[2]]};
  if (a.y == c.y) return fill_flat(s, xs, a.y);
  EdgePair edges;
  int64_t first = static_cast<int64_t>(b.y) + 1;
  if (a.y != b.y) {
    edges = {a.x, a.x, slope(a, b), slope(a, c)};
    fill_rows(s, &edges, a.y, b.y);
    if (c.y == b.y || b.y >= s.box.y2) return;
    edges.a_slope = slope(b, c);
    edges.a = b.x + edges.a_slope;
  } else {
    edges = {b.x, a.x, slope(b, c), slope(a, c)};
    first = a.y;
  }
  fill_rows(s, &edges, first, c.y);
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvftr(const int32_t *xs, const int32_t *ys, int32_t colour) {
  if (output_context == nullptr) return 0;
  set_current_colour(output_context, colour);
  with_surface(output_context, [&](const auto &s) { fill_triangle(s, xs, ys); });
  return 0;
}
