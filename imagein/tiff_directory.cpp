// SPDX-License-Identifier: MIT
//
// The entries are gathered first and looked at afterwards, each tag once (the last entry of a tag
// counts), so neither their order nor their number matters.
//
// Decisions. A directory that the file cuts off and arrays outside the file are a bad format, and
// so are offsets without as many sizes, except for a single strip that is not compressed. Not
// supported are a picture's size of 0 or beyond 31 bits, neither strips nor tiles, rows per strip
// or tiles of size 0, a palette picture without a map, and other predictors than differences.
#include "imagein/tiff_directory.h"

#include <algorithm>
#include <initializer_list>

namespace quorix {

namespace {

// Tags from the first to the last that is looked at.
constexpr auto first_tag = static_cast<uint16_t>(TiffTag::image_width);
constexpr size_t tag_count = static_cast<uint16_t>(TiffTag::sample_format) - first_tag + 1;
constexpr uint32_t most_listed_samples = 3;

struct Entry {
  TiffType type;
  uint32_t count;         // 0: there is none
  uint64_t inline_value;  // position in the file of the four bytes that are value or offset
};

struct Directory {
  ByteSource *source;
  ByteOrder order;
  Entry entries[tag_count];
};

const Entry &entry_of(const Directory &directory, TiffTag tag) {
  return directory.entries[static_cast<uint16_t>(tag) - first_tag];
}

bool is_there(const Directory &directory, TiffTag tag) {
  return entry_of(directory, tag).count != 0;
}

// ---- gathering

void gather_entry(Directory *directory) {
  ByteSource *const source = directory->source;
  const uint16_t tag = read_u16(source, directory->order);
  Entry entry;
  entry.type = static_cast<TiffType>(read_u16(source, directory->order));
  entry.count = read_u32(source, directory->order);
  entry.inline_value = source_position(*source);
  skip_bytes(source, tiff_inline_bytes);
  const bool known = tag >= first_tag && tag - first_tag < static_cast<int>(tag_count);
  if (known && !source->failed) directory->entries[tag - first_tag] = entry;
}

bool gather_entries(Directory *directory) {
  ByteSource *const source = directory->source;
  const uint32_t offset = read_u32(source, directory->order);
  seek_source(source, offset);
  const uint16_t count = read_u16(source, directory->order);
  if (!fits(*source, count, tiff_entry_bytes)) return false;
  for (uint16_t i = 0; i < count; ++i)
    gather_entry(directory);
  return !source->failed;
}

// ---- values: bytes, words of 16 bits, or 32 bits whatever else the type

uint64_t value_bytes(const Entry &entry) {
  if (entry.type == TiffType::bytes) return 1;
  return entry.type == TiffType::shorts ? 2 : 4;
}

// Goes to an entry's values, beginning with number `first`; they stand in the entry itself if they
// fit there. Where `count` of them are not in the file the source fails.
bool find_values(const Directory &directory, const Entry &entry, uint64_t first, uint64_t count) {
  ByteSource *const source = directory.source;
  const uint64_t size = value_bytes(entry);
  seek_source(source, entry.inline_value);
  if (entry.count * size > tiff_inline_bytes)
    seek_source(source, read_u32(source, directory.order));
  const bool there = fits(*source, first + count, size);
  skip_bytes(source, there ? first * size : UINT64_MAX);
  return there;
}

uint32_t next_value(const Directory &directory, const Entry &entry) {
  if (entry.type == TiffType::bytes) return read_u8(directory.source);
  if (entry.type == TiffType::shorts) return read_u16(directory.source, directory.order);
  return read_u32(directory.source, directory.order);
}

// The first value of a tag, or `standard` where there is none.
uint32_t value_of(const Directory &directory, TiffTag tag, uint32_t standard) {
  const Entry &entry = entry_of(directory, tag);
  if (entry.count == 0 || !find_values(directory, entry, 0, 1)) return standard;
  return next_value(directory, entry);
}

// Up to three values of a tag that has one per sample, which must be equal. Returns how many; 0 if
// they differ.
uint32_t equal_values(const Directory &directory, TiffTag tag, uint32_t *value) {
  const Entry &entry = entry_of(directory, tag);
  const uint32_t count = std::min(entry.count, most_listed_samples);
  if (!find_values(directory, entry, 0, count)) return 0;
  *value = next_value(directory, entry);
  bool equal = true;
  for (uint32_t i = 1; i < count; ++i)
    equal = next_value(directory, entry) == *value && equal;
  return equal ? count : 0;
}

// ---- looking at them

bool is_one_of(uint32_t value, std::initializer_list<uint32_t> values) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

bool take_samples(const Directory &directory, TiffFile *tiff) {
  tiff->bits = tiff->total_bits = 1;
  if (is_there(directory, TiffTag::bits_per_sample)) {
    const uint32_t listed = equal_values(directory, TiffTag::bits_per_sample, &tiff->bits);
    if (listed == 0 || !is_one_of(tiff->bits, {1, 2, 4, 8, 16, 32})) return false;
    tiff->total_bits = listed * tiff->bits;
  }
  uint32_t format = tiff_unsigned_samples;
  if (is_there(directory, TiffTag::sample_format)) {
    const uint32_t listed = equal_values(directory, TiffTag::sample_format, &format);
    if (listed == 0 || !is_one_of(format, {tiff_unsigned_samples, tiff_float_samples}))
      return false;
  }
  tiff->is_float = format == tiff_float_samples;
  tiff->samples = value_of(directory, TiffTag::samples_per_pixel, 0);
  if (is_there(directory, TiffTag::samples_per_pixel) && !is_one_of(tiff->samples, {1, 3, 5}))
    return false;
  return tiff->bits != 32 || tiff->samples == 1 || tiff->is_float;
}

// Where a strip is as tall as the picture, the file may have 0xFFFFFFFF for its rows.
bool take_geometry(const Directory &directory, TiffFile *tiff) {
  const uint32_t width = value_of(directory, TiffTag::image_width, 0);
  const uint32_t height = value_of(directory, TiffTag::image_length, 0);
  if (width == 0 || width > INT32_MAX || height == 0 || height > INT32_MAX) return false;
  tiff->width = static_cast<int32_t>(width);
  tiff->height = static_cast<int32_t>(height);
  tiff->tiled = !is_there(directory, TiffTag::strip_offsets);
  if (tiff->tiled && !is_there(directory, TiffTag::tile_offsets)) return false;
  tiff->block_width = tiff->tiled ? value_of(directory, TiffTag::tile_width, 0) : width;
  tiff->block_rows = tiff->tiled
                         ? value_of(directory, TiffTag::tile_length, 0)
                         : std::min(value_of(directory, TiffTag::rows_per_strip, height), height);
  return tiff->block_width != 0 && tiff->block_rows != 0;
}

bool take_form(const Directory &directory, TiffFile *tiff) {
  tiff->compression = value_of(directory, TiffTag::compression, tiff_raw);
  tiff->photometric = value_of(directory, TiffTag::photometric, tiff_white_is_zero);
  const uint32_t prediction = value_of(directory, TiffTag::predictor, tiff_no_predictor);
  tiff->adds_up = prediction == tiff_differences;
  if (!is_one_of(tiff->compression, {tiff_raw, tiff_lzw, tiff_packbits})) return false;
  if (tiff->photometric > tiff_palette ||
      value_of(directory, TiffTag::planar_configuration, tiff_together) == tiff_separate)
    return false;
  if (tiff->samples == 5 && tiff->compression != tiff_raw) return false;
  if (prediction > tiff_differences || (tiff->adds_up && tiff->bits != 8)) return false;
  if (tiff->photometric != tiff_palette) return true;
  return tiff->total_bits <= 8 && entry_of(directory, TiffTag::colour_map).count >= 3;
}

// ---- arrays

int32_t take_array(const Directory &directory, const Entry &entry, size_t count,
                   OwnedArray<uint32_t> *array) {
  if (entry.count < count || !find_values(directory, entry, 0, count)) return reader_bad_format;
  *array = allocate_array<uint32_t>(count);
  if (*array == nullptr) return reader_no_memory;
  for (size_t i = 0; i < count; ++i)
    (*array)[i] = next_value(directory, entry);
  return directory.source->failed ? reader_bad_format : reader_done;
}

// The only size that a file may leave out: that of all of its pixels.
int32_t work_out_size(TiffFile *tiff) {
  constexpr uint64_t enough = uint64_t{1} << 40;
  const uint64_t pixels = static_cast<uint64_t>(tiff->width) * static_cast<uint64_t>(tiff->height);
  const uint64_t bytes = (std::min(pixels, enough) * tiff->total_bits + 7) / 8;
  tiff->sizes = allocate_array<uint32_t>(1);
  if (tiff->sizes == nullptr) return reader_no_memory;
  tiff->sizes[0] = static_cast<uint32_t>(std::min<uint64_t>(bytes, UINT32_MAX));
  return reader_done;
}

int32_t take_blocks(const Directory &directory, TiffFile *tiff) {
  const Entry &offsets =
      entry_of(directory, tiff->tiled ? TiffTag::tile_offsets : TiffTag::strip_offsets);
  const Entry &sizes =
      entry_of(directory, tiff->tiled ? TiffTag::tile_byte_counts : TiffTag::strip_byte_counts);
  uint64_t blocks = offsets.count;
  if (tiff->tiled) {
    const int64_t across = (tiff->width - 1) / tiff->block_width + 1;
    const int64_t down = (tiff->height - 1) / tiff->block_rows + 1;
    blocks = static_cast<uint64_t>(across) * static_cast<uint64_t>(down);
  }
  tiff->blocks = blocks;
  const int32_t status = take_array(directory, offsets, tiff->blocks, &tiff->offsets);
  if (status != reader_done) return status;
  const bool sizes_needed = tiff->tiled || blocks != 1 || tiff->compression != tiff_raw;
  if (sizes.count == 0 && !sizes_needed) return work_out_size(tiff);
  return take_array(directory, sizes, tiff->blocks, &tiff->sizes);
}

bool take_map(const Directory &directory, TiffFile *tiff) {
  if (tiff->photometric != tiff_palette) return true;
  const Entry &entry = entry_of(directory, TiffTag::colour_map);
  tiff->map_entries = entry.count / 3;
  const size_t kept = std::min<size_t>(tiff->map_entries, 256);
  for (size_t plane = 0; plane < 3; ++plane) {
    if (!find_values(directory, entry, plane * tiff->map_entries, kept)) return false;
    for (size_t i = 0; i < kept; ++i)
      tiff->map[plane][i] = static_cast<uint8_t>(next_value(directory, entry) >> 8 & 255);
  }
  return !directory.source->failed;
}

bool has_sizes_for_all(const Directory &directory) {
  const uint32_t strips = entry_of(directory, TiffTag::strip_offsets).count;
  const uint32_t sizes = entry_of(directory, TiffTag::strip_byte_counts).count;
  return sizes == 0 || sizes >= strips;
}

bool read_mark(ByteSource *source, TiffMark mark, ByteOrder *order) {
  uint8_t bytes[4];  // of which the last two, a version, are not looked at
  read_bytes(source, bytes, sizeof bytes);
  *order = bytes[0] == tiff_little_endian ? ByteOrder::little : ByteOrder::big;
  const bool known =
      bytes[0] == bytes[1] && (bytes[0] == tiff_little_endian || bytes[0] == tiff_big_endian);
  return !source->failed && (known || mark == TiffMark::lenient);
}

}  // namespace

int32_t read_tiff_directory(ByteSource *source, TiffMark mark, TiffFile *tiff) {
  *tiff = {};
  Directory directory = {source, ByteOrder::big, {}};
  if (!read_mark(source, mark, &directory.order)) return reader_bad_format;
  tiff->order = directory.order;
  if (!gather_entries(&directory) || !has_sizes_for_all(directory)) return reader_bad_format;
  const bool supported =
      take_samples(directory, tiff) && take_geometry(directory, tiff) && take_form(directory, tiff);
  if (source->failed) return reader_bad_format;
  if (!supported) return tiff_unsupported;
  const int32_t status = take_blocks(directory, tiff);
  if (status != reader_done) return status;
  return take_map(directory, tiff) ? reader_done : reader_bad_format;
}

}  // namespace quorix
