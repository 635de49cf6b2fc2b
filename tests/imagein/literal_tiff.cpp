// SPDX-License-Identifier: MIT
//
// What the reader must make of the decoded strips and tiles of a TIFF picture, one step at a time.
#include <bit>
#include <cmath>

#include "tests/imagein/tiff_files.h"

namespace quorix::testing {

namespace {

struct Reading {
  const TiffPicture &picture;
  std::vector<Bytes> blocks;  // predictor undone
  double minimum = 0;
  double maximum = 0;
  bool bad_index = false;
};

float float_at(const TiffPicture &picture, const Bytes &block, size_t at) {
  uint32_t word = 0;
  for (size_t i = 0; i < 4; ++i)
    word |= uint32_t{block[at + (picture.big_endian ? 3 - i : i)]} << (8 * i);
  return std::bit_cast<float>(word);
}

void find_extremes(Reading *r) {
  bool any = false;
  for (const Bytes &block : r->blocks) {
    for (size_t at = 0; at + 4 <= block.size(); at += 4) {
      const double value = float_at(r->picture, block, at);
      if (std::isnan(value)) continue;
      if (!any || value < r->minimum) r->minimum = value;
      if (!any || value > r->maximum) r->maximum = value;
      any = true;
    }
  }
}

// kept: sums go on from row to row.
void undo_predictor(const TiffPicture &picture, Bytes *block) {
  const size_t step = picture.photometric == 2 ? 3 : 1;
  for (size_t i = step; i < block->size(); ++i)
    (*block)[i] = static_cast<uint8_t>((*block)[i] + (*block)[i - step]);
}

uint32_t bits_at(const Bytes &block, size_t row, size_t index, uint32_t bits) {
  const size_t bit = index * bits;
  return (uint32_t{block[row + bit / 8]} >> (8 - bits - bit % 8)) & ((1U << bits) - 1);
}

// kept: photometric 0 turns the extremes alone.
uint8_t turned(const TiffPicture &picture, uint32_t value) {
  if (picture.photometric == 0 && value == 0) return 255;
  if (picture.photometric == 0 && value == 255) return 0;
  return static_cast<uint8_t>(value);
}

uint8_t grey_at(const Reading &r, const Bytes &block, size_t row, size_t x) {
  const TiffPicture &picture = r.picture;
  switch (picture.bits) {
    case 1:
      return turned(picture, bits_at(block, row, x, 1) * 255);
    case 2:
      return turned(picture, bits_at(block, row, x, 2) * 85);
    case 4:
      return turned(picture, bits_at(block, row, x, 4) * 17);
    case 8:
      return turned(picture, block[row + x]);
    default:
      break;
  }
  if (picture.bits != 32 || picture.format != 3) return 0;  // not converted
  const double value = float_at(picture, block, row + 4 * x);
  if (std::isnan(value) || r.minimum == r.maximum) return turned(picture, 0);
  const double scaled = (value - r.minimum) * 255 / (r.maximum - r.minimum) + 0.5;
  return turned(picture, static_cast<uint32_t>(scaled));
}

uint8_t colour_at(const TiffPicture &picture, const Bytes &block, size_t row, size_t sample) {
  switch (picture.bits) {
    case 2:
      return static_cast<uint8_t>(bits_at(block, row, sample, 2) * 85);
    case 4:
      return static_cast<uint8_t>(bits_at(block, row, sample, 4) * 17);
    case 8:
      return block[row + sample];
    case 16:
      return block[row + 2 * sample];  // kept: the first byte, whatever the order
    default:
      return 0;
  }
}

void put_mapped(Reading *r, uint32_t index, Bytes *rgb) {
  const size_t entries = r->picture.map.size() / 3;
  if (index >= entries) {
    index = 0;
    if (r->picture.bits < 8) r->bad_index = true;
  }
  for (size_t plane = 0; plane < 3; ++plane)
    put_u8(rgb, r->picture.map[plane * entries + index] >> 8);
}

Bytes converted_row(Reading *r, const Bytes &block, size_t row, size_t width) {
  const TiffPicture &picture = r->picture;
  Bytes rgb;
  for (size_t x = 0; x < width; ++x) {
    if (picture.photometric < 2) {
      for (int channel = 0; channel < 3; ++channel)
        put_u8(&rgb, grey_at(*r, block, row, x));
    } else if (picture.photometric == 2) {
      for (size_t channel = 0; channel < 3; ++channel)
        put_u8(&rgb, colour_at(picture, block, row, 3 * x + channel));
    } else if (picture.bits == 1) {
      put_bytes(&rgb, {0, 0, 0});
    } else {
      put_mapped(r, bits_at(block, row, x, picture.bits), &rgb);
    }
  }
  return rgb;
}

void deliver_block(Reading *r, const Bytes &block, int32_t left, int32_t top, int32_t width,
                   int32_t rows, ExpectedPicture *expected) {
  const size_t bits = static_cast<size_t>(width) * r->picture.bits * r->picture.samples;
  const size_t row_bytes = (bits + 7) / 8;
  for (int32_t i = 0; i < rows && top + i < r->picture.height; ++i) {
    DeliveredRow row;
    row.x = left;
    row.y = top + i;
    const int32_t seen = std::min(width, r->picture.width - left);
    row.rgb =
        converted_row(r, block, static_cast<size_t>(i) * row_bytes, static_cast<size_t>(seen));
    expected->rows.push_back(row);
  }
}

}  // namespace

ExpectedPicture expect_tiff(const TiffPicture &picture) {
  Reading r = {picture, picture.data};
  for (Bytes &block : r.blocks) {
    if (picture.predictor == 2) undo_predictor(picture, &block);
  }
  if (picture.format == 3) find_extremes(&r);
  ExpectedPicture expected;
  expected.width = picture.width;
  expected.height = picture.height;
  const bool strips = picture.rows_per_strip > 0;
  int32_t left = 0;
  int32_t top = 0;
  for (const Bytes &block : r.blocks) {
    if (strips) {
      deliver_block(&r, block, 0, top, picture.width, picture.rows_per_strip, &expected);
      top += picture.rows_per_strip;
      continue;
    }
    deliver_block(&r, block, left, top, picture.tile_width, picture.tile_height, &expected);
    left += picture.tile_width;
    if (left < picture.width) continue;
    left = 0;
    top += picture.tile_height;
  }
  if (r.bad_index && strips) expected.status = -5;
  return expected;
}

}  // namespace quorix::testing
