// SPDX-License-Identifier: MIT
//
// What failed last when a file was written.
//
// No status stands for a full disk: most writers have a number for a file that cannot be opened and
// none for one that cannot be filled. So an operation that writes a file says by a `FileWork` who
// it is and which file it writes, and the calls of files.h that fail meanwhile are noted here, of
// one piece of work the first. Operations that only read have no FileWork, and nothing is noted of
// them: their statuses say it all.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

enum class FileStep : int32_t { none = 0, open = 1, write = 2, flush = 3, close = 4 };

inline constexpr size_t failure_name_size = 256;

struct FileFailure {
  FileStep step;          // none: nothing has failed
  int32_t error;          // errno; 0 if the system gave no number
  const char *operation;  // the exported operation's name; lasts for ever
  char name[failure_name_size];
};

// Until quorix_last_failure hands it out.
extern FileFailure last_file_failure;

// Stands for a piece of work on a file while it lives. They may be nested. Both texts must last as
// long; a null name is an empty one.
struct FileWork {
  FileWork(const char *operation, const char *name);
  ~FileWork();
  FileWork(const FileWork &) = delete;
  FileWork &operator=(const FileWork &) = delete;

  const char *operation, *name;
  bool failed;  // what failed first is noted
  FileWork *outer;
};

// Notes a failure of the innermost work; without any, nothing.
void note_file_failure(FileStep step, int32_t error);

// Copies a name into `failure_name_size` cells; of one that is too long the end, from the start of
// a character on.
void copy_failure_name(char *to, const char *name);

}  // namespace quorix
