// SPDX-License-Identifier: MIT
//
// Literal depth renderer: lines.

#include <cmath>
#include <cstdlib>

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

namespace {

void line_pixel(LiteralDepth &record, int32_t device, int64_t x, int64_t y, double z, Rgb rgb) {
  if (!in_clip(record.raster, x, y)) return;
  if (!has_pixel(record, device, x, y)) return;
  if (tests_depth(record)) {
    if (!has_depth(record, x, y)) return;
    const double there = depth_at(record, x, y);
    const double bias = record.raster.depth_bias;
    if (!(there >= z - bias)) return;
  }
  put_rgb(record, device, x, y, rgb);
  if (tests_depth(record)) depth_at(record, x, y) = static_cast<float>(z);
}

void line_in_opengl(LiteralDepth &record, const double *x, const double *y, int32_t colour,
                    const double *z) {
  call(record, "set_colour", {double(colour)});
  begin(record, 3);
  for (int i = 0; i < 2; ++i) {
    call_floats(record, "glVertex3f",
                {static_cast<float>(x[i]), static_cast<float>(record.raster.height - 1 - y[i]),
                 static_cast<float>(z[i] - 0.001F)});
  }
  end(record);
}

// The walk along the axis on which the ends lie farther apart. `major` and `minor` are the ends'
// coordinates on the two axes.
void walk(LiteralDepth &record, int32_t device, const double *major, const double *minor,
          const double *z, Rgb rgb, bool along_y) {
  const int start = major[0] >= major[1] ? 1 : 0;
  const int finish = 1 - start;
  const int64_t first = rounded(major[start]);
  const int64_t last = rounded(major[finish]);
  const double n = static_cast<double>(last - first);
  const double minor_step = (minor[finish] - minor[start]) / n;
  const double z_step = (z[finish] - z[start]) / n;
  double m = minor[start];
  double depth = z[start];
  // Nothing of what comes after them is seen.
  const int64_t end = along_y ? last_row(record, device) : last_column(record, device);
  for (int64_t i = first; i <= last && i <= end; ++i) {
    const int64_t across = rounded(m);
    const int64_t px = along_y ? across : i;
    const int64_t py = along_y ? i : across;
    line_pixel(record, device, px, py, depth, rgb);
    m += minor_step;
    depth += z_step;
  }
}

}  // namespace

int32_t qqzlin2(LiteralDepth &record, const double *x, const double *y, int32_t colour,
                const double *z, int32_t device) {
  if (!record.raster.exists) return 0;
  if (forwards(record)) {
    line_in_opengl(record, x, y, colour, z);
    return 0;
  }
  const Rgb rgb = resolved(record.raster, colour);
  const int64_t ix0 = rounded(x[0]);
  const int64_t iy0 = rounded(y[0]);
  const int64_t ix1 = rounded(x[1]);
  const int64_t iy1 = rounded(y[1]);
  if (ix0 == ix1 && iy0 == iy1) {
    line_pixel(record, device, ix0, iy0, z[0], rgb);
    return 0;
  }
  if (std::abs(ix1 - ix0) <= std::abs(iy1 - iy0)) {
    walk(record, device, y, x, z, rgb, true);
  } else {
    walk(record, device, x, y, z, rgb, false);
  }
  return 0;
}

int32_t qqzlin(LiteralDepth &record, const int32_t *x, const int32_t *y, int32_t colour,
               const double *z, int32_t device) {
  const double xs[2] = {double(x[0]), double(x[1])};
  const double ys[2] = {double(y[0]), double(y[1])};
  return qqzlin2(record, xs, ys, colour, z, device);
}

}  // namespace quorix::literal
