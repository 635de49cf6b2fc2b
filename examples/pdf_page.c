/* SPDX-License-Identifier: MIT
 *
 * Pages, text and axes of the example programs that write PDF documents.
 */
#include "pdf_page.h"

#include <math.h>
#include <string.h>

enum { FIRST_WIDTH = 32, FIRST_NATIONAL = 127, NATIONAL = 61 };

/* Widths of Helvetica's characters from the blank on, in thousandths of the size. */
static const int helvetica_widths[] = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

/* The letters of Latin-1 that the library numbers from FIRST_NATIONAL on, and the ASCII letters
 * that they are as wide as. */
static const unsigned char national_letters[NATIONAL + 1] =
    "\xC4\xD6\xDC\xE4\xF6\xFC\xDF\xC5\xD8\xC6\xE5\xF8\xE6\xD1\xF1\xC7\xE7\xCB\xCF\xEB\xEF\xC1\xC9"
    "\xCD\xD3\xDA\xE1\xE9\xED\xF3\xFA\xC0\xC8\xCC\xD2\xD9\xE0\xE8\xEC\xF2\xF9\xC2\xCA\xCE\xD4\xDB"
    "\xE2\xEA\xEE\xF4\xFB\xC3\xE3\xD5\xF5\xDD\xFD\xFF\xA1\xBF\xA9";
static const char national_bases[NATIONAL + 1] =
    "AOUaouOAOWaomNnCcEIeiAEIOUaeiouAEIOUaeiouAEIOUaeiouAaOoYyy!?@";

/* ---- The document ------------------------------------------------------------------------ */

static void operate(double x, double y, int op) {
  qqpdf2(&x, &y, op);
}

void start_pdf(const char *file, int width, int height, int compress) {
  int32_t status = 0;
  qqpdf1(file, width, height, compress ? 1 : 0, &status);
  if (status != 0) fail("%s cannot be written (status %d)", file, (int)status);
}

void end_pdf(void) {
  operate(0, 0, 1);
  check_written("the document", 0);
  qqpfree();
}

void new_pdf_page(void) {
  operate(0, 0, 4);
}

void add_bookmark(int level, const char *title) {
  int32_t wanted = level, status = 0;
  qqpdf9(title, &wanted, &status);
  if (status != 0) fail("no bookmark \"%s\" (status %d)", title, (int)status);
}

/* ---- Pens and lines ---------------------------------------------------------------------- */

static void set_colour(uint32_t colour, int fill) {
  qqpdf3((int32_t)(colour >> 16 & 255), (int32_t)(colour >> 8 & 255), (int32_t)(colour & 255),
         fill);
}

void pdf_line_colour(uint32_t colour) {
  set_colour(colour, 0);
}

void pdf_fill_colour(uint32_t colour) {
  set_colour(colour, 1);
}

void pdf_pen(double width, int cap, int join) {
  operate(width, 0, 6);
  operate(join, 0, 7);
  operate(cap, 0, 8);
}

void pdf_move(double x, double y) {
  operate(x, y, 3);
}

void pdf_line(double x, double y) {
  operate(x, y, 2);
}

void pdf_fill(void) {
  operate(0, 0, 5);
}

void pdf_rectangle(double x, double y, double width, double height) {
  qqpdf4(&x, &y, &width, &height);
}

void pdf_clip(double left, double bottom, double right, double top) {
  operate(left, bottom, 16);
  operate(right, top, 17);
  operate(0, 0, 18);
}

void pdf_end_clip(void) {
  operate(1, 0, 18);
}

/* ---- Images and forms -------------------------------------------------------------------- */

void place_pdf_image(const uint8_t *pixels, int columns, int rows, double x, double y, double width,
                     double height) {
  operate(columns, rows, 10);
  qqpdf7(pixels, 3 * columns * rows);
  operate(0, 0, 11);
  operate(x, y, 12);
  operate(width, height, 14);
}

void embed_pdf_form(const char *content, int length, double box_width, double box_height, double x,
                    double y, double width, double height, int turned) {
  double zero = 0;
  int32_t bytes = length, compress = 0, rotate = turned, status = 0;
  qqpdf8((const uint8_t *)content, &bytes, &zero, &zero, &box_width, &box_height, &x, &y, &width,
         &height, &compress, &rotate, &status);
  if (status != 0) fail("a form cannot be embedded (status %d)", (int)status);
}

/* ---- Text -------------------------------------------------------------------------------- */

/* The next character of UTF-8 text as a code of Latin-1; beyond that it is a question mark. */
static int next_character(const char **text) {
  const unsigned char *at = (const unsigned char *)*text;
  int code = at[0], length = 1;
  while ((at[length] & 0xC0) == 0x80)
    length++;
  if (code >= 0x80) code = length == 2 && code < 0xC4 ? (code & 3) << 6 | (at[1] & 63) : '?';
  *text += length;
  return code;
}

/* Where a letter stands among the national ones, or -1. */
static int national_index(int letter) {
  const unsigned char *found = letter < 128 ? NULL : memchr(national_letters, letter, NATIONAL);
  return found == NULL ? -1 : (int)(found - national_letters);
}

static double advance(int letter, int size) {
  int national = national_index(letter);
  if (national >= 0) letter = national_bases[national];
  return letter < FIRST_WIDTH || letter > 126 ? 0
                                              : helvetica_widths[letter - FIRST_WIDTH] * size / 1e3;
}

static double width_of(const char *text, int size) {
  double width = 0;
  while (*text != '\0')
    width += advance(next_character(&text), size);
  return width;
}

static void write_text(double x, double y, int size, int align, const char *text, int upward) {
  double shift = align == LEFT ? 0 : width_of(text, size) / (align == CENTRE ? 2 : 1);
  double matrix[7] = {1, 0, 0, 1, upward ? x : x - shift, upward ? y - shift : y, 1};
  while (*text != '\0') {
    int letter = next_character(&text), national = national_index(letter);
    if (letter > 126 && national < 0) letter = '?'; /* not among the library's */
    qqpdf5(national < 0 ? letter : FIRST_NATIONAL + national, matrix, upward ? 90 : 0, HELVETICA,
           size);
    matrix[upward ? 5 : 4] += advance(letter, size);
  }
}

void pdf_text(double x, double y, int size, int align, const char *text) {
  write_text(x, y, size, align, text, 0);
}

void pdf_text_upward(double x, double y, int size, int align, const char *text) {
  write_text(x, y, size, align, text, 1);
}

void pdf_line_of_text(double x, double y, int font, int size, const char *text) {
  double matrix[7] = {1, 0, 0, 1, x, y, 1};
  char string[400] = "(";
  size_t length = 1;
  qqpdf5(' ', matrix, 0, font, size); /* opens the text in this font, and advances by a blank */
  while (*text != '\0' && length < sizeof string - 8) {
    int letter = next_character(&text);
    if (strchr("()\\", letter) != NULL) string[length++] = '\\';
    string[length++] = (char)letter;
  }
  memcpy(string + length, ") Tj\n", 6);
  qqpdf7((const uint8_t *)string, -1);
}

/* ---- Axes -------------------------------------------------------------------------------- */

double pdf_x(const PdfAxes *axes, double value) {
  double part = (value - axes->x_first) / (axes->x_last - axes->x_first);
  return axes->left + part * (axes->right - axes->left);
}

double pdf_y(const PdfAxes *axes, double value) {
  double part = (value - axes->y_first) / (axes->y_last - axes->y_first);
  return axes->bottom + part * (axes->top - axes->bottom);
}

static void draw_grid_line(const PdfAxes *axes, int vertical, double at) {
  pdf_move(vertical ? axes->left : at, vertical ? at : axes->bottom);
  pdf_line(vertical ? axes->right : at, vertical ? at : axes->top);
}

static void draw_ticks(const PdfAxes *axes, int vertical) {
  double first = vertical ? axes->y_first : axes->x_first;
  double last = vertical ? axes->y_last : axes->x_last;
  double step = vertical ? axes->y_step : axes->x_step;
  char text[32];
  for (double n = ceil(first / step - 1e-9); n * step <= last + step * 1e-9; n++) {
    double at = vertical ? pdf_y(axes, n * step) : pdf_x(axes, n * step);
    draw_grid_line(axes, vertical, at);
    format_tick(text, sizeof text, n * step, step);
    if (vertical)
      pdf_text(axes->left - 7, at - 3, 9, RIGHT, text);
    else
      pdf_text(at, axes->bottom - 16, 9, CENTRE, text);
  }
}

void draw_pdf_axes(const PdfAxes *axes, const char *x_title, const char *y_title) {
  pdf_fill_colour(0x222222);
  pdf_line_colour(0xDDDDDD);
  pdf_pen(0.5, BUTT_CAP, MITER_JOIN);
  draw_ticks(axes, 0);
  draw_ticks(axes, 1);
  pdf_line_colour(0x767676);
  pdf_pen(1, SQUARE_CAP, MITER_JOIN);
  pdf_move(axes->left, axes->bottom);
  pdf_line(axes->right, axes->bottom);
  pdf_line(axes->right, axes->top);
  pdf_line(axes->left, axes->top);
  pdf_line(axes->left, axes->bottom);
  pdf_text((axes->left + axes->right) / 2, axes->bottom - 36, 11, CENTRE, x_title);
  pdf_text_upward(axes->left - 40, (axes->bottom + axes->top) / 2, 11, CENTRE, y_title);
}
