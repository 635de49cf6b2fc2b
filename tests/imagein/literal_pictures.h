// SPDX-License-Identifier: MIT
//
// A held picture and the two ways a row can go, written to be obviously right and for nothing else:
// into the picture, or onto the literal raster.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

struct Picture {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint8_t> rgb;  // rows from the top
  bool has_alpha = false;
  std::vector<uint8_t> alpha;
  bool background_done = false;  // then the alpha means nothing
  int32_t device_width = 10000;
  int32_t device_height = 10000;
};

// All pixels 0.
Picture make_picture(int32_t width, int32_t height, bool has_alpha);

// Rows of `count` pixels; alpha may be null.
void store_row(Picture &picture, const uint8_t *rgb, const uint8_t *alpha, int32_t x, int32_t y,
               int32_t count);
// Changes rgb where it blends.
void show_row(LiteralRaster &page, uint8_t *rgb, const uint8_t *alpha, int32_t x, int32_t y,
              int32_t count, int32_t device_width, int32_t device_height);

// The rectangle, which must lie inside.
Picture crop(const Picture &picture, int32_t x, int32_t y, int32_t width, int32_t height);
// Every pixel of the picture at another size.
Picture scale(const Picture &picture, int32_t width, int32_t height);
void show_scaled(LiteralRaster &page, const Picture &picture, int32_t width, int32_t height,
                 int32_t x, int32_t y);

}  // namespace quorix::literal
