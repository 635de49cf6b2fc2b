// SPDX-License-Identifier: MIT
//
// There is no message box where there is no window system: the words go to the error stream.
#include <cstdio>

#include "platform/message.h"

namespace quorix {

void show_message(const char *text, const char *caption) {
  std::fprintf(stderr, "%s: %s\n", caption, text);
  std::fflush(stderr);
}

}  // namespace quorix
