// SPDX-License-Identifier: MIT
//
// Switching the depth buffer, and what it does when the page changes.

#include <cstring>

#include "tests/depth/depth_page.h"

namespace quorix::testing {
namespace {

using DepthBuffer = DepthTest;

TEST_F(DepthBuffer, HoldsTwoEverywhereWhenSwitchedOn) {
  open_page(5, 4);
  EXPECT_EQ(depth_buffer(0), 0);
  EXPECT_EQ(output_context->depth.depth_on, 1);
  for (int32_t i = 0; i < 20; ++i) {
    uint32_t bits = 0;
    std::memcpy(&bits, &output_context->depth.buffer.values[i], 4);
    EXPECT_EQ(bits, 0x40000000U);
  }
}

TEST_F(DepthBuffer, SwitchedOnTwiceGivesTwoAndStays) {
  open_page(5, 4);
  depth_buffer(0);
  depth_dot(1, 1, 0.5, 2);
  EXPECT_EQ(depth_buffer(0), 2);
  EXPECT_EQ(depth_at(1, 1), 0.5F);
}

TEST_F(DepthBuffer, GivesTwoForWhatNeedsItWhileItIsOff) {
  open_page(5, 4);
  qqvpix(2, 2, 3);
  for (const int32_t op : {1, 2, 3}) {
    EXPECT_EQ(depth_buffer(op), 2) << op;
  }
  EXPECT_EQ(index_at(2, 2), 3);
  EXPECT_EQ(output_context->depth.depth_on, 0);
}

TEST_F(DepthBuffer, TakesAnyOtherOperationForNone) {
  open_page(5, 4);
  for (const int32_t op : {4, -1, 256, INT32_MIN}) {
    EXPECT_EQ(depth_buffer(op), 0) << op;
  }
  EXPECT_EQ(output_context->depth.depth_on, 0);
  depth_buffer(0);
  EXPECT_EQ(depth_buffer(4), 0);
  EXPECT_EQ(output_context->depth.depth_on, 1);
}

TEST_F(DepthBuffer, SwitchedOffLetsEverythingPass) {
  open_page(5, 4);
  depth_buffer(0);
  depth_dot(1, 1, 0.25, 2);
  depth_dot(1, 1, 0.5, 3);
  EXPECT_EQ(index_at(1, 1), 2);
  EXPECT_EQ(depth_buffer(1), 0);
  EXPECT_EQ(output_context->depth.depth_on, 0);
  depth_dot(1, 1, 0.5, 3);
  EXPECT_EQ(index_at(1, 1), 3);
}

TEST_F(DepthBuffer, ClearedLetsWhatWasHiddenPass) {
  open_page(5, 4);
  depth_buffer(0);
  depth_dot(1, 1, 0.25, 2);
  EXPECT_EQ(depth_buffer(2), 0);
  EXPECT_EQ(depth_at(1, 1), 2.0F);
  EXPECT_EQ(index_at(1, 1), 2);
  depth_dot(1, 1, 1.5, 3);
  EXPECT_EQ(index_at(1, 1), 3);
}

TEST_F(DepthBuffer, ErasesThePageAndKeepsTheDepths) {
  open_rgba_page(5, 4, true);
  depth_buffer(0);
  depth_dot(1, 1, 0.25, packed_rgb(1, 2, 3));
  EXPECT_EQ(depth_buffer(3), 0);
  EXPECT_EQ(rgba_at(1, 1), "ffffff00");
  EXPECT_EQ(depth_at(1, 1), 0.25F);
}

TEST_F(DepthBuffer, ErasesBeforeTheLinesThatAreStillGathered) {
  open_page(5, 4);
  depth_buffer(0);
  qqvpix(0, 0, 3);
  qqvlin(1, 1, 3, 1);
  EXPECT_EQ(depth_buffer(3), 0);
  EXPECT_EQ(picture(), rows({".....", ".111.", ".....", "....."}));
}

TEST_F(DepthBuffer, ErasesTheWindowThatTheStatusNames) {
  open_page(5, 4);
  for (const int32_t bits : {24, 32}) {
    open_window(bits, 3);
    depth_buffer(0);
    qqvpix(0, 0, 3);
    for (const int32_t number : {100, 72, 0, -101}) {
      window.bytes.assign(window.bytes.size(), 7);
      EXPECT_EQ(depth_buffer(3, number), 0);
      EXPECT_EQ(window.bytes, std::vector<uint8_t>(window.bytes.size(), 0)) << number;
    }
    EXPECT_EQ(index_at(0, 0), 3);
  }
}

TEST_F(DepthBuffer, ErasesAWindowOfAWhitePageWithWhite) {
  open_rgba_page(5, 4, true);
  open_window(24);
  depth_buffer(0);
  EXPECT_EQ(depth_buffer(3, window_device_number), 0);
  EXPECT_EQ(window.bytes, std::vector<uint8_t>(window.bytes.size(), 255));
}

TEST_F(DepthBuffer, ErasesAPaletteWindowWithTheByteOfTheNearestColour) {
  open_rgba_page(5, 4, true);  // the last entry is white
  open_window(8, 2);
  depth_buffer(0);
  EXPECT_EQ(depth_buffer(3, window_device_number), 0);
  EXPECT_EQ(window.bytes, std::vector<uint8_t>(window.bytes.size(), (255 + 10) % 256));
  window.compressed = true;
  window.colour_mode = 0;
  EXPECT_EQ(depth_buffer(3, window_device_number), 0);
  EXPECT_EQ(window.bytes, std::vector<uint8_t>(window.bytes.size(), (255 + 1) / 2 + 10));
}

TEST_F(DepthBuffer, ErasesAWindowWithoutMemoryByFillingIt) {
  open_page(5, 4);
  open_window(16);
  depth_buffer(0);
  EXPECT_EQ(depth_buffer(3, window_device_number), 0);
  EXPECT_EQ(window.calls, std::vector<std::string>{"fill_rectangle(0, 0, 5, 4, 0)"});
}

TEST_F(DepthBuffer, IsNotThereWithoutARecordOrAPage) {
  EXPECT_EQ(depth_buffer(0), 1);
  EXPECT_EQ(depth_buffer(1), 1);
  EXPECT_EQ(output_context, nullptr);
  set_option(19, 255);  // makes a record
  EXPECT_EQ(depth_buffer(0), 1);
  EXPECT_EQ(output_context->depth.depth_on, 0);
  EXPECT_EQ(depth_buffer(2), 2);
}

TEST_F(DepthBuffer, FollowsAPageThatIsOpenedAtAnotherSize) {
  open_page(5, 4);
  depth_buffer(0);
  depth_dot(1, 1, 0.25, 2);
  open_page(30, 20);
  EXPECT_EQ(output_context->depth.depth_on, 1);
  for (int32_t y = 0; y < 20; ++y) {
    for (int32_t x = 0; x < 30; ++x)
      ASSERT_EQ(depth_at(x, y), 2.0F);
  }
  depth_dot(29, 19, 0.5, 2);
  EXPECT_EQ(depth_at(29, 19), 0.5F);
  EXPECT_EQ(depth_buffer(0), 2);
}

TEST_F(DepthBuffer, IsCroppedWithThePage) {
  open_page(9, 8);
  depth_buffer(0);
  depth_dot(4, 5, 0.25, 2);
  const int32_t x = 3;
  const int32_t y = 2;
  const int32_t w = 4;
  const int32_t h = 5;
  int32_t status = 77;
  EXPECT_EQ(qqvwin(&x, &y, &w, &h, &status), 0);
  EXPECT_EQ(depth_at(1, 3), 0.25F);
  EXPECT_EQ(depth_at(3, 4), 2.0F);
  depth_dot(1, 3, 0.5, 3);
  EXPECT_EQ(index_at(1, 3), 2);
}

TEST_F(DepthBuffer, OutlivesThePageWithoutBeingUsed) {
  open_page(9, 8);
  depth_buffer(0);
  qqvfin();
  depth_dot(1, 1, 0.25, 2);
  shaded_sheet(0.25, 3);
  EXPECT_EQ(depth_buffer(2), 0);
  EXPECT_EQ(depth_buffer(3), 0);
  EXPECT_EQ(depth_buffer(1), 0);
}

TEST_F(DepthBuffer, StandsAPageThatCannotBeOpened) {
  open_page(9, 8);
  depth_buffer(0);
  int32_t w = -3;
  int32_t h = 2000;
  int32_t status = 0;
  qqvini(1, 1, &w, &h, 1, &status);
  EXPECT_EQ(status, 1);
  set_clip_rectangle(-5000, -5000, 5000, 5000);
  depth_line(-10, -10, 0.5, 3000, 2500, 0.5, 2);
  shaded_sheet(0.25, 3);
  EXPECT_EQ(depth_buffer(2), 0);
  EXPECT_EQ(depth_buffer(3), 0);
  open_page(3, 3);
  EXPECT_EQ(depth_at(2, 2), 2.0F);
}

}  // namespace
}  // namespace quorix::testing
