// SPDX-License-Identifier: MIT
//
// The filters of PNG: the plain form against the words of the standard, the fast one against the
// plain one.
#include "imagein/png_unfilter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace {

using quorix::png_row_spill;
using quorix::unfilter_png_row;
using quorix::unfilter_png_row_plainly;
using Bytes = std::vector<uint8_t>;

// The standard's predictor: distances first, ties to left, then above.
int paeth_of_the_standard(int a, int b, int c) {
  const int p = a + b - c;
  const int pa = std::abs(p - a);
  const int pb = std::abs(p - b);
  const int pc = std::abs(p - c);
  if (pa <= pb && pa <= pc) return a;
  return pb <= pc ? b : c;
}

TEST(PngFilters, PaethPredictsAsTheStandardSaysForAllNeighbours) {
  int wrong = 0;
  for (int left = 0; left < 256; ++left) {
    for (int above = 0; above < 256; ++above) {
      for (int upper_left = 0; upper_left < 256; ++upper_left) {
        uint8_t row[2 + png_row_spill] = {0, 0};
        const uint8_t up[2 + png_row_spill] = {static_cast<uint8_t>(upper_left),
                                               static_cast<uint8_t>(above)};
        row[0] = static_cast<uint8_t>(left - upper_left);  // Paeth of (0, upper_left, 0) adds that
        unfilter_png_row_plainly(quorix::png_paeth, row, up, 2, 1);
        if (row[1] != paeth_of_the_standard(left, above, upper_left)) ++wrong;
      }
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST(PngFilters, TakesBackSubUpAndAverageAsOnPaper) {
  const Bytes above = {10, 20, 30, 40, 0, 0, 0, 0, 0, 0, 0, 0};
  Bytes sub = {1, 2, 3, 255, 0, 0, 0, 0, 0, 0, 0, 0};
  unfilter_png_row(quorix::png_sub, sub.data(), above.data(), 4, 1);
  EXPECT_EQ(Bytes(sub.begin(), sub.begin() + 4), (Bytes{1, 3, 6, 5}));
  Bytes up = {1, 2, 3, 250, 0, 0, 0, 0, 0, 0, 0, 0};
  unfilter_png_row(quorix::png_up, up.data(), above.data(), 4, 1);
  EXPECT_EQ(Bytes(up.begin(), up.begin() + 4), (Bytes{11, 22, 33, 34}));
  Bytes average = {1, 2, 3, 4, 0, 0, 0, 0, 0, 0, 0, 0};
  unfilter_png_row(quorix::png_average, average.data(), above.data(), 4, 1);
  // 1 + 10/2 = 6; 2 + 26/2 = 15; 3 + 45/2 = 25; 4 + 65/2 = 36
  EXPECT_EQ(Bytes(average.begin(), average.begin() + 4), (Bytes{6, 15, 25, 36}));
}

TEST(PngFilters, LeaveRowsAloneThatHaveNoneOrAnUnknownOne) {
  const Bytes above(24, 7);
  for (const uint8_t filter : Bytes{0, 5, 255}) {
    Bytes row(24, 3);
    unfilter_png_row(filter, row.data(), above.data(), 12, 3);
    EXPECT_EQ(row, Bytes(24, 3)) << int{filter};
  }
}

// Rows of noise, and rows with long stretches where nothing is added and left is like upper left.
TEST(PngFilters, ComeOutTheSameWithWholePixelsAndByteByByte) {
  std::mt19937 random(5);
  for (int round = 0; round < 4000; ++round) {
    const size_t pixel = std::vector<size_t>{1, 2, 3, 4, 6, 8}[random() % 6];
    const size_t bytes = pixel * (1 + random() % 70);
    const auto density = random() % 40;
    Bytes above(bytes + png_row_spill);
    Bytes row(bytes + png_row_spill);
    for (size_t i = 0; i < bytes; ++i) {
      above[i] = static_cast<uint8_t>(random() % 3 == 0 || i < pixel ? random() : above[i - pixel]);
      row[i] = static_cast<uint8_t>(random() % 40 < density ? random() : 0);
    }
    for (uint8_t filter = 0; filter < 6; ++filter) {
      Bytes fast = row;
      Bytes plain = row;
      unfilter_png_row(filter, fast.data(), above.data(), bytes, pixel);
      unfilter_png_row_plainly(filter, plain.data(), above.data(), bytes, pixel);
      ASSERT_EQ(fast, plain) << "filter " << int{filter} << ", pixels of " << pixel << " bytes";
    }
  }
}

}  // namespace
