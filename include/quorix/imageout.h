/* SPDX-License-Identifier: MIT
 *
 * Image writers: one call writes what a device holds as one image file.
 *
 * What the writers share. `device` names the source: an absolute value above 100 the raster,
 * otherwise a plot window; a negative number asks for a true colour picture. `width` and `height`
 * count by their absolute values, and their signs carry flags that each writer explains. A
 * rectangle set by qqpclp takes the place of the size, the flags stay. A rectangle without pixels
 * gives a file with those numbers in its header and no pixels. All arguments are passed by
 * reference.
 *
 * What goes wrong without a status:
 *
 *   the size     is not held against the page. What lies beyond it is written as 0, which is black
 *                or palette entry 0, on a white page too. Pass the size that qqvini got or gave.
 *   the device   A positive number makes PNG, GIF, TIFF and BMP write palette indices: of an RGBA
 *                raster those of the nearest colours of the table that qqvvlt loaded, not the
 *                colours that were drawn. Pass a negative device for true colours, or a negative
 *                height for a palette of the colours that are there; GIF wants both negative.
 *   the palette  is the caller's, not the device's: pass the table that qqvvlt got. Its words are
 *                0xRRGGBB; packed colours 0x01BBGGRR, as qqvclr takes them, come out with red and
 *                blue exchanged.
 *   the order    of bytes is believed: a wrong one gives a file that no program reads. 1 is right
 *                for every writer on hosts that store the low byte first, such as every x86.
 *   the clip     of qqpclp stays in force for every later picture, until it is switched off.
 *
 * Statuses of all writers: 0 done; -1 the file cannot be opened, or there is no drawing record yet
 * (qqvini makes it), and no file was touched; -2 no memory; -9 there is no such device in this
 * library, and no file was touched. After a failure the file stays with what was written so far. A
 * disk that is full changes no status: ask quorix_last_failure (status.h) after each picture.
 *
 * Names of files: see quorix.h.
 */
#ifndef QUORIX_IMAGEOUT_H
#define QUORIX_IMAGEOUT_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sets the rectangle that all later writers write, whatever size they are called with: columns x to
 * x + width - 1, rows y to y + height - 1, while enabled is not 0. With enabled 0 they write the
 * whole picture again. */
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
 * colours  entries of the palette chunk by absolute value; negative: write into memory. Programs
 *          refuse or misread indexed pictures with 0 or more than 256 entries, or with an index
 *          that has no entry; no status warns of that: 256 is right for every picture. A computed
 *          palette of fewer entries is filled up with black
 * status   file: as above; -3 the compressor could not be started; -4 the compressor failed in its
 *          work; -5 the compressor failed at its end.
 *          memory: on entry the room in `target` in bytes, to be set anew for each call; on return
 *          the bytes of the picture, or 0 if they do not fit or there is nothing to read. Room 0
 *          (also by a status left from a call before) stores nothing and gives the
 *          bytes needed (`target` may be null then). Any other failure shows as a smaller count
 *          than the picture needs */
QUORIX_API int32_t qqppng(char *target, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const int32_t *colours, int32_t *status);

/* Writes a GIF picture (CompuServe GIF87a, or GIF89a if a colour is transparent): a global table of
 * 256 colours, one picture, not interlaced.
 *
 * file           name of the file, replaced if it exists
 * device         see above; negative: a true colour raster, which gets a palette computed. Then
 *                height has to be negative too, or the picture comes out as noise
 * order          0 writes the words of width and height with their bytes turned; on a host that
 *                stores the low byte first, such as every x86, pass another value
 * width, height  size in pixels, of which the file keeps the low 16 bits; a negative height says
 *                that the device holds true colours. With a window that is enough to have a palette
 *                computed; of the raster's colours the bytes are taken for indices if device is
 *                positive, which is noise too: pass both negative, or neither
 * palette        256 words 0xRRGGBB; not read where one is computed
 * unused         not read, may be null
 * background     index of the background colour
 * transparent    1: the background colour is transparent
 * status         see above. After -2 the file ends where memory was needed */
QUORIX_API int32_t qqpgif(const char *file, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const void *unused, const uint8_t *background, const int32_t *transparent,
                          int32_t *status);

/* Writes a baseline TIFF picture (TIFF 6.0, little-endian, not compressed, a strip for each row) in
 * one of three forms: palette colour, RGB, or bilevel, where 1 is white.
 *
 * file        name of the file, replaced if it exists
 * device      see above; negative: RGB
 * order       0 writes all words with their bytes turned; on a host that stores the low byte first,
 *             such as every x86, pass another value
 * width       size in pixels; the sign matters to the bilevel form: positive, black becomes 0 and
 *             everything else 1; negative, white becomes 1 and everything else 0
 * height      size in pixels; negative: the device holds true colours. Then the palette form gets a
 *             palette computed, and the bilevel form looks at them
 * palette     256 words 0xRRGGBB; what indices mean in the palette form and, with a positive
 *             height, in the bilevel form. Otherwise not read
 * form        negative: bilevel, whatever device says
 * resolution  on entry pixels per inch; negative: per centimetre; 0: 100 per inch. On return the
 *             status, see above: set it anew for each call, or the next file has 100 per inch.
 *             After -2 the file has all but the pixels and what precedes them */
QUORIX_API int32_t qqptif(const char *file, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const int32_t *form, int32_t *resolution);

/* Writes a Windows bitmap (information header of 40 bytes, not compressed): 8 bits per pixel with a
 * colour table, or 24.
 *
 * file           name of the file, replaced if it exists
 * device         see above; negative: 24 bits per pixel
 * order          byte order and resolution. 0 and below write all words with their bytes turned; on
 *                a host that stores the low byte first, such as every x86, pass 1 or more. 0 and 1
 *                stand for 2500 pixels per metre, other numbers for their absolute value
 * width, height  size in pixels; a negative height says that the device holds true colours, so that
 *                8 bits per pixel get a palette computed
 * palette        `colours` words 0xRRGGBB; not read where one is computed, and with 24 bits
 * colours        entries of the colour table, not used with 24 bits. Programs want 256, or fewer
 *                if no index is larger; with too few they refuse the file or show black. A computed
 *                palette of fewer colours is filled up with black
 * status         see above. After -2 the file holds its header */
QUORIX_API int32_t qqpbmp(const char *file, const int32_t *device, const int32_t *order,
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
