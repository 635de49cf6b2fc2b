// SPDX-License-Identifier: MIT
//
// PNG files of every form, put together by hand or by libpng, and the rows that each must give.
#pragma once

#include "tests/imagein/byte_writing.h"
#include "tests/imagein/expected_picture.h"

namespace quorix::testing {

struct PngPicture {
  int32_t width = 0;
  int32_t height = 0;
  uint32_t depth = 8;
  uint32_t type = 2;
  bool interlaced = false;
  std::vector<uint32_t> samples;  // of all pixels, rows from the top
  Bytes palette;                  // the chunks' bytes; empty: no such chunk
  Bytes transparency;
  Bytes background;
};

size_t png_channels(uint32_t type);
// With random samples, and a palette where the type has one.
PngPicture random_png(uint32_t type, uint32_t depth, int32_t width, int32_t height, uint32_t seed);

// A chunk with its sum, and the signature with the header chunk.
Bytes png_chunk(const char *type, const Bytes &data);
Bytes png_start(const PngPicture &picture);
inline constexpr size_t png_start_size = 8 + 25;

// The stream before compression: rows filtered by one filter, 0 to 4, or each row with the next
// filter.
inline constexpr int filters_in_turn = -1;
Bytes png_raw_rows(const PngPicture &picture, int filter);
Bytes zlib_stream(const Bytes &raw);

// Data in IDAT chunks of up to that many bytes.
Bytes png_with_data(const PngPicture &picture, const Bytes &stream, size_t chunk = 100000);
Bytes png_file(const PngPicture &picture, int filter = filters_in_turn, size_t chunk = 100000);

ExpectedPicture expect_png(const PngPicture &picture);

#ifdef QUORIX_TEST_WITH_LIBPNG
// By libpng. Filter 5 lets it choose.
Bytes png_by_libpng(const PngPicture &picture, int filter, size_t chunk);
#endif

}  // namespace quorix::testing
