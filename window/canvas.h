// SPDX-License-Identifier: MIT
//
// What a window's picture is drawn with, as a record of functions: one for the bitmap of a window,
// one for a metafile, each made by the system that it belongs to.
//
// A Canvas is the first member of a record that only its maker knows. It lives from
// WindowSystem::open_canvas to close. Coordinates are pixels with the origin at the upper left; a
// colour is red in the low byte, green, blue, or 0x1000000 + an index into the display's palette.
// A null function means that this kind of canvas cannot do it; the logic then gives the documented
// failure, or draws nothing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

struct CanvasPoint {
  int32_t x, y;
};

// Right and bottom edges are outside.
struct CanvasRect {
  int32_t left, top, right, bottom;
};

struct CanvasPen {
  uint32_t style;  // 0: plain solid, for width 1; else a geometric pen's style word
  int32_t width;
  uint32_t colour;
};

// Bits of a geometric pen's style word.
inline constexpr uint32_t pen_geometric = 0x10000;
inline constexpr uint32_t pen_cap_square = 0x100;
inline constexpr uint32_t pen_cap_flat = 0x200;
inline constexpr uint32_t pen_join_bevel = 0x1000;
inline constexpr uint32_t pen_join_miter = 0x2000;

// The bytes of a bitmap, row by row from the top.
struct BitmapInfo {
  int32_t width, height;
  int32_t row_bytes;
  int32_t planes;
  int32_t bits;  // per pixel: 32 and 24 are blue, green, red(, unused); 8 a palette's bytes
};

inline constexpr int32_t face_capacity = 32;  // with the terminating zero

struct CanvasFont {
  char face[face_capacity];
  int32_t height;
  int32_t escapement;  // tenths of a degree
  int32_t weight;      // 700 bold, 0 the font's own
  bool italic;
};

struct FontMetrics {
  int32_t internal_leading, external_leading;
};

struct Canvas;
struct PaletteEntry;

struct CanvasCalls {
  // Releases the canvas.
  void (*close)(Canvas *canvas);

  // ---- State
  void (*set_pen)(Canvas *canvas, const CanvasPen &pen);
  void (*set_text_colour)(Canvas *canvas, uint32_t colour);
  // Only points within the rectangle are drawn from now on.
  void (*clip)(Canvas *canvas, const CanvasRect &rect);
  // A metafile's clip: save gives a number to restore to; intersect narrows.
  int32_t (*save_clip)(Canvas *canvas);
  void (*intersect_clip)(Canvas *canvas, const CanvasRect &rect);
  void (*restore_clip)(Canvas *canvas, int32_t saved);
  // The first `count` entries of the display's palette; null without palettes.
  // False where a palette cannot be had.
  bool (*set_palette)(Canvas *canvas, const PaletteEntry *entries, int32_t count);

  // ---- Drawing, lines with the pen, areas with a solid colour and the pen around them
  // The last point may be left out: who wants it sets its pixel too.
  void (*polyline)(Canvas *canvas, const int32_t *xs, const int32_t *ys, int32_t count);
  void (*polygon)(Canvas *canvas, const CanvasPoint *points, int32_t count, uint32_t colour);
  // Without the pen.
  void (*fill_rectangle)(Canvas *canvas, const CanvasRect &rect, uint32_t colour);
  void (*set_pixel)(Canvas *canvas, int32_t x, int32_t y, uint32_t colour);
  // Red in the low byte.
  uint32_t (*get_pixel)(Canvas *canvas, int32_t x, int32_t y);
  // Of the ellipse in a box, counter-clockwise from the ray to one point to the ray to another.
  void (*arc)(Canvas *canvas, const CanvasRect &box, CanvasPoint from, CanvasPoint to);
  void (*chord)(Canvas *canvas, const CanvasRect &box, CanvasPoint from, CanvasPoint to,
                uint32_t colour);
  void (*ellipse)(Canvas *canvas, const CanvasRect &box, uint32_t colour);

  // ---- Text; null where there are no fonts
  // False where the font cannot be had; the old one stays.
  bool (*select_font)(Canvas *canvas, const CanvasFont &font);
  bool (*font_metrics)(Canvas *canvas, FontMetrics *metrics);
  // Width in pixels of one character: a byte of the font's set, or with `wide` a 16-bit unit.
  int32_t (*text_width)(Canvas *canvas, int32_t code, bool wide);
  void (*text)(Canvas *canvas, int32_t x, int32_t y, int32_t code, bool wide);

  // ---- The bitmap's bytes
  // False where there is no bitmap and none can be made. Without double buffering this makes one of
  // the client area's size and, unless the screen has 16 bits, copies the window into it.
  bool (*begin_access)(Canvas *canvas, BitmapInfo *info);
  void (*read_bits)(Canvas *canvas, uint8_t *bytes, size_t size);
  void (*write_bits)(Canvas *canvas, const uint8_t *bytes, size_t size);
  // Shows what begin_access made, if `show`, and takes it down.
  void (*end_access)(Canvas *canvas, bool show);
  // The system's number of the bitmap, for callers that go on with it by themselves; 0 without one.
  int32_t (*bitmap)(Canvas *canvas);
};

struct Canvas {
  const CanvasCalls *calls;
};

}  // namespace quorix
