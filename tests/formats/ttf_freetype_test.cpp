// SPDX-License-Identifier: MIT
//
// Every glyph of real fonts against the points that FreeType finds in them. Not on Windows, which
// has no FreeType.
#ifdef QUORIX_TEST_WITH_FREETYPE

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "quorix/fonts.h"
#include "tests/formats/made_font.h"
#include "tests/formats/outline_calls.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

uint32_t number_at(const Bytes &bytes, size_t place, int count) {
  uint32_t number = 0;
  for (int i = 0; i < count; ++i)
    number = number << 8 | bytes[place + static_cast<size_t>(i)];
  return number;
}

// A font as FreeType reads it, in font units and without instructions.
class ReferenceFont {
 public:
  explicit ReferenceFont(const std::string &name) {
    EXPECT_EQ(FT_Init_FreeType(&library_), 0);
    EXPECT_EQ(FT_New_Face(library_, name.c_str(), 0, &face_), 0) << name;
    glyf_ = table(FT_MAKE_TAG('g', 'l', 'y', 'f'));
    loca_ = table(FT_MAKE_TAG('l', 'o', 'c', 'a'));
    hmtx_ = table(FT_MAKE_TAG('h', 'm', 't', 'x'));
    long_offsets_ = number_at(table(FT_MAKE_TAG('h', 'e', 'a', 'd')), 50, 2) != 0;
    wide_count_ = number_at(table(FT_MAKE_TAG('h', 'h', 'e', 'a')), 34, 2);
  }
  ~ReferenceFont() {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
  }
  ReferenceFont(const ReferenceFont &) = delete;
  ReferenceFont &operator=(const ReferenceFont &) = delete;

  int32_t glyph_count() const { return static_cast<int32_t>(face_->num_glyphs); }
  int32_t glyph_of(int32_t code) const {
    return static_cast<int32_t>(FT_Get_Char_Index(face_, static_cast<FT_ULong>(code)));
  }
  std::vector<int32_t> codes() const {
    std::vector<int32_t> codes;
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face_, &glyph); glyph != 0 && code <= 0xFFFE;
         code = FT_Get_Next_Char(face_, code, &glyph))
      codes.push_back(static_cast<int32_t>(code));
    return codes;
  }

  // What the glyph must become; `size` 0 keeps font units. Null parts are those of no contours.
  Polygons polygons(int32_t glyph, int32_t size) {
    load(glyph);
    if (face_->glyph->format == FT_GLYPH_FORMAT_COMPOSITE)
      return literal_composite(
          parts(), [this](int32_t part) { return simple(part); }, size);
    const std::vector<Contour> *contours = simple(glyph);
    return contours == nullptr ? Polygons{} : literal_simple(*contours, size);
  }

  int32_t highest_point(int32_t glyph) {
    const std::vector<Contour> *contours = simple(glyph);
    int32_t highest = -32768;
    for (const Contour &contour : *contours)
      for (const OutlinePoint &point : contour)
        highest = std::max(highest, point.y);
    return highest;
  }

 private:
  void load(int32_t glyph) {
    EXPECT_EQ(FT_Load_Glyph(face_, static_cast<FT_UInt>(glyph),
                            FT_LOAD_NO_SCALE | FT_LOAD_NO_RECURSE | FT_LOAD_NO_BITMAP),
              0);
  }

  Bytes table(FT_ULong tag) {
    FT_ULong length = 0;
    EXPECT_EQ(FT_Load_Sfnt_Table(face_, tag, 0, nullptr, &length), 0);
    Bytes bytes(length);
    EXPECT_EQ(FT_Load_Sfnt_Table(face_, tag, 0, bytes.data(), &length), 0);
    return bytes;
  }

  // FreeType moves a glyph to where its left side bearing says; how far back it was.
  int32_t way_back(int32_t glyph) const {
    const auto number = static_cast<size_t>(glyph);
    const size_t place =
        long_offsets_ ? number_at(loca_, 4 * number, 4) : 2 * number_at(loca_, 2 * number, 2);
    const size_t bearing =
        number < wide_count_ ? 4 * number + 2 : 4 * wide_count_ + 2 * (number - wide_count_);
    return static_cast<int16_t>(number_at(glyf_, place + 2, 2)) -
           static_cast<int16_t>(number_at(hmtx_, bearing, 2));
  }

  // Null where the glyph is composite or has no contours.
  const std::vector<Contour> *simple(int32_t glyph) {
    const auto known = simple_.find(glyph);
    if (known != simple_.end()) return known->second.empty() ? nullptr : &known->second;
    load(glyph);
    std::vector<Contour> contours;
    if (face_->glyph->format == FT_GLYPH_FORMAT_OUTLINE) {
      const FT_Outline &outline = face_->glyph->outline;
      const int32_t shift = outline.n_contours > 0 ? way_back(glyph) : 0;
      int point = 0;
      for (int c = 0; c < outline.n_contours; ++c) {
        Contour contour;
        for (; point <= outline.contours[c]; ++point)
          contour.push_back({static_cast<int32_t>(outline.points[point].x) + shift,
                             static_cast<int32_t>(outline.points[point].y),
                             (outline.tags[point] & 1) != 0});
        contours.push_back(contour);
      }
    }
    const std::vector<Contour> &kept = simple_[glyph] = contours;
    return kept.empty() ? nullptr : &kept;
  }

  std::vector<GlyphPart> parts() const {
    std::vector<GlyphPart> parts;
    for (FT_UInt i = 0; i < face_->glyph->num_subglyphs; ++i) {
      FT_Int glyph = 0, dx = 0, dy = 0;
      FT_UInt flags = 0;
      FT_Matrix m = {};
      EXPECT_EQ(FT_Get_SubGlyph_Info(face_->glyph, i, &glyph, &flags, &dx, &dy, &m), 0);
      GlyphPart part = {glyph};
      const auto number = [](FT_Fixed value) { return static_cast<double>(value) / 65536.0; };
      if ((flags & FT_SUBGLYPH_FLAG_SCALE) != 0) {
        part.a = part.d = number(m.xx);
      } else if ((flags & FT_SUBGLYPH_FLAG_XY_SCALE) != 0) {
        // kept: the second scale is taken for b, and d stays 1.
        part.a = number(m.xx);
        part.b = number(m.yy);
      } else if ((flags & FT_SUBGLYPH_FLAG_2X2) != 0) {
        part.a = number(m.xx);
        part.b = number(m.yx);
        part.c = number(m.xy);
        part.d = number(m.yy);
      }
      part.dx = dx;
      part.dy = dy;
      parts.push_back(part);
    }
    return parts;
  }

  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
  Bytes glyf_, loca_, hmtx_;
  bool long_offsets_ = false;
  size_t wide_count_ = 0;  // glyphs with an advance of their own in hmtx
  std::map<int32_t, std::vector<Contour>> simple_;
};

std::vector<std::string> font_files() {
  std::vector<std::string> names;
  for (const char *folder : {"dejavu", "liberation"}) {
    const auto path = std::filesystem::path("/usr/share/fonts/truetype") / folder;
    for (const auto &entry : std::filesystem::directory_iterator(path))
      if (entry.path().extension() == ".ttf") names.push_back(entry.path().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// The same font with a map that leads to every glyph: code A to the glyph it has in the font, the
// others in the font's order, round the end.
Bytes font_with_all_glyphs(Bytes file, int32_t capital) {
  MadeFont map;
  map.segments = {{0, 0xFFFE, capital - 'A', 0}};
  const Bytes table = map.map_table();
  const size_t place = file.size();
  file.insert(file.end(), table.begin(), table.end());
  FontBytes entry;
  entry.u32(static_cast<int64_t>(place)).u32(static_cast<int64_t>(table.size()));
  for (size_t i = 12; i < 12 + 16 * number_at(file, 4, 2); i += 16)
    if (std::string(file.begin() + static_cast<std::ptrdiff_t>(i),
                    file.begin() + static_cast<std::ptrdiff_t>(i) + 4) == "cmap")
      std::copy(entry.bytes().begin(), entry.bytes().end(),
                file.begin() + static_cast<std::ptrdiff_t>(i) + 8);
  return file;
}

TEST(TrueTypeFont, GivesEveryGlyphOfRealFonts) {
  const TemporaryFolder folder;
  const std::vector<std::string> names = font_files();
  ASSERT_GE(names.size(), 12U);
  size_t glyphs = 0;
  for (const std::string &name : names) {
    SCOPED_TRACE(name);
    ReferenceFont reference(name);
    const int32_t capital = reference.glyph_of('A');
    const int32_t cap_height = reference.highest_point(capital);
    write_whole_file(folder.file("a.ttf"), font_with_all_glyphs(read_whole_file(name), capital));
    ASSERT_EQ(open_font(folder.file("a.ttf")), 0);
    const int32_t sizes[] = {10, 24, 50, 70};
    for (int32_t glyph = 0; glyph < reference.glyph_count(); ++glyph) {
      SCOPED_TRACE(glyph);
      const int32_t code = (glyph - capital + 'A') & 0xFFFF;
      const int32_t size = sizes[glyph % 4];
      Polygons expected = reference.polygons(glyph, size);
      scale_polygons(&expected, size, cap_height);
      const Polygons polygons = outline(code, size);
      ASSERT_NO_FATAL_FAILURE(expect_same(polygons, expected));
      if (::testing::Test::HasFailure()) return;
      ++glyphs;
    }
  }
  qqttf3();
  EXPECT_GT(glyphs, 30000U);
}

TEST(TrueTypeFont, FindsTheGlyphOfEveryCharacterOfRealFonts) {
  for (const std::string &name : font_files()) {
    SCOPED_TRACE(name);
    ReferenceFont reference(name);
    ASSERT_EQ(open_font(name), 0);
    const int32_t cap_height = reference.highest_point(reference.glyph_of('A'));
    for (const int32_t code : reference.codes()) {
      SCOPED_TRACE(code);
      Polygons expected = reference.polygons(reference.glyph_of(code), 24);
      scale_polygons(&expected, 24, cap_height);
      ASSERT_NO_FATAL_FAILURE(expect_same(outline(code, 24), expected));
      if (::testing::Test::HasFailure()) return;
    }
  }
  qqttf3();
}

}  // namespace
}  // namespace quorix::testing

#endif
