/* SPDX-License-Identifier: MIT
 *
 * A shell as a coloured mesh: shell out.ply out.png
 *
 * A circle grows as it winds down round an axis (D. M. Raup, 1966). The mesh is written as a PLY
 * file that any viewer of meshes shows; what the picture shows is read from that file.
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "axes.h"
#include "scene.h"

enum { WIDTH = 1300, HEIGHT = 1300, PER_TURN = 120, RINGS = 8 * PER_TURN, AROUND = 60 };
enum { RIBS = 20, BANDS = 3 };

/* Cosine and sine of a step of the turn, and what a step grows by: the size doubles in 1.4 turns.
 */
static const double step_cosine = 0.9986295347545738, step_sine = 0.05233595624294383;
static const double growth = 1.004134399219235;

typedef struct Point {
  double x, y;
} Point;

static Point turn[PER_TURN];

static void fill_turn(void) {
  turn[0].x = 1;
  turn[0].y = 0;
  for (int i = 1; i < PER_TURN; i++) {
    turn[i].x = turn[i - 1].x * step_cosine - turn[i - 1].y * step_sine;
    turn[i].y = turn[i - 1].x * step_sine + turn[i - 1].y * step_cosine;
  }
}

/* ---- The mesh ---------------------------------------------------------------------------- */

typedef struct Spot {
  double at[3], colour[3];
} Spot;

/* Corner `around` of ring `ring`, where the shell has grown to `size`. */
static Spot on_shell(int ring, int around, double size) {
  static const double light[3] = {0.96, 0.90, 0.79}, dark[3] = {0.52, 0.23, 0.12};
  Point way = turn[ring % PER_TURN];
  Point tube = turn[around % AROUND * (PER_TURN / AROUND)];
  double rib = 1 + 0.035 * turn[ring * RIBS % PER_TURN].x;
  double distance = size * (1 + 1.02 * rib * tube.x);
  double down = size * (4.1 - 1.25 * rib * tube.y);
  /* Flames: bands round the tube that run zigzag from ring to ring. */
  int wave = abs(ring * 5 % PER_TURN - PER_TURN / 2) / 2;
  double band = turn[(around * 2 * BANDS + wave + PER_TURN) % PER_TURN].y;
  double part = band > 0.7 ? 1 : band < 0 ? 0 : band / 0.7;
  Spot spot = {{distance * way.x, distance * way.y, -down}, {0, 0, 0}};
  for (int i = 0; i < 3; i++)
    spot.colour[i] = light[i] + (dark[i] - light[i]) * part;
  return spot;
}

static void add_polygon(const Spot *spots, int count) {
  double at[3][4], colour[3][4];
  int32_t n = count, status = 0;
  for (int i = 0; i < count; i++)
    for (int k = 0; k < 3; k++) {
      at[k][i] = spots[i].at[k];
      colour[k][i] = spots[i].colour[k];
    }
  qqply1(at[0], at[1], at[2], colour[0], colour[1], colour[2], &n, &status);
  if (status != 0) fail("no memory for the mesh");
}

static void write_mesh(const char *file) {
  double size = 0.0155;
  for (int ring = 0; ring + 1 < RINGS; ring++, size *= growth)
    for (int around = 0; around < AROUND; around++) {
      Spot spots[4] = {on_shell(ring, around, size), on_shell(ring + 1, around, size * growth),
                       on_shell(ring + 1, around + 1, size * growth),
                       on_shell(ring, around + 1, size)};
      add_polygon(spots, 4);
    }
  int32_t mode = 0, status = 0;
  qqply2(file, "shell", &mode, &status);
  check_written(file, status);
}

/* ---- The picture ------------------------------------------------------------------------- */

enum { MOST_CORNERS = RINGS * AROUND };

static Corner corners[MOST_CORNERS];

/* A polygon of four corners, whose normal adds to those of its corners. */
static void add_normal(const int *face) {
  Vector normal = cross(minus(corners[face[2]].at, corners[face[0]].at),
                        minus(corners[face[3]].at, corners[face[1]].at));
  for (int i = 0; i < 4; i++)
    corners[face[i]].normal = plus(corners[face[i]].normal, normal);
}

static int read_number_after(FILE *stream, const char *start) {
  char line[200];
  while (fgets(line, sizeof line, stream) != NULL)
    if (strncmp(line, start, strlen(start)) == 0) return atoi(line + strlen(start));
  fail("the mesh has no line \"%s\"", start);
  return 0;
}

static void read_corners(FILE *stream, int count) {
  if (count > MOST_CORNERS) fail("the mesh has %d corners", count);
  for (int i = 0; i < count; i++) {
    Vector at;
    unsigned r, g, b;
    if (fscanf(stream, "%lf %lf %lf %u %u %u", &at.x, &at.y, &at.z, &r, &g, &b) != 6)
      fail("corner %d of the mesh cannot be read", i);
    Corner corner = {at, vector(0, 0, 0), r << 16 | g << 8 | b};
    corners[i] = corner;
  }
}

static void draw_mesh(const View *view, const char *file) {
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  int corner_count = read_number_after(stream, "element vertex ");
  int face_count = read_number_after(stream, "element face ");
  read_number_after(stream, "end_header");
  read_corners(stream, corner_count);
  int(*faces)[4] = malloc((size_t)face_count * sizeof *faces);
  if (faces == NULL) fail("no memory for %d polygons", face_count);
  for (int i = 0; i < face_count; i++) {
    int count = 0, *face = faces[i];
    int read = fscanf(stream, "%d %d %d %d %d", &count, &face[0], &face[1], &face[2], &face[3]);
    if (read != 5 || count != 4) fail("polygon %d of the mesh cannot be read", i);
    for (int k = 0; k < 4; k++)
      if (face[k] < 0 || face[k] >= corner_count) fail("polygon %d has a wrong corner", i);
    add_normal(face);
  }
  fclose(stream);
  for (int i = 0; i < face_count; i++)
    draw_quad(view, corners[faces[i][0]], corners[faces[i][1]], corners[faces[i][2]],
              corners[faces[i][3]]);
  free(faces);
  char text[100];
  snprintf(text, sizeof text, "A shell of %d polygons with %d corners", face_count, corner_count);
  qqvclr(INK);
  draw_text(60, 80, 30, LEFT, text);
}

int main(int argc, char **argv) {
  if (argc != 3) fail("usage: shell out.ply out.png");
  fill_turn();
  write_mesh(argv[1]);
  open_page(WIDTH, HEIGHT);
  use_depth();
  View view = view_from(vector(0.3, 1, 0.22), 250, 650, 165, 8);
  draw_mesh(&view, argv[1]);
  save_png(argv[2], WIDTH, HEIGHT);
  return 0;
}
