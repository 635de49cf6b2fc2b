// SPDX-License-Identifier: MIT
//
// Outlines from the points that a font was made of, so no table is read here.
#include "tests/formats/literal_outline.h"

#include <algorithm>

namespace quorix::testing {

namespace {

struct Place {
  double x = 0, y = 0;
};

// Where the pen is, and what pulls the curve; both outlive a contour.
struct Pen {
  Place on, control;
};

void put(Polygons *polygons, Place place) {
  polygons->x.push_back(place.x);
  polygons->y.push_back(place.y);
}

void put_curve(Polygons *polygons, const Pen &pen, Place end, int32_t steps) {
  for (int32_t j = 1; j <= steps - 1; ++j) {
    const double t = static_cast<double>(j) / (steps - 1);
    const double p = (1 - t) * (1 - t), c = 2 * (1 - t) * t, e = t * t;
    put(polygons, {p * pen.on.x + c * pen.control.x + e * end.x,
                   p * pen.on.y + c * pen.control.y + e * end.y});
  }
}

void put_contour(Polygons *polygons, const Contour &contour, int32_t steps, Pen *pen) {
  const size_t first_out = polygons->x.size();
  int previous_flag = -1;
  for (size_t i = 0; i < contour.size(); ++i) {
    const OutlinePoint &point = contour[i];
    const Place here = {static_cast<double>(point.x), static_cast<double>(point.y)};
    if (previous_flag != 0) {
      if (!point.on_curve) {
        pen->control = here;
      } else {
        put(polygons, here);
        pen->on = here;
      }
    } else {
      Place end = here;
      if (!point.on_curve) {
        end.x = (point.x + contour[i - 1].x) / 2.0;
        end.y = (point.y + contour[i - 1].y) / 2.0;
      }
      put_curve(polygons, *pen, end, steps);
      pen->on = end;
      if (!point.on_curve) pen->control = here;
    }
    previous_flag = point.on_curve ? 1 : 0;
  }
  // A contour that has put nothing has no first point to return to; its closing point counts, and
  // stays open to what stands there.
  if (first_out < polygons->x.size()) {
    put(polygons, {polygons->x[first_out], polygons->y[first_out]});
  } else {
    put(polygons, {});
  }
  polygons->sizes.push_back(static_cast<int32_t>(polygons->x.size() - first_out));
}

}  // namespace

Polygons literal_simple(const std::vector<Contour> &contours, int32_t size) {
  Polygons polygons;
  const int32_t steps = std::max(size / 5, 5);
  Pen pen;
  for (const Contour &contour : contours)
    put_contour(&polygons, contour, steps, &pen);
  return polygons;
}

Polygons literal_composite(const std::vector<GlyphPart> &parts, const ContoursOf &contours_of,
                           int32_t size) {
  Polygons polygons;
  for (const GlyphPart &part : parts) {
    const std::vector<Contour> *contours = contours_of(part.glyph);
    polygons.status = contours == nullptr ? 7 : 0;
    if (contours == nullptr) continue;
    const Polygons simple = literal_simple(*contours, size);
    for (size_t i = 0; i < simple.x.size(); ++i) {
      put(&polygons, {part.a * simple.x[i] + part.c * simple.y[i] + part.dx,
                      part.b * simple.x[i] + part.d * simple.y[i] + part.dy});
    }
    polygons.sizes.insert(polygons.sizes.end(), simple.sizes.begin(), simple.sizes.end());
  }
  return polygons;
}

void scale_polygons(Polygons *polygons, int32_t size, int32_t cap_height) {
  const double factor = static_cast<double>(size) / cap_height;
  for (double &x : polygons->x)
    x *= factor;
  for (double &y : polygons->y)
    y *= factor;
}

}  // namespace quorix::testing
