/* SPDX-License-Identifier: MIT
 *
 * The system's fonts on plot windows.
 *
 * One font is chosen with its size and angle, and characters are drawn one at a time; the caller
 * puts strings together from the widths. Characters have the library's own codes: ASCII up to 126,
 * national letters from 127 to 264. Widths are in tenths of a pixel.
 *
 * Where the system has no fonts (windows in memory) choosing one fails, nothing is drawn and all
 * widths are 0. All operations return 0.
 */
#ifndef QUORIX_WINDOWTEXT_H
#define QUORIX_WINDOWTEXT_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Chooses the font of the current window, which stays until the next one or until all windows are
 * closed.
 *
 * name    a face, at most 31 characters of it. Names that contain "Arial" (but not "Unicode"),
 *         "Courier" or "Times" mean those; "Bold" and "Italic" in a name make it so
 * size    height in pixels
 * angle   in degrees, counter-clockwise
 * widths  receives 233 numbers, the widths of the codes 32 to 264, low 16 bits of each; untouched
 *         on failure
 * io      input: the font's character set. output: 0 done; 1 there is no such font, no window, or
 *         the system has no fonts. The font before stays then */
QUORIX_API int32_t qqwfnt(const char *name, int32_t size, int32_t angle, int32_t *widths,
                          int32_t *io);

/* Draws one character of the font's own set with its upper left corner at (x, y), in the current
 * colour. OpenGL draws nothing. The last argument is not used. */
QUORIX_API int32_t qqwcha(int32_t code, int32_t x, int32_t y, int32_t unused);

/* Draws one character with its upper left corner at (x, y), in the current colour.
 *
 * raw     not 0: the code is the font's own and is not mapped
 * unused  not used */
QUORIX_API int32_t qqwcha2(int32_t code, int32_t x, int32_t y, int32_t raw, int32_t unused);

/* The width of a character; `raw` as of qqwcha2. */
QUORIX_API int32_t qqwcln(int32_t code, int32_t raw, int32_t *width);

#ifdef __cplusplus
}
#endif

#endif
