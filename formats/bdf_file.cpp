// SPDX-License-Identifier: MIT
//
// Reading BDF files, line by line.
//
// A keyword counts wherever it stands, and any other line is a row of the bitmap if it comes
// between BITMAP and ENDCHAR. Nothing is asked for by the file's own count before that was held
// against the file, and glyphs beyond the count are passed over.
#include "formats/bdf.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/byte_source.h"
#include "base/grow.h"
#include "base/memory.h"
#include "base/text.h"

namespace quorix {

namespace {

constexpr size_t line_limit = 512;     // what is longer counts as several lines
constexpr size_t bitmap_limit = 1023;  // characters of a glyph's rows; the others are lost
constexpr uint64_t least_glyph_size = 8;
constexpr size_t first_pixel_room = 4096;
constexpr int32_t no_encoding = INT32_MIN;

struct BdfReader {
  ByteSource source;
  BdfFont *font;
  int32_t glyph_number;
  bool in_bitmap;
  bool bitmap_is_new;  // since the last glyph ended
  size_t bitmap_length;
  char line[line_limit + 1];
  char bitmap[bitmap_limit + 1];
};

// The next line, without what ends it; false at the end of the file.
bool read_line(BdfReader *reader) {
  if (source_at_end(reader->source)) return false;
  size_t length = 0;
  while (length < line_limit && !source_at_end(reader->source)) {
    const char c = static_cast<char>(read_u8(&reader->source));
    if (c == '\n') break;
    reader->line[length++] = c;
  }
  reader->line[length] = '\0';
  reader->line[std::strcspn(reader->line, "\r")] = '\0';
  return true;
}

template <size_t Size>
bool begins_with(const char *line, const char (&keyword)[Size]) {
  return std::strncmp(line, keyword, Size - 1) == 0;
}

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Reads up to `count` whole numbers; those that are not there keep their value, and those too large
// become the largest there is.
void read_integers(const char *text, int32_t *values, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    while (is_space(*text))
      ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    if (*text < '0' || *text > '9') return;
    int64_t value = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
      value = std::min<int64_t>(value * 10 + (*text - '0'), int64_t{INT32_MAX} + 1);
    }
    values[i] = static_cast<int32_t>(negative ? -value : std::min<int64_t>(value, INT32_MAX));
  }
}

// ---- glyphs

BdfGlyph *current_glyph(BdfReader *reader) {
  const BdfFont *font = reader->font;
  return reader->glyph_number < font->glyph_count ? font->glyphs.get() + reader->glyph_number
                                                  : nullptr;
}

// The second of two counts in a file is passed over: glyphs may have been read by the first.
BdfStatus make_glyphs(BdfReader *reader, const char *text) {
  BdfFont *const font = reader->font;
  if (font->glyphs != nullptr) return bdf_done;
  int32_t count = 0;
  read_integers(text, &count, 1);
  if (count < 0) return bdf_no_memory;
  const uint64_t most = bytes_left(reader->source) / least_glyph_size + 1;
  count = static_cast<int32_t>(std::min(static_cast<uint64_t>(count), most));
  font->glyphs = allocate_zeroed_array<BdfGlyph>(static_cast<size_t>(count));
  if (font->glyphs == nullptr) return bdf_no_memory;
  font->glyph_count = count;
  for (BdfGlyph *glyph = font->glyphs.get(); glyph != font->glyphs.get() + count; ++glyph)
    glyph->encoding = no_encoding;
  return bdf_done;
}

bool make_room_for_pixels(BdfFont *font, size_t count) {
  if (font->pixel_room - font->pixel_count >= count) return true;
  const size_t needed = std::max(first_pixel_room, font->pixel_count + count);
  const size_t room = grown_room(font->pixel_room, needed);
  if (!grow_array(&font->pixels, font->pixel_count, room)) return false;
  font->pixel_room = room;
  return true;
}

// Kept: only digits and capitals count; others, small letters too, take no room in their row.
int32_t hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

void append_digit(BdfFont *font, int32_t digit, int32_t column, int32_t row) {
  for (int32_t bit = 0; bit < 4; ++bit) {
    if ((digit & 8 >> bit) == 0) continue;
    font->pixels[font->pixel_count++] = {static_cast<int16_t>(column + bit),
                                         static_cast<int16_t>(row)};
  }
}

// Adds the pixels of the gathered rows to those of the font.
bool decode_bitmap(BdfReader *reader) {
  BdfFont *const font = reader->font;
  if (!make_room_for_pixels(font, 4 * reader->bitmap_length)) return false;
  int32_t column = 0, row = 0;
  for (size_t i = 0; i < reader->bitmap_length; ++i) {
    const int32_t digit = hex_digit(reader->bitmap[i]);
    if (reader->bitmap[i] == '\n') {
      column = 0;
      ++row;
    } else if (digit >= 0) {
      append_digit(font, digit, column, row);
      column += 4;
    }
  }
  return true;
}

// Kept: a glyph without a bitmap of its own has that of the glyph before.
bool end_glyph(BdfReader *reader) {
  reader->in_bitmap = false;
  BdfGlyph *const glyph = current_glyph(reader);
  if (glyph == nullptr) return true;
  BdfFont *const font = reader->font;
  if (reader->bitmap_is_new) {
    glyph->first_pixel = font->pixel_count;
    if (!decode_bitmap(reader)) return false;
    glyph->pixel_count = font->pixel_count - glyph->first_pixel;
  } else if (reader->glyph_number > 0) {
    glyph->first_pixel = glyph[-1].first_pixel;
    glyph->pixel_count = glyph[-1].pixel_count;
  }
  reader->bitmap_is_new = false;
  ++reader->glyph_number;
  return true;
}

// ---- lines

void start_bitmap(BdfReader *reader) {
  reader->in_bitmap = true;
  reader->bitmap_is_new = true;
  reader->bitmap[0] = '\0';
  reader->bitmap_length = 0;
}

void append_to_bitmap(BdfReader *reader, const char *text) {
  const size_t length = reader->bitmap_length;
  reader->bitmap_length += append_bytes(reader->bitmap + length, text, bitmap_limit - length);
}

// Lines of no use here, which are no rows of a bitmap either.
bool is_idle_line(const char *line) {
  return begins_with(line, "COMMENT") || begins_with(line, "STARTFONT") ||
         begins_with(line, "FONT ") || begins_with(line, "SIZE ") ||
         begins_with(line, "FONTBOUNDINGBOX");
}

void read_glyph_line(BdfReader *reader) {
  const char *const line = reader->line;
  BdfGlyph *const glyph = current_glyph(reader);
  BdfGlyph unwanted = {};
  BdfGlyph *const target = glyph != nullptr ? glyph : &unwanted;
  if (begins_with(line, "ENCODING ")) {
    read_integers(line + 9, &target->encoding, 1);
  } else if (begins_with(line, "DWIDTH ")) {
    read_integers(line + 7, target->dwidth, 2);
  } else if (begins_with(line, "BBX ")) {
    read_integers(line + 4, target->box, 4);
  } else if (reader->in_bitmap) {
    append_to_bitmap(reader, reader->line);
    append_to_bitmap(reader, "\n");
  }
}

BdfStatus read_lines(BdfReader *reader) {
  BdfStatus status = bdf_done;
  while (status == bdf_done && read_line(reader)) {
    if (is_idle_line(reader->line)) continue;
    if (begins_with(reader->line, "CHARS ")) {
      status = make_glyphs(reader, reader->line + 6);
    } else if (begins_with(reader->line, "BITMAP")) {
      start_bitmap(reader);
    } else if (begins_with(reader->line, "ENDCHAR")) {
      status = end_glyph(reader) ? bdf_done : bdf_no_memory;
    } else {
      read_glyph_line(reader);
    }
  }
  return status;
}

void index_glyphs(BdfFont *font) {
  std::fill_n(font->glyph_of_code, bdf_indexed_codes, -1);
  for (int32_t i = font->glyph_count; i-- > 0;) {
    const int32_t encoding = font->glyphs.get()[i].encoding;
    if (encoding >= 0 && encoding < bdf_indexed_codes) font->glyph_of_code[encoding] = i;
  }
}

BdfStatus read_font(BdfReader *reader, BdfFont **font) {
  void *const block = allocate_bytes(sizeof(BdfFont));
  if (block == nullptr) return bdf_no_memory;
  reader->font = new (block) BdfFont{};
  const BdfStatus status = read_lines(reader);
  if (status != bdf_done) {
    release_bdf_font(reader->font);
    return status;
  }
  index_glyphs(reader->font);
  *font = reader->font;
  return bdf_done;
}

}  // namespace

BdfStatus read_bdf_font(const char *path, BdfFont **font) {
  *font = nullptr;
  BdfReader reader = {};
  return open_source(&reader.source, path) ? read_font(&reader, font) : bdf_no_file;
}

BdfStatus read_bdf_text(const uint8_t *text, size_t size, BdfFont **font) {
  *font = nullptr;
  BdfReader reader = {};
  open_memory_source(&reader.source, text, size);
  return read_font(&reader, font);
}

void release_bdf_font(BdfFont *font) {
  if (font == nullptr) return;
  font->~BdfFont();
  release_bytes(font);
}

const BdfGlyph *find_bdf_glyph(const BdfFont &font, int32_t encoding) {
  if (encoding >= 0 && encoding < bdf_indexed_codes) {
    const int32_t number = font.glyph_of_code[encoding];
    return number < 0 ? nullptr : font.glyphs.get() + number;
  }
  for (int32_t i = 0; i < font.glyph_count; ++i) {
    const BdfGlyph *const glyph = font.glyphs.get() + i;
    if (glyph->encoding == encoding) return glyph;
  }
  return nullptr;
}

}  // namespace quorix
