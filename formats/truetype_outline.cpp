// SPDX-License-Identifier: MIT
//
// qqttf2: the outline of a character as closed polygons.
//
// A simple glyph is read twice: once over its flags, which tell where the coordinates lie and
// whether they fit into the table, and once over flags and coordinates together, which flattens as
// it goes. So only the flags are kept, in the font's own array. The loops are templates over the
// byte order of the file. What happens for every point is inlined by force, which halves the time;
// branches by flag are cheaper than tables, since the flags of letters repeat.
//
// Numbers of points are counted in 64 bits, since a huge size asks for any number of them; points
// beyond the caller's room are counted without being computed.
#include <algorithm>
#include <cstring>

#include "base/char_codes.h"
#include "formats/truetype.h"
#include "quorix/fonts.h"

namespace quorix {

namespace {

constexpr int32_t least_curve_steps = 5;
constexpr int32_t units_per_step = 5;
constexpr size_t header_size = 10;  // number of contours and bounding box

// Points and contours of all components of a glyph together. Without a limit a small file could
// keep its reader busy for hours, by components that are all the same large glyph.
constexpr int64_t most_read = int64_t{1} << 24;

enum PointFlag : uint8_t {
  flag_on_curve = 1,
  flag_x_byte = 2,
  flag_y_byte = 4,
  flag_repeat = 8,
  flag_x_same = 16,  // or, with flag_x_byte, positive
  flag_y_same = 32,
};

enum ComponentFlag : uint32_t {
  component_words = 0x0001,
  component_scale = 0x0008,
  component_more = 0x0020,
  component_two_scales = 0x0040,
  component_matrix = 0x0080,
};

struct BigEndian {
  static uint32_t number(const uint8_t *at) { return at[0] * 256U + at[1]; }
};

struct LittleEndian {
  static uint32_t number(const uint8_t *at) { return at[1] * 256U + at[0]; }
};

int32_t signed_number(uint32_t number) {
  return static_cast<int16_t>(static_cast<uint16_t>(number));
}

// ---- where points go

struct Outline {
  double *x, *y;
  int32_t *contour_sizes;
  int64_t room;  // 0: points are only counted, below: there is no room at all
  int32_t curve_points;
  double scale;
  int64_t points = 0;
  int64_t contours = 0;
  int64_t read = 0;  // points and contours that components have in the file
};

int32_t saturated(int64_t count) {
  return static_cast<int32_t>(std::min<int64_t>(count, INT32_MAX));
}

void end_contour(Outline *out, int64_t first) {
  if (out->room != 0) out->contour_sizes[out->contours] = saturated(out->points - first);
  ++out->contours;
}

// ---- simple glyphs

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
  if (left < header_size + ends_size + 2) return ttf_bad_glyph;
  glyph->ends = bytes + header_size;
  if (!ends_rise<Bytes>(*glyph)) return ttf_bad_glyph;
  glyph->points = static_cast<size_t>(last_point<Bytes>(*glyph, glyph->contours - 1)) + 1;
  const size_t instructions = Bytes::number(glyph->ends + ends_size);
  if (left - (header_size + ends_size + 2) < instructions) return ttf_bad_glyph;
  const bool sound = read_flags(font, glyph->ends + ends_size + 2 + instructions, glyph);
  return sound ? ttf_done : ttf_bad_glyph;
}

// ---- flattening

struct Point {
  double x, y;
};

[[gnu::always_inline]] inline void put_point(Outline *out, Point p) {
  if (out->points < out->room) {
    out->x[out->points] = p.x * out->scale;
    out->y[out->points] = p.y * out->scale;
  }
  ++out->points;
}

// The points of a curve after its start, by weights that are at hand. The room is there.
template <int32_t Count>
[[gnu::always_inline]] inline void put_weighted(Outline *out, const CurveWeights &weights, Point p,
                                                Point c, Point e) {
  const double scale = out->scale;
  const int32_t count = Count == 0 ? out->curve_points : Count;
  double *const __restrict x = out->x + out->points;
  double *const __restrict y = out->y + out->points;
  for (int32_t j = 0; j < count; ++j) {
    const double start = weights.start[j], control = weights.control[j], end = weights.end[j];
    x[j] = (start * p.x + control * c.x + end * e.x) * scale;
    y[j] = (start * p.y + control * c.y + end * e.y) * scale;
  }
  out->points += count;
}

struct WeightsAt {
  double start, control, end;
};

WeightsAt weights_at(int32_t j, int32_t last) {
  const double t = static_cast<double>(j) / last;
  return {(1 - t) * (1 - t), 2 * (1 - t) * t, t * t};
}

// Any curve, as far as there is room.
void put_long_curve(Outline *out, Point p, Point c, Point e) {
  const int64_t left = std::max<int64_t>(out->room - out->points, 0);
  const int32_t stored = static_cast<int32_t>(std::min<int64_t>(out->curve_points, left));
  for (int32_t j = 1; j <= stored; ++j) {
    const WeightsAt w = weights_at(j, out->curve_points);
    put_point(out, {w.start * p.x + w.control * c.x + w.end * e.x,
                    w.start * p.y + w.control * c.y + w.end * e.y});
  }
  out->points += out->curve_points - stored;
}

[[gnu::always_inline]] inline void put_curve(Outline *out, const CurveWeights &weights, Point p,
                                             Point c, Point e) {
  if (weights.count == out->curve_points && out->room - out->points >= out->curve_points) {
    if (out->curve_points == least_curve_steps - 1) {
      put_weighted<least_curve_steps - 1>(out, weights, p, c, e);
    } else {
      put_weighted<0>(out, weights, p, c, e);
    }
  } else {
    put_long_curve(out, p, c, e);
  }
}

void keep_weights(CurveWeights *weights, int32_t count) {
  if (weights->count == count || count > ttf_kept_points) return;
  weights->count = count;
  for (int32_t j = 1; j <= count; ++j) {
    const WeightsAt w = weights_at(j, count);
    weights->start[j - 1] = w.start;
    weights->control[j - 1] = w.control;
    weights->end[j - 1] = w.end;
  }
}

// Closes a contour with a copy of its first point. A contour of one control point has none, so
// that the copy is of whatever point the glyph came by last.
void close_contour(Outline *out, int64_t first, Point last_on_curve) {
  if (first == out->points) return put_point(out, last_on_curve);
  if (out->points < out->room) {
    out->x[out->points] = out->x[first];
    out->y[out->points] = out->y[first];
  }
  ++out->points;
}

// Kept: a contour that ends with a control point has no curve back to its start, and one that
// begins with a control point starts its curve where the contour before it ended, or at the origin.
template <class Bytes>
void store_simple_glyph(const TtfFont &font, const SimpleGlyph &glyph, Outline *out) {
  const uint8_t *from_x = glyph.x, *from_y = glyph.y;
  int32_t x = 0, y = 0;
  Outline to = *out;  // a copy at hand, which no pointer leads to
  Point p = {0, 0}, c = {0, 0};
  int32_t i = 0;
  for (int32_t contour = 0; contour < glyph.contours; ++contour) {
    const int32_t end = last_point<Bytes>(glyph, contour);
    const int64_t first = to.points;
    bool after_control = false;
    for (; i <= end; ++i) {
      const uint32_t flag = font.flags[i];
      advance<Bytes, flag_x_byte, flag_x_same>(flag, &from_x, &x);
      advance<Bytes, flag_y_byte, flag_y_same>(flag, &from_y, &y);
      const Point here = {static_cast<double>(x), static_cast<double>(y)};
      const bool on_curve = (flag & flag_on_curve) != 0;
      if (after_control) {
        const Point e = on_curve ? here : Point{(here.x + c.x) / 2.0, (here.y + c.y) / 2.0};
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

// ---- composite glyphs

// Reads on in a table; 0 from its end on.
template <class Bytes>
struct Cursor {
  const TtfFont *font;
  size_t at;

  bool past() const { return at > font->glyf_size; }
  uint32_t number() {
    const bool inside = at < font->glyf_size;  // the margin serves a number cut in two
    const uint32_t value = inside ? Bytes::number(font->glyf + at) : 0;
    at += 2;
    return value;
  }
  int32_t small_number() {
    const uint8_t value = at < font->glyf_size ? font->glyf[at] : uint8_t{0};
    at += 1;
    return static_cast<int8_t>(value);
  }
  // A whole part of 2 bits and a fraction of 14.
  double fraction() { return signed_number(number()) / 16384.0; }
};

struct Placement {
  double a = 1, b = 0, c = 0, d = 1;
  bool has_matrix = false;
  double dx = 0, dy = 0;
};

template <class Bytes>
Placement read_placement(Cursor<Bytes> *cursor, uint32_t flags) {
  Placement p;
  if ((flags & component_words) != 0) {
    p.dx = signed_number(cursor->number());
    p.dy = signed_number(cursor->number());
  } else {
    p.dx = cursor->small_number();
    p.dy = cursor->small_number();
  }
  p.has_matrix = (flags & (component_scale | component_two_scales | component_matrix)) != 0;
  if ((flags & component_scale) != 0) {
    p.a = p.d = cursor->fraction();
  } else if ((flags & component_two_scales) != 0) {
    p.a = cursor->fraction();
    p.b = cursor->fraction();  // kept: the second scale is not d
  } else if ((flags & component_matrix) != 0) {
    p.a = cursor->fraction();
    p.b = cursor->fraction();
    p.c = cursor->fraction();
    p.d = cursor->fraction();
  }
  return p;
}

// Of the points from `first` on, those that were stored.
void place_component(const Placement &p, int64_t first, Outline *out) {
  const int64_t end = std::min(out->points, out->room);
  for (int64_t i = first; i < end; ++i) {
    double x = out->x[i], y = out->y[i];
    if (p.has_matrix) {
      const double turned_x = p.a * x + p.c * y;
      y = p.b * x + p.d * y;
      x = turned_x;
    }
    out->x[i] = x + p.dx;
    out->y[i] = y + p.dy;
  }
}

template <class Bytes>
TtfStatus read_component(TtfFont *font, int32_t number, Outline *out) {
  if (number > font->glyph_count) return ttf_bad_glyph;
  size_t start = 0;
  if (!find_glyph(*font, number, &start)) return ttf_done;
  return read_simple_glyph<Bytes>(font, start, out);
}

// Kept: what became of a component is forgotten when the next one is read. Behind most_read the
// other components are left out.
template <class Bytes>
TtfStatus read_composite_glyph(TtfFont *font, size_t start, Outline *out) {
  const double scale = out->scale;
  out->scale = 1;  // the components are put together in font units
  Cursor<Bytes> cursor = {font, start + header_size};
  TtfStatus status = ttf_done;
  uint32_t flags = component_more;
  while ((flags & component_more) != 0) {
    flags = cursor.number();
    const auto number = static_cast<int32_t>(cursor.number());
    if (cursor.past()) break;
    if (out->read > most_read) {
      status = ttf_bad_glyph;
      break;
    }
    const int64_t first = out->points;
    status = read_component<Bytes>(font, number, out);
    place_component(read_placement(&cursor, flags), first, out);
  }
  for (int64_t i = 0; i < std::min(out->points, out->room); ++i) {
    out->x[i] *= scale;
    out->y[i] *= scale;
  }
  return status;
}

// ---- characters

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
  // A last component that is blank has not told.
  if (too_small && *status == quorix::ttf_done) *status = quorix::ttf_arrays_too_small;
  *point_count = too_small ? 0 : quorix::saturated(out.points);
  *contour_count = quorix::saturated(out.contours);
  return 0;
}
