// SPDX-License-Identifier: MIT
//
// LZW as GIF files have it, for pixels of 8 bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "imageout/imageout.h"

namespace quorix {

// Writes the codes of `count` pixels in sub-blocks, without what stands before and after them. The
// stream is one clear code, the strings, a clear code whenever the table is full, an end code.
// Without pixels it has no strings. writer_no_memory before anything is written.
WriterStatus write_gif_codes(std::FILE *file, const uint8_t *pixels, size_t count);

}  // namespace quorix
