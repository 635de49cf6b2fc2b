// SPDX-License-Identifier: MIT
#include "window/memory/memory_desktop.h"

namespace quorix {

const WindowSystem memory_window_system = {};

}  // namespace quorix
