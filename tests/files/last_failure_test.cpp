// SPDX-License-Identifier: MIT
//
// quorix_last_failure: what it tells after each call of each writer was made to fail, and when it
// tells nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "quorix/quorix.h"
#include "tests/files/file_operations.h"
#include "tests/support/failing_files.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class LastFailure : public ::testing::Test {
 protected:
  void SetUp() override {
    take_failure();
    show_noise(5, 4);
  }
  void TearDown() override {
    qqwfree();
    qqpfree();
    take_failure();
  }
};

size_t written_size(const FileWriterCall &writer) {
  MemoryFiles files;
  EXPECT_EQ(writer.run("out"), 0) << writer.operation;
  return files.bytes("out").size();
}

TEST_F(LastFailure, IsNothingAfterFilesThatAreWhole) {
  for (const FileWriterCall &writer : file_writers) {
    MemoryFiles files;
    EXPECT_EQ(writer.run("out"), 0) << writer.operation;
    EXPECT_FALSE(take_failure().any) << writer.operation;
  }
}

// A disk that is full after any number of bytes: no status tells, the failure does.
TEST_F(LastFailure, TellsOfAFullDiskAtEveryByte) {
  for (const FileWriterCall &writer : file_writers) {
    const size_t size = written_size(writer);
    ASSERT_GT(size, 30U) << writer.operation;
    for (size_t limit = 0; limit <= size; ++limit) {
      MemoryFiles files;
      FailingFiles disk;
      disk.limit_written_bytes(limit);
      EXPECT_EQ(writer.run("out"), 0) << writer.operation << " " << limit;
      const ToldFailure told = take_failure();
      ASSERT_EQ(told.any, limit < size) << writer.operation << " " << limit;
      if (!told.any) continue;
      ASSERT_EQ(told.operation, writer.operation) << limit;
      ASSERT_EQ(told.step, QUORIX_STEP_WRITE) << writer.operation << " " << limit;
      ASSERT_EQ(told.file, "out") << writer.operation << " " << limit;
      ASSERT_EQ(told.error, 0) << "the gate gives no number";
      ASSERT_EQ(told.reason, "");
    }
  }
}

TEST_F(LastFailure, TellsOfFilesThatCannotBeOpened) {
  for (const FileWriterCall &writer : file_writers) {
    MemoryFiles files;
    const FailingFiles gate(1, file_open);
    EXPECT_EQ(writer.run("out"), writer.no_file) << writer.operation;
    const ToldFailure told = take_failure();
    ASSERT_TRUE(told.any) << writer.operation;
    EXPECT_EQ(told.operation, writer.opener);
    EXPECT_EQ(told.step, QUORIX_STEP_OPEN) << writer.operation;
    EXPECT_EQ(told.file, "out") << writer.operation;
  }
}

// Each write, flush and close in turn. Only the document and the unit close in another operation
// than the one that wrote.
TEST_F(LastFailure, NamesTheStepThatFailed) {
  const struct {
    FileCall call;
    int32_t step;
  } steps[] = {{file_write, QUORIX_STEP_WRITE},
               {file_flush, QUORIX_STEP_FLUSH},
               {file_close, QUORIX_STEP_CLOSE}};
  for (const FileWriterCall &writer : file_writers) {
    size_t failures = 0;
    for (const auto &step : steps) {
      for (size_t n = 1;; ++n) {
        MemoryFiles files;
        const FailingFiles gate(n, step.call);
        EXPECT_EQ(writer.run("out"), 0) << writer.operation;
        const ToldFailure told = take_failure();
        ASSERT_EQ(told.any, gate.failed()) << writer.operation << " " << step.step << " " << n;
        if (!gate.failed()) break;
        ++failures;
        EXPECT_EQ(told.step, step.step) << writer.operation << " " << n;
        const bool closed_apart =
            step.call == file_close && std::strcmp(writer.operation, "c_writfl") == 0;
        EXPECT_EQ(told.operation, closed_apart ? "c_closfl" : writer.operation) << n;
        EXPECT_EQ(told.file, "out") << writer.operation << " " << n;
      }
    }
    EXPECT_GE(failures, 2U) << writer.operation << " writes, and closes or flushes";
  }
}

TEST_F(LastFailure, IsForgottenOnceItWasAskedFor) {
  MemoryFiles files;
  {
    const FailingFiles gate(1, file_open);
    EXPECT_EQ(file_writers[0].run("out"), -1);
  }
  EXPECT_EQ(file_writers[1].run("whole"), 0) << "a file that is whole hides nothing";
  EXPECT_EQ(take_failure().operation, file_writers[0].operation);
  EXPECT_FALSE(take_failure().any);
}

TEST_F(LastFailure, IsTheFirstOfOneOperationAndTheLastOfSeveral) {
  MemoryFiles files;
  for (const char *name : {"one", "two"}) {
    FailingFiles disk;
    disk.limit_written_bytes(0);  // then every write of the picture fails
    EXPECT_EQ(file_writers[4].run(name), 0);
  }
  const ToldFailure told = take_failure();
  EXPECT_EQ(told.file, "two");
  EXPECT_EQ(told.step, QUORIX_STEP_WRITE);
}

TEST_F(LastFailure, LeavesOutWhatIsNotWanted) {
  MemoryFiles files;
  const auto fail = [] {
    const FailingFiles gate(1, file_open);
    file_writers[0].run("picture");
  };
  EXPECT_EQ(quorix_last_failure(nullptr, nullptr, nullptr, nullptr, nullptr, 0), 0);
  fail();
  EXPECT_EQ(quorix_last_failure(nullptr, nullptr, nullptr, nullptr, nullptr, 0), 1);
  fail();
  char operation[8] = "xxxxxxx", file[8] = "xxxxxxx";
  EXPECT_EQ(quorix_last_failure(operation, nullptr, nullptr, nullptr, file, 0), 1);
  EXPECT_STREQ(operation, "xxxxxxx");
  fail();
  EXPECT_EQ(quorix_last_failure(operation, nullptr, nullptr, nullptr, file, -3), 1);
  EXPECT_STREQ(file, "xxxxxxx");
  fail();
  EXPECT_EQ(quorix_last_failure(operation, nullptr, nullptr, nullptr, file, 4), 1);
  EXPECT_STREQ(operation, "qqp");
  EXPECT_STREQ(file, "pic");
  EXPECT_EQ(file[5], 'x') << "nothing beyond the room";
  int32_t step = 7, error = 8;
  EXPECT_EQ(quorix_last_failure(operation, &step, &error, nullptr, file, 8), 0);
  EXPECT_STREQ(operation, "qqp");
  EXPECT_EQ(step, 7);
  EXPECT_EQ(error, 8);
}

TEST_F(LastFailure, KeepsTheEndOfLongNames) {
  const std::string last(255, 'e');
  const std::string umlaut = "\xC3\xBC";
  const struct {
    std::string name, told;
  } cases[] = {
      {last, last},
      {"d" + last, last},
      {std::string(4000, 'd') + last, last},
      // A character is never cut in two.
      {"d" + umlaut + last.substr(1), last.substr(1)},
      {"d" + umlaut + last.substr(2), umlaut + last.substr(2)},
  };
  for (const FileWriterCall &writer : {file_writers[0], file_writers.back()}) {
    for (const auto &one : cases) {
      MemoryFiles files;
      FailingFiles disk;
      disk.limit_written_bytes(1);
      EXPECT_EQ(writer.run(one.name), 0);
      EXPECT_EQ(take_failure().file, one.told) << writer.operation;
    }
  }
}

TEST_F(LastFailure, TellsOfNamesThatAreNone) {
  for (const char *name : {"", static_cast<const char *>(nullptr)}) {
    int32_t status = 0;
    qqvfil(name, 0, &status);
    EXPECT_EQ(status, 1);
    const ToldFailure told = take_failure();
    EXPECT_EQ(told.operation, "qqvfil");
    EXPECT_EQ(told.step, QUORIX_STEP_OPEN);
    EXPECT_EQ(told.error, ENOENT);
    EXPECT_EQ(told.file, "");
  }
}

TEST_F(LastFailure, IsNothingOfReaders) {
  MemoryFiles files;
  for (const FileReaderCall &reader : file_readers) {
    EXPECT_EQ(reader.run("missing"), reader.no_file) << reader.operation;
    EXPECT_FALSE(take_failure().any) << reader.operation;
    reader.make("in");
    for (size_t n = 1;; ++n) {
      const FailingFiles gate(n);
      reader.run("in");
      EXPECT_FALSE(take_failure().any) << reader.operation << " " << n;
      if (!gate.failed()) break;
    }
  }
}

// ---- documents, which stay open from call to call

constexpr int32_t op_end = 1, op_line = 2, op_move = 3;

int32_t begin(const char *name, int32_t mode = 0) {
  int32_t status = 0;
  qqpdf1(name, 595, 842, mode, &status);
  return status;
}

void finish() {
  qqpdf2(nullptr, nullptr, op_end);
}

// More than the block that documents gather.
void draw_much() {
  for (int32_t i = 0; i < 10000; ++i) {
    const double x = i % 500, y = i % 700;
    qqpdf2(&x, &y, op_move);
    qqpdf2(&y, &x, op_line);
  }
}

class FailingDocument : public LastFailure {
 protected:
  // A document of which one block was lost and whose failure was told; the disk has room again.
  void begin_and_fail(const char *name) {
    FailingFiles disk(1, file_write);
    ASSERT_EQ(begin(name), 0);
    draw_much();
    ASSERT_TRUE(disk.failed());
    const ToldFailure told = take_failure();
    EXPECT_EQ(told.operation, "qqpdf2");
    EXPECT_EQ(told.file, name);
    EXPECT_FALSE(take_failure().any);
  }
  void expect_told_again(const char *name) {
    const ToldFailure told = take_failure();
    EXPECT_TRUE(told.any);
    EXPECT_EQ(told.operation, "qqpdf2");
    EXPECT_EQ(told.step, QUORIX_STEP_WRITE);
    EXPECT_EQ(told.file, name);
  }

  MemoryFiles files_;
};

TEST_F(FailingDocument, IsToldAgainWhenItEnds) {
  begin_and_fail("report.pdf");
  EXPECT_EQ(file_writers[0].run("picture"), 0) << "what is written meanwhile is whole";
  EXPECT_FALSE(take_failure().any);
  finish();
  expect_told_again("report.pdf");
}

TEST_F(FailingDocument, IsToldAgainWhenItIsGivenUp) {
  begin_and_fail("report.pdf");
  qqpfree();
  expect_told_again("report.pdf");
  begin_and_fail("other.pdf");
  EXPECT_EQ(begin("next.pdf"), 0);
  expect_told_again("other.pdf");
  finish();
  EXPECT_FALSE(take_failure().any) << "the next document begins without";
  begin_and_fail("third.pdf");
  EXPECT_EQ(begin(nullptr, 2), 0);
  expect_told_again("third.pdf");
  finish();
  EXPECT_FALSE(take_failure().any) << "memory has no file";
}

TEST_F(FailingDocument, TellsWhichOperationFilledTheBlock) {
  for (int32_t calls = 0; calls < 2; ++calls) {
    FailingFiles disk;
    disk.limit_written_bytes(0);
    ASSERT_EQ(begin("report.pdf"), 0);
    const std::vector<uint8_t> bytes(70000, ' ');
    if (calls == 0) {
      qqpdf7(bytes.data(), 70000);
    } else {
      for (int32_t i = 0; i < 10000; ++i)
        qqpdf3(1, 2, 3, 1);
    }
    EXPECT_EQ(take_failure().operation, calls == 0 ? "qqpdf7" : "qqpdf3");
    qqpfree();
    take_failure();
  }
}

}  // namespace
}  // namespace quorix::testing
