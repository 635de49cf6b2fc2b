// SPDX-License-Identifier: MIT
//
// A few pixels in every form.
#include "tests/imagein/seeds.h"

#include "tests/imagein/bmp_files.h"
#include "tests/imagein/gif_files.h"
#include "tests/imagein/png_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/tiff_files.h"

namespace quorix::testing {

namespace {

std::vector<Seed> bmp_seeds() {
  std::vector<Seed> seeds;
  for (const uint32_t bits : {1U, 4U, 8U, 24U}) {
    BmpHeader header = {5, 3, bits};
    header.colours_used = bits == 24 ? 0 : bits == 1 ? 2 : 5;
    const auto samples = random_samples(bits == 24 ? 45 : 15, bits == 24 ? 8 : bits, bits);
    seeds.push_back(
        {std::to_string(bits) + " bits",
         bmp_file(header, bmp_colours(header.colours_used, 1), bmp_rows(header, samples))});
  }
  const Bytes runs8 = {3, 1, 0, 3, 2, 3, 4, 0, 0, 0, 0, 2, 1, 1, 4, 2, 0, 1};
  seeds.push_back({"RLE8", bmp_file({5, 3, 8, 1, 5, 0}, bmp_colours(5, 2), runs8)});
  const Bytes runs4 = {3, 0x12, 0, 3, 0x23, 0x40, 0, 0, 0, 0, 2, 1, 1, 4, 0x21, 0, 1};
  seeds.push_back({"RLE4", bmp_file({5, 3, 4, 2, 5, 0}, bmp_colours(5, 3), runs4)});
  return seeds;
}

std::vector<Seed> gif_seeds() {
  GifFile parts;
  parts.screen_width = parts.width = 7;
  parts.screen_height = parts.height = 5;
  parts.minimum = 2;
  parts.global_table = random_bytes(12, 1);
  Bytes indices;
  for (const uint32_t sample : random_samples(35, 2, 4))
    put_u8(&indices, sample);
  std::vector<Seed> seeds = {{"plain", gif_of(parts, indices)}};
  parts.interlaced = true;
  parts.local_table = random_bytes(12, 2);
  parts.extensions = {0x21, 0xF9, 4, 1, 0, 0, 3, 0};
  seeds.push_back({"interlaced, in small blocks", gif_of(parts, indices, 3)});
  return seeds;
}

std::vector<Seed> png_seeds() {
  std::vector<Seed> seeds;
  const uint32_t forms[][2] = {{0, 1}, {0, 16}, {2, 8}, {3, 2}, {3, 8}, {4, 8}, {6, 8}};
  for (const auto &[type, depth] : forms) {
    PngPicture picture = random_png(type, depth, 5, 4, depth);
    if (type == 3) picture.palette.resize(9);
    if (type == 3 || type == 0) picture.transparency = {0, 1};
    if (type == 6) picture.background = {0, 1, 0, 2, 0, 3};
    seeds.push_back({"type " + std::to_string(type), png_file(picture, filters_in_turn, 20)});
    picture.interlaced = true;
    if (type != 3) seeds.push_back({"interlaced", png_file(picture, filters_in_turn, 50)});
  }
  return seeds;
}

std::vector<Seed> tiff_seeds() {
  std::vector<Seed> seeds;
  const uint32_t forms[][4] = {{1, 1, 1, 1}, {0, 8, 1, 1},  {1, 32, 1, 3},
                               {2, 8, 3, 1}, {2, 16, 3, 1}, {3, 2, 1, 1}};
  uint32_t number = 0;
  for (const auto &[photometric, bits, samples, format] : forms) {
    for (const uint32_t compression : {1U, 5U, 32773U}) {
      TiffPicture picture;
      picture.width = 5;
      picture.height = 4;
      picture.photometric = photometric;
      picture.bits = bits;
      picture.samples = samples;
      picture.format = format;
      picture.big_endian = number % 2 == 1;
      picture.rows_per_strip = number % 3 == 2 ? 0 : 3;
      picture.tile_width = picture.tile_height = 4;
      if (bits == 8 && number % 2 == 0) picture.predictor = 2;
      if (photometric == 3) picture.map = random_samples(9, 16, 3);
      cut_into_blocks(&picture, random_tiff_samples(picture, ++number));
      seeds.push_back({"photometric " + std::to_string(photometric) + ", compression " +
                           std::to_string(compression),
                       tiff_file(tiff_parts(picture, compression))});
    }
  }
  return seeds;
}

}  // namespace

std::vector<Seed> seeds_of(Format format) {
  switch (format) {
    case Format::bmp:
      return bmp_seeds();
    case Format::gif:
      return gif_seeds();
    case Format::png:
      return png_seeds();
    default:
      return tiff_seeds();
  }
}

bool is_known_status(Format format, int32_t status) {
  if (status == 0 || status == -2 || status == -3) return true;
  if (format == Format::png) return status == -4 || status == -5;
  if (format == Format::tiff) return status == -5 || status == -11 || status == -12;
  return false;
}

}  // namespace quorix::testing
