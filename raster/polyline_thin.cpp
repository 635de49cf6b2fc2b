// SPDX-License-Identifier: MIT
//
// Lines of pens below width 4: Bresenham steps on a raw pointer.
//
// No pixel is tested on its own. The steps that lie within the page or the clip rectangle are
// worked out once a segment (segment_walk.h), and the loop runs through them unguarded.
#include "raster/raster.h"
#include "raster/segment_walk.h"

namespace quorix {

namespace {

// Both outcomes of a step are ready before its sign is known, so the loop has no branch but its own
// end, and its longest chain is an addition and a conditional move.
template <bool steep, class Pixel>
void run_steps(Pixel *to, ptrdiff_t major, ptrdiff_t minor, int64_t steps, int64_t error,
               const SegmentWalk &w, Pixel ink) {
  const auto grown = static_cast<int64_t>(w.dv);
  const int64_t moved = grown - static_cast<int64_t>(w.du);
  int64_t below = error - 1;  // the minor coordinate moves where this gets to 0
  // Steep lines touch a new row, far away in memory, with every step. An address off the page does
  // no harm here: it is a hint.
  constexpr int32_t steps_ahead = 8;
  for (; steps > 0; --steps) {
    if (steep) __builtin_prefetch(to + steps_ahead * major, 1);
    *to = ink;
    const int64_t stay = below + grown;
    const int64_t move = below + moved;
    below = stay < 0 ? stay : move;
    to += stay < 0 ? major : major + minor;
  }
}

// Draws the steps of a range, the minor coordinate moved by `shift`.
template <class Pixel>
void draw_steps(const Surface<Pixel> &s, const SegmentWalk &w, StepRange range, int32_t shift) {
  if (range.first > range.last) return;
  const int64_t moves = range.first == 0 ? 0 : minor_moves(w, range.first);
  const int64_t error = static_cast<int64_t>(static_cast<uint64_t>(range.first) * w.dv -
                                             static_cast<uint64_t>(moves) * w.du) -
                        static_cast<int64_t>(w.du / 2);
  const int64_t u = w.u + w.u_step * range.first;
  const int64_t v = w.v + shift + w.v_step * moves;
  const int64_t steps = range.last - range.first + 1;
  if (w.x_major) {
    run_steps<false>(s.at(u, v), ptrdiff_t{w.u_step}, w.v_step * s.pitch, steps, error, w, s.ink);
  } else {
    run_steps<true>(s.at(v, u), w.u_step * s.pitch, ptrdiff_t{w.v_step}, steps, error, w, s.ink);
  }
}

// Whether all points lie in a rectangle.
bool all_within(const Rect &r, const int32_t *xs, const int32_t *ys, int32_t n) {
  for (int32_t i = 0; i < n; ++i) {
    if (!contains(r, xs[i], ys[i])) return false;
  }
  return true;
}

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

// No clip test at all, only the page.
template <class Pixel>
void draw_fast(const Surface<Pixel> &s, const OutputContext *context, const int32_t *xs,
               const int32_t *ys, int32_t n) {
  const bool inside = all_within(s.page, xs, ys, n);
  for (int32_t i = 1; i < n; ++i) {
    if (ys[i - 1] == ys[i]) {
      draw_hline(s, context, xs[i - 1], ys[i], xs[i]);
    } else if (xs[i - 1] == xs[i]) {
      draw_vline(s, context, xs[i], ys[i - 1], ys[i]);
    } else {
      const SegmentWalk w = walk_segment(xs[i - 1], ys[i - 1], xs[i], ys[i]);
      draw_steps(s, w, inside ? StepRange{0, static_cast<int64_t>(w.du)} : steps_within(w, s.page),
                 0);
    }
  }
}

namespace {

// As walk_segment, but from the end whose major coordinate is smaller.
SegmentWalk walk_forward(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
  SegmentWalk w = walk_segment(x0, y0, x1, y1);
  const bool turned = w.u_step < 0;  // as likely as not, so nothing branches on it
  w.u = turned ? (w.x_major ? x1 : y1) : w.u;
  w.v = turned ? (w.x_major ? y1 : x1) : w.v;
  w.v_step *= w.u_step;
  w.u_step = 1;
  return w;
}

// The offset of the i-th extra pixel of a step: +1, -1, +2, -2, ...
int32_t extra_offset(int32_t i) {
  const int32_t offset = (i + 1) / 2;
  return i % 2 != 0 ? offset : -offset;
}

// Draws the straight segments and hands the walks of all others to `draw_segment`.
template <class Pixel, class DrawSegment>
void for_each_sloping_segment(const Surface<Pixel> &s, const OutputContext *context,
                              const int32_t *xs, const int32_t *ys, int32_t n,
                              DrawSegment draw_segment) {
  for (int32_t i = 1; i < n; ++i) {
    if (ys[i - 1] == ys[i]) {
      draw_hline(s, context, xs[i - 1], ys[i], xs[i]);
    } else if (xs[i - 1] == xs[i]) {
      draw_vline(s, context, xs[i], ys[i - 1], ys[i]);
    } else {
      draw_segment(walk_forward(xs[i - 1], ys[i - 1], xs[i], ys[i]));
    }
  }
}

// A pen of one pixel, of either raster mode.
template <class Pixel>
void draw_clipped(const Surface<Pixel> &s, const OutputContext *context, const int32_t *xs,
                  const int32_t *ys, int32_t n) {
  const bool inside = all_within(s.box, xs, ys, n);
  for_each_sloping_segment(s, context, xs, ys, n, [&](const SegmentWalk &w) {
    draw_steps(s, w, inside ? StepRange{0, static_cast<int64_t>(w.du)} : steps_within(w, s.box), 0);
  });
}

}  // namespace

// Every pixel of the pen is drawn only at steps whose centre lies in the clip rectangle.
void draw_wide_palette(const PaletteSurface &s, const OutputContext *context, const int32_t *xs,
                       const int32_t *ys, int32_t n) {
  if (context->pen.line_width < 2) return draw_clipped(s, context, xs, ys, n);
  for_each_sloping_segment(s, context, xs, ys, n, [&](const SegmentWalk &w) {
    const StepRange centres = steps_within(w, s.clip);
    draw_steps(s, w, common_steps(centres, steps_within(w, s.page)), 0);
    for (int32_t i = 1; i < context->pen.line_width; ++i) {
      const int32_t shift = extra_offset(i);
      draw_steps(s, w, common_steps(centres, steps_within(w, s.box, shift)), shift);
    }
  });
}

// Every pixel of the pen is clipped on its own.
void draw_wide_rgba(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
                    const int32_t *ys, int32_t n) {
  if (context->pen.line_width < 2) return draw_clipped(s, context, xs, ys, n);
  for_each_sloping_segment(s, context, xs, ys, n, [&](const SegmentWalk &w) {
    draw_steps(s, w, steps_within(w, s.box), 0);
    for (int32_t i = 1; i < context->pen.line_width; ++i) {
      const int32_t shift = extra_offset(i);
      draw_steps(s, w, steps_within(w, s.box, shift), shift);
    }
  });
}

template void draw_hline(const PaletteSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_hline(const RgbaSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_vline(const PaletteSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_vline(const RgbaSurface &, const OutputContext *, int32_t, int32_t, int32_t);
template void draw_fast(const PaletteSurface &, const OutputContext *, const int32_t *,
                        const int32_t *, int32_t);
template void draw_fast(const RgbaSurface &, const OutputContext *, const int32_t *,
                        const int32_t *, int32_t);

}  // namespace quorix
