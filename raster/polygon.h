// SPDX-License-Identifier: MIT
//
// What the two polygon fillers share: rows, edges and crossings.
#pragma once

#include <cstdint>

#include "raster/raster.h"

namespace quorix {

inline constexpr double flat_edge = 0.01;   // edges of less height cross at their first corner
inline constexpr double quick_range = 1e6;  // within it the reciprocal errs by less than 1e-8
inline constexpr double doubtful = 1e-6;

struct RowRange {
  int32_t first, last;
};

struct PolygonEdge {
  double x, y;          // first corner, in edge order
  double dx, dy;        // to the second
  double slope;         // dx / dy, where `quick`
  int32_t first, last;  // rows it crosses
  int32_t order;
  bool flat;
  bool quick;
};

// ---- polygon_edges.cpp
// The y range, or false where a corner has none.
bool y_range(const double *ys, int32_t n, double *low, double *high);
// The rows a polygon may fill within low to high; empty where first > last.
RowRange polygon_rows(double ymin, double ymax, int32_t low, int32_t high);
// The edges that cross a row of `rows`, in edge order; returns how many.
int32_t collect_edges(const double *xs, const double *ys, int32_t n, RowRange rows,
                      PolygonEdge *edges);
// Where an edge crosses a row, by the division.
int32_t exact_crossing(const PolygonEdge &e, double y);

// Crossings of one row, already in rising order.
template <class Pixel>
void fill_pairs(const Surface<Pixel> &s, const int32_t *crossings, int32_t count, int32_t y) {
  for (int32_t i = 0; i + 1 < count; i += 2) {
    const int32_t x1 = std::max(crossings[i], s.box.x1);
    const int32_t x2 = std::min(crossings[i + 1], s.box.x2);
    if (x1 <= x2) fill_span(s, x1, x2, y);
  }
}

// Few values, nearly always two.
inline void sort_crossings(int32_t *x, int32_t count) {
  if (count == 2) {
    const int32_t a = x[0];
    const int32_t b = x[1];
    x[0] = std::min(a, b);
    x[1] = std::max(a, b);
    return;
  }
  for (int32_t i = 1; i < count; ++i) {
    const int32_t value = x[i];
    int32_t j = i;
    for (; j > 0 && x[j - 1] > value; --j)
      x[j] = x[j - 1];
    x[j] = value;
  }
}

}  // namespace quorix
