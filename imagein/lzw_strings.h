// SPDX-License-Identifier: MIT
//
// What the codes of GIF's LZW stand for.
//
// A string is kept in pieces of 8 bytes: its own last piece, which has 1 to 8 of them, and the code
// of the string without that piece. So a new code is a copy of its prefix with one more byte, and a
// string is written back to front, 8 bytes a step, and the output before it need not be kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/gif_format.h"
#include "base/processor.h"  // pieces are stored as they stand: little-endian

namespace quorix {

inline constexpr size_t lzw_piece = 8;

// The longest string, and the bytes of nothing that may be written behind any.
inline constexpr size_t lzw_spill = gif_codes + lzw_piece;

struct LzwString {
  uint64_t tail;  // the last piece, its first byte lowest
  uint16_t link;  // the code of what is before it, where anything is
  uint16_t length;
  uint8_t first;
};

inline LzwString single_byte_string(uint8_t byte) {
  return {byte, 0, 1, byte};
}

// The string of `prefix`, which has the code `code`, and one byte behind it.
inline LzwString longer_string(const LzwString &prefix, uint32_t code, uint8_t byte) {
  const uint32_t used = prefix.length % lzw_piece;  // of the last piece, 0 if that is full
  LzwString longer;
  longer.tail = used == 0 ? byte : prefix.tail | uint64_t{byte} << (8 * used);
  longer.link = used == 0 ? static_cast<uint16_t>(code) : prefix.link;
  longer.length = static_cast<uint16_t>(prefix.length + 1);
  longer.first = prefix.first;
  return longer;
}

// Writes a string, and up to 7 bytes of nothing. Returns the end of the string.
inline uint8_t *put_string(const LzwString *strings, const LzwString *string, uint8_t *to) {
  uint8_t *piece = to + (string->length - 1U) / lzw_piece * lzw_piece;
  uint8_t *const end = to + string->length;
  std::memcpy(piece, &string->tail, lzw_piece);
  while (piece != to) {
    string = &strings[string->link];
    piece -= lzw_piece;
    std::memcpy(piece, &string->tail, lzw_piece);
  }
  return end;
}

}  // namespace quorix
