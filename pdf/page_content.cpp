// SPDX-License-Identifier: MIT
//
// Lines, areas, pens, images, the clip rectangle and colours: qqpdf2, qqpdf3 and qqpdf4.
//
// Each line of operators is one piece for pdf_write, so a stream is only ever split between lines.
// Calls that make no sense together, as the end of an image that was not begun, write what each
// writes. A clip that replaces another sets the last line colour again, black before any.
#include <cmath>

#include "base/numbers.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"
#include "quorix/pdf.h"

namespace quorix {

namespace {

enum PageOperation : int32_t {
  op_end_document = 1,
  op_line = 2,
  op_move = 3,
  op_new_page = 4,
  op_fill = 5,
  op_line_width = 6,
  op_line_join = 7,
  op_line_cap = 8,
  op_miter_limit = 9,
  op_begin_image = 10,
  op_end_image = 11,
  op_translate = 12,
  op_rotate = 13,
  op_place_image = 14,
  op_white_mask = 15,
  op_clip_corner = 16,
  op_opposite_clip_corner = 17,
  op_clip_switch = 18,
};

constexpr float half_dot = 0.354F;        // half the length of a dot made of a line
constexpr double half_thin_side = 0.354;  // and of the side of a rectangle without extent
constexpr float thin_side = 0.708F;
constexpr double least_side = 0.01;

// Beyond the range of the type that is an infinity.
float to_single(double value) {
  return static_cast<float>(value);
}

// ---- lines

// Points are compared in single precision, as the current one is stored, so that a move and a line
// to the same point always are a dot.
void line_to(PdfDocument *document, double x, double y) {
  PageState *const page = &document->page;
  const float x_stored = to_single(x), y_stored = to_single(y);
  double shift = 0;
  if (x_stored == page->current[0] && y_stored == page->current[1]) {
    if (page->after_line) return;
    shift = half_dot;
  }
  if (!page->after_line) {
    TextLine line;
    add_coordinate(&line, page->current[0] - shift);
    add_coordinate(&line, page->current[1]);
    add(&line, " m\n");
    write_line(document, line);
  }
  TextLine line;
  add_coordinate(&line, x + shift);
  add_coordinate(&line, y);
  add(&line, " l\n");
  write_line(document, line);
  page->current[0] = x_stored;
  page->current[1] = y_stored;
  page->path_open = page->after_line = true;
}

void move_to(PageState *page, double x, double y) {
  page->current[0] = to_single(x);
  page->current[1] = to_single(y);
  page->after_line = false;
}

// ---- pens

template <size_t size>
void write_real_operator(PdfDocument *document, double value, const char (&operator_line)[size]) {
  TextLine line;
  add_real(&line, value, 3);
  add(&line, operator_line);
  write_line(document, line);
}

template <size_t size>
void write_int_operator(PdfDocument *document, double value, const char (&operator_line)[size]) {
  TextLine line;
  add_int(&line, round_to_int32(value));
  add(&line, operator_line);
  write_line(document, line);
}

// ---- images

void begin_image(PdfDocument *document, double width, double height) {
  close_stream(document, StreamKind::content);
  open_image(document, to_int32(width), to_int32(height));
}

void end_image(PdfDocument *document) {
  close_stream(document, StreamKind::image);
  open_content(document);
  pdf_write_text(document, "q\n");
}

void translate(PdfDocument *document, double x, double y) {
  TextLine line;
  add(&line, "1 0 0 1");
  add_coordinate(&line, x);
  add_coordinate(&line, y);
  add(&line, " cm\n");
  write_line(document, line);
}

void place_image(PdfDocument *document, double width, double height) {
  TextLine line;
  add_coordinate(&line, width);
  add(&line, " 0 0");
  add_coordinate(&line, height);
  add(&line, " 0 0 cm\n/Image");
  add_int_at_once(&line, document->images);
  add(&line, " Do\nQ\n");
  write_line(document, line);
}

// ---- clip rectangle

template <size_t size>
void write_corner(PdfDocument *document, float x, float y, const char (&operator_line)[size]) {
  TextLine line;
  add_coordinate(&line, x);
  add_coordinate(&line, y);
  add(&line, operator_line);
  write_line(document, line);
}

void clip_off(PdfDocument *document) {
  if (document->page.clip_active) pdf_write_text(document, "Q\n");
  document->page.clip_active = false;
}

void clip_on(PdfDocument *document) {
  PageState *const page = &document->page;
  const float *const low = page->clip_low, *const high = page->clip_high;
  if (page->clip_active) {
    pdf_write_text(document, "Q\n");
    write_colour(document, page->line_colour, "RG\n");
  }
  pdf_write_text(document, "q\n");
  write_corner(document, low[0], low[1], " m\n");
  write_corner(document, high[0], low[1], " l\n");
  write_corner(document, high[0], high[1], " l\n");
  write_corner(document, low[0], high[1], " l\n");
  pdf_write_text(document, "h W n\n");
  page->clip_active = true;
}

// ---- the switch

void new_page(PdfDocument *document) {
  end_page(document);
  start_page(document);
}

void finish(PdfDocument *document) {
  if (document->page.clip_active) pdf_write_text(document, "Q\n");
  end_document(document);
}

// Operations with one number or none.
void do_simple_operation(PdfDocument *document, const double *x, int32_t op) {
  switch (op) {
    case op_end_document:
      return finish(document);
    case op_new_page:
      return new_page(document);
    case op_fill:
      // Kept: the path counts as open, and the next operation writes a stroke without effect.
      return pdf_write_text(document, "h\nf*\n");
    case op_line_width:
      return write_real_operator(document, *x, " w\n");
    case op_line_join:
      return write_int_operator(document, *x, " j\n");
    case op_line_cap:
      return write_int_operator(document, *x, " J\n");
    case op_miter_limit:
      return write_real_operator(document, *x, " M\n");
    case op_end_image:
      return end_image(document);
    case op_rotate:
      return pdf_write_text(document, "0 1 -1 0 0 0 cm\n");
    case op_white_mask:
      document->page.mask_white = round_to_int32(*x) != 0;
      return;
    case op_clip_switch:
      return round_to_int32(*x) == 0 ? clip_on(document) : clip_off(document);
    default:
      return;
  }
}

void do_operation(PdfDocument *document, const double *x, const double *y, int32_t op) {
  PageState *const page = &document->page;
  if (page->text_open) close_text(document);
  if (op == op_line) return line_to(document, *x, *y);
  if (op != op_fill && page->path_open) close_path(document);
  switch (op) {
    case op_move:
      return move_to(page, *x, *y);
    case op_begin_image:
      return begin_image(document, *x, *y);
    case op_translate:
      return translate(document, *x, *y);
    case op_place_image:
      return place_image(document, *x, *y);
    case op_clip_corner:
      page->clip_low[0] = to_single(*x);
      page->clip_low[1] = to_single(*y);
      return;
    case op_opposite_clip_corner:
      page->clip_high[0] = to_single(*x);
      page->clip_high[1] = to_single(*y);
      return;
    default:
      return do_simple_operation(document, x, op);
  }
}

// ---- colours

// 0 and 255 are whole numbers, all else has three decimals in a field of five.
void add_component(TextLine *line, int32_t component) {
  if (component == 0) {
    add(line, "0 ");
  } else if (component == 255) {
    add(line, "1 ");
  } else {
    add_real_at_once(line, component / 255.0, 3, 5);
    add(line, " ");
  }
}

// A side that would not show becomes a visible one.
void widen(double *place, double *side) {
  if (!(std::fabs(*side) < least_side)) return;
  *place -= half_thin_side;
  *side = static_cast<double>(thin_side);
}

}  // namespace

void close_text(PdfDocument *document) {
  if (!document->page.text_open) return;
  pdf_write_text(document, "ET\n");
  document->page.text_open = false;
}

void close_path(PdfDocument *document) {
  if (!document->page.path_open) return;
  pdf_write_text(document, "S\n");
  document->page.path_open = document->page.after_line = false;
}

void write_colour(PdfDocument *document, const PdfColour &colour, const char *operator_line) {
  TextLine line;
  add_component(&line, colour.red);
  add_component(&line, colour.green);
  add_component(&line, colour.blue);
  for (; *operator_line != '\0'; ++operator_line)
    add_char(&line, *operator_line);
  write_line(document, line);
}

}  // namespace quorix

extern "C" int32_t qqpdf2(const double *x, const double *y, int32_t op) {
  quorix::PdfDocument *const document = quorix::open_document("qqpdf2");
  if (document != nullptr) quorix::do_operation(document, x, y, op);
  return 0;
}

extern "C" int32_t qqpdf3(int32_t red, int32_t green, int32_t blue, int32_t fill) {
  quorix::PdfDocument *const document = quorix::open_document("qqpdf3");
  if (document == nullptr) return 0;
  quorix::close_path(document);
  quorix::close_text(document);
  const bool areas = fill == 1;
  const quorix::PdfColour colour = {red, green, blue};
  if (!areas) document->page.line_colour = colour;
  quorix::write_colour(document, colour, areas ? "rg\n" : "RG\n");
  return 0;
}

extern "C" int32_t qqpdf4(double *x, double *y, double *width, double *height) {
  quorix::PdfDocument *const document = quorix::open_document("qqpdf4");
  if (document == nullptr) return 0;
  quorix::widen(x, width);
  quorix::widen(y, height);
  quorix::TextLine line;
  quorix::add_coordinate(&line, *x);
  quorix::add_coordinate(&line, *y);
  quorix::add_coordinate(&line, *width);
  quorix::add_coordinate(&line, *height);
  quorix::add(&line, " re\nf\n");
  quorix::write_line(document, line);
  return 0;
}
