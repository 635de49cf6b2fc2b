// SPDX-License-Identifier: MIT
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace quorix::testing {
namespace {

TEST(TemporaryFolder, IsItsOwnAndGoesAwayWithWhatItHolds) {
  std::string name;
  {
    TemporaryFolder one;
    TemporaryFolder other;
    EXPECT_NE(one.file("a"), other.file("a"));
    name = one.file("a");
    EXPECT_FALSE(file_exists(name));
    write_whole_file(name, {1, 13, 10, 26, 0});
    EXPECT_TRUE(file_exists(name));
    EXPECT_EQ(read_whole_file(name), (std::vector<uint8_t>{1, 13, 10, 26, 0}));
    std::FILE *file = std::fopen(name.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    std::fclose(file);
  }
  EXPECT_FALSE(file_exists(name));
}

}  // namespace
}  // namespace quorix::testing
