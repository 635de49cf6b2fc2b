// SPDX-License-Identifier: MIT
//
// From rows of samples of a TIFF file to RGB.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imagein/tiff_blocks.h"

namespace quorix {

struct TiffRows {
  const TiffFile *tiff;
  bool tabled;     // samples of 8 bits or fewer go through `colours`
  bool bad_index;  // some index of 2 or 4 bits lay outside the colour map
  uint32_t colours[256];
  double minimum, maximum;      // of a picture of floats; the larger first where there are none
  OwnedArray<uint8_t> rgb;      // of a row of a strip or tile
  OwnedArray<uint8_t> samples;  // where several share a byte
};

// What conversions need; false without memory.
bool prepare_tiff_rows(const TiffFile &tiff, TiffRows *rows);

// Whether rows of the file are rows of RGB as they stand.
bool is_rgb_already(const TiffFile &tiff);

// Widens minimum and maximum by the floats of a row.
void find_extremes(TiffRows *rows, const TiffRow &row);

// The first `pixels` pixels of a row, or as many as its bytes stand for: their number is left at
// `pixels`. What cannot be converted is black. The colours may be those of the row itself.
const uint8_t *convert_tiff_row(TiffRows *rows, const TiffRow &row, int64_t *pixels);

}  // namespace quorix
