// SPDX-License-Identifier: MIT
#include "tests/support/failing_files.h"

#include <gtest/gtest.h>

#include <cstring>

#include "base/files.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

TEST(FailingFiles, RefusesTheChosenCall) {
  MemoryFiles disk;
  FailingFiles files(2);
  OwnedFile file = open_file("a", "wb");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(write_file(file.get(), "xyz", 3), 0U);
  EXPECT_TRUE(files.failed());
  EXPECT_EQ(write_file(file.get(), "xyz", 3), 3U);
  EXPECT_EQ(files.open_files(), 1U);
  file.reset();
  EXPECT_EQ(files.open_files(), 0U);
  EXPECT_EQ(files.calls(), 4U);
  EXPECT_EQ(disk.bytes("a").size(), 3U);
}

TEST(FailingFiles, CountsOnlyTheKindsThatWereAskedFor) {
  MemoryFiles disk;
  disk.put("a", {1, 2, 3});
  FailingFiles files(2, file_read);
  OwnedFile file = open_file("a", "rb");
  char byte = 0;
  EXPECT_EQ(read_file(file.get(), &byte, 1), 1U);
  EXPECT_EQ(read_file(file.get(), &byte, 1), 0U);
  EXPECT_EQ(read_file(file.get(), &byte, 1), 1U);
}

TEST(FailingFiles, ActsAsAFullDisk) {
  MemoryFiles disk;
  FailingFiles files;
  files.limit_written_bytes(5);
  OwnedFile file = open_file("a", "wb");
  EXPECT_EQ(write_file(file.get(), "xyz", 3), 3U);
  EXPECT_FALSE(files.failed());
  EXPECT_EQ(write_file(file.get(), "xyz", 3), 2U);
  EXPECT_EQ(write_file(file.get(), "xyz", 3), 0U);
  EXPECT_TRUE(files.failed());
}

TEST(FailingFiles, ActsAsAPipe) {
  MemoryFiles disk;
  disk.put("a", {1, 2, 3});
  FailingFiles files;
  files.limit_bytes_of_a_read(2);
  OwnedFile file = open_file("a", "rb");
  char bytes[3];
  EXPECT_EQ(read_file(file.get(), bytes, 3), 2U);
  EXPECT_EQ(read_file(file.get(), bytes, 3), 1U);
}

TEST(MemoryFiles, GiveBackWhatWasWritten) {
  MemoryFiles files;
  EXPECT_EQ(open_file("a", "rb"), nullptr);
  OwnedFile file = open_file("a", "wb");
  write_file(file.get(), "hello", 5);
  file_gate.seek(file.get(), 1, SEEK_SET);
  write_file(file.get(), "u", 1);
  EXPECT_EQ(file_gate.tell(file.get()), 2);
  EXPECT_EQ(files.open_files(), 1U);
  file.reset();
  EXPECT_EQ(files.open_files(), 0U);

  char bytes[8];
  OwnedFile again = open_file("a", "rb");
  EXPECT_EQ(file_gate.seek(again.get(), -4, SEEK_END), 0);
  EXPECT_EQ(read_file(again.get(), bytes, 8), 4U);
  EXPECT_EQ(std::memcmp(bytes, "ullo", 4), 0);
  EXPECT_EQ(file_gate.seek(again.get(), -1, SEEK_SET), -1);
  EXPECT_EQ(write_file(again.get(), "x", 1), 0U);
}

TEST(MemoryFiles, FillAGapWithZeros) {
  MemoryFiles files;
  OwnedFile file = open_file("a", "wb");
  file_gate.seek(file.get(), 2, SEEK_SET);
  write_file(file.get(), "x", 1);
  EXPECT_EQ(files.bytes("a"), (std::vector<uint8_t>{0, 0, 'x'}));
}

}  // namespace
}  // namespace quorix::testing
