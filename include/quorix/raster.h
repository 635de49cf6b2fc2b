/* SPDX-License-Identifier: MIT
 *
 * The raster: a picture in memory.
 *
 * qqvini opens it, the drawing operations fill it, qqvptr, qqvrdr and the image writers take the
 * pixels out, qqvfin releases it. Only one raster is open at a time.
 *
 * Coordinates are pixels: (0, 0) is the upper left corner, y grows downward. A raster is either a
 * palette raster, one byte per pixel that is an index into the table loaded by qqvvlt, or an RGBA
 * raster, four bytes per pixel in the order red, green, blue, alpha. Rows follow one another from
 * the top without padding.
 *
 * A colour argument is a palette index from 0 to 255, or a packed colour 0x01BBGGRR: red in the
 * low byte, then green, then blue, and 1 in the high byte. Any other number counts as an index by
 * its low 8 bits, without a status. Palette tables, on the other hand, hold words 0xRRGGBB, which
 * make no colour argument: 0xFF8000 in a table is orange, as a colour it is entry 0.
 *
 * Pixels are written only on the page, whatever the arguments. The clip rectangle is the whole page
 * at first; qqwwid options 11 to 14 set it. It holds
 *
 *   always               for polygons, triangles, symbols, dots, qqvpix, lines of width 4 and more,
 *                        and slanting segments that are antialiased or 2 or 3 pixels wide
 *   with clipping on     (qqwwid option 33) for qqvfll and all other segments (but the rows or
 *                        columns that their width adds are always held to it)
 *   never                for qqvwpx, qqvrow and qqvfil
 *
 * Clipping is off at first: who sets options 11 to 14 and wants rectangles and thin lines to end
 * there sets option 33 to QUORIX_CLIPPING_ON as well.
 *
 * Before qqvini, and after qqvfin, every operation does nothing and gives a harmless result.
 */
#ifndef QUORIX_RASTER_H
#define QUORIX_RASTER_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Life cycle -------------------------------------------------------------------------- */

/* Opens the raster, all background, and makes its whole page the clip rectangle.
 *
 * page_w     a negative value asks for an RGBA raster, otherwise it is a palette raster; its
 *            absolute value and page_h tell the orientation of the page
 * page_h     see page_w; neither is a size in pixels, those are w and h
 * w, h       size in pixels. have_size not 0: input, each at least 1. have_size 0: output, 603 by
 *            853 if |page_w| <= page_h, otherwise 853 by 603
 * status     input: a first byte that is not 0 asks for a white background, which only an RGBA
 *            raster has (white with alpha 0); all other backgrounds are bytes 0.
 *            output: 0 done; 1 no memory, or a size below 1 (there is no raster then)
 *
 * The status is read before it is written: one that was not set to 0 may give a white page. A white
 * page shows white only where alpha is dropped, since its alpha is 0. Without the minus sign of
 * page_w the raster has palette indices, and packed colours become the nearest of a palette that is
 * black until qqvvlt loads one.
 *
 * An open raster is replaced. Palette, current colour, pen and lines not drawn yet stay as they
 * were. */
QUORIX_API int32_t qqvini(int32_t page_w, int32_t page_h, int32_t *w, int32_t *h, int32_t have_size,
                          int32_t *status);

/* Releases the raster's memory. Palette, pen and options stay for the next qqvini. */
QUORIX_API int32_t qqvfin(void);

/* Makes the whole raster background again. */
QUORIX_API int32_t qqvers(void);

/* Hands out the address of the first pixel; valid until the next qqvini, qqvwin, qqvfin or qqwfree.
 * Lines that are still gathered (see qqvdrw) are not in it: call qqvclr, or any operation that
 * reads pixels, first. Null after a qqvini that failed, and where there was none. */
QUORIX_API int32_t qqvptr(uint8_t **raster);

/* Crops the raster to the rectangle of w by h pixels whose upper left corner is (x, y).
 *
 * status  0 done; -2 no memory; -3 the rectangle is empty or not within the raster
 *
 * Returns 0, or 1 on failure, with the raster unchanged. Afterwards the clip rectangle ends at the
 * new right and lower edges; its left and upper edges stay where they were. */
QUORIX_API int32_t qqvwin(const int32_t *x, const int32_t *y, const int32_t *w, const int32_t *h,
                          int32_t *status);

/* The smallest rectangle that holds every pixel which differs from the background, corners
 * inclusive. An untouched raster gives x1 = width, y1 = height, x2 = y2 = -1. Alpha does not
 * count. */
QUORIX_API int32_t qqvcrp(int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2);

/* ---- Colours ----------------------------------------------------------------------------- */

/* Sets the current colour, which lines, polygons and symbols are drawn in. In a palette raster a
 * packed colour becomes the nearest colour of the palette. Orange is 0x010080FF, see above. */
QUORIX_API int32_t qqvclr(int32_t colour);

/* Loads the palette: 9 words 0xRRGGBB for kind 0, 16 for kind 7, 256 for any other kind; as many
 * are read, whatever the size of the table. These words have red above, colour arguments below.
 * Does nothing before the first qqvini or qqwwid. */
QUORIX_API int32_t qqvvlt(uint8_t kind, const uint32_t *table);

/* ---- Lines ------------------------------------------------------------------------------- */

/* Moves the pen: code 2 draws a line to (x, y), any other code (3 by custom) goes there without
 * drawing.
 *
 * Up to 100 points are gathered and drawn as one polyline, in the colour and with the pen of that
 * time, when the pen goes up or any state changes. A draw without a start point draws nothing. A
 * draw to where the pen is makes a dot. Width, caps and joins: qqwwid options 26, 27, 28. */
QUORIX_API int32_t qqvdrw(int32_t x, int32_t y, int32_t code);

/* A line from (x1, y1) to (x2, y2): a move and a draw. */
QUORIX_API int32_t qqvlin(int32_t x1, int32_t y1, int32_t x2, int32_t y2);

/* ---- Areas and symbols ------------------------------------------------------------------- */

/* Fills the rectangle with the corners (x1, y1) and (x2, y2), both inclusive. Nothing happens
 * where x1 > x2 or y1 > y2. The current colour stays as it was. The clip rectangle counts only with
 * clipping on (qqwwid option 33), which it is not at first. */
QUORIX_API int32_t qqvfll(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t colour);

/* Sets one pixel if it lies within the clip rectangle. The current colour stays as it was. */
QUORIX_API int32_t qqvpix(int32_t x, int32_t y, int32_t colour);

/* Fills a polygon by the even-odd rule in the current colour.
 *
 * xs, ys  n corners each, in pixels; a polygon with a NaN among its ys is not drawn
 * n       number of corners
 * status  0 done; 1 some row had more than 99 crossings and was drawn with its first 99, or there
 *         is no drawing record yet
 *
 * The crossings beyond 99 are those of the edges that come last, so an area under a curve that
 * swings more than 49 times across a row is cut off: fill it in several polygons, each over a part
 * of xs. */
QUORIX_API int32_t qqvpol(const double *xs, const double *ys, const int32_t *n, int32_t *status);

/* Draws a marker of the given size (its full width in pixels) centred on (x, y), with the current
 * colour and pen, always clipped.
 *
 * symbol  0 square, 1 octagon, 2 triangle up, 3 plus, 4 cross, 5 diamond, 6 triangle down,
 *         7 square and cross, 8 plus and cross, 9 diamond and plus, 10 octagon and plus, 11 both
 *         triangles, 12 square and plus, 13 octagon and cross, 14 square and triangle up,
 *         15 circle; filled: 16 square, 17 octagon, 18 triangle up, 19 diamond, 20 triangle down,
 *         21 disc; 22 upper half circle, 23 upper half disc. Any other number draws nothing. */
QUORIX_API int32_t qqvsym(int32_t symbol, int32_t x, int32_t y, int32_t size);

/* Fills a triangle with the corners (xs[i], ys[i]), i from 0 to 2. The colour becomes the current
 * colour. */
QUORIX_API int32_t qqvftr(const int32_t *xs, const int32_t *ys, int32_t colour);

/* ---- Pixels ------------------------------------------------------------------------------ */

/* Sets one pixel of the page, whatever the clip rectangle, unless the colour is the transparent
 * one (qqwwid option 32). */
QUORIX_API int32_t qqvwpx(int32_t x, int32_t y, int32_t colour);

/* Writes a row of pixels from (x, y) to the right.
 *
 * buffer  n > 0: n palette indices of one byte; n < 0: |n| triples red, green, blue
 *
 * Pixels of the transparent colour (qqwwid option 32) and pixels off the page are skipped. */
QUORIX_API int32_t qqvrow(const uint8_t *buffer, int32_t x, int32_t y, int32_t n);

/* The palette index of a pixel: in an RGBA raster that of the nearest colour. 0 off the page. */
QUORIX_API int32_t qqvrpx(int32_t x, int32_t y, int32_t *colour);

/* Reads |n| by |rows| pixels, the first at (x, y), row by row without padding.
 *
 * buffer  n > 0: receives n * |rows| palette indices (of the nearest colours, from an RGBA
 *         raster); n < 0: receives |n| * |rows| triples red, green, blue
 * rows    positive: rows go downward from y; negative: upward
 *
 * The buffer has to hold all of it. What lies off the page reads as 0, which is also black and
 * index 0: a rectangle larger than the page fails in silence, its size is that of qqvini. */
QUORIX_API int32_t qqvrdr(uint8_t *buffer, int32_t x, int32_t y, int32_t n, int32_t rows);

/* Saves the raster into a file of the library's own format, or loads it from one.
 *
 * mode    0 saves; any other value loads the file's upper left part into the open raster and
 *         leaves what the file does not cover
 * status  0 done; 1 the file cannot be opened, or there is no raster; 2 no memory; 3 not such a
 *         file, or one of an unsupported depth
 *
 * A file that ends early loads the rows that it has. A disk that is full while it is saved changes
 * no status: quorix_last_failure (status.h) tells. Names of files: see quorix.h. */
QUORIX_API int32_t qqvfil(const char *file_name, int32_t mode, int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
