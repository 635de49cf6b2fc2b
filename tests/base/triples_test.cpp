// SPDX-License-Identifier: MIT
//
// Rows of three-byte pixels: every fast form against the plain one.
#include "base/triples.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/processor.h"

namespace quorix::testing {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes row_of(size_t count) {
  Bytes row(3 * count);
  for (size_t i = 0; i < row.size(); ++i)
    row[i] = static_cast<uint8_t>(i * 37 + i / 256);
  return row;
}

using Swap = void (*)(uint8_t *pixels, size_t count);

std::vector<Swap> forms() {
  std::vector<Swap> all = {swap_red_and_blue, swap_red_and_blue_plainly};
  if constexpr (compiled_for_x86_64) {
    if (processor().ssse3) all.push_back(swap_red_and_blue_ssse3);
  }
  if constexpr (compiled_for_arm64) all.push_back(swap_red_and_blue_neon);
  return all;
}

TEST(Triples, AreTurnedInRowsOfAnyLengthAndNothingBesideThem) {
  for (size_t count = 0; count < 200; ++count) {
    const Bytes before = row_of(count);
    for (const auto swap : forms()) {
      Bytes row = before;  // of just that size, so that the sanitizer sees any byte too many
      swap(row.data(), count);
      for (size_t i = 0; i < count; ++i) {
        ASSERT_EQ(row[3 * i], before[3 * i + 2]) << count;
        ASSERT_EQ(row[3 * i + 1], before[3 * i + 1]) << count;
        ASSERT_EQ(row[3 * i + 2], before[3 * i]) << count;
      }
    }
  }
}

}  // namespace
}  // namespace quorix::testing
