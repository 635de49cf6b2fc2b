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
#include "base/processor.h"
#include "depth/depth_line.h"
#include "depth/pixel_formats.h"
#include "quorix/depth.h"
#include "raster/repeated_sum.h"

namespace quorix {

namespace {

// A plain line whose ends are nearer than this on both axes is a point.
constexpr double same_place = 0.5;

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
void draw_line(const Target &t, const Pixels &pixels, Rgb colour, const DepthLine &line) {
  if (is_empty(t.box)) return;
  const auto ink = pixels.ink(colour);
  const int64_t ax = round_to_int32(line.x[0]);
  const int64_t ay = round_to_int32(line.y[0]);
  const int64_t bx = round_to_int32(line.x[1]);
  const int64_t by = round_to_int32(line.y[1]);
  if (ax == bx && ay == by) {
    const auto x = static_cast<int32_t>(ax);
    const auto y = static_cast<int32_t>(ay);
    if (contains(t.box, x, y) && depth_test(t).pass(x, y, line.z[0])) pixels.put(x, y, ink);
    return;
  }
  const bool x_major = std::abs(ax - bx) > std::abs(ay - by);
  const double *u = x_major ? line.x : line.y;
  const double *v = x_major ? line.y : line.x;
  const double from[3] = {u[0], v[0], line.z[0]};
  const double to[3] = {u[1], v[1], line.z[1]};
  const LineWalk w = walk_line(x_major, from, to);
  if constexpr (std::is_same_v<Pixels, RgbaPixels> && compiled_for_x86_64) {
    if (run_rgba_line_sse2(t, ink, w)) return;
  }
  run_line(t, pixels, ink, w);
}

void depth_line(OutputContext *context, int32_t device, const DepthLine &line) {
  const DepthCalls *calls = depth_calls(context, OpenLayer::drawn_on);
  if (calls != nullptr) calls->line(context, device, line);
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

void draw_depth_line(OutputContext *context, int32_t device, const DepthLine &line) {
  Target target;
  if (!open_target(context, device, Depths::used, &target)) return;
  Rgb rgb = {};
  colour_to_rgb(context, line.colour, &rgb.r, &rgb.g, &rgb.b);
  with_pixels(target, [&](const auto &p) { draw_line(target, p, rgb, line); });
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqzlin2(const double *x, const double *y, int32_t colour, const double *z,
                           int32_t device) {
  if (output_context == nullptr) return 0;
  const DepthLine line = {{x[0], x[1]}, {y[0], y[1]}, {z[0], z[1]}, colour};
  depth_line(output_context, device, line);
  return 0;
}

extern "C" int32_t qqzlin(const int32_t *x, const int32_t *y, int32_t colour, const double *z,
                          int32_t device) {
  if (output_context == nullptr) return 0;
  const auto number = [](int32_t v) { return static_cast<double>(v); };
  const DepthLine line = {
      {number(x[0]), number(x[1])}, {number(y[0]), number(y[1])}, {z[0], z[1]}, colour};
  depth_line(output_context, device, line);
  return 0;
}

extern "C" int32_t qqgllin(const double *x1, const double *y1, const double *x2, const double *y2) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  const DepthCalls *calls = depth_calls(context, OpenLayer::passed_by);
  if (calls == nullptr || calls->plain_line == nullptr) return 0;
  if (std::abs(*x1 - *x2) < same_place && std::abs(*y1 - *y2) < same_place) {
    calls->plain_point(context, *x1, *y1);
  } else {
    const double x[2] = {*x1, *x2};
    const double y[2] = {*y1, *y2};
    calls->plain_line(context, x, y);
  }
  return 0;
}
