// SPDX-License-Identifier: MIT
//
// What the first directory of a TIFF file says.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/byte_source.h"
#include "base/memory.h"
#include "base/tiff_format.h"
#include "imagein/imagein.h"

namespace quorix {

enum TiffStatus : int32_t {
  tiff_unsupported = -11,
  tiff_corrupt = -12,  // compressed data; also where a caller's array is too small
};

// Numbers are those of the format; all are checked as far as decoding trusts them.
struct TiffFile {
  ByteOrder order;
  int32_t width, height;  // at least 1
  uint32_t compression, photometric;
  uint32_t samples;     // per pixel; 0 if the file does not say, and then nothing depends on it
  uint32_t bits;        // per sample
  uint32_t total_bits;  // per pixel: the sum of up to three samples that the file lists, at least 1
  bool is_float;
  bool adds_up;  // samples are differences (predictor 2)
  // Where the pixels are: strips of rows, or else tiles, in rows of tiles from the top.
  bool tiled;
  int64_t block_width, block_rows;  // of a strip or tile, at least 1; a strip is never taller than
                                    // the picture
  size_t blocks;
  OwnedArray<uint32_t> offsets, sizes;  // of strips or tiles, as the file has them
  // The high bytes of the colour map: planes of red, green and blue.
  size_t map_entries;
  uint8_t map[3][256];
};

inline bool has_float_pixels(const TiffFile &tiff) {
  return tiff.is_float && tiff.bits == 32 && tiff.photometric <= tiff_black_is_zero;
}

// Bytes of so many pixels, rounded up.
inline uint64_t tiff_bytes(const TiffFile &tiff, int64_t pixels) {
  return (static_cast<uint64_t>(pixels) * tiff.total_bits + 7) / 8;
}

enum class TiffMark : uint8_t {
  lenient,  // what does not start with I has the high byte first
  strict,   // nothing but II and MM
};

// Reads the directory of the file at whose start the source stands. Answers reader_done,
// reader_no_memory, reader_bad_format or tiff_unsupported.
int32_t read_tiff_directory(ByteSource *source, TiffMark mark, TiffFile *tiff);

}  // namespace quorix
