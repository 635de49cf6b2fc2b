// SPDX-License-Identifier: MIT
//
// Text, a character at a time: qqpdf5.
#include "base/numbers.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"
#include "quorix/pdf.h"

namespace quorix {

namespace {

constexpr uint32_t first_national = 127, blank_code = 32;

// WinAnsi codes of the national letters from first_national on.
constexpr uint8_t national_codes[] = {
    0xC4, 0xD6, 0xDC, 0xE4, 0xF6, 0xFC, 0xDF, 0xC5, 0xD8, 0xC6, 0xE5, 0xF8, 0xE6, 0xD1, 0xF1, 0xC7,
    0xE7, 0xCB, 0xCF, 0xEB, 0xEF, 0xC1, 0xC9, 0xCD, 0xD3, 0xDA, 0xE1, 0xE9, 0xED, 0xF3, 0xFA, 0xC0,
    0xC8, 0xCC, 0xD2, 0xD9, 0xE0, 0xE8, 0xEC, 0xF2, 0xF9, 0xC2, 0xCA, 0xCE, 0xD4, 0xDB, 0xE2, 0xEA,
    0xEE, 0xF4, 0xFB, 0xC3, 0xE3, 0xD5, 0xF5, 0xDD, 0xFD, 0xFF, 0xA1, 0xBF, 0xA9};
constexpr uint32_t national_count = sizeof(national_codes);

// A size below 0 is in tenths.
void add_font_size(TextLine *line, int32_t size) {
  if (size < 0) {
    add_real(line, static_cast<double>(magnitude(size)) / 10, 1);
  } else {
    add_int(line, size);
  }
}

void open_text(PdfDocument *document, bool scaled, const double *matrix) {
  PageState *const page = &document->page;
  TextLine line;
  add(&line, "BT\n/F");
  add_int_at_once(&line, page->font + 1);
  add_font_size(&line, page->font_size);
  add(&line, " Tf\n");
  if (scaled) {
    add_int_at_once(&line, to_int32(matrix[6] * 100));
    add(&line, " Tz\n");
  }
  write_line(document, line);
  page->text_open = true;
}

void add_matrix(TextLine *line, const double *matrix, int32_t rotation) {
  if (rotation == 0) {
    add(line, "1 0 0 1");
  } else if (rotation == 90) {
    add(line, "0 1 -1 0");
  } else {
    for (int i = 0; i < 4; ++i)
      add_coordinate(line, matrix[i]);
  }
  add_coordinate(line, matrix[4]);
  add_coordinate(line, matrix[5]);
  add(line, " Tm\n");
}

// A backslash and the code in octal, without leading zeros.
void add_octal(TextLine *line, uint32_t code) {
  add_char(line, '\\');
  if (code >= 64) add_char(line, static_cast<char>('0' + code / 64));
  if (code >= 8) add_char(line, static_cast<char>('0' + code / 8 % 8));
  add_char(line, static_cast<char>('0' + code % 8));
}

// Kept: codes below 32 go out as bytes, 0 included.
void add_character(TextLine *line, uint32_t code) {
  add_char(line, '(');
  if (code >= first_national) {
    const uint32_t index = code - first_national;
    add_octal(line, index < national_count ? national_codes[index] : blank_code);
  } else if (code == '(' || code == ')' || code == '\\') {
    add_octal(line, code);
  } else {
    add_char(line, static_cast<char>(code));
  }
  add(line, ") Tj\n");
}

void write_character(PdfDocument *document, int32_t code, const double *matrix, int32_t rotation) {
  PageState *const page = &document->page;
  if (!page->text_open) open_text(document, code < 0, matrix);
  TextLine line;
  add_matrix(&line, matrix, rotation);
  add_character(&line, static_cast<uint32_t>(magnitude(code)));
  write_line(document, line);
}

// Records what the next characters are set in.
void choose_font(PdfDocument *document, int32_t font, int32_t size) {
  PageState *const page = &document->page;
  if (page->font != font || page->font_size != size) close_text(document);
  page->font = font;
  page->font_size = size;
  document->page_has_text = true;
  FontState *const state = &document->fonts[font];
  if (*state == FontState::unused) *state = FontState::used;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpdf5(int32_t code, const double *matrix, int32_t rotation, int32_t font,
                          int32_t size) {
  quorix::PdfDocument *const document = quorix::open_document("qqpdf5");
  if (document == nullptr || font < 0 || font >= quorix::font_count) return 0;
  quorix::close_path(document);
  quorix::choose_font(document, font, size);
  quorix::write_character(document, code, matrix, rotation);
  return 0;
}
