// SPDX-License-Identifier: MIT
//
// The value of `value += step`, done `count` times, to the last bit but without doing it.
//
// Within one binade (a range of one exponent) every sum lands on the same grid, so each step adds
// the same rounded amount, once a tie between two grid points has been settled by the first step.
// The sum can therefore go to near the end of a binade at once.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quorix {

// How many equal steps surely stay within the binade of a value; less than 1 where that is
// doubtful.
inline double steps_within_binade(double value, double rounded_step) {
  if (value == 0.0) return 0.0;  // zero has no binade
  int exponent = 0;
  std::frexp(value, &exponent);
  const bool grows = (value < 0) == (rounded_step < 0);
  const double end = std::ldexp(1.0, grows ? exponent : exponent - 1);
  return std::floor(std::abs(end - std::abs(value)) / std::abs(rounded_step)) - 2.0;
}

inline double repeated_sum(double value, double step, int64_t count) {
  constexpr int64_t worth_a_jump = 64;
  while (count > worth_a_jump) {
    const double once = value + step;
    const double twice = once + step;
    if (twice == once || !std::isfinite(twice)) return twice;  // it stays what it has become
    // Two equal steps: no tie is left to be settled in this binade.
    const double rounded_step = twice - once;
    const double room =
        once - value == rounded_step ? steps_within_binade(value, rounded_step) : 0.0;
    if (room >= 1.0) {
      const auto jump = static_cast<int64_t>(std::min(room, static_cast<double>(count)));
      value += static_cast<double>(jump) * rounded_step;
      count -= jump;
    } else {
      value = twice;
      count -= 2;
    }
  }
  for (; count > 0; --count)
    value += step;
  return value;
}

}  // namespace quorix
