// SPDX-License-Identifier: MIT
//
// The record's life: made by the first qqpdf1, used by document after document, released by
// qqpfree. What a document gathers goes with its end; memory output stays until it is fetched.
//
// Without a document drawing does nothing, qqpdf6 gives 0 bytes or -2, and qqpdf9 status 1.
#include <cstring>
#include <new>

#include "pdf/pdf.h"
#include "quorix/pdf.h"

namespace quorix {

PdfDocument *pdf_document = nullptr;  // owned

namespace {

// What a document needs only while it is open.
void drop_tables(PdfDocument *document) {
  document->open = false;
  document->stream = {};
  document->objects = {};
  release_outlines(&document->outlines);
}

void reset_state(PdfDocument *document, const PdfSettings &settings) {
  document->compress = settings.compress;
  document->rotate_pages = settings.rotate_pages;
  document->page_width = settings.page_width;
  document->page_height = settings.page_height;
  document->page_number = 0;
  document->images = document->forms = 0;
  document->page_has_text = false;
  document->written_font_count = 0;
  for (FontState &state : document->fonts)
    state = FontState::unused;
  document->page = {};
}

int32_t start_process_document(const char *file, const PdfSettings &settings) {
  if (pdf_document == nullptr) pdf_document = make_document();
  if (pdf_document == nullptr) return pdf_no_memory;
  pdf_document->output.operation = "qqpdf1";
  return start_document(pdf_document, file, settings);
}

}  // namespace

PdfDocument *make_document() {
  void *const block = allocate_bytes(sizeof(PdfDocument));
  return block == nullptr ? nullptr : new (block) PdfDocument{};
}

void release_document(PdfDocument *document) {
  if (document == nullptr) return;
  drop_tables(document);
  close_output(&document->output);
  document->~PdfDocument();
  release_bytes(document);
}

PdfStatus start_document(PdfDocument *document, const char *file, const PdfSettings &settings) {
  drop_tables(document);
  close_output(&document->output);
  if (!start_objects(&document->objects)) return pdf_no_memory;
  const PdfStatus status = open_output(&document->output, file, settings.to_memory);
  if (status != pdf_done) {
    drop_tables(document);
    return status;
  }
  reset_state(document, settings);
  document->open = true;
  pdf_write_text(document, "%PDF-1.3\n");
  start_page(document);
  pdf_write_text(document, "0.709 w\n");
  pdf_write_text(document, "2 J\n");
  pdf_write_text(document, "2 j\n");
  return pdf_done;
}

void end_document(PdfDocument *document) {
  end_page(document);
  write_closing_structures(document);
  close_output(&document->output);
  drop_tables(document);
}

}  // namespace quorix

extern "C" int32_t qqpdf1(const char *file, int32_t page_width, int32_t page_height, int32_t mode,
                          int32_t *rotate_and_status) {
  const bool compress = (mode & 1) != 0, to_memory = (mode & ~1) != 0;
  const bool rotate_pages = (*rotate_and_status & 255) != 0;
  *rotate_and_status = quorix::start_process_document(
      file, {page_width, page_height, compress, to_memory, rotate_pages});
  return 0;
}

extern "C" int32_t qqpdf6(uint8_t *buffer, int32_t size, int32_t *status) {
  // Without a record nothing was written.
  constexpr int32_t nothing = -2;
  if (quorix::pdf_document == nullptr) {
    *status = size == 0 ? 0 : nothing;
  } else {
    *status = quorix::take_memory_output(&quorix::pdf_document->output, buffer, size);
  }
  return 0;
}

extern "C" int32_t qqpdf7(const uint8_t *data, int32_t count) {
  quorix::PdfDocument *const document = quorix::open_document("qqpdf7");
  if (document == nullptr || data == nullptr || count < -1) return 0;
  const size_t bytes =
      count == -1 ? std::strlen(reinterpret_cast<const char *>(data)) : static_cast<size_t>(count);
  quorix::pdf_write(document, data, bytes);
  return 0;
}

extern "C" int32_t qqpfree(void) {
  if (quorix::pdf_document != nullptr) quorix::pdf_document->output.operation = "qqpfree";
  quorix::release_document(quorix::pdf_document);
  quorix::pdf_document = nullptr;
  return 0;
}
