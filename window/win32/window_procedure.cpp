// SPDX-License-Identifier: MIT
//
// The procedure of plot windows: translates messages into events of the window device, one short
// function per message.
#include "window/win32/win32.h"
#include "window/window_events.h"

namespace quorix {

namespace {

struct Message {
  HWND window;
  UINT number;
  WPARAM wparam;
  LPARAM lparam;
};

LRESULT by_default(const Message &m) {
  return DefWindowProcA(m.window, m.number, m.wparam, m.lparam);
}

int32_t x_of(const Message &m) {
  return static_cast<int16_t>(LOWORD(m.lparam));
}

int32_t y_of(const Message &m) {
  return static_cast<int16_t>(HIWORD(m.lparam));
}

Key key_of(WPARAM code) {
  switch (code) {
    case VK_LEFT:
      return Key::left;
    case VK_UP:
      return Key::up;
    case VK_RIGHT:
      return Key::right;
    case VK_DOWN:
      return Key::down;
    case VK_ESCAPE:
      return Key::escape;
    case VK_RETURN:
      return Key::enter;
    default:
      return Key::other;
  }
}

LRESULT key_down(const Message &m) {
  return window_key_pressed(number_of(m.window), key_of(m.wparam)) ? 0 : by_default(m);
}

LRESULT character(const Message &m) {
  return window_character(number_of(m.window), static_cast<int32_t>(m.wparam)) ? 0 : by_default(m);
}

LRESULT pointer_moved(const Message &m) {
  window_pointer_moved(number_of(m.window), x_of(m), y_of(m));
  return 0;
}

LRESULT left_pressed(const Message &m) {
  window_left_pressed(number_of(m.window), x_of(m), y_of(m));
  return 0;
}

LRESULT left_released(const Message &m) {
  window_left_released(number_of(m.window), x_of(m), y_of(m));
  return 0;
}

LRESULT right_released(const Message &m) {
  window_right_released(number_of(m.window));
  return 0;
}

LRESULT resized(const Message &m) {
  window_resized(number_of(m.window), m.wparam == SIZE_MINIMIZED);
  return 0;
}

LRESULT resize_ended(const Message &m) {
  window_resize_ended(number_of(m.window));
  return 0;
}

LRESULT painted(const Message &m) {
  PAINTSTRUCT paint = {};
  BeginPaint(m.window, &paint);
  window_needs_paint(number_of(m.window));
  EndPaint(m.window, &paint);
  return 0;
}

LRESULT close_requested(const Message &m) {
  window_close_requested(number_of(m.window));
  return 0;
}

LRESULT destroyed(const Message &m) {
  window_destroyed(number_of(m.window));
  return 0;
}

LRESULT scrolled(const Message &m, ScrollAxis axis) {
  const auto code = static_cast<ScrollCode>(LOWORD(m.wparam));
  window_scrolled(number_of(m.window), axis, code, static_cast<int16_t>(HIWORD(m.wparam)));
  return 0;
}

LRESULT scrolled_sideways(const Message &m) {
  return scrolled(m, ScrollAxis::horizontal);
}

LRESULT scrolled_upright(const Message &m) {
  return scrolled(m, ScrollAxis::vertical);
}

struct Handler {
  UINT message;
  LRESULT (*handle)(const Message &m);
};

constexpr Handler handlers[] = {
    {WM_MOUSEMOVE, pointer_moved},   {WM_PAINT, painted},
    {WM_KEYDOWN, key_down},          {WM_CHAR, character},
    {WM_LBUTTONDOWN, left_pressed},  {WM_LBUTTONUP, left_released},
    {WM_RBUTTONUP, right_released},  {WM_SIZE, resized},
    {WM_EXITSIZEMOVE, resize_ended}, {WM_CLOSE, close_requested},
    {WM_DESTROY, destroyed},         {WM_HSCROLL, scrolled_sideways},
    {WM_VSCROLL, scrolled_upright},
};

}  // namespace

LRESULT CALLBACK window_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  const Message m = {window, message, wparam, lparam};
  for (const Handler &handler : handlers) {
    if (handler.message == message) return handler.handle(m);
  }
  return by_default(m);
}

HINSTANCE own_module() {
  HMODULE module = nullptr;
  GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCSTR>(&window_procedure), &module);
  return module;
}

HCURSOR cursor_of(int32_t kind) {
  switch (kind) {
    case cursor_cross:
      return LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_CROSS));
    case cursor_arrow:
      return LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    case cursor_up:
      return LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_UPARROW));
    default:
      return nullptr;
  }
}

}  // namespace quorix
