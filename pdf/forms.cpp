// SPDX-License-Identifier: MIT
//
// Content made elsewhere, embedded as a form and drawn at once: qqpdf8.
#include <cmath>

#include "base/numbers.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"
#include "quorix/pdf.h"

namespace quorix {

namespace {

struct Form {
  const uint8_t *data;
  size_t length;
  double box_x, box_y, box_width, box_height;
  double place_x, place_y, target_width, target_height;
  bool compress;
  int32_t rotate;
};

constexpr int32_t turned = 1;  // of `rotate`; other values but 0 only shift and scale as if it were

void write_box(PdfDocument *document, const Form &form) {
  TextLine line;
  add(&line, "   /BBox [");
  add_int(&line, round_to_int32(form.box_x));
  add_int(&line, round_to_int32(form.box_y));
  add_int(&line, round_to_int32(form.box_x + form.box_width));
  add_int(&line, round_to_int32(form.box_y + form.box_height));
  add(&line, "]\n");
  write_line(document, line);
}

void write_data(PdfDocument *document, const Form &form) {
  OwnedArray<uint8_t> compressed;
  size_t count = form.length;
  if (form.compress) compressed = compress_bytes(form.data, form.length, &count);
  const bool packed = compressed != nullptr;
  if (!packed) count = form.length;
  TextLine line;
  add(&line, "   /Length");
  add_size(&line, static_cast<int64_t>(count));
  if (packed) {
    add(&line, "\n   /Filter /FlateDecode\n>>\nstream\n");
  } else if (form.compress) {
    add(&line, " >>\nstream\n");
  } else {
    add(&line, "\n>>\nstream\n");
  }
  write_line(document, line);
  pdf_write(document, packed ? compressed.get() : form.data, count);
}

void write_form_object(PdfDocument *document, const Form &form) {
  new_object(document, object_form);
  ++document->forms;
  pdf_write_text(document, "<< /Type /XObject /Subtype /Form\n   /FormType 1\n");
  write_box(document, form);
  pdf_write_text(document, "   /Matrix [1 0 0 1 0 0]\n   /Resources << /ProcSet [/PDF] >>\n");
  write_data(document, form);
  pdf_write_text(document, "endstream\nendobj\n");
}

// One scale for both directions, the smaller; 0 where a box without extent leaves none.
float scale_of(const Form &form) {
  const bool swapped = form.rotate != 0;
  const double across = form.target_width / (swapped ? form.box_height : form.box_width);
  const double along = form.target_height / (swapped ? form.box_width : form.box_height);
  if (std::isnan(across) || std::isnan(along)) return 0;
  const auto scale = static_cast<float>(across < along ? across : along);
  return std::isfinite(scale) ? scale : 0;
}

// Kept: the corner of the box is taken off before the content is scaled, so only a corner at the
// origin, or a scale of 1, comes exactly to the place.
void draw_form(PdfDocument *document, const Form &form) {
  TextLine line;
  add(&line, "1 0 0 1");
  add_coordinate(&line, form.place_x - form.box_x);
  add_coordinate(&line, form.place_y - form.box_y + (form.rotate != 0 ? form.target_height : 0.0));
  add(&line, " cm\n");
  if (form.rotate == turned) {
    add(&line, "0 -1 1 0 0 0 cm\n");
  } else {
    add(&line, "1 0 0 1 0 0 cm\n");
  }
  write_line(document, line);
  const float scale = scale_of(form);
  line.length = 0;
  add_coordinate(&line, scale);
  add(&line, " 0 0");
  add_coordinate(&line, scale);
  add(&line, " 0 0 cm\n/Form");
  add_int_at_once(&line, document->forms);
  add(&line, " Do\nQ\n");
  write_line(document, line);
}

void embed_form(PdfDocument *document, const Form &form) {
  close_text(document);
  close_path(document);
  close_stream(document, StreamKind::content);
  write_form_object(document, form);
  open_content(document);
  pdf_write_text(document, "q\n");
  draw_form(document, form);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpdf8(const uint8_t *data, const int32_t *length, const double *box_x,
                          const double *box_y, const double *box_width, const double *box_height,
                          const double *place_x, const double *place_y, const double *target_width,
                          const double *target_height, const int32_t *compress,
                          const int32_t *rotate, int32_t *status) {
  *status = 0;
  quorix::PdfDocument *const document = quorix::open_document("qqpdf8");
  if (document == nullptr) return 0;
  const size_t bytes = data != nullptr && *length > 0 ? static_cast<size_t>(*length) : 0;
  quorix::embed_form(document, {data, bytes, *box_x, *box_y, *box_width, *box_height, *place_x,
                                *place_y, *target_width, *target_height, *compress != 0, *rotate});
  return 0;
}
