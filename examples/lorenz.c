/* SPDX-License-Identifier: MIT
 *
 * How often and how fast an orbit passes each pixel, in true colours and in 256: lorenz out.png
 * out-256.png
 *
 * The orbit is computed: E. N. Lorenz's equations of 1963, by the classic Runge-Kutta method. The
 * second picture holds 256 colours that the library chooses.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1600, HEIGHT = 1000, STEPS = 6000000, SHADES = 1024, FASTEST = 330 };

typedef struct Point {
  double x, y, z;
} Point;

static Point slope(Point p) {
  return (Point){10 * (p.y - p.x), p.x * (28 - p.z) - p.y, p.x * p.y - p.z * 8 / 3};
}

static Point advance(Point p, Point by, double time) {
  return (Point){p.x + by.x * time, p.y + by.y * time, p.z + by.z * time};
}

static Point next_point(Point p, double time) {
  Point a = slope(p), b = slope(advance(p, a, time / 2)), c = slope(advance(p, b, time / 2));
  Point d = slope(advance(p, c, time));
  Point mean = {(a.x + 2 * b.x + 2 * c.x + d.x) / 6, (a.y + 2 * b.y + 2 * c.y + d.y) / 6,
                (a.z + 2 * b.z + 2 * c.z + d.z) / 6};
  return advance(p, mean, time);
}

static uint32_t passes[HEIGHT][WIDTH];
static double speeds[HEIGHT][WIDTH]; /* sums over the passes */

static uint32_t follow_orbit(void) {
  Point p = {1, 1, 20};
  uint32_t most = 0;
  for (int i = 0; i < STEPS; i++) {
    Point by = slope(p);
    int x = (int)floor(WIDTH / 2 + p.x * 27 + p.y * 8), y = (int)floor(HEIGHT - 30 - p.z * 19.5);
    p = next_point(p, 0.001);
    if (i < 2000 || x < 0 || x >= WIDTH || y < 0 || y >= HEIGHT) continue;
    speeds[y][x] += sqrt(by.x * by.x + by.y * by.y + by.z * by.z);
    if (++passes[y][x] > most) most = passes[y][x];
  }
  return most;
}

/* The colour tells the speed, and how bright it is how often the orbit was there. */
static void draw_passes(uint32_t most) {
  static const uint32_t stops[] = {0x4CC9F0, 0x4895EF, 0x5A4FEE, 0xA32FD0,
                                   0xF72585, 0xFF7A45, 0xFFC145, 0xFFF3B0};
  static uint32_t shades[SHADES];
  static uint8_t row[WIDTH][3];
  blend_colours(shades, SHADES, stops, 8);
  for (int y = 0; y < HEIGHT; y++) {
    for (int x = 0; x < WIDTH; x++) {
      uint32_t count = passes[y][x];
      double bright = 1.45 * sqrt(sqrt((double)count / most));
      int shade = count == 0 ? 0 : (int)(speeds[y][x] / count / FASTEST * SHADES);
      uint32_t colour = shades[shade < SHADES ? shade : SHADES - 1];
      for (int i = 0; i < 3; i++)
        row[x][i] =
            (uint8_t)(8 + (colour >> (16 - 8 * i) & 255) * (bright < 1 ? bright : 1) * 247 / 255);
    }
    qqvrow(&row[0][0], 0, y, -WIDTH);
  }
}

int main(int argc, char **argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: lorenz out.png out-256.png\n");
    return 2;
  }
  open_page(WIDTH, HEIGHT);
  draw_passes(follow_orbit());
  save_png(argv[1], WIDTH, HEIGHT);
  /* A positive device with a negative height: an indexed picture with a palette made for it. */
  int32_t device = 101, order = 1, width = WIDTH, height = -HEIGHT, colours = 256, status = 0;
  qqppng(argv[2], &device, &order, &width, &height, NULL, &colours, &status);
  check_written(argv[2], status);
  qqwfree();
  return 0;
}
