// SPDX-License-Identifier: MIT
//
// What depth rendering asks of a target, said in OpenGL.
//
// OpenGL keeps the depths itself and gives no statuses, so all that is asked of it counts as done.
// Its rows are counted from the lower edge of the page.
#include "window/opengl_depth.h"

#include "base/numbers.h"

namespace quorix {

namespace {

const GlCalls *gl = nullptr;

// A row of the page, counted from its lower edge.
double turned(const OutputContext *context, double y) {
  return static_cast<double>(context->page.height) - 1.0 - y;
}

int32_t turned(const OutputContext *context, int32_t y) {
  return to_int32(turned(context, static_cast<double>(y)));
}

void vertex(const OutputContext *context, double x, double y) {
  gl->vertex_2f(static_cast<float>(x), static_cast<float>(turned(context, y)));
}

void vertex(const OutputContext *context, double x, double y, double z) {
  gl->vertex_3f(static_cast<float>(x), static_cast<float>(turned(context, y)),
                static_cast<float>(z));
}

// ---- State

DepthStatus switch_depths(OutputContext * /*context*/, bool on) {
  if (on) {
    gl->enable(gl_depth_test);
    gl->depth_function(gl_lequal);
    gl->clear(gl_depth_buffer_bit);
  } else {
    gl->disable(gl_depth_test);
  }
  return DepthStatus::done;
}

DepthStatus clear_depths(OutputContext * /*context*/) {
  gl->clear(gl_depth_buffer_bit);
  return DepthStatus::done;
}

DepthStatus clear_picture(OutputContext * /*context*/, int32_t /*device*/) {
  gl->clear(gl_color_buffer_bit);
  return DepthStatus::done;
}

void switch_blending(OutputContext * /*context*/, bool on) {
  if (on) {
    gl->enable(gl_blend);
    gl->blend_function(gl_src_alpha, gl_one_minus_src_alpha);
  } else {
    gl->disable(gl_blend);
  }
}

// ---- Shapes

void draw_line(OutputContext *context, int32_t /*device*/, const DepthLine &line) {
  // In front of the surface that the line lies on.
  constexpr double nearer = static_cast<double>(0.001F);
  window_family_device(context)->set_colour(context, line.colour);
  gl->begin(gl_line_strip);
  for (int i = 0; i < 2; ++i)
    vertex(context, line.x[i], line.y[i], line.z[i] - nearer);
  gl->end();
}

void draw_shaded_triangle(OutputContext *context, int32_t /*device*/, const ShadedTriangle &t) {
  const auto alpha = static_cast<float>(context->colours.colour_alpha / 255.0);
  gl->begin(gl_triangles);
  for (int i = 0; i < 3; ++i) {
    const auto r = static_cast<float>(t.r[i]);
    const auto g = static_cast<float>(t.g[i]);
    const auto b = static_cast<float>(t.b[i]);
    if (context->depth.alpha_blend_on != 0) {
      gl->colour_4f(r, g, b, alpha);
    } else {
      gl->colour_3f(r, g, b);
    }
    vertex(context, t.x[i], t.y[i], t.z[i]);
  }
  gl->end();
}

void draw_index_triangle(OutputContext *context, int32_t /*device*/, const IndexTriangle &t) {
  gl->begin(gl_triangles);
  for (int i = 0; i < 3; ++i) {
    uint8_t r = 0;
    uint8_t g = 0;
    uint8_t b = 0;
    colour_to_rgb(context, t.colour[i], &r, &g, &b);
    gl->colour_3f(static_cast<float>(r) / 255.0F, static_cast<float>(g) / 255.0F,
                  static_cast<float>(b) / 255.0F);
    gl->vertex_2i(t.x[i], turned(context, t.y[i]));
  }
  gl->end();
}

void draw_quad_half(OutputContext *context, int32_t device, const IndexTriangle &half,
                    const IndexQuad & /*quad*/) {
  draw_index_triangle(context, device, half);
}

void draw_plain_point(OutputContext *context, double x, double y) {
  gl->begin(gl_points);
  vertex(context, x, y);
  gl->end();
}

void draw_plain_line(OutputContext *context, const double *x, const double *y) {
  gl->begin(gl_line_strip);
  vertex(context, x[0], y[0]);
  vertex(context, x[1], y[1]);
  gl->end();
}

// ---- Pixels

void draw_text_pixel(OutputContext *context, int32_t x, int32_t y) {
  const uint8_t colour[3] = {context->colours.colour_r, context->colours.colour_g,
                             context->colours.colour_b};
  gl->raster_position(x, turned(context, y));
  gl->draw_pixels(1, 1, gl_rgb, gl_unsigned_byte, colour);
}

void read_row(OutputContext *context, int32_t x, int32_t y, int32_t count, uint8_t *rgba) {
  gl->read_pixels(x, turned(context, y), count, 1, gl_rgba, gl_unsigned_byte, rgba);
}

void write_row(OutputContext *context, int32_t x, int32_t y, int32_t count, const uint8_t *rgba) {
  gl->raster_position(x, turned(context, y));
  gl->draw_pixels(count, 1, gl_rgba, gl_unsigned_byte, rgba);
}

}  // namespace

void use_gl_calls(const GlCalls *calls) {
  gl = calls;
}

const DepthCalls opengl_depth_calls = {.switch_depths = switch_depths,
                                       .clear_depths = clear_depths,
                                       .clear_picture = clear_picture,
                                       .line = draw_line,
                                       .shaded_triangle = draw_shaded_triangle,
                                       .index_triangle = draw_index_triangle,
                                       .quad_half = draw_quad_half,
                                       .switch_blending = switch_blending,
                                       .plain_point = draw_plain_point,
                                       .plain_line = draw_plain_line,
                                       .text_pixel = draw_text_pixel,
                                       .row_out = read_row,
                                       .row_in = write_row};

}  // namespace quorix
