// SPDX-License-Identifier: MIT
//
// The strokes of the marker shapes, and where their corners stand for a size.
#include "raster/symbol_shapes.h"

#include "base/numbers.h"

namespace quorix {

namespace {

template <class... Symbol>
constexpr uint32_t symbols(Symbol... number) {
  return ((1U << number) | ...);
}

int32_t moved(int32_t centre, ShapeOffset offset, int32_t h) {
  switch (offset) {
    case minus_h:
      return saturated_sum(centre, -h);
    case minus_q:
      return saturated_sum(centre, -(h / 2));
    case plus_q:
      return saturated_sum(centre, h / 2);
    case plus_h:
      return saturated_sum(centre, h);
    default:
      return centre;
  }
}

}  // namespace

const SymbolShape symbol_shapes[symbol_shape_count] = {
    // plus
    {symbols(3, 8, 9, 10, 12), 2, {{minus_h, zero}, {plus_h, zero}}, -1},
    {symbols(3, 8, 9, 10, 12), 2, {{zero, minus_h}, {zero, plus_h}}, -1},
    // cross
    {symbols(4, 7, 8, 13), 2, {{minus_h, minus_h}, {plus_h, plus_h}}, -1},
    {symbols(4, 7, 8, 13), 2, {{minus_h, plus_h}, {plus_h, minus_h}}, -1},
    // square
    {symbols(0, 7, 12, 14, 16),
     5,
     {{minus_h, minus_h},
      {plus_h, minus_h},
      {plus_h, plus_h},
      {minus_h, plus_h},
      {minus_h, minus_h}},
     16},
    // octagon
    {symbols(1, 10, 13, 17),
     9,
     {{minus_q, minus_h},
      {plus_q, minus_h},
      {plus_h, minus_q},
      {plus_h, plus_q},
      {plus_q, plus_h},
      {minus_q, plus_h},
      {minus_h, plus_q},
      {minus_h, minus_q},
      {minus_q, minus_h}},
     17},
    // triangle up
    {symbols(2, 11, 14, 18),
     4,
     {{zero, minus_h}, {plus_h, plus_h}, {minus_h, plus_h}, {zero, minus_h}},
     18},
    // triangle down
    {symbols(6, 11, 20),
     4,
     {{zero, plus_h}, {minus_h, minus_h}, {plus_h, minus_h}, {zero, plus_h}},
     20},
    // diamond
    {symbols(5, 9, 19),
     5,
     {{zero, minus_h}, {plus_h, zero}, {zero, plus_h}, {minus_h, zero}, {zero, minus_h}},
     19},
};

ShapePoints place_shape(const SymbolShape &shape, int32_t x, int32_t y, int32_t h) {
  ShapePoints points;
  for (int32_t i = 0; i < shape.corners; ++i) {
    points.x[i] = moved(x, shape.corner[i].x, h);
    points.y[i] = moved(y, shape.corner[i].y, h);
  }
  return points;
}

}  // namespace quorix
