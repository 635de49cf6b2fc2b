// SPDX-License-Identifier: MIT
//
// The slots, and the two callbacks that need nothing but their arguments. The window's callback is
// run where its record is known.
#include "platform/callbacks.h"

#include "quorix/system.h"

namespace quorix {

CallbackSlots callback_slots = {};

namespace {

using ProjectionCallback = void (*)(void *, void *);
using PieCallback = void (*)(void *, void *, void *, void *, void *, void *, void *, void *, void *,
                             void *);

}  // namespace

}  // namespace quorix

// Kept: another flag than 1 leaves this one in force and clears the window's callback below.
extern "C" int32_t qqwsetcb(void *function, const int32_t *flag) {
  if (*flag == 1) quorix::callback_slots.projection = function;
  return 0;
}

extern "C" int32_t qqwprjcb(void *a, void *b) {
  void *const function = quorix::callback_slots.projection;
  if (function != nullptr) reinterpret_cast<quorix::ProjectionCallback>(function)(a, b);
  return 0;
}

extern "C" int32_t qqspiecb(void *function) {
  quorix::callback_slots.pie = function;
  return 0;
}

extern "C" int32_t qqwpiecb(void *a1, void *a2, void *a3, void *a4, void *a5, void *a6, void *a7,
                            void *a8, void *a9, void *a10) {
  void *const function = quorix::callback_slots.pie;
  if (function == nullptr) return 0;
  reinterpret_cast<quorix::PieCallback>(function)(a1, a2, a3, a4, a5, a6, a7, a8, a9, a10);
  return 0;
}

extern "C" int32_t qqswincb(void *function, const int32_t *flag) {
  quorix::callback_slots.window = *flag == 1 ? function : nullptr;
  return 0;
}
