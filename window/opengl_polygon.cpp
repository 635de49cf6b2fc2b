// SPDX-License-Identifier: MIT
//
// Polygons of any number of corners in a window that draws through OpenGL, whose own polygons have
// to be convex: filled row by row by the even-odd rule.
//
// Two things differ from the raster's polygons, and are kept: an edge counts its lower end and not
// its upper one, and a pair of crossings beside the clip rectangle ends the row.
#include <algorithm>
#include <cmath>

#include "base/memory.h"
#include "window/opengl_drawing.h"

namespace quorix {

namespace {

constexpr int32_t max_crossings = 99;  // of one row
constexpr double flat_edge = 0.01;     // edges of less height cross at their first corner

struct Polygon {
  const double *x, *y;
  int32_t n;
};

struct Crossings {
  int32_t x[max_crossings];
  int32_t count;
  bool dropped;
};

int32_t crossing_of(const Polygon &p, int32_t i, int32_t next, double row) {
  const double height = p.y[next] - p.y[i];
  double x = p.x[i];
  if (!(std::fabs(height) < flat_edge)) x += (p.x[next] - p.x[i]) * (row - p.y[i]) / height;
  return round_to_int32(x);
}

void find_crossings(const Polygon &p, double row, Crossings *found) {
  found->count = 0;
  for (int32_t i = 0; i < p.n; ++i) {
    const int32_t next = i + 1 < p.n ? i + 1 : 0;
    const bool down = row >= p.y[i] && row < p.y[next];
    const bool up = row >= p.y[next] && row < p.y[i];
    if (!down && !up) continue;
    if (found->count == max_crossings) {
      found->dropped = true;
      break;
    }
    found->x[found->count++] = crossing_of(p, i, next, row);
  }
  std::sort(found->x, found->x + found->count);
}

// A row of pixels in the current colour, as wide as the page.
OwnedArray<uint8_t> row_of_colour(const OutputContext *context) {
  const auto width = static_cast<size_t>(std::max(context->page.width, 0));
  auto row = allocate_array<uint8_t>(width * 4);
  if (!row) return row;
  const Colours &c = context->colours;
  for (size_t i = 0; i < width; ++i) {
    uint8_t *pixel = row.get() + i * 4;
    pixel[0] = c.colour_r;
    pixel[1] = c.colour_g;
    pixel[2] = c.colour_b;
    pixel[3] = 255;
  }
  return row;
}

void fill_pairs(const OutputContext *context, const GlCalls *gl, const Crossings &found,
                int32_t row, const uint8_t *pixels) {
  const Page &page = context->page;
  for (int32_t i = 0; i + 1 < found.count; i += 2) {
    const int32_t first = found.x[i];
    const int32_t last = found.x[i + 1];
    if (first > page.clip_x2 || last < page.clip_x1) return;
    const int32_t left = std::max({first, page.clip_x1, 0});
    const int32_t right = std::min({last, page.clip_x2, page.width - 1});
    if (left > right) continue;
    gl->raster_position(left, turned_row(context, row));
    gl->draw_pixels(right - left + 1, 1, gl_rgba, gl_unsigned_byte, pixels);
  }
}

}  // namespace

int32_t fill_gl_rows(const OutputContext *context, const GlCalls *gl, const double *x,
                     const double *y, int32_t n) {
  const Page &page = context->page;
  const auto [lowest, highest] = std::minmax_element(y, y + n);
  const int32_t first = std::max({round_to_int32(*lowest), page.clip_y1, 0});
  const int32_t last = std::min({round_to_int32(*highest), page.clip_y2, page.height - 1});
  const OwnedArray<uint8_t> pixels = row_of_colour(context);
  if (!pixels) return 1;
  const Polygon polygon = {x, y, n};
  Crossings found = {};
  for (int32_t row = first; row <= last; ++row) {
    find_crossings(polygon, row, &found);
    fill_pairs(context, gl, found, row, pixels.get());
  }
  return found.dropped ? 1 : 0;
}

}  // namespace quorix
