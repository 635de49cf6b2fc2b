// SPDX-License-Identifier: MIT
#include "tests/support/failing_memory.h"

#include <gtest/gtest.h>

#include "base/memory.h"

namespace quorix::testing {
namespace {

TEST(FailingMemory, RefusesTheChosenRequestAlone) {
  FailingMemory memory(2);
  OwnedArray<int> first = allocate_array<int>(1);
  EXPECT_NE(first, nullptr);
  EXPECT_FALSE(memory.failed());
  EXPECT_EQ(allocate_zeroed_array<int>(1), nullptr);
  EXPECT_TRUE(memory.failed());
  EXPECT_NE(allocate_array<int>(1), nullptr);
  EXPECT_EQ(memory.requests(), 3U);
}

TEST(FailingMemory, RefusesAllLaterRequestsIfAsked) {
  FailingMemory memory(2, Failures::that_and_all_later);
  EXPECT_NE(allocate_array<int>(1), nullptr);
  EXPECT_EQ(allocate_array<int>(1), nullptr);
  EXPECT_EQ(allocate_array<int>(1), nullptr);
}

TEST(FailingMemory, CountsBlocksBytesAndTheirPeak) {
  FailingMemory memory;
  OwnedArray<char> kept = allocate_array<char>(10);
  { OwnedArray<char> passing = allocate_zeroed_array<char>(30); }
  EXPECT_EQ(memory.live_blocks(), 1U);
  EXPECT_EQ(memory.live_bytes(), 10U);
  EXPECT_EQ(memory.peak_bytes(), 40U);
}

TEST(FailingMemory, LetsBlocksCrossItsBorders) {
  OwnedArray<char> older = allocate_array<char>(10);
  OwnedArray<char> outliving;
  {
    FailingMemory memory;
    older.reset();
    EXPECT_EQ(memory.live_bytes(), 0U);
    outliving = allocate_array<char>(5);
  }
  outliving.reset();
  EXPECT_NE(allocate_array<char>(1), nullptr);
}

}  // namespace
}  // namespace quorix::testing
