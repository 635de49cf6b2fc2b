// SPDX-License-Identifier: MIT
//
// Each call goes to the raster and to its model.
#include "tests/imagein/twin_pages.h"

#include <array>
#include <vector>

#include "core/output_context.h"
#include "quorix/raster.h"
#include "quorix/window.h"

namespace quorix::testing {

namespace {

std::array<uint32_t, 256> palette_words() {
  std::array<uint32_t, 256> words;
  for (uint32_t i = 0; i < words.size(); ++i)
    words[i] = ((i + 77) * 0x9E3779B1U) & 0xffffffU;
  words[0] = 0;
  words[255] = 0xffffff;
  return words;
}

}  // namespace

TwinPages::TwinPages(bool rgba, int32_t width, int32_t height) {
  qqwfree();
  const int32_t page = rgba ? -100 : 100;
  int32_t w = width;
  int32_t h = height;
  int32_t status = 0;
  qqvini(page, 100, &w, &h, 1, &status);
  literal::qqvini(literal, page, 100, &w, &h, 1, &status);
  EXPECT_EQ(status, 0);
  const auto words = palette_words();
  qqvvlt(1, words.data());
  literal::qqvvlt(literal, 1, words.data());
  for (int32_t y = 0; y < height; ++y) {
    std::vector<uint8_t> row;
    for (int32_t x = 0; x < width; ++x)
      row.push_back(static_cast<uint8_t>((x * 7 + y * 31 + x * y) & 255));
    qqvrow(row.data(), 0, y, width);
    literal::qqvrow(literal, row.data(), 0, y, width);
  }
  int32_t alpha = 77;
  qqwwid(19, &alpha, 1);
  literal::qqwwid(literal, 19, &alpha, 1);
}

TwinPages::~TwinPages() {
  qqwfree();
}

::testing::AssertionResult TwinPages::alike() const {
  const uint8_t *pixels = output_context->buffers.raster.pixels;
  const size_t bytes = literal.page_rgba ? 4 : 1;
  for (size_t i = 0; i < literal.pixels.size(); ++i) {
    if (pixels[i] == literal.pixels[i]) continue;
    const size_t pixel = i / bytes;
    const auto width = static_cast<size_t>(literal.page_width);
    return ::testing::AssertionFailure()
           << "byte " << i % bytes << " of the pixel in column " << pixel % width << ", row "
           << pixel / width << (literal.page_rgba ? ", RGBA" : ", palette") << ": got "
           << int{pixels[i]} << ", wanted " << int{literal.pixels[i]};
  }
  return ::testing::AssertionSuccess();
}

}  // namespace quorix::testing
