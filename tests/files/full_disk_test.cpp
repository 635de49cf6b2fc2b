// SPDX-License-Identifier: MIT
//
// Disks that are really full: /dev/full, which takes nothing, and a file system of 1 MB.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "quorix/quorix.h"
#include "tests/files/file_operations.h"
#include "tests/support/temporary_folder.h"

#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#endif

namespace quorix::testing {
namespace {

class FullDisk : public ::testing::Test {
 protected:
  void SetUp() override { take_failure(); }
  void TearDown() override {
    qqwfree();
    qqpfree();
    take_failure();
  }
};

TEST_F(FullDisk, IsTold) {
  if (access("/dev/full", W_OK) != 0) GTEST_SKIP() << "there is no /dev/full";
  show_noise(5, 4);
  for (const FileWriterCall &writer : file_writers) {
    EXPECT_EQ(writer.run("/dev/full"), 0) << writer.operation;
    const ToldFailure told = take_failure();
    ASSERT_TRUE(told.any) << writer.operation;
    EXPECT_EQ(told.error, ENOSPC) << writer.operation;
    EXPECT_EQ(told.reason, std::strerror(ENOSPC)) << writer.operation;
    EXPECT_EQ(told.file, "/dev/full") << writer.operation;
  }
}

TEST_F(FullDisk, IsToldFromAFolderThatIsMissing) {
  show_noise(5, 4);
  for (const FileWriterCall &writer : file_writers) {
    EXPECT_EQ(writer.run("/nowhere/at all"), writer.no_file) << writer.operation;
    const ToldFailure told = take_failure();
    EXPECT_EQ(told.operation, writer.opener);
    EXPECT_EQ(told.error, ENOENT) << writer.operation;
    EXPECT_EQ(told.step, QUORIX_STEP_OPEN) << writer.operation;
  }
}

#ifdef __linux__

// What a process of its own found, for its exit status.
enum Outcome : int { all_right = 0, no_disk = 1, no_room = 2, not_told = 3, told_in_vain = 4 };

bool mount_small_disk(const char *folder) {
  if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  // What is mounted from here on is this process's alone.
  if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  return mount("tmpfs", folder, "tmpfs", 0, "size=1m") == 0;
}

int write_on_small_disk(const char *folder) {
  if (!mount_small_disk(folder)) return no_disk;
  const std::string name = std::string(folder) + "/file";
  for (const FileWriterCall &writer : file_writers) {
    show_noise(20, 10);
    if (writer.run(name) != 0) return no_room;
    if (take_failure().any) return told_in_vain;
    show_noise(1300, 1200);  // more than 1 MB in every format
    if (writer.run(name) != 0) return no_room;
    const ToldFailure told = take_failure();
    if (!told.any || told.error != ENOSPC || told.file != name) {
      std::fprintf(stderr, "%s: %d %d\n", writer.operation, told.any, told.error);
      return not_told;
    }
    // Its stream may still be open, so its room is taken back by emptying it.
    if (truncate(name.c_str(), 0) != 0 || unlink(name.c_str()) != 0) return no_room;
  }
  return all_right;
}

TEST_F(FullDisk, IsToldOfAFileSystemOfOneMegabyte) {
  const TemporaryFolder folder;
  const std::string path = folder.file("");
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) _exit(write_on_small_disk(path.c_str()));
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == no_disk) GTEST_SKIP() << "file systems cannot be mounted here";
  EXPECT_EQ(WEXITSTATUS(status), all_right);
}

#endif

}  // namespace
}  // namespace quorix::testing

#endif
