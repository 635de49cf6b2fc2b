// SPDX-License-Identifier: MIT
//
// The tree with pointers, walked from the root for each pixel.
#include "tests/imageout/literal_quantiser.h"

#include <array>
#include <memory>

namespace quorix::testing {

namespace {

constexpr int deepest_level = 8;
constexpr size_t most_leaves = 256;

struct Node {
  uint64_t pixels = 0;
  uint64_t red = 0, green = 0, blue = 0;
  int level = 0;
  bool leaf = false;
  uint8_t index = 0;
  std::array<std::unique_ptr<Node>, 8> children;
  Node *next = nullptr;
};

struct Tree {
  std::unique_ptr<Node> root;
  size_t leaves = 0;
  std::array<Node *, deepest_level + 1> reducible = {};
  size_t merges = 0;
  bool refuse_nodes = false;
};

struct Palette {
  uint8_t *reds, *greens, *blues;
  size_t count;
};

size_t child_number(const uint8_t *colour, int level) {
  const int bit = 7 - level;
  const auto red = static_cast<size_t>(colour[0] >> bit & 1);
  const auto green = static_cast<size_t>(colour[1] >> bit & 1);
  const auto blue = static_cast<size_t>(colour[2] >> bit & 1);
  return red * 4 + green * 2 + blue;
}

std::unique_ptr<Node> new_node(Tree *tree, int level) {
  if (tree->refuse_nodes) return nullptr;
  auto node = std::make_unique<Node>();
  node->level = level;
  if (level == deepest_level) {
    node->leaf = true;
    ++tree->leaves;
  } else {
    node->next = tree->reducible[static_cast<size_t>(level)];
    tree->reducible[static_cast<size_t>(level)] = node.get();
  }
  return node;
}

void insert(Tree *tree, std::unique_ptr<Node> *place, const uint8_t *colour, int level) {
  if (*place == nullptr) *place = new_node(tree, level);
  Node *node = place->get();
  if (node == nullptr) return;
  if (node->leaf) {
    node->pixels += 1;
    node->red += colour[0];
    node->green += colour[1];
    node->blue += colour[2];
    return;
  }
  insert(tree, &node->children[child_number(colour, level)], colour, level + 1);
}

// False where there is nothing to merge.
bool reduce(Tree *tree) {
  size_t level = 7;
  while (level > 0 && tree->reducible[level] == nullptr)
    --level;
  Node *node = tree->reducible[level];
  if (node == nullptr) return false;
  tree->reducible[level] = node->next;
  for (auto &child : node->children) {
    if (child == nullptr) continue;
    node->pixels += child->pixels;
    node->red += child->red;
    node->green += child->green;
    node->blue += child->blue;
    child.reset();
    --tree->leaves;
  }
  node->leaf = true;
  ++tree->leaves;
  ++tree->merges;
  return true;
}

void collect(Node *node, Palette *palette) {
  if (node == nullptr) return;
  if (node->leaf) {
    palette->reds[palette->count] = static_cast<uint8_t>(node->red / node->pixels);
    palette->greens[palette->count] = static_cast<uint8_t>(node->green / node->pixels);
    palette->blues[palette->count] = static_cast<uint8_t>(node->blue / node->pixels);
    node->index = static_cast<uint8_t>(palette->count++);
    return;
  }
  for (const auto &child : node->children)
    collect(child.get(), palette);
}

uint8_t find(const Tree &tree, const uint8_t *colour) {
  const Node *node = tree.root.get();
  int level = 0;
  while (node != nullptr && !node->leaf && level < deepest_level) {
    node = node->children[child_number(colour, level)].get();
    ++level;
  }
  return node == nullptr ? uint8_t{0} : node->index;
}

}  // namespace

LiteralQuantiserReport literal_quantise(const uint8_t *rgb, size_t width, size_t height,
                                        uint8_t *indices, uint8_t *reds, uint8_t *greens,
                                        uint8_t *blues, bool refuse_nodes) {
  Tree tree;
  tree.refuse_nodes = refuse_nodes;
  const size_t pixels = width * height;
  for (size_t i = 0; i < pixels; ++i) {
    insert(&tree, &tree.root, rgb + 3 * i, 0);
    while (tree.leaves > most_leaves && reduce(&tree)) {
    }
  }
  Palette palette = {reds, greens, blues, 0};
  collect(tree.root.get(), &palette);
  for (size_t i = 0; i < pixels; ++i)
    indices[i] = find(tree, rgb + 3 * i);
  return {palette.count, tree.merges};
}

}  // namespace quorix::testing
