// SPDX-License-Identifier: MIT
//
// Runs numbered cases and reports the ones that differ by their number.
//
//   compare_cases("QUORIX_SORT", 4000, [](uint64_t number) { return difference; });
//
// With QUORIX_SORT=<number> in the environment that case runs alone; QUORIX_SORTS=<count> runs
// that many. A case that differs gives a text, one that does not an empty one.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace quorix::testing {

inline uint64_t number_from_environment(const std::string &name, uint64_t otherwise) {
  const char *text = std::getenv(name.c_str());
  if (text == nullptr || *text == '\0') return otherwise;
  return std::strtoull(text, nullptr, 10);
}

template <class Case>
void compare_cases(const std::string &variable, uint64_t count, Case difference_of) {
  constexpr int most_failures = 3;
  constexpr uint64_t none = UINT64_MAX;
  uint64_t first = 0;
  uint64_t end = number_from_environment(variable + "S", count);
  const uint64_t alone = number_from_environment(variable, none);
  if (alone != none) {
    first = alone;
    end = alone + 1;
  }
  int failures = 0;
  for (uint64_t number = first; number < end && failures < most_failures; number++) {
    const std::string difference = difference_of(number);
    if (difference.empty()) continue;
    ADD_FAILURE() << variable << "=" << number << ": " << difference;
    failures++;
  }
}

}  // namespace quorix::testing
