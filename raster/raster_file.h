// SPDX-License-Identifier: MIT
//
// The header of the library's own picture files, which the raster and the window device share.
//
// 80 bytes of text: "!Bitmap QUORIX ", the kind of producer in 5 letters, nine decimal numbers of
// width 5 with a blank between them, and 7 blanks. Pixel rows follow from the top, unpadded.
#pragma once

#include <cstdint>
#include <cstdio>

namespace quorix {

enum RasterFileKind : int32_t {
  kind_gl = 0,
  kind_win = 1,
  kind_virt = 2,
  kind_x11 = 3,
  kind_osx = 4,
};

// In the order of the file.
struct RasterFileHeader {
  int32_t width, height;
  int32_t bits;
  int32_t bytes_per_row;
  int32_t bits_stored;  // of a pixel: 8, 24 or 32
  int32_t fixed;        // always 32
  int32_t reserved;
  int32_t pixel_type;    // 0 older indexed, 1 indexed, 4 and 7 B G R X, 5 and 6 R G B (X)
  int32_t index_offset;  // of the indices of an older file
};

void write_raster_header(std::FILE *file, const RasterFileHeader &header, RasterFileKind kind);

// False if this is no such file, or one whose numbers make no picture.
bool read_raster_header(std::FILE *file, RasterFileHeader *header);

}  // namespace quorix
