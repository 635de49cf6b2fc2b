// SPDX-License-Identifier: MIT
//
// Rows of samples that go through a table of colours.
//
// Colours are words, alpha << 24 | blue << 16 | green << 8 | red, and are written as such: the
// fourth byte of each is overwritten by the next pixel, so there must be room for one byte more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quorix {

inline uint32_t colour_word(uint8_t red, uint8_t green, uint8_t blue) {
  return uint32_t{blue} << 16 | uint32_t{green} << 8 | red;
}

inline uint32_t grey_word(uint32_t grey) {
  return grey * 0x010101U;
}

inline void put_colour(uint8_t *rgb, size_t pixel, uint32_t colour) {
  std::memcpy(rgb + 3 * pixel, &colour, sizeof colour);
}

inline void put_colours(const uint32_t *colours, const uint8_t *samples, size_t count,
                        uint8_t *rgb) {
  for (size_t i = 0; i < count; ++i)
    put_colour(rgb, i, colours[samples[i]]);
}

// One sample a byte, from `count` samples of 1, 2 or 4 bits, the first of a byte in its high bits.
// Writes up to unpack_spill bytes behind the last.
inline constexpr size_t unpack_spill = 7;
void unpack_samples(const uint8_t *row, int bits, size_t count, uint8_t *samples);

}  // namespace quorix
