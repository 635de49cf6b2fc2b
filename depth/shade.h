// SPDX-License-Identifier: MIT
//
// Shaded triangles: two edges that are stepped row by row, and the spans between them.
//
// The edges are those of all triangles (raster/edge_walk.h). Along a row all values are computed
// from its two ends.
#pragma once

#include "depth/depth.h"
#include "raster/edge_walk.h"

namespace quorix {

// What is interpolated along an edge. Channels run from 0 to 255. The first four are interpolated
// along a row too.
enum Shade : int { shade_red, shade_green, shade_blue, shade_z, shade_x, edge_shades };
inline constexpr int span_shades = shade_x;
using ShadePoint = EdgePoint<edge_shades>;
using ShadeEdges = EdgePair<edge_shades>;

// Equal depth passes while opaque; a blended pixel has to lie in front.
inline constexpr double opaque_tolerance = 1e-6;
inline constexpr double blended_distance = 0.001;

// ---- shade_span.cpp
// A span that runs from one point to another in row y, both ends included.
void shade_span(const Target &t, const ShadePoint &a, const ShadePoint &b, int32_t y);

// Draws the rows first to last, all of them rows of the target's box, and steps the edges past
// them.
void shade_rows_plain(const Target &t, ShadeEdges *edges, int32_t first, int32_t last);

// ---- shade_rows.cpp
// As shade_rows_plain, by the fastest form that fits. tame: all three corners are.
void shade_rows(const Target &t, bool tame, ShadeEdges *edges, int32_t first, int32_t last);
// Whether places and colours are numbers that a 32-bit integer holds by far, as all that lies
// between such corners then does.
inline constexpr double tame_limit = 1e6;
bool is_tame(const ShadePoint &p);

// ---- shade_rows_sse2.cpp, shade_rows_avx2.cpp: the same for opaque RGBA pixels, four at a time
// What they draw into. Rows have memory up to last_column, whether drawn into or not.
struct RgbaRows {
  uint32_t *pixels;
  ptrdiff_t pitch;
  float *depths;  // null: every pixel passes
  ptrdiff_t depth_pitch;
  int32_t left, right;  // columns of the box
  int32_t last_column;
  uint32_t alpha;  // in the high byte
};
RgbaRows rgba_rows(const Target &t);
using ShadeRgbaRows = void (*)(const RgbaRows &rows, ShadeEdges *edges, int32_t first,
                               int32_t last);
// For tame corners alone, since conversions are not guarded.
void shade_rows_sse2(const RgbaRows &rows, ShadeEdges *edges, int32_t first, int32_t last);
void shade_rows_avx2(const RgbaRows &rows, ShadeEdges *edges, int32_t first, int32_t last);

}  // namespace quorix
