// SPDX-License-Identifier: MIT
//
// Samples and pictures in no order, the same on every system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace quorix::testing {

class RandomNumbers {
 public:
  explicit RandomNumbers(uint32_t seed) : generator_(seed) {}
  uint32_t word() { return static_cast<uint32_t>(generator_()); }
  uint32_t below(uint32_t limit) { return word() % limit; }
  uint8_t byte() { return static_cast<uint8_t>(word() >> 24); }
  // Both ends included.
  int32_t between(int32_t low, int32_t high) {
    return low + static_cast<int32_t>(below(static_cast<uint32_t>(high - low) + 1));
  }

 private:
  std::mt19937 generator_;
};

inline std::vector<uint8_t> random_bytes(size_t count, uint32_t seed) {
  RandomNumbers random(seed);
  std::vector<uint8_t> bytes;
  for (size_t i = 0; i < count; ++i)
    bytes.push_back(random.byte());
  return bytes;
}

// Numbers below 2^bits, the extremes among them.
inline std::vector<uint32_t> random_samples(size_t count, uint32_t bits, uint32_t seed) {
  RandomNumbers random(seed);
  const uint32_t most = bits >= 32 ? 0xffffffffU : (1U << bits) - 1;
  std::vector<uint32_t> samples;
  for (size_t i = 0; i < count; ++i) {
    const uint32_t kind = random.below(6);
    samples.push_back(kind == 0 ? 0 : kind == 1 ? most : random.word() & most);
  }
  return samples;
}

}  // namespace quorix::testing
