// SPDX-License-Identifier: MIT
//
// The table of strings has a cell for every pixel that may follow every string: one load answers
// whether the longer string is known and what its code is. Cells of one colour stand together,
// since a picture's long strings are mostly of few colours, so that the part in use stays in the
// nearest cache. Emptying it takes a store for each string that was added.
//
// Codes are gathered in a 64-bit word and leave it 32 bits at a time.
#include "imageout/gif_encoder.h"

#include <cstring>

#include "base/files.h"
#include "base/gif_format.h"

namespace quorix {

namespace {

constexpr uint32_t clear_code = 256;
constexpr uint32_t end_code = 257;
constexpr uint32_t first_free_code = 258;
constexpr uint32_t code_limit = 4095;  // reaching it clears the table, so no string has this code
constexpr unsigned first_code_bits = 9;

constexpr size_t blocks_at_once = 256;
constexpr size_t stream_bytes = gif_block_bytes * blocks_at_once;
constexpr size_t most_new_bytes = 8;  // that one store may put beyond them

struct GifEncoder {
  uint16_t table[256][gif_codes];  // [pixel][code of the string before it]; 0: not known
  uint16_t *known[code_limit];     // where the code of each string stands
  uint8_t stream[stream_bytes + most_new_bytes];  // codes, before they are cut into blocks
  uint8_t blocks[(1 + gif_block_bytes) * blocks_at_once];
  std::FILE *file;
};

// What changes with every code; kept apart so that it stays in registers.
struct CodeStream {
  uint64_t bits;  // not yet stored, the first one lowest
  unsigned count;
  unsigned code_bits;
  uint32_t next_code;
  uint8_t *next;  // in `stream`
};

// ---- bytes

// Writes the first bytes of the stream as sub-blocks, the last of which may be shorter.
void write_blocks(GifEncoder *gif, size_t bytes) {
  uint8_t *to = gif->blocks;
  for (size_t done = 0; done < bytes; done += gif_block_bytes) {
    const size_t length = bytes - done < gif_block_bytes ? bytes - done : gif_block_bytes;
    *to++ = static_cast<uint8_t>(length);
    std::memcpy(to, gif->stream + done, length);
    to += length;
  }
  write_file(gif->file, gif->blocks, static_cast<size_t>(to - gif->blocks));
}

void write_full_blocks(GifEncoder *gif, CodeStream *codes) {
  write_blocks(gif, stream_bytes);
  const auto rest = static_cast<size_t>(codes->next - gif->stream) - stream_bytes;
  std::memmove(gif->stream, gif->stream + stream_bytes, rest);
  codes->next = gif->stream + rest;
}

inline void put_code(GifEncoder *gif, CodeStream *codes, uint32_t code) {
  codes->bits |= uint64_t{code} << codes->count;
  codes->count += codes->code_bits;
  if (codes->count < 32) return;
  const auto word = static_cast<uint32_t>(codes->bits);
  std::memcpy(codes->next, &word, sizeof word);  // the hosts of this library store low bytes first
  codes->next += sizeof word;
  codes->bits >>= 32;
  codes->count -= 32;
  if (codes->next >= gif->stream + stream_bytes) write_full_blocks(gif, codes);
}

// The byte in progress goes out as well, even where it has no bits yet. Kept: readers whose codes
// have grown by a bit at the end, which the last string lets them expect, find that bit there.
void put_rest(GifEncoder *gif, CodeStream *codes) {
  for (unsigned done = 0; done <= codes->count; done += 8, codes->bits >>= 8)
    *codes->next++ = static_cast<uint8_t>(codes->bits & 0xff);
  if (codes->next > gif->stream + stream_bytes) write_full_blocks(gif, codes);
  write_blocks(gif, static_cast<size_t>(codes->next - gif->stream));
}

// ---- strings

void forget_strings(GifEncoder *gif, CodeStream *codes) {
  for (uint32_t code = first_free_code; code < codes->next_code; ++code)
    *gif->known[code] = 0;
  codes->code_bits = first_code_bits;
  codes->next_code = first_free_code;
}

// After the code of the longest known string: adds the one that was not known. The size of codes is
// raised by the code that is stored, before the next one is looked at.
inline void add_string(GifEncoder *gif, CodeStream *codes, uint16_t *cell) {
  *cell = static_cast<uint16_t>(codes->next_code);
  gif->known[codes->next_code] = cell;
  if (codes->next_code == 1U << codes->code_bits) ++codes->code_bits;
  if (++codes->next_code < code_limit) return;
  put_code(gif, codes, clear_code);
  forget_strings(gif, codes);
}

void put_strings(GifEncoder *gif, CodeStream *state, const uint8_t *pixels, size_t count) {
  CodeStream codes = *state;
  uint32_t prefix = pixels[0];
  for (size_t i = 1; i < count; ++i) {
    uint16_t *const cell = &gif->table[pixels[i]][prefix];
    if (*cell != 0) {
      prefix = *cell;
      continue;
    }
    put_code(gif, &codes, prefix);
    add_string(gif, &codes, cell);
    prefix = pixels[i];
  }
  put_code(gif, &codes, prefix);
  *state = codes;
}

}  // namespace

WriterStatus write_gif_codes(std::FILE *file, const uint8_t *pixels, size_t count) {
  const OwnedArray<GifEncoder> memory = allocate_zeroed_array<GifEncoder>(1);
  GifEncoder *const gif = memory.get();
  if (gif == nullptr) return writer_no_memory;
  gif->file = file;
  CodeStream codes = {};
  codes.next = gif->stream;
  codes.code_bits = first_code_bits;
  codes.next_code = first_free_code;
  put_code(gif, &codes, clear_code);
  if (count != 0) put_strings(gif, &codes, pixels, count);
  put_code(gif, &codes, end_code);
  put_rest(gif, &codes);
  return writer_done;
}

}  // namespace quorix
