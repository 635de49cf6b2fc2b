// SPDX-License-Identifier: MIT
//
// How the points of a TrueType glyph become polygons, written down step by step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace quorix::testing {

struct OutlinePoint {
  int32_t x, y;
  bool on_curve = true;
};
using Contour = std::vector<OutlinePoint>;

// One component of a composite glyph: (a x + c y + dx, b x + d y + dy).
struct GlyphPart {
  int32_t glyph;
  double a = 1, b = 0, c = 0, d = 1;
  int32_t dx = 0, dy = 0;
};

struct Polygons {
  std::vector<double> x, y;
  std::vector<int32_t> sizes;  // points of each contour, the closing one included
  int32_t status = 0;
};

// In font units. `size` decides on the steps of curves alone.
Polygons literal_simple(const std::vector<Contour> &contours, int32_t size);

// The contours of each component one after another. `contours_of` gives null where a component is
// no simple glyph.
using ContoursOf = std::function<const std::vector<Contour> *(int32_t glyph)>;
Polygons literal_composite(const std::vector<GlyphPart> &parts, const ContoursOf &contours_of,
                           int32_t size);

// So that the capital A has the height `size`.
void scale_polygons(Polygons *polygons, int32_t size, int32_t cap_height);

}  // namespace quorix::testing
