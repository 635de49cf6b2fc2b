// SPDX-License-Identifier: MIT
//
// GIF files put together by hand, and what the reader's steps make of any bytes.
#pragma once

#include "tests/imagein/byte_writing.h"
#include "tests/imagein/expected_picture.h"

namespace quorix::testing {

struct GifCode {
  uint32_t code;
  uint32_t size;  // in bits
};

enum class WhenFull {
  clear,  // sends a clear code
  go_on,  // goes on with the 4096 codes that there are, as deferred clears do
};

// Codes of the indices for a minimum code size, the first a clear code and the last the end code.
std::vector<GifCode> gif_codes(const Bytes &indices, uint32_t minimum,
                               WhenFull when_full = WhenFull::clear);
// The codes as bytes, lowest bit first.
Bytes gif_code_bytes(const std::vector<GifCode> &codes);
// Data in blocks of up to `block` bytes, and the empty block.
Bytes gif_blocks(const Bytes &data, size_t block = 255);

struct GifFile {
  int32_t screen_width = 0;
  int32_t screen_height = 0;
  int32_t width = 0;
  int32_t height = 0;
  int32_t left = 0;
  int32_t top = 0;
  bool interlaced = false;
  uint32_t minimum = 8;
  Bytes global_table;  // three bytes an entry, a power of two of them; empty: none
  Bytes local_table;
  Bytes extensions;  // before the descriptor
  Bytes blocks;      // as gif_blocks gives them
};

Bytes gif_file(const GifFile &parts);
// The file of a picture of indices in one go, rows from the top. Indices are below 2^minimum.
Bytes gif_of(GifFile parts, const Bytes &indices, size_t block = 255);

// Rows of an interlaced picture in the order that a file has them.
std::vector<int32_t> interlaced_rows(int32_t height);

// Decodes a file one statement at a time.
ExpectedPicture expect_gif(const Bytes &file);
// What must come of indices, worked out without decoding anything.
ExpectedPicture expect_indices(const GifFile &parts, const Bytes &indices);

}  // namespace quorix::testing
