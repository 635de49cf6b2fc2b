// SPDX-License-Identifier: MIT
//
// The three functions of the plotting layer that the library keeps for it. They may be called, by
// the plotting layer itself, at any time after they were set; the defaults of the drawing record
// clear them.
#pragma once

namespace quorix {

struct CallbackSlots {
  void *projection;
  void *pie;
  void *window;
};

extern CallbackSlots callback_slots;

inline void clear_callbacks() {
  callback_slots = {};
}

}  // namespace quorix
