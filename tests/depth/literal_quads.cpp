// SPDX-License-Identifier: MIT
//
// Literal depth renderer: triangles and quadrilaterals with a palette index per corner.

#include <algorithm>
#include <cmath>

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

namespace {

constexpr double tolerance = 0.01;

bool in_range(double parameter) {
  return parameter >= -tolerance && parameter <= 1.0 + tolerance;
}

}  // namespace

int32_t quad_value(int64_t x, int64_t y, const int32_t *X, const int32_t *Y, const int32_t *C) {
  const double X0 = X[0], X1 = X[1], X2 = X[2], X3 = X[3];
  const double Y0 = Y[0], Y1 = Y[1], Y2 = Y[2], Y3 = Y[3];
  const double C0 = C[0], C1 = C[1], C2 = C[2], C3 = C[3];
  const double e = tolerance;
  const double a1 = X1 - X0, b1 = Y1 - Y0, c1 = C1 - C0;
  const double a3 = X3 - X0, b3 = Y3 - Y0, c3 = C3 - C0;
  const double a2 = X2 - X3 - X1 + X0, b2 = Y2 - Y3 - Y1 + Y0, c2 = C2 - C3 - C1 + C0;
  const double px = double(x) - X0, py = double(y) - Y0;
  const double P = a3 * b2 - b3 * a2;
  const double Q = py * a2 - px * b2 + a3 * b1 - b3 * a1;
  const double R = py * a1 - px * b1;
  const auto u_of = [&](double v) { return (px - v * a3) / (v * a2 + a1); };

  double v = 0;
  if (std::fabs(P) >= e) {
    const double D = Q * Q - 4 * P * R;
    if (D < 0) return -1;
    if (std::fabs(D) < e) {
      v = -Q / (2 * P);
    } else {
      v = (std::sqrt(D) - Q) / (2 * P);
      if (!in_range(u_of(v)) || !in_range(v)) v = (-Q - std::sqrt(D)) / (2 * P);
    }
  } else {
    if (std::fabs(Q) < e) return -1;
    v = -R / Q;
  }
  const double u = u_of(v);
  if (!in_range(v) || !in_range(u)) return -1;
  return rounded(C0 + u * c1 + v * c3 + u * v * c2);
}

namespace {

// Three corners by rising y: where they are, and what is interpolated.
struct Corner {
  int64_t row;
  double x;
  double c;
};

struct Quad {
  const int32_t *X;
  const int32_t *Y;
  const int32_t *C;
};

// One row of a triangle, or of half a quadrilateral.
struct Painter {
  LiteralDepth &record;
  int32_t device;
  const Quad *quad;  // null for a triangle
};

void index_span(Painter &painter, int64_t x1, int64_t x2, int64_t y, double c1, double c2) {
  const LiteralRaster &raster = painter.record.raster;
  double m = 0;
  if (x1 != x2) m = (c1 - c2) / double(x1 - x2);
  const int64_t left = std::max<int64_t>(x1, raster.clip_x1);
  const int64_t right = std::min<int64_t>(x2, raster.clip_x2);
  // No pixel lies left of column 0 or right of the largest size.
  for (int64_t x = std::max<int64_t>(left, 0); x <= std::min<int64_t>(right, 5000); ++x) {
    const int32_t c = rounded(double(x - x1) * m + c1);
    put_index(painter.record, painter.device, x, y, low_byte(c % 256));
  }
}

void quad_span(Painter &painter, int64_t x1, int64_t x2, int64_t y) {
  const LiteralDepth &record = painter.record;
  const Quad &quad = *painter.quad;
  const bool shifts = is_raster(painter.device) || record.window->bits != 16;
  const int64_t left = std::max<int64_t>(x1, record.raster.clip_x1);
  const int64_t right = std::min<int64_t>(x2, record.raster.clip_x2);
  int64_t position = left;
  for (int64_t x = left; x <= right; ++x) {
    const int32_t value = quad_value(x, y, quad.X, quad.Y, quad.C);
    if (value == -1) continue;
    put_index(painter.record, painter.device, shifts ? position : x, y, low_byte(value % 256));
    ++position;
  }
}

void span(Painter &painter, int64_t x1, int64_t x2, int64_t y, double c1, double c2) {
  const LiteralRaster &raster = painter.record.raster;
  if (!in_clip_rows(raster, y) || x1 > raster.clip_x2 || x2 < raster.clip_x1) return;
  if (y < 0 || y > last_row(painter.record, painter.device)) return;
  if (painter.quad == nullptr) {
    index_span(painter, x1, x2, y, c1, c2);
  } else {
    quad_span(painter, x1, x2, y);
  }
}

// An edge on its way down.
struct Edge {
  double x;
  double c;
  double x_slope;
  double c_slope;
};

Edge edge(const Corner &from, const Corner &to, double rows) {
  return Edge{from.x, from.c, (to.x - from.x) / rows, (to.c - from.c) / rows};
}

void step(Edge &edge) {
  edge.x += edge.x_slope;
  edge.c += edge.c_slope;
}

void span_step(Painter &painter, int64_t y, Edge &short_edge, Edge &long_edge) {
  const int64_t xs = rounded(short_edge.x);
  const int64_t xl = rounded(long_edge.x);
  if (xs >= xl) {
    span(painter, xl, xs, y, long_edge.c, short_edge.c);
  } else {
    span(painter, xs, xl, y, short_edge.c, long_edge.c);
  }
  step(short_edge);
  step(long_edge);
}

void fill(Painter &painter, const Corner &A, const Corner &B, const Corner &C) {
  const int64_t end = last_row(painter.record, painter.device);
  const double dy3 = double(C.row - B.row);
  int64_t next = B.row;
  Edge short_edge{};
  Edge long_edge{};
  if (A.row != B.row) {
    short_edge = edge(A, B, double(B.row - A.row));
    long_edge = edge(A, C, double(C.row - A.row));
    for (int64_t y = A.row; y <= B.row && y <= end; ++y)
      span_step(painter, y, short_edge, long_edge);
    if (C.row == B.row) return;
    short_edge = edge(B, C, dy3);
    step(short_edge);
    next = B.row + 1;
  } else {
    short_edge = edge(B, C, dy3);
    long_edge = edge(A, C, dy3);
  }
  for (int64_t y = next; y <= C.row && y <= end; ++y)
    span_step(painter, y, short_edge, long_edge);
}

void paint(Painter &painter, const int32_t *x, const int32_t *y, const int32_t *c) {
  int32_t order[3];
  sort3_int(y, &order[0], &order[1], &order[2]);
  Corner corners[3];
  for (int i = 0; i < 3; ++i) {
    const int32_t k = order[i];
    corners[i] = Corner{y[k], double(x[k]), double(c[k])};
  }
  if (corners[0].row != corners[1].row || corners[1].row != corners[2].row) {
    fill(painter, corners[0], corners[1], corners[2]);
    return;
  }
  int32_t by_x[3];
  sort3_int(x, &by_x[0], &by_x[1], &by_x[2]);
  const int64_t row = corners[0].row;
  span(painter, x[by_x[0]], x[by_x[1]], row, corners[0].c, corners[1].c);
  span(painter, x[by_x[1]], x[by_x[2]], row, corners[1].c, corners[2].c);
}

void in_opengl(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour) {
  begin(record, 4);
  for (int i = 0; i < 3; ++i) {
    const Rgb rgb = resolved(record.raster, colour[i]);
    call_floats(record, "glColor3f",
                {float(rgb.r) / 255.0F, float(rgb.g) / 255.0F, float(rgb.b) / 255.0F});
    call(record, "glVertex2i",
         {double(x[i]), double(to_int(double(record.raster.height) - 1 - y[i]))});
  }
  end(record);
}

void triangle(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
              const Quad *quad, int32_t device) {
  if (!record.raster.exists) return;
  if (record.opengl_on) {
    in_opengl(record, x, y, colour);
    return;
  }
  if (is_raster(device)) flush_polyline(record.raster);
  if (!is_raster(device) && record.window == nullptr) return;
  Painter painter{record, device, quad};
  paint(painter, x, y, colour);
}

}  // namespace

int32_t qqdtri(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
               int32_t device) {
  triangle(record, x, y, colour, nullptr, device);
  return 0;
}

int32_t qqdtri2(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
                int32_t half, int32_t device) {
  const int corners[3] = {0, half == 1 ? 1 : 3, 2};
  int32_t xs[3];
  int32_t ys[3];
  int32_t cs[3];
  for (int i = 0; i < 3; ++i) {
    xs[i] = x[corners[i]];
    ys[i] = y[corners[i]];
    cs[i] = colour[corners[i]];
  }
  const Quad quad{x, y, colour};
  triangle(record, xs, ys, cs, &quad, device);
  return 0;
}

}  // namespace quorix::literal
