/* SPDX-License-Identifier: MIT
 *
 * A coloured grid with contour lines and coasts: geoid geoid.csv land.csv out.png
 *
 * Shows where the sea would stand above (or below) an ellipsoid if nothing but gravity moved it.
 * The colours are indices of a palette raster, written row by row.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"
#include "grid.h"

enum { WIDTH = 1800, HEIGHT = 960, ROWS = 91, COLUMNS = 180, PER_CELL = 8 };
enum { PAPER, TEXT, CONTOUR, FRAME, MARKS, FIRST_HEIGHT = 8, HEIGHTS = 220, LIMIT = 110 };

static const uint32_t plain_colours[] = {0xFFFFFF, 0x222222, 0x6D6D6D, 0x767676, 0xE4E4E4};
static const uint32_t height_colours[] = {0x08306B, 0x2171B5, 0x6BAED6, 0xC6DBEF, 0xF7F5F0,
                                          0xFDD0A2, 0xFD8D3C, 0xC44A08, 0x6B2A02};

static double grid[ROWS][COLUMNS]; /* metres; from the north, from 180 degrees west */

/* The height at a place between the grid's points; columns go round the world. */
static double height_at(double row, double column) {
  int r = (int)row < ROWS - 1 ? (int)row : ROWS - 2, c = (int)column % COLUMNS;
  int next = (c + 1) % COLUMNS;
  double down = row - r, right = column - floor(column);
  double upper = grid[r][c] + (grid[r][next] - grid[r][c]) * right;
  double lower = grid[r + 1][c] + (grid[r + 1][next] - grid[r + 1][c]) * right;
  return upper + (lower - upper) * down;
}

static void draw_heights(const Axes *axes) {
  static uint8_t pixels[COLUMNS * PER_CELL];
  for (int y = 0; y < (ROWS - 1) * PER_CELL; y++) {
    for (int x = 0; x < COLUMNS * PER_CELL; x++) {
      double height = height_at((y + 0.5) / PER_CELL, (x + 0.5) / PER_CELL);
      pixels[x] = (uint8_t)(FIRST_HEIGHT + (int)floor((height + LIMIT) * HEIGHTS / (2 * LIMIT)));
    }
    qqvrow(pixels, axes->left, axes->top + y, COLUMNS * PER_CELL);
  }
}

/* Where a contour crosses the side from corner a to corner b of a cell. */
static void crossing(const Axes *axes, int row, int column, int a, int b, double level, int *x,
                     int *y) {
  static const int down[] = {0, 0, 1, 1}, right[] = {0, 1, 1, 0};
  double from = grid[row + down[a]][(column + right[a]) % COLUMNS];
  double to = grid[row + down[b]][(column + right[b]) % COLUMNS],
         part = (level - from) / (to - from);
  *x = axes->left + (int)floor((column + right[a] + (right[b] - right[a]) * part) * PER_CELL + 0.5);
  *y = axes->top + (int)floor((row + down[a] + (down[b] - down[a]) * part) * PER_CELL + 0.5);
}

/* The level's lines through one cell: one from each side that it crosses to the next such side. */
static void contour_cell(const Axes *axes, int row, int column, double level) {
  double corners[4] = {grid[row][column], grid[row][(column + 1) % COLUMNS],
                       grid[row + 1][(column + 1) % COLUMNS], grid[row + 1][column]};
  int xs[4], ys[4], count = 0;
  for (int a = 0; a < 4; a++) {
    int b = (a + 1) % 4;
    if ((corners[a] < level) == (corners[b] < level)) continue;
    crossing(axes, row, column, a, b, level, &xs[count], &ys[count]);
    count++;
  }
  for (int i = 0; i + 1 < count; i += 2)
    qqvlin(xs[i], ys[i], xs[i + 1], ys[i + 1]);
}

static void draw_contours(const Axes *axes) {
  for (int level = -100; level <= 80; level += 20) {
    qqvclr(level == 0 ? TEXT : CONTOUR);
    set_pen(level == 0 ? 2 : 1, BUTT_CAP, MITER_JOIN);
    for (int row = 0; row < ROWS - 1; row++)
      for (int column = 0; column < COLUMNS; column++)
        contour_cell(axes, row, column, level);
  }
}

static void draw_coasts(const Axes *axes, const char *file) {
  char line[200];
  double longitude, latitude;
  int code = 3;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  qqvclr(PAPER);
  set_pen(1, BUTT_CAP, MITER_JOIN);
  while (fgets(line, sizeof line, stream) != NULL) {
    int place = sscanf(line, "%lf,%lf", &longitude, &latitude) == 2;
    if (place) qqvdrw(column_of(axes, longitude), row_of(axes, latitude), code);
    code = place ? 2 : 3;
  }
  fclose(stream);
}

int main(int argc, char **argv) {
  uint32_t palette[256] = {0};
  if (argc != 4) {
    fprintf(stderr, "usage: geoid geoid.csv land.csv out.png\n");
    return 2;
  }
  for (int i = 0; i < 5; i++)
    palette[i] = plain_colours[i];
  blend_colours(palette + FIRST_HEIGHT, HEIGHTS, height_colours, 9);
  read_grid(argv[1], &grid[0][0], ROWS, COLUMNS);
  Axes axes = {120, 110, 120 + COLUMNS * PER_CELL, 110 + (ROWS - 1) * PER_CELL, -180, 180, -90, 90,
               60,  30};
  open_palette_page(WIDTH, HEIGHT, palette);
  draw_axes(&axes, "Height of the geoid above the ellipsoid (EGM96)", "longitude (°)", NULL);
  set_clip(axes.left + 1, axes.top + 1, axes.right - 2, axes.bottom - 2);
  draw_heights(&axes);
  draw_coasts(&axes, argv[2]);
  draw_contours(&axes);
  set_clip(0, 0, WIDTH - 1, HEIGHT - 1);
  draw_colour_bar(axes.right + 60, axes.top, axes.bottom, FIRST_HEIGHT, HEIGHTS, -LIMIT, LIMIT,
                  "metres");
  save_palette_png(argv[3], WIDTH, HEIGHT, palette);
  qqwfree();
  return 0;
}
