// SPDX-License-Identifier: MIT
#include "tests/window/memory_page.h"

#include "quorix/quorix.h"
#include "window/window.h"

namespace quorix::testing {

void open_device(const WindowWish &wish) {
  int32_t bits = 0;
  int32_t actual_width = 0;
  int32_t buffering = wish.buffering;
  qqwini(wish.device, &wish.page_width, &wish.page_height, &wish.placement, &wish.x, &wish.y,
         &wish.width, &wish.height, &bits, &wish.colour_mode, &actual_width, &buffering,
         &wish.options);
  int32_t greys[256];
  for (int32_t i = 0; i < 256; ++i)
    greys[i] = i * 0x010101;
  qqwvlt(1, greys);
}

void open_window(int32_t device) {
  const WindowWish wish;
  int32_t width = 0;
  int32_t height = 0;
  qqwopn(device, &wish.page_width, &wish.page_height, &wish.placement, &wish.x, &wish.y,
         &wish.width, &wish.height, &width, &height);
}

WindowId window_number(int32_t number) {
  const WindowSet *set = current_window_set();
  return set == nullptr ? no_window : set->slots[number - 1].window;
}

WindowId current_window_id() {
  const WindowSet *set = current_window_set();
  return set == nullptr ? no_window : set->window;
}

std::string title_of(WindowId window) {
  MemoryWindowState state = {};
  return memory_window_state(window, &state) ? state.title : "(no window)";
}

WindowTest::WindowTest() {
  qqwfree();
  choose_window_system(&memory_window_system);
  set_memory_screen({1920, 1080, 32});
  set_memory_frame({4, 4, 22});
  set_memory_pointer(no_window, -1, -1);
  set_memory_script(nullptr, nullptr);
  keep_memory_screens(true);
}

WindowTest::~WindowTest() {
  set_memory_script(nullptr, nullptr);
  qqwfree();
  keep_memory_screens(false);
  choose_window_system(nullptr);
}

void WindowTest::user_does(std::vector<std::function<void()>> steps) {
  steps_ = std::move(steps);
  next_ = 0;
  set_memory_script(next_step, this);
}

bool WindowTest::next_step(void *data) {
  auto *test = static_cast<WindowTest *>(data);
  if (test->next_ == test->steps_.size()) return false;
  test->steps_[test->next_++]();
  return true;
}

}  // namespace quorix::testing
