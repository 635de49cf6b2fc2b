/* SPDX-License-Identifier: MIT
 *
 * A filled curve with a gradient: sunspots sunspots.csv out.png
 *
 * The area is drawn once for each band of the page, with the clip rectangle set to the band, in a
 * colour of its own.
 */
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1600, HEIGHT = 800, MAX_YEARS = 500, BANDS = 128 };

static const uint32_t sun_colours[] = {0xB33C00, 0xE8710A, 0xF9B233, 0xFFE9A8};

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

static void draw_area(const Axes *axes, const double *xs, const double *ys, int count) {
  uint32_t colours[BANDS];
  blend_colours(colours, BANDS, sun_colours, 4);
  for (int band = 0; band < BANDS; band++) {
    int height = axes->bottom - axes->top;
    int top = axes->top + height * band / BANDS;
    set_clip(axes->left, top, axes->right, axes->top + height * (band + 1) / BANDS - 1);
    qqvclr((int32_t)COLOUR(colours[band]));
    fill_under(xs, ys, count, axes->bottom - 2);
  }
  set_clip(0, 0, WIDTH - 1, HEIGHT - 1);
}

int main(int argc, char **argv) {
  static double years[MAX_YEARS], spots[MAX_YEARS], xs[MAX_YEARS], ys[MAX_YEARS];
  if (argc != 3) {
    fprintf(stderr, "usage: sunspots sunspots.csv out.png\n");
    return 2;
  }
  int count = read_years(argv[1], years, spots);
  Axes axes = {170, 110, WIDTH - 50, HEIGHT - 130, 1695, 2013, 0, 200, 0, 0};
  open_page(WIDTH, HEIGHT);
  draw_axes(&axes, "Three hundred years of sunspots", "year", "yearly mean number");
  for (int i = 0; i < count; i++) {
    xs[i] = axes_x(&axes, years[i]);
    ys[i] = axes_y(&axes, spots[i]);
  }
  draw_area(&axes, xs, ys, count);
  qqvclr(COLOUR(0x8A2D00));
  set_pen(2, BUTT_CAP, MITER_JOIN);
  for (int i = 0; i < count; i++)
    qqvdrw(column_of(&axes, years[i]), row_of(&axes, spots[i]), i == 0 ? 3 : 2);
  save_png(argv[2], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}
