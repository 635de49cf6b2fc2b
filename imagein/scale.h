// SPDX-License-Identifier: MIT
//
// Bilinear interpolation with truncation: the rows of a picture at another size.
//
// With a, b, c, d the components of the pixels at the upper left, upper right, lower left and lower
// right of a place, and tx, ty how far it lies between them, a component is
//
//   trunc((1-ty)*(1-tx)*a + (1-ty)*tx*b + (1-tx)*ty*c + ty*tx*d)
//
// in double precision, summed from the left. Kept: it is truncated, not rounded, and the weights
// may fall short of 1 by a bit, so that a picture of 255 may come out with some pixels of 254.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// Where a row or column of the target lies in the source: between `index` and the one after it.
// Where the source has one only, or the target lies on the last, the weight of the other is 0.
struct ScalePlace {
  int32_t index;
  double share;  // of the one after
};

ScalePlace scale_place(int32_t target, int32_t target_size, int32_t source_size);

// The columns of a target, worked out once for all rows.
struct ScaleColumn {
  size_t index;
  double share, rest;  // rest = 1 - share
};

// The two rows of the source that a target row lies between. Behind their last pixels stand bytes
// that may be read, since the pixel after the last column is loaded too, with weight 0.
struct ScaleRow {
  const uint8_t *upper, *lower;
  double share, rest;  // of the lower, of the upper
};

// `count` pixels of three components into `to`.
using ScaleRgb = void (*)(const ScaleRow &row, const ScaleColumn *columns, size_t count,
                          uint8_t *to);

// The form for this processor.
ScaleRgb scale_rgb();

void scale_rgb_plain(const ScaleRow &row, const ScaleColumn *columns, size_t count, uint8_t *to);
void scale_rgb_avx2(const ScaleRow &row, const ScaleColumn *columns, size_t count, uint8_t *to);

// The same for one component.
void scale_alpha(const ScaleRow &row, const ScaleColumn *columns, size_t count, uint8_t *to);

}  // namespace quorix
