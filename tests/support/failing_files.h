// SPDX-License-Identifier: MIT
//
// Stands in for the file gate and makes chosen calls fail.
//
//   for (size_t n = 1;; ++n) {
//     FailingFiles files(n);            // the n-th call of the gate from here on fails
//     const int32_t status = operation();
//     if (!files.failed()) break;       // it made fewer than n calls
//     ...
//   }
//
// A failed open gives null, a failed read or write moves no byte, a failed seek or tell gives -1, a
// failed close closes all the same and gives an error, a failed flush flushes nothing. A full disk
// is `limit_written_bytes`. The gate that was in place before serves the other calls and is put
// back at the end of the scope, so this can stand inside a MemoryFiles. One at a time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix::testing {

enum FileCall : unsigned {
  file_open = 1,
  file_read = 2,
  file_write = 4,
  file_seek = 8,
  file_tell = 16,
  file_close = 32,
  file_flush = 64,
  all_file_calls = 127,
};

class FailingFiles {
 public:
  // Of the calls in the set `which`, number `fail_at` fails; 0: none does.
  explicit FailingFiles(size_t fail_at = 0, unsigned which = all_file_calls);
  ~FailingFiles();
  FailingFiles(const FailingFiles &) = delete;
  FailingFiles &operator=(const FailingFiles &) = delete;

  // Writes come back short once so many bytes were written altogether.
  void limit_written_bytes(uint64_t bytes);
  // Each read brings at most so many bytes, as a pipe might.
  void limit_bytes_of_a_read(size_t bytes);

  bool failed() const;        // some call was made to fail, or came back short
  size_t calls() const;       // made so far, of those in `which`
  size_t open_files() const;  // opened inside the scope and not closed yet
};

}  // namespace quorix::testing
