// SPDX-License-Identifier: MIT
//
// Titles of plot windows. The library writes them as long as the caller gives a window none.
#include <cstring>

#include "base/memory.h"
#include "base/text.h"
#include "quorix/window.h"
#include "window/ask.h"
#include "window/window.h"

namespace quorix {

namespace {

// A copy of a text, or null where it is empty or there is no memory for it.
char *copy_title(const char *title) {
  const size_t length = std::strlen(title);
  if (length == 0) return nullptr;
  auto copy = allocate_array<char>(length + 1);
  if (copy) std::memcpy(copy.get(), title, length + 1);
  return copy.release();
}

}  // namespace

void compose_title(const OutputContext *context, int32_t slot, const char *behind, char *title) {
  copy_bytes(title, "QUORIX", title_capacity);
  if (context->window.opengl_on != 0) append_bytes(title, " GL", title_capacity);
  append_int(title, slot + 1, title_capacity);
  append_bytes(title, behind, title_capacity);
}

void write_window_title(OutputContext *context, int32_t slot, const char *behind) {
  const WindowId window = context->window.window_set->slots[slot].window;
  if (window == no_window) return;
  char title[title_capacity + 1];
  compose_title(context, slot, behind, title);
  ask(window_system()->set_title, window, title);
}

void write_own_title(OutputContext *context, int32_t slot, const char *behind) {
  const WindowSlot &window = context->window.window_set->slots[slot];
  if (window.title == nullptr && !window.external) write_window_title(context, slot, behind);
}

void release_title(WindowSlot *slot) {
  release_bytes(slot->title);
  slot->title = nullptr;
}

}  // namespace quorix

using namespace quorix;

// A window keeps its title until its slot is opened anew.
extern "C" int32_t qqwtit(const char *title) {
  WindowSet *set = current_window_set();
  if (set == nullptr || set->window == no_window || title == nullptr) return 0;
  ask(window_system()->set_title, set->window, title);
  WindowSlot &slot = current_window(set);
  if (!slot.open) return 0;
  char *copy = copy_title(title);
  release_title(&slot);
  slot.title = copy;
  return 0;
}
