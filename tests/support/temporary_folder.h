// SPDX-License-Identifier: MIT
//
// Real files for tests, on both systems: a folder of its own that goes away with all it holds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  // The path of a file in it, which need not exist, in the form that the library's operations take.
  std::string file(const std::string &name) const;

 private:
  std::string path_;
};

// The whole of a file; the test fails if it cannot be read.
std::vector<uint8_t> read_whole_file(const std::string &path);
// Writes a file; the test fails if it cannot be written.
void write_whole_file(const std::string &path, const std::vector<uint8_t> &bytes);
bool file_exists(const std::string &path);

}  // namespace quorix::testing
