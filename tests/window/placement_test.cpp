// SPDX-License-Identifier: MIT
// Size and place of windows, each value from arithmetic on paper.

#include "window/placement.h"

#include <gtest/gtest.h>

#include <climits>

namespace quorix::testing {
namespace {

constexpr ScreenInfo screen = {1800, 1200, 32};
constexpr FrameMetrics frame = {4, 4, 22};

WindowPlacement placed(const WindowRequest &request, int32_t mode = 0,
                       const FrameMetrics &metrics = frame) {
  return place_window(request, screen, metrics, mode);
}

void expect_place(const WindowPlacement &p, int32_t x, int32_t y, int32_t width, int32_t height) {
  EXPECT_EQ(p.x, x);
  EXPECT_EQ(p.y, y);
  EXPECT_EQ(p.width, width);
  EXPECT_EQ(p.height, height);
}

TEST(Placement, APortraitPageTakesTwoThirdsOfTheHeight) {
  expect_place(placed({74, 3, 4, 0, 9, 9, 9, 9}), 0, 0, 600, 800);
}

TEST(Placement, ALandscapePageTakesTwoThirdsOfTheWidth) {
  expect_place(placed({74, 4, 3, 0, 9, 9, 9, 9}), 0, 0, 1200, 900);
  expect_place(placed({81, 4, 3, 0, 9, 9, 9, 9}, 3), 0, 0, 1200, 900);
}

TEST(Placement, AFullSizeWindowLeavesRoomForItsFrame) {
  expect_place(placed({80, 3, 4, 0, 0, 0, 0, 0}, 3), 0, 0, 878, 1170);
  expect_place(placed({80, 4, 3, 0, 0, 0, 0, 0}, 3), 0, 0, 1792, 1344);
}

TEST(Placement, ASquarePageCountsAsPortrait) {
  expect_place(placed({74, 5, 5, 0, 0, 0, 0, 0}), 0, 0, 800, 800);
}

TEST(Placement, TheNumberOfTheDeviceDecides) {
  struct Case {
    int32_t device, x, y;
  };
  const Case cases[] = {{72, 1192, 770}, {73, 1192, 0},  {74, 0, 0},     {75, 0, 770},
                        {76, 596, 385},  {77, 116, 100}, {78, 229, 175}, {79, 341, 250},
                        {80, 1192, 770}, {81, 1192, 770}};
  for (const Case &c : cases) {
    SCOPED_TRACE(c.device);
    expect_place(placed({c.device, 4, 3, 2, 7, 7, 600, 400}), c.x, c.y, 600, 400);
  }
}

TEST(Placement, AnOptionPutsAnyDeviceIntoACornerOrTheCentre) {
  struct Case {
    int32_t mode, x, y;
  };
  const Case cases[] = {{1, 1192, 770}, {2, 1192, 0}, {3, 0, 0}, {4, 0, 770},
                        {5, 596, 385},  {6, 0, 0},    {-1, 0, 0}};
  for (int32_t device = 72; device <= 81; ++device) {
    for (const Case &c : cases) {
      SCOPED_TRACE(device);
      expect_place(placed({device, 4, 3, 2, 7, 7, 600, 400}, c.mode), c.x, c.y, 600, 400);
    }
  }
}

TEST(Placement, OneKeepsPlaceAndSize) {
  expect_place(placed({72, 4, 3, 1, -50, 3000, 600, 400}), -50, 3000, 600, 400);
}

TEST(Placement, ASizeBeyondTheScreenIsCutBeforeThePlaceIsComputed) {
  expect_place(placed({72, 4, 3, 2, 7, 7, 5000, 5000}), 0, 0, 1792, 1170);
  expect_place(placed({72, 4, 3, 2, 7, 7, 1700, 5000}), 92, 0, 1700, 1170);
  expect_place(placed({72, 4, 3, 1, 7, 8, 5000, 5000}), 7, 8, 1792, 1170);
}

TEST(Placement, WhatWouldBeNegativeIsZero) {
  const WindowPlacement p = place_window({72, 5, 5, 0, 0, 0, 0, 0}, {600, 1200, 32}, frame, 0);
  expect_place(p, 0, 370, 800, 800);
}

TEST(Placement, SizesBelowOneBecomeOne) {
  expect_place(placed({74, 4, 3, 2, 0, 0, 0, -7}), 0, 0, 1, 1);
  expect_place(placed({74, 0, 0, 0, 0, 0, 0, 0}), 0, 0, 1, 800);
  expect_place(placed({74, 7, 0, 0, 0, 0, 0, 0}), 0, 0, 1200, 1);
  expect_place(placed({74, INT32_MIN, INT32_MAX, 0, 0, 0, 0, 0}), 0, 0, 1, 800);
}

TEST(Placement, ACaptionOf23CountsAs22) {
  EXPECT_EQ(frame_in_use({4, 5, 23}, true).caption_height, 22);
  EXPECT_EQ(frame_in_use({4, 5, 22}, true).caption_height, 22);
  EXPECT_EQ(frame_in_use({4, 5, 24}, true).caption_height, 24);
  EXPECT_EQ(frame_in_use({4, 5, 23}, true).frame_width, 4);
  EXPECT_EQ(frame_in_use({4, 5, 23}, true).frame_height, 5);
}

TEST(Placement, WithoutABorderThereIsNoFrame) {
  const FrameMetrics none = frame_in_use({4, 5, 23}, false);
  EXPECT_EQ(none.frame_width, 0);
  EXPECT_EQ(none.frame_height, 0);
  EXPECT_EQ(none.caption_height, 0);
  expect_place(placed({72, 4, 3, 2, 7, 7, 600, 400}, 0, none), 1200, 800, 600, 400);
}

}  // namespace
}  // namespace quorix::testing
