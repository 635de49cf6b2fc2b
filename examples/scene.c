/* SPDX-License-Identifier: MIT
 *
 * Views, light and solids of the example programs. Nothing here takes a sine, so that pictures are
 * the same with every C library.
 */
#include "scene.h"

#include <math.h>
#include <quorix/quorix.h>

#include "axes.h"

static int scene_device = 101; /* the page */

void draw_scene_on(int device) {
  scene_device = device;
}

Vector vector(double x, double y, double z) {
  Vector v = {x, y, z};
  return v;
}

Vector plus(Vector a, Vector b) {
  return vector(a.x + b.x, a.y + b.y, a.z + b.z);
}

Vector minus(Vector a, Vector b) {
  return vector(a.x - b.x, a.y - b.y, a.z - b.z);
}

Vector times(double factor, Vector a) {
  return vector(factor * a.x, factor * a.y, factor * a.z);
}

double dot(Vector a, Vector b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector cross(Vector a, Vector b) {
  return vector(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

Vector unit(Vector a) {
  return times(1 / sqrt(dot(a, a)), a);
}

View view_from(Vector eye, double scale, double x, double y, double reach) {
  View view;
  view.toward = unit(eye);
  view.right = unit(cross(vector(0, 0, 1), view.toward));
  view.up = cross(view.toward, view.right);
  view.scale = scale;
  view.x = x;
  view.y = y;
  view.reach = reach;
  return view;
}

static double column(const View *view, Vector p) {
  return view->x + view->scale * dot(p, view->right);
}

static double row(const View *view, Vector p) {
  return view->y - view->scale * dot(p, view->up);
}

/* From 0, near, to 1. */
static double depth(const View *view, Vector p) {
  return 0.5 - dot(p, view->toward) / (2 * view->reach);
}

/* A channel under diffuse light and a highlight. */
static double lit(double channel, double diffuse, double highlight) {
  double v = channel * (0.3 + 0.7 * diffuse) + highlight;
  return v > 1 ? 1 : v;
}

static void add_corner(const View *view, Corner c, int i, double *x, double *y, double *z,
                       double *r, double *g, double *b) {
  Vector n = unit(c.normal);
  if (dot(n, view->toward) < 0) n = times(-1, n);
  Vector lamp = unit(plus(times(-0.45, view->right), plus(times(0.6, view->up), view->toward)));
  double diffuse = dot(n, lamp);
  if (diffuse < 0) diffuse = 0;
  double gleam = dot(n, unit(plus(lamp, view->toward)));
  for (int k = 0; k < 5; k++)
    gleam *= gleam;
  x[i] = column(view, c.at);
  y[i] = row(view, c.at);
  z[i] = depth(view, c.at);
  r[i] = lit((c.colour >> 16 & 255) / 255.0, diffuse, 0.35 * gleam);
  g[i] = lit((c.colour >> 8 & 255) / 255.0, diffuse, 0.35 * gleam);
  b[i] = lit((c.colour & 255) / 255.0, diffuse, 0.35 * gleam);
}

void draw_triangle(const View *view, Corner a, Corner b, Corner c) {
  double x[3], y[3], z[3], red[3], green[3], blue[3];
  add_corner(view, a, 0, x, y, z, red, green, blue);
  add_corner(view, b, 1, x, y, z, red, green, blue);
  add_corner(view, c, 2, x, y, z, red, green, blue);
  qqztri3(x, y, z, red, green, blue, scene_device);
}

void draw_quad(const View *view, Corner a, Corner b, Corner c, Corner d) {
  draw_triangle(view, a, b, c);
  draw_triangle(view, a, c, d);
}

void draw_edge(const View *view, Vector a, Vector b, int colour) {
  double x[2] = {column(view, a), column(view, b)};
  double y[2] = {row(view, a), row(view, b)};
  double z[2] = {depth(view, a), depth(view, b)};
  qqzlin2(x, y, colour, z, scene_device);
}

typedef struct Ball {
  Vector centre;
  double radius;
  unsigned colour;
  int front; /* which half is drawn */
} Ball;

static Corner on_ball(const Ball *ball, Vector direction) {
  Corner c = {plus(ball->centre, times(ball->radius, direction)), direction, ball->colour};
  return c;
}

/* A face of the ball, cut in four until it is fine. */
static void draw_face(const View *view, const Ball *ball, Vector a, Vector b, Vector c, int cuts) {
  if (cuts == 0) {
    int front = dot(plus(a, plus(b, c)), view->toward) >= 0;
    if (front == ball->front)
      draw_triangle(view, on_ball(ball, a), on_ball(ball, b), on_ball(ball, c));
    return;
  }
  Vector ab = unit(plus(a, b)), bc = unit(plus(b, c)), ca = unit(plus(c, a));
  draw_face(view, ball, a, ab, ca, cuts - 1);
  draw_face(view, ball, ab, b, bc, cuts - 1);
  draw_face(view, ball, ca, bc, c, cuts - 1);
  draw_face(view, ball, ab, bc, ca, cuts - 1);
}

/* The far half comes first, for balls that one sees through. */
void draw_ball(const View *view, Vector centre, double radius, unsigned colour) {
  for (int front = 0; front < 2; front++) {
    Ball ball = {centre, radius, colour, front};
    for (int octant = 0; octant < 8; octant++) {
      Vector x = vector(octant & 1 ? 1 : -1, 0, 0);
      Vector y = vector(0, octant & 2 ? 1 : -1, 0);
      Vector z = vector(0, 0, octant & 4 ? 1 : -1);
      draw_face(view, &ball, x, y, z, 4);
    }
  }
}

void draw_rod(const View *view, Vector from, Vector to, double radius, unsigned colour) {
  enum { SIDES = 24 };
  const double cos15 = 0.96592582628906829, sin15 = 0.25881904510252076;
  Vector along = unit(minus(to, from));
  Vector other = fabs(along.z) < 0.9 ? vector(0, 0, 1) : vector(1, 0, 0);
  Vector u = unit(cross(along, other));
  Vector v = cross(along, u);
  for (int i = 0; i < SIDES; i++) {
    Vector next_u = plus(times(cos15, u), times(sin15, v));
    Vector next_v = minus(times(cos15, v), times(sin15, u));
    Corner a = {plus(from, times(radius, u)), u, colour};
    Corner b = {plus(to, times(radius, u)), u, colour};
    Corner c = {plus(to, times(radius, next_u)), next_u, colour};
    Corner d = {plus(from, times(radius, next_u)), next_u, colour};
    draw_quad(view, a, b, c, d);
    u = next_u;
    v = next_v;
  }
}

void use_depth(void) {
  int32_t status = scene_device;
  qqzbuf(0, &status);
  if (status != 0) fail("no depth buffer (status %d)", (int)status);
}

void use_alpha(int alpha) {
  int32_t value = alpha;
  qqwwid(19, &value, 1);
}
