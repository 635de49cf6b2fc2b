// SPDX-License-Identifier: MIT
//
// The operations on bitmap fonts with plain arguments, and rasters to draw on.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "tests/formats/literal_bdf.h"

namespace quorix::testing {

using Widths = std::array<int32_t, 233>;
inline constexpr int32_t untouched_width = -77;

struct Selected {
  int32_t status;
  Widths widths;
};

Selected select_font(int32_t family, int32_t size);  // qqbdf1
Selected select_font_in(const std::string &directory, int32_t family, int32_t size,
                        int32_t use_directory = 1);  // qqbdf1n
void draw_character(int32_t code, int32_t x, int32_t y, int32_t angle = 0, int32_t device = 101);

// Under which name a font is opened in a directory.
std::string font_file(const std::string &directory, const std::string &name);

// A raster of this size, all its bytes different from those of its neighbours.
void open_page(int32_t width, int32_t height, bool rgba);
// All bytes of it as they stand in memory, gathered lines not among them.
Bytes page_bytes();

// The widths that a font must give, and those of a font that comes with the library, by its file.
Widths literal_widths(const std::vector<BdfGlyphText> &font);
Widths own_widths(const std::string &name);
// The text of such a file.
std::string own_font_text(const std::string &name);

}  // namespace quorix::testing
