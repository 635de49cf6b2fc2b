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

inline double repeated_sum(double value, double step, int64_t count) {
  constexpr int64_t worth_a_jump = 64;
  while (count > worth_a_jump) {
    value += step;
    value += step;
    count -= 2;
    if (!std::isfinite(value)) return value;  // it stays what it has become
    const double rounded_step = (value + step) - value;
    if (rounded_step == 0.0) return value;
    int exponent = 0;
    std::frexp(value, &exponent);
    const double size = std::abs(value);
    const bool grows = (value < 0) == (step < 0);
    const double end = std::ldexp(1.0, grows ? exponent : exponent - 1);
    const double room = std::floor(std::abs(end - size) / std::abs(rounded_step)) - 2.0;
    if (!(room >= 1.0)) continue;  // NaN too
    const auto jump = static_cast<int64_t>(std::min(room, static_cast<double>(count)));
    value += static_cast<double>(jump) * rounded_step;
    count -= jump;
  }
  for (; count > 0; --count)
    value += step;
  return value;
}

}  // namespace quorix
