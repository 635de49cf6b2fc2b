// SPDX-License-Identifier: MIT
//
// Rows of three-byte pixels.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// Exchanges the first and the third byte of each pixel.
void swap_red_and_blue(uint8_t *pixels, size_t count);

// The same, for any processor; what the fast form is compared with.
void swap_red_and_blue_plainly(uint8_t *pixels, size_t count);

}  // namespace quorix
