// SPDX-License-Identifier: MIT
//
// Floats with six decimals, exact. A float has 24 significant bits and a million has 14, so their
// product is exact in a double, and its whole part and remainder decide every digit.
#include <cmath>
#include <cstring>

#include "base/decimal_digits.h"
#include "formats/ply_mesh.h"

namespace quorix {

namespace {

constexpr int32_t decimals = 6;
constexpr double million = 1e6;
constexpr float whole_from = 0x1p24F;  // floats from here on have no fraction

// Digits of a whole number of up to 128 bits, from the last one back, nine at a time.
struct LargeNumber {
  uint32_t words[4];  // low word first
};

LargeNumber large_number(float whole) {
  int exponent = 0;
  const float fraction = std::frexp(whole, &exponent);
  const auto mantissa = static_cast<uint64_t>(std::ldexp(fraction, 24));
  const auto shift = static_cast<uint32_t>(exponent - 24);
  const uint64_t shifted = mantissa << shift % 32;
  LargeNumber number = {};
  number.words[shift / 32] = static_cast<uint32_t>(shifted);
  if (shift / 32 < 3) number.words[shift / 32 + 1] = static_cast<uint32_t>(shifted >> 32);
  return number;
}

// Divides by 10^9 and returns the remainder.
uint32_t take_nine_digits(LargeNumber *number) {
  constexpr uint64_t nine_digits = 1000000000;
  uint64_t remainder = 0;
  for (size_t i = 4; i-- > 0;) {
    const uint64_t part = remainder << 32 | number->words[i];
    number->words[i] = static_cast<uint32_t>(part / nine_digits);
    remainder = part % nine_digits;
  }
  return static_cast<uint32_t>(remainder);
}

bool is_zero(const LargeNumber &number) {
  return (number.words[0] | number.words[1] | number.words[2] | number.words[3]) == 0;
}

size_t write_large(char *to, float whole) {
  char text[six_decimals_room];
  char *const end = text + sizeof text;
  char *start = end - decimals;
  std::memset(start, '0', decimals);
  *--start = '.';
  LargeNumber number = large_number(whole);
  for (;;) {
    const uint32_t digits = take_nine_digits(&number);
    if (is_zero(number)) {
      write_number_before(start, digits);
      start -= count_digits(digits);
      break;
    }
    write_digits_before(start, digits, 9);
    start -= 9;
  }
  std::memcpy(to, start, static_cast<size_t>(end - start));
  return static_cast<size_t>(end - start);
}

size_t write_small(char *to, float value) {
  const double millionths = double{value} * million;
  auto number = static_cast<uint64_t>(millionths);
  const double rest = millionths - static_cast<double>(number);
  if (rest > 0.5 || (rest == 0.5 && number % 2 != 0)) ++number;
  const auto whole = static_cast<uint32_t>(number / 1000000);
  const int32_t whole_digits = count_digits(whole);
  write_number_before(to + whole_digits, whole);
  to[whole_digits] = '.';
  char *const end = to + whole_digits + 1 + decimals;
  write_digits_before(end, number % 1000000, decimals);
  return static_cast<size_t>(end - to);
}

}  // namespace

size_t write_six_decimals(char *to, float value) {
  const size_t sign = std::signbit(value) ? 1 : 0;
  if (sign != 0) *to++ = '-';
  if (!std::isfinite(value)) {
    std::memcpy(to, std::isnan(value) ? "nan" : "inf", 3);
    return sign + 3;
  }
  const float size = std::fabs(value);
  return sign + (size < whole_from ? write_small(to, size) : write_large(to, size));
}

}  // namespace quorix
