// SPDX-License-Identifier: MIT
//
// The pen on a window: moves gather into a polyline of up to 100 points, which is drawn when the
// pen lifts, the store is full or the state changes. OpenGL draws its lines elsewhere, so nothing
// gathers there.
#include "quorix/window.h"

#include <algorithm>

#include "base/numbers.h"
#include "window/ask.h"
#include "window/window.h"

namespace quorix {

namespace {

// A pen of some width at one point.
void draw_wide_dot(const OutputContext *context, Canvas *canvas, int32_t x, int32_t y) {
  const uint32_t colour = context->window.window_set->colorref;
  const int32_t width = context->pen.line_width;
  if (context->pen.line_cap == cap_round) {
    const CanvasRect box = {x, y, saturated_sum(x, 1), saturated_sum(y, 1)};
    ask(canvas->calls->ellipse, canvas, box, colour);
    return;
  }
  const int32_t left = saturated_sum(x, -(width / 2));
  const int32_t top = saturated_sum(y, -(width / 2));
  const CanvasRect square = {left, top, saturated_sum(left, width), saturated_sum(top, width)};
  ask(canvas->calls->fill_rectangle, canvas, square, colour);
}

void draw_on_canvas(const OutputContext *context, Canvas *canvas) {
  const WindowSet *set = context->window.window_set;
  const int32_t n = set->line_count;
  const int32_t x = set->line_x[n - 1];
  const int32_t y = set->line_y[n - 1];
  if (n > 1) {
    // A canvas may leave out the last point of a polyline.
    ask(canvas->calls->polyline, canvas, set->line_x, set->line_y, n);
  } else if (context->pen.line_width > 1 && context->pen.line_cap != cap_butt) {
    return draw_wide_dot(context, canvas, x, y);
  }
  ask(canvas->calls->set_pixel, canvas, x, y, set->colorref);
}

void draw_directly(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (set->line_count == 1) return put_direct_pixel(context, set->line_x[0], set->line_y[0]);
  for (int32_t i = 1; i < set->line_count; ++i) {
    draw_direct_segment(context, {set->line_x[i - 1], set->line_y[i - 1]},
                        {set->line_x[i], set->line_y[i]});
  }
}

bool has_something_to_draw(const WindowSet *set) {
  return set->line_count > 1 || (set->line_count == 1 && !set->line_started);
}

void draw_gathered(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  if (!has_something_to_draw(set)) return;
  if (context->window.direct_bitmap != 0) {
    draw_directly(context);
  } else if (set->draw_canvas != nullptr) {
    draw_on_canvas(context, set->draw_canvas);
  }
}

void start_at(WindowSet *set, int32_t x, int32_t y) {
  set->line_x[0] = x;
  set->line_y[0] = y;
  set->line_started = true;
  set->line_count = 1;
}

// True where the point is only gathered.
bool append_point(WindowSet *set, int32_t x, int32_t y) {
  int32_t &count = set->line_count;
  if (x != set->line_x[count - 1] || y != set->line_y[count - 1]) {
    set->line_x[count] = x;
    set->line_y[count] = y;
    ++count;
  }
  set->line_started = false;
  return count < line_capacity;
}

}  // namespace

void move_window_pen(OutputContext *context, int32_t x, int32_t y, int32_t pen) {
  WindowSet *set = context->window.window_set;
  if (set == nullptr || context->window.opengl_on != 0) return;
  if (pen == pen_draw && set->line_count > 0 && append_point(set, x, y)) return;
  const int32_t last = std::max(set->line_count - 1, 0);
  draw_gathered(context);
  if (pen == pen_keep) {
    start_at(set, set->line_x[last], set->line_y[last]);
  } else {
    start_at(set, x, y);
  }
}

void flush_window(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  if (set == nullptr || context->window.opengl_on != 0 || !has_something_to_draw(set)) return;
  const int32_t last = set->line_count - 1;
  draw_gathered(context);
  start_at(set, set->line_x[last], set->line_y[last]);
}

}  // namespace quorix

extern "C" int32_t qqwdrw(int32_t x, int32_t y, int32_t pen) {
  if (quorix::output_context != nullptr) quorix::move_window_pen(quorix::output_context, x, y, pen);
  return 0;
}
