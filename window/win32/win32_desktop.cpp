// SPDX-License-Identifier: MIT
//
// The Win32 desktop as a WindowSystem.
#include "window/win32/win32.h"

#include <algorithm>

#include "base/file_names.h"

namespace quorix {

namespace {

constexpr UINT close_entry = SC_CLOSE;

// ---- The desktop

void screen(ScreenInfo *result) {
  HDC dc = GetDC(nullptr);
  *result = {GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES),
             GetDeviceCaps(dc, BITSPIXEL) * GetDeviceCaps(dc, PLANES)};
  ReleaseDC(nullptr, dc);
}

void frame(FrameMetrics *result) {
  *result = {GetSystemMetrics(SM_CXFRAME), GetSystemMetrics(SM_CYFRAME),
             GetSystemMetrics(SM_CYCAPTION)};
}

void show_message(const char *text, const char *caption) {
  MessageBoxA(nullptr, text, caption, MB_OK);
}

// ---- Windows

void register_class(bool white_background) {
  WNDCLASSA c = {};
  c.style = CS_HREDRAW | CS_VREDRAW;
  c.lpfnWndProc = window_procedure;
  c.hInstance = own_module();
  c.hIcon = LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_APPLICATION));
  c.hCursor = cursor_of(cursor_arrow);
  c.hbrBackground =
      static_cast<HBRUSH>(GetStockObject(white_background ? WHITE_BRUSH : BLACK_BRUSH));
  c.lpszClassName = window_class_name;
  RegisterClassA(&c);
}

void unregister_class() {
  UnregisterClassA(window_class_name, own_module());
}

WindowId open(const NewWindow &wanted, int32_t *error) {
  const DWORD style = wanted.bordered ? WS_OVERLAPPEDWINDOW : WS_POPUP;
  HWND window =
      CreateWindowExA(0, window_class_name, wanted.title, style, wanted.x, wanted.y, wanted.width,
                      wanted.height, nullptr, nullptr, own_module(), nullptr);
  *error = 0;
  if (window == nullptr) {
    *error = static_cast<int32_t>(GetLastError());
    return no_window;
  }
  if (wanted.shown) ShowWindow(window, SW_SHOW);
  SetForegroundWindow(window);
  return number_of(window);
}

void close(WindowId window) {
  DestroyWindow(handle_of(window));
}

bool exists(WindowId window) {
  return IsWindow(handle_of(window)) != 0;
}

bool bitmap_exists(int32_t bitmap) {
  auto *handle = reinterpret_cast<HBITMAP>(static_cast<intptr_t>(bitmap));
  return GetObjectType(handle) == OBJ_BITMAP;
}

void show(WindowId window, bool shown) {
  ShowWindow(handle_of(window), shown ? SW_SHOW : SW_HIDE);
}

void raise(WindowId window) {
  SetForegroundWindow(handle_of(window));
}

void focus(WindowId window) {
  SetFocus(handle_of(window));
}

void set_title(WindowId window, const char *title) {
  SetWindowTextA(handle_of(window), title);
}

HANDLE load_icon(const char *filename) {
  if (!is_wide_name(filename)) {
    return LoadImageA(nullptr, filename, IMAGE_ICON, 0, 0, LR_LOADFROMFILE);
  }
  const OwnedArray<wchar_t> name = wide_name(filename);
  if (name == nullptr) return nullptr;
  return LoadImageW(nullptr, name.get(), IMAGE_ICON, 0, 0, LR_LOADFROMFILE);
}

bool set_icon(WindowId window, const char *filename) {
  const HANDLE icon = load_icon(filename);
  if (icon == nullptr) return false;
  SetClassLongPtrA(handle_of(window), GCLP_HICON, reinterpret_cast<LONG_PTR>(icon));
  return true;
}

void enable_close(WindowId window, bool enabled) {
  HMENU menu = GetSystemMenu(handle_of(window), FALSE);
  const UINT state = enabled ? MF_ENABLED : MF_GRAYED;
  if (menu != nullptr) EnableMenuItem(menu, close_entry, MF_BYCOMMAND | state);
}

bool client_size(WindowId window, int32_t *width, int32_t *height) {
  RECT rect = {};
  const bool found = GetClientRect(handle_of(window), &rect) != 0;
  *width = rect.right;
  *height = rect.bottom;
  return found;
}

bool place(WindowId window, WindowPlace *result) {
  RECT rect = {};
  if (GetWindowRect(handle_of(window), &rect) == 0) return false;
  *result = {rect.left, rect.top};
  return true;
}

int bar_of(ScrollAxis axis) {
  return axis == ScrollAxis::horizontal ? SB_HORZ : SB_VERT;
}

bool scroll_state(WindowId window, ScrollAxis axis, ScrollState *state) {
  int minimum = 0;
  int maximum = 0;
  if (GetScrollRange(handle_of(window), bar_of(axis), &minimum, &maximum) == 0) return false;
  *state = {GetScrollPos(handle_of(window), bar_of(axis)), minimum, maximum};
  return true;
}

void set_scroll_position(WindowId window, ScrollAxis axis, int32_t position) {
  SetScrollPos(handle_of(window), bar_of(axis), position, TRUE);
}

// ---- Pictures

void present(WindowId window, Canvas *canvas, int32_t offset_x, int32_t offset_y, int32_t width,
             int32_t height) {
  present_gdi_canvas(handle_of(window), canvas, offset_x, offset_y, width, height);
}

// ---- Pointer and cursor

void set_cursor(int32_t kind) {
  HCURSOR cursor = cursor_of(kind);
  if (cursor != nullptr) SetCursor(cursor);
}

void set_class_cursor(WindowId window, int32_t kind) {
  SetClassLongPtrA(handle_of(window), GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(cursor_of(kind)));
}

bool pointer(WindowId window, PointerPlace *result) {
  POINT p = {};
  if (GetCursorPos(&p) == 0 || ScreenToClient(handle_of(window), &p) == 0) return false;
  *result = {p.x, p.y};
  return true;
}

void set_pointer(WindowId window, int32_t x, int32_t y) {
  POINT p = {x, y};
  if (ClientToScreen(handle_of(window), &p) != 0) SetCursorPos(p.x, p.y);
}

void capture(WindowId window) {
  SetCapture(handle_of(window));
}

void release_capture() {
  ReleaseCapture();
}

// An operation that inverts takes itself away when it is done again.
void rubber_band(WindowId window, RubberShape shape, int32_t x1, int32_t y1, int32_t x2,
                 int32_t y2) {
  HDC dc = GetDC(handle_of(window));
  if (dc == nullptr) return;
  SetROP2(dc, R2_NOT);
  if (shape == RubberShape::line) {
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
  } else {
    SelectObject(dc, GetStockObject(HOLLOW_BRUSH));
    Rectangle(dc, std::max(x1, x2), std::max(y1, y2), std::min(x1, x2) + 1, std::min(y1, y2) + 1);
  }
  ReleaseDC(handle_of(window), dc);
}

// ---- Time

void wait() {
  MSG message = {};
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

void quit() {
  PostQuitMessage(0);
}

// A quit that comes by is for the wait around this pump.
bool pump() {
  bool painted = false;
  MSG message = {};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    if (message.message == WM_PAINT) painted = true;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return painted;
}

void sleep(int32_t milliseconds) {
  if (milliseconds > 0) Sleep(static_cast<DWORD>(milliseconds));
}

void update(WindowId window) {
  InvalidateRect(handle_of(window), nullptr, FALSE);
  UpdateWindow(handle_of(window));
}

}  // namespace

const WindowSystem win32_window_system = {
    .screen = screen,
    .frame = frame,
    .show_message = show_message,
    .register_class = register_class,
    .unregister_class = unregister_class,
    .open = open,
    .close = close,
    .exists = exists,
    .bitmap_exists = bitmap_exists,
    .show = show,
    .raise = raise,
    .focus = focus,
    .set_title = set_title,
    .set_icon = set_icon,
    .enable_close = enable_close,
    .client_size = client_size,
    .place = place,
    .scroll_state = scroll_state,
    .set_scroll_position = set_scroll_position,
    .open_canvas = open_gdi_canvas,
    .present = present,
    .open_measuring_canvas = open_gdi_measuring_canvas,
    .set_cursor = set_cursor,
    .set_class_cursor = set_class_cursor,
    .pointer = pointer,
    .set_pointer = set_pointer,
    .capture = capture,
    .release_capture = release_capture,
    .rubber_band = rubber_band,
    .wait = wait,
    .quit = quit,
    .pump = pump,
    .sleep = sleep,
    .update = update,
    .gl = &wgl_system,
};

}  // namespace quorix
