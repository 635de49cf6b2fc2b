// SPDX-License-Identifier: MIT
//
// What the files of the algorithms family share, grouped by file.
//
// The family knows no drawing record. Its three parts know nothing of each other, but that the
// triangulation and the polygon store sort with index_sort.cpp.
#pragma once

#include <cstdint>

namespace quorix {

// ---- index_sort.cpp
// Permutes `index` so that keys[index[i]] ascends, equal keys by descending index. In linear time
// where there is memory for it, else in place.
void sort_indices(const double *keys, int32_t *index, int32_t n);

// ---- sweep_order.cpp
// Points nearer than this in both coordinates are one; circles are tested with it as margin.
inline constexpr double triangulation_tolerance = 1e-8;
// Puts the points into `order` by X, without those that repeat an earlier one and without what
// follows a point whose X is NaN. Gives their number, or -1 if there is no memory.
int32_t find_sweep_order(const double *x, const double *y, int32_t n, int32_t *order);

// ---- cavity_edges.cpp
struct Edge {
  int32_t from, to;  // numbers of points; from = 0 marks an edge that is cancelled
};
// Cancels, in the order of the edges, each with all later ones of the opposite direction. `table`
// has room for the first power of two from 2 * count on, all 0, and is left so.
void cancel_shared_edges(Edge *edges, int32_t count, int32_t *table);

}  // namespace quorix
