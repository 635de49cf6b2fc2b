// SPDX-License-Identifier: MIT
//
// What the reader must make of the samples of a PNG picture, pixel by pixel.
#include "tests/imagein/png_files.h"

namespace quorix::testing {

namespace {

struct Conversion {
  const PngPicture &picture;
  bool has_background;
  bool file_alpha;  // alpha among the samples
  uint32_t background[3];
  bool bad_index;
};

uint8_t byte_of(const Conversion &c, uint32_t sample) {
  switch (c.picture.depth) {
    case 1:
      return sample != 0 ? 255 : 0;
    case 2:
      return static_cast<uint8_t>(sample * 85);
    case 4:
      return static_cast<uint8_t>(sample * 17);
    case 8:
      return static_cast<uint8_t>(sample);
    default:
      return static_cast<uint8_t>(sample >> 8);
  }
}

// Whether a pixel's sample number `channel` is what tRNS names.
bool is_named(const Conversion &c, uint32_t sample, size_t channel) {
  const Bytes &named = c.picture.transparency;
  const auto at = [&](size_t i) { return i < named.size() ? uint32_t{named[i]} : 0U; };
  if (c.picture.depth == 16) return sample == at(2 * channel) * 256 + at(2 * channel + 1);
  return sample == at(2 * channel + 1);
}

struct Pixel {
  uint32_t rgb[3];
  uint32_t alpha;
};

Pixel palette_pixel(Conversion *c, uint32_t index) {
  const Bytes &palette = c->picture.palette;
  if (3 * size_t{index} + 3 > palette.size()) {
    c->bad_index = true;
    index = 0;
  }
  Pixel pixel = {{0, 0, 0}, 255};
  for (size_t channel = 0; channel < 3; ++channel) {
    const size_t at = 3 * size_t{index} + channel;
    if (palette.size() >= 3) pixel.rgb[channel] = palette[at];
  }
  if (index < c->picture.transparency.size()) pixel.alpha = c->picture.transparency[index];
  return pixel;
}

Pixel pixel_of(Conversion *c, const uint32_t *samples) {
  const uint32_t type = c->picture.type;
  if (type == 3) return palette_pixel(c, samples[0]);
  Pixel pixel = {{0, 0, 0}, 255};
  const bool grey = type == 0 || type == 4;
  bool named = true;
  for (size_t channel = 0; channel < 3; ++channel) {
    const uint32_t sample = samples[grey ? 0 : channel];
    pixel.rgb[channel] = byte_of(*c, sample);
    named = named && is_named(*c, sample, grey ? 0 : channel);
  }
  if (c->file_alpha) pixel.alpha = byte_of(*c, samples[grey ? 1 : 3]);
  if (!c->file_alpha && !c->picture.transparency.empty() && named) pixel.alpha = 0;
  return pixel;
}

void blend_with_background(const Conversion &c, Pixel *pixel) {
  const double a = pixel->alpha / 255.0;
  for (size_t channel = 0; channel < 3; ++channel)
    pixel->rgb[channel] =
        static_cast<uint32_t>(pixel->rgb[channel] * a + (1 - a) * c.background[channel] + 0.5);
}

void find_background(Conversion *c) {
  const Bytes &chunk = c->picture.background;
  const size_t low = c->picture.depth == 16 ? 0 : 1;
  for (size_t channel = 0; channel < 3; ++channel) {
    if (c->picture.type == 3) {
      const size_t at = 3 * size_t{chunk[0]} + channel;
      c->background[channel] = at < c->picture.palette.size() ? c->picture.palette[at] : 0;
    } else {
      const bool grey = c->picture.type == 0 || c->picture.type == 4;
      c->background[channel] = chunk[(grey ? 0 : 2 * channel) + low];
    }
  }
}

// kept: of 1-bit pictures with tRNS only the upper half of each byte gets alpha, one after the
// other, and greys start behind those.
// Bits that fill up the last byte count like pixels of 0, whose alpha is `filling`.
void shuffle_1_bit_row(const PngPicture &picture, uint8_t filling, DeliveredRow *row) {
  const auto width = static_cast<size_t>(picture.width);
  const size_t bytes = (width + 7) / 8;
  Bytes alpha(width + 4 * bytes, 0);
  for (size_t b = 0; b < bytes; ++b) {
    for (size_t k = 0; k < 4; ++k)
      alpha[4 * b + k] = 8 * b + k < width ? row->alpha[8 * b + k] : filling;
  }
  Bytes rgb(3 * (width + 4 * bytes), 0);
  const size_t start = picture.type == 0 ? 12 * bytes : 0;
  for (size_t i = 0; i < row->rgb.size(); ++i)
    rgb[start + i] = row->rgb[i];
  alpha.resize(width);
  rgb.resize(3 * width);
  row->alpha = alpha;
  row->rgb = rgb;
  if (picture.type == 0) row->kept_pixels = 4 * bytes;
}

}  // namespace

ExpectedPicture expect_png(const PngPicture &picture) {
  Conversion c = {picture,
                  !picture.background.empty(),
                  picture.type == 4 || picture.type == 6,
                  {0, 0, 0},
                  false};
  if (c.has_background) find_background(&c);
  const bool named = !picture.transparency.empty() && !c.file_alpha;
  ExpectedPicture expected;
  expected.width = picture.width;
  expected.height = picture.height;
  expected.has_alpha = (named || c.file_alpha) && !c.has_background;
  const size_t channels = png_channels(picture.type);
  const auto width = static_cast<size_t>(picture.width);
  for (int32_t y = 0; y < picture.height; ++y) {
    DeliveredRow row;
    row.y = y;
    for (size_t x = 0; x < width; ++x) {
      const size_t at = (static_cast<size_t>(y) * width + x) * channels;
      Pixel pixel = pixel_of(&c, &picture.samples[at]);
      if (c.file_alpha && c.has_background) blend_with_background(c, &pixel);
      for (const uint32_t value : pixel.rgb)
        put_u8(&row.rgb, value);
      put_u8(&row.alpha, pixel.alpha);
    }
    if (picture.depth == 1 && named) {
      const uint32_t zero[] = {0, 0, 0};
      shuffle_1_bit_row(picture, static_cast<uint8_t>(pixel_of(&c, zero).alpha), &row);
    }
    if (!expected.has_alpha) row.alpha.clear();
    expected.rows.push_back(row);
  }
  expected.status = c.bad_index ? -5 : 0;
  return expected;
}

}  // namespace quorix::testing
