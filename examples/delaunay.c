/* SPDX-License-Identifier: MIT
 *
 * Values at scattered places, filled in between: delaunay land.csv zones.csv out.png
 *
 * How far the clocks of each time zone's principal place are ahead of the sun. The places are
 * joined to triangles, and each pixel of a triangle gets the value of the plane through its
 * corners.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1800, HEIGHT = 1010, MAP_WIDTH = 1440, MAP_HEIGHT = 720, MAX_PLACES = 500 };
enum { PAPER, TEXT, FRAME, MARKS, MESH, COAST, FIRST_VALUE = 8, VALUES = 240 };
enum { LOWEST = -80, HIGHEST = 160, BAND = 10 }; /* minutes */

static const uint32_t plain_colours[] = {0xFFFFFF, 0x222222, 0x767676,
                                         0xE4E4E4, 0x8C8C8C, 0x3A3A3A};
static const uint32_t value_colours[] = {0x1F4E8C, 0x4E86C0, 0x9CC3E2, 0xF4F4EE, 0xFBD9A0,
                                         0xF4A75C, 0xDB6B35, 0xB03A23, 0x7A1A1C};

/* With room for the corners of the triangle around all places. */
static double longitude[MAX_PLACES + 3], latitude[MAX_PLACES + 3], ahead[MAX_PLACES];
static int32_t corners[3][2 * MAX_PLACES + 1];
static int places;

/* Where the sun stands in the south at 12 o'clock, the clock is 0 minutes ahead. */
static double minutes_ahead(double offset, double east) {
  double minutes = offset - 4 * east;
  while (minutes > 720)
    minutes -= 1440;
  while (minutes < -720)
    minutes += 1440;
  return minutes;
}

static void read_places(const char *file) {
  char line[200];
  double y, x, offset;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (places < MAX_PLACES && fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%*[^,],%lf,%lf,%lf", &y, &x, &offset) != 3 || y < -60) continue;
    latitude[places] = y;
    longitude[places] = x;
    ahead[places++] = minutes_ahead(offset, x);
  }
  fclose(stream);
}

static int colour_of(double minutes) {
  double banded = floor(minutes / BAND) * BAND + BAND / 2.0;
  double part = (banded - LOWEST) / (HIGHEST - LOWEST);
  int entry = (int)(part * VALUES);
  return FIRST_VALUE + (entry < 0 ? 0 : entry >= VALUES ? VALUES - 1 : entry);
}

/* The first and last column between the sides of a triangle in a row, or an empty range. */
static void columns_of_row(const double *x, const double *y, double row, int *first, int *last) {
  double low = 1e9, high = -1e9;
  for (int a = 0; a < 3; a++) {
    int b = (a + 1) % 3;
    if ((y[a] <= row) == (y[b] <= row)) continue;
    double at = x[a] + (x[b] - x[a]) * (row - y[a]) / (y[b] - y[a]);
    low = at < low ? at : low;
    high = at > high ? at : high;
  }
  *first = low > high ? 1 : (int)ceil(low);
  *last = low > high ? 0 : (int)ceil(high) - 1;
}

static void fill_triangle(const double *x, const double *y, const double *values) {
  static uint8_t pixels[MAP_WIDTH + 1];
  double ax = x[1] - x[0], ay = y[1] - y[0], bx = x[2] - x[0], by = y[2] - y[0];
  double area = ax * by - ay * bx, av = values[1] - values[0], bv = values[2] - values[0];
  double per_x = (av * by - bv * ay) / area, per_y = (bv * ax - av * bx) / area;
  double top = fmin(y[0], fmin(y[1], y[2])), bottom = fmax(y[0], fmax(y[1], y[2]));
  for (int row = (int)ceil(top); row <= bottom; row++) {
    int first, last;
    columns_of_row(x, y, row, &first, &last);
    for (int column = first; column <= last; column++) {
      double value = values[0] + (column - x[0]) * per_x + (row - y[0]) * per_y;
      pixels[column - first] = (uint8_t)colour_of(value);
    }
    if (first <= last) qqvrow(pixels, first, row, last - first + 1);
  }
}

static void fill_mesh(const Axes *axes, int triangles) {
  for (int i = 0; i < triangles; i++) {
    double x[3], y[3], values[3];
    for (int k = 0; k < 3; k++) {
      int place = corners[k][i] - 1; /* numbers count from 1 */
      x[k] = axes_x(axes, longitude[place]);
      y[k] = axes_y(axes, latitude[place]);
      values[k] = ahead[place];
    }
    fill_triangle(x, y, values);
  }
}

static void draw_mesh(const Axes *axes, int triangles) {
  qqvclr(MESH);
  set_pen(1, BUTT_CAP, MITER_JOIN);
  for (int i = 0; i < triangles; i++) {
    for (int k = 0; k < 4; k++) {
      int place = corners[k % 3][i] - 1;
      qqvdrw(column_of(axes, longitude[place]), row_of(axes, latitude[place]), k == 0 ? 3 : 2);
    }
  }
}

static void draw_coasts(const Axes *axes, const char *file) {
  char line[200];
  double x, y;
  int code = 3;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  qqvclr(COAST);
  set_pen(2, ROUND_CAP, ROUND_JOIN);
  while (fgets(line, sizeof line, stream) != NULL) {
    int place = sscanf(line, "%lf,%lf", &x, &y) == 2;
    if (place) qqvdrw(column_of(axes, x), row_of(axes, y), code);
    code = place ? 2 : 3;
  }
  fclose(stream);
}

static void draw_places(const Axes *axes) {
  for (int i = 0; i < places; i++) {
    int x = column_of(axes, longitude[i]), y = row_of(axes, latitude[i]);
    qqvclr(PAPER);
    qqvsym(21, x, y, 9);
    qqvclr(TEXT);
    qqvsym(21, x, y, 6);
  }
}

int main(int argc, char **argv) {
  uint32_t palette[256] = {0};
  int32_t triangles, status;
  if (argc != 4) {
    fprintf(stderr, "usage: delaunay land.csv zones.csv out.png\n");
    return 2;
  }
  for (int i = 0; i < 6; i++)
    palette[i] = plain_colours[i];
  /* White stands at 0, a third of the way up. */
  blend_colours(palette + FIRST_VALUE, VALUES / 3, value_colours, 4);
  blend_colours(palette + FIRST_VALUE + VALUES / 3, VALUES - VALUES / 3, value_colours + 3, 6);
  read_places(argv[2]);
  qqdlau(longitude, latitude, places, corners[0], corners[1], corners[2], 2 * places + 1,
         &triangles, &status);
  if (status != 0) fail("the places cannot be triangulated: status %d", (int)status);
  Axes axes = {120, 130, 120 + MAP_WIDTH, 130 + MAP_HEIGHT, -180, 180, -90, 90, 60, 30};
  open_palette_page(WIDTH, HEIGHT, palette);
  draw_axes(&axes, "How far clocks are ahead of the sun (standard time)", "longitude (°)", NULL);
  set_clip(axes.left + 1, axes.top + 1, axes.right - 1, axes.bottom - 1);
  fill_mesh(&axes, triangles);
  draw_mesh(&axes, triangles);
  draw_coasts(&axes, argv[1]);
  draw_places(&axes);
  set_clip(0, 0, WIDTH - 1, HEIGHT - 1);
  draw_colour_bar(axes.right + 60, axes.top, axes.bottom, FIRST_VALUE, VALUES, LOWEST, HIGHEST,
                  "minutes");
  save_palette_png(argv[3], WIDTH, HEIGHT, palette);
  qqwfree();
  return 0;
}
