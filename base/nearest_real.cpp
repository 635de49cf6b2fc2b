// SPDX-License-Identifier: MIT
//
// Decimal digits to the nearest double, ties to even, by whole numbers of many words: exact, and
// without the C++ runtime. Most texts have few digits and a small exponent and need two steps only.
#include "base/nearest_real.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/powers_of_ten.h"

namespace quorix {

namespace {

// No double and no middle of two needs more significant digits than this to be written down, so
// what comes behind them only says whether there is more.
constexpr int32_t most_digits = 770;

// Beyond these powers of ten every number is too large or too small, whatever its digits.
constexpr int32_t largest_power = 310;
constexpr int32_t smallest_power = -330;

constexpr int32_t precision = 53;
constexpr int32_t smallest_exponent = -1074;  // of two, of the smallest double

// digits[0] . digits[1] digits[2] ... times ten to the `power`; the first digit is not 0.
struct Decimal {
  uint8_t digits[most_digits + 1];
  int32_t count;
  int32_t power;
};

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// ---- Whole numbers of a few thousand bits, the lowest word first

struct Whole {
  // 10 to the 1,100, or 770 digits moved up by so many bits that their quotient has 64.
  uint32_t words[128];
  size_t count;  // words in use, of which the last is not 0
};

// w * factor + more
void multiply_add(Whole *w, uint32_t factor, uint32_t more) {
  uint64_t carry = more;
  for (size_t i = 0; i < w->count; ++i) {
    carry += uint64_t{w->words[i]} * factor;
    w->words[i] = static_cast<uint32_t>(carry);
    carry >>= 32;
  }
  if (carry != 0) w->words[w->count++] = static_cast<uint32_t>(carry);
}

void multiply_by_ten_to(Whole *w, int32_t power) {
  for (; power >= 9; power -= 9)
    multiply_add(w, 1000000000, 0);
  for (; power > 0; --power)
    multiply_add(w, 10, 0);
}

int32_t bit_count(const Whole &w) {
  if (w.count == 0) return 0;
  return static_cast<int32_t>(32 * w.count) - __builtin_clz(w.words[w.count - 1]);
}

void shift_up(Whole *w, int32_t bits) {
  const auto whole_words = static_cast<size_t>(bits / 32);
  multiply_add(w, uint32_t{1} << bits % 32, 0);
  if (whole_words == 0 || w->count == 0) return;
  for (size_t i = w->count; i-- > 0;)
    w->words[i + whole_words] = w->words[i];
  for (size_t i = 0; i < whole_words; ++i)
    w->words[i] = 0;
  w->count += whole_words;
}

bool is_less(const Whole &a, const Whole &b) {
  if (a.count != b.count) return a.count < b.count;
  for (size_t i = a.count; i-- > 0;) {
    if (a.words[i] != b.words[i]) return a.words[i] < b.words[i];
  }
  return false;
}

// a - b, where b is not larger.
void subtract(Whole *a, const Whole &b) {
  int64_t borrow = 0;
  for (size_t i = 0; i < a->count; ++i) {
    const int64_t rest = int64_t{a->words[i]} - (i < b.count ? b.words[i] : 0) + borrow;
    a->words[i] = static_cast<uint32_t>(rest);
    borrow = rest >> 32;
  }
  while (a->count > 0 && a->words[a->count - 1] == 0)
    --a->count;
}

// ---- Rounding

// quotient * 2^exponent, and a bit more than that if `more`, to the nearest double. The quotient
// uses 63 or 64 bits.
double rounded(uint64_t quotient, bool more, int32_t exponent) {
  const int32_t bits = 64 - __builtin_clzll(quotient);
  // How many low bits go: all beyond 53, or beyond what the smallest doubles have.
  int32_t dropped = bits - precision;
  if (exponent + dropped < smallest_exponent) dropped = smallest_exponent - exponent;
  if (dropped > bits) return 0.0;
  uint64_t kept = dropped < 64 ? quotient >> dropped : 0;
  const uint64_t half = uint64_t{1} << (dropped - 1);
  const uint64_t rest = dropped < 64 ? quotient & (2 * half - 1) : quotient;
  if (rest > half || (rest == half && (more || (kept & 1) != 0))) ++kept;
  return std::ldexp(static_cast<double>(kept), exponent + dropped);
}

double nearest_by_division(const Decimal &d) {
  Whole top = {{}, 0};
  Whole bottom = {{1}, 1};
  for (int32_t i = 0; i < d.count; ++i)
    multiply_add(&top, 10, d.digits[i]);
  const int32_t power = d.power - (d.count - 1);
  multiply_by_ten_to(power >= 0 ? &top : &bottom, power >= 0 ? power : -power);
  // Of two numbers of the same length, the quotient has its first bit before or behind the point.
  const int32_t apart = bit_count(top) - bit_count(bottom);
  if (apart > 0) shift_up(&bottom, apart);
  if (apart < 0) shift_up(&top, -apart);
  uint64_t quotient = 0;
  for (int32_t bit = 0; bit < 64; ++bit) {
    quotient <<= 1;
    if (!is_less(top, bottom)) {
      subtract(&top, bottom);
      quotient |= 1;
    }
    multiply_add(&top, 2, 0);
  }
  return rounded(quotient, top.count != 0, apart - 63);
}

// Exact where digits and power of ten both are doubles without rounding.
bool nearest_by_one_operation(const Decimal &d, double *number) {
  constexpr int32_t exact_digits = 15;
  constexpr int32_t exact_power = 22;
  const int32_t power = d.power - (d.count - 1);
  if (d.count > exact_digits || power > exact_power || power < -exact_power) return false;
  double digits = 0.0;
  for (int32_t i = 0; i < d.count; ++i)
    digits = digits * 10.0 + d.digits[i];
  *number = power >= 0 ? digits * powers_of_ten[power] : digits / powers_of_ten[-power];
  return true;
}

double nearest(const Decimal &d) {
  if (d.count == 0 || d.power < smallest_power) return 0.0;
  if (d.power > largest_power) return std::numeric_limits<double>::infinity();
  double number = 0.0;
  return nearest_by_one_operation(d, &number) ? number : nearest_by_division(d);
}

// ---- Reading

// Keeps a digit that counts. Of those behind the last one kept, a 1 says that they are not all 0.
void take_digit(Decimal *d, uint8_t digit) {
  if (d->count < most_digits) {
    d->digits[d->count++] = digit;
  } else if (digit != 0) {
    d->digits[most_digits - 1] |= 1;
  }
}

// Where powers and exponents stop to count: ten times this still fits.
constexpr int32_t far_away = 100000000;

// The exponent behind the digits; `end` moves behind it if there is one.
int32_t read_exponent(const char **end) {
  const char *text = *end;
  if (*text != 'e' && *text != 'E') return 0;
  ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  if (!is_digit(*text)) return 0;
  int32_t exponent = 0;
  for (; is_digit(*text); ++text) {
    if (exponent < far_away) exponent = exponent * 10 + (*text - '0');
  }
  *end = text;
  return negative ? -exponent : exponent;
}

}  // namespace

const char *read_nearest_real(const char *text, double *number) {
  Decimal d = {{}, 0, -1};
  const char *end = text;
  bool any = false;
  bool behind_point = false;
  for (;; ++end) {
    if (*end == '.' && !behind_point) {
      behind_point = true;
      continue;
    }
    if (!is_digit(*end)) break;
    any = true;
    const auto digit = static_cast<uint8_t>(*end - '0');
    const bool counts = digit != 0 || d.count != 0;
    if (counts) take_digit(&d, digit);
    if (behind_point && !counts && d.power > -far_away) --d.power;
    if (!behind_point && counts && d.power < far_away) ++d.power;
  }
  if (!any) return text;
  d.power += read_exponent(&end);
  *number = nearest(d);
  return end;
}

}  // namespace quorix
