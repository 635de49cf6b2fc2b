// SPDX-License-Identifier: MIT
//
// What depth rendering keeps in the drawing record.
#pragma once

#include <cstdint>

namespace quorix {

// All zero: no buffer.
struct DepthBuffer {
  float *values;  // owned, a row after the other
  int32_t width, height;
};

struct DepthState {
  DepthBuffer buffer;  // valid only while depth_on; none while OpenGL keeps the depths
  float depth_bias;
  uint8_t depth_on;
  uint8_t alpha_blend_on;
  uint8_t blend_over_background;
};

}  // namespace quorix
