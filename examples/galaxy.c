/* SPDX-License-Identifier: MIT
 *
 * An astronomical image from a FITS file: galaxy image.fits out.png
 *
 * The nucleus of a galaxy is a thousand times as bright as its arms, so colours follow the inverse
 * hyperbolic sine of the counts: in proportion to them where they are few, to their logarithm where
 * they are many.
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "axes.h"

enum { MOST = 1024, PER_PIXEL = 2, TEXT_ROOM = 80 };
enum { PAPER, TEXT, FRAME, MARKS, FIRST = 8, SHADES = 240 };

static const uint32_t plain_colours[] = {0xFFFFFF, 0x222222, 0x767676, 0xE4E4E4};
static const uint32_t shades[] = {0x05060F, 0x13234F, 0x2B4F8C, 0x5D8DBF, 0xA9C6D9,
                                  0xF0E2C0, 0xFFD58A, 0xFFF6DC, 0xFFFFFF};
static const double dark = 35, knee = 40, bright = 3000; /* counts */

typedef struct Image {
  int columns, rows;
  uint8_t *bytes; /* 16 bits for each pixel, high byte first, rows from the bottom */
  char object[TEXT_ROOM], date[TEXT_ROOM], filter[TEXT_ROOM];
  double exposure; /* seconds */
} Image;

/* ---- The file ---------------------------------------------------------------------------- */

static int whole_keyword(const char *keyword) {
  int32_t value = 0, type = 1, status = 0;
  double unused = 0;
  qqfits3(keyword, &value, &unused, &type, &status);
  if (status != 0) fail("the file has no whole number %s", keyword);
  return value;
}

static double real_keyword(const char *keyword) {
  int32_t unused = 0, type = 2, status = 0;
  double value = 0;
  qqfits3(keyword, &unused, &value, &type, &status);
  if (status != 0) fail("the file has no number %s", keyword);
  return value;
}

/* Without the blanks that fill it up. */
static void text_keyword(const char *keyword, char *text) {
  int32_t size = TEXT_ROOM, status = 0;
  qqfits5(keyword, text, &size, &status);
  if (status != 0) fail("the file has no text %s", keyword);
  for (size_t end = strlen(text); end > 0 && text[end - 1] == ' '; end--)
    text[end - 1] = '\0';
}

static void read_pixels(Image *image) {
  int32_t size = 0, bytes = 0;
  qqfits4(NULL, &size, &bytes);
  if (bytes != 2 * image->columns * image->rows) fail("the data are not the pixels of an image");
  image->bytes = malloc((size_t)bytes);
  if (image->bytes == NULL) fail("no memory for %d bytes", bytes);
  qqfits4(image->bytes, &bytes, &size);
  if (size != bytes) fail("the file ends before its data");
}

static Image read_image(const char *file) {
  Image image;
  int32_t status = 0;
  qqfits1(file, &status);
  if (status != 0) fail("%s cannot be read (status %d)", file, status);
  if (whole_keyword("BITPIX") != 16 || whole_keyword("NAXIS") != 2)
    fail("an image with 16 bits for each pixel is wanted");
  image.columns = whole_keyword("NAXIS1");
  image.rows = whole_keyword("NAXIS2");
  if (image.columns < 2 || image.columns > MOST || image.rows < 2 || image.rows > MOST)
    fail("an image of %d by %d pixels is too large or too small", image.columns, image.rows);
  text_keyword("OBJECT", image.object);
  text_keyword("DATE-OBS", image.date);
  text_keyword("FILTER", image.filter);
  image.exposure = real_keyword("EXPTIME");
  read_pixels(&image);
  qqfits2(&status);
  if (status != 0) fail("%s was not open", file);
  return image;
}

/* ---- The picture ------------------------------------------------------------------------- */

static double inverse_sinh(double x) {
  return log(x + sqrt(x * x + 1));
}

/* Where a number of counts stands between the first shade, 0, and behind the last, 1. */
static double stretched(double counts) {
  if (counts <= dark) return 0;
  double part = inverse_sinh((counts - dark) / knee) / inverse_sinh((bright - dark) / knee);
  return part < 1 ? part : 1 - 1e-9;
}

static double pixel(const Image *image, int column, int row) {
  const uint8_t *at = image->bytes + 2 * (column + row * image->columns);
  return stretched((int16_t)(at[0] << 8 | at[1]));
}

static double mixed(double from, double to, double part) {
  return from + (to - from) * part;
}

/* Between the middles of the pixels; beyond the outermost ones nothing changes. */
static double brightness(const Image *image, double column, double row) {
  column = column < 0 ? 0 : column > image->columns - 1 ? image->columns - 1 : column;
  row = row < 0 ? 0 : row > image->rows - 1 ? image->rows - 1 : row;
  int c = column < image->columns - 1 ? (int)column : image->columns - 2;
  int r = row < image->rows - 1 ? (int)row : image->rows - 2;
  return mixed(mixed(pixel(image, c, r), pixel(image, c + 1, r), column - c),
               mixed(pixel(image, c, r + 1), pixel(image, c + 1, r + 1), column - c), row - r);
}

static void draw_image(const Axes *axes, const Image *image) {
  static uint8_t line[MOST * PER_PIXEL];
  for (int y = 0; y < image->rows * PER_PIXEL; y++) {
    for (int x = 0; x < image->columns * PER_PIXEL; x++) {
      double shade = brightness(image, (x + 0.5) / PER_PIXEL - 0.5, (y + 0.5) / PER_PIXEL - 0.5);
      line[x] = (uint8_t)(FIRST + (int)(shade * SHADES));
    }
    qqvrow(line, axes->left, axes->bottom - 1 - y, image->columns * PER_PIXEL);
  }
}

/* The bar of the shades, marked where the counts stand. */
static void draw_counts(int left, int top, int bottom) {
  static const int marks[] = {35, 50, 100, 200, 500, 1000, 2000};
  char text[32];
  for (int y = top; y <= bottom; y++)
    qqvfll(left, y, left + 40, y, FIRST + (bottom - y) * SHADES / (bottom - top + 1));
  qqvclr(INK);
  for (int i = 0; i < (int)(sizeof marks / sizeof *marks); i++) {
    int y = bottom - (int)floor(stretched(marks[i]) * (bottom - top) + 0.5);
    snprintf(text, sizeof text, "%d", marks[i]);
    draw_text(left + 60, y + 10, 20, LEFT, text);
    set_pen(2, BUTT_CAP, MITER_JOIN);
    qqvlin(left + 40, y, left + 50, y);
  }
  draw_text(left, top - 28, 22, LEFT, "counts");
}

int main(int argc, char **argv) {
  if (argc != 3) fail("usage: galaxy image.fits out.png");
  Image image = read_image(argv[1]);
  uint32_t palette[256] = {0};
  for (int i = 0; i < 4; i++)
    palette[i] = plain_colours[i];
  blend_colours(palette + FIRST, SHADES, shades, sizeof shades / sizeof *shades);
  int wide = image.columns * PER_PIXEL, high = image.rows * PER_PIXEL;
  int width = wide + 360, height = high + 220;
  Axes axes = {130, 110, 130 + wide, 110 + high, 0.5, image.columns + 0.5, 0.5, image.rows + 0.5,
               100, 100};
  char title[4 * TEXT_ROOM];
  snprintf(title, sizeof title, "%s on %s, %.0f seconds in filter %s", image.object, image.date,
           image.exposure, image.filter);
  open_palette_page(width, height, palette);
  draw_axes(&axes, title, "column", "row");
  draw_image(&axes, &image);
  draw_counts(axes.right + 50, axes.top, axes.bottom);
  save_palette_png(argv[2], width, height, palette);
  free(image.bytes);
  qqwfree();
  return 0;
}
