// SPDX-License-Identifier: MIT
//
// Binary PPM: a header in text, then the pixels as they are read.
#include "base/file_failures.h"
#include "base/files.h"
#include "base/text.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

void write_header(std::FILE *file, const PictureArea &area) {
  constexpr size_t limit = 40;  // two numbers of 11 characters and what stands around them
  char text[limit + 1] = "P6\n";
  char size[limit + 1] = "";
  append_int(size, header_size(area.width), limit);
  append_int(size, header_size(area.height), limit);
  append_bytes(text, size, limit);
  const size_t length = append_bytes(text, "\n255\n", limit);
  write_file(file, text, length);
}

WriterStatus write_ppm(OutputContext *context, const char *name, int32_t device, int32_t width,
                       int32_t height) {
  PictureSource source;
  const WriterStatus found = find_source(&source, context, device, width, height);
  if (found != writer_done) return found;
  const FileWork work("qqpppm", name);
  const OwnedFile file = open_file(name, "wb");
  if (file == nullptr) return writer_no_file;
  write_header(file.get(), source.area);
  if (!has_pixels(source.area)) return writer_done;
  size_t bytes = 0;
  const OwnedArray<uint8_t> pixels = read_picture(source, Samples::rgb, &bytes);
  if (pixels == nullptr) return writer_no_memory;
  write_file(file.get(), pixels.get(), bytes);
  return writer_done;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpppm(const char *file, const int32_t *device, const int32_t *width,
                          const int32_t *height, const int32_t * /*unused*/, int32_t *status) {
  *status = quorix::write_ppm(quorix::output_context, file, *device, *width, *height);
  return 0;
}
