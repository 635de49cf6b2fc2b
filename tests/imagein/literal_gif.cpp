// SPDX-License-Identifier: MIT
//
// A GIF decoder that takes one bit, one code and one pixel at a time.
#include "tests/imagein/gif_files.h"

namespace quorix::testing {

namespace {

struct Decoder {
  const Bytes &file;
  ExpectedPicture result = {};
  size_t at = 0;
  bool ended = false;  // a byte was asked for behind the last

  int32_t width = 0;
  int32_t height = 0;
  bool interlaced = false;
  uint8_t table[768] = {};

  // Bits of the code stream that are not taken yet, lowest first.
  std::vector<uint8_t> bits = {};
  size_t taken = 0;
  bool stream_ended = false;

  Bytes row = {};
  std::vector<int32_t> order = {};  // of rows
  size_t rows_done = 0;

  int32_t byte() {
    if (at < file.size()) return file[at++];
    ended = true;
    return -1;
  }
  int32_t word() {
    const int32_t low = byte();
    const int32_t high = byte();
    return (low & 255) + 256 * (high & 255);
  }

  void read_table(int32_t flags) {
    const int32_t bytes = 3 * (2 << (flags & 7));
    for (int32_t i = 0; i < bytes; ++i)
      table[i] = static_cast<uint8_t>(byte() & 255);
  }

  // -1 where no code follows.
  int32_t code(uint32_t size) {
    while (bits.size() - taken < size) {
      const int32_t count = byte();
      if (count <= 0) return -1;
      for (int32_t i = 0; i < count; ++i) {
        const int32_t value = byte();
        if (value < 0) break;  // keeps the bytes that are there
        for (int32_t bit = 0; bit < 8; ++bit)
          bits.push_back(static_cast<uint8_t>(value >> bit & 1));
      }
    }
    int32_t value = 0;
    for (uint32_t i = 0; i < size; ++i)
      value |= bits[taken++] << i;
    return value;
  }

  void put_pixel(int32_t value) {
    for (int32_t channel = 0; channel < 3; ++channel)
      row.push_back(table[3 * (value & 255) + channel]);
    if (row.size() < 3 * static_cast<size_t>(width)) return;
    if (rows_done < order.size()) {
      DeliveredRow delivered;
      delivered.y = order[rows_done];
      delivered.rgb = row;
      result.rows.push_back(delivered);
    }
    ++rows_done;
    row.clear();
  }

  int32_t decode();
  int32_t read();
};

struct Entry {
  int32_t prefix;
  int32_t suffix;
};

int32_t Decoder::decode() {
  const int32_t minimum = byte();
  if (minimum < 2 || minimum > 11) return -3;
  const int32_t clear = 1 << minimum;
  std::vector<Entry> entries(4096, {0, 0});
  int32_t next = clear + 2;
  auto size = static_cast<uint32_t>(minimum) + 1;
  int32_t limit = 2 << minimum;
  int32_t old = 0;
  int32_t first = 0;
  bool started = false;
  for (;;) {
    const int32_t taken_code = code(size);
    if (taken_code < 0) return -3;
    if (taken_code == clear + 1) return 0;
    if (!started && taken_code != clear) {
      // A stream that begins without a clear code begins as if there were one.
      if (taken_code > clear) return -3;
      started = true;
      old = first = taken_code;
      put_pixel(first);
      continue;
    }
    started = true;
    if (taken_code == clear) {
      next = clear + 2;
      size = static_cast<uint32_t>(minimum) + 1;
      limit = 2 << minimum;
      do {
        old = code(size);
      } while (old == clear);
      if (old < 0 || old > clear) return -3;
      first = old;
      put_pixel(first);
      continue;
    }
    if (taken_code > next) return -3;
    std::vector<int32_t> stack;
    int32_t value = taken_code;
    if (taken_code >= next) {
      stack.push_back(first);
      value = old;
    }
    while (value >= clear) {
      stack.push_back(entries[static_cast<size_t>(value)].suffix);
      value = entries[static_cast<size_t>(value)].prefix;
    }
    first = value;
    stack.push_back(first);
    for (size_t i = stack.size(); i > 0; --i)
      put_pixel(stack[i - 1]);
    if (next < 4096) {
      entries[static_cast<size_t>(next)] = {old, first};
      ++next;
    }
    old = taken_code;
    if (next == limit && size < 12) {
      ++size;
      limit *= 2;
    }
  }
}

int32_t Decoder::read() {
  at = 6;
  result.width = word();
  result.height = word();
  const int32_t flags = byte();
  at += 2;
  if ((flags & 0x80) != 0) read_table(flags);
  for (int32_t value = byte(); value != 0x2C; value = byte())
    if (value < 0) return -3;
  at += 4;
  width = word();
  height = word();
  const int32_t image_flags = byte();
  if (ended || width == 0 || height == 0 || result.width == 0 || result.height == 0) return -3;
  if (((flags | image_flags) & 0x80) == 0) return -3;
  if ((image_flags & 0x80) != 0) read_table(image_flags);
  if (ended) return -3;
  interlaced = (image_flags & 0x40) != 0;
  for (int32_t y = 0; y < height; ++y)
    order.push_back(y);
  if (interlaced) order = interlaced_rows(height);
  const int32_t status = decode();
  if (status != 0) return status;
  for (int32_t count = byte(); count != 0; count = byte()) {
    if (count < 0) return -3;
    at = std::min(file.size(), at + static_cast<size_t>(count));
  }
  return 0;
}

}  // namespace

ExpectedPicture expect_gif(const Bytes &file) {
  Decoder decoder = {file, {}};
  decoder.result.status = decoder.read();
  return decoder.result;
}

}  // namespace quorix::testing
