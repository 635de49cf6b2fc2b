/* SPDX-License-Identifier: MIT
 *
 * Options of the drawing record, and its release. Both work with and without a window system.
 */
#ifndef QUORIX_WINDOW_H
#define QUORIX_WINDOW_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sets or reads one option of the drawing record, which it creates if there is none yet.
 *
 * option  see the table
 * value   address of an int32_t
 * set     0 reads: value becomes -1, since none of these options can be read back; any other
 *         number sets
 *
 *  3       the low byte: 1 exchanges pure black and white of shaded triangles on a white page
 * 11 12    left and upper edge of the clip rectangle, inclusive
 * 13 14    right and lower edge of the clip rectangle, inclusive. Set all four, 11 first: that one
 *          draws the lines still gathered under the old rectangle
 * 17 18    tolerance of depth-tested lines: 1e-5, or 0.001 (the value is not used)
 * 19       alpha of all pixels drawn from now on into an RGBA raster, 0 to 255
 * 21       1: translucent layers replace the background where it is untouched; 0: they blend
 * 25       level of the character code mapping
 * 26       pen width in pixels
 * 27       line caps: 0 butt, 1 round, 2 square
 * 28       line joins: 0 miter, 1 round, 2 bevel
 * 32       transparent colour, an index or a packed colour, that pixel and row writes skip; -1 none
 * 33       clipping of those lines and rectangles that raster.h tells of: 0 on, 1 off
 * 34       1: plain lines; 2: lines of width 1 are antialiased in an RGBA raster
 * 99       all options back to their defaults (the value is not used)
 *
 * Any other option is ignored. */
QUORIX_API int32_t qqwwid(int32_t option, void *value, int32_t set);

/* Releases the drawing record and all that it owns, the raster too. */
QUORIX_API int32_t qqwfree(void);

#ifdef __cplusplus
}
#endif

#endif
