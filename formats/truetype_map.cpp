// SPDX-License-Identifier: MIT
//
// The character map of a TrueType font: segments of codes (format 4 of the Windows Unicode map),
// turned into the glyph of every code at once.
//
// The last segment that holds a code decides. So segments are taken from the last to the first, and
// codes that have their glyph are jumped over: each code is visited once, whatever the segments
// are.
#include <numeric>

#include "base/byte_source.h"
#include "base/memory.h"
#include "formats/truetype.h"

namespace quorix {

namespace {

constexpr uint32_t windows_platform = 3;
constexpr uint32_t unicode_encoding = 1;
constexpr uint32_t segment_format = 4;
constexpr uint64_t record_size = 8;
constexpr uint64_t map_header_size = 14;

// Owned in one block; `offsets` is followed by the glyph numbers that it leads to.
struct Segments {
  uint32_t count;
  uint32_t place_count;  // entries of `offsets`, the glyph numbers included
  OwnedArray<uint16_t> block;
  const uint16_t *ends, *starts, *deltas, *offsets;
};

// Where the Unicode map stands in the table; false if there is none.
bool find_unicode_map(ByteSource *source, ByteOrder order, uint64_t table, uint64_t length,
                      uint64_t *place) {
  seek_source(source, table + 2);
  const uint32_t count = read_u16(source, order);
  for (uint64_t i = 0; i < count && 4 + (i + 1) * record_size <= length; ++i) {
    const uint16_t platform = read_u16(source, order);
    const uint16_t encoding = read_u16(source, order);
    *place = read_u32(source, order);
    if (source->failed) return false;
    if (platform == windows_platform && encoding == unicode_encoding) return true;
  }
  return false;
}

void read_numbers(ByteSource *source, ByteOrder order, uint16_t *to, size_t count) {
  for (size_t i = 0; i < count; ++i)
    to[i] = read_u16(source, order);
}

// `room` is what the table has for the map, whose header has been read up to its length.
TtfStatus read_segments(ByteSource *source, ByteOrder order, uint64_t room, Segments *segments) {
  const int32_t length = read_u16(source, order);
  skip_bytes(source, 2);
  const size_t count = read_u16(source, order) / 2U;
  skip_bytes(source, 6);
  const int32_t glyph_numbers = (length - 8 * static_cast<int32_t>(count) - 16) / 2;
  if (glyph_numbers < 0) return ttf_bad_glyph;
  const size_t places = count + static_cast<size_t>(glyph_numbers);
  const size_t values = 3 * count + places;
  if (map_header_size + 2 + 2 * values > room) return ttf_short_table;
  segments->block = allocate_array<uint16_t>(values);
  uint16_t *const block = segments->block.get();
  if (block == nullptr) return ttf_no_memory;
  read_numbers(source, order, block, count);
  skip_bytes(source, 2);
  read_numbers(source, order, block + count, values - count);
  segments->count = static_cast<uint32_t>(count);
  segments->place_count = static_cast<uint32_t>(places);
  segments->ends = block;
  segments->starts = block + count;
  segments->deltas = block + 2 * count;
  segments->offsets = block + 3 * count;
  return source->failed ? ttf_short_table : ttf_done;
}

// Kept: where a segment leads to a list of glyph numbers, its delta is not added, and a 0 in the
// list is no special case.
int32_t glyph_in_segment(const Segments &segments, uint32_t i, uint32_t code) {
  const uint32_t offset = segments.offsets[i];
  if (offset == 0) return static_cast<int32_t>((code + segments.deltas[i]) & 0xFFFFU);
  const uint32_t place = i + offset / 2 + (code - segments.starts[i]);
  return place < segments.place_count ? segments.offsets[place] : -1;
}

// The first code at or after `code` without a glyph. `next` leads there step by step, and the steps
// taken are made shorter for the next who comes this way.
uint32_t next_open_code(uint32_t *next, uint32_t code) {
  while (next[code] != code) {
    next[code] = next[next[code]];
    code = next[code];
  }
  return code;
}

TtfStatus assign_glyphs(const Segments &segments, TtfFont *font) {
  font->glyph_of_code = allocate_zeroed_array<int32_t>(ttf_codes).release();
  const OwnedArray<uint32_t> next = allocate_array<uint32_t>(ttf_codes + 1);
  if (font->glyph_of_code == nullptr || next == nullptr) return ttf_no_memory;
  std::iota(next.get(), next.get() + ttf_codes + 1, 0U);
  for (uint32_t i = segments.count; i-- > 0;) {
    const uint32_t end = segments.ends[i];
    for (uint32_t code = next_open_code(next.get(), segments.starts[i]); code <= end;
         code = next_open_code(next.get(), code)) {
      font->glyph_of_code[code] = glyph_in_segment(segments, i, code);
      next[code] = code + 1;
    }
  }
  return ttf_done;
}

}  // namespace

TtfStatus read_character_map(ByteSource *source, uint64_t offset, uint64_t length, TtfFont *font) {
  const ByteOrder order = font->big_endian ? ByteOrder::big : ByteOrder::little;
  uint64_t place = 0;
  if (!find_unicode_map(source, order, offset, length, &place)) return ttf_no_unicode_map;
  if (place > length || length - place < 2) return ttf_short_table;
  seek_source(source, offset + place);
  const uint16_t format = read_u16(source, order);
  if (source->failed) return ttf_short_table;
  if (format != segment_format) return ttf_unknown_map_format;
  if (length - place < map_header_size) return ttf_short_table;
  Segments segments = {};
  const TtfStatus status = read_segments(source, order, length - place, &segments);
  return status == ttf_done ? assign_glyphs(segments, font) : status;
}

}  // namespace quorix
