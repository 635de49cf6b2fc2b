// SPDX-License-Identifier: MIT
//
// The blend layer: opening, drawing, compositing on the page and on a window, and wrong orders.

#include "tests/depth/depth_page.h"

namespace quorix::testing {
namespace {

class BlendLayer : public DepthTest {
 protected:
  // One pixel, drawn with that alpha.
  static void put(int32_t x, int32_t y, uint32_t r, uint32_t g, uint32_t b, int32_t alpha) {
    set_option(19, alpha);
    qqvpix(x, y, packed_rgb(r, g, b));
  }
  static std::string raw_pixel(const uint8_t *buffer, int32_t x, int32_t y) {
    const uint8_t *pixel = buffer + 4 * (y * output_context->page.width + x);
    char text[16];
    std::snprintf(text, sizeof(text), "%02x%02x%02x%02x", pixel[0], pixel[1], pixel[2], pixel[3]);
    return text;
  }
};

TEST_F(BlendLayer, TakesTheDrawingAndLeavesThePageUntilItIsClosed) {
  open_rgba_page(4, 3);
  EXPECT_EQ(layer(1), 0);
  EXPECT_EQ(output_context->buffers.raster_state, 2);
  put(1, 1, 1, 2, 3, 255);
  EXPECT_EQ(raw_pixel(output_context->buffers.raster_base.pixels, 1, 1), "00000000");
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
  EXPECT_EQ(rgba_at(1, 1), "010203ff");
}

TEST_F(BlendLayer, OfFullAlphaReplacesAndOfNoAlphaLeavesAll) {
  open_rgba_page(4, 3);
  put(1, 1, 9, 9, 9, 0x55);
  put(2, 1, 9, 9, 9, 0x55);
  layer(1);
  put(1, 1, 1, 2, 3, 255);
  put(2, 1, 1, 2, 3, 0);
  layer(2);
  EXPECT_EQ(rgba_at(1, 1), "010203ff");
  EXPECT_EQ(rgba_at(2, 1), "09090955");
}

TEST_F(BlendLayer, MixesByAlphaPlusOneOver256RoundedDownward) {
  open_rgba_page(4, 3);
  put(1, 1, 100, 200, 1, 255);
  layer(1);
  put(1, 1, 200, 100, 0, 127);
  layer(2);
  // 100 + (128 x 100 >> 8), 200 + (128 x -100 >> 8), 1 + (128 x -1 >> 8) = 1 - 1
  EXPECT_EQ(rgba_at(1, 1), "9696007f");
}

TEST_F(BlendLayer, MixesEveryAlphaAndPairOfChannelsAsTold) {
  open_rgba_page(256, 256);
  for (const int32_t alpha : {1, 2, 100, 128, 200, 253, 254}) {
    set_option(19, 255);
    for (int32_t d = 0; d < 256; ++d)
      qqvfll(d, 0, d, 255, packed_rgb(static_cast<uint32_t>(d), 0, 0));
    layer(1);
    set_option(19, alpha);
    for (int32_t s = 0; s < 256; ++s)
      qqvfll(0, s, 255, s, packed_rgb(static_cast<uint32_t>(s), 0, 0));
    layer(2);
    for (int32_t s = 0; s < 256; ++s) {
      for (int32_t d = 0; d < 256; ++d) {
        const int32_t product = (alpha + 1) * (s - d);
        const int32_t quotient = product / 256 - (product < 0 && product % 256 != 0 ? 1 : 0);
        ASSERT_EQ(output_context->buffers.raster.pixels[4 * (s * 256 + d)], d + quotient)
            << s << " on " << d;
      }
    }
  }
}

TEST_F(BlendLayer, IsEmptyAfterwardsButForItsColours) {
  open_rgba_page(4, 3);
  layer(1);
  put(1, 1, 1, 2, 3, 255);
  put(2, 2, 4, 5, 6, 100);
  layer(2);
  EXPECT_EQ(raw_pixel(output_context->buffers.blend_raster.pixels, 1, 1), "01020300");
  EXPECT_EQ(raw_pixel(output_context->buffers.blend_raster.pixels, 2, 2), "04050600");
  for (size_t i = 3; i < 48; i += 4)
    EXPECT_EQ(output_context->buffers.blend_raster.pixels[i], 0);
}

TEST_F(BlendLayer, IsUsedAgainAsItIs) {
  open_rgba_page(4, 3);
  layer(1);
  put(1, 1, 1, 2, 3, 255);
  layer(2);
  const uint8_t *buffer = output_context->buffers.blend_raster.pixels;
  layer(1);
  EXPECT_EQ(output_context->buffers.raster.pixels, buffer);
  EXPECT_EQ(raw_pixel(buffer, 1, 1), "01020300");
  put(0, 0, 7, 7, 7, 255);
  layer(2);
  EXPECT_EQ(rgba_at(1, 1), "010203ff");
  EXPECT_EQ(rgba_at(0, 0), "070707ff");
}

TEST_F(BlendLayer, StartsAsTheBackgroundOfThePageWithoutAlpha) {
  open_rgba_page(4, 3, true);
  layer(1);
  EXPECT_EQ(raw_pixel(output_context->buffers.raster.pixels, 3, 2), "ffffff00");
  layer(2);
  EXPECT_EQ(rgba_at(3, 2), "ffffff00");
}

TEST_F(BlendLayer, KeepsItsColourOverUntouchedBackgroundWithOption21) {
  for (const bool white : {false, true}) {
    open_rgba_page(4, 3, white);
    put(2, 1, 9, 9, 9, 255);
    set_option(21, 1);
    layer(1);
    put(1, 1, 100, 50, 20, 30);
    put(2, 1, 100, 50, 20, 30);
    layer(2);
    EXPECT_EQ(rgba_at(1, 1), "6432141e");
    // 9 + (31 x 91 >> 8), 9 + (31 x 41 >> 8), 9 + (31 x 11 >> 8)
    EXPECT_EQ(rgba_at(2, 1), "140d0a1e");
    set_option(21, 0);
    layer(1);
    put(0, 0, 100, 50, 20, 30);
    layer(2);
    // From 0: 31 x 100 >> 8 and so on; from 255: 255 + (31 x -155 >> 8) and so on.
    EXPECT_EQ(rgba_at(0, 0), white ? "ece6e21e" : "0c06021e");
  }
}

TEST_F(BlendLayer, ReachesNoFurtherThanWhatWasDrawn) {
  open_rgba_page(40, 30);
  layer(1);
  layer(2);
  EXPECT_EQ(rgba_at(39, 29), "00000000");
  layer(1);
  put(39, 29, 1, 2, 3, 255);
  put(0, 0, 4, 5, 6, 255);
  layer(2);
  EXPECT_EQ(rgba_at(39, 29), "010203ff");
  EXPECT_EQ(rgba_at(0, 0), "040506ff");
}

TEST_F(BlendLayer, TakesAlongTheLinesGatheredInItAndNotThoseBefore) {
  open_rgba_page(4, 3);
  set_option(19, 255);
  qqvclr(packed_rgb(1, 1, 1));
  qqvlin(0, 0, 3, 0);
  layer(1);
  EXPECT_EQ(raw_pixel(output_context->buffers.raster_base.pixels, 1, 0), "010101ff");
  qqvlin(0, 2, 3, 2);
  layer(2);
  EXPECT_EQ(raw_pixel(output_context->buffers.raster.pixels, 1, 2), "010101ff");
}

// ---- Wrong orders

TEST_F(BlendLayer, IsRefusedOnAPalettePage) {
  open_page(4, 3);
  qqvpix(1, 1, 3);
  EXPECT_EQ(layer(1), 1);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
  EXPECT_EQ(output_context->buffers.blend_raster.pixels, nullptr);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(index_at(1, 1), 3);
}

TEST_F(BlendLayer, IsRefusedWithoutARecordOrAPage) {
  for (const int32_t op : {1, 2, 3, 4, 5}) {
    int32_t status = 77;
    qqwabl(op, &status);
    EXPECT_EQ(status, 1) << op;
  }
  EXPECT_EQ(output_context, nullptr);
  set_option(19, 255);
  EXPECT_EQ(layer(1), 1);
  open_rgba_page(4, 3);
  qqvfin();
  EXPECT_EQ(layer(1), 1);
}

TEST_F(BlendLayer, OpenedTwiceClosesOnce) {
  open_rgba_page(4, 3);
  layer(1);
  put(1, 1, 1, 2, 3, 255);
  EXPECT_EQ(layer(1), 0);
  put(2, 1, 1, 2, 3, 255);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
  EXPECT_EQ(output_context->buffers.raster.pixels, output_context->buffers.raster_base.pixels);
  EXPECT_EQ(rgba_at(1, 1), "010203ff");
  EXPECT_EQ(rgba_at(2, 1), "010203ff");
}

TEST_F(BlendLayer, ClosedWithoutBeingOpenedOnlyDrawsWhatIsGathered) {
  open_rgba_page(4, 3);
  qqvclr(packed_rgb(1, 1, 1));
  qqvlin(0, 0, 3, 0);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
  EXPECT_EQ(raw_pixel(output_context->buffers.raster.pixels, 1, 0), "010101ff");
}

TEST_F(BlendLayer, IsForgottenByAPageOpenedAnew) {
  open_rgba_page(4, 3);
  layer(1);
  put(1, 1, 1, 2, 3, 255);
  open_rgba_page(50, 40);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(rgba_at(1, 1), "00000000");
  EXPECT_EQ(layer(1), 0);
  put(49, 39, 1, 2, 3, 255);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(rgba_at(49, 39), "010203ff");
}

TEST_F(BlendLayer, ClosesWithoutAPageThatWasReleasedUnderIt) {
  open_rgba_page(4, 3);
  layer(1);
  put(1, 1, 1, 2, 3, 255);
  qqvfin();
  put(1, 1, 1, 2, 3, 255);
  EXPECT_EQ(layer(2), 0);
  put(1, 1, 1, 2, 3, 255);
}

TEST_F(BlendLayer, IsCroppedWithThePageUnderIt) {
  open_rgba_page(9, 8);
  put(4, 4, 50, 50, 50, 255);
  layer(1);
  put(5, 4, 1, 2, 3, 255);
  const int32_t x = 3;
  const int32_t y = 2;
  const int32_t w = 4;
  const int32_t h = 5;
  int32_t status = 77;
  EXPECT_EQ(qqvwin(&x, &y, &w, &h, &status), 0);
  layer(2);
  EXPECT_EQ(rgba_at(1, 2), "323232ff");
  EXPECT_EQ(rgba_at(2, 2), "010203ff");
}

TEST_F(BlendLayer, KnowsNoOtherOperation) {
  open_rgba_page(4, 3);
  for (const int32_t op : {0, 5, -1, INT32_MAX}) {
    EXPECT_EQ(layer(op), 0) << op;
  }
  EXPECT_EQ(output_context->buffers.raster_state, 1);
  EXPECT_EQ(output_context->depth.alpha_blend_on, 0);
}

TEST_F(BlendLayer, OperationsThreeAndFourSwitchBlendedTriangles) {
  open_rgba_page(4, 3);
  EXPECT_EQ(layer(3), 0);
  EXPECT_EQ(output_context->depth.alpha_blend_on, 1);
  EXPECT_EQ(layer(4), 0);
  EXPECT_EQ(output_context->depth.alpha_blend_on, 0);
}

// ---- Windows

TEST_F(BlendLayer, OfAWindowIsBlendedOntoItsBitmap) {
  for (const int32_t bits : {24, 32}) {
    open_rgba_page(6, 5);
    open_window(bits, 2);
    make_window_active();
    uint8_t *pixel = pixel_at(window, 3, 2);
    pixel[0] = 1;
    pixel[1] = 200;
    pixel[2] = 100;
    const std::string fourth = window_pixel(window, 3, 2).substr(6);
    const std::string beside = window_pixel(window, 2, 2);
    layer(1);
    put(3, 2, 200, 100, 0, 127);
    put(4, 3, 7, 8, 9, 255);
    EXPECT_EQ(layer(2), 0);
    EXPECT_EQ(window_pixel(window, 3, 2), "009696" + fourth);
    EXPECT_EQ(window_pixel(window, 4, 3).substr(0, 6), "090807");
    EXPECT_EQ(window_pixel(window, 2, 2), beside);
    EXPECT_EQ(WindowDevice::copies_out(), 0);
    EXPECT_EQ(rgba_at(4, 3), "00000000");
  }
}

TEST_F(BlendLayer, OfAWindowFlushesItAndGivesItItsColourBack) {
  open_rgba_page(6, 5);
  open_window(24);
  make_window_active();
  output_context->colours.colour_arg = 4;
  EXPECT_EQ(layer(1), 0);
  EXPECT_EQ(window.calls, std::vector<std::string>{"flush()"});
  EXPECT_EQ(output_context->colours.colour_b, 255);  // the raster's colour is now the window's
  EXPECT_EQ(output_context->colours.colour_r, 0);
  layer(2);
  const std::vector<std::string> expected = {"flush()", "set_colour(4)"};
  EXPECT_EQ(window.calls, expected);
}

TEST_F(BlendLayer, OfAWindowMakesTheRecordAnRgbaOne) {
  open_page(6, 5);
  open_window(24);
  make_window_active();
  EXPECT_EQ(layer(1), 0);
  EXPECT_EQ(output_context->page.rgba_mode, 1);
  EXPECT_EQ(output_context->page.stride, 24);
  put(3, 2, 7, 8, 9, 255);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(window_pixel(window, 3, 2), "090807");
  // The palette page is not one that this mode could draw on.
  put(3, 2, 7, 8, 9, 255);
  qqvfll(0, 0, 5, 4, 3);
  for (int32_t i = 0; i < 30; ++i)
    EXPECT_EQ(output_context->buffers.raster_base.pixels[i], 0);
}

TEST_F(BlendLayer, OfAWindowNeedsNoRaster) {
  open_page(6, 5);
  qqvfin();
  open_window(32);
  make_window_active();
  output_context->buffers.raster_state = 0;
  EXPECT_EQ(layer(1), 0);
  put(3, 2, 7, 8, 9, 255);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(window_pixel(window, 3, 2).substr(0, 6), "090807");
  EXPECT_EQ(output_context->buffers.raster_state, 0);
}

TEST_F(BlendLayer, OfAResizedWindowIsMadeAnew) {
  open_page(6, 5);
  open_window(24);
  make_window_active();
  layer(1);
  put(3, 2, 7, 8, 9, 255);
  layer(2);
  output_context->page.width = 60;
  output_context->page.height = 50;
  output_context->page.stride = 240;
  output_context->page.clip_x2 = 59;
  output_context->page.clip_y2 = 49;
  open_window(24);
  EXPECT_EQ(layer(1), 0);
  put(59, 49, 7, 8, 9, 255);
  EXPECT_EQ(layer(2), 0);
  EXPECT_EQ(window_pixel(window, 59, 49), "090807");
}

TEST_F(BlendLayer, OfAWindowWhosePixelsCannotBeHadGivesOneAndIsClosed) {
  open_rgba_page(6, 5);
  open_window(24);
  make_window_active();
  layer(1);
  put(3, 2, 7, 8, 9, 255);
  WindowDevice::refuse_bitmaps(true);
  EXPECT_EQ(layer(2), 1);
  EXPECT_EQ(output_context->buffers.raster.pixels, output_context->buffers.raster_base.pixels);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
}

TEST_F(BlendLayer, OfNoWindowAtAllGivesOneAndIsClosed) {
  open_rgba_page(6, 5);
  make_window_active();
  EXPECT_EQ(layer(1), 0);
  put(3, 2, 7, 8, 9, 255);
  EXPECT_EQ(layer(2), 1);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
}

}  // namespace
}  // namespace quorix::testing
