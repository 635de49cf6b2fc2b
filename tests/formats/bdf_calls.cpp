// SPDX-License-Identifier: MIT
//
// Calls of the bitmap font operations, and what they set on a page.
#include "tests/formats/bdf_calls.h"

#include <gtest/gtest.h>

#include "quorix/fonts.h"
#include "quorix/raster.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {

namespace {

size_t bytes_of_page = 0;

Selected nothing_selected() {
  Selected selected = {99, {}};
  selected.widths.fill(untouched_width);
  return selected;
}

}  // namespace

Selected select_font(int32_t family, int32_t size) {
  Selected selected = nothing_selected();
  EXPECT_EQ(qqbdf1(&family, &size, selected.widths.data(), &selected.status), 0);
  return selected;
}

Selected select_font_in(const std::string &directory, int32_t family, int32_t size,
                        int32_t use_directory) {
  Selected selected = nothing_selected();
  EXPECT_EQ(qqbdf1n(directory.c_str(), &use_directory, &family, &size, selected.widths.data(),
                    &selected.status),
            0);
  return selected;
}

void draw_character(int32_t code, int32_t x, int32_t y, int32_t angle, int32_t device) {
  EXPECT_EQ(qqbdf2(&code, &x, &y, &angle, &device, nullptr), 0);
}

std::string font_file(const std::string &directory, const std::string &name) {
#ifdef _WIN32
  const std::string separator = "\\";
#else
  const std::string separator = "/";
#endif
  return directory + separator + "fonts" + separator + name + ".bdf";
}

void open_page(int32_t width, int32_t height, bool rgba) {
  int32_t status = 0;
  qqvini(rgba ? -1000 : 1000, 1000, &width, &height, 1, &status);
  ASSERT_EQ(status, 0);
  bytes_of_page = static_cast<size_t>(width) * static_cast<size_t>(height) * (rgba ? 4 : 1);
  uint8_t *raster = nullptr;
  qqvptr(&raster);
  for (size_t i = 0; i < bytes_of_page; ++i)
    raster[i] = static_cast<uint8_t>(100 + i % 97);
}

Bytes page_bytes() {
  uint8_t *raster = nullptr;
  qqvptr(&raster);
  return Bytes(raster, raster + bytes_of_page);
}

Widths literal_widths(const std::vector<BdfGlyphText> &font) {
  Widths widths;
  for (int32_t code = 32; code <= 264; ++code) {
    const BdfGlyphText *glyph = own_glyph(font, code);
    widths[static_cast<size_t>(code) - 32] = glyph == nullptr ? 0 : 10 * glyph->dwidth;
  }
  return widths;
}

Widths own_widths(const std::string &name) {
  return literal_widths(parse_bdf(own_font_text(name)));
}

std::string own_font_text(const std::string &name) {
  const Bytes bytes = read_whole_file(std::string(QUORIX_SOURCE_DIR) + "/fonts/" + name + ".bdf");
  return std::string(bytes.begin(), bytes.end());
}

}  // namespace quorix::testing
