// SPDX-License-Identifier: MIT
//
// Rectangles and long runs: in which way this processor fills them is decided here, once for a
// shape and not once for a row.
#include "raster/fill_run.h"

namespace quorix {

namespace {

// With 32-byte stores, if rows of so many bytes are worth them and the processor has them.
bool fill_widely(const Rows<uint8_t> &rows, uint32_t four_bytes) {
  if constexpr (compiled_for_x86_64) {
    static const bool has_wide_stores = processor().avx;
    if (has_wide_stores && rows.width >= avx_bytes) {
      fill_rows_avx(rows, four_bytes);
      return true;
    }
  }
  return false;
}

Rows<uint8_t> in_bytes(const Rows<uint32_t> &rows) {
  constexpr size_t pixel = sizeof(uint32_t);
  return {reinterpret_cast<uint8_t *>(rows.first), rows.pitch * static_cast<ptrdiff_t>(pixel),
          rows.width * pixel, rows.rows};
}

}  // namespace

template <class Pixel>
void fill_rows_plainly(const Rows<Pixel> &rows, Pixel ink) {
  Pixel *row = rows.first;
  for (size_t i = 0; i < rows.rows; ++i, row += rows.pitch)
    fill_run(row, rows.width, ink);
}

template void fill_rows_plainly(const Rows<uint8_t> &, uint8_t);
template void fill_rows_plainly(const Rows<uint32_t> &, uint32_t);

void fill_rows(const Rows<uint8_t> &rows, uint8_t ink) {
  if (!fill_widely(rows, 0x01010101U * ink)) fill_rows_plainly(rows, ink);
}

void fill_rows(const Rows<uint32_t> &rows, uint32_t ink) {
  if (!fill_widely(in_bytes(rows), ink)) fill_rows_plainly(rows, ink);
}

void fill_long_run(uint32_t *to, size_t count, uint32_t ink) {
  if (!fill_widely(in_bytes({to, 0, count, 1}), ink)) fill_by_fours(to, count, ink);
}

}  // namespace quorix
