// SPDX-License-Identifier: MIT
//
// From true colours to at most 256: an octree of colour bits that is reduced while it grows.
//
// Decision. Sums of colours have 64 bits, so that no picture is too large for its means.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

inline constexpr size_t quantised_colours = 256;

// Finds a palette for width * height RGB triples, and the entry of each pixel.
//
//   rgb                   the picture, rows without padding
//   indices               one byte per pixel in the same order; may be `rgb` itself, which is then
//                         overwritten from its start
//   reds, greens, blues   quantised_colours bytes each; entries past those found are left alone
//
// A picture of at most 256 colours keeps them all. Otherwise, whenever a pixel brings the tree
// above 256 leaves, the node made last on the deepest level takes in its children, whatever their
// weight, until it is 256 again; a palette entry is the mean, rounded down, of the pixels that fell
// on it. Entries stand in the order of the tree. There is no status: without memory for the tree no
// pixel finds a place, all indices are 0 and no entry is written.
//
// Needs about 670 KB of its own, whatever the size of the picture.
void quantise(const uint8_t *rgb, size_t width, size_t height, uint8_t *indices, uint8_t *reds,
              uint8_t *greens, uint8_t *blues);

}  // namespace quorix
