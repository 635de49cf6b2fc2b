// SPDX-License-Identifier: MIT
// The library and the literal raster as drawing targets.

#include "tests/raster/drawing_targets.h"

#include "quorix/quorix.h"
#include "tests/support/memory_files.h"

namespace quorix::drawings {

namespace {

int32_t library_write_file(std::vector<uint8_t> *bytes, int32_t *status) {
  testing::MemoryFiles files;
  const int32_t result = qqvfil("drawing", 0, status);
  bytes->clear();
  if (files.exists("drawing")) *bytes = files.bytes("drawing");
  return result;
}

int32_t library_read_file(const std::vector<uint8_t> &bytes, int32_t *status) {
  testing::MemoryFiles files;
  files.put("drawing", bytes);
  return qqvfil("drawing", 1, status);
}

int32_t library_option(int32_t option, int32_t *value, int32_t set) {
  return qqwwid(option, value, set);
}

literal::LiteralRaster the_record;

}  // namespace

const DrawingTarget &library_target() {
  static const DrawingTarget target{"library",
                                    qqvini,
                                    qqvfin,
                                    qqvers,
                                    qqvclr,
                                    qqvvlt,
                                    qqvptr,
                                    qqvwin,
                                    qqvcrp,
                                    qqvlin,
                                    qqvdrw,
                                    qqvfll,
                                    qqvpix,
                                    qqvpol,
                                    qqvsym,
                                    qqvftr,
                                    qqvwpx,
                                    qqvrow,
                                    qqvrpx,
                                    qqvrdr,
                                    library_write_file,
                                    library_read_file,
                                    library_option,
                                    qqwfree};
  return target;
}

const literal::LiteralRaster &literal_record() {
  return the_record;
}

const DrawingTarget &literal_target() {
  using i32 = int32_t;
  static const DrawingTarget target{
      "literal raster",
      [](i32 pw, i32 ph, i32 *w, i32 *h, i32 have, i32 *status) {
        return literal::qqvini(the_record, pw, ph, w, h, have, status);
      },
      [] { return literal::qqvfin(the_record); },
      [] { return literal::qqvers(the_record); },
      [](i32 colour) { return literal::qqvclr(the_record, colour); },
      [](uint8_t kind, const uint32_t *table) { return literal::qqvvlt(the_record, kind, table); },
      [](uint8_t **bytes) { return literal::qqvptr(the_record, bytes); },
      [](const i32 *x, const i32 *y, const i32 *w, const i32 *h, i32 *status) {
        return literal::qqvwin(the_record, x, y, w, h, status);
      },
      [](i32 *x1, i32 *y1, i32 *x2, i32 *y2) {
        return literal::qqvcrp(the_record, x1, y1, x2, y2);
      },
      [](i32 x1, i32 y1, i32 x2, i32 y2) { return literal::qqvlin(the_record, x1, y1, x2, y2); },
      [](i32 x, i32 y, i32 code) { return literal::qqvdrw(the_record, x, y, code); },
      [](i32 x1, i32 y1, i32 x2, i32 y2, i32 colour) {
        return literal::qqvfll(the_record, x1, y1, x2, y2, colour);
      },
      [](i32 x, i32 y, i32 colour) { return literal::qqvpix(the_record, x, y, colour); },
      [](const double *xs, const double *ys, const i32 *n, i32 *status) {
        return literal::qqvpol(the_record, xs, ys, n, status);
      },
      [](i32 symbol, i32 x, i32 y, i32 size) {
        return literal::qqvsym(the_record, symbol, x, y, size);
      },
      [](const i32 *xs, const i32 *ys, i32 colour) {
        return literal::qqvftr(the_record, xs, ys, colour);
      },
      [](i32 x, i32 y, i32 colour) { return literal::qqvwpx(the_record, x, y, colour); },
      [](const uint8_t *buffer, i32 x, i32 y, i32 n) {
        return literal::qqvrow(the_record, buffer, x, y, n);
      },
      [](i32 x, i32 y, i32 *colour) { return literal::qqvrpx(the_record, x, y, colour); },
      [](uint8_t *buffer, i32 x, i32 y, i32 n, i32 rows) {
        return literal::qqvrdr(the_record, buffer, x, y, n, rows);
      },
      [](std::vector<uint8_t> *file, i32 *status) {
        return literal::write_file(the_record, file, status);
      },
      [](const std::vector<uint8_t> &file, i32 *status) {
        return literal::read_file(the_record, file, status);
      },
      [](i32 option, i32 *value, i32 set) {
        return literal::qqwwid(the_record, option, value, set);
      },
      [] { return literal::qqwfree(the_record); }};
  return target;
}

}  // namespace quorix::drawings
