// SPDX-License-Identifier: MIT
//
// Two pixels beside a smooth line: the far one takes the colour of the pen by a weight, the near
// one by 1 less that weight.
//
// Nothing is clamped: just above the page and left of it, where truncation rounds up, weights lie
// outside 0 to 1, and a component keeps the low byte of what comes out.
#pragma once

#include <cstdint>

namespace quorix {

struct PixelPair {
  uint32_t far, near;
};

// The plain form; blend_pair_sse2.h has the wide one, with the same bits.
struct BlendPlain {
  double r, g, b;
  uint32_t alpha;  // in the high byte

  explicit BlendPlain(uint32_t ink)
      : r(ink & 255), g(ink >> 8 & 255), b(ink >> 16 & 255), alpha(ink & 0xFF000000U) {}

  PixelPair mixed(PixelPair old, double weight) const {
    return {pixel(old.far, weight), pixel(old.near, 1.0 - weight)};
  }

 private:
  uint32_t pixel(uint32_t old, double weight) const {
    return component(old & 255, r, weight) | component(old >> 8 & 255, g, weight) << 8 |
           component(old >> 16 & 255, b, weight) << 16 | alpha;
  }

  static uint32_t component(uint32_t old, double wanted, double weight) {
    const auto from = static_cast<double>(old);
    return static_cast<uint32_t>(static_cast<int32_t>(from + (wanted - from) * weight + 0.5)) & 255;
  }
};

}  // namespace quorix
