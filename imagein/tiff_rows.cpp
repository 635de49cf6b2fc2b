// SPDX-License-Identifier: MIT
//
// Samples of grey, RGB and palette pictures as RGB, each kind by its own conversion.
//
// Kept: photometric 0, where white is 0, turns only the ends of the scale; a sample's size follows
// the first of its counts, so pixels whose bits the file states wrong are read as it states them;
// the file's byte order shows through RGB of 16 bits; grey of 16 bits, palettes of 1 bit and RGB of
// 1 or 32 bits are not converted, nor are integers of 32 bits.
#include "imagein/tiff_rows.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "base/numbers.h"
#include "imagein/samples.h"

namespace quorix {

namespace {

constexpr size_t float_bytes = 4;
constexpr size_t row_slack = 16;

bool is_grey(const TiffFile &tiff) {
  return tiff.photometric <= tiff_black_is_zero;
}

uint8_t turned_extremes(const TiffFile &tiff, uint8_t grey) {
  if (tiff.photometric != tiff_white_is_zero) return grey;
  if (grey == 0) return 255;
  return grey == 255 ? uint8_t{0} : grey;
}

// ---- tables

// A sample of `bits` bits as a byte.
uint8_t scaled(uint32_t bits, uint32_t sample) {
  return static_cast<uint8_t>(sample * (255 / ((1U << bits) - 1)));
}

void fill_greys(TiffRows *rows) {
  const TiffFile &tiff = *rows->tiff;
  for (uint32_t i = 0; i < 1U << tiff.bits; ++i)
    rows->colours[i] = grey_word(turned_extremes(tiff, scaled(tiff.bits, i)));
}

void fill_map(TiffRows *rows) {
  const TiffFile &tiff = *rows->tiff;
  for (uint32_t i = 0; i < 256; ++i) {
    const size_t index = i < tiff.map_entries ? i : 0;
    rows->colours[i] = colour_word(tiff.map[0][index], tiff.map[1][index], tiff.map[2][index]);
  }
}

void note_bad_indices(TiffRows *rows, const uint8_t *samples, size_t count) {
  uint8_t largest = 0;
  for (size_t i = 0; i < count; ++i)
    largest = std::max(largest, samples[i]);
  rows->bad_index = rows->bad_index || largest >= rows->tiff->map_entries;
}

void convert_tabled(TiffRows *rows, const uint8_t *bytes, size_t count) {
  const TiffFile &tiff = *rows->tiff;
  const uint8_t *samples = bytes;
  if (tiff.bits < 8) {
    unpack_samples(bytes, static_cast<int>(tiff.bits), count, rows->samples.get());
    samples = rows->samples.get();
    if (tiff.photometric == tiff_palette) note_bad_indices(rows, samples, count);
  }
  put_colours(rows->colours, samples, count, rows->rgb.get());
}

// ---- floats

double float_at(const TiffFile &tiff, const uint8_t *bytes) {
  uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  if (tiff.order == ByteOrder::big) word = __builtin_bswap32(word);
  return static_cast<double>(std::bit_cast<float>(word));
}

// A picture of one value is all 0, and so is what is no number.
void convert_floats(TiffRows *rows, const uint8_t *bytes, size_t count) {
  const double range = rows->maximum - rows->minimum;
  for (size_t i = 0; i < count; ++i) {
    const double value = float_at(*rows->tiff, bytes + float_bytes * i);
    const bool scalable = range > 0 && !std::isnan(value);
    const uint8_t grey = to_byte(scalable ? (value - rows->minimum) * 255 / range + 0.5 : 0.0);
    put_colour(rows->rgb.get(), i, grey_word(turned_extremes(*rows->tiff, grey)));
  }
}

// ---- RGB

void convert_rgb(TiffRows *rows, const uint8_t *bytes, size_t count) {
  const uint32_t bits = rows->tiff->bits;
  uint8_t *const rgb = rows->rgb.get();
  const size_t samples = rgb_bytes * count;
  if (bits == 16) {
    for (size_t i = 0; i < samples; ++i)
      rgb[i] = bytes[2 * i];
    return;
  }
  unpack_samples(bytes, static_cast<int>(bits), samples, rgb);
  for (size_t i = 0; i < samples; ++i)
    rgb[i] = scaled(bits, rgb[i]);
}

// ---- which of them

enum class Conversion : uint8_t { none, tabled, floats, rgb, copied };

Conversion conversion_of(const TiffFile &tiff) {
  if (has_float_pixels(tiff)) return Conversion::floats;
  if (tiff.photometric != tiff_rgb) {
    const bool known = tiff.bits <= 8 && (is_grey(tiff) || tiff.bits != 1);
    return known ? Conversion::tabled : Conversion::none;
  }
  if (tiff.bits == 8) return Conversion::copied;
  const bool known = tiff.bits == 2 || tiff.bits == 4 || tiff.bits == 16;
  return known ? Conversion::rgb : Conversion::none;
}

size_t convert(TiffRows *rows, Conversion conversion, const TiffRow &row, size_t pixels) {
  const TiffFile &tiff = *rows->tiff;
  const size_t pixel_bits = size_t{tiff.bits} * (tiff.photometric == tiff_rgb ? 3 : 1);
  const size_t count = std::min(pixels, row.count * 8 / pixel_bits);
  switch (conversion) {
    case Conversion::tabled:
      convert_tabled(rows, row.bytes, count);
      return count;
    case Conversion::floats:
      convert_floats(rows, row.bytes, count);
      return count;
    case Conversion::rgb:
      convert_rgb(rows, row.bytes, count);
      return count;
    case Conversion::copied:
      std::memcpy(rows->rgb.get(), row.bytes, rgb_bytes * count);
      return count;
    default:
      return 0;
  }
}

}  // namespace

bool prepare_tiff_rows(const TiffFile &tiff, TiffRows *rows) {
  *rows = {};
  rows->tiff = &tiff;
  rows->minimum = std::numeric_limits<double>::infinity();
  rows->maximum = -rows->minimum;
  if (is_grey(tiff) && tiff.bits <= 8) fill_greys(rows);
  if (tiff.photometric == tiff_palette) fill_map(rows);
  const auto width = static_cast<size_t>(std::min<int64_t>(tiff.block_width, tiff.width));
  rows->rgb = allocate_zeroed_array<uint8_t>(rgb_bytes * width + row_slack);
  if (rows->rgb == nullptr) return false;
  const bool shares_bytes = tiff.bits < 8 && tiff.photometric != tiff_rgb;
  if (!shares_bytes) return true;
  rows->samples = allocate_array<uint8_t>(width + row_slack);
  return rows->samples != nullptr;
}

bool is_rgb_already(const TiffFile &tiff) {
  return conversion_of(tiff) == Conversion::copied && tiff.total_bits == 8 * rgb_bytes;
}

void find_extremes(TiffRows *rows, const TiffRow &row) {
  for (size_t i = 0; i < row.count / float_bytes; ++i) {
    const double value = float_at(*rows->tiff, row.bytes + float_bytes * i);
    if (value < rows->minimum) rows->minimum = value;  // neither is true of what is no number
    if (value > rows->maximum) rows->maximum = value;
  }
}

const uint8_t *convert_tiff_row(TiffRows *rows, const TiffRow &row, int64_t *pixels) {
  const TiffFile &tiff = *rows->tiff;
  const size_t held = row.count * 8 / tiff.total_bits;
  const size_t count = std::min(held, static_cast<size_t>(*pixels));
  *pixels = static_cast<int64_t>(count);
  const Conversion conversion = conversion_of(tiff);
  const bool complete = conversion == Conversion::copied && row.count / rgb_bytes >= count;
  if (complete) return row.bytes;
  const size_t converted = convert(rows, conversion, row, count);
  std::memset(rows->rgb.get() + rgb_bytes * converted, 0, rgb_bytes * (count - converted));
  return rows->rgb.get();
}

}  // namespace quorix
