// SPDX-License-Identifier: MIT
//
// Ten million numbers, random and awkward, against the digits taken one by one in doubles.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/text.h"

namespace quorix {
namespace {

constexpr size_t text_size = 200;

// A generator that costs less than what it feeds (splitmix64).
struct Random {
  uint64_t state;

  uint64_t bits() {
    uint64_t z = state += 0x9E3779B97F4A7C15U;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9U;
    z = (z ^ z >> 27) * 0x94D049BB133111EBU;
    return z ^ z >> 31;
  }
  double part() { return static_cast<double>(bits() >> 11) * 0x1p-53; }
};

// Without a width, in a buffer that is large enough.
size_t plain_real(double value, int ndigits, char *text) {
  constexpr double powers[] = {1, 10, 100, 1000, 10000};
  const bool negative = value < 0;
  const double size = negative ? -value : value;
  double rest = std::floor(ndigits > 0 ? size * powers[ndigits] + 0.5 : size + 0.5);
  char digits[100] = {'0'};
  int count = rest > 0.5 ? 0 : 1;
  bool zero = true;
  while (rest > 0.5) {
    const int digit = static_cast<int>(std::fmod(rest, 10.0) + 0.5);
    if (count < 100) digits[count++] = static_cast<char>('0' + digit);
    zero = zero && digit == 0;
    rest = std::floor((rest + 0.5) / 10.0);
  }
  char *to = text;
  if (negative && !zero) *to++ = '-';
  if (count <= ndigits) {
    *to++ = '0';
    *to++ = '.';
    for (int i = count; i < ndigits; ++i)
      *to++ = '0';
  }
  for (int i = count; i > 0; --i) {
    if (i == ndigits && i < count) *to++ = '.';
    *to++ = digits[i - 1];
  }
  if (ndigits == 0) *to++ = '.';
  *to = '\0';
  return static_cast<size_t>(to - text);
}

::testing::AssertionResult agrees(double value, int ndigits) {
  char text[text_size], plain[text_size];
  const size_t length = format_real(value, ndigits, text, sizeof text, 0);
  const size_t plain_length = plain_real(value, ndigits, plain);
  if (length == plain_length && std::memcmp(text, plain, length + 1) == 0)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << std::hexfloat << value << " with " << ndigits << ": " << text << ", not " << plain;
}

// Fails at the first number that differs.
template <class Next>
void compare(int count, Next next) {
  for (int i = 0; i < count; ++i) {
    const double value = next(i);
    if (!agrees(value, 2)) FAIL() << agrees(value, 2).message();
    const int other = i % 6 - 1;
    if (other != 2 && !agrees(value, other)) FAIL() << agrees(value, other).message();
  }
}

TEST(RealDigits, AreThoseOfThePlainFormForPageCoordinates) {
  Random random = {1};
  compare(2000000, [&](int) { return random.part() * 1300 - 300; });
}

TEST(RealDigits, AreThoseOfThePlainFormForHalvesOfTheLastDigit) {
  Random random = {2};
  compare(1500000, [&](int i) {
    const auto halves =
        static_cast<double>(static_cast<int64_t>(random.bits() % 4000001) - 2000000);
    return i % 2 == 0 ? halves / 200 : halves / 2000;
  });
}

TEST(RealDigits, AreThoseOfThePlainFormBesideHalvesOfTheLastDigit) {
  Random random = {3};
  compare(1000000, [&](int i) {
    const double half = static_cast<double>(random.bits() % 400000) / 200;
    return std::nextafter(half, i % 2 == 0 ? 0.0 : 1e9);
  });
}

TEST(RealDigits, AreThoseOfThePlainFormFromTheSmallestToTheLargest) {
  Random random = {4};
  compare(700000, [&](int) {
    const double size = std::ldexp(random.part() + 0.5, static_cast<int>(random.bits() % 70) - 12);
    return random.bits() % 2 == 0 ? size : -size;
  });
}

TEST(RealDigits, AreThoseOfThePlainFormRoundPowersOfTen) {
  Random random = {5};
  compare(300000, [&](int i) {
    const double power = std::pow(10.0, i % 15 - 3);
    return power + (static_cast<double>(random.bits() % 41) - 20) * power * 0x1p-52;
  });
}

}  // namespace
}  // namespace quorix
