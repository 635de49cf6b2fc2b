// SPDX-License-Identifier: MIT
//
// What a test asks of the platform itself: leaked GDI objects, pixels of a bitmap.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace quorix::testing {

// GDI objects that this process holds. Two calls around a piece of code tell what it
// leaked; let it run once before, since the first run fills the platform's own caches.
// Wine 8 answers 0 to GetGuiResources, but its table has a fixed size, so what is left
// can be counted out: about 65,000 pens, some 10 ms.
inline int gdi_objects() {
  if (DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
    return static_cast<int>(count);
  std::vector<HPEN> pens;
  while (HPEN pen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3)))
    pens.push_back(pen);
  for (HPEN pen : pens)
    DeleteObject(pen);
  return 65536 - static_cast<int>(pens.size());
}

// Pixels of a bitmap as 0x00RRGGBB, rows from the top, whatever its own format is. The
// bitmap may be selected into a context.
inline std::vector<uint32_t> read_bitmap(HBITMAP bitmap) {
  BITMAP about = {};
  GetObjectA(bitmap, sizeof(about), &about);
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = about.bmWidth;
  info.bmiHeader.biHeight = -about.bmHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  std::vector<uint32_t> pixels(static_cast<size_t>(about.bmWidth) *
                               static_cast<size_t>(about.bmHeight));
  HDC screen = GetDC(nullptr);
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(about.bmHeight), pixels.data(), &info,
            DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  for (uint32_t &pixel : pixels)
    pixel &= 0xFFFFFF;
  return pixels;
}

// Pixels of a window's client area, in the same form. GDI keeps what was drawn even
// under other windows, so this needs no screenshot.
inline std::vector<uint32_t> read_window(HWND window) {
  RECT r;
  GetClientRect(window, &r);
  HDC from = GetDC(window), to = CreateCompatibleDC(from);
  HBITMAP bitmap = CreateCompatibleBitmap(from, r.right, r.bottom);
  HGDIOBJ old = SelectObject(to, bitmap);
  BitBlt(to, 0, 0, r.right, r.bottom, from, 0, 0, SRCCOPY);
  SelectObject(to, old);
  std::vector<uint32_t> pixels = read_bitmap(bitmap);
  DeleteObject(bitmap);
  DeleteDC(to);
  ReleaseDC(window, from);
  return pixels;
}

}  // namespace quorix::testing
