// SPDX-License-Identifier: MIT
//
// The filters that look at the pixel on the left, one pixel a step, its samples side by side. Rows
// hold whole pixels.
//
// A source file defines what its registers can do first, then includes this:
//
//   Bytes                      up to 8 bytes; from_bits and to_bits, from and to 64 bits
//   sum, floor_mean            of two Bytes, lane by lane; sums wrap
//   Words                      the same lanes with 16 bits each: widened from Bytes, and narrowed
//                              to Bytes where they fit
//   sum, difference, lesser, greater                 of two Words, lane by lane
//   low_bytes                                        each lane's low 8 bits alone
//   choose_above(a, b, yes, no)                      yes where a > b, else no
//   same_words(a, b, count)                          whether the first `count` lanes are equal
#pragma once

#include <cstring>
#include <type_traits>

#include "imagein/png_unfilter.h"

namespace quorix {

namespace {

template <size_t pixel>
using Bits = std::conditional_t<pixel <= 4, uint32_t, uint64_t>;

// Reads up to png_row_spill bytes, of which the first `pixel` count.
template <size_t pixel>
Bytes load(const uint8_t *from) {
  Bits<pixel> bits = 0;
  std::memcpy(&bits, from, sizeof bits);
  return from_bits(bits);
}

// Writes exactly `pixel` bytes: the next ones are still filtered.
template <size_t pixel>
void store(uint8_t *to, Bytes value) {
  const auto bits = static_cast<Bits<pixel>>(to_bits(value));
  std::memcpy(to, &bits, pixel);
}

template <size_t pixel>
void take_back_sub(uint8_t *row, size_t bytes) {
  Bytes left = from_bits(0);
  for (size_t i = 0; i < bytes; i += pixel) {
    left = sum(load<pixel>(row + i), left);
    store<pixel>(row + i, left);
  }
}

template <size_t pixel>
void take_back_average(uint8_t *row, const uint8_t *above, size_t bytes) {
  Bytes left = from_bits(0);
  for (size_t i = 0; i < bytes; i += pixel) {
    left = sum(load<pixel>(row + i), floor_mean(left, load<pixel>(above + i)));
    store<pixel>(row + i, left);
  }
}

// Eight pixels of 3 bytes, six of 4, four of 6 or three of 8.
constexpr size_t stretch = 24;

bool is_zero(const uint8_t *bytes) {
  uint64_t words[3];
  std::memcpy(words, bytes, stretch);
  return (words[0] | words[1] | words[2]) == 0;
}

// The plain form says why this picks the right one. What depends on the pixel on the left is the
// way that counts, so all else is prepared beside it.
//
// Where left and upper left are the same, the pixel above is the nearest; and if nothing is added
// to it, the next pixel has the same on its left and upper left again. Rows of plots are like that.
template <size_t pixel>
void take_back_paeth(uint8_t *row, const uint8_t *above, size_t bytes) {
  Words left = widened(from_bits(0));
  Words upper_left = left;
  for (size_t i = 0; i < bytes; i += pixel) {
    while (i + stretch < bytes && is_zero(row + i) && same_words(left, upper_left, pixel)) {
      std::memcpy(row + i, above + i, stretch);
      i += stretch;
      left = upper_left = widened(load<pixel>(above + i - pixel));
    }
    const Words up = widened(load<pixel>(above + i));
    const Words three = sum(upper_left, sum(upper_left, upper_left));
    const Words threshold = difference(difference(three, up), left);
    const Words low = lesser(left, up);
    const Words high = greater(left, up);
    const Words nearest =
        choose_above(threshold, low, choose_above(high, threshold, upper_left, low), high);
    left = low_bytes(sum(widened(load<pixel>(row + i)), nearest));
    store<pixel>(row + i, narrowed(left));
    upper_left = up;
  }
}

template <size_t pixel>
void take_back(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes) {
  if (filter == png_sub) return take_back_sub<pixel>(row, bytes);
  if (filter == png_average) return take_back_average<pixel>(row, above, bytes);
  take_back_paeth<pixel>(row, above, bytes);
}

void unfilter_pixels_lanes(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                           size_t pixel) {
  switch (pixel) {
    case 3:
      return take_back<3>(filter, row, above, bytes);
    case 4:
      return take_back<4>(filter, row, above, bytes);
    case 6:
      return take_back<6>(filter, row, above, bytes);
    default:
      return take_back<8>(filter, row, above, bytes);
  }
}

}  // namespace

}  // namespace quorix
