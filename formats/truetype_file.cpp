// SPDX-License-Identifier: MIT
//
// qqttf1 and qqttf3: a TrueType file into memory, and out of it.
//
// Every table is held against the file before memory is asked for. A failure leaves the record
// without `ready`, and nothing but its release looks at it from then on.
#include <bit>
#include <cstring>

#include "base/byte_source.h"
#include "base/memory.h"
#include "formats/truetype.h"
#include "quorix/fonts.h"

namespace quorix {

TtfFont *ttf_font = nullptr;

bool find_glyph(const TtfFont &font, int32_t glyph, size_t *start) {
  if (glyph >= font.glyph_count) return false;
  *start = font.offsets[glyph];
  return font.offsets[glyph + 1] != font.offsets[glyph];
}

namespace {

constexpr uint32_t head_size = 54;
constexpr uint32_t maxp_size = 32;
constexpr uint64_t loca_format_place = 50;  // in `head`
constexpr uint64_t glyph_count_place = 4;   // in `maxp`
constexpr size_t box_top_place = 8;         // of the bounding box, in a glyph
constexpr int32_t capital_a = 65;

struct Table {
  bool present;
  uint64_t offset, length;
};

struct Tables {
  Table cmap, loca, head, maxp, glyf;
};

ByteOrder order_of(const TtfFont &font) {
  return font.big_endian ? ByteOrder::big : ByteOrder::little;
}

// ---- the directory

Table *table_with_tag(Tables *tables, const char *tag) {
  if (std::memcmp(tag, "cmap", 4) == 0) return &tables->cmap;
  if (std::memcmp(tag, "loca", 4) == 0) return &tables->loca;
  if (std::memcmp(tag, "head", 4) == 0) return &tables->head;
  if (std::memcmp(tag, "maxp", 4) == 0) return &tables->maxp;
  return std::memcmp(tag, "glyf", 4) == 0 ? &tables->glyf : nullptr;
}

// Entries that the file cuts off are as good as missing. Of two with one tag the later counts.
void read_directory(ByteSource *source, ByteOrder order, Tables *tables) {
  skip_bytes(source, 4);
  const uint16_t count = read_u16(source, order);
  skip_bytes(source, 6);
  for (uint32_t i = 0; i < count; ++i) {
    char tag[4];
    read_bytes(source, tag, sizeof tag);
    skip_bytes(source, 4);
    const uint32_t offset = read_u32(source, order);
    const uint32_t length = read_u32(source, order);
    if (source->failed) return;
    Table *const table = table_with_tag(tables, tag);
    if (table != nullptr) *table = {true, offset, length};
  }
}

// The last of all complaints is the one reported.
TtfStatus check_directory(const Tables &tables) {
  TtfStatus status = ttf_done;
  if (!tables.cmap.present) status = ttf_no_cmap;
  if (!tables.loca.present) status = ttf_no_loca;
  if (!tables.head.present) status = ttf_no_head;
  if (!tables.maxp.present) status = ttf_no_maxp;
  if (!tables.glyf.present) status = ttf_no_glyf;
  if (tables.head.present && tables.head.length != head_size) status = ttf_bad_head;
  if (tables.maxp.present && tables.maxp.length != maxp_size) status = ttf_bad_maxp;
  return status;
}

// ---- the tables

bool in_file(const ByteSource &source, const Table &table) {
  return table.offset <= source.size && table.length <= source.size - table.offset;
}

TtfStatus read_loca(ByteSource *source, const Table &table, bool long_format, TtfFont *font) {
  const size_t count = size_t{font->glyph_count} + 1;
  if (!in_file(*source, table) || table.length < count * (long_format ? 4 : 2)) {
    return ttf_short_table;
  }
  font->offsets = allocate_array<uint32_t>(count).release();
  if (font->offsets == nullptr) return ttf_no_memory;
  const ByteOrder order = order_of(*font);
  seek_source(source, table.offset);
  for (size_t i = 0; i < count; ++i) {
    font->offsets[i] = long_format ? read_u32(source, order) : 2U * read_u16(source, order);
  }
  return source->failed ? ttf_short_table : ttf_done;
}

TtfStatus read_glyf(ByteSource *source, const Table &table, TtfFont *font) {
  if (!in_file(*source, table)) return ttf_short_table;
  font->glyf_size = static_cast<size_t>(table.length);
  font->glyf = allocate_array<uint8_t>(font->glyf_size + ttf_table_margin).release();
  if (font->glyf == nullptr) return ttf_no_memory;
  seek_source(source, table.offset);
  read_bytes(source, font->glyf, font->glyf_size);
  std::memset(font->glyf + font->glyf_size, 0, ttf_table_margin);
  return source->failed ? ttf_short_table : ttf_done;
}

TtfStatus read_tables(ByteSource *source, const Tables &tables, TtfFont *font) {
  const ByteOrder order = order_of(*font);
  if (!in_file(*source, tables.head)) return ttf_short_table;
  seek_source(source, tables.head.offset + loca_format_place);
  const bool long_format = read_u16(source, order) != 0;
  if (!in_file(*source, tables.maxp)) return ttf_short_table;
  seek_source(source, tables.maxp.offset + glyph_count_place);
  font->glyph_count = read_u16(source, order);
  if (source->failed) return ttf_short_table;
  TtfStatus status = read_loca(source, tables.loca, long_format, font);
  if (status != ttf_done) return status;
  if (!in_file(*source, tables.cmap)) return ttf_short_table;
  status = read_character_map(source, tables.cmap.offset, tables.cmap.length, font);
  if (status != ttf_done) return status;
  return read_glyf(source, tables.glyf, font);
}

// The top of the capital A, or of glyph 0 where the font has no such number; 0 where that is blank.
int16_t read_cap_height(const TtfFont &font) {
  int32_t glyph = font.glyph_of_code[capital_a];
  if (glyph < 0 || glyph > font.glyph_count) glyph = 0;
  size_t start = 0;
  if (!find_glyph(font, glyph, &start) || start >= font.glyf_size ||
      font.glyf_size - start < box_top_place + 2) {
    return 0;
  }
  const uint8_t *const top = font.glyf + start + box_top_place;
  const uint32_t value = font.big_endian ? top[0] * 256U + top[1] : top[1] * 256U + top[0];
  return static_cast<int16_t>(static_cast<uint16_t>(value));
}

TtfStatus read_font(const char *name, TtfFont *font) {
  ByteSource source;
  if (!open_source(&source, name)) return ttf_no_file;
  Tables tables = {};
  read_directory(&source, order_of(*font), &tables);
  TtfStatus status = check_directory(tables);
  if (status != ttf_done) return status;
  status = read_tables(&source, tables, font);
  if (status != ttf_done) return status;
  font->cap_height = read_cap_height(*font);
  font->ready = true;
  return ttf_done;
}

void release_font() {
  if (ttf_font == nullptr) return;
  release_bytes(ttf_font->glyph_of_code);
  release_bytes(ttf_font->offsets);
  release_bytes(ttf_font->glyf);
  release_bytes(ttf_font);
  ttf_font = nullptr;
}

}  // namespace

}  // namespace quorix

// The caller says whether the file's bytes have to be turned on this host, and is believed.
extern "C" int32_t qqttf1(const char *filename, uint8_t swap_bytes, int32_t *status) {
  quorix::release_font();
  quorix::ttf_font =
      static_cast<quorix::TtfFont *>(quorix::allocate_zeroed_bytes(sizeof(quorix::TtfFont)));
  if (quorix::ttf_font == nullptr) {
    *status = quorix::ttf_no_memory;
    return 0;
  }
  const bool host_is_big = std::endian::native == std::endian::big;
  quorix::ttf_font->big_endian = (swap_bytes == 1) != host_is_big;
  *status = quorix::read_font(filename, quorix::ttf_font);
  return 0;
}

extern "C" int32_t qqttf3(void) {
  quorix::release_font();
  return 0;
}
