// SPDX-License-Identifier: MIT
//
// The seed grid: points of streamlines filed by cell, and the lines in a queue.
//
// A cell holds the number of its newest point, and each point that of the one before it, so that
// filing one never moves another. Most cells hold one point at most; what tests touch is kept
// small. All lines of the queue keep a copy of their points until the queue has gone past them.
//
// Two dimensions are three with one layer of cells, which changes no cell number.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "base/grow.h"
#include "base/memory.h"
#include "base/numbers.h"
#include "quorix/algorithms.h"

namespace quorix {

namespace {

constexpr int32_t first_lines = 100;
constexpr int32_t point_room = 4096;

struct Position {
  double x, y, z;
};

struct SeedLine {
  double *points;  // owned; ndim coordinates each; null once the queue has gone past it
  int32_t n1, n2;
};

struct SeedGrid {
  double xmin, xmax, ymin, ymax, zmin, zmax;
  double cell_size;
  int32_t ndim;  // 2 or 3
  int32_t nx, ny, nz;
  int64_t cell_count;
  int32_t line_count, line_capacity;
  int32_t current_line;
  bool cell_overflow;  // a point could not be filed
  // The newest point of each cell, negative if there is an earlier one. One more, always empty.
  OwnedArray<int32_t> cells;
  OwnedArray<SeedLine> lines;
  OwnedArray<double> positions;  // ndim for each point, from point 1 on
  OwnedArray<int32_t> earlier;   // for each point, the one before it in its cell; 0 ends
  int32_t point_count, point_capacity;
};

SeedGrid *seed_grid = nullptr;  // owned

void release_grid(SeedGrid *grid) {
  for (int32_t i = 0; i < grid->line_count; ++i)
    release_bytes(grid->lines.get()[i].points);
  grid->~SeedGrid();
  release_bytes(grid);
}

// Cells along an axis, enough for the range and what rounding adds.
int32_t cells_along(double first, double last, double cell_size) {
  return to_int32((last - first) / cell_size + 1.5);
}

bool is_domain(double first, double last) {
  return last - first >= 0.0 && std::isfinite(last - first);
}

bool has_valid_domain(const SeedGrid &g) {
  return g.cell_size > 0.0 && std::isfinite(g.cell_size) && is_domain(g.xmin, g.xmax) &&
         is_domain(g.ymin, g.ymax) && is_domain(g.zmin, g.zmax);
}

size_t position_values(const SeedGrid &g, int32_t points) {
  return static_cast<size_t>(g.ndim) * static_cast<size_t>(points);
}

bool allocate(SeedGrid *grid) {
  size_t cells = 0;
  if (!checked_product(&cells, static_cast<size_t>(grid->nx), static_cast<size_t>(grid->ny),
                       static_cast<size_t>(grid->nz)) ||
      cells > SIZE_MAX / 16)
    return false;
  grid->cell_count = static_cast<int64_t>(cells);
  grid->line_capacity = first_lines;
  grid->point_capacity = point_room;
  grid->cells = allocate_zeroed_array<int32_t>(cells + 1);
  grid->lines = allocate_zeroed_array<SeedLine>(first_lines);
  grid->positions = allocate_array<double>(position_values(*grid, point_room));
  grid->earlier = allocate_array<int32_t>(point_room);
  if (!grid->cells || !grid->lines || !grid->positions || !grid->earlier) return false;
  grid->point_count = 1;
  return true;
}

void close_grid() {
  if (seed_grid != nullptr) release_grid(seed_grid);
  seed_grid = nullptr;
}

// Opens a grid with the domain, cell size and dimension of `wanted`.
int32_t open_grid(const SeedGrid &wanted) {
  if (!has_valid_domain(wanted)) return 1;
  void *const block = allocate_zeroed_bytes(sizeof(SeedGrid));
  if (block == nullptr) return 1;
  auto *const grid = new (block) SeedGrid{};
  grid->xmin = wanted.xmin;
  grid->xmax = wanted.xmax;
  grid->ymin = wanted.ymin;
  grid->ymax = wanted.ymax;
  grid->zmin = wanted.zmin;
  grid->zmax = wanted.zmax;
  grid->cell_size = wanted.cell_size;
  grid->ndim = wanted.ndim;
  grid->nx = cells_along(wanted.xmin, wanted.xmax, wanted.cell_size);
  grid->ny = cells_along(wanted.ymin, wanted.ymax, wanted.cell_size);
  grid->nz = wanted.ndim == 3 ? cells_along(wanted.zmin, wanted.zmax, wanted.cell_size) : 1;
  if (!allocate(grid)) {
    release_grid(grid);
    return 1;
  }
  close_grid();
  seed_grid = grid;
  return 0;
}

struct Cell {
  int32_t ix, iy, iz;
};

// Where a position lies in the grid; false where nothing is filed and nothing accepted. `ix` is
// compared with `ny` and `iy` with `nx`: that is how far the cells serve.
bool find_cell(const SeedGrid &g, Position p, Cell *cell) {
  if (std::isnan(p.x) || std::isnan(p.y) || std::isnan(p.z)) return false;
  const int32_t ix = to_int32((p.x - g.xmin) / g.cell_size);
  const int32_t iy = to_int32((p.y - g.ymin) / g.cell_size);
  const int32_t iz = g.ndim == 3 ? to_int32((p.z - g.zmin) / g.cell_size) : 0;
  *cell = {ix, iy, iz};
  return ix >= 0 && ix < g.ny && iy >= 0 && iy < g.nx && iz >= 0 && iz < g.nz;
}

inline int64_t cell_number(const SeedGrid &g, int64_t ix, int64_t iy, int64_t iz) {
  return (ix * g.ny + iy) * g.nz + iz;
}

// From here on along x all cells and their neighbours are outside, and their numbers might not fit.
inline bool is_far_outside(const SeedGrid &g, const Cell &cell) {
  return cell.ix > int64_t{g.nx} + 2;
}

bool make_room_for_point(SeedGrid *grid) {
  if (grid->point_count < grid->point_capacity) return true;
  if (grid->point_count == INT32_MAX) return false;
  const int32_t capacity = grown_room(grid->point_capacity, grid->point_count + 1);
  if (!grow_array(&grid->positions, position_values(*grid, grid->point_count),
                  position_values(*grid, capacity)) ||
      !grow_array(&grid->earlier, grid->point_count, capacity))
    return false;
  grid->point_capacity = capacity;
  return true;
}

void file_point(SeedGrid *grid, Position p) {
  Cell cell = {};
  if (!find_cell(*grid, p, &cell) || is_far_outside(*grid, cell)) return;
  const int64_t number = cell_number(*grid, cell.ix, cell.iy, cell.iz);
  if (number >= grid->cell_count) return;
  if (!make_room_for_point(grid)) {
    grid->cell_overflow = true;
    return;
  }
  const int32_t point = grid->point_count++;
  double *const at = grid->positions.get() + position_values(*grid, point);
  at[0] = p.x;
  at[1] = p.y;
  if (grid->ndim == 3) at[2] = p.z;
  int32_t &newest = grid->cells.get()[number];
  grid->earlier.get()[point] = std::abs(newest);
  newest = newest == 0 ? point : -point;
}

template <int32_t ndim>
inline bool is_near(const SeedGrid &g, int32_t point, Position p, double distance) {
  const double *const at = g.positions.get() + size_t{ndim} * static_cast<size_t>(point);
  const double dx = at[0] - p.x;
  const double dy = at[1] - p.y;
  double squared = dx * dx + dy * dy;
  if (ndim == 3) squared += (at[2] - p.z) * (at[2] - p.z);
  return distance > std::sqrt(squared);
}

template <int32_t ndim>
inline bool is_near_point_of_cell(const SeedGrid &g, int64_t number, Position p, double distance) {
  if (number < 0 || number >= g.cell_count) return false;
  const int32_t newest = g.cells.get()[number];
  if (newest == 0) return false;
  if (is_near<ndim>(g, std::abs(newest), p, distance)) return true;
  if (newest > 0) return false;
  for (int32_t point = g.earlier.get()[-newest]; point != 0; point = g.earlier.get()[point]) {
    if (is_near<ndim>(g, point, p, distance)) return true;
  }
  return false;
}

// Looks through the cell and its neighbours. Only their numbers are held against the grid, so that
// at its edge the far end of the next column counts as a neighbour.
template <int32_t ndim>
bool is_near_filed_point(const SeedGrid &g, const Cell &cell, Position p, double distance) {
  if (is_far_outside(g, cell)) return false;
  const int64_t first = cell_number(g, int64_t{cell.ix} - 1, int64_t{cell.iy} - 1, cell.iz);
  const int64_t column = int64_t{g.ny} * g.nz;
  const int64_t layers = ndim == 3 ? g.nz : 1;
  const int64_t deep = ndim == 3 ? 1 : 0;
  for (int64_t row = first; row <= first + 2 * column; row += column) {
    for (int64_t middle = row; middle <= row + 2 * layers; middle += layers) {
      for (int64_t number = middle - deep; number <= middle + deep; ++number) {
        if (is_near_point_of_cell<ndim>(g, number, p, distance)) return true;
      }
    }
  }
  return false;
}

bool is_in_domain(const SeedGrid &g, Position p) {
  if (p.x < g.xmin || p.x > g.xmax || p.y < g.ymin || p.y > g.ymax) return false;
  return g.ndim != 3 || (p.z >= g.zmin && p.z <= g.zmax);
}

bool is_accepted(const SeedGrid &g, Position p, double factor) {
  Cell cell = {};
  if (!is_in_domain(g, p) || !find_cell(g, p, &cell)) return false;
  const double distance = g.cell_size * factor;
  return !(g.ndim == 3 ? is_near_filed_point<3>(g, cell, p, distance)
                       : is_near_filed_point<2>(g, cell, p, distance));
}

struct Coordinates {
  const double *x, *y, *z;  // z is read in three dimensions only
};

inline Position position(const SeedGrid &g, const Coordinates &c, int64_t i) {
  return {c.x[i], c.y[i], g.ndim == 3 ? c.z[i] : 0.0};
}

double *copy_points(const SeedGrid &g, const Coordinates &c, int64_t n) {
  const auto values = static_cast<size_t>(g.ndim) * static_cast<size_t>(n);
  double *const copy = allocate_array<double>(values).release();
  if (copy == nullptr) return nullptr;
  double *to = copy;
  for (int64_t i = 0; i < n; ++i) {
    *to++ = c.x[i];
    *to++ = c.y[i];
    if (g.ndim == 3) *to++ = c.z[i];
  }
  return copy;
}

bool make_room_for_line(SeedGrid *grid) {
  if (grid->line_count < grid->line_capacity) return true;
  if (grid->line_count == INT32_MAX) return false;
  const int32_t capacity = grown_room(grid->line_capacity, grid->line_count + 1);
  if (!grow_array(&grid->lines, grid->line_count, capacity)) return false;
  grid->line_capacity = capacity;
  return true;
}

int32_t add_line(SeedGrid *grid, const Coordinates &c, int32_t n1, int32_t n2, bool go_there) {
  const int64_t n = int64_t{n1} + n2;
  if (n <= 0) return 0;
  if (!make_room_for_line(grid)) return 1;
  double *const copy = copy_points(*grid, c, n);
  if (copy == nullptr) return 1;
  grid->lines.get()[grid->line_count] = {copy, n1, n2};
  if (go_there) grid->current_line = grid->line_count;
  ++grid->line_count;
  for (int64_t i = 0; i < n; ++i)
    file_point(grid, position(*grid, c, i));
  return 0;
}

// Goes past the current line; the one after it, or null at the end of the queue.
const SeedLine *next_line(SeedGrid *grid) {
  if (grid->line_count == 0) return nullptr;
  SeedLine *const line = &grid->lines.get()[grid->current_line];
  release_bytes(line->points);
  line->points = nullptr;
  if (grid->current_line == grid->line_count - 1) return nullptr;
  ++grid->current_line;
  return line + 1;
}

void deliver_points(const SeedGrid &g, const SeedLine &line, double *x, double *y, double *z) {
  const int64_t n = int64_t{line.n1} + line.n2;
  const double *from = line.points;
  for (int64_t i = 0; i < n; ++i) {
    x[i] = *from++;
    y[i] = *from++;
    if (g.ndim == 3) z[i] = *from++;
  }
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqseed1(const double *xmin, const double *xmax, const double *ymin,
                           const double *ymax, const double *zmin, const double *zmax,
                           const double *cell_size, const int32_t *ndim, const int32_t *mode,
                           int32_t *status) {
  *status = 0;
  if (*mode == 0) {
    SeedGrid wanted = {};
    wanted.xmin = *xmin;
    wanted.xmax = *xmax;
    wanted.ymin = *ymin;
    wanted.ymax = *ymax;
    wanted.cell_size = *cell_size;
    wanted.ndim = *ndim == 3 ? 3 : 2;
    if (wanted.ndim == 3) {
      wanted.zmin = *zmin;
      wanted.zmax = *zmax;
    }
    *status = open_grid(wanted);
    return *status;
  }
  if (*mode == 1) {
    if (seed_grid != nullptr && seed_grid->cell_overflow) *status = 1;
    close_grid();
  }
  return 0;
}

extern "C" int32_t qqseed2(double *x, double *y, double *z, int32_t *n1, int32_t *n2,
                           int32_t *status) {
  const SeedLine *const line = seed_grid == nullptr ? nullptr : next_line(seed_grid);
  *status = line == nullptr ? 1 : 0;
  if (line == nullptr) return 1;
  *n1 = line->n1;
  *n2 = line->n2;
  deliver_points(*seed_grid, *line, x, y, z);
  return 0;
}

extern "C" int32_t qqseed3(const double *x, const double *y, const double *z, const double *factor,
                           int32_t *rejected) {
  *rejected = 1;
  if (seed_grid == nullptr) return 0;
  const Position p = {*x, *y, seed_grid->ndim == 3 ? *z : 0.0};
  if (is_accepted(*seed_grid, p, *factor)) *rejected = 0;
  return 0;
}

extern "C" int32_t qqseed4(const double *x, const double *y, const double *z, const int32_t *n1,
                           const int32_t *n2, const int32_t *flag, int32_t *status) {
  *status = seed_grid == nullptr ? 1 : add_line(seed_grid, {x, y, z}, *n1, *n2, *flag == 0);
  return *status;
}
