// SPDX-License-Identifier: MIT
//
// The memory gate: sizes that do not fit, requests for nothing.
#include "base/memory.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

TEST(CheckedProduct, AnswersWhetherTheProductFits) {
  size_t product = 0;
  EXPECT_TRUE(checked_product(&product, 6, 7));
  EXPECT_EQ(product, 42U);
  EXPECT_TRUE(checked_product(&product, SIZE_MAX, 1, 1));
  EXPECT_EQ(product, SIZE_MAX);
  EXPECT_FALSE(checked_product(&product, SIZE_MAX / 2 + 1, 2));
  EXPECT_FALSE(checked_product(&product, SIZE_MAX / 4 + 1, 2, 2));
}

TEST(AllocateArray, AsksForNoSizeThatDoesNotFit) {
  const FailingMemory memory;
  EXPECT_EQ(allocate_array<uint64_t>(SIZE_MAX / 8 + 1), nullptr);
  EXPECT_EQ(allocate_zeroed_array<uint64_t>(SIZE_MAX / 8 + 1), nullptr);
  EXPECT_EQ(memory.requests(), 0U);
}

TEST(AllocateArray, MayBeOfNoValues) {
  const FailingMemory memory;
  {
    const OwnedArray<int32_t> array = allocate_array<int32_t>(0);
    const OwnedArray<int32_t> zeroed = allocate_zeroed_array<int32_t>(0);
    EXPECT_NE(array, nullptr);
    EXPECT_NE(zeroed, nullptr);
    EXPECT_EQ(memory.live_blocks(), 2U);
  }
  EXPECT_EQ(memory.live_blocks(), 0U);
}

}  // namespace
}  // namespace quorix::testing
