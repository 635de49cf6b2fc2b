// SPDX-License-Identifier: MIT
//
// The parts that make the raster fast, each against the plain form of the same thing: runs of
// pixels, steps of a segment, sums skipped over, the polygon sweep, the colour cache.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

#include "quorix/quorix.h"
#include "raster/blend_pair.h"
#include "raster/blend_pair_sse2.h"
#include "raster/raster.h"
#include "raster/repeated_sum.h"
#include "raster/segment_walk.h"

namespace quorix {
namespace {

using Random = std::mt19937_64;

int32_t between(Random &random, int32_t low, int32_t high) {
  const auto range = static_cast<uint64_t>(static_cast<int64_t>(high) - low) + 1;
  return static_cast<int32_t>(low + static_cast<int64_t>(random() % range));
}

template <class Pixel>
using Fill = void (*)(Pixel *to, size_t count, Pixel ink);

template <class Pixel>
void expect_runs_of_every_length(Pixel ink, size_t shortest, Fill<Pixel> fill) {
  constexpr size_t longest = 300;
  constexpr size_t margin = 40;
  for (size_t start = 0; start < 16; ++start) {
    for (size_t count = shortest; count <= longest; ++count) {
      std::vector<Pixel> page(longest + 2 * margin, Pixel{7});
      std::vector<Pixel> wanted = page;
      for (size_t i = 0; i < count; ++i)
        wanted[start + i] = ink;
      fill(page.data() + start, count, ink);
      ASSERT_EQ(page, wanted) << "start " << start << ", count " << count;
    }
  }
}

TEST(FillRun, SetsItsBytesAndNoOthers) {
  expect_runs_of_every_length<uint8_t>(201, 1, fill_run);
}

TEST(FillRun, SetsItsWordsAndNoOthers) {
  expect_runs_of_every_length<uint32_t>(0x12345678, 1, fill_run);
}

TEST(FillRun, SetsTheSameByFours) {
  expect_runs_of_every_length<uint32_t>(0x12345678, 4, fill_by_fours);
}

// Rectangles of widths around those where another form takes over, at every place of a cache line.
template <class Pixel, class FillRows>
void expect_rows(Pixel ink, size_t narrowest, FillRows fill) {
  constexpr size_t pitch = 200;
  constexpr size_t most_rows = 3;
  for (size_t start = 0; start < 64; ++start) {
    for (size_t width = narrowest; width <= 130; ++width) {
      for (size_t rows = 0; rows <= most_rows; ++rows) {
        std::vector<Pixel> page(pitch * (most_rows + 1), Pixel{7});
        std::vector<Pixel> wanted = page;
        for (size_t y = 0; y < rows; ++y) {
          for (size_t x = 0; x < width; ++x)
            wanted[y * pitch + start + x] = ink;
        }
        fill(Rows<Pixel>{page.data() + start, pitch, width, rows}, ink);
        ASSERT_EQ(page, wanted) << "start " << start << ", " << width << " x " << rows;
      }
    }
  }
}

TEST(FillRows, SetsItsBytesAndNoOthers) {
  expect_rows<uint8_t>(201, 1, [](const auto &rows, uint8_t ink) { fill_rows(rows, ink); });
  expect_rows<uint8_t>(201, 1, fill_rows_plainly<uint8_t>);
}

TEST(FillRows, SetsItsWordsAndNoOthers) {
  expect_rows<uint32_t>(0x12345678, 1,
                        [](const auto &rows, uint32_t ink) { fill_rows(rows, ink); });
  expect_rows<uint32_t>(0x12345678, 1, fill_rows_plainly<uint32_t>);
}

// ---- Two pixels beside a smooth line

uint32_t plainly_blended(uint32_t old, uint32_t ink, double weight) {
  uint32_t result = ink & 0xFF000000U;
  for (int shift = 0; shift < 24; shift += 8) {
    const double from = old >> shift & 255;
    const double to = ink >> shift & 255;
    const double mixed = std::trunc(from + (to - from) * weight + 0.5);
    result |= static_cast<uint32_t>(static_cast<int32_t>(mixed) & 255) << shift;
  }
  return result;
}

template <class Blend>
void expect_blended_pairs() {
  Random random(8);
  for (int k = 0; k < 200000; ++k) {
    const auto ink = static_cast<uint32_t>(random());
    const PixelPair old = {static_cast<uint32_t>(random()), static_cast<uint32_t>(random())};
    // Weights stand on both sides of 0 to 1 where truncation rounds up.
    const double weight = k % 5 == 0 ? between(random, -8, 8) / 8.0
                                     : std::uniform_real_distribution<double>(-1, 1)(random);
    const PixelPair mixed = Blend(ink).mixed(old, weight);
    ASSERT_EQ(mixed.far, plainly_blended(old.far, ink, weight)) << k;
    ASSERT_EQ(mixed.near, plainly_blended(old.near, ink, 1.0 - weight)) << k;
  }
}

TEST(SmoothLines, BlendTheirTwoPixelsByTheirWeights) {
  expect_blended_pairs<BlendPlain>();
}

#if QUORIX_X86_64
TEST(SmoothLines, BlendTheSameTwoPixelsWithSse2) {
  expect_blended_pairs<BlendSse2>();
}
#endif

// The steps as a pen would take them, one by one.
struct Step {
  int64_t x, y;
};

std::vector<Step> plain_steps(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
  const int64_t dx = std::abs(static_cast<int64_t>(x1) - x0);
  const int64_t dy = std::abs(static_cast<int64_t>(y1) - y0);
  std::vector<Step> steps;
  Step at = {x0, y0};
  const bool y_major = dx <= dy;
  const int64_t longer = y_major ? dy : dx;
  const int64_t shorter = y_major ? dx : dy;
  int64_t error = -(longer / 2);
  for (int64_t i = 0; i <= longer; ++i) {
    steps.push_back(at);
    const bool moves = (error += shorter) > 0;
    if (moves) error -= longer;
    if (y_major || moves) at.y += y1 > y0 ? 1 : -1;
    if (!y_major || moves) at.x += x1 > x0 ? 1 : -1;
  }
  return steps;
}

TEST(SegmentWalk, FindsTheStepsWithinARectangle) {
  Random random(1);
  for (int32_t round = 0; round < 20000; ++round) {
    const int32_t reach = round % 3 == 0 ? 12 : 200;
    const int32_t x0 = between(random, -reach, reach);
    const int32_t y0 = between(random, -reach, reach);
    const int32_t x1 = between(random, -reach, reach);
    const int32_t y1 = between(random, -reach, reach);
    if (x0 == x1 || y0 == y1) continue;
    Rect r = {between(random, -60, 60), between(random, -60, 60), 0, 0};
    r.x2 = r.x1 + between(random, -1, 60);
    r.y2 = r.y1 + between(random, -1, 60);
    const int32_t shift = between(random, -2, 2);
    const SegmentWalk w = walk_segment(x0, y0, x1, y1, WalkFrom::first_point);
    const StepRange range = steps_within(w, r, shift);
    const std::vector<Step> steps = plain_steps(x0, y0, x1, y1);
    for (size_t k = 0; k < steps.size(); ++k) {
      const auto step = static_cast<int64_t>(k);
      const int64_t x = steps[k].x + (w.x_major ? 0 : shift);
      const int64_t y = steps[k].y + (w.x_major ? shift : 0);
      ASSERT_EQ(contains(r, x, y), step >= range.first && step <= range.last)
          << "round " << round << ", step " << k;
      const int64_t minor = w.v + w.v_step * minor_moves(w, step);
      ASSERT_EQ(minor, w.x_major ? steps[k].y : steps[k].x);
    }
  }
}

// From one end of the integers to the other the products just fit.
TEST(SegmentWalk, StaysExactOverTheWholeRangeOfCoordinates) {
  const SegmentWalk w =
      walk_segment(INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX - 1, WalkFrom::first_point);
  EXPECT_TRUE(w.x_major);
  EXPECT_EQ(w.du, 4294967295U);
  EXPECT_EQ(w.dv, 4294967294U);
  EXPECT_EQ(minor_moves(w, 4294967295LL), 4294967294LL);
  // After k steps the minor coordinate has moved ceil(k - (k + du / 2) / du) times: k times while
  // k < du - du / 2 = 2^31, which is where the major one reaches 0, and k - 1 times from there on.
  const StepRange page = steps_within(w, {0, 0, 99, 99});
  EXPECT_EQ(w.u + page.first, 1);
  EXPECT_EQ(w.v + minor_moves(w, page.first), 0);
  EXPECT_EQ(w.u + page.last, 99);
}

void expect_moves_like_division(uint32_t du, uint32_t dv, uint32_t rest) {
  MovesByProduct moved = moves_by_product(du, dv, rest);
  for (uint64_t k = 0; k <= du; ++k, moved.scaled += moved.step) {
    ASSERT_EQ(static_cast<uint64_t>(moved.moves()), (k * dv + rest) / du)
        << "step " << k << " of " << du << " by " << dv << " with " << rest;
  }
}

TEST(SegmentWalk, MovesByProductsAsByDivision) {
  Random random(7);
  for (uint32_t du = 1; du <= longest_by_product; ++du) {
    const bool every_slope = du < 100 || du == longest_by_product;
    for (const uint32_t rest : {0U, (du - 1) / 2, du / 2 % du, du - 1}) {
      for (uint32_t dv = every_slope ? 1 : du - 1; dv <= du; ++dv)
        expect_moves_like_division(du, dv, rest);
      expect_moves_like_division(du, 1 + static_cast<uint32_t>(random() % du), rest);
    }
  }
}

// The end that a walk starts at decides where a step falls half way between two pixels.
TEST(SegmentWalk, IsTheSameFromBothEndsWhereItStartsAtTheSmallerOne) {
  Random random(8);
  for (int32_t round = 0; round < 5000; ++round) {
    const int32_t x0 = between(random, -40, 40);
    const int32_t y0 = between(random, -40, 40);
    const int32_t x1 = between(random, -40, 40);
    const int32_t y1 = between(random, -40, 40);
    if (x0 == x1 || y0 == y1) continue;
    const SegmentWalk w = walk_segment(x0, y0, x1, y1, WalkFrom::smaller_major);
    const bool turned = w.x_major ? x0 > x1 : y0 > y1;
    const std::vector<Step> steps =
        turned ? plain_steps(x1, y1, x0, y0) : plain_steps(x0, y0, x1, y1);
    for (size_t k = 0; k < steps.size(); ++k) {
      const Step &step = turned ? steps[steps.size() - 1 - k] : steps[k];
      const int64_t minor = w.v + w.v_step * minor_moves(w, static_cast<int64_t>(k));
      ASSERT_EQ(minor, w.x_major ? step.y : step.x) << "round " << round << ", step " << k;
    }
  }
}

TEST(RepeatedSum, IsTheSumOfItsStepsToTheLastBit) {
  Random random(2);
  for (int32_t round = 0; round < 3000; ++round) {
    const double value = std::ldexp(between(random, -1000000, 1000000), between(random, -20, 20));
    const double step = std::ldexp(between(random, -1000000, 1000000), between(random, -30, 10));
    const int32_t count = between(random, 0, 20000);
    double sum = value;
    for (int32_t i = 0; i < count; ++i)
      sum += step;
    ASSERT_EQ(repeated_sum(value, step, count), sum)
        << value << " + " << count << " times " << step;
  }
}

TEST(RepeatedSum, SettlesTiesAsSingleStepsDo) {
  // Around 2^53 the grid is 1 or 2, so that a step of 1.5 or 1 ends half way between two numbers.
  const double big = 9007199254740992.0;
  for (const double start : {big, big + 2, big - 3, -big, -big + 1}) {
    for (const double step : {1.0, 1.5, -1.0, -1.5, 0.5, -0.5, 3.0}) {
      double sum = start;
      for (int32_t i = 0; i < 5000; ++i)
        sum += step;
      ASSERT_EQ(repeated_sum(start, step, 5000), sum) << start << " by " << step;
    }
  }
}

TEST(RepeatedSum, PassesThroughZeroAndBinadesOfFewSteps) {
  // Near zero a binade has few steps, so that some are entered by the second step of a pair.
  for (int32_t start = -66; start <= 66; start += 3) {
    for (int32_t rows = 61; rows <= 131; ++rows) {
      const double step = (start < 0 ? 3.0 : -3.0) / rows;
      double sum = start;
      for (int32_t i = 0; i < 4000; ++i)
        sum += step;
      ASSERT_EQ(repeated_sum(start, step, 4000), sum) << start << " by " << step;
    }
  }
}

TEST(RepeatedSum, TakesValuesThatAreNoNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(std::isnan(repeated_sum(nan, 1.0, 1000)));
  EXPECT_TRUE(std::isnan(repeated_sum(1.0, nan, 1000)));
  EXPECT_EQ(repeated_sum(1.0, infinity, 1000), infinity);
  EXPECT_EQ(repeated_sum(5.0, 0.0, 1LL << 40), 5.0);
}

// ---- Polygons, on pages large enough for long runs

class FillPolygon : public testing::TestWithParam<int32_t> {
 protected:
  static constexpr int32_t width = 500;
  static constexpr int32_t height = 300;

  void TearDown() override { qqwfree(); }

  // What a filler draws on an empty page.
  template <class Fill>
  std::vector<uint8_t> drawn(Fill fill) {
    int32_t w = width;
    int32_t h = height;
    int32_t status = 0;
    qqvini(GetParam(), 1, &w, &h, 1, &status);
    qqvclr(0x01A0B0C0);
    fill();
    const size_t bytes = static_cast<size_t>(width) * height * (GetParam() < 0 ? 4 : 1);
    return std::vector<uint8_t>(output_context->buffers.raster.pixels,
                                output_context->buffers.raster.pixels + bytes);
  }

  void expect_like_plain(const std::vector<double> &xs, const std::vector<double> &ys) {
    const auto n = static_cast<int32_t>(xs.size());
    int32_t status = 0;
    int32_t plain_status = 0;
    const auto fast = drawn([&] { qqvpol(xs.data(), ys.data(), &n, &status); });
    const auto plain = drawn([&] {
      with_surface(output_context, [&](const auto &s) {
        plain_status = fill_polygon_plainly(s, xs.data(), ys.data(), n);
      });
    });
    ASSERT_EQ(status, plain_status);
    ASSERT_EQ(fast, plain);
  }
};

TEST_P(FillPolygon, IsLikeLookingAtEveryEdgeInEveryRow) {
  Random random(3);
  for (int32_t round = 0; round < 400; ++round) {
    const int32_t n = round % 10 == 0 ? between(random, 90, 400) : between(random, 1, 12);
    std::vector<double> xs;
    std::vector<double> ys;
    for (int32_t i = 0; i < n; ++i) {
      // Sixteenths make many crossings fall on x.5 exactly, where a reciprocal is in doubt.
      xs.push_back(between(random, -1600, 9600) / 16.0);
      ys.push_back(between(random, -1600, 6400) / 16.0);
    }
    expect_like_plain(xs, ys);
  }
}

TEST_P(FillPolygon, IsLikeItFarOffThePageAndNearlyFlat) {
  Random random(4);
  for (int32_t round = 0; round < 300; ++round) {
    std::vector<double> xs;
    std::vector<double> ys;
    for (int32_t i = 0; i < 5; ++i) {
      xs.push_back(std::ldexp(between(random, -1000, 1000), between(random, -3, 22)));
      ys.push_back(150 + std::ldexp(between(random, -1000, 1000), between(random, -20, 3)));
    }
    expect_like_plain(xs, ys);
  }
}

INSTANTIATE_TEST_SUITE_P(Modes, FillPolygon, testing::Values(1, -1));

// ---- Colours

// The search as it is told, entry by entry.
int32_t plain_nearest(const OutputContext *context, int32_t r, int32_t g, int32_t b) {
  const int32_t count = context->colours.palette_kind == 0   ? 9
                        : context->colours.palette_kind == 7 ? 16
                                                             : 256;
  for (const int32_t ends : {0, 255}) {
    if (r != ends || g != ends || b != ends) continue;
    for (const int32_t i : {0, count - 1}) {
      if (context->colours.palette_r[i] == ends && context->colours.palette_g[i] == ends &&
          context->colours.palette_b[i] == ends) {
        return i;
      }
    }
  }
  int32_t best = 1000;
  int32_t index = 0;
  for (int32_t k = 0; k < count; ++k) {
    const int32_t i = b < 1 ? count - 1 - k : k;
    const int32_t distance = std::abs(r - context->colours.palette_r[i]) +
                             std::abs(g - context->colours.palette_g[i]) +
                             std::abs(b - context->colours.palette_b[i]);
    if (distance < best) {
      best = distance;
      index = i;
    }
    if (distance == 0) break;
  }
  return index;
}

TEST(ColourSearch, IsTheSearchEntryByEntryAlsoThroughTheCache) {
  Random random(5);
  int32_t width = 1;
  qqwwid(26, &width, 1);  // makes the record
  for (int32_t round = 0; round < 60; ++round) {
    std::vector<uint32_t> table(256);
    // Few different entries, so that ties are common.
    for (uint32_t &word : table)
      word = static_cast<uint32_t>(random() % 5) * 0x3F3F3F;
    if (round % 3 == 0) {
      for (uint32_t &word : table)
        word = static_cast<uint32_t>(random() & 0xFFFFFF);
    }
    qqvvlt(static_cast<uint8_t>(round % 4 == 1 ? 0 : round % 4 == 2 ? 7 : 1), table.data());
    for (int32_t i = 0; i < 2000; ++i) {
      const auto colour = static_cast<uint32_t>(i < 8 ? (i & 1) * 0xFFFFFF : random());
      const auto r = static_cast<uint8_t>(colour & 255);
      const auto g = static_cast<uint8_t>(colour >> 8 & 255);
      const auto b = static_cast<uint8_t>(i % 4 == 3 ? 0 : colour >> 16 & 255);
      const int32_t wanted = plain_nearest(output_context, r, g, b);
      ASSERT_EQ(nearest_colour(output_context, r, g, b), wanted);
      ASSERT_EQ(cached_nearest_colour(output_context, r, g, b), wanted);
    }
  }
  qqwfree();
}

}  // namespace
}  // namespace quorix
