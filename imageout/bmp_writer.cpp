// SPDX-License-Identifier: MIT
//
// Windows bitmaps with the 40-byte information header, not compressed: 8 bits per pixel with a
// colour table, or 24. Rows stand bottom first, each filled up to a multiple of 4 bytes.
//
// Decision. Sizes in the header that do not fit in 32 bits wrap.
#include <algorithm>
#include <utility>

#include "base/bmp_format.h"
#include "base/file_failures.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/triples.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

constexpr uint32_t default_resolution = 2500;

struct BmpWriter {
  PictureSource source;
  PixelPath path;
  bool swap;            // words of this host have to be turned
  uint32_t resolution;  // pixels per metre
  int64_t colours;      // as the header says; below 0 there are no entries
  FilePalette palette;
  std::FILE *file;
};

// Bytes of a row of pixels, and with what fills it up.
size_t row_bytes(const BmpWriter &bmp) {
  if (!has_pixels(bmp.source.area)) return 0;
  const bool rgb = bmp.path == PixelPath::true_colour;
  return static_cast<size_t>(bmp.source.area.width) * (rgb ? 3U : 1U);
}

size_t stride(const BmpWriter &bmp) {
  return (row_bytes(bmp) + bmp_row_group - 1) / bmp_row_group * bmp_row_group;
}

void write_header(const BmpWriter &bmp) {
  const PictureArea &area = bmp.source.area;
  const auto rows = has_pixels(area) ? static_cast<size_t>(area.height) : size_t{0};
  const auto image_bytes = static_cast<uint32_t>(stride(bmp) * rows);
  const auto colours = static_cast<uint32_t>(bmp.colours);
  const auto table_bytes = static_cast<uint32_t>(bmp_table_entry_bytes) * colours;
  const uint32_t rows_at = static_cast<uint32_t>(bmp_headers_bytes) + table_bytes;
  uint8_t bytes[bmp_headers_bytes] = {};
  const auto put = [&](size_t at, uint32_t word) { put_word(bytes + at, word, bmp.swap); };
  const auto put_16 = [&](size_t at, uint16_t word) { put_word(bytes + at, word, bmp.swap); };
  std::memcpy(bytes, bmp_signature, sizeof bmp_signature);
  put(bmp_file_size_at, rows_at + image_bytes);
  put(bmp_offset_at, rows_at);
  put(bmp_info_size_at, bmp_info_bytes);
  put(bmp_width_at, static_cast<uint32_t>(header_size(area.width)));
  put(bmp_height_at, static_cast<uint32_t>(header_size(area.height)));
  put_16(bmp_planes_at, 1);
  put_16(bmp_bits_at, bmp.path == PixelPath::true_colour ? 24 : 8);
  put(bmp_compression_at, bmp_plain);
  put(bmp_image_size_at, image_bytes);
  put(bmp_x_resolution_at, bmp.resolution);
  put(bmp_y_resolution_at, bmp.resolution);
  put(bmp_colours_used_at, colours);
  put(bmp_colours_important_at, colours);
  write_file(bmp.file, bytes, sizeof bytes);
}

void write_colour_table(const BmpWriter &bmp) {
  constexpr int64_t block = 256;
  uint8_t entries[block * bmp_table_entry_bytes] = {};
  for (int64_t done = 0; done < bmp.colours; done += block) {
    const auto count = static_cast<size_t>(std::min(bmp.colours - done, block));
    for (size_t i = 0; i < count; ++i) {
      uint8_t *const entry = entries + i * bmp_table_entry_bytes;
      palette_entry(bmp.palette, static_cast<size_t>(done) + i, entry);
      std::swap(entry[0], entry[2]);  // blue first
    }
    write_file(bmp.file, entries, count * bmp_table_entry_bytes);
  }
}

// One row of the file.
void make_row(const BmpWriter &bmp, int64_t row, const uint8_t *indices, uint8_t *to) {
  const size_t bytes = row_bytes(bmp);
  if (bmp.path == PixelPath::true_colour) {
    read_picture_row(bmp.source, row, Samples::rgb, to);
    swap_red_and_blue(to, bytes / 3);
  } else if (bmp.path == PixelPath::indexed) {
    read_picture_row(bmp.source, row, Samples::index, to);
  } else {
    std::memcpy(to, indices + static_cast<size_t>(row) * bytes, bytes);
  }
  std::memset(to + bytes, 0, stride(bmp) - bytes);
}

// All rows are put in place in memory and written by one call.
WriterStatus write_picture(BmpWriter *bmp) {
  const PictureArea &area = bmp->source.area;
  size_t bytes = 0;
  OwnedArray<uint8_t> rows;
  if (has_pixels(area)) {
    if (!picture_bytes(bmp->source, Samples::rgb, &bytes)) return writer_no_memory;
    if (!checked_product(&bytes, stride(*bmp), static_cast<size_t>(area.height)))
      return writer_no_memory;
    rows = allocate_array<uint8_t>(bytes);
    if (rows == nullptr) return writer_no_memory;
  }
  OwnedArray<uint8_t> indices;
  if (bmp->path == PixelPath::quantised) {
    const WriterStatus status = quantise_picture(bmp->source, &bmp->palette, &indices);
    if (status != writer_done) return status;
  }
  write_colour_table(*bmp);
  if (bytes == 0) return writer_done;
  uint8_t *to = rows.get() + bytes;
  for (int64_t row = 0; row < area.height; ++row)
    make_row(*bmp, row, indices.get(), to -= stride(*bmp));
  write_file(bmp->file, rows.get(), bytes);
  return writer_done;
}

WriterStatus write_bmp(BmpWriter *bmp, const char *name) {
  const FileWork work("qqpbmp", name);
  const OwnedFile file = open_file(name, "wb");
  if (file == nullptr) return writer_no_file;
  bmp->file = file.get();
  write_header(*bmp);
  return write_picture(bmp);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpbmp(const char *file, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const int32_t *colours, int32_t *status) {
  quorix::BmpWriter bmp = {};
  const quorix::WriterStatus found =
      quorix::find_source(&bmp.source, quorix::output_context, *device, *width, *height);
  if (found != quorix::writer_done) {
    *status = found;
    return 0;
  }
  // Byte order and resolution stand in one argument.
  const bool has_resolution = *order < 0 || *order > 1;
  bmp.swap = *order <= 0;
  bmp.resolution = has_resolution ? static_cast<uint32_t>(quorix::magnitude(*order))
                                  : quorix::default_resolution;
  bmp.path = quorix::pixel_path(*device, *height);
  bmp.colours = bmp.path == quorix::PixelPath::true_colour ? 0 : *colours;
  bmp.palette.words = bmp.path == quorix::PixelPath::indexed ? palette : nullptr;
  *status = quorix::write_bmp(&bmp, file);
  return 0;
}
