// SPDX-License-Identifier: MIT
//
// Numbers that are the same on every system: the standard fixes the generator, but neither its
// result type nor the distributions.
#pragma once

#include <cstdint>
#include <random>

namespace quorix::testing {

class RandomNumbers {
 public:
  explicit RandomNumbers(uint32_t seed) : generator_(seed) {}
  uint32_t word() { return static_cast<uint32_t>(generator_()); }
  uint32_t below(uint32_t limit) { return word() % limit; }
  // Both ends included.
  int32_t between(int32_t low, int32_t high) {
    return low + static_cast<int32_t>(below(static_cast<uint32_t>(high - low) + 1));
  }

 private:
  std::mt19937 generator_;
};

}  // namespace quorix::testing
