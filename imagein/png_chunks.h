// SPDX-License-Identifier: MIT
//
// What the chunks of a PNG file say, and the compressed stream that they carry.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/png_format.h"
#include "imagein/whole_file.h"

namespace quorix {

struct PngHeader {
  int32_t width, height;  // at least 1
  uint8_t depth;          // bits per sample, one that the standard has for the colour
  PngColour colour;
  bool interlaced;
  bool has_background;
  bool has_transparency;  // a tRNS chunk where the colour can have one
  uint8_t background[3];  // as RGB
  size_t palette_bytes;   // as the chunk has them, which may be more or fewer than fit
  uint8_t palette[3 * png_palette_entries];  // RGB triples, zeros behind the last
  size_t transparency_bytes;
  // An alpha per palette entry, or the samples of a transparent colour; then zeros.
  uint8_t transparency[png_palette_entries];
  const uint8_t *stream;  // all IDAT chunks in one piece, in the file's memory
  size_t stream_bytes;
};

inline bool has_alpha_samples(const PngHeader &header) {
  return header.colour == PngColour::grey_alpha || header.colour == PngColour::rgb_alpha;
}

// Whether pixels come with an alpha, of samples or of a tRNS chunk.
inline bool has_alpha(const PngHeader &header) {
  return has_alpha_samples(header) || header.has_transparency;
}

// Bytes of `pixels` pixels in a row, and of one pixel, at least 1.
size_t png_row_bytes(const PngHeader &header, size_t pixels);
size_t png_pixel_bytes(const PngHeader &header);

// Goes through the chunks up to IEND or the end of the file, and moves the compressed data together
// within the file's memory. A chunk that says it is longer than the file has what is there. False
// if this is no PNG file.
bool read_png_chunks(WholeFile *file, PngHeader *header);

}  // namespace quorix
