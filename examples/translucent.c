/* SPDX-License-Identifier: MIT
 *
 * Two ways to draw translucent surfaces: translucent out.png
 *
 * Left: a blend layer. Of all that is drawn into it the nearest surface remains, and it is blended
 * once, when the layer closes. Right: blended triangles. Each mixes with what is there already, so
 * the far sides show through, too.
 */
#include "axes.h"
#include "scene.h"

enum { WIDTH = 1600, HEIGHT = 900, CELLS = 60, RASTER = 101 };

/* A saddle, the graph of x^2 - y^2, with a chequered pattern. */
static Corner on_saddle(int i, int k, unsigned colour) {
  double x = 2.0 * i / CELLS - 1, y = 2.0 * k / CELLS - 1;
  Corner c = {vector(1.2 * x, 1.2 * y, 0.6 * (x * x - y * y)), vector(-x, y, 1), colour};
  return c;
}

static void draw_saddle(const View *view) {
  for (int i = 0; i < CELLS; i++)
    for (int k = 0; k < CELLS; k++) {
      unsigned colour = (i / 6 + k / 6) % 2 == 0 ? 0xC8BDA6 : 0x687A88;
      draw_quad(view, on_saddle(i, k, colour), on_saddle(i + 1, k, colour),
                on_saddle(i + 1, k + 1, colour), on_saddle(i, k + 1, colour));
    }
}

static void draw_sheet(const View *view, double height, unsigned colour) {
  Corner corners[4];
  for (int i = 0; i < 4; i++) {
    double x = i == 0 || i == 3 ? -1.2 : 1.2, y = i < 2 ? -1.2 : 1.2;
    Corner c = {vector(x, y, height), vector(0, 0, 1), colour};
    corners[i] = c;
  }
  draw_quad(view, corners[0], corners[1], corners[2], corners[3]);
}

static void draw_bodies(const View *view) {
  draw_sheet(view, -0.2, 0x2A9D5C);
  draw_ball(view, vector(-0.35, -0.3, 0.25), 0.55, 0xC8372D);
  draw_ball(view, vector(0.4, 0.15, 0.3), 0.5, 0x2C63C8);
}

static void by_layer(const View *view) {
  int32_t status = 0;
  draw_saddle(view);
  if (qqwabl(1, &status) != 0) fail("no memory for a layer");
  use_alpha(140);
  draw_bodies(view);
  qqwabl(2, &status);
  if (status != 0) fail("the layer cannot be blended");
  use_alpha(255);
}

static void by_blended_triangles(const View *view) {
  int32_t status = 0;
  draw_saddle(view);
  qqwabl(3, &status);
  if (status != 0) fail("triangles cannot be blended");
  use_alpha(110);
  draw_bodies(view);
  qqwabl(4, &status);
  if (status != 0) fail("triangles cannot be opaque again");
  use_alpha(255);
}

int main(int argc, char **argv) {
  if (argc != 2) fail("usage: translucent out.png");
  open_page(WIDTH, HEIGHT);
  use_depth();
  View left = view_from(vector(0.7, -1, 0.75), 222, 400, 450, 4);
  View right = view_from(vector(0.7, -1, 0.75), 222, 1200, 450, 4);
  by_layer(&left);
  by_blended_triangles(&right);
  qqvclr(INK);
  draw_text(400, 70, 30, CENTRE, "Blend layer");
  draw_text(1200, 70, 30, CENTRE, "Blended triangles");
  draw_text(400, 850, 22, CENTRE, "the nearest surface, once");
  draw_text(1200, 850, 22, CENTRE, "surface upon surface");
  save_png(argv[1], WIDTH, HEIGHT);
  return 0;
}
