// SPDX-License-Identifier: MIT
//
// The same answers from libpng. Only where the build found it.
#ifdef QUORIX_TEST_WITH_LIBPNG

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>

#include "tests/imageout/png_decoder.h"

namespace quorix::testing {

namespace {

struct Reading {
  const Bytes *stream;
  size_t at;
  std::string problem;
};

void give_bytes(png_structp png, png_bytep to, size_t count) {
  auto *reading = static_cast<Reading *>(png_get_io_ptr(png));
  if (count > reading->stream->size() - reading->at) png_error(png, "the stream ends early");
  std::memcpy(to, reading->stream->data() + reading->at, count);
  reading->at += count;
}

void note_error(png_structp png, png_const_charp text) {
  static_cast<Reading *>(png_get_error_ptr(png))->problem = text;
  png_longjmp(png, 1);
}

void note_warning(png_structp png, png_const_charp text) {
  static_cast<Reading *>(png_get_error_ptr(png))->problem = text;
}

// Nothing here has a destructor, since libpng leaves by longjmp.
bool read_png(png_structp png, png_infop info) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  return true;
}

void take_transparency(png_structp png, png_infop info, PngPicture *picture) {
  png_bytep alphas = nullptr;
  int count = 0;
  png_color_16p colour = nullptr;
  if (png_get_tRNS(png, info, &alphas, &count, &colour) == 0) return;
  if (picture->colour_type == PNG_COLOR_TYPE_PALETTE) {
    picture->transparency.assign(alphas, alphas + count);
    return;
  }
  for (const png_uint_16 sample : {colour->red, colour->green, colour->blue}) {
    picture->transparency.push_back(static_cast<uint8_t>(sample >> 8));
    picture->transparency.push_back(static_cast<uint8_t>(sample & 255));
  }
}

void take_picture(png_structp png, png_infop info, PngPicture *picture) {
  picture->width = png_get_image_width(png, info);
  picture->height = png_get_image_height(png, info);
  picture->bit_depth = png_get_bit_depth(png, info);
  picture->colour_type = png_get_color_type(png, info);
  picture->compression = png_get_compression_type(png, info);
  picture->filter = png_get_filter_type(png, info);
  picture->interlace = png_get_interlace_type(png, info);
  png_colorp palette = nullptr;
  int entries = 0;
  if (png_get_PLTE(png, info, &palette, &entries) != 0) {
    for (int i = 0; i < entries; ++i)
      for (const png_byte sample : {palette[i].red, palette[i].green, palette[i].blue})
        picture->palette.push_back(sample);
  }
  take_transparency(png, info, picture);
  const size_t row_bytes = png_get_rowbytes(png, info);
  png_bytepp const rows = png_get_rows(png, info);
  for (uint32_t y = 0; y < picture->height; ++y)
    picture->samples.insert(picture->samples.end(), rows[y], rows[y] + row_bytes);
}

}  // namespace

PngPicture decode_with_libpng(const Bytes &stream) {
  Reading reading = {&stream, 0, {}};
  PngPicture picture;
  png_structp png =
      png_create_read_struct(PNG_LIBPNG_VER_STRING, &reading, note_error, note_warning);
  png_infop info = png_create_info_struct(png);
  png_set_read_fn(png, &reading, give_bytes);
  if (read_png(png, info)) take_picture(png, info, &picture);
  png_destroy_read_struct(&png, &info, nullptr);
  picture.problem = reading.problem;
  if (picture.problem.empty() && reading.at != stream.size()) picture.problem = "bytes behind IEND";
  return picture;
}

}  // namespace quorix::testing

#endif
