// SPDX-License-Identifier: MIT
//
// TrueType fonts made byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/formats/literal_outline.h"

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

// Numbers in the order of a font file, or the other way round.
class FontBytes {
 public:
  explicit FontBytes(bool low_byte_first = false) : low_first_(low_byte_first) {}
  FontBytes &u8(int64_t value);
  FontBytes &u16(int64_t value);
  FontBytes &u32(int64_t value);
  FontBytes &text(const std::string &text);
  FontBytes &append(const Bytes &bytes);
  FontBytes &pad(size_t multiple);
  size_t size() const { return bytes_.size(); }
  const Bytes &bytes() const { return bytes_; }

 private:
  Bytes bytes_;
  bool low_first_;
};

// How the coordinates of a glyph are written.
enum class GlyphForm { shortest, words, repeated_flags };

Bytes simple_glyph(const std::vector<Contour> &contours, GlyphForm form = GlyphForm::shortest,
                   int instructions = 0, bool low_byte_first = false);

// A component as it is written: `flags` but for "more components", then offsets and matrix.
struct WrittenPart {
  int32_t flags, glyph;
  int32_t dx, dy;
  std::vector<int32_t> matrix;  // 2.14 numbers, one, two or four
};
enum PartFlags : int32_t {
  part_words = 1,
  part_offsets = 2,
  part_scale = 8,
  part_more = 0x20,
  part_two_scales = 0x40,
  part_matrix = 0x80,
};
Bytes composite_glyph(const std::vector<WrittenPart> &parts);

struct MapSegment {
  int32_t start, end, delta, range_offset = 0;
};

struct MadeFont {
  std::vector<Bytes> glyphs;
  std::vector<MapSegment> segments;  // one more for 0xFFFF follows by itself
  std::vector<int32_t> glyph_ids;
  bool long_offsets = false;
  bool low_byte_first = false;
  int32_t platform = 3, encoding = 1, map_format = 4;
  int32_t map_length = -1;            // as written; -1: the true one
  int32_t glyph_count = -1;           // as written; -1: the true one
  std::vector<std::string> left_out;  // tables
  int32_t head_length = 54, maxp_length = 32;
  std::vector<std::pair<std::string, Bytes>> more_tables;  // behind the others

  // Glyph g for code first + g.
  void map_codes_from(int32_t first);
  Bytes bytes() const;
  Bytes map_table() const;
};

// A square of this height with its lower left corner at the origin.
std::vector<Contour> square(int32_t height);

// A font whose capital A is a square of 700 units: glyph 0 an empty box, glyph 1 the A, then what
// is given for the codes from B on.
MadeFont font_with(const std::vector<Bytes> &glyphs);

}  // namespace quorix::testing
