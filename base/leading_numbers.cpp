// SPDX-License-Identifier: MIT
//
// Reals are converted by from_chars, which knows no locale. White space, signs and what is out of
// range, which it refuses, are dealt with here.
#include "base/leading_numbers.h"

#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace quorix {

namespace {

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

const char *skip_spaces(const char *text) {
  while (is_space(*text))
    ++text;
  return text;
}

// Out of the range of doubles. A negative exponent means that the number is too small, as long as
// the digits before it are far fewer than the exponents that a double can have.
double beyond_range(const char *text, const char *end) {
  for (; text != end; ++text) {
    if ((*text == 'e' || *text == 'E') && text[1] == '-') return 0.0;
  }
  return std::numeric_limits<double>::infinity();
}

}  // namespace

int32_t leading_int(const char *text) {
  text = skip_spaces(text);
  const bool negative = *text == '-';
  if (negative || *text == '+') ++text;
  constexpr int64_t beyond = int64_t{1} << 32;
  int64_t number = 0;
  for (; is_digit(*text); ++text) {
    if (number < beyond) number = number * 10 + (*text - '0');
  }
  if (negative) return number > -int64_t{INT32_MIN} ? INT32_MIN : static_cast<int32_t>(-number);
  return number > INT32_MAX ? INT32_MAX : static_cast<int32_t>(number);
}

double leading_real(const char *text) {
  text = skip_spaces(text);
  const bool negative = *text == '-';
  if (negative || *text == '+') ++text;
  if (*text == '-') return 0.0;  // a second sign, which the conversion would take
  double number = 0.0;
  const auto [end, error] = std::from_chars(text, text + std::strlen(text), number);
  if (error == std::errc::invalid_argument) return 0.0;
  if (error == std::errc::result_out_of_range) number = beyond_range(text, end);
  return negative ? -number : number;
}

}  // namespace quorix
