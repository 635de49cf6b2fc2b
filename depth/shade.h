// SPDX-License-Identifier: MIT
//
// Shaded triangles: two edges that are stepped row by row, and the spans between them.
//
// All values are doubles that accumulate; nothing is computed anew at a corner, since pictures
// depend on every bit of it.
#pragma once

#include "depth/depth.h"

namespace quorix {

// What is interpolated besides x. Channels run from 0 to 255.
enum Shade : int { shade_red, shade_green, shade_blue, shade_z, shade_values };

// A point of an edge, or what one row adds to it.
struct ShadePoint {
  alignas(32) double v[shade_values];
  double x;
};

inline void step_point(ShadePoint *p, const ShadePoint &step) {
  for (int i = 0; i < shade_values; ++i)
    p->v[i] += step.v[i];
  p->x += step.x;
}

// The edges in the row that comes next. The short edge ends at the middle corner, and the long one
// passes it.
struct ShadeEdges {
  ShadePoint on_short, on_long;
  ShadePoint short_step, long_step;
};

// ---- shade_span.cpp
// A span that runs from one point to another in row y, both ends included.
void shade_span(const Target &t, const ShadePoint &a, const ShadePoint &b, int32_t y);

// Draws the rows first to last, all of them rows of the target's box, and steps the edges past
// them.
void shade_rows_plain(const Target &t, ShadeEdges *edges, int32_t first, int32_t last);

}  // namespace quorix
