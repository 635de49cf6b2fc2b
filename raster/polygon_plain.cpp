// SPDX-License-Identifier: MIT
//
// The polygon filler that looks at every edge in every row. Slow, but it needs no memory of its
// own: the fallback of the sweep, and what the sweep is tested against.
#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "raster/polygon.h"

namespace quorix {

template <class Pixel>
int32_t fill_polygon_plainly(const Surface<Pixel> &s, const double *xs, const double *ys,
                             int32_t n) {
  double ymin = 0;
  double ymax = 0;
  if (!y_range(ys, n, &ymin, &ymax)) return 0;
  const RowRange rows = polygon_rows(ymin, ymax, s.clip.y1, s.clip.y2);
  int32_t status = 0;
  for (int64_t y = rows.first; y <= rows.last; ++y) {
    const auto row = static_cast<double>(y);
    int32_t crossings[max_crossings];
    int32_t count = 0;
    for (int32_t i = 0; i < n; ++i) {
      const int32_t j = i == n - 1 ? 0 : i + 1;
      if (!((ys[i] < row && row <= ys[j]) || (ys[j] < row && row <= ys[i]))) continue;
      if (count == max_crossings) {
        status = 1;
        continue;
      }
      const bool flat = !(std::abs(ys[i] - ys[j]) >= flat_edge);
      const double x = flat ? xs[i] : (xs[j] - xs[i]) * (row - ys[i]) / (ys[j] - ys[i]) + xs[i];
      crossings[count++] = round_to_int32(x);
    }
    if (y < s.page.y1 || y > s.page.y2) continue;
    sort_crossings(crossings, count);
    fill_pairs(s, crossings, count, static_cast<int32_t>(y));
  }
  return status;
}

template int32_t fill_polygon_plainly(const PaletteSurface &, const double *, const double *,
                                      int32_t);
template int32_t fill_polygon_plainly(const RgbaSurface &, const double *, const double *, int32_t);

}  // namespace quorix
