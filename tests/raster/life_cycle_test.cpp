// SPDX-License-Identifier: MIT
// Opening, erasing, cropping and releasing the raster, and the record behind it.

#include <climits>

#include "platform/callbacks.h"
#include "raster/raster.h"
#include "tests/raster/raster_page.h"
#include "tests/support/failing_memory.h"
#include "window/window_set.h"

namespace quorix::testing {
namespace {

using LifeCycle = RasterTest;

struct Opened {
  int32_t w;
  int32_t h;
  int32_t status;
  int32_t result;
};

Opened open(int32_t page_w, int32_t page_h, int32_t w, int32_t h, int32_t have_size,
            int32_t status) {
  Opened opened{w, h, status, 0};
  opened.result = qqvini(page_w, page_h, &opened.w, &opened.h, have_size, &opened.status);
  return opened;
}

// ---- Opening

TEST_F(LifeCycle, ALandscapePageWithoutASizeIsEightHundredAndFiftyThreeWide) {
  const Opened opened = open(-100, 50, 0, 0, 0, 1);
  EXPECT_EQ(opened.result, 0);
  EXPECT_EQ(opened.status, 0);
  EXPECT_EQ(opened.w, 853);
  EXPECT_EQ(opened.h, 603);
  EXPECT_EQ(output_context->page.width, 853);
  EXPECT_EQ(output_context->page.height, 603);
  EXPECT_EQ(output_context->page.stride, 853 * 4);
}

TEST_F(LifeCycle, AWhiteRgbaPageIsTransparentWhiteEverywhere) {
  open(-100, 50, 0, 0, 0, 1);
  const std::vector<uint8_t> bytes = page_content();
  ASSERT_EQ(bytes.size(), 853U * 603U * 4U);
  size_t wrong = 0;
  for (size_t i = 0; i < bytes.size(); i++) {
    if (bytes[i] != (i % 4 == 3 ? 0 : 255)) wrong++;
  }
  EXPECT_EQ(wrong, 0U);
}

TEST_F(LifeCycle, EqualSidesCountAsPortrait) {
  const Opened opened = open(100, 100, 0, 0, 0, 0);
  EXPECT_EQ(opened.w, 603);
  EXPECT_EQ(opened.h, 853);
}

TEST_F(LifeCycle, OneMoreInWidthCountsAsLandscape) {
  const Opened opened = open(101, 100, 0, 0, 0, 0);
  EXPECT_EQ(opened.w, 853);
  EXPECT_EQ(opened.h, 603);
}

TEST_F(LifeCycle, ANegativePageWidthCountsByItsAbsoluteValue) {
  EXPECT_EQ(open(-100, 100, 0, 0, 0, 0).w, 603);
  EXPECT_EQ(open(-101, 100, 0, 0, 0, 0).w, 853);
}

TEST_F(LifeCycle, TheSmallestPageWidthIsALandscapeRgbaPage) {
  const Opened opened = open(INT32_MIN, INT32_MAX, 0, 0, 0, 0);
  EXPECT_EQ(opened.w, 853);
  EXPECT_EQ(output_context->page.rgba_mode, 1);
}

TEST_F(LifeCycle, AGivenSizeIsKept) {
  const Opened opened = open(100, 50, 7, 5, -1, 0);
  EXPECT_EQ(opened.w, 7);
  EXPECT_EQ(opened.h, 5);
  EXPECT_EQ(output_context->page.stride, 7);
  EXPECT_EQ(output_context->page.rgba_mode, 0);
  EXPECT_EQ(output_context->buffers.raster_state, raster_open);
  EXPECT_EQ(output_context->buffers.raster.pixels, output_context->buffers.raster_base.pixels);
}

TEST_F(LifeCycle, AnRgbaPageHasFourBytesPerPixel) {
  open(-1, 1, 7, 5, 1, 0);
  EXPECT_EQ(output_context->page.stride, 28);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(140, 0));
}

TEST_F(LifeCycle, AWhitePalettePageIsStillAllZeros) {
  open(1, 1, 7, 5, 1, 1);
  EXPECT_EQ(output_context->page.white_background, 1);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(35, 0));
}

TEST_F(LifeCycle, OnlyTheFirstByteOfTheStatusAsksForWhite) {
  open(-1, 1, 1, 1, 1, 0x100);
  EXPECT_EQ(output_context->page.white_background, 0);
  EXPECT_EQ(page_content(), (std::vector<uint8_t>{0, 0, 0, 0}));
  open(-1, 1, 1, 1, 1, 0x180);
  EXPECT_EQ(output_context->page.white_background, 0x80);
  EXPECT_EQ(page_content(), (std::vector<uint8_t>{255, 255, 255, 0}));
}

TEST_F(LifeCycle, TheClipRectangleIsTheWholePage) {
  open(1, 1, 7, 5, 1, 0);
  EXPECT_EQ(output_context->page.clip_x1, 0);
  EXPECT_EQ(output_context->page.clip_y1, 0);
  EXPECT_EQ(output_context->page.clip_x2, 6);
  EXPECT_EQ(output_context->page.clip_y2, 4);
}

TEST_F(LifeCycle, OpeningAgainKeepsPaletteColourAndPen) {
  open_page(9, 9);
  qqvclr(2);
  set_pen(3, 0, 1);
  open(1, 1, 4, 3, 1, 0);
  EXPECT_EQ(output_context->colours.palette_r[2], 255);
  EXPECT_EQ(output_context->colours.palette_g[3], 255);
  EXPECT_EQ(output_context->colours.colour_index, 2);
  EXPECT_EQ(output_context->colours.colour_r, 255);
  EXPECT_EQ(output_context->pen.line_width, 3);
  EXPECT_EQ(output_context->pen.line_cap, 0);
  EXPECT_EQ(output_context->pen.line_join, 1);
}

TEST_F(LifeCycle, OpeningAgainGivesAnEmptyPageOfTheNewSizeAndMode) {
  open_page(9, 9);
  qqvfll(0, 0, 8, 8, 1);
  open(-1, 1, 4, 3, 1, 0);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(48, 0));
  EXPECT_EQ(output_context->page.clip_x2, 3);
}

TEST_F(LifeCycle, LinesGatheredBeforeOpeningAgainAreDrawnOnTheNewPage) {
  open_page(9, 9);
  qqvlin(0, 1, 2, 1);
  open(1, 1, 4, 3, 1, 0);
  EXPECT_EQ(picture_without_flush(), rows({"....", "....", "...."}));
  EXPECT_EQ(picture(), rows({"....", "111.", "...."}));
}

TEST_F(LifeCycle, SizesBelowOneGiveStatusOneAndNoRaster) {
  const int32_t sizes[][2] = {{0, 5}, {5, 0}, {-1, 5}, {5, -1}, {INT32_MIN, INT32_MIN}};
  for (const int32_t(&size)[2] : sizes) {
    open_page(3, 3);
    const Opened opened = open(1, 1, size[0], size[1], 1, 0);
    EXPECT_EQ(opened.status, 1);
    EXPECT_EQ(opened.result, 0);
    uint8_t *raster = reinterpret_cast<uint8_t *>(this);
    qqvptr(&raster);
    EXPECT_EQ(raster, nullptr);
    EXPECT_EQ(output_context->buffers.raster_base.pixels, nullptr);
  }
}

TEST_F(LifeCycle, SizesBeyondAllMemoryGiveStatusOne) {
  EXPECT_EQ(open(-1, 1, INT32_MAX, INT32_MAX, 1, 0).status, 1);
  EXPECT_EQ(open(1, 1, INT32_MAX, INT32_MAX, 1, 0).status, 1);
}

TEST_F(LifeCycle, WithoutMemoryTheSizeIsTheNewOneAndThereIsNoRaster) {
  open_page(3, 3);
  FailingMemory memory(1);
  const Opened opened = open(-1, 1, 7, 5, 1, 0);
  EXPECT_TRUE(memory.failed());
  EXPECT_EQ(opened.status, 1);
  EXPECT_EQ(opened.result, 0);
  EXPECT_EQ(output_context->buffers.raster_base.pixels, nullptr);
  EXPECT_EQ(output_context->buffers.raster.pixels, nullptr);
  EXPECT_EQ(output_context->page.width, 7);
  EXPECT_EQ(output_context->page.height, 5);
  EXPECT_EQ(output_context->page.stride, 28);
}

// ---- Erasing and releasing

TEST_F(LifeCycle, ErasingMakesAllOfItBackground) {
  open_page(3, 2);
  qqvfll(0, 0, 1, 1, 5);
  EXPECT_EQ(qqvers(), 0);
  EXPECT_EQ(page_content(), std::vector<uint8_t>(6, 0));
}

TEST_F(LifeCycle, ErasingAWhiteRgbaPageMakesItTransparentWhite) {
  open_rgba_page(2, 1, true);
  qqvfll(0, 0, 1, 0, 2);
  qqvers();
  EXPECT_EQ(page_content(), (std::vector<uint8_t>{255, 255, 255, 0, 255, 255, 255, 0}));
}

TEST_F(LifeCycle, ErasingDrawsGatheredLinesFirstSoThatTheyAreErasedToo) {
  open_page(4, 2);
  qqvlin(0, 0, 3, 0);
  qqvers();
  EXPECT_EQ(picture(), rows({"....", "...."}));
}

TEST_F(LifeCycle, ErasingLeavesTheClipRectangle) {
  open_page(4, 4);
  set_clip_rectangle(1, 1, 2, 2);
  qqvfll(0, 0, 3, 3, 1);
  qqvers();
  EXPECT_EQ(output_context->page.clip_x1, 1);
  EXPECT_EQ(picture(), rows({"....", "....", "....", "...."}));
}

TEST_F(LifeCycle, ClosingReleasesTheBuffersButKeepsTheRecord) {
  open_page(3, 3);
  EXPECT_EQ(qqvfin(), 0);
  ASSERT_NE(output_context, nullptr);
  EXPECT_EQ(output_context->buffers.raster_base.pixels, nullptr);
  EXPECT_EQ(output_context->buffers.blend_raster.pixels, nullptr);
  EXPECT_EQ(output_context->page.width, 3);
  EXPECT_EQ(output_context->buffers.raster_state, raster_open);
  EXPECT_EQ(output_context->colours.palette_r[2], 255);
}

TEST_F(LifeCycle, ClosingTwiceDoesNothingMore) {
  open_page(3, 3);
  qqvfin();
  EXPECT_EQ(qqvfin(), 0);
  EXPECT_EQ(output_context->buffers.raster_base.pixels, nullptr);
}

TEST_F(LifeCycle, APageCanBeOpenedAfterClosing) {
  open_page(3, 3);
  qqvfin();
  open(1, 1, 2, 2, 1, 0);
  qqvfll(0, 0, 0, 0, 4);
  EXPECT_EQ(picture(), rows({"4.", ".."}));
}

TEST_F(LifeCycle, FreeingTheRecordClearsTheGlobalPointerAndThePage) {
  FailingMemory memory;
  open_page(3, 3);
  EXPECT_GT(memory.live_blocks(), 0U);
  EXPECT_EQ(qqwfree(), 0);
  EXPECT_EQ(output_context, nullptr);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(LifeCycle, FreeingWithoutARecordDoesNothing) {
  EXPECT_EQ(qqwfree(), 0);
  EXPECT_EQ(output_context, nullptr);
}

TEST_F(LifeCycle, ARecordMadeAfterFreeingHasNothingOfTheOldOne) {
  open_page(3, 3);
  qqvlin(0, 0, 2, 2);
  set_pen(3, 0, 1);
  qqwfree();
  open(1, 1, 3, 3, 1, 0);
  EXPECT_EQ(output_context->accumulator.poly_count, 0);
  EXPECT_EQ(output_context->pen.line_width, 1);
  EXPECT_EQ(output_context->colours.colour_index, 0);
}

// ---- The address of the pixels

TEST_F(LifeCycle, TheAddressIsThatOfTheRasterAndAskingForItDrawsNothing) {
  open_page(4, 1);
  qqvlin(0, 0, 3, 0);
  uint8_t *raster = nullptr;
  EXPECT_EQ(qqvptr(&raster), 0);
  EXPECT_EQ(raster, output_context->buffers.raster.pixels);
  EXPECT_EQ(picture_without_flush(), rows({"...."}));
}

// ---- The record

TEST_F(LifeCycle, ANewRecordHasTheDefaults) {
  OutputContext *context = create_output_context();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->window.window_set, nullptr);
  EXPECT_EQ(context->buffers.raster.pixels, nullptr);
  EXPECT_EQ(context->buffers.raster_base.pixels, nullptr);
  EXPECT_EQ(context->buffers.blend_raster.pixels, nullptr);
  EXPECT_EQ(context->options.font_charset, 0);
  EXPECT_EQ(context->colours.transparent_colour, -1);
  EXPECT_EQ(context->pen.line_width, 1);
  EXPECT_EQ(context->pen.line_cap, 2);
  EXPECT_EQ(context->pen.line_join, 2);
  EXPECT_EQ(context->accumulator.poly_count, 0);
  EXPECT_EQ(context->depth.depth_bias, 0.001F);
  EXPECT_EQ(context->window.widget_window_count, 0);
  EXPECT_EQ(context->options.text_map_level, 0);
  EXPECT_EQ(context->window.pending_window_event, 0);
  EXPECT_EQ(context->colours.colour_arg, 0);
  EXPECT_EQ(context->page.white_background, 0);
  EXPECT_EQ(context->window.window_active, 0);
  EXPECT_EQ(context->window.direct_bitmap, 0);
  EXPECT_EQ(context->colours.colour_alpha, 255);
  EXPECT_EQ(context->buffers.raster_state, 0);
  EXPECT_EQ(context->depth.blend_over_background, 1);
  EXPECT_EQ(context->accumulator.poly_pen_up, 0);
  EXPECT_EQ(context->page.clip_on, 0);
  EXPECT_EQ(context->window.opengl_on, 0);
  EXPECT_EQ(context->options.swap_black_white, 0);
  EXPECT_EQ(context->depth.depth_on, 0);
  EXPECT_EQ(context->depth.alpha_blend_on, 0);
  EXPECT_EQ(context->pen.line_smooth_on, 0);
  EXPECT_EQ(context->page.rgba_mode, 0);
  for (const uint8_t loaded : context->fonts.bdf_loaded)
    EXPECT_EQ(loaded, 0);
  output_context = context;  // for the release at the end of the test
}

TEST_F(LifeCycle, AWindowSetIsAddedToTheRecordOnce) {
  OutputContext *context = require_output_context();
  EXPECT_EQ(context->window.window_set, nullptr);
  EXPECT_EQ(require_output_context(), context);
  WindowSet *set = require_window_set(context);
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(context->window.window_set, set);
  EXPECT_EQ(set->pen_style, 0x11100U);
  EXPECT_EQ(require_window_set(context), set);
}

TEST_F(LifeCycle, TheDefaultsOfTheOutputLeavePaletteColourAndClipping) {
  open_page(5, 5);
  set_clip_rectangle(1, 1, 3, 3);
  switch_clipping(true);
  qqvclr(2);
  output_context->options.text_map_level = 95;
  output_context->options.font_charset = 3;
  output_context->depth.depth_bias = 1.0F;
  output_context->window.pending_window_event = 4;
  output_context->depth.blend_over_background = 0;
  output_context->colours.transparent_colour = 7;
  output_context->colours.colour_alpha = 9;
  set_pen(8, 0, 0);
  output_context->options.swap_black_white = 1;
  output_context->pen.line_smooth_on = 1;
  callback_slots = {this, this, this};

  restore_defaults(output_context);

  EXPECT_EQ(output_context->options.text_map_level, 95);
  EXPECT_EQ(output_context->options.font_charset, 0);
  EXPECT_EQ(output_context->depth.depth_bias, 0.001F);
  EXPECT_EQ(output_context->window.pending_window_event, 0);
  EXPECT_EQ(output_context->depth.blend_over_background, 1);
  EXPECT_EQ(output_context->colours.transparent_colour, -1);
  EXPECT_EQ(output_context->colours.colour_alpha, 255);
  EXPECT_EQ(output_context->pen.line_width, 1);
  EXPECT_EQ(output_context->pen.line_cap, 2);
  EXPECT_EQ(output_context->pen.line_join, 2);
  EXPECT_EQ(output_context->options.swap_black_white, 0);
  EXPECT_EQ(callback_slots.projection, nullptr);
  EXPECT_EQ(callback_slots.pie, nullptr);
  EXPECT_EQ(callback_slots.window, nullptr);
  EXPECT_EQ(output_context->pen.line_smooth_on, 1);
  EXPECT_EQ(output_context->page.clip_on, 1);
  EXPECT_EQ(output_context->page.clip_x1, 1);
  EXPECT_EQ(output_context->colours.colour_index, 2);
}

TEST_F(LifeCycle, TheDefaultsOfTheOutputResetThePenStyleOfAWindowSet) {
  OutputContext *context = require_output_context();
  require_window_set(context)->pen_style = 1;
  restore_defaults(context);
  EXPECT_EQ(output_context->window.window_set->pen_style, 69888U);
}

}  // namespace
}  // namespace quorix::testing
