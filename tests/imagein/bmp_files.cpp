// SPDX-License-Identifier: MIT
//
// Bitmaps put together header by header, row by row and run by run.
#include "tests/imagein/bmp_files.h"

#include "tests/imagein/random_picture.h"

namespace quorix::testing {

Bytes bmp_file(const BmpHeader &header, const Bytes &colour_table, const Bytes &data) {
  Bytes file;
  put_text(&file, "BM");
  put_little(&file, 54 + colour_table.size() + data.size(), 4);
  put_little(&file, 0, 4);
  put_little(&file, header.data_offset != 0 ? header.data_offset : 54 + colour_table.size(), 4);
  put_little(&file, 40, 4);
  put_little(&file, static_cast<uint32_t>(header.width), 4);
  put_little(&file, static_cast<uint32_t>(header.height), 4);
  put_little(&file, 1, 2);
  put_little(&file, header.bits, 2);
  put_little(&file, header.compression, 4);
  put_little(&file, data.size(), 4);
  put_little(&file, 2835, 4);
  put_little(&file, 2835, 4);
  put_little(&file, header.colours_used, 4);
  put_little(&file, 0, 4);
  put_bytes(&file, colour_table);
  put_bytes(&file, data);
  return file;
}

Bytes bmp_colours(size_t entries, uint32_t seed) {
  return random_bytes(4 * entries, seed);
}

size_t bmp_stride(const BmpHeader &header) {
  const size_t bytes = static_cast<size_t>(header.width) * header.bits / 8;
  return (bytes + 3) / 4 * 4;
}

Bytes bmp_rows(const BmpHeader &header, const std::vector<uint32_t> &samples) {
  const auto height = static_cast<size_t>(header.height);
  const size_t count = static_cast<size_t>(header.width) * (header.bits == 24 ? 3 : 1);
  Bytes data;
  for (size_t i = 0; i < height; ++i) {
    std::vector<uint32_t> row = row_of(samples, height - 1 - i, count);
    if (header.bits == 24) {
      for (size_t x = 0; x < count; x += 3)
        std::swap(row[x], row[x + 2]);
    }
    Bytes packed = pack_bits(row, header.bits == 24 ? 8 : header.bits);
    // Where rows measure nothing there still are bytes for them.
    packed.resize(bmp_stride(header) == 0 ? 4 : bmp_stride(header), 0);
    put_bytes(&data, packed);
  }
  return data;
}

void put_bmp_colour(Bytes *rgb, const Bytes &colour_table, uint32_t index) {
  for (const size_t channel : {2U, 1U, 0U}) {
    const size_t at = 4 * size_t{index} + channel;
    put_u8(rgb, at < colour_table.size() ? colour_table[at] : 0U);
  }
}

ExpectedPicture expect_bmp(const BmpHeader &header, const Bytes &colour_table,
                           const std::vector<uint32_t> &samples) {
  ExpectedPicture expected;
  expected.width = header.width;
  expected.height = header.height;
  const auto height = static_cast<size_t>(header.height);
  const auto width = static_cast<size_t>(header.width);
  for (size_t i = 0; i < height; ++i) {
    const size_t y = height - 1 - i;
    DeliveredRow row;
    row.y = static_cast<int32_t>(y);
    for (size_t x = 0; x < width; ++x) {
      if (header.bits == 24) {
        for (size_t channel = 0; channel < 3; ++channel)
          put_u8(&row.rgb, samples[3 * (y * width + x) + channel]);
      } else {
        // kept: what the stride has no room for is index 0
        const bool missing = x * header.bits >= 8 * bmp_stride(header);
        put_bmp_colour(&row.rgb, colour_table, missing ? 0 : samples[y * width + x]);
      }
    }
    expected.rows.push_back(row);
  }
  return expected;
}

namespace {

struct RunReader {
  const BmpHeader &header;
  const Bytes &colour_table;
  const Bytes &data;
  ExpectedPicture result = {};
  size_t at = 0;
  int64_t column = 0;
  int64_t row = 0;

  // -1 at the end of the data.
  int next() { return at < data.size() ? data[at++] : -1; }

  void deliver(const Bytes &indices) {
    DeliveredRow run;
    for (size_t i = 0; i < indices.size(); ++i) {
      if (column + static_cast<int64_t>(i) < header.width)
        put_bmp_colour(&run.rgb, colour_table, indices[i]);
    }
    if (!run.rgb.empty() && row < header.height) {
      run.x = static_cast<int32_t>(column);
      run.y = static_cast<int32_t>(header.height - 1 - row);
      result.rows.push_back(run);
    }
    column += static_cast<int64_t>(indices.size());
  }

  bool repeated_run(int count) {
    const int value = next();
    if (value < 0) return false;
    Bytes indices;
    for (int i = 0; i < count; ++i) {
      if (header.compression == 1) {
        put_u8(&indices, static_cast<uint32_t>(value));
      } else {
        put_u8(&indices, static_cast<uint32_t>(i % 2 == 0 ? value >> 4 : value & 15));
      }
    }
    deliver(indices);
    return true;
  }

  bool literal_run(int count) {
    Bytes indices;
    for (int i = 0; i < count; ++i) {
      const bool second_half = header.compression == 2 && i % 2 == 1;
      const int value = second_half ? data[at - 1] : next();
      if (value < 0) return false;
      if (header.compression == 1) {
        put_u8(&indices, static_cast<uint32_t>(value));
      } else {
        put_u8(&indices, static_cast<uint32_t>(i % 2 == 0 ? value >> 4 : value & 15));
      }
    }
    deliver(indices);
    // kept: a byte more for an odd number of pixels, with 4 bits too
    return count % 2 == 0 || next() >= 0;
  }

  // The status, or 1 to go on.
  int32_t step() {
    const int count = next();
    if (count < 0) return -3;
    if (count > 0) return repeated_run(count) ? 1 : -3;
    const int code = next();
    if (code < 0) return -3;
    if (code == 1) return 0;
    if (code == 0) {
      column = 0;
      ++row;
      return 1;
    }
    if (code > 2) return literal_run(code) ? 1 : -3;
    const int right = next();
    const int up = next();
    if (right < 0 || up < 0) return -3;
    column += right;
    row += up;
    return 1;
  }
};

}  // namespace

ExpectedPicture expect_bmp_runs(const BmpHeader &header, const Bytes &colour_table,
                                const Bytes &data) {
  RunReader reader = {header, colour_table, data, {}};
  reader.result.width = header.width;
  reader.result.height = header.height;
  int32_t status = 1;
  while (status == 1)
    status = reader.step();
  reader.result.status = status;
  return reader.result;
}

}  // namespace quorix::testing
