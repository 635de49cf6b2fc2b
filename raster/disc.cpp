// SPDX-License-Identifier: MIT
//
// Filled discs: dots, round caps and joins, and the disc symbols.
#include <cmath>

#include "base/numbers.h"
#include "raster/raster.h"

namespace quorix {

// Rows are taken in pairs, the k-th from the top and its mirror. A pair whose upper row is outside
// the clip rows is left out whole, its mirror too. Kept: symbols cut by the clip rectangle depend
// on it.
template <class Pixel>
void draw_disc(const Surface<Pixel> &s, int32_t cx, int32_t cy, int32_t r, bool upper_half_only) {
  if (is_empty(s.box) || r < 0) return;
  const int64_t top = static_cast<int64_t>(cy) - r;
  const int64_t bottom = static_cast<int64_t>(cy) + r;
  // Only rows of the box, above or mirrored, are worth a square root. The pairs that reach it with
  // their upper rows may lie far from those that do so with their lower ones.
  const int64_t upper_first = s.box.y1 - top;
  const int64_t upper_last = s.box.y2 - top;
  const int64_t lower_first = upper_half_only ? upper_first : bottom - s.box.y2;
  const int64_t lower_last = upper_half_only ? upper_last : bottom - s.box.y1;
  const int64_t gap_first = std::min(upper_last, lower_last) + 1;
  const int64_t gap_end = std::max(upper_first, lower_first);
  const int64_t first = std::max({std::min(upper_first, lower_first), int64_t{0}, s.clip.y1 - top});
  const int64_t last =
      std::min({std::max(upper_last, lower_last), static_cast<int64_t>(r), s.clip.y2 - top});
  const double w2 = 2.0 * r;
  for (int64_t k = first; k <= last; ++k) {
    if (k >= gap_first && k < gap_end) k = gap_end;
    if (k > last) break;
    const double height = static_cast<double>(k);
    const double w = k == 0 ? 0.0 : std::sqrt(w2 * height - height * height);
    const int32_t left = std::max(round_to_int32(cx - w), s.clip.x1);
    const int32_t right = std::min(round_to_int32(cx + w), s.clip.x2);
    if (left > right) continue;
    const int32_t x1 = std::max(left, s.page.x1);
    const int32_t x2 = std::min(right, s.page.x2);
    if (x1 > x2) continue;
    const int64_t y = top + k;
    const int64_t mirror = bottom - k;
    if (y >= s.box.y1 && y <= s.box.y2) fill_span(s, x1, x2, static_cast<int32_t>(y));
    if (!upper_half_only && mirror >= s.box.y1 && mirror <= s.box.y2) {
      fill_span(s, x1, x2, static_cast<int32_t>(mirror));
    }
  }
}

template void draw_disc(const PaletteSurface &, int32_t, int32_t, int32_t, bool);
template void draw_disc(const RgbaSurface &, int32_t, int32_t, int32_t, bool);

void draw_disc(const OutputContext *context, int32_t cx, int32_t cy, int32_t r,
               int32_t upper_half_only) {
  with_surface(context, [&](const auto &s) { draw_disc(s, cx, cy, r, upper_half_only != 0); });
}

}  // namespace quorix
