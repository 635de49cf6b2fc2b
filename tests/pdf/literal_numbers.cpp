// SPDX-License-Identifier: MIT
//
// Numbers of PDF, digit by digit.
#include "tests/pdf/literal_numbers.h"

#include <cmath>
#include <cstdlib>

namespace quorix::literal {

namespace {

constexpr size_t kept_digits = 100;

// Least significant first.
std::string digits_of(double whole) {
  if (!(whole > 0.5)) return "0";
  std::string digits;
  while (whole > 0.5) {
    const int digit = static_cast<int>(std::fmod(whole, 10.0) + 0.5);
    if (digits.size() < kept_digits) digits += static_cast<char>('0' + digit);
    whole = std::floor((whole + 0.5) / 10.0);
  }
  return digits;
}

}  // namespace

std::string real(double value, int32_t digits, int32_t width) {
  const bool negative = value < 0.0;
  double power = 1.0;
  for (int32_t i = 0; i < digits; ++i)
    power *= 10.0;
  double whole = std::fabs(value) * power;
  if (!std::isfinite(whole)) whole = 0.0;
  std::string all = digits_of(std::floor(whole + 0.5));
  while (digits > 0 && all.size() < static_cast<size_t>(digits) + 1)
    all += '0';
  std::string text;
  for (size_t left = all.size(); left > 0; --left) {
    if (digits > 0 && left == static_cast<size_t>(digits)) text += '.';
    text += all[left - 1];
  }
  if (digits == 0) text += '.';
  const bool is_zero = text.find_first_not_of("0.") == std::string::npos;
  if (negative && !(is_zero && width == 0)) text = "-" + text;
  while (width > 0 && text.size() < static_cast<size_t>(width))
    text = " " + text;
  return text;
}

std::string integer(int32_t value) {
  std::string text;
  if (value == INT32_MIN) return "-";
  if (value < 0) text += '-';
  if (value <= -10 || value >= 10) text += integer(std::abs(value / 10));
  text += static_cast<char>('0' + std::abs(value % 10));
  return text;
}

int32_t truncated(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return INT32_MAX;
  if (value <= -2147483648.0) return INT32_MIN;
  return static_cast<int32_t>(value);
}

}  // namespace quorix::literal
