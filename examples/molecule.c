/* SPDX-License-Identifier: MIT
 *
 * The molecule C60, computed: molecule out.png
 *
 * Its atoms are the corners of a football: an icosahedron whose corners are cut off a third of the
 * way along each edge. Balls and rods run into one another, and the depth buffer finds where.
 */
#include "axes.h"
#include "scene.h"

enum { WIDTH = 1400, HEIGHT = 1200, CORNERS = 12, ATOMS = 60 };

/* The corners of an icosahedron with edges of length 2. */
static void fill_corners(Vector *corners) {
  const double golden = 1.6180339887498949;
  for (int i = 0; i < 4; i++) {
    double a = i & 1 ? 1 : -1, b = i & 2 ? golden : -golden;
    corners[3 * i] = vector(0, a, b);
    corners[3 * i + 1] = vector(a, b, 0);
    corners[3 * i + 2] = vector(b, 0, a);
  }
}

static double squared_distance(Vector a, Vector b) {
  Vector apart = minus(a, b);
  return dot(apart, apart);
}

static int fill_atoms(Vector *atoms) {
  Vector corners[CORNERS];
  int count = 0;
  fill_corners(corners);
  for (int i = 0; i < CORNERS; i++)
    for (int k = 0; k < CORNERS; k++)
      if (i != k && squared_distance(corners[i], corners[k]) < 4.1)
        atoms[count++] = plus(times(2 / 3.0, corners[i]), times(1 / 3.0, corners[k]));
  return count;
}

int main(int argc, char **argv) {
  if (argc != 2) fail("usage: molecule out.png");
  Vector atoms[ATOMS];
  if (fill_atoms(atoms) != ATOMS) fail("not 60 atoms");
  open_page(WIDTH, HEIGHT);
  use_depth();
  View view = view_from(vector(0.9, -1, 0.42), 255, 700, 630, 4);
  for (int i = 0; i < ATOMS; i++) {
    draw_ball(&view, atoms[i], 0.2, 0x4A6FA5);
    for (int k = 0; k < i; k++)
      if (squared_distance(atoms[i], atoms[k]) < 0.45)
        draw_rod(&view, atoms[i], atoms[k], 0.085, 0xD9A441);
  }
  qqvclr(INK);
  draw_text(60, 80, 32, LEFT, "C₆₀: 60 atoms, 90 bonds");
  save_png(argv[1], WIDTH, HEIGHT);
  return 0;
}
