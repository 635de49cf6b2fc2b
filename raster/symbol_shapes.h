// SPDX-License-Identifier: MIT
//
// The straight parts of plot markers, which the raster and the window device share.
#pragma once

#include <cstdint>

namespace quorix {

inline constexpr int32_t max_shape_corners = 9;
inline constexpr int32_t symbol_shape_count = 9;

// A corner in halves of the symbol's size: h to either side, and q, half of that, for octagons.
enum ShapeOffset : int8_t { minus_h, minus_q, zero, plus_q, plus_h };

struct ShapeCorner {
  ShapeOffset x, y;
};

// A polyline; closed ones end where they begin.
struct SymbolShape {
  uint32_t symbols;  // bit i: symbol i draws it
  int32_t corners;
  ShapeCorner corner[max_shape_corners];
  int32_t filled_symbol;  // the one that fills it too, or -1
};

// In the order in which they are drawn.
extern const SymbolShape symbol_shapes[symbol_shape_count];

inline bool draws_shape(const SymbolShape &shape, int32_t symbol) {
  constexpr int32_t bits = 32;
  return symbol >= 0 && symbol < bits && (shape.symbols >> symbol & 1U) != 0;
}

struct ShapePoints {
  int32_t x[max_shape_corners], y[max_shape_corners];
};

// The corners around (x, y), in a symbol of half size h.
ShapePoints place_shape(const SymbolShape &shape, int32_t x, int32_t y, int32_t h);

}  // namespace quorix
