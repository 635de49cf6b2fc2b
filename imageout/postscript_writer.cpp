// SPDX-License-Identifier: MIT
//
// PostScript: a program that sets up the page, and the pixels in hexadecimal.
//
// The file is a text file, so on Windows the C library ends its lines in CR and LF. Lines of digits
// take no notice of where rows end.
#include <algorithm>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/text_line.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

constexpr size_t bytes_per_line = 40;                             // 80 digits
constexpr int32_t decimals = 3;                                   // of lengths in points
constexpr double default_margin_x = 150, default_margin_y = 200;  // internal units

struct Margins {
  double x, y;  // points
};

Margins margins_of(int32_t margin_set, int32_t margin_x, int32_t margin_y) {
  const bool set = margin_set == 1;
  return {(set ? page_units(margin_x) : default_margin_x) * points_per_unit,
          (set ? page_units(margin_y) : default_margin_y) * points_per_unit};
}

void write_line(std::FILE *file, const TextLine &line) {
  write_file(file, line.text, line.length);
}

void write_comments(std::FILE *file, const PageFit &fit, const Margins &margins) {
  TextLine line;
  add(&line, "%!PS-Adobe-2.0\n%%BoundingBox: ");  // a blank here, and one before the number
  add_int(&line, to_int32(margins.x));
  add_int(&line, to_int32(margins.y));
  add_int(&line, to_int32(fit.page_width + margins.x + 1));
  add_int(&line, to_int32(fit.page_height + margins.y + 1));
  // Kept: files name 10.3 as their creator whatever the library's version is.
  add(&line, "\n%%Creator: QUORIX  10.3\n");
  write_line(file, line);
}

void write_coordinates(std::FILE *file, const PageFit &fit, const Margins &margins) {
  TextLine origin;
  add_real(&origin, margins.x, decimals);
  add_real(&origin, margins.y, decimals);
  add(&origin, " translate \n/DeviceRGB setcolorspace\n");
  write_line(file, origin);
  TextLine corner;
  add(&corner, "gsave");
  add_real(&corner, fit.landscape ? fit.page_width : 0.0, decimals);
  add_real(&corner, 0.0, decimals);
  add(&corner, " translate \n");
  if (fit.landscape) add(&corner, "90 rotate\n");
  write_line(file, corner);
  TextLine scale;
  add_real(&scale, fit.drawn_width, decimals);
  add_real(&scale, fit.drawn_height, decimals);
  add(&scale, " scale \n");
  write_line(file, scale);
}

void write_image_dictionary(std::FILE *file, int32_t width, int32_t height) {
  TextLine line;
  add(&line, "<<\n/ImageType 1\n/Width");
  add_int(&line, width);
  add(&line, "\n/Height");
  add_int(&line, height);
  add(&line, "\n/BitsPerComponent 8\n/Decode [0 1 0 1 0 1]\n");
  write_line(file, line);
  TextLine matrix;
  add(&matrix, "/ImageMatrix [");
  add_int(&matrix, width);
  add(&matrix, " 0 0");
  add_int(&matrix, static_cast<int32_t>(-static_cast<int64_t>(height)));
  add(&matrix, " 0");
  add_int(&matrix, height);
  add(&matrix, "] /DataSource currentfile /ASCIIHexDecode filter\n>> image\n");
  write_line(file, matrix);
}

// Bytes as one line of digits.
void write_digits(std::FILE *file, const uint8_t *bytes, size_t count) {
  constexpr char hex[] = "0123456789ABCDEF";
  char digits[2 * bytes_per_line + 1];
  char *to = digits;
  for (size_t i = 0; i < count; ++i) {
    *to++ = hex[bytes[i] >> 4];
    *to++ = hex[bytes[i] & 15];
  }
  *to++ = '\n';
  write_file(file, digits, static_cast<size_t>(to - digits));
}

WriterStatus write_pixels(std::FILE *file, const PictureSource &source) {
  if (!has_pixels(source.area)) return writer_done;
  size_t bytes = 0;
  const OwnedArray<uint8_t> pixels = read_picture(source, Samples::rgb, &bytes);
  if (pixels == nullptr) return writer_no_memory;
  for (size_t at = 0; at < bytes; at += bytes_per_line)
    write_digits(file, pixels.get() + at, std::min(bytes_per_line, bytes - at));
  return writer_done;
}

WriterStatus write_program(const char *name, const PictureSource &source, const PageFit &fit,
                           const Margins &margins) {
  const FileWork work("qqpps", name);
  const OwnedFile file = open_file(name, "w");
  if (file == nullptr) return writer_no_file;
  write_comments(file.get(), fit, margins);
  write_coordinates(file.get(), fit, margins);
  write_image_dictionary(file.get(), header_size(source.area.width),
                         header_size(source.area.height));
  const WriterStatus status = write_pixels(file.get(), source);
  if (status != writer_done) return status;
  TextLine tail;
  add(&tail, "\n> grestore showpage\n");
  write_line(file.get(), tail);
  return writer_done;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpps(const char *file, const int32_t *device, const int32_t *width,
                         const int32_t *height, const int32_t *page_set, const int32_t *page_width,
                         const int32_t *page_height, const int32_t *margin_set,
                         const int32_t *margin_x, const int32_t *margin_y, int32_t *status) {
  quorix::PictureSource source;
  *status = quorix::find_source(&source, quorix::output_context, *device, *width, *height);
  if (*status != quorix::writer_done) return 0;
  const quorix::PageFit fit =
      quorix::fit_on_page(source.area, {*page_set, *page_width, *page_height});
  const quorix::Margins margins = quorix::margins_of(*margin_set, *margin_x, *margin_y);
  *status = quorix::write_program(file, source, fit, margins);
  return 0;
}
