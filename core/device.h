// SPDX-License-Identifier: MIT
//
// What other families need of a drawing target, as a plain record of functions.
//
// The raster is one device and the window family the other; each registers itself. Where a device
// is not registered its numbers have none, and every operation that takes one ends with its
// documented failure. Families that read or write pixels go through this record alone, so they
// know neither the raster's memory nor a window system.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/output_context.h"

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

// The OpenGL calls of a device that draws through it, by their OpenGL meaning and with OpenGL's own
// numbers. y grows upward here: callers turn it.
struct GlCalls {
  void (*enable)(uint32_t capability);
  void (*disable)(uint32_t capability);
  void (*depth_function)(uint32_t function);
  void (*blend_function)(uint32_t source, uint32_t target);
  void (*clear)(uint32_t buffers);
  void (*begin)(uint32_t primitive);
  void (*end)();
  void (*vertex_2f)(float x, float y);
  void (*vertex_2i)(int32_t x, int32_t y);
  void (*vertex_3f)(float x, float y, float z);
  void (*colour_3f)(float r, float g, float b);
  void (*colour_4f)(float r, float g, float b, float a);
  void (*raster_position)(int32_t x, int32_t y);
  void (*read_pixels)(int32_t x, int32_t y, int32_t width, int32_t height, uint32_t format,
                      uint32_t type, void *pixels);
  void (*draw_pixels)(int32_t width, int32_t height, uint32_t format, uint32_t type,
                      const void *pixels);
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
  // With PixelOrder::index: the byte that stands for a palette index. Null: the index itself.
  uint8_t (*index_to_pixel)(const OutputContext *context, int32_t index) = nullptr;
  // Compositing on what a window shows. copy_out hands out a copy of the rectangle with the upper
  // left corner (x, y), in the order bgr, and is false where there is none; copy_in puts that copy
  // back at (x, y) and releases it.
  bool (*copy_out)(OutputContext *context, int32_t x, int32_t y, int32_t width, int32_t height,
                   DeviceBitmap *copy) = nullptr;
  void (*copy_in)(OutputContext *context, int32_t x, int32_t y, DeviceBitmap *copy) = nullptr;
  // Null where the device never draws through OpenGL.
  const GlCalls *gl = nullptr;
};

inline constexpr int32_t last_window_device = 100;  // numbers above it mean the raster

// Whether a device number means a window; the others mean the raster.
inline bool window_device(int64_t number) {
  return number <= last_window_device;
}

// The families' devices; null takes one away.
void register_raster_device(const Device *device);
void register_window_device(const Device *device);

// The device that answers to a number (pass its absolute value where a sign carries a flag), or
// null; so too without a record.
const Device *device_for(const OutputContext *context, int32_t number);

// The window family's device, or null.
const Device *window_family_device(const OutputContext *context);

// Draws what is gathered for the current device: a window's own accumulator, or the raster's.
void flush_current_device(OutputContext *context);

}  // namespace quorix
