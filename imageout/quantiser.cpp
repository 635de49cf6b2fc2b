// SPDX-License-Identifier: MIT
//
// The tree lives in one record with room for all the nodes it can ever have, named by numbers. A
// table over the upper six bits of each channel names the node that a colour passes on level 6, or
// the leaf above it in which it ends, so that few pixels take a walk at all, and none but the first
// of its kind from the root. When a node takes in its children, all table entries beneath it name
// that node from then on, so none goes stale.
#include "imageout/quantiser.h"

#include <algorithm>
#include <cstring>

#include "base/memory.h"

namespace quorix {

namespace {

constexpr int levels = 8;       // below the root: one for each bit of a channel
constexpr int table_level = 6;  // bits of each channel in the table's key
constexpr size_t table_side = size_t{1} << table_level;
constexpr size_t table_size = table_side * table_side * table_side;

// One leaf more than the limit stands for a moment. Each inner node has a leaf beneath it, so no
// level has more nodes than that, and the levels near the root have fewer.
constexpr size_t most_leaves = quantised_colours + 1;
constexpr size_t nodes_above_level_3 = 1 + 8 + 64;
constexpr size_t node_capacity = nodes_above_level_3 + (levels - 2) * most_leaves;

using Colour = uint32_t;  // 0xRRGGBB: a record of three bytes would travel through memory
using NodeNumber = uint16_t;
constexpr NodeNumber no_node = 0;

// A node, with a bit that tells that it is a leaf and saves looking.
using TableEntry = uint16_t;
constexpr TableEntry leaf_entry = 0x8000;
static_assert(node_capacity < leaf_entry);

struct ColourNode {
  uint64_t pixels;
  uint64_t red, green, blue;  // sums over those pixels
  NodeNumber children[8];
  NodeNumber next;  // on its level's list of inner nodes, or on the list of free nodes
  uint8_t level;
  bool leaf;
  Colour base;  // the smallest colour that comes here
};

struct Quantiser {
  ColourNode nodes[node_capacity + 1];  // number 0 is none
  uint8_t index[node_capacity + 1];     // of a leaf in the palette
  TableEntry table[table_size];
  NodeNumber reducible[levels];  // inner nodes by level, made last first
  NodeNumber root;
  NodeNumber free_nodes;  // were used and given back
  NodeNumber used_nodes;  // were ever used
  size_t leaves;
};

// ---- colours

Colour colour_at(const uint8_t *rgb, size_t pixel) {
  const uint8_t *const at = rgb + 3 * pixel;
  return static_cast<Colour>(at[0]) << 16 | static_cast<Colour>(at[1]) << 8 | at[2];
}

Colour red_of(Colour c) {
  return c >> 16;
}
Colour green_of(Colour c) {
  return c >> 8 & 0xff;
}
Colour blue_of(Colour c) {
  return c & 0xff;
}

// The colour with only the upper bits of its channels that lead to a level.
Colour base_at(Colour c, int level) {
  const Colour upper_bits = 0xff00U >> level & 0xff;
  return c & upper_bits * 0x010101U;
}

size_t child_of(Colour c, int level) {
  const int bit = levels - 1 - level;
  return (red_of(c) >> bit & 1) << 2 | (green_of(c) >> bit & 1) << 1 | (blue_of(c) >> bit & 1);
}

size_t table_key(Colour c) {
  constexpr int dropped = levels - table_level;
  return (red_of(c) >> dropped) << (2 * table_level) | (green_of(c) >> dropped) << table_level |
         blue_of(c) >> dropped;
}

// ---- nodes

NodeNumber take_node(Quantiser *q) {
  const NodeNumber number = q->free_nodes;
  if (number == no_node) return ++q->used_nodes;
  q->free_nodes = q->nodes[number].next;
  return number;
}

void give_back_node(Quantiser *q, NodeNumber number) {
  q->nodes[number].next = q->free_nodes;
  q->free_nodes = number;
}

NodeNumber make_node(Quantiser *q, Colour c, int level) {
  const NodeNumber number = take_node(q);
  ColourNode &node = q->nodes[number];
  node = {};
  node.level = static_cast<uint8_t>(level);
  node.base = base_at(c, level);
  if (level == levels) {
    node.leaf = true;
    ++q->leaves;
  } else {
    node.next = q->reducible[level];
    q->reducible[level] = number;
  }
  return number;
}

// From a node towards a colour, down to `level` or to a leaf before it; makes what is missing.
NodeNumber descend(Quantiser *q, NodeNumber number, Colour c, int level) {
  while (!q->nodes[number].leaf && q->nodes[number].level < level) {
    const int at = q->nodes[number].level;
    NodeNumber &child = q->nodes[number].children[child_of(c, at)];
    if (child == no_node) child = make_node(q, c, at + 1);
    number = child;
  }
  return number;
}

TableEntry entry_for(const Quantiser *q, NodeNumber number) {
  return static_cast<TableEntry>(number | (q->nodes[number].leaf ? leaf_entry : 0));
}

// The leaf of a colour, made where it is missing.
NodeNumber leaf_of(Quantiser *q, Colour c) {
  TableEntry &entry = q->table[table_key(c)];
  if (entry == no_node) {
    if (q->root == no_node) q->root = make_node(q, c, 0);
    entry = entry_for(q, descend(q, q->root, c, table_level));
  }
  if ((entry & leaf_entry) != 0) return static_cast<NodeNumber>(entry ^ leaf_entry);
  return descend(q, entry, c, levels);
}

// ---- merging

// All colours beneath a node are found through it from now on.
void name_in_table(Quantiser *q, NodeNumber number) {
  const ColourNode &node = q->nodes[number];
  const TableEntry entry = entry_for(q, number);
  const size_t side = table_side >> node.level;
  TableEntry *const first = q->table + table_key(node.base);
  for (size_t r = 0; r < side; ++r)
    for (size_t g = 0; g < side; ++g)
      std::fill_n(first + (r * table_side + g) * table_side, side, entry);
}

void take_in_children(Quantiser *q, ColourNode *node) {
  for (NodeNumber &child : node->children) {
    if (child == no_node) continue;
    const ColourNode &merged = q->nodes[child];
    node->pixels += merged.pixels;
    node->red += merged.red;
    node->green += merged.green;
    node->blue += merged.blue;
    give_back_node(q, child);
    child = no_node;
    --q->leaves;
  }
}

// The deepest level that has inner nodes makes a leaf of the one made last. Pixel counts play no
// part, and a node with one child wins no leaf. (Too many leaves never hang from the root alone, so
// the search ends above it.)
void merge_one(Quantiser *q) {
  int level = levels - 1;
  while (q->reducible[level] == no_node)
    --level;
  const NodeNumber number = q->reducible[level];
  ColourNode &node = q->nodes[number];
  q->reducible[level] = node.next;
  take_in_children(q, &node);
  node.leaf = true;
  ++q->leaves;
  if (level <= table_level) name_in_table(q, number);
}

// ---- the passes

// Whether a pixel and the two behind it are equal, and so far the start of the next: compared as
// eight bytes, which repeat after three.
bool starts_run(const uint8_t *rgb, size_t pixel) {
  uint64_t here;
  uint64_t next;
  std::memcpy(&here, rgb + 3 * pixel, sizeof(here));
  std::memcpy(&next, rgb + 3 * (pixel + 1), sizeof(next));
  return here == next;
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
void grow_tree(Quantiser *q, const uint8_t *rgb, size_t pixels) {
  for (size_t i = 0; i < pixels;) {
    const Colour c = colour_at(rgb, i);
    const uint64_t run = run_length(rgb, i, pixels);
    ColourNode &leaf = q->nodes[leaf_of(q, c)];
    leaf.pixels += run;
    leaf.red += run * red_of(c);
    leaf.green += run * green_of(c);
    leaf.blue += run * blue_of(c);
    while (q->leaves > quantised_colours)
      merge_one(q);
    i += run;
  }
}

struct Palette {
  uint8_t *reds, *greens, *blues;
  size_t count;
};

// Depth first, so a palette goes from dark to bright in the first bits of its channels.
void make_palette(Quantiser *q, NodeNumber number, Palette *palette) {
  ColourNode &node = q->nodes[number];
  if (!node.leaf) {
    for (const NodeNumber child : node.children)
      if (child != no_node) make_palette(q, child, palette);
    return;
  }
  palette->reds[palette->count] = static_cast<uint8_t>(node.red / node.pixels);
  palette->greens[palette->count] = static_cast<uint8_t>(node.green / node.pixels);
  palette->blues[palette->count] = static_cast<uint8_t>(node.blue / node.pixels);
  q->index[number] = static_cast<uint8_t>(palette->count++);
}

// Every colour of the picture has its entry and its leaf by now.
uint8_t index_of(const Quantiser *q, Colour c) {
  const TableEntry entry = q->table[table_key(c)];
  if ((entry & leaf_entry) != 0) return q->index[entry ^ leaf_entry];
  NodeNumber number = entry;
  for (int level = table_level; !q->nodes[number].leaf; ++level)
    number = q->nodes[number].children[child_of(c, level)];
  return q->index[number];
}

void write_indices(const Quantiser *q, const uint8_t *rgb, size_t pixels, uint8_t *indices) {
  for (size_t i = 0; i < pixels;) {
    const uint8_t index = index_of(q, colour_at(rgb, i));
    const size_t run = run_length(rgb, i, pixels);
    if (run == 1) {
      indices[i] = index;
    } else {
      std::memset(indices + i, index, run);
    }
    i += run;
  }
}

}  // namespace

void quantise(const uint8_t *rgb, size_t width, size_t height, uint8_t *indices, uint8_t *reds,
              uint8_t *greens, uint8_t *blues) {
  const size_t pixels = width * height;
  if (pixels == 0) return;
  const OwnedArray<Quantiser> memory = allocate_zeroed_array<Quantiser>(1);
  Quantiser *const q = memory.get();
  if (q == nullptr) {
    std::fill_n(indices, pixels, uint8_t{0});
    return;
  }
  grow_tree(q, rgb, pixels);
  Palette palette = {reds, greens, blues, 0};
  make_palette(q, q->root, &palette);
  write_indices(q, rgb, pixels, indices);
}

}  // namespace quorix
