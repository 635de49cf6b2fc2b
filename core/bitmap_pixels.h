// SPDX-License-Identifier: MIT
//
// Where the pixels of a device's bitmap stand in its memory, and in which order their bytes are:
// one small record per layout, for loops that are templates over them.
//
// Nothing is tested here: who writes keeps to the bitmap's width and height. A bitmap that has no
// memory (PixelOrder::set_pixel) has no layout.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/device.h"

namespace quorix {

struct Rgb {
  uint8_t r, g, b;
};

// Rasters in true colours. `put_rgb` leaves the alpha as it is.
struct RgbaLayout {
  uint8_t *base;
  size_t row_bytes;

  explicit RgbaLayout(const DeviceBitmap &bitmap)
      : base(bitmap.base), row_bytes(bitmap.row_bytes) {}
  uint8_t *at(int32_t x, int32_t y) const {
    return base + static_cast<size_t>(y) * row_bytes + static_cast<size_t>(x) * 4;
  }
  void put_rgb(int32_t x, int32_t y, Rgb colour) const {
    uint8_t *const p = at(x, y);
    p[0] = colour.r;
    p[1] = colour.g;
    p[2] = colour.b;
  }
  Rgb get(int32_t x, int32_t y) const {
    const uint8_t *const p = at(x, y);
    return {p[0], p[1], p[2]};
  }
};

// Windows of 24 and 32 bits; a fourth byte stays as it is.
struct BgrLayout {
  uint8_t *base;
  size_t row_bytes;
  size_t step;

  explicit BgrLayout(const DeviceBitmap &bitmap)
      : base(bitmap.base), row_bytes(bitmap.row_bytes), step(bitmap.bits == 24 ? 3 : 4) {}
  uint8_t *at(int32_t x, int32_t y) const {
    return base + static_cast<size_t>(y) * row_bytes + static_cast<size_t>(x) * step;
  }
  void put_rgb(int32_t x, int32_t y, Rgb colour) const {
    uint8_t *const p = at(x, y);
    p[0] = colour.b;
    p[1] = colour.g;
    p[2] = colour.r;
  }
  Rgb get(int32_t x, int32_t y) const {
    const uint8_t *const p = at(x, y);
    return {p[2], p[1], p[0]};
  }
};

// Palette rasters, and windows on palette displays: one byte a pixel.
struct IndexLayout {
  uint8_t *base;
  size_t row_bytes;

  explicit IndexLayout(const DeviceBitmap &bitmap)
      : base(bitmap.base), row_bytes(bitmap.row_bytes) {}
  void put_byte(int32_t x, int32_t y, uint8_t byte) const {
    base[static_cast<size_t>(y) * row_bytes + static_cast<size_t>(x)] = byte;
  }
};

}  // namespace quorix
