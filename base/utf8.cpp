// SPDX-License-Identifier: MIT
//
// UTF-8, byte by byte. Nothing is read beyond the zero that ends a string, and nothing is written
// beyond the room.
#include "base/utf8.h"

namespace quorix {

namespace {

// Continuation bytes after a first byte, or -1 where none may start with it.
int continuation_count(uint8_t first) {
  if (first < 0x80) return 0;
  if (first < 0xC0) return -1;
  if (first < 0xE0) return 1;
  if (first < 0xF0) return 2;
  return first < 0xF8 ? 3 : -1;
}

// The first byte of a form with so many continuations: its mark and its payload bits.
constexpr uint8_t first_mark[] = {0x00, 0xC0, 0xE0};
constexpr uint8_t first_payload[] = {0x7F, 0x1F, 0x0F, 0x07};

// Reads one character at `*text` and moves on; false on a syntax error. The string's terminator is
// no continuation, so nothing is read beyond it.
bool next_number(const char **text, uint32_t *number) {
  const uint8_t first = static_cast<uint8_t>(*(*text)++);
  const int continuations = continuation_count(first);
  if (continuations < 0) return false;
  *number = first & first_payload[continuations];
  for (int i = 0; i < continuations; ++i) {
    const uint8_t next = static_cast<uint8_t>(**text);
    if ((next & 0xC0) != 0x80) return false;
    *number = (*number << 6) | (next & 0x3F);
    ++*text;
  }
  return true;
}

}  // namespace

TextStatus decode_utf8(const char *text, uint16_t *units, size_t room, size_t *count) {
  *count = 0;
  while (*text != '\0') {
    uint32_t number = 0;
    if (!next_number(&text, &number)) return TextStatus::bad_utf8;
    if (*count >= room) return TextStatus::array_full;
    units[(*count)++] = static_cast<uint16_t>(number & 0xFFFF);
  }
  return TextStatus::done;
}

TextStatus encode_utf8(uint32_t number, char *bytes, size_t room, size_t *position) {
  if (number >= 0x10000) return TextStatus::number_too_big;
  const uint32_t continuations = number < 0x80 ? 0 : (number < 0x800 ? 1 : 2);
  for (uint32_t i = 0; i <= continuations; ++i) {
    if (*position >= room) return TextStatus::string_full;
    const uint32_t payload = number >> (6 * (continuations - i));
    const uint32_t byte = i == 0 ? first_mark[continuations] | payload : 0x80 | (payload & 0x3F);
    bytes[(*position)++] = static_cast<char>(byte);
  }
  return TextStatus::done;
}

}  // namespace quorix
