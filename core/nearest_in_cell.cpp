// SPDX-License-Identifier: MIT
//
// The cells: half a megabyte that costs nothing until a palette raster meets mixed colours.
#include "core/nearest_in_cell.h"

#include <algorithm>
#include <cstdlib>

#include "core/colours.h"

namespace quorix {

namespace {

constexpr int32_t cell_shift = 3;
constexpr int32_t cells_per_channel = 256 >> cell_shift;
constexpr size_t cell_count = size_t{cells_per_channel} * cells_per_channel * cells_per_channel;
constexpr int32_t most_candidates = 15;

enum CellState : uint8_t { cell_empty = 0, cell_crowded = 255 };

struct Cell {
  uint8_t count;  // or a CellState
  uint8_t candidates[most_candidates];
};

Cell cells[cell_count];
uint32_t cells_version = 0;  // of the palette that they were filled from

// Distances of a value to the values first to first + 7.
int32_t least_apart(int32_t value, int32_t first) {
  const int32_t last = first + (1 << cell_shift) - 1;
  return std::max({0, first - value, value - last});
}

int32_t most_apart(int32_t value, int32_t first) {
  const int32_t last = first + (1 << cell_shift) - 1;
  return std::max(std::abs(value - first), std::abs(value - last));
}

void fill_cell(const OutputContext *context, Cell *cell, int32_t r, int32_t g, int32_t b) {
  const int32_t entries = palette_entries(context->colours.palette_kind);
  int32_t least[256];
  int32_t reach = INT32_MAX;
  for (int32_t i = 0; i < entries; ++i) {
    const int32_t pr = context->colours.palette_r[i];
    const int32_t pg = context->colours.palette_g[i];
    const int32_t pb = context->colours.palette_b[i];
    least[i] = least_apart(pr, r) + least_apart(pg, g) + least_apart(pb, b);
    reach = std::min(reach, most_apart(pr, r) + most_apart(pg, g) + most_apart(pb, b));
  }
  int32_t count = 0;
  for (int32_t i = 0; i < entries; ++i) {
    if (least[i] > reach) continue;
    if (count == most_candidates) {
      cell->count = cell_crowded;
      return;
    }
    cell->candidates[count++] = static_cast<uint8_t>(i);
  }
  cell->count = static_cast<uint8_t>(count);
}

int32_t distance(const OutputContext *context, int32_t i, int32_t r, int32_t g, int32_t b) {
  return std::abs(r - context->colours.palette_r[i]) + std::abs(g - context->colours.palette_g[i]) +
         std::abs(b - context->colours.palette_b[i]);
}

// Among equals the first candidate, or for a colour without blue the last.
int32_t nearest_candidate(const OutputContext *context, const Cell &cell, int32_t r, int32_t g,
                          int32_t b) {
  int32_t best = INT32_MAX;
  int32_t index = 0;
  for (int32_t k = 0; k < cell.count; ++k) {
    const int32_t i = cell.candidates[k];
    const int32_t d = distance(context, i, r, g, b);
    if (d < best || (d == best && b < 1)) {
      best = d;
      index = i;
    }
  }
  return index;
}

void follow_palette(const OutputContext *context) {
  if (cells_version == context->colours.palette_version) return;
  std::fill_n(cells, cell_count, Cell{});
  cells_version = context->colours.palette_version;
}

}  // namespace

int32_t nearest_in_cell(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b) {
  // Black and white have rules of their own.
  const bool special = r == g && g == b && (r == 0 || r == 255);
  if (special) return nearest_colour(context, r, g, b);
  follow_palette(context);
  const auto part = [](uint8_t v) { return static_cast<size_t>(v >> cell_shift); };
  Cell &cell = cells[(part(r) * cells_per_channel + part(g)) * cells_per_channel + part(b)];
  const int32_t mask = -(1 << cell_shift);
  if (cell.count == cell_empty) fill_cell(context, &cell, r & mask, g & mask, b & mask);
  if (cell.count == cell_crowded) return nearest_colour(context, r, g, b);
  return nearest_candidate(context, cell, r, g, b);
}

}  // namespace quorix
