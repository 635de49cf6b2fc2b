// SPDX-License-Identifier: MIT
//
// Every operation that takes the name of a file, in one form, so that what concerns them all is
// tested on all of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

struct FileWriterCall {
  const char *operation;  // that a failure is told of, once the file is open
  const char *opener;     // and where it cannot be opened
  int32_t no_file;        // the status for that
  int32_t (*run)(const std::string &file);
};

// Each writes what the raster shows, or something small of its own, into a file and ends it; the
// status is that of the start.
extern const std::vector<FileWriterCall> file_writers;

struct FileReaderCall {
  const char *operation;
  int32_t no_file;                            // the status where there is no such file
  void (*make)(const std::string &contents);  // into this file
  int32_t (*run)(const std::string &file);    // gives 0 for that file
};

extern const std::vector<FileReaderCall> file_readers;

// A raster with so many pixels that no format packs well.
void show_noise(int32_t width, int32_t height);

// What quorix_last_failure tells.
struct ToldFailure {
  bool any;
  std::string operation, reason, file;
  int32_t step, error;
};

ToldFailure take_failure();

}  // namespace quorix::testing
