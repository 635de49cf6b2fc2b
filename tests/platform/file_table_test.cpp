// SPDX-License-Identifier: MIT
//
// c_openfl and its companions on real files and in memory.
#include <gtest/gtest.h>

#include <climits>

#include "quorix/system.h"
#include "tests/support/failing_files.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

using Bytes = std::vector<uint8_t>;

enum Mode : int32_t { reading = 0, writing = 1, appending = 2 };

int32_t open_unit(const std::string &name, int32_t unit, int32_t mode) {
  int32_t status = 99;
  EXPECT_EQ(c_openfl(name.c_str(), &unit, &mode, &status), 0);
  return status;
}

int32_t close_unit(int32_t unit) {
  int32_t status = 99;
  EXPECT_EQ(c_closfl(&unit, &status), 0);
  return status;
}

int32_t read_unit(int32_t unit, int32_t count, Bytes *bytes) {
  int32_t result = 99;
  Bytes buffer(static_cast<size_t>(count > 0 ? count : 1), 0xEE);
  EXPECT_EQ(c_readfl(&unit, buffer.data(), &count, &result), 0);
  buffer.resize(result > 0 ? static_cast<size_t>(result) : 0);
  if (bytes != nullptr) *bytes = buffer;
  return result;
}

int32_t write_unit(int32_t unit, const Bytes &bytes, int32_t count) {
  int32_t result = 99;
  EXPECT_EQ(c_writfl(&unit, bytes.data(), &count, &result), 0);
  return result;
}

int32_t write_unit(int32_t unit, const Bytes &bytes) {
  return write_unit(unit, bytes, static_cast<int32_t>(bytes.size()));
}

int32_t skip(int32_t unit, int32_t offset) {
  int32_t result = 99;
  EXPECT_EQ(c_skipfl(&unit, &offset, &result), 0);
  return result;
}

int32_t go_to(int32_t unit, int32_t position) {
  int32_t result = 99;
  EXPECT_EQ(c_posifl(&unit, &position, &result), 0);
  return result;
}

int32_t tell(int32_t unit) {
  int32_t result = 99;
  EXPECT_EQ(c_tellfl(&unit, &result), 0);
  return result;
}

class FileTable : public ::testing::Test {
 protected:
  void TearDown() override {
    for (int32_t unit = 0; unit < 100; ++unit)
      close_unit(unit);
  }
  std::string file(const std::string &name) const { return folder_.file(name); }
  std::string digits() const {
    write_whole_file(file("digits"), {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'});
    return file("digits");
  }

  TemporaryFolder folder_;
};

TEST_F(FileTable, WritesAndReadsBytesAsTheyAre) {
  Bytes all(256);
  for (size_t i = 0; i < all.size(); ++i)
    all[i] = static_cast<uint8_t>(i);
  ASSERT_EQ(open_unit(file("a"), 7, writing), 0);
  EXPECT_EQ(write_unit(7, all), 256);
  EXPECT_EQ(write_unit(7, {13, 10, 26}), 3);
  EXPECT_EQ(close_unit(7), 0);
  all.insert(all.end(), {13, 10, 26});
  EXPECT_EQ(read_whole_file(file("a")), all);

  ASSERT_EQ(open_unit(file("a"), 7, reading), 0);
  Bytes bytes;
  EXPECT_EQ(read_unit(7, 1000, &bytes), 259);
  EXPECT_EQ(bytes, all);
  EXPECT_EQ(read_unit(7, 1, &bytes), 0) << "at the end";
  EXPECT_EQ(close_unit(7), 0);
}

TEST_F(FileTable, EmptiesAFileThatIsOpenedForWriting) {
  const std::string name = digits();
  ASSERT_EQ(open_unit(name, 0, writing), 0);
  EXPECT_EQ(write_unit(0, {'x'}), 1);
  close_unit(0);
  EXPECT_EQ(read_whole_file(name), Bytes({'x'}));
}

TEST_F(FileTable, Appends) {
  for (const char *expected : {"a", "aa", "aaa"}) {
    ASSERT_EQ(open_unit(file("a"), 3, appending), 0);
    EXPECT_EQ(write_unit(3, {'a'}), 1);
    EXPECT_EQ(read_unit(3, 1, nullptr), -1);
    close_unit(3);
    const std::string words = expected;
    EXPECT_EQ(read_whole_file(file("a")), Bytes(words.begin(), words.end()));
  }
}

TEST_F(FileTable, OpensForReadingUnderEveryOtherMode) {
  const std::string name = digits();
  // kept: only mode 0 leaves a unit that may be read; with the others it may be written, which a
  // file that was opened for reading refuses.
  for (const int32_t mode : {3, 4, 100, -2, 254, INT_MIN + 3}) {
    ASSERT_EQ(open_unit(name, 1, mode), 0) << mode;
    EXPECT_EQ(read_unit(1, 3, nullptr), -1) << mode;
    EXPECT_EQ(write_unit(1, {'x'}), 0) << mode;
    EXPECT_EQ(go_to(1, 4), 0) << mode;
    EXPECT_EQ(tell(1), 4) << mode;
    EXPECT_EQ(close_unit(1), 0) << mode;
  }
  EXPECT_EQ(read_whole_file(name).size(), 10U);
  ASSERT_EQ(open_unit(name, 1, 256), 0) << "the low 8 bits count: 1, reading";
  EXPECT_EQ(read_unit(1, 3, nullptr), 3);
}

TEST_F(FileTable, RefusesModesThatWouldLeaveTheUnitFree) {
  const std::string name = digits();
  for (const int32_t mode : {-1, 255, 511, -257, INT_MAX}) {
    EXPECT_EQ(open_unit(name, 1, mode), 1) << mode;
    EXPECT_EQ(close_unit(1), 1) << mode;
  }
}

TEST_F(FileTable, TellsThatAFileCannotBeOpened) {
  EXPECT_EQ(open_unit(file("missing"), 1, reading), 1);
  EXPECT_EQ(open_unit(file("no/folder"), 1, writing), 1);
  EXPECT_EQ(open_unit(file("no/folder"), 1, appending), 1);
  EXPECT_EQ(open_unit("", 1, reading), 1);
  EXPECT_EQ(close_unit(1), 1) << "the unit stays free";
  EXPECT_FALSE(file_exists(file("missing")));
  EXPECT_EQ(open_unit(digits(), 1, reading), 0);
}

TEST_F(FileTable, TellsThatAUnitIsInUseAndLeavesItsFileAlone) {
  const std::string name = digits();
  ASSERT_EQ(open_unit(name, 5, reading), 0);
  EXPECT_EQ(go_to(5, 6), 0);
  EXPECT_EQ(open_unit(file("b"), 5, writing), 2);
  EXPECT_EQ(open_unit(file("missing"), 5, reading), 2);
  EXPECT_FALSE(file_exists(file("b")));
  Bytes bytes;
  EXPECT_EQ(read_unit(5, 9, &bytes), 4);
  EXPECT_EQ(bytes, Bytes({'6', '7', '8', '9'}));
}

TEST_F(FileTable, OpensAUnitAgainOnceItIsClosed) {
  const std::string name = digits();
  ASSERT_EQ(open_unit(name, 5, reading), 0);
  EXPECT_EQ(close_unit(5), 0);
  EXPECT_EQ(close_unit(5), 1);
  EXPECT_EQ(open_unit(file("b"), 5, writing), 0);
  EXPECT_EQ(close_unit(5), 0);
}

TEST_F(FileTable, HoldsAHundredFilesAtOnce) {
  for (int32_t unit = 0; unit < 100; ++unit)
    ASSERT_EQ(open_unit(file(std::to_string(unit)), unit, writing), 0);
  for (int32_t unit = 0; unit < 100; ++unit)
    EXPECT_EQ(write_unit(unit, Bytes(static_cast<size_t>(unit) + 1, static_cast<uint8_t>(unit))),
              unit + 1);
  for (int32_t unit = 0; unit < 100; ++unit)
    EXPECT_EQ(close_unit(unit), 0);
  for (int32_t unit = 0; unit < 100; ++unit)
    EXPECT_EQ(read_whole_file(file(std::to_string(unit))),
              Bytes(static_cast<size_t>(unit) + 1, static_cast<uint8_t>(unit)));
}

TEST_F(FileTable, OpensOneFileUnderTwoUnits) {
  const std::string name = digits();
  ASSERT_EQ(open_unit(name, 1, reading), 0);
  ASSERT_EQ(open_unit(name, 2, reading), 0);
  EXPECT_EQ(skip(1, 5), 0);
  EXPECT_EQ(tell(1), 5);
  EXPECT_EQ(tell(2), 0);
}

TEST_F(FileTable, ReadsOnlyWhatWasOpenedForReading) {
  ASSERT_EQ(open_unit(file("a"), 1, writing), 0);
  EXPECT_EQ(read_unit(1, 1, nullptr), -1);
  ASSERT_EQ(open_unit(digits(), 2, reading), 0);
  EXPECT_EQ(write_unit(2, {'x'}), -1);
}

TEST_F(FileTable, HasNoUnitsBesidesItsHundred) {
  const std::string name = digits();
  for (const int32_t unit : {-1, 100, 101, 256, INT_MAX, INT_MIN}) {
    EXPECT_EQ(open_unit(name, unit, reading), 1) << unit;
    EXPECT_EQ(open_unit(file("new"), unit, writing), 1) << unit;
    EXPECT_EQ(read_unit(unit, 1, nullptr), -1) << unit;
    EXPECT_EQ(write_unit(unit, {'x'}), -1) << unit;
    EXPECT_EQ(skip(unit, 0), -1) << unit;
    EXPECT_EQ(go_to(unit, 0), -1) << unit;
    EXPECT_EQ(tell(unit), -1) << unit;
    EXPECT_EQ(close_unit(unit), 1) << unit;
  }
}

TEST_F(FileTable, GivesMinusOneForFreeUnits) {
  EXPECT_EQ(read_unit(9, 1, nullptr), -1);
  EXPECT_EQ(write_unit(9, {'x'}), -1);
  EXPECT_EQ(skip(9, 0), -1);
  EXPECT_EQ(go_to(9, 0), -1);
  EXPECT_EQ(tell(9), -1);
  EXPECT_EQ(close_unit(9), 1);
}

TEST_F(FileTable, MovesWithinAFile) {
  ASSERT_EQ(open_unit(digits(), 4, reading), 0);
  Bytes bytes;
  EXPECT_EQ(tell(4), 0);
  EXPECT_EQ(read_unit(4, 2, &bytes), 2);
  EXPECT_EQ(tell(4), 2);
  EXPECT_EQ(skip(4, 3), 0);
  EXPECT_EQ(tell(4), 5);
  EXPECT_EQ(read_unit(4, 1, &bytes), 1);
  EXPECT_EQ(bytes, Bytes({'5'}));
  EXPECT_EQ(skip(4, -4), 0);
  EXPECT_EQ(read_unit(4, 1, &bytes), 1);
  EXPECT_EQ(bytes, Bytes({'2'}));
  EXPECT_EQ(go_to(4, 9), 0);
  EXPECT_EQ(read_unit(4, 5, &bytes), 1);
  EXPECT_EQ(bytes, Bytes({'9'}));
  EXPECT_EQ(go_to(4, 0), 0);
  EXPECT_EQ(skip(4, 0), 0);
  EXPECT_EQ(tell(4), 0);
  EXPECT_EQ(go_to(4, 1000), 0) << "beyond the end";
  EXPECT_EQ(tell(4), 1000);
  EXPECT_EQ(read_unit(4, 1, nullptr), 0);
}

TEST_F(FileTable, RefusesToMoveBeforeTheStart) {
  ASSERT_EQ(open_unit(digits(), 4, reading), 0);
  EXPECT_EQ(go_to(4, 3), 0);
  EXPECT_EQ(skip(4, -4), -1);
  EXPECT_EQ(go_to(4, -1), -1);
  EXPECT_EQ(skip(4, INT_MIN), -1);
  EXPECT_EQ(tell(4), 3);
}

TEST_F(FileTable, MovesInAFileThatIsWritten) {
  ASSERT_EQ(open_unit(file("a"), 4, writing), 0);
  EXPECT_EQ(write_unit(4, {'a', 'b', 'c'}), 3);
  EXPECT_EQ(tell(4), 3);
  EXPECT_EQ(go_to(4, 1), 0);
  EXPECT_EQ(write_unit(4, {'X'}), 1);
  EXPECT_EQ(skip(4, 2), 0);
  EXPECT_EQ(write_unit(4, {'e'}), 1);
  close_unit(4);
  EXPECT_EQ(read_whole_file(file("a")), Bytes({'a', 'X', 'c', 0, 'e'}));
}

TEST_F(FileTable, TakesCountsOfZeroAndRefusesNegativeOnes) {
  ASSERT_EQ(open_unit(digits(), 1, reading), 0);
  ASSERT_EQ(open_unit(file("a"), 2, writing), 0);
  EXPECT_EQ(read_unit(1, 0, nullptr), 0);
  EXPECT_EQ(write_unit(2, {'x'}, 0), 0);
  for (const int32_t count : {-1, -1000, INT_MIN}) {
    EXPECT_EQ(read_unit(1, count, nullptr), -1);
    EXPECT_EQ(write_unit(2, {'x'}, count), -1);
  }
  EXPECT_EQ(tell(1), 0);
  EXPECT_EQ(tell(2), 0);
}

TEST_F(FileTable, MovesBeyondTwoGibibytes) {
  ASSERT_EQ(open_unit(digits(), 1, reading), 0);
  EXPECT_EQ(go_to(1, INT_MAX), 0);
  EXPECT_EQ(tell(1), INT_MAX);
  EXPECT_EQ(skip(1, INT_MAX), 0);
  EXPECT_EQ(tell(1), -1) << "too far for 32 bits";
  EXPECT_EQ(skip(1, -INT_MAX), 0);
  EXPECT_EQ(skip(1, -INT_MAX), 0);
  EXPECT_EQ(tell(1), 0);
}

TEST_F(FileTable, TakesNamesOfAnyLength) {
  EXPECT_EQ(open_unit(std::string(100000, 'n'), 1, reading), 1);
  EXPECT_EQ(open_unit(std::string(100000, 'n'), 1, writing), 1);
  EXPECT_EQ(close_unit(1), 1);
}

TEST(FileTableInMemory, GoesOnAfterEveryFailingCall) {
  MemoryFiles disk;
  disk.put("in", {1, 2, 3, 4});
  bool failed = true;
  for (size_t n = 1; failed; ++n) {
    FailingFiles files(n);
    const int32_t opened = open_unit("in", 1, reading);
    EXPECT_TRUE(opened == 0 || opened == 1);
    const int32_t bytes = read_unit(1, 4, nullptr);
    EXPECT_TRUE(bytes == 4 || bytes == 0 || (opened == 1 && bytes == -1)) << bytes;
    const int32_t moved = go_to(1, 2);
    EXPECT_TRUE(moved == 0 || moved == -1);
    const int32_t skipped = skip(1, 1);
    EXPECT_TRUE(skipped == 0 || skipped == -1);
    const int32_t place = tell(1);
    EXPECT_TRUE(place >= -1 && place <= 5);
    EXPECT_EQ(close_unit(1), opened);
    const int32_t created = open_unit("out", 2, writing);
    const int32_t written = write_unit(2, {5, 6});
    EXPECT_TRUE(written == 2 || (created == 0 && written == 0) || (created == 1 && written == -1));
    EXPECT_EQ(disk.exists("out") && disk.bytes("out").size() == 2, written == 2);
    EXPECT_EQ(close_unit(2), created);
    EXPECT_EQ(close_unit(2), 1);
    failed = files.failed();
    EXPECT_EQ(files.open_files(), 0U);
    disk.put("out", {});
  }
}

TEST(FileTableInMemory, TellsHowMuchAFullDiskTook) {
  MemoryFiles disk;
  FailingFiles files;
  files.limit_written_bytes(5);
  ASSERT_EQ(open_unit("out", 2, writing), 0);
  EXPECT_EQ(write_unit(2, {1, 2, 3}), 3);
  EXPECT_EQ(write_unit(2, {4, 5, 6}), 2);
  EXPECT_EQ(write_unit(2, {7}), 0);
  EXPECT_EQ(close_unit(2), 0);
}

}  // namespace
}  // namespace quorix::testing
