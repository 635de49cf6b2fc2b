// SPDX-License-Identifier: MIT
//
// The first image of a GIF file, interlaced or not. Transparency is not honoured, and of extensions
// no more is looked at than their bytes.
//
// The whole file is read first. Strings of pixels are decoded a group of rows at a time, and full
// rows go through the colour table on their way into the sink.
//
// Decisions. A file that ends before its picture does, or in the middle of a number, is damaged.
// The size of the screen matters only where a picture of that size is held, and only there a size
// of 0 is refused. A local table replaces the global one as a whole; indices beyond its end are
// black.
#include <algorithm>
#include <cstring>

#include "base/gif_format.h"
#include "imagein/gif_lzw.h"
#include "imagein/imagein.h"
#include "imagein/samples.h"
#include "imagein/whole_file.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

constexpr size_t group_pixels = 16384;  // decoded before rows are sent, and at least a row

struct GifImage {
  int32_t screen_width, screen_height;
  int32_t width, height;
  bool interlaced;
  bool has_colours;
  uint32_t colours[gif_table_entries];
};

// ---- header

void read_colours(ByteSource *bytes, uint8_t flags, GifImage *image) {
  const size_t entries = size_t{1} << ((flags & gif_table_bits) + 1);
  image->has_colours = true;
  std::memset(image->colours, 0, sizeof image->colours);
  for (size_t i = 0; i < entries; ++i) {
    uint8_t rgb[rgb_bytes];
    read_bytes(bytes, rgb, sizeof rgb);
    image->colours[i] = colour_word(rgb[0], rgb[1], rgb[2]);
  }
}

void read_screen(ByteSource *bytes, GifImage *image) {
  skip_bytes(bytes, gif_signature_bytes);
  image->screen_width = read_u16_le(bytes);
  image->screen_height = read_u16_le(bytes);
  const uint8_t flags = read_u8(bytes);
  skip_bytes(bytes, 2);  // background, aspect
  if ((flags & gif_has_table) != 0) read_colours(bytes, flags, image);
}

// Kept: whatever stands before the first such byte is skipped, even where that byte belongs to an
// extension.
void find_descriptor(ByteSource *bytes) {
  while (read_u8(bytes) != gif_image_mark && !bytes->failed) {
  }
}

void read_descriptor(ByteSource *bytes, GifImage *image) {
  skip_bytes(bytes, 4);  // left, top: kept, the image starts at the corner
  image->width = read_u16_le(bytes);
  image->height = read_u16_le(bytes);
  const uint8_t flags = read_u8(bytes);
  image->interlaced = (flags & gif_interlaced) != 0;
  if ((flags & gif_has_table) != 0) read_colours(bytes, flags, image);
}

// ---- rows

// The order of rows. A pass that has none is passed over; behind the last all rows are past the
// end.
struct RowOrder {
  bool interlaced;
  int pass;
  int32_t row;
};

void next_row(RowOrder *order, int32_t height) {
  constexpr int32_t steps[] = {8, 8, 4, 2};
  constexpr int32_t starts[] = {0, 4, 2, 1};
  if (order->row >= height) return;
  order->row += order->interlaced ? steps[order->pass] : 1;
  while (order->interlaced && order->row >= height && order->pass < 3) {
    order->pass += 1;
    order->row = starts[order->pass];
  }
}

struct GifRows {
  const GifImage *image;
  RowSink *sink;
  RowOrder order;
  uint8_t *rgb;
};

// Sends the full rows among `count` pixels; returns how many pixels they were. What is beyond the
// last row is dropped.
size_t send_rows(GifRows *rows, const uint8_t *indices, size_t count) {
  const auto width = static_cast<size_t>(rows->image->width);
  size_t sent = 0;
  for (; count - sent >= width; sent += width) {
    if (rows->order.row >= rows->image->height) continue;
    put_colours(rows->image->colours, indices + sent, width, rows->rgb);
    put_row(rows->sink, rows->rgb, nullptr, 0, rows->order.row, rows->image->width);
    next_row(&rows->order, rows->image->height);
  }
  return sent;
}

// ---- image

// Passes over sub-blocks and the empty one behind them. Null if the file ends before that.
const uint8_t *behind_blocks(const uint8_t *at, const uint8_t *end) {
  while (at != end) {
    const size_t length = *at++;
    if (length == gif_blocks_end) return at;
    at += std::min(length, static_cast<size_t>(end - at));
  }
  return nullptr;
}

// What follows the sub-block of the last code: more of them, as encoders flush what they have left,
// and an empty one. Or, where that is missing, an extension with an empty sub-block in its place.
// Nothing behind it is read.
bool ends_well(const uint8_t *at, const uint8_t *end) {
  if (behind_blocks(at, end) != nullptr) return true;
  const bool extended = end - at >= 2 && *at == gif_extension_mark;
  const uint8_t *const behind = extended ? behind_blocks(at + 2, end) : nullptr;
  return behind != nullptr && behind != end && *behind == gif_blocks_end;
}

struct GifBuffers {
  OwnedArray<LzwString> strings;
  OwnedArray<uint8_t> indices;
  OwnedArray<uint8_t> rgb;
};

bool get_buffers(size_t width, size_t group, GifBuffers *buffers) {
  buffers->strings = allocate_array<LzwString>(gif_codes);
  buffers->indices = allocate_array<uint8_t>(width + group + lzw_spill);
  buffers->rgb = allocate_array<uint8_t>(width * rgb_bytes + 1);
  return buffers->strings != nullptr && buffers->indices != nullptr && buffers->rgb != nullptr;
}

int32_t decode_rows(const GifImage &image, const uint8_t *bytes, const uint8_t *end,
                    RowSink *sink) {
  const auto width = static_cast<size_t>(image.width);
  const size_t group = std::max(width, group_pixels);
  GifBuffers buffers;
  if (!get_buffers(width, group, &buffers)) return reader_no_memory;
  GifRows rows = {&image, sink, {image.interlaced, 0, 0}, buffers.rgb.get()};
  uint8_t *const indices = buffers.indices.get();
  GifDecoder gif;
  start_gif(&gif, buffers.strings.get(), bytes, end);
  size_t kept = 0;  // the start of a row whose rest is still to come
  while (gif.state == GifState::more) {
    const size_t count = kept + decode_gif(&gif, indices + kept, group);
    const size_t sent = send_rows(&rows, indices, count);
    kept = count - sent;
    std::memmove(indices, indices + sent, kept);
    if (rows.order.row >= image.height) skip_gif(&gif);
  }
  const bool whole = gif.state == GifState::ended && ends_well(gif.at, end);
  return whole ? reader_done : reader_bad_format;
}

int32_t decode_gif_file(ByteSource *source, RowSink *sink) {
  WholeFile file;
  if (!read_whole_file(source, &file)) return reader_no_memory;
  ByteSource bytes;
  open_memory_source(&bytes, file.bytes.get(), file.size);
  GifImage image = {};
  read_screen(&bytes, &image);
  find_descriptor(&bytes);
  if (bytes.failed) return reader_bad_format;
  read_descriptor(&bytes, &image);
  const bool has_pixels = image.width != 0 && image.height != 0;
  if (bytes.failed || !has_pixels || !image.has_colours) return reader_bad_format;
  const bool empty_screen = image.screen_width == 0 || image.screen_height == 0;
  if (empty_screen && sink->device == nullptr) return reader_bad_format;
  if (!start_picture(sink, {image.screen_width, image.screen_height})) return reader_no_memory;
  const uint8_t *const start = file.bytes.get() + source_position(bytes);
  return decode_rows(image, start, file.bytes.get() + file.size, sink);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpigif(const char *file, const int32_t *device, const void * /*unused*/,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status) {
  return quorix::read_image(quorix::output_context, file,
                            {*device, *device_width, *device_height, *x, *y}, status,
                            quorix::decode_gif_file);
}
