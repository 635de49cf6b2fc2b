// SPDX-License-Identifier: MIT
//
// Puts the tables of a TrueType font together.
#include "tests/formats/made_font.h"

#include <algorithm>
#include <cstdlib>

namespace quorix::testing {

FontBytes &FontBytes::u8(int64_t value) {
  bytes_.push_back(static_cast<uint8_t>(value & 255));
  return *this;
}

FontBytes &FontBytes::u16(int64_t value) {
  return low_first_ ? u8(value).u8(value >> 8) : u8(value >> 8).u8(value);
}

FontBytes &FontBytes::u32(int64_t value) {
  return low_first_ ? u16(value).u16(value >> 16) : u16(value >> 16).u16(value);
}

FontBytes &FontBytes::text(const std::string &text) {
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  return *this;
}

FontBytes &FontBytes::append(const Bytes &bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

FontBytes &FontBytes::pad(size_t multiple) {
  while (bytes_.size() % multiple != 0)
    bytes_.push_back(0);
  return *this;
}

// ---- glyphs

namespace {

constexpr int32_t flag_on_curve = 1, flag_short_x = 2, flag_short_y = 4, flag_repeat = 8,
                  flag_same_or_positive_x = 16, flag_same_or_positive_y = 32;

// The flags of one delta, and its bytes.
int32_t write_delta(int32_t delta, int32_t short_flag, int32_t same_flag, GlyphForm form,
                    FontBytes *coordinates) {
  if (form != GlyphForm::words && delta == 0) return same_flag;
  if (form != GlyphForm::words && std::abs(delta) < 256) {
    coordinates->u8(std::abs(delta));
    return short_flag | (delta > 0 ? same_flag : 0);
  }
  coordinates->u16(delta);
  return 0;
}

void write_flags(const std::vector<int32_t> &flags, bool repeated, FontBytes *glyph) {
  for (size_t i = 0; i < flags.size(); ++i) {
    size_t copies = 0;
    while (repeated && copies < 255 && i + copies + 1 < flags.size() &&
           flags[i + copies + 1] == flags[i])
      ++copies;
    glyph->u8(flags[i] | (copies > 0 ? flag_repeat : 0));
    if (copies > 0) glyph->u8(static_cast<int64_t>(copies));
    i += copies;
  }
}

}  // namespace

Bytes simple_glyph(const std::vector<Contour> &contours, GlyphForm form, int instructions,
                   bool low_byte_first) {
  FontBytes glyph(low_byte_first), xs(low_byte_first), ys(low_byte_first);
  int32_t x = 0, y = 0, x1 = 32767, y1 = 32767, x2 = -32768, y2 = -32768, last = -1;
  std::vector<int32_t> flags;
  FontBytes ends(low_byte_first);
  for (const Contour &contour : contours) {
    for (const OutlinePoint &point : contour) {
      int32_t flag = point.on_curve ? flag_on_curve : 0;
      flag |= write_delta(point.x - x, flag_short_x, flag_same_or_positive_x, form, &xs);
      flag |= write_delta(point.y - y, flag_short_y, flag_same_or_positive_y, form, &ys);
      flags.push_back(flag);
      x = point.x;
      y = point.y;
      x1 = std::min(x1, x);
      x2 = std::max(x2, x);
      y1 = std::min(y1, y);
      y2 = std::max(y2, y);
    }
    last += static_cast<int32_t>(contour.size());
    ends.u16(last);
  }
  glyph.u16(static_cast<int64_t>(contours.size())).u16(x1).u16(y1).u16(x2).u16(y2);
  glyph.append(ends.bytes()).u16(instructions);
  for (int i = 0; i < instructions; ++i)
    glyph.u8(0xAA);
  write_flags(flags, form == GlyphForm::repeated_flags, &glyph);
  return glyph.append(xs.bytes()).append(ys.bytes()).pad(4).bytes();
}

Bytes composite_glyph(const std::vector<WrittenPart> &parts) {
  FontBytes glyph;
  glyph.u16(-1).u16(0).u16(0).u16(1000).u16(1000);
  for (size_t i = 0; i < parts.size(); ++i) {
    const WrittenPart &part = parts[i];
    glyph.u16(part.flags | (i + 1 < parts.size() ? part_more : 0)).u16(part.glyph);
    if ((part.flags & part_words) != 0) {
      glyph.u16(part.dx).u16(part.dy);
    } else {
      glyph.u8(part.dx).u8(part.dy);
    }
    for (const int32_t number : part.matrix)
      glyph.u16(number);
  }
  return glyph.pad(4).bytes();
}

// ---- fonts

void MadeFont::map_codes_from(int32_t first) {
  segments = {{first, first + static_cast<int32_t>(glyphs.size()) - 1, -first, 0}};
}

Bytes MadeFont::map_table() const {
  std::vector<MapSegment> all = segments;
  all.push_back({0xFFFF, 0xFFFF, 1, 0});
  const auto count = static_cast<int64_t>(all.size());
  FontBytes map(low_byte_first);
  map.u16(0).u16(1).u16(platform).u16(encoding).u32(12);
  const int64_t length = 16 + 8 * count + 2 * static_cast<int64_t>(glyph_ids.size());
  map.u16(map_format).u16(map_length < 0 ? length : map_length).u16(0).u16(2 * count);
  map.u16(0).u16(0).u16(0);
  for (const MapSegment &segment : all)
    map.u16(segment.end);
  map.u16(0);
  for (const MapSegment &segment : all)
    map.u16(segment.start);
  for (const MapSegment &segment : all)
    map.u16(segment.delta);
  for (const MapSegment &segment : all)
    map.u16(segment.range_offset);
  for (const int32_t id : glyph_ids)
    map.u16(id);
  return map.bytes();
}

Bytes MadeFont::bytes() const {
  FontBytes glyf(low_byte_first), loca(low_byte_first), head(low_byte_first), maxp(low_byte_first);
  for (const Bytes &glyph : glyphs) {
    const auto place = static_cast<int64_t>(glyf.size());
    long_offsets ? loca.u32(place) : loca.u16(place / 2);
    glyf.append(glyph);
  }
  const auto end = static_cast<int64_t>(glyf.size());
  long_offsets ? loca.u32(end) : loca.u16(end / 2);
  for (int i = 0; i < 25; ++i)
    head.u16(0);
  head.u16(long_offsets ? 1 : 0).u16(0);
  maxp.u32(0x10000).u16(glyph_count < 0 ? static_cast<int64_t>(glyphs.size()) : glyph_count);
  for (int i = 0; i < 13; ++i)
    maxp.u16(0);
  Bytes head_bytes = head.bytes(), maxp_bytes = maxp.bytes();
  head_bytes.resize(static_cast<size_t>(head_length));
  maxp_bytes.resize(static_cast<size_t>(maxp_length));

  std::vector<std::pair<std::string, Bytes>> tables = {{"cmap", map_table()},
                                                       {"glyf", glyf.bytes()},
                                                       {"head", head_bytes},
                                                       {"loca", loca.bytes()},
                                                       {"maxp", maxp_bytes}};
  for (const std::string &name : left_out)
    tables.erase(std::find_if(tables.begin(), tables.end(),
                              [&](const auto &table) { return table.first == name; }));
  tables.insert(tables.end(), more_tables.begin(), more_tables.end());

  FontBytes file(low_byte_first), data(low_byte_first);
  const size_t data_start = 12 + 16 * tables.size();
  file.u32(0x10000).u16(static_cast<int64_t>(tables.size())).u16(0).u16(0).u16(0);
  for (const auto &[name, bytes] : tables) {
    file.text(name).u32(0).u32(static_cast<int64_t>(data_start + data.size()));
    file.u32(static_cast<int64_t>(bytes.size()));
    data.append(bytes).pad(4);
  }
  return file.append(data.bytes()).bytes();
}

std::vector<Contour> square(int32_t height) {
  return {{{0, 0}, {0, height}, {height, height}, {height, 0}}};
}

MadeFont font_with(const std::vector<Bytes> &glyphs) {
  MadeFont font;
  font.glyphs = {simple_glyph(square(500)), simple_glyph(square(700))};
  font.glyphs.insert(font.glyphs.end(), glyphs.begin(), glyphs.end());
  font.map_codes_from('A' - 1);
  return font;
}

}  // namespace quorix::testing
