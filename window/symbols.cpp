// SPDX-License-Identifier: MIT
//
// Plot markers on a window, in the colour and with the pen in force, which stay. OpenGL draws only
// those of straight lines.
#include "raster/symbol_shapes.h"

#include <algorithm>

#include "base/numbers.h"
#include "quorix/window.h"
#include "raster/raster.h"
#include "window/ask.h"
#include "window/opengl_drawing.h"
#include "window/window.h"

namespace quorix {

namespace {

struct Symbol {
  int32_t number;
  int32_t x, y;  // centre
  int32_t h;     // half size
};

void draw_gl_symbol(const OutputContext *context, const GlCalls *gl, const Symbol &symbol) {
  for (const SymbolShape &shape : symbol_shapes) {
    if (!draws_shape(shape, symbol.number)) continue;
    const ShapePoints at = place_shape(shape, symbol.x, symbol.y, symbol.h);
    CanvasPoint points[max_shape_corners] = {};
    for (int32_t i = 0; i < shape.corners; ++i)
      points[i] = {at.x[i], at.y[i]};
    draw_gl_shape(context, gl, gl_line_strip, points, shape.corners);
    if (shape.filled_symbol == symbol.number)
      draw_gl_shape(context, gl, gl_polygon, points, shape.corners);
  }
}

void draw_straight_symbol(Canvas *canvas, const Symbol &symbol, uint32_t colour) {
  for (const SymbolShape &shape : symbol_shapes) {
    if (!draws_shape(shape, symbol.number)) continue;
    const ShapePoints at = place_shape(shape, symbol.x, symbol.y, symbol.h);
    ask(canvas->calls->polyline, canvas, at.x, at.y, shape.corners);
    if (shape.filled_symbol != symbol.number) continue;
    CanvasPoint points[max_shape_corners] = {};
    for (int32_t i = 0; i < shape.corners; ++i)
      points[i] = {at.x[i], at.y[i]};
    ask(canvas->calls->polygon, canvas, points, shape.corners, colour);
  }
}

void draw_round_symbol(Canvas *canvas, const Symbol &symbol, uint32_t colour) {
  const int32_t left = saturated_sum(symbol.x, -symbol.h);
  const int32_t right = saturated_sum(symbol.x, symbol.h);
  const CanvasRect box = {left, saturated_sum(symbol.y, -symbol.h), right,
                          saturated_sum(symbol.y, symbol.h)};
  const CanvasPoint east = {right, symbol.y};
  const CanvasPoint west = {left, symbol.y};
  const int32_t xs[2] = {left, right};
  const int32_t ys[2] = {symbol.y, symbol.y};
  switch (symbol.number) {
    case symbol_circle:
      ask(canvas->calls->arc, canvas, box, east, east);
      break;
    case symbol_disc:
      ask(canvas->calls->ellipse, canvas, box, colour);
      break;
    case symbol_half_circle:
      ask(canvas->calls->arc, canvas, box, east, west);
      ask(canvas->calls->polyline, canvas, xs, ys, 2);
      break;
    case symbol_half_disc:
      ask(canvas->calls->chord, canvas, box, east, west, colour);
      break;
    default:
      break;
  }
}

void draw_window_symbol(OutputContext *context, const Symbol &symbol) {
  const WindowSet *set = context->window.window_set;
  if (const GlCalls *gl = drawing_gl(context); gl != nullptr) {
    draw_gl_symbol(context, gl, symbol);
  } else if (set->draw_canvas != nullptr) {
    draw_straight_symbol(set->draw_canvas, symbol, set->colorref);
    draw_round_symbol(set->draw_canvas, symbol, set->colorref);
  }
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwsym(int32_t symbol, int32_t x, int32_t y, int32_t size) {
  if (current_window_set() == nullptr) return 0;
  draw_window_symbol(output_context, {symbol, x, y, std::max(size / 2, 1)});
  return 0;
}
