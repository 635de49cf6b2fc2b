// SPDX-License-Identifier: MIT
//
// The steps of one sloping line segment, and which of them lie within a rectangle.
//
// A segment of `du` steps along its longer (major) axis and `dv` along the other starts with the
// error -(du / 2). Each step adds dv; when the error gets above 0, du is taken off and the minor
// coordinate moves. After k steps it has therefore moved m = ceil((k * dv - du / 2) / du) times,
// which lets a walk start at any step with the exact error, and tells without walking where it
// enters and leaves a range of minor coordinates. All products fit in unsigned 64 bits, since du
// and dv fit in 32.
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
};

// The steps first to last; none where first > last.
struct StepRange {
  int64_t first, last;
};

inline StepRange common_steps(StepRange a, StepRange b) {
  return {std::max(a.first, b.first), std::min(a.last, b.last)};
}

// A segment that is neither horizontal nor vertical, from (x0, y0) on. Where both axes are equally
// long, y is the major one.
inline SegmentWalk walk_segment(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
  const int64_t dx = static_cast<int64_t>(x1) - x0;
  const int64_t dy = static_cast<int64_t>(y1) - y0;
  const auto length_x = static_cast<uint64_t>(dx < 0 ? -dx : dx);
  const auto length_y = static_cast<uint64_t>(dy < 0 ? -dy : dy);
  const int32_t step_x = dx < 0 ? -1 : 1;
  const int32_t step_y = dy < 0 ? -1 : 1;
  if (length_x <= length_y) return {false, y0, x0, step_y, step_x, length_y, length_x};
  return {true, x0, y0, step_x, step_y, length_x, length_y};
}

// How often the minor coordinate has moved before step k.
inline int64_t minor_moves(const SegmentWalk &w, int64_t k) {
  const uint64_t grown = static_cast<uint64_t>(k) * w.dv;
  const uint64_t half = w.du / 2;
  if (grown <= half) return 0;
  return static_cast<int64_t>((grown - half + w.du - 1) / w.du);
}

// The steps whose major coordinate lies in low to high.
inline StepRange steps_of_major(const SegmentWalk &w, int64_t low, int64_t high) {
  const StepRange all = {0, static_cast<int64_t>(w.du)};
  if (w.u_step > 0) return common_steps(all, {low - w.u, high - w.u});
  return common_steps(all, {w.u - high, w.u - low});
}

// The steps whose minor coordinate, moved by `shift`, lies in low to high.
inline StepRange steps_of_minor(const SegmentWalk &w, int64_t low, int64_t high, int32_t shift) {
  const int64_t v = w.v + shift;
  const int64_t fewest = w.v_step > 0 ? low - v : v - high;
  const int64_t most = w.v_step > 0 ? high - v : v - low;
  const auto dv = static_cast<int64_t>(w.dv);
  StepRange range = {0, static_cast<int64_t>(w.du)};
  if (most < 0 || fewest > dv) return {0, -1};
  const uint64_t half = w.du / 2;
  if (fewest > 0) {
    range.first =
        static_cast<int64_t>((static_cast<uint64_t>(fewest - 1) * w.du + half) / w.dv) + 1;
  }
  if (most < dv) {
    range.last = static_cast<int64_t>((static_cast<uint64_t>(most) * w.du + half) / w.dv);
  }
  return common_steps(range, {0, static_cast<int64_t>(w.du)});
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
