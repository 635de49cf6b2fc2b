// SPDX-License-Identifier: MIT
//
// How the outline of a glyph is read from its table: what truetype_simple.cpp,
// truetype_composite.cpp and truetype_outline.cpp share.
//
// A glyph's numbers stand in the byte order of its file, so what reads them is a template over
// that. Numbers of points are counted in 64 bits, since a huge size asks for any number of them;
// points beyond the caller's room are counted without being computed. The caller gets them in 32,
// saturated.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "formats/truetype.h"

namespace quorix {

inline constexpr size_t glyph_header_size = 10;  // number of contours and bounding box

inline constexpr int32_t least_curve_steps = 5;

// Points and contours of all components of a glyph together. Without a limit a small file could
// keep its reader busy for hours, by components that are all the same large glyph.
inline constexpr int64_t most_glyph_parts = int64_t{1} << 24;

struct BigEndian {
  static uint32_t number(const uint8_t *at) { return at[0] * 256U + at[1]; }
};

struct LittleEndian {
  static uint32_t number(const uint8_t *at) { return at[1] * 256U + at[0]; }
};

inline int32_t signed_number(uint32_t number) {
  return static_cast<int16_t>(static_cast<uint16_t>(number));
}

// Where points go.
struct Outline {
  double *x, *y;
  int32_t *contour_sizes;
  int64_t room;  // 0: points are only counted, below: there is no room at all
  int32_t curve_points;
  double scale;
  int64_t points = 0;
  int64_t contours = 0;
  int64_t read = 0;  // points and contours that components have in the file
};

inline int32_t saturated(int64_t count) {
  return static_cast<int32_t>(std::min<int64_t>(count, INT32_MAX));
}

inline void end_contour(Outline *out, int64_t first) {
  if (out->room != 0) out->contour_sizes[out->contours] = saturated(out->points - first);
  ++out->contours;
}

// ---- truetype_simple.cpp

// Adds the contours of the simple glyph that starts at `start` in the table.
template <class Bytes>
TtfStatus read_simple_glyph(TtfFont *font, size_t start, Outline *out);

// ---- truetype_composite.cpp

// The same for a glyph that is put together from simple ones.
template <class Bytes>
TtfStatus read_composite_glyph(TtfFont *font, size_t start, Outline *out);

}  // namespace quorix
