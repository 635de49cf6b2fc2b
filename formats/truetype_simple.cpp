// SPDX-License-Identifier: MIT
//
// Simple glyphs: contours of points.
//
// A glyph is read twice: once over its flags, which say where the coordinates lie and whether they
// fit into the table, and once over flags and coordinates together, which flattens as it goes. So
// only the flags are kept, in the font's own array. Branches by flag are cheaper than tables, since
// the flags of letters repeat.
#include <algorithm>
#include <cstring>

#include "formats/truetype_curves.h"
#include "formats/truetype_glyph.h"

namespace quorix {

namespace {

enum PointFlag : uint8_t {
  flag_on_curve = 1,
  flag_x_byte = 2,
  flag_y_byte = 4,
  flag_repeat = 8,
  flag_x_same = 16,  // or, with flag_x_byte, positive
  flag_y_same = 32,
};

// ---- where things stand in the table

struct SimpleGlyph {
  int32_t contours;
  size_t points;
  const uint8_t *ends;  // last point of each contour
  const uint8_t *x, *y;
};

// How many bytes the coordinates of a point take, that of y in the upper half.
constexpr uint64_t coordinate_sizes(uint32_t flag) {
  const uint32_t x = (flag & flag_x_byte) != 0 ? 1 : ((flag & flag_x_same) != 0 ? 0 : 2);
  const uint32_t y = (flag & flag_y_byte) != 0 ? 1 : ((flag & flag_y_same) != 0 ? 0 : 2);
  return x | uint64_t{y} << 32;
}

// Moves a running coordinate on.
template <class Bytes, uint32_t byte_flag, uint32_t same_flag>
[[gnu::always_inline]] inline void advance(uint32_t flag, const uint8_t **from, int32_t *place) {
  if ((flag & byte_flag) != 0) {
    const int32_t step = *(*from)++;
    *place += (flag & same_flag) != 0 ? step : -step;
  } else if ((flag & same_flag) == 0) {
    *place += signed_number(Bytes::number(*from));
    *from += 2;
  }
}

// Expands the flags from `at` on; false if there are more than points, or if they or the
// coordinates behind them leave the table.
bool read_flags(TtfFont *font, const uint8_t *at, SimpleGlyph *glyph) {
  const uint8_t *const end = font->glyf + font->glyf_size;
  uint64_t sizes = 0;
  for (size_t n = 0; n < glyph->points;) {
    if (at >= end) return false;
    const uint8_t flag = *at++;
    size_t run = 1;
    if ((flag & flag_repeat) != 0) {
      run += *at++;
      if (run > glyph->points - n) return false;
      std::memset(font->flags + n, flag, run);
    } else {
      font->flags[n] = flag;
    }
    sizes += coordinate_sizes(flag) * run;
    n += run;
  }
  const uint64_t x_bytes = sizes & 0xFFFFFFFFU, y_bytes = sizes >> 32;
  if (at > end || x_bytes + y_bytes > static_cast<uint64_t>(end - at)) return false;
  glyph->x = at;
  glyph->y = at + x_bytes;
  return true;
}

template <class Bytes>
int32_t last_point(const SimpleGlyph &glyph, int32_t contour) {
  return static_cast<int32_t>(Bytes::number(glyph.ends + 2 * static_cast<size_t>(contour)));
}

// The end points rise, or some contour would have no points, or fewer.
template <class Bytes>
bool ends_rise(const SimpleGlyph &glyph) {
  int32_t previous = -1;
  for (int32_t i = 0; i < glyph.contours; ++i) {
    const int32_t end = last_point<Bytes>(glyph, i);
    if (end <= previous) return false;
    previous = end;
  }
  return true;
}

template <class Bytes>
TtfStatus open_simple_glyph(TtfFont *font, size_t start, SimpleGlyph *glyph) {
  if (start >= font->glyf_size) return ttf_component_not_simple;
  const size_t left = font->glyf_size - start;
  const uint8_t *const bytes = font->glyf + start;
  glyph->contours = signed_number(Bytes::number(bytes));
  if (glyph->contours < 1) return ttf_component_not_simple;
  const size_t ends_size = 2 * static_cast<size_t>(glyph->contours);
  if (left < glyph_header_size + ends_size + 2) return ttf_bad_glyph;
  glyph->ends = bytes + glyph_header_size;
  if (!ends_rise<Bytes>(*glyph)) return ttf_bad_glyph;
  glyph->points = static_cast<size_t>(last_point<Bytes>(*glyph, glyph->contours - 1)) + 1;
  const size_t instructions = Bytes::number(glyph->ends + ends_size);
  if (left - (glyph_header_size + ends_size + 2) < instructions) return ttf_bad_glyph;
  const bool sound = read_flags(font, glyph->ends + ends_size + 2 + instructions, glyph);
  return sound ? ttf_done : ttf_bad_glyph;
}

// ---- its points

// Kept: a contour that ends with a control point has no curve back to its start, and one that
// begins with a control point starts its curve where the contour before it ended, or at the origin.
template <class Bytes>
void store_simple_glyph(const TtfFont &font, const SimpleGlyph &glyph, Outline *out) {
  const uint8_t *from_x = glyph.x, *from_y = glyph.y;
  int32_t x = 0, y = 0;
  Outline to = *out;  // a copy at hand, which no pointer leads to
  OutlinePoint p = {0, 0}, c = {0, 0};
  int32_t i = 0;
  for (int32_t contour = 0; contour < glyph.contours; ++contour) {
    const int32_t end = last_point<Bytes>(glyph, contour);
    const int64_t first = to.points;
    bool after_control = false;
    for (; i <= end; ++i) {
      const uint32_t flag = font.flags[i];
      advance<Bytes, flag_x_byte, flag_x_same>(flag, &from_x, &x);
      advance<Bytes, flag_y_byte, flag_y_same>(flag, &from_y, &y);
      const OutlinePoint here = {static_cast<double>(x), static_cast<double>(y)};
      const bool on_curve = (flag & flag_on_curve) != 0;
      if (after_control) {
        const OutlinePoint e =
            on_curve ? here : OutlinePoint{(here.x + c.x) / 2.0, (here.y + c.y) / 2.0};
        put_curve(&to, font.weights, p, c, e);
        p = e;
      } else if (on_curve) {
        put_point(&to, here);
        p = here;
      }
      if (!on_curve) c = here;
      after_control = !on_curve;
    }
    close_contour(&to, first, p);
    end_contour(&to, first);
  }
  *out = to;
}

// The same points, counted.
template <class Bytes>
void count_simple_glyph(const TtfFont &font, const SimpleGlyph &glyph, Outline *out) {
  int32_t i = 0;
  for (int32_t contour = 0; contour < glyph.contours; ++contour) {
    const int32_t end = last_point<Bytes>(glyph, contour);
    const int64_t first = out->points;
    int64_t points = 0, curves = 0;
    bool after_control = false;
    for (; i <= end; ++i) {
      const bool on_curve = (font.flags[i] & flag_on_curve) != 0;
      curves += after_control ? 1 : 0;
      points += !after_control && on_curve ? 1 : 0;
      after_control = !on_curve;
    }
    out->points += points + curves * out->curve_points + 1;
    end_contour(out, first);
  }
}

}  // namespace

template <class Bytes>
TtfStatus read_simple_glyph(TtfFont *font, size_t start, Outline *out) {
  SimpleGlyph glyph = {};
  const TtfStatus status = open_simple_glyph<Bytes>(font, start, &glyph);
  out->read += std::max(glyph.contours, 0) + static_cast<int64_t>(glyph.points);
  if (status != ttf_done) return status;
  if (out->room > out->points) {
    keep_weights(&font->weights, out->curve_points);
    store_simple_glyph<Bytes>(*font, glyph, out);
  } else {
    count_simple_glyph<Bytes>(*font, glyph, out);
  }
  return out->room != 0 && out->points > out->room ? ttf_arrays_too_small : ttf_done;
}

template TtfStatus read_simple_glyph<BigEndian>(TtfFont *font, size_t start, Outline *out);
template TtfStatus read_simple_glyph<LittleEndian>(TtfFont *font, size_t start, Outline *out);

}  // namespace quorix
