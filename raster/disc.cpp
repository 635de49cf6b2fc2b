// SPDX-License-Identifier: MIT
//
// Filled discs: dots, round caps and joins, and the disc symbols.
#include <cmath>

#include "platform/numbers.h"
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
  // Only rows of the box, above or mirrored, are worth a square root.
  int64_t first = s.box.y1 - top;
  int64_t last = s.box.y2 - top;
  if (!upper_half_only) {
    first = std::min(first, bottom - s.box.y2);
    last = std::max(last, bottom - s.box.y1);
  }
  first = std::max({first, int64_t{0}, s.clip.y1 - top});
  last = std::min({last, static_cast<int64_t>(r), s.clip.y2 - top});
  const double w2 = 2.0 * r;
  for (int64_t k = first; k <= last; ++k) {
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
