/* SPDX-License-Identifier: MIT
 *
 * Depth rendering: a depth buffer, lines and triangles tested against it, blend layers, and
 * triangles shaded by a palette index.
 *
 * A `device` argument above 100 means the raster; 100 or less means the window, and where there is
 * none nothing is drawn. Coordinates are pixels, (0, 0) is the upper left corner, y grows downward.
 * Everything is drawn within the clip rectangle and on the page alone. Colour arguments are those
 * of raster.h; z grows away from the viewer, and what the depth buffer keeps must lie below 2.
 *
 * A window that draws through OpenGL has these operations done by OpenGL, unless a blend layer is
 * open.
 */
#ifndef QUORIX_DEPTH_H
#define QUORIX_DEPTH_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Depth buffer ------------------------------------------------------------------------ */

/* Switches depth buffering.
 *
 * op      0 on, with a cleared buffer of the page's size; 1 off; 2 clears the buffer; 3 erases the
 *         picture, which only works while depth buffering is on; any other number does nothing
 * status  input: the number of the device that op 3 erases
 *         output: 0 done; 1 no memory, no page, or no drawing record yet; 2 op 0 while depth
 *         buffering is on, or any of the others while it is off: nothing was done
 *
 * A page that is opened again gets a cleared buffer of its new size; cropping the raster crops the
 * buffer. qqvfin leaves depth buffering on. */
QUORIX_API int32_t qqzbuf(int32_t op, int32_t *status);

/* ---- Lines ------------------------------------------------------------------------------- */

/* A line of one pixel, drawn where it is not hidden: where the depth buffer holds at least z minus
 * a tolerance (qqwwid options 17 and 18), which lets lines on a surface show. Its pixels enter the
 * depth buffer. While depth buffering is off all of it is drawn.
 *
 * x, y, z  both ends, in pixels and depths. The line steps along its longer axis in increments, z
 *          with it.
 * colour   an index or a packed colour; the current colour stays as it was
 *
 * Lines that are still gathered (see qqvdrw) come out later than this one. */
QUORIX_API int32_t qqzlin2(const double *x, const double *y, int32_t colour, const double *z,
                           int32_t device);

/* The same with ends in whole pixels. */
QUORIX_API int32_t qqzlin(const int32_t *x, const int32_t *y, int32_t colour, const double *z,
                          int32_t device);

/* A line, or a point where both ends are less than half a pixel apart, in the current OpenGL
 * colour. Nothing happens where the window does not draw through OpenGL. */
QUORIX_API int32_t qqgllin(const double *x1, const double *y1, const double *x2, const double *y2);

/* ---- Translucent drawing ----------------------------------------------------------------- */

/* Opens and closes a blend layer, and switches blended triangles.
 *
 * op      1 opens a layer: until it is closed everything for the raster is drawn into it, with the
 *           alpha of qqwwid option 19
 *         2 closes it: every pixel with an alpha above 0 is blended onto the picture (with option
 *           21, a pixel of untouched background takes the colour in full), and takes its alpha
 *           along; the layer is empty then. Without an open layer nothing happens.
 *         3 the triangles of qqztri, qqztri2 and qqztri3 are blended with the picture by the alpha
 *           of option 19; only on RGBA rasters and windows of 24 or 32 bits
 *         4 they are opaque again
 * status  0 done; 1 no memory, or op 1 on a palette raster, without a page or without a drawing
 *         record, or op 2 could not reach the window's pixels
 *
 * Returns 1 where op 1 failed: what was the target remains it. Otherwise 0. Opening an open layer
 * again does nothing. */
QUORIX_API int32_t qqwabl(int32_t op, int32_t *status);

/* ---- Triangles with a colour per corner -------------------------------------------------- */

/* A triangle whose colour and depth are interpolated between its corners, drawn where the depth
 * buffer holds at least z - 1e-6; while blended (qqwabl op 3), where it holds more than z + 0.001.
 * While depth buffering is off all of it is drawn.
 *
 * x, y, z  three corners, in pixels and depths
 * r, g, b  of the corners, from 0 to 1
 * device   for the raster, lines still gathered are drawn first
 *
 * Both ends of every row are drawn, so adjacent triangles overlap by a pixel. On a white page
 * qqwwid option 3 exchanges pure black and pure white. */
QUORIX_API int32_t qqztri3(const double *x, const double *y, const double *z, const double *r,
                           const double *g, const double *b, int32_t device);

/* The same with three colour arguments. */
QUORIX_API int32_t qqztri2(const double *x, const double *y, const int32_t *colour, const double *z,
                           int32_t device);

/* The same with corners in whole pixels. */
QUORIX_API int32_t qqztri(const int32_t *x, const int32_t *y, const int32_t *colour,
                          const double *z, int32_t device);

/* ---- Triangles with a palette index per corner ------------------------------------------- */

/* A triangle whose palette index is interpolated between its corners, without depth. On the way
 * from index 0 to 255 all entries between are drawn, not mixtures of the two colours.
 *
 * x, y    three corners in whole pixels
 * colour  their indices. A packed colour is interpolated as the number that it is, except through
 *         OpenGL, which interpolates the colours of the three arguments. */
QUORIX_API int32_t qqdtri(const int32_t *x, const int32_t *y, const int32_t *colour,
                          int32_t device);

/* Half of a quadrilateral whose palette index is interpolated bilinearly between its four corners.
 *
 * x, y    four corners in whole pixels, numbered around it
 * colour  their indices
 * half    1 draws the triangle of the corners 0, 1 and 2, any other number that of 0, 3 and 2
 *
 * A pixel of the triangle that the bilinear map does not reach is left out, and what follows it in
 * its row moves left by one pixel (not on windows of 16 bits). An upright rectangle whose corners 0
 * and 1 stand above one another is not reached at all: number corners 0 and 1 along the row.
 * OpenGL draws a plain triangle, as qqdtri. */
QUORIX_API int32_t qqdtri2(const int32_t *x, const int32_t *y, const int32_t *colour, int32_t half,
                           int32_t device);

#ifdef __cplusplus
}
#endif

#endif
