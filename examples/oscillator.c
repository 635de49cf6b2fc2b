/* SPDX-License-Identifier: MIT
 *
 * A chart in a window that then writes the same picture: oscillator out.png
 *
 * Van der Pol's oscillator x'' = m (1 - x x) x' - x from several starts, computed with steps of
 * Runge and Kutta. Every start ends on the same cycle.
 */
#include "axes.h"

enum { WIDTH = 1200, HEIGHT = 800, STEPS = 1500 };

static const double stiffness = 1.5, step = 0.01;

typedef struct State {
  double x, v;
} State;

static State slope(State s) {
  State d = {s.v, stiffness * (1 - s.x * s.x) * s.v - s.x};
  return d;
}

static State moved(State s, State d, double by) {
  State to = {s.x + by * d.x, s.v + by * d.v};
  return to;
}

static State next(State s) {
  State a = slope(s), b = slope(moved(s, a, step / 2)), c = slope(moved(s, b, step / 2));
  State d = slope(moved(s, c, step));
  State mean = {(a.x + 2 * b.x + 2 * c.x + d.x) / 6, (a.v + 2 * b.v + 2 * c.v + d.v) / 6};
  return moved(s, mean, step);
}

static void draw_path(const Axes *axes, State s, int colour) {
  plot_colour(colour);
  for (int i = 0; i < STEPS; i++, s = next(s))
    plot_pen(column_of(axes, s.x), row_of(axes, s.v), i == 0 ? 3 : 2);
}

int main(int argc, char **argv) {
  static const State starts[] = {{0.1, 0}, {-3, 3.5}, {3, -3.5}, {0, 4}};
  static const int colours[] = {BLUE, VERMILION, GREEN, PURPLE};
  if (argc != 2) fail("usage: oscillator out.png");
  open_window(72, WIDTH, HEIGHT);
  Axes axes = {150, 90, WIDTH - 50, HEIGHT - 110, -4, 4, -5, 5, 1, 1};
  draw_axes(&axes, "Van der Pol's oscillator: one cycle for all", "x", "dx/dt");
  set_pen(2, ROUND_CAP, ROUND_JOIN);
  for (int i = 0; i < 4; i++)
    draw_path(&axes, starts[i], colours[i]);
  qqwsbf();
  save_window(argv[1], WIDTH, HEIGHT);
  qqwfin(0); /* waits for the right button */
  return 0;
}
