/* SPDX-License-Identifier: MIT
 *
 * Image writers: one call writes what a device holds as one image file.
 *
 * What the writers share. `device` names the source: an absolute value above 100 the raster,
 * otherwise a plot window; a negative number asks for a true colour picture. `width` and `height`
 * count by their absolute values, and their signs carry flags that each writer tells. A rectangle
 * set by qqpclp takes the place of the size, the flags stay. Parts of it that lie off the page are
 * written as 0; a rectangle without pixels gives a file with those numbers in its header and no
 * pixels. All arguments are passed by reference.
 *
 * Statuses of all writers: 0 done; -1 the file cannot be opened, or there is no drawing record yet
 * (qqvini makes it), and no file was touched; -2 no memory; -9 there is no such device in this
 * library, and no file was touched. A full disk is not noticed: the file is short and the status 0.
 * After a failure the file stays with what was written so far.
 */
#ifndef QUORIX_IMAGEOUT_H
#define QUORIX_IMAGEOUT_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sets the rectangle that all later writers write: columns x to x + width - 1, rows y to
 * y + height - 1, while enabled is not 0. With enabled 0 they write the whole picture again. */
QUORIX_API int32_t qqpclp(const int32_t *x, const int32_t *y, const int32_t *width,
                          const int32_t *height, const int32_t *enabled);

/* Writes a binary PPM file (Netpbm "P6", 8 bits per sample), true colour whatever the device.
 *
 * file           name of the file, replaced if it exists
 * width, height  size of the picture in pixels; the signs do not matter
 * unused         not read, may be null
 * status         see above */
QUORIX_API int32_t qqpppm(const char *file, const int32_t *device, const int32_t *width,
                          const int32_t *height, const int32_t *unused, int32_t *status);

/* Writes a PNG picture (ISO/IEC 15948) into a file or into memory: 8 bits per sample, not
 * interlaced, one IDAT chunk.
 *
 * target   colours >= 0: name of the file, replaced if it exists; colours < 0: memory
 * device   negative: true colour (colour type 2); positive: indexed (colour type 3)
 * order    1 on a host that stores the low byte first, such as every x86; another value leaves all
 *          words of the stream in the host's order
 * width    size in pixels; negative: with a tRNS chunk, which makes white transparent in a true
 *          colour picture and palette entry 0 in an indexed one
 * height   size in pixels; negative: the device holds true colours, so an indexed picture gets a
 *          palette of up to 256 colours that is computed from them
 * palette  |colours| words 0xRRGGBB, written as the palette of an indexed picture of positive
 *          height; otherwise not read
 * colours  entries of the palette chunk by absolute value, for PNG readers from 1 to 256; negative:
 *          write into memory. A computed palette of fewer entries is filled up with black
 * status   file: 0 done, -1, -2 and -9 as above, -3 to -5 the compressor failed (at its start, in
 *          its work, at its end).
 *          memory: on entry the room in `target` in bytes; on return the bytes of the picture, or
 *          0 if they do not fit or there is nothing to read. Room 0 stores nothing and gives the
 *          bytes needed (`target` may be null then). Any other failure shows as a smaller count
 *          than the picture needs */
QUORIX_API int32_t qqppng(char *target, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const int32_t *colours, int32_t *status);

/* Writes a PostScript program that shows the picture on one page, in true colours, fitted to the
 * page and turned by 90 degrees if it is wider than high. On Windows its lines end in CR and LF.
 *
 * file           name of the file, replaced if it exists
 * width, height  size of the picture in pixels; the signs do not matter
 * page_set       1: the page has the next two as its size; otherwise it has the size 1950 by 2800
 * page_width, page_height
 *                tenths of a millimetre
 * margin_set     1: the next two are the margins; otherwise they are 75 and 100
 * margin_x, margin_y
 *                tenths of a millimetre. The picture stands in the lower left corner of what is
 *                within, and fills the size of the page from there, so margins add to it
 * status         see above; after -2 the file holds all that stands before the pixels */
QUORIX_API int32_t qqpps(const char *file, const int32_t *device, const int32_t *width,
                         const int32_t *height, const int32_t *page_set, const int32_t *page_width,
                         const int32_t *page_height, const int32_t *margin_set,
                         const int32_t *margin_x, const int32_t *margin_y, int32_t *status);

/* Writes a PDF 1.3 document of one page with the picture as one image, in true colours, fitted to
 * the page and turned by 90 degrees if it is wider than high; then the page is also shown turned.
 * A document that is being made by qqpdf1 is not touched.
 *
 * file, width, height, page_set, page_width, page_height
 *                as for qqpps
 * margin_set, margin_x, margin_y
 *                not read: the picture stands in the corner of the page
 * flags          bit 0: compress; the others do nothing
 * status         see above */
QUORIX_API int32_t qqppdf(const char *file, const int32_t *device, const int32_t *width,
                          const int32_t *height, const int32_t *page_set, const int32_t *page_width,
                          const int32_t *page_height, const int32_t *margin_set,
                          const int32_t *margin_x, const int32_t *margin_y, const int32_t *flags,
                          int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
