// SPDX-License-Identifier: MIT
//
// A file system in memory, in place of the file gate: readers get their bytes without a disk, and
// what a writer wrote can be looked at.
//
//   MemoryFiles files;
//   files.put("in", bytes);
//   qqvfil("in", 1, &status);
//
// Names are plain keys. Modes are those of fopen that start with 'r' or 'w'; a file may be open
// more than once. Streams exist only for the gate: the C library must not be given one. At the end
// of the scope the gate that was in place before is put back. One at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

class MemoryFiles {
 public:
  MemoryFiles();
  ~MemoryFiles();
  MemoryFiles(const MemoryFiles &) = delete;
  MemoryFiles &operator=(const MemoryFiles &) = delete;

  void put(const std::string &name, std::vector<uint8_t> bytes);
  bool exists(const std::string &name) const;
  const std::vector<uint8_t> &bytes(const std::string &name) const;  // it must exist
  size_t open_files() const;
};

}  // namespace quorix::testing
