/* SPDX-License-Identifier: MIT
 *
 * Vector PDF documents, built page by page.
 *
 * qqpdf1 starts a document and its first page, the drawing operations fill the page, qqpdf2 starts
 * further pages (op 4) and ends the document (op 1). The result is a PDF 1.3 file, or stands in
 * memory until qqpdf6 fetches it. There is one document at a time and it knows nothing of the
 * drawing record: coordinates are points (1/72 inch) from the lower left corner of the page and are
 * written as they are, mostly with 2 decimals. A number has at most 40 characters; NaN and
 * infinities are written as 0.
 *
 * An operation without a document, or after its end, does nothing; statuses are then as told for
 * each. A disk that is full changes no status: ask quorix_last_failure (status.h) after the end of
 * the document. Without memory for its buffers a document is written all the same, uncompressed.
 *
 * Pens, colours and clip rectangles end with their page, and a clip should be switched off before
 * it. What a caller leaves open at the end of a page or a document stays as it is: texts and paths
 * are closed by the operations that say so.
 */
#ifndef QUORIX_PDF_H
#define QUORIX_PDF_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The document ------------------------------------------------------------------------ */

/* Starts a document with its first page. A document that is still open is given up: its file stays
 * as far as it was written.
 *
 * file                     name of the file (see quorix.h), replaced if it exists; not read for
 *                          memory output
 * page_width, page_height  size of all pages in points
 * mode                     bit 0: compress all streams; any higher bit: output to memory
 * rotate_and_status        on entry, where the low 8 bits are not 0, pages are shown turned by 90
 *                          degrees clockwise; on return: 0 done; -1 the file cannot be
 *                          opened; -2 no memory */
QUORIX_API int32_t qqpdf1(const char *file, int32_t page_width, int32_t page_height, int32_t mode,
                          int32_t *rotate_and_status);

/* Hands over what was written to memory, after qqpdf2 has ended the document.
 *
 * buffer  `size` bytes
 * size    room in the buffer; 0 copies nothing and tells how many bytes there are
 * status  number of bytes, those lost for want of memory included if size is 0; -1 some bytes were
 *         lost; -2 there are no bytes, or they were handed over before; -3 the bytes do not fit
 *
 * The library's copy is released when the bytes were handed over, by the next qqpdf1 with output to
 * memory, and by qqpfree. Without a record size 0 gives 0. */
QUORIX_API int32_t qqpdf6(uint8_t *buffer, int32_t size, int32_t *status);

/* Writes bytes as they are into the open page, or the pixels of an image.
 *
 * count  number of bytes; -1: up to a terminating zero; below -1 nothing is written
 *
 * A stream that is compressed is split where a piece would take it beyond 300,000 bytes, so pieces
 * of page content should end where an operator ends. An image takes no more than its pixels. */
QUORIX_API int32_t qqpdf7(const uint8_t *data, int32_t count);

/* Adds a bookmark that leads to the current page.
 *
 * title   bytes up to a terminating zero, written as they are between parentheses: write \( \) and
 *         \\ for ( ) and \, or one that is not balanced damages the file. Letters beyond ASCII are
 *         Latin-1; UTF-8 shows as other letters
 * level   0 to 4; a bookmark belongs to the last one before it of a lower level
 * status  0 done; 1 no such level, or no document; 2 some lower level has no bookmark yet;
 *         3 no memory for the table of bookmarks; 4 no memory for the title */
QUORIX_API int32_t qqpdf9(const char *title, const int32_t *level, int32_t *status);

/* Releases everything, a document in memory included. An open document is given up. */
QUORIX_API int32_t qqpfree(void);

/* ---- Pages ------------------------------------------------------------------------------- */

/* Draws lines, sets pens, places images, starts pages and ends the document. Before each `op` an
 * open text is closed, and before each but 2 and 5 an open path is stroked.
 *
 *  op
 *   1  ends the document
 *   2  line to (x, y). A line to the point just moved to is a dot; one to the point that the last
 *      line went to is left out
 *   3  move to (x, y)
 *   4  new page
 *   5  closes the path and fills it (even-odd)
 *   6  line width x
 *   7  line join x: 0 miter, 1 round, 2 bevel
 *   8  line cap x: 0 butt, 1 round, 2 square
 *   9  miter limit x
 *  10  begins an image of x by y pixels, which qqpdf7 then brings: red, green, blue, rows from the
 *      top, no padding
 *  11  ends the image and opens a graphics state, in which it is placed by:
 *  12  translation by (x, y), then
 *  13  rotation by 90 degrees counter-clockwise, if wanted, then
 *  14  the image in a size of x by y, at the place reached. Closes the graphics state
 *  15  x not 0: images to come are transparent where they are white
 *  16  one corner of the clip rectangle
 *  17  the opposite corner
 *  18  x 0: clips to that rectangle from here on; otherwise: does no longer
 *
 * Ops 7, 8, 15 and 18 take x + 0.5 without its fraction. x and y are read only by ops that use
 * them. */
QUORIX_API int32_t qqpdf2(const double *x, const double *y, int32_t op);

/* Sets a colour, after closing an open path or text.
 *
 * red, green, blue  0 to 255
 * fill              1: colour of areas and text; otherwise colour of lines */
QUORIX_API int32_t qqpdf3(int32_t red, int32_t green, int32_t blue, int32_t fill);

/* Fills a rectangle. A width or height below 0.01 by absolute value becomes 0.708 around the same
 * place; all four values come back as they were written. Paths and texts should be closed, as
 * qqpdf3 does. */
QUORIX_API int32_t qqpdf4(double *x, double *y, double *width, double *height);

/* Writes one character, after stroking an open path. Characters of the same font and size form one
 * text.
 *
 * code      by absolute value: below 127 ASCII, control characters as they are; 127 to 187 the
 *           national letters A-umlaut, O-umlaut, U-umlaut, a-umlaut, o-umlaut, u-umlaut, sharp s,
 *           A-ring and so on; above that a blank. Negative: where it opens a text, the text gets
 *           the horizontal scale matrix[6]
 * matrix    a, b, c, d, e, f of the text matrix, of which only the place (e, f) counts at rotation
 *           0 and 90, and the horizontal scale (1 is normal; read for negative codes alone)
 * rotation  0; 90; another value for the whole matrix
 * font      a call with a font not in this list is ignored:
 *            0 to  3  Times: roman, bold, italic, bold italic
 *            4 to  7  Helvetica: the same four
 *            8 to 11  Helvetica-Narrow: the same four
 *           12 to 15  New Century Schoolbook: roman, italic, bold, bold italic
 *           16        Zapf Chancery
 *           17        Zapf Dingbats
 *           18 to 21  Courier: roman, bold, italic, bold italic
 *           22 to 25  Avant Garde: book, demi, book oblique, demi oblique
 *           26 to 29  Bookman: light, light italic, demi, demi italic
 *           30 to 33  Palatino: roman, italic, bold, bold italic
 *           34        Symbol
 * size      in points; negative: in tenths of a point */
QUORIX_API int32_t qqpdf5(int32_t code, const double *matrix, int32_t rotation, int32_t font,
                          int32_t size);

/* Embeds PDF page content as a form and draws it, after closing an open path or text.
 *
 * data, length        operators that need no resources
 * box_...             rectangle of the content, in its own coordinates
 * place_x, place_y    the lower left corner of the room for it, in points. The content stands
 *                     there, or in the upper left corner where it is turned, provided that its box
 *                     begins at (0, 0): another corner is taken off unscaled
 * target_width, target_height
 *                     the size of the room; the smaller of the two scales is taken for both
 *                     directions and has 2 decimals
 * compress            not 0: compress the form
 * rotate              1: turned by 90 degrees clockwise; another value but 0 fits the box as if it
 *                     were, but does not turn it
 * status              0 done */
QUORIX_API int32_t qqpdf8(const uint8_t *data, const int32_t *length, const double *box_x,
                          const double *box_y, const double *box_width, const double *box_height,
                          const double *place_x, const double *place_y, const double *target_width,
                          const double *target_height, const int32_t *compress,
                          const int32_t *rotate, int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
