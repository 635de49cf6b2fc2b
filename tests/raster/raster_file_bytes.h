// SPDX-License-Identifier: MIT
//
// Raster files made by hand, for tests of their reader.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

struct FileKind {
  const char *name;
  int32_t width, height;
  int32_t bits_stored;
  int32_t bytes_per_row;
  int32_t pixel_type;
  int32_t index_offset;
};

inline std::string raster_file_field(int32_t value) {
  const std::string digits = std::to_string(value);
  return std::string(5 - digits.size(), ' ') + digits;
}

// The 80 bytes of the header, then the rows, whose bytes are 11, 48, 85 and so on in steps of 37.
inline std::vector<uint8_t> make_raster_file(const FileKind &kind) {
  std::string header = "!Bitmap QUORIX VIRT";
  for (const int32_t field : {kind.width, kind.height, kind.bits_stored, kind.bytes_per_row,
                              kind.bits_stored, 32, 0, kind.pixel_type, kind.index_offset}) {
    header += ' ' + raster_file_field(field);
  }
  header.resize(80, ' ');
  std::vector<uint8_t> file(header.begin(), header.end());
  for (int32_t i = 0; i < kind.height * kind.bytes_per_row; ++i)
    file.push_back(static_cast<uint8_t>(i * 37 + 11));
  return file;
}

}  // namespace quorix::testing
