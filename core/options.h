// SPDX-License-Identifier: MIT
//
// Options of the drawing record that belong to no part of it.
#pragma once

#include <cstdint>

namespace quorix {

struct Options {
  int32_t font_charset;
  int32_t text_map_level;
  uint8_t swap_black_white;
};

}  // namespace quorix
