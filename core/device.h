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

// ---- Depth rendering: what it asks of a target
//
// depth/ does all of it in the memory of a bitmap. A window that draws through OpenGL has calls of
// its own (`Device::depth`). y grows downward, as everywhere.

enum class DepthStatus : int32_t { done = 0, no_memory = 1, wrong_state = 2 };

struct DepthLine {
  double x[2], y[2], z[2];
  int32_t colour;  // a colour argument
};

// Three values of each; r, g and b run from 0 to 1.
struct ShadedTriangle {
  const double *x, *y, *z, *r, *g, *b;
};

// Colour arguments at the corners; what lies between them is interpolated by palette index.
struct IndexTriangle {
  int32_t x[3], y[3], colour[3];
};

// The corners of a quadrilateral in their order around it.
struct IndexQuad {
  const int32_t *x, *y, *colour;
};

// `device` is the number that the operation was given. Where a function may be null, it is null for
// targets that need nothing of it.
struct DepthCalls {
  // Switches the test of depths on, with nothing drawn yet, or off.
  DepthStatus (*switch_depths)(OutputContext *context, bool on);
  // Makes all depths farther than any that is drawn.
  DepthStatus (*clear_depths)(OutputContext *context);
  DepthStatus (*clear_picture)(OutputContext *context, int32_t device);
  void (*line)(OutputContext *context, int32_t device, const DepthLine &line);
  void (*shaded_triangle)(OutputContext *context, int32_t device, const ShadedTriangle &triangle);
  void (*index_triangle)(OutputContext *context, int32_t device, const IndexTriangle &triangle);
  // One of the two triangles that a quadrilateral is cut into.
  void (*quad_half)(OutputContext *context, int32_t device, const IndexTriangle &half,
                    const IndexQuad &quad);
  // Blending of what comes next with what is there; may be null.
  void (*switch_blending)(OutputContext *context, bool on);
  // Without a test of depths, in the current colour; null for bitmaps.
  void (*plain_point)(OutputContext *context, double x, double y);
  void (*plain_line)(OutputContext *context, const double *x, const double *y);
  void (*text_pixel)(OutputContext *context, int32_t x, int32_t y);
  // `count` pixels of four bytes, RGBA, from (x, y) on: what a layer is composited with. Null for
  // bitmaps, whose memory is composited in place.
  void (*row_out)(OutputContext *context, int32_t x, int32_t y, int32_t count, uint8_t *rgba);
  void (*row_in)(OutputContext *context, int32_t x, int32_t y, int32_t count, const uint8_t *rgba);
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
  // What takes the place of drawing into the bitmap while the record says `opengl_on`; null where
  // that never is so.
  const DepthCalls *depth = nullptr;
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
