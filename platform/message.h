// SPDX-License-Identifier: MIT
//
// Words that a user has to see: a blocking message box on Windows, the error stream elsewhere.
#pragma once

namespace quorix {

// Shows `text` under `caption` and returns when the user has seen it.
void show_message(const char *text, const char *caption);

}  // namespace quorix
