// SPDX-License-Identifier: MIT
//
// One pass over the chunks of a file in memory.
//
// Kept: signature, CRCs and the first chunk's length and name are not looked at, nor is the order
// of chunks. Where a chunk comes twice the later one counts.
#include "imagein/png_chunks.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace quorix {

namespace {

constexpr size_t header_at = sizeof png_signature + png_data_at;  // the data of the first chunk

struct Chunk {
  PngChunk name;
  const uint8_t *data;
  size_t bytes;  // those that are there
};

uint32_t word_at(const uint8_t *bytes) {
  return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

bool is_one_of(uint8_t depth, std::initializer_list<int> depths) {
  return std::find(depths.begin(), depths.end(), int{depth}) != depths.end();
}

bool standard_has(PngColour colour, uint8_t depth) {
  switch (colour) {
    case PngColour::grey:
      return is_one_of(depth, {1, 2, 4, 8, 16});
    case PngColour::palette:
      return is_one_of(depth, {1, 2, 4, 8});
    case PngColour::rgb:
    case PngColour::grey_alpha:
    case PngColour::rgb_alpha:
      return is_one_of(depth, {8, 16});
  }
  return false;
}

bool read_header(const WholeFile &file, PngHeader *header) {
  if (file.size < header_at + png_header_bytes) return false;
  const uint8_t *const at = file.bytes.get() + header_at;
  const uint32_t width = word_at(at + png_width_at);
  const uint32_t height = word_at(at + png_height_at);
  const auto colour = static_cast<PngColour>(at[png_colour_at]);
  if (width == 0 || width > INT32_MAX || height == 0 || height > INT32_MAX) return false;
  if (!standard_has(colour, at[png_depth_at])) return false;
  header->width = static_cast<int32_t>(width);
  header->height = static_cast<int32_t>(height);
  header->depth = at[png_depth_at];
  header->colour = colour;
  header->interlaced = at[png_interlace_at] == png_adam7;
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
  uint8_t data[3 * png_sample_word] = {};
  std::memcpy(data, chunk.data, std::min(chunk.bytes, sizeof data));
  const size_t byte = header->depth == 16 ? 0 : 1;  // of a sample's two
  const bool grey = header->colour != PngColour::rgb && header->colour != PngColour::rgb_alpha;
  header->has_background = true;
  for (size_t k = 0; k < 3; ++k)
    header->background[k] = data[(grey ? 0 : png_sample_word * k) + byte];
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
  if (file.size - *position < png_data_at) return false;
  const uint8_t *const at = file.bytes.get() + *position;
  const size_t length = word_at(at);
  const size_t left = file.size - *position - png_data_at;
  const auto name = static_cast<PngChunk>(word_at(at + png_word_bytes));
  *chunk = {name, at + png_data_at, std::min(length, left)};
  const size_t behind = left - chunk->bytes;
  *position = file.size - (behind - std::min(behind, png_word_bytes));  // over the CRC
  return name != PngChunk::end;
}

size_t samples_of(PngColour colour) {
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

}  // namespace

// 2^31 pixels of 64 bits need 38 bits.
size_t png_row_bytes(const PngHeader &header, size_t pixels) {
  static_assert(sizeof(size_t) >= 8);
  return (pixels * samples_of(header.colour) * header.depth + 7) / 8;
}

size_t png_pixel_bytes(const PngHeader &header) {
  return std::max<size_t>(1, samples_of(header.colour) * header.depth / 8);
}

bool read_png_chunks(WholeFile *file, PngHeader *header) {
  *header = {};
  if (!read_header(*file, header)) return false;
  uint8_t *stream = nullptr;
  size_t position = std::min(file->size, header_at + png_header_bytes + png_word_bytes);
  Chunk chunk;
  while (next_chunk(*file, &position, &chunk)) {
    if (chunk.name == PngChunk::palette) keep_palette(chunk, header);
    if (chunk.name == PngChunk::transparency) keep_transparency(chunk, header);
    if (chunk.name == PngChunk::background) keep_background(chunk, header);
    if (chunk.name == PngChunk::data) append_data(chunk, &stream, header);
  }
  header->stream = stream;
  look_up_background(header);
  return true;
}

}  // namespace quorix
