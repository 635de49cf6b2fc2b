// SPDX-License-Identifier: MIT
//
// Thousands of documents drawn at random, compared byte for byte with the literal model's.
#include <gtest/gtest.h>

#include <string>

#include "tests/pdf/pdf_reader.h"
#include "tests/pdf/random_document.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class RandomDocuments : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};

void compare(uint32_t first_seed, uint32_t count, RandomKind kind) {
  for (uint32_t seed = first_seed; seed < first_seed + count; ++seed) {
    const Calls calls = random_calls(seed, kind);
    const Drawn expected = draw_with_model(calls);
    MemoryFiles files;
    const Drawn got = draw_with_library(calls, files);
    ASSERT_EQ(difference(got.document, expected.document), "") << "seed " << seed;
    ASSERT_EQ(got.answers, expected.answers) << "seed " << seed;
    EXPECT_EQ(files.open_files(), 0U);
    // Images that are ended twice or never make documents that no reader takes.
    if (kind != RandomKind::disorderly) {
      ASSERT_EQ(take_apart(got.document).problem, "") << "seed " << seed;
    }
  }
}

TEST_F(RandomDocuments, OfShortDrawingsAreAsTheModelsAre) {
  compare(1, 5000, RandomKind::orderly);
}

TEST_F(RandomDocuments, OfLongDrawingsAreAsTheModelsAre) {
  compare(100001, 30, RandomKind::long_drawing);
}

TEST_F(RandomDocuments, WithLargeWritesAreAsTheModelsAre) {
  compare(200001, 60, RandomKind::large_writes);
}

TEST_F(RandomDocuments, WithCallsInAnyOrderAreAsTheModelsAre) {
  compare(300001, 4000, RandomKind::disorderly);
}

TEST_F(RandomDocuments, LeaveNothingBehind) {
  const FailingMemory memory;
  for (uint32_t seed = 400001; seed < 400200; ++seed) {
    MemoryFiles files;
    draw_with_library(random_calls(seed, RandomKind::disorderly), files);
  }
  qqpfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

}  // namespace
}  // namespace quorix::testing
