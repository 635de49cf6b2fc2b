// SPDX-License-Identifier: MIT
//
// The border of a cavity: of the edges of all triangles taken out, those that no two of them share.
#include <bit>
#include <cstdint>

#include "algorithms/algorithms.h"

namespace quorix {

namespace {

// Up to here comparing all pairs is faster than a table.
constexpr int32_t few_edges = 64;

void cancel_by_pairs(Edge *edges, int32_t count) {
  for (int32_t j = 0; j < count - 1; ++j) {
    const Edge e = edges[j];
    if (e.from == 0) continue;
    // Both numbers in one comparison; a cancelled edge equals none.
    const auto wanted = std::bit_cast<uint64_t>(Edge{e.to, e.from});
    for (int32_t k = j + 1; k < count; ++k) {
      if (std::bit_cast<uint64_t>(edges[k]) != wanted) continue;
      edges[k].from = 0;
      edges[j].from = 0;
    }
  }
}

// The place of an edge, in either direction, in a table of 2^n places.
inline uint32_t place_of(Edge e, uint32_t mask) {
  const auto low = static_cast<uint32_t>(e.from < e.to ? e.from : e.to);
  const auto high = static_cast<uint32_t>(e.from < e.to ? e.to : e.from);
  const uint64_t pair = uint64_t{high} << 32 | low;
  return static_cast<uint32_t>(pair * 0x9E3779B97F4A7C15U >> 32) & mask;
}

inline int32_t start_of(Edge e) {
  return e.from < 0 ? -e.from : e.from;
}

// Finds the first edge between the points of edge k, and makes it known if that is k itself.
int32_t first_between(const Edge *edges, int32_t k, int32_t *table, uint32_t mask) {
  const Edge e = edges[k];
  for (uint32_t at = place_of(e, mask);; at = (at + 1) & mask) {
    if (table[at] == 0) {
      table[at] = k + 1;
      return k;
    }
    const Edge other = edges[table[at] - 1];
    const int32_t from = start_of(other);
    if ((from == e.from && other.to == e.to) || (from == e.to && other.to == e.from))
      return table[at] - 1;
  }
}

// Of the edges between two points the first decides: the others of its direction stay, and if there
// are any of the opposite one, they go and it goes with them. What goes is negated at first, since
// a first edge still has to be recognised afterwards.
void cancel_by_table(Edge *edges, int32_t count, int32_t *table) {
  const uint32_t mask = std::bit_ceil(2 * static_cast<uint32_t>(count)) - 1;
  for (int32_t k = 0; k < count; ++k) {
    const int32_t first = first_between(edges, k, table, mask);
    if (edges[first].to == edges[k].to) continue;
    edges[first].from = -start_of(edges[first]);
    edges[k].from = -edges[k].from;
  }
  for (int32_t k = 0; k < count; ++k) {
    const Edge e = {start_of(edges[k]), edges[k].to};
    // The places that an edge went along to its own are emptied with it.
    for (uint32_t at = place_of(e, mask); table[at] != 0; at = (at + 1) & mask)
      table[at] = 0;
    if (edges[k].from < 0) edges[k].from = 0;
  }
}

}  // namespace

void cancel_shared_edges(Edge *edges, int32_t count, int32_t *table) {
  if (count <= few_edges) {
    cancel_by_pairs(edges, count);
  } else {
    cancel_by_table(edges, count, table);
  }
}

}  // namespace quorix
