// SPDX-License-Identifier: MIT
//
// Saving a window's bitmap into a file of the library's own format, and loading one (qqwfil).
//
// A saved file is the raw image of the bitmap: its rows with their padding, its own order of
// colours, its palette's bytes. A file that fits the bitmap is loaded the same way; all others go
// row by row through the row writer, which knows the transparent colour.
#include <algorithm>
#include <cstring>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/memory.h"
#include "quorix/windowpixels.h"
#include "raster/raster_file.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/opengl_file.h"
#include "window/window.h"

namespace quorix {

namespace {

constexpr int32_t our_index_offset = 10;  // of the palette's bytes that a window saves

// What the rows of a bitmap of this depth hold.
int32_t pixel_type(const WindowSet *set) {
  const int32_t bits = set->bitmap_info.bits;
  if (bits == 24) return pixels_rgb;  // kept, though the bytes are blue, green, red
  if (bits == 32) return pixels_bgrx;
  return bits <= 8 ? set->colour_mode : 0;
}

FileStatus save_bitmap(const OutputContext *context, const char *filename) {
  const WindowSet *set = context->window.window_set;
  const FileWork work("qqwfil", filename);
  const OwnedFile file = open_file(filename, "wb");
  if (!file) return file_not_opened;
  const BitmapInfo &info = set->bitmap_info;
  const RasterFileHeader header = {info.width,
                                   info.height,
                                   info.planes == 1 ? info.bits : info.planes,
                                   info.row_bytes,
                                   info.bits,
                                   32,
                                   0,
                                   pixel_type(set),
                                   info.bits <= 8 ? our_index_offset : 0};
  write_raster_header(file.get(), header, kind_win);
  write_file(file.get(), set->image_bits, set->image_size);
  return file_done;
}

// ---- Loading

struct BitmapLoad {
  OutputContext *context;
  std::FILE *file;
  RasterFileHeader header;
  size_t row_bytes;  // in the file: what the header says, but no more than the file has
  int32_t rows, columns;
};

// The bytes of a palette, which the file counts from another entry on.
void correct_entries(const BitmapLoad &load, uint8_t *bytes, size_t count) {
  if (load.header.bits_stored != 8) return;
  if (load.header.pixel_type == pixels_index) {
    for (size_t i = 0; i < count; ++i)
      bytes[i] = index_to_pixel(load.context, bytes[i]);
    return;
  }
  const int32_t shift = our_index_offset - load.header.index_offset;
  if (shift == 0) return;
  for (size_t i = 0; i < count; ++i)
    bytes[i] = static_cast<uint8_t>((bytes[i] + static_cast<int64_t>(shift)) & 255);
}

// Rows that are the bitmap's own, straight to their places.
void load_own_rows(const BitmapLoad &load) {
  const WindowSet *set = load.context->window.window_set;
  const auto pitch = static_cast<size_t>(set->bitmap_info.row_bytes);
  for (int32_t y = 0; y < load.rows; ++y) {
    uint8_t *const row = set->image_bits + static_cast<size_t>(y) * pitch;
    const size_t count = read_file(load.file, row, std::min(load.row_bytes, pitch));
    correct_entries(load, row, count);
    if (count < load.row_bytes) return;
  }
}

// The next row of the file, filled up with zeros; false at its end.
bool read_row(const BitmapLoad &load, uint8_t *row, size_t room) {
  const size_t count = read_file(load.file, row, load.row_bytes);
  std::memset(row + count, 0, room - count);
  const bool half = load.header.bits_stored == 8 && load.header.pixel_type == pixels_half_index;
  if (half) convert_half_indices(row, count, load.header.index_offset);
  return count > 0;
}

FileStatus load_converted_rows(const BitmapLoad &load) {
  const int32_t bits = load.header.bits_stored;
  const auto columns = static_cast<size_t>(load.columns);
  const size_t room = std::max(load.row_bytes, columns * static_cast<size_t>(bits) / 8);
  const auto row = allocate_array<uint8_t>(room);
  OwnedArray<uint8_t> triples;
  if (bits == 32) triples = allocate_array<uint8_t>(columns * 3);
  if (!row || (bits == 32 && !triples)) return file_no_memory;
  for (int32_t y = 0; y < load.rows && read_row(load, row.get(), room); ++y) {
    if (bits == 32)
      convert_quads(row.get(), triples.get(), load.columns, order_of_quads(load.header.pixel_type));
    write_window_row(load.context, bits == 32 ? triples.get() : row.get(), 0, y,
                     bits == 8 ? load.columns : -load.columns);
  }
  return file_done;
}

// Pixels of 16 bits are only known to the canvas, which takes them as a whole.
FileStatus load_16_bits(const BitmapLoad &load) {
  WindowSet *set = load.context->window.window_set;
  Canvas *canvas = set->draw_canvas;
  const auto pitch = static_cast<size_t>(set->bitmap_info.row_bytes);
  const auto row = allocate_array<uint8_t>(load.row_bytes);
  if (!row) return file_no_memory;
  for (int32_t y = 0; y < load.rows; ++y) {
    const size_t count = read_file(load.file, row.get(), load.row_bytes);
    std::memcpy(set->image_bits + static_cast<size_t>(y) * pitch, row.get(),
                std::min(count, pitch));
    if (count < load.row_bytes) break;
  }
  ask(canvas->calls->write_bits, canvas, static_cast<const uint8_t *>(set->image_bits),
      set->image_size);
  if (set->double_buffered) return file_done;
  ask(canvas->calls->end_access, canvas, true);
  set->access_open = ask(canvas->calls->begin_access, canvas, &set->bitmap_info);
  return file_done;
}

FileStatus load_rows(const BitmapLoad &load) {
  const WindowSet *set = load.context->window.window_set;
  const BitmapInfo &info = set->bitmap_info;
  const RasterFileHeader &header = load.header;
  if (info.bits == 16 && header.bits_stored == 16) return load_16_bits(load);
  const bool own = header.bits_stored == info.bits && header.pixel_type == pixel_type(set) &&
                   info.row_bytes >= header.bytes_per_row;
  if (!own) return is_common_depth(header.bits_stored) ? load_converted_rows(load) : file_bad_depth;
  load_own_rows(load);
  return file_done;
}

FileStatus load_bitmap(OutputContext *context, const char *filename) {
  const BitmapInfo &info = context->window.window_set->bitmap_info;
  const OwnedFile file = open_file(filename, "rb");
  if (!file) return file_not_opened;
  BitmapLoad load = {};
  load.context = context;
  load.file = file.get();
  if (!read_raster_header(load.file, &load.header)) return file_bad;
  RasterFileHeader &header = load.header;
  const int32_t bits = header.bits_stored;
  if (bits != info.bits && (bits < 8 || bits == 16)) return file_bad_depth;
  if (bits != info.bits && !is_common_depth(bits)) return file_bad;
  if (bits == 32) header.pixel_type = std::max<int32_t>(header.pixel_type, pixels_bgrx);
  load.rows = std::min(header.height, info.height);
  load.columns = std::min(header.width, info.width);
  load.row_bytes = std::min(static_cast<size_t>(header.bytes_per_row), bytes_left(load.file));
  return load_rows(load);
}

// With direct access, which is turned on for as long where it is off.
FileStatus transfer_bitmap(OutputContext *context, const char *filename, bool saves) {
  const bool on =
      context->window.direct_bitmap != 0 && context->window.window_set->image_bits != nullptr;
  if (!on && !load_image(context)) return file_not_opened;
  const uint8_t direct_bitmap = context->window.direct_bitmap;
  context->window.direct_bitmap = 1;
  const FileStatus status = saves ? save_bitmap(context, filename) : load_bitmap(context, filename);
  if (on) return status;
  if (saves) {
    drop_image(context, false);
  } else {
    end_direct_access(context);
  }
  context->window.direct_bitmap = direct_bitmap;
  return status;
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwfil(const char *filename, int32_t mode, int32_t *status) {
  *status = file_not_opened;
  if (current_window_set() == nullptr) return 0;
  OutputContext *context = output_context;
  flush_window(context);
  if (context->window.opengl_on != 0) {
    *status = mode == 0 ? save_gl_picture(context, filename) : load_gl_picture(context, filename);
  } else {
    *status = transfer_bitmap(context, filename, mode == 0);
  }
  return 0;
}
