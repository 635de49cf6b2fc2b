// SPDX-License-Identifier: MIT
//
// Byte strings: copies within their bounds, tokens, exponents.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"

namespace quorix {
namespace {

constexpr char canary = 0x5A;

// A destination of exactly limit + 1 cells, or what its first text needs, between canaries.
struct Destination {
  std::vector<char> cells;
  size_t size;

  Destination(const std::string &text, size_t limit)
      : cells(std::max(text.size(), limit) + 1 + 8, canary), size(cells.size() - 8) {
    std::memcpy(cells.data(), text.c_str(), text.size() + 1);
  }
  std::string text() const {
    for (size_t i = size; i < cells.size(); ++i)
      EXPECT_EQ(cells[i], canary);
    return cells.data();
  }
};

TEST(CopyBytes, CopiesAtMostTheLimit) {
  Destination destination("xxxxxxxx", 8);
  EXPECT_EQ(copy_bytes(destination.cells.data(), "hello", 8), 5U);
  EXPECT_EQ(destination.text(), "hello");
  EXPECT_EQ(copy_bytes(destination.cells.data(), "hello", 5), 5U);
  EXPECT_EQ(destination.text(), "hello");
  EXPECT_EQ(copy_bytes(destination.cells.data(), "hello", 3), 3U);
  EXPECT_EQ(destination.text(), "hel");
  EXPECT_EQ(copy_bytes(destination.cells.data(), "hello", 1), 1U);
  EXPECT_EQ(destination.text(), "h");
}

TEST(CopyBytes, WritesJustTheTerminatorForALimitOfZeroOrAnEmptySource) {
  Destination destination("x", 0);
  EXPECT_EQ(copy_bytes(destination.cells.data(), "hello", 0), 0U);
  EXPECT_EQ(destination.text(), "");
  destination.cells[0] = 'x';
  EXPECT_EQ(copy_bytes(destination.cells.data(), "", 9), 0U);
  EXPECT_EQ(destination.text(), "");
}

TEST(CopyBytes, ReadsNoMoreOfTheSourceThanTheLimit) {
  const std::vector<char> unterminated = {'a', 'b', 'c'};  // the sanitizer watches its end
  Destination destination("", 3);
  EXPECT_EQ(copy_bytes(destination.cells.data(), unterminated.data(), 3), 3U);
  EXPECT_EQ(destination.text(), "abc");
}

TEST(AppendBytes, AppendsWhileTheWholeStaysWithinTheLimit) {
  Destination destination("ab", 6);
  EXPECT_EQ(append_bytes(destination.cells.data(), "cd", 6), 4U);
  EXPECT_EQ(destination.text(), "abcd");
  EXPECT_EQ(append_bytes(destination.cells.data(), "efgh", 6), 6U);
  EXPECT_EQ(destination.text(), "abcdef");
  EXPECT_EQ(append_bytes(destination.cells.data(), "x", 6), 6U);
  EXPECT_EQ(destination.text(), "abcdef");
}

TEST(AppendBytes, WritesJustTheTerminatorForAnEmptyDestinationAndALimitOfZero) {
  Destination destination("", 0);
  EXPECT_EQ(append_bytes(destination.cells.data(), "hello", 0), 0U);
  EXPECT_EQ(destination.text(), "");
}

TEST(AppendBytes, LeavesATextThatIsAlreadyLongerThanTheLimit) {
  Destination destination("abcdef", 3);
  EXPECT_EQ(append_bytes(destination.cells.data(), "x", 3), 6U);
  EXPECT_EQ(destination.text(), "abcdef");
}

TEST(AppendBytes, FillsALimitOfOne) {
  Destination destination("", 1);
  EXPECT_EQ(append_bytes(destination.cells.data(), "hello", 1), 1U);
  EXPECT_EQ(destination.text(), "h");
}

TEST(ExponentToE, TurnsBothCasesOfTheLetterDIntoE) {
  char text[] = "1.5d3 -2D-4 1e5 dD";
  exponent_to_e(text);
  EXPECT_STREQ(text, "1.5e3 -2e-4 1e5 ee");
  char empty[] = "";
  exponent_to_e(empty);
  EXPECT_STREQ(empty, "");
}

TEST(ReadIntToken, CountsTokensBetweenBlanksAndTabs) {
  const char *text = "  12\t34 \t 56 ";
  EXPECT_EQ(read_int_token(text, 1), 12);
  EXPECT_EQ(read_int_token(text, 2), 34);
  EXPECT_EQ(read_int_token(text, 3), 56);
}

TEST(ReadIntToken, GivesZeroForATokenThatIsNotThere) {
  EXPECT_EQ(read_int_token("12 34", 3), 0);
  EXPECT_EQ(read_int_token("12 34 ", 3), 0);
  EXPECT_EQ(read_int_token("12 34", std::numeric_limits<int32_t>::max()), 0);
  EXPECT_EQ(read_int_token("12 34", 0), 0);
  EXPECT_EQ(read_int_token("12 34", -1), 0);
  EXPECT_EQ(read_int_token("", 1), 0);
  EXPECT_EQ(read_int_token(" \t ", 1), 0);
}

TEST(ReadIntToken, TakesOneLeadingSign) {
  EXPECT_EQ(read_int_token("+5 -6 --7 +-8 -+9 -", 1), 5);
  EXPECT_EQ(read_int_token("+5 -6 --7 +-8 -+9 -", 2), -6);
  EXPECT_EQ(read_int_token("+5 -6 --7 +-8 -+9 -", 3), -7);
  EXPECT_EQ(read_int_token("+5 -6 --7 +-8 -+9 -", 4), 8);
  EXPECT_EQ(read_int_token("+5 -6 --7 +-8 -+9 -", 5), -9);
  EXPECT_EQ(read_int_token("+5 -6 --7 +-8 -+9 -", 6), 0);
}

TEST(ReadIntToken, PassesOverOtherCharactersInsideAToken) {
  EXPECT_EQ(read_int_token("ab -7x9", 2), -79);
  EXPECT_EQ(read_int_token("x-5", 1), 5);
  EXPECT_EQ(read_int_token("1.25e3", 1), 1253);
  EXPECT_EQ(read_int_token("1\r2 3", 1), 12);
  EXPECT_EQ(read_int_token("\xB9\x31", 1), 1);
}

TEST(ReadIntToken, EndsANumberButStartsNoTokenAtALineFeed) {
  EXPECT_EQ(read_int_token("12\n34 56", 1), 12);
  EXPECT_EQ(read_int_token("12\n34 56", 2), 56);
  EXPECT_EQ(read_int_token("\n34", 1), 0);
}

TEST(ReadIntToken, WrapsBeyond32Bits) {
  EXPECT_EQ(read_int_token("2147483647", 1), 2147483647);
  EXPECT_EQ(read_int_token("-2147483648", 1), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(read_int_token("2147483648", 1), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(read_int_token("4294967301", 1), 5);
  EXPECT_EQ(read_int_token("-4294967301", 1), -5);
}

// Cuts the text into tokens first, and adds the digits up from the right.
int32_t model_token(const std::string &text, int32_t index) {
  std::vector<std::string> tokens(1);
  for (const char c : text) {
    if (c == ' ' || c == '\t') {
      if (!tokens.back().empty()) tokens.emplace_back();
    } else {
      tokens.back() += c;
    }
  }
  if (index < 1 || static_cast<size_t>(index) > tokens.size()) return 0;
  std::string token = tokens[static_cast<size_t>(index) - 1];
  token = token.substr(0, token.find('\n'));
  uint32_t total = 0;
  uint32_t place = 1;
  for (size_t i = token.size(); i > 0; --i) {
    const char c = token[i - 1];
    if (c < '0' || c > '9') continue;
    total += place * static_cast<uint32_t>(c - '0');
    place *= 10;
  }
  return static_cast<int32_t>(!token.empty() && token[0] == '-' ? 0 - total : total);
}

TEST(ReadIntToken, AgreesWithTheModelOnRandomBytes) {
  std::mt19937_64 random(31);
  const std::string likely = "0123456789 \t\n+-x";
  for (int i = 0; i < 200000; ++i) {
    std::string text(random() % 40, '\0');
    for (char &c : text) {
      const uint64_t word = random();
      c = i % 2 == 0 ? likely[word % likely.size()] : static_cast<char>(1 + word % 255);
    }
    // A block of just this size, so that the sanitizer sees any step beyond the terminator.
    const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
    for (int32_t index = -1; index <= 6; ++index) {
      ASSERT_EQ(read_int_token(block.data(), index), model_token(text, index))
          << ::testing::PrintToString(text) << " token " << index;
    }
  }
}

}  // namespace
}  // namespace quorix
