/* SPDX-License-Identifier: MIT
 *
 * Line widths, caps and joins in eight directions: pens out.png
 */
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1600, HEIGHT = 1710, LEFT_EDGE = 90, TOP_EDGE = 190, BLOCK = 490, WHEEL = 240 };

/* The compass in twelfths of a radius, so that the page needs no sine. */
static const int compass[16][2] = {{12, 0},  {11, 5},  {8, 8},   {5, 11},   {0, 12},  {-5, 11},
                                   {-8, 8},  {-11, 5}, {-12, 0}, {-11, -5}, {-8, -8}, {-5, -11},
                                   {0, -12}, {5, -11}, {8, -8},  {11, -5}};

static void draw_corner(int x, int y, int direction, int inner, int outer) {
  const int *left = compass[(direction + 15) % 16], *right = compass[(direction + 1) % 16];
  const int *tip = compass[direction];
  qqvdrw(x + left[0] * inner / 12, y + left[1] * inner / 12, 3);
  qqvdrw(x + tip[0] * outer / 12, y + tip[1] * outer / 12, 2);
  qqvdrw(x + right[0] * inner / 12, y + right[1] * inner / 12, 2);
}

/* Eight corners round a point, each with its course as a thin white line. */
static void draw_wheel(int x, int y, int width, int cap, int join) {
  for (int direction = 0; direction < 16; direction += 2) {
    qqvclr(direction % 4 == 0 ? BLUE : ORANGE);
    set_pen(width, cap, join);
    draw_corner(x, y, direction, 46, 94);
    qqvclr(WHITE);
    set_pen(1, BUTT_CAP, MITER_JOIN);
    if (width >= 8) draw_corner(x, y, direction, 46, 94);
  }
  char text[16];
  snprintf(text, sizeof text, "%d", width);
  qqvclr(INK);
  draw_text(x, y + 9, 18, CENTRE, text);
}

int main(int argc, char **argv) {
  static const char *const caps[] = {"butt caps (0)", "round caps (1)", "square caps (2)"};
  static const char *const joins[] = {"miter joins (0)", "round joins (1)", "bevel joins (2)"};
  static const int widths[] = {1, 3, 8, 16};
  if (argc != 2) {
    fprintf(stderr, "usage: pens out.png\n");
    return 2;
  }
  open_page(WIDTH, HEIGHT);
  qqvclr(INK);
  draw_text(LEFT_EDGE, 80, 30, LEFT, "Pens of width 1, 3, 8 and 16 in eight directions");
  for (int i = 0; i < 3; i++) {
    draw_text(LEFT_EDGE + i * BLOCK + WHEEL, TOP_EDGE - 30, 22, CENTRE, joins[i]);
    draw_text_upward(LEFT_EDGE - 25, TOP_EDGE + i * BLOCK + WHEEL, 22, CENTRE, caps[i]);
  }
  for (int cap = 0; cap < 3; cap++) {
    for (int join = 0; join < 3; join++) {
      int left = LEFT_EDGE + join * BLOCK, top = TOP_EDGE + cap * BLOCK;
      qqvfll(left, top, left + 2 * WHEEL - 8, top + 2 * WHEEL - 8, COLOUR(0xF6F6F6));
      for (int i = 0; i < 4; i++)
        draw_wheel(left + WHEEL / 2 + i % 2 * WHEEL - 4, top + WHEEL / 2 + i / 2 * WHEEL - 4,
                   widths[i], cap, join);
    }
  }
  save_png(argv[1], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}
