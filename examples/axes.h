/* SPDX-License-Identifier: MIT
 *
 * What the example programs share: pages, pens, a stroke font and the axes of a plot. All of it
 * stands on the library's exported operations.
 */
#ifndef EXAMPLES_AXES_H
#define EXAMPLES_AXES_H

#include <quorix/quorix.h>
#include <stddef.h>

/* A packed colour as the drawing operations take it: red in the low byte. */
#define PACKED(r, g, b) (0x01000000 | ((b) << 16) | ((g) << 8) | (r))
/* The same from the word 0xRRGGBB. */
#define COLOUR(word) PACKED(((word) >> 16) & 255, ((word) >> 8) & 255, (word)&255)

/* Eight colours that colour-blind readers tell apart (Okabe and Ito, 2008), the darker ones first,
 * and the greys of the frame. */
enum {
  INK = COLOUR(0x222222),
  GREY = COLOUR(0x767676),
  PALE = COLOUR(0xE4E4E4),
  WHITE = COLOUR(0xFFFFFF),
  BLUE = COLOUR(0x0072B2),
  VERMILION = COLOUR(0xD55E00),
  GREEN = COLOUR(0x009E73),
  PURPLE = COLOUR(0xCC79A7),
  ORANGE = COLOUR(0xE69F00),
  SKY = COLOUR(0x56B4E9)
};

enum { BUTT_CAP = 0, ROUND_CAP = 1, SQUARE_CAP = 2 };
enum { MITER_JOIN = 0, ROUND_JOIN = 1, BEVEL_JOIN = 2 };

/* Says why on stderr and ends the program with status 1. */
void fail(const char *format, ...);

/* Neither infinite nor not a number. */
int is_finite(double value);

/* ---- Pages ------------------------------------------------------------------------------- */

/* Ends the program unless a file was written, by the status of the operation, and reached the disk
 * as a whole. */
void check_written(const char *file, int status);

/* Opens a white RGBA page. */
void open_page(int width, int height);

/* Opens a palette page with the 256 words 0xRRGGBB of a table; it is filled with entry 0. */
void open_palette_page(int width, int height, const uint32_t *palette);

/* Writes the open page in true colours, as its name says: .ps as PostScript and .pdf as PDF, each
 * on a page of A4, anything else as PNG. */
void save_picture(const char *file, int width, int height);

/* Write the open page as a PNG file: true colour, or with the indices and words of a palette. */
void save_png(const char *file, int width, int height);
void save_palette_png(const char *file, int width, int height, const uint32_t *palette);

/* Opens a white plot window; what stands below then draws on the current window. Device 81 draws
 * through OpenGL where that can be had. Without a screen the window lies in memory, and nothing
 * waits. */
void open_window(int device, int width, int height);

/* Writes what the current window holds as a PNG file. */
void save_window(const char *file, int width, int height);

/* On the page or on the current window: the colour, a step of the pen (3 moves, 2 draws), a line,
 * and a box, corners inclusive. */
void plot_colour(int colour);
void plot_pen(int x, int y, int code);
void plot_line(int x1, int y1, int x2, int y2);
void plot_box(int x1, int y1, int x2, int y2, int colour);

/* Fills `count` words of a palette from one colour 0xRRGGBB to the next. */
void blend_colours(uint32_t *palette, int count, const uint32_t *stops, int stop_count);

/* Where a place stands on a map of the whole world, equator and mid-meridian at 0, with equal
 * areas: the Equal Earth projection (B. Savric, T. Patterson and B. Jenny, 2018). y grows
 * northward. */
void equal_earth(double longitude, double latitude, double *x, double *y);

/* ---- Pens and text ----------------------------------------------------------------------- */

void set_pen(int width, int cap, int join);

/* Limits all drawing to a rectangle, corners inclusive. */
void set_clip(int left, int top, int right, int bottom);

/* Fills a polygon in the current colour. Ends the program where a row crosses it too often for the
 * library, which draws no more than 99 crossings of one. */
void fill_polygon(const double *xs, const double *ys, int corners);

/* Fills the area between a curve of any number of points, from left to right, and a base line. It
 * is drawn in pieces that no row crosses too often. */
void fill_under(const double *xs, const double *ys, int count, double base);

enum { LEFT, CENTRE, RIGHT };

/* Writes a line of UTF-8 text in the current colour with capitals of `size` pixels. (x, y) is the
 * left end, middle or right end of its base line. Leaves a pen of its own, 1 to 5 pixels wide. The
 * font has the letters of Latin-1, ASCII, superscript and subscript digits and some signs; what is
 * missing shows as a box. */
void draw_text(int x, int y, int size, int align, const char *text);

/* The same, running upward. */
void draw_text_upward(int x, int y, int size, int align, const char *text);

int text_width(int size, const char *text);

/* ---- Axes -------------------------------------------------------------------------------- */

typedef struct Axes {
  int left, top, right, bottom; /* the plot's area, in pixels */
  double x_first, x_last;       /* what its left and right edges stand for */
  double y_first, y_last;       /* its bottom and top edges */
  double x_step, y_step;        /* between ticks; 0 finds a good one */
} Axes;

/* Where a value stands, in pixels. */
double axes_x(const Axes *axes, double value);
double axes_y(const Axes *axes, double value);
int column_of(const Axes *axes, double value);
int row_of(const Axes *axes, double value);

/* The step of 1, 2 or 5 times a power of ten that cuts a span into at most `parts` parts. */
double nice_step(double span, int parts);

/* Draws grid, frame, ticks with their numbers, and three titles, each of which may be null. */
void draw_axes(const Axes *axes, const char *title, const char *x_title, const char *y_title);

/* Draws the palette entries from `first` on as an upright bar, marked from low to high. */
void draw_colour_bar(int left, int top, int bottom, int first, int count, double low, double high,
                     const char *title);

/* Numbers that draw_axes would put at the ticks, for colour bars and the like. */
void format_tick(char *text, size_t room, double value, double step);

#endif
