/* SPDX-License-Identifier: MIT
 *
 * A shaded relief with contour lines: elevation elevation.csv out.png
 *
 * Each palette entry is a tint for the height with a shade for the slope, and every pixel of the
 * map is one index.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"
#include "grid.h"

enum { WIDTH = 1400, HEIGHT = 1260, ROWS = 172, COLUMNS = 201, MAP_WIDTH = 960, MAP_HEIGHT = 1026 };
enum { PAPER, TEXT, FRAME, MARKS, FIRST = 4, TINTS = 24, SHADES = 10, LOW = 200, HIGH = 1100 };

static const uint32_t plain_colours[] = {0xFFFFFF, 0x222222, 0x767676, 0xE4E4E4};
static const uint32_t tints[] = {0x2E6B57, 0x6FA267, 0xC2C988, 0xE9D7A0,
                                 0xC99A66, 0x96684A, 0xB9A79C, 0xFFFFFF};

static double grid[ROWS][COLUMNS]; /* metres, from the north and the west */

/* One number between four neighbours, bent so that slopes have no steps. */
static double between(double a, double b, double c, double d, double t) {
  return b + t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a))) / 2;
}

static double elevation_at(double row, double column) {
  int r = (int)row, c = (int)column;
  double along[4];
  for (int i = 0; i < 4; i++) {
    int line = r + i - 1 < 0 ? 0 : r + i - 1 >= ROWS ? ROWS - 1 : r + i - 1;
    double near[4];
    for (int k = 0; k < 4; k++) {
      int at = c + k - 1 < 0 ? 0 : c + k - 1 >= COLUMNS ? COLUMNS - 1 : c + k - 1;
      near[k] = grid[line][at];
    }
    along[i] = between(near[0], near[1], near[2], near[3], column - c);
  }
  return between(along[0], along[1], along[2], along[3], row - r);
}

/* Light from the north-west, 45 degrees high, on slopes twice as steep as they are; 0 to 1. */
static double light(double to_east, double to_south) {
  const double half_spacing = 50; /* metres, about 3 seconds of arc less their exaggeration */
  double x = to_east / half_spacing, y = to_south / half_spacing;
  double bright = (x + y + 1.41421356237309505) / (2 * sqrt(1 + x * x + y * y));
  return bright < 0 ? 0 : bright;
}

static void draw_map(const Axes *axes) {
  static double heights[MAP_HEIGHT + 1][MAP_WIDTH + 1];
  static uint8_t pixels[MAP_WIDTH];
  for (int y = 0; y <= MAP_HEIGHT; y++)
    for (int x = 0; x <= MAP_WIDTH; x++)
      heights[y][x] =
          elevation_at((double)y * (ROWS - 1) / MAP_HEIGHT, (double)x * (COLUMNS - 1) / MAP_WIDTH);
  for (int y = 0; y < MAP_HEIGHT; y++) {
    for (int x = 0; x < MAP_WIDTH; x++) {
      double h = heights[y][x], east = heights[y][x + 1], south = heights[y + 1][x];
      int tint = (int)((h - LOW) * TINTS / (HIGH - LOW));
      int shade = (int)(light((east - h) * 2, (south - h) * 2) * SHADES);
      tint = tint < 0 ? 0 : tint >= TINTS ? TINTS - 1 : tint;
      shade = shade >= SHADES ? SHADES - 1 : shade;
      /* A contour runs where two neighbours stand on its two sides. */
      if (floor(h / 100) != floor(east / 100) || floor(h / 100) != floor(south / 100)) shade = 1;
      pixels[x] = (uint8_t)(FIRST + tint * SHADES + shade);
    }
    qqvrow(pixels, axes->left, axes->top + y, MAP_WIDTH);
  }
}

static void make_palette(uint32_t *palette) {
  uint32_t colours[TINTS];
  blend_colours(colours, TINTS, tints, 8);
  for (int i = 0; i < FIRST; i++)
    palette[i] = plain_colours[i];
  for (int tint = 0; tint < TINTS; tint++) {
    uint32_t steps[3] = {0x101820, colours[tint], 0xFFFFFF};
    uint32_t shades[SHADES * 3 / 2];
    blend_colours(shades, SHADES * 3 / 2, steps, 3);
    for (int shade = 0; shade < SHADES; shade++)
      palette[FIRST + tint * SHADES + shade] = shades[shade + 1];
  }
}

static void draw_key(const Axes *axes) {
  int left = axes->right + 60, step = (axes->bottom - axes->top) / TINTS;
  Axes bar = {left, axes->top, left + 40, axes->top + step * TINTS, 0, 1, LOW, HIGH, 0, 0};
  for (int tint = 0; tint < TINTS; tint++)
    qqvfll(left, bar.bottom - (tint + 1) * step, left + 40, bar.bottom - tint * step - 1,
           FIRST + tint * SHADES + 6);
  for (int metres = LOW; metres <= HIGH; metres += 100) {
    char text[16];
    snprintf(text, sizeof text, "%d", metres);
    qqvclr(TEXT);
    draw_text(left + 56, row_of(&bar, metres) + 10, 20, LEFT, text);
    set_pen(2, BUTT_CAP, MITER_JOIN);
    qqvlin(left, row_of(&bar, metres), left + 48, row_of(&bar, metres));
  }
  qqvlin(left, bar.top, left, bar.bottom);
  qqvlin(left + 40, bar.top, left + 40, bar.bottom);
  draw_text(left, axes->top - 28, 22, LEFT, "metres");
}

int main(int argc, char **argv) {
  uint32_t palette[256] = {0};
  if (argc != 3) {
    fprintf(stderr, "usage: elevation elevation.csv out.png\n");
    return 2;
  }
  read_grid(argv[1], &grid[0][0], ROWS, COLUMNS);
  make_palette(palette);
  Axes axes = {200, 110, 200 + MAP_WIDTH, 110 + MAP_HEIGHT, -84.4133, -84.08, 36.4471, 36.7321,
               0.1, 0.05};
  open_palette_page(WIDTH, HEIGHT, palette);
  draw_axes(&axes, "The Jacksboro fault, Tennessee", "longitude (°)", "latitude (°)");
  draw_map(&axes);
  draw_key(&axes);
  save_palette_png(argv[2], WIDTH, HEIGHT, palette);
  qqwfree();
  return 0;
}
