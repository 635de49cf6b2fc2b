// SPDX-License-Identifier: MIT
//
// The ruler of cells: opening it, filing a circle, and going from stretch to stretch. What runs for
// every point stands in the header.
#include "algorithms/unfinished_circles.h"

#include <algorithm>
#include <cmath>

namespace quorix {

namespace {

// More than all roundings between a circle's range of Y and the tests of a point can sum up to,
// relative to the numbers that they are made with.
constexpr double slack = 1e-14;

// Cells of the finest level for each point. More part clusters better, fewer stay in cache.
constexpr double cells_per_point = 0.0625;

constexpr int32_t least_stretch = 8;
constexpr int32_t circles_per_stretch_point = 4;

int32_t take_free(UnfinishedCircles *f) {
  ++f->live;
  if (f->free == 0) return ++f->used;
  const int32_t number = f->free;
  f->free = f->circles.get()[number].next;
  return number;
}

int32_t finest_level_cells(int32_t points) {
  const auto wanted = static_cast<uint32_t>(points * cells_per_point) + 1;
  const uint32_t most = 1U << (UnfinishedCircles::most_levels - 1);
  return static_cast<int32_t>(std::min(std::bit_ceil(wanted), most));
}

// Each level has one cell in front, so that the first one has a cell before it. Gives their sum.
int32_t lay_out_levels(UnfinishedCircles *f, int32_t finest_cells) {
  int32_t start = 0;
  int32_t level = 0;
  for (int32_t n = finest_cells; n > 0; n /= 2, ++level) {
    f->level_start[level] = start;
    f->in_level[level] = 0;
    start += n + 1;
  }
  return start;
}

// Puts a circle into the cell of what it covers of Y from x to the end of the stretch.
void put_into_cell(UnfinishedCircles *f, int32_t number, double x) {
  Circle &c = f->circles.get()[number];
  c.cell = -1;
  const double nearest_x = std::clamp(c.x, x, f->stretch_end);
  const double away = c.x - nearest_x;
  const double half = std::sqrt(c.r2 - away * away + slack * c.r2);
  const double margin = slack * (std::abs(c.y) + half);
  const double lo = std::max(c.y - half - margin, f->y_first);
  const double hi = std::min(c.y + half + margin, f->y_last);
  if (!(lo <= hi)) return;
  const auto first = static_cast<uint32_t>(finest_cell(*f, lo));
  const auto last = static_cast<uint32_t>(finest_cell(*f, hi));
  const auto level = static_cast<int32_t>(std::bit_width(last - first));
  c.cell = f->level_start[level] + static_cast<int32_t>(first >> level) + 1;
  c.next = f->cells.get()[c.cell];
  f->cells.get()[c.cell] = number;
  ++f->in_level[level];
  f->occupied_levels |= 1U << level;
}

}  // namespace

bool open_circles(UnfinishedCircles *f, int32_t points, int32_t most, double y_first,
                  double y_last) {
  const int32_t finest_cells = finest_level_cells(points);
  const int32_t all_cells = lay_out_levels(f, finest_cells);
  f->last_cell = finest_cells - 1;
  f->used = f->free = f->live = 0;
  f->occupied_levels = 0;
  f->y_first = y_first;
  f->y_last = y_last;
  const double scale = finest_cells / (y_last - y_first);
  f->cells_per_unit = std::isfinite(scale) ? scale : 0.0;
  f->circles = allocate_array<Circle>(static_cast<size_t>(most) + 1);
  f->cells = allocate_zeroed_array<int32_t>(static_cast<size_t>(all_cells));
  return f->circles != nullptr && f->cells != nullptr;
}

int32_t file_circle(UnfinishedCircles *f, const Circle &circle, double x) {
  const int32_t number = take_free(f);
  f->circles.get()[number] = circle;
  put_into_cell(f, number, x);
  return number;
}

int32_t stretch_points(const UnfinishedCircles &f) {
  return std::max(f.live / circles_per_stretch_point, least_stretch);
}

void begin_stretch(UnfinishedCircles *f, double x, double stretch_end, int32_t *circle_of) {
  int32_t kept = 0;
  for (int32_t i = 1; i <= f->used; ++i) {
    const Circle &c = f->circles.get()[i];
    if (c.triangle < 0) continue;
    if (c.cell >= 0) f->cells.get()[c.cell] = 0;
    const bool passed = is_passed(c, x);
    circle_of[c.triangle] = passed ? 0 : ++kept;
    if (!passed) f->circles.get()[kept] = c;
  }
  for (int32_t &count : f->in_level)
    count = 0;
  f->occupied_levels = 0;
  f->used = f->live = kept;
  f->free = 0;
  f->stretch_end = stretch_end;
  for (int32_t i = 1; i <= kept; ++i)
    put_into_cell(f, i, x);
}

}  // namespace quorix
