// SPDX-License-Identifier: MIT
//
// Characters of bitmap fonts on rasters and windows, pixel by pixel.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdio>

#include "core/device.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/formats/bdf_calls.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/character_tables.h"
#include "tests/support/environment_variable.h"
#include "tests/support/memory_files.h"
#include "window/opengl_depth.h"

namespace quorix::testing {
namespace {

constexpr int32_t width = 60, height = 50;
constexpr int32_t colour = 0x01050607;  // red 7, green 6, blue 5
constexpr int32_t angles[] = {0,   45,  90,  180,  270,  360,  30,  1,     -1,   -45, -90,
                              135, 225, 315, 89,   91,   359,  450, 720,   -270, 137, 12345,
                              -7,  60,  120, 3600, 1000, -180, 540, 10000, 233,  405, 36000};

const std::vector<BdfGlyphText> shapes = {
    {'A', 9, 8, 8, 0, 0, {"18", "24", "42", "81", "FF", "81", "81", "81"}},
    {'B', 9, 16, 3, -3, -5, {"8001", "7FFE", "8001"}},
    {'C', 9, 3, 4, 2, 7, {"FF", "00", "A5", "FF"}},  // more digits than the width needs
    {'D', 9, 20, 2, 1, 1, {"F00F0F", "ABCDEF"}},
    {'E', 9, 8, 2, 0, 0, {"fF", "1a8"}},   // small letters are skipped
    {'F', 9, 8, 2, 0, 0, {"8x8", "- 1"}},  // and all else
    {'G', 9, 0, 0, 0, 0, {}},
    {'H', 9, 8, 5, 0, 0, {"FF"}},              // fewer rows than the height says
    {'I', 9, 8, 1, 0, 0, {"80", "40", "20"}},  // and more
};

// The font under every name, with the current colour set.
class BdfDrawing : public ::testing::Test {
 protected:
  void TearDown() override {
    qqwfree();
    register_window_device(nullptr);
  }

  void open(bool rgba, const std::vector<BdfGlyphText> &glyphs = shapes) {
    qqwfree();
    const std::string text = bdf_text(glyphs);
    files_.put(font_file("dir", "complx10"), Bytes(text.begin(), text.end()));
    open_page(width, height, rgba);
    rgba_ = rgba;
    qqvclr(rgba ? colour : 3);
    ASSERT_EQ(select_font_in("dir", 1, 10).status, 0);
    clip_ = {0, 0, width - 1, height - 1};
  }

  void set_clip(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    clip_ = {x1, y1, x2, y2};
    for (int32_t i = 0; i < 4; ++i)
      qqwwid(11 + i, &clip_[static_cast<size_t>(i)], 1);
  }

  // The page with these pixels on it.
  void plot(Bytes *page, const std::vector<Pixel> &pixels) const {
    for (const auto &[x, y] : pixels) {
      if (x < clip_[0] || y < clip_[1] || x > clip_[2] || y > clip_[3]) continue;
      if (x < 0 || y < 0 || x >= width || y >= height) continue;
      const auto place = static_cast<size_t>(y * width + x);
      if (!rgba_) {
        (*page)[place] = 3;
      } else {
        for (size_t k = 0; k < 3; ++k)
          (*page)[4 * place + k] = static_cast<uint8_t>(7 - k);
      }
    }
  }

  void expect_drawn(const std::vector<BdfGlyphText> &font, int32_t code, int32_t x, int32_t y,
                    int32_t angle) {
    Bytes expected = page_bytes();
    const BdfGlyphText *glyph = drawn_glyph(font, code);
    if (glyph != nullptr) plot(&expected, literal_pixels(*glyph, x, y, angle));
    draw_character(code, x, y, angle);
    ASSERT_TRUE(page_bytes() == expected)
        << "code " << code << " at " << x << " " << y << ", angle " << angle;
  }

  MemoryFiles files_;
  std::array<int32_t, 4> clip_;
  bool rgba_ = false;
  const EnvironmentVariable no_variable_{"QUORIX", nullptr};
};

TEST_F(BdfDrawing, SetsThePixelsOfTheGlyph) {
  const std::vector<BdfGlyphText> font = {{'A', 9, 4, 3, 1, -1, {"80", "60", "10"}}};
  open(false, font);
  Bytes expected = page_bytes();
  // Column 1 is the first; the top row stands at height + y_offset - 1 = 1 above the base line 20.
  // kept: rounding goes up, so the row below it, -1 + 0.5, falls on the base line too.
  const Pixel pixels[] = {{11, 19}, {12, 20}, {13, 20}, {14, 20}};
  for (const Pixel &pixel : pixels)
    expected[static_cast<size_t>(width * pixel.y + pixel.x)] = 3;
  draw_character('A', 10, 20);
  EXPECT_EQ(page_bytes(), expected);
}

TEST_F(BdfDrawing, TurnsCounterClockwise) {
  const std::vector<BdfGlyphText> font = {{'A', 9, 4, 1, 0, 0, {"F0"}}};
  open(false, font);
  const struct {
    int32_t angle;
    Pixel pixels[4];
  } rows[] = {
      {0, {{30, 20}, {31, 20}, {32, 20}, {33, 20}}},
      {90, {{30, 20}, {30, 19}, {30, 18}, {30, 17}}},
      // kept: 3.1415927 is a little more than pi, and rounding goes up: -1 + 0.5 becomes 0.
      {180, {{30, 20}, {30, 20}, {29, 20}, {28, 20}}},
      {270, {{30, 20}, {30, 20}, {30, 21}, {30, 22}}},
  };
  for (const auto &row : rows) {
    open(false, font);
    Bytes expected = page_bytes();
    for (const Pixel &pixel : row.pixels)
      expected[static_cast<size_t>(width * pixel.y + pixel.x)] = 3;
    draw_character('A', 30, 20, row.angle);
    EXPECT_EQ(page_bytes(), expected) << row.angle;
  }
}

TEST_F(BdfDrawing, IsTheSameAtEveryAngleOnBothRasters) {
  for (const bool rgba : {false, true}) {
    open(rgba);
    for (const int32_t angle : angles)
      for (int32_t code = 'A'; code <= 'I'; ++code)
        ASSERT_NO_FATAL_FAILURE(expect_drawn(shapes, code, 30, 25, angle));
  }
}

TEST_F(BdfDrawing, LeavesTheAlphaOfPixelsAlone) {
  open(true);
  const Bytes before = page_bytes();
  int32_t alpha = 9;
  qqwwid(19, &alpha, 1);
  draw_character('A', 30, 25);
  const Bytes after = page_bytes();
  EXPECT_NE(after, before);
  for (size_t i = 3; i < after.size(); i += 4)
    ASSERT_EQ(after[i], before[i]);
}

TEST_F(BdfDrawing, StaysWithinTheClipRectangle) {
  RandomNumbers random(15);
  for (const bool rgba : {false, true}) {
    open(rgba);
    for (int i = 0; i < 300; ++i) {
      const int32_t x1 = random.between(-5, width + 5), y1 = random.between(-5, height + 5);
      set_clip(x1, y1, random.between(x1 - 3, width + 5), random.between(y1 - 3, height + 5));
      ASSERT_NO_FATAL_FAILURE(
          expect_drawn(shapes, random.between('A', 'D'), random.between(-10, width + 10),
                       random.between(-10, height + 10), angles[random.below(std::size(angles))]));
    }
  }
}

TEST_F(BdfDrawing, StaysOnThePageWhateverTheClipRectangle) {
  for (const bool rgba : {false, true}) {
    open(rgba);
    set_clip(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    for (const int32_t angle : {0, 30, 90, 180, 271}) {
      for (const int32_t x : {-4, 0, width - 3, width + 4})
        for (const int32_t y : {-4, 0, height - 3, height + 4})
          ASSERT_NO_FATAL_FAILURE(expect_drawn(shapes, 'A', x, y, angle));
      const Bytes before = page_bytes();
      for (const int32_t x : {INT_MIN, INT_MIN + 3, INT_MAX - 3, INT_MAX, 5})
        for (const int32_t y : {INT_MIN, INT_MAX, INT_MAX - 3})
          draw_character('B', x, y, angle);
      for (const int32_t x : {INT_MIN, INT_MAX})
        draw_character('B', x, 5, angle);
      EXPECT_EQ(page_bytes(), before);
    }
  }
}

TEST_F(BdfDrawing, TakesAnyAngle) {
  open(false);
  for (const int32_t angle : {INT_MAX, INT_MIN, 1000000000, -999999999})
    draw_character('A', 30, 25, angle);
}

TEST_F(BdfDrawing, LeavesGatheredLinesForLater) {
  open(false);
  const Bytes before = page_bytes();
  qqvdrw(0, 0, 3);
  qqvdrw(20, 0, 2);
  ASSERT_NO_FATAL_FAILURE(expect_drawn(shapes, 'A', 30, 25, 0));
  Bytes expected = page_bytes();
  EXPECT_EQ(expected[10], before[10]) << "the line is not there yet";
  for (size_t x = 0; x <= 20; ++x)
    expected[x] = 3;
  qqvclr(5);
  EXPECT_EQ(page_bytes(), expected) << "and comes in its own colour";
}

TEST_F(BdfDrawing, DrawsThe33rdGlyphForACharacterThatTheFontLacks) {
  std::vector<BdfGlyphText> font;
  for (int32_t i = 0; i < 40; ++i)
    font.push_back({1000 + i, 5, 8, 1, 0, 0, {i == 32 ? "FF" : "A5"}});
  font[5].encoding = 32;  // not this one
  open(false, font);
  for (const int32_t code : {65, 127, 200, 300, 33, -5, INT_MAX, INT_MIN})
    ASSERT_NO_FATAL_FAILURE(expect_drawn(font, code, 20, 20 + code % 7, 0));
  Bytes expected = page_bytes();
  plot(&expected, literal_pixels(font[32], 3, 3, 0));
  draw_character('A', 3, 3);
  EXPECT_EQ(page_bytes(), expected);

  font.resize(32);
  open(false, font);
  const Bytes before = page_bytes();
  draw_character('A', 20, 20);
  EXPECT_EQ(page_bytes(), before) << "there is no 33rd glyph";
}

TEST_F(BdfDrawing, FindsGlyphsByTheirUnicodeValues) {
  std::vector<BdfGlyphText> font;
  for (int32_t code = 32; code <= 264; ++code) {
    char digits[8];
    std::snprintf(digits, sizeof(digits), "%04X", static_cast<unsigned>(code * 173 & 0xFFFF));
    font.push_back({code < 127 ? code : 0, 5, 16, 1, 0, 0, {digits}});
  }
  // The letters by their values, in another order.
  for (int32_t code = 264; code >= 127; --code) {
    char digits[8];
    std::snprintf(digits, sizeof(digits), "%04X", static_cast<unsigned>(code * 211 & 0xFFFF));
    font[static_cast<size_t>(127 - 32 + 264 - code)] = {
        literal_unicode(code), 5, 16, 1, 0, 0, {digits}};
  }
  open(false, font);
  for (int32_t code = 32; code <= 270; ++code)
    ASSERT_NO_FATAL_FAILURE(expect_drawn(font, code, code % 40, code / 8, 0));
}

TEST_F(BdfDrawing, DoesNothingWithoutAFont) {
  qqwfree();
  draw_character('A', 5, 5);
  open_page(width, height, false);
  const Bytes before = page_bytes();
  draw_character('A', 5, 5);
  EXPECT_EQ(page_bytes(), before);
  open(false);
  qqvfin();
  draw_character('A', 5, 5);
}

TEST_F(BdfDrawing, DrawsOnTheRasterFromDevice101On) {
  open(false);
  Bytes before = page_bytes();
  draw_character('A', 30, 25, 0, 100);
  EXPECT_EQ(page_bytes(), before) << "there is no window";
  for (const int32_t device : {101, 102, 1000, INT_MAX}) {
    open(false);
    before = page_bytes();
    draw_character('A', 30, 25, 0, device);
    EXPECT_NE(page_bytes(), before) << device;
  }
}

// ---- windows

Bytes window_bytes;
PixelOrder window_order;
std::vector<Pixel> set_pixels;
std::vector<Bytes> set_colours;

void note_pixel(OutputContext *, int32_t x, int32_t y, uint8_t r, uint8_t g, uint8_t b) {
  set_pixels.push_back({x, y});
  set_colours.push_back({r, g, b});
}

bool hand_out_window(OutputContext *, DeviceBitmap *bitmap) {
  if (window_order == PixelOrder::set_pixel) {
    *bitmap = {nullptr, 0, width, height, 32, window_order, note_pixel};
  } else {
    *bitmap = {window_bytes.data(), size_t{4} * width, width, height, 32, window_order, nullptr};
  }
  return true;
}

bool hand_out_nothing(OutputContext *, DeviceBitmap *) {
  return false;
}

const Device window = {nullptr, nullptr, nullptr, nullptr, nullptr, hand_out_window};
const Device closed_window = {nullptr, nullptr, nullptr, nullptr, nullptr, hand_out_nothing};

class BdfOnAWindow : public BdfDrawing {
 protected:
  // The pixels that a character must set.
  static std::vector<Pixel> visible(int32_t code, int32_t x, int32_t y, int32_t angle) {
    std::vector<Pixel> pixels;
    for (const Pixel &pixel : literal_pixels(*drawn_glyph(shapes, code), x, y, angle))
      if (pixel.x >= 0 && pixel.y >= 0 && pixel.x < width && pixel.y < height)
        pixels.push_back(pixel);
    return pixels;
  }
};

TEST_F(BdfOnAWindow, WritesItsBitmap) {
  open(true);
  register_window_device(&window);
  output_context->window.direct_bitmap = 1;
  window_order = PixelOrder::bgr;
  for (const int32_t angle : {0, 45, 90, 200}) {
    window_bytes.assign(size_t{4} * width * height, 99);
    Bytes expected = window_bytes;
    for (const Pixel &pixel : visible('A', 56, 3, angle)) {
      const auto place = static_cast<size_t>(4 * (width * pixel.y + pixel.x));
      for (size_t k = 0; k < 3; ++k)
        expected[place + k] = static_cast<uint8_t>(5 + k);  // blue first
    }
    const Bytes raster = page_bytes();
    draw_character('A', 56, 3, angle, 100);
    EXPECT_EQ(window_bytes, expected) << angle;
    EXPECT_EQ(page_bytes(), raster);
  }
}

TEST_F(BdfOnAWindow, SetsPixelByPixelWhereThereIsNoMemory) {
  open(true);
  register_window_device(&window);
  window_order = PixelOrder::set_pixel;
  for (const int32_t angle : {0, 45, 270}) {
    set_pixels.clear();
    set_colours.clear();
    draw_character('D', 50, 10, angle, 72);
    EXPECT_EQ(set_pixels, visible('D', 50, 10, angle)) << angle;
    for (const Bytes &rgb : set_colours)
      EXPECT_EQ(rgb, (Bytes{7, 6, 5}));
  }
}

TEST_F(BdfOnAWindow, DrawsNothingWhereItHasNoBitmap) {
  open(true);
  register_window_device(&closed_window);
  const Bytes raster = page_bytes();
  draw_character('A', 30, 25, 0, 100);
  EXPECT_EQ(page_bytes(), raster);
}

std::vector<Pixel> gl_places;
std::vector<Bytes> gl_pixels;
Pixel gl_position;

void note_position(int32_t x, int32_t y) {
  gl_position = {x, y};
}
void note_drawing(int32_t w, int32_t h, uint32_t format, uint32_t type, const void *pixels) {
  constexpr uint32_t gl_rgb = 0x1907, gl_unsigned_byte = 0x1401;
  EXPECT_EQ(w, 1);
  EXPECT_EQ(h, 1);
  EXPECT_EQ(format, gl_rgb);
  EXPECT_EQ(type, gl_unsigned_byte);
  const auto *bytes = static_cast<const uint8_t *>(pixels);
  gl_places.push_back(gl_position);
  gl_pixels.push_back(Bytes(bytes, bytes + 3));
}

TEST_F(BdfOnAWindow, DrawsThroughOpenGlFromTheLowerEdge) {
  open(true);
  static GlCalls calls = {};
  calls.raster_position = note_position;
  calls.draw_pixels = note_drawing;
  Device gl_window = window;
  gl_window.depth = &opengl_depth_calls;
  use_gl_calls(&calls);
  register_window_device(&gl_window);
  output_context->window.opengl_on = 1;
  gl_places.clear();
  gl_pixels.clear();
  draw_character('A', 30, 25, 45, 81);
  std::vector<Pixel> expected = visible('A', 30, 25, 45);
  for (Pixel &pixel : expected)
    pixel.y = height - 1 - pixel.y;
  EXPECT_EQ(gl_places, expected);
  for (const Bytes &rgb : gl_pixels)
    EXPECT_EQ(rgb, (Bytes{7, 6, 5}));
}

}  // namespace
}  // namespace quorix::testing
