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
  fill_rows({row, s.pitch, static_cast<size_t>(width), static_cast<size_t>(rows)}, s.ink);
}

// Without clipping only the page bounds the rectangle.
template <class Pixel>
void fill_on(const OutputContext *context, const Rect &r, Pixel ink) {
  const Surface<Pixel> s = make_surface<Pixel>(context, ink);
  fill_rect(s, intersection(r, context->page.clip_on != 0 ? s.box : s.page));
}

}  // namespace

void fill_raster_rectangle(OutputContext *context, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                           int32_t colour) {
  flush_raster(context);
  const Rect r = {x1, y1, x2, y2};
  if (!has_raster(context) || is_empty(r)) return;
  if (context->page.rgba_mode != 0) {
    fill_on(context, r, rgba_pixel(context, colour));
  } else {
    fill_on(context, r, palette_pixel(context, colour));
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvfll(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t colour) {
  if (output_context != nullptr) fill_raster_rectangle(output_context, x1, y1, x2, y2, colour);
  return 0;
}

extern "C" int32_t qqvpix(int32_t x, int32_t y, int32_t colour) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  const Rect clip = {context->page.clip_x1, context->page.clip_y1, context->page.clip_x2,
                     context->page.clip_y2};
  if (!contains(clip, x, y)) return 0;  // before the flush: what is gathered stays gathered
  flush_raster(context);
  if (!has_raster(context)) return 0;
  if (context->page.rgba_mode != 0) {
    put_pixel(make_surface<uint32_t>(context, rgba_pixel(context, colour)), x, y);
  } else {
    put_pixel(make_surface<uint8_t>(context, palette_pixel(context, colour)), x, y);
  }
  return 0;
}
