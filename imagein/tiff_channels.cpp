// SPDX-License-Identifier: MIT
//
// Files of five values of 16 bits per pixel, uncompressed, into a caller's array.
//
// Decisions. Strips of different lengths follow each other without gaps, and what they leave of the
// counted elements is 0. Strips that do not lie within the file are a bad format, tiles, compressed
// data and channels that are none are not supported, and a count beyond 31 bits is too large for
// any array.
#include <algorithm>
#include <cstring>

#include "base/numbers.h"
#include "imagein/tiff_blocks.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

constexpr size_t values_per_pixel = 5;
constexpr size_t pixel_bytes = 2 * values_per_pixel;
constexpr size_t pixels_at_a_time = 8192;

constexpr int32_t all_channels = 0;
constexpr int32_t high_bytes = -1;  // of values 3, 2 and 1, as red, green and blue

struct TiffChannels {
  TiffFile tiff;
  ByteSource source;
  TiffWindow window;
  int32_t channel;
  uint16_t *array;
  uint64_t count;   // elements of the array
  uint64_t pixels;  // that it has room for
  uint64_t done;    // pixels stored
};

// Elements that the array needs, of strips as long as the longest.
uint64_t count_elements(const TiffChannels &channels) {
  uint64_t longest = 0;
  for (size_t i = 0; i < channels.tiff.blocks; ++i)
    longest = std::max<uint64_t>(longest, channels.tiff.sizes[i]);
  const uint64_t bytes = longest * channels.tiff.blocks;
  if (channels.channel == all_channels) return bytes / 2;
  if (channels.channel == high_bytes) return (bytes * rgb_bytes / pixel_bytes + 1) / 2;
  return bytes / pixel_bytes;
}

uint64_t pixels_in_array(const TiffChannels &channels) {
  if (channels.channel == all_channels) return channels.count / values_per_pixel;
  if (channels.channel == high_bytes) return 2 * channels.count / rgb_bytes;
  return channels.count;
}

// ---- storing: `pixel` is the first of `count` in the array

uint16_t value_at(const TiffChannels &channels, const uint8_t *bytes) {
  const int high = channels.tiff.order == ByteOrder::big ? 0 : 1;
  return static_cast<uint16_t>(bytes[high] << 8 | bytes[1 - high]);
}

void store_channel(const TiffChannels &channels, const uint8_t *bytes, size_t count, size_t value,
                   uint16_t *to) {
  bytes += 2 * value;
  for (size_t i = 0; i < count; ++i)
    to[i] = value_at(channels, bytes + pixel_bytes * i);
}

void store_high_bytes(const TiffChannels &channels, const uint8_t *bytes, size_t count,
                      uint8_t *to) {
  const int high = channels.tiff.order == ByteOrder::big ? 0 : 1;
  for (size_t i = 0; i < count; ++i, bytes += pixel_bytes) {
    for (size_t k = 0; k < rgb_bytes; ++k)
      *to++ = bytes[2 * (2 - k) + static_cast<size_t>(high)];
  }
}

void store_pixels(TiffChannels *channels, const uint8_t *bytes, size_t count) {
  count = static_cast<size_t>(std::min<uint64_t>(count, channels->pixels - channels->done));
  uint16_t *const to = channels->array;
  const size_t done = channels->done;
  if (channels->channel == high_bytes) {
    store_high_bytes(*channels, bytes, count, reinterpret_cast<uint8_t *>(to) + rgb_bytes * done);
  } else if (channels->channel == all_channels) {
    for (size_t value = 0; value < values_per_pixel; ++value)
      store_channel(*channels, bytes, count, value, to + value * channels->pixels + done);
  } else {
    const auto value = static_cast<size_t>(channels->channel - 1);
    store_channel(*channels, bytes, count, value, to + done);
  }
  channels->done += count;
}

int32_t store_strip(TiffChannels *channels, size_t index) {
  const uint64_t offset = channels->tiff.offsets[index];
  size_t left = channels->tiff.sizes[index] / pixel_bytes;
  for (uint64_t at = offset; left != 0;) {
    const size_t pixels = std::min(left, pixels_at_a_time);
    size_t bytes = pixels * pixel_bytes;
    const uint8_t *const values = window_bytes(&channels->window, at, &bytes);
    if (values == nullptr) return reader_no_memory;
    if (bytes < pixels * pixel_bytes) return reader_bad_format;
    store_pixels(channels, values, pixels);
    left -= pixels;
    at += bytes;
  }
  return reader_done;
}

// ---- all of it

bool strips_are_there(const TiffChannels &channels) {
  const TiffFile &tiff = channels.tiff;
  for (size_t i = 0; i < tiff.blocks; ++i) {
    if (block_bytes(tiff, channels.source, i) < tiff.sizes[i]) return false;
  }
  return true;
}

int32_t store_strips(TiffChannels *channels) {
  channels->pixels = pixels_in_array(*channels);
  std::memset(channels->array, 0, channels->count * sizeof(uint16_t));
  for (size_t i = 0; i < channels->tiff.blocks; ++i) {
    const int32_t status = store_strip(channels, i);
    if (status != reader_done) return status;
  }
  return static_cast<int32_t>(channels->count);
}

int32_t read_channels(TiffChannels *channels, const char *file, int32_t size) {
  if (!open_source(&channels->source, file)) return reader_no_file;
  const TiffFile &tiff = channels->tiff;
  const int32_t status = read_tiff_directory(&channels->source, TiffMark::strict, &channels->tiff);
  if (status != reader_done) return status;
  const bool known = channels->channel >= high_bytes &&
                     channels->channel <= static_cast<int32_t>(values_per_pixel);
  if (!known || tiff.tiled || tiff.compression != tiff_raw) return tiff_unsupported;
  if (!strips_are_there(*channels)) return reader_bad_format;
  channels->count = count_elements(*channels);
  if (channels->count > INT32_MAX) return tiff_corrupt;
  if (size == 0) return static_cast<int32_t>(channels->count);
  if (size < static_cast<int64_t>(channels->count)) return tiff_corrupt;
  channels->window.source = &channels->source;
  return store_strips(channels);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpltif(const char *file, uint16_t *array, const int32_t *size,
                           const int32_t *channel, int32_t *status) {
  quorix::TiffChannels channels = {};
  channels.channel = *channel;
  channels.array = array;
  *status = quorix::read_channels(&channels, file, *size);
  return 0;
}
