// SPDX-License-Identifier: MIT
//
// Decimal texts to doubles: values from paper, the standard library's conversion, and texts that
// stand exactly between two doubles, written down by exact arithmetic.
#include "base/nearest_real.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <system_error>

#include "base/leading_numbers.h"

namespace quorix::testing {
namespace {

using Random = std::mt19937_64;

double read(const std::string &text) {
  double number = -7.0;
  read_nearest_real(text.c_str(), &number);
  return number;
}

size_t length_read(const std::string &text) {
  double number = 0.0;
  return static_cast<size_t>(read_nearest_real(text.c_str(), &number) - text.c_str());
}

// All digits of a double, which are finitely many: decimal long multiplication and division by 2.
std::string exact_digits(uint64_t mantissa, int exponent) {
  std::string whole = std::to_string(mantissa);
  std::string fraction;
  for (; exponent > 0; --exponent) {
    int carry = 0;
    for (size_t i = whole.size(); i-- > 0;) {
      const int twice = 2 * (whole[i] - '0') + carry;
      whole[i] = static_cast<char>('0' + twice % 10);
      carry = twice / 10;
    }
    if (carry != 0) whole.insert(whole.begin(), static_cast<char>('0' + carry));
  }
  for (; exponent < 0; ++exponent) {
    int rest = 0;
    for (std::string *part : {&whole, &fraction}) {
      for (char &digit : *part) {
        const int value = 10 * rest + (digit - '0');
        digit = static_cast<char>('0' + value / 2);
        rest = value % 2;
      }
    }
    if (rest != 0) fraction += '5';
  }
  return whole + "." + fraction;
}

TEST(NearestReal, ReadsPlainNumbers) {
  EXPECT_EQ(read("0"), 0.0);
  EXPECT_EQ(read("12"), 12.0);
  EXPECT_EQ(read("5."), 5.0);
  EXPECT_EQ(read(".5"), 0.5);
  EXPECT_EQ(read("007.250"), 7.25);
  EXPECT_EQ(read("1e3"), 1000.0);
  EXPECT_EQ(read("25E-2"), 0.25);
  EXPECT_EQ(read("1.5e+1"), 15.0);
  EXPECT_EQ(read("0e999999999999"), 0.0);
}

TEST(NearestReal, EndsBehindWhatBelongsToTheNumber) {
  EXPECT_EQ(length_read("12x"), 2U);
  EXPECT_EQ(length_read("1.2.3"), 3U);
  EXPECT_EQ(length_read("1e"), 1U);
  EXPECT_EQ(length_read("1e+"), 1U);
  EXPECT_EQ(length_read("1e+5z"), 4U);
  EXPECT_EQ(length_read("."), 0U);
  EXPECT_EQ(length_read("-1"), 0U);
  EXPECT_EQ(length_read("e5"), 0U);
  EXPECT_EQ(read("x"), -7.0);  // left alone
}

TEST(NearestReal, GivesInfinityAndZeroBeyondTheRange) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(read("1.7976931348623157e308"), largest);
  // The middle between the largest double and what would follow it is 2^1024 - 2^970.
  EXPECT_EQ(read(exact_digits((uint64_t{1} << 54) - 1, 970)), HUGE_VAL);
  EXPECT_EQ(read(exact_digits((uint64_t{1} << 54) - 2, 970)), largest);
  EXPECT_EQ(read("1e309"), HUGE_VAL);
  EXPECT_EQ(read("1e999999999999"), HUGE_VAL);
  EXPECT_EQ(read("1" + std::string(400, '0')), HUGE_VAL);
  EXPECT_EQ(read("1" + std::string(400, '0') + "e-400"), 1.0);
  EXPECT_EQ(read("1e-400"), 0.0);
  EXPECT_EQ(read("1e-999999999999"), 0.0);
  EXPECT_EQ(read("0." + std::string(400, '0') + "1e401"), 1.0);
}

TEST(NearestReal, RoundsTheSmallestDoubles) {
  const double smallest = std::numeric_limits<double>::denorm_min();
  const std::string half = exact_digits(1, -1075);
  EXPECT_EQ(read(exact_digits(1, -1074)), smallest);
  EXPECT_EQ(read(half), 0.0);  // to the even one
  EXPECT_EQ(read(half + "0000001"), smallest);
  EXPECT_EQ(read(exact_digits(3, -1075)), 2 * smallest);
  EXPECT_EQ(read(exact_digits(1, -1076)), 0.0);
}

TEST(NearestReal, RoundsTheMiddleToTheEvenOneAndAnythingBesideItToItsSide) {
  Random random(11);
  for (int k = 0; k < 3000; ++k) {
    // mantissa * 2^exponent and its upper neighbour, and half way between them.
    const uint64_t mantissa = (random() >> 12) | uint64_t{1} << 52;
    const int exponent = static_cast<int>(random() % 2000) - 1070;
    if (exponent > 960) continue;
    const double low = std::ldexp(static_cast<double>(mantissa), exponent);
    const double high = std::ldexp(static_cast<double>(mantissa + 1), exponent);
    const std::string middle = exact_digits(2 * mantissa + 1, exponent - 1);
    ASSERT_EQ(read(middle), mantissa % 2 == 0 ? low : high) << middle;
    ASSERT_EQ(read(middle + std::string(800, '0') + "1"), high) << middle;
    if (middle.back() != '5') continue;  // a whole number, which ends in the point
    std::string below = middle;
    below.back() = '4';
    ASSERT_EQ(read(below + std::string(20, '9')), low) << middle;
  }
}

TEST(NearestReal, AgreesWithTheStandardLibrary) {
  Random random(12);
  int compared = 0;
  for (int k = 0; k < 200000; ++k) {
    std::string text;
    const size_t digits = 1 + random() % (k % 50 == 0 ? 900 : 30);
    const size_t point = random() % (digits + 1);
    for (size_t i = 0; i < digits; ++i) {
      if (i == point) text += '.';
      text += static_cast<char>('0' + random() % 10);
    }
    if (k % 3 != 0) {
      text += 'e';
      text += std::to_string(static_cast<int>(random() % 700) - 370);
    }
    double expected = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), expected);
    const double number = read(text);
    if (error == std::errc()) {
      ASSERT_EQ(number, expected) << text;
      ++compared;
    } else {
      ASSERT_TRUE(number == 0.0 || std::isinf(number)) << text;
    }
  }
  EXPECT_GT(compared, 100000);
}

TEST(NearestReal, ReadsBackWhatTheStandardLibraryWrites) {
  Random random(13);
  for (int k = 0; k < 200000; ++k) {
    const auto number = std::bit_cast<double>(random() & ~(uint64_t{1} << 63));
    if (!std::isfinite(number)) continue;
    char text[64] = {};
    std::to_chars(text, text + sizeof text - 1, number);
    ASSERT_EQ(read(text), number) << text;
  }
}

TEST(LeadingReals, KnowSpacesSignsInfinitiesAndNan) {
  EXPECT_EQ(leading_real(" \t-2.5e1 rest"), -25.0);
  EXPECT_EQ(leading_real("+4"), 4.0);
  EXPECT_EQ(leading_real("--4"), 0.0);
  EXPECT_EQ(leading_real("word"), 0.0);
  EXPECT_EQ(leading_real("-Inf"), -HUGE_VAL);
  EXPECT_TRUE(std::isnan(leading_real("nan")));
  EXPECT_EQ(leading_real("in"), 0.0);
  EXPECT_EQ(leading_real("0x10"), 0.0);
}

}  // namespace
}  // namespace quorix::testing
