// SPDX-License-Identifier: MIT
//
// Raster files of a window that draws through OpenGL: rows are read back and drawn one by one.
#include "window/opengl_file.h"

#include <algorithm>
#include <cstring>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/memory.h"
#include "raster/raster_file.h"
#include "window/opengl_drawing.h"

namespace quorix {

namespace {

constexpr int32_t rgb_bits = 24;

struct GlLoad {
  const OutputContext *context;
  const GlCalls *gl;
  RasterFileHeader header;
  int32_t columns;
};

void draw_row(const GlLoad &load, int32_t y, uint32_t format, const uint8_t *pixels) {
  load.gl->raster_position(0, turned_row(load.context, y));
  load.gl->draw_pixels(load.columns, 1, format, gl_unsigned_byte, pixels);
}

// Indices become triples of the palette.
void triples_of_indices(const GlLoad &load, uint8_t *indices, uint8_t *triples) {
  const auto count = static_cast<size_t>(load.columns);
  if (load.header.pixel_type == pixels_half_index)
    convert_half_indices(indices, count, load.header.index_offset);
  const Colours &c = load.context->colours;
  for (size_t i = 0; i < count; ++i) {
    triples[i * 3] = c.palette_r[indices[i]];
    triples[i * 3 + 1] = c.palette_g[indices[i]];
    triples[i * 3 + 2] = c.palette_b[indices[i]];
  }
}

void order_quads(const GlLoad &load, uint8_t *quads) {
  const bool blue_first = order_of_quads(load.header.pixel_type) == pixels_bgrx;
  for (int32_t i = 0; i < load.columns; ++i, quads += 4) {
    if (blue_first) std::swap(quads[0], quads[2]);
    quads[3] = 255;
  }
}

void draw_file_row(const GlLoad &load, int32_t y, uint8_t *row, uint8_t *triples) {
  switch (load.header.bits_stored) {
    case 8:
      triples_of_indices(load, row, triples);
      return draw_row(load, y, gl_rgb, triples);
    case rgb_bits:
      return draw_row(load, y, gl_rgb, row);
    default:
      order_quads(load, row);
      return draw_row(load, y, gl_rgba, row);
  }
}

FileStatus load_rows(const GlLoad &load, std::FILE *file) {
  const auto columns = static_cast<size_t>(load.columns);
  const size_t row_bytes =
      std::min(static_cast<size_t>(load.header.bytes_per_row), bytes_left(file));
  const size_t room = std::max(row_bytes, columns * 4);
  const auto row = allocate_array<uint8_t>(room);
  const auto triples = allocate_array<uint8_t>(columns * 3);
  if (!row || !triples) return file_no_memory;
  const int32_t rows = std::min(load.header.height, load.context->page.height);
  for (int32_t y = 0; y < rows; ++y) {
    const size_t count = read_file(file, row.get(), row_bytes);
    if (count == 0) break;
    std::memset(row.get() + count, 0, room - count);
    draw_file_row(load, y, row.get(), triples.get());
  }
  return file_done;
}

}  // namespace

int32_t order_of_quads(int32_t pixel_type) {
  constexpr int32_t also_bgrx = 7;
  return pixel_type <= pixels_bgrx || pixel_type == also_bgrx ? pixels_bgrx : pixels_rgb;
}

FileStatus save_gl_picture(const OutputContext *context, const char *filename) {
  const GlCalls *gl = drawing_gl(context);
  const Page &page = context->page;
  if (gl == nullptr || page.width < 1 || page.height < 1) return file_not_opened;
  const FileWork work("qqwfil", filename);
  const OwnedFile file = open_file(filename, "wb");
  if (!file) return file_not_opened;
  const RasterFileHeader header = {page.width, page.height, rgb_bits, page.width * 3, rgb_bits, 32,
                                   0,          pixels_rgb,  0};
  write_raster_header(file.get(), header, kind_gl);
  const size_t row_bytes = static_cast<size_t>(page.width) * 3;
  const auto row = allocate_array<uint8_t>(row_bytes);
  if (!row) return file_not_opened;
  for (int32_t y = 0; y < page.height; ++y) {
    gl->read_pixels(0, turned_row(context, y), page.width, 1, gl_rgb, gl_unsigned_byte, row.get());
    write_file(file.get(), row.get(), row_bytes);
  }
  return file_done;
}

FileStatus load_gl_picture(const OutputContext *context, const char *filename) {
  const GlCalls *gl = drawing_gl(context);
  if (gl == nullptr) return file_not_opened;
  const OwnedFile file = open_file(filename, "rb");
  if (!file) return file_not_opened;
  GlLoad load = {context, gl, {}, 0};
  if (!read_raster_header(file.get(), &load.header)) return file_bad;
  if (!is_common_depth(load.header.bits_stored)) return file_bad;
  load.columns = std::min(load.header.width, context->page.width);
  if (load.columns < 1) return file_done;
  return load_rows(load, file.get());
}

}  // namespace quorix
