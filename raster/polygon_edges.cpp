// SPDX-License-Identifier: MIT
//
// Which rows the edges of a polygon cross, and where.
#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "raster/polygon.h"

namespace quorix {

namespace {

int32_t floor_to_int32(double v) {
  const int32_t i = to_int32(v);
  return v < i && i > INT32_MIN ? i - 1 : i;
}

// The rows that the edge from corner i to corner j crosses.
RowRange edge_rows(double yi, double yj) {
  const double low = std::min(yi, yj);
  const double high = std::max(yi, yj);
  const int32_t below = floor_to_int32(low);
  if (below == INT32_MAX || high < below) return {1, 0};
  return {below + 1, floor_to_int32(high)};
}

PolygonEdge make_polygon_edge(double xi, double yi, double xj, double yj, int32_t first,
                              int32_t last, int32_t order) {
  PolygonEdge e;
  e.x = xi;
  e.y = yi;
  e.dx = xj - xi;
  e.dy = yj - yi;
  e.first = first;
  e.last = last;
  e.order = order;
  e.flat = !(std::abs(yi - yj) >= flat_edge);
  const bool near = std::abs(xi) < quick_range && std::abs(yi) < quick_range &&
                    std::abs(xj) < quick_range && std::abs(yj) < quick_range;
  e.quick = near && !e.flat;
  e.slope = e.quick ? e.dx / e.dy : 0.0;
  return e;
}

}  // namespace

bool y_range(const double *ys, int32_t n, double *low, double *high) {
  if (n < 1) return false;
  double smallest = ys[0];
  double largest = ys[0];
  bool known = true;
  for (int32_t i = 0; i < n; ++i) {
    smallest = std::min(smallest, ys[i]);
    largest = std::max(largest, ys[i]);
    known &= ys[i] == ys[i];
  }
  *low = smallest;
  *high = largest;
  return known;
}

RowRange polygon_rows(double ymin, double ymax, int32_t low, int32_t high) {
  return {std::max(round_to_int32(ymin), low), std::min(round_to_int32(ymax), high)};
}

int32_t collect_edges(const double *xs, const double *ys, int32_t n, RowRange rows,
                      PolygonEdge *edges) {
  int32_t count = 0;
  for (int32_t i = 0; i < n; ++i) {
    const int32_t j = i == n - 1 ? 0 : i + 1;
    const RowRange r = edge_rows(ys[i], ys[j]);
    if (r.first > r.last || r.last < rows.first || r.first > rows.last) continue;
    edges[count++] = make_polygon_edge(xs[i], ys[i], xs[j], ys[j], r.first, r.last, i);
  }
  return count;
}

int32_t exact_crossing(const PolygonEdge &e, double y) {
  if (e.flat) return round_to_int32(e.x);
  return round_to_int32(e.dx * (y - e.y) / e.dy + e.x);
}

}  // namespace quorix
