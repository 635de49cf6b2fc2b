// SPDX-License-Identifier: MIT
//
// The quantiser's octree of colour bits: one level for each bit of a channel, its leaves the
// colours that the palette keeps apart.
//
// The tree lives in one record with room for all the nodes it can ever have, named by numbers. A
// table over the upper six bits of each channel names the node that a colour passes on level 6, or
// the leaf above it in which it ends, so that few pixels take a walk at all, and none but the first
// of its kind from the root. When a node takes in its children, all table entries beneath it name
// that node from then on, so none goes stale.
//
// A tree is a zeroed ColourTree and owns nothing besides.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imageout/quantiser.h"

namespace quorix {

inline constexpr int tree_levels = 8;  // below the root: one for each bit of a channel
inline constexpr int table_level = 6;  // bits of each channel in the table's key
inline constexpr size_t table_side = size_t{1} << table_level;
inline constexpr size_t table_size = table_side * table_side * table_side;

// One leaf more than the limit stands for a moment. Each inner node has a leaf beneath it, so no
// level has more nodes than that, and the levels near the root have fewer.
inline constexpr size_t most_leaves = quantised_colours + 1;
inline constexpr size_t nodes_above_level_3 = 1 + 8 + 64;
inline constexpr size_t node_capacity = nodes_above_level_3 + (tree_levels - 2) * most_leaves;

using Colour = uint32_t;  // 0xBBGGRR as it is read; what stands above is ignored
using NodeNumber = uint16_t;
inline constexpr NodeNumber no_node = 0;

// A node, with a bit that is set for a leaf and saves looking.
using TableEntry = uint16_t;
inline constexpr TableEntry leaf_entry = 0x8000;
static_assert(node_capacity < leaf_entry);

struct ColourNode {
  uint64_t pixels;            // settled ones
  uint64_t red, green, blue;  // sums over those pixels
  NodeNumber children[8];
  NodeNumber next;  // on its level's list of inner nodes, or on the list of free nodes
  uint8_t level;
  bool leaf;
  Colour base;  // the smallest colour that comes here
};

// Sums of red, green and blue, and how many pixels they are of.
typedef uint32_t Sums __attribute__((vector_size(16)));

// What came to a leaf of late. Neighbours often come to the same leaf, so they take turns: a sum
// need not wait for the one before it.
struct RecentSums {
  Sums turn[2];
};

// So many pixels of 255 fit in 32 bits; then they have to be settled.
inline constexpr size_t most_recent_pixels = size_t{1} << 24;

struct ColourTree {
  RecentSums recent[node_capacity + 1];
  ColourNode nodes[node_capacity + 1];  // number 0 is none
  uint8_t index[node_capacity + 1];     // of a leaf in the palette
  TableEntry table[table_size];
  NodeNumber reducible[tree_levels];  // inner nodes by level, made last first
  NodeNumber root;
  NodeNumber free_nodes;  // were used and given back
  NodeNumber used_nodes;  // were ever used
  size_t leaves;
};

inline Colour red_of(Colour c) {
  return c & 0xff;
}
inline Colour green_of(Colour c) {
  return c >> 8 & 0xff;
}
inline Colour blue_of(Colour c) {
  return c >> 16 & 0xff;
}

// The colour with only the upper bits of its channels that lead to a level.
inline Colour base_at(Colour c, int level) {
  const Colour upper_bits = 0xff00U >> level & 0xff;
  return c & upper_bits * 0x010101U;
}

// One bit of each channel as a number, red first. The product puts them side by side.
inline size_t child_of(Colour c, int level) {
  const Colour bits = c >> (tree_levels - 1 - level) & 0x010101U;
  return (bits * 0x040201U) >> 16 & 7;
}

// The upper bits of blue, green and red.
inline size_t table_key(Colour c) {
  constexpr Colour kept = table_side - 1;
  constexpr int dropped = tree_levels - table_level;
  return (c >> dropped & kept) | (c >> 2 * dropped & kept << table_level) |
         (c >> 3 * dropped & kept << 2 * table_level);
}

// The colour and a count of 1: bytes widened to 32 bits, in two steps that SIMD has.
inline Sums sums_of_one(Colour c) {
  typedef uint8_t Bytes __attribute__((vector_size(16)));
  typedef uint16_t Pairs __attribute__((vector_size(16)));
  const Sums word = {(c & 0xffffff) | 1U << 24, 0, 0, 0};
  const auto bytes = reinterpret_cast<Bytes>(word);
  const auto pairs = reinterpret_cast<Pairs>(__builtin_shufflevector(
      bytes, Bytes{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
  return reinterpret_cast<Sums>(__builtin_shufflevector(pairs, Pairs{}, 0, 8, 1, 9, 2, 10, 3, 11));
}

// The leaf of a colour, or no_node where there is none yet.
inline NodeNumber known_leaf(const ColourTree *tree, Colour c) {
  const TableEntry entry = tree->table[table_key(c)];
  if ((entry & leaf_entry) != 0) return static_cast<NodeNumber>(entry ^ leaf_entry);
  static_assert(tree_levels == table_level + 2);
  const NodeNumber number = tree->nodes[entry].children[child_of(c, table_level)];
  if (tree->nodes[number].leaf) return number;
  return tree->nodes[number].children[child_of(c, table_level + 1)];
}

// The leaf of a colour, made where it is missing.
NodeNumber leaf_of(ColourTree *tree, Colour c);

// Merges leaves until there are no more than quantised_colours.
void reduce(ColourTree *tree);

// Adds what came to the leaves of late to their sums.
void settle_all(ColourTree *tree);

}  // namespace quorix
