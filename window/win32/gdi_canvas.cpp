// SPDX-License-Identifier: MIT
//
// A Canvas on GDI: the bitmap behind a window, the window itself, or a screen context to measure
// on. What was selected into the context at first goes back before it is deleted.
#include "window/win32/win32.h"
#include "window/window_set.h"

#include "base/memory.h"

namespace quorix {

namespace {

constexpr WORD palette_version = 0x300;
constexpr int32_t palette_capacity = 256;

enum class GdiTarget : uint8_t { bitmap, window, screen };

struct GdiCanvas {
  Canvas canvas;
  GdiTarget target;
  HWND window;
  HDC dc;
  HBITMAP bitmap, old_bitmap;
  HPEN pen, old_pen;
  HFONT font, old_font;
  HPALETTE palette, old_palette;
  HDC image_dc;  // between begin_access and end_access, where there is no bitmap of its own
  HBITMAP image_bitmap, old_image_bitmap;
};

GdiCanvas *of(Canvas *canvas) {
  return reinterpret_cast<GdiCanvas *>(canvas);
}

RECT rect_of(const CanvasRect &r) {
  return {r.left, r.top, r.right, r.bottom};
}

// A brush of one colour, selected while in scope.
class SelectedBrush {
 public:
  SelectedBrush(HDC dc, uint32_t colour)
      : dc_(dc), brush_(CreateSolidBrush(colour)), old_(SelectObject(dc, brush_)) {}
  ~SelectedBrush() {
    SelectObject(dc_, old_);
    DeleteObject(brush_);
  }
  SelectedBrush(const SelectedBrush &) = delete;
  SelectedBrush &operator=(const SelectedBrush &) = delete;

 private:
  HDC dc_;
  HBRUSH brush_;
  HGDIOBJ old_;
};

// ---- Opening and closing

void take_down_image(GdiCanvas *c) {
  if (c->image_dc == nullptr) return;
  SelectObject(c->image_dc, c->old_image_bitmap);
  DeleteDC(c->image_dc);
  DeleteObject(c->image_bitmap);
  c->image_dc = nullptr;
  c->image_bitmap = nullptr;
}

void close(Canvas *canvas) {
  GdiCanvas *c = of(canvas);
  take_down_image(c);
  if (c->font != nullptr) SelectObject(c->dc, c->old_font);
  if (c->pen != nullptr) SelectObject(c->dc, c->old_pen);
  if (c->palette != nullptr) SelectPalette(c->dc, c->old_palette, FALSE);
  if (c->bitmap != nullptr) SelectObject(c->dc, c->old_bitmap);
  if (c->target == GdiTarget::bitmap) {
    DeleteDC(c->dc);
  } else {
    ReleaseDC(c->window, c->dc);
  }
  DeleteObject(c->bitmap);
  DeleteObject(c->pen);
  DeleteObject(c->font);
  DeleteObject(c->palette);
  release_bytes(c);
}

// ---- State

void set_pen(Canvas *canvas, const CanvasPen &pen) {
  GdiCanvas *c = of(canvas);
  HPEN made = nullptr;
  if (pen.style == 0) {
    made = CreatePen(PS_SOLID, 1, pen.colour);
  } else {
    const LOGBRUSH brush = {BS_SOLID, pen.colour, 0};
    made = ExtCreatePen(pen.style, static_cast<DWORD>(pen.width), &brush, 0, nullptr);
  }
  if (made == nullptr) return;
  auto *before = static_cast<HPEN>(SelectObject(c->dc, made));
  if (c->pen == nullptr) {
    c->old_pen = before;
  } else {
    DeleteObject(c->pen);
  }
  c->pen = made;
}

void set_text_colour(Canvas *canvas, uint32_t colour) {
  SetTextColor(of(canvas)->dc, colour);
}

void clip(Canvas *canvas, const CanvasRect &rect) {
  HRGN region = CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
  SelectClipRgn(of(canvas)->dc, region);
  DeleteObject(region);
}

HPALETTE create_palette() {
  struct {
    WORD version, count;
    PALETTEENTRY entries[palette_capacity];
  } black = {palette_version, palette_capacity, {}};
  for (PALETTEENTRY &entry : black.entries)
    entry.peFlags = PC_NOCOLLAPSE;
  return CreatePalette(reinterpret_cast<const LOGPALETTE *>(&black));
}

bool set_palette(Canvas *canvas, const PaletteEntry *entries, int32_t count) {
  static_assert(sizeof(PaletteEntry) == sizeof(PALETTEENTRY));
  GdiCanvas *c = of(canvas);
  if (c->palette == nullptr) {
    c->palette = create_palette();
    if (c->palette == nullptr) return false;
    c->old_palette = SelectPalette(c->dc, c->palette, FALSE);
  }
  SetSystemPaletteUse(c->dc, SYSPAL_NOSTATIC);
  SetSystemPaletteUse(c->dc, SYSPAL_STATIC);
  SetPaletteEntries(c->palette, 0, static_cast<UINT>(count),
                    reinterpret_cast<const PALETTEENTRY *>(entries));
  RealizePalette(c->dc);
  return true;
}

// ---- Drawing

void polyline(Canvas *canvas, const int32_t *xs, const int32_t *ys, int32_t count) {
  POINT points[line_capacity];
  if (count < 2 || count > line_capacity) return;
  for (int32_t i = 0; i < count; ++i)
    points[i] = {xs[i], ys[i]};
  Polyline(of(canvas)->dc, points, count);
}

void polygon(Canvas *canvas, const CanvasPoint *points, int32_t count, uint32_t colour) {
  static_assert(sizeof(CanvasPoint) == sizeof(POINT));
  const SelectedBrush brush(of(canvas)->dc, colour);
  Polygon(of(canvas)->dc, reinterpret_cast<const POINT *>(points), count);
}

void fill_rectangle(Canvas *canvas, const CanvasRect &rect, uint32_t colour) {
  const RECT r = rect_of(rect);
  HBRUSH brush = CreateSolidBrush(colour);
  FillRect(of(canvas)->dc, &r, brush);
  DeleteObject(brush);
}

void set_pixel(Canvas *canvas, int32_t x, int32_t y, uint32_t colour) {
  SetPixel(of(canvas)->dc, x, y, colour);
}

uint32_t get_pixel(Canvas *canvas, int32_t x, int32_t y) {
  const COLORREF colour = GetPixel(of(canvas)->dc, x, y);
  return colour == CLR_INVALID ? 0 : colour;
}

void arc(Canvas *canvas, const CanvasRect &box, CanvasPoint from, CanvasPoint to) {
  Arc(of(canvas)->dc, box.left, box.top, box.right, box.bottom, from.x, from.y, to.x, to.y);
}

void chord(Canvas *canvas, const CanvasRect &box, CanvasPoint from, CanvasPoint to,
           uint32_t colour) {
  const SelectedBrush brush(of(canvas)->dc, colour);
  Chord(of(canvas)->dc, box.left, box.top, box.right, box.bottom, from.x, from.y, to.x, to.y);
}

void ellipse(Canvas *canvas, const CanvasRect &box, uint32_t colour) {
  const SelectedBrush brush(of(canvas)->dc, colour);
  Ellipse(of(canvas)->dc, box.left, box.top, box.right, box.bottom);
}

// ---- Text

bool select_font(Canvas *canvas, const CanvasFont &font) {
  GdiCanvas *c = of(canvas);
  HFONT made = create_gdi_font(font);
  if (made == nullptr) return false;
  auto *before = static_cast<HFONT>(SelectObject(c->dc, made));
  if (c->font == nullptr) {
    c->old_font = before;
  } else {
    DeleteObject(c->font);
  }
  c->font = made;
  SetBkMode(c->dc, TRANSPARENT);
  return true;
}

bool font_metrics(Canvas *canvas, FontMetrics *metrics) {
  return measure_gdi_font(of(canvas)->dc, metrics);
}

int32_t text_width(Canvas *canvas, int32_t code, bool wide) {
  return gdi_text_width(of(canvas)->dc, code, wide);
}

void text(Canvas *canvas, int32_t x, int32_t y, int32_t code, bool wide) {
  if (wide) {
    const auto unit = static_cast<WCHAR>(code);
    TextOutW(of(canvas)->dc, x, y, &unit, 1);
  } else {
    const auto byte = static_cast<char>(code & 255);
    TextOutA(of(canvas)->dc, x, y, &byte, 1);
  }
}

// ---- The bitmap's bytes

// A bitmap as large as the window's client area, with what it shows. On 16 bits pixels are never
// addressed, so there nothing is copied.
bool make_image(GdiCanvas *c) {
  RECT client = {};
  if (GetClientRect(c->window, &client) == 0) return false;
  c->image_bitmap = CreateCompatibleBitmap(c->dc, client.right, client.bottom);
  if (c->image_bitmap == nullptr) return false;
  c->image_dc = CreateCompatibleDC(c->dc);
  if (c->image_dc == nullptr) {
    DeleteObject(c->image_bitmap);
    c->image_bitmap = nullptr;
    return false;
  }
  c->old_image_bitmap = static_cast<HBITMAP>(SelectObject(c->image_dc, c->image_bitmap));
  if (GetDeviceCaps(c->dc, BITSPIXEL) != 16) {
    BitBlt(c->image_dc, 0, 0, client.right, client.bottom, c->dc, 0, 0, SRCCOPY);
  }
  return true;
}

HBITMAP bitmap_of(const GdiCanvas *c) {
  return c->bitmap != nullptr ? c->bitmap : c->image_bitmap;
}

bool begin_access(Canvas *canvas, BitmapInfo *info) {
  GdiCanvas *c = of(canvas);
  if (c->bitmap == nullptr && c->image_dc == nullptr && !make_image(c)) return false;
  BITMAP b = {};
  if (GetObjectA(bitmap_of(c), sizeof(b), &b) == 0) return false;
  *info = {b.bmWidth, b.bmHeight, b.bmWidthBytes, b.bmPlanes, b.bmBitsPixel};
  return true;
}

void read_bits(Canvas *canvas, uint8_t *bytes, size_t size) {
  GetBitmapBits(bitmap_of(of(canvas)), static_cast<LONG>(size), bytes);
}

void write_bits(Canvas *canvas, const uint8_t *bytes, size_t size) {
  SetBitmapBits(bitmap_of(of(canvas)), static_cast<DWORD>(size), bytes);
}

void end_access(Canvas *canvas, bool show) {
  GdiCanvas *c = of(canvas);
  if (c->image_dc == nullptr) return;
  RECT client = {};
  if (show && GetClientRect(c->window, &client) != 0) {
    BitBlt(c->dc, 0, 0, client.right, client.bottom, c->image_dc, 0, 0, SRCCOPY);
  }
  take_down_image(c);
}

int32_t bitmap(Canvas *canvas) {
  return static_cast<int32_t>(reinterpret_cast<intptr_t>(of(canvas)->bitmap));
}

const CanvasCalls gdi_canvas_calls = {
    .close = close,
    .set_pen = set_pen,
    .set_text_colour = set_text_colour,
    .clip = clip,
    .save_clip = nullptr,
    .intersect_clip = nullptr,
    .restore_clip = nullptr,
    .set_palette = set_palette,
    .polyline = polyline,
    .polygon = polygon,
    .fill_rectangle = fill_rectangle,
    .set_pixel = set_pixel,
    .get_pixel = get_pixel,
    .arc = arc,
    .chord = chord,
    .ellipse = ellipse,
    .select_font = select_font,
    .font_metrics = font_metrics,
    .text_width = text_width,
    .text = text,
    .begin_access = begin_access,
    .read_bits = read_bits,
    .write_bits = write_bits,
    .end_access = end_access,
    .bitmap = bitmap,
};

GdiCanvas *new_canvas(GdiTarget target, HWND window) {
  auto *c = static_cast<GdiCanvas *>(allocate_zeroed_bytes(sizeof(GdiCanvas)));
  if (c == nullptr) return nullptr;
  c->canvas.calls = &gdi_canvas_calls;
  c->target = target;
  c->window = window;
  return c;
}

// False where bitmap or context cannot be had; nothing is kept then.
bool add_bitmap(GdiCanvas *c, HDC window_dc, const NewCanvas &wanted) {
  c->bitmap = CreateCompatibleBitmap(window_dc, wanted.width, wanted.height);
  c->dc = c->bitmap == nullptr ? nullptr : CreateCompatibleDC(window_dc);
  if (c->dc == nullptr) {
    DeleteObject(c->bitmap);
    return false;
  }
  c->old_bitmap = static_cast<HBITMAP>(SelectObject(c->dc, c->bitmap));
  SetMapMode(c->dc, GetMapMode(window_dc));
  SetBkMode(c->dc, TRANSPARENT);
  if (wanted.copy_window) {
    BitBlt(c->dc, 0, 0, wanted.width, wanted.height, window_dc, 0, 0, SRCCOPY);
  }
  return true;
}

}  // namespace

Canvas *open_gdi_canvas(const NewCanvas &wanted) {
  HWND window = handle_of(wanted.window);
  HDC window_dc = GetDC(window);
  if (window_dc == nullptr) return nullptr;
  GdiCanvas *c = new_canvas(wanted.buffered ? GdiTarget::bitmap : GdiTarget::window, window);
  if (c == nullptr) {
    ReleaseDC(window, window_dc);
    return nullptr;
  }
  if (!wanted.buffered) {
    c->dc = window_dc;
    SetBkMode(c->dc, TRANSPARENT);
    return &c->canvas;
  }
  const bool made = add_bitmap(c, window_dc, wanted);
  ReleaseDC(window, window_dc);
  if (made) return &c->canvas;
  release_bytes(c);
  return nullptr;
}

Canvas *open_gdi_measuring_canvas() {
  GdiCanvas *c = new_canvas(GdiTarget::screen, nullptr);
  if (c == nullptr) return nullptr;
  c->dc = GetDC(nullptr);
  return &c->canvas;
}

void present_gdi_canvas(HWND window, Canvas *canvas, int32_t offset_x, int32_t offset_y,
                        int32_t width, int32_t height) {
  const GdiCanvas *c = of(canvas);
  HDC dc = GetDC(window);
  if (dc == nullptr) return;
  HPALETTE before = nullptr;
  if (c->palette != nullptr) {
    before = SelectPalette(dc, c->palette, FALSE);
    RealizePalette(dc);
  }
  BitBlt(dc, 0, 0, width, height, c->dc, offset_x, offset_y, SRCCOPY);
  if (c->palette != nullptr) SelectPalette(dc, before, FALSE);
  ReleaseDC(window, dc);
}

}  // namespace quorix
