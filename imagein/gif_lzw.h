// SPDX-License-Identifier: MIT
//
// The codes of a GIF image and what they stand for.
//
//   GifDecoder gif;
//   start_gif(&gif, table, bytes, end);       // `bytes` is the minimum code size
//   while (gif.state == GifState::more) {
//     count = decode_gif(&gif, pixels, wanted);   // pixels in file order, at most wanted + longest
//   }
//   gif.at is behind the sub-block that held the last code
//
// Codes come least significant bit first, in sub-blocks of up to 255 bytes whose borders mean
// nothing to them. Everything read lies between the two pointers that start_gif was given.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imagein/lzw_strings.h"

namespace quorix {

enum class GifState : uint8_t {
  more,     // codes follow
  ended,    // the end code was met
  damaged,  // no such code, or none where one must be
};

struct GifDecoder {
  GifState state;
  const uint8_t *at;         // next byte of the sub-block
  const uint8_t *block_end;  // of the sub-block
  const uint8_t *file_end;
  uint64_t bits;  // read ahead of the codes, within the sub-block
  uint32_t bit_count;
  uint32_t code_size;
  uint32_t clear;  // the clear code; the end code is the next
  uint32_t next;   // the next new code, gif_codes where there is no room for more
  uint32_t limit;  // the value of `next` at which codes become one bit longer
  uint32_t old;    // the code before, or none of them after a clear code
  LzwString *strings;
};

// Starts at the byte with the minimum code size; `strings` has room for gif_codes. A size other
// than 2 to 11 leaves a state of damage.
void start_gif(GifDecoder *gif, LzwString *strings, const uint8_t *bytes, const uint8_t *end);

// Decodes until at least `wanted` pixels are there or the state changes; returns how many. `pixels`
// has room for wanted + lzw_spill. Values from 256 on, which sizes above 8 allow, lose their high
// bits.
size_t decode_gif(GifDecoder *gif, uint8_t *pixels, size_t wanted);

// Goes on to the last code, without pixels.
void skip_gif(GifDecoder *gif);

}  // namespace quorix
