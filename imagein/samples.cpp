// SPDX-License-Identifier: MIT
//
// Samples of less than a byte, spread to a byte each.
#include "imagein/samples.h"

namespace quorix {

namespace {

template <size_t bits>
void unpack(const uint8_t *row, size_t count, uint8_t *samples) {
  constexpr size_t per_byte = 8 / bits;
  const size_t bytes = (count + per_byte - 1) / per_byte;
  for (size_t i = 0; i < bytes; ++i) {
    for (size_t k = 0; k < per_byte; ++k)
      samples[per_byte * i + k] =
          static_cast<uint8_t>(row[i] >> (8 - bits * (k + 1)) & ((1 << bits) - 1));
  }
}

}  // namespace

void unpack_samples(const uint8_t *row, int bits, size_t count, uint8_t *samples) {
  if (bits == 1) unpack<1>(row, count, samples);
  if (bits == 2) unpack<2>(row, count, samples);
  if (bits == 4) unpack<4>(row, count, samples);
}

}  // namespace quorix
