// SPDX-License-Identifier: MIT
//
// The page: sizes, the clip rectangle and the kind of pixels of whichever device is current.
//
// Devices share these fields by value, so they may change while a buffer of another device lives.
// What a buffer was allocated for stands beside its pointer (core/raster_buffers.h).
#pragma once

#include <cstdint>

namespace quorix {

struct Page {
  int32_t screen_width, screen_height;
  int32_t width, height;
  int32_t clip_x1, clip_y1, clip_x2, clip_y2;  // inclusive
  int32_t screen_bits;
  int32_t stride;  // bytes per row: width, or width * 4
  uint8_t white_background;
  uint8_t clip_on;
  uint8_t rgba_mode;
};

}  // namespace quorix
