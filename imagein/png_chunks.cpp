// SPDX-License-Identifier: MIT
//
// Kept: signature, CRCs and the first chunk's length and name are not looked at, nor is the order
// of chunks. Where a chunk comes twice the later one counts.
#include "imagein/png_chunks.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace quorix {

namespace {

constexpr size_t word_bytes = 4;
constexpr size_t header_start = 8 + 2 * word_bytes;  // behind signature, length and name
constexpr size_t header_bytes = 13;

struct Chunk {
  uint32_t name;
  const uint8_t *data;
  size_t bytes;  // those that are there
};

constexpr uint32_t chunk_name(char a, char b, char c, char d) {
  return static_cast<uint32_t>(a) << 24 | static_cast<uint32_t>(b) << 16 |
         static_cast<uint32_t>(c) << 8 | static_cast<uint32_t>(d);
}

uint32_t word_at(const uint8_t *bytes) {
  return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

bool is_one_of(uint8_t depth, std::initializer_list<int> depths) {
  return std::find(depths.begin(), depths.end(), int{depth}) != depths.end();
}

bool standard_has(uint8_t colour, uint8_t depth) {
  switch (colour) {
    case 0:
      return is_one_of(depth, {1, 2, 4, 8, 16});
    case 3:
      return is_one_of(depth, {1, 2, 4, 8});
    case 2:
    case 4:
    case 6:
      return is_one_of(depth, {8, 16});
    default:
      return false;
  }
}

bool read_header(const WholeFile &file, PngHeader *header) {
  if (file.size < header_start + header_bytes) return false;
  const uint8_t *const at = file.bytes.get() + header_start;
  const uint32_t width = word_at(at);
  const uint32_t height = word_at(at + word_bytes);
  if (width == 0 || width > INT32_MAX || height == 0 || height > INT32_MAX) return false;
  if (!standard_has(at[9], at[8])) return false;
  header->width = static_cast<int32_t>(width);
  header->height = static_cast<int32_t>(height);
  header->depth = at[8];
  header->colour = static_cast<PngColour>(at[9]);
  header->interlaced = at[12] == 1;
  return true;
}

void keep_palette(const Chunk &chunk, PngHeader *header) {
  header->palette_bytes = chunk.bytes;
  std::memset(header->palette, 0, sizeof header->palette);
  std::memcpy(header->palette, chunk.data, std::min(chunk.bytes, sizeof header->palette));
}

void keep_transparency(const Chunk &chunk, PngHeader *header) {
  if (has_alpha_samples(*header)) return;
  header->has_transparency = true;
  header->transparency_bytes = chunk.bytes;
  std::memset(header->transparency, 0, sizeof header->transparency);
  std::memcpy(header->transparency, chunk.data, std::min(chunk.bytes, sizeof header->transparency));
}

// A palette index is left in the first byte until the palette is known.
void keep_background(const Chunk &chunk, PngHeader *header) {
  uint8_t data[6] = {};
  std::memcpy(data, chunk.data, std::min(chunk.bytes, sizeof data));
  const int byte = header->depth == 16 ? 0 : 1;  // of a sample of two bytes
  const int step = header->colour == PngColour::rgb || header->colour == PngColour::rgb_alpha;
  header->has_background = true;
  for (int k = 0; k < 3; ++k)
    header->background[k] = data[2 * k * step + byte];
  if (header->colour == PngColour::palette) header->background[0] = data[0];
}

void look_up_background(PngHeader *header) {
  if (!header->has_background || header->colour != PngColour::palette) return;
  const size_t index = header->background[0];
  std::memcpy(header->background, header->palette + 3 * index, sizeof header->background);
}

// Data never moves toward the end, and over nothing that is still to be read.
void append_data(const Chunk &chunk, uint8_t **stream, PngHeader *header) {
  if (*stream == nullptr) *stream = const_cast<uint8_t *>(chunk.data);
  std::memmove(*stream + header->stream_bytes, chunk.data, chunk.bytes);
  header->stream_bytes += chunk.bytes;
}

// False behind the last chunk.
bool next_chunk(const WholeFile &file, size_t *position, Chunk *chunk) {
  if (file.size - *position < 2 * word_bytes) return false;
  const uint8_t *const at = file.bytes.get() + *position;
  const size_t length = word_at(at);
  const size_t left = file.size - *position - 2 * word_bytes;
  *chunk = {word_at(at + word_bytes), at + 2 * word_bytes, std::min(length, left)};
  const size_t behind = left - chunk->bytes;
  *position = file.size - (behind - std::min(behind, word_bytes));  // over the CRC
  return chunk->name != chunk_name('I', 'E', 'N', 'D');
}

}  // namespace

size_t png_samples(PngColour colour) {
  switch (colour) {
    case PngColour::rgb:
      return 3;
    case PngColour::grey_alpha:
      return 2;
    case PngColour::rgb_alpha:
      return 4;
    default:
      return 1;
  }
}

// 2^31 pixels of 64 bits need 38 bits.
size_t png_row_bytes(const PngHeader &header, size_t pixels) {
  static_assert(sizeof(size_t) >= 8);
  return (pixels * png_samples(header.colour) * header.depth + 7) / 8;
}

size_t png_pixel_bytes(const PngHeader &header) {
  return std::max<size_t>(1, png_samples(header.colour) * header.depth / 8);
}

bool read_png_chunks(WholeFile *file, PngHeader *header) {
  *header = {};
  if (!read_header(*file, header)) return false;
  uint8_t *stream = nullptr;
  size_t position = std::min(file->size, header_start + header_bytes + word_bytes);
  Chunk chunk;
  while (next_chunk(*file, &position, &chunk)) {
    if (chunk.name == chunk_name('P', 'L', 'T', 'E')) keep_palette(chunk, header);
    if (chunk.name == chunk_name('t', 'R', 'N', 'S')) keep_transparency(chunk, header);
    if (chunk.name == chunk_name('b', 'K', 'G', 'D')) keep_background(chunk, header);
    if (chunk.name == chunk_name('I', 'D', 'A', 'T')) append_data(chunk, &stream, header);
  }
  header->stream = stream;
  look_up_background(header);
  return true;
}

}  // namespace quorix
