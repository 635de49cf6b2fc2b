/* SPDX-License-Identifier: MIT
 *
 * Image readers: a file into a device, or into memory to be cropped and scaled.
 */
#ifndef QUORIX_IMAGEIN_H
#define QUORIX_IMAGEIN_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the first image of a GIF file (87a and 89a), interlaced or not. Extensions before it are
 * skipped byte by byte up to the first 0x2C; transparency is not honoured.
 *
 * A held picture has the size of the file's screen, with the image in its upper left corner, cut
 * there, and black around it. What is shown is the image alone, its corner at (x, y).
 *
 * file           name of the file
 * device         0: hold the picture in memory; else the number of the device to show it on
 * unused         not read, may be null
 * device_width, device_height
 *                size of that device in pixels, at which the picture is cut
 * x, y           where on the device the upper left corner comes, any value; not read for device 0
 * status         0 done; -1 the file cannot be opened, or there is no drawing record yet to show it
 *                on; -2 no memory; -3 damaged: no image or an empty one, no colour table, a code that
 *                cannot be, or an end before the end code or before the image's last sub-block; -9
 *                there is no such device in this library. Rows decoded before a failure are shown,
 *                but none is held */
QUORIX_API int32_t qqpigif(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

/* Reads a PNG file (ISO/IEC 15948): all colours and depths, interlaced or not. Samples of 16 bits are
 * reduced to their high byte. A tRNS chunk or alpha samples give the picture an alpha, with which it
 * is blended over what the device shows. A bKGD chunk leaves no alpha: alpha samples are blended with
 * the background, a tRNS chunk is dropped. CRCs are not checked. An interlaced picture is shown when
 * it is complete, and no picture is held after that.
 *
 * A file that ends early gives the rows it has, and status 0.
 *
 * Arguments as for qqpigif.
 *
 * status         0 done; -1, -2 and -9 as for qqpigif; -3 no PNG file, or the decompressor cannot be
 *                started; -4 the compressed data are damaged; -5 done, but some pixel's index is
 *                outside the palette, and counts as index 0; -6 the decompressor failed at its end */
QUORIX_API int32_t qqpipng(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

#ifdef __cplusplus
}
#endif

#endif
