// SPDX-License-Identifier: MIT
//
// PNG into a file or into the caller's memory: 8 bits per sample, filter None on every row, one
// IDAT chunk with the stream that zlib makes of all rows at its default level.
//
// The rows go from the device into the compressor one at a time, so beside the room for the stream
// only one row is held (a picture that gets its palette from the quantiser is held whole, as RGB).
// Each chunk stands in one block of memory, with its length before it and its CRC behind, and is
// written by one call.
//
// Decision. In memory the status is a number of bytes and nothing else, so a missing device or
// record shows as 0.
#include <zlib.h>

#include <cstring>

#include "base/deflate.h"
#include "base/file_failures.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/png_format.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

enum PngStatus : int32_t {
  png_compressor_not_started = -3,
  png_compressor_not_finished = -4,
  png_compressor_not_ended = -5,
};

// Where the pieces of the stream go: into a file, into memory, or, in memory without room, nowhere.
struct Sink {
  std::FILE *file;
  uint8_t *memory;
  size_t room;
  size_t count;  // bytes taken so far
  bool counts_only;
  bool full;  // a piece did not fit, and no more are taken
};

struct PngWriter {
  PictureSource source;
  PixelPath path;
  bool swap;         // words of this host have to be turned
  bool transparent;  // with a tRNS chunk
  FilePalette palette;
  size_t colours;
  OwnedArray<uint8_t> quantised;  // the indices of a quantised picture
  Sink sink;
};

void put_piece(Sink *sink, const uint8_t *bytes, size_t count) {
  if (sink->file != nullptr) {
    write_file(sink->file, bytes, count);
  } else if (!sink->counts_only) {
    sink->full = sink->full || count > sink->room - sink->count;
    if (sink->full) return;
    std::memcpy(sink->memory + sink->count, bytes, count);
  }
  sink->count += count;
}

// The name of a chunk whose bytes stand in their order on every host.
void put_name(uint8_t *chunk, PngChunk name) {
  for (size_t i = 0; i < png_word_bytes; ++i)
    chunk[png_word_bytes + i] = static_cast<uint8_t>(static_cast<uint32_t>(name) >> (24 - 8 * i));
}

// Kept: the first and the last chunk have names that are words like lengths, so that the caller's
// order turns them too.
void put_name_as_word(uint8_t *chunk, PngChunk name, bool swap) {
  put_word(chunk + png_word_bytes, static_cast<uint32_t>(name), swap);
}

// Adds length and CRC to a chunk whose name and data are in place, and writes it.
void put_chunk(PngWriter *png, uint8_t *chunk, size_t data_bytes) {
  const uint8_t *const name = chunk + png_word_bytes;
  const auto crc = static_cast<uint32_t>(crc32_z(0, name, png_word_bytes + data_bytes));
  put_word(chunk, static_cast<uint32_t>(data_bytes), png->swap);
  put_word(chunk + png_data_at + data_bytes, crc, png->swap);
  put_piece(&png->sink, chunk, png_chunk_overhead + data_bytes);
}

// ---- chunks

void write_header(PngWriter *png) {
  uint8_t chunk[png_chunk_overhead + png_header_bytes] = {};
  uint8_t *const data = chunk + png_data_at;
  const PictureArea &area = png->source.area;
  const bool rgb = png->path == PixelPath::true_colour;
  put_name_as_word(chunk, PngChunk::header, png->swap);
  put_word(data + png_width_at, static_cast<uint32_t>(header_size(area.width)), png->swap);
  put_word(data + png_height_at, static_cast<uint32_t>(header_size(area.height)), png->swap);
  data[png_depth_at] = 8;
  data[png_colour_at] = static_cast<uint8_t>(rgb ? PngColour::rgb : PngColour::palette);
  put_chunk(png, chunk, png_header_bytes);
}

int32_t write_palette(PngWriter *png) {
  size_t bytes = 0;
  if (!checked_product(&bytes, png->colours, 3)) return writer_no_memory;
  const OwnedArray<uint8_t> chunk = allocate_array<uint8_t>(png_chunk_overhead + bytes);
  if (chunk == nullptr) return writer_no_memory;
  put_name(chunk.get(), PngChunk::palette);
  for (size_t i = 0; i < png->colours; ++i)
    palette_entry(png->palette, i, chunk.get() + png_data_at + 3 * i);
  put_chunk(png, chunk.get(), bytes);
  return writer_done;
}

void write_transparency(PngWriter *png) {
  constexpr uint8_t white[3 * png_sample_word] = {0, 255, 0, 255, 0, 255};
  constexpr uint8_t first_entry[1] = {0};  // alpha of palette entry 0
  const bool true_colour = png->path == PixelPath::true_colour;
  const size_t bytes = true_colour ? sizeof(white) : sizeof(first_entry);
  uint8_t chunk[png_chunk_overhead + sizeof(white)];
  put_name(chunk, PngChunk::transparency);
  std::memcpy(chunk + png_data_at, true_colour ? white : first_entry, bytes);
  put_chunk(png, chunk, bytes);
}

void write_end(PngWriter *png) {
  uint8_t chunk[png_chunk_overhead];
  put_name_as_word(chunk, PngChunk::end, png->swap);
  put_chunk(png, chunk, 0);
}

// ---- pixels

// One row of the picture behind its filter byte.
void read_row(const PngWriter &png, int64_t row, uint8_t *pixels) {
  if (png.path == PixelPath::quantised) {
    const auto width = static_cast<size_t>(png.source.area.width);
    std::memcpy(pixels, png.quantised.get() + static_cast<size_t>(row) * width, width);
  } else {
    const bool rgb = png.path == PixelPath::true_colour;
    read_picture_row(png.source, row, rgb ? Samples::rgb : Samples::index, pixels);
  }
}

// The sizes that a picture needs, before any memory is asked for.
struct StreamSizes {
  size_t row;  // with its filter byte; 0 without pixels
  size_t rows;
  size_t room;  // for the compressed stream
};

bool stream_sizes(const PngWriter &png, StreamSizes *sizes) {
  const Samples samples = png.path == PixelPath::true_colour ? Samples::rgb : Samples::index;
  size_t bytes = 0;
  if (!picture_bytes(png.source, samples, &bytes)) return false;
  sizes->rows = bytes == 0 ? 0 : static_cast<size_t>(png.source.area.height);
  sizes->row = bytes == 0 ? 0 : bytes / sizes->rows + 1;
  size_t filtered = 0;
  if (!checked_product(&filtered, sizes->row, sizes->rows)) return false;
  return deflate_room(filtered, &sizes->room);
}

DeflateStatus compress_rows(const PngWriter &png, const StreamSizes &sizes, uint8_t *row,
                            DeflateRun *run) {
  if (sizes.rows == 0) return feed_deflate(run, nullptr, 0, true);
  row[0] = png_none;
  DeflateStatus status = DeflateStatus::done;
  for (size_t i = 0; i < sizes.rows && status == DeflateStatus::done; ++i) {
    read_row(png, static_cast<int64_t>(i), row + 1);
    status = feed_deflate(run, row, sizes.row, i + 1 == sizes.rows);
  }
  return status;
}

int32_t png_status(DeflateStatus status) {
  switch (status) {
    case DeflateStatus::not_started:
      return png_compressor_not_started;
    case DeflateStatus::not_finished:
      return png_compressor_not_finished;
    case DeflateStatus::not_ended:
      return png_compressor_not_ended;
    case DeflateStatus::done:
      break;
  }
  return writer_done;
}

int32_t write_pixels(PngWriter *png) {
  StreamSizes sizes;
  if (!stream_sizes(*png, &sizes)) return writer_no_memory;
  const OwnedArray<uint8_t> row = allocate_array<uint8_t>(sizes.row);
  if (row == nullptr) return writer_no_memory;
  const OwnedArray<uint8_t> chunk = allocate_array<uint8_t>(png_chunk_overhead + sizes.room);
  if (chunk == nullptr) return writer_no_memory;
  put_name(chunk.get(), PngChunk::data);
  DeflateRun run;
  DeflateStatus status = start_deflate(&run, chunk.get() + png_data_at, sizes.room);
  if (status == DeflateStatus::done) status = compress_rows(*png, sizes, row.get(), &run);
  status = finish_deflate(&run, status);
  if (status != DeflateStatus::done) return png_status(status);
  put_chunk(png, chunk.get(), run.written);
  return writer_done;
}

// The whole stream. Ends early where something fails, or where the memory is full.
int32_t write_stream(PngWriter *png) {
  put_piece(&png->sink, png_signature, sizeof(png_signature));
  write_header(png);
  int32_t status = writer_done;
  if (png->path == PixelPath::quantised && !png->sink.full)
    status = quantise_picture(png->source, &png->palette, &png->quantised);
  if (png->path != PixelPath::true_colour && status == writer_done) status = write_palette(png);
  if (status != writer_done || png->sink.full) return status;
  if (png->transparent) write_transparency(png);
  if (png->sink.full) return writer_done;
  status = write_pixels(png);
  if (status == writer_done) write_end(png);
  return status;
}

int32_t write_to_file(PngWriter *png, const char *name) {
  const FileWork work("qqppng", name);
  const OwnedFile file = open_file(name, "wb");
  if (file == nullptr) return writer_no_file;
  png->sink.file = file.get();
  return write_stream(png);
}

// Whatever went wrong: the answer is the number of bytes, and 0 where they did not all fit.
int32_t write_to_memory(PngWriter *png, uint8_t *memory, int32_t room) {
  png->sink.memory = memory;
  png->sink.room = room > 0 ? static_cast<size_t>(room) : 0;
  png->sink.counts_only = room == 0;
  write_stream(png);
  const bool fits = !png->sink.full && png->sink.count <= INT32_MAX;
  return fits ? static_cast<int32_t>(png->sink.count) : 0;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqppng(char *target, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const int32_t *colours, int32_t *status) {
  quorix::PngWriter png = {};
  const bool into_memory = *colours < 0;
  const quorix::WriterStatus found =
      quorix::find_source(&png.source, quorix::output_context, *device, *width, *height);
  if (found != quorix::writer_done) {
    *status = into_memory ? 0 : found;
    return 0;
  }
  png.path = quorix::pixel_path(*device, *height);
  png.swap = *order == 1;
  png.transparent = *width < 0;
  png.palette.words = png.path == quorix::PixelPath::indexed ? palette : nullptr;
  png.colours = static_cast<size_t>(quorix::magnitude(*colours));
  *status = into_memory
                ? quorix::write_to_memory(&png, reinterpret_cast<uint8_t *>(target), *status)
                : quorix::write_to_file(&png, target);
  return 0;
}
