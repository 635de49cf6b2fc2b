// SPDX-License-Identifier: MIT
//
// The filters byte by byte, and the choice between this form and the wide one.
#include "imagein/png_unfilter.h"

#include <algorithm>

#include "base/processor.h"

namespace quorix {

namespace {

uint8_t sum(int a, int b) {
  return static_cast<uint8_t>((a + b) & 255);
}

// Of left, above and upper left the one that is nearest to left + above - upper_left; the first of
// several. That value lies beyond the larger of left and above, below the smaller, or between: the
// comparison with 3 * upper_left says which, without the three distances.
int paeth(int left, int above, int upper_left) {
  const int threshold = 3 * upper_left - (left + above);
  const int low = std::min(left, above);
  const int high = std::max(left, above);
  if (threshold <= low) return high;
  return threshold >= high ? low : upper_left;
}

void take_back_sub(uint8_t *row, size_t bytes, size_t pixel) {
  for (size_t i = pixel; i < bytes; ++i)
    row[i] = sum(row[i], row[i - pixel]);
}

void take_back_up(uint8_t *__restrict row, const uint8_t *__restrict above, size_t bytes) {
  for (size_t i = 0; i < bytes; ++i)
    row[i] = sum(row[i], above[i]);
}

void take_back_average(uint8_t *row, const uint8_t *above, size_t bytes, size_t pixel) {
  const size_t first = std::min(bytes, pixel);
  for (size_t i = 0; i < first; ++i)
    row[i] = sum(row[i], above[i] / 2);
  for (size_t i = first; i < bytes; ++i)
    row[i] = sum(row[i], (row[i - pixel] + above[i]) / 2);
}

// Beside the first pixel stand zeros, of which `above` is always the nearest.
void take_back_paeth(uint8_t *row, const uint8_t *above, size_t bytes, size_t pixel) {
  const size_t first = std::min(bytes, pixel);
  take_back_up(row, above, first);
  for (size_t i = first; i < bytes; ++i)
    row[i] = sum(row[i], paeth(row[i - pixel], above[i], above[i - pixel]));
}

bool looks_left(uint8_t filter) {
  return filter == png_sub || filter == png_average || filter == png_paeth;
}

}  // namespace

void unfilter_png_row_plainly(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                              size_t pixel) {
  switch (filter) {
    case png_sub:
      return take_back_sub(row, bytes, pixel);
    case png_up:
      return take_back_up(row, above, bytes);
    case png_average:
      return take_back_average(row, above, bytes, pixel);
    case png_paeth:
      return take_back_paeth(row, above, bytes, pixel);
    default:
      return;
  }
}

void unfilter_png_row(uint8_t filter, uint8_t *row, const uint8_t *above, size_t bytes,
                      size_t pixel) {
  if (looks_left(filter) && pixel >= 3) {
    if constexpr (compiled_for_x86_64) {
      return unfilter_pixels_sse2(filter, row, above, bytes, pixel);
    }
    if constexpr (compiled_for_arm64) {
      return unfilter_pixels_neon(filter, row, above, bytes, pixel);
    }
  }
  unfilter_png_row_plainly(filter, row, above, bytes, pixel);
}

}  // namespace quorix
