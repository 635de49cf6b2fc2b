// SPDX-License-Identifier: MIT
//
// Depth-tested lines of RGBA pixels without a branch: whether a pixel passes is hard to foresee,
// and its depth comes late from memory, so both outcomes are selected by masks and the next steps
// need not wait.
#include "base/processor.h"

#if QUORIX_X86_64

#include <emmintrin.h>

#include <cmath>

#include "depth/depth_line.h"

namespace quorix {

namespace {

// The sums of a line this short stray from it by far less than a pixel.
constexpr int32_t most_steps = 1 << 20;

bool lies_inside(const Rect &box, const LineWalk &w) {
  const double end = w.v + w.v_step * (static_cast<double>(w.last) - w.first);
  const double low = (w.x_major ? box.y1 : box.x1) + 1.0;
  const double high = (w.x_major ? box.y2 : box.x2) - 1.0;
  const int32_t u_low = w.x_major ? box.x1 : box.y1;
  const int32_t u_high = w.x_major ? box.x2 : box.y2;
  return w.first >= u_low && w.last <= u_high && w.first <= w.last &&
         w.last - w.first <= most_steps && w.v >= low && w.v <= high && end >= low && end <= high;
}

// Where z passes becomes z and the ink, elsewhere both stay.
inline void step_pixel(float *depth, uint32_t *pixel, uint32_t ink, double z, __m128d bias) {
  const __m128d zs = _mm_set_sd(z);
  const __m128 old = _mm_load_ss(depth);
  const __m128d pass = _mm_cmpge_sd(_mm_cvtss_sd(zs, old), _mm_sub_sd(zs, bias));
  const __m128 mask = _mm_castpd_ps(pass);
  const __m128 depths =
      _mm_or_ps(_mm_and_ps(mask, _mm_cvtsd_ss(old, zs)), _mm_andnot_ps(mask, old));
  _mm_store_ss(depth, depths);
  const auto bits = static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_castpd_si128(pass)));
  *pixel = (ink & bits) | (*pixel & ~bits);
}

}  // namespace

bool run_rgba_line_sse2(const Target &t, uint32_t ink, const LineWalk &w) {
  if (t.depth == nullptr || !lies_inside(t.box, w)) return false;
  const auto pitch = static_cast<ptrdiff_t>(t.bitmap.row_bytes / sizeof(uint32_t));
  auto *pixels = reinterpret_cast<uint32_t *>(t.bitmap.base);
  // What one step along each axis adds to a place.
  const ptrdiff_t pixel_u = w.x_major ? 1 : pitch;
  const ptrdiff_t pixel_v = w.x_major ? pitch : 1;
  const ptrdiff_t depth_u = w.x_major ? 1 : t.depth_pitch;
  const ptrdiff_t depth_v = w.x_major ? t.depth_pitch : 1;
  const __m128d bias = _mm_set_sd(static_cast<double>(t.context->depth.depth_bias));
  uint32_t *pixel_row = pixels + w.first * pixel_u;
  float *depth_row = t.depth + w.first * depth_u;
  double v = w.v;
  double z = w.z;
  // A steep line comes to other memory with every step, which takes some dozen steps to arrive.
  constexpr int32_t ahead = 24;
  const double v_ahead = w.v_step * ahead;
  for (int32_t steps = w.last - w.first;; --steps) {
    const ptrdiff_t iv = _mm_cvttsd_si32(_mm_set_sd(v + 0.5));
    step_pixel(depth_row + iv * depth_v, pixel_row + iv * pixel_v, ink, z, bias);
    if (steps == 0) return true;
    if (steps > ahead) {
      const ptrdiff_t far = _mm_cvttsd_si32(_mm_set_sd(v + v_ahead));
      __builtin_prefetch(depth_row + depth_u * ahead + far * depth_v, 1);
      __builtin_prefetch(pixel_row + pixel_u * ahead + far * pixel_v, 1);
    }
    v += w.v_step;
    z += w.z_step;
    pixel_row += pixel_u;
    depth_row += depth_u;
  }
}

}  // namespace quorix

#endif
