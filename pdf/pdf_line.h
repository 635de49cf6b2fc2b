// SPDX-License-Identifier: MIT
//
// What lines of PDF have beyond other lines of text, and their way into a document.
#pragma once

#include "base/text_line.h"
#include "pdf/pdf.h"

namespace quorix {

// Coordinates have two decimals.
inline void add_coordinate(TextLine *line, double value) {
  add_real(line, value, 2);
}

// "12 0 R" with a blank before, and the end of the line.
inline void add_reference(TextLine *line, int32_t number) {
  add_int(line, number);
  add(line, " 0 R\n");
}

inline void write_line(PdfDocument *document, const TextLine &line) {
  pdf_write(document, line.text, line.length);
}

}  // namespace quorix
