// SPDX-License-Identifier: MIT
//
// From the strips or tiles of a TIFF file to rows of samples.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imagein/tiff_directory.h"
#include "imagein/tiff_unpack.h"

namespace quorix {

// A part of the file in memory. Reads ahead as long as what is asked for follows what was asked for
// before.
struct TiffWindow {
  ByteSource *source;
  OwnedArray<uint8_t> bytes;
  size_t room, count;
  uint64_t start;   // of `bytes` in the file
  uint64_t behind;  // what was asked for last
  size_t ahead;
};

// `count` bytes, which lie within the file; fewer at *count if the system does not give them. Null
// without memory. They stay until the next call.
const uint8_t *window_bytes(TiffWindow *window, uint64_t offset, size_t *count);

struct TiffBlocks {
  const TiffFile *tiff;
  TiffWindow window;
  uint64_t row_bytes;            // of a row of a strip or tile
  OwnedArray<uint8_t> unpacked;  // one strip or tile, where it cannot be used as it stands
  size_t unpacked_room;
  OwnedArray<TiffString> strings;
  bool overfull;  // some strip or tile had more data than it holds
};

// A row of a strip or tile as the file has it: `count` bytes are there, of row_bytes or fewer.
struct TiffRow {
  const uint8_t *bytes;
  size_t count;
  int64_t x, y;  // of its first pixel in the picture; y may lie below the picture's last row
};

using TakeTiffRow = void (*)(void *context, const TiffRow &row);

// Bytes of strip or tile number `index` that are in the file.
size_t block_bytes(const TiffFile &tiff, const ByteSource &source, size_t index);

void open_blocks(const TiffFile &tiff, ByteSource *source, TiffBlocks *blocks);

// False if strips or tiles overlap so much that they have more bytes than the file several times
// over: then their decoding would take a time that has nothing to do with the file's size.
bool blocks_fit(const TiffBlocks &blocks);

// Whether strips set every pixel of the picture, if nothing fails.
bool fills_picture(const TiffBlocks &blocks);

// Puts the bytes of all strips together at `target`, which has room for all rows of the picture,
// each of row_bytes. For strips of RGB of 8 bits only; otherwise as take_rows.
int32_t put_strips(TiffBlocks *blocks, uint8_t *target);

// Hands over all rows, strip by strip or tile by tile. Uncompressed data that are missing are not
// handed over; compressed data that are missing give tiff_corrupt. More data than a strip or tile
// holds give that too, but only at the end. Otherwise reader_done or reader_no_memory.
int32_t take_rows(TiffBlocks *blocks, TakeTiffRow take, void *context);

}  // namespace quorix
