/* SPDX-License-Identifier: MIT
 *
 * Digitising points on a picture: digitise picture.png out.png
 *
 * Shows the picture in a window and asks for points (left button, the right one ends), a
 * rectangle and a polygon; prints what was picked, one `what x y` a line, and writes the picture
 * with the picks on it.
 */
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 450, HEIGHT = 301, CAPACITY = 200 };

static void print_points(const char *what, const int32_t *x, const int32_t *y, int32_t count) {
  for (int32_t i = 0; i < count; i++)
    printf("%s %d %d\n", what, (int)x[i], (int)y[i]);
}

static void show_picture(const char *file) {
  int32_t device = 72, width = WIDTH, height = HEIGHT, zero = 0, status = 0;
  qqwimg(0, &status); /* pixels go into the window's bitmap */
  qqpipng(file, &device, NULL, &width, &height, &zero, &zero, &status);
  if (status < 0) fail("%s cannot be read (status %d)", file, (int)status);
  qqwimg(1, &status);
}

static void ask_points(int32_t *x, int32_t *y) {
  int32_t count = 0, overflow = 0;
  qqwtit("Click points; the right button ends");
  qqwcu1(x, y, CAPACITY, &count, &overflow);
  print_points("point", x, y, count);
  if (overflow != 0) fprintf(stderr, "only %d points were kept\n", CAPACITY);
  plot_colour(VERMILION);
  for (int32_t i = 0; i < count; i++)
    qqwsym(8, x[i], y[i], 12);
  qqwsbf();
}

static void ask_rectangle(void) {
  int32_t x[2] = {0, 0}, y[2] = {0, 0};
  qqwtit("Drag a rectangle");
  qqwcu5(&x[0], &y[0], &x[1], &y[1]);
  print_points("corner", x, y, 2);
  plot_colour(BLUE);
  plot_pen(x[0], y[0], 3);
  plot_pen(x[1], y[0], 2);
  plot_pen(x[1], y[1], 2);
  plot_pen(x[0], y[1], 2);
  plot_pen(x[0], y[0], 2);
  qqwsbf();
}

static void ask_polygon(int32_t *x, int32_t *y) {
  int32_t count = 0, overflow = 0;
  qqwtit("Drag the sides of a polygon; the right button ends");
  qqwcu7(x, y, CAPACITY, &count, &overflow);
  print_points("polygon", x, y, count);
  plot_colour(GREEN);
  for (int32_t i = 0; i <= count && count > 0; i++)
    plot_pen(x[i % count], y[i % count], i == 0 ? 3 : 2);
  qqwsbf();
}

int main(int argc, char **argv) {
  static int32_t x[CAPACITY], y[CAPACITY];
  if (argc != 3) fail("usage: digitise picture.png out.png");
  open_window(72, WIDTH, HEIGHT);
  show_picture(argv[1]);
  qqwsbf();
  ask_points(x, y);
  ask_rectangle();
  ask_polygon(x, y);
  save_window(argv[2], WIDTH, HEIGHT);
  qqwfin(3);
  return 0;
}
