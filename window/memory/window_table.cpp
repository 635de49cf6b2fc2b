// SPDX-License-Identifier: MIT
//
// The table from numbers to windows of the desktop in memory. A window lives from add to remove and
// owns its title and what it shows.
#include "window/memory/window_table.h"

#include "base/memory.h"

namespace quorix {

namespace {

// Windows have the numbers of their places plus 1; places are used again. The table goes when the
// last window does.
MemoryWindow **table = nullptr;
int32_t capacity = 0;
int32_t used = 0;

// A free place, or -1 without memory.
int32_t free_place() {
  constexpr int32_t step = 16;
  for (int32_t i = 0; i < capacity; ++i) {
    if (table[i] == nullptr) return i;
  }
  auto grown = allocate_zeroed_array<MemoryWindow *>(static_cast<size_t>(capacity) + step);
  if (!grown) return -1;
  for (int32_t i = 0; i < capacity; ++i)
    grown[static_cast<size_t>(i)] = table[i];
  release_bytes(table);
  table = grown.release();
  capacity += step;
  return capacity - step;
}

}  // namespace

MemoryWindow *memory_window(WindowId window) {
  return window < 1 || window > capacity ? nullptr : table[window - 1];
}

WindowId add_memory_window() {
  const int32_t place = free_place();
  if (place < 0) return no_window;
  auto *window = static_cast<MemoryWindow *>(allocate_zeroed_bytes(sizeof(MemoryWindow)));
  if (window == nullptr) return no_window;
  table[place] = window;
  ++used;
  return place + 1;
}

void remove_memory_window(WindowId number) {
  MemoryWindow *window = memory_window(number);
  if (window == nullptr) return;
  table[number - 1] = nullptr;
  --used;
  release_bytes(window->title);
  if (window->screen != nullptr) release_bitmap_canvas(window->screen);
  release_bytes(window);
  if (used > 0) return;
  release_bytes(table);
  table = nullptr;
  capacity = 0;
}

WindowId memory_windows_end() {
  return capacity + 1;
}

}  // namespace quorix
