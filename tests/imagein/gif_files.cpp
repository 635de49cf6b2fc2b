// SPDX-License-Identifier: MIT
//
// An encoder of GIF codes that counts as a decoder does, and files around its codes.
#include "tests/imagein/gif_files.h"

#include <map>

namespace quorix::testing {

namespace {

constexpr uint32_t all_codes = 4096;
constexpr uint32_t none = 0xffffffffU;

uint32_t bits_of_table(const Bytes &table) {
  uint32_t bits = 0;
  while ((6U << bits) < table.size())
    ++bits;
  return bits;
}

// Counts as a decoder does, so that codes have the size that it expects.
struct CodeWriter {
  uint32_t minimum;
  std::vector<GifCode> codes;
  uint32_t size = 0;
  uint32_t next = 0;
  bool first = false;

  void clear() {
    if (codes.empty()) size = minimum + 1;
    codes.push_back({1U << minimum, size});
    size = minimum + 1;
    next = (1U << minimum) + 2;
    first = true;
  }

  void put(uint32_t code) {
    codes.push_back({code, size});
    if (!first && next < all_codes) {
      ++next;
      if (next == 1U << size && size < 12) ++size;
    }
    first = false;
  }
};

}  // namespace

std::vector<GifCode> gif_codes(const Bytes &indices, uint32_t minimum, WhenFull when_full) {
  CodeWriter writer = {minimum, {}};
  writer.clear();
  std::map<std::pair<uint32_t, uint32_t>, uint32_t> table;
  const uint32_t first_entry = (1U << minimum) + 2;
  uint32_t next = first_entry;
  uint32_t prefix = none;
  for (const uint8_t index : indices) {
    if (prefix == none) {
      prefix = index;
      continue;
    }
    const auto found = table.find({prefix, index});
    if (found != table.end()) {
      prefix = found->second;
      continue;
    }
    writer.put(prefix);
    if (next < all_codes) {
      table[{prefix, index}] = next++;
    } else if (when_full == WhenFull::clear) {
      writer.clear();
      table.clear();
      next = first_entry;
    }
    prefix = index;
  }
  if (prefix != none) writer.put(prefix);
  writer.codes.push_back({(1U << minimum) + 1, writer.size});
  return writer.codes;
}

Bytes gif_code_bytes(const std::vector<GifCode> &codes) {
  Bytes bytes;
  size_t bit = 0;
  for (const GifCode &code : codes) {
    for (uint32_t i = 0; i < code.size; ++i, ++bit) {
      if (bit % 8 == 0) bytes.push_back(0);
      bytes.back() = static_cast<uint8_t>(bytes.back() | (code.code >> i & 1) << (bit % 8));
    }
  }
  return bytes;
}

Bytes gif_blocks(const Bytes &data, size_t block) {
  Bytes blocks;
  for (size_t at = 0; at < data.size(); at += block) {
    const size_t count = std::min(block, data.size() - at);
    put_u8(&blocks, count);
    blocks.insert(blocks.end(), data.begin() + static_cast<std::ptrdiff_t>(at),
                  data.begin() + static_cast<std::ptrdiff_t>(at + count));
  }
  put_u8(&blocks, 0);
  return blocks;
}

Bytes gif_file(const GifFile &parts) {
  Bytes file;
  put_text(&file, "GIF89a");
  put_little(&file, static_cast<uint32_t>(parts.screen_width), 2);
  put_little(&file, static_cast<uint32_t>(parts.screen_height), 2);
  put_u8(&file, parts.global_table.empty() ? 0U : 0x80 | bits_of_table(parts.global_table));
  put_u8(&file, 0);  // background
  put_u8(&file, 0);  // aspect
  put_bytes(&file, parts.global_table);
  put_bytes(&file, parts.extensions);
  put_u8(&file, 0x2C);
  for (const int32_t value : {parts.left, parts.top, parts.width, parts.height})
    put_little(&file, static_cast<uint32_t>(value), 2);
  const uint32_t table = parts.local_table.empty() ? 0 : 0x80 | bits_of_table(parts.local_table);
  put_u8(&file, table | (parts.interlaced ? 0x40U : 0U));
  put_bytes(&file, parts.local_table);
  put_u8(&file, parts.minimum);
  put_bytes(&file, parts.blocks);
  put_u8(&file, 0x3B);
  return file;
}

std::vector<int32_t> interlaced_rows(int32_t height) {
  std::vector<int32_t> rows;
  const int32_t starts[] = {0, 4, 2, 1};
  const int32_t steps[] = {8, 8, 4, 2};
  for (size_t pass = 0; pass < 4; ++pass) {
    for (int32_t y = starts[pass]; y < height; y += steps[pass])
      rows.push_back(y);
  }
  return rows;
}

namespace {

Bytes in_file_order(const GifFile &parts, const Bytes &indices) {
  if (!parts.interlaced) return indices;
  Bytes ordered;
  for (const int32_t y : interlaced_rows(parts.height)) {
    const auto start = indices.begin() + y * std::ptrdiff_t{parts.width};
    ordered.insert(ordered.end(), start, start + parts.width);
  }
  return ordered;
}

}  // namespace

Bytes gif_of(GifFile parts, const Bytes &indices, size_t block) {
  parts.blocks =
      gif_blocks(gif_code_bytes(gif_codes(in_file_order(parts, indices), parts.minimum)), block);
  return gif_file(parts);
}

ExpectedPicture expect_indices(const GifFile &parts, const Bytes &indices) {
  const Bytes &table = parts.local_table.empty() ? parts.global_table : parts.local_table;
  Bytes rgb;
  for (const uint8_t index : indices) {
    for (size_t channel = 0; channel < 3; ++channel)
      put_u8(&rgb, table[3 * size_t{index} + channel]);
  }
  ExpectedPicture expected = expect_rows(parts.width, parts.height, rgb);
  expected.width = parts.screen_width;
  expected.height = parts.screen_height;
  return expected;
}

}  // namespace quorix::testing
