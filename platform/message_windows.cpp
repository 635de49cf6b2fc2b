// SPDX-License-Identifier: MIT
#include <windows.h>

#include "platform/message.h"

namespace quorix {

void show_message(const char *text, const char *caption) {
  MessageBoxA(nullptr, text, caption, MB_OK);
}

}  // namespace quorix
