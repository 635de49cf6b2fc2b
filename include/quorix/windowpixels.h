/* SPDX-License-Identifier: MIT
 *
 * Pixels of a plot window, and its raster files.
 *
 * qqwimg copies the window's bitmap into memory and turns direct access on: lines, rectangles and
 * pixels then go into that memory, and nothing of it is seen until a second qqwimg puts it back as
 * a whole. (Polygons, markers and text go to the window's bitmap all the same, where the second
 * qqwimg covers them.) The operations below work without direct access too, but slower: pixels are
 * then written one by one, and each reading of a rectangle fetches the bitmap for itself.
 *
 * Every access is held to the bitmap: what lies off it is skipped, or reads as 0, and positions in
 * the caller's buffer advance over it. The clip rectangle is not looked at. Colours are palette
 * indices or 0x01BBGGRR; pixels of the transparent colour (qqwwid option 32) are not written. All
 * operations return 0.
 */
#ifndef QUORIX_WINDOWPIXELS_H
#define QUORIX_WINDOWPIXELS_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Starts direct access (mode 0), or ends it and puts what was drawn into the window (any other
 * mode). With OpenGL there is nothing to do.
 *
 * status  0 done; 1 no window, no bitmap or no memory
 *
 * While a translucent layer is open (qqwabl), starting copies the picture into the layer, with
 * alpha 0, for shapes to blend with; ending draws the layer onto the window. Opening, selecting or
 * closing a window ends direct access first. */
QUORIX_API int32_t qqwimg(int32_t mode, int32_t *status);

/* Writes one pixel. */
QUORIX_API int32_t qqwwpx(int32_t x, int32_t y, int32_t colour);

/* Writes a row of pixels from (x, y) to the right.
 *
 * row  n > 0: n palette indices of one byte; n < 0: |n| triples red, green, blue */
QUORIX_API int32_t qqwrow(const uint8_t *row, int32_t x, int32_t y, int32_t n);

/* Reads one pixel.
 *
 * colour  input: 1 asks for the colour, any other number for a palette index.
 *         output: 0x01BBGGRR, or the index of the nearest colour; 0 off the bitmap */
QUORIX_API int32_t qqwrpx(int32_t x, int32_t y, int32_t *colour);

/* Reads |w| by |h| pixels, row by row without padding.
 *
 * buffer  w > 0: receives palette indices, those of the nearest colours; w < 0: receives triples
 *         red, green, blue
 * h       positive: y is the top row, and rows go downward; negative: y is the bottom row, and rows
 *         go upward */
QUORIX_API int32_t qqwrdr(uint8_t *buffer, int32_t x, int32_t y, int32_t w, int32_t h);

/* Saves the window's bitmap into a file of the library's own format, or loads it from one.
 *
 * mode    0 saves the bitmap's bytes as they are; any other value loads the file's upper left part
 *         and leaves what the file does not cover
 * status  0 done; 1 the file cannot be opened, or there is no window; 2 no memory; 3 not such a
 *         file; 4 a depth that this window cannot load
 *
 * A file that ends early loads the rows that it has. */
QUORIX_API int32_t qqwfil(const char *filename, int32_t mode, int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
