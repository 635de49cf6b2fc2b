// SPDX-License-Identifier: MIT
//
// Many small blocks that are released together, cut from large ones.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/memory.h"

namespace quorix {

struct ArenaPiece {
  ArenaPiece *earlier;
};

struct Arena {
  ArenaPiece *pieces;  // the newest first; owned
  char *room;          // what is left of the piece in use
  size_t left;
  size_t piece_bytes;  // of the piece in use
};

// A block aligned for doubles and pointers, or null. Blocks asked for one after another stand one
// after another, as long as a piece lasts; pieces get larger the more is taken.
inline void *arena_take(Arena *arena, size_t bytes) {
  constexpr size_t first_piece = size_t{1} << 16;
  constexpr size_t largest_piece = size_t{1} << 23;
  constexpr size_t alignment = 8;
  if (bytes > SIZE_MAX / 2) return nullptr;
  bytes = (bytes + alignment - 1) & ~(alignment - 1);
  if (bytes > arena->left) {
    const size_t next_piece = std::clamp(2 * arena->piece_bytes, first_piece, largest_piece);
    // A large block has a piece of its own, and the one in use stays in use.
    const bool is_large = bytes > next_piece / 4;
    const size_t size = is_large ? bytes : next_piece;
    auto *piece = static_cast<ArenaPiece *>(allocate_bytes(sizeof(ArenaPiece) + size));
    if (piece == nullptr) return nullptr;
    piece->earlier = arena->pieces;
    arena->pieces = piece;
    char *const room = reinterpret_cast<char *>(piece + 1);
    if (is_large) return room;
    arena->room = room;
    arena->left = arena->piece_bytes = size;
  }
  char *const block = arena->room;
  arena->room += bytes;
  arena->left -= bytes;
  return block;
}

inline void arena_release(Arena *arena) {
  while (arena->pieces != nullptr) {
    ArenaPiece *const piece = arena->pieces;
    arena->pieces = piece->earlier;
    release_bytes(piece);
  }
  *arena = {};
}

}  // namespace quorix
