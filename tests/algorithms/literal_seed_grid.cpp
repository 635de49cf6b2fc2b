// SPDX-License-Identifier: MIT
//
// The grid as lists of points, one for each cell.
#include "tests/algorithms/literal_seed_grid.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace quorix::literal {

namespace {

using Point = std::array<double, 3>;  // z is 0 in two dimensions

struct SeedLine {
  std::vector<Point> points;
  int32_t n1;
  int32_t n2;
};

struct SeedGrid {
  double xmin, xmax, ymin, ymax, zmin, zmax;
  double cell_size;
  int32_t ndim;
  int64_t nx, ny, nz;
  size_t current_line = 0;
  std::vector<std::vector<Point>> cells;
  std::vector<SeedLine> lines;
};

std::optional<SeedGrid> grid;

// Towards zero; NaN is 0, what is out of range is the nearest in it.
int64_t truncated(double value) {
  if (std::isnan(value)) return 0;
  const double least = std::numeric_limits<int32_t>::min();
  const double most = std::numeric_limits<int32_t>::max();
  if (value < least) return std::numeric_limits<int32_t>::min();
  if (value > most) return std::numeric_limits<int32_t>::max();
  return static_cast<int64_t>(value);
}

int64_t cells_along(double low, double high, double cell_size) {
  return truncated((high - low) / cell_size + 1.5);
}

bool is_usable_range(double low, double high) {
  return std::isfinite(high - low) && high - low >= 0;
}

int64_t cell_number(int64_t ix, int64_t iy, int64_t iz) {
  if (grid->ndim != 3) return ix * grid->ny + iy;
  return iz + ix * grid->ny * grid->nz + iy * grid->nz;
}

bool is_cell(int64_t number) {
  return number >= 0 && number < grid->nx * grid->ny * grid->nz;
}

struct Place {
  int64_t ix, iy, iz;
};

// Where a point lies in the grid; false if the limits, which stand crosswise, leave it out.
bool place_of(const Point &point, Place *place) {
  const bool has_z = grid->ndim == 3;
  if (std::isnan(point[0]) || std::isnan(point[1]) || (has_z && std::isnan(point[2]))) return false;
  place->ix = truncated((point[0] - grid->xmin) / grid->cell_size);
  place->iy = truncated((point[1] - grid->ymin) / grid->cell_size);
  place->iz = has_z ? truncated((point[2] - grid->zmin) / grid->cell_size) : 0;
  if (place->ix < 0 || place->ix >= grid->ny) return false;
  if (place->iy < 0 || place->iy >= grid->nx) return false;
  return place->iz >= 0 && place->iz < grid->nz;
}

bool is_in_domain(const Point &p) {
  if (p[0] < grid->xmin || p[0] > grid->xmax) return false;
  if (p[1] < grid->ymin || p[1] > grid->ymax) return false;
  return grid->ndim != 3 || !(p[2] < grid->zmin || p[2] > grid->zmax);
}

bool some_point_is_near(const std::vector<Point> &points, const Point &candidate, double factor) {
  for (const Point &point : points) {
    const double dx = point[0] - candidate[0];
    const double dy = point[1] - candidate[1];
    const double dz = point[2] - candidate[2];
    const double distance =
        grid->ndim == 3 ? std::sqrt(dx * dx + dy * dy + dz * dz) : std::sqrt(dx * dx + dy * dy);
    if (grid->cell_size * factor > distance) return true;
  }
  return false;
}

bool is_usable_seed(const Point &candidate, double factor) {
  Place at;
  if (!is_in_domain(candidate) || !place_of(candidate, &at)) return false;
  const int64_t reach = grid->ndim == 3 ? 1 : 0;
  for (int64_t ix = at.ix - 1; ix <= at.ix + 1; ix++) {
    for (int64_t iy = at.iy - 1; iy <= at.iy + 1; iy++) {
      for (int64_t iz = at.iz - reach; iz <= at.iz + reach; iz++) {
        const int64_t cell = cell_number(ix, iy, iz);
        if (!is_cell(cell)) continue;
        if (some_point_is_near(grid->cells[static_cast<size_t>(cell)], candidate, factor)) {
          return false;
        }
      }
    }
  }
  return true;
}

void file_point(const Point &point) {
  Place at;
  if (!place_of(point, &at)) return;
  const int64_t cell = cell_number(at.ix, at.iy, at.iz);
  if (is_cell(cell)) grid->cells[static_cast<size_t>(cell)].push_back(point);
}

}  // namespace

int32_t qqseed1(const double *xmin, const double *xmax, const double *ymin, const double *ymax,
                const double *zmin, const double *zmax, const double *cell_size,
                const int32_t *ndim, const int32_t *mode, int32_t *status) {
  *status = 0;
  if (*mode == 1) grid.reset();
  if (*mode != 0) return 0;
  const bool has_z = *ndim == 3;
  if (!(*cell_size > 0) || !std::isfinite(*cell_size) || !is_usable_range(*xmin, *xmax) ||
      !is_usable_range(*ymin, *ymax) || (has_z && !is_usable_range(*zmin, *zmax))) {
    *status = 1;
    return 1;
  }
  SeedGrid opened = {};
  opened.xmin = *xmin, opened.xmax = *xmax;
  opened.ymin = *ymin, opened.ymax = *ymax;
  if (has_z) opened.zmin = *zmin, opened.zmax = *zmax;
  opened.cell_size = *cell_size;
  opened.ndim = *ndim;
  opened.nx = cells_along(*xmin, *xmax, *cell_size);
  opened.ny = cells_along(*ymin, *ymax, *cell_size);
  opened.nz = has_z ? cells_along(*zmin, *zmax, *cell_size) : 1;
  opened.cells.resize(static_cast<size_t>(opened.nx * opened.ny * opened.nz));
  grid = opened;
  return 0;
}

int32_t qqseed4(const double *x, const double *y, const double *z, const int32_t *n1,
                const int32_t *n2, const int32_t *flag, int32_t *status) {
  *status = grid ? 0 : 1;
  if (!grid) return 1;
  const int64_t count = int64_t{*n1} + *n2;
  if (count <= 0) return 0;
  SeedLine line = {{}, *n1, *n2};
  for (size_t i = 0; i < static_cast<size_t>(count); i++)
    line.points.push_back({x[i], y[i], grid->ndim == 3 ? z[i] : 0});
  if (*flag == 0) grid->current_line = grid->lines.size();
  grid->lines.push_back(line);
  for (const Point &point : line.points)
    file_point(point);
  return 0;
}

int32_t qqseed2(double *x, double *y, double *z, int32_t *n1, int32_t *n2, int32_t *status) {
  *status = 1;
  if (!grid || grid->lines.empty() || grid->current_line == grid->lines.size() - 1) return 1;
  *status = 0;
  const SeedLine &line = grid->lines[++grid->current_line];
  *n1 = line.n1;
  *n2 = line.n2;
  for (size_t i = 0; i < line.points.size(); i++) {
    x[i] = line.points[i][0];
    y[i] = line.points[i][1];
    if (grid->ndim == 3) z[i] = line.points[i][2];
  }
  return 0;
}

int32_t qqseed3(const double *x, const double *y, const double *z, const double *factor,
                int32_t *rejected) {
  *rejected = 1;
  if (!grid) return 0;
  const Point candidate = {*x, *y, grid->ndim == 3 ? *z : 0};
  if (is_usable_seed(candidate, *factor)) *rejected = 0;
  return 0;
}

}  // namespace quorix::literal
