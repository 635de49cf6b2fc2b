// SPDX-License-Identifier: MIT
//
// The header of the library's own picture files, which the raster and the window device share.
//
// 80 bytes of text: "!Bitmap QUORIX ", the kind of producer in 5 letters, nine decimal numbers of
// width 5 with a blank between them, and 7 blanks. Pixel rows follow from the top, unpadded.
#pragma once

#include <cstddef>
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
  int32_t bits_stored;  // of a pixel
  int32_t fixed;        // always 32
  int32_t reserved;
  int32_t pixel_type;    // 0 indexed in 128 levels, 1 indexed, 4 and 7 B G R X, 5 and 6 R G B (X)
  int32_t index_offset;  // where indices of 128 levels begin
};

void write_raster_header(std::FILE *file, const RasterFileHeader &header, RasterFileKind kind);

// False if this is no such file, or one whose numbers make no picture. Any depth passes.
bool read_raster_header(std::FILE *file, RasterFileHeader *header);

// Depths that every device loads.
inline bool is_common_depth(int32_t bits) {
  return bits == 8 || bits == 24 || bits == 32;
}

// ---- raster_file.cpp: what loading needs
enum RasterFilePixels : int32_t {
  pixels_half_index = 0,
  pixels_index = 1,
  pixels_bgrx = 4,
  pixels_rgb = 5
};

// Indices of 128 levels count every second colour: 0, 1, 2 become 0, 1, 3.
void convert_half_indices(uint8_t *indices, size_t count, int32_t offset);
// Triples from pixels of four bytes. Types without a known order leave the triples alone.
void convert_quads(const uint8_t *quads, uint8_t *triples, int32_t count, int32_t pixel_type);
// Bytes from the read position to the end of the file.
size_t bytes_left(std::FILE *file);

}  // namespace quorix
