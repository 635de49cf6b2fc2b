// SPDX-License-Identifier: MIT
//
// Chunk by chunk: lengths, names and sums are all checked.
#include "tests/imageout/png_decoder.h"

#include <zlib.h>

#include <algorithm>

namespace quorix::testing {

namespace {

constexpr uint8_t signature[8] = {137, 80, 78, 71, 13, 10, 26, 10};

// Cuts the stream into chunks; a problem, or nothing.
std::string take_chunks(const Bytes &stream, std::vector<PngChunk> *chunks) {
  if (stream.size() < 8 || !std::equal(signature, signature + 8, stream.begin()))
    return "no signature";
  size_t at = 8;
  while (at < stream.size()) {
    if (stream.size() - at < 12) return "a chunk is cut off";
    const size_t length = big_endian_word(&stream[at]);
    if (length > stream.size() - at - 12) return "a chunk is longer than the stream";
    const uint8_t *const type = &stream[at + 4];
    if (literal_crc(type, 4 + length) != big_endian_word(type + 4 + length)) return "a wrong CRC";
    chunks->push_back({std::string(type, type + 4), Bytes(type + 4, type + 4 + length)});
    at += 12 + length;
  }
  return {};
}

const PngChunk *find_chunk(const PngPicture &picture, const std::string &type) {
  for (const PngChunk &chunk : picture.chunks)
    if (chunk.type == type) return &chunk;
  return nullptr;
}

std::string take_header(PngPicture *picture) {
  if (picture->chunks.empty() || picture->chunks.front().type != "IHDR") return "no IHDR in front";
  if (picture->chunks.back().type != "IEND") return "no IEND at the end";
  if (!picture->chunks.back().data.empty()) return "IEND has data";
  const Bytes &data = picture->chunks.front().data;
  if (data.size() != 13) return "IHDR has not 13 bytes";
  picture->width = big_endian_word(&data[0]);
  picture->height = big_endian_word(&data[4]);
  picture->bit_depth = data[8];
  picture->colour_type = data[9];
  picture->compression = data[10];
  picture->filter = data[11];
  picture->interlace = data[12];
  if (data[8] != 8 || (data[9] != 2 && data[9] != 3)) return "not the samples that are written";
  return data[10] == 0 && data[11] == 0 && data[12] == 0 ? "" : "not the methods that are written";
}

std::string inflate_all(const Bytes &stream, Bytes *result) {
  z_stream inflater = {};
  if (inflateInit(&inflater) != Z_OK) return "inflateInit fails";
  inflater.next_in = const_cast<uint8_t *>(stream.data());
  inflater.avail_in = static_cast<uInt>(stream.size());
  int status = Z_OK;
  Bytes block(65536);
  while (status == Z_OK) {
    inflater.next_out = block.data();
    inflater.avail_out = static_cast<uInt>(block.size());
    status = inflate(&inflater, Z_NO_FLUSH);
    const size_t count = block.size() - inflater.avail_out;
    result->insert(result->end(), block.begin(), block.begin() + static_cast<ptrdiff_t>(count));
  }
  const bool all_used = inflater.avail_in == 0;
  inflateEnd(&inflater);
  if (status != Z_STREAM_END) return "IDAT cannot be inflated";
  return all_used ? "" : "bytes behind the zlib stream";
}

std::string take_rows(PngPicture *picture) {
  const size_t row = picture->width * (picture->colour_type == 2 ? size_t{3} : size_t{1});
  if (picture->filtered.size() != picture->height * (row + 1)) return "the wrong number of bytes";
  for (size_t y = 0; y < picture->height; ++y) {
    const auto start = picture->filtered.begin() + static_cast<ptrdiff_t>(y * (row + 1));
    if (*start != 0) return "a row that is filtered";
    picture->samples.insert(picture->samples.end(), start + 1,
                            start + 1 + static_cast<ptrdiff_t>(row));
  }
  return {};
}

}  // namespace

uint32_t big_endian_word(const uint8_t *bytes) {
  return static_cast<uint32_t>(bytes[0]) << 24 | static_cast<uint32_t>(bytes[1]) << 16 |
         static_cast<uint32_t>(bytes[2]) << 8 | bytes[3];
}

uint32_t literal_crc(const uint8_t *bytes, size_t count) {
  uint32_t crc = 0xffffffffU;
  for (size_t i = 0; i < count; ++i) {
    crc ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 1U) != 0 ? crc >> 1 ^ 0xedb88320U : crc >> 1;
  }
  return ~crc;
}

PngPicture decode_png(const Bytes &stream) {
  PngPicture picture;
  picture.problem = take_chunks(stream, &picture.chunks);
  if (picture.problem.empty()) picture.problem = take_header(&picture);
  if (!picture.problem.empty()) return picture;
  if (const PngChunk *chunk = find_chunk(picture, "PLTE")) picture.palette = chunk->data;
  if (const PngChunk *chunk = find_chunk(picture, "tRNS")) picture.transparency = chunk->data;
  const PngChunk *const data = find_chunk(picture, "IDAT");
  picture.problem = data == nullptr ? "no IDAT" : inflate_all(data->data, &picture.filtered);
  if (picture.problem.empty()) picture.problem = take_rows(&picture);
  return picture;
}

Bytes rgb_of(const PngPicture &picture) {
  if (picture.colour_type == 2) return picture.samples;
  Bytes palette = picture.palette;
  palette.resize(std::max<size_t>(palette.size(), 768));
  Bytes rgb;
  rgb.reserve(3 * picture.samples.size());
  for (const uint8_t index : picture.samples)
    rgb.insert(rgb.end(), palette.begin() + 3 * index, palette.begin() + 3 * index + 3);
  return rgb;
}

}  // namespace quorix::testing
