// SPDX-License-Identifier: MIT
//
// Growing the tree by leaves and taking it back by merging them.
#include "imageout/colour_tree.h"

#include <algorithm>

namespace quorix {

namespace {

NodeNumber take_node(ColourTree *tree) {
  const NodeNumber number = tree->free_nodes;
  if (number == no_node) return ++tree->used_nodes;
  tree->free_nodes = tree->nodes[number].next;
  return number;
}

void give_back_node(ColourTree *tree, NodeNumber number) {
  tree->nodes[number].next = tree->free_nodes;
  tree->free_nodes = number;
}

NodeNumber make_node(ColourTree *tree, Colour c, int level) {
  const NodeNumber number = take_node(tree);
  ColourNode &node = tree->nodes[number];
  node = {};
  node.level = static_cast<uint8_t>(level);
  node.base = base_at(c, level);
  if (level == tree_levels) {
    node.leaf = true;
    ++tree->leaves;
  } else {
    node.next = tree->reducible[level];
    tree->reducible[level] = number;
  }
  return number;
}

// From a node towards a colour, down to `level` or to a leaf before it; makes what is missing.
NodeNumber descend(ColourTree *tree, NodeNumber number, Colour c, int level) {
  while (!tree->nodes[number].leaf && tree->nodes[number].level < level) {
    const int at = tree->nodes[number].level;
    NodeNumber &child = tree->nodes[number].children[child_of(c, at)];
    if (child == no_node) child = make_node(tree, c, at + 1);
    number = child;
  }
  return number;
}

TableEntry entry_for(const ColourTree *tree, NodeNumber number) {
  return static_cast<TableEntry>(number | (tree->nodes[number].leaf ? leaf_entry : 0));
}

// All colours beneath a node are found through it from now on.
void name_in_table(ColourTree *tree, NodeNumber number) {
  const ColourNode &node = tree->nodes[number];
  const TableEntry entry = entry_for(tree, number);
  const size_t side = table_side >> node.level;
  TableEntry *const first = tree->table + table_key(node.base);
  for (size_t r = 0; r < side; ++r)
    for (size_t g = 0; g < side; ++g)
      std::fill_n(first + (r * table_side + g) * table_side, side, entry);
}

// Adds what came to a leaf of late to its sums.
void settle(ColourTree *tree, NodeNumber number) {
  RecentSums &recent = tree->recent[number];
  const Sums sums = recent.turn[0] + recent.turn[1];
  recent = {};
  ColourNode &node = tree->nodes[number];
  node.red += sums[0];
  node.green += sums[1];
  node.blue += sums[2];
  node.pixels += sums[3];
}

void take_in_children(ColourTree *tree, ColourNode *node) {
  for (NodeNumber &child : node->children) {
    if (child == no_node) continue;
    settle(tree, child);
    const ColourNode &merged = tree->nodes[child];
    node->pixels += merged.pixels;
    node->red += merged.red;
    node->green += merged.green;
    node->blue += merged.blue;
    give_back_node(tree, child);
    child = no_node;
    --tree->leaves;
  }
}

// The deepest level that has inner nodes makes a leaf of the one made last. Pixel counts play no
// part, and a node with one child wins no leaf. (Too many leaves never hang from the root alone, so
// the search ends above it.)
void merge_one(ColourTree *tree) {
  int level = tree_levels - 1;
  while (tree->reducible[level] == no_node)
    --level;
  const NodeNumber number = tree->reducible[level];
  ColourNode &node = tree->nodes[number];
  tree->reducible[level] = node.next;
  take_in_children(tree, &node);
  node.leaf = true;
  ++tree->leaves;
  if (level <= table_level) name_in_table(tree, number);
}

}  // namespace

NodeNumber leaf_of(ColourTree *tree, Colour c) {
  TableEntry &entry = tree->table[table_key(c)];
  if (entry == no_node) {
    if (tree->root == no_node) tree->root = make_node(tree, c, 0);
    entry = entry_for(tree, descend(tree, tree->root, c, table_level));
  }
  if ((entry & leaf_entry) != 0) return static_cast<NodeNumber>(entry ^ leaf_entry);
  return descend(tree, entry, c, tree_levels);
}

void reduce(ColourTree *tree) {
  while (tree->leaves > quantised_colours)
    merge_one(tree);
}

void settle_all(ColourTree *tree) {
  for (size_t number = 1; number <= tree->used_nodes; ++number)
    settle(tree, static_cast<NodeNumber>(number));
}

}  // namespace quorix
