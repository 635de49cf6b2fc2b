/* SPDX-License-Identifier: MIT */
#include "picture_file.h"

#include <errno.h>
#include <limits.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "axes.h"

/* Bytes that tell kind and size of a PNG, GIF or BMP file, and where a TIFF file goes on. */
enum { START = 32, SMALLEST = 8, ENTRY = 12 };

typedef struct Reader {
  const char *name;
  FILE *stream;
  int big_endian;
} Reader;

static uint32_t number(const Reader *reader, const unsigned char *bytes, int count) {
  uint32_t value = 0;
  for (int i = 0; i < count; i++)
    value = value << 8 | bytes[reader->big_endian ? i : count - 1 - i];
  return value;
}

static void read_at(const Reader *reader, uint32_t offset, unsigned char *bytes, size_t count) {
  if (offset > INT_MAX) fail("%s: the file is too large", reader->name);
  if (fseek(reader->stream, (long)offset, SEEK_SET) != 0 ||
      fread(bytes, 1, count, reader->stream) != count)
    fail("%s: the file is not whole", reader->name);
}

/* The directory of a TIFF file has the size among its entries. */
static void look_at_tiff(Reader *reader, const unsigned char *start, PictureFile *picture) {
  unsigned char bytes[ENTRY];
  reader->big_endian = start[0] == 'M';
  uint32_t at = number(reader, start + 4, 4);
  read_at(reader, at, bytes, 2);
  uint32_t entries = number(reader, bytes, 2);
  for (uint32_t i = 0; i < entries; i++) {
    read_at(reader, at + 2 + ENTRY * i, bytes, ENTRY);
    uint32_t tag = number(reader, bytes, 2), type = number(reader, bytes + 2, 2);
    uint32_t value = number(reader, bytes + 8, type == 3 ? 2 : 4);
    if (tag == 256) picture->width = value > INT_MAX ? 0 : (int)value;
    if (tag == 257) picture->height = value > INT_MAX ? 0 : (int)value;
  }
}

static void look_at_png(Reader *reader, const unsigned char *start, PictureFile *picture) {
  reader->big_endian = 1;
  picture->width = (int)number(reader, start + 16, 4);
  picture->height = (int)number(reader, start + 20, 4);
}

static void look_at_bmp(const Reader *reader, const unsigned char *start, PictureFile *picture) {
  uint32_t bits = number(reader, start + 28, 2);
  picture->width = (int)number(reader, start + 18, 4);
  picture->height = (int)number(reader, start + 22, 4);
  if (bits != 1 && bits != 4 && bits != 8 && bits != 24)
    fail("%s: bitmaps of %d bits per pixel are not read", reader->name, (int)bits);
  if (picture->height < 0)
    fail("%s: bitmaps that start with their top row are not read", reader->name);
}

const char *kind_name(PictureKind kind) {
  static const char *const names[] = {"PNG", "GIF", "BMP", "TIFF"};
  return names[kind];
}

PictureFile look_at_picture(const char *file) {
  unsigned char start[START] = {0};
  PictureFile picture = {PNG_FILE, 0, 0};
  Reader reader = {file, fopen(file, "rb"), 0};
  if (reader.stream == NULL) fail("%s: %s", file, strerror(errno));
  if (fread(start, 1, START, reader.stream) < SMALLEST) fail("%s: no picture in it", file);
  if (memcmp(start, "\x89PNG\r\n\x1A\n", 8) == 0) {
    look_at_png(&reader, start, &picture);
  } else if (memcmp(start, "GIF8", 4) == 0) {
    picture = (PictureFile){GIF_FILE, start[6] | start[7] << 8, start[8] | start[9] << 8};
  } else if (memcmp(start, "BM", 2) == 0) {
    picture.kind = BMP_FILE;
    look_at_bmp(&reader, start, &picture);
  } else if (memcmp(start, "II*\0", 4) == 0 || memcmp(start, "MM\0*", 4) == 0) {
    picture.kind = TIFF_FILE;
    look_at_tiff(&reader, start, &picture);
  } else {
    fail("%s: neither PNG, GIF, TIFF nor BMP", file);
  }
  fclose(reader.stream);
  if (picture.width <= 0 || picture.height <= 0) fail("%s: the picture has no size", file);
  return picture;
}
