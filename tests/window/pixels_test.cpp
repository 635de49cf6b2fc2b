// SPDX-License-Identifier: MIT
// Direct access, pixels in and out, the two maps of palette displays, and raster files of windows.

#include <cstdio>
#include <cstring>
#include <iomanip>
#include <random>
#include <sstream>

#include "core/device.h"
#include "quorix/quorix.h"
#include "tests/support/failing_memory.h"
#include "tests/support/temporary_folder.h"
#include "tests/window/recording_system.h"
#include "window/direct_bitmap.h"

namespace quorix::testing {
namespace {

using Bytes = std::vector<uint8_t>;

void load_greys(uint8_t kind = 1) {
  int32_t table[256];
  for (int32_t i = 0; i < 256; ++i)
    table[i] = i * 0x010101;
  qqwvlt(kind, table);
}

int32_t image(int32_t mode) {
  int32_t status = -1;
  qqwimg(mode, &status);
  return status;
}

int32_t pixel(int32_t x, int32_t y, int32_t wanted) {
  int32_t colour = wanted;
  qqwrpx(x, y, &colour);
  return colour;
}

class Pixels : public RecordedWindow {
 protected:
  // A window of 4 x 2 pixels whose bitmap's bytes are all 0xEE.
  static void start(int32_t bits, WindowWish wish = {}) {
    recording.screen.bits = bits;
    wish.width = 4;
    wish.height = 2;
    wish.options = 100;
    open_recorded(wish);
    load_greys();
    recording.bytes.assign(64, 0xEE);
    forget();
  }
  static Bytes first_bytes(size_t count) {
    return {recording.bytes.begin(), recording.bytes.begin() + static_cast<ptrdiff_t>(count)};
  }
};

// ---- Maps

TEST_F(Pixels, IndicesBecomeBytesOfTheDisplayAndBack) {
  struct Case {
    bool compressed;
    int32_t bits;
    uint8_t mode;
    int32_t from, to;
  };
  const Case into[] = {{true, 8, 0, 0, 10},    {true, 8, 0, 1, 11},   {true, 8, 0, 2, 11},
                       {true, 8, 0, 255, 138}, {true, 8, 2, 130, 12}, {true, 8, 1, 7, 7},
                       {true, 4, 0, 255, 15},  {true, 4, 0, 0, 0},    {true, 4, 0, 100, 6},
                       {true, 4, 1, 18, 2},    {false, 8, 0, 5, 15},  {false, 8, 2, 250, 4},
                       {false, 8, 1, 5, 5}};
  const Case back[] = {{true, 8, 0, 10, 0},    {true, 8, 0, 11, 1},  {true, 8, 0, 12, 3},
                       {true, 8, 0, 138, 255}, {true, 8, 2, 12, 2},  {true, 8, 1, 7, 7},
                       {true, 4, 0, 15, 255},  {true, 4, 0, 0, 0},   {true, 4, 0, 7, 118},
                       {true, 4, 1, 3, 3},     {false, 8, 0, 15, 5}, {false, 8, 2, 4, 250},
                       {false, 8, 1, 5, 5}};
  start(8);
  WindowSet *set = current_window_set();
  const auto prepare = [&](const Case &c) {
    set->image_compressed = c.compressed;
    set->colour_mode = c.mode;
    output_context->page.screen_bits = c.bits;
  };
  for (const Case &c : into) {
    prepare(c);
    EXPECT_EQ(index_to_pixel(output_context, c.from), c.to) << c.from;
  }
  for (const Case &c : back) {
    prepare(c);
    EXPECT_EQ(pixel_to_index(output_context, static_cast<uint8_t>(c.from)), c.to) << c.from;
  }
}

TEST_F(Pixels, OnSharedEntriesOddIndicesAndZeroComeBackAndEvenOnesLoseOne) {
  start(8);
  current_window_set()->image_compressed = true;
  for (int32_t i = 0; i < 256; ++i) {
    const int32_t expected = i != 0 && i % 2 == 0 ? i - 1 : i;
    EXPECT_EQ(pixel_to_index(output_context, index_to_pixel(output_context, i)), expected);
  }
}

// ---- Direct access

TEST_F(Pixels, DirectAccessCopiesTheBitmapOutAndIn) {
  start(32);
  EXPECT_EQ(image(0), 0);
  EXPECT_EQ(taken(), (Calls{"begin access", "read bits"}));
  qqwwpx(1, 0, 0x1332211);
  EXPECT_EQ(first_bytes(8), (Bytes(8, 0xEE)));  // nothing is seen before it ends
  EXPECT_EQ(image(1), 0);
  EXPECT_EQ(taken(), (Calls{"write bits", "end access(false)"}));
  EXPECT_EQ(first_bytes(9), (Bytes{0xEE, 0xEE, 0xEE, 0xEE, 0x33, 0x22, 0x11, 0xEE, 0xEE}));
  EXPECT_EQ(image(1), 0);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(Pixels, WithoutABufferTheBitmapIsShownWhenAccessEnds) {
  start(24, {.buffering = 1});
  EXPECT_EQ(image(0), 0);
  EXPECT_EQ(image(1), 0);
  EXPECT_EQ(taken(), (Calls{"begin access", "read bits", "write bits", "end access(true)"}));
}

TEST_F(Pixels, OnSixteenBitsPixelsGoThroughTheCanvas) {
  start(16, {.buffering = 1});
  EXPECT_EQ(image(0), 0);
  forget();
  qqwwpx(1, 0, 0x1332211);
  qqwfll(2, 1, 2, 1, 0x1000005);
  EXPECT_EQ(taken(), (Calls{"pixel 1,0 332211", "text colour 5", "pen 0 1 5", "pixel 2,1 5",
                            "pixel 3,1 5"}));
  recording.pixel_colour = 0x332211;
  EXPECT_EQ(pixel(1, 0, 1), 0x1332211);
  EXPECT_EQ(image(1), 0);
  EXPECT_EQ(taken(), Calls{"end access(false)"});
}

TEST_F(Pixels, AccessThatCannotBeHadIsStatus1) {
  EXPECT_EQ(image(0), 1);  // no window
  start(32);
  recording.bitmaps_fail = true;
  EXPECT_EQ(image(0), 1);
  recording.bitmaps_fail = false;
  {
    const FailingMemory memory(1);
    EXPECT_EQ(image(0), 1);
  }
  EXPECT_EQ(output_context->window.direct_bitmap, 0);
  EXPECT_EQ(image(0), 0);
}

TEST_F(Pixels, SelectingAnotherWindowEndsDirectAccess) {
  start(32);
  open_window(73);
  image(0);
  forget();
  qqwsel(1);
  EXPECT_EQ(taken()[0], "write bits");
  EXPECT_EQ(output_context->window.direct_bitmap, 0);
}

// ---- Drawing into the copy

TEST_F(Pixels, LinesAndRectanglesGoIntoTheCopy) {
  start(32);
  image(0);
  forget();
  qqwfll(3, 0, 5, 1, 0x10000FF);  // cut at the right edge
  qqwdrw(-5, 1, 3);
  qqwdrw(1, 1, 2);
  qqwdrw(0, 0, 3);
  const Calls calls = taken();
  EXPECT_EQ(calls, (Calls{"text colour ff", "pen 0 1 ff"}));
  image(1);
  const uint8_t e = 0xEE;
  const uint8_t r = 0xFF;
  EXPECT_EQ(first_bytes(32), (Bytes{e, e, e, e, e, e, e, e, e, e, e, e, 0, 0, r, e,
                                    0, 0, r, e, 0, 0, r, e, e, e, e, e, e, e, e, e}));
}

TEST_F(Pixels, OnAPaletteTheCopyTakesTheSlotAsItIs) {
  start(8);
  image(0);
  qqwfll(0, 0, 2, 1, 9);  // slot (9 + 1) / 2, without the system's 10 entries
  qqwwpx(2, 0, 9);        // with them
  image(1);
  EXPECT_EQ(first_bytes(4), (Bytes{5, 5, 15, 0xEE}));
}

// One step of the error at a time, over every step of the line.
void literal_segment(std::vector<Bytes> *picture, int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
  const int64_t dx = std::abs(x2 - x1);
  const int64_t dy = std::abs(y2 - y1);
  const int64_t sx = x2 < x1 ? -1 : 1;
  const int64_t sy = y2 < y1 ? -1 : 1;
  const auto plot = [&] {
    const bool on =
        y1 >= 0 && x1 >= 0 && y1 < int64_t(picture->size()) && x1 < int64_t((*picture)[0].size());
    if (on) (*picture)[size_t(y1)][size_t(x1)] = 1;
  };
  const bool along_y = dx <= dy;
  int64_t error = -(along_y ? dy : dx) / 2;
  plot();
  for (int64_t step = 0; step < (along_y ? dy : dx); ++step) {
    (along_y ? y1 : x1) += along_y ? sy : sx;
    error += along_y ? dx : dy;
    if (error > 0) {
      error -= along_y ? dy : dx;
      (along_y ? x1 : y1) += along_y ? sx : sy;
    }
    plot();
  }
}

TEST_F(Pixels, DirectSegmentsAreThoseOfTheirStepByStepRule) {
  constexpr int32_t width = 23;
  constexpr int32_t height = 17;
  recording.screen.bits = 8;
  open_recorded({.width = width, .height = height, .options = 100});
  load_greys();
  image(0);
  WindowSet *set = current_window_set();
  std::mt19937 random(5);
  std::uniform_int_distribution<int32_t> near(-30, 50);
  for (int32_t i = 0; i < 3000; ++i) {
    const CanvasPoint from = {near(random), near(random)};
    const CanvasPoint to = {near(random) * (i % 7 == 0 ? 90 : 1), near(random)};
    std::memset(set->image_bits, 0, set->image_size);
    output_context->colours.window_colour_index = 1;
    draw_direct_segment(output_context, from, to);
    std::vector<Bytes> expected(height, Bytes(width, 0));
    literal_segment(&expected, from.x, from.y, to.x, to.y);
    for (int32_t y = 0; y < height; ++y) {
      const uint8_t *row = direct_pixel(set, 0, y);
      ASSERT_EQ(Bytes(row, row + width), expected[static_cast<size_t>(y)])
          << from.x << "," << from.y << " to " << to.x << "," << to.y;
    }
  }
  draw_direct_segment(output_context, {INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX});
  draw_direct_segment(output_context, {INT32_MAX, 3}, {INT32_MIN, 4});
}

// ---- Rows and rectangles

TEST_F(Pixels, TransparentPixelsOfARowStayAndThePositionAdvances) {
  start(24);
  option(32, 7);
  image(0);
  const uint8_t row[3] = {5, 7, 6};
  qqwrow(row, 0, 0, 3);
  const uint8_t triples[6] = {7, 7, 7, 1, 2, 3};
  qqwrow(triples, 0, 1, -2);
  qqwwpx(3, 0, 7);
  image(1);
  EXPECT_EQ(first_bytes(9), (Bytes{5, 5, 5, 0xEE, 0xEE, 0xEE, 6, 6, 6}));
  const Bytes second(recording.bytes.begin() + 12, recording.bytes.begin() + 18);
  EXPECT_EQ(second, (Bytes{0xEE, 0xEE, 0xEE, 3, 2, 1}));
}

TEST_F(Pixels, WhatLiesOffTheBitmapIsSkippedAndReadsAsZero) {
  start(32);
  image(0);
  const uint8_t row[6] = {1, 2, 3, 4, 5, 6};
  qqwrow(row, -1, 0, 6);
  qqwrow(row, 0, 2, 6);
  qqwrow(row, 0, -1, 6);
  qqwwpx(4, 0, 9);
  uint8_t read[12] = {};
  std::memset(read, 99, sizeof(read));
  qqwrdr(read, -1, -1, 6, 2);
  EXPECT_EQ(Bytes(read, read + 12), (Bytes{0, 0, 0, 0, 0, 0, 0, 2, 3, 4, 5, 0}));
  EXPECT_EQ(pixel(-1, 0, 1), 0);
  EXPECT_EQ(pixel(0, 2, 0), 0);
}

TEST_F(Pixels, ARectangleReadUpwardBeginsWithItsBottomRow) {
  start(32);
  image(0);
  const uint8_t top[4] = {1, 2, 3, 4};
  const uint8_t bottom[4] = {5, 6, 7, 8};
  qqwrow(top, 0, 0, 4);
  qqwrow(bottom, 0, 1, 4);
  uint8_t read[4] = {};
  qqwrdr(read, 1, 1, 2, -2);
  EXPECT_EQ(Bytes(read, read + 4), (Bytes{6, 7, 2, 3}));
  qqwrdr(read, 1, 0, 2, 2);
  EXPECT_EQ(Bytes(read, read + 4), (Bytes{2, 3, 6, 7}));
}

TEST_F(Pixels, APixelReadsTheSameByItselfAndInARectangle) {
  for (const int32_t bits : {24, 32}) {
    start(bits);
    image(0);
    qqwwpx(2, 1, 0x1102030);
    uint8_t rgb[3] = {};
    qqwrdr(rgb, 2, 1, -1, 1);
    EXPECT_EQ(Bytes(rgb, rgb + 3), (Bytes{0x30, 0x20, 0x10}));
    EXPECT_EQ(pixel(2, 1, 1), 0x1102030);
    qqwwpx(2, 1, 77);
    EXPECT_EQ(pixel(2, 1, 0), 77);
    qqwfree();
  }
}

TEST_F(Pixels, WithoutDirectAccessPixelsAreSetOneByOneAndReadFromACopy) {
  start(8);
  const uint8_t row[2] = {1, 3};
  qqwrow(row, 1, 0, 2);
  EXPECT_EQ(taken(), (Calls{"pixel 1,0 1000001", "pixel 2,0 1000002"}));
  recording.bytes.assign(64, 11);
  EXPECT_EQ(pixel(0, 0, 0), 1);
  EXPECT_EQ(taken(), (Calls{"begin access", "read bits", "end access(false)"}));
}

TEST_F(Pixels, OpenGlTakesRowsInStretches) {
  open_recorded({.device = 81});
  load_greys();
  option(32, 7);
  forget();
  const uint8_t row[4] = {1, 7, 2, 3};
  qqwrow(row, 10, 20, 4);
  EXPECT_EQ(taken(), (Calls{"glRasterPos2i(10, 129)", "glDrawPixels(1, 1, 6408, 5121)", "1 1 1 255",
                            "glRasterPos2i(12, 129)", "glDrawPixels(2, 1, 6408, 5121)",
                            "2 2 2 255 3 3 3 255"}));
  recording.gl_rows = {9, 8, 7};
  uint8_t read[6] = {};
  qqwrdr(read, 0, 0, -2, 1);
  EXPECT_EQ(taken(), Calls{"glReadPixels(0, 149, 2, 1, 6407, 5121)"});
  EXPECT_EQ(Bytes(read, read + 6), (Bytes{9, 8, 7, 9, 8, 7}));
  EXPECT_EQ(image(0), 0);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(Pixels, WithoutAWindowEverythingReadsAsZero) {
  uint8_t read[6] = {1, 1, 1, 1, 1, 1};
  qqwrdr(read, 0, 0, -2, -1);
  EXPECT_EQ(Bytes(read, read + 6), Bytes(6, 0));
  EXPECT_EQ(pixel(0, 0, 1), 0);
  qqwrow(read, 0, 0, 3);
  qqwwpx(0, 0, 1);
  EXPECT_EQ(taken(), Calls{});
}

// ---- The window as a device

TEST_F(Pixels, AWriterReadsTheWindowAndNoDeviceIsLeftBehind) {
  start(32);
  EXPECT_NE(device_for(output_context, 72), nullptr);
  DeviceBitmap bitmap = {};
  const Device *device = device_for(output_context, 72);
  ASSERT_TRUE(device->bitmap(output_context, &bitmap));
  EXPECT_EQ(bitmap.order, PixelOrder::set_pixel);
  image(0);
  ASSERT_TRUE(device->bitmap(output_context, &bitmap));
  EXPECT_EQ(bitmap.order, PixelOrder::bgr);
  EXPECT_EQ(bitmap.row_bytes, 16U);
  EXPECT_EQ(bitmap.width, 4);
  qqwfree();
  int32_t value = 0;
  qqwwid(11, &value, 1);
  EXPECT_EQ(device_for(output_context, 72), nullptr);
}

TEST_F(Pixels, ALayerTakesThePictureAndIsCompositedWhenAccessEnds) {
  start(32);
  recording.bytes.assign(32, 0);
  recording.bytes[4] = 30;  // blue, green and red of pixel (1, 0)
  recording.bytes[5] = 20;
  recording.bytes[6] = 10;
  int32_t status = -1;
  qqwabl(1, &status);
  ASSERT_EQ(status, 0);
  forget();
  EXPECT_EQ(image(0), 0);
  EXPECT_EQ(taken(), (Calls{"begin access", "read bits", "end access(false)"}));
  uint8_t *layer = output_context->buffers.raster.pixels;
  EXPECT_EQ(Bytes(layer + 4, layer + 8), (Bytes{10, 20, 30, 0}));
  const uint8_t opaque[4] = {1, 2, 3, 255};
  std::memcpy(layer + 8, opaque, 4);
  EXPECT_EQ(image(1), 0);
  EXPECT_EQ(Bytes(recording.bytes.begin() + 8, recording.bytes.begin() + 11), (Bytes{3, 2, 1}));
  EXPECT_EQ(recording.bytes[4], 30);
}

// ---- Raster files

// 15 letters, 5 of the producer, nine fields of width 5 with a blank between, 7 blanks.
std::string header_text(const std::vector<int32_t> &numbers) {
  std::ostringstream text;
  text << "!Bitmap QUORIX "
       << "WIN  ";
  for (size_t i = 0; i < numbers.size(); ++i)
    text << (i == 0 ? "" : " ") << std::setw(5) << numbers[i];
  text << "       ";
  return text.str();
}

class WindowFile : public Pixels {
 protected:
  std::string name() const { return folder_.file("a.img"); }
  int32_t file(int32_t mode) const {
    int32_t status = -1;
    qqwfil(name().c_str(), mode, &status);
    return status;
  }
  // A file of the nine numbers and these bytes.
  void make(const std::vector<int32_t> &numbers, const Bytes &bytes) const {
    std::string text = "!Bitmap QUORIX VIRT ";
    char field[16];
    for (size_t i = 0; i < numbers.size(); ++i) {
      std::snprintf(field, sizeof(field), i == 0 ? "%5d" : " %5d", numbers[i]);
      text += field;
    }
    text.resize(80, ' ');
    for (const uint8_t byte : bytes)
      text.push_back(static_cast<char>(byte));
    write_whole_file(name(), Bytes(text.begin(), text.end()));
  }
  std::string content() const {
    const Bytes bytes = read_whole_file(name());
    return {bytes.begin(), bytes.end()};
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(WindowFile, IsTheRawImageOfTheBitmap) {
  start(32);
  ASSERT_EQ(file(0), 0);
  EXPECT_EQ(content().substr(0, 80), header_text({4, 2, 32, 16, 32, 32, 0, 4, 0}));
  EXPECT_EQ(content().size(), 80U + 32U);
  EXPECT_EQ(static_cast<uint8_t>(content()[80]), 0xEE);
}

TEST_F(WindowFile, OfAPaletteTellsItsFirstEntry) {
  start(8, {.colour_mode = 2});
  ASSERT_EQ(file(0), 0);
  EXPECT_EQ(content().substr(0, 80), header_text({4, 2, 8, 4, 8, 32, 0, 2, 10}));
}

TEST_F(WindowFile, ComesBackByteForByte) {
  for (const int32_t bits : {8, 16, 24, 32}) {
    start(bits, {.colour_mode = 2});
    for (size_t i = 0; i < recording.bytes.size(); ++i)
      recording.bytes[i] = static_cast<uint8_t>(7 * i);
    const Bytes before = first_bytes(8);
    ASSERT_EQ(file(0), 0);
    recording.bytes.assign(64, 1);
    EXPECT_EQ(file(1), 0) << bits;
    EXPECT_EQ(first_bytes(8), before) << bits;
    qqwfree();
  }
}

TEST_F(WindowFile, WiderThanTheWindowIsCutAtItsEdge) {
  start(32);
  Bytes bytes;
  for (uint8_t i = 0; i < 18; ++i)
    bytes.push_back(i);
  make({6, 1, 24, 18, 24, 32, 0, 5, 0}, bytes);
  ASSERT_EQ(file(1), 0);
  EXPECT_EQ(first_bytes(18),
            (Bytes{2, 1, 0, 0xEE, 5, 4, 3, 0xEE, 8, 7, 6, 0xEE, 11, 10, 9, 0xEE, 0xEE, 0xEE}));
}

TEST_F(WindowFile, OfOlderIndicesIsSpreadOut) {
  start(32);
  make({3, 1, 8, 3, 8, 32, 0, 0, 1}, {1, 2, 3});
  ASSERT_EQ(file(1), 0);
  EXPECT_EQ(first_bytes(11), (Bytes{0, 0, 0, 0xEE, 1, 1, 1, 0xEE, 3, 3, 3}));
}

TEST_F(WindowFile, OfFourBytesWithoutAKnownOrderIsBlueFirst) {
  start(24);
  make({1, 1, 32, 4, 32, 32, 0, 2, 0}, {1, 2, 3, 4});
  ASSERT_EQ(file(1), 0);
  EXPECT_EQ(first_bytes(3), (Bytes{1, 2, 3}));
  make({1, 1, 32, 4, 32, 32, 0, 6, 0}, {1, 2, 3, 4});
  ASSERT_EQ(file(1), 0);
  EXPECT_EQ(first_bytes(3), (Bytes{3, 2, 1}));
}

TEST_F(WindowFile, EntriesOfAnotherFirstOneAreShifted) {
  start(8, {.colour_mode = 2});
  make({4, 2, 8, 4, 8, 32, 0, 2, 3}, {3, 4, 5, 6, 250, 0, 0, 0});
  ASSERT_EQ(file(1), 0);
  EXPECT_EQ(first_bytes(5), (Bytes{10, 11, 12, 13, 1}));
}

TEST_F(WindowFile, DepthsThatCannotBeLoadedAreStatus4AndOthersNoFile) {
  start(32);
  for (const int32_t bits : {1, 4, 7, 16, 0, -3}) {
    make({1, 1, bits, 4, bits, 32, 0, 0, 0}, {1, 2, 3, 4});
    EXPECT_EQ(file(1), 4) << bits;
  }
  make({1, 1, 12, 4, 12, 32, 0, 0, 0}, {1, 2, 3, 4});
  EXPECT_EQ(file(1), 3);
  write_whole_file(name(), {'n', 'o', 'n', 'e'});
  EXPECT_EQ(file(1), 3);
  std::remove(name().c_str());
  EXPECT_EQ(file(1), 1);
  qqwfree();
  EXPECT_EQ(file(0), 1);
  EXPECT_FALSE(file_exists(name()));
}

TEST_F(WindowFile, ThatClaimsMoreThanItHasLoadsWhatItHas) {
  start(32);
  make({99999, 99999, 24, 99999, 24, 32, 0, 5, 0}, {1, 2, 3});
  EXPECT_EQ(file(1), 0);
  make({-1, 5, 24, 3, 24, 32, 0, 5, 0}, {1, 2, 3});
  EXPECT_EQ(file(1), 3);
}

// The bitmap's copy cannot be had: 1. A row of the file cannot: 2.
TEST_F(WindowFile, SurvivesEveryRefusedRequestForMemory) {
  struct Case {
    int32_t screen, file;
  };
  for (const Case &c : {Case{24, 32}, Case{16, 16}}) {
    make({6, 1, c.file, 6 * c.file / 8, c.file, 32, 0, c.file == 32 ? 5 : 0, 0}, Bytes(24, 9));
    start(c.screen);
    for (size_t n = 1;; ++n) {
      const FailingMemory memory(n);
      const int32_t status = file(1);
      EXPECT_EQ(memory.live_blocks(), 0U);
      if (!memory.failed()) {
        EXPECT_EQ(status, 0);
        EXPECT_GE(n, 3U) << "the copy and a row";
        break;
      }
      EXPECT_EQ(status, n == 1 ? 1 : 2) << c.screen << " " << n;
    }
    qqwfree();
  }
}

}  // namespace
}  // namespace quorix::testing
