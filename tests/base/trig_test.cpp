// SPDX-License-Identifier: MIT
//
// Sine, cosine and arc tangent against exact values that mpmath gave at 300 bits (the program is
// make_trig_expectations.py beside this file), and against the machine's 80-bit functions.
#include "base/trig.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "gtest/gtest.h"

namespace quorix {
namespace {

constexpr double pi = 0x1.921fb54442d18p+1;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

struct AngleCase {
  double angle;
  double sine;
  double cosine;
};

// Round values; multiples of pi / 2, where all but a few bits of the angle cancel; angles half way
// between two table entries; the angles up to 100,000 that come nearest to a multiple of pi / 2.
constexpr AngleCase angle_cases[] = {
    {0x1.0000000000000p-1, 0x1.eaee8744b05f0p-2, 0x1.c1528065b7d50p-1},
    {0x1.0000000000000p+0, 0x1.aed548f090ceep-1, 0x1.14a280fb5068cp-1},
    {0x1.8000000000000p+0, 0x1.feb7a9b2c6d8bp-1, 0x1.21bd54fc5f9a7p-4},
    {0x1.0000000000000p+1, 0x1.d18f6ead1b446p-1, -0x1.aa22657537205p-2},
    {0x1.8000000000000p+1, 0x1.210386db6d55bp-3, -0x1.fae04be85e5d2p-1},
    {0x1.999999999999ap-4, 0x1.98eaecb8bcb2cp-4, 0x1.fd712f9a817c1p-1},
    {0x1.0624dd2f1a9fcp-10, 0x1.0624da5218a62p-10, 0x1.ffffef390876cp-1},
    {0x1.12e0be826d695p-30, 0x1.12e0be826d695p-30, 0x1.0000000000000p+0},
    {0x0.0000000000001p-1022, 0x0.0000000000001p-1022, 0x1.0000000000000p+0},
    {0x1.9000000000000p+6, -0x1.03425b78c4db8p-1, 0x1.b981dbf665fdfp-1},
    {0x1.81cd6c8b43958p+13, -0x1.687d5890974a5p-1, 0x1.6b94c3bbe24b8p-1},
    {0x1.869fe66666666p+16, 0x1.152d095f16415p-3, -0x1.fb4a09c5331fdp-1},
    {0x1.86a0000000000p+16, 0x1.24daa9c527e96p-5, -0x1.ffac3841b3da7p-1},
    {0x1.921fb54442d18p+0, 0x1.0000000000000p+0, 0x1.1a62633145c07p-54},
    {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53, -0x1.0000000000000p+0},
    {0x1.2d97c7f3321d2p+2, -0x1.0000000000000p+0, -0x1.a79394c9e8a0ap-53},
    {0x1.921fb54442d18p+2, -0x1.1a62633145c07p-52, 0x1.0000000000000p+0},
    {0x1.f6a7a2955385ep+2, 0x1.0000000000000p+0, 0x1.60fafbfd97309p-52},
    {0x1.921fb54442d18p+3, -0x1.1a62633145c07p-51, 0x1.0000000000000p+0},
    {0x1.16d0fc2ed4544p+9, -0x1.0000000000000p+0, -0x1.53cb37c6a9dcfp-45},
    {0x1.88b2f704a940ap+10, 0x1.2c3beb21e1e21p-44, 0x1.0000000000000p+0},
    {0x1.869e77079fdc2p+16, 0x1.0000000000000p+0, -0x1.1a3b6d67842e5p-43},
    {0x1.921fb54442d18p-8, 0x1.921f0fe670071p-8, 0x1.fffd8858e8a92p-1},
    {0x1.2d97c7f3321d2p-6, 0x1.2d936bbe30efdp-6, 0x1.ffe9cb44b51a1p-1},
    {0x1.8efb75d9ba4bep-1, 0x1.67cf78491af10p-1, 0x1.6c40d73c18275p-1},
    {0x1.9543f4aecb572p-1, 0x1.6c40d73c18275p-1, 0x1.67cf78491af10p-1},
    {0x1.9156a569a0b02p+1, 0x1.921f0fe66ffe6p-8, -0x1.fffd8858e8a92p-1},
    {0x1.92843d3193e24p+2, 0x1.921f0fe67023ep-8, 0x1.fffd8858e8a92p-1},
    {0x1.6c6cbc45dc8dep+5, 0x1.0000000000000p+0, -0x1.6d61b58c99c43p-61},
    {0x1.6c6cbc45dc8dep+6, -0x1.6d61b58c99c43p-60, -0x1.0000000000000p+0},
    {0x1.6c6cbc45dc8dep+7, 0x1.6d61b58c99c43p-59, 0x1.0000000000000p+0},
    {0x1.6c6cbc45dc8dep+8, 0x1.6d61b58c99c43p-58, 0x1.0000000000000p+0},
};

struct PointCase {
  double y;
  double x;
  double right;  // the angle of (x, y)
  double left;   // the angle of (-x, y)
};

constexpr PointCase point_cases[] = {
    {0x1.0000000000000p+0, 0x1.0000000000000p+0, 0x1.921fb54442d18p-1, 0x1.2d97c7f3321d2p+1},
    {0x1.0000000000000p+0, 0x1.0000000000000p+1, 0x1.dac670561bb4fp-2, 0x1.56c6e7397f5aep+1},
    {0x1.0000000000000p+1, 0x1.0000000000000p+0, 0x1.1b6e192ebbe44p+0, 0x1.0468a8ace4df6p+1},
    {0x1.0000000000000p+0, 0x1.0000000000000p+6, 0x1.fff555bbb729bp-7, 0x1.901fbfee871a6p+1},
    {0x1.0000000000000p+0, 0x1.0000000000000p+7, 0x1.fffd555bbba97p-8, 0x1.911fb69994f3bp+1},
    {0x1.8000000000000p+1, 0x1.0000000000000p+7, 0x1.7fee0184a5c36p-6, 0x1.8f1fd94139860p+1},
    {0x1.56e1fc2f8f359p-997, 0x1.0000000000000p+0, 0x1.56e1fc2f8f359p-997, 0x1.921fb54442d18p+1},
    {0x0.012688b70e62bp-1022, 0x0.012688b70e62bp-1022, 0x1.921fb54442d18p-1, 0x1.2d97c7f3321d2p+1},
    {0x0.0000000000001p-1022, 0x0.0000000000002p-1022, 0x1.dac670561bb4fp-2, 0x1.56c6e7397f5aep+1},
    {0x1.e42d130773b76p+1023, 0x1.394a579b68fe3p+1023, 0x1.fe34222973a03p-1, 0x1.1292acb9e5e98p+1},
    {0x1.12e0be826d695p-31, 0x1.0000000000000p+0, 0x1.12e0be826d695p-31, 0x1.921fb5432ff0cp+1},
    {0x1.70ef54646d497p-57, 0x1.0000000000000p+0, 0x1.70ef54646d497p-57, 0x1.921fb54442d18p+1},
    {0x1.fffffffffffffp-1, 0x1.0000000000000p+0, 0x1.921fb54442d18p-1, 0x1.2d97c7f3321d2p+1},
    {0x1.0000000000000p+0, 0x1.12e0be826d695p-30, 0x1.921fb53ff74e9p+0, 0x1.921fb5488e548p+0},
    {0x1.7e43c8800759cp+996, 0x1.56e1fc2f8f359p-997, 0x1.921fb54442d18p+0, 0x1.921fb54442d18p+0},
    {0x1.999999999999ap-4, 0x1.3333333333333p-2, 0x1.4978fa3269ee2p-2, 0x1.68f095fdf593cp+1},
    {0x1.87e92154ef7acp-665, 0x1.2b010d3e1cf56p-648, 0x1.4f8b588e06853p-17, 0x1.921f61616cae0p+1},
    {0x1.2a05f20000000p+33, 0x1.8000000000000p+1, 0x1.921fb542f8f70p+0, 0x1.921fb5458cac0p+0},
    {0x1.0000000000000p-33, 0x1.0000000000000p+0, 0x1.0000000000000p-33, 0x1.921fb54402d18p+1},
    {0x1.0000000000000p-35, 0x1.0000000000000p+0, 0x1.0000000000000p-35, 0x1.921fb54432d18p+1},
};

// The distance from the exact value in units of the result's last place.
double units_off(double result, long double exact) {
  const double size = std::fabs(result);
  const long double unit =
      static_cast<long double>(std::nextafter(size, infinity)) - static_cast<long double>(size);
  return static_cast<double>(std::fabs(static_cast<long double>(result) - exact) / unit);
}

// Equal in every bit, so that -0.0 differs from 0.0.
::testing::AssertionResult same_bits(double result, double expected) {
  if (std::bit_cast<uint64_t>(result) == std::bit_cast<uint64_t>(expected)) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
         << std::hexfloat << result << " where " << expected << " was expected";
}

TEST(PortableTrig, SineAndCosineAreTheDoublesNearestToTheExactValues) {
  for (const AngleCase &row : angle_cases) {
    EXPECT_TRUE(same_bits(portable_sin(row.angle), row.sine)) << "sine of " << row.angle;
    EXPECT_TRUE(same_bits(portable_cos(row.angle), row.cosine)) << "cosine of " << row.angle;
  }
}

TEST(PortableTrig, SineIsOddAndCosineIsEven) {
  for (const AngleCase &row : angle_cases) {
    EXPECT_TRUE(same_bits(portable_sin(-row.angle), -row.sine)) << "sine of -" << row.angle;
    EXPECT_TRUE(same_bits(portable_cos(-row.angle), row.cosine)) << "cosine of -" << row.angle;
  }
}

TEST(PortableTrig, ArcTangentIsTheDoubleNearestToTheExactValue) {
  for (const PointCase &row : point_cases) {
    EXPECT_TRUE(same_bits(portable_atan2(row.y, row.x), row.right)) << row.y << ", " << row.x;
    EXPECT_TRUE(same_bits(portable_atan2(row.y, -row.x), row.left)) << row.y << ", -" << row.x;
  }
}

TEST(PortableTrig, ArcTangentTakesItsSignFromTheFirstArgument) {
  for (const PointCase &row : point_cases) {
    EXPECT_TRUE(same_bits(portable_atan2(-row.y, row.x), -row.right)) << row.y << ", " << row.x;
    EXPECT_TRUE(same_bits(portable_atan2(-row.y, -row.x), -row.left)) << row.y << ", -" << row.x;
  }
}

// The machine's own reduction by pi may be coarse (the x87 instructions know 66 bits of it), so the
// comparison keeps to the quarter turns where no reduction is needed.
TEST(PortableTrig, SineAndCosineStayWithinHalfAUnitOfThe80BitFunctions) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> angles(-0.78, 0.78);
  double worst = 0;
  for (int i = 0; i < 200000; ++i) {
    const double angle = angles(random);
    const long double exact_angle = angle;
    worst = std::max(worst, units_off(portable_sin(angle), std::sin(exact_angle)));
    worst = std::max(worst, units_off(portable_cos(angle), std::cos(exact_angle)));
  }
  EXPECT_LT(worst, 0.5015);
}

TEST(PortableTrig, ArcTangentStaysWithinHalfAUnitOfThe80BitFunction) {
  std::mt19937_64 random(12);
  std::uniform_real_distribution<double> sizes(-1.0, 1.0);
  std::uniform_int_distribution<int> near_exponents(-12, 12);
  std::uniform_int_distribution<int> exponents(-1000, 1000);
  double worst = 0;
  for (int i = 0; i < 200000; ++i) {
    const bool far = i % 4 == 3;
    const double y = std::ldexp(sizes(random), far ? exponents(random) : near_exponents(random));
    const double x = std::ldexp(sizes(random), far ? exponents(random) : 0);
    const double result = portable_atan2(y, x);
    if (std::fabs(result) < 1e-300) continue;  // few bits are left there
    const long double exact_y = y;
    worst = std::max(worst, units_off(result, std::atan2(exact_y, static_cast<long double>(x))));
  }
  EXPECT_LT(worst, 0.5015);
}

TEST(PortableTrig, SquaresOfSineAndCosineSumToOneUpToTheLargestAngles) {
  std::mt19937_64 random(13);
  std::uniform_real_distribution<double> exponents(-20, 1000);
  for (int i = 0; i < 20000; ++i) {
    const double angle = std::exp2(exponents(random));
    const double sine = portable_sin(angle);
    const double cosine = portable_cos(angle);
    ASSERT_NEAR(sine * sine + cosine * cosine, 1.0, 5e-16) << angle;
  }
}

TEST(PortableTrig, AnglesBeyondTheAccurateRangeAreReducedByWholeTurns) {
  // 200,000 turns and one radian, as near as doubles come: 1.5e-10 is half a unit of the angle.
  const double angle = 200000 * 2 * pi + 1.0;
  EXPECT_NEAR(portable_sin(angle), 0.8414709848078965, 1e-9);
  EXPECT_NEAR(portable_cos(angle), 0.5403023058681398, 1e-9);
}

TEST(PortableTrig, SineOfZeroKeepsItsSign) {
  EXPECT_TRUE(same_bits(portable_sin(0.0), 0.0));
  EXPECT_TRUE(same_bits(portable_sin(-0.0), -0.0));
  EXPECT_TRUE(same_bits(portable_cos(0.0), 1.0));
  EXPECT_TRUE(same_bits(portable_cos(-0.0), 1.0));
}

TEST(PortableTrig, WhatIsNoFiniteAngleGivesNaN) {
  for (const double angle : {not_a_number, infinity, -infinity}) {
    EXPECT_TRUE(std::isnan(portable_sin(angle)));
    EXPECT_TRUE(std::isnan(portable_cos(angle)));
  }
  EXPECT_TRUE(std::isnan(portable_atan2(not_a_number, 1.0)));
  EXPECT_TRUE(std::isnan(portable_atan2(1.0, not_a_number)));
  EXPECT_TRUE(std::isnan(portable_atan2(not_a_number, infinity)));
  EXPECT_TRUE(std::isnan(portable_atan2(not_a_number, not_a_number)));
}

TEST(PortableTrig, ArcTangentOfZerosAndInfinitiesFollowsTheCLibrary) {
  constexpr double quarter = 0x1.921fb54442d18p+0;
  constexpr double eighth = 0x1.921fb54442d18p-1;
  constexpr double three_eighths = 0x1.2d97c7f3321d2p+1;
  constexpr double least = std::numeric_limits<double>::denorm_min();
  constexpr double most = std::numeric_limits<double>::max();
  const double rows[][3] = {
      {0.0, 0.0, 0.0},
      {0.0, -0.0, pi},
      {0.0, 1.0, 0.0},
      {0.0, -1.0, pi},
      {0.0, infinity, 0.0},
      {0.0, -infinity, pi},
      {0.0, least, 0.0},
      {0.0, -least, pi},
      {1.0, 0.0, quarter},
      {1.0, -0.0, quarter},
      {least, 0.0, quarter},
      {most, -0.0, quarter},
      {1.0, infinity, 0.0},
      {1.0, -infinity, pi},
      {most, infinity, 0.0},
      {infinity, 0.0, quarter},
      {infinity, -1.0, quarter},
      {infinity, most, quarter},
      {infinity, infinity, eighth},
      {infinity, -infinity, three_eighths},
      {least, most, 0.0},
      {most, least, quarter},
      {least, least, eighth},
      {most, -most, three_eighths},
      {least, 1.0, least},
  };
  for (const auto &row : rows) {
    EXPECT_TRUE(same_bits(portable_atan2(row[0], row[1]), row[2])) << row[0] << ", " << row[1];
    EXPECT_TRUE(same_bits(portable_atan2(-row[0], row[1]), -row[2])) << -row[0] << ", " << row[1];
  }
}

// splitmix64: the same numbers everywhere, unlike the distributions of the C++ libraries.
uint64_t next_random(uint64_t *state) {
  *state += 0x9E3779B97F4A7C15U;
  uint64_t z = *state;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
  return z ^ (z >> 31);
}

double from_minus_four_to_four(uint64_t word) {
  return static_cast<double>(word >> 11) * 0x1p-50 - 4.0;
}

uint64_t add_to_fingerprint(uint64_t total, double value) {
  return (total ^ std::bit_cast<uint64_t>(value)) * 0x100000001B3U;
}

// The same constant for every build: should two C++ compilers ever differ, one of them misses it.
TEST(PortableTrig, SixHundredThousandResultsHaveTheFingerprintOfTheNearestDoubles) {
  uint64_t state = 13;
  uint64_t total = 0xCBF29CE484222325U;
  for (int i = 0; i < 200000; ++i) {
    const double a = from_minus_four_to_four(next_random(&state));
    const double b = from_minus_four_to_four(next_random(&state));
    total = add_to_fingerprint(total, portable_sin(a));
    total = add_to_fingerprint(total, portable_cos(a));
    total = add_to_fingerprint(total, portable_atan2(b, a));
  }
  EXPECT_EQ(total, 0xCB5BAAE0B8A1A7DDU);
}

}  // namespace
}  // namespace quorix
