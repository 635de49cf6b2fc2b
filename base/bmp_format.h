// SPDX-License-Identifier: MIT
//
// Windows bitmaps with the information header of 40 bytes: what their reader and their writer agree
// on.
//
// A file is the two headers, the colour table, and rows from the bottom. Words are low byte first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// ---- headers: where things stand in the file

inline constexpr char bmp_signature[] = {'B', 'M'};
inline constexpr size_t bmp_file_size_at = 2;
inline constexpr size_t bmp_offset_at = 10;     // of the rows
inline constexpr size_t bmp_info_size_at = 14;  // the information header begins, with its own size
inline constexpr size_t bmp_width_at = 18;
inline constexpr size_t bmp_height_at = 22;
inline constexpr size_t bmp_planes_at = 26;  // 16 bits, and so has the next
inline constexpr size_t bmp_bits_at = 28;    // per pixel
inline constexpr size_t bmp_compression_at = 30;
inline constexpr size_t bmp_image_size_at = 34;  // bytes of all rows
inline constexpr size_t bmp_x_resolution_at = 38;
inline constexpr size_t bmp_y_resolution_at = 42;
inline constexpr size_t bmp_colours_used_at = 46;
inline constexpr size_t bmp_colours_important_at = 50;
inline constexpr size_t bmp_headers_bytes = 54;
inline constexpr uint32_t bmp_info_bytes = 40;

enum BmpCompression : uint32_t { bmp_plain = 0, bmp_run_length_8 = 1, bmp_run_length_4 = 2 };

// ---- colours and rows

inline constexpr size_t bmp_table_entries = 256;    // that a pixel can name
inline constexpr size_t bmp_table_entry_bytes = 4;  // blue, green, red, 0
inline constexpr size_t bmp_row_group = 4;          // a row has a multiple of so many bytes

// ---- run lengths: pairs of a count and a value. With a count of 0 the value is one of these, or
// the number of pixels that follow as they stand.

enum BmpRunCode : uint8_t { bmp_end_of_line = 0, bmp_end_of_bitmap = 1, bmp_delta = 2 };

}  // namespace quorix
