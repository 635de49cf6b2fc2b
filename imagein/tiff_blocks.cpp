// SPDX-License-Identifier: MIT
//
// Three ways for the bytes of a strip or tile: as they stand in the window over the file, a few
// rows at a time; unpacked as a whole into memory, and handed over from there; or, for strips of
// RGB that are to be held, straight to where they stay, as many strips at once as follow each other
// in the file.
//
// Decisions. What cannot fill its strip or tile is refused before there is room for it, and so are
// strips and tiles that together have more bytes than the file several times over: the time for a
// file is bounded by its size, not by what it claims.
#include "imagein/tiff_blocks.h"

#include <algorithm>
#include <cstring>

#include "imagein/tiff_unpack.h"

namespace quorix {

namespace {

// Read ahead, and handed over at a time, or one row if that is longer.
constexpr size_t piece_bytes = 131072;

// Times that a byte of the file may be used. One is enough for files that are well made, but some
// programs let strips that are alike share their bytes.
constexpr uint64_t most_uses = 4;

struct Block {
  int64_t x, y;    // in the picture
  uint64_t bytes;  // when it is unpacked
  uint64_t offset;
  size_t stored;  // bytes of it in the file
};

// The last strip has the rows that remain. Tiles are whole, whatever they hang over.
Block block_at(const TiffBlocks &blocks, size_t index) {
  const TiffFile &tiff = *blocks.tiff;
  const int64_t across = (tiff.width - 1) / tiff.block_width + 1;
  const auto number = static_cast<int64_t>(index);
  Block block;
  block.x = number % across * tiff.block_width;
  block.y = number / across * tiff.block_rows;
  const int64_t left = tiff.height - block.y;
  const int64_t rows = tiff.tiled ? tiff.block_rows : std::min(left, tiff.block_rows);
  if (__builtin_mul_overflow(static_cast<uint64_t>(rows), blocks.row_bytes, &block.bytes))
    block.bytes = UINT64_MAX;
  block.offset = tiff.offsets[index];
  block.stored = block_bytes(tiff, *blocks.window.source, index);
  return block;
}

void hand_over(const TiffBlocks &blocks, const Block &block, uint64_t first_row,
               const uint8_t *bytes, size_t count, TakeTiffRow take, void *context) {
  TiffRow row = {bytes, 0, block.x, block.y + static_cast<int64_t>(first_row)};
  for (; count != 0; count -= row.count, row.bytes += row.count, row.y += 1) {
    row.count = static_cast<size_t>(std::min<uint64_t>(count, blocks.row_bytes));
    take(context, row);
  }
}

// ---- uncompressed

int32_t take_raw(TiffBlocks *blocks, const Block &block, TakeTiffRow take, void *context) {
  const uint64_t bytes = std::min<uint64_t>(block.stored, block.bytes);
  const uint64_t rows = std::max<uint64_t>(piece_bytes / blocks->row_bytes, 1);
  uint64_t piece = 0;
  if (__builtin_mul_overflow(rows, blocks->row_bytes, &piece)) piece = UINT64_MAX;
  for (uint64_t done = 0; done < bytes;) {
    const auto wanted = static_cast<size_t>(std::min(bytes - done, piece));
    size_t count = wanted;
    const uint8_t *const at = window_bytes(&blocks->window, block.offset + done, &count);
    if (at == nullptr) return reader_no_memory;
    hand_over(*blocks, block, done / blocks->row_bytes, at, count, take, context);
    if (count < wanted) break;
    done += count;
  }
  return reader_done;
}

// ---- unpacked into memory

bool can_fill(const TiffFile &tiff, const Block &block) {
  if (tiff.compression == tiff_lzw) return lzw_can_fill(block.stored, block.bytes);
  if (tiff.compression == tiff_packbits) return packbits_can_fill(block.stored, block.bytes);
  return true;
}

// What a strip or tile fills of its bytes.
uint64_t filled_bytes(const TiffFile &tiff, const Block &block) {
  return tiff.compression == tiff_raw ? std::min<uint64_t>(block.stored, block.bytes) : block.bytes;
}

bool get_strings(TiffBlocks *blocks) {
  if (blocks->tiff->compression != tiff_lzw || blocks->strings != nullptr) return true;
  blocks->strings = allocate_array<TiffString>(tiff_codes);
  return blocks->strings != nullptr;
}

bool get_room(TiffBlocks *blocks, size_t bytes) {
  if (blocks->unpacked != nullptr && bytes <= blocks->unpacked_room) return true;
  blocks->unpacked.reset();
  blocks->unpacked = allocate_array<uint8_t>(bytes);
  blocks->unpacked_room = bytes;
  return blocks->unpacked != nullptr;
}

template <size_t step>
void add_up_by(uint8_t *bytes, size_t count) {
  uint8_t sums[step] = {};
  size_t i = 0;
  for (; i + step <= count; i += step) {
    for (size_t k = 0; k < step; ++k)
      bytes[i + k] = sums[k] = static_cast<uint8_t>((sums[k] + bytes[i + k]) & 255);
  }
  for (size_t k = 0; i + k < count; ++k)
    bytes[i + k] = static_cast<uint8_t>((sums[k] + bytes[i + k]) & 255);
}

// Kept: differences run through the whole strip or tile, not only through a row.
void add_up(const TiffFile &tiff, uint8_t *bytes, size_t count) {
  if (tiff.photometric == tiff_rgb) {
    add_up_by<3>(bytes, count);
  } else {
    add_up_by<1>(bytes, count);
  }
}

// Reads the bytes of an uncompressed strip or tile, of which `*count` are in the file.
void read_raw(const TiffBlocks &blocks, const Block &block, uint8_t *target, size_t *count) {
  ByteSource *const source = blocks.window.source;
  seek_source(source, std::min(block.offset, source->size));
  *count = read_available(source, target, *count);
}

// Leaves filled_bytes at `target`, or fewer if the system does not give them: `*count` says how
// many.
int32_t unpack(TiffBlocks *blocks, const Block &block, uint8_t *target, size_t *count) {
  const TiffFile &tiff = *blocks->tiff;
  if (tiff.compression == tiff_raw) {
    read_raw(*blocks, block, target, count);
  } else {
    size_t stored_count = block.stored;
    const uint8_t *const stored = window_bytes(&blocks->window, block.offset, &stored_count);
    if (stored == nullptr || !get_strings(blocks)) return reader_no_memory;
    const Unpacked result =
        tiff.compression == tiff_lzw
            ? unpack_lzw(stored, stored_count, blocks->strings.get(), target, *count)
            : unpack_packbits(stored, stored_count, target, *count);
    if (result == Unpacked::corrupt) return tiff_corrupt;
    blocks->overfull = blocks->overfull || result == Unpacked::overfull;
  }
  if (tiff.adds_up) add_up(tiff, target, *count);
  return reader_done;
}

int32_t take_unpacked(TiffBlocks *blocks, const Block &block, TakeTiffRow take, void *context) {
  if (!can_fill(*blocks->tiff, block)) return tiff_corrupt;
  auto count = static_cast<size_t>(filled_bytes(*blocks->tiff, block));
  if (!get_room(blocks, count)) return reader_no_memory;
  const int32_t status = unpack(blocks, block, blocks->unpacked.get(), &count);
  if (status != reader_done) return status;
  hand_over(*blocks, block, 0, blocks->unpacked.get(), count, take, context);
  return reader_done;
}

// Steps to the strip behind number `*index` that does not follow the one before it both in the file
// and in the picture, as full strips do that are as they should be. Returns the bytes of all
// between.
size_t bytes_that_follow(const TiffBlocks &blocks, size_t *index, Block block) {
  const TiffFile &tiff = *blocks.tiff;
  const bool joinable = tiff.compression == tiff_raw && !tiff.adds_up;
  size_t bytes = 0;
  for (*index += 1; *index < tiff.blocks && joinable; *index += 1) {
    const Block next = block_at(blocks, *index);
    const bool full = block.stored >= block.bytes;
    if (!full || next.y >= tiff.height || next.offset != block.offset + block.bytes) break;
    bytes += static_cast<size_t>(filled_bytes(tiff, next));
    block = next;
  }
  return bytes;
}

int32_t final_status(const TiffBlocks &blocks) {
  return blocks.overfull ? int32_t{tiff_corrupt} : int32_t{reader_done};
}

}  // namespace

// What is not read ahead is read exactly, so that jumping about does not read more than is used.
const uint8_t *window_bytes(TiffWindow *window, uint64_t offset, size_t *count) {
  static constexpr uint8_t nothing = 0;
  if (*count == 0) return &nothing;
  const bool in_window = offset >= window->start && *count <= window->count &&
                         offset - window->start <= window->count - *count;
  window->ahead = offset == window->behind ? std::min(2 * window->ahead + 1024, piece_bytes) : 0;
  window->behind = offset + *count;
  if (in_window) return window->bytes.get() + (offset - window->start);
  const size_t wanted = std::max(*count, window->ahead);
  if (window->bytes == nullptr || wanted > window->room) {
    window->room = std::max(wanted, piece_bytes);
    window->bytes = allocate_array<uint8_t>(window->room);
    window->count = 0;
    if (window->bytes == nullptr) return nullptr;
  }
  seek_source(window->source, offset);
  window->start = offset;
  window->count = read_available(window->source, window->bytes.get(), wanted);
  *count = std::min(*count, window->count);
  return window->bytes.get();
}

size_t block_bytes(const TiffFile &tiff, const ByteSource &source, size_t index) {
  const uint64_t offset = tiff.offsets[index];
  if (offset >= source.size) return 0;
  return static_cast<size_t>(std::min<uint64_t>(tiff.sizes[index], source.size - offset));
}

void open_blocks(const TiffFile &tiff, ByteSource *source, TiffBlocks *blocks) {
  *blocks = {};
  blocks->tiff = &tiff;
  blocks->window.source = source;
  blocks->row_bytes = tiff_bytes(tiff, tiff.block_width);
}

bool blocks_fit(const TiffBlocks &blocks) {
  const TiffFile &tiff = *blocks.tiff;
  uint64_t bytes = 0;
  for (size_t i = 0; i < tiff.blocks; ++i) {
    const Block block = block_at(blocks, i);
    if (block.y >= tiff.height) break;
    const bool raw = tiff.compression == tiff_raw;
    bytes += raw ? std::min<uint64_t>(block.stored, block.bytes) : block.stored;
  }
  return bytes / most_uses <= blocks.window.source->size;
}

bool fills_picture(const TiffBlocks &blocks) {
  const TiffFile &tiff = *blocks.tiff;
  if (tiff.tiled) return false;
  for (size_t i = 0; i < tiff.blocks; ++i) {
    const Block block = block_at(blocks, i);
    if (filled_bytes(tiff, block) < block.bytes) return false;
    if (block.y + tiff.block_rows >= tiff.height) return true;
  }
  return false;
}

int32_t put_strips(TiffBlocks *blocks, uint8_t *target) {
  const TiffFile &tiff = *blocks->tiff;
  for (size_t i = 0; i < tiff.blocks;) {
    const Block block = block_at(*blocks, i);
    if (block.y >= tiff.height) break;
    if (!can_fill(tiff, block)) return tiff_corrupt;
    const auto filled = static_cast<size_t>(filled_bytes(tiff, block));
    const size_t bytes = filled + bytes_that_follow(*blocks, &i, block);
    uint8_t *const to = target + static_cast<uint64_t>(block.y) * blocks->row_bytes;
    size_t count = bytes;
    const int32_t status = unpack(blocks, block, to, &count);
    if (status != reader_done) return status;
    count -= count % rgb_bytes;  // no pixel in part
    std::memset(to + count, 0, bytes - count);
  }
  return final_status(*blocks);
}

int32_t take_rows(TiffBlocks *blocks, TakeTiffRow take, void *context) {
  const TiffFile &tiff = *blocks->tiff;
  const bool as_it_stands = tiff.compression == tiff_raw && !tiff.adds_up;
  for (size_t i = 0; i < tiff.blocks; ++i) {
    const Block block = block_at(*blocks, i);
    if (block.y >= tiff.height) break;
    const int32_t status = as_it_stands ? take_raw(blocks, block, take, context)
                                        : take_unpacked(blocks, block, take, context);
    if (status != reader_done) return status;
  }
  return final_status(*blocks);
}

}  // namespace quorix
