// SPDX-License-Identifier: MIT
//
// qqbdf2: one character of a bitmap font, turned about its origin, pixel by pixel.
//
// A pixel goes where its column and row land when they are turned and rounded, so at slanted angles
// a glyph may have holes. Rounding goes toward zero from half a unit up on both sides: upright, the
// columns -1 and 0, and the rows -1 and 0, fall together. Kept: the fonts are read that way
// everywhere.
#include <algorithm>

#include "base/char_codes.h"
#include "base/numbers.h"
#include "base/trig.h"
#include "core/bitmap_pixels.h"
#include "core/device.h"
#include "formats/bdf.h"
#include "quorix/fonts.h"

namespace quorix {

namespace {

constexpr int32_t fallback_glyph = 32;  // a place in the file, not a code
constexpr double told_pi = 3.1415927;   // kept: its error shows at 180 and 270 degrees

struct Turn {
  int32_t angle;
  double sine, cosine;
};

// The last angle is remembered, since a text has one for all its characters.
Turn turn_by(int32_t angle) {
  static Turn last = {0, 0.0, 1.0};
  if (angle == last.angle) return last;
  last = {angle, 1.0, 0.0};
  if (angle == 0) {
    last = {0, 0.0, 1.0};
  } else if (angle != 90) {
    const double radians = angle * told_pi / 180.0;
    last = {angle, portable_sin(radians), portable_cos(radians)};
  }
  return last;
}

// Where pixels may be written; corners inclusive.
struct Bounds {
  int64_t x1, y1, x2, y2;
};

Bounds clip_bounds(const OutputContext &context) {
  return {context.page.clip_x1, context.page.clip_y1, context.page.clip_x2, context.page.clip_y2};
}

Bounds page_bounds(const OutputContext &context, const DeviceBitmap &bitmap) {
  const Bounds clip = clip_bounds(context);
  return {std::max<int64_t>(clip.x1, 0), std::max<int64_t>(clip.y1, 0),
          std::min<int64_t>(clip.x2, bitmap.width - 1),
          std::min<int64_t>(clip.y2, bitmap.height - 1)};
}

struct Text {
  const BdfFont *font;
  const BdfGlyph *glyph;
  int32_t x, y;
  Turn turn;
};

// Where a column and a row of a glyph come to lie, from the text origin; y grows upward.
struct Offset {
  int32_t x, y;
};

// Calls put(x, y) for each pixel of the glyph that lies within the bounds.
template <class Place, class Put>
void draw_pixels(const Text &text, const Bounds &bounds, Place place, Put put) {
  const BdfGlyph &glyph = *text.glyph;
  const int64_t left = glyph.box[2];
  const int64_t top = int64_t{glyph.box[1]} + glyph.box[3] - 1;
  const BdfPixel *const pixels = text.font->pixels.get() + glyph.first_pixel;
  for (size_t i = 0; i < glyph.pixel_count; ++i) {
    const Offset offset = place(left + pixels[i].column, top - pixels[i].row);
    const int64_t x = int64_t{text.x} + offset.x;
    const int64_t y = int64_t{text.y} - offset.y;
    if (x < bounds.x1 || x > bounds.x2 || y < bounds.y1 || y > bounds.y2) continue;
    put(static_cast<int32_t>(x), static_cast<int32_t>(y));
  }
}

// Upright, the rounding of whole numbers is known, if they are no larger than fonts are.
bool is_plain(const Text &text) {
  constexpr int64_t limit = 1000000;
  const auto *const box = text.glyph->box;
  return text.turn.angle == 0 && magnitude(box[1]) < limit && magnitude(box[2]) < limit &&
         magnitude(box[3]) < limit;
}

int32_t rounded(int64_t whole) {
  return static_cast<int32_t>(whole < 0 ? whole + 1 : whole);
}

template <class Put>
void draw_glyph(const Text &text, const Bounds &bounds, Put put) {
  const double sine = text.turn.sine, cosine = text.turn.cosine;
  const auto turned = [sine, cosine](int64_t column, int64_t row) {
    const auto c = static_cast<double>(column), r = static_cast<double>(row);
    return Offset{round_to_int32(c * cosine - r * sine), round_to_int32(c * sine + r * cosine)};
  };
  const auto upright = [](int64_t column, int64_t row) {
    return Offset{rounded(column), rounded(row)};
  };
  if (is_plain(text)) {
    draw_pixels(text, bounds, upright, put);
  } else {
    draw_pixels(text, bounds, turned, put);
  }
}

// One pixel at a time, by a window that has no bitmap.
void draw_by_calls(OutputContext *context, const DepthCalls &calls, const Text &text) {
  draw_glyph(text, clip_bounds(*context),
             [&](int32_t x, int32_t y) { calls.text_pixel(context, x, y); });
}

void draw_by_set_pixel(OutputContext *context, const DeviceBitmap &bitmap, const Text &text) {
  draw_glyph(text, clip_bounds(*context), [&](int32_t x, int32_t y) {
    bitmap.set_pixel(context, x, y, context->colours.colour_r, context->colours.colour_g,
                     context->colours.colour_b);
  });
}

// Three bytes of each pixel; a fourth, the raster's alpha too, stays as it is.
template <class Layout>
void draw_rgb(const OutputContext &context, const Layout &pixels, const Text &text,
              const Bounds &bounds) {
  const Colours &colours = context.colours;
  const Rgb colour = {colours.colour_r, colours.colour_g, colours.colour_b};
  draw_glyph(text, bounds, [&](int32_t x, int32_t y) { pixels.put_rgb(x, y, colour); });
}

void draw_in_memory(const OutputContext &context, const DeviceBitmap &bitmap, const Text &text,
                    uint8_t index) {
  const Bounds bounds = page_bounds(context, bitmap);
  if (bitmap.order == PixelOrder::rgba) {
    draw_rgb(context, RgbaLayout(bitmap), text, bounds);
  } else if (bitmap.order == PixelOrder::bgr) {
    draw_rgb(context, BgrLayout(bitmap), text, bounds);
  } else {
    const IndexLayout pixels(bitmap);
    draw_glyph(text, bounds, [&](int32_t x, int32_t y) { pixels.put_byte(x, y, index); });
  }
}

void draw_on_device(OutputContext *context, int32_t number, const Text &text) {
  const Device *const device = device_for(context, number);
  if (device == nullptr) return;
  const bool window = window_device(number);
  if (window && context->window.opengl_on != 0) {
    if (device->depth != nullptr) draw_by_calls(context, *device->depth, text);
    return;
  }
  DeviceBitmap bitmap = {};
  if (!device->bitmap(context, &bitmap)) return;
  const bool single = bitmap.order == PixelOrder::set_pixel ||
                      (window && context->window.direct_bitmap == 0 && bitmap.set_pixel != nullptr);
  if (single) {
    if (bitmap.set_pixel != nullptr) draw_by_set_pixel(context, bitmap, text);
  } else {
    draw_in_memory(*context, bitmap, text,
                   window ? context->colours.window_colour_index : context->colours.colour_index);
  }
}

// Kept: what a font lacks is drawn as its 33rd glyph, whichever that is.
const BdfGlyph *glyph_to_draw(const BdfFont &font, int32_t code) {
  const BdfGlyph *const glyph = find_bdf_glyph(font, map_char_code(code, false, charset_unicode));
  if (glyph != nullptr) return glyph;
  return fallback_glyph < font.glyph_count ? font.glyphs.get() + fallback_glyph : nullptr;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqbdf2(const int32_t *code, const int32_t *x, const int32_t *y,
                          const int32_t *angle, const int32_t *device, const void * /*unused*/) {
  quorix::OutputContext *const context = quorix::output_context;
  if (context == nullptr || context->fonts.bdf_current == nullptr) return 0;
  const quorix::BdfFont &font = *context->fonts.bdf_current;
  const quorix::BdfGlyph *const glyph = quorix::glyph_to_draw(font, *code);
  if (glyph == nullptr || glyph->pixel_count == 0) return 0;
  const quorix::Text text = {&font, glyph, *x, *y, quorix::turn_by(*angle)};
  quorix::draw_on_device(context, *device, text);
  return 0;
}
