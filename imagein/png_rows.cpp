// SPDX-License-Identifier: MIT
//
// PNG samples as RGB and alpha, one path per size of pixel. Grey of up to 8 bits and indices go
// through one table of 256 colours.
#include "imagein/png_rows.h"

#include <algorithm>
#include <cstring>

#include "imagein/imagein.h"
#include "imagein/samples.h"

namespace quorix {

namespace {

constexpr size_t row_slack = 16;

// ---- tables

// Depths up to 8. Kept: of the transparent value's two bytes only the low one counts.
void fill_greys(const PngHeader &header, uint32_t *colours) {
  const uint32_t values = 1U << header.depth;
  for (uint32_t i = 0; i < values; ++i) {
    const bool transparent = header.has_transparency && i == header.transparency[1];
    colours[i] = grey_word(255 / (values - 1) * i) | (transparent ? 0 : 0xFF000000U);
  }
}

// Indices outside the palette get entry 0's colour and alpha.
void fill_palette_colours(const PngHeader &header, PngRows *rows) {
  rows->first_bad_index =
      static_cast<uint32_t>(std::min<size_t>(header.palette_bytes / 3, png_palette_entries));
  for (uint32_t i = 0; i < png_palette_entries; ++i) {
    const size_t index = i < rows->first_bad_index ? i : 0;
    const uint8_t *const rgb = header.palette + 3 * index;
    const bool known = index < header.transparency_bytes;
    const uint32_t alpha = known ? header.transparency[index] : 255;
    rows->colours[i] = alpha << 24 | colour_word(rgb[0], rgb[1], rgb[2]);
  }
  if (rows->first_bad_index == 0) {
    for (uint32_t &colour : rows->colours)
      colour &= 0xFF000000U;
  }
}

// ---- grey of up to 8 bits, and indices

// One sample a byte.
const uint8_t *whole_samples(PngRows *rows, const uint8_t *row, size_t width) {
  if (rows->header->depth == 8) return row;
  unpack_samples(row, rows->header->depth, width, rows->samples.get());
  return rows->samples.get();
}

void note_bad_indices(PngRows *rows, const uint8_t *samples, size_t width) {
  uint8_t largest = 0;
  for (size_t i = 0; i < width; ++i)
    largest = std::max(largest, samples[i]);
  rows->bad_index = rows->bad_index || largest >= rows->first_bad_index;
}

// Kept: 1-bit pictures with a tRNS chunk. Only the first four pixels of each byte get an alpha, one
// right behind another, and the colours of a grey picture start where those alphas end.
void convert_transparent_bits(PngRows *rows, const uint8_t *samples, size_t width) {
  const size_t alphas = 4 * png_row_bytes(*rows->header, width);
  for (size_t i = 0; i < alphas; ++i) {
    const uint32_t colour = rows->colours[samples[2 * i - i % 4]];
    rows->alpha[i] = static_cast<uint8_t>(colour >> 24);
  }
  const size_t start = rows->header->colour == PngColour::grey ? alphas : 0;
  put_colours(rows->colours, samples, width, rows->rgb.get() + rgb_bytes * start);
}

void convert_samples(PngRows *rows, const uint8_t *row, size_t width) {
  const uint8_t *const samples = whole_samples(rows, row, width);
  if (rows->header->colour == PngColour::palette) note_bad_indices(rows, samples, width);
  uint8_t *const rgb = rows->rgb.get();
  uint8_t *const alpha = rows->alpha.get();
  if (alpha != nullptr && rows->header->depth == 1)
    return convert_transparent_bits(rows, samples, width);
  put_colours(rows->colours, samples, width, rgb);
  if (alpha == nullptr) return;
  for (size_t i = 0; i < width; ++i)
    alpha[i] = static_cast<uint8_t>(rows->colours[samples[i]] >> 24);
}

// ---- the others. `size` is the bytes of a sample, of which the first counts

void convert_grey_16(PngRows *rows, const uint8_t *row, size_t width) {
  const uint8_t *const transparent = rows->header->transparency;
  for (size_t i = 0; i < width; ++i) {
    put_colour(rows->rgb.get(), i, grey_word(row[2 * i]));
    if (rows->alpha == nullptr) continue;
    rows->alpha[i] = std::memcmp(row + 2 * i, transparent, 2) == 0 ? 0 : 255;
  }
}

template <size_t size>
void convert_rgb(PngRows *rows, const uint8_t *row, size_t width) {
  uint8_t *const rgb = rows->rgb.get();
  for (size_t i = 0; i < rgb_bytes * width; ++i)
    rgb[i] = row[size * i];
}

// Samples of one byte are compared with the low bytes of the transparent colour.
template <size_t size>
void find_transparent_rgb(PngRows *rows, const uint8_t *row, size_t width) {
  constexpr size_t pixel = rgb_bytes * size;
  uint8_t transparent[pixel];
  for (size_t k = 0; k < pixel; ++k)
    transparent[k] = rows->header->transparency[size == 1 ? 2 * k + 1 : k];
  for (size_t i = 0; i < width; ++i)
    rows->alpha[i] = std::memcmp(row + pixel * i, transparent, pixel) == 0 ? 0 : 255;
}

template <size_t size>
void convert_grey_alpha(PngRows *rows, const uint8_t *row, size_t width) {
  uint8_t *const rgb = rows->rgb.get();
  uint8_t *const alpha = rows->alpha.get();
  for (size_t i = 0; i < width; ++i, row += 2 * size) {
    put_colour(rgb, i, grey_word(row[0]));
    alpha[i] = row[size];
  }
}

template <size_t size>
void convert_rgb_alpha(PngRows *rows, const uint8_t *row, size_t width) {
  uint8_t *const rgb = rows->rgb.get();
  uint8_t *const alpha = rows->alpha.get();
  for (size_t i = 0; i < width; ++i, row += 4 * size) {
    put_colour(rgb, i, colour_word(row[0], row[size], row[2 * size]));
    alpha[i] = row[3 * size];
  }
}

template <size_t size>
void convert_whole_samples(PngRows *rows, const uint8_t *row, size_t width) {
  switch (rows->header->colour) {
    case PngColour::rgb:
      convert_rgb<size>(rows, row, width);
      if (rows->alpha != nullptr) find_transparent_rgb<size>(rows, row, width);
      return;
    case PngColour::grey_alpha:
      return convert_grey_alpha<size>(rows, row, width);
    default:
      return convert_rgb_alpha<size>(rows, row, width);
  }
}

// ---- background

void blend_with_background(PngRows *rows, size_t width) {
  const uint8_t *const under = rows->header->background;
  uint8_t *rgb = rows->rgb.get();
  for (size_t i = 0; i < width; ++i, rgb += rgb_bytes) {
    const uint32_t alpha = rows->alpha[i];
    if (alpha == 255) continue;
    for (size_t k = 0; k < rgb_bytes; ++k)
      rgb[k] = blend_component(rgb[k], alpha, under[k]);
  }
}

bool is_tabled(const PngHeader &header) {
  if (header.colour == PngColour::palette) return true;
  return header.colour == PngColour::grey && header.depth <= 8;
}

// What a row of the picture needs, in pixels; the bits of convert_transparent_bits need the most.
size_t room_for_pixels(const PngHeader &header) {
  const auto width = static_cast<size_t>(header.width);
  const bool shifted = header.depth == 1 && header.has_transparency;
  return width + (shifted ? 4 * png_row_bytes(header, width) : 0) + row_slack;
}

}  // namespace

bool prepare_png_rows(const PngHeader &header, PngRows *rows) {
  rows->header = &header;
  rows->bad_index = false;
  rows->blends = has_alpha_samples(header) && header.has_background;
  rows->first_bad_index = png_palette_entries;
  if (header.colour == PngColour::palette) fill_palette_colours(header, rows);
  if (header.colour == PngColour::grey && header.depth <= 8) fill_greys(header, rows->colours);
  const size_t room = room_for_pixels(header);
  rows->rgb = allocate_zeroed_array<uint8_t>(rgb_bytes * room);
  if (rows->rgb == nullptr) return false;
  if (has_alpha(header)) {
    rows->alpha = allocate_zeroed_array<uint8_t>(room);
    if (rows->alpha == nullptr) return false;
  }
  if (!is_tabled(header) || header.depth == 8) return true;
  rows->samples = allocate_array<uint8_t>(room);
  return rows->samples != nullptr;
}

uint8_t *convert_png_row(PngRows *rows, uint8_t *row, size_t width) {
  const PngHeader &header = *rows->header;
  if (is_tabled(header)) {
    convert_samples(rows, row, width);
  } else if (header.colour == PngColour::grey) {
    convert_grey_16(rows, row, width);
  } else if (header.depth == 16) {
    convert_whole_samples<2>(rows, row, width);
  } else if (header.colour == PngColour::rgb && rows->alpha == nullptr) {
    return row;
  } else {
    convert_whole_samples<1>(rows, row, width);
  }
  if (rows->blends) blend_with_background(rows, width);
  return rows->rgb.get();
}

}  // namespace quorix
