/* SPDX-License-Identifier: MIT
 *
 * What the example programs with depth share: a parallel view, light, and solids made of shaded
 * triangles.
 */
#ifndef EXAMPLES_SCENE_H
#define EXAMPLES_SCENE_H

typedef struct Vector {
  double x, y, z;
} Vector;

Vector vector(double x, double y, double z);
Vector plus(Vector a, Vector b);
Vector minus(Vector a, Vector b);
Vector times(double factor, Vector a);
double dot(Vector a, Vector b);
Vector cross(Vector a, Vector b);
Vector unit(Vector a);

typedef struct View {
  Vector right, up, toward; /* of the picture, toward the viewer; of length 1 */
  double scale;             /* pixels for 1 */
  double x, y;              /* where the origin stands */
  double reach;             /* everything lies between -reach and reach from the origin in depth */
} View;

/* Sees the origin from `eye`, with z upward. */
View view_from(Vector eye, double scale, double x, double y, double reach);

/* A corner of a triangle: where it is, where its surface faces, and its colour 0xRRGGBB. */
typedef struct Corner {
  Vector at, normal;
  unsigned colour;
} Corner;

/* Both sides of a surface are lit, by a lamp to the upper left behind the viewer. */
void draw_triangle(const View *view, Corner a, Corner b, Corner c);
void draw_quad(const View *view, Corner a, Corner b, Corner c, Corner d);

/* A depth-tested line in a packed colour. */
void draw_edge(const View *view, Vector a, Vector b, int colour);

void draw_ball(const View *view, Vector centre, double radius, unsigned colour);
void draw_rod(const View *view, Vector from, Vector to, double radius, unsigned colour);

/* Scenes are drawn on the page, or from now on the device of a number: a window up to 100. */
void draw_scene_on(int device);

/* Switch depth buffering on, and an alpha from 0 to 255. */
void use_depth(void);
void use_alpha(int alpha);

#endif
