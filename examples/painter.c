/* SPDX-License-Identifier: MIT
 *
 * A landscape in perspective, painted back to front: painter elevation.csv out.png
 *
 * Each cell of the grid becomes a polygon on the page with its distance as key. The polygon store
 * hands them back from the farthest to the nearest, so that what is near covers what is behind it.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"
#include "grid.h"

enum { WIDTH = 1600, HEIGHT = 1000, ROWS = 172, COLUMNS = 201 };

/* In kilometres: 6 arc seconds of latitude, and of longitude where this landscape lies. */
static const double row_size = 0.1852, column_size = 0.1497;
static const double exaggeration = 5.0, base = 0.08;

static const uint32_t tints[] = {0x2E6B57, 0x5F9560, 0x9DB873, 0xD6CB90,
                                 0xD0A873, 0x9C7350, 0xA8968A, 0xF4F2EE};
static uint32_t colours[256];      /* from the lowest height to the highest */
static double grid[ROWS][COLUMNS]; /* metres, from the north and the west */
static double lowest = 1e9, highest = -1e9;

static void find_range(void) {
  for (int i = 0; i < ROWS * COLUMNS; i++) {
    lowest = fmin(lowest, grid[i / COLUMNS][i % COLUMNS]);
    highest = fmax(highest, grid[i / COLUMNS][i % COLUMNS]);
  }
}

typedef struct Place {
  double east, north, up; /* kilometres from the middle of the landscape at its lowest height */
} Place;

static Place place_of(int row, int column) {
  Place p = {(column - (COLUMNS - 1) / 2.0) * column_size, ((ROWS - 1) / 2.0 - row) * row_size,
             (grid[row][column] - lowest) / 1000 * exaggeration};
  return p;
}

/* Where a place is seen on the page by an eye in the south that looks north and down; gives its
 * distance along the line of sight. */
static double project(Place p, double *x, double *y) {
  const double turn_cos = 0.921060994002885, turn_sin = 0.389418342308651; /* by 0.4 */
  const double dip_cos = 0.825335614909678, dip_sin = 0.564642473395035;   /* by 0.6 */
  const double eye = 70, scale = 2160;
  double right = p.east * turn_cos + p.north * turn_sin;
  double away = p.north * turn_cos - p.east * turn_sin;
  double distance = eye + away * dip_cos - p.up * dip_sin;
  double height = away * dip_sin + p.up * dip_cos;
  *x = WIDTH / 2 + 20 + right * scale / distance;
  *y = HEIGHT / 2 - 5 - height * scale / distance;
  return distance;
}

static int32_t shaded(uint32_t tint, double light) {
  int channels[3];
  for (int i = 0; i < 3; i++) {
    double value = (double)(tint >> (16 - 8 * i) & 255) * light;
    channels[i] = value > 255 ? 255 : (int)value;
  }
  return PACKED(channels[0], channels[1], channels[2]);
}

static void put_polygon(const Place *corners, int count, int32_t colour) {
  double x[4], y[4], distance = 0;
  int32_t status;
  for (int i = 0; i < count; i++)
    distance += project(corners[i], &x[i], &y[i]) / count;
  qqsput2(x, y, count, &distance, colour, 0, &status);
  if (status != 0) fail("no memory for the polygons");
}

/* A cell in the colour of its mean height, lit from the north-west. */
static void put_cell(int row, int column) {
  Place p[4] = {place_of(row, column), place_of(row, column + 1), place_of(row + 1, column + 1),
                place_of(row + 1, column)};
  double east = (p[1].up + p[2].up - p[0].up - p[3].up) / 2 / column_size;
  double north = (p[0].up + p[1].up - p[2].up - p[3].up) / 2 / row_size;
  double light = (0.62 * east - 0.35 * north + 0.75) / sqrt(1 + east * east + north * north);
  double height = (p[0].up + p[1].up + p[2].up + p[3].up) / 4 / exaggeration * 1000;
  int tint = (int)(height / (highest - lowest) * 255);
  put_polygon(p, 4, shaded(colours[tint], 0.42 + 0.85 * (light > 0 ? light : 0)));
}

/* The wall below an edge of the landscape, down to a base. */
static void put_wall(int row1, int column1, int row2, int column2, double light) {
  Place p[4] = {place_of(row1, column1), place_of(row2, column2), {0, 0, 0}, {0, 0, 0}};
  p[2] = p[1];
  p[3] = p[0];
  p[2].up = p[3].up = -base * exaggeration;
  put_polygon(p, 4, shaded(0x8A7866, light));
}

static void put_landscape(void) {
  for (int row = 0; row < ROWS - 1; row++)
    for (int column = 0; column < COLUMNS - 1; column++)
      put_cell(row, column);
  for (int column = 0; column < COLUMNS - 1; column++)
    put_wall(ROWS - 1, column, ROWS - 1, column + 1, 0.75);
  for (int row = 0; row < ROWS - 1; row++) {
    put_wall(row, 0, row + 1, 0, 1.0);
    put_wall(row, COLUMNS - 1, row + 1, COLUMNS - 1, 0.5);
  }
}

static void paint_polygons(void) {
  double x[12], y[12];
  int32_t count, colour, corners;
  qqsini(3, 0, &count);
  for (int32_t position = 0; position < count; position++) {
    qqsget(x, y, position, &colour, &corners);
    qqvclr(colour);
    fill_polygon(x, y, corners);
  }
}

int main(int argc, char **argv) {
  int32_t io = 4;
  if (argc != 3) {
    fprintf(stderr, "usage: painter elevation.csv out.png\n");
    return 2;
  }
  read_grid(argv[1], &grid[0][0], ROWS, COLUMNS);
  find_range();
  blend_colours(colours, 256, tints, 8);
  open_page(WIDTH, HEIGHT);
  qqsini(0, ROWS * COLUMNS, &io);
  if (io != 0) fail("no memory for the polygons");
  put_landscape();
  qqsini(2, 0, &io);
  if (io != 0) fail("no memory to sort the polygons");
  paint_polygons();
  qqsini(1, 0, &io);
  qqvclr(INK);
  draw_text(WIDTH / 2, 60, 24, CENTRE, "Jacksboro fault, Tennessee, from the south");
  qqvclr(GREY);
  char heights[100];
  snprintf(heights, sizeof heights, "30 by 32 km; heights of %.0f to %.0f m, five times as high",
           lowest, highest);
  draw_text(WIDTH / 2, 96, 14, CENTRE, heights);
  save_png(argv[2], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}
