/* SPDX-License-Identifier: MIT
 *
 * A field shaded by palette index: indexfield out.png
 *
 * Between two corners the index runs through all palette entries between theirs, so a palette
 * whose every other band is darker shows lines of equal potential without any contouring. Left:
 * triangles. Right: the same coarse mesh as quadrilaterals, interpolated bilinearly, whose bands do
 * not break along the diagonals.
 */
#include <math.h>

#include "axes.h"

enum { WIDTH = 1700, HEIGHT = 1000, RASTER = 101, MESH = 15, SIZE = 760 };
enum { PAPER, TEXT, FRAME, MARKS, FIRST = 4, SHADES = 250, BAND = 10 };

static const uint32_t stops[] = {0x313695, 0x74ADD1, 0xE0F3F8, 0xFEE090, 0xF46D43, 0xA50026};
static uint32_t palette[256] = {0xFFFFFF, 0x222222, 0x767676, 0xE4E4E4};

static void fill_palette(void) {
  blend_colours(palette + FIRST, SHADES, stops, sizeof stops / sizeof *stops);
  for (int i = 0; i < SHADES; i++) {
    uint32_t word = palette[FIRST + i];
    if (i / BAND % 2 != 0) palette[FIRST + i] = word - (word >> 3 & 0x1F1F1F);
  }
}

/* The potential of two charges of opposite sign; from -1 to 1. */
static double potential(double x, double y) {
  double near = 1 / sqrt((x + 0.4) * (x + 0.4) + (y - 0.15) * (y - 0.15) + 0.08);
  double far = 1 / sqrt((x - 0.45) * (x - 0.45) + (y + 0.25) * (y + 0.25) + 0.08);
  return (near - far) / 3.2;
}

typedef struct Node {
  int32_t x, y, index;
} Node;

/* A mesh whose lines are bent. */
static Node node(int left, int top, int i, int k) {
  double u = 2.0 * i / MESH - 1, v = 2.0 * k / MESH - 1;
  double x = u + 0.12 * (1 - u * u) * v, y = v - 0.16 * (1 - v * v) * u;
  double index = FIRST + (potential(x, y) + 1) / 2 * (SHADES - 1);
  Node n = {(int32_t)(left + (x + 1) / 2 * SIZE + 0.5), (int32_t)(top + (y + 1) / 2 * SIZE + 0.5),
            (int32_t)(index + 0.5)};
  return n;
}

/* Corners 0 and 1 lie along the row, as quadrilaterals want it. */
static void draw_cell(int left, int top, int i, int k, int bilinear) {
  Node nodes[4] = {node(left, top, i, k), node(left, top, i + 1, k), node(left, top, i + 1, k + 1),
                   node(left, top, i, k + 1)};
  int32_t x[4], y[4], index[4];
  for (int c = 0; c < 4; c++) {
    x[c] = nodes[c].x;
    y[c] = nodes[c].y;
    index[c] = nodes[c].index;
  }
  if (bilinear) {
    qqdtri2(x, y, index, 1, RASTER);
    qqdtri2(x, y, index, 2, RASTER);
    return;
  }
  const int32_t other_x[3] = {x[0], x[3], x[2]}, other_y[3] = {y[0], y[3], y[2]};
  const int32_t other_index[3] = {index[0], index[3], index[2]};
  qqdtri(x, y, index, RASTER);
  qqdtri(other_x, other_y, other_index, RASTER);
}

static void draw_field(int left, int top, int bilinear, const char *title) {
  for (int k = 0; k < MESH; k++)
    for (int i = 0; i < MESH; i++)
      draw_cell(left, top, i, k, bilinear);
  qqvclr(TEXT);
  draw_text(left + SIZE / 2, top - 30, 28, CENTRE, title);
}

int main(int argc, char **argv) {
  if (argc != 2) fail("usage: indexfield out.png");
  fill_palette();
  open_palette_page(WIDTH, HEIGHT, palette);
  draw_field(50, 130, 0, "Triangles");
  draw_field(870, 130, 1, "Bilinear quadrilaterals");
  qqvclr(TEXT);
  draw_text(WIDTH / 2, 960, 24, CENTRE, "Two charges, 15 by 15 cells");
  save_palette_png(argv[1], WIDTH, HEIGHT, palette);
  return 0;
}
