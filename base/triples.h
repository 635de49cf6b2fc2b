// SPDX-License-Identifier: MIT
//
// Rows of three-byte pixels.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// Exchanges the first and the third byte of each pixel.
void swap_red_and_blue(uint8_t *pixels, size_t count);

// The same, for any processor; what the wide forms are compared with.
void swap_red_and_blue_plainly(uint8_t *pixels, size_t count);

// ---- triples_ssse3.cpp, triples_neon.cpp
void swap_red_and_blue_ssse3(uint8_t *pixels, size_t count);
void swap_red_and_blue_neon(uint8_t *pixels, size_t count);

}  // namespace quorix
