// SPDX-License-Identifier: MIT
//
// Numbers at the start of a text.
#include "base/leading_numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace quorix::testing {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(LeadingInt, ReadsDigitsUpToWhatIsNone) {
  EXPECT_EQ(leading_int("12"), 12);
  EXPECT_EQ(leading_int("12x7"), 12);
  EXPECT_EQ(leading_int("007 8"), 7);
  EXPECT_EQ(leading_int("3.9"), 3);
}

TEST(LeadingInt, PassesOverWhiteSpaceAndOneSign) {
  EXPECT_EQ(leading_int(" \t\n\v\f\r5"), 5);
  EXPECT_EQ(leading_int(" -5"), -5);
  EXPECT_EQ(leading_int("+5"), 5);
  EXPECT_EQ(leading_int("+-5"), 0);
  EXPECT_EQ(leading_int("- 5"), 0);
}

TEST(LeadingInt, IsZeroWhereNothingFits) {
  for (const char *text : {"", " ", "-", "+", "x", ".5",
                           "\x0e"
                           "5",
                           ":", "/"})
    EXPECT_EQ(leading_int(text), 0) << text;
}

TEST(LeadingInt, EndsAtTheEndsOfItsRange) {
  EXPECT_EQ(leading_int("2147483647"), INT32_MAX);
  EXPECT_EQ(leading_int("2147483648"), INT32_MAX);
  EXPECT_EQ(leading_int("-2147483648"), INT32_MIN);
  EXPECT_EQ(leading_int("-2147483649"), INT32_MIN);
  EXPECT_EQ(leading_int(std::string(1000, '9').c_str()), INT32_MAX);
  EXPECT_EQ(leading_int(("-" + std::string(1000, '9')).c_str()), INT32_MIN);
}

TEST(LeadingReal, ReadsFractionsAndExponents) {
  EXPECT_EQ(leading_real("1.5"), 1.5);
  EXPECT_EQ(leading_real(" -2.5e3x"), -2500.0);
  EXPECT_EQ(leading_real("+.5"), 0.5);
  EXPECT_EQ(leading_real("25E-2 7"), 0.25);
  EXPECT_EQ(leading_real("4e"), 4.0);
}

TEST(LeadingReal, IsZeroWhereNothingFits) {
  for (const char *text : {"", "-", "x1", "--5", "-+5", "+-5", "++5", "e5"})
    EXPECT_EQ(leading_real(text), 0.0) << text;
}

TEST(LeadingReal, IsInfiniteOrZeroBeyondTheRangeOfDoubles) {
  EXPECT_EQ(leading_real("1e400"), infinity);
  EXPECT_EQ(leading_real("1E+400"), infinity);
  EXPECT_EQ(leading_real("-1e400"), -infinity);
  EXPECT_EQ(leading_real((std::string(400, '9') + ".5").c_str()), infinity);
  EXPECT_EQ(leading_real("1e-400"), 0.0);
  EXPECT_EQ(leading_real("1E-400"), 0.0);
  EXPECT_TRUE(std::signbit(leading_real("-1e-400")));
}

TEST(LeadingReal, KnowsInfinitiesAndNaN) {
  EXPECT_EQ(leading_real("inf"), infinity);
  EXPECT_EQ(leading_real("-INF"), -infinity);
  EXPECT_TRUE(std::isnan(leading_real("NaN")));
}

}  // namespace
}  // namespace quorix::testing
