// SPDX-License-Identifier: MIT
//
// Triangles and quadrilaterals shaded by palette index, on each device.

#include <algorithm>

#include "tests/depth/depth_page.h"
#include "tests/depth/literal_depth.h"

namespace quorix::testing {
namespace {

class IndexTriangle : public DepthTest {
 protected:
  static std::vector<int32_t> row_of(int32_t y) {
    std::vector<int32_t> indices;
    for (int32_t x = 0; x < output_context->page.width; ++x)
      indices.push_back(index_at(x, y));
    return indices;
  }
};
using QuadHalf = IndexTriangle;

TEST_F(IndexTriangle, WritesTheEntriesBetweenItsIndices) {
  open_page(16, 3);
  // Equal rows are ordered from the last corner to the first.
  index_triangle({0, 1, 255}, {15, 1, 255}, {15, 1, 0});
  std::vector<int32_t> expected;
  for (int32_t x = 0; x < 16; ++x)
    expected.push_back(17 * x);
  EXPECT_EQ(row_of(1), expected);
  open_rgba_page(16, 3);
  set_option(19, 9);
  index_triangle({0, 1, 255}, {15, 1, 255}, {15, 1, 0});
  EXPECT_EQ(rgba_at(7, 1), "77777709");  // entry 119
  EXPECT_EQ(rgba_at(0, 1), "00000009");
}

TEST_F(IndexTriangle, OnOneRowHasIndicesByTheYOrderAndPlacesByTheXOrder) {
  open_page(9, 3);
  // By y as above: third, second, first. By x: third, first, second.
  index_triangle({4, 1, 10}, {8, 1, 20}, {0, 1, 30});
  EXPECT_EQ(row_of(1), (std::vector<int32_t>{30, 28, 25, 23, 20, 18, 15, 13, 10}));
}

TEST_F(IndexTriangle, FillsItsRows) {
  open_page(7, 5);
  index_triangle({1, 1, 2}, {5, 1, 2}, {3, 3, 2});
  EXPECT_EQ(picture(), rows({".......", ".22222.", "..222..", "...2...", "......."}));
  index_triangle({3, 0, 4}, {1, 4, 4}, {5, 2, 4});
  EXPECT_EQ(picture(), rows({"...4...", ".22442.", "..4444.", "..44...", ".4....."}));
}

TEST_F(IndexTriangle, TakesNumbersByTheirLowByte) {
  open_page(4, 3);
  index_triangle({0, 0, 256 + 7}, {0, 0, 256 + 7}, {0, 0, 256 + 7});
  index_triangle({1, 0, -1}, {1, 0, -1}, {1, 0, -1});
  index_triangle({2, 0, 0x01000005}, {2, 0, 0x01000005}, {2, 0, 0x01000005});
  // -250.6 + 0.5 and so on: truncation is toward zero.
  index_triangle({3, 0, -250}, {3, 0, -250}, {3, 0, -250});
  EXPECT_EQ(row_of(0), (std::vector<int32_t>{7, 0, 5, 7}));
}

TEST_F(IndexTriangle, PaysNoHeedToDepths) {
  open_page(9, 9);
  depth_buffer(0);
  shaded_sheet(-1, 2);
  index_triangle({0, 0, 3}, {8, 0, 3}, {0, 8, 3});
  EXPECT_EQ(index_at(2, 2), 3);
  EXPECT_EQ(depth_at(2, 2), -1.0F);
}

TEST_F(IndexTriangle, DrawsTheGatheredLinesFirst) {
  open_page(9, 9);
  qqvlin(0, 0, 8, 0);
  index_triangle({0, 0, 3}, {8, 0, 3}, {0, 8, 3});
  EXPECT_EQ(index_at(3, 0), 3);
}

TEST_F(IndexTriangle, StaysInTheClipRectangleAndOnThePageFromAnywhere) {
  open_page(7, 5);
  set_clip_rectangle(2, 1, 4, 30);
  index_triangle({INT32_MIN, -40, 2}, {INT32_MAX, -40, 2}, {0, 1000000, 2});
  EXPECT_EQ(picture(), rows({".......", "..222..", "..222..", "..222..", "..222.."}));
}

TEST_F(IndexTriangle, OnWindowsHasTheEntrysColourOrTheMappedIndex) {
  open_page(9, 9);
  const IndexCorner corner = {4, 4, 5};
  open_window(24);
  index_triangle(corner, corner, corner, window_device_number);
  EXPECT_EQ(window_pixel(window, 4, 4), "00ffff");
  open_window(32);
  const std::string fourth = window_pixel(window, 4, 4).substr(6);
  index_triangle(corner, corner, corner, window_device_number);
  EXPECT_EQ(window_pixel(window, 4, 4), "00ffff" + fourth);
  open_window(16);
  index_triangle(corner, corner, corner, window_device_number);
  EXPECT_EQ(window.pixels[40], 0x00FFFFU);
  open_window(8);
  index_triangle(corner, corner, corner, window_device_number);
  EXPECT_EQ(*pixel_at(window, 4, 4), 15);
}

TEST_F(IndexTriangle, NeedsARecordAPageAndAWindow) {
  index_triangle({0, 0, 1}, {5, 0, 1}, {0, 5, 1});
  quad_half({{0, 0, 1}, {5, 0, 1}, {5, 5, 1}, {0, 5, 1}}, 1);
  EXPECT_EQ(output_context, nullptr);
  set_option(19, 255);
  set_clip_rectangle(-10, -10, 50, 50);
  for (const int32_t number : {raster_device_number, window_device_number}) {
    index_triangle({0, 0, 1}, {5, 0, 1}, {0, 5, 1}, number);
    quad_half({{0, 0, 1}, {5, 0, 1}, {5, 5, 1}, {0, 5, 1}}, 1, number);
  }
}

// ---- Quadrilaterals

int32_t drawn_pixels() {
  int32_t count = 0;
  for (const uint8_t byte : page_content())
    count += byte != 0 ? 1 : 0;
  return count;
}

TEST_F(QuadHalf, OfAnUprightRectangleIsDrawnWhereItsFirstEdgeLiesAlongTheRow) {
  open_page(15, 15);
  const std::vector<IndexCorner> along = {{2, 2, 9}, {12, 2, 9}, {12, 12, 9}, {2, 12, 9}};
  quad_half(along, 1);
  quad_half(along, 0);
  EXPECT_EQ(drawn_pixels(), 121);
  open_page(15, 15);
  const std::vector<IndexCorner> upright = {{2, 2, 9}, {2, 12, 9}, {12, 12, 9}, {12, 2, 9}};
  quad_half(upright, 1);
  quad_half(upright, 0);
  EXPECT_EQ(drawn_pixels(), 0);
}

TEST_F(QuadHalf, InterpolatesBilinearly) {
  open_page(11, 11);
  const std::vector<IndexCorner> corners = {{0, 0, 10}, {10, 0, 30}, {10, 10, 250}, {0, 10, 50}};
  quad_half(corners, 1);
  quad_half(corners, 2);
  EXPECT_EQ(index_at(0, 0), 10);
  EXPECT_EQ(index_at(10, 0), 30);
  EXPECT_EQ(index_at(10, 10), 250);
  EXPECT_EQ(index_at(0, 10), 50);
  // 10 + 0.5 x 20 + 0.5 x 40 + 0.25 x (250 - 50 - 30 + 10)
  EXPECT_EQ(index_at(5, 5), 85);
  EXPECT_EQ(index_at(5, 0), 20);
  EXPECT_EQ(index_at(0, 5), 30);
}

TEST_F(QuadHalf, OneIsCorners012AndAnyOther032) {
  const std::vector<IndexCorner> corners = {{0, 0, 9}, {10, 0, 9}, {10, 10, 9}, {0, 10, 9}};
  open_page(11, 11);
  quad_half(corners, 1);
  EXPECT_EQ(index_at(9, 1), 9);
  EXPECT_EQ(index_at(1, 9), 0);
  for (const int32_t half : {0, 2, -1}) {
    open_page(11, 11);
    quad_half(corners, half);
    EXPECT_EQ(index_at(9, 1), 0);
    EXPECT_EQ(index_at(1, 9), 9);
  }
}

// The pixels of a row that the map of a dart, whose corner 3 lies inside, reaches.
const std::vector<IndexCorner> dart = {{0, 0, 20}, {24, 2, 90}, {6, 22, 160}, {10, 8, 230}};

std::vector<int32_t> reached_row(int32_t y, int32_t x1, int32_t x2, std::vector<int32_t> *misses) {
  int32_t X[4];
  int32_t Y[4];
  int32_t C[4];
  for (size_t i = 0; i < 4; ++i) {
    X[i] = dart[i].x;
    Y[i] = dart[i].y;
    C[i] = dart[i].index;
  }
  std::vector<int32_t> values;
  for (int32_t x = x1; x <= x2; ++x) {
    const int32_t value = literal::quad_value(x, y, X, Y, C);
    if (value == -1) {
      misses->push_back(x);
    } else {
      values.push_back(value);
    }
  }
  return values;
}

// Columns of the triangle 0, 1, 2 in row 10: x of the edges 0-2 and 1-2.
constexpr int32_t dart_row = 10;
constexpr int32_t dart_left = 3;    // 6 x 10 / 22 = 2.7
constexpr int32_t dart_right = 17;  // 24 - 18 x 8 / 20 = 16.8

TEST_F(QuadHalf, ShiftsWhatFollowsAMissToTheLeft) {
  open_page(26, 24);
  quad_half(dart, 1);
  std::vector<int32_t> misses;
  std::vector<int32_t> expected(dart_left, 0);
  for (const int32_t value : reached_row(dart_row, dart_left, dart_right, &misses))
    expected.push_back(value);
  ASSERT_FALSE(misses.empty());
  ASSERT_LT(misses[0], dart_right - 2);  // something follows a miss
  expected.resize(26, 0);
  EXPECT_EQ(row_of(dart_row), expected);
}

TEST_F(QuadHalf, ShiftsNothingWherePixelsAreSetOneByOne) {
  open_page(26, 24);
  open_window(16);
  quad_half(dart, 1, window_device_number);
  std::vector<int32_t> misses;
  reached_row(dart_row, dart_left, dart_right, &misses);
  ASSERT_FALSE(misses.empty());
  for (int32_t x = dart_left; x <= dart_right; ++x) {
    const bool missed = std::find(misses.begin(), misses.end(), x) != misses.end();
    EXPECT_EQ(window.pixels[static_cast<size_t>(dart_row * 26 + x)] == 0xFFFFFFFFU, missed) << x;
  }
}

TEST_F(QuadHalf, ShiftsPixelsOntoThePageFromItsLeft) {
  // The span starts where the clip rectangle lets it, and misses count from there.
  for (const int32_t left : {-30, 0}) {
    open_page(26, 24);
    set_clip_rectangle(left, 0, 25, 23);
    std::vector<IndexCorner> corners = dart;
    for (IndexCorner &corner : corners)
      corner.x -= 8;
    quad_half(corners, 1);
    // The left edge is at -5.3, which is rounded toward zero to -4.
    const int32_t first = std::max(-4, left);
    std::vector<int32_t> misses;
    const std::vector<int32_t> values = reached_row(dart_row, first + 8, dart_right, &misses);
    std::vector<int32_t> expected;
    int32_t column = first;
    for (const int32_t value : values) {
      if (column >= 0) expected.push_back(value);
      ++column;
    }
    expected.resize(26, 0);
    EXPECT_EQ(row_of(dart_row), expected) << left;
  }
}

TEST_F(QuadHalf, ThatIsDegenerateDrawsNothing) {
  open_page(9, 9);
  quad_half({{4, 4, 9}, {4, 4, 9}, {4, 4, 9}, {4, 4, 9}}, 1);
  quad_half({{0, 0, 9}, {4, 4, 9}, {8, 8, 9}, {2, 2, 9}}, 1);
  EXPECT_EQ(drawn_pixels(), 0);
}

}  // namespace
}  // namespace quorix::testing
