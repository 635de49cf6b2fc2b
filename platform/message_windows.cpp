// SPDX-License-Identifier: MIT
//
// A message box, which waits for the user.
#include <windows.h>

#include "platform/message.h"

namespace quorix {

void show_message(const char *text, const char *caption) {
  MessageBoxA(nullptr, text, caption, MB_OK);
}

}  // namespace quorix
