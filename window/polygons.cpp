// SPDX-License-Identifier: MIT
//
// Filled polygons: corner by corner (qqwpol), or at once (qqwpol2).
#include "base/memory.h"
#include "base/numbers.h"
#include "quorix/window.h"
#include "window/ask.h"
#include "window/opengl_drawing.h"
#include "window/window.h"

namespace quorix {

namespace {

enum Phase : int32_t { phase_begin = 1, phase_fill = 9 };  // all others: a corner

// Without memory, or with nothing announced, what comes next is dropped.
void begin_polygon(WindowSet *set, int32_t count) {
  release_polygon(set);
  if (count < 1) return;
  auto points = allocate_array<CanvasPoint>(static_cast<size_t>(count));
  if (!points) return;
  set->polygon_points = points.release();
  set->polygon_capacity = count;
}

void add_corner(WindowSet *set, int32_t x, int32_t y) {
  if (set->polygon_count == set->polygon_capacity) return;
  set->polygon_points[set->polygon_count] = {x, y};
  ++set->polygon_count;
}

void fill_on_canvas(const WindowSet *set, const CanvasPoint *corners, int32_t count) {
  if (count < 2 || set->draw_canvas == nullptr) return;
  ask(set->draw_canvas->calls->polygon, set->draw_canvas, corners, count, set->colorref);
}

OwnedArray<CanvasPoint> rounded_corners(const double *x, const double *y, int32_t n) {
  auto corners = allocate_array<CanvasPoint>(static_cast<size_t>(n));
  if (!corners) return corners;
  for (int32_t i = 0; i < n; ++i)
    corners[static_cast<size_t>(i)] = {round_to_int32(x[i]), round_to_int32(y[i])};
  return corners;
}

// Triangles and quadrilaterals are OpenGL's own; their y is turned before it is rounded.
void fill_gl_shape(const OutputContext *context, const GlCalls *gl, const double *x,
                   const double *y, int32_t n) {
  gl->begin(n == 3 ? gl_triangles : gl_quads);
  for (int32_t i = 0; i < n; ++i) {
    const double turned = static_cast<double>(context->page.height) - 1.0 - y[i];
    gl->vertex_2i(round_to_int32(x[i]), round_to_int32(turned));
  }
  gl->end();
}

// 1 where memory was missing or crossings were dropped, else 0.
int32_t fill_polygon_at_once(const OutputContext *context, const double *x, const double *y,
                             int32_t n) {
  const GlCalls *gl = drawing_gl(context);
  if (n < 1) return 0;
  if (gl == nullptr) {
    const auto corners = rounded_corners(x, y, n);
    if (!corners) return 1;
    fill_on_canvas(context->window.window_set, corners.get(), n);
    return 0;
  }
  if (n != 3 && n != 4) return fill_gl_rows(context, gl, x, y, n);
  fill_gl_shape(context, gl, x, y, n);
  return 0;
}

// OpenGL has its own ways for corners in doubles.
void fill_gathered_by_gl(const OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  const auto n = static_cast<size_t>(set->polygon_count);
  const auto corners = allocate_array<double>(2 * n);
  if (!corners) return;
  for (size_t i = 0; i < n; ++i) {
    corners[i] = set->polygon_points[i].x;
    corners[n + i] = set->polygon_points[i].y;
  }
  fill_polygon_at_once(context, corners.get(), corners.get() + n, set->polygon_count);
}

void fill_gathered(const OutputContext *context) {
  WindowSet *set = context->window.window_set;
  if (drawing_gl(context) == nullptr) {
    fill_on_canvas(set, set->polygon_points, set->polygon_count);
  } else {
    fill_gathered_by_gl(context);
  }
  release_polygon(set);
}

}  // namespace

void release_polygon(WindowSet *set) {
  release_bytes(set->polygon_points);
  set->polygon_points = nullptr;
  set->polygon_count = set->polygon_capacity = 0;
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwpol(int32_t x, int32_t y, int32_t flag) {
  WindowSet *set = current_window_set();
  if (set == nullptr) return 0;
  if (flag == phase_begin) {
    begin_polygon(set, x);
  } else if (flag == phase_fill) {
    fill_gathered(output_context);
  } else {
    add_corner(set, x, y);
  }
  return 0;
}

extern "C" int32_t qqwpol2(const double *x, const double *y, const int32_t *n, int32_t *status) {
  *status = current_window_set() == nullptr ? 1 : fill_polygon_at_once(output_context, x, y, *n);
  return 0;
}
