// SPDX-License-Identifier: MIT
// Literal raster: rectangles, polygons, discs and flat triangles.

#include <cmath>
#include <utility>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

int32_t qqvfll(LiteralRaster &raster, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
               int32_t colour) {
  if (!raster.exists) return 0;
  flush_polyline(raster);
  int64_t left = x1;
  int64_t top = y1;
  int64_t right = x2;
  int64_t bottom = y2;
  if (raster.clip_on != 0) {
    if (left < raster.clip_x1) left = raster.clip_x1;
    if (top < raster.clip_y1) top = raster.clip_y1;
    if (right > raster.clip_x2) right = raster.clip_x2;
    if (bottom > raster.clip_y2) bottom = raster.clip_y2;
    if (left > right || top > bottom) return 0;
  }
  // What lies off the page cannot be written.
  if (left < 0) left = 0;
  if (top < 0) top = 0;
  if (right > raster.page_width - 1) right = raster.page_width - 1;
  if (bottom > raster.page_height - 1) bottom = raster.page_height - 1;
  for (int64_t y = top; y <= bottom; y++) {
    for (int64_t x = left; x <= right; x++)
      write_colour(raster, x, y, colour);
  }
  return 0;
}

int32_t qqvpol(LiteralRaster &raster, const double *xs, const double *ys, const int32_t *n,
               int32_t *status) {
  if (!raster.exists) {
    *status = 1;
    return 0;
  }
  flush_polyline(raster);
  std::vector<Point> points;
  for (int32_t i = 0; i < *n; i++)
    points.push_back(Point{xs[i], ys[i]});
  fill_polygon(raster, points, status);
  return 0;
}

namespace {

bool is_nan(double value) {
  return value != value;
}

// Where the edge from p to q crosses row y, rounded.
int32_t crossing(Point p, Point q, double y) {
  double x = p.x;
  if (std::fabs(p.y - q.y) >= 0.01) x = (q.x - p.x) * (y - p.y) / (q.y - p.y) + p.x;
  return to_int(x + 0.5);
}

std::vector<int32_t> crossings_of_row(const std::vector<Point> &points, double y, int32_t *status) {
  std::vector<int32_t> crossings;
  for (size_t i = 0; i < points.size(); i++) {
    const size_t j = i == points.size() - 1 ? 0 : i + 1;
    const Point p = points[i];
    const Point q = points[j];
    const bool crosses = (p.y < y && y <= q.y) || (q.y < y && y <= p.y);
    if (!crosses) continue;
    if (crossings.size() == max_crossings) {
      *status = 1;
      continue;
    }
    crossings.push_back(crossing(p, q, y));
  }
  return crossings;
}

void bubble_sort(std::vector<int32_t> &values) {
  for (size_t pass = 0; pass < values.size(); pass++) {
    for (size_t i = 0; i + 1 < values.size(); i++) {
      if (values[i] > values[i + 1]) std::swap(values[i], values[i + 1]);
    }
  }
}

void fill_spans(LiteralRaster &raster, const std::vector<int32_t> &crossings, int64_t y) {
  for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
    int64_t a = crossings[i];
    int64_t b = crossings[i + 1];
    if (a > raster.clip_x2 || b < raster.clip_x1) continue;
    if (a < raster.clip_x1) a = raster.clip_x1;
    if (b > raster.clip_x2) b = raster.clip_x2;
    fill_row_current(raster, a, b, y);
  }
}

}  // namespace

void fill_polygon(LiteralRaster &raster, const std::vector<Point> &points, int32_t *status) {
  *status = 0;
  if (points.empty()) return;
  double ymin = points[0].y;
  double ymax = points[0].y;
  for (const Point &point : points) {
    if (is_nan(point.y)) return;
    if (point.y < ymin) ymin = point.y;
    if (point.y > ymax) ymax = point.y;
  }
  int64_t y_start = to_int(ymin + 0.5);
  int64_t y_end = to_int(ymax + 0.5);
  if (y_start > raster.clip_y2 || y_end < raster.clip_y1) return;
  if (y_start < raster.clip_y1) y_start = raster.clip_y1;
  if (y_end > raster.clip_y2) y_end = raster.clip_y2;
  // A row off the page can only matter to the status, and that takes more than 99 edges.
  if (points.size() <= max_crossings) {
    if (y_start < 0) y_start = 0;
    if (y_end > raster.page_height - 1) y_end = raster.page_height - 1;
  }
  for (int64_t y = y_start; y <= y_end; y++) {
    std::vector<int32_t> crossings = crossings_of_row(points, static_cast<double>(y), status);
    bubble_sort(crossings);
    fill_spans(raster, crossings, y);
  }
}

void draw_disc(LiteralRaster &raster, int32_t cx, int32_t cy, int32_t r, bool upper_half_only) {
  const double w2 = 2.0 * r;
  for (int64_t k = 0; k <= r; k++) {
    const int64_t y = int64_t{cy} - r + k;
    if (!in_clip_rows(raster, y)) continue;
    double w = 0.0;
    if (k != 0) w = std::sqrt(w2 * static_cast<double>(k) - static_cast<double>(k * k));
    int64_t left = to_int(cx - w + 0.5);
    int64_t right = to_int(cx + w + 0.5);
    if (left < raster.clip_x1) left = raster.clip_x1;
    if (right > raster.clip_x2) right = raster.clip_x2;
    if (left > right) continue;
    fill_row_current(raster, left, right, y);
    const int64_t mirror = int64_t{cy} + r - k;
    if (!upper_half_only && in_clip_rows(raster, mirror)) {
      fill_row_current(raster, left, right, mirror);
    }
  }
}

namespace {

// Where the two sides of a triangle stand on the row in work, and what they move per row.
struct Sides {
  double xa;
  double xb;
  double m1;
  double m2;
};

void fill_clipped_span(LiteralRaster &raster, int64_t a, int64_t b, int64_t y) {
  if (a > raster.clip_x2 || b < raster.clip_x1) return;
  if (a < raster.clip_x1) a = raster.clip_x1;
  if (b > raster.clip_x2) b = raster.clip_x2;
  fill_row_current(raster, a, b, y);
}

void triangle_row(LiteralRaster &raster, Sides &sides, int64_t y) {
  int64_t a = to_int(sides.xa + 0.5);
  int64_t b = to_int(sides.xb + 0.5);
  sides.xa += sides.m1;
  sides.xb += sides.m2;
  if (!in_clip_rows(raster, y)) return;
  if (a > b) std::swap(a, b);
  fill_clipped_span(raster, a, b, y);
}

void triangle_rows(LiteralRaster &raster, Sides &sides, int64_t first, int64_t last) {
  for (int64_t y = first; y <= last; y++)
    triangle_row(raster, sides, y);
}

double slope(Point from, Point to) {
  return (to.x - from.x) / (to.y - from.y);
}

}  // namespace

int32_t qqvftr(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t colour) {
  if (!raster.exists) return 0;
  qqvclr(raster, colour);
  int32_t ia = 0;
  int32_t ib = 0;
  int32_t ic = 0;
  sort3_int(ys, &ia, &ib, &ic);
  const Point a{static_cast<double>(xs[ia]), static_cast<double>(ys[ia])};
  const Point b{static_cast<double>(xs[ib]), static_cast<double>(ys[ib])};
  const Point c{static_cast<double>(xs[ic]), static_cast<double>(ys[ic])};

  if (ys[ia] == ys[ib] && ys[ib] == ys[ic]) {
    if (!in_clip_rows(raster, ys[ia])) return 0;
    int32_t left = 0;
    int32_t middle = 0;
    int32_t right = 0;
    sort3_int(xs, &left, &middle, &right);
    fill_clipped_span(raster, xs[left], xs[right], ys[ia]);
    return 0;
  }

  Sides sides{};
  int64_t y_b = ys[ib];
  if (ys[ia] != ys[ib]) {
    sides.m1 = slope(a, b);
    sides.m2 = slope(a, c);
    sides.xa = a.x;
    sides.xb = a.x;
    triangle_rows(raster, sides, ys[ia], ys[ib]);
    if (ys[ic] == ys[ib]) return 0;
    sides.m1 = slope(b, c);
    sides.xa = b.x + sides.m1;
  } else {
    sides.m1 = slope(b, c);
    sides.m2 = slope(a, c);
    sides.xa = b.x;
    sides.xb = a.x;
    y_b = y_b - 1;
  }
  triangle_rows(raster, sides, y_b + 1, ys[ic]);
  return 0;
}

}  // namespace quorix::literal
