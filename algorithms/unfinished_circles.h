// SPDX-License-Identifier: MIT
//
// The circumcircles that the sweep of the triangulation has not passed yet, filed so that those a
// point lies in are found without looking at the others.
//
// The sweep goes in stretches of some points. What a circle covers of Y within the current stretch
// is filed in one cell of a ruler of several levels, whose cells double in length from level to
// level: in the finest level whose cells are longer than the range, at the cell where the range
// begins. A point at Y can thus only be in circles of its own cell and of the cell before, one pair
// on each level. With each stretch all circles are filed anew, since their ranges have changed: the
// part right of the sweep line of one grows or shrinks, and big ones begin small.
//
// Circles that the sweep has passed leave when a point next looks at their cell, or with the next
// stretch: passed once is passed for good, because X only grows, so nobody need know before.
//
// All memory is requested at the start, for as many circles as there can ever be; pages of it that
// are not used cost nothing.
#pragma once

#include <bit>
#include <cstdint>

#include "algorithms/algorithms.h"
#include "base/memory.h"

namespace quorix {

struct Circle {
  double x, y, r2;
  int32_t triangle;  // the slot of its triangle in the list; -1 if the circle is free
  int32_t next;      // in the same cell, or among the free ones; 0 ends
  int32_t cell;      // -1 if no point of the stretch can be in it
};

struct UnfinishedCircles {
  static constexpr int32_t most_levels = 24;

  OwnedArray<Circle> circles;  // from 1
  int32_t used;                // circles handed out so far in this stretch, those free now too
  int32_t free;                // the first one given back
  int32_t live;                // those not free
  OwnedArray<int32_t> cells;   // the first circle of each, all levels behind one another
  int32_t level_start[most_levels];
  int32_t in_level[most_levels];
  uint32_t occupied_levels;  // a bit for each level with circles
  int32_t last_cell;         // of level 0
  double y_first, y_last;    // all points lie there
  double cells_per_unit;     // of Y
  double stretch_end;        // X of the last point of the stretch
};

// Makes it ready for `points` points with Y from y_first to y_last and for `most` circles at once.
// `stretch_end` is still to be set.
bool open_circles(UnfinishedCircles *f, int32_t points, int32_t most, double y_first,
                  double y_last);

// Files the circle of a triangle and gives its number. The sweep is at `x`.
int32_t file_circle(UnfinishedCircles *f, const Circle &circle, double x);

// How many points the next stretch should have: enough to pay for filing all circles anew.
int32_t stretch_points(const UnfinishedCircles &f);

// Goes to the stretch from x to stretch_end and drops all circles that the sweep, at x, has passed.
// Circles get new numbers: `circle_of` of their triangles is set to them, or to 0.
void begin_stretch(UnfinishedCircles *f, double x, double stretch_end, int32_t *circle_of);

// The cell of level 0 where y lies, for y within the points' range.
inline int32_t finest_cell(const UnfinishedCircles &f, double y) {
  const auto cell = static_cast<int32_t>((y - f.y_first) * f.cells_per_unit);
  return cell < f.last_cell ? cell : f.last_cell;
}

// Whether the sweep, at x, is beyond the circle; the side is not looked at.
inline bool is_passed(const Circle &c, double x) {
  const double hx = c.x - x;
  return !(c.r2 - triangulation_tolerance > hx * hx);
}

inline bool is_inside(const Circle &c, double x, double y) {
  const double hx = c.x - x;
  const double hy = c.y - y;
  return hx * hx + hy * hy + triangulation_tolerance < c.r2;
}

inline void free_circle(UnfinishedCircles *f, int32_t number) {
  f->circles.get()[number].triangle = -1;
  f->circles.get()[number].next = f->free;
  f->free = number;
  --f->live;
}

// Takes out the circles that (x, y) lies in and calls hit(triangle) for each, in no order. Those
// passed that it comes by leave too. Both set `circle_of` to 0.
template <class Hit>
void take_hit_circles(UnfinishedCircles *f, double x, double y, int32_t *circle_of, Hit hit) {
  const auto finest = static_cast<uint32_t>(finest_cell(*f, y));
  Circle *const circles = f->circles.get();
  for (uint32_t levels = f->occupied_levels; levels != 0; levels &= levels - 1) {
    const int32_t level = std::countr_zero(levels);
    int32_t *const cell =
        &f->cells.get()[f->level_start[level] + static_cast<int32_t>(finest >> level)];
    for (int32_t side = 0; side < 2; ++side) {
      for (int32_t *link = &cell[side]; *link != 0;) {
        const int32_t number = *link;
        Circle &c = circles[number];
        const bool passed = is_passed(c, x);
        if (!passed && !is_inside(c, x, y)) {
          link = &c.next;
          continue;
        }
        *link = c.next;
        if (--f->in_level[level] == 0) f->occupied_levels &= ~(1U << level);
        circle_of[c.triangle] = 0;
        if (!passed) hit(c.triangle);
        free_circle(f, number);
      }
    }
  }
}

}  // namespace quorix
