// SPDX-License-Identifier: MIT
//
// The plain form of interpolation, and the choice of the form to use.
#include "imagein/scale.h"

#include "base/numbers.h"
#include "base/processor.h"

namespace quorix {

namespace {

// `pixel` points at the upper left component, `below` at the lower left, `step` leads to the right.
struct Weights {
  double a, b, c, d;
};

inline Weights weights_at(const ScaleRow &row, const ScaleColumn &column) {
  return {row.rest * column.rest, row.rest * column.share, column.rest * row.share,
          row.share * column.share};
}

inline uint8_t mix(const Weights &w, const uint8_t *upper, const uint8_t *lower, size_t step) {
  const double sum = w.a * upper[0] + w.b * upper[step] + w.c * lower[0] + w.d * lower[step];
  return static_cast<uint8_t>(static_cast<int32_t>(sum));
}

}  // namespace

ScalePlace scale_place(int32_t target, int32_t target_size, int32_t source_size) {
  if (source_size == 1 || target_size == 1) return {0, 0.0};
  const double place = static_cast<double>(target) * (source_size - 1.0) / (target_size - 1.0);
  const int32_t index = to_int32(place);
  if (index >= source_size - 1) return {source_size - 2, 1.0};
  return {index, place - index};
}

void scale_rgb_plain(const ScaleRow &row, const ScaleColumn *columns, size_t count, uint8_t *to) {
  for (size_t i = 0; i < count; ++i, to += 3) {
    const Weights w = weights_at(row, columns[i]);
    const uint8_t *const upper = row.upper + 3 * columns[i].index;
    const uint8_t *const lower = row.lower + 3 * columns[i].index;
    for (size_t k = 0; k < 3; ++k)
      to[k] = mix(w, upper + k, lower + k, 3);
  }
}

void scale_alpha(const ScaleRow &row, const ScaleColumn *columns, size_t count, uint8_t *to) {
  for (size_t i = 0; i < count; ++i) {
    const Weights w = weights_at(row, columns[i]);
    to[i] = mix(w, row.upper + columns[i].index, row.lower + columns[i].index, 1);
  }
}

ScaleRgb scale_rgb() {
  if constexpr (compiled_for_x86_64) {
    if (processor().avx2) return scale_rgb_avx2;
  }
  return scale_rgb_plain;
}

}  // namespace quorix
