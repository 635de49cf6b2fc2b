// SPDX-License-Identifier: MIT
//
// The colour quantiser as plain steps: one small block of memory per node, a walk from the root for
// every pixel, nothing remembered. Slow, and what the library's quantiser is compared with.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix::testing {

struct LiteralQuantiserReport {
  size_t colours;  // entries of the palette
  size_t merges;   // nodes that took in their children
};

// As quantise() of the library. Entries of the palette beyond `colours` are not touched. With
// refuse_nodes, there is no memory for any node.
LiteralQuantiserReport literal_quantise(const uint8_t *rgb, size_t width, size_t height,
                                        uint8_t *indices, uint8_t *reds, uint8_t *greens,
                                        uint8_t *blues, bool refuse_nodes = false);

}  // namespace quorix::testing
