// SPDX-License-Identifier: MIT
//
// Words for the user go to the error stream as "caption: text", on Windows too, where a box would
// wait for a click. For death tests, which match that stream:
//
//   EXPECT_EXIT({ messages_to_stderr(); operation(); }, ::testing::ExitedWithCode(0), "text");
#pragma once

namespace quorix::testing {

// From now on until the process ends.
void messages_to_stderr();

}  // namespace quorix::testing
