// SPDX-License-Identifier: MIT
//
// Plain drawing through OpenGL. Its rows are counted from the lower edge of the page, so each y is
// turned.
#pragma once

#include <cstdint>

#include "base/numbers.h"
#include "core/output_context.h"
#include "window/canvas.h"
#include "window/opengl_depth.h"
#include "window/window_system.h"

namespace quorix {

inline constexpr uint32_t gl_quads = 7;
inline constexpr uint32_t gl_polygon = 9;

// The calls, if OpenGL draws in the current window; else null.
inline const GlCalls *drawing_gl(const OutputContext *context) {
  const GlSystem *system = window_system()->gl;
  return context->window.opengl_on == 0 || system == nullptr ? nullptr : system->calls;
}

inline int32_t turned_row(const OutputContext *context, int64_t y) {
  return static_cast<int32_t>(static_cast<int64_t>(context->page.height) - 1 - y);
}

// One primitive; the points are the page's.
inline void draw_gl_shape(const OutputContext *context, const GlCalls *gl, uint32_t primitive,
                          const CanvasPoint *points, int32_t count) {
  gl->begin(primitive);
  for (int32_t i = 0; i < count; ++i)
    gl->vertex_2i(points[i].x, turned_row(context, points[i].y));
  gl->end();
}

// ---- opengl_polygon.cpp
// Fills by rows, within the clip rectangle. 1 where memory was missing, or some row had more
// crossings than are kept; else 0.
int32_t fill_gl_rows(const OutputContext *context, const GlCalls *gl, const double *x,
                     const double *y, int32_t n);

}  // namespace quorix
