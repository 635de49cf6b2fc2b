// SPDX-License-Identifier: MIT
//
// The seed grid: points of streamlines filed by cell, and the lines in a queue.
//
// A cell holds the number of its newest point, and each point that of the one before it, so that
// filing one never moves another. Most cells hold one point at most; what tests touch is kept
// small. All lines of the queue keep a copy of their points until the queue has gone past them.
//
// Two dimensions are three with one layer of cells, which changes no cell number.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/memory.h"

namespace quorix {

struct SeedLine {
  double *points;  // owned; ndim coordinates each; null once the queue has gone past it
  int32_t n1, n2;
};

struct SeedDomain {
  double xmin, xmax, ymin, ymax, zmin, zmax;
  double cell_size;
  int32_t ndim;  // 2 or 3; the range of z is 0 in two dimensions
};

struct SeedGrid {
  SeedDomain domain;
  int32_t nx, ny, nz;
  int64_t cell_count;
  // The newest point of each cell, negative if there is an earlier one. One more, always empty.
  OwnedArray<int32_t> cells;
  OwnedArray<double> positions;  // ndim for each point, from point 1 on
  OwnedArray<int32_t> earlier;   // for each point, the one before it in its cell; 0 ends
  int32_t point_count, point_capacity;
  bool cell_overflow;  // a point could not be filed

  OwnedArray<SeedLine> lines;
  int32_t line_count, line_capacity;
  int32_t current_line;
};

struct SeedPosition {
  double x, y, z;
};

// The points of a line as the caller has them.
struct SeedCoordinates {
  const double *x, *y, *z;  // z is read in three dimensions only
};

// Coordinates that so many points have together.
inline size_t seed_values(const SeedGrid &g, int64_t points) {
  return static_cast<size_t>(g.domain.ndim) * static_cast<size_t>(points);
}

// ---- seed_cells.cpp

// Makes the cells of a domain, all empty. False if it is none or without memory.
bool open_seed_cells(SeedGrid *grid);

// Files points. Those outside the cells are left out, as are those for which there is no memory,
// which `cell_overflow` notes.
void file_seed_points(SeedGrid *grid, const SeedCoordinates &c, int64_t n);

// Whether a position lies in the domain and no nearer to any filed point than `factor` cells.
bool is_seed_accepted(const SeedGrid &g, SeedPosition p, double factor);

// ---- seed_queue.cpp

bool open_seed_queue(SeedGrid *grid);
void release_seed_queue(SeedGrid *grid);

// Puts a copy of a line at the end of the queue and files its points. The queue goes on from there
// if `go_there`. Returns 0, or 1 without memory for the line.
int32_t add_seed_line(SeedGrid *grid, const SeedCoordinates &c, int32_t n1, int32_t n2,
                      bool go_there);

// Goes past the current line; gives the one after it, or null at the end of the queue.
const SeedLine *next_seed_line(SeedGrid *grid);

}  // namespace quorix
