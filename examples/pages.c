/* SPDX-License-Identifier: MIT
 *
 * Several windows and pages: pages out1.png out2.png
 *
 * Two windows side by side show Lissajous figures, page by page; the right button turns the page.
 * The last page of each window is written.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum { SIDE = 420, PAGES = 3 };

static void open_second(int device) {
  int32_t page = 1, placement = 2, x = 0, y = 0, w = SIDE, h = SIDE, actual_w = 0, actual_h = 0;
  qqwopn(device, &page, &page, &placement, &x, &y, &w, &h, &actual_w, &actual_h);
}

static void draw_figure(int a, int b, double phase, int colour) {
  char text[40];
  qqwers();
  snprintf(text, sizeof text, "%d : %d", a, b);
  plot_colour(INK);
  draw_text(SIDE / 2, 40, 20, CENTRE, text);
  plot_colour(colour);
  set_pen(3, ROUND_CAP, ROUND_JOIN);
  for (int i = 0; i <= 600; i++) {
    double t = i * 3.14159265358979323846 / 300;
    int x = (int)floor(SIDE / 2 + 160 * sin(a * t + phase) + 0.5);
    int y = (int)floor(SIDE / 2 + 20 + 160 * sin(b * t) + 0.5);
    plot_pen(x, y, i == 0 ? 3 : 2);
  }
}

int main(int argc, char **argv) {
  if (argc != 3) fail("usage: pages out1.png out2.png");
  open_window(74, SIDE, SIDE);
  open_second(73);
  for (int page = 0; page < PAGES; page++) {
    for (int32_t number = 2; number <= 3; number++) {
      qqwsel(number);
      draw_figure(page + 1, page + number, number == 2 ? 0.8 : 1.5707963,
                  number == 2 ? BLUE : GREEN);
    }
    if (page + 1 < PAGES) qqwnnp();
  }
  for (int32_t number = 2; number <= 3; number++) {
    qqwsel(number);
    save_window(argv[number - 1], SIDE, SIDE);
  }
  qqwfin(0);
  return 0;
}
