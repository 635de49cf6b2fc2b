// SPDX-License-Identifier: MIT
//
// Two passes over the pixels: one grows the tree and sums up what comes to each of its leaves, the
// other finds the palette entry of each pixel. Runs of one colour are taken at once.
#include "imageout/quantiser.h"

#include <algorithm>
#include <cstring>

#include "base/memory.h"
#include "imageout/colour_tree.h"

namespace quorix {

namespace {

Colour colour_at(const uint8_t *rgb, size_t pixel) {
  const uint8_t *const at = rgb + 3 * pixel;
  return at[0] | static_cast<Colour>(at[1]) << 8 | static_cast<Colour>(at[2]) << 16;
}

// Eight bytes from a pixel on.
uint64_t bytes_at(const uint8_t *rgb, size_t pixel) {
  uint64_t bytes = 0;
  std::memcpy(&bytes, rgb + 3 * pixel, sizeof(bytes));
  return bytes;
}

// Whether a pixel and the two behind it are equal, and so far the start of the next: compared as
// eight bytes, which repeat after three.
bool starts_run(const uint8_t *rgb, size_t pixel) {
  return bytes_at(rgb, pixel) == bytes_at(rgb, pixel + 1);
}

// Pixels from `first` on that have its colour, or 1 if they are few. In a photograph one pixel may
// well be like the next, which no processor guesses, but hardly like the next three.
size_t run_length(const uint8_t *rgb, size_t first, size_t pixels) {
  size_t last = first;
  while (last + 4 <= pixels && starts_run(rgb, last))
    last += 2;
  return last - first + 1;
}

// Only the first pixel of a run can bring a leaf too many; the others fall on whatever leaf its
// pixels were merged into, so they may as well be counted with it.
void count_run(ColourTree *tree, Colour c, uint64_t run) {
  ColourNode &leaf = tree->nodes[leaf_of(tree, c)];
  leaf.pixels += run;
  leaf.red += run * red_of(c);
  leaf.green += run * green_of(c);
  leaf.blue += run * blue_of(c);
  reduce(tree);
}

// Sums up pixels that find their leaf at once, as nearly all of a photograph do. Gives the first
// that does not, or that starts a run.
size_t count_quickly(ColourTree *tree, const uint8_t *rgb, size_t first, size_t pixels) {
  size_t i = first;
  for (; i + 4 <= pixels; ++i) {
    const uint64_t bytes = bytes_at(rgb, i);
    if (bytes == bytes_at(rgb, i + 1)) break;
    const auto colour = static_cast<Colour>(bytes);
    const NodeNumber leaf = known_leaf(tree, colour);
    if (leaf == no_node) break;
    tree->recent[leaf].turn[i & 1] += sums_of_one(colour);
  }
  return i;
}

void grow_tree(ColourTree *tree, const uint8_t *rgb, size_t pixels) {
  for (size_t i = 0; i < pixels;) {
    const size_t soon = std::min(pixels, i + most_recent_pixels);
    while (i < soon) {
      i = count_quickly(tree, rgb, i, soon);
      if (i == soon) break;
      const size_t run = run_length(rgb, i, pixels);
      count_run(tree, colour_at(rgb, i), run);
      i += run;
    }
    settle_all(tree);
  }
}

struct Palette {
  uint8_t *reds, *greens, *blues;
  size_t count;
};

// Depth first, so a palette goes from dark to bright in the first bits of its channels.
void make_palette(ColourTree *tree, NodeNumber number, Palette *palette) {
  ColourNode &node = tree->nodes[number];
  if (!node.leaf) {
    for (const NodeNumber child : node.children)
      if (child != no_node) make_palette(tree, child, palette);
    return;
  }
  palette->reds[palette->count] = static_cast<uint8_t>(node.red / node.pixels);
  palette->greens[palette->count] = static_cast<uint8_t>(node.green / node.pixels);
  palette->blues[palette->count] = static_cast<uint8_t>(node.blue / node.pixels);
  tree->index[number] = static_cast<uint8_t>(palette->count++);
}

// Every colour of the picture has its leaf by now.
inline uint8_t index_of(const ColourTree *tree, Colour c) {
  return tree->index[known_leaf(tree, c)];
}

void write_indices(const ColourTree *tree, const uint8_t *rgb, size_t pixels, uint8_t *indices) {
  size_t i = 0;
  while (i + 4 <= pixels) {
    const uint64_t bytes = bytes_at(rgb, i);
    const uint8_t index = index_of(tree, static_cast<Colour>(bytes));
    if (bytes != bytes_at(rgb, i + 1)) {
      indices[i++] = index;
      continue;
    }
    const size_t run = run_length(rgb, i, pixels);
    std::memset(indices + i, index, run);
    i += run;
  }
  for (; i < pixels; ++i)
    indices[i] = index_of(tree, colour_at(rgb, i));
}

}  // namespace

void quantise(const uint8_t *rgb, size_t width, size_t height, uint8_t *indices, uint8_t *reds,
              uint8_t *greens, uint8_t *blues) {
  const size_t pixels = width * height;
  if (pixels == 0) return;
  const OwnedArray<ColourTree> memory = allocate_zeroed_array<ColourTree>(1);
  ColourTree *const tree = memory.get();
  if (tree == nullptr) {
    std::fill_n(indices, pixels, uint8_t{0});
    return;
  }
  grow_tree(tree, rgb, pixels);
  Palette palette = {reds, greens, blues, 0};
  make_palette(tree, tree->root, &palette);
  write_indices(tree, rgb, pixels, indices);
}

}  // namespace quorix
