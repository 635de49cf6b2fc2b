// SPDX-License-Identifier: MIT
//
// The copy of a window's bitmap that direct access works on, `image_bits`, by what `bitmap_info`
// says of it; and how pixels are reached where there is no such copy.
#pragma once

#include <algorithm>

#include "core/output_context.h"
#include "window/window_set.h"

namespace quorix {

// 0: on screens of 16 bits pixels are not addressed in the copy, they go through the canvas.
inline int32_t bytes_per_pixel(const WindowSet *set) {
  switch (set->bitmap_info.bits) {
    case 32:
      return 4;
    case 24:
      return 3;
    case 16:
      return 0;
    default:
      return 1;
  }
}

// Pixels of a row that there is memory for.
inline int32_t bitmap_columns(const WindowSet *set) {
  const int32_t bytes = bytes_per_pixel(set);
  const BitmapInfo &info = set->bitmap_info;
  return bytes == 0 ? info.width : std::min(info.width, info.row_bytes / bytes);
}

// Whether a pixel can be reached; never without direct access.
inline bool on_direct_bitmap(const WindowSet *set, int64_t x, int64_t y) {
  return set->image_bits != nullptr && x >= 0 && y >= 0 && x < bitmap_columns(set) &&
         y < set->bitmap_info.height;
}

// The first byte of a pixel that lies on the bitmap.
inline uint8_t *direct_pixel(const WindowSet *set, int64_t x, int64_t y) {
  return set->image_bits +
         static_cast<size_t>(y) * static_cast<size_t>(set->bitmap_info.row_bytes) +
         static_cast<size_t>(x) * static_cast<size_t>(bytes_per_pixel(set));
}

// ---- pixel_maps.cpp: palette indices and the bytes of a display with a palette
uint8_t index_to_pixel(const OutputContext *context, int32_t index);
uint8_t pixel_to_index(const OutputContext *context, uint8_t pixel);

// ---- direct_access.cpp
enum class PixelWay : uint8_t {
  none,    // there is no window
  gl,      // OpenGL's rows
  memory,  // image_bits
  canvas   // one pixel at a time
};

struct PixelArea {
  PixelWay way;
  int32_t width, height;
};

// How pixels of the current window are reached now.
PixelArea pixel_area(const OutputContext *context);

// Fetches the bitmap's bytes into image_bits; false where there is no bitmap or no memory.
bool load_image(OutputContext *context);
// Lets go of them. What the canvas had to make for them is shown, if `show`, and taken down.
void drop_image(OutputContext *context, bool show);
// Puts the bytes back into the bitmap and ends direct access, if it is on.
void end_direct_access(OutputContext *context);

}  // namespace quorix
