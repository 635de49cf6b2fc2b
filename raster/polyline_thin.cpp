// SPDX-License-Identifier: MIT
//
// Sloping lines of pens below width 4: Bresenham steps on a raw pointer.
//
// No pixel is tested on its own. The steps that lie within the page or the clip rectangle are
// worked out once a segment (segment_walk.h), and the loop runs through them unguarded. A plot has
// many segments of a few pixels, so what is done once a segment counts: one that lies wholly inside
// goes from its two points to the loop without a branch that could be guessed wrong.
#include <cstdlib>

#include "raster/raster.h"
#include "raster/segment_walk.h"

namespace quorix {

namespace {

// Steps that all lie on the page: the address of the first, what a step along either axis adds to
// it, and which fraction of a minor move, in units of 1 / du, is there before the first.
template <class Pixel>
struct Run {
  Pixel *to;
  ptrdiff_t major, minor;
  uint64_t rest;
};

template <class Pixel>
inline void run_by_product(Run<Pixel> run, uint32_t du, uint32_t dv, int64_t count, Pixel ink) {
  MovesByProduct moved = moves_by_product(du, dv, static_cast<uint32_t>(run.rest));
  for (; count > 0; --count) {
    run.to[moved.moves() * run.minor] = ink;
    run.to += run.major;
    moved.scaled += moved.step;
  }
}

// Both outcomes of a step are ready before its sign is known, so the loop's longest chain is an
// addition and a choice.
template <bool steep, class Pixel>
void run_by_error(Run<Pixel> run, int64_t du, int64_t dv, int64_t count, Pixel ink) {
  int64_t below = static_cast<int64_t>(run.rest) - du;  // the minor coordinate moves from 0 on
  // Steep lines touch a new row, far away in memory, with every step. An address off the page does
  // no harm here: it is a hint.
  constexpr int32_t steps_ahead = 8;
  for (; count > 0; --count) {
    if (steep) __builtin_prefetch(run.to + steps_ahead * run.major, 1);
    *run.to = ink;
    const int64_t stay = below + dv;
    below = stay < 0 ? stay : stay - du;
    run.to += stay < 0 ? run.major : run.major + run.minor;
  }
}

// Draws the steps of a range, the minor coordinate moved by `shift`.
template <class Pixel>
void draw_steps(const Surface<Pixel> &s, const SegmentWalk &w, StepRange range, int32_t shift) {
  if (range.first > range.last) return;
  const int64_t moves = minor_moves(w, range.first);
  const uint64_t rest =
      static_cast<uint64_t>(range.first) * w.dv + w.offset - static_cast<uint64_t>(moves) * w.du;
  const int64_t u = w.u + w.u_step * range.first;
  const int64_t v = w.v + shift + w.v_step * moves;
  const int64_t count = range.last - range.first + 1;
  const Run<Pixel> run = {w.x_major ? s.at(u, v) : s.at(v, u),
                          w.x_major ? ptrdiff_t{w.u_step} : w.u_step * s.pitch,
                          w.x_major ? w.v_step * s.pitch : ptrdiff_t{w.v_step}, rest};
  const auto du = static_cast<int64_t>(w.du);
  const auto dv = static_cast<int64_t>(w.dv);
  if (w.du <= longest_by_product) {
    run_by_product(run, static_cast<uint32_t>(du), static_cast<uint32_t>(dv), count, s.ink);
  } else if (w.x_major) {
    run_by_error<false>(run, du, dv, count, s.ink);
  } else {
    run_by_error<true>(run, du, dv, count, s.ink);
  }
}

// `a` or `b`, by a mask: a compiler that finds a choice here makes a branch of it.
inline ptrdiff_t choose(bool first, ptrdiff_t a, ptrdiff_t b) {
  return b ^ ((a ^ b) & -static_cast<ptrdiff_t>(first));
}

// All steps of a segment that lies on the page and goes from `start` by (dx, dy), none of which is
// 0. False, and nothing drawn, if it is longer than products reach.
//
// Nothing here branches on the direction, which is as likely the one as the other and would be
// guessed wrong every other time.
template <class Pixel>
inline bool draw_short(Pixel *start, ptrdiff_t pitch, int32_t dx, int32_t dy, WalkFrom from,
                       Pixel ink) {
  const auto length_x = static_cast<uint32_t>(std::abs(dx));
  const auto length_y = static_cast<uint32_t>(std::abs(dy));
  const uint32_t du = std::max(length_x, length_y);
  if (du > longest_by_product) return false;
  const ptrdiff_t step_x = choose(dx < 0, -1, 1);
  const ptrdiff_t step_y = choose(dy < 0, -pitch, pitch);
  const bool x_major = length_x > length_y;
  const ptrdiff_t major = choose(x_major, step_x, step_y);
  const ptrdiff_t minor = choose(x_major, step_y, step_x);
  const uint32_t turned =
      static_cast<uint32_t>(major < 0) & static_cast<uint32_t>(from == WalkFrom::smaller_major);
  const Run<Pixel> run = {start, major, minor, (du - 1 + turned) / 2};
  run_by_product(run, du, std::min(length_x, length_y), int64_t{du} + 1, ink);
  return true;
}

// Draws the straight segments and hands the corners of all others to `draw_segment`.
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
      draw_segment(xs[i - 1], ys[i - 1], xs[i], ys[i]);
    }
  }
}

// Whether all points lie in a rectangle.
bool all_within(const Rect &r, const int32_t *xs, const int32_t *ys, int32_t n) {
  for (int32_t i = 0; i < n; ++i) {
    if (!contains(r, xs[i], ys[i])) return false;
  }
  return true;
}

// A pen of one pixel within a rectangle on the page.
template <class Pixel>
void draw_one_pixel_wide(const Surface<Pixel> &s, const OutputContext *context, const Rect &within,
                         const int32_t *xs, const int32_t *ys, int32_t n, WalkFrom from) {
  const bool inside = all_within(within, xs, ys, n);
  const auto draw = [&](int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    if (inside && draw_short(s.at(x0, y0), s.pitch, x1 - x0, y1 - y0, from, s.ink)) return;
    const SegmentWalk w = walk_segment(x0, y0, x1, y1, from);
    draw_steps(s, w, inside ? all_steps(w) : steps_within(w, within), 0);
  };
  for_each_sloping_segment(s, context, xs, ys, n, draw);
}

// The offset of the i-th extra pixel of a step: +1, -1, +2, -2, ...
int32_t extra_offset(int32_t i) {
  const int32_t offset = (i + 1) / 2;
  return i % 2 != 0 ? offset : -offset;
}

bool on_page(const RasterPage &page, int32_t x, int32_t y) {
  // A negative coordinate is a large one without its sign.
  return static_cast<uint32_t>(x) < static_cast<uint32_t>(page.width) &&
         static_cast<uint32_t>(y) < static_cast<uint32_t>(page.height);
}

bool in_clip_rectangle(const Page &page, int32_t x, int32_t y) {
  return x >= page.clip_x1 && x <= page.clip_x2 && y >= page.clip_y1 && y <= page.clip_y2;
}

}  // namespace

// Straight from the record to the pixels, without a Surface: filling one in would take as long as
// drawing the line.
bool draw_lone_segment(const OutputContext *context) {
  const Accumulator &points = context->accumulator;
  const Pen &pen = context->pen;
  if (points.poly_count != 2 || pen.line_width > 1 || pen.line_smooth_on != 0) return false;
  const PixelBuffer &raster = context->buffers.raster;
  const int32_t x0 = points.poly_x[0];
  const int32_t y0 = points.poly_y[0];
  const int32_t x1 = points.poly_x[1];
  const int32_t y1 = points.poly_y[1];
  if (x0 == x1 || y0 == y1 || !has_raster(context)) return false;
  if (!on_page(raster.page, x0, y0) || !on_page(raster.page, x1, y1)) return false;
  const bool clipped = context->page.clip_on != 0;
  if (clipped &&
      !(in_clip_rectangle(context->page, x0, y0) && in_clip_rectangle(context->page, x1, y1))) {
    return false;
  }
  const WalkFrom from = clipped ? WalkFrom::smaller_major : WalkFrom::first_point;
  const ptrdiff_t pitch = raster.page.width;
  const ptrdiff_t start = y0 * pitch + x0;
  if (raster.page.rgba == 0) {
    return draw_short(raster.pixels + start, pitch, x1 - x0, y1 - y0, from,
                      context->colours.colour_index);
  }
  return draw_short(reinterpret_cast<uint32_t *>(raster.pixels) + start, pitch, x1 - x0, y1 - y0,
                    from, rgba_ink(context->colours));
}

// No clip test at all, only the page.
template <class Pixel>
void draw_fast(const Surface<Pixel> &s, const OutputContext *context, const int32_t *xs,
               const int32_t *ys, int32_t n) {
  draw_one_pixel_wide(s, context, s.page, xs, ys, n, WalkFrom::first_point);
}

// Every pixel of the pen is drawn only at steps whose centre lies in the clip rectangle.
void draw_wide_palette(const PaletteSurface &s, const OutputContext *context, const int32_t *xs,
                       const int32_t *ys, int32_t n) {
  constexpr WalkFrom from = WalkFrom::smaller_major;
  const int32_t width = context->pen.line_width;
  if (width < 2) return draw_one_pixel_wide(s, context, s.box, xs, ys, n, from);
  const auto draw = [&](int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    const SegmentWalk w = walk_segment(x0, y0, x1, y1, from);
    const StepRange centres = steps_within(w, s.clip);
    draw_steps(s, w, common_steps(centres, steps_within(w, s.page)), 0);
    for (int32_t i = 1; i < width; ++i) {
      const int32_t shift = extra_offset(i);
      draw_steps(s, w, common_steps(centres, steps_within(w, s.box, shift)), shift);
    }
  };
  for_each_sloping_segment(s, context, xs, ys, n, draw);
}

// Every pixel of the pen is clipped on its own.
void draw_wide_rgba(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
                    const int32_t *ys, int32_t n) {
  constexpr WalkFrom from = WalkFrom::smaller_major;
  const int32_t width = context->pen.line_width;
  if (width < 2) return draw_one_pixel_wide(s, context, s.box, xs, ys, n, from);
  const auto draw = [&](int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    const SegmentWalk w = walk_segment(x0, y0, x1, y1, from);
    draw_steps(s, w, steps_within(w, s.box), 0);
    for (int32_t i = 1; i < width; ++i) {
      const int32_t shift = extra_offset(i);
      draw_steps(s, w, steps_within(w, s.box, shift), shift);
    }
  };
  for_each_sloping_segment(s, context, xs, ys, n, draw);
}

template void draw_fast(const PaletteSurface &, const OutputContext *, const int32_t *,
                        const int32_t *, int32_t);
template void draw_fast(const RgbaSurface &, const OutputContext *, const int32_t *,
                        const int32_t *, int32_t);

}  // namespace quorix
