// SPDX-License-Identifier: MIT
//
// Windows bitmaps with the 40-byte header: 1, 4, 8 and 24 bits per pixel, and run lengths of 8 and
// 4 bits. Rows stand bottom first; a negative height is no top-down picture here, it has no rows.
//
// The pixels are taken to follow the colour table, wherever the header says they are.
//
// Decisions. A row that the file has only in part is left out. Where the whole bytes of a row come
// to none (1 bit, fewer than 8 pixels) its pixels are index 0, for as many rows as bytes are left.
// Run lengths that reach beyond width or height are dropped there.
#include <algorithm>
#include <cstring>
#include <utility>

#include "base/bmp_format.h"
#include "base/triples.h"
#include "imagein/imagein.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

constexpr uint64_t read_at_once = 256 * 1024;  // rows are read in blocks of about that many bytes
constexpr size_t colour_bytes = 4;             // as looked up: the fourth is overwritten again

struct BmpFile {
  ByteSource *source;
  RowSink *sink;
  int32_t width, height;
  uint32_t bits;  // of a pixel
  uint32_t compression;
  uint8_t colours[bmp_table_entries][colour_bytes];
};

// ---- header

bool read_header(BmpFile *bmp) {
  ByteSource *const source = bmp->source;
  seek_source(source, bmp_width_at);
  bmp->width = read_i32_le(source);
  bmp->height = std::max(read_i32_le(source), 0);
  seek_source(source, bmp_bits_at);
  bmp->bits = read_u16_le(source);
  bmp->compression = read_u32_le(source);
  seek_source(source, bmp_colours_used_at);
  return !source->failed && bmp->width > 0;
}

// Run lengths have one depth each, and 24 bits have none. What is not known decodes nothing.
bool is_consistent(const BmpFile &bmp) {
  if (bmp.compression == bmp_run_length_8) return bmp.bits == 8;
  if (bmp.compression == bmp_run_length_4) return bmp.bits == 4;
  return bmp.bits != 24 || bmp.compression == bmp_plain;
}

// The table has black beyond its end. It may be longer than a pixel can reach; a file that ends
// within it has no pixels, which is found out later. Kept: 16 bits have one as well.
void read_colour_table(BmpFile *bmp) {
  ByteSource *const source = bmp->source;
  const uint64_t used = read_u32_le(source);
  seek_source(source, bmp_headers_bytes);
  if (bmp->bits >= 24) return;
  const uint64_t count = used != 0 ? used : uint64_t{1} << bmp->bits;
  const uint64_t held = bytes_left(*source) / bmp_table_entry_bytes;
  for (uint64_t i = 0; i < std::min<uint64_t>({count, held, bmp_table_entries}); ++i) {
    uint8_t entry[bmp_table_entry_bytes];
    read_bytes(source, entry, sizeof entry);
    for (size_t k = 0; k < rgb_bytes; ++k)
      bmp->colours[i][k] = entry[2 - k];  // blue stands first
  }
  if (count > bmp_table_entries)
    skip_bytes(source,
               std::min((count - bmp_table_entries) * bmp_table_entry_bytes, bytes_left(*source)));
}

// ---- rows

// Kept: whole bytes are counted before the row is filled up, so that rows of 1 and 4 bits may come
// out shorter than their pixels need, down to nothing. Those pixels have index 0.
uint64_t stride(const BmpFile &bmp) {
  const uint64_t bytes = static_cast<uint64_t>(bmp.width) * bmp.bits / 8;
  return (bytes + bmp_row_group - 1) / bmp_row_group * bmp_row_group;
}

// Four bytes, of which the last belongs to the next pixel or to the slack behind the row.
inline void put_colour(const BmpFile &bmp, size_t index, uint8_t *rgb) {
  std::memcpy(rgb, bmp.colours[index], colour_bytes);
}

// Indices of 1, 4 or 8 bits, the highest bits first, from the bytes that the row has.
void expand_indices(const BmpFile &bmp, const uint8_t *row, size_t bytes, uint8_t *rgb) {
  const auto width = static_cast<size_t>(bmp.width);
  const uint32_t mask = (1U << bmp.bits) - 1;
  const size_t known = std::min(width, bytes * (8 / bmp.bits));
  for (size_t x = 0, bit = 0; x < known; ++x, bit += bmp.bits, rgb += rgb_bytes) {
    const size_t shift = 8 - bmp.bits - bit % 8;
    put_colour(bmp, static_cast<uint32_t>(row[bit / 8]) >> shift & mask, rgb);
  }
  for (size_t x = known; x < width; ++x, rgb += rgb_bytes)
    put_colour(bmp, 0, rgb);
}

void expand_bytes(const BmpFile &bmp, const uint8_t *row, uint8_t *rgb) {
  for (int32_t x = 0; x < bmp.width; ++x, rgb += rgb_bytes)
    put_colour(bmp, *row++, rgb);
}

// A block of rows as they stand in the file, and room for one of colours.
struct PlainRows {
  size_t row_bytes;
  uint64_t rows;     // that the file has
  uint64_t at_once;  // of them
  OwnedArray<uint8_t> block;
  OwnedArray<uint8_t> rgb;  // not with 24 bits, whose rows are turned where they are
};

bool prepare_rows(const BmpFile &bmp, PlainRows *plain) {
  const uint64_t bytes = stride(bmp);
  const uint64_t divisor = std::max<uint64_t>(bytes, 1);  // a row takes something in any case
  plain->rows = std::min(bytes_left(*bmp.source) / divisor, static_cast<uint64_t>(bmp.height));
  if (plain->rows == 0) return true;
  plain->at_once = std::clamp<uint64_t>(read_at_once / divisor, 1, plain->rows);
  plain->row_bytes = static_cast<size_t>(bytes);  // the file has that many
  plain->block = allocate_array<uint8_t>(static_cast<size_t>(plain->at_once) * plain->row_bytes);
  if (plain->block == nullptr) return false;
  if (bmp.bits == 24) return true;
  size_t rgb = 0;
  if (!checked_product(&rgb, static_cast<size_t>(bmp.width), rgb_bytes)) return false;
  plain->rgb = allocate_array<uint8_t>(rgb + colour_bytes);
  return plain->rgb != nullptr;
}

void deliver_row(BmpFile *bmp, const PlainRows &plain, uint8_t *bytes, uint64_t row) {
  uint8_t *rgb = plain.rgb.get();
  if (bmp->bits == 24) {
    rgb = bytes;
    swap_red_and_blue(rgb, static_cast<size_t>(bmp->width));
  } else if (bmp->bits == 8) {
    expand_bytes(*bmp, bytes, rgb);
  } else {
    expand_indices(*bmp, bytes, plain.row_bytes, rgb);
  }
  const int64_t from_top = bmp->height - 1 - static_cast<int64_t>(row);
  put_row(bmp->sink, rgb, nullptr, 0, from_top, bmp->width);
}

// Ends where the file ends; rows that are not whole there are left out.
int32_t read_plain_rows(BmpFile *bmp) {
  PlainRows plain = {};
  if (!prepare_rows(*bmp, &plain)) return reader_no_memory;
  for (uint64_t row = 0; row < plain.rows;) {
    const uint64_t count = std::min(plain.at_once, plain.rows - row);
    uint8_t *bytes = plain.block.get();
    read_bytes(bmp->source, bytes, static_cast<size_t>(count) * plain.row_bytes);
    if (bmp->source->failed) return reader_done;
    for (uint64_t i = 0; i < count; ++i, ++row, bytes += plain.row_bytes)
      deliver_row(bmp, plain, bytes, row);
  }
  return reader_done;
}

// ---- run lengths

// Pixels that follow one another in a row, until they are delivered together.
struct RunRow {
  static constexpr size_t room = 4096;
  int64_t column, row;  // of the next pixel, the row from the bottom
  size_t count;         // pixels that wait, left of the next one
  uint8_t rgb[room * rgb_bytes + colour_bytes];
};

void deliver_runs(BmpFile *bmp, RunRow *runs) {
  // What stands beyond the width or above the top is dropped.
  const auto count = static_cast<int64_t>(runs->count);
  const int64_t first = runs->column - count;
  const int64_t inside = std::min<int64_t>(count, bmp->width - first);
  if (runs->row < bmp->height && inside > 0)
    put_row(bmp->sink, runs->rgb, nullptr, first, bmp->height - 1 - runs->row, inside);
  runs->count = 0;
}

void move_to(BmpFile *bmp, RunRow *runs, int64_t column, int64_t row) {
  deliver_runs(bmp, runs);
  runs->column = column;
  runs->row = row;
}

// Room for the pixels of one run.
uint8_t *extend_runs(BmpFile *bmp, RunRow *runs, uint32_t count) {
  if (runs->count + count > RunRow::room) deliver_runs(bmp, runs);
  uint8_t *const rgb = runs->rgb + runs->count * rgb_bytes;
  runs->count += count;
  runs->column += count;
  return rgb;
}

// Pixels of one colour, or of two by turns.
void repeat_pixels(BmpFile *bmp, RunRow *runs, uint32_t count, uint32_t value) {
  const bool nibbles = bmp->compression == bmp_run_length_4;
  const uint32_t even = nibbles ? value >> 4 : value;
  const uint32_t odd = nibbles ? value & 15 : value;
  uint8_t *rgb = extend_runs(bmp, runs, count);
  for (uint32_t i = 0; i < count; ++i, rgb += rgb_bytes)
    put_colour(*bmp, i % 2 == 0 ? even : odd, rgb);
}

// Pixels as they stand; false where the file ends within them. Kept: an odd number of them is
// followed by a byte that fills up, with 4 bits too.
bool literal_pixels(BmpFile *bmp, RunRow *runs, uint32_t count) {
  const bool nibbles = bmp->compression == bmp_run_length_4;
  uint8_t bytes[256];
  read_bytes(bmp->source, bytes, (nibbles ? (count + 1) / 2 : count) + count % 2);
  if (bmp->source->failed) return false;
  uint8_t *rgb = extend_runs(bmp, runs, count);
  for (uint32_t i = 0; i < count; ++i, rgb += rgb_bytes) {
    const uint32_t byte = bytes[nibbles ? i / 2 : i];
    const uint32_t nibble = i % 2 == 0 ? byte >> 4 : byte & 15;
    put_colour(*bmp, nibbles ? nibble : byte, rgb);
  }
  return true;
}

int32_t read_runs(BmpFile *bmp, RunRow *runs) {
  ByteSource *const source = bmp->source;
  for (;;) {
    const uint32_t count = read_u8(source);
    const uint32_t code = read_u8(source);
    if (source->failed) return reader_bad_format;
    if (count != 0) {
      repeat_pixels(bmp, runs, count, code);
    } else if (code == bmp_end_of_bitmap) {
      return reader_done;
    } else if (code == bmp_end_of_line) {
      move_to(bmp, runs, 0, runs->row + 1);
    } else if (code == bmp_delta) {
      const int64_t right = read_u8(source);
      const int64_t up = read_u8(source);
      if (source->failed) return reader_bad_format;
      move_to(bmp, runs, runs->column + right, runs->row + up);
    } else if (!literal_pixels(bmp, runs, code)) {
      return reader_bad_format;
    }
  }
}

int32_t read_run_lengths(BmpFile *bmp) {
  RunRow runs;
  runs.column = runs.row = 0;
  runs.count = 0;
  const int32_t status = read_runs(bmp, &runs);
  deliver_runs(bmp, &runs);
  return status;
}

// ---- the whole

int32_t decode_bmp(ByteSource *source, RowSink *sink) {
  BmpFile bmp = {};
  bmp.source = source;
  bmp.sink = sink;
  if (!read_header(&bmp) || !is_consistent(bmp)) return reader_bad_format;
  read_colour_table(&bmp);
  if (source->failed) return reader_bad_format;
  if (!start_picture(sink, {bmp.width, bmp.height})) return reader_no_memory;
  if (bmp.height == 0) return reader_done;
  if (bmp.compression == bmp_run_length_8 || bmp.compression == bmp_run_length_4)
    return read_run_lengths(&bmp);
  const bool known = bmp.bits == 1 || bmp.bits == 4 || bmp.bits == 8 || bmp.bits == 24;
  return known && bmp.compression == bmp_plain ? read_plain_rows(&bmp) : int32_t{reader_done};
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpibmp(const char *file, const int32_t *device, const void * /*unused*/,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status) {
  return quorix::read_image(quorix::output_context, file,
                            {*device, *device_width, *device_height, *x, *y}, status,
                            quorix::decode_bmp);
}
