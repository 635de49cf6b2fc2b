// SPDX-License-Identifier: MIT
#include "tests/support/messages_to_stderr.h"

#ifdef _WIN32
#include <cstdio>
#include <cstdlib>

#include "tests/support/import_patch_windows.h"
#endif

namespace quorix::testing {

#ifdef _WIN32

namespace {

int WINAPI print_message(HWND, const char *text, const char *caption, UINT) {
  std::fprintf(stderr, "%s: %s\n", caption, text);
  std::fflush(stderr);
  return IDOK;
}

}  // namespace

void messages_to_stderr() {
  static ImportPatch patch(nullptr, "MessageBoxA", print_message);
  if (!patch.found()) {
    std::fputs("MessageBoxA is not imported by the program\n", stderr);
    std::abort();
  }
}

#else

// The library itself does so where there is no window system.
void messages_to_stderr() {}

#endif

}  // namespace quorix::testing
