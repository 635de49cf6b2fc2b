// SPDX-License-Identifier: MIT
//
// Interpolated rows in every form against the formula, and blending against its own.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "base/processor.h"
#include "imagein/imagein.h"
#include "imagein/scale.h"

namespace quorix::testing {
namespace {

using Bytes = std::vector<uint8_t>;

struct LiteralPlace {
  int32_t index;
  double share;
};

// Word for word: a size of 1 on either side needs a branch.
LiteralPlace literal_place(int32_t target, int32_t target_size, int32_t source_size) {
  const double place = target_size == 1
                           ? 0.0
                           : static_cast<double>(target) * static_cast<double>(source_size - 1) /
                                 static_cast<double>(target_size - 1);
  auto index = static_cast<int32_t>(std::trunc(place));
  double share = place - index;
  if (target_size == 1) {
    index = 0;
    share = 0.0;
  }
  if (index >= source_size - 1) {
    index = source_size - 2;
    share = 1.0;
  }
  return {index, share};
}

struct Source {
  int32_t width, height;
  size_t components;
  Bytes bytes;

  // Before the first row or column stands what has the weight 0.
  double at(int32_t x, int32_t y, size_t k) const {
    const auto column = static_cast<size_t>(std::max(x, 0));
    const auto row = static_cast<size_t>(std::max(y, 0));
    return bytes[(row * static_cast<size_t>(width) + column) * components + k];
  }
};

Source random_source(int32_t width, int32_t height, size_t components, std::mt19937 *random) {
  Source source = {width, height, components, {}};
  const size_t size = static_cast<size_t>(width) * static_cast<size_t>(height) * components;
  const bool flat = (*random)() % 3 == 0;
  for (size_t i = 0; i < size + pixel_slack; ++i)
    source.bytes.push_back(flat ? uint8_t{255} : static_cast<uint8_t>((*random)()));
  return source;
}

Bytes literal_scaled(const Source &from, int32_t width, int32_t height) {
  Bytes result;
  for (int32_t j = 0; j < height; ++j) {
    const auto [iy, ty] = literal_place(j, height, from.height);
    for (int32_t i = 0; i < width; ++i) {
      const auto [ix, tx] = literal_place(i, width, from.width);
      for (size_t k = 0; k < from.components; ++k)
        result.push_back(static_cast<uint8_t>(
            (1 - ty) * (1 - tx) * from.at(ix, iy, k) + (1 - ty) * tx * from.at(ix + 1, iy, k) +
            (1 - tx) * ty * from.at(ix, iy + 1, k) + ty * tx * from.at(ix + 1, iy + 1, k)));
    }
  }
  return result;
}

Bytes scaled(const Source &from, int32_t width, int32_t height, ScaleRgb scale) {
  std::vector<ScaleColumn> columns;
  for (int32_t i = 0; i < width; ++i) {
    const ScalePlace place = scale_place(i, width, from.width);
    columns.push_back({static_cast<size_t>(place.index), place.share, 1.0 - place.share});
  }
  const size_t step = static_cast<size_t>(from.width) * from.components;
  Bytes result(columns.size() * static_cast<size_t>(height) * from.components);
  for (int32_t j = 0; j < height; ++j) {
    const ScalePlace place = scale_place(j, height, from.height);
    const uint8_t *const upper = &from.bytes[static_cast<size_t>(place.index) * step];
    const ScaleRow row = {upper, from.height > 1 ? upper + step : upper, place.share,
                          1.0 - place.share};
    scale(row, columns.data(), columns.size(),
          &result[static_cast<size_t>(j) * columns.size() * from.components]);
  }
  return result;
}

int32_t random_size(std::mt19937 *random) {
  return static_cast<int32_t>((*random)() % ((*random)() % 2 == 0 ? 4 : 50)) + 1;
}

TEST(ScaledRows, AreTheFormulaToTheBitInEveryForm) {
  std::mt19937 random(7);
  std::vector<ScaleRgb> forms = {scale_rgb_plain};
  if constexpr (compiled_for_x86_64) {
    if (processor().avx2) forms.push_back(scale_rgb_avx2);
  }
  for (int run = 0; run < 1000; ++run) {
    const Source rgb = random_source(random_size(&random), random_size(&random), 3, &random);
    const Source alpha = random_source(rgb.width, rgb.height, 1, &random);
    const int32_t width = random_size(&random);
    const int32_t height = random_size(&random);
    const Bytes expected = literal_scaled(rgb, width, height);
    for (const ScaleRgb form : forms)
      ASSERT_EQ(scaled(rgb, width, height, form), expected)
          << rgb.width << " " << rgb.height << " " << width << " " << height;
    ASSERT_EQ(scaled(alpha, width, height, scale_alpha), literal_scaled(alpha, width, height));
  }
}

TEST(ScaledRows, OfAFlatPictureMayFallShortByOne) {
  Source white = {100, 100, 3, Bytes(30000 + pixel_slack, 255)};
  const Bytes result = scaled(white, 333, 333, scale_rgb());
  size_t short_by_one = 0;
  for (const uint8_t byte : result) {
    ASSERT_GE(byte, 254);
    short_by_one += byte == 254 ? 1 : 0;
  }
  EXPECT_GT(short_by_one, 0U);
}

TEST(Blending, InWholeNumbersIsTheFormulaForEveryColourAlphaAndGround) {
  for (uint32_t alpha = 0; alpha < 256; ++alpha) {
    const double a = alpha / 255.0;
    for (uint32_t colour = 0; colour < 256; ++colour)
      for (uint32_t under = 0; under < 256; ++under)
        ASSERT_EQ(blend_component(colour, alpha, under),
                  static_cast<uint8_t>(colour * a + (1 - a) * under + 0.5))
            << colour << " " << alpha << " " << under;
  }
}

}  // namespace
}  // namespace quorix::testing
