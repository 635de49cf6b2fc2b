// SPDX-License-Identifier: MIT
//
// Which desktop is in force.
#include "window/window_system.h"

#include "window/memory/memory_desktop.h"

namespace quorix {

namespace {

const WindowSystem *chosen = nullptr;

}  // namespace

const WindowSystem *window_system() {
  return chosen != nullptr ? chosen : &memory_window_system;
}

void choose_window_system(const WindowSystem *system) {
  chosen = system;
}

}  // namespace quorix
