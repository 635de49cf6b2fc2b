// SPDX-License-Identifier: MIT
//
// qqseed1 to qqseed4: the one seed grid of the process. Without a grid they give status 1, or
// reject.
#include "algorithms/seed_grid.h"

#include <new>

#include "quorix/algorithms.h"

namespace quorix {

namespace {

enum SeedStatus : int32_t { seed_done = 0, seed_failed = 1 };
enum SeedMode : int32_t { open_mode = 0, close_mode = 1 };

SeedGrid *seed_grid = nullptr;  // owned

void release_grid(SeedGrid *grid) {
  release_seed_queue(grid);
  grid->~SeedGrid();
  release_bytes(grid);
}

void close_grid() {
  if (seed_grid != nullptr) release_grid(seed_grid);
  seed_grid = nullptr;
}

// The grid in use is replaced once the new one has its memory.
SeedStatus open_grid(const SeedDomain &domain) {
  void *const block = allocate_bytes(sizeof(SeedGrid));
  if (block == nullptr) return seed_failed;
  auto *const grid = new (block) SeedGrid{};
  grid->domain = domain;
  if (!open_seed_cells(grid) || !open_seed_queue(grid)) {
    release_grid(grid);
    return seed_failed;
  }
  close_grid();
  seed_grid = grid;
  return seed_done;
}

void deliver_points(const SeedGrid &g, const SeedLine &line, double *x, double *y, double *z) {
  const int64_t n = int64_t{line.n1} + line.n2;
  const double *from = line.points;
  for (int64_t i = 0; i < n; ++i) {
    x[i] = *from++;
    y[i] = *from++;
    if (g.domain.ndim == 3) z[i] = *from++;
  }
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqseed1(const double *xmin, const double *xmax, const double *ymin,
                           const double *ymax, const double *zmin, const double *zmax,
                           const double *cell_size, const int32_t *ndim, const int32_t *mode,
                           int32_t *status) {
  *status = quorix::seed_done;
  if (*mode == quorix::open_mode) {
    const bool deep = *ndim == 3;
    *status = quorix::open_grid({*xmin, *xmax, *ymin, *ymax, deep ? *zmin : 0.0, deep ? *zmax : 0.0,
                                 *cell_size, deep ? 3 : 2});
    return *status;
  }
  if (*mode == quorix::close_mode) {
    if (quorix::seed_grid != nullptr && quorix::seed_grid->cell_overflow)
      *status = quorix::seed_failed;
    quorix::close_grid();
  }
  return 0;
}

extern "C" int32_t qqseed2(double *x, double *y, double *z, int32_t *n1, int32_t *n2,
                           int32_t *status) {
  quorix::SeedGrid *const grid = quorix::seed_grid;
  const quorix::SeedLine *const line = grid == nullptr ? nullptr : quorix::next_seed_line(grid);
  *status = line == nullptr ? quorix::seed_failed : quorix::seed_done;
  if (line == nullptr) return *status;
  *n1 = line->n1;
  *n2 = line->n2;
  quorix::deliver_points(*grid, *line, x, y, z);
  return 0;
}

extern "C" int32_t qqseed3(const double *x, const double *y, const double *z, const double *factor,
                           int32_t *rejected) {
  const quorix::SeedGrid *const grid = quorix::seed_grid;
  *rejected = 1;
  if (grid == nullptr) return 0;
  const quorix::SeedPosition p = {*x, *y, grid->domain.ndim == 3 ? *z : 0.0};
  if (quorix::is_seed_accepted(*grid, p, *factor)) *rejected = 0;
  return 0;
}

extern "C" int32_t qqseed4(const double *x, const double *y, const double *z, const int32_t *n1,
                           const int32_t *n2, const int32_t *flag, int32_t *status) {
  quorix::SeedGrid *const grid = quorix::seed_grid;
  *status = grid == nullptr ? quorix::seed_failed
                            : quorix::add_seed_line(grid, {x, y, z}, *n1, *n2, *flag == 0);
  return *status;
}
