// SPDX-License-Identifier: MIT
//
// The scanline polygon filler, which thick lines and filled symbols use too.
//
// A row Y meets an edge if Y lies above its smaller y and not above its larger one, at
// X = trunc(x + 0.5); the crossings of a row are sorted and filled in pairs, both ends included,
// always within the clip rectangle. At most 99 crossings of a row are kept, the first in edge
// order.
//
// Each edge is looked at only in its own rows: edges are sorted by their first row and wait in that
// order until the sweep reaches them. The crossing is computed by a reciprocal; where that lands
// within `doubtful` of a change of the truncated value, the exact division decides, so the result
// is that of the division everywhere.
#include "raster/polygon.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/memory.h"
#include "base/numbers.h"
#include "quorix/raster.h"

namespace quorix {

namespace {

constexpr int32_t stack_edges = max_crossings;  // polygons up to this size need no memory

// How many edges cross the fullest of the rows low to high: `firsts` are sorted, `lasts` get so.
bool has_overfull_row(const PolygonEdge *edges, int32_t count, int32_t *lasts, RowRange rows) {
  int32_t kept = 0;
  for (int32_t i = 0; i < count; ++i)
    lasts[kept++] = edges[i].last;
  std::sort(lasts, lasts + kept);
  int32_t ended = 0;
  for (int32_t i = 0; i < count; ++i) {
    const int32_t row = std::max(edges[i].first, rows.first);
    if (row > rows.last) break;
    while (ended < kept && lasts[ended] < row)
      ++ended;
    if (i + 1 - ended > max_crossings) return true;
  }
  return false;
}

// A crossing by the reciprocal, and whether its truncation is beyond doubt.
struct QuickCrossing {
  int32_t x;
  bool sure;
};

inline QuickCrossing quick_crossing(const PolygonEdge &e, double y) {
  const double x = e.x + (y - e.y) * e.slope + 0.5;
  const auto i = static_cast<int32_t>(x);
  return {i, std::abs(std::abs(x - i) - 0.5) < 0.5 - doubtful};
}

inline int32_t crossing(const PolygonEdge &e, double y) {
  if (e.quick) {
    const QuickCrossing c = quick_crossing(e, y);
    if (c.sure) return c.x;
  }
  return exact_crossing(e, y);
}

// Rows that only two edges cross: nearly all rows of nearly all polygons.
template <class Pixel>
void fill_between(const Surface<Pixel> &s, const PolygonEdge &a, const PolygonEdge &b,
                  RowRange rows) {
  Pixel *row = s.at(0, rows.first);
  for (int32_t y = rows.first; y <= rows.last; ++y, row += s.pitch) {
    const int32_t xa = crossing(a, y);
    const int32_t xb = crossing(b, y);
    const int32_t x1 = std::max(std::min(xa, xb), s.box.x1);
    const int32_t x2 = std::min(std::max(xa, xb), s.box.x2);
    if (x1 <= x2) fill_run(row + x1, static_cast<size_t>(x2 - x1) + 1, s.ink);
  }
}

// Rows that any number of edges cross, those of `active` in its order.
template <class Pixel>
void fill_among(const Surface<Pixel> &s, const PolygonEdge *edges, const int32_t *active,
                int32_t count, RowRange rows) {
  const int32_t kept = std::min(count, max_crossings);
  for (int32_t y = rows.first; y <= rows.last; ++y) {
    int32_t crossings[max_crossings];
    for (int32_t i = 0; i < kept; ++i)
      crossings[i] = crossing(edges[active[i]], y);
    sort_crossings(crossings, kept);
    fill_pairs(s, crossings, kept, y);
  }
}

// Fills the rows from edges sorted by their first row, band by band: rows that the same edges
// cross. With `in_edge_order`, a row's edges are visited in the order of the polygon, which decides
// what is dropped where a row has too many.
template <class Pixel>
void sweep(const Surface<Pixel> &s, const PolygonEdge *edges, int32_t count, int32_t *active,
           RowRange rows, bool in_edge_order) {
  int32_t waiting = 0;
  int32_t crossed = 0;
  int64_t y = rows.first;
  while (y <= rows.last) {
    int32_t kept = 0;
    for (int32_t i = 0; i < crossed; ++i) {
      if (edges[active[i]].last >= y) active[kept++] = active[i];
    }
    crossed = kept;
    for (; waiting < count && edges[waiting].first <= y; ++waiting) {
      if (edges[waiting].last >= y) active[crossed++] = waiting;
    }
    if (in_edge_order) {
      std::sort(active, active + crossed,
                [&](int32_t a, int32_t b) { return edges[a].order < edges[b].order; });
    }
    RowRange band = {static_cast<int32_t>(y), rows.last};
    if (waiting < count) band.last = std::min(band.last, edges[waiting].first - 1);
    for (int32_t i = 0; i < crossed; ++i)
      band.last = std::min(band.last, edges[active[i]].last);
    if (crossed == 2) {
      fill_between(s, edges[active[0]], edges[active[1]], band);
    } else if (crossed > 2) {
      fill_among(s, edges, active, crossed, band);
    } else if (crossed == 0 && waiting == count) {
      return;
    }
    y = static_cast<int64_t>(band.last) + 1;
  }
}

// Polygons of more corners than fit on the stack.
template <class Pixel>
int32_t fill_large(const Surface<Pixel> &s, const double *xs, const double *ys, int32_t n,
                   RowRange clip_rows, RowRange rows) {
  auto edges = allocate_array<PolygonEdge>(static_cast<size_t>(n));
  auto active = allocate_array<int32_t>(static_cast<size_t>(n));
  if (!edges || !active) return fill_polygon_plainly(s, xs, ys, n);
  const int32_t count = collect_edges(xs, ys, n, clip_rows, edges.get());
  std::sort(edges.get(), edges.get() + count,
            [](const PolygonEdge &a, const PolygonEdge &b) { return a.first < b.first; });
  const bool overfull = has_overfull_row(edges.get(), count, active.get(), clip_rows);
  sweep(s, edges.get(), count, active.get(), rows, overfull);
  return overfull ? 1 : 0;
}

template <class Pixel>
void fill_small(const Surface<Pixel> &s, const double *xs, const double *ys, int32_t n,
                RowRange rows) {
  PolygonEdge edges[stack_edges];
  int32_t active[stack_edges];
  const int32_t count = collect_edges(xs, ys, n, rows, edges);
  std::sort(edges, edges + count,
            [](const PolygonEdge &a, const PolygonEdge &b) { return a.first < b.first; });
  sweep(s, edges, count, active, rows, false);
}

}  // namespace

template <class Pixel>
int32_t fill_polygon(const Surface<Pixel> &s, const double *xs, const double *ys, int32_t n) {
  double ymin = 0;
  double ymax = 0;
  if (!y_range(ys, n, &ymin, &ymax)) return 0;
  const RowRange clip_rows = polygon_rows(ymin, ymax, s.clip.y1, s.clip.y2);
  const RowRange rows = polygon_rows(ymin, ymax, s.box.y1, s.box.y2);
  if (n > stack_edges) return fill_large(s, xs, ys, n, clip_rows, rows);
  if (rows.first <= rows.last && s.box.x1 <= s.box.x2) fill_small(s, xs, ys, n, rows);
  return 0;
}

template int32_t fill_polygon(const PaletteSurface &, const double *, const double *, int32_t);
template int32_t fill_polygon(const RgbaSurface &, const double *, const double *, int32_t);

void fill_polygon(const OutputContext *context, const double *xs, const double *ys, int32_t n,
                  int32_t *status) {
  if (!has_raster(context)) {
    // The status speaks of the polygon and the clip rectangle, so it needs no pixels.
    PaletteSurface nowhere = make_surface<uint8_t>(context, 0);
    nowhere.page = nowhere.box = {0, 0, -1, -1};
    *status = fill_polygon(nowhere, xs, ys, n);
    return;
  }
  with_surface(context, [&](const auto &s) { *status = fill_polygon(s, xs, ys, n); });
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvpol(const double *xs, const double *ys, const int32_t *n, int32_t *status) {
  *status = 1;
  if (output_context == nullptr) return 0;
  flush_raster(output_context);
  fill_polygon(output_context, xs, ys, *n, status);
  return 0;
}
