// SPDX-License-Identifier: MIT
//
// A Canvas over a bitmap of our own, drawn by the raster's loops, so that a window holds the pixels
// that a raster would.
//
// The loops take their pen, colour and pixels from a drawing record, so a canvas has a private one.
// Pixels are words of blue, green, red, 0; for displays of at most 8 bits they are bytes, the
// palette's entries from 10 on. Bitmaps of 16 and 24 bits are words too and converted when their
// bytes are asked for.
#pragma once

#include "core/output_context.h"
#include "window/canvas.h"

namespace quorix {

struct BitmapCanvas {
  Canvas canvas;
  OutputContext loops;  // pen, colour, clip rectangle; its raster_base owns the pixels
  int32_t bits;         // of the display
  uint32_t pen_colour;
  bool borrowed;  // close leaves it to its owner
};

// Releases the canvas, borrowed or not.
void release_bitmap_canvas(BitmapCanvas *canvas);

// A bitmap of 0, or null where the size is not positive or its memory cannot be had.
BitmapCanvas *create_bitmap_canvas(int32_t width, int32_t height, int32_t bits);

// The colour of a pixel as the display shows it: red in the low byte.
uint32_t bitmap_canvas_colour(const BitmapCanvas *canvas, int32_t x, int32_t y);

// What a canvas of this kind does; close releases the bitmap unless it is borrowed.
extern const CanvasCalls bitmap_canvas_calls;

}  // namespace quorix
