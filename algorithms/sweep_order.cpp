// SPDX-License-Identifier: MIT
//
// The order in which points enter the triangulation: by X, each place once.
//
// A point repeats an earlier one if both coordinates are nearer than the tolerance. Those near in X
// stand together, in runs; a short run is searched backward from each point, a long one (a column
// of a grid) through its points sorted by Y, so that columns cost no square of their length.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "algorithms/algorithms.h"
#include "base/memory.h"

namespace quorix {

namespace {

constexpr int32_t short_run = 48;

struct Points {
  const double *x, *y;
  int32_t *order;
};

inline bool near(double a, double b) {
  return std::abs(a - b) < triangulation_tolerance;
}

// Marks a point as one that repeats another; its place in `order` still shows which it is.
inline void mark(int32_t *point) {
  *point = ~*point;
}

inline int32_t unmarked(int32_t point) {
  return point < 0 ? ~point : point;
}

// Whether the point at position `at` repeats one from `first` on.
bool repeats_earlier(const Points &p, int32_t first, int32_t at) {
  const int32_t point = p.order[at];
  for (int32_t i = at - 1; i >= first; --i) {
    const int32_t earlier = unmarked(p.order[i]);
    if (!near(p.x[point], p.x[earlier])) return false;
    if (near(p.y[point], p.y[earlier])) return true;
  }
  return false;
}

// One position of a long run with what its search needs.
struct RunPoint {
  double x, y;
  int32_t position;
};

// Whether points[at] repeats one that stands before it in the sweep: its neighbours by Y in one
// direction are looked at as far as the tolerance reaches.
bool repeats_neighbour(const RunPoint *points, int32_t count, int32_t at, int32_t direction) {
  const RunPoint &p = points[at];
  for (int32_t i = at + direction; i >= 0 && i < count && near(p.y, points[i].y); i += direction) {
    if (points[i].position < p.position && near(p.x, points[i].x)) return true;
  }
  return false;
}

// Marks in a run from `first` to before `end`, with room for that many points.
void mark_in_long_run(const Points &p, int32_t first, int32_t end, RunPoint *points) {
  int32_t count = 0;
  for (int32_t i = first; i < end; ++i) {
    const int32_t point = p.order[i];
    if (!std::isnan(p.y[point])) points[count++] = {p.x[point], p.y[point], i};
  }
  std::sort(points, points + count, [](const RunPoint &a, const RunPoint &b) {
    return a.y != b.y ? a.y < b.y : a.position < b.position;
  });
  for (int32_t i = 0; i < count; ++i) {
    if (repeats_neighbour(points, count, i, -1) || repeats_neighbour(points, count, i, 1))
      mark(&p.order[points[i].position]);
  }
}

// The end of the run that starts at `first`: each of its points is near in X to the one before.
int32_t run_end(const Points &p, int32_t first, int32_t n) {
  int32_t end = first + 1;
  while (end < n && near(p.x[p.order[end]], p.x[p.order[end - 1]]))
    ++end;
  return end;
}

bool mark_repeated(const Points &p, int32_t n) {
  OwnedArray<RunPoint> room;
  for (int32_t first = 0; first < n;) {
    const int32_t end = run_end(p, first, n);
    if (end - first > short_run) {
      // Once for the longest run that may still come.
      if (room == nullptr) room = allocate_array<RunPoint>(static_cast<size_t>(n - first));
      if (room == nullptr) return false;
      mark_in_long_run(p, first, end, room.get());
    } else {
      for (int32_t i = first + 1; i < end; ++i) {
        if (repeats_earlier(p, first, i)) mark(&p.order[i]);
      }
    }
    first = end;
  }
  return true;
}

}  // namespace

int32_t find_sweep_order(const double *x, const double *y, int32_t n, int32_t *order) {
  for (int32_t i = 0; i < n; ++i)
    order[i] = i;
  sort_indices(x, order, n);
  int32_t end = 0;
  while (end < n && !std::isnan(x[order[end]]))
    ++end;
  end = std::min(end + 1, n);
  if (!mark_repeated({x, y, order}, end)) return -1;
  return static_cast<int32_t>(
      std::remove_if(order, order + end, [](int32_t point) { return point < 0; }) - order);
}

}  // namespace quorix
