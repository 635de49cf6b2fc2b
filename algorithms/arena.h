// SPDX-License-Identifier: MIT
//
// Many small blocks that are released together, cut from large ones.
#pragma once

#include <cstddef>

#include "platform/memory.h"

namespace quorix {

struct ArenaPiece {
  ArenaPiece *earlier;
};

struct Arena {
  ArenaPiece *pieces;  // the newest first; owned
  char *room;          // what is left of the piece in use
  size_t left;
};

// A block aligned for doubles and pointers, or null. Blocks asked for one after another stand one
// after another, as long as a piece lasts.
inline void *arena_take(Arena *arena, size_t bytes) {
  constexpr size_t piece_bytes = size_t{1} << 18;
  constexpr size_t alignment = 8;
  if (bytes > SIZE_MAX / 2) return nullptr;
  bytes = (bytes + alignment - 1) & ~(alignment - 1);
  if (bytes > arena->left) {
    const size_t size = bytes > piece_bytes / 4 ? bytes : piece_bytes;
    auto *piece = static_cast<ArenaPiece *>(allocate_bytes(sizeof(ArenaPiece) + size));
    if (piece == nullptr) return nullptr;
    piece->earlier = arena->pieces;
    arena->pieces = piece;
    char *const room = reinterpret_cast<char *>(piece + 1);
    // A large block has a piece of its own, and the one in use stays in use.
    if (size == bytes) return room;
    arena->room = room;
    arena->left = size;
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
