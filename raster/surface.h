// SPDX-License-Identifier: MIT
//
// A raster as the drawing loops see it: typed pixels, the page, the clip rectangle and an ink.
//
// Palette rasters are surfaces of bytes, RGBA rasters surfaces of 32-bit words whose memory order
// is R, G, B, A, so one template draws on both. A surface is made anew for every operation, lives
// on the stack and owns nothing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/processor.h"
#include "core/output_context.h"
#include "raster/fill_run.h"

namespace quorix {

// Inclusive on all four sides; empty where x1 > x2 or y1 > y2.
struct Rect {
  int32_t x1, y1, x2, y2;
};

inline bool contains(const Rect &r, int64_t x, int64_t y) {
  return x >= r.x1 && x <= r.x2 && y >= r.y1 && y <= r.y2;
}

inline bool is_empty(const Rect &r) {
  return r.x1 > r.x2 || r.y1 > r.y2;
}

inline Rect intersection(const Rect &a, const Rect &b) {
  return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}

inline uint32_t pack_rgba(uint8_t r, uint8_t g, uint8_t b, uint8_t a) {
  return r | static_cast<uint32_t>(g) << 8 | static_cast<uint32_t>(b) << 16 |
         static_cast<uint32_t>(a) << 24;
}

template <class Pixel>
struct Surface {
  Pixel *base;
  ptrdiff_t pitch;  // pixels from one row to the next
  Rect clip;        // as the caller set it: decides which way an operation goes
  Rect page;        // what the memory was allocated for: no write ever leaves it
  Rect box;         // the two together: where clipped writes go
  Pixel ink;

  Pixel *at(int64_t x, int64_t y) const { return base + y * pitch + x; }
};

using PaletteSurface = Surface<uint8_t>;
using RgbaSurface = Surface<uint32_t>;

// True while the record describes the buffer that `raster` points to.
inline bool has_raster(const OutputContext *context) {
  return context->buffers.raster.page.width > 0 &&
         context->buffers.raster.page.rgba == context->page.rgba_mode;
}

template <class Pixel>
Surface<Pixel> make_surface(const OutputContext *context, Pixel ink) {
  Surface<Pixel> s;
  s.base = reinterpret_cast<Pixel *>(context->buffers.raster.pixels);
  s.pitch = context->buffers.raster.page.width;
  s.clip = {context->page.clip_x1, context->page.clip_y1, context->page.clip_x2,
            context->page.clip_y2};
  s.page = {0, 0, context->buffers.raster.page.width - 1, context->buffers.raster.page.height - 1};
  s.box = intersection(s.clip, s.page);
  s.ink = ink;
  return s;
}

// The current colour as an RGBA pixel.
inline uint32_t rgba_ink(const Colours &colours) {
  return pack_rgba(colours.colour_r, colours.colour_g, colours.colour_b, colours.colour_alpha);
}

// Calls `draw` with the surface of the raster, in the current colour; not at all without one.
template <class Draw>
void with_surface(const OutputContext *context, Draw draw) {
  if (!has_raster(context)) return;
  if (context->page.rgba_mode != 0) {
    draw(make_surface<uint32_t>(context, rgba_ink(context->colours)));
  } else {
    draw(make_surface<uint8_t>(context, context->colours.colour_index));
  }
}

// Pixels (x1, y) to (x2, y), which lie on the page.
template <class Pixel>
void fill_span(const Surface<Pixel> &s, int32_t x1, int32_t x2, int32_t y) {
  fill_run(s.at(x1, y), static_cast<size_t>(x2 - x1) + 1, s.ink);
}

// One pixel, if it lies in the box.
template <class Pixel>
void put_pixel(const Surface<Pixel> &s, int64_t x, int64_t y) {
  if (contains(s.box, x, y)) *s.at(x, y) = s.ink;
}

}  // namespace quorix
