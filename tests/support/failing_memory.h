// SPDX-License-Identifier: MIT
//
// Stands in for the memory gate: counts what the library asks for and refuses chosen requests.
//
//   for (size_t n = 1;; ++n) {
//     FailingMemory memory(n);          // the n-th request from here on fails
//     const int32_t status = operation();
//     if (!memory.failed()) break;      // it needed fewer than n requests
//     EXPECT_EQ(status, -2);
//   }
//
// A request counts when it is made, whether it is met or not. The gate that was in place before
// serves the requests, and is put back at the end of the scope. Blocks may cross the borders of
// the scope in both directions; only those requested inside are counted. One at a time.
#pragma once

#include <cstddef>

namespace quorix::testing {

enum class Failures { only_that_one, that_and_all_later };

class FailingMemory {
 public:
  // fail_at 0: nothing fails, requests are only counted.
  explicit FailingMemory(size_t fail_at = 0, Failures failures = Failures::only_that_one);
  ~FailingMemory();
  FailingMemory(const FailingMemory &) = delete;
  FailingMemory &operator=(const FailingMemory &) = delete;

  bool failed() const;         // some request was refused
  size_t requests() const;     // made so far, refused ones too
  size_t live_blocks() const;  // requested inside the scope and not released yet
  size_t live_bytes() const;
  size_t peak_bytes() const;  // the largest live_bytes so far
};

}  // namespace quorix::testing
