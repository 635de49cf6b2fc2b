// SPDX-License-Identifier: MIT
//
// Which desktop is in force: what a test or a module chose; else memory, if the environment
// variable QUORIX_DESKTOP says "memory"; else the platform's own, which is memory where there is
// none.
#include "window/window_system.h"

#include <cstring>

#include "platform/system.h"
#include "window/memory/memory_desktop.h"
#ifdef _WIN32
#include "window/win32/win32.h"
#endif

namespace quorix {

namespace {

const WindowSystem *chosen = nullptr;

const WindowSystem *platform_system() {
#ifdef _WIN32
  char desktop[16] = "";
  environment_value("QUORIX_DESKTOP", desktop, sizeof(desktop));
  if (std::strcmp(desktop, "memory") != 0) return &win32_window_system;
#endif
  return &memory_window_system;
}

}  // namespace

// Chosen at the first question and kept, so that windows never change their desktop.
const WindowSystem *window_system() {
  if (chosen == nullptr) chosen = platform_system();
  return chosen;
}

void choose_window_system(const WindowSystem *system) {
  chosen = system;
}

}  // namespace quorix
