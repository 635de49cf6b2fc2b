/* SPDX-License-Identifier: MIT
 *
 * A PDF document of four pages, with bookmarks:
 *
 *   report co2.csv el-nino-years.csv land.csv zones.csv out.pdf
 *
 * Two line charts, a map whose key is an image, and a page that shows all fonts and one of the
 * curves again, embedded as a form.
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "pdf_page.h"

enum {
  WIDTH = 842, /* A4, landscape */
  HEIGHT = 595,
  COLUMNS = 6,
  MAX_ROWS = 1000,
  MAX_FORM = 40000,
  MAP_X = 421,
  MAP_Y = 325,
  MAP_SCALE = 140,
  LOWEST = -11, /* hours from UTC, */
  OFFSETS = 26  /* and how many of them */
};

static const uint32_t offset_stops[] = {0x0D0887, 0x6A00A8, 0xB12A90, 0xE16462, 0xFCA636, 0xF0F921};
static const uint32_t series_colours[] = {0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00};

typedef struct Table {
  int rows;
  double values[MAX_ROWS][COLUMNS];
} Table;

/* Reads a file of numbers; what is not there is not a number. Lines that do not begin with a number
 * are passed over. */
static void read_table(Table *table, const char *file) {
  char line[400];
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  for (table->rows = 0; table->rows < MAX_ROWS && fgets(line, sizeof line, stream) != NULL;) {
    char *at = line, *end;
    double first = strtod(at, &end);
    if (end == at) continue;
    double *row = table->values[table->rows++];
    row[0] = first;
    for (int i = 1; i < COLUMNS; i++) {
      at = *end == ',' ? end + 1 : end;
      row[i] = strtod(at, &end);
      if (end == at) row[i] = NAN;
    }
  }
  fclose(stream);
  if (table->rows < 2) fail("%s: no numbers in it", file);
}

static void draw_heading(const char *title, const char *text) {
  pdf_fill_colour(0x222222);
  pdf_line_of_text(56, HEIGHT - 56, TIMES_BOLD, 24, title);
  pdf_line_of_text(58, HEIGHT - 76, TIMES_ITALIC, 12, text);
}

/* ---- Charts ------------------------------------------------------------------------------ */

static void draw_curve(const Table *table, const PdfAxes *axes, int column) {
  int down = 0;
  for (int row = 0; row < table->rows; row++) {
    double value = table->values[row][column];
    if (is_finite(value)) {
      double x = pdf_x(axes, table->values[row][0]), y = pdf_y(axes, value);
      if (!down) pdf_move(x, y);
      pdf_line(x, y); /* to where the pen is already: a dot, which the line goes on from */
    }
    down = is_finite(value);
  }
}

static void draw_carbon_dioxide(const Table *table) {
  PdfAxes axes = {100, 90, WIDTH - 60, HEIGHT - 110, 1957, 2003, 10, 310, 380, 10};
  add_bookmark(0, "Charts");
  add_bookmark(1, "Carbon dioxide");
  draw_heading("Carbon dioxide in air at Mauna Loa", "Monthly means, 1958 to 2001");
  draw_pdf_axes(&axes, "year", "parts per million");
  pdf_clip(axes.left, axes.bottom, axes.right, axes.top);
  pdf_line_colour(series_colours[0]);
  pdf_pen(1.5, ROUND_CAP, ROUND_JOIN);
  draw_curve(table, &axes, 1);
  pdf_end_clip();
}

static void draw_el_nino(const Table *table) {
  static const char *const names[] = {"mean, 1950 to 2010", "1982", "1983", "1997", "1998"};
  PdfAxes axes = {100, 90, WIDTH - 190, HEIGHT - 110, 0.7, 12.3, 1, 19, 30, 1};
  add_bookmark(1, "El Ni\361o");
  draw_heading("Sea surface off Peru in years of El Ni\303\261o", "Monthly means");
  draw_pdf_axes(&axes, "month", "degrees Celsius");
  for (int column = 1; column < COLUMNS; column++) {
    double y = axes.top - 10 - 22 * column;
    pdf_line_colour(series_colours[column - 1]);
    pdf_pen(column == 1 ? 4 : 2, ROUND_CAP, ROUND_JOIN);
    draw_curve(table, &axes, column);
    pdf_move(axes.right + 20, y);
    pdf_line(axes.right + 50, y);
    pdf_text(axes.right + 60, y - 3, 10, LEFT, names[column - 1]);
  }
}

/* ---- The map ----------------------------------------------------------------------------- */

static void project(double longitude, double latitude, double *x, double *y) {
  equal_earth(longitude, latitude, x, y);
  *x = MAP_X + MAP_SCALE * *x;
  *y = MAP_Y + MAP_SCALE * *y;
}

static void go_to(double longitude, double latitude, int first) {
  double x, y;
  project(longitude, latitude, &x, &y);
  if (first)
    pdf_move(x, y);
  else
    pdf_line(x, y);
}

static void draw_sea(void) {
  pdf_fill_colour(0xE3EEF4);
  for (int i = -90; i <= 90; i++)
    go_to(-180, i, i == -90);
  for (int i = 90; i >= -90; i--)
    go_to(180, i, 0);
  pdf_fill();
  pdf_line_colour(0xC9DBE6);
  pdf_pen(0.5, BUTT_CAP, ROUND_JOIN);
  for (int latitude = -60; latitude <= 60; latitude += 30) {
    go_to(-180, latitude, 1);
    go_to(180, latitude, 0);
  }
  for (int longitude = -150; longitude <= 150; longitude += 30)
    for (int latitude = -90; latitude <= 90; latitude += 3)
      go_to(longitude, latitude, latitude == -90);
}

/* Each line without numbers ends a ring. */
static void draw_land(const char *file) {
  char line[200];
  double longitude, latitude;
  int corners = 0;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  pdf_fill_colour(0xBFBDB6);
  while (fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%lf,%lf", &longitude, &latitude) == 2) {
      go_to(longitude, latitude, corners == 0);
      corners++;
    } else if (corners > 0) {
      pdf_fill();
      corners = 0;
    }
  }
  if (corners > 0) pdf_fill();
  fclose(stream);
}

/* A dot is a line without a length, with round caps. */
static void draw_places(const char *file, const uint32_t *colours) {
  char line[200];
  double longitude, latitude, minutes, x, y;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%*[^,],%lf,%lf,%lf", &latitude, &longitude, &minutes) != 3) continue;
    int offset = (int)floor(minutes / 60) - LOWEST;
    if (offset < 0 || offset >= OFFSETS) fail("%s: %g minutes is no offset", file, minutes);
    project(longitude, latitude, &x, &y);
    for (int ring = 0; ring < 2; ring++) {
      pdf_line_colour(ring == 0 ? 0x222222 : colours[offset]);
      pdf_pen(ring == 0 ? 6 : 4.5, ROUND_CAP, ROUND_JOIN);
      pdf_move(x, y);
      pdf_line(x, y);
    }
  }
  fclose(stream);
}

/* The colours of the key are an image of one row, which the viewer scales. */
static void draw_key(const uint32_t *colours) {
  uint8_t pixels[3 * OFFSETS];
  double step = 24, left = MAP_X - OFFSETS * step / 2, bottom = 84;
  for (int i = 0; i < OFFSETS; i++)
    for (int part = 0; part < 3; part++)
      pixels[3 * i + part] = (uint8_t)(colours[i] >> (16 - 8 * part) & 255);
  place_pdf_image(pixels, OFFSETS, 1, left, bottom, OFFSETS * step, 14);
  pdf_fill_colour(0x222222);
  for (int i = 0; i < OFFSETS; i++) {
    char text[16];
    snprintf(text, sizeof text, i + LOWEST > 0 ? "+%d" : "%d", i + LOWEST);
    pdf_text(left + (i + 0.5) * step, bottom - 13, 9, CENTRE, text);
  }
  pdf_text(MAP_X, bottom - 30, 10, CENTRE, "standard time less UTC, in hours");
}

static void draw_map(const char *land, const char *zones) {
  uint32_t colours[OFFSETS];
  blend_colours(colours, OFFSETS, offset_stops, 6);
  add_bookmark(0, "Map");
  draw_heading("Places that time zones are named after", "Equal Earth projection");
  draw_sea();
  draw_land(land);
  draw_places(zones, colours);
  draw_key(colours);
}

/* ---- Fonts and forms --------------------------------------------------------------------- */

static void draw_fonts(void) {
  static const char *const families[] = {"Times",
                                         "Helvetica",
                                         "Helvetica Narrow",
                                         "New Century Schoolbook",
                                         "Zapf Chancery",
                                         "Zapf Dingbats",
                                         "Courier",
                                         "Avant Garde",
                                         "Bookman",
                                         "Palatino",
                                         "Symbol"};
  static const int first[] = {0, 4, 8, 12, 16, 17, 18, 22, 26, 30, 34, FONTS};
  double y = HEIGHT - 112;
  add_bookmark(1, "All fonts");
  for (int family = 0; family < 11; family++, y -= 5)
    for (int font = first[family]; font < first[family + 1]; font++, y -= 12)
      pdf_line_of_text(56, y, font, 11, families[family]);
}

/* The curve as page content of its own, in a box of 1000 by 500. */
static int make_form(const Table *table, char *form) {
  PdfAxes box = {0, 0, 1000, 500, 1957, 2003, 10, 310, 380, 10};
  int length = snprintf(form, MAX_FORM, "0.9 0.95 1 rg 0 0 1000 500 re f\n0 0.45 0.7 RG 5 w 1 j\n");
  int down = 0;
  for (int row = 0; row < table->rows && length < MAX_FORM - 60; row++) {
    if (!is_finite(table->values[row][1])) continue;
    length += snprintf(form + length, 60, "%.1f %.1f %c\n", pdf_x(&box, table->values[row][0]),
                       pdf_y(&box, table->values[row][1]), down ? 'l' : 'm');
    down = 1;
  }
  return length + snprintf(form + length, 4, "S\n");
}

static void draw_forms(const Table *table) {
  static char form[MAX_FORM];
  int length = make_form(table, form);
  add_bookmark(1, "Embedded curves");
  embed_pdf_form(form, length, 1000, 500, 320, 290, 460, 200, 0);
  embed_pdf_form(form, length, 1000, 500, 320, 50, 100, 200, 1);
  embed_pdf_form(form, length, 1000, 500, 440, 50, 340, 200, 0);
}

int main(int argc, char **argv) {
  static Table carbon_dioxide, el_nino;
  if (argc != 6) {
    fprintf(stderr, "usage: report co2.csv el-nino-years.csv land.csv zones.csv out.pdf\n");
    return 2;
  }
  read_table(&carbon_dioxide, argv[1]);
  read_table(&el_nino, argv[2]);
  start_pdf(argv[5], WIDTH, HEIGHT, 0);
  draw_carbon_dioxide(&carbon_dioxide);
  new_pdf_page();
  draw_el_nino(&el_nino);
  new_pdf_page();
  draw_map(argv[3], argv[4]);
  new_pdf_page();
  add_bookmark(0, "Type and forms");
  draw_heading("Thirty-five fonts, and a curve three times", "A form is written for each place");
  draw_fonts();
  draw_forms(&carbon_dioxide);
  end_pdf();
  return 0;
}
