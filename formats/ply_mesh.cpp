// SPDX-License-Identifier: MIT
//
// The collected mesh. All its arrays double, so its growth costs linear time.
#include "formats/ply_mesh.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/grow.h"

namespace quorix {

namespace {

constexpr size_t first_vertices = 10000;
constexpr size_t first_face_length = 40000;
constexpr size_t first_slots = 32768;
constexpr int32_t no_vertex = -1;

OwnedArray<int32_t> allocate_slots(size_t count) {
  OwnedArray<int32_t> slots = allocate_array<int32_t>(count);
  if (slots != nullptr) std::fill_n(slots.get(), count, no_vertex);
  return slots;
}

bool is_filed(const PlyVertex &vertex) {
  return vertex.x == vertex.x && vertex.y == vertex.y && vertex.z == vertex.z;
}

bool equal(const PlyVertex &a, const PlyVertex &b) {
  return a.x == b.x && a.y == b.y && a.z == b.z && a.red == b.red && a.green == b.green &&
         a.blue == b.blue;
}

// Equal coordinates have equal bits, but for the two zeros.
uint32_t coordinate_bits(float value) {
  uint32_t bits = 0;
  const float one_zero = value + 0.0F;
  std::memcpy(&bits, &one_zero, sizeof bits);
  return bits;
}

// Mixes all bits into the high ones, which choose the slot.
uint64_t hash_vertex(const PlyVertex &vertex) {
  const uint64_t xy = uint64_t{coordinate_bits(vertex.x)} << 32 | coordinate_bits(vertex.y);
  const uint64_t colour = static_cast<uint64_t>(vertex.red) << 16 |
                          static_cast<uint64_t>(vertex.green) << 8 | vertex.blue;
  const uint64_t rest = uint64_t{coordinate_bits(vertex.z)} << 32 | colour;
  uint64_t hash = xy * 0x9E3779B97F4A7C15U;
  hash = (hash ^ hash >> 32 ^ rest) * 0xD6E8FEB86659FD93U;
  hash = (hash ^ hash >> 32) * 0xD6E8FEB86659FD93U;
  return hash ^ hash >> 32;
}

// The slot where the way to a vertex begins.
size_t first_slot(const PlyMesh &mesh, const PlyVertex &vertex) {
  return static_cast<size_t>(hash_vertex(vertex)) & (mesh.slot_count - 1);
}

// The slot of the vertex that equals `vertex`, or the free one where it belongs.
size_t find_slot(const PlyMesh &mesh, const PlyVertex &vertex, size_t slot) {
  const size_t last = mesh.slot_count - 1;
  for (; mesh.slots[slot] != no_vertex; slot = (slot + 1) & last) {
    if (equal(mesh.vertices[static_cast<size_t>(mesh.slots[slot])], vertex)) break;
  }
  return slot;
}

// Twice as many slots as vertices keep the way to each short.
bool reserve_slots(PlyMesh *mesh, size_t vertices) {
  size_t count = mesh->slot_count;
  while (count / 2 < vertices)
    count *= 2;
  if (count == mesh->slot_count) return true;
  OwnedArray<int32_t> slots = allocate_slots(count);
  if (slots == nullptr) return false;
  mesh->slots = std::move(slots);
  mesh->slot_count = count;
  for (size_t i = 0; i < mesh->vertex_count; ++i) {
    const PlyVertex &vertex = mesh->vertices[i];
    if (!is_filed(vertex)) continue;
    mesh->slots[find_slot(*mesh, vertex, first_slot(*mesh, vertex))] = static_cast<int32_t>(i);
  }
  return true;
}

int32_t merge_vertex(PlyMesh *mesh, const PlyVertex &vertex, size_t first) {
  const auto number = static_cast<int32_t>(mesh->vertex_count);
  if (is_filed(vertex)) {
    int32_t *const slot = &mesh->slots[find_slot(*mesh, vertex, first)];
    if (*slot != no_vertex) return *slot;
    *slot = number;
  }
  mesh->vertices[mesh->vertex_count++] = vertex;
  return number;
}

bool reserve_vertices(PlyMesh *mesh, size_t count) {
  const size_t needed = mesh->vertex_count + count;
  if (needed > INT32_MAX) return false;
  if (needed > mesh->vertex_room) {
    const size_t room = grown_room(mesh->vertex_room, needed);
    if (!grow_array(&mesh->vertices, mesh->vertex_count, room)) return false;
    mesh->vertex_room = room;
  }
  return reserve_slots(mesh, needed);
}

bool reserve_face_list(PlyMesh *mesh, size_t count) {
  const size_t needed = mesh->face_length + count;
  if (needed <= mesh->face_room) return true;
  const size_t room = grown_room(mesh->face_room, needed);
  if (!grow_array(&mesh->faces, mesh->face_length, room)) return false;
  mesh->face_room = room;
  return true;
}

}  // namespace

PlyMesh *create_ply_mesh() {
  void *const block = allocate_bytes(sizeof(PlyMesh));
  if (block == nullptr) return nullptr;
  auto *const mesh = new (block) PlyMesh{};
  mesh->vertices = allocate_array<PlyVertex>(first_vertices);
  mesh->faces = allocate_array<int32_t>(first_face_length);
  mesh->slots = allocate_slots(first_slots);
  if (mesh->vertices == nullptr || mesh->faces == nullptr || mesh->slots == nullptr) {
    release_ply_mesh(mesh);
    return nullptr;
  }
  mesh->vertex_room = first_vertices;
  mesh->face_room = first_face_length;
  mesh->slot_count = first_slots;
  return mesh;
}

void release_ply_mesh(PlyMesh *mesh) {
  if (mesh == nullptr) return;
  mesh->~PlyMesh();
  release_bytes(mesh);
}

bool reserve_ply_face(PlyMesh *mesh, size_t corners) {
  if (!reserve_face_list(mesh, corners + 1)) return false;
  if (reserve_vertices(mesh, corners)) return true;
  mesh->vertices.reset();
  mesh->slots.reset();
  mesh->faces.reset();
  mesh->lost = true;
  return false;
}

void merge_ply_vertices(PlyMesh *mesh, const PlyVertex *vertices, size_t count, int32_t *numbers) {
  size_t first[most_merged];
  for (size_t i = 0; i < count; ++i) {
    first[i] = first_slot(*mesh, vertices[i]);
    __builtin_prefetch(&mesh->slots[first[i]]);
  }
  for (size_t i = 0; i < count; ++i)
    numbers[i] = merge_vertex(mesh, vertices[i], first[i]);
}

}  // namespace quorix
