// SPDX-License-Identifier: MIT
//
// What other families need of a drawing target, as a plain record of functions. Not installed.
//
// The raster is one device. A window family registers another when it is set up; where none is
// linked, window numbers have no device, and every operation that takes one ends with its
// documented failure. Families that read or write pixels go through this record alone, so they
// know neither the raster's memory nor a window system.
#pragma once

#include <cstddef>
#include <cstdint>

#include "quorix/output_context.h"

namespace quorix {

enum class PixelOrder : uint8_t {
  index,      // one byte: a palette index
  rgba,       // four bytes
  bgr,        // three bytes, or four of which the last is left alone
  set_pixel,  // no memory: through `set_pixel` alone
};

// The pixels of a device, to be drawn into directly.
struct DeviceBitmap {
  uint8_t *base;  // upper left pixel, null with PixelOrder::set_pixel
  size_t row_bytes;
  int32_t width, height;
  int32_t bits;  // per pixel
  PixelOrder order;
  void (*set_pixel)(OutputContext *context, int32_t x, int32_t y, uint8_t r, uint8_t g, uint8_t b);
};

struct Device {
  // Draws what is gathered.
  void (*flush)(OutputContext *context);
  // Reads a rectangle. n > 0: n indices a row; n < 0: |n| RGB triples a row. Negative rows go
  // upward. What lies off the page reads as 0.
  void (*read_rectangle)(OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                         int32_t rows);
  // Writes a row; n as above.
  void (*write_row)(OutputContext *context, const uint8_t *buffer, int32_t x, int32_t y, int32_t n);
  void (*set_colour)(OutputContext *context, int32_t colour);
  // Corners inclusive.
  void (*fill_rectangle)(OutputContext *context, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                         int32_t colour);
  // The memory to draw into; false if there is none now.
  bool (*bitmap)(OutputContext *context, DeviceBitmap *bitmap);
};

inline constexpr int32_t last_window_device = 100;  // numbers above it mean the raster

extern const Device raster_device;

// The window family's device, null while there is none.
void register_window_device(const Device *device);

// The device that answers to a number (pass its absolute value where a sign carries a flag), or
// null.
const Device *device_for(const OutputContext *context, int32_t number);

}  // namespace quorix
