// SPDX-License-Identifier: MIT
//
// TIFF directories, arrays and blocks laid out one behind another, and encoders of LZW and
// PackBits.
#include "tests/imagein/tiff_files.h"

#include <algorithm>
#include <bit>
#include <map>

#include "tests/imagein/random_picture.h"

namespace quorix::testing {

void TiffParts::set(uint32_t tag, std::vector<uint32_t> values, uint32_t type) {
  for (TiffEntry &entry : entries) {
    if (entry.tag != tag) continue;
    entry.values = std::move(values);
    entry.type = type;
    return;
  }
  const auto place = std::find_if(entries.begin(), entries.end(),
                                  [&](const TiffEntry &entry) { return entry.tag > tag; });
  entries.insert(place, {tag, type, std::move(values)});
}

void TiffParts::drop(uint32_t tag) {
  std::erase_if(entries, [&](const TiffEntry &entry) { return entry.tag == tag; });
}

void put_tiff(Bytes *to, bool big_endian, uint32_t value, int bytes) {
  if (big_endian) {
    put_big(to, value, bytes);
  } else {
    put_little(to, value, bytes);
  }
}

namespace {

void fill_in_blocks(TiffParts *parts, uint32_t first_offset) {
  for (TiffEntry &entry : parts->entries) {
    if (!entry.values.empty()) continue;
    uint32_t offset = first_offset;
    for (const Bytes &block : parts->blocks) {
      const auto size = static_cast<uint32_t>(block.size());
      const bool counts = entry.tag == tiff_strip_counts || entry.tag == tiff_tile_counts;
      entry.values.push_back(counts ? size : offset);
      offset += size;
    }
  }
}

}  // namespace

Bytes tiff_file(TiffParts parts) {
  fill_in_blocks(&parts, 8);
  uint32_t data_size = 0;
  for (const Bytes &block : parts.blocks)
    data_size += static_cast<uint32_t>(block.size());
  const uint32_t padding = data_size % 2;
  const uint32_t directory = 8 + data_size + padding;
  uint32_t arrays = directory + 2 + 12 * static_cast<uint32_t>(parts.entries.size()) + 4;
  const auto put = [&](Bytes *to, uint32_t value, int bytes) {
    put_tiff(to, parts.big_endian, value, bytes);
  };
  Bytes file;
  put_text(&file, parts.big_endian ? "MM" : "II");
  put(&file, 42, 2);
  put(&file, directory, 4);
  for (const Bytes &block : parts.blocks)
    put_bytes(&file, block);
  file.resize(file.size() + padding, 0);
  put(&file, static_cast<uint32_t>(parts.entries.size()), 2);
  Bytes behind;
  for (const TiffEntry &entry : parts.entries) {
    put(&file, entry.tag, 2);
    put(&file, entry.type, 2);
    put(&file, static_cast<uint32_t>(entry.values.size()), 4);
    Bytes values;
    for (const uint32_t value : entry.values)
      put(&values, value, entry.type == tiff_short ? 2 : 4);
    if (values.size() <= 4) {
      values.resize(4, 0);
      put_bytes(&file, values);
    } else {
      put(&file, arrays + static_cast<uint32_t>(behind.size()), 4);
      put_bytes(&behind, values);
    }
  }
  put(&file, 0, 4);
  put_bytes(&file, behind);
  return file;
}

namespace {

Bytes row_bytes_of(const TiffPicture &picture, const std::vector<uint32_t> &row) {
  if (picture.bits < 8) return pack_bits(row, picture.bits);
  Bytes bytes;
  for (const uint32_t value : row)
    put_tiff(&bytes, picture.big_endian, value, static_cast<int>(picture.bits / 8));
  return bytes;
}

struct Area {
  int32_t left, top, width, height;
};

Bytes block_of(const TiffPicture &picture, const std::vector<uint32_t> &values, const Area &area) {
  Bytes block;
  for (int32_t y = area.top; y < area.top + area.height; ++y) {
    std::vector<uint32_t> row;
    const int32_t from_y = std::min(y, picture.height - 1);
    for (int32_t x = area.left; x < area.left + area.width; ++x) {
      const int32_t from_x = std::min(x, picture.width - 1);
      const size_t pixel = static_cast<size_t>(from_y) * static_cast<size_t>(picture.width) +
                           static_cast<size_t>(from_x);
      for (size_t s = 0; s < picture.samples; ++s)
        row.push_back(values[pixel * picture.samples + s]);
    }
    put_bytes(&block, row_bytes_of(picture, row));
  }
  return block;
}

}  // namespace

void cut_into_blocks(TiffPicture *picture, const std::vector<uint32_t> &values) {
  picture->data.clear();
  if (picture->rows_per_strip > 0) {
    for (int32_t y = 0; y < picture->height; y += picture->rows_per_strip) {
      const int32_t rows = std::min(picture->rows_per_strip, picture->height - y);
      picture->data.push_back(block_of(*picture, values, {0, y, picture->width, rows}));
    }
    return;
  }
  for (int32_t y = 0; y < picture->height; y += picture->tile_height) {
    for (int32_t x = 0; x < picture->width; x += picture->tile_width) {
      picture->data.push_back(
          block_of(*picture, values, {x, y, picture->tile_width, picture->tile_height}));
    }
  }
}

std::vector<uint32_t> random_tiff_samples(const TiffPicture &picture, uint32_t seed) {
  const size_t count =
      static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height) * picture.samples;
  std::vector<uint32_t> values = random_samples(count, picture.bits, seed);
  if (picture.format != 3) return values;
  RandomNumbers random(seed);
  for (uint32_t &value : values)
    value = std::bit_cast<uint32_t>(static_cast<float>(random.between(-100000, 70000)) / 77.0F);
  return values;
}

Bytes pack_bits_coded(const Bytes &data) {
  Bytes coded;
  for (size_t at = 0; at < data.size();) {
    size_t same = 1;
    while (same < 128 && at + same < data.size() && data[at + same] == data[at])
      ++same;
    if (same >= 2) {
      put_u8(&coded, 257 - same);
      put_u8(&coded, data[at]);
      at += same;
      continue;
    }
    size_t count = 1;
    while (count < 128 && at + count < data.size() && data[at + count] != data[at + count - 1])
      ++count;
    put_u8(&coded, count - 1);
    for (size_t i = 0; i < count; ++i)
      put_u8(&coded, data[at + i]);
    at += count;
  }
  return coded;
}

namespace {

struct BitWriter {
  Bytes bytes;
  size_t bit = 0;
  void put(uint32_t code, uint32_t size) {
    for (uint32_t i = size; i > 0; --i, ++bit) {
      if (bit % 8 == 0) bytes.push_back(0);
      bytes.back() = static_cast<uint8_t>(bytes.back() | (code >> (i - 1) & 1) << (7 - bit % 8));
    }
  }
};

}  // namespace

Bytes lzw_coded(const Bytes &data) {
  constexpr uint32_t clear = 256;
  constexpr uint32_t end = 257;
  constexpr uint32_t first_entry = 258;
  constexpr uint32_t nothing = 0xffffffffU;
  BitWriter writer;
  std::map<std::pair<uint32_t, uint32_t>, uint32_t> table;
  uint32_t next = first_entry;
  uint32_t size = 9;
  uint32_t prefix = nothing;
  writer.put(clear, size);
  for (const uint8_t byte : data) {
    if (prefix == nothing) {
      prefix = byte;
      continue;
    }
    const auto found = table.find({prefix, byte});
    if (found != table.end()) {
      prefix = found->second;
      continue;
    }
    writer.put(prefix, size);
    table[{prefix, byte}] = next++;
    if (next == 512 || next == 1024 || next == 2048) ++size;
    if (next == 4094) {
      writer.put(clear, size);
      table.clear();
      next = first_entry;
      size = 9;
    }
    prefix = byte;
  }
  if (prefix != nothing) {
    writer.put(prefix, size);
    ++next;
    if (next == 512 || next == 1024 || next == 2048) ++size;
  }
  writer.put(end, size);
  return writer.bytes;
}

TiffParts tiff_parts(const TiffPicture &picture, uint32_t compression) {
  TiffParts parts;
  parts.big_endian = picture.big_endian;
  parts.set(tiff_width, {static_cast<uint32_t>(picture.width)});
  parts.set(tiff_height, {static_cast<uint32_t>(picture.height)}, tiff_long);
  parts.set(tiff_bits, std::vector<uint32_t>(picture.samples, picture.bits));
  parts.set(tiff_compression, {compression});
  parts.set(tiff_photometric, {picture.photometric});
  parts.set(tiff_samples, {picture.samples});
  if (picture.predictor != 1) parts.set(tiff_predictor, {picture.predictor});
  if (!picture.map.empty()) parts.set(tiff_colour_map, picture.map);
  if (picture.format != 1)
    parts.set(tiff_sample_format, std::vector<uint32_t>(picture.samples, picture.format));
  if (picture.rows_per_strip > 0) {
    parts.set(tiff_rows_per_strip, {static_cast<uint32_t>(picture.rows_per_strip)});
    parts.set(tiff_strip_offsets, {}, tiff_long);
    parts.set(tiff_strip_counts, {}, tiff_long);
  } else {
    parts.set(tiff_tile_width, {static_cast<uint32_t>(picture.tile_width)});
    parts.set(tiff_tile_height, {static_cast<uint32_t>(picture.tile_height)});
    parts.set(tiff_tile_offsets, {}, tiff_long);
    parts.set(tiff_tile_counts, {}, tiff_long);
  }
  for (const Bytes &block : picture.data) {
    parts.blocks.push_back(compression == 5       ? lzw_coded(block)
                           : compression == 32773 ? pack_bits_coded(block)
                                                  : block);
  }
  return parts;
}

}  // namespace quorix::testing
