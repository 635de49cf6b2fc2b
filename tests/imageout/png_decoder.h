// SPDX-License-Identifier: MIT
//
// Takes PNG streams apart, in two ways that share nothing: chunk by chunk as the standard's text
// has it, and through libpng where there is one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

struct PngChunk {
  std::string type;
  Bytes data;
};

struct PngPicture {
  std::string problem;  // what is wrong with the stream, empty if nothing is
  uint32_t width = 0, height = 0;
  int bit_depth = 0, colour_type = 0, compression = 0, filter = 0, interlace = 0;
  Bytes palette;       // triples
  Bytes transparency;  // data of tRNS
  Bytes samples;       // one byte or three per pixel, rows without padding
  // These only by decode_png:
  std::vector<PngChunk> chunks;
  Bytes filtered;  // the rows as inflated, filter bytes in front
};

// Knows streams of 8-bit samples, colour types 2 and 3, without filters and interlacing, and calls
// anything else a problem.
PngPicture decode_png(const Bytes &stream);

#ifdef QUORIX_TEST_WITH_LIBPNG
// A warning is a problem too.
PngPicture decode_with_libpng(const Bytes &stream);
#endif

// The CRC of the standard, bit by bit.
uint32_t literal_crc(const uint8_t *bytes, size_t count);

// Words of the stream, high byte first.
uint32_t big_endian_word(const uint8_t *bytes);

// The pixels as triples, through the palette if there is one. Indices past it give 0.
Bytes rgb_of(const PngPicture &picture);

}  // namespace quorix::testing
