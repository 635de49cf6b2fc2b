// SPDX-License-Identifier: MIT
//
// How the results become exact almost to the last half bit: each function is a table value plus a
// small correction. The table value and the factor of the leading correction term are held as a
// head of at most 26 bits and a tail; a product of two heads is exact, the sum of the two leading
// terms is kept with its rounding error, and all that is rounded on the way is at least 2^-13
// smaller than the last place of the result.
#include "base/trig.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "base/trig_tables.h"

namespace quorix {

namespace {

constexpr double round_to_whole = 0x1.8p52;  // adding it leaves a whole number in the low bits
constexpr double largest_angle = 1e5;        // its step count has 23 bits, as the step parts need
constexpr double linear_below = 0x1p-34;     // there sine and arc tangent round to their argument
constexpr int steps_per_quarter_turn = 128;

// The leading 26 bits of a double.
double leading_half(double value) {
  constexpr uint64_t mask = ~((uint64_t{1} << 27) - 1);
  return std::bit_cast<double>(std::bit_cast<uint64_t>(value) & mask);
}

struct WholeStep {
  double count;
  uint32_t bits;  // the same, modulo 2^32
};

// Rounds to the nearest whole number; |value| must stay below 2^51.
WholeStep nearest_step(double value) {
  const double shifted = value + round_to_whole;
  return {shifted - round_to_whole, static_cast<uint32_t>(std::bit_cast<uint64_t>(shifted))};
}

// What is left of an angle after whole steps of pi / 256, as an unevaluated sum.
struct Remainder {
  double head;
  double tail;
  uint32_t step;
};

// Each product is exact, and so is each difference that cancels: angle and step count are such
// that all operands lie on a common grid of at most 53 bits.
Remainder remove_steps(double angle) {
  const WholeStep step = nearest_step(angle * steps_per_radian);
  const double first = angle - step.count * step_parts[0];
  const double second_part = step.count * step_parts[1];
  const double second = first - second_part;
  const double second_error = (first - second) - second_part;
  const double third_part = step.count * step_parts[2];
  const double third = second - third_part;
  const double third_error = (second - third) - third_part;
  const double fourth = second_error - step.count * step_parts[3];
  return {third, third_error + fourth, step.bits};
}

// sin(step * pi / 256 + angle) for small angles: sine * cos(angle) + cosine * sin(angle).
double sine_near_step(uint32_t step, double head, double tail) {
  const bool odd_quarter = (step & steps_per_quarter_turn) != 0;
  const uint32_t place = step & (steps_per_quarter_turn - 1);
  const uint32_t mirrored = steps_per_quarter_turn - place;
  const SplitReal sine = sine_of_step[odd_quarter ? mirrored : place];
  const SplitReal cosine = sine_of_step[odd_quarter ? place : mirrored];
  if (odd_quarter) {  // the cosine falls there: turn the angle instead of its sign
    head = -head;
    tail = -tail;
  }
  const double angle = head + tail;
  const double short_angle = leading_half(angle);
  const double angle_rest = (head - short_angle) + tail;
  const double square = angle * angle;
  const double sine_excess =
      angle * square * (-1.0 / 6 + square * (1.0 / 120 - square * (1.0 / 5040)));
  const double cosine_excess = square * (-0.5 + square * (1.0 / 24 - square * (1.0 / 720)));

  const double leading = cosine.head * short_angle;
  const double sum = sine.head + leading;
  const double sum_error = leading - (sum - sine.head);
  const double minor =
      sine.tail + (cosine.head * angle_rest + cosine.tail * angle) +
      ((sine.head + sine.tail) * cosine_excess + (cosine.head + cosine.tail) * sine_excess);
  const double result = sum + (sum_error + minor);
  return (step & (2 * steps_per_quarter_turn)) != 0 ? -result : result;
}

double bring_into_range(double angle) {
  return std::fabs(angle) <= largest_angle ? angle : std::remainder(angle, full_turn);
}

}  // namespace

double portable_sin(double x) {
  if (!std::isfinite(x)) return std::numeric_limits<double>::quiet_NaN();
  const double angle = bring_into_range(x);
  if (std::fabs(angle) < linear_below) return angle;
  const Remainder rest = remove_steps(angle);
  return sine_near_step(rest.step, rest.head, rest.tail);
}

double portable_cos(double x) {
  if (!std::isfinite(x)) return std::numeric_limits<double>::quiet_NaN();
  const Remainder rest = remove_steps(bring_into_range(x));
  return sine_near_step(rest.step + steps_per_quarter_turn, rest.head, rest.tail);
}

namespace {

// A quotient as an unevaluated sum; the head has 26 bits. The denominator is one too, with a
// denominator.tail far below the last place of its head.
SplitReal divide(double numerator, SplitReal denominator) {
  const double reciprocal = 1.0 / denominator.head;
  const double head = leading_half(numerator / denominator.head);
  const double denominator_half = leading_half(denominator.head);
  const double rest =
      ((numerator - head * denominator_half) - head * (denominator.head - denominator_half)) -
      head * denominator.tail;
  return {head, rest * reciprocal};
}

// (minor - c * major) / (major + c * minor) for c = step / 64: the tangent of the angle that is
// left after the one whose tangent is c. Both products are split so that each half is exact.
SplitReal tangent_beyond_step(double minor, double major, double c) {
  const double major_half = leading_half(major);
  const double numerator = (minor - c * major_half) - c * (major - major_half);
  const double minor_half = leading_half(minor);
  const double grown = c * minor;
  const double grown_error = (c * minor_half - grown) + c * (minor - minor_half);
  const double denominator = major + grown;
  const double denominator_error = grown - (denominator - major);
  return divide(numerator, {denominator, denominator_error + grown_error});
}

// atan(t) - t without the leading term, |t| <= 1 / 128.
double arc_tangent_excess(double t) {
  const double square = t * t;
  return t * square * (-1.0 / 3 + square * (1.0 / 5 + square * (-1.0 / 7 + square * (1.0 / 9))));
}

// Angle of a point with 0 <= minor <= major, both finite, as the sum of the table's angle and a
// tangent's: base + sign * (table + atan(tangent)).
double angle_in_octant(double minor, double major, SplitReal base, double sign) {
  const double ratio = major > 0 ? minor / major : 0.0;
  SplitReal table = arc_tangent_of_step[0];
  SplitReal tangent = {ratio, 0.0};
  double excess = 0;
  if (ratio >= linear_below) {
    const WholeStep step = nearest_step(ratio * 64);
    table = arc_tangent_of_step[step.bits];
    tangent = tangent_beyond_step(minor, major, step.count * (1.0 / 64));
    excess = arc_tangent_excess(tangent.head + tangent.tail);
  }
  const double fixed = base.head + sign * table.head;
  const double leading = sign * tangent.head;
  const double sum = fixed + leading;
  const double sum_error = leading - (sum - fixed);
  const double small = base.tail + sign * (table.tail + (tangent.tail + excess));
  return sum + (sum_error + small);
}

// Products of the two must neither overflow nor lose bits; a power of two changes no quotient.
double scale_for(double major) {
  if (major > 0x1p1000) return 0x1p-100;
  if (major < 0x1p-400) return 0x1p600;
  return 1.0;
}

}  // namespace

double portable_atan2(double y, double x) {
  if (std::isnan(x) || std::isnan(y)) return std::numeric_limits<double>::quiet_NaN();
  double across = std::fabs(x);
  double up = std::fabs(y);
  if (std::isinf(across) && std::isinf(up)) across = up = 1.0;  // a diagonal

  const bool steep = up > across;
  const bool leftward = std::signbit(x);
  double minor = steep ? across : up;
  double major = steep ? up : across;
  if (std::isinf(major)) {
    minor = 0;
    major = 1;
  }
  const double scale = scale_for(major);
  const size_t quarters = steep ? 1 : (leftward ? 2 : 0);
  const double sign = steep != leftward ? -1.0 : 1.0;
  const double angle = angle_in_octant(minor * scale, major * scale, quarter_turns[quarters], sign);
  return std::copysign(angle, y);
}

}  // namespace quorix
