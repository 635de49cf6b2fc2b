// SPDX-License-Identifier: MIT
//
// The steps of one sloping line segment, and which of them lie within a rectangle.
//
// A segment of `du` steps along its longer (major) axis and `dv` along the other starts with the
// error -(du / 2). Each step adds dv; when the error gets above 0, du is taken off and the minor
// coordinate moves. After k steps it has therefore moved
//
//   ceil((k * dv - du / 2) / du) = floor((k * dv + offset) / du),   offset = (du - 1) / 2
//
// times, which lets a walk start at any step, and shows without walking where it enters and leaves
// a range of minor coordinates. Taken from the other end, the same walk has the offset du / 2. All
// products fit in unsigned 64 bits, since du and dv fit in 32.
#pragma once

#include <algorithm>
#include <cstdint>

#include "raster/surface.h"

namespace quorix {

struct SegmentWalk {
  bool x_major;
  int64_t u, v;            // first pixel along the major and the minor axis
  int32_t u_step, v_step;  // 1 or -1
  uint64_t du, dv;         // 0 < dv <= du
  uint64_t offset;
};

// The steps first to last; none where first > last.
struct StepRange {
  int64_t first, last;
};

inline StepRange common_steps(StepRange a, StepRange b) {
  return {std::max(a.first, b.first), std::min(a.last, b.last)};
}

inline StepRange all_steps(const SegmentWalk &w) {
  return {0, static_cast<int64_t>(w.du)};
}

// Which end the error starts at: the two differ where a step falls half way between two pixels.
enum class WalkFrom {
  first_point,
  smaller_major,  // the end whose major coordinate is smaller
};

// A segment that is neither horizontal nor vertical. Where both axes are equally long, y is the
// major one.
inline SegmentWalk walk_segment(int32_t x0, int32_t y0, int32_t x1, int32_t y1, WalkFrom from) {
  const int64_t dx = static_cast<int64_t>(x1) - x0;
  const int64_t dy = static_cast<int64_t>(y1) - y0;
  const auto length_x = static_cast<uint64_t>(dx < 0 ? -dx : dx);
  const auto length_y = static_cast<uint64_t>(dy < 0 ? -dy : dy);
  const int32_t step_x = dx < 0 ? -1 : 1;
  const int32_t step_y = dy < 0 ? -1 : 1;
  // One as likely as the other, so this is written to need no branch.
  SegmentWalk w;
  w.x_major = length_x > length_y;
  w.u = w.x_major ? x0 : y0;
  w.v = w.x_major ? y0 : x0;
  w.u_step = w.x_major ? step_x : step_y;
  w.v_step = w.x_major ? step_y : step_x;
  w.du = w.x_major ? length_x : length_y;
  w.dv = w.x_major ? length_y : length_x;
  const uint64_t turned = from == WalkFrom::smaller_major && w.u_step < 0 ? 1 : 0;
  w.offset = (w.du - 1 + turned) / 2;
  return w;
}

// How often the minor coordinate has moved before step k.
inline int64_t minor_moves(const SegmentWalk &w, int64_t k) {
  return static_cast<int64_t>((static_cast<uint64_t>(k) * w.dv + w.offset) / w.du);
}

// The same, step after step without a division: a product with ceil(2^32 / du) stands for it, so
// every step stands alone and the processor works on many at a time.
//
// The product is too large by less than 1 in 2^32 for each unit of k * dv + rest < du * du + du.
// That stays below the 2^32 / du between a quotient and the next integer while
// du * du * du + du * du < 2^32.
inline constexpr uint32_t longest_by_product = 1600;

struct MovesByProduct {
  uint64_t scaled;  // the moves before the current step, times 2^32
  uint64_t step;    // what a step adds

  ptrdiff_t moves() const { return static_cast<ptrdiff_t>(scaled >> 32); }
};

// `rest` is the part of (k * dv + offset) / du that the moves before the first step leave over, in
// units of 1 / du. 0 < dv <= du <= longest_by_product, rest < du.
inline MovesByProduct moves_by_product(uint32_t du, uint32_t dv, uint32_t rest) {
  const uint64_t one = UINT32_MAX / du + uint64_t{1};
  return {rest * one, dv * one};
}

// The steps whose major coordinate lies in low to high.
inline StepRange steps_of_major(const SegmentWalk &w, int64_t low, int64_t high) {
  if (w.u_step > 0) return common_steps(all_steps(w), {low - w.u, high - w.u});
  return common_steps(all_steps(w), {w.u - high, w.u - low});
}

// The steps whose minor coordinate, moved by `shift`, lies in low to high.
inline StepRange steps_of_minor(const SegmentWalk &w, int64_t low, int64_t high, int32_t shift) {
  const int64_t v = w.v + shift;
  const int64_t fewest = w.v_step > 0 ? low - v : v - high;
  const int64_t most = w.v_step > 0 ? high - v : v - low;
  const auto dv = static_cast<int64_t>(w.dv);
  if (most < 0 || fewest > dv) return {0, -1};
  StepRange range = all_steps(w);
  if (fewest > 0) {
    const uint64_t reached = static_cast<uint64_t>(fewest) * w.du - w.offset;
    range.first = static_cast<int64_t>((reached - 1) / w.dv) + 1;
  }
  if (most < dv) {
    const uint64_t left = (static_cast<uint64_t>(most) + 1) * w.du - w.offset;
    range.last = static_cast<int64_t>((left - 1) / w.dv);
  }
  return common_steps(range, all_steps(w));
}

// The steps within a rectangle, the minor coordinate moved by `shift`.
inline StepRange steps_within(const SegmentWalk &w, const Rect &r, int32_t shift = 0) {
  if (is_empty(r)) return {0, -1};
  if (w.x_major) {
    return common_steps(steps_of_major(w, r.x1, r.x2), steps_of_minor(w, r.y1, r.y2, shift));
  }
  return common_steps(steps_of_major(w, r.y1, r.y2), steps_of_minor(w, r.x1, r.x2, shift));
}

}  // namespace quorix
