// SPDX-License-Identifier: MIT
//
// Lines tested against the depth buffer.
//
// A line steps along its longer axis; the other coordinate and z are sums of increments, so their
// values depend on every step taken, on the page or off it. Steps before the page are summed up
// without being walked. Most lines lie on the page and go to depth_line_sse2.cpp.
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "depth/depth_line.h"
#include "depth/opengl.h"
#include "depth/pixel_formats.h"
#include "quorix/depth.h"
#include "raster/repeated_sum.h"

namespace quorix {

namespace {

struct LineEnd {
  double x, y, z;
};

struct DepthTest {
  float *base;  // null: everything passes
  ptrdiff_t pitch;
  double bias;

  // Whether z passes at a pixel, which then keeps it.
  bool pass(int32_t x, int32_t y, double z) const {
    if (base == nullptr) return true;
    float *depth = base + static_cast<ptrdiff_t>(y) * pitch + x;
    if (!(static_cast<double>(*depth) >= z - bias)) return false;
    *depth = static_cast<float>(z);
    return true;
  }
};

DepthTest depth_test(const Target &t) {
  return {t.depth, t.depth_pitch, static_cast<double>(t.context->depth.depth_bias)};
}

// Calls draw(u, v, z) for the steps within low_u to high_u.
template <class Draw>
void for_each_step(LineWalk w, int32_t low_u, int32_t high_u, Draw draw) {
  if (w.first > high_u || w.last < low_u || w.first > w.last) return;
  int32_t u = w.first;
  if (u < low_u) {
    const int64_t skipped = static_cast<int64_t>(low_u) - u;
    w.v = repeated_sum(w.v, w.v_step, skipped);
    w.z = repeated_sum(w.z, w.z_step, skipped);
    u = low_u;
  }
  const int32_t end = std::min(w.last, high_u);
  for (;; ++u) {
    draw(u, round_to_int32(w.v), w.z);
    if (u == end) return;
    w.v += w.v_step;
    w.z += w.z_step;
  }
}

// Calls draw(x, y, z) for the steps within the box.
template <class Draw>
void for_each_pixel(const Rect &box, const LineWalk &w, Draw draw) {
  if (w.x_major) {
    for_each_step(w, box.x1, box.x2, [&](int32_t x, int32_t y, double z) {
      if (y >= box.y1 && y <= box.y2) draw(x, y, z);
    });
  } else {
    for_each_step(w, box.y1, box.y2, [&](int32_t y, int32_t x, double z) {
      if (x >= box.x1 && x <= box.x2) draw(x, y, z);
    });
  }
}

template <class Pixels, class Ink>
void run_line(const Target &t, const Pixels &pixels, Ink ink, const LineWalk &w) {
  const DepthTest test = depth_test(t);
  for_each_pixel(t.box, w, [&](int32_t x, int32_t y, double z) {
    if (test.pass(x, y, z)) pixels.put(x, y, ink);
  });
}

template <class Pixels>
void draw_line(const Target &t, const Pixels &pixels, Rgb colour, const LineEnd &a,
               const LineEnd &b) {
  if (is_empty(t.box)) return;
  const auto ink = pixels.ink(colour);
  const int64_t ax = round_to_int32(a.x);
  const int64_t ay = round_to_int32(a.y);
  const int64_t bx = round_to_int32(b.x);
  const int64_t by = round_to_int32(b.y);
  if (ax == bx && ay == by) {
    const auto x = static_cast<int32_t>(ax);
    const auto y = static_cast<int32_t>(ay);
    if (contains(t.box, x, y) && depth_test(t).pass(x, y, a.z)) pixels.put(x, y, ink);
    return;
  }
  const bool x_major = std::abs(ax - bx) > std::abs(ay - by);
  const double from[3] = {x_major ? a.x : a.y, x_major ? a.y : a.x, a.z};
  const double to[3] = {x_major ? b.x : b.y, x_major ? b.y : b.x, b.z};
  const LineWalk w = walk_line(x_major, from, to);
  if constexpr (std::is_same_v<Pixels, RgbaPixels>) {
    if (run_rgba_line_sse2(t, ink, w)) return;
  }
  run_line(t, pixels, ink, w);
}

void forward_line(OutputContext *context, int32_t colour, const LineEnd *ends) {
  const GlCalls *gl = window_gl(context);
  if (gl == nullptr) return;
  // In front of the surface that the line lies on.
  constexpr double nearer = static_cast<double>(0.001F);
  window_family_device(context)->set_colour(context, colour);
  gl->begin(gl_line_strip);
  for (int i = 0; i < 2; ++i) {
    gl->vertex_3f(static_cast<float>(ends[i].x), static_cast<float>(turned(context, ends[i].y)),
                  static_cast<float>(ends[i].z - nearer));
  }
  gl->end();
}

}  // namespace

LineWalk walk_line(bool x_major, const double *from, const double *to) {
  if (from[0] >= to[0]) std::swap(from, to);
  const int32_t first = round_to_int32(from[0]);
  const int32_t last = round_to_int32(to[0]);
  const double steps = static_cast<double>(last) - first;
  return {
      x_major, first, last, from[1], from[2], (to[1] - from[1]) / steps, (to[2] - from[2]) / steps};
}

void run_rgba_line_plain(const Target &t, uint32_t ink, const LineWalk &w) {
  run_line(t, RgbaPixels(t), ink, w);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqzlin2(const double *x, const double *y, int32_t colour, const double *z,
                           int32_t device) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  const LineEnd ends[2] = {{x[0], y[0], z[0]}, {x[1], y[1], z[1]}};
  if (forwards_to_gl(context)) {
    forward_line(context, colour, ends);
    return 0;
  }
  Target target;
  if (!open_target(context, device, Depths::used, &target)) return 0;
  Rgb rgb = {};
  colour_to_rgb(context, colour, &rgb.r, &rgb.g, &rgb.b);
  with_pixels(target, [&](const auto &p) { draw_line(target, p, rgb, ends[0], ends[1]); });
  return 0;
}

extern "C" int32_t qqzlin(const int32_t *x, const int32_t *y, int32_t colour, const double *z,
                          int32_t device) {
  const double xs[2] = {static_cast<double>(x[0]), static_cast<double>(x[1])};
  const double ys[2] = {static_cast<double>(y[0]), static_cast<double>(y[1])};
  return qqzlin2(xs, ys, colour, z, device);
}

extern "C" int32_t qqgllin(const double *x1, const double *y1, const double *x2, const double *y2) {
  const OutputContext *context = output_context;
  if (context == nullptr || context->window.opengl_on == 0) return 0;
  const GlCalls *gl = window_gl(context);
  if (gl == nullptr) return 0;
  const auto vertex = [&](double x, double y) {
    gl->vertex_2f(static_cast<float>(x), static_cast<float>(turned(context, y)));
  };
  const bool point = std::abs(*x1 - *x2) < 0.5 && std::abs(*y1 - *y2) < 0.5;
  gl->begin(point ? gl_points : gl_line_strip);
  vertex(*x1, *y1);
  if (!point) vertex(*x2, *y2);
  gl->end();
  return 0;
}
