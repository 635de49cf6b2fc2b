// SPDX-License-Identifier: MIT
//
// The memory that the raster draws into.
//
// A buffer's size stands beside its pointer and is set only together with it, so that every write
// can be held against the memory that is really there.
#pragma once

#include <cstdint>

namespace quorix {

enum RasterState : uint8_t { raster_none = 0, raster_open = 1, raster_blending = 2 };

// What a pixel buffer was allocated for. All zero: no buffer, nothing may be written.
struct RasterPage {
  int32_t width;
  int32_t height;
  uint8_t rgba;  // 0 one byte per pixel, 1 four bytes per pixel
};

struct PixelBuffer {
  uint8_t *pixels;
  RasterPage page;
};

struct RasterBuffers {
  PixelBuffer raster;          // what drawing writes to: one of the two below
  PixelBuffer raster_base;     // owned, allocated by qqvini
  PixelBuffer blend_raster;    // owned, for translucent layers
  uint8_t raster_state;        // RasterState
  uint8_t saved_raster_state;  // RasterState before a blend layer
};

}  // namespace quorix
