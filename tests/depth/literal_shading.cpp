// SPDX-License-Identifier: MIT
//
// Literal depth renderer: triangles with a colour and a depth per corner.

#include <algorithm>
#include <cmath>

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

void sort3_double(const double *v, int32_t *first, int32_t *second, int32_t *third) {
  const auto order = [&](int32_t i, int32_t j, int32_t k) {
    *first = i;
    *second = j;
    *third = k;
  };
  const double a = v[0];
  const double b = v[1];
  const double c = v[2];
  // What is not a number fits no case; the comparisons that are left over decide.
  if (a < b) {
    if (c <= a) return order(2, 0, 1);
    if (c >= b) return order(0, 1, 2);
    return order(0, 2, 1);
  }
  if (c <= b) return order(2, 1, 0);
  if (c >= a) return order(1, 0, 2);
  return order(1, 2, 0);
}

namespace {

// What is interpolated along an edge: x, then red, green, blue, then z.
struct Values {
  double v[5];
};

constexpr int at_x = 0;
constexpr int at_z = 4;

Values slope(const Values &from, const Values &to, double rows) {
  Values result{};
  for (int i = 0; i < 5; ++i)
    result.v[i] = (to.v[i] - from.v[i]) / rows;
  return result;
}

void add(Values &values, const Values &step) {
  for (int i = 0; i < 5; ++i)
    values.v[i] += step.v[i];
}

void swap_black_white(uint8_t *p) {
  if (p[0] > 254 && p[1] > 254 && p[2] > 254) {
    p[0] = p[1] = p[2] = 0;
  } else if (p[0] == 0 && p[1] == 0 && p[2] == 0) {
    p[0] = p[1] = p[2] = 255;
  }
}

bool blends(const LiteralDepth &record, int32_t device) {
  if (!record.alpha_blend_on) return false;
  if (is_raster(device)) return record.raster.rgba_mode != 0;
  return record.window->bits == 24 || record.window->bits == 32;
}

Rgb colour_there(LiteralDepth &record, int32_t device, int64_t x, int64_t y) {
  if (is_raster(device)) {
    const uint8_t *pixel = pixel_at(record.raster, x, y);
    return Rgb{pixel[0], pixel[1], pixel[2]};
  }
  const uint8_t *pixel = testing::pixel_at(*record.window, x, y);
  return Rgb{pixel[2], pixel[1], pixel[0]};
}

uint8_t mixed(double a, uint8_t old_value, uint8_t new_value) {
  return low_byte(to_int((1.0 - a) * old_value + new_value * a + 0.5));
}

void shaded_pixel(LiteralDepth &record, int32_t device, int64_t x, int64_t y, Rgb rgb, double z) {
  if (!has_pixel(record, device, x, y)) return;
  const bool blending = blends(record, device);
  if (tests_depth(record)) {
    if (!has_depth(record, x, y)) return;
    const double there = depth_at(record, x, y);
    if (blending) {
      if (there <= z + 0.001) return;
    } else {
      if (!(there >= z - 1e-6)) return;
    }
  }
  uint8_t p[3] = {rgb.r, rgb.g, rgb.b};
  if (blending) {
    const double a = record.raster.colour_alpha / 255.0;
    const Rgb old_rgb = colour_there(record, device, x, y);
    p[0] = mixed(a, old_rgb.r, rgb.r);
    p[1] = mixed(a, old_rgb.g, rgb.g);
    p[2] = mixed(a, old_rgb.b, rgb.b);
  }
  if (record.raster.white_background != 0 && record.raster.swap_black_white != 0) {
    swap_black_white(p);
  }
  put_rgb(record, device, x, y, Rgb{p[0], p[1], p[2]});
  if (tests_depth(record)) depth_at(record, x, y) = static_cast<float>(z);
}

double value_at(double x, double xa, double xb, double a, double b, double step) {
  if (x < xa) return a;
  if (x > xb) return b;
  return (x - xa) * step + a;
}

void shade_span(LiteralDepth &record, int32_t device, int64_t y, const Values &a, const Values &b) {
  const LiteralRaster &raster = record.raster;
  const double xa = a.v[at_x];
  const double xb = b.v[at_x];
  const int32_t ia = rounded(xa);
  const int32_t ib = rounded(xb);
  if (!in_clip_rows(raster, y) || ia > raster.clip_x2 || ib < raster.clip_x1) return;
  Values step{};
  if (ia != ib) {
    for (int i = 1; i < 5; ++i)
      step.v[i] = (a.v[i] - b.v[i]) / (xa - xb);
  }
  const int64_t left = std::max(ia, raster.clip_x1);
  const int64_t right = std::min(ib, raster.clip_x2);
  // No pixel lies left of column 0 or right of the largest size.
  for (int64_t x = std::max<int64_t>(left, 0); x <= std::min<int64_t>(right, 5000); ++x) {
    double at[5] = {};
    for (int i = 1; i < 5; ++i)
      at[i] = value_at(double(x), xa, xb, a.v[i], b.v[i], step.v[i]);
    const Rgb rgb{low_byte(rounded(at[1])), low_byte(rounded(at[2])), low_byte(rounded(at[3]))};
    shaded_pixel(record, device, x, y, rgb, at[at_z]);
  }
}

void span_step(LiteralDepth &record, int32_t device, int64_t y, Values &short_edge,
               const Values &short_slope, Values &long_edge, const Values &long_slope) {
  if (short_edge.v[at_x] >= long_edge.v[at_x]) {
    shade_span(record, device, y, long_edge, short_edge);
  } else {
    shade_span(record, device, y, short_edge, long_edge);
  }
  add(short_edge, short_slope);
  add(long_edge, long_slope);
}

void one_row(LiteralDepth &record, int32_t device, int64_t y, const double *x, const double *z,
             const Values *by_y) {
  int32_t order[3];
  sort3_double(x, &order[0], &order[1], &order[2]);
  Values spots[3];
  for (int i = 0; i < 3; ++i) {
    spots[i] = by_y[i];
    spots[i].v[at_x] = x[order[i]];
    spots[i].v[at_z] = z[order[i]];
  }
  shade_span(record, device, y, spots[0], spots[1]);
  shade_span(record, device, y, spots[1], spots[2]);
}

void fill(LiteralDepth &record, int32_t device, const Values &A, const Values &B, const Values &C,
          int64_t row_a, int64_t row_b, int64_t row_c) {
  const int64_t end = last_row(record, device);
  const double dy1 = double(row_b - row_a);
  const double dy2 = double(row_c - row_a);
  const double dy3 = double(row_c - row_b);
  Values short_edge = A;
  Values long_edge = A;
  Values long_slope = slope(A, C, dy2);
  Values short_slope{};
  int64_t next = row_b;
  if (row_a != row_b) {
    short_slope = slope(A, B, dy1);
    for (int64_t y = row_a; y <= row_b && y <= end; ++y)
      span_step(record, device, y, short_edge, short_slope, long_edge, long_slope);
    if (row_c == row_b) return;
    short_slope = slope(B, C, dy3);
    short_edge = B;
    add(short_edge, short_slope);
    next = row_b + 1;
  } else {
    short_slope = slope(B, C, dy3);
    long_slope = slope(A, C, dy3);
    short_edge = B;
  }
  for (int64_t y = next; y <= row_c && y <= end; ++y)
    span_step(record, device, y, short_edge, short_slope, long_edge, long_slope);
}

void in_opengl(LiteralDepth &record, const double *x, const double *y, const double *z,
               const double *r, const double *g, const double *b) {
  begin(record, 4);
  for (int i = 0; i < 3; ++i) {
    std::vector<float> colour{static_cast<float>(r[i]), static_cast<float>(g[i]),
                              static_cast<float>(b[i])};
    if (record.alpha_blend_on) {
      colour.push_back(static_cast<float>(record.raster.colour_alpha / 255.0));
      call_floats(record, "glColor4f", colour);
    } else {
      call_floats(record, "glColor3f", colour);
    }
    call_floats(record, "glVertex3f",
                {static_cast<float>(x[i]), static_cast<float>(record.raster.height - 1 - y[i]),
                 static_cast<float>(z[i])});
  }
  end(record);
}

}  // namespace

int32_t qqztri3(LiteralDepth &record, const double *x, const double *y, const double *z,
                const double *r, const double *g, const double *b, int32_t device) {
  if (!record.raster.exists) return 0;
  if (forwards(record)) {
    in_opengl(record, x, y, z, r, g, b);
    return 0;
  }
  if (is_raster(device)) flush_polyline(record.raster);
  if (!is_raster(device) && record.window == nullptr) return 0;

  int32_t order[3];
  sort3_double(y, &order[0], &order[1], &order[2]);
  Values by_y[3];
  for (int i = 0; i < 3; ++i) {
    const int32_t k = order[i];
    by_y[i] = Values{{x[k], r[k] * 255.0, g[k] * 255.0, b[k] * 255.0, z[k]}};
  }
  const double ya = y[order[0]];
  const double yb = y[order[1]];
  const double yc = y[order[2]];
  const int64_t row_a = rounded(ya);
  int64_t row_b = row_a;
  if (std::fabs(yb - ya) >= 0.1) row_b = rounded(yb);
  int64_t row_c = row_a;
  if (std::fabs(yc - ya) >= 0.1) {
    row_c = row_b;
    if (std::fabs(yc - yb) >= 0.1) row_c = rounded(yc);
  }
  if (row_a == row_b && row_b == row_c) {
    one_row(record, device, row_a, x, z, by_y);
  } else {
    fill(record, device, by_y[0], by_y[1], by_y[2], row_a, row_b, row_c);
  }
  return 0;
}

int32_t qqztri2(LiteralDepth &record, const double *x, const double *y, const int32_t *colour,
                const double *z, int32_t device) {
  double r[3];
  double g[3];
  double b[3];
  for (int i = 0; i < 3; ++i) {
    const Rgb rgb = resolved(record.raster, colour[i]);
    r[i] = rgb.r / 255.0;
    g[i] = rgb.g / 255.0;
    b[i] = rgb.b / 255.0;
  }
  return qqztri3(record, x, y, z, r, g, b, device);
}

int32_t qqztri(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
               const double *z, int32_t device) {
  const double xs[3] = {double(x[0]), double(x[1]), double(x[2])};
  const double ys[3] = {double(y[0]), double(y[1]), double(y[2])};
  return qqztri2(record, xs, ys, colour, z, device);
}

}  // namespace quorix::literal
