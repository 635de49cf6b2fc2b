/* SPDX-License-Identifier: MIT
 *
 * Data files: FITS in, PLY meshes out.
 *
 * Numbers are passed by reference. All operations return 0, except qqply1.
 */
#ifndef QUORIX_DATAFILES_H
#define QUORIX_DATAFILES_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- FITS ----
 *
 * Reads the keywords and the raw data of files in the Flexible Image Transport System (FITS
 * standard 4.0). One file is open at a time. Data come as they stand in the file, high byte first
 * and without BSCALE and BZERO applied.
 *
 * Kept: the data are taken to begin n mod 36 lines behind a header of n lines, END included. That
 * is right for headers that fill their blocks of 36 lines to the end or to the half; comment lines
 * bring a header there.
 */

/* Opens a file and reads its first header.
 *
 *   filename  of the file (see quorix.h). A file that was open before is closed, once this one
 *             was read.
 *   status    0 done; -1 the file cannot be opened, and what was open before stays open; -2 no
 *             memory, and what was open before stays open; -3 the header has no BITPIX; -4 the
 *             header has no NAXIS, or one outside 0 to 999; -5 one of its NAXISn is missing. With
 *             -3 to -5 the file is open all the same.
 */
QUORIX_API int32_t qqfits1(const char *filename, int32_t *status);

/* Closes the file. status: 0 done; -1 no file is open. */
QUORIX_API int32_t qqfits2(int32_t *status);

/* Gives a number or a logical value from the first header, or the kind of a value.
 *
 *   keyword  cut to 8 characters, or filled up to 8 with blanks
 *   ivalue   type 1: the integer, kept within 32 bits, or 1 for T and 0 for F. Type 3: the kind of
 *            the value: 0 integer, 1 real (a number with a point in it: 1E5 is an integer), 2 empty
 *            text, 3 text, 4 true, 5 false, 6 complex of integers, 7 complex of reals, 8 no value,
 *            9 no "= " in the line, or text without its closing quote. Otherwise -1.
 *   dvalue   any other type, usually 2: the value of an integer or a real. Otherwise left alone.
 *   type     1, 2 or 3
 *   status   0 done; -1 no such keyword; -2 the value has the wrong kind; -3 no file is open
 */
QUORIX_API int32_t qqfits3(const char *keyword, int32_t *ivalue, double *dvalue,
                           const int32_t *type, int32_t *status);

/* Reads the data of the selected unit.
 *
 *   buffer  for `size` bytes; the elements, first axis fastest, with their high bytes first: turn
 *           them on hosts that store the low byte first, and apply BSCALE and BZERO
 *   size    room in the buffer; 0 asks for the number of bytes and reads nothing
 *   result  the number of bytes: |BITPIX| / 8, at least 1, times all axes, or of one element if
 *           there is no axis. -1 the room is too small, an axis is negative, or the number does not
 *           fit in 32 bits; -2 the file ends before, and the buffer is undefined; -3 no file
 *           is open
 */
QUORIX_API int32_t qqfits4(uint8_t *buffer, const int32_t *size, int32_t *result);

/* Gives a text from the first header.
 *
 *   keyword  as for qqfits3
 *   buffer   for `size` bytes, terminator included; takes the text between the quotes with its
 *            blanks, doubled quotes as both of their characters
 *   status   0 done; -1 no such keyword; -2 the value is no text; -3 no file is open; -4 the text
 *            has size - 1 characters, or more and was cut. With a size below 1, -4 and nothing
 *            stored.
 */
QUORIX_API int32_t qqfits5(const char *keyword, char *buffer, const int32_t *size, int32_t *status);

/* Selects the unit of header and data that qqfits4 reads. Kept: qqfits4 then reads from as many
 * bytes behind the start of the file as the unit's header has, wherever the unit stands.
 *
 *   number  1 for the first unit; a smaller number counts as 1
 *   result  the unit's type: 0 primary, or of no known type; 1 image; 2 ASCII table; 3 binary
 *           table. A keyword EXTENSION gives it (kept: XTENSION does not). -1 the unit cannot be
 *           reached, for instance because of a negative axis before it; -2 no memory; -3 no BITPIX
 *           in that unit, or no such unit; -4 no NAXIS, or one outside 0 to 999; -5 one of its
 *           NAXISn is missing; -6 no file is open
 */
QUORIX_API int32_t qqfits6(const int32_t *number, int32_t *result);

/* ---- PLY ----
 *
 * Collects a coloured mesh polygon by polygon and writes it as an ASCII file in the Polygon File
 * Format, version 1.0. One mesh at a time, from the first qqply1 to qqply2.
 */

/* Adds a polygon. Corners that agree in all stored values become one vertex.
 *
 *   x, y, z  coordinates of the corners, stored in single precision
 *   r, g, b  their colours, each component from 0 to 1, stored as the low 8 bits of
 *            trunc(255 * component + 0.5). Nothing is clamped.
 *   n        number of corners; 0 adds a polygon without corners
 *   status   0 done; 1 n is negative or there is no memory
 *
 * Without memory for more polygons the mesh stays as it was. Without memory for more vertices it is
 * lost: qqply1 gives 1 until qqply2 ends the mesh.
 *
 * Returns the status.
 */
QUORIX_API int32_t qqply1(const double *x, const double *y, const double *z, const double *r,
                          const double *g, const double *b, const int32_t *n, int32_t *status);

/* Ends the mesh, and writes it with mode 0. Without a mesh it does nothing.
 *
 *   filename     of the file (see quorix.h). All of it has been handed to the system afterwards,
 *                and quorix_last_failure (status.h) tells whether it was accepted; kept: the file
 *                stays open until the process ends.
 *   object_name  for a comment in the file
 *   mode         0: write the file; any other: only end the mesh
 *   status       0 done; 1 the file cannot be created, or the mesh was lost, and nothing is written
 *
 * Coordinates have six decimals. Lines end as text files do: with CR LF on Windows and LF
 * elsewhere.
 */
QUORIX_API int32_t qqply2(const char *filename, const char *object_name, const int32_t *mode,
                          int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
