// SPDX-License-Identifier: MIT
//
// The compressed forms of a strip or tile of a TIFF file. Nothing is read beyond `count` bytes at
// `bytes`.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imagein/lzw_strings.h"

namespace quorix {

enum class Unpacked : uint8_t {
  whole,     // all of the target is filled
  overfull,  // it is, and there was more
  corrupt,   // codes that cannot be, or too few to fill the target
};

// `target` has room for `size` bytes.
Unpacked unpack_packbits(const uint8_t *bytes, size_t count, uint8_t *target, size_t size);

// `target` has room for size + lzw_spill bytes, `strings` for lzw_codes.
Unpacked unpack_lzw(const uint8_t *bytes, size_t count, LzwString *strings, uint8_t *target,
                    size_t size);

// Whether so many bytes can stand for `size`: to be asked before memory is requested.
bool packbits_can_fill(size_t count, uint64_t size);
bool lzw_can_fill(size_t count, uint64_t size);

}  // namespace quorix
