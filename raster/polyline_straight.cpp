// SPDX-License-Identifier: MIT
//
// Horizontal and vertical lines of any pen below width 4: runs of pixels, and beside them the rows
// or columns that the pen's width adds.
#include "raster/raster.h"

namespace quorix {

namespace {

// A range of rows or columns.
struct Band {
  int64_t low, high;
};

// Which lines a horizontal or vertical line of a wide pen covers besides its own: at offsets
// +1, -1, +2, -2, ... A line outside the clip rectangle does not turn the sign, so a pen that
// meets an edge stops growing on both sides, and one that comes from before the rectangle covers
// just its first line. Kept: frames along the edge depend on it.
// Calls `draw` with every such line that lies on the page.
template <class Draw>
void for_each_extra_line(int32_t line_width, int32_t at, Band clip, Band page, Draw draw) {
  const auto draw_on_page = [&](int64_t line) {
    if (line >= page.low && line <= page.high) draw(line);
  };
  if (at < clip.low && clip.low <= clip.high && 2 * (clip.low - at) - 1 < line_width) {
    return draw_on_page(clip.low);
  }
  if (at < clip.low || at > clip.high) return;
  // Counted as i = 1, 2, 3, ... for the offsets above.
  const int64_t first_outside = std::min(2 * (clip.high - at) + 1, 2 * (at - clip.low) + 2);
  const int64_t nearest = std::max({int64_t{1}, page.low - at, at - page.high});
  const int64_t farthest = std::max(page.high - at, at - page.low);
  const int64_t end = std::min({static_cast<int64_t>(line_width), first_outside, 2 * farthest + 1});
  for (int64_t i = 2 * nearest - 1; i < end; ++i) {
    const int64_t offset = (i + 1) / 2;
    draw_on_page(i % 2 != 0 ? at + offset : at - offset);
  }
}

// Both ends of a line along one axis, clamped to low and high where `clamp` says so.
struct Extent {
  int32_t first, last;
};

Extent line_extent(int32_t a, int32_t b, bool clamp, int32_t low, int32_t high) {
  Extent e = {std::min(a, b), std::max(a, b)};
  if (clamp) e = {std::max(e.first, low), std::min(e.last, high)};
  return e;
}

}  // namespace

template <class Pixel>
void draw_hline(const Surface<Pixel> &s, const OutputContext *context, int32_t x1, int32_t y,
                int32_t x2) {
  const bool clipped = context->page.clip_on != 0;
  if (clipped && (y < s.clip.y1 || y > s.clip.y2)) return;
  const Extent clip_extent = line_extent(x1, x2, clipped, s.clip.x1, s.clip.x2);
  const Extent e = line_extent(clip_extent.first, clip_extent.last, true, s.page.x1, s.page.x2);
  // A line that clipping turned inside out must not be put in order again.
  if (clip_extent.first > clip_extent.last || e.first > e.last) return;
  if (y >= s.page.y1 && y <= s.page.y2) fill_span(s, e.first, e.last, y);
  for_each_extra_line(
      context->pen.line_width, y, {s.clip.y1, s.clip.y2}, {s.page.y1, s.page.y2},
      [&](int64_t row) { fill_span(s, e.first, e.last, static_cast<int32_t>(row)); });
}

template <class Pixel>
void draw_vline(const Surface<Pixel> &s, const OutputContext *context, int32_t x, int32_t y1,
                int32_t y2) {
  const bool clipped = context->page.clip_on != 0;
  if (clipped && (x < s.clip.x1 || x > s.clip.x2)) return;
  const Extent clip_extent = line_extent(y1, y2, clipped, s.clip.y1, s.clip.y2);
  const Extent e = line_extent(clip_extent.first, clip_extent.last, true, s.page.y1, s.page.y2);
  if (clip_extent.first > clip_extent.last || e.first > e.last) return;
  const auto fill_column = [&](int64_t column) {
    Pixel *to = s.at(column, e.first);
    for (int32_t y = e.first; y <= e.last; ++y, to += s.pitch)
      *to = s.ink;
  };
  if (x >= s.page.x1 && x <= s.page.x2) fill_column(x);
  for_each_extra_line(context->pen.line_width, x, {s.clip.x1, s.clip.x2}, {s.page.x1, s.page.x2},
                      fill_column);
}

template void draw_hline(const PaletteSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_hline(const RgbaSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_vline(const PaletteSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_vline(const RgbaSurface &, const OutputContext *, int32_t, int32_t, int32_t);

}  // namespace quorix
