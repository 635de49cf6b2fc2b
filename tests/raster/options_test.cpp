// SPDX-License-Identifier: MIT
// The options of the drawing record that the raster device uses.

#include <climits>
#include <set>

#include "core/device.h"
#include "platform/callbacks.h"
#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using Option = RasterTest;

TEST_F(Option, MakesTheRecordWithoutAWindowSet) {
  set_option(11, 5);
  ASSERT_NE(output_context, nullptr);
  EXPECT_EQ(output_context->page.clip_x1, 5);
  EXPECT_EQ(output_context->window.window_set, nullptr);
}

TEST_F(Option, OfWindowsBringsTheWindowSetAlong) {
  const std::set<int32_t> of_windows = {0, 1, 2, 5, 20, 26, 27, 28, 29, 30, 33};
  for (int32_t option = -1; option <= 101; ++option) {
    qqwfree();
    set_option(option, 0);
    ASSERT_NE(output_context, nullptr);
    EXPECT_EQ(output_context->window.window_set != nullptr, of_windows.contains(option)) << option;
  }
}

TEST_F(Option, BringsTheWindowSetAlongWhenItIsRead) {
  for (const int32_t option : {3, 5, 11, 1000}) {
    qqwfree();
    int32_t value = 77;
    qqwwid(option, &value, 0);
    EXPECT_EQ(value, -1);
    EXPECT_NE(output_context->window.window_set, nullptr) << option;
  }
}

TEST_F(Option, StaysAsItIsWithoutAValue) {
  open_page(2, 2);
  const OutputContext before = *output_context;
  for (int32_t option = 0; option < 99; ++option) {
    EXPECT_EQ(qqwwid(option, nullptr, 1), 0);
    EXPECT_EQ(qqwwid(option, nullptr, 0), 0);
  }
  EXPECT_EQ(before.pen.line_width, output_context->pen.line_width);
  EXPECT_EQ(before.page.clip_x1, output_context->page.clip_x1);
  EXPECT_EQ(before.page.clip_on, output_context->page.clip_on);
  EXPECT_EQ(before.colours.colour_alpha, output_context->colours.colour_alpha);
  EXPECT_EQ(qqwwid(17, nullptr, 1), 0);  // takes none
  EXPECT_EQ(output_context->depth.depth_bias, 1e-5F);
}

TEST_F(Option, OneAndTwoTakeHandlesThatNobodyLooksAt) {
  void *const handle = reinterpret_cast<void *>(uintptr_t{16});
  EXPECT_EQ(qqwwid(1, handle, 1), 0);
  EXPECT_EQ(qqwwid(2, handle, 1), 0);
  EXPECT_NE(output_context->window.window_set, nullptr);
}

int window_flushes = 0;

TEST_F(Option, DrawsWhatAWindowHasGatheredWhileOneIsCurrent) {
  Device window = {};
  window.flush = [](OutputContext * /*context*/) { ++window_flushes; };
  register_window_device(&window);
  open_page(3, 1);
  output_context->window.window_active = 1;
  qqvlin(0, 0, 2, 0);  // the raster's, which stays gathered
  for (int32_t option = 0; option <= 34; ++option) {
    window_flushes = 0;
    set_option(option, 1);
    const bool draws = option == 27 || option == 28 || option == 33;
    EXPECT_EQ(window_flushes, draws ? 1 : 0) << option;
  }
  EXPECT_EQ(output_context->accumulator.poly_count, 2);
  register_window_device(nullptr);
}

TEST_F(Option, ReadsAsMinusOne) {
  open_page(2, 2);
  for (const int32_t option : {3, 11, 19, 26, 32, 33, 99, -7, 1000}) {
    int32_t value = 77;
    EXPECT_EQ(qqwwid(option, &value, 0), 0);
    EXPECT_EQ(value, -1) << option;
  }
  EXPECT_EQ(output_context->pen.line_width, 1);
  EXPECT_EQ(output_context->page.clip_on, 0);
}

TEST_F(Option, IsSetByAnyFlagButZero) {
  open_page(2, 2);
  int32_t value = 6;
  EXPECT_EQ(qqwwid(26, &value, -3), 0);
  EXPECT_EQ(output_context->pen.line_width, 6);
  EXPECT_EQ(value, 6);
}

TEST_F(Option, ThreeExchangesBlackAndWhiteByItsLowByte) {
  set_option(3, 0x101);
  EXPECT_EQ(output_context->options.swap_black_white, 1);
  set_option(3, 0x100);
  EXPECT_EQ(output_context->options.swap_black_white, 0);
}

TEST_F(Option, ElevenToFourteenAreTheClipRectangle) {
  set_clip_rectangle(-5, 7, 900, INT32_MAX);
  EXPECT_EQ(output_context->page.clip_x1, -5);
  EXPECT_EQ(output_context->page.clip_y1, 7);
  EXPECT_EQ(output_context->page.clip_x2, 900);
  EXPECT_EQ(output_context->page.clip_y2, INT32_MAX);
}

TEST_F(Option, ElevenDrawsGatheredLinesUnderTheOldRectangleAndTheOthersDoNot) {
  open_page(4, 1);
  switch_clipping(true);
  qqvlin(0, 0, 3, 0);
  set_option(13, 1);  // still gathered
  EXPECT_EQ(output_context->accumulator.poly_count, 2);
  set_option(11, 2);
  EXPECT_EQ(picture_without_flush(), rows({"11.."}));
}

TEST_F(Option, SeventeenAndEighteenAreTheTwoDepthTolerances) {
  set_option(17, 0);
  EXPECT_EQ(output_context->depth.depth_bias, 0x1.4f8b58p-17F);  // bit pattern 0x3727C5AC
  set_option(18, 0);
  EXPECT_EQ(output_context->depth.depth_bias, 0x1.0624dep-10F);  // bit pattern 0x3A83126F
}

TEST_F(Option, NineteenIsTheAlphaByItsLowByte) {
  open_rgba_page(1, 1);
  set_option(19, 0x1FE);
  EXPECT_EQ(output_context->colours.colour_alpha, 0xFE);
  set_option(19, -1);
  EXPECT_EQ(output_context->colours.colour_alpha, 255);
  set_option(19, 0);
  qqvfll(0, 0, 0, 0, 1);
  EXPECT_EQ(rgba_at(0, 0), "ffffff00");
}

TEST_F(Option, TwentyOneIsTurnedOver) {
  set_option(21, 1);
  EXPECT_EQ(output_context->depth.blend_over_background, 0);
  set_option(21, 0);
  EXPECT_EQ(output_context->depth.blend_over_background, 1);
}

TEST_F(Option, TwentyFiveIsTheLevelOfTheCharacterMapping) {
  set_option(25, 95);
  EXPECT_EQ(output_context->options.text_map_level, 95);
}

TEST_F(Option, TwentySixToTwentyEightAreThePenAfterTheOldOneHasDrawn) {
  open_page(3, 3);
  qqvlin(0, 0, 2, 0);
  set_option(26, 3);
  EXPECT_EQ(picture_without_flush(), rows({"111", "...", "..."}));
  set_option(27, 0);
  set_option(28, 1);
  EXPECT_EQ(output_context->pen.line_width, 3);
  EXPECT_EQ(output_context->pen.line_cap, 0);
  EXPECT_EQ(output_context->pen.line_join, 1);
}

TEST_F(Option, ThirtyThreeSwitchesClippingOffWithOneAndOnWithAnythingElse) {
  open_page(3, 1);
  for (const int32_t value : {0, 2, -1, 257}) {
    set_option(33, 1);
    EXPECT_EQ(output_context->page.clip_on, 0);
    set_option(33, value);
    EXPECT_EQ(output_context->page.clip_on, 1) << value;
  }
}

TEST_F(Option, ThirtyThreeDrawsGatheredLinesFirst) {
  open_page(3, 1);
  set_clip_rectangle(1, 0, 1, 0);
  qqvlin(0, 0, 2, 0);
  set_option(33, 0);
  EXPECT_EQ(picture_without_flush(), rows({"111"}));
}

TEST_F(Option, ThirtyFourIsOneLessThanItsValue) {
  set_option(34, 2);
  EXPECT_EQ(output_context->pen.line_smooth_on, 1);
  set_option(34, 1);
  EXPECT_EQ(output_context->pen.line_smooth_on, 0);
  set_option(34, 0);
  EXPECT_EQ(output_context->pen.line_smooth_on, 255);
  set_option(34, INT32_MIN);
  EXPECT_EQ(output_context->pen.line_smooth_on, 255);
}

TEST_F(Option, NinetyNinePutsTheDefaultsBack) {
  open_page(2, 2);
  set_pen(9, 0, 0);
  set_option(19, 3);
  set_option(32, 5);
  set_option(21, 1);
  set_option(3, 1);
  set_option(17, 0);
  callback_slots = {this, this, this};
  set_option(99, 1234);
  EXPECT_EQ(output_context->pen.line_width, 1);
  EXPECT_EQ(output_context->pen.line_cap, 2);
  EXPECT_EQ(output_context->pen.line_join, 2);
  EXPECT_EQ(output_context->colours.colour_alpha, 255);
  EXPECT_EQ(output_context->colours.transparent_colour, -1);
  EXPECT_EQ(output_context->depth.blend_over_background, 1);
  EXPECT_EQ(output_context->options.swap_black_white, 0);
  EXPECT_EQ(output_context->depth.depth_bias, 0.001F);
  EXPECT_EQ(callback_slots.projection, nullptr);
  EXPECT_EQ(callback_slots.pie, nullptr);
  EXPECT_EQ(callback_slots.window, nullptr);
}

TEST_F(Option, OfAnyOtherNumberIsIgnored) {
  open_page(2, 2);
  const OutputContext before = *output_context;
  for (const int32_t option : {-1, 4, 10, 15, 16, 22, 24, 31, 35, 98, 100, INT32_MAX, INT32_MIN})
    set_option(option, 7);
  EXPECT_EQ(before.pen.line_width, output_context->pen.line_width);
  EXPECT_EQ(before.colours.colour_alpha, output_context->colours.colour_alpha);
  EXPECT_EQ(before.page.clip_x1, output_context->page.clip_x1);
  EXPECT_EQ(before.page.clip_x2, output_context->page.clip_x2);
  EXPECT_EQ(before.page.clip_y1, output_context->page.clip_y1);
  EXPECT_EQ(before.page.clip_y2, output_context->page.clip_y2);
  EXPECT_EQ(before.colours.transparent_colour, output_context->colours.transparent_colour);
  EXPECT_EQ(before.options.text_map_level, output_context->options.text_map_level);
}

}  // namespace
}  // namespace quorix::testing
