// SPDX-License-Identifier: MIT
//
// qqgenv and its three sources: the environment, the system's own place, the last resort.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/system.h"
#include "quorix/system.h"
#include "tests/support/environment_variable.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace quorix::testing {
namespace {

struct Answer {
  std::string value;
  int32_t length;
};

constexpr size_t room = 256;

// What stands in the buffer afterwards, and the length; "untouched" before.
Answer look_up(const char *name) {
  std::vector<char> buffer(room, '\x7E');
  const std::string before = "untouched";
  std::copy(before.begin(), before.end(), buffer.begin());
  buffer[before.size()] = '\0';
  const int32_t length = qqgenv(name, buffer.data());
  const auto end = std::find(buffer.begin(), buffer.end(), '\0');
  EXPECT_NE(end, buffer.end()) << "the value has no end";
  return {std::string(buffer.begin(), end), length};
}

TEST(Environment, GivesAnyVariable) {
  const EnvironmentVariable variable("QUORIX_TEST_VARIABLE", "some value");
  const Answer answer = look_up("QUORIX_TEST_VARIABLE");
  EXPECT_EQ(answer.value, "some value");
  EXPECT_EQ(answer.length, 10);
}

TEST(Environment, LeavesTheBufferAloneForAVariableThatIsNotSet) {
  const EnvironmentVariable variable("QUORIX_TEST_VARIABLE", nullptr);
  for (const char *name : {"QUORIX_TEST_VARIABLE", "QUORIX_NO_SUCH_THING", "QUORI", "QUORIX2"}) {
    const Answer answer = look_up(name);
    EXPECT_EQ(answer.value, "untouched") << name;
    EXPECT_EQ(answer.length, 0) << name;
  }
}

TEST(Environment, ReadsOneVariableUnderTwoNames) {
  const EnvironmentVariable variable("QUORIX", "/opt/plots");
  const EnvironmentVariable other("QUOENV", "/not/this");
  EXPECT_EQ(look_up("QUORIX").value, "/opt/plots");
  EXPECT_EQ(look_up("QUORIX").length, 10);
  EXPECT_EQ(look_up("QUOENV").value, "/opt/plots") << "QUOENV reads the variable QUORIX";
  EXPECT_EQ(look_up("QUOENV").length, 10);
}

TEST(Environment, HasNoLastResortUnderTheSecondName) {
  const EnvironmentVariable variable("QUORIX", nullptr);
  const EnvironmentVariable other("QUOENV", "/not/this");
  EXPECT_EQ(look_up("QUOENV").value, "untouched");
  EXPECT_EQ(look_up("QUOENV").length, 0);
}

TEST(Environment, CutsLongValues) {
  for (const size_t length : {254U, 255U, 256U, 257U, 1000U, 30000U}) {
    const std::string value(length, 'v');
    const EnvironmentVariable variable("QUORIX", value.c_str());
    const std::string expected = value.substr(0, room - 1);
    for (const char *name : {"QUORIX", "QUOENV"}) {
      const Answer answer = look_up(name);
      EXPECT_EQ(answer.value, expected) << length;
      EXPECT_EQ(answer.length, static_cast<int32_t>(expected.size())) << length;
    }
  }
}

TEST(FolderOfProgram, IsGivenOnlyWhereItFits) {
  char whole[4096] = "";
  ASSERT_TRUE(folder_of_program(whole, sizeof whole));
  const std::string expected = whole;
  ASSERT_GT(expected.size(), 1U);
  std::vector<char> buffer(expected.size() + 1, '#');
  EXPECT_TRUE(folder_of_program(buffer.data(), expected.size() + 1));
  EXPECT_EQ(std::string(buffer.data()), expected);
  std::fill(buffer.begin(), buffer.end(), '#');
  EXPECT_FALSE(folder_of_program(buffer.data(), expected.size()));
  EXPECT_EQ(std::string(buffer.begin(), buffer.end()), std::string(expected.size() + 1, '#'));
}

TEST(Environment, TakesNamesOfAnyLength) {
  EXPECT_EQ(look_up(std::string(100000, 'N').c_str()).value, "untouched");
  EXPECT_EQ(look_up("").value, "untouched");
  EXPECT_EQ(look_up("QUORIX=").value, "untouched");
}

#ifdef _WIN32

// The library's key, there until the end of the scope with one value, or gone.
class RegistryPath {
 public:
  RegistryPath() { remove(); }
  ~RegistryPath() { remove(); }
  RegistryPath(const RegistryPath &) = delete;
  RegistryPath &operator=(const RegistryPath &) = delete;

  // `bytes` are stored as they are, with or without a terminator.
  void set(const std::string &bytes, DWORD type = REG_SZ) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, name, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                              nullptr),
              ERROR_SUCCESS);
    // A zero that happens to follow would be stored too.
    const std::string followed = bytes + "X";
    EXPECT_EQ(RegSetValueExA(key, "Path", 0, type, reinterpret_cast<const BYTE *>(followed.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
    RegCloseKey(key);
  }
  void remove() { RegDeleteKeyA(HKEY_LOCAL_MACHINE, name); }

 private:
  static constexpr char name[] = "SOFTWARE\\Quorix";
};

std::string terminated(const std::string &text) {
  return text + std::string(1, '\0');
}

TEST(Environment, GivesTheLastResortWithoutVariableAndRegistry) {
  const EnvironmentVariable variable("QUORIX", nullptr);
  const RegistryPath registry;
  EXPECT_EQ(look_up("QUORIX").value, "c:\\quorix");
  EXPECT_EQ(look_up("QUORIX").length, 9);
}

TEST(Environment, ReadsTheRegistryWhereTheVariableIsNotSet) {
  RegistryPath registry;
  registry.set(terminated("d:\\plots\\quorix"));
  {
    const EnvironmentVariable variable("QUORIX", nullptr);
    EXPECT_EQ(look_up("QUORIX").value, "d:\\plots\\quorix");
    EXPECT_EQ(look_up("QUORIX").length, 15);
    EXPECT_EQ(look_up("QUOENV").value, "untouched") << "the second name never asks the registry";
  }
  {
    const EnvironmentVariable variable("QUORIX", "e:\\first");
    EXPECT_EQ(look_up("QUORIX").value, "e:\\first");
  }
  registry.remove();
  const EnvironmentVariable variable("QUORIX", nullptr);
  EXPECT_EQ(look_up("QUORIX").value, "c:\\quorix");
}

TEST(Environment, CutsRegistryValuesWithoutATerminator) {
  const EnvironmentVariable variable("QUORIX", nullptr);
  RegistryPath registry;
  registry.set("d:\\bare");
  EXPECT_EQ(look_up("QUORIX").value, "d:\\bare");
  const std::string longest(132, 'p');
  registry.set(longest);
  EXPECT_EQ(look_up("QUORIX").value, longest);
  registry.set(terminated(longest.substr(1)));
  EXPECT_EQ(look_up("QUORIX").value, longest.substr(1));
}

TEST(Environment, GivesTheLastResortForRegistryValuesThatDoNotFit) {
  const EnvironmentVariable variable("QUORIX", nullptr);
  RegistryPath registry;
  registry.set(terminated(std::string(132, 'p')));
  EXPECT_EQ(look_up("QUORIX").value, "c:\\quorix");
  registry.set(std::string(5000, 'p'));
  EXPECT_EQ(look_up("QUORIX").value, "c:\\quorix");
}

#else

// The data directory that belongs to this program, were it installed.
std::filesystem::path data_directory() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / QUORIX_DATA_FROM_PROGRAM;
}

TEST(Environment, GivesTheInstalledDataDirectoryOrTheLastResort) {
  const EnvironmentVariable variable("QUORIX", nullptr);
  const std::filesystem::path directory = data_directory();
  ASSERT_FALSE(std::filesystem::exists(directory)) << directory << " is none of this test's";
  EXPECT_EQ(look_up("QUORIX").value, "c:\\quorix");
  EXPECT_EQ(look_up("QUORIX").length, 9);

  std::filesystem::create_directories(directory);
  const Answer answer = look_up("QUORIX");
  EXPECT_TRUE(std::filesystem::is_directory(answer.value)) << answer.value;
  EXPECT_TRUE(std::filesystem::equivalent(answer.value, directory)) << answer.value;
  EXPECT_EQ(answer.length, static_cast<int32_t>(answer.value.size()));
  EXPECT_EQ(look_up("QUOENV").value, "untouched");
  {
    const EnvironmentVariable first("QUORIX", "/opt/plots");
    EXPECT_EQ(look_up("QUORIX").value, "/opt/plots");
  }
  std::filesystem::remove(directory);
  EXPECT_EQ(look_up("QUORIX").value, "c:\\quorix");
}

TEST(Environment, KnowsAnEmptyVariableFromAMissingOne) {
  const EnvironmentVariable variable("QUORIX", "");
  EXPECT_EQ(look_up("QUORIX").value, "");
  EXPECT_EQ(look_up("QUORIX").length, 0);
  EXPECT_EQ(look_up("QUOENV").value, "");
}

#endif

}  // namespace
}  // namespace quorix::testing
