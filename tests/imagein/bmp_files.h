// SPDX-License-Identifier: MIT
//
// Bitmap files put together by hand, and the rows that each must give.
#pragma once

#include "tests/imagein/byte_writing.h"
#include "tests/imagein/expected_picture.h"

namespace quorix::testing {

struct BmpHeader {
  int32_t width = 0;
  int32_t height = 0;
  uint32_t bits = 24;
  uint32_t compression = 0;
  uint32_t colours_used = 0;
  uint32_t data_offset = 0;  // in the header, but never used
};

// Header, colour table (four bytes an entry: blue, green, red, unused) and data.
Bytes bmp_file(const BmpHeader &header, const Bytes &colour_table, const Bytes &data);
// `entries` colours in no order.
Bytes bmp_colours(size_t entries, uint32_t seed);

// Rows from the top; the file holds them from the bottom. For 24 bits the samples are red, green,
// blue of each pixel, otherwise indices. Rows are filled up to `stride` bytes, or cut to it.
Bytes bmp_rows(const BmpHeader &header, const std::vector<uint32_t> &samples);
// Bytes from row to row as the reader measures them: a width that leaves bits over is cut first.
size_t bmp_stride(const BmpHeader &header);

// The three bytes of an index; black past the table.
void put_bmp_colour(Bytes *rgb, const Bytes &colour_table, uint32_t index);
// What an uncompressed file must give, in the order of its rows.
ExpectedPicture expect_bmp(const BmpHeader &header, const Bytes &colour_table,
                           const std::vector<uint32_t> &samples);

// Decodes run-length data one statement at a time.
ExpectedPicture expect_bmp_runs(const BmpHeader &header, const Bytes &colour_table,
                                const Bytes &data);

}  // namespace quorix::testing
