// SPDX-License-Identifier: MIT
//
// Arrays that grow.
#include "base/grow.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

OwnedArray<int32_t> two_values() {
  auto array = allocate_array<int32_t>(2);
  array[0] = 7;
  array[1] = 8;
  return array;
}

TEST(GrownRoom, IsTwiceTheRoomOrWhatIsNeeded) {
  EXPECT_EQ(grown_room(0, 100), 100);
  EXPECT_EQ(grown_room(50, 100), 100);
  EXPECT_EQ(grown_room(51, 100), 102);
  EXPECT_EQ(grown_room<size_t>(1000, 1001), 2000U);
}

TEST(GrownRoom, EndsAtTheLargestNumber) {
  EXPECT_EQ(grown_room(INT32_MAX / 2 + 1, 5), INT32_MAX);
  EXPECT_EQ(grown_room(INT32_MAX - 1, INT32_MAX), INT32_MAX);
  EXPECT_EQ(grown_room(SIZE_MAX, SIZE_MAX), SIZE_MAX);
}

TEST(GrowArray, KeepsTheValues) {
  auto array = two_values();
  ASSERT_TRUE(grow_array(&array, 2, 1000));
  EXPECT_EQ(array[0], 7);
  EXPECT_EQ(array[1], 8);
}

TEST(GrowArray, ClearsTheOthersOnDemand) {
  auto array = two_values();
  ASSERT_TRUE(grow_array(&array, 2, 5, NewValues::zero));
  EXPECT_EQ(std::vector<int32_t>(array.get(), array.get() + 5),
            (std::vector<int32_t>{7, 8, 0, 0, 0}));
}

TEST(GrowArray, MakesAnArrayWhereThereWasNone) {
  OwnedArray<int32_t> array;
  ASSERT_TRUE(grow_array(&array, 0, 3, NewValues::zero));
  EXPECT_EQ(array[2], 0);
}

TEST(GrowArray, LeavesTheArrayAsItWasWithoutMemory) {
  auto array = two_values();
  const int32_t *const place = array.get();
  const FailingMemory memory(1, Failures::that_and_all_later);
  EXPECT_FALSE(grow_array(&array, 2, 4));
  EXPECT_FALSE(grow_array(&array, 2, 4, NewValues::zero));
  EXPECT_EQ(array.get(), place);
  EXPECT_EQ(array[1], 8);
}

TEST(GrowArray, RefusesSizesThatDoNotFitWithoutAskingForThem) {
  auto array = two_values();
  const FailingMemory memory;
  EXPECT_FALSE(grow_array<int32_t>(&array, size_t{2}, SIZE_MAX / 2));
  EXPECT_FALSE(grow_array<int32_t>(&array, size_t{2}, SIZE_MAX / 2, NewValues::zero));
  EXPECT_EQ(memory.requests(), 0U);
  EXPECT_EQ(array[0], 7);
}

}  // namespace
}  // namespace quorix::testing
