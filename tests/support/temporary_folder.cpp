// SPDX-License-Identifier: MIT
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace quorix::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  const fs::path parent = fs::temp_directory_path();
  // Making a folder that another program just made fails, so the first that works is ours alone.
  for (int number = 0; path_.empty(); ++number) {
    const fs::path candidate = parent / ("quorix-test-" + std::to_string(number));
    std::error_code error;
    if (fs::create_directory(candidate, error)) path_ = candidate.string();
    if (error && !fs::exists(candidate)) {
      ADD_FAILURE() << "cannot make " << candidate << ": " << error.message();
      return;
    }
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::file(const std::string &name) const {
  return (fs::path(path_) / name).string();
}

std::vector<uint8_t> read_whole_file(const std::string &path) {
  std::ifstream stream(path, std::ios::binary);
  EXPECT_TRUE(stream.good()) << "cannot read " << path;
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void write_whole_file(const std::string &path, const std::vector<uint8_t> &bytes) {
  std::ofstream stream(path, std::ios::binary);
  stream.write(reinterpret_cast<const char *>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  stream.close();
  EXPECT_TRUE(stream.good()) << "cannot write " << path;
}

bool file_exists(const std::string &path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

}  // namespace quorix::testing
