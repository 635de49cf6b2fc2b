// SPDX-License-Identifier: MIT
#include "platform/paths.h"

namespace quorix {

const char path_separator = '/';

}  // namespace quorix
