// SPDX-License-Identifier: MIT
//
// qqfits3 and qqfits5: numbers, truth values and texts of the first header.
#include <gtest/gtest.h>

#include <array>

#include "quorix/datafiles.h"
#include "tests/formats/fits_file.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class FitsKeyword : public ::testing::Test {
 protected:
  void TearDown() override { close_fits(); }

  // A file in which VALUE has this value.
  void open_with(const std::string &value) {
    FitsFile file;
    file.image(8, {1}).value("VALUE", value).end();
    open(file);
  }
  void open(const FitsFile &file) {
    files_.put("a", file.bytes());
    ASSERT_EQ(open_fits("a"), 0);
  }
  static int32_t status_as(int32_t type) {
    int32_t integer = 0;
    double real = 0;
    return fits_number("VALUE", type, &integer, &real);
  }

  MemoryFiles files_;
};

TEST_F(FitsKeyword, TellsTheKindOfEachValue) {
  const struct {
    const char *value;
    int32_t kind;
  } rows[] = {
      {"42", 0},
      {"-7 / a comment, 1.5", 0},
      {"1E5", 0},  // an exponent alone does not make it real
      {"1D-3", 0},
      {"1.", 1},
      {"-.5", 1},
      {"1.5E3 / seconds", 1},
      {"''", 2},
      {"'' / 'text'", 2},
      {"'a'", 3},
      {"' '", 3},
      {"''''", 3},
      {"'it''s'", 3},
      {"'a/b'", 3},
      {"'T'", 3},
      {"12'a'", 3},  // whatever stands before
      {"1.5 'a'", 3},
      {"T", 4},
      {"                   T / yes", 4},
      {"TRUE", 4},
      {"F", 5},
      {"FALSE", 5},
      {"1T", 0},
      {"xF", 0},
      {"(1, 2)", 6},
      {"(1., 2)", 7},
      {"(1, 2.)", 7},
      {"1(", 6},
      {"", 8},
      {"/ nothing", 8},
      {"      / T", 8},
      {"'open", 9},
      {"'", 9},
      {"'it''s", 9},
      {"'''", 9},
      {"'a / b", 9},
  };
  for (const auto &row : rows) {
    open_with(row.value);
    EXPECT_EQ(fits_kind("VALUE"), row.kind) << row.value;
  }
}

TEST_F(FitsKeyword, TellsThatACardHasNoValue) {
  FitsFile file;
  file.image(8, {1}).card("VALUE   42").card("OTHER   =42").card("HISTORY T '").end();
  open(file);
  EXPECT_EQ(fits_kind("VALUE"), 9);
  EXPECT_EQ(fits_kind("OTHER"), 9);
  EXPECT_EQ(fits_kind("HISTORY"), 9);
  EXPECT_EQ(status_as(1), -2);
  EXPECT_EQ(status_as(2), -2);
  EXPECT_EQ(fits_text("VALUE", 80, nullptr), -2);
}

TEST_F(FitsKeyword, ReadsIntegers) {
  const struct {
    const char *value;
    int32_t integer;
  } rows[] = {{"42", 42},
              {"                 -7 / comment", -7},
              {"+3", 3},
              {"2147483647", 2147483647},
              {"-2147483648", -2147483647 - 1},
              {"007", 7},
              {"1E5", 1},
              {"12x4", 12},
              {"x", 0},
              {"T", 1},
              {"F", 0},
              {"TOMORROW", 1}};
  for (const auto &row : rows) {
    open_with(row.value);
    EXPECT_EQ(fits_integer("VALUE"), row.integer) << row.value;
  }
}

TEST_F(FitsKeyword, ReadsReals) {
  const struct {
    const char *value;
    double real;
  } rows[] = {{"42", 42},
              {"-7.25 / comment", -7.25},
              {"1.5E3", 1500},
              {"1E5", 1e5},
              {"2.5e-2", 0.025},
              {".125", 0.125},
              {"3.", 3},
              {"0.1", 0.1},
              {"1.7976931348623157E+308", 1.7976931348623157e308},
              {"3.141592653589793238", 3.141592653589793},
              {"1.5D3", 1.5},
              {"x", 0},
              {"-0.0", 0}};
  for (const auto &row : rows) {
    open_with(row.value);
    EXPECT_EQ(fits_real("VALUE"), row.real) << row.value;
  }
}

TEST_F(FitsKeyword, GivesAnIntegerAsAReal) {
  open_with("20");
  int32_t integer = 5;
  double real = 0;
  EXPECT_EQ(fits_number("VALUE", 2, &integer, &real), 0);
  EXPECT_EQ(real, 20.0);
  EXPECT_EQ(integer, -1);
}

TEST_F(FitsKeyword, TakesEveryOtherTypeForAReal) {
  open_with("2.5");
  for (const int32_t type : {2, 0, 4, -1, INT32_MAX, INT32_MIN}) {
    int32_t integer = 5;
    double real = 0;
    EXPECT_EQ(fits_number("VALUE", type, &integer, &real), 0) << type;
    EXPECT_EQ(real, 2.5) << type;
  }
}

TEST_F(FitsKeyword, RefusesWhatHasTheWrongKind) {
  for (const char *value : {"'text'", "''", "(1, 2)", "(1., 2)", "", "'open"}) {
    open_with(value);
    EXPECT_EQ(status_as(1), -2) << value;
    EXPECT_EQ(status_as(2), -2) << value;
    EXPECT_EQ(status_as(3), 0) << value;
  }
  open_with("1.5");
  EXPECT_EQ(status_as(1), -2);
  for (const char *value : {"T", "F"}) {
    open_with(value);
    EXPECT_EQ(status_as(2), -2) << value;
    EXPECT_EQ(fits_text("VALUE", 80, nullptr), -2) << value;
  }
  for (const char *value : {"1", "1.5", "(1, 2)", "", "'open"}) {
    open_with(value);
    EXPECT_EQ(fits_text("VALUE", 80, nullptr), -2) << value;
  }
}

TEST_F(FitsKeyword, LeavesTheRealAloneWhereItGivesNone) {
  open_with("'text'");
  for (const int32_t type : {1, 2, 3}) {
    int32_t integer = 5;
    double real = 7.5;
    fits_number("VALUE", type, &integer, &real);
    EXPECT_EQ(real, 7.5) << type;
    EXPECT_EQ(integer, type == 3 ? 3 : -1) << type;
  }
}

TEST_F(FitsKeyword, TellsThatAKeywordIsMissing) {
  open_with("42");
  int32_t integer = 5;
  double real = 7.5;
  for (const int32_t type : {1, 2, 3}) {
    EXPECT_EQ(fits_number("NOTHING", type, &integer, &real), -1);
    EXPECT_EQ(integer, -1);
    EXPECT_EQ(real, 7.5);
  }
  EXPECT_EQ(fits_text("NOTHING", 80, nullptr), -1);
}

TEST_F(FitsKeyword, PadsAShortKeywordWithBlanks) {
  FitsFile file;
  file.value("SIMPLEX", "3").image(8, {1}).value("A", "1").value("AB", "2").end();
  open(file);
  EXPECT_EQ(fits_kind("SIMPLE"), 4) << "and not that of SIMPLEX";
  EXPECT_EQ(fits_integer("SIMPLEX"), 3);
  EXPECT_EQ(fits_integer("A"), 1);
  EXPECT_EQ(fits_integer("AB"), 2);
  EXPECT_EQ(fits_integer("AB      "), 2);
  EXPECT_EQ(fits_number("SIMP", 1, std::array<int32_t, 1>().data(), std::array<double, 1>().data()),
            -1);
}

TEST_F(FitsKeyword, CutsALongKeyword) {
  FitsFile file;
  file.image(8, {1}).value("LONGWORD", "8").value("HIERARCH", "9").end();
  open(file);
  EXPECT_EQ(fits_integer("LONGWORDS AND MORE"), 8);
  EXPECT_EQ(fits_integer("HIERARCH ESO"), 9);
  EXPECT_EQ(fits_integer("LONGWORD" + std::string(100000, 'S')), 8);
}

TEST_F(FitsKeyword, TellsCapitalsFromSmallLetters) {
  open_with("42");
  EXPECT_EQ(fits_text("value", 80, nullptr), -1);
}

TEST_F(FitsKeyword, FindsTheFirstOfSeveral) {
  FitsFile file;
  file.image(8, {1}).value("VALUE", "1").value("VALUE", "2").end();
  open(file);
  EXPECT_EQ(fits_integer("VALUE"), 1);
}

TEST_F(FitsKeyword, LooksNoFurtherThanTheEnd) {
  FitsFile file;
  file.image(8, {1}).card("ENDING  = 5").value("VALUE", "1").end();
  open(file);
  EXPECT_EQ(fits_text("VALUE", 80, nullptr), -1);
  EXPECT_EQ(fits_integer("ENDING"), 5) << "a match comes before the end";
}

TEST_F(FitsKeyword, LooksInTheFirstHeaderWhateverUnitIsSelected) {
  FitsFile file;
  file.image(8, {}).value("VALUE", "1").blanks_until(35).end();
  file.image(16, {4}, "XTENSION= 'IMAGE   '").value("VALUE", "2").value("ALONE", "3").end();
  open(file);
  EXPECT_EQ(select_fits_unit(2), 0);
  EXPECT_EQ(fits_integer("VALUE"), 1);
  EXPECT_EQ(fits_text("ALONE", 80, nullptr), -1);
}

TEST_F(FitsKeyword, LeavesTheSelectedUnitAlone) {
  open_with("42");
  const int32_t size = fits_data(0, nullptr);
  EXPECT_EQ(fits_integer("VALUE"), 42);
  EXPECT_EQ(fits_text("VALUE", 80, nullptr), -2);
  EXPECT_EQ(fits_data(0, nullptr), size);
}

TEST_F(FitsKeyword, ReadsTexts) {
  const struct {
    const char *value, *text;
  } rows[] = {{"'NGC 1234'", "NGC 1234"},
              {"'padded  '", "padded  "},
              {"'  in front' / 'comment'", "  in front"},
              {"'a/b'", "a/b"},
              {"''", ""},
              {"'it''s'", "it''s"},  // both quotes are delivered
              {"''''", "''"},
              {"''''''", "''''"},
              {"'a'''", "a''"},
              {"12'a'", "a"},
              {"'x= y'", "x= y"}};
  for (const auto &row : rows) {
    open_with(row.value);
    EXPECT_EQ(fits_words("VALUE"), row.text) << row.value;
  }
}

TEST_F(FitsKeyword, ReadsTheLongestText) {
  const std::string text(80 - 12, 'x');
  open_with("'" + text + "'");
  EXPECT_EQ(fits_words("VALUE"), text);
}

TEST_F(FitsKeyword, CutsATextThatReachesTheEndOfTheBuffer) {
  open_with("'abcdef'");
  std::string text;
  EXPECT_EQ(fits_text("VALUE", 8, &text), 0);
  EXPECT_EQ(text, "abcdef");
  // kept: six characters reach the last place but the terminator's.
  EXPECT_EQ(fits_text("VALUE", 7, &text), -4);
  EXPECT_EQ(text, "abcdef");
  EXPECT_EQ(fits_text("VALUE", 6, &text), -4);
  EXPECT_EQ(text, "abcde");
  EXPECT_EQ(fits_text("VALUE", 2, &text), -4);
  EXPECT_EQ(text, "a");
  EXPECT_EQ(fits_text("VALUE", 1, &text), -4);
  EXPECT_EQ(text, "");
}

TEST_F(FitsKeyword, StoresNothingWithoutRoom) {
  open_with("'abcdef'");
  for (const int32_t size : {0, -1, INT32_MIN})
    EXPECT_EQ(fits_text("VALUE", size, nullptr), -4) << size;
}

TEST_F(FitsKeyword, CutsBetweenTheTwoOfADoubledQuote) {
  open_with("'ab''cd'");
  std::string text;
  EXPECT_EQ(fits_text("VALUE", 4, &text), -4);
  EXPECT_EQ(text, "ab'");
  EXPECT_EQ(fits_text("VALUE", 5, &text), -4);
  EXPECT_EQ(text, "ab''");
  EXPECT_EQ(fits_text("VALUE", 8, &text), 0);
  EXPECT_EQ(text, "ab''cd");
}

TEST_F(FitsKeyword, EndsATextAtAZeroByte) {
  open_with(std::string("'ab") + '\0' + "cd'");
  EXPECT_EQ(fits_kind("VALUE"), 9);
}

}  // namespace
}  // namespace quorix::testing
