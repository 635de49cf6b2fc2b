// SPDX-License-Identifier: MIT
//
// From the samples of a PNG row to RGB and alpha.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/memory.h"
#include "imagein/png_chunks.h"

namespace quorix {

struct PngRows {
  const PngHeader *header;
  bool bad_index;  // some pixel's index lay outside the palette
  bool blends;     // alpha goes into the colours, against the background
  uint32_t first_bad_index;
  uint32_t colours[png_palette_entries];  // by grey value or index: alpha << 24 | blue << 16 |
                                          // green << 8 | red
  // A row's pixels. What a conversion does not write stays as it was.
  OwnedArray<uint8_t> rgb;
  OwnedArray<uint8_t> alpha;    // where the picture has an alpha
  OwnedArray<uint8_t> samples;  // where several share a byte
};

// What conversions need; false without memory.
bool prepare_png_rows(const PngHeader &header, PngRows *rows);

// Converts `width` pixels from `row`, without its filter byte. Returns the colours, which may be
// those of `row` itself; alphas are in rows->alpha.
uint8_t *convert_png_row(PngRows *rows, uint8_t *row, size_t width);

}  // namespace quorix
