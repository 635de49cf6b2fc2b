// SPDX-License-Identifier: MIT
//
// The one gate through which the library reaches files.
//
// Plain C streams with 64-bit positions. A test replaces `file_gate` and makes any call fail or
// come back short. Names are byte strings; file_names.h says what Windows makes of them.
// `OwnedFile` closes its stream when it goes out of scope.
//
// Opens, writes, flushes and closes go through the functions below, which note their failures as
// file_failures.h says; reads, seeks and tells may use the gate itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace quorix {

struct FileGate {
  std::FILE *(*open)(const char *name, const char *mode);  // null on failure
  size_t (*read)(void *buffer, size_t bytes, std::FILE *file);
  size_t (*write)(const void *buffer, size_t bytes, std::FILE *file);
  int (*seek)(std::FILE *file, int64_t offset, int origin);  // 0 on success
  int64_t (*tell)(std::FILE *file);                          // -1 on failure
  int (*close)(std::FILE *file);
  int (*flush)(std::FILE *file);  // 0 on success
};

extern FileGate file_gate;

// False if it failed; the stream is gone all the same.
bool close_file(std::FILE *file);

struct CloseFile {
  void operator()(std::FILE *file) const { close_file(file); }
};

using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

// An open stream, or an empty owner. A null or empty name opens nothing.
OwnedFile open_file(const char *name, const char *mode);

// Both return the number of bytes that went through.
size_t read_file(std::FILE *file, void *buffer, size_t bytes);
size_t write_file(std::FILE *file, const void *buffer, size_t bytes);

// Hands what was written to the system; false if that failed.
bool flush_file(std::FILE *file);

}  // namespace quorix
