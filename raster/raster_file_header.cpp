// SPDX-License-Identifier: MIT
//
// The 80 bytes of text at the start of a raster file: put together and taken apart.
#include "raster/raster_file.h"

#include <cstring>

#include "base/files.h"
#include "base/text.h"

namespace quorix {

namespace {

constexpr size_t header_bytes = 80;
constexpr size_t kind_offset = 15;
constexpr size_t kind_bytes = 5;
constexpr size_t fields_offset = 20;
constexpr int32_t field_width = 5;
constexpr size_t field_step = 6;
constexpr size_t recognised_bytes = 14;  // of the signature, without its last blank
constexpr char signature[] = "!Bitmap QUORIX ";
constexpr const char *kind_names[] = {"GL   ", "WIN  ", "VIRT ", "X11  ", "OSX  "};

constexpr int32_t RasterFileHeader::*fields[] = {
    &RasterFileHeader::width,       &RasterFileHeader::height,
    &RasterFileHeader::bits,        &RasterFileHeader::bytes_per_row,
    &RasterFileHeader::bits_stored, &RasterFileHeader::fixed,
    &RasterFileHeader::reserved,    &RasterFileHeader::pixel_type,
    &RasterFileHeader::index_offset};

}  // namespace

// A number of more than five digits keeps its leading five: the header has room for no more.
void write_raster_header(std::FILE *file, const RasterFileHeader &header, RasterFileKind kind) {
  char text[header_bytes];
  std::memset(text, ' ', sizeof(text));
  std::memcpy(text, signature, kind_offset);
  std::memcpy(text + kind_offset, kind_names[kind], kind_bytes);
  size_t at = fields_offset;
  for (const auto field : fields) {
    char digits[field_width + 1];
    const size_t length = format_int(header.*field, digits, sizeof(digits), field_width, 0);
    std::memcpy(text + at, digits, length);
    at += field_step;
  }
  write_file(file, text, sizeof(text));
}

bool read_raster_header(std::FILE *file, RasterFileHeader *header) {
  char text[header_bytes + 1] = {};
  if (read_file(file, text, header_bytes) != header_bytes) return false;
  if (std::memcmp(text, signature, recognised_bytes) != 0) return false;
  int32_t index = 1;
  for (const auto field : fields)
    header->*field = read_int_token(text + fields_offset, index++);
  return header->width >= 0 && header->height >= 0 && header->bytes_per_row > 0;
}

}  // namespace quorix
