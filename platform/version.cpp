// SPDX-License-Identifier: MIT
//
// What the library says its version is.
#include "quorix/version.h"

extern "C" int32_t quorix_version(void) {
  return QUORIX_VERSION;
}
