/* SPDX-License-Identifier: MIT
 *
 * What the example programs that write PDF documents share: one call for each thing that stands on
 * a page, in points from its lower left corner.
 */
#ifndef EXAMPLES_PDF_PAGE_H
#define EXAMPLES_PDF_PAGE_H

#include "axes.h"

/* Fonts by the numbers that the library gives them; there are more. */
enum { TIMES = 0, TIMES_BOLD = 1, TIMES_ITALIC = 2, HELVETICA = 4, COURIER = 18, FONTS = 35 };

/* Start and end a document; both end the program with a message if there is a reason to. */
void start_pdf(const char *file, int width, int height, int compress);
void end_pdf(void);
void new_pdf_page(void);

/* Adds a bookmark of a level, 0 or more, for the page that is open. */
void add_bookmark(int level, const char *title);

/* ---- Pens and lines ---------------------------------------------------------------------- */

/* Colours 0xRRGGBB. */
void pdf_line_colour(uint32_t colour);
void pdf_fill_colour(uint32_t colour);

void pdf_pen(double width, int cap, int join);
void pdf_move(double x, double y);
void pdf_line(double x, double y);
/* Fills what the lines since the last move enclose. */
void pdf_fill(void);
void pdf_rectangle(double x, double y, double width, double height);

/* Limits all drawing to a rectangle; pens and colours set meanwhile end with it. */
void pdf_clip(double left, double bottom, double right, double top);
void pdf_end_clip(void);

/* ---- Images and forms -------------------------------------------------------------------- */

/* Places an image, red, green and blue bytes from the top row on, with its lower left corner at
 * (x, y) and in a size of its own. */
void place_pdf_image(const uint8_t *pixels, int columns, int rows, double x, double y, double width,
                     double height);

/* Fits page content from a box at (0, 0) into a place, turned clockwise or not. */
void embed_pdf_form(const char *content, int length, double box_width, double box_height, double x,
                    double y, double width, double height, int turned);

/* ---- Text, in UTF-8 of ASCII and Latin-1 --------------------------------------------------- */

/* Writes Helvetica a character at a time, with (x, y) at the left end, middle or right end of its
 * base line. */
void pdf_text(double x, double y, int size, int align, const char *text);
void pdf_text_upward(double x, double y, int size, int align, const char *text);

/* Writes a line from (x, y) on in any font: the library opens the text, the viewer advances. */
void pdf_line_of_text(double x, double y, int font, int size, const char *text);

/* ---- Axes -------------------------------------------------------------------------------- */

typedef struct PdfAxes {
  double left, bottom, right, top; /* the plot's area */
  double x_first, x_last, x_step;  /* values of its edges, and between ticks */
  double y_first, y_last, y_step;
} PdfAxes;

double pdf_x(const PdfAxes *axes, double value);
double pdf_y(const PdfAxes *axes, double value);

/* Grid, frame and numbers. */
void draw_pdf_axes(const PdfAxes *axes, const char *x_title, const char *y_title);

#endif
