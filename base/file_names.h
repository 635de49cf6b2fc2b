// SPDX-License-Identifier: MIT
//
// Names of files as Windows wants them.
//
// A name is a byte string. Systems other than Windows take its bytes as they are. On Windows one
// that is valid UTF-8 and not plain ASCII is opened by its characters, so that any file can be
// named; all others mean what the system's code page makes of them. A name in a code page that
// happens to be valid UTF-8 is taken for that: such words hardly occur.
#pragma once

#include "base/memory.h"

namespace quorix {

// Whether a name has characters beyond ASCII and is valid UTF-8: no overlong forms, no surrogates,
// nothing beyond 0x10FFFF.
bool is_wide_name(const char *name);

// Such a name in units of UTF-16 with its terminator; empty if there is no memory for it.
OwnedArray<wchar_t> wide_name(const char *name);

}  // namespace quorix
