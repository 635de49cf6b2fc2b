/* SPDX-License-Identifier: MIT
 *
 * Fonts: BDF bitmap fonts and the outlines of TrueType fonts.
 *
 * All operations return 0. Characters come in the library's own code: ASCII up to 126, and then
 * the letters of the languages of Europe, by their Unicode values:
 *
 *   127  C4 D6 DC E4 F6 FC DF C5 D8 C6 E5 F8 E6 D1 F1 C7
 *   143  E7 CB CF EB EF C1 C9 CD D3 DA E1 E9 ED F3 FA C0
 *   159  C8 CC D2 D9 E0 E8 EC F2 F9 C2 CA CE D4 DB E2 EA
 *   175  EE F4 FB C3 E3 D5 F5 DD FD FF A1 BF D0 F0 DE FE
 *   191  0104 0141 013D 015A 0160 015E 0164 0179 017D 017B 0105 0142 013E 015B
 *   205  0161 015F 0165 017A 017E 017C 0154 0102 0139 0106 010C 0118 011A 010E
 *   219  0143 0147 0150 0158 016E 0170 0162 0155 0103 013A 0107 010D 0119 011B
 *   233  010F 0144 0148 0151 0159 016F 0171 0163 011E 0130 011F 0131 0120 0121
 *   247  0124 0125 0126 0127 0134 0135 016C 016D 0108 0109 010A 010B 011C 011D
 *   261  015C 015D A4 A9
 */
#ifndef QUORIX_FONTS_H
#define QUORIX_FONTS_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Bitmap fonts ------------------------------------------------------------------------ */

/* Makes a bitmap font current, and loads it from the library's font files at its first use.
 *
 * family  1 "complx", with serifs; 2 "simplx", all characters equally wide; 3 "helve", without
 *         serifs
 * size    height of the capitals in pixels; the nearest font there is serves:
 *           family 1 and 3: 10 below 11, 12 below 13, 14 below 17, else 18
 *           family 2: 8 below 9, 10 below 11, 12 below 13, else 14
 * widths  233 entries; widths[c - 32] receives the width of character c, from 32 to 264, in tenths
 *         of a pixel, 0 where the font lacks it; left alone with another status than 0, but all 0
 *         where nothing was drawn yet
 * status  0 done; 1 no such family, or nothing was drawn yet; 2 no memory
 *
 * The file is <family><size>.bdf, as in complx10.bdf. It is looked for, in this order,
 *   in fonts under the install directory that qqgenv gives for "QUORIX";
 *   in fonts, share/quorix/fonts and ../share/quorix/fonts, seen from the folder of the shared
 *   library, and then from that of the program.
 * Where there is none, the library's own copy of the twelve fonts serves, so that a font is never
 * missing. A font that was loaded from a file is not read again; with the library's copy each call
 * looks for a file anew. After a status of 2 no font is current.
 *
 * Format: Glyph Bitmap Distribution Format (BDF) 2.1, Adobe Systems, 1993. */
QUORIX_API int32_t qqbdf1(const int32_t *family, const int32_t *size, int32_t *widths,
                          int32_t *status);

/* The same with a directory.
 *
 * directory      where use_directory is not 0 and the environment variable QUORIX is not set, the
 *                font files lie in `fonts` under it. For its name see quorix.h
 * use_directory  0: as qqbdf1 */
QUORIX_API int32_t qqbdf1n(const char *directory, const int32_t *use_directory,
                           const int32_t *family, const int32_t *size, int32_t *widths,
                           int32_t *status);

/* Draws a character with the current bitmap font, in the current colour and within the clip
 * rectangle. Nothing happens without a font.
 *
 * code    the character; for one that the font lacks, the 33rd glyph of its file is drawn
 * x, y    pixel of the text origin, at the left end of the base line; moving on by the character's
 *         width is the caller's part
 * angle   in degrees, counter-clockwise
 * device  101 and above: the raster; below: the window
 * unused  not looked at
 *
 * Pixels are drawn at once, before lines that are still gathered. */
QUORIX_API int32_t qqbdf2(const int32_t *code, const int32_t *x, const int32_t *y,
                          const int32_t *angle, const int32_t *device, const void *unused);

/* ---- TrueType outlines ------------------------------------------------------------------- */

/* Opens a TrueType font, in the place of one that is open.
 *
 * filename    the font file (see quorix.h); it is closed again before the call returns
 * swap_bytes  1 on hosts that store numbers with the low byte first (as x86 does), else 0; with the
 *             wrong one a good font looks damaged
 * status      0 done; 1 the file cannot be opened; 2 no memory; 3 a table is not all there; 4 no
 *             character map for platform 3, encoding 1; 5 the character map has another format
 *             than 4; 8 the character map is shorter than its segments; 11 the table cmap is
 *             missing; 12 the table loca is missing; 13 the table head is missing; 14 the table
 *             maxp is missing; 15 the table glyf is missing; 23 the table head has a wrong length;
 *             24 the table maxp has a wrong length
 *
 * Nothing can be read from a font whose opening failed; qqttf3 or the next qqttf1 releases it.
 *
 * Format: the tables `cmap`, `loca`, `head`, `maxp` and `glyf` of the TrueType Reference Manual. */
QUORIX_API int32_t qqttf1(const char *filename, uint8_t swap_bytes, int32_t *status);

/* The outline of a character: closed polygons, y growing upward, the origin on the base line.
 *
 * code           the character
 * x, y           receive the points, all contours one after another
 * max_points     room in x and y; 0: nothing is stored and the points are counted
 * point_count    receives the number of points, 0 with a status of 6
 * contour_sizes  receives the number of points of each contour, the closing one included; not
 *                looked at where max_points is 0. Its room is the caller's care
 * max_contours   not looked at
 * contour_count  receives the number of contours
 * size           height of the capital A in the units of the points. A curve becomes size / 5 - 1
 *                points, but at least 4
 * status         input: 0 if `code` is the library's code, where 127 to 186, 187 (the copyright
 *                sign, here), 263 and 264 stand for letters and signs and all others for
 *                themselves; anything else if it is a Unicode value.
 *                Output: 0 done; 1 no font is open; 6 max_points is too small; 7 a component of
 *                the glyph is no simple glyph; 8 the glyph or a component does not exist or is
 *                damaged, or its components have more than 2^24 points (of several components, the
 *                last one's status)
 *
 * The way to go is one call with max_points 0, and one with arrays of the size that it gave. Set
 * `status` before each of them: a 0 left from the call before takes the code for the library's own.
 * A blank, as the space is, has no points and no contours. Outer contours run clockwise and holes
 * the other way round. Widths of characters are not given. */
QUORIX_API int32_t qqttf2(int32_t code, double *x, double *y, int32_t max_points,
                          int32_t *point_count, int32_t *contour_sizes, int32_t max_contours,
                          int32_t *contour_count, int32_t size, int32_t *status);

/* Releases the font, if one is open. */
QUORIX_API int32_t qqttf3(void);
#ifdef __cplusplus
}
#endif

#endif
