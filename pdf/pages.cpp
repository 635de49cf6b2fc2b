// SPDX-License-Identifier: MIT
//
// The end of a page: its last stream, the fonts that are new with it, the page object.
//
// A page's streams, images and forms are found by going through its own objects, so that all pages
// together take time in proportion to the objects of the document.
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"

namespace quorix {

namespace {

constexpr int32_t zapf_dingbats = 17, symbol = 34;  // the two with an encoding of their own

constexpr const char *font_names[font_count] = {
    "Times-Roman",
    "Times-Bold",
    "Times-Italic",
    "Times-BoldItalic",
    "Helvetica",
    "Helvetica-Bold",
    "Helvetica-Oblique",
    "Helvetica-BoldOblique",
    "Helvetica-Narrow",
    "Helvetica-Narrow-Bold",
    "Helvetica-Narrow-Oblique",
    "Helvetica-Narrow-BoldOblique",
    "NewCenturySchlbk-Roman",
    "NewCenturySchlbk-Italic",
    "NewCenturySchlbk-Bold",
    "NewCenturySchlbk-BoldItalic",
    "ZapfChancery-MediumItalic",
    "ZapfDingbats",
    "Courier",
    "Courier-Bold",
    "Courier-Oblique",
    "Courier-BoldOblique",
    "AvantGarde-Book",
    "AvantGarde-Demi",
    "AvantGarde-BookOblique",
    "AvantGarde-DemiOblique",
    "Bookman-Light",
    "Bookman-LightItalic",
    "Bookman-Demi",
    "Bookman-DemiItalic",
    "Palatino-Roman",
    "Palatino-Italic",
    "Palatino-Bold",
    "Palatino-BoldItalic",
    "Symbol",
};

void write_font(PdfDocument *document, int32_t font) {
  const int32_t number = new_object(document, static_cast<ObjectKind>(object_first_font + font));
  document->font_objects[document->written_font_count] = number;
  document->written_fonts[document->written_font_count] = font;
  ++document->written_font_count;
  document->fonts[font] = FontState::written;
  pdf_write_text(document, "<< /Type /Font\n/Subtype /Type1\n/BaseFont /");
  pdf_write_text(document, font_names[font]);
  pdf_write_text(document, "\n");
  if (font != zapf_dingbats && font != symbol)
    pdf_write_text(document, "/Encoding /WinAnsiEncoding\n");
  pdf_write_text(document, ">>\nendobj\n");
}

void write_new_fonts(PdfDocument *document) {
  for (int32_t font = 0; font < font_count; ++font)
    if (document->fonts[font] == FontState::used) write_font(document, font);
}

void write_page_opening(PdfDocument *document) {
  TextLine line;
  add(&line, "<<\n/Type /Page\n/MediaBox [0 0");
  add_int(&line, document->page_width);
  add_int(&line, document->page_height);
  add(&line, "]\n/Parent 2 0 R\n");
  if (document->rotate_pages) add(&line, "/Rotate 90\n");
  write_line(document, line);
}

void write_procedure_sets(PdfDocument *document, bool has_images) {
  TextLine line;
  add(&line, "/Resources << /ProcSet [/PDF");
  if (document->page_has_text) add(&line, " /Text");
  if (has_images) add(&line, " /ImageC");
  add(&line, "]\n");
  write_line(document, line);
}

// Kept: all fonts of the document so far, also those of other pages.
void write_font_list(PdfDocument *document) {
  pdf_write_text(document, "/Font <<\n");
  for (int32_t i = 0; i < document->written_font_count; ++i) {
    TextLine line;
    add(&line, "/F");
    add_int_at_once(&line, document->written_fonts[i] + 1);
    add_reference(&line, document->font_objects[i]);
    write_line(document, line);
  }
  pdf_write_text(document, ">>\n");
}

void write_picture_list(PdfDocument *document, int32_t end) {
  int32_t image = document->earlier_images, form = document->earlier_forms;
  pdf_write_text(document, "/XObject <<\n");
  for (int32_t number = document->page_first; number < end; ++number) {
    const ObjectKind kind = object_entry(document->objects, number).kind;
    TextLine line;
    if (kind == object_image) {
      add(&line, "/Image");
      add_int_at_once(&line, ++image);
    } else if (kind == object_form) {
      add(&line, "/Form");
      add_int_at_once(&line, ++form);
    } else {
      continue;
    }
    add_reference(&line, number);
    write_line(document, line);
  }
  pdf_write_text(document, ">>\n");
}

void write_contents(PdfDocument *document, int32_t end) {
  TextLine line;
  if (document->page_streams == 1) {
    add(&line, "/Contents");
    add_reference(&line, document->page_stream);
    write_line(document, line);
    return;
  }
  pdf_write_text(document, "/Contents [\n");
  for (int32_t number = document->page_first; number < end; ++number) {
    if (object_entry(document->objects, number).kind != object_content) continue;
    line.length = 0;
    add_reference(&line, number);
    write_line(document, line);
  }
  pdf_write_text(document, "]\n");
}

void write_page_object(PdfDocument *document) {
  const int32_t end = new_object(document, object_page);
  const bool has_images = document->images != document->earlier_images;
  const bool has_forms = document->forms != document->earlier_forms;
  write_page_opening(document);
  write_procedure_sets(document, has_images);
  if (document->page_has_text) write_font_list(document);
  if (has_images || has_forms) write_picture_list(document, end);
  pdf_write_text(document, ">>\n");
  write_contents(document, end);
  pdf_write_text(document, ">>\nendobj\n");
}

}  // namespace

void end_page(PdfDocument *document) {
  close_stream(document, StreamKind::content);
  write_new_fonts(document);
  write_page_object(document);
}

void start_page(PdfDocument *document) {
  ++document->page_number;
  document->page_first = document->objects.next;
  document->page_streams = 0;
  document->earlier_images = document->images;
  document->earlier_forms = document->forms;
  open_content(document);
}

}  // namespace quorix
