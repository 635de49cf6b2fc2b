// SPDX-License-Identifier: MIT
//
// Long runs of one RGBA pixel: with 32-byte stores where the processor has them.
#include "raster/surface.h"

namespace quorix {

void fill_long_run(uint32_t *to, size_t count, uint32_t ink) {
  if constexpr (compiled_for_x86_64) {
    static const bool has_wide_stores = processor().avx;
    if (has_wide_stores) return fill_long_run_avx(to, count, ink);
  }
  fill_by_fours(to, count, ink);
}

}  // namespace quorix
