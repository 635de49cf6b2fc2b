/* SPDX-License-Identifier: MIT
 *
 * A world map with the places that time zones are named after: worldmap land.csv zones.csv out.png
 *
 * The page is a palette raster: the colours below have names, the others stand for the offsets from
 * UTC.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum {
  WIDTH = 1600,
  HEIGHT = 1000,
  CENTRE_X = 800,
  CENTRE_Y = 480,
  SCALE = 278,
  MAX_CORNERS = 4000
};
enum { PAPER, SEA, GRATICULE, GROUND, BORDER, TEXT, FIRST_OFFSET };
enum { LOWEST = -11, OFFSETS = 26 }; /* whole hours from UTC */

static const uint32_t plain_colours[] = {0xFFFFFF, 0xE3EEF4, 0xC9DBE6,
                                         0xBFBDB6, 0xFFFFFF, 0x222222};
static const uint32_t offset_colours[] = {0x0D0887, 0x6A00A8, 0xB12A90,
                                          0xE16462, 0xFCA636, 0xF0F921};

static void project(double longitude, double latitude, double *x, double *y) {
  equal_earth(longitude, latitude, x, y);
  *x = CENTRE_X + SCALE * *x;
  *y = CENTRE_Y - SCALE * *y;
}

static void move_to(double longitude, double latitude, int code) {
  double x, y;
  project(longitude, latitude, &x, &y);
  qqvdrw((int)floor(x + 0.5), (int)floor(y + 0.5), code);
}

static void draw_sea(void) {
  double xs[362], ys[362];
  for (int i = 0; i <= 180; i++) {
    project(-180, i - 90, &xs[i], &ys[i]);
    project(180, 90 - i, &xs[181 + i], &ys[181 + i]);
  }
  qqvclr(SEA);
  fill_polygon(xs, ys, 362);
  qqvclr(GRATICULE);
  for (int latitude = -60; latitude <= 60; latitude += 30) {
    move_to(-180, latitude, 3);
    move_to(180, latitude, 2);
  }
  for (int longitude = -180; longitude <= 180; longitude += 30)
    for (int latitude = -90; latitude <= 90; latitude += 3)
      move_to(longitude, latitude, latitude == -90 ? 3 : 2);
}

static void draw_ring(const double *xs, const double *ys, int32_t corners) {
  qqvclr(GROUND);
  fill_polygon(xs, ys, corners);
  qqvclr(BORDER);
  for (int i = 0; i < corners; i++)
    qqvdrw((int)floor(xs[i] + 0.5), (int)floor(ys[i] + 0.5), i == 0 ? 3 : 2);
}

/* Each blank line ends a ring. */
static void draw_land(const char *file) {
  static double xs[MAX_CORNERS], ys[MAX_CORNERS];
  char line[200];
  double longitude, latitude;
  int32_t corners = 0;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  set_pen(1, BUTT_CAP, MITER_JOIN);
  while (fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%lf,%lf", &longitude, &latitude) == 2) {
      if (corners == MAX_CORNERS) fail("%s: a ring has too many corners", file);
      project(longitude, latitude, &xs[corners], &ys[corners]);
      corners++;
    } else if (corners > 0) {
      draw_ring(xs, ys, corners);
      corners = 0;
    }
  }
  fclose(stream);
}

static int offset_colour(double hours) {
  return FIRST_OFFSET + (int)floor(hours) - LOWEST;
}

static void draw_zones(const char *file) {
  char line[200];
  double longitude, latitude, minutes, x, y;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%*[^,],%lf,%lf,%lf", &latitude, &longitude, &minutes) != 3) continue;
    if (minutes < LOWEST * 60 || minutes >= (LOWEST + OFFSETS) * 60)
      fail("%s: %g minutes is no offset", file, minutes);
    project(longitude, latitude, &x, &y);
    qqvclr(TEXT);
    qqvsym(21, (int)floor(x + 0.5), (int)floor(y + 0.5), 18);
    qqvclr(offset_colour(minutes / 60));
    qqvsym(21, (int)floor(x + 0.5), (int)floor(y + 0.5), 13);
  }
  fclose(stream);
}

static void draw_key(void) {
  int left = CENTRE_X - OFFSETS * 21, top = HEIGHT - 110;
  for (int i = 0; i < OFFSETS; i++) {
    char text[16];
    snprintf(text, sizeof text, i + LOWEST > 0 ? "+%d" : "%d", i + LOWEST);
    qqvfll(left + i * 42, top, left + i * 42 + 39, top + 26, FIRST_OFFSET + i);
    qqvclr(TEXT);
    if ((i + LOWEST) % 2 == 0) draw_text(left + i * 42 + 20, top + 58, 18, CENTRE, text);
  }
  draw_text(CENTRE_X, top - 18, 20, CENTRE, "standard time less UTC, in hours");
}

int main(int argc, char **argv) {
  uint32_t palette[256] = {0};
  if (argc != 4) {
    fprintf(stderr, "usage: worldmap land.csv zones.csv out.png\n");
    return 2;
  }
  for (int i = 0; i < FIRST_OFFSET; i++)
    palette[i] = plain_colours[i];
  blend_colours(palette + FIRST_OFFSET, OFFSETS, offset_colours, 6);
  open_palette_page(WIDTH, HEIGHT, palette);
  draw_sea();
  draw_land(argv[1]);
  draw_zones(argv[2]);
  draw_key();
  qqvclr(TEXT);
  draw_text(60, 70, 30, LEFT, "Places that time zones are named after");
  save_palette_png(argv[3], WIDTH, HEIGHT, palette);
  qqwfree();
  return 0;
}
