// SPDX-License-Identifier: MIT
//
// How names of files are put together on this system.
#pragma once

namespace quorix {

// Between a directory and what lies in it.
extern const char path_separator;

}  // namespace quorix
