/* SPDX-License-Identifier: MIT
 *
 * A line chart with its text in many languages: suncycles sunspots.csv out.png [font.ttf]
 *
 * The text comes from the library's bitmap fonts. Where a TrueType font is named, it comes from the
 * outlines of that, and since they have no pixels of their own, the picture is twice as large.
 */
#include <stdio.h>

#include "lettering.h"

enum {
  WIDTH = 1200,
  HEIGHT = 760,
  MAX_YEARS = 500,
  TITLE = 18,
  LABEL = 14,
  NUMBER = 12,
  NOTE = 10
};

static int has_outlines;
static int unit = 1; /* pixels of the picture for one of the layout */

/* A font by the height of its capitals. */
static void set_size(int size) {
  if (has_outlines)
    set_outline_size(size * unit);
  else
    use_bitmap_font(size == TITLE ? COMPLX : size == NOTE ? SIMPLX : HELVE, size);
}

static int read_years(const char *file, double *years, double *spots) {
  char line[200];
  int count = 0;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (count < MAX_YEARS && fgets(line, sizeof line, stream) != NULL)
    if (sscanf(line, "%lf,%lf", &years[count], &spots[count]) == 2) count++;
  fclose(stream);
  if (count < 2) fail("%s: no years in it", file);
  return count;
}

static void draw_frame(const Axes *axes) {
  char text[32];
  set_pen(unit, BUTT_CAP, MITER_JOIN);
  set_size(NUMBER);
  for (int value = 0; value <= 200; value += 25) {
    int row = row_of(axes, value);
    qqvclr(PALE);
    qqvlin(axes->left, row, axes->right, row);
    snprintf(text, sizeof text, "%d", value);
    write_text(axes->left - 10 * unit, row + NUMBER / 2 * unit, 0, RIGHT, INK, text);
  }
  for (int year = 1700; year <= 2000; year += 20) {
    int column = column_of(axes, year);
    qqvclr(PALE);
    qqvlin(column, axes->top, column, axes->bottom);
    snprintf(text, sizeof text, "%d", year);
    write_text(column + 6 * unit, axes->bottom + 14 * unit, 45, RIGHT, INK, text);
  }
}

static void draw_titles(const Axes *axes) {
  double middle = (axes->left + axes->right) / 2.0;
  double centre = (axes->top + axes->bottom) / 2.0;
  set_size(TITLE);
  write_text(middle, 44 * unit, 0, CENTRE, INK,
             "Sunspots - Sonnenflecken - taches solaires - plamy słoneczne");
  write_text(middle, 80 * unit, 0, CENTRE, INK,
             "sluneční skvrny - güneş lekeleri - napfoltok - solfläckar");
  set_size(LABEL);
  write_text(middle, (HEIGHT - 26) * unit, 0, CENTRE, INK,
             "year - année - año - rok - yıl - év - år");
  write_text(48 * unit, centre, 90, CENTRE, INK, "yearly mean relative number, Zürich");
  write_text((WIDTH - 34) * unit, centre, 270, CENTRE, INK,
             "średnia roczna - évi átlag - yıllık ortalama");
}

static void draw_line(const Axes *axes, const double *years, const double *spots, int count) {
  qqvclr(VERMILION);
  set_pen(2 * unit, ROUND_CAP, ROUND_JOIN);
  for (int i = 0; i < count; i++)
    qqvdrw(column_of(axes, years[i]), row_of(axes, spots[i]), i == 0 ? 3 : 2);
}

/* The year at each high maximum, running upward from its peak. */
static void name_peaks(const Axes *axes, const double *years, const double *spots, int count) {
  char text[32];
  set_size(NOTE);
  for (int i = 5; i + 5 < count; i++) {
    int highest = i;
    for (int j = i - 5; j <= i + 5; j++)
      if (spots[j] > spots[highest]) highest = j;
    if (highest != i || spots[i] < 100) continue;
    snprintf(text, sizeof text, "%.0f", years[i]);
    write_text(column_of(axes, years[i]) + NOTE / 2 * unit, row_of(axes, spots[i]) - 8 * unit, 90,
               LEFT, BLUE, text);
  }
}

int main(int argc, char **argv) {
  static double years[MAX_YEARS], spots[MAX_YEARS];
  if (argc != 3 && argc != 4) {
    fprintf(stderr, "usage: suncycles sunspots.csv out.png [font.ttf]\n");
    return 2;
  }
  int count = read_years(argv[1], years, spots);
  has_outlines = argc == 4;
  unit = has_outlines ? 2 : 1;
  Axes axes = {.left = 120 * unit,
               .top = 110 * unit,
               .right = (WIDTH - 80) * unit,
               .bottom = (HEIGHT - 120) * unit,
               .x_first = 1695,
               .x_last = 2013,
               .y_first = 0,
               .y_last = 225};
  open_page(WIDTH * unit, HEIGHT * unit);
  if (has_outlines) use_outlines(argv[3]);
  draw_frame(&axes);
  draw_titles(&axes);
  draw_line(&axes, years, spots, count);
  name_peaks(&axes, years, spots, count);
  save_png(argv[2], WIDTH * unit, HEIGHT * unit);
  qqttf3();
  qqwfree();
  return 0;
}
