// SPDX-License-Identifier: MIT
//
// A line of PDF under construction, in a local buffer: quoted pieces and numbers. Each number
// stands after a blank unless it begins the line.
#pragma once

#include <cstring>

#include "base/text.h"
#include "pdf/pdf.h"

namespace quorix {

// Six numbers and their operator.
inline constexpr size_t pdf_line_room = 320;
inline constexpr size_t pdf_number_size = 41;  // cells of a number with its terminator

struct PdfLine {
  size_t length = 0;
  char text[pdf_line_room];
};

// `piece` is a literal.
template <size_t size>
void add(PdfLine *line, const char (&piece)[size]) {
  std::memcpy(line->text + line->length, piece, size - 1);
  line->length += size - 1;
}

inline void add_char(PdfLine *line, char c) {
  line->text[line->length++] = c;
}

inline void add_blank(PdfLine *line) {
  if (line->length != 0) line->text[line->length++] = ' ';
}

inline void add_int(PdfLine *line, int32_t value) {
  add_blank(line);
  line->length += format_int(value, line->text + line->length, pdf_number_size, 0, 0);
}

// Part of a name: /F1.
inline void add_int_to_name(PdfLine *line, int32_t value) {
  line->length += format_int(value, line->text + line->length, pdf_number_size, 0, 0);
}

// A number of bytes, which may need more than 32 bits. Doubles hold it exactly.
inline void add_size(PdfLine *line, int64_t value) {
  add_blank(line);
  line->length +=
      format_real(static_cast<double>(value), -1, line->text + line->length, pdf_number_size, 0);
}

inline void add_real(PdfLine *line, double value, int32_t decimals) {
  add_blank(line);
  line->length += format_real(value, decimals, line->text + line->length, pdf_number_size, 0);
}

// Coordinates have two decimals.
inline void add_coordinate(PdfLine *line, double value) {
  add_real(line, value, 2);
}

// "12 0 R" with a blank before, and the end of the line.
inline void add_reference(PdfLine *line, int32_t number) {
  add_int(line, number);
  add(line, " 0 R\n");
}

inline void write_line(PdfDocument *document, const PdfLine &line) {
  pdf_write(document, line.text, line.length);
}

}  // namespace quorix
