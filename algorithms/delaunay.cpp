// SPDX-License-Identifier: MIT
//
// Delaunay triangulation by insertion.
//
// Points enter by ascending X, into a triangle around all of them. Each takes out the triangles
// whose circumcircle it lies in and joins itself to the border of the hole. A triangle whose circle
// the sweep has passed is finished. At the end the triangles at the outer corners are dropped.
//
// The result is defined by a walk through the whole list of triangles at each point: it tests the
// unfinished ones in the order of their slots, and fills the slot of a triangle that goes with the
// last one of the list, which is tested there. So the order of the list and of the hole's edges
// follow from which circles are hit. Here these alone are looked up, and the walk is replayed with
// them.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "algorithms/algorithms.h"
#include "algorithms/unfinished_circles.h"
#include "base/memory.h"
#include "quorix/algorithms.h"

namespace quorix {

namespace {

constexpr double span_of_extent = 3.0;
constexpr double corner_dx = 0.866F;  // of the span; in single precision
constexpr double corner_dy = 0.5;
constexpr int32_t least_edge_room = 100;

enum Status {
  done = 0,
  list_small = 1,
  no_memory = 2,
  edges_full = 3,
  degenerate = 4,
  list_full = 5
};

// What stands in `circle_of` of a triangle without a circle.
constexpr int32_t no_circle = 0;   // finished
constexpr int32_t flat_mark = -1;  // its corners lie on a line: whoever tests it fails

struct Triangulation {
  const double *x, *y;
  int32_t n;
  int32_t *a, *b, *c;  // the corners of each triangle
  int32_t count;       // triangles in the list
  int32_t room;        // triangles that it may hold
  int32_t first_new;   // the last point's triangles stand from here on
  bool watch_new;      // one of them needs a look at the next point
  int32_t edge_room;
  int32_t points;        // in `order`
  int32_t next_stretch;  // the place in `order` where the next stretch of the sweep begins
  UnfinishedCircles unfinished;
  OwnedArray<int32_t> order;
  OwnedArray<int32_t> circle_of;  // of each triangle, its number in `unfinished` or a mark
  OwnedArray<int32_t> hits;       // slots of triangles that the point tests and does not leave
  OwnedArray<Edge> edges;
  OwnedArray<int32_t> edge_table;
};

struct Extent {
  double first, last;
};

Extent extent_of(const double *values, int32_t n) {
  Extent e = {values[0], values[0]};
  for (int32_t i = 1; i < n; ++i) {
    if (values[i] < e.first) e.first = values[i];
    if (values[i] > e.last) e.last = values[i];
  }
  return e;
}

void write_outer_corners(double *x, double *y, int32_t n, Extent ex, Extent ey) {
  const double dx = ex.last - ex.first;
  const double dy = ey.last - ey.first;
  const double span = dy > dx ? span_of_extent * dy : span_of_extent * dx;
  const double x_mid = (ex.first + ex.last) / 2.0;
  const double y_mid = (ey.first + ey.last) / 2.0;
  x[n] = x_mid - corner_dx * span;
  y[n] = y_mid - corner_dy * span;
  x[n + 1] = x_mid + corner_dx * span;
  y[n + 1] = y_mid - corner_dy * span;
  x[n + 2] = x_mid;
  y[n + 2] = y_mid + span;
}

bool allocate(Triangulation *t, Extent ey) {
  const auto room = static_cast<size_t>(t->room);
  const auto edge_room = static_cast<size_t>(t->edge_room);
  t->order = allocate_array<int32_t>(static_cast<size_t>(t->n));
  t->circle_of = allocate_array<int32_t>(room);
  t->hits = allocate_array<int32_t>(room);
  t->edges = allocate_array<Edge>(edge_room);
  t->edge_table = allocate_zeroed_array<int32_t>(std::bit_ceil(2 * edge_room));
  return t->order != nullptr && t->circle_of != nullptr && t->hits != nullptr &&
         t->edges != nullptr && t->edge_table != nullptr &&
         open_circles(&t->unfinished, t->n, t->room, ey.first, ey.last);
}

// Files the circumcircle of a triangle; gives what belongs into `circle_of`. The sweep is at `x`.
int32_t file_circumcircle(Triangulation *t, int32_t slot, double x) {
  const int32_t a = t->a[slot] - 1;
  const int32_t b = t->b[slot] - 1;
  const int32_t c = t->c[slot] - 1;
  const double x1 = t->x[a];
  const double y1 = t->y[a];
  const double ax = t->x[b] - x1;
  const double ay = t->y[b] - y1;
  const double bx = t->x[c] - x1;
  const double by = t->y[c] - y1;
  const double det = ax * by - ay * bx;
  if (std::abs(det) < triangulation_tolerance) return flat_mark;
  const double f = 0.5 / det;
  const double a2 = ax * ax + ay * ay;
  const double b2 = bx * bx + by * by;
  const double u = (a2 * by - b2 * ay) * f;
  const double v = (ax * b2 - bx * a2) * f;
  const Circle circle = {x1 + u, y1 + v, u * u + v * v, slot, 0, 0};
  if (!(circle.r2 - triangulation_tolerance > 0.0)) return no_circle;  // NaN too
  if (is_passed(circle, x)) {
    // Beyond it on the right is for good. On the left, which takes a huge circle or one that the
    // point merely touches, only what the next point says counts.
    if (!(circle.x > x)) return no_circle;
    t->watch_new = true;
  }
  return file_circle(&t->unfinished, circle, x);
}

void append_triangle(Triangulation *t, int32_t a, int32_t b, int32_t c, double x) {
  const int32_t slot = t->count++;
  t->a[slot] = a;
  t->b[slot] = b;
  t->c[slot] = c;
  t->circle_of.get()[slot] = file_circumcircle(t, slot, x);
  if (t->circle_of.get()[slot] == flat_mark) t->watch_new = true;
}

// Looks at the last point's triangles where that is needed: notes the flat ones, and sees off the
// circles that this point, at x, is beyond on the left. Gives the number of hits so far.
int32_t look_at_new(Triangulation *t, double x) {
  int32_t hits = 0;
  for (int32_t slot = t->first_new; slot < t->count; ++slot) {
    if (t->circle_of.get()[slot] == flat_mark) {
      t->hits.get()[hits++] = slot;
    } else if (t->circle_of.get()[slot] != no_circle) {
      Circle &circle = t->unfinished.circles.get()[t->circle_of.get()[slot]];
      if (is_passed(circle, x)) circle.r2 = 0.0;
    }
  }
  t->watch_new = false;
  return hits;
}

// Goes to the stretch of the sweep that begins at place `at` of the order.
void next_stretch(Triangulation *t, int32_t at) {
  const int32_t points = std::min(stretch_points(t->unfinished), t->points - at);
  t->next_stretch = at + points;
  begin_stretch(&t->unfinished, t->x[t->order.get()[at]], t->x[t->order.get()[t->next_stretch - 1]],
                t->circle_of.get());
}

// The points stand in memory in the caller's order, so that each comes from far away.
void fetch_later_point(const Triangulation &t, int32_t at) {
  constexpr int32_t ahead = 8;
  if (at + ahead >= t.points) return;
  __builtin_prefetch(&t.x[t.order.get()[at + ahead]]);
  __builtin_prefetch(&t.y[t.order.get()[at + ahead]]);
}

// The slots of all triangles that the point at place `at` of the order removes, or fails at, in
// ascending order.
int32_t find_hits(Triangulation *t, int32_t at) {
  const double x = t->x[t->order.get()[at]];
  const double y = t->y[t->order.get()[at]];
  fetch_later_point(*t, at);
  int32_t *const slots = t->hits.get();
  int32_t hits = t->watch_new ? look_at_new(t, x) : 0;
  if (at == t->next_stretch) next_stretch(t, at);
  if (t->unfinished.occupied_levels != 0 && !std::isnan(y)) {
    take_hit_circles(&t->unfinished, x, y, t->circle_of.get(),
                     [&](int32_t slot) { slots[hits++] = slot; });
  }
  std::sort(slots, slots + hits);
  return hits;
}

// Fills the slot of a triangle that goes with the last one of the list.
void remove_triangle(Triangulation *t, int32_t slot) {
  const int32_t last = --t->count;
  t->a[slot] = t->a[last];
  t->b[slot] = t->b[last];
  t->c[slot] = t->c[last];
  t->circle_of.get()[slot] = t->circle_of.get()[last];
  if (t->circle_of.get()[slot] > no_circle)
    t->unfinished.circles.get()[t->circle_of.get()[slot]].triangle = slot;
}

// Replays the walk through the list with the triangles hit. Their edges are gathered.
Status remove_hits(Triangulation *t, int32_t hits, int32_t *edge_count) {
  int32_t edges = 0;
  int32_t next = 0;
  while (next < hits) {
    const int32_t slot = t->hits.get()[next];
    if (t->circle_of.get()[slot] == flat_mark) return degenerate;
    if (edges + 3 >= t->edge_room) return edges_full;
    t->edges.get()[edges++] = {t->a[slot], t->b[slot]};
    t->edges.get()[edges++] = {t->b[slot], t->c[slot]};
    t->edges.get()[edges++] = {t->c[slot], t->a[slot]};
    remove_triangle(t, slot);
    // If the one that came here from the end is hit too, it is tested here next.
    if (t->hits.get()[hits - 1] == t->count) {
      --hits;
    } else {
      ++next;
    }
  }
  *edge_count = edges;
  return done;
}

Status insert_point(Triangulation *t, int32_t at) {
  const int32_t point = t->order.get()[at];
  const int32_t hits = find_hits(t, at);
  int32_t edges = 0;
  const Status status = remove_hits(t, hits, &edges);
  if (status != done) return status;
  cancel_shared_edges(t->edges.get(), edges, t->edge_table.get());
  t->first_new = t->count;
  for (int32_t i = 0; i < edges; ++i) {
    const Edge e = t->edges.get()[i];
    if (e.from == 0) continue;
    if (t->count >= t->room) return list_full;
    append_triangle(t, e.from, e.to, point + 1, t->x[point]);
  }
  return done;
}

// A point whose X is NaN finishes every triangle, so that the points after it change nothing. All
// that it can do itself is to fail at a flat triangle.
Status insert_nan(Triangulation *t) {
  return t->watch_new && look_at_new(t, NAN) > 0 ? degenerate : done;
}

Status insert_all(Triangulation *t) {
  const double first_x = t->x[t->order.get()[0]];
  const bool ends_with_nan = std::isnan(t->x[t->order.get()[t->points - 1]]);
  if (ends_with_nan) --t->points;
  t->unfinished.stretch_end = first_x;
  append_triangle(t, t->n + 1, t->n + 2, t->n + 3, first_x);
  for (int32_t at = 0; at < t->points; ++at) {
    const Status status = insert_point(t, at);
    if (status != done) return status;
  }
  return ends_with_nan ? insert_nan(t) : done;
}

void remove_outer_triangles(Triangulation *t) {
  for (int32_t slot = 0; slot < t->count;) {
    if (t->a[slot] <= t->n && t->b[slot] <= t->n && t->c[slot] <= t->n) {
      ++slot;
      continue;
    }
    const int32_t last = --t->count;
    t->a[slot] = t->a[last];
    t->b[slot] = t->b[last];
    t->c[slot] = t->c[last];
  }
}

Status triangulate(Triangulation *t, double *x, double *y, int32_t nmax) {
  if (nmax < 2 * int64_t{t->n} + 1) return list_small;
  const Extent ex = extent_of(x, t->n);
  const Extent ey = extent_of(y, t->n);
  t->x = x;
  t->y = y;
  t->edge_room = std::max(t->n, least_edge_room);
  // Each point can bring no more triangles than there is room for edges.
  t->room = static_cast<int32_t>(std::min(int64_t{nmax}, 1 + int64_t{t->n} * t->edge_room));
  if (!allocate(t, ey)) return no_memory;
  t->points = find_sweep_order(x, y, t->n, t->order.get());
  if (t->points < 0) return no_memory;
  write_outer_corners(x, y, t->n, ex, ey);
  const Status status = insert_all(t);
  if (status == done) remove_outer_triangles(t);
  return status;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqdlau(double *xray, double *yray, int32_t n, int32_t *i1ray, int32_t *i2ray,
                          int32_t *i3ray, int32_t nmax, int32_t *ntri, int32_t *status) {
  *ntri = 0;
  *status = 0;
  if (n < 1) return 0;
  quorix::Triangulation t = {};
  t.n = n;
  t.a = i1ray;
  t.b = i2ray;
  t.c = i3ray;
  *status = quorix::triangulate(&t, xray, yray, nmax);
  if (*status == quorix::done) *ntri = t.count;
  return 0;
}
