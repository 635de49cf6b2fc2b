/* SPDX-License-Identifier: MIT
 *
 * All markers with their numbers: markers out.png
 */
#include <stdio.h>

#include "axes.h"

enum {
  WIDTH = 1600,
  HEIGHT = 1000,
  COLUMNS = 6,
  MARKERS = 24,
  CELL_WIDTH = 250,
  CELL_HEIGHT = 212
};

static const char *const names[MARKERS] = {"square",
                                           "octagon",
                                           "triangle",
                                           "plus",
                                           "cross",
                                           "diamond",
                                           "triangle down",
                                           "square, cross",
                                           "plus, cross",
                                           "diamond, plus",
                                           "octagon, plus",
                                           "both triangles",
                                           "square, plus",
                                           "octagon, cross",
                                           "square, triangle",
                                           "circle",
                                           "filled square",
                                           "filled octagon",
                                           "filled triangle",
                                           "filled diamond",
                                           "filled tri. down",
                                           "disc",
                                           "half circle",
                                           "half disc"};

int main(int argc, char **argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: markers out.png\n");
    return 2;
  }
  open_page(WIDTH, HEIGHT);
  qqvclr(INK);
  draw_text(50, 80, 30, LEFT, "The markers of qqvsym");
  for (int marker = 0; marker < MARKERS; marker++) {
    int x = 50 + marker % COLUMNS * CELL_WIDTH, y = 130 + marker / COLUMNS * CELL_HEIGHT;
    char number[16];
    snprintf(number, sizeof number, "%d", marker);
    qqvfll(x, y, x + CELL_WIDTH - 14, y + CELL_HEIGHT - 14, COLOUR(0xF6F6F6));
    qqvclr(marker < 16 || marker == 22 ? BLUE : VERMILION);
    set_pen(4, BUTT_CAP, MITER_JOIN);
    qqvsym(marker, x + 118, y + 84, 80);
    set_pen(1, BUTT_CAP, MITER_JOIN);
    qqvsym(marker, x + 206, y + 84, 20);
    qqvclr(INK);
    draw_text(x + 18, y + 40, 24, LEFT, number);
    qqvclr(GREY);
    draw_text(x + 118, y + 176, 18, CENTRE, names[marker]);
  }
  save_png(argv[1], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}
