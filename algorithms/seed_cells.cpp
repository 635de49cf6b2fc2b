// SPDX-License-Identifier: MIT
//
// The cells of the seed grid: points are filed in them, and places held against what was filed.
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "algorithms/seed_grid.h"
#include "base/grow.h"
#include "base/memory.h"
#include "base/numbers.h"

namespace quorix {

namespace {

constexpr int32_t first_points = 4096;

// ---- the grid's size

bool is_range(double first, double last) {
  return last - first >= 0.0 && std::isfinite(last - first);
}

bool is_domain(const SeedDomain &d) {
  return d.cell_size > 0.0 && std::isfinite(d.cell_size) && is_range(d.xmin, d.xmax) &&
         is_range(d.ymin, d.ymax) && is_range(d.zmin, d.zmax);
}

// Cells along an axis, enough for the range and what rounding adds.
int32_t cells_along(double first, double last, double cell_size) {
  return to_int32((last - first) / cell_size + 1.5);
}

// ---- filing

struct Cell {
  int32_t ix, iy, iz;
};

// Where a position lies in the grid; false where nothing is filed and nothing accepted. `ix` is
// compared with `ny` and `iy` with `nx`: that is how far the cells serve.
bool find_cell(const SeedGrid &g, SeedPosition p, Cell *cell) {
  if (std::isnan(p.x) || std::isnan(p.y) || std::isnan(p.z)) return false;
  const int32_t ix = to_int32((p.x - g.domain.xmin) / g.domain.cell_size);
  const int32_t iy = to_int32((p.y - g.domain.ymin) / g.domain.cell_size);
  const int32_t iz = g.domain.ndim == 3 ? to_int32((p.z - g.domain.zmin) / g.domain.cell_size) : 0;
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
  if (!grow_array(&grid->positions, seed_values(*grid, grid->point_count),
                  seed_values(*grid, capacity)) ||
      !grow_array(&grid->earlier, grid->point_count, capacity))
    return false;
  grid->point_capacity = capacity;
  return true;
}

void file_point(SeedGrid *grid, SeedPosition p) {
  Cell cell = {};
  if (!find_cell(*grid, p, &cell) || is_far_outside(*grid, cell)) return;
  const int64_t number = cell_number(*grid, cell.ix, cell.iy, cell.iz);
  if (number >= grid->cell_count) return;
  if (!make_room_for_point(grid)) {
    grid->cell_overflow = true;
    return;
  }
  const int32_t point = grid->point_count++;
  double *const at = grid->positions.get() + seed_values(*grid, point);
  at[0] = p.x;
  at[1] = p.y;
  if (grid->domain.ndim == 3) at[2] = p.z;
  int32_t &newest = grid->cells.get()[number];
  grid->earlier.get()[point] = std::abs(newest);
  newest = newest == 0 ? point : -point;
}

// ---- what is near

template <int32_t ndim>
inline bool is_near(const SeedGrid &g, int32_t point, SeedPosition p, double distance) {
  const double *const at = g.positions.get() + size_t{ndim} * static_cast<size_t>(point);
  const double dx = at[0] - p.x;
  const double dy = at[1] - p.y;
  double squared = dx * dx + dy * dy;
  if (ndim == 3) squared += (at[2] - p.z) * (at[2] - p.z);
  return distance > std::sqrt(squared);
}

template <int32_t ndim>
inline bool is_near_point_of_cell(const SeedGrid &g, int64_t number, SeedPosition p,
                                  double distance) {
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
bool is_near_filed_point(const SeedGrid &g, const Cell &cell, SeedPosition p, double distance) {
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

bool is_in_domain(const SeedGrid &g, SeedPosition p) {
  if (p.x < g.domain.xmin || p.x > g.domain.xmax || p.y < g.domain.ymin || p.y > g.domain.ymax)
    return false;
  return g.domain.ndim != 3 || (p.z >= g.domain.zmin && p.z <= g.domain.zmax);
}

}  // namespace

bool open_seed_cells(SeedGrid *grid) {
  const SeedDomain &d = grid->domain;
  if (!is_domain(d)) return false;
  grid->nx = cells_along(d.xmin, d.xmax, d.cell_size);
  grid->ny = cells_along(d.ymin, d.ymax, d.cell_size);
  grid->nz = d.ndim == 3 ? cells_along(d.zmin, d.zmax, d.cell_size) : 1;
  size_t cells = 0;
  if (!checked_product(&cells, static_cast<size_t>(grid->nx), static_cast<size_t>(grid->ny),
                       static_cast<size_t>(grid->nz)) ||
      cells > SIZE_MAX / 16)
    return false;
  grid->cell_count = static_cast<int64_t>(cells);
  grid->cells = allocate_zeroed_array<int32_t>(cells + 1);
  grid->positions = allocate_array<double>(seed_values(*grid, first_points));
  grid->earlier = allocate_array<int32_t>(first_points);
  grid->point_capacity = first_points;
  grid->point_count = 1;
  return grid->cells != nullptr && grid->positions != nullptr && grid->earlier != nullptr;
}

void file_seed_points(SeedGrid *grid, const SeedCoordinates &c, int64_t n) {
  const bool deep = grid->domain.ndim == 3;
  for (int64_t i = 0; i < n; ++i)
    file_point(grid, {c.x[i], c.y[i], deep ? c.z[i] : 0.0});
}

bool is_seed_accepted(const SeedGrid &g, SeedPosition p, double factor) {
  Cell cell = {};
  if (!is_in_domain(g, p) || !find_cell(g, p, &cell)) return false;
  const double distance = g.domain.cell_size * factor;
  return !(g.domain.ndim == 3 ? is_near_filed_point<3>(g, cell, p, distance)
                              : is_near_filed_point<2>(g, cell, p, distance));
}

}  // namespace quorix
