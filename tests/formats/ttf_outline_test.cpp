// SPDX-License-Identifier: MIT
//
// Outlines of glyphs made byte by byte: flattening, composites, room, scaling.
#include <gtest/gtest.h>

#include <climits>
#include <numeric>

#include "quorix/fonts.h"
#include "tests/formats/made_font.h"
#include "tests/formats/outline_calls.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

constexpr int32_t unscaled = 700;  // the height of the capital A in font units

class GlyphOutline : public ::testing::Test {
 protected:
  void TearDown() override { qqttf3(); }

  // B, C, ... are these glyphs.
  void open(const std::vector<Bytes> &glyphs) {
    files_.put("font", font_with(glyphs).bytes());
    ASSERT_EQ(open_font("font"), 0);
  }
  // B is this glyph; it must become what the literal model says at several sizes.
  void expect_glyph(const std::vector<Contour> &contours, GlyphForm form = GlyphForm::shortest) {
    open({simple_glyph(contours, form)});
    for (const int32_t size : {1, 10, 24, 25, 29, 30, 50, 700}) {
      SCOPED_TRACE(size);
      Polygons expected = literal_simple(contours, size);
      scale_polygons(&expected, size, unscaled);
      expect_same(outline('B', size), expected);
    }
  }

  MemoryFiles files_;
};

TEST_F(GlyphOutline, ClosesAStraightContour) {
  open({simple_glyph({{{0, 0}, {100, 0}, {100, 50}}})});
  const Polygons polygons = outline('B', unscaled);
  EXPECT_EQ(polygons.sizes, std::vector<int32_t>{4});
  EXPECT_EQ(polygons.x, (std::vector<double>{0, 100, 100, 0}));
  EXPECT_EQ(polygons.y, (std::vector<double>{0, 0, 50, 0}));
}

TEST_F(GlyphOutline, StepsThroughACurve) {
  // From (0, 0) by (100, 200) to (200, 0), five steps: t = 1/4, 1/2, 3/4, 1.
  MadeFont font = font_with({simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}})});
  font.glyphs[1] = simple_glyph(square(24));
  files_.put("font", font.bytes());
  ASSERT_EQ(open_font("font"), 0);
  const Polygons polygons = outline('B', 24);
  EXPECT_EQ(polygons.x, (std::vector<double>{0, 50, 100, 150, 200, 0}));
  EXPECT_EQ(polygons.y, (std::vector<double>{0, 75, 100, 75, 0, 0}));
  EXPECT_EQ(polygons.sizes, std::vector<int32_t>{6});
}

TEST_F(GlyphOutline, HasMoreStepsAtLargerSizes) {
  open({simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}})});
  const int32_t rows[][2] = {{24, 4},  {25, 4},  {29, 4}, {30, 5},     {50, 9},    {54, 9},
                             {55, 10}, {1, 4},   {0, 4},  {-1, 4},     {-1000, 4}, {500, 99},
                             {5, 4},   {-50, 4}, {4, 4},  {INT_MIN, 4}};
  for (const auto &[size, curve_points] : rows)
    EXPECT_EQ(count_outline('B', size).points, 1 + curve_points + 1) << size;
}

TEST_F(GlyphOutline, PutsImpliedPointsBetweenControlPoints) {
  expect_glyph({{{0, 0}, {100, 200, false}, {201, 301, false}, {300, 0}, {5, 5}}});
  expect_glyph({{{0, 0}, {1, 2, false}, {4, 7, false}, {9, 0, false}, {16, -5, false}, {25, 1}}});
}

TEST_F(GlyphOutline, HasAStraightEdgeWhereAContourEndsWithAControlPoint) {
  const std::vector<Contour> contours = {{{0, 0}, {100, 0}, {100, 100, false}}};
  open({simple_glyph(contours)});
  const Polygons polygons = outline('B', unscaled);
  EXPECT_EQ(polygons.x, (std::vector<double>{0, 100, 0}));
  EXPECT_EQ(polygons.y, (std::vector<double>{0, 0, 0}));
  expect_glyph(contours);
}

TEST_F(GlyphOutline, BeginsAtTheOriginWhereTheFirstPointIsAControlPoint) {
  // kept: the curve starts at the last point put before, or at the origin.
  expect_glyph({{{100, 200, false}, {200, 0}, {300, 300}}});
}

TEST_F(GlyphOutline, BeginsWhereTheContourBeforeEnded) {
  const std::vector<Contour> contours = {{{10, 10}, {50, 60}},
                                         {{100, 200, false}, {200, 0}, {300, 300}}};
  expect_glyph(contours);
  // The first curve point, a quarter of the way: 9/16 of (50, 60), 6/16 of (100, 200), 1/16 of
  // (200, 0).
  MadeFont font = font_with({simple_glyph(contours)});
  font.glyphs[1] = simple_glyph(square(20));
  files_.put("font", font.bytes());
  ASSERT_EQ(open_font("font"), 0);
  const Polygons polygons = outline('B', 20);
  ASSERT_EQ(polygons.sizes, (std::vector<int32_t>{3, 6}));
  EXPECT_DOUBLE_EQ(polygons.x[3], (9 * 50 + 6 * 100 + 200) / 16.0);
  EXPECT_DOUBLE_EQ(polygons.y[3], (9 * 60 + 6 * 200) / 16.0);
}

TEST_F(GlyphOutline, ReadsCoordinatesInEveryForm) {
  const std::vector<Contour> contours = {
      {{0, 0}, {255, -255}, {255, 0}, {-1, 1}, {-257, 258, false}, {3000, -3000}, {3000, -3000}},
      {{-29768, 29767}, {-29768, 29767, false}, {-32768, 32767}, {-10, 10}}};
  for (const GlyphForm form : {GlyphForm::shortest, GlyphForm::words, GlyphForm::repeated_flags})
    expect_glyph(contours, form);
}

TEST_F(GlyphOutline, ReadsRepeatedFlags) {
  Contour long_contour;
  for (int32_t i = 0; i < 600; ++i)
    long_contour.push_back({3 * i, i % 2 * 5, i < 300});
  expect_glyph({long_contour}, GlyphForm::repeated_flags);
}

TEST_F(GlyphOutline, PassesOverInstructions) {
  const std::vector<Contour> contours = {{{1, 2}, {30, 40, false}, {50, 6}}};
  open({simple_glyph(contours, GlyphForm::shortest, 300)});
  expect_same(outline('B', unscaled), literal_simple(contours, unscaled));
}

TEST_F(GlyphOutline, ScalesSoThatTheCapitalAHasItsSize) {
  open({});
  for (const int32_t size : {1, 20, 700, 5000, -20}) {
    const Polygons polygons = outline('A', size);
    ASSERT_EQ(polygons.x.size(), 5U);
    EXPECT_DOUBLE_EQ(polygons.y[1], size);
    EXPECT_DOUBLE_EQ(polygons.x[2], size);
  }
  const Polygons none = outline('A', 0);
  EXPECT_EQ(none.y, std::vector<double>(5, 0));
}

TEST_F(GlyphOutline, StaysInFontUnitsWhereTheCapitalAHasNoHeight) {
  MadeFont font = font_with({simple_glyph(square(123))});
  font.glyphs[1] = simple_glyph({{{0, 0}, {5, 0}, {9, 0}}});
  files_.put("font", font.bytes());
  ASSERT_EQ(open_font("font"), 0);
  expect_same(outline('B', 20), literal_simple(square(123), 20));
  font.glyphs[1] = {};  // an empty one
  files_.put("font", font.bytes());
  ASSERT_EQ(open_font("font"), 0);
  expect_same(outline('B', 20), literal_simple(square(123), 20));
  font = font_with({});  // and none at all, nor a glyph 0
  font.glyphs = {{}, simple_glyph(square(123))};
  font.segments = {{'B', 'B', 1 - 'B', 0}};
  files_.put("font", font.bytes());
  ASSERT_EQ(open_font("font"), 0);
  expect_same(outline('B', 20), literal_simple(square(123), 20));
}

TEST_F(GlyphOutline, IsScaledByTheGlyphOfUnknownCharactersWhereThereIsNoA) {
  MadeFont font;
  font.glyphs = {simple_glyph(square(350)), simple_glyph(square(123))};
  font.segments = {{'B', 'B', 1 - 'B', 0}};
  files_.put("font", font.bytes());
  ASSERT_EQ(open_font("font"), 0);
  Polygons expected = literal_simple(square(123), 20);
  scale_polygons(&expected, 20, 350);
  expect_same(outline('B', 20), expected);
}

TEST_F(GlyphOutline, HasNoPointsForABlank) {
  FontBytes no_contours;
  no_contours.u16(0).u16(0).u16(0).u16(0).u16(0);
  FontBytes odd_number;
  odd_number.u16(-2).u16(0).u16(0).u16(0).u16(0);
  open({{}, no_contours.pad(4).bytes(), odd_number.pad(4).bytes()});
  for (const int32_t code : {'B', 'C', 'D'}) {
    for (const Counted &counted : {count_outline(code, 20), outline_with_room(code, 20, 10, 10)}) {
      EXPECT_EQ(counted.points, 0) << code;
      EXPECT_EQ(counted.contours, 0) << code;
      EXPECT_EQ(counted.status, 0) << code;
    }
  }
}

TEST_F(GlyphOutline, TellsThatTheRoomIsTooSmall) {
  open({simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}, {{0, 0}, {5, 5}}})});
  const Counted counted = count_outline('B', 30);
  EXPECT_EQ(counted.points, 7 + 3);
  EXPECT_EQ(counted.contours, 2);
  for (int32_t room = 1; room < counted.points; ++room) {
    const Counted real = outline_with_room('B', 30, room, 2);
    EXPECT_EQ(real.status, 6) << room;
    EXPECT_EQ(real.points, 0) << room;
  }
  const Counted enough = outline_with_room('B', 30, 100, 2);
  EXPECT_EQ(enough.status, 0);
  EXPECT_EQ(enough.points, counted.points);
}

TEST_F(GlyphOutline, StoresNothingWhereTheRoomIsNegative) {
  open({simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}})});
  double x = 0.25, y = 0.25;
  int32_t points = 0, contours = 0, status = 1;
  int32_t sizes[1] = {};
  qqttf2('B', &x, &y, -5, &points, sizes, 1, &contours, 20, &status);
  EXPECT_EQ(x, 0.25);
  EXPECT_EQ(y, 0.25);
}

TEST_F(GlyphOutline, CountsWhatNoMemoryCouldHold) {
  open({simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}})});
  const Counted counted = count_outline('B', INT_MAX);
  EXPECT_EQ(counted.points, 2 + INT_MAX / 5 - 1);
  const Counted real = outline_with_room('B', INT_MAX, 10, 1);
  EXPECT_EQ(real.status, 6);
  EXPECT_EQ(real.points, 0);
}

// ---- composites

TEST_F(GlyphOutline, PutsComponentsOneAfterAnother) {
  // Glyph 1 is A, 2 a triangle with a curve, 3 both.
  const std::vector<Contour> mark = {{{0, 0}, {30, 60, false}, {60, 0}}, {{1, 1}, {2, 3}, {4, 4}}};
  open({simple_glyph(mark), composite_glyph({{part_offsets, 1, 0, 0, {}},
                                             {part_offsets | part_words, 2, 400, 1000, {}}})});
  const auto contours_of = [&](int32_t glyph) {
    static const std::vector<Contour> a = square(700);
    return glyph == 1 ? &a : &mark;
  };
  for (const int32_t size : {10, 24, 50, 700}) {
    Polygons expected = literal_composite({{1}, {2, 1, 0, 0, 1, 400, 1000}}, contours_of, size);
    scale_polygons(&expected, size, unscaled);
    const Polygons polygons = outline('C', size);
    expect_same(polygons, expected);
    EXPECT_EQ(polygons.sizes.size(), 3U);
    EXPECT_EQ(std::accumulate(polygons.sizes.begin(), polygons.sizes.end(), 0),
              static_cast<int32_t>(polygons.x.size()));
  }
}

TEST_F(GlyphOutline, MovesComponentsBySignedNumbers) {
  open({composite_glyph({{0, 1, -128, 127, {}}, {part_words, 1, -32768, 32767, {}}})});
  const auto contours_of = [](int32_t) {
    static const std::vector<Contour> a = square(700);
    return &a;
  };
  // Whether the numbers are offsets or point numbers is never asked.
  expect_same(outline('B', unscaled),
              literal_composite({{1, 1, 0, 0, 1, -128, 127}, {1, 1, 0, 0, 1, -32768, 32767}},
                                contours_of, unscaled));
}

TEST_F(GlyphOutline, TurnsEachComponentAloneByItsMatrix) {
  const int32_t one = 1 << 14;
  const std::vector<Contour> shape = {{{10, 0}, {300, 70, false}, {200, 400}, {-50, 80}}};
  open({simple_glyph(shape),
        composite_glyph({{part_scale | part_words, 2, 5, 6, {one / 2}},
                         {0, 2, 7, 8, {}},
                         {part_two_scales, 2, 9, -10, {-one, one / 4}},
                         {part_matrix | part_words, 2, -11, 12, {one / 4, -one, 3 * one / 4, 8191}},
                         {part_scale, 2, 1, 1, {0x7FFF}},
                         {part_scale, 2, 1, 1, {-0x8000}},
                         {part_scale, 2, 1, 1, {-1}}})});
  const auto contours_of = [&](int32_t) { return &shape; };
  // kept: of two scales the second is taken for b, and d stays 1.
  const std::vector<GlyphPart> parts = {
      {2, 0.5, 0, 0, 0.5, 5, 6},
      {2, 1, 0, 0, 1, 7, 8},
      {2, -1, 0.25, 0, 1, 9, -10},
      {2, 0.25, -1, 0.75, 8191.0 / 16384, -11, 12},
      {2, 32767.0 / 16384, 0, 0, 32767.0 / 16384, 1, 1},
      {2, -2, 0, 0, -2, 1, 1},
      {2, -1.0 / 16384, 0, 0, -1.0 / 16384, 1, 1},
  };
  for (const int32_t size : {10, 50, 700}) {
    Polygons expected = literal_composite(parts, contours_of, size);
    scale_polygons(&expected, size, unscaled);
    expect_same(outline('C', size), expected);
  }
}

TEST_F(GlyphOutline, PrefersTheSingleScaleOfSeveralMarks) {
  const int32_t one = 1 << 14;
  open({composite_glyph({{part_scale | part_two_scales | part_matrix, 1, 0, 0, {one / 2}}}),
        composite_glyph({{part_two_scales | part_matrix, 1, 0, 0, {one, one / 2}}})});
  const auto contours_of = [](int32_t) {
    static const std::vector<Contour> a = square(700);
    return &a;
  };
  expect_same(outline('B', unscaled),
              literal_composite({{1, 0.5, 0, 0, 0.5}}, contours_of, unscaled));
  expect_same(outline('C', unscaled),
              literal_composite({{1, 1, 0.5, 0, 1}}, contours_of, unscaled));
}

TEST_F(GlyphOutline, TellsTheStatusOfTheLastComponentAlone) {
  const Bytes nested = composite_glyph({{0, 1, 0, 0, {}}});                       // glyph 2
  const Bytes good_last = composite_glyph({{0, 2, 0, 0, {}}, {0, 1, 3, 4, {}}});  // C
  const Bytes bad_last = composite_glyph({{0, 1, 3, 4, {}}, {0, 2, 0, 0, {}}});   // D
  open({nested, good_last, bad_last});
  Polygons expected = literal_simple(square(700), 700);
  for (double &x : expected.x)
    x += 3;
  for (double &y : expected.y)
    y += 4;
  expect_same(outline('C', unscaled), expected);
  expected.status = 7;
  expect_same(outline('D', unscaled), expected);
}

TEST_F(GlyphOutline, TellsThatAComponentDoesNotExist) {
  open({composite_glyph({{0, 1, 0, 0, {}}, {0, 1000, 0, 0, {}}})});
  const Polygons polygons = outline('B', unscaled);
  EXPECT_EQ(polygons.status, 8);
  EXPECT_EQ(polygons.sizes, std::vector<int32_t>{5});
}

TEST_F(GlyphOutline, TellsThatTheRoomForAllComponentsIsTooSmall) {
  open({composite_glyph({{0, 1, 0, 0, {}}, {0, 1, 0, 0, {}}, {0, 1, 0, 0, {}}})});
  for (int32_t room = 1; room < 15; ++room) {
    const Counted real = outline_with_room('B', 20, room, 3);
    EXPECT_EQ(real.status, 6) << room;
    EXPECT_EQ(real.points, 0) << room;
  }
  EXPECT_EQ(outline_with_room('B', 20, 15, 3).points, 15);
}

TEST_F(GlyphOutline, TellsThatTheRoomIsTooSmallThoughTheLastComponentIsBlank) {
  open({composite_glyph({{0, 1, 0, 0, {}}, {0, 3, 0, 0, {}}}), {}});
  for (int32_t room = 1; room < 5; ++room) {
    const Counted real = outline_with_room('B', 20, room, 1);
    EXPECT_EQ(real.status, 6) << room;
    EXPECT_EQ(real.points, 0) << room;
  }
  const Counted real = outline_with_room('B', 20, 5, 1);
  EXPECT_EQ(real.status, 0);
  EXPECT_EQ(real.points, 5);
}

TEST_F(GlyphOutline, IsTheSameForRandomGlyphs) {
  RandomNumbers random(33);
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE(round);
    std::vector<Contour> contours(1 + random.below(4));
    for (Contour &contour : contours) {
      contour.push_back({random.between(-2000, 2000), random.between(-300, 300)});
      for (uint32_t i = 1 + random.below(20); i > 0; --i) {
        const OutlinePoint &last = contour.back();
        contour.push_back({last.x + random.between(-1, 1) * random.between(0, 400),
                           last.y + random.between(-1, 1) * random.between(0, 400),
                           random.below(2) == 0});
      }
    }
    const std::vector<GlyphPart> parts = {{2}, {1, 0.5, 0, 0, 0.5, 3, 4}};
    open({simple_glyph(contours, static_cast<GlyphForm>(random.below(3))),
          composite_glyph({{0, 2, 0, 0, {}}, {part_scale, 1, 3, 4, {1 << 13}}})});
    const int32_t size = random.between(1, 200);
    Polygons expected = literal_simple(contours, size);
    scale_polygons(&expected, size, unscaled);
    ASSERT_NO_FATAL_FAILURE(expect_same(outline('B', size), expected));
    const auto contours_of = [&](int32_t glyph) {
      static const std::vector<Contour> a = square(700);
      return glyph == 1 ? &a : &contours;
    };
    expected = literal_composite(parts, contours_of, size);
    scale_polygons(&expected, size, unscaled);
    ASSERT_NO_FATAL_FAILURE(expect_same(outline('C', size), expected));
    if (HasFailure()) return;
  }
}

TEST_F(GlyphOutline, TellsThatMemoryIsRefused) {
  open({simple_glyph({{{0, 0}, {100, 200, false}, {200, 0}}}),
        composite_glyph({{0, 1, 0, 0, {}}, {0, 2, 0, 0, {}}})});
  for (const int32_t code : {'B', 'C'}) {
    for (size_t n = 1;; ++n) {
      // The font is opened anew each time, so that nothing that it keeps helps.
      ASSERT_EQ(open_font("font"), 0);
      FailingMemory memory(n);
      const Counted real = outline_with_room(code, 20, 50, 5);
      if (!memory.failed()) {
        EXPECT_EQ(real.status, 0);
        break;
      }
      EXPECT_TRUE(real.status == 2 || code == 'C') << real.status;
      EXPECT_LE(real.points, 50);
    }
  }
}

}  // namespace
}  // namespace quorix::testing
