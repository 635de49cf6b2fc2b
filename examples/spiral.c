/* SPDX-License-Identifier: MIT
 *
 * Months round a circle, years as colours: spiral el-nino.csv out.png
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include "axes.h"

enum { WIDTH = 1300, HEIGHT = 1300, X = 650, Y = 700, MONTHS = 12, MAX_YEARS = 100 };
enum { COLDEST = 17, PER_DEGREE = 42 };

static const uint32_t year_colours[] = {0x440154, 0x414487, 0x2A788E, 0x22A884, 0x7AD151, 0xFDE725};

static int read_years(const char *file, int *years, double values[][MONTHS]) {
  char line[400];
  int count = 0;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (count < MAX_YEARS && fgets(line, sizeof line, stream) != NULL) {
    char *at = line;
    years[count] = (int)strtol(line, &at, 10);
    if (at == line) continue;
    for (int month = 0; month < MONTHS; month++) {
      if (*at != ',') fail("%s: year %d has too few months", file, years[count]);
      values[count][month] = strtod(at + 1, &at);
    }
    count++;
  }
  fclose(stream);
  if (count < 2) fail("%s: no years in it", file);
  return count;
}

/* January is up, and the months go on clockwise. */
static void place(double month, double radius, int *x, int *y) {
  double angle = month * 3.14159265358979323846 / 6;
  *x = X + (int)floor(radius * sin(angle) + 0.5);
  *y = Y - (int)floor(radius * cos(angle) + 0.5);
}

static void draw_grid(void) {
  static const char *const names[MONTHS] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  int x, y;
  for (int month = 0; month < MONTHS; month++) {
    qqvclr(PALE);
    set_pen(1, BUTT_CAP, MITER_JOIN);
    place(month, (20 - COLDEST) * PER_DEGREE, &x, &y);
    qqvdrw(x, y, 3);
    place(month, (30 - COLDEST) * PER_DEGREE, &x, &y);
    qqvdrw(x, y, 2);
    place(month, (30 - COLDEST) * PER_DEGREE + 32, &x, &y);
    qqvclr(INK);
    draw_text(x, y + 10, 20, CENTRE, names[month]);
  }
}

static void draw_circles(void) {
  for (int degrees = 20; degrees <= 30; degrees += 5) {
    char text[16];
    int radius = (degrees - COLDEST) * PER_DEGREE;
    snprintf(text, sizeof text, "%d °C", degrees);
    qqvclr(COLOUR(0xC4C4C4));
    set_pen(2, BUTT_CAP, MITER_JOIN);
    qqvsym(15, X, Y, 2 * radius);
    int x, y, half = text_width(20, text) / 2 + 8;
    place(9.5, radius, &x, &y);
    qqvfll(x - half, y - 16, x + half, y + 16, WHITE);
    qqvclr(GREY);
    draw_text(x, y + 10, 20, CENTRE, text);
  }
}

int main(int argc, char **argv) {
  static int years[MAX_YEARS];
  static double values[MAX_YEARS][MONTHS];
  uint32_t colours[MAX_YEARS];
  if (argc != 3) {
    fprintf(stderr, "usage: spiral el-nino.csv out.png\n");
    return 2;
  }
  int count = read_years(argv[1], years, values);
  blend_colours(colours, count, year_colours, 6);
  open_page(WIDTH, HEIGHT);
  draw_grid();
  for (int i = 0; i < count * MONTHS; i++) {
    int x, y, year = i / MONTHS;
    if (i % MONTHS == 0) {
      qqvclr((int32_t)COLOUR(colours[year]));
      set_pen(4, ROUND_CAP, ROUND_JOIN);
    }
    place(i, (values[year][i % MONTHS] - COLDEST) * PER_DEGREE, &x, &y);
    qqvdrw(x, y, i == 0 ? 3 : 2);
  }
  draw_circles();
  qqvclr(INK);
  draw_text(60, 70, 30, LEFT, "Sea surface temperature off Peru");
  for (int i = 0; i < count; i++)
    qqvfll(60 + i * 6, 100, 65 + i * 6, 124, (int32_t)COLOUR(colours[i]));
  for (int i = 0; i < count; i += 20) {
    char text[16];
    snprintf(text, sizeof text, "%d", years[i]);
    qqvclr(INK);
    draw_text(63 + i * 6, 156, 18, i == 0 ? LEFT : CENTRE, text);
  }
  save_png(argv[2], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}
