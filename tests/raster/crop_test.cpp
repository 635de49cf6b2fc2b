// SPDX-License-Identifier: MIT
// Cropping the page, and the box of what is drawn.

#include <climits>

#include "tests/raster/raster_page.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

using Crop = RasterTest;
using DrawnBox = RasterTest;

struct Cropped {
  int32_t status;
  int32_t result;
};

Cropped crop(int32_t x, int32_t y, int32_t w, int32_t h) {
  Cropped cropped{77, 77};
  cropped.result = qqvwin(&x, &y, &w, &h, &cropped.status);
  return cropped;
}

void expect_failure(const Cropped &cropped, int32_t status) {
  EXPECT_EQ(cropped.status, status);
  EXPECT_EQ(cropped.result, 1);
}

TEST_F(Crop, KeepsTheRectangle) {
  open_page(5, 4);
  qqvwpx(1, 1, 2);
  qqvwpx(3, 2, 3);
  qqvwpx(0, 0, 4);
  const Cropped cropped = crop(1, 1, 3, 2);
  EXPECT_EQ(cropped.status, 0);
  EXPECT_EQ(cropped.result, 0);
  EXPECT_EQ(picture(), rows({"2..", "..3"}));
  EXPECT_EQ(output_context->page.stride, 3);
}

TEST_F(Crop, KeepsAllFourBytesOfAnRgbaPixel) {
  open_rgba_page(3, 3);
  set_option(19, 128);
  qqvwpx(2, 1, packed_rgb(1, 2, 3));
  EXPECT_EQ(crop(1, 1, 2, 2).status, 0);
  EXPECT_EQ(output_context->page.stride, 8);
  EXPECT_EQ(rgba_at(1, 0), "01020380");
  EXPECT_EQ(rgba_at(0, 0), "00000000");
}

TEST_F(Crop, CanKeepTheWholePage) {
  open_page(3, 2);
  qqvwpx(2, 1, 5);
  EXPECT_EQ(crop(0, 0, 3, 2).status, 0);
  EXPECT_EQ(picture(), rows({"...", "..5"}));
}

TEST_F(Crop, MovesRightAndLowerEdgeOfTheClipRectangleOnly) {
  open_page(10, 10);
  set_clip_rectangle(6, 7, 8, 9);
  crop(0, 0, 4, 3);
  EXPECT_EQ(output_context->page.clip_x1, 6);
  EXPECT_EQ(output_context->page.clip_y1, 7);
  EXPECT_EQ(output_context->page.clip_x2, 3);
  EXPECT_EQ(output_context->page.clip_y2, 2);
}

TEST_F(Crop, LeavesNothingToClippedDrawingWhereTheClipRectangleLiesBeyondThePage) {
  open_page(10, 10);
  set_clip_rectangle(6, 7, 8, 9);
  crop(0, 0, 4, 3);
  qqvsym(16, 2, 2, 8);
  EXPECT_EQ(picture(), rows({"....", "....", "...."}));
}

TEST_F(Crop, DoesNotDrawGatheredLinesWhichThenComeOntoTheCroppedPage) {
  open_page(6, 3);
  qqvlin(0, 1, 5, 1);
  crop(2, 1, 3, 2);
  EXPECT_EQ(picture_without_flush(), rows({"...", "..."}));
  EXPECT_EQ(picture(), rows({"...", "111"}));
}

TEST_F(Crop, RefusesEveryRectangleThatIsNotWithinThePage) {
  open_page(5, 4);
  expect_failure(crop(-1, 0, 2, 2), -3);
  expect_failure(crop(0, -1, 2, 2), -3);
  expect_failure(crop(5, 0, 1, 1), -3);
  expect_failure(crop(0, 4, 1, 1), -3);
  expect_failure(crop(3, 0, 3, 1), -3);
  expect_failure(crop(0, 2, 1, 3), -3);
  expect_failure(crop(0, 0, 6, 1), -3);
  EXPECT_EQ(output_context->page.width, 5);
  EXPECT_EQ(output_context->page.height, 4);
}

TEST_F(Crop, RefusesAnEmptyRectangle) {
  open_page(5, 4);
  expect_failure(crop(0, 0, 0, 2), -3);
  expect_failure(crop(0, 0, 2, 0), -3);
  expect_failure(crop(0, 0, -1, 2), -3);
  expect_failure(crop(0, 0, 2, -1), -3);
}

TEST_F(Crop, RefusesSizesWhoseSumsOverflow) {
  open_page(5, 4);
  expect_failure(crop(4, 0, INT32_MAX, 1), -3);
  expect_failure(crop(0, 3, 1, INT32_MAX), -3);
}

TEST_F(Crop, WithoutMemoryLeavesTheRaster) {
  open_page(5, 4);
  qqvwpx(4, 3, 2);
  const std::vector<uint8_t> before = page_content();
  {
    const FailingMemory memory(1);
    expect_failure(crop(1, 1, 2, 2), -2);
  }
  EXPECT_EQ(page_content(), before);
}

TEST_F(Crop, OfAClosedPageIsRefused) {
  open_page(5, 4);
  qqvfin();
  expect_failure(crop(0, 0, 1, 1), -3);
}

TEST_F(Crop, WithoutARecordIsRefused) {
  expect_failure(crop(0, 0, 1, 1), -3);
}

TEST_F(Crop, LeavesEachBufferToBeReleasedOnce) {
  FailingMemory memory;
  open_page(5, 4);
  crop(1, 1, 3, 3);
  crop(1, 1, 2, 2);
  EXPECT_EQ(output_context->buffers.raster.pixels, output_context->buffers.raster_base.pixels);
  qqvfin();
  EXPECT_EQ(output_context->buffers.raster_base.pixels, nullptr);
  qqwfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(Crop, KeepsAWhiteBackgroundForErasing) {
  open_rgba_page(4, 4, true);
  crop(0, 0, 1, 1);
  qqvfll(0, 0, 0, 0, 2);
  qqvers();
  EXPECT_EQ(rgba_at(0, 0), "ffffff00");
}

// ---- The box of drawn pixels

std::vector<int32_t> box() {
  std::vector<int32_t> corners{77, 77, 77, 77};
  EXPECT_EQ(qqvcrp(&corners[0], &corners[1], &corners[2], &corners[3]), 0);
  return corners;
}

using Corners = std::vector<int32_t>;

TEST_F(DrawnBox, OfAnUntouchedPageIsTurnedInsideOut) {
  open_page(7, 5);
  EXPECT_EQ(box(), (Corners{7, 5, -1, -1}));
}

TEST_F(DrawnBox, OfOnePixelIsThatPixel) {
  open_page(7, 5);
  qqvwpx(3, 2, 1);
  EXPECT_EQ(box(), (Corners{3, 2, 3, 2}));
}

TEST_F(DrawnBox, SpansAllPixels) {
  open_page(7, 5);
  qqvwpx(5, 1, 1);
  qqvwpx(2, 3, 1);
  qqvwpx(4, 2, 1);
  EXPECT_EQ(box(), (Corners{2, 1, 5, 3}));
}

TEST_F(DrawnBox, ReachesTheCornersOfThePage) {
  open_page(7, 5);
  qqvwpx(0, 4, 1);
  qqvwpx(6, 0, 1);
  EXPECT_EQ(box(), (Corners{0, 0, 6, 4}));
}

TEST_F(DrawnBox, DrawsGatheredLinesFirst) {
  open_page(7, 5);
  qqvlin(1, 1, 4, 1);
  EXPECT_EQ(box(), (Corners{1, 1, 4, 1}));
}

TEST_F(DrawnBox, DoesNotLookAtAlpha) {
  open_rgba_page(7, 5);
  qqvwpx(3, 2, packed_rgb(0, 0, 0));  // alpha 255 on alpha 0
  EXPECT_EQ(box(), (Corners{7, 5, -1, -1}));
}

TEST_F(DrawnBox, LooksAtEachOfTheThreeColours) {
  open_rgba_page(9, 9);
  qqvwpx(2, 4, packed_rgb(1, 0, 0));
  EXPECT_EQ(box(), (Corners{2, 4, 2, 4}));
  qqvwpx(3, 5, packed_rgb(0, 1, 0));
  EXPECT_EQ(box(), (Corners{2, 4, 3, 5}));
  qqvwpx(4, 6, packed_rgb(0, 0, 1));
  EXPECT_EQ(box(), (Corners{2, 4, 4, 6}));
}

TEST_F(DrawnBox, OfAWhiteRgbaPageTakesWhiteForBackground) {
  open_rgba_page(7, 5, true);
  qqvwpx(1, 1, packed_rgb(255, 255, 255));
  EXPECT_EQ(box(), (Corners{7, 5, -1, -1}));
  qqvwpx(2, 3, packed_rgb(0, 0, 0));
  EXPECT_EQ(box(), (Corners{2, 3, 2, 3}));
}

TEST_F(DrawnBox, OfAPalettePageTakesZeroForBackgroundWhateverWasAskedFor) {
  int32_t w = 4;
  int32_t h = 4;
  int32_t status = 1;
  qqvini(1, 1, &w, &h, 1, &status);
  EXPECT_EQ(box(), (Corners{4, 4, -1, -1}));
  qqvwpx(1, 2, 255);
  EXPECT_EQ(box(), (Corners{1, 2, 1, 2}));
}

TEST_F(DrawnBox, OfAClosedPageIsEmpty) {
  open_page(7, 5);
  qqvwpx(3, 2, 1);
  qqvfin();
  EXPECT_EQ(box(), (Corners{7, 5, -1, -1}));
}

TEST_F(DrawnBox, WithoutARecordIsEmpty) {
  EXPECT_EQ(box(), (Corners{0, 0, -1, -1}));
}

}  // namespace
}  // namespace quorix::testing
