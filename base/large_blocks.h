// SPDX-License-Identifier: MIT
//
// Advice to the system about blocks of memory that pictures live in.
#pragma once

#include <cstddef>

namespace quorix {

// The block, not yet written to, will be used a few bytes here and a few there: a line that runs
// down a picture touches another page of memory in every row. With large pages the processor keeps
// all of their addresses at hand. Nothing but speed depends on it, and small blocks are left alone.
void expect_scattered_use(void *block, size_t bytes);

}  // namespace quorix
