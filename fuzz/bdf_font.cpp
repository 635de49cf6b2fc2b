// SPDX-License-Identifier: MIT
//
// The input is a bitmap font. It is loaded where the font "helve12" is looked for, its widths are
// held against its glyphs, and characters of it are drawn on small pages of both kinds, at several
// angles and across the edges.
#include <array>
#include <cstdlib>
#include <string>

#include "base/char_codes.h"
#include "base/numbers.h"
#include "core/output_context.h"
#include "formats/bdf.h"
#include "fuzz/target.h"
#include "platform/paths.h"
#include "quorix/fonts.h"
#include "quorix/raster.h"
#include "quorix/system.h"
#include "quorix/window.h"
#include "tests/support/memory_files.h"

namespace {

constexpr int32_t first_code = 32, code_count = 233, raster = 101;

void require(bool condition) {
  if (!condition) std::abort();
}

// The environment has the last word on where fonts lie.
std::string font_path() {
  char folder[257] = "folder";
  qqgenv("QUOENV", folder);
  const std::string separator(1, quorix::path_separator);
  return folder + separator + "fonts" + separator + "helve12.bdf";
}

// The width of the first glyph with the encoding of a code, found by a plain search.
int32_t width_of(const quorix::BdfFont &font, int32_t code) {
  const int32_t encoding = quorix::map_char_code(code, false, 2);
  for (int32_t i = 0; i < font.glyph_count; ++i) {
    if (font.glyphs.get()[i].encoding == encoding)
      return quorix::to_int32(10.0 * font.glyphs.get()[i].dwidth[0]);
  }
  return 0;
}

void draw_characters() {
  for (int32_t code = -1; code <= 270; code += code < 100 ? 1 : 9) {
    for (const int32_t angle : {0, 37, 90, -200}) {
      const int32_t x = 6, y = 9;
      qqbdf2(&code, &x, &y, &angle, &raster, nullptr);
    }
  }
}

void check_font(int32_t page_width) {
  int32_t width = 12, height = 10, status = 0;
  qqvini(page_width, 1, &width, &height, 1, &status);
  require(status == 0);
  const int32_t family = 3, size = 12, use_directory = 1;
  std::array<int32_t, code_count> widths;
  qqbdf1n("folder", &use_directory, &family, &size, widths.data(), &status);
  require(status == 0 || status == 2);
  if (status == 0) {
    const quorix::BdfFont &font = *quorix::output_context->fonts.bdf_current;
    for (int32_t i = 0; i < code_count; ++i) {
      require(widths[static_cast<size_t>(i)] == width_of(font, first_code + i));
    }
  }
  draw_characters();
  qqwfree();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::testing::MemoryFiles files;
  files.put(font_path(), {data, data + size});
  check_font(1);
  check_font(-1);
  require(files.open_files() == 0);
  return 0;
}
