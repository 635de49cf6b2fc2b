// SPDX-License-Identifier: MIT
//
// Removing files, running commands, the clock, messages.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "quorix/system.h"
#include "tests/support/messages_to_stderr.h"
#include "tests/support/temporary_folder.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace quorix::testing {
namespace {

TEST(RemovedFile, IsGone) {
  const TemporaryFolder folder;
  write_whole_file(folder.file("a"), {1, 2, 3});
  write_whole_file(folder.file("b"), {});
  EXPECT_EQ(qqrmfl(folder.file("a").c_str()), 0);
  EXPECT_FALSE(file_exists(folder.file("a")));
  EXPECT_TRUE(file_exists(folder.file("b")));
  EXPECT_EQ(qqrmfl(folder.file("b").c_str()), 0);
  EXPECT_FALSE(file_exists(folder.file("b")));
}

TEST(RemovedFile, MayBeMissing) {
  const TemporaryFolder folder;
  EXPECT_EQ(qqrmfl(folder.file("missing").c_str()), 0);
  EXPECT_EQ(qqrmfl(folder.file("no/folder").c_str()), 0);
  EXPECT_EQ(qqrmfl(""), 0);
  EXPECT_EQ(qqrmfl(std::string(100000, 'n').c_str()), 0);
}

TEST(RemovedFile, IsNeverAFolder) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.file("inner"));
  EXPECT_EQ(qqrmfl(folder.file("inner").c_str()), 0);
  EXPECT_TRUE(std::filesystem::is_directory(folder.file("inner")));
}

TEST(SystemCommand, RunsToItsEnd) {
  const TemporaryFolder folder;
  const std::string name = folder.file("made");
  EXPECT_EQ(qqsyst(("echo made>\"" + name + "\"").c_str()), 0);
  ASSERT_TRUE(file_exists(name));
  const std::vector<uint8_t> bytes = read_whole_file(name);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()).substr(0, 4), "made");
}

TEST(SystemCommand, MayFail) {
  EXPECT_EQ(qqsyst("exit 3"), 0);
}

TEST(Clock, TellsTheLocalTime) {
  int32_t day = -1, month = -1, year = -1, hour = -1, minute = -1, second = -1;
  const std::time_t before = std::time(nullptr);
  EXPECT_EQ(qqtime(&day, &month, &year, &hour, &minute, &second), 0);
  const std::time_t after = std::time(nullptr);
  // Some second between the two must be the one that came back.
  bool found = false;
  for (std::time_t moment = before; moment <= after; ++moment) {
    const std::tm *local = std::localtime(&moment);
    found = found ||
            (local->tm_mday == day && local->tm_mon + 1 == month && local->tm_year + 1900 == year &&
             local->tm_hour == hour && local->tm_min == minute && local->tm_sec == second);
  }
  EXPECT_TRUE(found) << day << "." << month << "." << year << " " << hour << ":" << minute << ":"
                     << second;
}

TEST(SystemCommand, MayBeMissing) {
  EXPECT_EQ(qqsyst(nullptr), 0);
}

TEST(MessageDeathTest, ShowsNothingForNull) {
  EXPECT_EXIT(
      {
        messages_to_stderr();
        qqwmsg(nullptr, "a caption");
        qqwmsg("a text", nullptr);
        std::fflush(stderr);
        std::exit(42);
      },
      ::testing::ExitedWithCode(42), "a caption: \\s*: a text");
}

TEST(MessageDeathTest, ShowsCaptionAndText) {
  EXPECT_EXIT(
      {
        messages_to_stderr();
        if (qqwmsg("a text for the user", "a caption") != 0) std::_Exit(1);
        std::fflush(stderr);
        std::_Exit(42);
      },
      ::testing::ExitedWithCode(42), "a caption: a text for the user");
}

TEST(MessageQueue, ReturnsAtOnceWithoutWindows) {
  EXPECT_EQ(qqwque(), 0);
  EXPECT_EQ(qqwque(), 0);
}

#ifdef _WIN32

int dispatched = 0;

LRESULT CALLBACK count_messages(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_APP) ++dispatched;
  return DefWindowProcA(window, message, w, l);
}

TEST(MessageQueue, IsEmptyAfterwards) {
  WNDCLASSA description = {};
  description.lpfnWndProc = count_messages;
  description.hInstance = GetModuleHandleA(nullptr);
  description.lpszClassName = "QuorixQueueTest";
  ASSERT_NE(RegisterClassA(&description), 0);
  // A window that only takes messages, so that none reaches the screen.
  HWND window = CreateWindowExA(0, "QuorixQueueTest", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                description.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  for (int i = 0; i < 5; ++i)
    PostMessageA(window, WM_APP, 0, 0);
  EXPECT_EQ(dispatched, 0);
  EXPECT_EQ(qqwque(), 0);
  EXPECT_EQ(dispatched, 5);
  DestroyWindow(window);
  UnregisterClassA("QuorixQueueTest", description.hInstance);
}

#endif

}  // namespace
}  // namespace quorix::testing
