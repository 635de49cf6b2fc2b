// SPDX-License-Identifier: MIT
//
// What Windows does for qqwque and qqrmfl.
#include <windows.h>

#include <cstdio>

#include "base/file_names.h"
#include "platform/system.h"

namespace quorix {

void dispatch_waiting_messages() {
  constexpr UINT all_input = 255;
  if (GetQueueStatus(all_input) == 0) return;
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

void remove_plain_file(const char *name) {
  if (!is_wide_name(name)) {
    std::remove(name);
    return;
  }
  const OwnedArray<wchar_t> wide = wide_name(name);
  if (wide != nullptr) _wremove(wide.get());
}

}  // namespace quorix
