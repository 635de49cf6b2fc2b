// SPDX-License-Identifier: MIT
//
// The lines of the seed grid, in the order in which they came.
#include <cstdint>

#include "algorithms/seed_grid.h"
#include "base/grow.h"
#include "base/memory.h"

namespace quorix {

namespace {

constexpr int32_t first_lines = 100;

double *copy_points(const SeedGrid &g, const SeedCoordinates &c, int64_t n) {
  const auto values = static_cast<size_t>(g.domain.ndim) * static_cast<size_t>(n);
  double *const copy = allocate_array<double>(values).release();
  if (copy == nullptr) return nullptr;
  double *to = copy;
  for (int64_t i = 0; i < n; ++i) {
    *to++ = c.x[i];
    *to++ = c.y[i];
    if (g.domain.ndim == 3) *to++ = c.z[i];
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

}  // namespace

bool open_seed_queue(SeedGrid *grid) {
  grid->lines = allocate_array<SeedLine>(first_lines);
  grid->line_capacity = first_lines;
  return grid->lines != nullptr;
}

void release_seed_queue(SeedGrid *grid) {
  for (int32_t i = 0; i < grid->line_count; ++i)
    release_bytes(grid->lines.get()[i].points);
}

int32_t add_seed_line(SeedGrid *grid, const SeedCoordinates &c, int32_t n1, int32_t n2,
                      bool go_there) {
  const int64_t n = int64_t{n1} + n2;
  if (n <= 0) return 0;
  if (!make_room_for_line(grid)) return 1;
  double *const copy = copy_points(*grid, c, n);
  if (copy == nullptr) return 1;
  grid->lines.get()[grid->line_count] = {copy, n1, n2};
  if (go_there) grid->current_line = grid->line_count;
  ++grid->line_count;
  file_seed_points(grid, c, n);
  return 0;
}

const SeedLine *next_seed_line(SeedGrid *grid) {
  if (grid->line_count == 0) return nullptr;
  SeedLine *const line = &grid->lines.get()[grid->current_line];
  release_bytes(line->points);
  line->points = nullptr;
  if (grid->current_line == grid->line_count - 1) return nullptr;
  ++grid->current_line;
  return line + 1;
}

}  // namespace quorix
