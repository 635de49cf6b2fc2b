// SPDX-License-Identifier: MIT
//
// GIF as its specifications (CompuServe, 87a and 89a) have it: what its reader and its writer agree
// on.
//
// A file is signature, screen and global colour table, then extensions and images, then the
// trailer. An image is a descriptor, a colour table of its own or none, the minimum code size, and
// codes in sub-blocks: a byte that counts, so many bytes; a count of 0 ends them. Words have 16
// bits, low byte first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

inline constexpr char gif_87a[] = "GIF87a";
inline constexpr char gif_89a[] = "GIF89a";  // with extensions
inline constexpr size_t gif_signature_bytes = 6;
inline constexpr size_t gif_screen_bytes = 7;  // sizes, flags, background, aspect ratio

// ---- what a block begins with

inline constexpr uint8_t gif_extension_mark = 0x21;  // a label follows, then sub-blocks
inline constexpr uint8_t gif_image_mark = 0x2C;
inline constexpr uint8_t gif_trailer = 0x3B;

inline constexpr uint8_t gif_blocks_end = 0;
inline constexpr size_t gif_block_bytes = 255;  // of a full sub-block, without its count

// The extension for the image that follows: a sub-block of flags, delay (a word) and the
// transparent colour.
inline constexpr uint8_t gif_graphic_control = 0xF9;
inline constexpr uint8_t gif_graphic_control_bytes = 4;
inline constexpr uint8_t gif_has_transparency = 0x01;

// ---- flags of screen and image; a table's low bits are those of its size, less one

inline constexpr uint8_t gif_has_table = 0x80;
inline constexpr uint8_t gif_interlaced = 0x40;  // of an image
inline constexpr int gif_colour_bits_shift = 4;  // of a screen: bits per component, less one
inline constexpr uint8_t gif_table_bits = 0x07;
inline constexpr size_t gif_table_entries = 256;  // at most, of three bytes each

// ---- codes: with a minimum size of n bits the first 2^n are pixels, then come the clear code and
// the end code. Codes have n + 1 bits at first, and one more each time that all such are given out.

inline constexpr uint32_t gif_longest_code = 12;  // bits
inline constexpr size_t gif_codes = size_t{1} << gif_longest_code;

}  // namespace quorix
