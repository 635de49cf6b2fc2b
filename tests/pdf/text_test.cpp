// SPDX-License-Identifier: MIT
//
// Characters: fonts, sizes, matrices and codes.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/pdf/pdf_calls.h"

namespace quorix::testing {
namespace {

class PdfText : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};

const std::string start = "BT\n/F1 12 Tf\n";
const std::string place = "1 0 0 1 10.00 20.00 Tm\n";

// What one character at (10, 20) in the first font shows.
std::string shown(int32_t code) {
  const std::string content = content_of([&] { character(code, 10, 20); });
  const std::string before = start + (code < 0 ? "100 Tz\n" : "") + place;
  if (content.compare(0, before.size(), before) != 0) return "begins as " + content;
  if (content.substr(content.size() - 3) != "ET\n") return "ends as " + content;
  return content.substr(before.size(), content.size() - before.size() - 3);
}

TEST_F(PdfText, CostsOneMatrixAndOneStringPerCharacter) {
  EXPECT_EQ(content_of([] {
              character('O', 10, 20);
              character('K', 17.5, 20);
            }),
            start + place + "(O) Tj\n1 0 0 1 17.50 20.00 Tm\n(K) Tj\nET\n");
}

TEST_F(PdfText, StartsAnewWhereFontOrSizeChange) {
  EXPECT_EQ(content_of([] {
              character('a', 10, 20);
              character('b', 10, 20, 34);
              character('c', 10, 20, 34, 13);
              character('d', 10, 20, 34, 13);
              character('e', 10, 20, 0, 12);
            }),
            start + place + "(a) Tj\nET\nBT\n/F35 12 Tf\n" + place +
                "(b) Tj\nET\nBT\n/F35 13 Tf\n" + place + "(c) Tj\n" + place + "(d) Tj\nET\n" +
                start + place + "(e) Tj\nET\n");
}

TEST_F(PdfText, StartsAnewAfterLinesToo) {
  EXPECT_EQ(content_of([] {
              character('a', 10, 20);
              draw(op_line, 1, 2);
              character('b', 10, 20);
              draw(op_fill);
              character('c', 10, 20);
              draw(op_move, 3, 4);
            }),
            start + place + "(a) Tj\nET\n0.00 0.00 m\n1.00 2.00 l\nS\n" + start + place +
                "(b) Tj\nET\nh\nf*\n" + start + place + "(c) Tj\nET\n");
}

TEST_F(PdfText, TakesSizesInTenthsWhereTheyAreNegative) {
  const auto size_line = [](int32_t size) {
    const std::string content = content_of([&] { character('a', 0, 0, 0, size); });
    return content.substr(3, content.find(" Tf\n") - 3);
  };
  EXPECT_EQ(size_line(-125), "/F1 12.5");
  EXPECT_EQ(size_line(12), "/F1 12");
  EXPECT_EQ(size_line(-120), "/F1 12.0");
  EXPECT_EQ(size_line(-7), "/F1 0.7");
  EXPECT_EQ(size_line(0), "/F1 0");
  EXPECT_EQ(size_line(INT32_MAX), "/F1 2147483647");
  EXPECT_EQ(size_line(INT32_MIN), "/F1 214748364.8");
}

TEST_F(PdfText, TellsSizesApartByTheirNumbersAndNotByWhatTheyMean) {
  EXPECT_EQ(content_of([] {
              character('a', 10, 20, 0, 12);
              character('b', 10, 20, 0, -120);
            }),
            start + place + "(a) Tj\nET\nBT\n/F1 12.0 Tf\n" + place + "(b) Tj\nET\n");
}

TEST_F(PdfText, TurnsByTheMatrixUnlessByNothingOrAQuarter) {
  const double matrix[7] = {0.707, 0.708, -0.7071, 0.1, 10, 20, 1};
  const auto lines = [&](int32_t rotation) {
    return content_of([&] { qqpdf5('a', matrix, rotation, 0, 12); });
  };
  EXPECT_EQ(lines(0), start + place + "(a) Tj\nET\n");
  EXPECT_EQ(lines(90), start + "0 1 -1 0 10.00 20.00 Tm\n(a) Tj\nET\n");
  for (const int32_t rotation : {45, 1, -90, 180, 360, INT32_MIN})
    EXPECT_EQ(lines(rotation), start + "0.71 0.71 -0.71 0.10 10.00 20.00 Tm\n(a) Tj\nET\n")
        << rotation;
}

TEST_F(PdfText, ScalesWhereTheCodeIsNegative) {
  const auto scale_line = [](double scale) {
    const double matrix[7] = {1, 0, 0, 1, 10, 20, scale};
    const std::string content = content_of([&] { qqpdf5(-'a', matrix, 0, 0, 12); });
    return content.substr(start.size(), content.find(place) - start.size());
  };
  EXPECT_EQ(scale_line(1), "100 Tz\n");
  EXPECT_EQ(scale_line(0.8125), "81 Tz\n");  // cut, not rounded
  EXPECT_EQ(scale_line(-0.75), "-75 Tz\n");
  EXPECT_EQ(scale_line(0), "0 Tz\n");
  EXPECT_EQ(scale_line(std::numeric_limits<double>::quiet_NaN()), "0 Tz\n");
  EXPECT_EQ(scale_line(std::numeric_limits<double>::infinity()), "2147483647 Tz\n");
}

TEST_F(PdfText, ScalesOnlyWhereItStarts) {
  const double narrow[7] = {1, 0, 0, 1, 10, 20, 0.5};
  EXPECT_EQ(content_of([&] {
              qqpdf5(-'a', narrow, 0, 0, 12);
              qqpdf5(-'b', narrow, 0, 0, 12);
              qqpdf5('c', narrow, 0, 0, 12);
            }),
            start + "50 Tz\n" + place + "(a) Tj\n" + place + "(b) Tj\n" + place + "(c) Tj\nET\n");
  EXPECT_EQ(content_of([&] {
              qqpdf5('a', narrow, 0, 0, 12);
              qqpdf5(-'b', narrow, 0, 0, 12);
            }),
            start + place + "(a) Tj\n" + place + "(b) Tj\nET\n");
}

// ---- codes

TEST_F(PdfText, ShowsCodesBelow127AsTheyAre) {
  for (int32_t code = 0; code < 127; ++code) {
    if (code == 40 || code == 41 || code == 92) continue;
    const std::string expected = std::string("(") + static_cast<char>(code) + ") Tj\n";
    EXPECT_EQ(shown(code), expected) << code;
    if (code != 0) {
      EXPECT_EQ(shown(-code), expected) << -code;
    }
  }
}

TEST_F(PdfText, ShowsParenthesesAndBackslashInOctal) {
  EXPECT_EQ(shown(40), "(\\50) Tj\n");
  EXPECT_EQ(shown(41), "(\\51) Tj\n");
  EXPECT_EQ(shown(92), "(\\134) Tj\n");
  EXPECT_EQ(shown(-41), "(\\51) Tj\n");
}

TEST_F(PdfText, ShowsNationalLettersInOctal) {
  // Letter by letter in the WinAnsi encoding, from code 127 on.
  const char *const octal[61] = {
      "304", "326", "334", "344", "366", "374", "337", "305", "330", "306", "345", "370", "346",
      "321", "361", "307", "347", "313", "317", "353", "357", "301", "311", "315", "323", "332",
      "341", "351", "355", "363", "372", "300", "310", "314", "322", "331", "340", "350", "354",
      "362", "371", "302", "312", "316", "324", "333", "342", "352", "356", "364", "373", "303",
      "343", "325", "365", "335", "375", "377", "241", "277", "251"};
  for (int32_t code = 127; code <= 187; ++code) {
    EXPECT_EQ(shown(code), "(\\" + std::string(octal[code - 127]) + ") Tj\n") << code;
    EXPECT_EQ(shown(-code), "(\\" + std::string(octal[code - 127]) + ") Tj\n") << -code;
  }
}

TEST_F(PdfText, ShowsABlankForCodesBeyondItsTable) {
  for (const int32_t code : {188, 200, 255, 256, 1000, INT32_MAX, -188, INT32_MIN})
    EXPECT_EQ(shown(code), "(\\40) Tj\n") << code;
}

// ---- fonts

TEST_F(PdfText, IgnoresFontsThatAreNotInTheTable) {
  for (const int32_t font : {-1, 35, 36, 255, INT32_MIN, INT32_MAX}) {
    const std::string document = document_of(false, [&] {
      draw(op_line, 1, 2);
      character('a', 0, 0, font);
      draw(op_line, 3, 4);
    });
    EXPECT_EQ(first_content(document), "0.00 0.00 m\n1.00 2.00 l\n3.00 4.00 l\nS\n") << font;
    EXPECT_EQ(document.find("/Text"), std::string::npos);
    EXPECT_EQ(document.find("/Font"), std::string::npos);
  }
}

TEST_F(PdfText, NumbersItsFontsFrom1) {
  for (int32_t font = 0; font < 35; ++font)
    EXPECT_EQ(content_of([&] { character('a', 10, 20, font); }),
              "BT\n/F" + std::to_string(font + 1) + " 12 Tf\n" + place + "(a) Tj\nET\n");
}

}  // namespace
}  // namespace quorix::testing
