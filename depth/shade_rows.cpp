// SPDX-License-Identifier: MIT
//
// The choice between the plain spans, which draw anything, and those of the processor, which draw
// opaque RGBA pixels between tame corners. Both give the same bits.
#include <cmath>

#include "base/processor.h"
#include "depth/shade.h"
#include "raster/surface.h"

namespace quorix {

namespace {

// Null where the plain form is the only one.
ShadeRgbaRows best_rgba_rows() {
  if constexpr (compiled_for_x86_64) {
    return processor().avx2 ? shade_rows_avx2 : shade_rows_sse2;
  } else {
    return nullptr;
  }
}

bool is_opaque_rgba(const Target &t) {
  const OutputContext *context = t.context;
  const bool swapped =
      context->page.white_background != 0 && context->options.swap_black_white != 0;
  return t.bitmap.order == PixelOrder::rgba && context->depth.alpha_blend_on == 0 && !swapped;
}

}  // namespace

bool is_tame(const ShadePoint &p) {
  return std::abs(p.v[shade_x]) < tame_limit && std::abs(p.v[shade_red]) < tame_limit &&
         std::abs(p.v[shade_green]) < tame_limit && std::abs(p.v[shade_blue]) < tame_limit;
}

RgbaRows rgba_rows(const Target &t) {
  const auto pitch = static_cast<ptrdiff_t>(t.bitmap.row_bytes / sizeof(uint32_t));
  return {reinterpret_cast<uint32_t *>(t.bitmap.base),
          pitch,
          t.depth,
          t.depth_pitch,
          t.box.x1,
          t.box.x2,
          t.page.x2,
          pack_rgba(0, 0, 0, t.context->colours.colour_alpha)};
}

void shade_rows(const Target &t, bool tame, ShadeEdges *edges, int32_t first, int32_t last) {
  static const ShadeRgbaRows shade_rgba_rows = best_rgba_rows();
  if (shade_rgba_rows != nullptr && tame && is_opaque_rgba(t)) {
    shade_rgba_rows(rgba_rows(t), edges, first, last);
  } else {
    shade_rows_plain(t, edges, first, last);
  }
}

}  // namespace quorix
