// SPDX-License-Identifier: MIT
// The search of the palette by cells against the search of the whole table.

#include "core/nearest_in_cell.h"

#include <gtest/gtest.h>

#include <random>

namespace quorix::testing {
namespace {

using Random = std::mt19937_64;

uint8_t byte(Random &random, uint32_t mask) {
  return static_cast<uint8_t>(static_cast<uint32_t>(random()) & mask);
}

// Few distinct channels give many equal entries and equal distances.
void fill_palette(Random &random, OutputContext *context, uint32_t mask) {
  for (int i = 0; i < 256; ++i) {
    context->colours.palette_r[i] = byte(random, mask);
    context->colours.palette_g[i] = byte(random, mask);
    context->colours.palette_b[i] = byte(random, mask);
  }
  palette_changed(context);
}

TEST(NearestInCell, IsTheNearestOfTheWholeTable) {
  Random random(1);
  OutputContext context = {};
  constexpr uint32_t masks[] = {0xFF, 0xE0, 0xC0, 0x80, 0x07, 0xF8};
  constexpr uint8_t kinds[] = {0, 7, 1};
  for (const uint32_t mask : masks) {
    for (const uint8_t kind : kinds) {
      context.colours.palette_kind = kind;
      fill_palette(random, &context, mask);
      for (int k = 0; k < 20000; ++k) {
        const uint8_t r = byte(random, 0xFF);
        const uint8_t g = byte(random, 0xFF);
        const uint8_t b = k % 4 == 0 ? uint8_t{0} : byte(random, 0xFF);
        ASSERT_EQ(nearest_in_cell(&context, r, g, b), nearest_colour(&context, r, g, b))
            << "mask " << mask << ", kind " << int{kind} << ", colour " << int{r} << " " << int{g}
            << " " << int{b};
      }
    }
  }
}

TEST(NearestInCell, FindsTheEndsOfTheTableForBlackAndWhite) {
  OutputContext context = {};
  context.colours.palette_kind = 1;
  context.colours.palette_r[255] = context.colours.palette_g[255] = context.colours.palette_b[255] =
      255;
  palette_changed(&context);
  EXPECT_EQ(nearest_in_cell(&context, 255, 255, 255), 255);
  EXPECT_EQ(nearest_in_cell(&context, 0, 0, 0), 0);
}

TEST(NearestInCell, FollowsAChangeOfThePalette) {
  OutputContext context = {};
  context.colours.palette_kind = 1;
  palette_changed(&context);
  context.colours.palette_r[9] = 200;
  palette_changed(&context);
  EXPECT_EQ(nearest_in_cell(&context, 190, 0, 10), 9);
  context.colours.palette_r[9] = 0;
  context.colours.palette_r[4] = 200;
  palette_changed(&context);
  EXPECT_EQ(nearest_in_cell(&context, 190, 0, 10), 4);
}

}  // namespace
}  // namespace quorix::testing
