// SPDX-License-Identifier: MIT
//
// PNG chunks, rows and their filters, one byte at a time.
#include "tests/imagein/png_files.h"

#include <zlib.h>

#include <cstdlib>

#include "tests/imagein/random_picture.h"

namespace quorix::testing {

namespace {

struct Pass {
  size_t x, y, step_x, step_y;
};

constexpr Pass adam7[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                          {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
constexpr Pass whole = {0, 0, 1, 1};

uint8_t paeth(int left, int above, int corner) {
  const int estimate = left + above - corner;
  const int a = std::abs(estimate - left);
  const int b = std::abs(estimate - above);
  const int c = std::abs(estimate - corner);
  if (a <= b && a <= c) return static_cast<uint8_t>(left);
  return static_cast<uint8_t>(b <= c ? above : corner);
}

Bytes filtered(const Bytes &row, const Bytes &previous, size_t pixel_bytes, int filter) {
  Bytes result = {static_cast<uint8_t>(filter)};
  for (size_t i = 0; i < row.size(); ++i) {
    const int left = i >= pixel_bytes ? row[i - pixel_bytes] : 0;
    const int above = previous[i];
    const int corner = i >= pixel_bytes ? previous[i - pixel_bytes] : 0;
    const int guesses[] = {0, left, above, (left + above) / 2, paeth(left, above, corner)};
    put_u8(&result, static_cast<uint32_t>(row[i] - guesses[filter]));
  }
  return result;
}

Bytes packed_row(const PngPicture &picture, const std::vector<uint32_t> &samples) {
  if (picture.depth < 16) return pack_bits(samples, picture.depth);
  Bytes row;
  for (const uint32_t sample : samples)
    put_big(&row, sample, 2);
  return row;
}

void put_pass(const PngPicture &picture, const Pass &pass, int filter, Bytes *raw) {
  const size_t channels = png_channels(picture.type);
  const size_t pixel_bytes = std::max<size_t>(1, channels * picture.depth / 8);
  const auto width = static_cast<size_t>(picture.width);
  Bytes previous;
  int turn = 0;
  for (size_t y = pass.y; y < static_cast<size_t>(picture.height); y += pass.step_y) {
    std::vector<uint32_t> samples;
    for (size_t x = pass.x; x < width; x += pass.step_x) {
      for (size_t channel = 0; channel < channels; ++channel)
        samples.push_back(picture.samples[(y * width + x) * channels + channel]);
    }
    if (samples.empty()) continue;
    const Bytes row = packed_row(picture, samples);
    previous.resize(row.size(), 0);
    put_bytes(raw, filtered(row, previous, pixel_bytes,
                            filter == filters_in_turn ? (4 + turn++) % 5 : filter));
    previous = row;
  }
}

}  // namespace

size_t png_channels(uint32_t type) {
  return type == 2 ? 3 : type == 4 ? 2 : type == 6 ? 4 : 1;
}

PngPicture random_png(uint32_t type, uint32_t depth, int32_t width, int32_t height, uint32_t seed) {
  PngPicture picture;
  picture.width = width;
  picture.height = height;
  picture.type = type;
  picture.depth = depth;
  const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  picture.samples = random_samples(pixels * png_channels(type), depth, seed);
  if (type == 3) picture.palette = random_bytes(size_t{3} << depth, seed + 1);
  return picture;
}

Bytes png_chunk(const char *type, const Bytes &data) {
  Bytes chunk;
  put_big(&chunk, data.size(), 4);
  put_text(&chunk, type);
  put_bytes(&chunk, data);
  const uLong sum = crc32(0, chunk.data() + 4, static_cast<uInt>(chunk.size() - 4));
  put_big(&chunk, sum, 4);
  return chunk;
}

Bytes png_start(const PngPicture &picture) {
  Bytes header;
  put_big(&header, static_cast<uint32_t>(picture.width), 4);
  put_big(&header, static_cast<uint32_t>(picture.height), 4);
  put_u8(&header, picture.depth);
  put_u8(&header, picture.type);
  put_u8(&header, 0);
  put_u8(&header, 0);
  put_u8(&header, picture.interlaced ? 1U : 0U);
  Bytes start = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
  put_bytes(&start, png_chunk("IHDR", header));
  return start;
}

Bytes png_raw_rows(const PngPicture &picture, int filter) {
  Bytes raw;
  if (!picture.interlaced) {
    put_pass(picture, whole, filter, &raw);
  } else {
    for (const Pass &pass : adam7)
      put_pass(picture, pass, filter, &raw);
  }
  return raw;
}

Bytes zlib_stream(const Bytes &raw) {
  uLongf size = compressBound(static_cast<uLong>(raw.size()));
  Bytes stream(size);
  if (compress2(stream.data(), &size, raw.data(), static_cast<uLong>(raw.size()), 9) != Z_OK)
    std::abort();
  stream.resize(size);
  return stream;
}

Bytes png_with_data(const PngPicture &picture, const Bytes &stream, size_t chunk) {
  Bytes file = png_start(picture);
  if (!picture.palette.empty()) put_bytes(&file, png_chunk("PLTE", picture.palette));
  if (!picture.transparency.empty()) put_bytes(&file, png_chunk("tRNS", picture.transparency));
  if (!picture.background.empty()) put_bytes(&file, png_chunk("bKGD", picture.background));
  for (size_t at = 0; at < stream.size(); at += chunk) {
    const auto start = stream.begin() + static_cast<std::ptrdiff_t>(at);
    const auto count = static_cast<std::ptrdiff_t>(std::min(chunk, stream.size() - at));
    put_bytes(&file, png_chunk("IDAT", {start, start + count}));
  }
  put_bytes(&file, png_chunk("IEND", {}));
  return file;
}

Bytes png_file(const PngPicture &picture, int filter, size_t chunk) {
  return png_with_data(picture, zlib_stream(png_raw_rows(picture, filter)), chunk);
}

}  // namespace quorix::testing
