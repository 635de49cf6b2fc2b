// SPDX-License-Identifier: MIT
//
// Files written by libpng, where the build has it.
#ifdef QUORIX_TEST_WITH_LIBPNG

#include <png.h>

#include <cstdlib>

#include "tests/imagein/png_files.h"

namespace quorix::testing {

namespace {

void take_bytes(png_structp png, png_bytep bytes, size_t count) {
  auto *file = static_cast<Bytes *>(png_get_io_ptr(png));
  file->insert(file->end(), bytes, bytes + count);
}

void take_nothing(png_structp /*png*/) {}

void put_palette(png_structp png, png_infop info, const Bytes &palette) {
  std::vector<png_color> colours;
  for (size_t i = 0; i < palette.size(); i += 3)
    colours.push_back({palette[i], palette[i + 1], palette[i + 2]});
  png_set_PLTE(png, info, colours.data(), static_cast<int>(colours.size()));
}

png_color_16 colour_of(const Bytes &chunk, uint32_t type) {
  const auto word = [&](size_t at) {
    return static_cast<png_uint_16>(at + 1 < chunk.size() ? chunk[at] * 256 + chunk[at + 1] : 0);
  };
  png_color_16 colour = {};
  if (type == 3) {
    colour.index = chunk[0];
  } else if (type == 0 || type == 4) {
    colour.gray = word(0);
  } else {
    colour.red = word(0);
    colour.green = word(2);
    colour.blue = word(4);
  }
  return colour;
}

void put_header(png_structp png, png_infop info, const PngPicture &picture) {
  png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width),
               static_cast<png_uint_32>(picture.height), static_cast<int>(picture.depth),
               static_cast<int>(picture.type),
               picture.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (!picture.palette.empty()) put_palette(png, info, picture.palette);
  if (!picture.transparency.empty()) {
    const png_color_16 colour = colour_of(picture.transparency, picture.type);
    png_set_tRNS(png, info, picture.transparency.data(),
                 static_cast<int>(picture.transparency.size()), &colour);
  }
  if (!picture.background.empty()) {
    const png_color_16 colour = colour_of(picture.background, picture.type);
    png_set_bKGD(png, info, &colour);
  }
  png_set_gAMA(png, info, 0.45455);
  png_text text = {};
  char key[] = "Title";
  char words[] = "chunks that nobody needs";
  text.compression = PNG_TEXT_COMPRESSION_NONE;
  text.key = key;
  text.text = words;
  png_set_text(png, info, &text, 1);
}

}  // namespace

Bytes png_by_libpng(const PngPicture &picture, int filter, size_t chunk) {
  Bytes file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &file, take_bytes, take_nothing);
  png_set_compression_buffer_size(png, chunk);
  const int filters[] = {PNG_FILTER_NONE, PNG_FILTER_SUB,   PNG_FILTER_UP,
                         PNG_FILTER_AVG,  PNG_FILTER_PAETH, PNG_ALL_FILTERS};
  png_set_filter(png, PNG_FILTER_TYPE_BASE, filters[filter]);
  put_header(png, info, picture);
  png_write_info(png, info);
  const size_t count = static_cast<size_t>(picture.width) * png_channels(picture.type);
  std::vector<Bytes> rows;
  std::vector<png_bytep> addresses;
  for (size_t y = 0; y < static_cast<size_t>(picture.height); ++y) {
    const std::vector<uint32_t> samples = row_of(picture.samples, y, count);
    Bytes row;
    if (picture.depth < 16) {
      row = pack_bits(samples, picture.depth);
    } else {
      for (const uint32_t sample : samples)
        put_big(&row, sample, 2);
    }
    rows.push_back(row);
  }
  for (Bytes &row : rows)
    addresses.push_back(row.data());
  png_write_image(png, addresses.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

}  // namespace quorix::testing

#endif
