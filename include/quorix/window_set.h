// SPDX-License-Identifier: MIT
//
// The window device's part of the drawing record. Not installed.
#pragma once

#include <cstdint>

namespace quorix {

inline constexpr uint32_t default_pen_style = 0x11100;  // geometric, square caps, bevel joins

struct WindowSet {
  uint32_t pen_style;
};

}  // namespace quorix
