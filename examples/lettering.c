/* SPDX-License-Identifier: MIT
 *
 * Text in bitmap and outline fonts. A character is placed where the one before it ended, along a
 * base line of any direction.
 */
#include "lettering.h"

#include <math.h>
#include <stdlib.h>

enum {
  RASTER = 101,
  FIRST_WIDTH = 32,
  WIDTHS = 233,
  FIRST_LETTER = 127, /* where the library's codes leave ASCII */
  MAX_POINTS = 4096,
  MAX_CONTOURS = 64
};

static const char letters[] =
    "ÄÖÜäöüßÅØÆåøæÑñÇçËÏëïÁÉÍÓÚáéíóúÀÈÌÒÙàèìòùÂÊÎÔÛâêîôûÃãÕõÝýÿ¡¿ÐðÞþ"
    "ĄŁĽŚŠŞŤŹŽŻąłľśšşťźžżŔĂĹĆČĘĚĎŃŇŐŘŮŰŢŕăĺćčęěďńňőřůűţ"
    "ĞİğıĠġĤĥĦħĴĵŬŭĈĉĊċĜĝŜŝ¤©";

static int uses_outlines;
static int outline_size;
static int32_t widths[WIDTHS]; /* of the bitmap font, in tenths of a pixel */

/* ---- Characters -------------------------------------------------------------------------- */

/* Takes one character of up to two bytes off a text, and gives its Unicode value. */
static int next_unicode(const char **text) {
  int first = (unsigned char)*(*text)++;
  if (first < 0x80) return first;
  int second = (unsigned char)*(*text)++;
  if (first < 0xC2 || first > 0xDF || (second & 0xC0) != 0x80) fail("a letter out of range");
  return (first & 0x1F) << 6 | (second & 0x3F);
}

/* The library's code of a Unicode value. */
static int code_of(int unicode) {
  const char *letter = letters;
  if (unicode < FIRST_LETTER) return unicode;
  for (int code = FIRST_LETTER; *letter != '\0'; code++)
    if (next_unicode(&letter) == unicode) return code;
  fail("no code for the letter U+%04X", unicode);
  return 0;
}

/* ---- Fonts ------------------------------------------------------------------------------- */

void use_bitmap_font(int family, int size) {
  int32_t status;
  qqbdf1(&family, &size, widths, &status);
  if (status != 0)
    fail(
        "the bitmap fonts are not found (status %d); the environment variable QUORIX tells the "
        "folder above \"fonts\"",
        status);
  uses_outlines = 0;
}

void use_outlines(const char *file) {
  const uint16_t one = 1;
  int32_t status;
  qqttf1(file, *(const uint8_t *)&one, &status); /* 1 where the low byte comes first */
  if (status != 0) fail("%s cannot be used as a font (status %d)", file, status);
  uses_outlines = 1;
}

void set_outline_size(int size) {
  outline_size = size;
}

typedef struct Outline {
  double x[MAX_POINTS], y[MAX_POINTS];
  int32_t sizes[MAX_CONTOURS];
  int32_t points, contours;
} Outline;

static void read_outline(int unicode, Outline *outline) {
  int32_t status = 1; /* a Unicode value comes */
  qqttf2(unicode, outline->x, outline->y, 0, &outline->points, NULL, 0, &outline->contours,
         outline_size, &status);
  if (outline->points > MAX_POINTS || outline->contours > MAX_CONTOURS)
    fail("the letter U+%04X has too many points", unicode);
  status = 1;
  if (outline->points > 0)
    qqttf2(unicode, outline->x, outline->y, MAX_POINTS, &outline->points, outline->sizes,
           MAX_CONTOURS, &outline->contours, outline_size, &status);
  if (outline->points > 0 && status != 0)
    fail("the letter U+%04X has no outline (status %d)", unicode, (int)status);
}

/* How far the next character stands away. Outlines tell no widths, so they get as much room on
 * their right as the font leaves on the left of most letters. */
static double advance_of(int unicode) {
  static Outline outline;
  if (!uses_outlines) return widths[code_of(unicode) - FIRST_WIDTH] / 10.0;
  read_outline(unicode, &outline);
  double right = outline.points > 0 ? 0 : 0.3 * outline_size;
  for (int i = 0; i < outline.points; i++)
    right = fmax(right, outline.x[i]);
  return right + 0.1 * outline_size;
}

/* ---- Drawing ----------------------------------------------------------------------------- */

/* Twice the area within a contour, negative where it runs clockwise. */
static double area_of(const double *x, const double *y, int count) {
  double sum = 0;
  for (int i = 0; i + 1 < count; i++)
    sum += x[i] * y[i + 1] - x[i + 1] * y[i];
  return sum;
}

/* Outer contours run clockwise and come first; what runs the other way is a hole. */
static void fill_outline(const Outline *outline, const double *x, const double *y, int32_t colour) {
  for (int holes = 0; holes <= 1; holes++) {
    int first = 0;
    qqvclr(holes ? WHITE : colour);
    for (int contour = 0; contour < outline->contours; contour++) {
      int count = outline->sizes[contour];
      if ((area_of(x + first, y + first, count) > 0) != holes)
        fill_polygon(x + first, y + first, count);
      first += count;
    }
  }
}

static void draw_outline(int unicode, double x, double y, double sine, double cosine,
                         int32_t colour) {
  static Outline outline;
  static double xs[MAX_POINTS], ys[MAX_POINTS];
  read_outline(unicode, &outline);
  for (int i = 0; i < outline.points; i++) {
    xs[i] = x + outline.x[i] * cosine - outline.y[i] * sine;
    ys[i] = y - outline.x[i] * sine - outline.y[i] * cosine;
  }
  fill_outline(&outline, xs, ys, colour);
}

static void draw_bitmap(int unicode, double x, double y, int32_t angle, int32_t colour) {
  int32_t code = code_of(unicode), device = RASTER;
  int32_t column = (int32_t)floor(x + 0.5), row = (int32_t)floor(y + 0.5);
  qqvclr(colour);
  qqbdf2(&code, &column, &row, &angle, &device, NULL);
}

double written_width(const char *text) {
  double width = 0;
  while (*text != '\0')
    width += advance_of(next_unicode(&text));
  return width;
}

void write_text(double x, double y, int angle, int align, int32_t colour, const char *text) {
  double radians = angle * 3.14159265358979323846 / 180;
  double sine = sin(radians), cosine = cos(radians);
  double at = align == LEFT ? 0 : -written_width(text) / (align == CENTRE ? 2 : 1);
  while (*text != '\0') {
    int unicode = next_unicode(&text);
    if (uses_outlines)
      draw_outline(unicode, x + at * cosine, y - at * sine, sine, cosine, colour);
    else
      draw_bitmap(unicode, x + at * cosine, y - at * sine, angle, colour);
    at += advance_of(unicode);
  }
}
