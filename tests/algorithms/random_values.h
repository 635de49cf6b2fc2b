// SPDX-License-Identifier: MIT
//
// Numbers for random cases: splitmix64 and plain arithmetic, so that a case number means the same
// case in every build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorix::testing {

class RandomValues {
 public:
  explicit RandomValues(uint64_t seed) : state_(seed * 0xD1342543DE82EF95U + 1) {}

  uint64_t word() {
    state_ += 0x9E3779B97F4A7C15U;
    uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  size_t below(size_t limit) { return static_cast<size_t>(word() % limit); }
  bool one_in(size_t limit) { return below(limit) == 0; }
  // Both ends included.
  int32_t between(int32_t low, int32_t high) {
    return low + static_cast<int32_t>(below(static_cast<size_t>(high - low) + 1));
  }
  // From 0 up to, but not including, 1.
  double unit() { return static_cast<double>(word() >> 11) * 0x1p-53; }
  double real(double low, double high) { return low + (high - low) * unit(); }

  template <class T>
  const T &one_of(const std::vector<T> &choices) {
    return choices[below(choices.size())];
  }

  template <class T>
  void shuffle(std::vector<T> *values) {
    for (size_t i = values->size(); i > 1; i--) {
      const size_t k = below(i);
      const T moved = (*values)[i - 1];
      (*values)[i - 1] = (*values)[k];
      (*values)[k] = moved;
    }
  }

 private:
  uint64_t state_;
};

}  // namespace quorix::testing
