// SPDX-License-Identifier: MIT
//
// Pictures that a test knows pixel by pixel, and the raster or a window that shows them.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "tests/imageout/png_decoder.h"

namespace quorix::testing {

using PaletteWords = std::array<uint32_t, 256>;  // 0xRRGGBB

// 256 different colours in no order.
PaletteWords make_palette(uint32_t seed);

struct DrawnPicture {
  int32_t width, height;
  PaletteWords palette;  // of the device
  Bytes indices;         // one per pixel
  Bytes rgb;             // three per pixel

  // A pixel as a device gives it: 0 off the page.
  uint8_t index_at(int64_t x, int64_t y) const;
  std::array<uint8_t, 3> rgb_at(int64_t x, int64_t y) const;
  // A rectangle of them.
  Bytes index_area(int32_t x, int32_t y, int32_t w, int32_t h) const;
  Bytes rgb_area(int32_t x, int32_t y, int32_t w, int32_t h) const;
};

// Lines, areas and some noise, in colours of the palette.
DrawnPicture plot_picture(int32_t width, int32_t height, uint32_t seed);

// Thousands of colours, the palette and `indices` without meaning.
DrawnPicture photo_picture(int32_t width, int32_t height, uint32_t seed);

// Opens a raster of the picture's size, gives it the palette and writes the pixels: as indices into
// a palette raster, as colours into an RGBA raster.
void show_on_raster(const DrawnPicture &picture, bool rgba);

// What all tests of writers start from and leave behind: no record, no clip, no window.
void forget_everything();

// A window that shows a picture, in place of the window family's device until the end of the scope.
class FakeWindow {
 public:
  explicit FakeWindow(const DrawnPicture &picture);
  ~FakeWindow();
  FakeWindow(const FakeWindow &) = delete;
  FakeWindow &operator=(const FakeWindow &) = delete;

  int32_t index_reads() const;  // rectangles asked for as indices
  int32_t rgb_reads() const;    // and as RGB
};

}  // namespace quorix::testing
