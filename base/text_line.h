// SPDX-License-Identifier: MIT
//
// A line of a text file under construction, in a local buffer: quoted pieces and numbers. Each
// number stands after a blank unless it begins the line.
//
// Nothing is held against the room. Whoever composes a line knows its pieces, and numbers have at
// most text_number_size - 1 characters: seven numbers fit with what stands around them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/text.h"

namespace quorix {

inline constexpr size_t text_line_room = 320;
inline constexpr size_t text_number_size = 41;  // cells of a number with its terminator

struct TextLine {
  size_t length = 0;
  char text[text_line_room];  // without a terminator
};

// `piece` is a literal.
template <size_t size>
void add(TextLine *line, const char (&piece)[size]) {
  std::memcpy(line->text + line->length, piece, size - 1);
  line->length += size - 1;
}

inline void add_char(TextLine *line, char c) {
  line->text[line->length++] = c;
}

inline void add_blank(TextLine *line) {
  if (line->length != 0) add_char(line, ' ');
}

// An integer that goes on from what stands before it: the 1 of "/F1". Up to `digits` zeros lead.
inline void add_int_at_once(TextLine *line, int32_t value, int32_t digits = 0) {
  line->length += format_int(value, line->text + line->length, text_number_size, digits, 1);
}

inline void add_int(TextLine *line, int32_t value) {
  add_blank(line);
  add_int_at_once(line, value);
}

// The same for a real number, which blanks fill to `width`.
inline void add_real_at_once(TextLine *line, double value, int32_t decimals, int32_t width = 0) {
  line->length += format_real(value, decimals, line->text + line->length, text_number_size, width);
}

inline void add_real(TextLine *line, double value, int32_t decimals) {
  add_blank(line);
  add_real_at_once(line, value, decimals);
}

// A number of bytes, which may need more than 32 bits. Doubles hold it exactly.
inline void add_size(TextLine *line, int64_t value) {
  add_real(line, static_cast<double>(value), -1);
}

}  // namespace quorix
