/* SPDX-License-Identifier: MIT
 *
 * Image readers: a file onto a device, or into memory to be cropped and scaled.
 *
 * What the readers share. Each works in one of two ways, chosen by `device`:
 *
 *   device 0      The picture is held in memory, in place of the one that was held before. qqpiwin
 *                 crops it, qqpgrow hands out rows, qqpiscl shows it and gives it back.
 *   other values  The rows go to that device as they are decoded: above 100 the raster, otherwise a
 *                 plot window. The upper left corner comes to (x, y), which may lie outside;
 *                 device_width and device_height are the device's size, where the picture is cut.
 *                 Pixels with alpha are blended with what the device shows.
 *
 * x, y, device_width and device_height only matter when rows are shown; of a held picture the
 * latter two are kept for qqpiscl. `unused` is not read and may be null. All arguments are passed
 * by reference.
 *
 * What goes wrong without a status:
 *
 *   device_width, device_height
 *                of 0 show nothing, now or by a later qqpiscl: pass the size of the device with
 *                device 0 too. They are where the picture is cut, not a size to fit it to.
 *   the device   has no sign here: a number below 0 is a window's, not a raster in true colours.
 *   a palette    raster keeps of each pixel the nearest colour of the table that qqvvlt loaded. For
 *                the colours of the file open the raster in RGBA (qqvini with page_w negative).
 *   the clip     rectangle of the raster does not hold rows: cut by x, y and the device size.
 *
 * Statuses of all readers: 0 done; -1 the file cannot be opened, or a device is named and there is
 * no drawing record yet (qqvini makes it); -2 no memory; -3 not a file of the format, or a damaged
 * one; -9 there is no such device in this library. Nothing is held of a picture whose reading
 * failed; on a device the rows that were decoded stay. A picture that was held before is gone if
 * the new one was begun. Names of files: see quorix.h.
 */
#ifndef QUORIX_IMAGEIN_H
#define QUORIX_IMAGEIN_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Replaces the held picture by a rectangle of it: columns x to x + width - 1, rows y to
 * y + height - 1. (x, y) has to lie inside, width and height may be 0.
 *
 * status  0 done; -2 no memory, and the picture stays; -3 the rectangle reaches outside, or no
 *         picture is held
 * returns 0, or 1 where status is not 0 */
QUORIX_API int32_t qqpiwin(const int32_t *x, const int32_t *y, const int32_t *width,
                           const int32_t *height, int32_t *status);

/* Shows the held picture at a size of `width` by `height` pixels, with the upper left corner at
 * (x, y) of `device`, and gives it back in every case: to show it twice, read it twice. It is cut
 * at the device size that was passed to its reader.
 *
 * At another size than its own the picture is interpolated: bilinear, the corners onto the corners,
 * components truncated, so that pure white may come out as 254.
 *
 * Of each row as many pixels are sent as the picture was wide before, which changes what is seen
 * without a status. A picture made wider is cut: it shows its left part alone; to see all of it
 * take its rows by qqpgrow, widen them and write them by qqvrow. In a picture made narrower each
 * row runs on into the next ones, so that parts of it repeat on its right: pass its reader a
 * device_width of x plus the new width, which cuts that off.
 *
 * device         as above; 0 only gives the picture back
 * unused         not read, may be null
 * width, height  size in pixels, above 0
 * status         0 done; -2 no memory, or a size of 0 or below; -3 no picture is held; -1 and -9 as
 *                above */
QUORIX_API int32_t qqpiscl(const int32_t *device, const void *unused, const int32_t *width,
                           const int32_t *height, const int32_t *x, const int32_t *y,
                           int32_t *status);

/* Copies `count` pixels of the held picture from column x of row y on into `row`: three bytes each,
 * red, green, blue, as qqvrow takes them with n = -count. What lies outside the picture is 0.
 * Without a held picture `row` stays as it is. With a count of -1 the held picture is given back,
 * and nothing else is looked at. */
QUORIX_API int32_t qqpgrow(uint8_t *row, const int32_t *x, const int32_t *y, const int32_t *count);

/* Reads a Windows bitmap with the information header of 40 bytes: 1, 4, 8 or 24 bits per pixel, or
 * run lengths of 8 or 4 bits.
 *
 * Pixels are taken to follow the colour table directly. Other depths, and compressions other than
 * run lengths, give status 0 and no pixels, and so do bitmaps with a negative height (rows from the
 * top), which are held as pictures without rows: have such pictures saved with 24 bits and rows
 * from the bottom. A file of plain rows that ends early gives those it has.
 *
 * status  as above. -3: the width is not positive, the header is not whole, depth and compression
 *         do not go together, or run lengths end without their end code */
QUORIX_API int32_t qqpibmp(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

/* Reads the first image of a GIF file (87a and 89a), interlaced or not. Extensions before it are
 * skipped byte by byte up to the first 0x2C; transparency is not honoured.
 *
 * A held picture has the size of the file's screen, with the image in its upper left corner, cut
 * there, and black around it. What is shown is the image alone, its corner at (x, y).
 *
 * status  as above. -3: no image or an empty one, no colour table, a code that cannot be, or an end
 *         of the file before the end code or the image's last sub-block */
QUORIX_API int32_t qqpigif(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

/* Reads a PNG file (ISO/IEC 15948): all colours and depths, interlaced or not. Samples of 16 bits
 * are reduced to their high byte. A tRNS chunk or alpha samples give the picture an alpha, with
 * which it is blended over what the device shows. A bKGD chunk leaves no alpha: alpha samples are
 * blended with the background, a tRNS chunk is dropped. CRCs are not checked. An interlaced picture
 * is shown when it is complete, and no picture is held after that.
 *
 * A file that ends early gives the rows it has, and status 0.
 *
 * status  as above. -3: no PNG file, or the decompressor cannot be started. -4: the compressed data
 *         are damaged. -5: done, but some pixel's index is outside the palette, and counts as index
 *         0. -6: the decompressor failed at its end */
QUORIX_API int32_t qqpipng(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

/* Reads a TIFF picture (TIFF 6.0, the first directory of the file): strips or tiles, uncompressed,
 * LZW or PackBits; grey of 1, 2, 4 or 8 bits or 32-bit floats (scaled between their extremes), RGB
 * of 2, 4, 8 or 16 bits, palettes of 2, 4 or 8 bits; both byte orders. Other depths give black
 * pixels.
 *
 * Some of its ways are its own, and show without a status. Where white is 0 only black and white
 * are exchanged, greys stay. RGB of 16 bits shows the first byte of each sample, whatever the byte
 * order: noise from low bytes, unless the file has the high byte first. Differences (predictor 2)
 * run through a whole strip or tile, so files with them come out right only with one row a strip;
 * have others saved without. Uncompressed data that the file does not have are left out.
 *
 * status  as above. -3: the directory does not lie within the file, strips or tiles have no sizes,
 *         or have far more bytes than the file. -5: done, but some index of 2 or 4 bits is outside
 *         the palette and counts as index 0 (in tiles the status stays 0). -11: the file asks for
 *         something that this reader does not support. -12: the compressed data are damaged */
QUORIX_API int32_t qqpitif(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

/* Reads a TIFF file of five values of 16 bits per pixel, uncompressed in strips, into an array.
 *
 * file           name of the file
 * array          at least `size` elements; not touched for size 0, and may be null then
 * size           elements of the array; 0: only count them
 * channel        0: all values, as five planes one behind another; 1 to 5: that value of each
 *                pixel; -1: three bytes per pixel, the high bytes of values 3, 2 and 1
 * status         the elements needed or stored, at least 0: with M the bytes of the longest of S
 *                strips M * S / 2 for channel 0, M * S / 10 for 1 to 5, and
 *                (M * S * 3 / 10 + 1) / 2 for -1. What no strip fills is 0.
 *                -1 the file cannot be opened; -2 no memory; -3 no TIFF file, or a damaged one;
 *                -11 something that this reader does not support; -12 the array is too small */
QUORIX_API int32_t qqpltif(const char *file, uint16_t *array, const int32_t *size,
                           const int32_t *channel, int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
