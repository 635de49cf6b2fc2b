// SPDX-License-Identifier: MIT
//
// Numbers at the start of a text; what follows them does not matter. Nothing is allocated.
#include "base/leading_numbers.h"

#include <cmath>

#include "base/nearest_real.h"

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

// Whether a text begins with three lower-case letters, in either case.
bool begins_with(const char *text, const char *letters) {
  for (int i = 0; i < 3; ++i) {
    if ((text[i] | ('a' - 'A')) != letters[i]) return false;
  }
  return true;
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
  double number = 0.0;
  if (read_nearest_real(text, &number) == text) {
    if (begins_with(text, "inf")) number = HUGE_VAL;
    if (begins_with(text, "nan")) number = NAN;
  }
  return negative ? -number : number;
}

}  // namespace quorix
