// SPDX-License-Identifier: MIT
//
// Pens of width 4 and more: every segment is a filled quadrilateral, corners and ends are polygons
// and discs.
//
// n is half the pen width across a segment, to its left: P - n and P + n are the two corners at a
// point P. Angles grow counter-clockwise, while y grows downward.
#include <cmath>

#include "base/numbers.h"
#include "base/trig.h"
#include "raster/raster.h"

namespace quorix {

namespace {
constexpr double right_angle = 1.570796;  // kept: not quite a right angle
// As a 32-bit float value.
constexpr double parallel_slopes = static_cast<double>(0.001F);

Point operator+(Point a, Point b) {
  return {a.x + b.x, a.y + b.y};
}

Point operator-(Point a, Point b) {
  return {a.x - b.x, a.y - b.y};
}

// The corners of a segment's quadrilateral: start - n, end - n, end + n, start + n.
struct Quad {
  Point corner[4];
};

template <class Pixel>
struct ThickPen {
  const Surface<Pixel> &surface;
  double half;  // of the width
  int32_t join;
};

template <class Pixel>
void fill_corners(const ThickPen<Pixel> &pen, std::initializer_list<Point> corners) {
  double xs[4];
  double ys[4];
  int32_t n = 0;
  for (const Point p : corners) {
    xs[n] = p.x;
    ys[n++] = p.y;
  }
  fill_polygon(pen.surface, xs, ys, n);
}

template <class Pixel>
void fill_disc(const ThickPen<Pixel> &pen, int32_t x, int32_t y) {
  draw_disc(pen.surface, x, y, to_int32(pen.half), false);
}

double segment_angle(int32_t px, int32_t py, int32_t qx, int32_t qy) {
  if (qx == px) return py < qy ? -right_angle : right_angle;
  const double rise = static_cast<double>(static_cast<int64_t>(py) - qy);
  const double run = static_cast<double>(static_cast<int64_t>(qx) - px);
  return portable_atan2(rise, run);
}

// From the previous quadrilateral R to one that starts at P. Both sides are tried; the inner one
// only draws over.
template <class Pixel>
void draw_join(const ThickPen<Pixel> &pen, const Quad &r, const Quad &next, Point p) {
  const Point *rc = r.corner;
  const Point *nc = next.corner;
  if (pen.join == join_bevel) {
    fill_corners(pen, {rc[1], nc[0], p});
    fill_corners(pen, {rc[2], nc[3], p});
  } else if (pen.join == join_miter) {
    Point i = {};
    if (line_intersection(rc[0], rc[1], nc[0], nc[1], &i.x, &i.y) != 0) {
      fill_corners(pen, {rc[1], i, nc[0], p});
    }
    if (line_intersection(rc[2], rc[3], nc[2], nc[3], &i.x, &i.y) != 0) {
      fill_corners(pen, {rc[2], i, nc[3], p});
    }
  }
}

// The last quadrilateral R of a closed line meets the first, F, at P.
template <class Pixel>
void close_line(const ThickPen<Pixel> &pen, const Quad &f, const Quad &r, int32_t x, int32_t y) {
  const Point p = {static_cast<double>(x), static_cast<double>(y)};
  const Point *fc = f.corner;
  const Point *rc = r.corner;
  if (pen.join == join_round) {
    fill_disc(pen, x, y);
  } else if (pen.join == join_bevel) {
    fill_corners(pen, {fc[0], rc[1], p});
    fill_corners(pen, {fc[3], rc[2], p});
  } else if (pen.join == join_miter) {
    Point i = {};
    if (line_intersection(fc[0], fc[1], rc[0], rc[1], &i.x, &i.y) != 0) {
      fill_corners(pen, {rc[1], i, fc[0], p});
    }
    // Kept: R3 and F2, though R2 and F3 are the corners beside P.
    if (line_intersection(fc[2], fc[3], rc[2], rc[3], &i.x, &i.y) != 0) {
      fill_corners(pen, {rc[3], i, fc[2], p});
    }
  }
}

// Half a pen width beyond a point, backward at the start of a line and forward at its end.
template <class Pixel>
void square_caps(const ThickPen<Pixel> &pen, Point first, Point last, double start_angle,
                 double end_angle) {
  const double sx = portable_cos(start_angle) * pen.half;
  const double sy = portable_sin(start_angle) * pen.half;
  const Point p = first;
  fill_corners(pen, {{p.x - sx - sy, p.y + sy - sx},
                     {p.x - sy, p.y - sx},
                     {p.x + sy, p.y + sx},
                     {p.x - sx + sy, p.y + sy + sx}});
  const double ex = portable_cos(end_angle) * pen.half;
  const double ey = portable_sin(end_angle) * pen.half;
  const Point q = last;
  fill_corners(pen, {{q.x - ey, q.y - ex},
                     {q.x + ex - ey, q.y - ey - ex},
                     {q.x + ex + ey, q.y - ey + ex},
                     {q.x + ey, q.y + ex}});
}

}  // namespace

int32_t line_intersection(Point a, Point b, Point c, Point d, double *xi, double *yi) {
  const bool first_vertical = a.x == b.x;
  const bool second_vertical = c.x == d.x;
  if (first_vertical && second_vertical) return 0;
  if (second_vertical) {
    const double m = (b.y - a.y) / (b.x - a.x);
    *xi = c.x;
    *yi = *xi * m + (a.y - a.x * m);
    return 1;
  }
  const double m2 = (d.y - c.y) / (d.x - c.x);
  if (first_vertical) {
    *xi = a.x;
    *yi = *xi * m2 + (c.y - c.x * m2);
    return 1;
  }
  const double m1 = (b.y - a.y) / (b.x - a.x);
  if (std::abs(m1 - m2) < parallel_slopes) return 0;
  const double b1 = a.y - a.x * m1;
  const double b2 = c.y - c.x * m2;
  *xi = (b1 - b2) / (m2 - m1);
  *yi = (b1 * m2 - b2 * m1) / (m2 - m1);
  return 1;
}

template <class Pixel>
void draw_thick(const Surface<Pixel> &s, const OutputContext *context, const int32_t *xs,
                const int32_t *ys, int32_t n) {
  const ThickPen<Pixel> pen = {s, context->pen.line_width / 2.0, context->pen.line_join};
  const bool closed = xs[0] == xs[n - 1] && ys[0] == ys[n - 1];
  double start_angle = 0.0;
  double end_angle = 0.0;  // kept: that of a single segment stays 0 whatever its direction
  Quad previous = {};
  Quad first = {};
  for (int32_t i = 1; i < n; ++i) {
    const Point p = {static_cast<double>(xs[i - 1]), static_cast<double>(ys[i - 1])};
    const Point q = {static_cast<double>(xs[i]), static_cast<double>(ys[i])};
    const double angle = segment_angle(xs[i - 1], ys[i - 1], xs[i], ys[i]);
    if (i == 1) {
      start_angle = angle;
    } else if (i == n - 1) {
      end_angle = angle;
    }
    const Point across = {portable_sin(angle) * pen.half, portable_cos(angle) * pen.half};
    const Quad quad = {{p - across, q - across, q + across, p + across}};
    if (i > 1) draw_join(pen, previous, quad, p);
    fill_corners(pen, {quad.corner[0], quad.corner[1], quad.corner[2], quad.corner[3]});
    previous = quad;
    if (pen.join == join_round && i < n - 1) fill_disc(pen, xs[i], ys[i]);
    if (i == 1) first = quad;
  }
  if (closed) {
    close_line(pen, first, previous, xs[0], ys[0]);
  } else if (context->pen.line_cap == cap_round) {
    fill_disc(pen, xs[0], ys[0]);
    fill_disc(pen, xs[n - 1], ys[n - 1]);
  } else if (context->pen.line_cap == cap_square) {
    square_caps(pen, {static_cast<double>(xs[0]), static_cast<double>(ys[0])},
                {static_cast<double>(xs[n - 1]), static_cast<double>(ys[n - 1])}, start_angle,
                end_angle);
  }
}

template void draw_thick(const PaletteSurface &, const OutputContext *, const int32_t *,
                         const int32_t *, int32_t);
template void draw_thick(const RgbaSurface &, const OutputContext *, const int32_t *,
                         const int32_t *, int32_t);

}  // namespace quorix
