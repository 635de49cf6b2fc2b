// SPDX-License-Identifier: MIT
//
// What the system does for qqwque and qqrmfl, where there are no windows.
#include <unistd.h>

#include "platform/system.h"

namespace quorix {

// Without windows no messages wait.
void dispatch_waiting_messages() {}

void remove_plain_file(const char *name) {
  unlink(name);
}

}  // namespace quorix
