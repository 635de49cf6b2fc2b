// SPDX-License-Identifier: MIT
//
// TIFF (6.0) as its specification has it: what its readers and its writer agree on.
//
// A file is a mark of its byte order, twice the same letter, a version and the place of the first
// directory. A directory is the number of its entries, the entries in the order of their tags, and
// the place of the next directory or 0. An entry is tag, type, number of values, and four bytes:
// the values themselves if they fit there, else the place where they are.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

inline constexpr char tiff_little_endian = 'I';
inline constexpr char tiff_big_endian = 'M';
inline constexpr uint16_t tiff_version = 42;
inline constexpr size_t tiff_header_bytes = 8;
inline constexpr size_t tiff_entry_bytes = 12;
inline constexpr size_t tiff_inline_bytes = 4;  // of values that stand in the entry itself

enum class TiffTag : uint16_t {
  new_subfile_type = 254,
  image_width = 256,
  image_length = 257,
  bits_per_sample = 258,
  compression = 259,
  photometric = 262,
  strip_offsets = 273,
  samples_per_pixel = 277,
  rows_per_strip = 278,
  strip_byte_counts = 279,
  x_resolution = 282,
  y_resolution = 283,
  planar_configuration = 284,
  resolution_unit = 296,
  predictor = 317,
  colour_map = 320,
  tile_width = 322,
  tile_length = 323,
  tile_offsets = 324,
  tile_byte_counts = 325,
  sample_format = 339,
};

// Values of 8, 16 and 32 bits, and two of 32 whose quotient counts.
enum class TiffType : uint16_t { bytes = 1, shorts = 3, longs = 4, rationals = 5 };

// ---- values of tags

enum TiffCompression : uint32_t { tiff_raw = 1, tiff_lzw = 5, tiff_packbits = 32773 };

enum TiffPhotometric : uint32_t {
  tiff_white_is_zero = 0,
  tiff_black_is_zero = 1,
  tiff_rgb = 2,
  tiff_palette = 3,
};

enum TiffPlanes : uint32_t { tiff_together = 1, tiff_separate = 2 };

enum TiffPredictor : uint32_t { tiff_no_predictor = 1, tiff_differences = 2 };

enum TiffSampleFormat : uint32_t { tiff_unsigned_samples = 1, tiff_float_samples = 3 };

enum TiffUnit : uint16_t { tiff_inch = 2, tiff_centimetre = 3 };

}  // namespace quorix
