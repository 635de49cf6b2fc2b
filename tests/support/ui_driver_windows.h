// SPDX-License-Identifier: MIT
//
// Drives the windows of one thread from a second one, the way a user would.
//
// Code under test often sits in a message loop of its own and doesn't return until
// the user has acted. A test therefore makes a Driver first, whose script runs on a
// second thread, and then calls the code under test:
//
//   ui::Driver user([](ui::Driver &ui) {
//     HWND window = ui.wait_window("quomain");
//     ui.click(window, 20, 20, ui::kRight);
//   });
//   qqwfin(0);               // comes back because the script clicked
//
// Rules that keep such tests steady:
// - Never sleep for a time. Wait for a window, for a condition, or `settle`.
// - A wait that isn't fulfilled is fatal: it prints the windows that are open and
//   ends the process with status 97, because nobody would end the driven loop.
// - Only the driven thread touches its windows otherwise; the script asks by messages.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace quorix::testing::ui {

enum Button { kLeft, kRight, kMiddle };

struct MessageBoxSeen {
  std::string caption, text;
};

class Driver {
 public:
  explicit Driver(std::function<void(Driver &)> script, int limit_ms = 10000);
  ~Driver();      // calls finish
  void finish();  // waits until the script has ended; what it noted may be read then
  Driver(const Driver &) = delete;
  Driver &operator=(const Driver &) = delete;

  // Waiting.
  HWND wait_window(const char *cls, const char *title_part = "");
  void wait_gone(HWND window);
  void wait(const char *what, const std::function<bool()> &condition);
  // Until the driven thread has worked off its input, its messages and its painting.
  void settle();

  // Real mouse and keyboard. Places are in client coordinates of `window`.
  void move(HWND window, int x, int y);
  void press(Button button);
  void release(Button button);
  void click(HWND window, int x, int y, Button button = kLeft);
  void click(HWND window);  // left button, in the middle
  void drag(HWND window, int x1, int y1, int x2, int y2);
  void wheel(HWND window, int x, int y, int notches);
  void key(WORD virtual_key, bool shift = false);
  void type(const wchar_t *text);  // as characters, whatever the keyboard layout is

  // Asking. Some calls answer only in the thread that owns the window
  // (GetScrollBarInfo, GetKeyState, GetFocus): `in_driven_thread` makes them there.
  void in_driven_thread(std::function<void()> call);
  HWND child(HWND parent, int id);
  std::string text(HWND window);
  HWND focus();
  COLORREF pixel(HWND window, int x, int y);  // from the window's own surface
  std::vector<HWND> windows();                // visible top-level ones of the thread

  // The platform's own boxes.
  MessageBoxSeen answer_message_box(int button_id = IDOK);
  void answer_file_dialog(const char *path);  // nullptr cancels

 private:
  bool done(const std::function<bool()> &condition, int limit_ms);
  [[noreturn]] void give_up(const char *what);
  static LRESULT CALLBACK probe_proc(HWND, UINT, WPARAM, LPARAM);

  DWORD driven_;
  HWND probe_;
  HANDLE settled_;
  ULONGLONG deadline_;
  std::thread thread_;
};

// All visible windows with class, place and text, for a failure message.
std::string describe_windows(DWORD thread_id);

}  // namespace quorix::testing::ui
