// SPDX-License-Identifier: MIT
//
// Filled rectangles and single pixels. Neither changes the current colour.
#include "quorix/raster.h"
#include "raster/raster.h"

namespace quorix {

namespace {

template <class Pixel>
void fill_rect(const Surface<Pixel> &s, const Rect &r) {
  if (is_empty(r)) return;
  const ptrdiff_t width = static_cast<ptrdiff_t>(r.x2) - r.x1 + 1;
  const ptrdiff_t rows = static_cast<ptrdiff_t>(r.y2) - r.y1 + 1;
  Pixel *row = s.at(r.x1, r.y1);
  if (width == s.pitch) {  // whole rows follow one another
    fill_run(row, static_cast<size_t>(width * rows), s.ink);
    return;
  }
  for (ptrdiff_t i = 0; i < rows; ++i, row += s.pitch) {
    fill_run(row, static_cast<size_t>(width), s.ink);
  }
}

// Without clipping only the page bounds the rectangle.
template <class Pixel>
void fill_on(const OutputContext *context, const Rect &r, Pixel ink) {
  const Surface<Pixel> s = make_surface<Pixel>(context, ink);
  fill_rect(s, intersection(r, context->clip_on != 0 ? s.box : s.page));
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvfll(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t colour) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  flush_raster(context);
  const Rect r = {x1, y1, x2, y2};
  if (!has_raster(context) || is_empty(r)) return 0;
  if (context->rgba_mode != 0) {
    fill_on(context, r, rgba_pixel(context, colour));
  } else {
    fill_on(context, r, palette_pixel(context, colour));
  }
  return 0;
}

extern "C" int32_t qqvpix(int32_t x, int32_t y, int32_t colour) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  const Rect clip = {context->clip_x1, context->clip_y1, context->clip_x2, context->clip_y2};
  if (!contains(clip, x, y)) return 0;  // before the flush: what is gathered stays gathered
  flush_raster(context);
  if (!has_raster(context)) return 0;
  if (context->rgba_mode != 0) {
    put_pixel(make_surface<uint32_t>(context, rgba_pixel(context, colour)), x, y);
  } else {
    put_pixel(make_surface<uint8_t>(context, palette_pixel(context, colour)), x, y);
  }
  return 0;
}
