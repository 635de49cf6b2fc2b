// SPDX-License-Identifier: MIT
//
// TIFF files put together by hand, and what their decoded data must give.
#pragma once

#include "tests/imagein/byte_writing.h"
#include "tests/imagein/expected_picture.h"

namespace quorix::testing {

enum TiffTag : uint32_t {
  tiff_width = 256,
  tiff_height = 257,
  tiff_bits = 258,
  tiff_compression = 259,
  tiff_photometric = 262,
  tiff_strip_offsets = 273,
  tiff_samples = 277,
  tiff_rows_per_strip = 278,
  tiff_strip_counts = 279,
  tiff_planar = 284,
  tiff_predictor = 317,
  tiff_colour_map = 320,
  tiff_tile_width = 322,
  tiff_tile_height = 323,
  tiff_tile_offsets = 324,
  tiff_tile_counts = 325,
  tiff_sample_format = 339,
};

enum TiffType : uint32_t { tiff_short = 3, tiff_long = 4 };

struct TiffEntry {
  uint32_t tag;
  uint32_t type;
  std::vector<uint32_t> values;
};

// A file of entries in their order and blocks of data. The offsets of the blocks are filled in for
// the entries of strip or tile offsets, their sizes for those of byte counts, where these are
// empty.
struct TiffParts {
  bool big_endian = false;
  std::vector<TiffEntry> entries;
  std::vector<Bytes> blocks;

  void set(uint32_t tag, std::vector<uint32_t> values, uint32_t type = tiff_short);
  void drop(uint32_t tag);
};

Bytes tiff_file(TiffParts parts);
// A number in the file's order.
void put_tiff(Bytes *to, bool big_endian, uint32_t value, int bytes);

// A picture as the file says it is. `data` holds the decoded strips or tiles.
struct TiffPicture {
  bool big_endian = false;
  int32_t width = 0;
  int32_t height = 0;
  uint32_t bits = 8;
  uint32_t samples = 1;
  uint32_t format = 1;
  uint32_t photometric = 1;
  uint32_t predictor = 1;
  int32_t rows_per_strip = 0;  // 0: tiles
  int32_t tile_width = 0;
  int32_t tile_height = 0;
  std::vector<uint32_t> map;  // 16-bit values: all reds, all greens, all blues
  std::vector<Bytes> data;
};

// Rows of samples (all samples of a pixel one after the other) in strips or tiles, rows on byte
// borders, words in the file's order. Tiles are filled up with the last column and row.
void cut_into_blocks(TiffPicture *picture, const std::vector<uint32_t> &values);
// The samples of a picture in no order; floats for format 3.
std::vector<uint32_t> random_tiff_samples(const TiffPicture &picture, uint32_t seed);

// The file, with a compression of 1 as they stand, 5 LZW, 32773 PackBits.
TiffParts tiff_parts(const TiffPicture &picture, uint32_t compression);
Bytes pack_bits_coded(const Bytes &data);
Bytes lzw_coded(const Bytes &data);

// One statement at a time from the decoded data.
ExpectedPicture expect_tiff(const TiffPicture &picture);

}  // namespace quorix::testing
