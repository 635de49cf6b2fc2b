// SPDX-License-Identifier: MIT
//
// Runs of one colour, and rows of them: what every filled shape comes down to.
//
// Most runs are short, so these store a few wide words that may overlap instead of looping over
// pixels. Long runs and rectangles take 32 bytes a store where the processor can.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/processor.h"

namespace quorix {

template <class Word>
void store_word(void *to, Word word) {
  std::memcpy(to, &word, sizeof(word));
}

// 16 bytes: one store on processors with SIMD, several elsewhere.
typedef uint32_t FourPixels __attribute__((vector_size(16)));

// At least 4 pixels, 4 at a time.
inline void fill_by_fours(uint32_t *to, size_t count, uint32_t ink) {
  const FourPixels four = {ink, ink, ink, ink};
  uint32_t *const last = to + count - 4;
  for (; to < last; to += 4)
    store_word(to, four);
  store_word(last, four);
}

// For at least `long_run` pixels; fill_rows.cpp.
inline constexpr size_t long_run = 64;
void fill_long_run(uint32_t *to, size_t count, uint32_t ink);

inline void fill_run(uint32_t *to, size_t count, uint32_t ink) {
  if (count < 4) {
    const uint64_t two = ink | static_cast<uint64_t>(ink) << 32;
    if (count == 1) {
      *to = ink;
    } else if (count > 1) {
      store_word(to, two);
      store_word(to + count - 2, two);
    }
    return;
  }
  if (count >= long_run) return fill_long_run(to, count, ink);
  fill_by_fours(to, count, ink);
}

inline void fill_run(uint8_t *to, size_t count, uint8_t ink) {
  const uint64_t eight = 0x0101010101010101ULL * ink;
  if (count > 32) {
    std::memset(to, ink, count);
  } else if (count >= 8) {
    for (size_t i = 0; i + 8 < count; i += 8)
      store_word(to + i, eight);
    store_word(to + count - 8, eight);
  } else if (count >= 4) {
    store_word(to, static_cast<uint32_t>(eight));
    store_word(to + count - 4, static_cast<uint32_t>(eight));
  } else {
    for (size_t i = 0; i < count; ++i)
      to[i] = ink;
  }
}

// A rectangle: `rows` runs of `width` pixels, `pitch` pixels apart.
template <class Pixel>
struct Rows {
  Pixel *first;
  ptrdiff_t pitch;
  size_t width, rows;
};

void fill_rows(const Rows<uint8_t> &rows, uint8_t ink);
void fill_rows(const Rows<uint32_t> &rows, uint32_t ink);

// The same row by row, which runs everywhere.
template <class Pixel>
void fill_rows_plainly(const Rows<Pixel> &rows, Pixel ink);

// The same with 32-byte stores, all measures in bytes; fill_rows_avx.cpp. A row has at least 32
// bytes. `four_bytes` repeats, and starts anew with every row.
inline constexpr size_t avx_bytes = 32;
void fill_rows_avx(const Rows<uint8_t> &rows, uint32_t four_bytes);

}  // namespace quorix
