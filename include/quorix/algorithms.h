/* SPDX-License-Identifier: MIT
 *
 * Data algorithms: triangulation of scattered points, a store of polygons that are read back in
 * order of a key, and a grid that keeps streamlines apart.
 *
 * They draw nothing and share nothing with the drawing operations. There is one polygon store and
 * one seed grid at a time; the triangulation and the index sort keep nothing between calls.
 */
#ifndef QUORIX_ALGORITHMS_H
#define QUORIX_ALGORITHMS_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Triangulation ----------------------------------------------------------------------- */

/* The Delaunay triangulation of n points in the plane.
 *
 * xray, yray  n + 3 entries each: the points, followed by room for the three corners of a triangle
 *             around all of them, which the call writes and leaves there
 * i1ray, i2ray, i3ray
 *             nmax entries each; receive the corners of each triangle as numbers of points, the
 *             first point being number 1. Their order within a triangle, and that of the triangles,
 *             means nothing
 * nmax        at least 2 * n + 1
 * ntri        receives the number of triangles; 0 unless the status is 0
 * status      0 done; 1 nmax too small; 2 no memory; 3 a point lies in the circles of too many
 *             triangles (k of them with 3 k >= n, or 3 k >= 100 if n is less); 4 three points of a
 *             triangle lie (nearly) on a line; 5 more than nmax triangles
 *
 * With n below 1 there are no triangles and the status is 0.
 *
 * All tolerances are absolute, 1e-8 in the units of the points or their squares: points in degrees
 * of a small region, or in metres of a large one, lose triangles or fail. So scale data to an
 * extent of 10 to 10000 first. Points nearer than the tolerance in both x and y count once. Corners
 * count from 1, so that in C the first corner of triangle i is at xray[i1ray[i] - 1]. Of points on
 * one circle, each way of joining them is equally good and any may be given. After a status of 3 or
 * more the triangle arrays hold nothing of use.
 *
 * Time grows a little faster than n: a million points take about two seconds. */
QUORIX_API int32_t qqdlau(double *xray, double *yray, int32_t n, int32_t *i1ray, int32_t *i2ray,
                          int32_t *i3ray, int32_t nmax, int32_t *ntri, int32_t *status);

/* ---- Index sort -------------------------------------------------------------------------- */

/* Sorts n indices by the keys that they stand for.
 *
 * keys   not changed; read at the places that `index` names
 * index  input: n places in `keys`, counted from 0: fill it with 0 to n - 1 before the call, since
 *        whatever stands there is taken for places. Output: the same places in the order in which
 *        their keys ascend; of equal keys the one with the higher index comes first
 *
 * A NaN among the keys harms nothing, but the others may not come out in order. */
QUORIX_API int32_t qqssrt(const double *keys, int32_t *index, int32_t n);

/* ---- Polygon store ----------------------------------------------------------------------- */

/* Opens, closes, sorts and counts the polygon store, which hands polygons back in descending order
 * of a key, such as their distance from the eye: qqsini mode 0, any number of qqsput and qqsput2,
 * qqsini mode 2, any number of qqsget and qqsget2, qqsini mode 1.
 *
 * mode      0 opens an empty store, in the place of an open one; 1 closes it; 2 sorts it; 3 counts
 *           the polygons. Any other mode does nothing
 * capacity  mode 0: number of polygons expected; 0, or less, means 10000. More may come
 * io        input, mode 0: vertices of each polygon that comes through qqsput; 0 means 4, and 1
 *           that each call tells its own. Output: 0 done; 1 no memory, and an open
 *           store stays as it was. Mode 3 gives the number of polygons
 *
 * Without an open store modes 1 and 2 do nothing and mode 3 counts 0. */
QUORIX_API int32_t qqsini(int32_t mode, int32_t capacity, int32_t *io);

/* Adds a polygon.
 *
 * x, y        nv vertices, kept in single precision
 * key         the polygon's place in the order
 * attribute1, attribute2
 *             handed back as they are
 * status      0 done; 1 no memory, no store, or nv negative, and the polygon is not stored. A store
 *             that could not be enlarged has lost its whole content */
QUORIX_API int32_t qqsput2(const double *x, const double *y, int32_t nv, const double *key,
                           int32_t attribute1, int32_t attribute2, int32_t *status);

/* The same with an attribute2 of 0 and the number of vertices told to qqsini.
 *
 * io  input: the number of vertices, if qqsini was told 1. Output: the status of qqsput2 */
QUORIX_API int32_t qqsput(const double *x, const double *y, const double *key, int32_t attribute1,
                          int32_t *io);

/* Reads a polygon of the sorted store. Any may be read, any number of times.
 *
 * x, y      12 entries each
 * position  0 is the polygon with the highest key; those of equal keys come in the order in which
 *           they were put
 * nv        receives the number of vertices, at most 12: a polygon with more comes with its first
 *           12, and without a word, so cut such polygons before they are put. 0, and nothing else
 *           is written, where there is no such position */
QUORIX_API int32_t qqsget2(double *x, double *y, int32_t position, int32_t *attribute1,
                           int32_t *attribute2, int32_t *nv);

/* The same without attribute2. */
QUORIX_API int32_t qqsget(double *x, double *y, int32_t position, int32_t *attribute1, int32_t *nv);

/* ---- Seed grid --------------------------------------------------------------------------- */

/* Opens and closes the seed grid, which helps to draw evenly spaced streamlines: it knows all
 * points of the lines traced so far, tells whether a new line may start at a given place, and hands
 * the lines back one after another so that places beside them can be tried. All arguments are
 * passed by reference.
 *
 * The way to go: open the grid, trace a first line and file it with qqseed4, flag 0. For places
 * beside a line that qqseed3 accepts, trace a line from there and file it with flag 1. Take the
 * next line from qqseed2 and do the same with it, until there is none; then close the grid.
 *
 * xmin, xmax, ymin, ymax, zmin, zmax
 *            the domain; the last two are not read unless ndim is 3
 * cell_size  edge of a cell: the distance that lines shall keep
 * ndim       3, or any other number for two dimensions
 * mode       0 opens, in the place of an open grid; 1 closes, whatever the other arguments say; any
 *            other does nothing
 * status     0 done; 1 with mode 0 no memory, a cell size that is not a positive number, or a
 *            domain of negative or infinite extent, with mode 1 no memory to file some points
 *
 * Returns 0, or 1 if the grid could not be opened; a grid that was open then stays. */
QUORIX_API int32_t qqseed1(const double *xmin, const double *xmax, const double *ymin,
                           const double *ymax, const double *zmin, const double *zmax,
                           const double *cell_size, const int32_t *ndim, const int32_t *mode,
                           int32_t *status);

/* Delivers the next line: the one after the line of the last qqseed4 with flag 0, then the one
 * after that, and so on.
 *
 * x, y, z  receive its points, as many as n1 + n2; z is not written unless ndim is 3
 * n1, n2   receive the two parts of the number of points
 * status   0 done; 1 there is no further line, or no grid (all else is left alone)
 *
 * Returns the status. A line can be had once. */
QUORIX_API int32_t qqseed2(double *x, double *y, double *z, int32_t *n1, int32_t *n2,
                           int32_t *status);

/* Tells whether a line may start at a point.
 *
 * z         not read unless ndim is 3
 * factor    the distance to keep, in cell sizes, at most 1 to be reliable
 * rejected  0 if the point is in the domain and no point filed so far is nearer than
 *           factor * cell_size; 1 if not, or without an open grid
 *
 * A grid of nx by ny cells, of which each axis has one or two more than cover the domain, serves
 * only cells whose place along x is below ny and along y below nx: in a domain that is not square,
 * points beyond are neither filed nor accepted. Near the edges a point may be rejected because of
 * one at the opposite edge. */
QUORIX_API int32_t qqseed3(const double *x, const double *y, const double *z, const double *factor,
                           int32_t *rejected);

/* Adds a line: files its points and puts it at the end of the queue of qqseed2.
 *
 * x, y, z  the points, n1 + n2 of them (none: nothing happens); z is not read unless ndim is 3
 * n1, n2   two parts of their number, which qqseed2 gives back
 * flag     0: qqseed2 goes on with the line after this one; otherwise it goes on where it is
 * status   0 done; 1 no memory, or no grid, and the line is not added
 *
 * Returns the status. */
QUORIX_API int32_t qqseed4(const double *x, const double *y, const double *z, const int32_t *n1,
                           const int32_t *n2, const int32_t *flag, int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
