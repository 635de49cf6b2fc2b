// SPDX-License-Identifier: MIT
//
// Calls of qqttf2 with room that is watched at its ends.
#include "tests/formats/outline_calls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "quorix/fonts.h"

namespace quorix::testing {

int32_t open_font(const std::string &name, uint8_t swap_bytes) {
  int32_t status = 99;
  EXPECT_EQ(qqttf1(name.c_str(), swap_bytes, &status), 0);
  return status;
}

Counted count_outline(int32_t code, int32_t size, CodeOf code_of) {
  Counted counted = {-99, -99, static_cast<int32_t>(code_of)};
  double x = 0.25, y = 0.25;
  int32_t contour_size = 0;
  EXPECT_EQ(qqttf2(code, &x, &y, 0, &counted.points, &contour_size, 0, &counted.contours, size,
                   &counted.status),
            0);
  EXPECT_EQ(x, 0.25);
  EXPECT_EQ(y, 0.25);
  return counted;
}

Polygons outline(int32_t code, int32_t size, CodeOf code_of) {
  const Counted counted = count_outline(code, size, code_of);
  Polygons polygons;
  polygons.status = static_cast<int32_t>(code_of);
  EXPECT_GE(counted.points, 0);
  EXPECT_GE(counted.contours, 0);
  if (counted.points < 0 || counted.contours < 0) return polygons;
  polygons.x.resize(static_cast<size_t>(counted.points));
  polygons.y.resize(static_cast<size_t>(counted.points));
  polygons.sizes.resize(static_cast<size_t>(counted.contours));
  int32_t points = -99, contours = -99;
  EXPECT_EQ(qqttf2(code, polygons.x.data(), polygons.y.data(), counted.points, &points,
                   polygons.sizes.data(), counted.contours, &contours, size, &polygons.status),
            0);
  EXPECT_EQ(points, counted.points);
  EXPECT_EQ(contours, counted.contours);
  EXPECT_EQ(polygons.status, counted.status);
  if (counted.points > 0) {
    EXPECT_EQ(std::accumulate(polygons.sizes.begin(), polygons.sizes.end(), 0), points);
  }
  return polygons;
}

Counted outline_with_room(int32_t code, int32_t size, int32_t room, int32_t contours,
                          CodeOf code_of) {
  Counted counted = {-99, -99, static_cast<int32_t>(code_of)};
  const size_t places = static_cast<size_t>(room > 0 ? room : 1);
  std::vector<double> x(places), y(places);
  std::vector<int32_t> sizes(static_cast<size_t>(contours > 0 ? contours : 1));
  EXPECT_EQ(qqttf2(code, x.data(), y.data(), room, &counted.points, sizes.data(), contours,
                   &counted.contours, size, &counted.status),
            0);
  return counted;
}

void expect_same(const Polygons &polygons, const Polygons &expected) {
  EXPECT_EQ(polygons.status, expected.status);
  EXPECT_EQ(polygons.sizes, expected.sizes);
  ASSERT_EQ(polygons.x.size(), expected.x.size());
  size_t different = 0;
  for (size_t i = 0; i < expected.x.size(); ++i) {
    const double limit = 1e-12 * (1 + std::fabs(expected.x[i]) + std::fabs(expected.y[i]));
    const bool same = std::fabs(polygons.x[i] - expected.x[i]) <= limit &&
                      std::fabs(polygons.y[i] - expected.y[i]) <= limit;
    if (!same && different++ == 0)
      ADD_FAILURE() << "point " << i << " is (" << polygons.x[i] << ", " << polygons.y[i]
                    << ") and not (" << expected.x[i] << ", " << expected.y[i] << ")";
  }
  EXPECT_EQ(different, 0U);
}

}  // namespace quorix::testing
