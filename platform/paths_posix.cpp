// SPDX-License-Identifier: MIT
//
// File names on other systems than Windows.
#include "platform/paths.h"

namespace quorix {

const char path_separator = '/';

}  // namespace quorix
