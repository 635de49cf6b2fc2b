// SPDX-License-Identifier: MIT
//
// The compressed forms of a strip or tile of a TIFF file. Nothing is read beyond `count` bytes at
// `bytes`.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

enum class Unpacked : uint8_t {
  whole,     // all of the target is filled
  overfull,  // it is, and there was more
  corrupt,   // codes that cannot be, or too few to fill the target
};

// What a code of LZW stands for: a string of bytes that was written to the target before, or a
// single byte. The first 8 are at hand, the first of them lowest, and zeros behind the last.
inline constexpr size_t tiff_codes = 4096;

struct TiffString {
  uint64_t head;
  uint64_t place;  // position << 16 | length, from where the target stood at the last clear code
};

// `strings` has room for tiff_codes. Both write `size` bytes to `target` and nothing behind them.
Unpacked unpack_packbits(const uint8_t *bytes, size_t count, uint8_t *target, size_t size);
Unpacked unpack_lzw(const uint8_t *bytes, size_t count, TiffString *strings, uint8_t *target,
                    size_t size);

// Whether so many bytes can stand for `size`: to be asked before memory is requested.
bool packbits_can_fill(size_t count, uint64_t size);
bool lzw_can_fill(size_t count, uint64_t size);

}  // namespace quorix
