// SPDX-License-Identifier: MIT
//
// Lines, areas, colours and clipping in a content stream, operator by operator.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "tests/pdf/literal_numbers.h"
#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"

namespace quorix::testing {
namespace {

class PdfContent : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

// ---- lines

TEST_F(PdfContent, WritesAPolylineWithOneMove) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 10, 20);
              draw(op_line, 30.25, 40.5);
              draw(op_line, -1.5, 0.125);
            }),
            "10.00 20.00 m\n30.25 40.50 l\n-1.50 0.13 l\nS\n");
}

TEST_F(PdfContent, DrawsADotWhereALineGoesNowhere) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 10, 10);
              draw(op_line, 10, 10);
            }),
            "9.65 10.00 m\n10.35 10.00 l\nS\n");
}

TEST_F(PdfContent, DrawsADotAtAPointThatNoSingleFloatHits) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 10.1, 20.2);
              draw(op_line, 10.1, 20.2);
            }),
            "9.75 20.20 m\n10.45 20.20 l\nS\n");
}

TEST_F(PdfContent, TakesNoSecondLineToTheSamePoint) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 10, 10);
              draw(op_line, 10, 10);
              draw(op_line, 10, 10);
              draw(op_line, 20, 10);
              draw(op_line, 20, 10);
              draw(op_line, 10, 10);
            }),
            "9.65 10.00 m\n10.35 10.00 l\n20.00 10.00 l\n10.00 10.00 l\nS\n");
}

TEST_F(PdfContent, ComparesBothCoordinates) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 10, 10);
              draw(op_line, 10, 11);
              draw(op_line, 12, 11);
            }),
            "10.00 10.00 m\n10.00 11.00 l\n12.00 11.00 l\nS\n");
}

TEST_F(PdfContent, KeepsThePointWithoutTheDotsShift) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 10, 10);
              draw(op_line, 10, 10);
              draw(op_width, 1);
              draw(op_line, 20, 10);
            }),
            "9.65 10.00 m\n10.35 10.00 l\nS\n1.000 w\n10.00 10.00 m\n20.00 10.00 l\nS\n");
}

TEST_F(PdfContent, StartsAtTheOriginWhereNothingWasMoved) {
  EXPECT_EQ(content_of([] { draw(op_line, 5, 6); }), "0.00 0.00 m\n5.00 6.00 l\nS\n");
  EXPECT_EQ(content_of([] { draw(op_line, 0, 0); }), "-0.35 0.00 m\n0.35 0.00 l\nS\n");
}

TEST_F(PdfContent, WritesNothingForMovesAlone) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 1, 2);
              draw(op_move, 3, 4);
            }),
            "");
}

TEST_F(PdfContent, StrokesAtAMoveAndGoesOnFromThere) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              draw(op_move, 3, 4);
              draw(op_line, 5, 6);
            }),
            "0.00 0.00 m\n1.00 2.00 l\nS\n3.00 4.00 m\n5.00 6.00 l\nS\n");
}

TEST_F(PdfContent, StoresPointsAsSingleFloats) {
  // 16777217 = 2^24 + 1 is no float; 0.1 is stored as 0.100000001...
  EXPECT_EQ(content_of([] {
              draw(op_move, 16777217, 0.1);
              draw(op_line, 16777217, 5);
            }),
            "16777216.00 0.10 m\n16777217.00 5.00 l\nS\n");
}

TEST_F(PdfContent, StartsANewPathWhereAStrokeEndedTheLast) {
  const std::string stroked = "0.00 0.00 m\n1.00 2.00 l\nS\n";
  const std::string again = "1.00 2.00 m\n3.00 4.00 l\nS\n";
  const auto between = [](auto operation) {
    return content_of([&] {
      draw(op_line, 1, 2);
      operation();
      draw(op_line, 3, 4);
    });
  };
  EXPECT_EQ(between([] { draw(op_width, 2.5); }), stroked + "2.500 w\n" + again);
  EXPECT_EQ(between([] { colour(0, 0, 0, 0); }), stroked + "0 0 0 RG\n" + again);
  EXPECT_EQ(between([] { character('x', 7, 8); }),
            stroked + "BT\n/F1 12 Tf\n1 0 0 1 7.00 8.00 Tm\n(x) Tj\nET\n" + again);
  EXPECT_EQ(between([] { draw(op_rotate); }), stroked + "0 1 -1 0 0 0 cm\n" + again);
}

TEST_F(PdfContent, StrokesForOperationsItDoesNotKnow) {
  for (const int32_t op : {0, 19, 20, -1, INT32_MIN, INT32_MAX})
    EXPECT_EQ(content_of([&] {
                draw(op_line, 1, 2);
                draw(op, 7, 8);
                draw(op_line, 3, 4);
              }),
              "0.00 0.00 m\n1.00 2.00 l\nS\n1.00 2.00 m\n3.00 4.00 l\nS\n")
        << op;
}

// ---- numbers

TEST_F(PdfContent, RoundsHalvesUpInSize) {
  // Each is a binary number that ends in 5 at the third decimal.
  EXPECT_EQ(content_of([] {
              draw(op_line, 0.125, -0.125);
              draw(op_line, 2.375, -1000.625);
            }),
            "0.00 0.00 m\n0.13 -0.13 l\n2.38 -1000.63 l\nS\n");
}

TEST_F(PdfContent, WritesNoSignForWhatRoundsToZero) {
  EXPECT_EQ(content_of([] { draw(op_line, -0.004, -0.0); }), "0.00 0.00 m\n0.00 0.00 l\nS\n");
  EXPECT_EQ(content_of([] { draw(op_translate, -0.0049, -0.0051); }), "1 0 0 1 0.00 -0.01 cm\n");
}

TEST_F(PdfContent, WritesZeroForWhatIsNoNumber) {
  EXPECT_EQ(content_of([] { draw(op_translate, infinite, undefined); }), "1 0 0 1 0.00 0.00 cm\n");
  EXPECT_EQ(content_of([] { draw(op_width, -infinite); }), "0.000 w\n");
  EXPECT_EQ(content_of([] { draw(op_cap, undefined); }), "0 J\n");
  EXPECT_EQ(content_of([] { draw(op_join, infinite); }), "2147483647 j\n");
}

TEST_F(PdfContent, WritesLargeNumbersWithAllTheirDigits) {
  EXPECT_EQ(content_of([] { draw(op_translate, 9007199254740992.0, -4503599627370496.0); }),
            "1 0 0 1 9007199254740992.00 -4503599627370496.00 cm\n");
}

// ---- state of lines

TEST_F(PdfContent, SetsWidthAndMiterLimitWithThreeDecimals) {
  EXPECT_EQ(content_of([] {
              draw(op_width, 0.7086, 99);
              draw(op_miter, 10, 99);
              draw(op_width, -0.0004);
              draw(op_miter, 11.4735);
            }),
            "0.709 w\n10.000 M\n0.000 w\n11.474 M\n");
}

TEST_F(PdfContent, RoundsJoinsAndCaps) {
  EXPECT_EQ(content_of([] {
              draw(op_join, 0.49);
              draw(op_join, 0.5);
              draw(op_cap, 1.5);
              draw(op_cap, -1.7);  // -1.2 truncated
              draw(op_cap, 1);
            }),
            "0 j\n1 j\n2 J\n-1 J\n1 J\n");
}

TEST_F(PdfContent, StrokesBeforeEachChangeOfState) {
  const std::string path = "0.00 0.00 m\n1.00 2.00 l\nS\n";
  const auto after_path = [](int32_t op) {
    return content_of([&] {
      draw(op_line, 1, 2);
      draw(op, 1, 0);
    });
  };
  EXPECT_EQ(after_path(op_width), path + "1.000 w\n");
  EXPECT_EQ(after_path(op_join), path + "1 j\n");
  EXPECT_EQ(after_path(op_cap), path + "1 J\n");
  EXPECT_EQ(after_path(op_miter), path + "1.000 M\n");
  EXPECT_EQ(after_path(op_translate), path + "1 0 0 1 1.00 0.00 cm\n");
  EXPECT_EQ(after_path(op_rotate), path + "0 1 -1 0 0 0 cm\n");
  EXPECT_EQ(after_path(op_mask), path);
  EXPECT_EQ(after_path(op_corner1), path);
  EXPECT_EQ(after_path(op_corner2), path);
  EXPECT_EQ(after_path(op_clip), path);
}

// ---- areas

TEST_F(PdfContent, FillsByTheEvenOddRuleAndStrokesAtTheNextOtherOperation) {
  EXPECT_EQ(content_of([] {
              draw(op_move, 0, 0);
              draw(op_line, 10, 0);
              draw(op_line, 10, 10);
              draw(op_fill);
              draw(op_width, 1);
            }),
            "0.00 0.00 m\n10.00 0.00 l\n10.00 10.00 l\nh\nf*\nS\n1.000 w\n");
}

TEST_F(PdfContent, GoesOnInTheSamePathAfterAFill) {
  // The last operation stays a line, so no new move is written.
  EXPECT_EQ(content_of([] {
              draw(op_line, 10, 0);
              draw(op_fill);
              draw(op_fill);
              draw(op_line, 20, 0);
              draw(op_line, 20, 0);
            }),
            "0.00 0.00 m\n10.00 0.00 l\nh\nf*\nh\nf*\n20.00 0.00 l\nS\n");
}

TEST_F(PdfContent, FillsWithoutAPath) {
  EXPECT_EQ(content_of([] {
              draw(op_fill);
              draw(op_width, 1);
            }),
            "h\nf*\n1.000 w\n");
}

TEST_F(PdfContent, FillsRectangles) {
  EXPECT_EQ(content_of([] {
              rectangle(1, 2.5, 30, -40);
              rectangle(0, 0, 0.01, -0.01);
            }),
            "1.00 2.50 30.00 -40.00 re\nf\n0.00 0.00 0.01 -0.01 re\nf\n");
}

TEST_F(PdfContent, MakesThinRectanglesVisible) {
  EXPECT_EQ(content_of([] {
              rectangle(10, 20, 0, 5);
              rectangle(10, 20, 5, 0.009);
              rectangle(10, 20, -0.0099, -0.0);
            }),
            "9.65 20.00 0.71 5.00 re\nf\n10.00 19.65 5.00 0.71 re\nf\n"
            "9.65 19.65 0.71 0.71 re\nf\n");
}

TEST_F(PdfContent, HandsTheChangedRectangleBack) {
  EXPECT_EQ(begin_document(plain_memory), 0);
  double x = 10;
  double y = 20;
  double width = 0.001;
  double height = -0.001;
  qqpdf4(&x, &y, &width, &height);
  EXPECT_EQ(width, static_cast<double>(0.708F));
  EXPECT_EQ(height, static_cast<double>(0.708F));
  EXPECT_NEAR(x, 9.646, 1e-6);
  EXPECT_NEAR(y, 19.646, 1e-6);
  x = 1;
  y = 2;
  width = 3;
  height = 4;
  qqpdf4(&x, &y, &width, &height);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(width, 3);
  EXPECT_EQ(height, 4);
}

TEST_F(PdfContent, LeavesPathAndTextOpenAtARectangle) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              rectangle(1, 1, 1, 1);
              draw(op_line, 3, 4);
              character('a', 0, 0);
              rectangle(2, 2, 2, 2);
              character('b', 0, 0);
            }),
            "0.00 0.00 m\n1.00 2.00 l\n1.00 1.00 1.00 1.00 re\nf\n3.00 4.00 l\nS\n"
            "BT\n/F1 12 Tf\n1 0 0 1 0.00 0.00 Tm\n(a) Tj\n2.00 2.00 2.00 2.00 re\nf\n"
            "1 0 0 1 0.00 0.00 Tm\n(b) Tj\nET\n");
}

// ---- colours

TEST_F(PdfContent, SetsColours) {
  EXPECT_EQ(content_of([] {
              colour(0, 255, 128, 0);
              colour(1, 254, 51, 1);
              colour(255, 255, 255, 1);
              colour(0, 0, 0, 2);  // only 1 means areas
              colour(127, 0, 0, -1);
            }),
            "0 1 0.502 RG\n0.004 0.996 0.200 rg\n1 1 1 rg\n0 0 0 RG\n0.498 0 0 RG\n");
}

TEST_F(PdfContent, WritesAllTintsWithThreeDecimals) {
  for (int32_t value = 1; value < 255; ++value) {
    // value / 255 is never half way between two thousandths, since 255 is odd.
    const int32_t thousandths = (value * 2000 + 255) / 510;
    std::string digits = std::to_string(thousandths);
    digits.insert(0, 3 - digits.size(), '0');
    EXPECT_EQ(content_of([&] { colour(value, 0, 0, 1); }), "0." + digits + " 0 0 rg\n");
  }
}

TEST_F(PdfContent, PassesOnTintsOutOfRange) {
  EXPECT_EQ(content_of([] { colour(-1, 256, -255, 0); }), "-0.004 1.004 -1.000 RG\n");
}

TEST_F(PdfContent, EndsPathAndTextAtAColour) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              colour(0, 0, 0, 1);
              character('a', 0, 0);
              colour(0, 0, 0, 0);
            }),
            "0.00 0.00 m\n1.00 2.00 l\nS\n0 0 0 rg\n"
            "BT\n/F1 12 Tf\n1 0 0 1 0.00 0.00 Tm\n(a) Tj\nET\n0 0 0 RG\n");
}

// ---- clipping

const char clip_rectangle[] =
    "q\n10.00 20.00 m\n110.50 20.00 l\n110.50 220.25 l\n10.00 220.25 l\nh W n\n";

void clip_on() {
  draw(op_corner1, 10, 20);
  draw(op_corner2, 110.5, 220.25);
  draw(op_clip, 0);
}

TEST_F(PdfContent, ClipsToARectangle) {
  EXPECT_EQ(content_of([] {
              clip_on();
              draw(op_clip, 1);
            }),
            std::string(clip_rectangle) + "Q\n");
}

TEST_F(PdfContent, EndsAClipThatIsOpenAtTheEnd) {
  EXPECT_EQ(content_of([] { clip_on(); }), std::string(clip_rectangle) + "Q\n");
}

TEST_F(PdfContent, SwitchesAClipOffOnce) {
  EXPECT_EQ(content_of([] {
              draw(op_clip, 1);
              clip_on();
              draw(op_clip, -1.6);  // -1.1, so -1: off
              draw(op_clip, 5);
            }),
            std::string(clip_rectangle) + "Q\n");
}

TEST_F(PdfContent, RoundsTheSwitch) {
  // 0.49 + 0.5 and -1.49 + 0.5 are 0 when truncated.
  for (const double on : {0.0, 0.49, -1.49, undefined})
    EXPECT_EQ(content_of([&] { draw(op_clip, on); }),
              "q\n0.00 0.00 m\n0.00 0.00 l\n0.00 0.00 l\n0.00 0.00 l\nh W n\nQ\n")
        << on;
  for (const double off : {0.5, -1.5, infinite, -infinite})
    EXPECT_EQ(content_of([&] { draw(op_clip, off); }), "") << off;
}

TEST_F(PdfContent, SetsTheLastLineColourAgainWhereOneClipFollowsAnother) {
  const std::string clip = clip_rectangle;
  EXPECT_EQ(content_of([] {
              clip_on();
              draw(op_clip, 0);
            }),
            clip + "Q\n0 0 0 RG\n" + clip + "Q\n");
  EXPECT_EQ(content_of([] {
              colour(255, 51, 0, 0);
              colour(0, 0, 255, 1);  // of areas, and not set again
              clip_on();
              draw(op_clip, 0);
            }),
            "1 0.200 0 RG\n0 0 1 rg\n" + clip + "Q\n1 0.200 0 RG\n" + clip + "Q\n");
}

TEST_F(PdfContent, StrokesBeforeItClips) {
  EXPECT_EQ(content_of([] {
              draw(op_corner1, 10, 20);
              draw(op_corner2, 110.5, 220.25);
              draw(op_line, 1, 2);
              draw(op_clip, 0);
              draw(op_line, 3, 4);
              draw(op_clip, 1);
            }),
            "0.00 0.00 m\n1.00 2.00 l\nS\n" + std::string(clip_rectangle) +
                "1.00 2.00 m\n3.00 4.00 l\nS\nQ\n");
}

TEST_F(PdfContent, KeepsCornersForTheNextClip) {
  EXPECT_EQ(content_of([] {
              clip_on();
              draw(op_clip, 1);
              draw(op_corner1, 11, 21);
              draw(op_clip, 0);
              draw(op_clip, 1);
            }),
            std::string(clip_rectangle) +
                "Q\nq\n11.00 21.00 m\n110.50 21.00 l\n110.50 220.25 l\n11.00 220.25 l\nh W n\nQ\n");
}

// ---- the caller's own operators

TEST_F(PdfContent, TakesTheCallersBytes) {
  EXPECT_EQ(content_of([] {
              send("% words\n");
              EXPECT_EQ(qqpdf7(reinterpret_cast<const uint8_t *>("1 g\n\0no more"), -1), 0);
              EXPECT_EQ(qqpdf7(reinterpret_cast<const uint8_t *>("2 g\nno more"), 4), 0);
              EXPECT_EQ(qqpdf7(reinterpret_cast<const uint8_t *>("3 g\n"), 0), 0);
              EXPECT_EQ(qqpdf7(reinterpret_cast<const uint8_t *>("4 g\n"), -2), 0);
              EXPECT_EQ(qqpdf7(reinterpret_cast<const uint8_t *>("5 g\n"), INT32_MIN), 0);
              send(std::string("\0\xff\r\n", 4));
            }),
            "% words\n1 g\n2 g\n" + std::string("\0\xff\r\n", 4));
}

TEST_F(PdfContent, LeavesPathAndTextOpenAtTheCallersBytes) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              send("7 8 l\n");
              draw(op_line, 3, 4);
            }),
            "0.00 0.00 m\n1.00 2.00 l\n7 8 l\n3.00 4.00 l\nS\n");
}

}  // namespace
}  // namespace quorix::testing
