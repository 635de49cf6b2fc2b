// SPDX-License-Identifier: MIT
//
// Conversions between numbers that have one defined answer for every input.
#pragma once

#include <cstdint>

namespace quorix {

// Truncation toward zero; NaN gives 0, and what is out of range gives the nearest end of the range.
inline int32_t to_int32(double value) {
  if (value > -2147483649.0 && value < 2147483648.0) return static_cast<int32_t>(value);
  if (value >= 2147483648.0) return INT32_MAX;
  return value <= -2147483649.0 ? INT32_MIN : 0;
}

// The library's only rounding: half a unit added, then truncation toward zero.
inline int32_t round_to_int32(double value) {
  return to_int32(value + 0.5);
}

// The low 8 bits of the truncated value.
inline uint8_t to_byte(double value) {
  return static_cast<uint8_t>(static_cast<uint32_t>(to_int32(value)) & 255U);
}

// The absolute value, which for the smallest integer does not fit in 32 bits.
inline int64_t magnitude(int32_t value) {
  return value < 0 ? -static_cast<int64_t>(value) : static_cast<int64_t>(value);
}

// The sum, kept within 32 bits.
inline int32_t saturated_sum(int32_t a, int32_t b) {
  const int64_t sum = static_cast<int64_t>(a) + b;
  if (sum > INT32_MAX) return INT32_MAX;
  return sum < INT32_MIN ? INT32_MIN : static_cast<int32_t>(sum);
}

}  // namespace quorix
