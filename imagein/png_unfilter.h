// SPDX-License-Identifier: MIT
//
// The five filters of PNG rows, taken back in place.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/png_format.h"

namespace quorix {

// What one load of a pixel may reach beyond the end of a row.
inline constexpr size_t png_row_spill = 8;

// `row` and `above` have `bytes` bytes without the filter byte, and png_row_spill readable ones
// behind them; `pixel` is the bytes of one pixel, at least 1 and at most 8. Other filters than
// these change nothing.
void unfilter_png_row(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                      size_t pixel);

// The same, byte by byte: what it must come to.
void unfilter_png_row_plainly(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                              size_t pixel);

// ---- png_unfilter_sse2.cpp, png_unfilter_neon.cpp
// The three filters that look at the pixel on the left, for pixels of 3, 4, 6 and 8 bytes.
void unfilter_pixels_sse2(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                          size_t pixel);
void unfilter_pixels_neon(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                          size_t pixel);

}  // namespace quorix
