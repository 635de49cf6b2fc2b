// SPDX-License-Identifier: MIT
#include "platform/callbacks.h"

namespace quorix {

CallbackSlots callback_slots = {};

}  // namespace quorix
