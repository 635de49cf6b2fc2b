// SPDX-License-Identifier: MIT
//
// Between the caller's byte strings and 16-bit text.
//
// A conversion answers what became of it and shows nothing to anybody: who asked for it knows where
// words of a failure belong, and `text_status_words` has them.
#pragma once

#include <cstdint>

#include "base/memory.h"

namespace quorix {

// How the bytes of a caller's text are meant. Every value but 0, 2 and 3 means UTF-8.
enum Charset : int32_t {
  charset_latin1 = 0,  // a byte is a unit (ISO 8859-1)
  charset_utf8 = 1,
  charset_cyrillic = 2,  // Windows code page 1251
  charset_greek = 3,     // ISO 8859-7:2003
};

enum class TextStatus : uint8_t {
  done,
  no_memory,
  bad_utf8,
  array_full,   // the two conversions below ask for enough room, so they do not give this
  string_full,  // nor this
  number_too_big,
};

// What a message to the user says of a failure; empty for `done`.
const char *text_status_words(TextStatus status);

// A wide string for a byte string, and the other way; both end in a zero. Where they fail, `units`
// and `bytes` become empty.
//
// Decoding UTF-8 accepts overlong forms and keeps the low 16 bits of what lies beyond. Encoding
// puts a blank for what a code page lacks; Latin-1 keeps the low byte of each unit.
TextStatus decode_text(const char *text, int32_t charset, OwnedArray<uint16_t> *units);
TextStatus encode_text(const uint16_t *text, int32_t charset, OwnedArray<char> *bytes);

}  // namespace quorix
