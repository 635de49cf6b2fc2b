/* SPDX-License-Identifier: MIT
 *
 * Evenly spaced streamlines: streamlines out.png
 *
 * The flow of an ideal fluid round a turning cylinder, known in closed form. Each line is traced
 * until it comes too near to another; new lines begin beside those drawn, where the seed grid finds
 * room (B. Jobard and W. Lefer, 1997).
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1800, HEIGHT = 1120, PER_UNIT = 180, MAX_POINTS = 4000 };
enum { PAPER, TEXT, FRAME, MARKS, LINE, BODY, FIRST_SPEED = 8, SPEEDS = 240 };

static const uint32_t plain_colours[] = {0xFFFFFF, 0x222222, 0x767676,
                                         0xE4E4E4, 0x1A2B3C, 0x5A5A5A};
static const uint32_t speed_colours[] = {0x3B6FA8, 0x7FB2D4, 0xD3E6EE, 0xF7F3E4,
                                         0xF9D38C, 0xEE9A4D, 0xC9502F};

static const double half_width = 4.0, half_height = 2.5;
static const double separation = 0.16, turning = 1.1, fastest = 3.2, step = 0.01;
static const double no_z = 0;

/* The velocity at (x, y): a stream to the right past a cylinder of radius 1 that turns clockwise.
 */
static double velocity(double x, double y, double *u, double *v) {
  double r2 = x * x + y * y;
  *u = 1 - (x * x - y * y) / (r2 * r2) + turning * y / r2;
  *v = -2 * x * y / (r2 * r2) - turning * x / r2;
  return sqrt(*u * *u + *v * *v);
}

/* The points of a line in the direction of the flow: n1 up to where it began, then n2. */
typedef struct Line {
  double x[2 * MAX_POINTS], y[2 * MAX_POINTS];
  int32_t n1, n2;
} Line;

static int is_in_picture(double x, double y) {
  return x > -half_width && x < half_width && y > -half_height && y < half_height &&
         x * x + y * y > 1;
}

/* One step of the given length along the flow; 0 where it has none. */
static int advance(double *x, double *y, double length) {
  double u, v, speed = velocity(*x, *y, &u, &v);
  if (speed < 1e-3) return 0;
  double half_x = *x + u / speed * length / 2, half_y = *y + v / speed * length / 2;
  speed = velocity(half_x, half_y, &u, &v);
  if (speed < 1e-3) return 0;
  *x += u / speed * length;
  *y += v / speed * length;
  return 1;
}

static int has_room(double x, double y, double factor) {
  int32_t rejected = 1;
  if (is_in_picture(x, y)) qqseed3(&x, &y, &no_z, &factor, &rejected);
  return !rejected;
}

/* Follows the flow from (x, y), or goes against it, as far as there is room; gives the points. */
static int trace(double x, double y, double length, double *xs, double *ys, int most) {
  int n = 0;
  while (n < most && advance(&x, &y, length) && has_room(x, y, 0.5)) {
    xs[n] = x;
    ys[n++] = y;
  }
  return n;
}

static void draw_line(const Axes *axes, const double *xs, const double *ys, int n) {
  qqvclr(LINE);
  set_pen(2, ROUND_CAP, ROUND_JOIN);
  for (int i = 0; i < n; i += 3)
    qqvdrw(column_of(axes, xs[i]), row_of(axes, ys[i]), i == 0 ? 3 : 2);
  qqvdrw(column_of(axes, xs[n - 1]), row_of(axes, ys[n - 1]), 2);
}

/* A head at point i of a line, pointing to the next one. */
static void draw_head(const Axes *axes, const double *xs, const double *ys, int i) {
  double x = axes_x(axes, xs[i]), y = axes_y(axes, ys[i]);
  double dx = axes_x(axes, xs[i + 4]) - x, dy = axes_y(axes, ys[i + 4]) - y;
  double length = sqrt(dx * dx + dy * dy), along_x = dx / length, along_y = dy / length;
  double px[3] = {x + 9 * along_x, x - 7 * along_x - 6 * along_y, x - 7 * along_x + 6 * along_y};
  double py[3] = {y + 9 * along_y, y - 7 * along_y + 6 * along_x, y - 7 * along_y - 6 * along_x};
  fill_polygon(px, py, 3);
}

/* Traces a line through a place both ways, draws it and files it, unless it is short. */
static void add_line(const Axes *axes, double x, double y, int32_t flag, Line *line) {
  static double back_x[MAX_POINTS], back_y[MAX_POINTS];
  int n1 = trace(x, y, -step, back_x, back_y, MAX_POINTS - 1);
  int32_t status;
  for (int i = 0; i < n1; i++) {
    line->x[i] = back_x[n1 - 1 - i];
    line->y[i] = back_y[n1 - 1 - i];
  }
  line->x[n1] = x;
  line->y[n1++] = y;
  line->n1 = n1;
  line->n2 = trace(x, y, step, line->x + n1, line->y + n1, MAX_POINTS);
  int n = line->n1 + line->n2;
  if (n * step < 3 * separation) return;
  qqseed4(line->x, line->y, &no_z, &line->n1, &line->n2, &flag, &status);
  if (status != 0) fail("no memory for the lines");
  draw_line(axes, line->x, line->y, n);
  for (int i = n < 160 ? n / 2 : 80; i + 4 < n; i += 160)
    draw_head(axes, line->x, line->y, i);
}

/* Tries places beside a line, on both sides. */
static void add_lines_beside(const Axes *axes, const Line *line) {
  static Line added;
  for (int i = 0; i < line->n1 + line->n2; i += 4) {
    double u, v, speed = velocity(line->x[i], line->y[i], &u, &v);
    for (int side = -1; side <= 1; side += 2) {
      double x = line->x[i] - side * separation * 1.001 * v / speed;
      double y = line->y[i] + side * separation * 1.001 * u / speed;
      if (has_room(x, y, 0.95)) add_line(axes, x, y, 1, &added);
    }
  }
}

static void draw_lines(const Axes *axes) {
  static Line line;
  /* A square, since the grid serves no more of a longer side. */
  const double low = -half_width, high = half_width;
  int32_t ndim = 2, mode = 0, status;
  double z = 0;
  qqseed1(&low, &high, &low, &high, &no_z, &no_z, &separation, &ndim, &mode, &status);
  if (status != 0) fail("no memory for the grid");
  /* With flag 0, so that the grid delivers what comes after this line. */
  add_line(axes, -3.9, 0.1, 0, &line);
  do
    add_lines_beside(axes, &line);
  while (qqseed2(line.x, line.y, &z, &line.n1, &line.n2, &status) == 0);
  mode = 1;
  qqseed1(&low, &high, &low, &high, &no_z, &no_z, &separation, &ndim, &mode, &status);
  if (status != 0) fail("no memory for some points of the grid");
}

static void draw_speeds(const Axes *axes) {
  static uint8_t row[WIDTH];
  for (int y = axes->top; y <= axes->bottom; y++) {
    for (int x = axes->left; x <= axes->right; x++) {
      double px = (x - axes->left) / (double)PER_UNIT - half_width, u, v;
      double py = half_height - (y - axes->top) / (double)PER_UNIT;
      int inside = px * px + py * py < 1;
      double part = inside ? 0 : velocity(px, py, &u, &v) / fastest;
      int entry = (int)(part * SPEEDS);
      row[x - axes->left] =
          (uint8_t)(inside ? BODY : FIRST_SPEED + (entry < SPEEDS ? entry : SPEEDS - 1));
    }
    qqvrow(row, axes->left, y, axes->right - axes->left + 1);
  }
}

int main(int argc, char **argv) {
  uint32_t palette[256] = {0};
  if (argc != 2) {
    fprintf(stderr, "usage: streamlines out.png\n");
    return 2;
  }
  for (int i = 0; i < 6; i++)
    palette[i] = plain_colours[i];
  blend_colours(palette + FIRST_SPEED, SPEEDS, speed_colours, 7);
  Axes axes = {120, 110, 120 + 8 * PER_UNIT, 110 + 5 * PER_UNIT, -4, 4, -2.5, 2.5, 1, 1};
  open_palette_page(WIDTH, HEIGHT, palette);
  draw_axes(&axes, "Ideal flow round a cylinder that turns clockwise", "radii of the cylinder",
            NULL);
  set_clip(axes.left + 1, axes.top + 1, axes.right - 1, axes.bottom - 1);
  draw_speeds(&axes);
  draw_lines(&axes);
  set_clip(0, 0, WIDTH - 1, HEIGHT - 1);
  draw_colour_bar(axes.right + 60, axes.top, axes.bottom, FIRST_SPEED, SPEEDS, 0, fastest, "speed");
  save_palette_png(argv[1], WIDTH, HEIGHT, palette);
  qqwfree();
  return 0;
}
