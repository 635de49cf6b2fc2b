/* SPDX-License-Identifier: MIT
 *
 * Four looks at the Mandelbrot set (computed), each nearer than the last:
 * mandelbrot out.png out.ppm detail.png
 *
 * Each look is drawn on a page of its own and kept in a raster file. A larger page then gathers
 * them and is written as PNG and as PPM, and one of the four alone through the clip of the writers.
 */
#include <stdio.h>

#include "axes.h"

enum { LOOKS = 4, WIDTH = 780, HEIGHT = 520, GAP = 10, LIMIT = 2000, COLOURS = 254 };
enum {
  PAGE_WIDTH = 2 * WIDTH + 3 * GAP,
  PAGE_HEIGHT = 2 * HEIGHT + 3 * GAP,
  INSIDE = 0,
  PAPER = 255
};

typedef struct Look {
  double x, y, width; /* the middle and the width of what it shows */
} Look;

static const Look looks[LOOKS] = {{-0.6, 0, 3.6},
                                  {-0.7478, 0.1195, 0.03},
                                  {-0.745428, 0.113009, 0.0006},
                                  {-0.7453985, 0.1129830, 0.00006}};

static const char *const kept[LOOKS] = {"look-1.raster", "look-2.raster", "look-3.raster",
                                        "look-4.raster"};

/* Steps until the point is known to leave for ever, or LIMIT. */
static int escape_steps(double cx, double cy) {
  double x = 0, y = 0, xx = 0, yy = 0;
  int steps = 0;
  while (steps < LIMIT && xx + yy <= 4) {
    y = 2 * x * y + cy;
    x = xx - yy + cx;
    xx = x * x;
    yy = y * y;
    steps++;
  }
  return steps;
}

static void draw_look(const Look *look) {
  static uint8_t row[WIDTH];
  double pixel = look->width / WIDTH;
  for (int y = 0; y < HEIGHT; y++) {
    for (int x = 0; x < WIDTH; x++) {
      int steps =
          escape_steps(look->x + (x - WIDTH / 2) * pixel, look->y - (y - HEIGHT / 2) * pixel);
      row[x] = (uint8_t)(steps == LIMIT ? INSIDE : 1 + steps % COLOURS);
    }
    qqvrow(row, 0, y, WIDTH);
  }
}

static void use_raster_file(const char *file, int32_t mode) {
  int32_t status = 0;
  qqvfil(file, mode, &status);
  if (mode == 0) check_written(file, status);
  if (status != 0) fail("%s: status %d of the raster file", file, (int)status);
}

/* A file is loaded into the upper left corner, so each look is moved from there to its place. */
static void gather_looks(void) {
  static uint8_t pixels[WIDTH * HEIGHT];
  for (int i = LOOKS - 1; i >= 0; i--) {
    int left = GAP + i % 2 * (WIDTH + GAP), top = GAP + i / 2 * (HEIGHT + GAP);
    use_raster_file(kept[i], 1);
    qqvrdr(pixels, 0, 0, WIDTH, HEIGHT);
    for (int y = 0; y < HEIGHT; y++)
      qqvrow(pixels + y * WIDTH, left, top + y, WIDTH);
    remove(kept[i]);
  }
  qqvfll(0, 0, PAGE_WIDTH - 1, GAP - 1, PAPER);
  qqvfll(0, 0, GAP - 1, PAGE_HEIGHT - 1, PAPER);
}

static void make_palette(uint32_t *palette) {
  static const uint32_t stops[] = {0x00204C, 0x1F6FB5, 0xE8F4F8, 0xF6C34A,
                                   0xB2481B, 0x3B0F2A, 0x00204C};
  palette[INSIDE] = 0x000000;
  blend_colours(palette + 1, COLOURS, stops, 7);
  palette[PAPER] = 0xFFFFFF;
}

int main(int argc, char **argv) {
  uint32_t palette[256];
  if (argc != 4) {
    fprintf(stderr, "usage: mandelbrot out.png out.ppm detail.png\n");
    return 2;
  }
  make_palette(palette);
  for (int i = 0; i < LOOKS; i++) {
    open_palette_page(WIDTH, HEIGHT, palette);
    draw_look(&looks[i]);
    use_raster_file(kept[i], 0);
  }
  open_palette_page(PAGE_WIDTH, PAGE_HEIGHT, palette);
  qqvfll(0, 0, PAGE_WIDTH - 1, PAGE_HEIGHT - 1, PAPER);
  gather_looks();
  save_palette_png(argv[1], PAGE_WIDTH, PAGE_HEIGHT, palette);

  int32_t device = 101, width = PAGE_WIDTH, height = PAGE_HEIGHT, status = 0;
  qqpppm(argv[2], &device, &width, &height, NULL, &status);
  check_written(argv[2], status);

  int32_t x = WIDTH + 2 * GAP, y = HEIGHT + 2 * GAP, w = WIDTH, h = HEIGHT, on = 1;
  qqpclp(&x, &y, &w, &h, &on);
  save_palette_png(argv[3], PAGE_WIDTH, PAGE_HEIGHT, palette);
  qqwfree();
  return 0;
}
