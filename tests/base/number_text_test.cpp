// SPDX-License-Identifier: MIT
//
// Numbers to text: known texts, and random calls against a model that takes the digits one by one
// in doubles and checks the room at every character.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"

namespace quorix {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr char canary = 0x5A;

// Runs a call on a buffer of `size` cells and fails the test if it writes beyond them, leaves out
// the terminator or returns another length than the text has.
template <class Call>
std::string text_of(size_t size, Call call) {
  std::vector<char> buffer(size + 16, canary);
  const size_t length = call(buffer.data(), size);
  for (size_t i = size; i < buffer.size(); ++i)
    EXPECT_EQ(buffer[i], canary) << "size " << size;
  if (size == 0) {
    EXPECT_EQ(length, 0U);
    return "";
  }
  EXPECT_LT(length, size);
  const std::string text = buffer.data();
  EXPECT_EQ(text.size(), length);
  return text;
}

std::string real(double value, int32_t ndigits, int32_t width = 0, size_t size = 200) {
  return text_of(size, [=](char *buffer, size_t cells) {
    return format_real(value, ndigits, buffer, cells, width);
  });
}

std::string integer(int32_t value, int32_t width = 0, int32_t zero_fill = 0, size_t size = 40) {
  return text_of(size, [=](char *buffer, size_t cells) {
    return format_int(value, buffer, cells, width, zero_fill);
  });
}

// ---- the model ----

struct Room {
  std::string text;
  size_t size;

  void put(char c) {
    if (text.size() + 1 < size) text += c;
  }
  bool full() const { return text.size() + 1 >= size; }
};

double ten_to_the(int32_t n) {
  return n > 400 ? infinity : std::strtod(("1e" + std::to_string(n)).c_str(), nullptr);
}

std::vector<int> digits_of(double r) {
  std::vector<int> store;
  if (!std::isfinite(r) || !(r > 0.5)) return {0};
  while (r > 0.5) {
    const int digit = static_cast<int>(std::fmod(r, 10.0) + 0.5);
    if (store.size() < 100) store.push_back(digit);
    r = std::floor((r + 0.5) / 10.0);
  }
  return store;
}

std::string model_real(double value, int32_t ndigits, size_t size, int32_t width) {
  const bool negative = value < 0;
  const double size_of_value = negative ? -value : value;
  const double r = ndigits > 0 ? std::floor(size_of_value * ten_to_the(ndigits) + 0.5)
                               : std::floor(size_of_value + 0.5);
  const std::vector<int> store = digits_of(r);
  const int64_t d = static_cast<int64_t>(store.size());
  const int64_t n = negative ? 1 : 0;
  Room out = {"", size};
  if (width > 0) {
    const int64_t length = d > ndigits ? d + n + (ndigits >= 0 ? 1 : 0) : int64_t{ndigits} + n + 2;
    for (int64_t i = length; i < width && !out.full(); ++i)
      out.put(' ');
  }
  if (negative) out.put('-');
  if (d <= ndigits) {
    out.put('0');
    out.put('.');
    for (int64_t i = d; i < ndigits && !out.full(); ++i)
      out.put('0');
  }
  for (int64_t i = d - 1; i >= 0; --i) {
    out.put(static_cast<char>('0' + store[static_cast<size_t>(i)]));
    if (ndigits > 0 && i == ndigits) out.put('.');
  }
  if (ndigits == 0) out.put('.');
  if (width == 0 && !out.text.empty() && out.text[0] == '-' &&
      out.text.find_first_not_of("0.", 1) == std::string::npos) {
    out.text.erase(0, 1);
  }
  return out.text;
}

std::string model_int(int32_t value, size_t size, int32_t width, int32_t zero_fill) {
  const bool negative = value < 0;
  int32_t rest = negative ? static_cast<int32_t>(0U - static_cast<uint32_t>(value)) : value;
  std::string digits = rest == 0 ? "0" : "";  // least significant first
  for (; rest > 0; rest /= 10)
    digits += static_cast<char>('0' + rest % 10);
  const int64_t bound = static_cast<int64_t>(size) - 1;
  Room out = {"", size};
  if (width > 0) {
    const int64_t cut_width = width < bound ? width : bound;
    const int64_t fill = cut_width - static_cast<int64_t>(digits.size()) - (negative ? 1 : 0);
    for (int64_t i = 0; i < fill; ++i)
      out.put(zero_fill == 1 ? '0' : ' ');
  }
  if (negative) out.put('-');
  for (size_t i = digits.size(); i > 0; --i)
    out.put(digits[i - 1]);
  return out.text;
}

// ---- format_real ----

TEST(FormatReal, WritesAPointFollowedByTheDigitsAskedFor) {
  EXPECT_EQ(real(12.0, 2), "12.00");
  EXPECT_EQ(real(0.0, 3), "0.000");
  EXPECT_EQ(real(3.14159, 4), "3.1416");
  EXPECT_EQ(real(-3.14159, 1), "-3.1");
  EXPECT_EQ(real(0.05, 2), "0.05");
  EXPECT_EQ(real(0.05, 5), "0.05000");
  EXPECT_EQ(real(1234567.875, 3), "1234567.875");
}

TEST(FormatReal, EndsInAPointForNoDigitsAndHasNoneForFewer) {
  EXPECT_EQ(real(12.0, 0), "12.");
  EXPECT_EQ(real(12.0, -1), "12");
  EXPECT_EQ(real(12.0, std::numeric_limits<int32_t>::min()), "12");
  EXPECT_EQ(real(0.0, 0), "0.");
  EXPECT_EQ(real(0.0, -1), "0");
  EXPECT_EQ(real(99.5, -1), "100");
  EXPECT_EQ(real(99.5, 0), "100.");
}

TEST(FormatReal, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(real(0.5, -1), "1");
  EXPECT_EQ(real(1.5, -1), "2");
  EXPECT_EQ(real(2.5, -1), "3");
  EXPECT_EQ(real(-2.5, -1), "-3");
  EXPECT_EQ(real(0.125, 2), "0.13");
  EXPECT_EQ(real(-0.375, 2), "-0.38");
  EXPECT_EQ(real(0.015, 2), "0.02");  // the double is less than that, its product with 100 is 1.5
  EXPECT_EQ(real(0.999, 2), "1.00");
}

TEST(FormatReal, DropsTheSignOfAZeroOnlyWithoutAWidth) {
  EXPECT_EQ(real(-0.0004, 3), "0.000");
  EXPECT_EQ(real(-0.0004, 3, 8), "  -0.000");
  EXPECT_EQ(real(-0.0004, 3, 1), "-0.000");
  EXPECT_EQ(real(-0.0004, 3, -1), "-0.000");
  EXPECT_EQ(real(-0.2, 0), "0.");
  EXPECT_EQ(real(-0.2, -1), "0");
  EXPECT_EQ(real(-0.0, 2), "0.00");
  EXPECT_EQ(real(-0.0, 2, 6), "  0.00");
}

TEST(FormatReal, LooksForANegativeZeroInWhatIsLeftOfACutText) {
  EXPECT_EQ(real(-0.05, 2, 0, 4), "0.");
  EXPECT_EQ(real(-0.05, 2, 0, 5), "0.0");
  EXPECT_EQ(real(-0.05, 2, 0, 6), "-0.05");
  EXPECT_EQ(real(-7.0, -1, 0, 2), "");
  EXPECT_EQ(real(-0.2, -1, 0, 2), "");
  EXPECT_EQ(real(-0.2, -1, 0, 3), "0");
}

TEST(FormatReal, LeadsWithBlanksUpToTheWidth) {
  EXPECT_EQ(real(12.0, 2, 8), "   12.00");
  EXPECT_EQ(real(-12.0, 2, 8), "  -12.00");
  EXPECT_EQ(real(12.0, 0, 5), "  12.");
  EXPECT_EQ(real(12.0, -1, 5), "   12");
  EXPECT_EQ(real(0.5, 1, 5), "  0.5");
  EXPECT_EQ(real(0.05, 2, 7), "   0.05");
  EXPECT_EQ(real(12.0, 2, 5), "12.00");
  EXPECT_EQ(real(12.0, 2, 3), "12.00");
  EXPECT_EQ(real(12.0, 2, -9), "12.00");
}

TEST(FormatReal, CutsWhatDoesNotFit) {
  EXPECT_EQ(real(123456.0, -1, 0, 4), "123");
  EXPECT_EQ(real(12.75, 2, 0, 6), "12.75");
  EXPECT_EQ(real(12.75, 2, 0, 5), "12.7");
  EXPECT_EQ(real(12.75, 2, 0, 4), "12.");
  EXPECT_EQ(real(0.001, 3, 0, 4), "0.0");
  EXPECT_EQ(real(12.75, 2, 9, 6), "    1");
  EXPECT_EQ(real(12.75, 2, std::numeric_limits<int32_t>::max(), 6), "     ");
}

TEST(FormatReal, WritesJustATerminatorIntoOneCellAndNothingIntoNone) {
  EXPECT_EQ(real(12.75, 2, 0, 1), "");
  EXPECT_EQ(real(-12.75, 2, 9, 1), "");
  EXPECT_EQ(real(12.75, 2, 0, 0), "");
}

TEST(FormatReal, FillsTheRoomWithZerosForMoreDigitsThanItHas) {
  EXPECT_EQ(real(0.0, 50, 0, 8), "0.00000");
  EXPECT_EQ(real(0.0, std::numeric_limits<int32_t>::max(), 0, 8), "0.00000");
  EXPECT_EQ(real(-1.0, std::numeric_limits<int32_t>::max(), 0, 8), "0.0000");
  EXPECT_EQ(real(-1.0, std::numeric_limits<int32_t>::max(), 3, 8), "-0.0000");
}

TEST(FormatReal, ReadsAsZeroWhereTheScaledNumberIsNotFinite) {
  EXPECT_EQ(real(infinity, 2), "0.00");
  EXPECT_EQ(real(-infinity, 2), "0.00");
  EXPECT_EQ(real(-infinity, 2, 6), " -0.00");
  EXPECT_EQ(real(not_a_number, 2), "0.00");
  EXPECT_EQ(real(not_a_number, -1), "0");
  EXPECT_EQ(real(1e300, 10), "0.0000000000");
  EXPECT_EQ(real(0.0, 400, 0, 6), "0.000");
}

TEST(FormatReal, WritesPowersOfTwoExactlyUpTo53Bits) {
  for (int shift = 0; shift <= 53; ++shift) {
    EXPECT_EQ(real(std::ldexp(1.0, shift), -1), std::to_string(uint64_t{1} << shift));
  }
}

TEST(FormatReal, KeepsTheLastHundredDigitsOfALargeNumber) {
  EXPECT_EQ(real(1e99, -1, 0, 300).size(), 100U);
  EXPECT_EQ(real(1e150, -1, 0, 300).size(), 100U);
  EXPECT_EQ(real(1e150, 2, 0, 300).size(), 101U);  // 10 to the 152 has more, and a point
}

TEST(FormatReal, AgreesWithTheModelOnRandomCalls) {
  std::mt19937_64 random(21);
  std::uniform_int_distribution<int> exponents(-12, 60);
  std::uniform_int_distribution<int32_t> digit_counts(-2, 9);
  std::uniform_int_distribution<int32_t> widths(-2, 25);
  std::uniform_int_distribution<size_t> sizes(0, 30);
  std::uniform_real_distribution<double> mantissas(-2.0, 2.0);
  for (int i = 0; i < 300000; ++i) {
    double value = std::ldexp(mantissas(random), exponents(random));
    if (i % 3 == 0) value = std::round(value * 8) / 8;  // ties
    const int32_t ndigits = digit_counts(random);
    const int32_t width = i % 2 == 0 ? 0 : widths(random);
    const size_t size = i % 4 == 0 ? sizes(random) : 60;
    ASSERT_EQ(real(value, ndigits, width, size), model_real(value, ndigits, size, width))
        << value << " ndigits " << ndigits << " width " << width << " size " << size;
  }
}

TEST(FormatReal, AgreesWithTheModelOnRandomBitPatternsAndDigitCounts) {
  std::mt19937_64 random(22);
  std::uniform_int_distribution<int32_t> digit_counts(-3, 330);
  for (int i = 0; i < 15000; ++i) {
    const uint64_t bits = random();
    double value;
    static_assert(sizeof value == sizeof bits);
    std::memcpy(&value, &bits, sizeof value);
    const int32_t ndigits = digit_counts(random);
    const int32_t width = static_cast<int32_t>(random() % 500) - 100;
    ASSERT_EQ(real(value, ndigits, width, 450), model_real(value, ndigits, 450, width))
        << value << " ndigits " << ndigits << " width " << width;
  }
}

// The digits are taken in integers below 2^51 and in doubles above.
TEST(FormatReal, AgreesWithTheModelAroundTheLimitOfExactDigits) {
  for (const double limit : {0x1p50, 0x1p51, 0x1p52, 0x1p53, 0x1p54}) {
    for (int step = -2000; step <= 2000; ++step) {
      const double value = limit + step * 0.5;
      for (const int32_t ndigits : {-1, 0, 1, 2}) {
        ASSERT_EQ(real(value, ndigits), model_real(value, ndigits, 200, 0)) << value;
        ASSERT_EQ(real(value / 100, ndigits), model_real(value / 100, ndigits, 200, 0)) << value;
      }
    }
  }
}

// ---- format_int ----

TEST(FormatInt, WritesDecimalDigits) {
  EXPECT_EQ(integer(0), "0");
  EXPECT_EQ(integer(7), "7");
  EXPECT_EQ(integer(-10), "-10");
  EXPECT_EQ(integer(2147483647), "2147483647");
  EXPECT_EQ(integer(-2147483647), "-2147483647");
}

TEST(FormatInt, WritesTheSmallestIntegerAsASignAlone) {
  const int32_t smallest = std::numeric_limits<int32_t>::min();
  EXPECT_EQ(integer(smallest), "-");
  EXPECT_EQ(integer(smallest, 4), "   -");
  EXPECT_EQ(integer(smallest, 4, 1), "000-");
}

TEST(FormatInt, FillsWithZerosOnRequestAndWithBlanksOtherwise) {
  EXPECT_EQ(integer(7, 3, 1), "007");
  EXPECT_EQ(integer(7, 3, 0), "  7");
  EXPECT_EQ(integer(7, 3, 2), "  7");
  EXPECT_EQ(integer(7, 3, -1), "  7");
  EXPECT_EQ(integer(1234, 3, 1), "1234");
  EXPECT_EQ(integer(7, -3, 1), "7");
}

TEST(FormatInt, PutsTheSignAfterTheFill) {
  EXPECT_EQ(integer(-5, 4, 1), "00-5");
  EXPECT_EQ(integer(-5, 4, 0), "  -5");
}

TEST(FormatInt, CutsTheWidthAndTheDigitsToTheRoom) {
  EXPECT_EQ(integer(12345, 0, 0, 4), "123");
  EXPECT_EQ(integer(-12345, 0, 0, 4), "-12");
  EXPECT_EQ(integer(-12345, 0, 0, 2), "-");
  EXPECT_EQ(integer(7, 20, 0, 4), "  7");
  EXPECT_EQ(integer(-7, 20, 1, 4), "0-7");
  EXPECT_EQ(integer(100000, 5, 0, 6), "10000");
  EXPECT_EQ(integer(99999, 5, 0, 6), "99999");
  EXPECT_EQ(integer(7, std::numeric_limits<int32_t>::max(), 0, 6), "    7");
}

TEST(FormatInt, WritesJustATerminatorIntoOneCellAndNothingIntoNone) {
  EXPECT_EQ(integer(7, 0, 0, 1), "");
  EXPECT_EQ(integer(-7, 0, 0, 1), "");
  EXPECT_EQ(integer(-7, 3, 1, 1), "");
  EXPECT_EQ(integer(-7, 0, 0, 0), "");
}

TEST(FormatInt, AgreesWithTheModelOnRandomCalls) {
  std::mt19937_64 random(23);
  for (int i = 0; i < 300000; ++i) {
    const int32_t value = static_cast<int32_t>(static_cast<uint32_t>(random())) >> (random() % 32);
    const int32_t width = static_cast<int32_t>(random() % 20) - 3;
    const int32_t zero_fill = static_cast<int32_t>(random() % 3);
    const size_t size = i % 2 == 0 ? 40 : random() % 20;
    ASSERT_EQ(integer(value, width, zero_fill, size), model_int(value, size, width, zero_fill))
        << value << " width " << width << " fill " << zero_fill << " size " << size;
  }
}

// ---- appending ----

std::string appended_real(const std::string &before, double value, int32_t ndigits, size_t limit) {
  std::vector<char> buffer(std::max(limit, before.size()) + 1 + 16, canary);
  before.copy(buffer.data(), before.size());
  buffer[before.size()] = '\0';
  const size_t length = append_real(buffer.data(), value, ndigits, limit);
  EXPECT_EQ(buffer[std::max(limit, before.size()) + 1], canary);
  EXPECT_EQ(length, std::string(buffer.data()).size());
  return buffer.data();
}

std::string appended_int(const std::string &before, int32_t value, size_t limit) {
  std::vector<char> buffer(std::max(limit, before.size()) + 1 + 16, canary);
  before.copy(buffer.data(), before.size());
  buffer[before.size()] = '\0';
  const size_t length = append_int(buffer.data(), value, limit);
  EXPECT_EQ(buffer[std::max(limit, before.size()) + 1], canary);
  EXPECT_EQ(length, std::string(buffer.data()).size());
  return buffer.data();
}

TEST(AppendReal, PutsABlankBetweenTextAndNumber) {
  EXPECT_EQ(appended_real("", 1.5, 2, 80), "1.50");
  EXPECT_EQ(appended_real("a", 1.5, 2, 80), "a 1.50");
  EXPECT_EQ(appended_real("a", -0.001, 2, 80), "a 0.00");
  EXPECT_EQ(appended_real("a ", 3.0, -1, 80), "a  3");
}

TEST(AppendReal, StaysWithinTheLimit) {
  EXPECT_EQ(appended_real("a", 1.5, 2, 4), "a 1.");
  EXPECT_EQ(appended_real("a", 1.5, 2, 2), "a ");
  EXPECT_EQ(appended_real("a", 1.5, 2, 1), "a");
  EXPECT_EQ(appended_real("abc", 1.5, 2, 1), "abc");
  EXPECT_EQ(appended_real("", 1.5, 2, 0), "");
  EXPECT_EQ(appended_real("", 1.5, 2, 1), "1");
}

TEST(AppendReal, FormatsAtMostFortyCharacters) {
  EXPECT_EQ(appended_real("", 1e45, -1, 80).size(), 40U);
  EXPECT_EQ(appended_real("x", 0.0, 60, 80), "x 0." + std::string(38, '0'));
}

TEST(AppendInt, PutsABlankBetweenTextAndNumber) {
  EXPECT_EQ(appended_int("", -7, 80), "-7");
  EXPECT_EQ(appended_int("P6", 640, 80), "P6 640");
}

TEST(AppendInt, StaysWithinTheLimit) {
  EXPECT_EQ(appended_int("P6", 640, 5), "P6 64");
  EXPECT_EQ(appended_int("P6", 640, 3), "P6 ");
  EXPECT_EQ(appended_int("P6", 640, 2), "P6");
  EXPECT_EQ(appended_int("", 640, 0), "");
}

// ---- the process locale ----

struct CommaPoint : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(NumberText, DoesNotFollowTheLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new CommaPoint));
  // Which of these a machine has differs; without any the facet above is all that there is.
  for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "de-DE", "German"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  }
  EXPECT_EQ(real(1234567.5, 2), "1234567.50");
  EXPECT_EQ(integer(1234567), "1234567");
  EXPECT_EQ(appended_real("a", 1.5, 2, 80), "a 1.50");
  EXPECT_EQ(read_int_token("1,5 1.5", 2), 15);
  std::setlocale(LC_ALL, "C");
  std::locale::global(before);
}

}  // namespace
}  // namespace quorix
