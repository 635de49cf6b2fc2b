// SPDX-License-Identifier: MIT
//
// The end of the file: page tree, bookmarks, catalogue, /Info, cross-reference table, trailer.
#include <ctime>

#include "pdf/pdf.h"
#include "pdf/pdf_line.h"

namespace quorix {

namespace {

constexpr int32_t catalogue_object = 1, page_tree_object = 2;
constexpr int32_t offset_digits = 10;

void write_page_tree(PdfDocument *document) {
  begin_reserved_object(document, page_tree_object);
  pdf_write_text(document, "<< /Type /Pages /Kids [\n");
  int32_t count = 0;
  for (int32_t number = 1; number < document->objects.next; ++number) {
    if (object_entry(document->objects, number).kind != object_page) continue;
    TextLine line;
    add_reference(&line, number);
    write_line(document, line);
    ++count;
  }
  TextLine line;
  add(&line, "] /Count");
  add_int(&line, count);
  add(&line, "\n>>\nendobj\n");
  write_line(document, line);
}

void write_catalogue(PdfDocument *document, int32_t outlines) {
  begin_reserved_object(document, catalogue_object);
  TextLine line;
  add(&line, "<< /Type /Catalog /Pages 2 0 R\n");
  if (outlines != 0) {
    add(&line, "   /Outlines");
    add_reference(&line, outlines);
    add(&line, "   /PageMode /UseOutlines\n");
  }
  add(&line, ">>\nendobj\n");
  write_line(document, line);
}

// All zeros where the system does not know the time.
void add_local_time(TextLine *line) {
  const std::time_t now = std::time(nullptr);
  const std::tm *const local = std::localtime(&now);
  const std::tm time = local != nullptr ? *local : std::tm{};
  add_int_at_once(line, local != nullptr ? time.tm_year + 1900 : 0, 4);
  add_int_at_once(line, local != nullptr ? time.tm_mon + 1 : 0, 2);
  add_int_at_once(line, time.tm_mday, 2);
  add_int_at_once(line, time.tm_hour, 2);
  add_int_at_once(line, time.tm_min, 2);
  add_int_at_once(line, time.tm_sec, 2);
}

int32_t write_info(PdfDocument *document) {
  const int32_t number = new_object(document, object_other);
  TextLine line;
  add(&line, "<< /CreationDate (D:");
  add_local_time(&line);
  add(&line, ")\n/Producer (QUORIX 10.5)\n>>\nendobj\n");
  write_line(document, line);
  return number;
}

// An entry of 20 bytes. The offset may need more than 32 bits.
void write_offset(PdfDocument *document, int64_t offset) {
  TextLine line;
  line.length = offset_digits;
  for (int32_t i = offset_digits; i > 0; --i, offset /= 10)
    line.text[i - 1] = static_cast<char>('0' + offset % 10);
  add(&line, " 00000 n \n");
  write_line(document, line);
}

int64_t write_cross_references(PdfDocument *document) {
  const int64_t start = document->output.written;
  TextLine line;
  add(&line, "xref\n0");
  add_int(&line, document->objects.next);
  add(&line, "\n0000000000 65535 f \n");
  write_line(document, line);
  for (int32_t number = 1; number < document->objects.next; ++number)
    write_offset(document, object_entry(document->objects, number).offset);
  return start;
}

void write_trailer(PdfDocument *document, int32_t info, int64_t cross_references) {
  TextLine line;
  add(&line, "trailer\n<< /Size");
  add_int(&line, document->objects.next);
  add(&line, " /Root 1 0 R /Info");
  add_reference(&line, info);
  add(&line, ">>\n");
  write_line(document, line);
  line.length = 0;
  add_size(&line, cross_references);
  pdf_write_text(document, "startxref\n");
  write_line(document, line);
  pdf_write_text(document, "\n%%EOF\n");
}

}  // namespace

void write_closing_structures(PdfDocument *document) {
  write_page_tree(document);
  const int32_t outlines = write_outlines(document);
  write_catalogue(document, outlines);
  const int32_t info = write_info(document);
  const int64_t cross_references = write_cross_references(document);
  write_trailer(document, info, cross_references);
}

}  // namespace quorix
