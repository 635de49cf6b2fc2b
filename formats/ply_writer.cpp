// SPDX-License-Identifier: MIT
//
// qqply1 and qqply2: a mesh is collected polygon by polygon, written and ended.
//
// A mesh without memory for its vertices is lost, and gives status 1 until qqply2 ends it.
#include "formats/ply_mesh.h"

#include <algorithm>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/numbers.h"
#include "quorix/datafiles.h"

namespace quorix {

namespace {

enum Status : int32_t { done = 0, failed = 1 };

constexpr double full_colour = 255.0;

PlyMesh *mesh = nullptr;  // owned; null between meshes

// The corners of a polygon, as the caller has them.
struct Corners {
  const double *x, *y, *z, *r, *g, *b;
};

// Kept: components outside 0 to 1 are not clamped, their low 8 bits stay.
uint8_t colour_byte(double component) {
  return to_byte(component * full_colour + 0.5);
}

PlyVertex narrow_corner(const Corners &corners, size_t i) {
  return {static_cast<float>(corners.x[i]), static_cast<float>(corners.y[i]),
          static_cast<float>(corners.z[i]), colour_byte(corners.r[i]),
          colour_byte(corners.g[i]),        colour_byte(corners.b[i])};
}

Status add_face(const Corners &corners, int32_t n) {
  if (n < 0) return failed;
  if (mesh == nullptr) mesh = create_ply_mesh();
  if (mesh == nullptr || mesh->lost || mesh->face_count == INT32_MAX) return failed;
  const auto count = static_cast<size_t>(n);
  if (!reserve_ply_face(mesh, count)) return failed;
  int32_t *const face = mesh->faces.get() + mesh->face_length;
  face[0] = n;
  PlyVertex some[most_merged];
  for (size_t start = 0; start < count;) {
    const size_t part = std::min(most_merged, count - start);
    for (size_t i = 0; i < part; ++i)
      some[i] = narrow_corner(corners, start + i);
    merge_ply_vertices(mesh, some, part, face + 1 + start);
    start += part;
  }
  mesh->face_length += count + 1;
  ++mesh->face_count;
  return done;
}

// Kept: the stream stays open. What was written is handed to the system, so no reader misses it.
Status write_mesh(const char *filename, const char *object_name) {
  if (mesh->lost) return failed;
  const FileWork work("qqply2", filename);
  OwnedFile owner = open_file(filename, "w");
  if (owner == nullptr) return failed;
  std::FILE *const file = owner.release();
  write_ply_text(file, *mesh, object_name == nullptr ? "" : object_name);
  flush_file(file);
  return done;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqply1(const double *x, const double *y, const double *z, const double *r,
                          const double *g, const double *b, const int32_t *n, int32_t *status) {
  *status = quorix::add_face({x, y, z, r, g, b}, *n);
  return *status;
}

extern "C" int32_t qqply2(const char *filename, const char *object_name, const int32_t *mode,
                          int32_t *status) {
  *status = quorix::done;
  if (quorix::mesh == nullptr) return 0;
  if (*mode == 0) *status = quorix::write_mesh(filename, object_name);
  quorix::release_ply_mesh(quorix::mesh);
  quorix::mesh = nullptr;
  return 0;
}
