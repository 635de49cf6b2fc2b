// SPDX-License-Identifier: MIT
//
// Saving the raster into a file of the library's own format, and loading one.
//
// A file may be of any size and depth; its upper left part comes into the raster. Rows that match
// the raster's depth are stored as they are, all others go through the row writer, which knows the
// transparent colour. Rows are as long as the header says but never longer than the file; one that
// ends early loads the rows it has, and a row cut short ends in zeros.
#include "raster/raster_file.h"

#include <cstring>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/memory.h"
#include "quorix/raster.h"
#include "raster/raster.h"

namespace quorix {

namespace {

enum Status : int32_t { done = 0, not_opened = 1, no_memory = 2, bad_file = 3 };

constexpr int32_t index_bits = 8;
constexpr int32_t rgb_bits = 24;

// ---- Saving

// Triples of all rows, alpha dropped.
Status save_rgb_rows(OutputContext *context, std::FILE *file) {
  const RasterPage &page = context->buffers.raster.page;
  const size_t row_bytes = static_cast<size_t>(page.width) * 3;
  auto row = allocate_array<uint8_t>(row_bytes);
  if (!row) return no_memory;
  for (int32_t y = 0; y < page.height; ++y) {
    read_raster_rectangle(context, row.get(), 0, y, -page.width, 1);
    write_file(file, row.get(), row_bytes);
  }
  return done;
}

Status save_raster(OutputContext *context, const char *file_name) {
  const FileWork work("qqvfil", file_name);
  const OwnedFile file = open_file(file_name, "wb");
  if (!file) return not_opened;
  const RasterPage &page = context->buffers.raster.page;
  const bool rgba = page.rgba != 0;
  const int32_t bits = rgba ? rgb_bits : index_bits;
  const RasterFileHeader header = {
      page.width, page.height, bits, page.width * (rgba ? 3 : 1), bits, 32, 0, rgba ? 5 : 1, 0};
  write_raster_header(file.get(), header, kind_virt);
  if (rgba) return save_rgb_rows(context, file.get());
  write_file(file.get(), context->buffers.raster.pixels,
             static_cast<size_t>(page.width) * static_cast<size_t>(page.height));
  return done;
}

// ---- Loading

struct RasterLoad {
  OutputContext *context;
  std::FILE *file;
  RasterFileHeader header;
  size_t row_bytes;  // in the file: what the header says, but no more than the file has
  int32_t rows, cols;
  bool half;  // indices of 128 levels, to be converted
};

// The file fits the raster byte for byte.
void load_whole(const RasterLoad &load) {
  const RasterPage &page = load.context->buffers.raster.page;
  const size_t bytes = static_cast<size_t>(page.width) * static_cast<size_t>(page.height);
  const size_t count = read_file(load.file, load.context->buffers.raster.pixels, bytes);
  if (load.half)
    convert_half_indices(load.context->buffers.raster.pixels, count, load.header.index_offset);
}

// The next row of the file, filled up with zeros; false at the end of the file.
bool read_row(const RasterLoad &load, uint8_t *row, size_t room) {
  const size_t count = read_file(load.file, row, load.row_bytes);
  if (count == 0) return false;
  std::memset(row + count, 0, room - count);
  if (load.half) convert_half_indices(row, count, load.header.index_offset);
  return true;
}

// Rows of the raster's own depth, stored as they are.
void load_compatible(const RasterLoad &load, uint8_t *row, size_t room) {
  const RasterPage &page = load.context->buffers.raster.page;
  for (int32_t y = 0; y < load.rows && read_row(load, row, room); ++y) {
    if (page.rgba == 0) {
      std::memcpy(load.context->buffers.raster.pixels +
                      static_cast<size_t>(y) * static_cast<size_t>(page.width),
                  row, static_cast<size_t>(load.header.bytes_per_row));
      continue;
    }
    auto *to = reinterpret_cast<uint32_t *>(load.context->buffers.raster.pixels) +
               static_cast<size_t>(y) * static_cast<size_t>(page.width);
    for (int32_t x = 0; x < load.cols; ++x) {
      const uint8_t *p = row + static_cast<size_t>(x) * 3;
      to[x] = pack_rgba(p[0], p[1], p[2], load.context->colours.colour_alpha);
    }
  }
}

Status load_converted(const RasterLoad &load, uint8_t *row, size_t room) {
  const bool quads = load.header.bits_stored == 32;
  const bool rgb = load.header.bits_stored != index_bits;
  OwnedArray<uint8_t> triples;
  if (quads) {
    triples = allocate_zeroed_array<uint8_t>(static_cast<size_t>(load.cols) * 3);
    if (!triples) return no_memory;
  }
  for (int32_t y = 0; y < load.rows && read_row(load, row, room); ++y) {
    if (quads) convert_quads(row, triples.get(), load.cols, load.header.pixel_type);
    write_raster_row(load.context, quads ? triples.get() : row, 0, y, load.cols, rgb);
  }
  return done;
}

Status load_rows(const RasterLoad &load) {
  const RasterPage &page = load.context->buffers.raster.page;
  const size_t pixel_bytes = static_cast<size_t>(load.header.bits_stored) / 8;
  const bool own_depth = load.header.bits_stored == (page.rgba != 0 ? rgb_bits : index_bits);
  const int64_t page_row_bytes = static_cast<int64_t>(page.width) * (page.rgba != 0 ? 4 : 1);
  const bool compatible = own_depth && page_row_bytes >= load.header.bytes_per_row;
  // The loops read whole pixels of every column, whatever the file says a row has.
  const size_t room =
      std::max({load.row_bytes, static_cast<size_t>(load.cols) * pixel_bytes,
                compatible ? static_cast<size_t>(load.header.bytes_per_row) : size_t{0}});
  auto row = allocate_array<uint8_t>(room);
  if (!row) return no_memory;
  if (!compatible) return load_converted(load, row.get(), room);
  load_compatible(load, row.get(), room);
  return done;
}

Status load_raster(OutputContext *context, const char *file_name) {
  const OwnedFile file = open_file(file_name, "rb");
  if (!file) return not_opened;
  RasterLoad load = {};
  load.context = context;
  load.file = file.get();
  if (!read_raster_header(load.file, &load.header)) return bad_file;
  if (!is_common_depth(load.header.bits_stored)) return bad_file;
  const RasterPage &page = context->buffers.raster.page;
  const RasterFileHeader &header = load.header;
  load.half = header.bits_stored == index_bits && header.pixel_type == pixels_half_index;
  load.rows = std::min(header.height, page.height);
  load.cols = std::min(header.width, page.width);
  load.row_bytes = std::min(static_cast<size_t>(header.bytes_per_row), bytes_left(load.file));
  const bool exact = header.bytes_per_row == page.width && header.height == page.height &&
                     header.bits_stored == index_bits && page.rgba == 0;
  if (!exact) return load_rows(load);
  load_whole(load);
  return done;
}

}  // namespace

void convert_half_indices(uint8_t *indices, size_t count, int32_t offset) {
  for (size_t i = 0; i < count; ++i) {
    const int64_t v = static_cast<int64_t>(indices[i]) - offset;
    indices[i] = v == 0 ? 0 : static_cast<uint8_t>((2 * v - 1) & 255);
  }
}

void convert_quads(const uint8_t *quads, uint8_t *triples, int32_t count, int32_t pixel_type) {
  const bool blue_first = pixel_type == 4 || pixel_type == 7;
  if (!blue_first && pixel_type != 5 && pixel_type != 6) return;
  for (int32_t i = 0; i < count; ++i, quads += 4, triples += 3) {
    triples[0] = quads[blue_first ? 2 : 0];
    triples[1] = quads[1];
    triples[2] = quads[blue_first ? 0 : 2];
  }
}

size_t bytes_left(std::FILE *file) {
  const int64_t here = file_gate.tell(file);
  if (here < 0 || file_gate.seek(file, 0, SEEK_END) != 0) return 0;
  const int64_t end = file_gate.tell(file);
  if (file_gate.seek(file, here, SEEK_SET) != 0 || end < here) return 0;
  return static_cast<size_t>(end - here);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvfil(const char *file_name, int32_t mode, int32_t *status) {
  OutputContext *context = output_context;
  *status = not_opened;
  if (context == nullptr) return 0;
  flush_raster(context);
  if (!has_raster(context)) return 0;
  *status = mode == 0 ? save_raster(context, file_name) : load_raster(context, file_name);
  return 0;
}
