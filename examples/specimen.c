/* SPDX-License-Identifier: MIT
 *
 * The twelve bitmap fonts, and text at many angles: specimen out.png
 */
#include <stdio.h>

#include "lettering.h"

enum { WIDTH = 1260, HEIGHT = 1350, LEFT_EDGE = 40, FAMILIES = 3, SIZES = 4 };

static const char *const names[FAMILIES] = {"complx", "simplx", "helve"};
static const int sizes[FAMILIES][SIZES] = {{10, 12, 14, 18}, {8, 10, 12, 14}, {10, 12, 14, 18}};

static const char *const samples[] = {
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ abcdefghijklmnopqrstuvwxyz 0123456789",
    "Zażółć gęślą jaźń - Příliš žluťoučký kůň - Árvíztűrő tükörfúrógép",
};

/* One family below `y`; gives where the next can start. */
static int draw_family(int family, int y) {
  char text[64];
  for (int i = 0; i < SIZES; i++) {
    int size = sizes[family - 1][i];
    use_bitmap_font(family, size);
    snprintf(text, sizeof text, "%s%d", names[family - 1], size);
    y += 2 * size + 10;
    write_text(LEFT_EDGE, y, 0, LEFT, VERMILION, text);
    for (int line = 0; line < 2; line++, y += 2 * size)
      write_text(LEFT_EDGE + 140, y, 0, LEFT, INK, samples[line]);
    y -= 2 * size;
  }
  return y + 14;
}

static void draw_star(int x, int y) {
  static const int32_t colours[] = {BLUE, VERMILION, GREEN, PURPLE};
  use_bitmap_font(HELVE, 12);
  for (int i = 0; i < 12; i++)
    write_text(x, y, 30 * i, LEFT, colours[i % 4], "           at any angle: güneş ışığı");
}

int main(int argc, char **argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: specimen out.png\n");
    return 2;
  }
  open_page(WIDTH, HEIGHT);
  int y = 20;
  for (int family = COMPLX; family <= HELVE; family++)
    y = draw_family(family, y);
  draw_star(WIDTH / 2, y + 270);
  save_png(argv[1], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}
