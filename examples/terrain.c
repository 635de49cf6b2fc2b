/* SPDX-License-Identifier: MIT
 *
 * A surface in a window, through OpenGL where it can be had: terrain out.png
 *
 * Device 81 draws through OpenGL; where there is none it says so and draws into a bitmap, with the
 * same operations. The surface is computed: ripples round two stones.
 */
#include <math.h>

#include "axes.h"
#include "scene.h"

enum { WIDTH = 900, HEIGHT = 640, CELLS = 120 };

static double height_at(double x, double y) {
  double a = hypot(x - 0.4, y + 0.1) * 22, b = hypot(x + 0.5, y - 0.3) * 22;
  return 0.22 * (sin(a) / (1 + a / 3) + sin(b) / (1 + b / 3));
}

static Corner corner_at(int row, int column) {
  const double d = 1e-4;
  double x = 2.0 * column / CELLS - 1, y = 2.0 * row / CELLS - 1, z = height_at(x, y);
  Vector east = vector(d, 0, height_at(x + d, y) - z);
  Vector north = vector(0, d, height_at(x, y + d) - z);
  unsigned warm = (unsigned)(128 + 520 * z > 255 ? 255 : 128 + 520 * z < 0 ? 0 : 128 + 520 * z);
  Corner c = {vector(x, y, z), cross(east, north), warm << 16 | 0x7000 | (255 - warm)};
  return c;
}

int main(int argc, char **argv) {
  if (argc != 2) fail("usage: terrain out.png");
  int32_t status = 72; /* for the writer: a window */
  open_window(81, WIDTH, HEIGHT);
  draw_scene_on(status);
  use_depth();
  View view = view_from(vector(0.5, -1, 0.9), 330, WIDTH / 2, HEIGHT / 2, 2);
  qqwimg(0, &status);
  for (int row = 0; row < CELLS; row++)
    for (int column = 0; column < CELLS; column++)
      draw_quad(&view, corner_at(row, column), corner_at(row, column + 1),
                corner_at(row + 1, column + 1), corner_at(row + 1, column));
  qqwimg(1, &status);
  if (status != 0) fail("no memory for the window's pixels");
  save_window(argv[1], WIDTH, HEIGHT);
  qqwfin(0);
  return 0;
}
