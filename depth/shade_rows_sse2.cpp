// SPDX-License-Identifier: MIT
//
// Shaded spans of opaque RGBA pixels with SSE2.
#include "base/processor.h"

#if QUORIX_X86_64

#include <cstring>

#include "depth/lanes_sse2.h"
//
#include "depth/shade_rows_lanes.h"

namespace quorix {

void shade_rows_sse2(const RgbaRows &rows, ShadeEdges *edges, int32_t first, int32_t last) {
  shade_rows_lanes(rows, edges, first, last);
}

}  // namespace quorix

#endif
