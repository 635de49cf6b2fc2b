// SPDX-License-Identifier: MIT
//
// PNG as its standard (ISO/IEC 15948) has it: what its reader and its writer agree on.
//
// A file is the signature and then chunks. A chunk is the length of its data, its name, the data,
// and the CRC of name and data; length, name and CRC are words of 32 bits, high byte first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

inline constexpr uint8_t png_signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// ---- chunks

inline constexpr size_t png_word_bytes = 4;
inline constexpr size_t png_data_at = 2 * png_word_bytes;         // in a chunk: length and name
inline constexpr size_t png_chunk_overhead = 3 * png_word_bytes;  // all but the data

constexpr uint32_t png_chunk_name(const char (&name)[5]) {
  uint32_t word = 0;
  for (size_t i = 0; i < png_word_bytes; ++i)
    word = word << 8 | static_cast<uint8_t>(name[i]);
  return word;
}

enum class PngChunk : uint32_t {
  header = png_chunk_name("IHDR"),
  palette = png_chunk_name("PLTE"),
  transparency = png_chunk_name("tRNS"),
  background = png_chunk_name("bKGD"),
  data = png_chunk_name("IDAT"),
  end = png_chunk_name("IEND"),
};

// ---- the header chunk: where things stand in its data

inline constexpr size_t png_width_at = 0;
inline constexpr size_t png_height_at = 4;
inline constexpr size_t png_depth_at = 8;  // bits per sample
inline constexpr size_t png_colour_at = 9;
inline constexpr size_t png_interlace_at = 12;  // behind compression and filter, of one kind each
inline constexpr size_t png_header_bytes = 13;

enum class PngColour : uint8_t { grey = 0, rgb = 2, palette = 3, grey_alpha = 4, rgb_alpha = 6 };

inline constexpr uint8_t png_adam7 = 1;  // the interlace that there is

// ---- pixels

inline constexpr size_t png_palette_entries = 256;  // at most, of three bytes each
inline constexpr size_t png_sample_word = 2;        // bytes of a sample in tRNS and bKGD

enum PngFilter : uint8_t {
  png_none = 0,
  png_sub = 1,      // from the pixel on the left
  png_up = 2,       // from the one above
  png_average = 3,  // from the mean of both
  png_paeth = 4,    // from whichever of left, above and upper left is nearest to their gradient
};

}  // namespace quorix
