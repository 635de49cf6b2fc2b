// SPDX-License-Identifier: MIT
//
// The steps of a depth-tested line, and the forms that draw them: a plain one for every line, and
// one without branches for most lines of RGBA pixels. Both give the same bits.
#pragma once

#include "depth/depth.h"

namespace quorix {

// u is the axis that is walked, v the other one; v and z are summed up step by step.
struct LineWalk {
  bool x_major;
  int32_t first, last;  // along u
  double v, z;
  double v_step, z_step;
};

// ---- depth_line.cpp
// The line from (u0, v0, z0) to (u1, v1, z1), which are not on one u.
LineWalk walk_line(bool x_major, const double *from, const double *to);
// Any line, of opaque RGBA pixels.
void run_rgba_line_plain(const Target &t, uint32_t ink, const LineWalk &w);

// ---- depth_line_sse2.cpp
// The same for a line that is tested and lies inside the box with a pixel to spare, without a
// branch; false for any other, which is left to the plain form.
bool run_rgba_line_sse2(const Target &t, uint32_t ink, const LineWalk &w);

}  // namespace quorix
