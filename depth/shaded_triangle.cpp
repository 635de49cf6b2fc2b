// SPDX-License-Identifier: MIT
//
// Triangles with a colour and a depth per corner: qqztri, qqztri2 and qqztri3.
//
// Here corners come into order and onto rows; raster/edge_walk.h walks their edges, and shade_rows
// draws what lies between. Nothing needs memory, and time goes with the pixels and rows of the box.
#include <cmath>

#include "base/numbers.h"
#include "base/sort3.h"
#include "depth/pixel_formats.h"
#include "depth/shade.h"
#include "quorix/depth.h"
#include "raster/edge_walk.h"
#include "raster/raster.h"

namespace quorix {

namespace {

// Corners nearer than this share a row, whatever their rounding.
constexpr double same_row = 0.1;

ShadePoint corner(const ShadedTriangle &c, int32_t i) {
  return {{c.r[i] * 255.0, c.g[i] * 255.0, c.b[i] * 255.0, c.z[i], c.x[i]}};
}

// The rows of the corners, which come in their order downward.
void corner_rows(double ya, double yb, double yc, int32_t *rows) {
  rows[0] = round_to_int32(ya);
  rows[1] = std::abs(yb - ya) >= same_row ? round_to_int32(yb) : rows[0];
  rows[2] = rows[0];
  if (std::abs(yc - ya) >= same_row) {
    rows[2] = std::abs(yc - yb) >= same_row ? round_to_int32(yc) : rows[1];
  }
}

// A small triangle is drawn in less time than its memory takes to come, and whether a pixel passes
// is hard to foresee, so all of its rows are asked for in advance. Inlined always: as a function of
// its own the compiler takes it for one without effect.
__attribute__((always_inline)) inline void fetch_rows(const Target &t, const ShadedTriangle &c,
                                                      const int32_t *rows) {
  constexpr int32_t most_rows = 24;
  constexpr int32_t most_columns = 24;
  if (t.bitmap.base == nullptr || t.depth == nullptr) return;
  if (static_cast<int64_t>(rows[2]) - rows[0] > most_rows) return;
  const auto [low, high] = std::minmax({c.x[0], c.x[1], c.x[2]});
  const int32_t left = std::max(to_int32(low), t.box.x1);
  const int32_t right = std::min(to_int32(high), t.box.x2);
  if (left > right || right - left > most_columns) return;
  const int32_t last = std::min(rows[2], t.box.y2);
  const size_t pixel_bytes = static_cast<size_t>(t.bitmap.bits) / 8;
  for (int32_t y = std::max(rows[0], t.box.y1); y <= last; ++y) {
    const float *depths = t.depth + y * t.depth_pitch;
    const uint8_t *pixels = t.bitmap.base + static_cast<size_t>(y) * t.bitmap.row_bytes;
    __builtin_prefetch(depths + left, 1);
    __builtin_prefetch(depths + right, 1);
    __builtin_prefetch(pixels + static_cast<size_t>(left) * pixel_bytes, 1);
    __builtin_prefetch(pixels + static_cast<size_t>(right) * pixel_bytes, 1);
  }
}

// All corners on one row. Places and depths follow x, colours stay in the order of y. Kept: the
// faces of flat surfaces seen from the side depend on it.
void shade_flat(const Target &t, const ShadedTriangle &c, const int32_t *by_y, int32_t row) {
  int32_t by_x[3];
  sort3_double(c.x, &by_x[0], &by_x[1], &by_x[2]);
  ShadePoint points[3];
  for (int i = 0; i < 3; ++i) {
    points[i] = corner(c, by_y[i]);
    points[i].v[shade_x] = c.x[by_x[i]];
    points[i].v[shade_z] = c.z[by_x[i]];
  }
  shade_span(t, points[0], points[1], row);
  shade_span(t, points[1], points[2], row);
}

void shade_triangle(const Target &t, const ShadedTriangle &corners) {
  if (is_empty(t.box)) return;
  int32_t order[3];
  sort3_double(corners.y, &order[0], &order[1], &order[2]);
  int32_t rows[3];
  corner_rows(corners.y[order[0]], corners.y[order[1]], corners.y[order[2]], rows);
  if (rows[0] == rows[1] && rows[0] == rows[2]) return shade_flat(t, corners, order, rows[0]);
  fetch_rows(t, corners, rows);
  const ShadePoint points[3] = {corner(corners, order[0]), corner(corners, order[1]),
                                corner(corners, order[2])};
  const bool tame = is_tame(points[0]) && is_tame(points[1]) && is_tame(points[2]) &&
                    rows[0] <= rows[1] && rows[1] <= rows[2];
  walk_triangle_edges(t.box, points, rows, [&](ShadeEdges *edges, int32_t first, int32_t last) {
    shade_rows(t, tame, edges, first, last);
  });
}

void forward(OutputContext *context, int32_t device, const ShadedTriangle &triangle) {
  const DepthCalls *calls = depth_calls(context, OpenLayer::drawn_on);
  if (calls != nullptr) calls->shaded_triangle(context, device, triangle);
}

// With colour arguments at the corners.
void forward_colours(OutputContext *context, int32_t device, const double *x, const double *y,
                     const double *z, const int32_t *colour) {
  double r[3];
  double g[3];
  double b[3];
  for (int i = 0; i < 3; ++i) {
    Rgb rgb = {};
    colour_to_rgb(context, colour[i], &rgb.r, &rgb.g, &rgb.b);
    r[i] = rgb.r / 255.0;
    g[i] = rgb.g / 255.0;
    b[i] = rgb.b / 255.0;
  }
  forward(context, device, {x, y, z, r, g, b});
}

}  // namespace

void draw_shaded_triangle(OutputContext *context, int32_t device, const ShadedTriangle &triangle) {
  if (!window_device(device)) flush_raster(context);
  Target target;
  if (open_target(context, device, Depths::used, &target)) shade_triangle(target, triangle);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqztri3(const double *x, const double *y, const double *z, const double *r,
                           const double *g, const double *b, int32_t device) {
  if (output_context != nullptr) forward(output_context, device, {x, y, z, r, g, b});
  return 0;
}

extern "C" int32_t qqztri2(const double *x, const double *y, const int32_t *colour, const double *z,
                           int32_t device) {
  if (output_context != nullptr) forward_colours(output_context, device, x, y, z, colour);
  return 0;
}

extern "C" int32_t qqztri(const int32_t *x, const int32_t *y, const int32_t *colour,
                          const double *z, int32_t device) {
  if (output_context == nullptr) return 0;
  double xs[3];
  double ys[3];
  for (int i = 0; i < 3; ++i) {
    xs[i] = static_cast<double>(x[i]);
    ys[i] = static_cast<double>(y[i]);
  }
  forward_colours(output_context, device, xs, ys, z, colour);
  return 0;
}
