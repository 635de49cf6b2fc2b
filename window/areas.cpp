// SPDX-License-Identifier: MIT
//
// Filled rectangles and triangles, single pixels, and clearing the page. All but clearing through
// OpenGL leave their colour current.
#include <algorithm>

#include "base/numbers.h"
#include "quorix/window.h"
#include "window/ask.h"
#include "window/opengl_drawing.h"
#include "window/window.h"

namespace quorix {

namespace {

// Kept: the last column and the top row stay as they were.
void fill_gl_rectangle(const OutputContext *context, const GlCalls *gl, int32_t x, int32_t y,
                       int32_t width, int32_t height) {
  const int32_t right = saturated_sum(x, width - 1);
  const int32_t lower = turned_row(context, static_cast<int64_t>(y) + height - 1);
  const int32_t upper = turned_row(context, y);
  gl->begin(gl_quads);
  gl->vertex_2i(x, upper);
  gl->vertex_2i(right, upper);
  gl->vertex_2i(right, lower);
  gl->vertex_2i(x, lower);
  gl->end();
}

// A triangle without height or width is a line from its smallest to its largest coordinate, which
// a polygon would not draw.
bool is_flat(const int32_t *v) {
  return v[0] == v[1] && v[1] == v[2];
}

struct Range {
  int32_t first, end;
};

Range range_of(const int32_t *v) {
  const auto [smallest, largest] = std::minmax({v[0], v[1], v[2]});
  return {smallest, saturated_sum(largest, 1)};
}

void draw_canvas_triangle(const WindowSet *set, const int32_t *x, const int32_t *y) {
  Canvas *canvas = set->draw_canvas;
  if (is_flat(y)) {
    const Range range = range_of(x);
    const int32_t xs[2] = {range.first, range.end};
    const int32_t ys[2] = {y[0], y[0]};
    ask(canvas->calls->polyline, canvas, xs, ys, 2);
  } else if (is_flat(x)) {
    const Range range = range_of(y);
    const int32_t xs[2] = {x[0], x[0]};
    const int32_t ys[2] = {range.first, range.end};
    ask(canvas->calls->polyline, canvas, xs, ys, 2);
  } else {
    const CanvasPoint corners[3] = {{x[0], y[0]}, {x[1], y[1]}, {x[2], y[2]}};
    ask(canvas->calls->polygon, canvas, corners, 3, set->colorref);
  }
}

void draw_triangle(OutputContext *context, const int32_t *x, const int32_t *y, int32_t colour) {
  const WindowSet *set = context->window.window_set;
  set_window_colour(context, colour);
  if (const GlCalls *gl = drawing_gl(context); gl != nullptr) {
    const CanvasPoint corners[3] = {{x[0], y[0]}, {x[1], y[1]}, {x[2], y[2]}};
    draw_gl_shape(context, gl, gl_triangles, corners, 3);
  } else if (set->draw_canvas != nullptr) {
    draw_canvas_triangle(set, x, y);
  }
}

void draw_pixel(OutputContext *context, int32_t x, int32_t y, int32_t colour) {
  const WindowSet *set = context->window.window_set;
  set_window_colour(context, colour);
  if (const GlCalls *gl = drawing_gl(context); gl != nullptr) {
    const CanvasPoint point = {x, y};
    draw_gl_shape(context, gl, gl_points, &point, 1);
  } else if (context->window.direct_bitmap != 0) {
    put_direct_pixel(context, x, y);
  } else if (set->draw_canvas != nullptr) {
    ask(set->draw_canvas->calls->set_pixel, set->draw_canvas, x, y, set->colorref);
  }
}

void clear_page(OutputContext *context) {
  flush_window(context);
  if (const GlCalls *gl = drawing_gl(context); gl != nullptr) {
    gl->clear(gl_color_buffer_bit);
  } else {
    fill_window_rectangle(context, 0, 0, context->page.width, context->page.height, 0);
  }
}

}  // namespace

void fill_window_rectangle(OutputContext *context, int32_t x, int32_t y, int32_t width,
                           int32_t height, int32_t colour) {
  const WindowSet *set = context->window.window_set;
  if (width < 1 || height < 1) return;
  set_window_colour(context, colour);
  if (const GlCalls *gl = drawing_gl(context); gl != nullptr) {
    fill_gl_rectangle(context, gl, x, y, width, height);
  } else if (context->window.direct_bitmap != 0) {
    fill_direct_rectangle(context, x, y, width, height);
  } else if (set->draw_canvas != nullptr) {
    const CanvasRect rect = {x, y, saturated_sum(x, width), saturated_sum(y, height)};
    ask(set->draw_canvas->calls->fill_rectangle, set->draw_canvas, rect, set->colorref);
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwers(void) {
  if (current_window_set() != nullptr) clear_page(output_context);
  return 0;
}

extern "C" int32_t qqwfll(int32_t x, int32_t y, int32_t w, int32_t h, int32_t colour) {
  if (current_window_set() != nullptr) fill_window_rectangle(output_context, x, y, w, h, colour);
  return 0;
}

extern "C" int32_t qqwpix(int32_t x, int32_t y, int32_t colour) {
  if (current_window_set() != nullptr) draw_pixel(output_context, x, y, colour);
  return 0;
}

extern "C" int32_t qqwftr(const int32_t *x, const int32_t *y, int32_t colour) {
  if (current_window_set() != nullptr) draw_triangle(output_context, x, y, colour);
  return 0;
}
