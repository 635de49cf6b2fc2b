// SPDX-License-Identifier: MIT
//
// PNG filters with NEON; see png_unfilter_lanes.h.
#include "base/processor.h"

#if QUORIX_ARM64

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

namespace quorix {

namespace {

struct Bytes {
  uint8x8_t v;
};

struct Words {
  int16x8_t v;
};

inline Bytes from_bits(uint64_t bits) {
  return {vcreate_u8(bits)};
}

inline uint64_t to_bits(Bytes a) {
  return vget_lane_u64(vreinterpret_u64_u8(a.v), 0);
}

inline Bytes sum(Bytes a, Bytes b) {
  return {vadd_u8(a.v, b.v)};
}

inline Bytes floor_mean(Bytes a, Bytes b) {
  return {vhadd_u8(a.v, b.v)};
}

inline Words widened(Bytes a) {
  return {vreinterpretq_s16_u16(vmovl_u8(a.v))};
}

inline Bytes narrowed(Words a) {
  return {vmovn_u16(vreinterpretq_u16_s16(a.v))};
}

inline Words low_bytes(Words a) {
  return {vandq_s16(a.v, vdupq_n_s16(255))};
}

inline Words sum(Words a, Words b) {
  return {vaddq_s16(a.v, b.v)};
}

inline Words difference(Words a, Words b) {
  return {vsubq_s16(a.v, b.v)};
}

inline Words lesser(Words a, Words b) {
  return {vminq_s16(a.v, b.v)};
}

inline Words greater(Words a, Words b) {
  return {vmaxq_s16(a.v, b.v)};
}

inline Words choose_above(Words a, Words b, Words yes, Words no) {
  return {vbslq_s16(vcgtq_s16(a.v, b.v), yes.v, no.v)};
}

inline bool same_words(Words a, Words b, size_t count) {
  const uint64_t different = ~to_bits({vmovn_u16(vceqq_s16(a.v, b.v))});
  return different << 8 * (8 - count) == 0;
}

}  // namespace

}  // namespace quorix

#include "imagein/png_unfilter_lanes.h"

namespace quorix {

void unfilter_pixels_neon(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                          size_t pixel) {
  unfilter_pixels_lanes(filter, row, above, bytes, pixel);
}

}  // namespace quorix

#endif
