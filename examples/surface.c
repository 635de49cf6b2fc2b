/* SPDX-License-Identifier: MIT
 *
 * Elevations as a lit surface with its grid: surface elevation.csv out.png
 *
 * Near parts hide far ones through the depth buffer, in whatever order they are drawn; the lines of
 * the grid lie on the surface and show by the tolerance of depth lines.
 */

#include "axes.h"
#include "grid.h"
#include "scene.h"

enum { WIDTH = 1600, HEIGHT = 1000, ROWS = 172, COLUMNS = 201, TINTS = 240, GRID = 6 };

static const uint32_t stops[] = {0x2E6B57, 0x6FA267, 0xC2C988, 0xE9D7A0,
                                 0xC99A66, 0x96684A, 0xB9A79C, 0xFFFFFF};
static const double low = 200, high = 1100; /* metres */
static const unsigned wall = 0xC4BBAE;

static double grid[ROWS][COLUMNS]; /* metres, from the north and the west */
static uint32_t tints[256];

/* East-west is -1 to 1; heights are exaggerated. */
static Vector place(int row, int column, double metres) {
  return vector((column - (COLUMNS - 1) / 2.0) / 100, ((ROWS - 1) / 2.0 - row) / 81,
                (metres - 620) / 3000);
}

static Vector on_surface(int row, int column) {
  return place(row, column, grid[row][column]);
}

static int kept(int i, int count) {
  return i < 0 ? 0 : i >= count ? count - 1 : i;
}

static Corner corner(int row, int column) {
  Vector east =
      minus(on_surface(row, kept(column + 1, COLUMNS)), on_surface(row, kept(column - 1, COLUMNS)));
  Vector north =
      minus(on_surface(kept(row - 1, ROWS), column), on_surface(kept(row + 1, ROWS), column));
  int tint = kept((int)((grid[row][column] - low) / (high - low) * TINTS), TINTS);
  Corner c = {on_surface(row, column), cross(east, north), tints[tint]};
  return c;
}

static void draw_surface(const View *view) {
  for (int row = 0; row + 1 < ROWS; row++)
    for (int column = 0; column + 1 < COLUMNS; column++)
      draw_quad(view, corner(row, column), corner(row, column + 1), corner(row + 1, column + 1),
                corner(row + 1, column));
}

/* From one point of the rim to the next, down to the foot. */
static void draw_wall(const View *view, int row, int column, int next_row, int next_column) {
  /* Leaning upward, so that both sides get some light. */
  Vector normal = row == next_row ? vector(0, -1, 0.3) : vector(0.7, -0.4, 0.8);
  Corner a = {on_surface(row, column), normal, wall};
  Corner b = {on_surface(next_row, next_column), normal, wall};
  Corner c = {place(next_row, next_column, 100), normal, wall};
  Corner d = {place(row, column, 100), normal, wall};
  draw_quad(view, a, b, c, d);
}

static void draw_walls(const View *view) {
  for (int column = 0; column + 1 < COLUMNS; column++)
    draw_wall(view, ROWS - 1, column, ROWS - 1, column + 1);
  for (int row = 0; row + 1 < ROWS; row++)
    draw_wall(view, row, COLUMNS - 1, row + 1, COLUMNS - 1);
}

static void draw_grid(const View *view) {
  const int ink = PACKED(40, 44, 40);
  for (int row = 0; row < ROWS; row++)
    for (int column = 0; column < COLUMNS; column++) {
      if (column + 1 < COLUMNS && (row % GRID == 0 || row == ROWS - 1))
        draw_edge(view, on_surface(row, column), on_surface(row, column + 1), ink);
      if (row + 1 < ROWS && (column % GRID == 0 || column == COLUMNS - 1))
        draw_edge(view, on_surface(row, column), on_surface(row + 1, column), ink);
    }
}

int main(int argc, char **argv) {
  if (argc != 3) fail("usage: surface elevation.csv out.png");
  read_grid(argv[1], &grid[0][0], ROWS, COLUMNS);
  blend_colours(tints, TINTS, stops, sizeof stops / sizeof *stops);
  open_page(WIDTH, HEIGHT);
  qqvvlt(1, tints);
  use_depth();
  View view = view_from(vector(0.55, -1, 0.85), 430, 700, 500, 2);
  draw_surface(&view);
  draw_walls(&view);
  int32_t unused = 0;
  qqwwid(18, &unused, 1);
  draw_grid(&view);
  qqvclr(INK);
  draw_text(60, 72, 30, LEFT, "Jacksboro fault, Tennessee, from the south-east");
  draw_colour_bar(1430, 140, 480, 0, TINTS, low, high, "metres");
  save_png(argv[2], WIDTH, HEIGHT);
  return 0;
}
