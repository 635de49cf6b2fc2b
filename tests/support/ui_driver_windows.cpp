// SPDX-License-Identifier: MIT
#include "tests/support/ui_driver_windows.h"

#include <cstdio>
#include <cstring>

namespace quorix::testing::ui {
namespace {

constexpr UINT kSettle = WM_APP + 77, kCall = WM_APP + 78;

BOOL CALLBACK collect(HWND window, LPARAM list) {
  if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND> *>(list)->push_back(window);
  return TRUE;
}

BOOL CALLBACK collect_all(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND> *>(list)->push_back(window);
  return TRUE;
}

std::string class_of(HWND window) {
  char name[128] = "";
  GetClassNameA(window, name, sizeof(name));
  return name;
}

// A stuck thread must not hold up the one that reports it.
std::string ask_text(HWND window) {
  char buffer[1024] = "";
  DWORD_PTR length = 0;
  SendMessageTimeoutA(window, WM_GETTEXT, sizeof(buffer), reinterpret_cast<LPARAM>(buffer),
                      SMTO_ABORTIFHUNG, 500, &length);
  return buffer;
}

void send(INPUT input) {
  SendInput(1, &input, sizeof(input));
}

void send_mouse(DWORD flags, DWORD data = 0) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.mouseData = data;
  send(input);
}

void send_character(wchar_t character, bool up) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = character;
  input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? DWORD{KEYEVENTF_KEYUP} : DWORD{0});
  send(input);
}

void send_key(WORD virtual_key, bool up) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtual_key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(virtual_key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = up ? DWORD{KEYEVENTF_KEYUP} : DWORD{0};
  send(input);
}

}  // namespace

std::string describe_windows(DWORD thread_id) {
  std::vector<HWND> tops, all;
  EnumThreadWindows(thread_id, collect, reinterpret_cast<LPARAM>(&tops));
  for (HWND top : tops) {
    all.push_back(top);
    EnumChildWindows(top, collect_all, reinterpret_cast<LPARAM>(&all));
  }
  std::string report;
  for (HWND window : all) {
    RECT r;
    GetWindowRect(window, &r);
    char line[256];
    snprintf(line, sizeof(line), "  %s%s id %ld at %ld,%ld size %ldx%ld%s: ",
             GetAncestor(window, GA_PARENT) == GetDesktopWindow() ? "" : "  ",
             class_of(window).c_str(), static_cast<long>(GetWindowLongA(window, GWL_ID)), r.left,
             r.top, r.right - r.left, r.bottom - r.top, IsWindowVisible(window) ? "" : " hidden");
    report += line + ask_text(window) + "\n";
  }
  return report;
}

Driver::Driver(std::function<void(Driver &)> script, int limit_ms)
    : driven_(GetCurrentThreadId()),
      deadline_(GetTickCount64() + static_cast<ULONGLONG>(limit_ms)) {
  WNDCLASSA cls = {};
  cls.lpfnWndProc = probe_proc;
  cls.lpszClassName = "UiDriverProbe";
  RegisterClassA(&cls);
  settled_ = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  probe_ = CreateWindowExA(0, "UiDriverProbe", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                           nullptr);
  SetWindowLongPtrA(probe_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(settled_));
  thread_ = std::thread([this, script = std::move(script)] { script(*this); });
}

Driver::~Driver() {
  finish();
  DestroyWindow(probe_);
  CloseHandle(settled_);
}

void Driver::finish() {
  if (!thread_.joinable()) return;
  // The script may still ask this thread's windows something, so answer while waiting.
  HANDLE thread = reinterpret_cast<HANDLE>(pthread_gethandle(thread_.native_handle()));
  while (MsgWaitForMultipleObjects(1, &thread, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
      DispatchMessageA(&message);
  }
  thread_.join();
}

// A timer message comes only when no sent, posted, input or paint message waits. So
// the first timer after a posted message tells that everything before it is done.
LRESULT CALLBACK Driver::probe_proc(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == kCall) {
    (*reinterpret_cast<std::function<void()> *>(l))();
    return 1;
  }
  if (message == kSettle) {
    SetTimer(window, 1, 10, nullptr);
    return 0;
  }
  if (message == WM_TIMER) {
    if (HIWORD(GetQueueStatus(QS_INPUT | QS_PAINT | QS_POSTMESSAGE)) == 0) {
      KillTimer(window, 1);
      SetEvent(reinterpret_cast<HANDLE>(GetWindowLongPtrA(window, GWLP_USERDATA)));
    }
    return 0;
  }
  return DefWindowProcA(window, message, w, l);
}

void Driver::give_up(const char *what) {
  printf("ui::Driver: waited in vain for %s. Open windows:\n%s", what,
         describe_windows(driven_).c_str());
  fflush(stdout);
  TerminateProcess(GetCurrentProcess(), 97);
  for (;;)
    Sleep(1000);
}

bool Driver::done(const std::function<bool()> &condition, int limit_ms) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(limit_ms);
  for (;;) {
    if (condition()) return true;
    if (GetTickCount64() > end) return false;
    Sleep(2);
  }
}

void Driver::wait(const char *what, const std::function<bool()> &condition) {
  while (!condition()) {
    if (GetTickCount64() > deadline_) give_up(what);
    Sleep(2);
  }
}

std::vector<HWND> Driver::windows() {
  std::vector<HWND> list;
  EnumThreadWindows(driven_, collect, reinterpret_cast<LPARAM>(&list));
  return list;
}

HWND Driver::wait_window(const char *cls, const char *title_part) {
  HWND found = nullptr;
  std::string what = std::string("a window of class ") + cls + " with title " + title_part;
  wait(what.c_str(), [&] {
    for (HWND window : windows())
      if (class_of(window) == cls && ask_text(window).find(title_part) != std::string::npos)
        found = window;
    return found != nullptr;
  });
  return found;
}

void Driver::wait_gone(HWND window) {
  wait("a window to go", [&] { return !IsWindow(window); });
}

void Driver::settle() {
  PostMessageA(probe_, kSettle, 0, 0);
  wait("the driven thread to come to rest",
       [&] { return WaitForSingleObject(settled_, 0) == WAIT_OBJECT_0; });
}

// Wine also moves the X screen's own pointer, and the events of that come later. They
// are known for what they are on the connection of the thread that made the move, so
// it is made in the driven thread; and it counts only when the mouse has stayed.
void Driver::move(HWND window, int x, int y) {
  POINT at = {x, y}, now;
  ClientToScreen(window, &at);
  do {
    if (GetTickCount64() > deadline_) give_up("the mouse to stay in its place");
    in_driven_thread([&] { SetCursorPos(at.x, at.y); });
    settle();
    GetCursorPos(&now);
  } while (now.x != at.x || now.y != at.y);
}

void Driver::in_driven_thread(std::function<void()> call) {
  DWORD_PTR result;
  if (!SendMessageTimeoutA(probe_, kCall, 0, reinterpret_cast<LPARAM>(&call), SMTO_NORMAL, 5000,
                           &result))
    give_up("a call in the driven thread");
}

void Driver::press(Button button) {
  static const DWORD flags[] = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_RIGHTDOWN,
                                MOUSEEVENTF_MIDDLEDOWN};
  send_mouse(flags[button]);
}

void Driver::release(Button button) {
  static const DWORD flags[] = {MOUSEEVENTF_LEFTUP, MOUSEEVENTF_RIGHTUP, MOUSEEVENTF_MIDDLEUP};
  send_mouse(flags[button]);
}

void Driver::click(HWND window, int x, int y, Button button) {
  move(window, x, y);
  press(button);
  release(button);
  settle();
}

void Driver::click(HWND window) {
  RECT r;
  GetClientRect(window, &r);
  click(window, r.right / 2, r.bottom / 2);
}

void Driver::drag(HWND window, int x1, int y1, int x2, int y2) {
  move(window, x1, y1);
  press(kLeft);
  settle();
  // In steps, since a modal loop of the platform has to see the way.
  for (int step = 1; step <= 4; ++step) {
    move(window, x1 + (x2 - x1) * step / 4, y1 + (y2 - y1) * step / 4);
  }
  release(kLeft);
  settle();
}

void Driver::wheel(HWND window, int x, int y, int notches) {
  move(window, x, y);
  send_mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches * WHEEL_DELTA));
  settle();
}

void Driver::key(WORD virtual_key, bool shift) {
  if (shift) send_key(VK_SHIFT, false);
  send_key(virtual_key, false);
  send_key(virtual_key, true);
  if (shift) send_key(VK_SHIFT, true);
  settle();
}

void Driver::type(const wchar_t *text) {
  for (; *text; ++text) {
    send_character(*text, false);
    send_character(*text, true);
  }
  settle();
}

HWND Driver::child(HWND parent, int id) {
  HWND found = nullptr;
  wait("a child window", [&] { return (found = GetDlgItem(parent, id)) != nullptr; });
  return found;
}

std::string Driver::text(HWND window) {
  return ask_text(window);
}

HWND Driver::focus() {
  GUITHREADINFO info = {};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(driven_, &info);
  return info.hwndFocus;
}

COLORREF Driver::pixel(HWND window, int x, int y) {
  HDC dc = GetDC(window);
  COLORREF colour = GetPixel(dc, x, y);
  ReleaseDC(window, dc);
  return colour;
}

MessageBoxSeen Driver::answer_message_box(int button_id) {
  HWND box = wait_window("#32770");
  // 0xFFFF is the text of a message box. A dialog is visible before its loop runs.
  HWND label = child(box, 0xFFFF);
  child(box, button_id);
  settle();
  MessageBoxSeen seen = {ask_text(box), ask_text(label)};
  PostMessageA(box, WM_COMMAND, MAKEWPARAM(button_id, BN_CLICKED), 0);
  wait_gone(box);
  return seen;
}

void Driver::answer_file_dialog(const char *path) {
  HWND box = wait_window("#32770");
  child(box, IDOK);
  settle();
  if (path) {
    // The name field: an edit (0x480) or a combo box (0x47C), as the system likes.
    HWND field = GetDlgItem(box, 0x480);
    if (!field) field = child(box, 0x47C);
    SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path));
  }
  PostMessageA(box, WM_COMMAND, MAKEWPARAM(path ? IDOK : IDCANCEL, BN_CLICKED), 0);
  wait_gone(box);
}

}  // namespace quorix::testing::ui
