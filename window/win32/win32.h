// SPDX-License-Identifier: MIT
//
// What the files of the Win32 desktop share. Windows are numbers outside: handles have 32
// significant bits, so one fits in an int32_t and comes back by extending its sign.
#pragma once

#include <windows.h>

#include "window/canvas.h"
#include "window/window_system.h"

namespace quorix {

inline HWND handle_of(WindowId window) {
  return reinterpret_cast<HWND>(static_cast<intptr_t>(window));
}

inline WindowId number_of(HWND handle) {
  return static_cast<WindowId>(reinterpret_cast<intptr_t>(handle));
}

// ---- win32_desktop.cpp
extern const WindowSystem win32_window_system;

// ---- window_procedure.cpp
inline constexpr char window_class_name[] = "quomain";
LRESULT CALLBACK window_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
// The module that holds this code: the DLL, or a program with the static library in it.
HINSTANCE own_module();
HCURSOR cursor_of(int32_t kind);  // CursorKind; null for others

// ---- gdi_canvas.cpp
Canvas *open_gdi_canvas(const NewCanvas &wanted);
// A screen context, for text to be measured on.
Canvas *open_gdi_measuring_canvas();
void present_gdi_canvas(HWND window, Canvas *canvas, int32_t offset_x, int32_t offset_y,
                        int32_t width, int32_t height);

// ---- gdi_font.cpp
HFONT create_gdi_font(const CanvasFont &font);
bool measure_gdi_font(HDC dc, FontMetrics *metrics);
int32_t gdi_text_width(HDC dc, int32_t code, bool wide);

// ---- wgl.cpp
extern const GlSystem wgl_system;

}  // namespace quorix
