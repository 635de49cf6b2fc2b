// SPDX-License-Identifier: MIT
// The literal raster's own helpers. All else in it is told by its agreement with the library, and
// the library by pictures that were worked out by hand.

#include "tests/raster/literal_raster.h"

#include <gtest/gtest.h>

#include <limits>

namespace quorix::literal {
namespace {

TEST(LiteralRaster, FindsTheStateOfAWalkAsIfItHadTakenAllItsSteps) {
  for (int64_t major = 1; major <= 40; major++) {
    for (int64_t minor = 0; minor <= major; minor++) {
      int64_t moved = 0;
      int64_t error = -(major / 2);
      for (int64_t step = 0; step <= major; step++) {
        const Walk walk = walk_from(step, major, minor);
        ASSERT_EQ(walk.moved, moved) << major << " " << minor << " " << step;
        ASSERT_EQ(walk.error, error) << major << " " << minor << " " << step;
        error += minor;
        if (error > 0) {
          error -= major;
          moved++;
        }
      }
    }
  }
}

TEST(LiteralRaster, ConvertsEveryDouble) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(to_int(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(to_int(infinity), INT32_MAX);
  EXPECT_EQ(to_int(-infinity), INT32_MIN);
  EXPECT_EQ(to_int(2147483647.9), INT32_MAX);
  EXPECT_EQ(to_int(-2147483648.9), INT32_MIN);
  EXPECT_EQ(to_int(2147483646.9), 2147483646);
  EXPECT_EQ(to_int(1.9), 1);
  EXPECT_EQ(to_int(-1.9), -1);
}

}  // namespace
}  // namespace quorix::literal
