/* SPDX-License-Identifier: MIT
 *
 * Plain and antialiased lines beside each other on a transparent page: antialias out.png
 *
 * The curve is computed: a point on a small wheel that rolls inside a larger one. Beneath each
 * half stands a piece of it, magnified.
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1240, HEIGHT = 1150, PIECE = 36, ZOOM = 9, STEPS = 1440, TURNS = 11 };

static void draw_curve(int x, int y) {
  const double turn = 2 * 3.14159265358979323846;
  for (int i = 0; i <= STEPS; i++) {
    double t = turn * TURNS * i / STEPS, big = 174.37, small = 89.71;
    double across = big * cos(t) + small * cos(t * 20 / TURNS);
    double up = big * sin(t) - small * sin(t * 20 / TURNS);
    qqvdrw((int)floor(x + across + 0.5), (int)floor(y - up + 0.5), i == 0 ? 3 : 2);
  }
}

/* Shows the piece of the page at (x, y) as squares at (left, top). */
static void magnify(int x, int y, int left, int top) {
  static uint8_t pixels[PIECE * PIECE][3];
  qqvrdr(&pixels[0][0], x, y, -PIECE, PIECE);
  for (int i = 0; i < PIECE * PIECE; i++) {
    int at_x = left + i % PIECE * ZOOM, at_y = top + i / PIECE * ZOOM;
    const uint8_t *p = pixels[i];
    qqvfll(at_x, at_y, at_x + ZOOM - 2, at_y + ZOOM - 2, PACKED(p[0], p[1], p[2]));
  }
}

int main(int argc, char **argv) {
  static const char *const names[] = {"plain (option 34 is 1)", "antialiased (option 34 is 2)"};
  if (argc != 2) {
    fprintf(stderr, "usage: antialias out.png\n");
    return 2;
  }
  int32_t width = WIDTH, height = HEIGHT, status = 1; /* a white background, which is clear */
  qqvini(-width, height, &width, &height, 1, &status);
  if (status != 0) fail("no memory for the page");
  for (int half = 0; half < 2; half++) {
    int x = 320 + half * 600, y = 340;
    int32_t smooth = half + 1;
    qqvclr(BLUE);
    set_pen(1, BUTT_CAP, MITER_JOIN);
    qqwwid(34, &smooth, 1);
    draw_curve(x, y);
    magnify(x - 18, y - 128, x - 162, 720);
    smooth = 1;
    qqwwid(34, &smooth, 1);
    qqvclr(INK);
    draw_text(x, 670, 22, CENTRE, names[half]);
    set_pen(2, BUTT_CAP, MITER_JOIN);
    qqvsym(0, x, y - 110, PIECE + 4);
    qqvsym(0, x - 1, 881, PIECE * ZOOM + 10);
    draw_text(x, 1100, 18, CENTRE, "nine times as large");
  }
  /* A negative width asks for a picture in which white is transparent. */
  int32_t device = -101, order = 1, clear = -WIDTH, colours = 256;
  qqppng(argv[1], &device, &order, &clear, &height, NULL, &colours, &status);
  check_written(argv[1], status);
  qqwfree();
  return 0;
}
