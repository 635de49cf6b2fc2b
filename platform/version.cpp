// SPDX-License-Identifier: MIT
#include "quorix/version.h"

extern "C" int32_t quorix_version(void) {
  return QUORIX_VERSION;
}
