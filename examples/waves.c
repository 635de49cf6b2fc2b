/* SPDX-License-Identifier: MIT
 *
 * An animation of a real computation: waves out.png [frames]
 *
 * The wave equation on a square membrane with a wall that has two slits, in steps of time; every
 * few steps the window shows the surface. The last frame is written.
 */
#include <math.h>
#include <stdlib.h>
#include <string.h>

#include "axes.h"

enum { SIDE = 480, WALL = 160, SLIT = 14, GAP = 52, STEPS_A_FRAME = 4, FRAMES = 150 };

static double before[SIDE][SIDE], now[SIDE][SIDE], after[SIDE][SIDE];
static uint8_t rgb[SIDE * 3];

static int is_wall(int row, int column) {
  int from_middle = row > SIDE / 2 ? row - SIDE / 2 : SIDE / 2 - row;
  int in_slit = from_middle > GAP / 2 && from_middle < GAP / 2 + SLIT;
  return column >= WALL && column < WALL + 4 && !in_slit;
}

/* One step: the surface is pulled toward the mean of its neighbours; the rim swallows waves. */
static void step(int time) {
  const double c = 0.4, damping = 0.9995;
  for (int row = 1; row + 1 < SIDE; row++) {
    now[row][1] = 0.9 * sin(time * 0.25);
    for (int column = 1; column + 1 < SIDE; column++) {
      double bend = now[row - 1][column] + now[row + 1][column] + now[row][column - 1] +
                    now[row][column + 1] - 4 * now[row][column];
      double rim = column > SIDE - 40 || row < 40 || row > SIDE - 40 ? 0.97 : damping;
      after[row][column] = is_wall(row, column)
                               ? 0
                               : rim * (2 * now[row][column] - before[row][column] + c * bend) +
                                     (1 - rim) * now[row][column];
    }
  }
  memcpy(before, now, sizeof now);
  memcpy(now, after, sizeof now);
}

static uint8_t shade(double value) {
  return (uint8_t)(value < 0 ? 0 : value > 255 ? 255 : value);
}

/* Rows of colours go straight into the window's bitmap. */
static void show_surface(void) {
  int32_t status = 0;
  qqwimg(0, &status);
  if (status != 0) fail("no memory for the window's pixels");
  for (int row = 0; row < SIDE; row++) {
    for (int column = 0; column < SIDE; column++) {
      double u = now[row][column];
      uint8_t *to = rgb + 3 * column;
      to[0] = shade(is_wall(row, column) ? 40 : 235 + 150 * (u > 0 ? 0 : u));
      to[1] = shade(is_wall(row, column) ? 40 : 235 - 110 * fabs(u));
      to[2] = shade(is_wall(row, column) ? 40 : 235 - 150 * (u > 0 ? u : 0));
    }
    qqwrow(rgb, 0, row, -SIDE);
  }
  qqwimg(1, &status);
  qqwsbf();
}

int main(int argc, char **argv) {
  if (argc != 2 && argc != 3) fail("usage: waves out.png [frames]");
  int frames = argc == 3 ? atoi(argv[2]) : FRAMES;
  open_window(72, SIDE, SIDE);
  for (int frame = 0, time = 0; frame < frames; frame++) {
    for (int i = 0; i < STEPS_A_FRAME; i++)
      step(time++);
    show_surface();
  }
  save_window(argv[1], SIDE, SIDE);
  qqwfin(0);
  return 0;
}
