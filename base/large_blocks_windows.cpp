// SPDX-License-Identifier: MIT
//
// Windows takes no such advice.
#include "base/large_blocks.h"

namespace quorix {

// Large pages need a privilege here that programs do not have.
void expect_scattered_use(void * /*block*/, size_t /*bytes*/) {}

}  // namespace quorix
