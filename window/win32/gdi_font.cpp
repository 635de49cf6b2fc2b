// SPDX-License-Identifier: MIT
//
// Fonts of GDI, for canvases and for OpenGL's outlines.
#include <cstring>

#include "window/win32/win32.h"

namespace quorix {

HFONT create_gdi_font(const CanvasFont &font) {
  static_assert(face_capacity == LF_FACESIZE);
  LOGFONTA f = {};
  f.lfHeight = font.height;
  f.lfEscapement = font.escapement;
  f.lfWeight = font.weight;
  f.lfItalic = font.italic ? 1 : 0;
  f.lfQuality = ANTIALIASED_QUALITY;
  std::memcpy(f.lfFaceName, font.face, sizeof(f.lfFaceName));
  return CreateFontIndirectA(&f);
}

bool measure_gdi_font(HDC dc, FontMetrics *metrics) {
  TEXTMETRICA m = {};
  if (GetTextMetricsA(dc, &m) == 0) return false;
  *metrics = {m.tmInternalLeading, m.tmExternalLeading};
  return true;
}

int32_t gdi_text_width(HDC dc, int32_t code, bool wide) {
  SIZE size = {};
  if (wide) {
    const auto unit = static_cast<WCHAR>(code);
    GetTextExtentPoint32W(dc, &unit, 1, &size);
  } else {
    const auto byte = static_cast<char>(code & 255);
    GetTextExtentPoint32A(dc, &byte, 1, &size);
  }
  return size.cx;
}

}  // namespace quorix
