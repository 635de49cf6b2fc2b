// SPDX-License-Identifier: MIT
//
// Filled discs: dots, round caps and joins, and the disc symbols.
#include <cmath>

#include "base/numbers.h"
#include "raster/raster.h"

namespace quorix {

namespace {

// The pairs of rows, counted from the top, that can show: first to last without the gap between.
// Only rows of the box, above or mirrored, are worth a square root, and the pairs that reach it
// with their upper rows may lie far from those that do so with their lower ones.
struct PairRange {
  int64_t first, gap_first, gap_end, last;
};

PairRange pairs_in_sight(const Rect &clip, const Rect &box, int64_t top, int32_t r,
                         bool upper_half_only) {
  const int64_t bottom = top + 2 * static_cast<int64_t>(r);
  const int64_t upper_first = box.y1 - top;
  const int64_t upper_last = box.y2 - top;
  const int64_t lower_first = upper_half_only ? upper_first : bottom - box.y2;
  const int64_t lower_last = upper_half_only ? upper_last : bottom - box.y1;
  return {std::max({std::min(upper_first, lower_first), int64_t{0}, clip.y1 - top}),
          std::min(upper_last, lower_last) + 1, std::max(upper_first, lower_first),
          std::min({std::max(upper_last, lower_last), static_cast<int64_t>(r), clip.y2 - top})};
}

// The columns of the k-th row of a disc, within the clip rectangle and the page.
struct Columns {
  int32_t first, last;
};

template <class Pixel>
Columns columns_of_row(const Surface<Pixel> &s, int32_t cx, int32_t r, int64_t k) {
  const double diameter = 2.0 * r;
  const auto height = static_cast<double>(k);
  const double w = k == 0 ? 0.0 : std::sqrt(diameter * height - height * height);
  return {std::max(round_to_int32(cx - w), s.box.x1), std::min(round_to_int32(cx + w), s.box.x2)};
}

}  // namespace

// Rows are taken in pairs, the k-th from the top and its mirror. A pair whose upper row is outside
// the clip rows is left out whole, its mirror too. Kept: symbols cut by the clip rectangle depend
// on it.
template <class Pixel>
void draw_disc(const Surface<Pixel> &s, int32_t cx, int32_t cy, int32_t r, bool upper_half_only) {
  if (is_empty(s.box) || r < 0) return;
  const int64_t top = static_cast<int64_t>(cy) - r;
  const int64_t bottom = static_cast<int64_t>(cy) + r;
  const PairRange pairs = pairs_in_sight(s.clip, s.box, top, r, upper_half_only);
  const auto fill_row = [&](int64_t y, const Columns &columns) {
    if (y < s.box.y1 || y > s.box.y2) return;
    fill_span(s, columns.first, columns.last, static_cast<int32_t>(y));
  };
  for (int64_t k = pairs.first; k <= pairs.last; ++k) {
    if (k >= pairs.gap_first && k < pairs.gap_end) k = pairs.gap_end;
    if (k > pairs.last) break;
    const Columns columns = columns_of_row(s, cx, r, k);
    if (columns.first > columns.last) continue;
    fill_row(top + k, columns);
    if (!upper_half_only) fill_row(bottom - k, columns);
  }
}

template void draw_disc(const PaletteSurface &, int32_t, int32_t, int32_t, bool);
template void draw_disc(const RgbaSurface &, int32_t, int32_t, int32_t, bool);

void draw_disc(const OutputContext *context, int32_t cx, int32_t cy, int32_t r,
               int32_t upper_half_only) {
  with_surface(context, [&](const auto &s) { draw_disc(s, cx, cy, r, upper_half_only != 0); });
}

}  // namespace quorix
