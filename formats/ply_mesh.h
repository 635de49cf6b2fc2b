// SPDX-License-Identifier: MIT
//
// A coloured mesh whose equal corners are one vertex, and its text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "base/memory.h"

namespace quorix {

struct PlyVertex {
  float x, y, z;
  uint8_t red, green, blue;
};

// Vertices are filed in a table of slots by what they hold, so that an equal one is found without a
// search. A vertex with a NaN is equal to none and is not filed.
struct PlyMesh {
  OwnedArray<PlyVertex> vertices;
  OwnedArray<int32_t> faces;  // for each face the number of its corners, then their vertices
  OwnedArray<int32_t> slots;  // vertex numbers, no_vertex where a slot is free
  size_t vertex_count, vertex_room;
  size_t face_length, face_room;
  size_t slot_count;  // a power of two, at least twice the vertices
  int32_t face_count;
  bool lost;  // there was no memory for its vertices
};

// ---- ply_mesh.cpp

// A new empty mesh, or null without memory.
PlyMesh *create_ply_mesh();
void release_ply_mesh(PlyMesh *mesh);

// Room for a face of `corners` corners, so that appending it cannot fail. False without memory:
// then the mesh is as it was, or lost.
bool reserve_ply_face(PlyMesh *mesh, size_t corners);

// For each vertex in turn the number of the first one that equals it; where there is none it is
// added. There is room for them. Together they wait for memory only once.
inline constexpr size_t most_merged = 8;
void merge_ply_vertices(PlyMesh *mesh, const PlyVertex *vertices, size_t count, int32_t *numbers);

// ---- ply_text.cpp

// Writes a mesh that is not lost.
void write_ply_text(std::FILE *file, const PlyMesh &mesh, const char *object_name);

// ---- six_decimals.cpp

inline constexpr size_t six_decimals_room = 48;  // the longest text has 47 characters

// The text of %f in the C locale: the exact value rounded to six decimals, ties to the even digit;
// "inf" and "nan" in small letters, with their sign. No terminator. Returns the length.
size_t write_six_decimals(char *to, float value);

}  // namespace quorix
