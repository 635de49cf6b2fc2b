// SPDX-License-Identifier: MIT
//
// PNG: all colours and depths of the standard, interlaced or not, with transparency and
// backgrounds.
//
// The whole file is read first. The stream is taken out of it some rows at a time, which are
// unfiltered and converted where they stand; nothing but the interlaced form is held as a whole.
//
// The result is that of decompressing and delivering one row after another. A row that the stream
// does not fill is not delivered, and the rows before it are no error. A stream that turns out
// damaged before the next row's first byte takes the row before with it, whose decompression would
// have met the damage.
#include <algorithm>
#include <cstring>

#include "base/inflate.h"
#include "imagein/imagein.h"
#include "imagein/png_chunks.h"
#include "imagein/png_rows.h"
#include "imagein/png_unfilter.h"
#include "imagein/whole_file.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

enum PngReaderStatus : int32_t {
  png_not_started = -3,  // the decompressor
  png_damaged = -4,      // its stream
  png_not_ended = -6,
};

// Decompressed at a time, or one row if that is longer: fits in a processor's nearer caches.
constexpr size_t group_bytes = 131072;

// A picture, or one pass of an interlaced one: each first pixel stands at (x, y), and each next
// x_step or y_step further on.
struct PngPass {
  int32_t x, y, x_step, y_step;
};

constexpr PngPass whole_picture = {0, 0, 1, 1};
constexpr PngPass passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                              {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};

struct PngReader {
  const PngHeader *header;
  RowSink *sink;
  PngRows rows;
  InflateRun run;
  int32_t delivered;          // rows of a picture that is not interlaced
  bool group_used;            // some row was filled, so `group` is no longer all 0
  size_t group_rows;          // of the longest kind
  OwnedArray<uint8_t> group;  // the row above, then group_rows rows, all with their filter bytes
};

int32_t steps_in(int32_t size, int32_t start, int32_t step) {
  return size > start ? (size - start - 1) / step + 1 : 0;
}

bool prepare(const PngHeader &header, PngReader *reader) {
  const size_t row = 1 + png_row_bytes(header, static_cast<size_t>(header.width));
  const auto height = static_cast<size_t>(header.height);
  reader->group_rows = std::clamp<size_t>(group_bytes / row, 1, height);
  reader->group = allocate_zeroed_array<uint8_t>((1 + reader->group_rows) * row + png_row_spill);
  return reader->group != nullptr && prepare_png_rows(header, &reader->rows);
}

// ---- where rows go

// Pixels of an interlaced picture, each to its own place.
void scatter_row(Picture *picture, const PngPass &pass, int32_t row, const uint8_t *rgb,
                 const uint8_t *alpha, size_t count) {
  const auto y = static_cast<size_t>(pass.y + static_cast<int64_t>(row) * pass.y_step);
  const size_t first = y * static_cast<size_t>(picture->width) + static_cast<size_t>(pass.x);
  const auto step = static_cast<size_t>(pass.x_step);
  uint8_t *to = picture->pixels + first * rgb_bytes;
  for (size_t i = 0; i < count; ++i, to += step * rgb_bytes)
    std::memcpy(to, rgb + i * rgb_bytes, rgb_bytes);
  if (alpha == nullptr) return;
  for (size_t i = 0; i < count; ++i)
    picture->alpha[first + i * step] = alpha[i];
}

// Kept: a background takes the alpha away, whether it was applied (as that of samples is) or not.
void deliver_row(PngReader *reader, const PngPass &pass, int32_t row, uint8_t *bytes,
                 size_t width) {
  const PngHeader &header = *reader->header;
  uint8_t *const rgb = convert_png_row(&reader->rows, bytes, width);
  const uint8_t *const alpha = header.has_background ? nullptr : reader->rows.alpha.get();
  if (header.interlaced) {
    scatter_row(reader->sink->picture, pass, row, rgb, alpha, width);
  } else {
    put_row(reader->sink, rgb, alpha, 0, row, header.width);
    reader->delivered = row + 1;
  }
}

// ---- decompression

// Rows that were filled, of `wanted`.
size_t inflate_rows(PngReader *reader, uint8_t *rows, size_t wanted, size_t row_bytes) {
  const size_t bytes = run_inflate(&reader->run, rows, wanted * row_bytes);
  const size_t filled = bytes / row_bytes;
  const bool at_border = bytes % row_bytes == 0;
  const bool lost = reader->run.state == InflateState::damaged && at_border && filled != 0;
  return lost ? filled - 1 : filled;
}

void decode_pass(PngReader *reader, const PngPass &pass) {
  const PngHeader &header = *reader->header;
  const int32_t height = steps_in(header.height, pass.y, pass.y_step);
  const auto width = static_cast<size_t>(steps_in(header.width, pass.x, pass.x_step));
  if (width == 0) return;
  const size_t pixel = png_pixel_bytes(header);
  const size_t bytes = 1 + png_row_bytes(header, width);
  uint8_t *const above = reader->group.get();
  // Memory that the file only claims to need is never touched.
  if (reader->group_used) std::memset(above, 0, bytes);
  for (int32_t row = 0; row < height && reader->run.state == InflateState::more;) {
    const size_t wanted = std::min(reader->group_rows, static_cast<size_t>(height - row));
    const size_t filled = inflate_rows(reader, above + bytes, wanted, bytes);
    reader->group_used = reader->group_used || filled != 0;
    for (size_t i = 1; i <= filled; ++i, ++row) {
      uint8_t *const at = above + i * bytes;
      unfilter_png_row(at[0], at + 1, at + 1 - bytes, bytes - 1, pixel);
      deliver_row(reader, pass, row, at + 1, width);
    }
    if (filled != 0) std::memcpy(above, above + filled * bytes, bytes);
  }
}

void decode_passes(PngReader *reader) {
  if (!reader->header->interlaced) return decode_pass(reader, whole_picture);
  for (const PngPass &pass : passes)
    decode_pass(reader, pass);
}

// A picture without alpha need not be cleared before its rows come, only where they do not. Not so
// if the file claims far more pixels than it can have: compression makes no more of a byte.
bool clears_rest(const PngHeader &header) {
  constexpr size_t most_of_a_byte = 1040;
  const size_t row = 1 + png_row_bytes(header, static_cast<size_t>(header.width));
  const auto rows = static_cast<size_t>(header.height);
  const bool plausible = rows <= header.stream_bytes * most_of_a_byte / row;
  return plausible && !header.interlaced && !has_alpha(header);
}

void clear_rest(const PngReader &reader) {
  const Picture *const held = reader.sink->picture;
  if (held == nullptr || !clears_rest(*reader.header)) return;
  const size_t row = rgb_bytes * static_cast<size_t>(held->width);
  const auto rows = static_cast<size_t>(held->height - reader.delivered);
  std::memset(held->pixels + row * static_cast<size_t>(reader.delivered), 0, row * rows);
}

int32_t decode_stream(PngReader *reader) {
  const PngHeader &header = *reader->header;
  if (!start_inflate(&reader->run, header.stream, header.stream_bytes)) return png_not_started;
  decode_passes(reader);
  clear_rest(*reader);
  const bool damaged = reader->run.state == InflateState::damaged;
  const bool ended = end_inflate(&reader->run);
  if (damaged) return png_damaged;
  if (reader->rows.bad_index) return reader_bad_index;
  return ended ? int32_t{reader_done} : int32_t{png_not_ended};
}

int32_t decode_png_file(ByteSource *source, RowSink *sink) {
  WholeFile file;
  if (!read_whole_file(source, &file)) return reader_no_memory;
  PngHeader header;
  if (!read_png_chunks(&file, &header)) return reader_bad_format;
  PictureForm form = {header.width, header.height, has_alpha(header)};
  form.background_done = header.has_background;
  form.complete_first = header.interlaced;
  form.sets_all = clears_rest(header);
  if (!start_picture(sink, form)) return reader_no_memory;
  PngReader reader = {};
  reader.header = &header;
  reader.sink = sink;
  if (!prepare(header, &reader)) return reader_no_memory;
  return decode_stream(&reader);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpipng(const char *file, const int32_t *device, const void * /*unused*/,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status) {
  return quorix::read_image(quorix::output_context, file,
                            {*device, *device_width, *device_height, *x, *y}, status,
                            quorix::decode_png_file);
}
