// SPDX-License-Identifier: MIT
// Literal raster: lines of width 4 and more, as filled quadrilaterals with joins and caps.

#include <cmath>

#include "base/trig.h"
#include "tests/raster/literal_raster.h"

namespace quorix::literal {

namespace {

constexpr double quarter_turn = 1.570796;

// The four corners of one segment of a thick line.
struct Quad {
  Point c[4];
};

void fill_triangle(LiteralRaster &raster, Point a, Point b, Point c) {
  int32_t status = 0;
  fill_polygon(raster, {a, b, c}, &status);
}

void fill_quad(LiteralRaster &raster, Point a, Point b, Point c, Point d) {
  int32_t status = 0;
  fill_polygon(raster, {a, b, c, d}, &status);
}

double segment_angle(Point p, Point q) {
  if (q.x != p.x) return portable_atan2(p.y - q.y, q.x - p.x);
  if (p.y < q.y) return -quarter_turn;
  return quarter_turn;
}

void join_segments(LiteralRaster &raster, const Quad &r, const Quad &q, Point p) {
  if (raster.line_join == 2) {
    fill_triangle(raster, r.c[1], q.c[0], p);
    fill_triangle(raster, r.c[2], q.c[3], p);
  }
  if (raster.line_join == 0) {
    Point i{0.0, 0.0};
    if (line_intersection(r.c[0], r.c[1], q.c[0], q.c[1], &i)) {
      fill_quad(raster, r.c[1], i, q.c[0], p);
    }
    if (line_intersection(r.c[2], r.c[3], q.c[2], q.c[3], &i)) {
      fill_quad(raster, r.c[2], i, q.c[3], p);
    }
  }
}

void close_line(LiteralRaster &raster, const Quad &r, const Quad &f, Point p, int32_t px,
                int32_t py, double half) {
  if (raster.line_join == 1) draw_disc(raster, px, py, to_int(half), false);
  if (raster.line_join == 2) {
    fill_triangle(raster, f.c[0], r.c[1], p);
    fill_triangle(raster, f.c[3], r.c[2], p);
  }
  if (raster.line_join == 0) {
    Point i{0.0, 0.0};
    if (line_intersection(f.c[0], f.c[1], r.c[0], r.c[1], &i)) {
      fill_quad(raster, r.c[1], i, f.c[0], p);
    }
    if (line_intersection(f.c[2], f.c[3], r.c[2], r.c[3], &i)) {
      fill_quad(raster, r.c[3], i, f.c[2], p);
    }
  }
}

void start_square_cap(LiteralRaster &raster, Point p, double s, double half) {
  const double ex = portable_cos(s) * half;
  const double ey = portable_sin(s) * half;
  const double nx = portable_sin(s) * half;
  const double ny = portable_cos(s) * half;
  fill_quad(raster, Point{p.x - ex - nx, p.y + ey - ny}, Point{p.x - nx, p.y - ny},
            Point{p.x + nx, p.y + ny}, Point{p.x - ex + nx, p.y + ey + ny});
}

void end_square_cap(LiteralRaster &raster, Point p, double s, double half) {
  const double ex = portable_cos(s) * half;
  const double ey = portable_sin(s) * half;
  const double nx = portable_sin(s) * half;
  const double ny = portable_cos(s) * half;
  fill_quad(raster, Point{p.x - nx, p.y - ny}, Point{p.x + ex - nx, p.y - ey - ny},
            Point{p.x + ex + nx, p.y - ey + ny}, Point{p.x + nx, p.y + ny});
}

}  // namespace

void draw_thick(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n) {
  const double half = raster.line_width / 2.0;
  const bool closed = xs[0] == xs[n - 1] && ys[0] == ys[n - 1];
  double start_angle = 0.0;
  double end_angle = 0.0;
  Quad first{};
  Quad previous{};

  for (int32_t i = 1; i <= n - 1; i++) {
    const Point p{static_cast<double>(xs[i - 1]), static_cast<double>(ys[i - 1])};
    const Point q{static_cast<double>(xs[i]), static_cast<double>(ys[i])};
    const double a = segment_angle(p, q);
    if (i == 1) {
      start_angle = a;
    } else if (i == n - 1) {
      end_angle = a;
    }
    const double nx = portable_sin(a) * half;
    const double ny = portable_cos(a) * half;
    const Quad quad{{Point{p.x - nx, p.y - ny}, Point{q.x - nx, q.y - ny},
                     Point{q.x + nx, q.y + ny}, Point{p.x + nx, p.y + ny}}};
    if (i > 1) join_segments(raster, previous, quad, p);
    fill_quad(raster, quad.c[0], quad.c[1], quad.c[2], quad.c[3]);
    previous = quad;
    if (raster.line_join == 1 && i < n - 1) draw_disc(raster, xs[i], ys[i], to_int(half), false);
    if (closed && i == 1) first = quad;
  }

  const Point start{static_cast<double>(xs[0]), static_cast<double>(ys[0])};
  const Point end{static_cast<double>(xs[n - 1]), static_cast<double>(ys[n - 1])};
  if (closed) {
    close_line(raster, previous, first, start, xs[0], ys[0], half);
  } else if (raster.line_cap == 1) {
    draw_disc(raster, xs[0], ys[0], to_int(half), false);
    draw_disc(raster, xs[n - 1], ys[n - 1], to_int(half), false);
  } else if (raster.line_cap == 2) {
    start_square_cap(raster, start, start_angle, half);
    end_square_cap(raster, end, end_angle, half);
  }
}

bool line_intersection(Point a, Point b, Point c, Point d, Point *where) {
  const bool first_vertical = a.x == b.x;
  const bool second_vertical = c.x == d.x;
  if (!first_vertical && !second_vertical) {
    const double m1 = (b.y - a.y) / (b.x - a.x);
    const double m2 = (d.y - c.y) / (d.x - c.x);
    if (std::fabs(m1 - m2) < static_cast<double>(0.001F)) return false;
    const double b1 = a.y - a.x * m1;
    const double b2 = c.y - c.x * m2;
    where->x = (b1 - b2) / (m2 - m1);
    where->y = (b1 * m2 - b2 * m1) / (m2 - m1);
    return true;
  }
  if (!first_vertical && second_vertical) {
    const double m = (b.y - a.y) / (b.x - a.x);
    where->x = c.x;
    where->y = where->x * m + (a.y - a.x * m);
    return true;
  }
  if (first_vertical && !second_vertical) {
    const double m = (d.y - c.y) / (d.x - c.x);
    where->x = a.x;
    where->y = where->x * m + (c.y - c.x * m);
    return true;
  }
  return false;
}

}  // namespace quorix::literal
