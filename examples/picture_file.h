/* SPDX-License-Identifier: MIT
 *
 * What kind of picture a file holds and how large it is, told by its first bytes.
 */
#ifndef EXAMPLES_PICTURE_FILE_H
#define EXAMPLES_PICTURE_FILE_H

typedef enum PictureKind { PNG_FILE, GIF_FILE, BMP_FILE, TIFF_FILE } PictureKind;

typedef struct PictureFile {
  PictureKind kind;
  int width, height;
} PictureFile;

/* "PNG" and so on. */
const char *kind_name(PictureKind kind);

/* Looks at a file. One that cannot be read, or holds no picture that this library reads, ends the
 * program with a message. */
PictureFile look_at_picture(const char *file);

#endif
