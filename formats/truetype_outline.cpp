// SPDX-License-Identifier: MIT
//
// qqttf2: the outline of a character as closed polygons.
#include <algorithm>

#include "base/char_codes.h"
#include "formats/truetype_glyph.h"
#include "quorix/fonts.h"

namespace quorix {

namespace {

constexpr int32_t units_per_step = 5;

// Kept: these codes know fewer letters than those of the bitmap fonts, and one of them differs.
int32_t unicode_of_code(int32_t code) {
  constexpr int32_t last_letter = 186;
  constexpr int32_t currency_code = 263;
  constexpr int32_t latin1_currency = 164;
  if (code < first_national_code) return code;
  if (code <= last_letter) return latin1_of_code(code);
  if (code == last_letter + 1 || code == code_copyright) return latin1_copyright;
  return code == currency_code ? latin1_currency : code;
}

template <class Bytes>
TtfStatus read_glyph(TtfFont *font, size_t start, Outline *out) {
  if (start >= font->glyf_size) return ttf_done;
  const int32_t contours = signed_number(Bytes::number(font->glyf + start));
  if (contours > 0) return read_simple_glyph<Bytes>(font, start, out);
  return contours == -1 ? read_composite_glyph<Bytes>(font, start, out) : ttf_done;
}

TtfStatus read_character(TtfFont *font, int32_t code, Outline *out) {
  const bool in_map = code >= 0 && code < static_cast<int32_t>(ttf_codes);
  const int32_t number = in_map ? font->glyph_of_code[code] : 0;
  if (number < 0 || number > font->glyph_count) return ttf_bad_glyph;
  size_t start = 0;
  if (!find_glyph(*font, number, &start)) return ttf_done;
  return font->big_endian ? read_glyph<BigEndian>(font, start, out)
                          : read_glyph<LittleEndian>(font, start, out);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqttf2(int32_t code, double *x, double *y, int32_t max_points,
                          int32_t *point_count, int32_t *contour_sizes, int32_t /*max_contours*/,
                          int32_t *contour_count, int32_t size, int32_t *status) {
  quorix::TtfFont *const font = quorix::ttf_font;
  const bool is_unicode = *status != 0;
  *point_count = 0;
  *contour_count = 0;
  *status = quorix::ttf_no_file;
  if (font == nullptr || !font->ready) return 0;
  const int32_t steps = std::max(size / quorix::units_per_step, quorix::least_curve_steps);
  // Without a capital A to measure by, coordinates stay in font units.
  const double scale = font->cap_height == 0 ? 1.0 : static_cast<double>(size) / font->cap_height;
  quorix::Outline out = {x, y, contour_sizes, max_points, steps - 1, scale};
  const int32_t unicode = is_unicode ? code : quorix::unicode_of_code(code);
  *status = quorix::read_character(font, unicode, &out);
  const bool too_small = max_points != 0 && out.points > 0 && out.points > max_points;
  // A last component that is blank has a status of its own.
  if (too_small && *status == quorix::ttf_done) *status = quorix::ttf_arrays_too_small;
  *point_count = too_small ? 0 : quorix::saturated(out.points);
  *contour_count = quorix::saturated(out.contours);
  return 0;
}
