// SPDX-License-Identifier: MIT
//
// The text of a mesh, made in a buffer by hand: formatted output would be most of the time.
#include <cstring>

#include "base/decimal_digits.h"
#include "base/files.h"
#include "formats/ply_mesh.h"

namespace quorix {

namespace {

constexpr size_t text_room = 16384;
constexpr size_t longest_number = 11;
constexpr size_t longest_vertex = 3 * (six_decimals_room + 1) + 3 * (longest_number + 1);

struct TextFile {
  std::FILE *file;
  size_t length;
  char text[text_room];
};

void hand_over(TextFile *out) {
  write_file(out->file, out->text, out->length);
  out->length = 0;
}

// Where the next `room` characters may be written.
char *make_room(TextFile *out, size_t room) {
  if (text_room - out->length < room) hand_over(out);
  return out->text + out->length;
}

void put_text(TextFile *out, const char *text) {
  for (size_t left = std::strlen(text); left > 0;) {
    char *const to = make_room(out, 1);
    const size_t room = text_room - out->length;
    const size_t count = left < room ? left : room;
    std::memcpy(to, text, count);
    out->length += count;
    text += count;
    left -= count;
  }
}

// `number` is not negative.
char *write_count(char *to, int32_t number) {
  const auto digits = static_cast<uint32_t>(number);
  char *const end = to + count_digits(digits);
  write_number_before(end, digits);
  return end;
}

void put_count_line(TextFile *out, const char *text, int32_t count) {
  put_text(out, text);
  char *const to = make_room(out, longest_number + 1);
  char *const end = write_count(to, count);
  *end = '\n';
  out->length += static_cast<size_t>(end + 1 - to);
}

void put_header(TextFile *out, const PlyMesh &mesh, const char *object_name) {
  put_text(out,
           "ply\n"
           "format ascii 1.0\n"
           "comment author: Quorix\n"
           "comment object: ");
  put_text(out, object_name);
  put_count_line(out, "\nelement vertex ", static_cast<int32_t>(mesh.vertex_count));
  put_text(out,
           "property float x\n"
           "property float y\n"
           "property float z\n"
           "property uchar red\n"
           "property uchar green\n"
           "property uchar blue\n");
  put_count_line(out, "element face ", mesh.face_count);
  put_text(out,
           "property list uchar int vertex_indices\n"
           "end_header\n");
}

void put_vertex(TextFile *out, const PlyVertex &vertex) {
  char *const start = make_room(out, longest_vertex);
  char *to = start;
  for (const float coordinate : {vertex.x, vertex.y, vertex.z}) {
    to += write_six_decimals(to, coordinate);
    *to++ = ' ';
  }
  for (const uint8_t component : {vertex.red, vertex.green, vertex.blue}) {
    to = write_count(to, component);
    *to++ = ' ';
  }
  to[-1] = '\n';
  out->length += static_cast<size_t>(to - start);
}

// One face of the list; returns where the next one begins.
const int32_t *put_face(TextFile *out, const int32_t *face) {
  const int32_t corners = *face++;
  char *to = make_room(out, longest_number + 1);
  char *end = write_count(to, corners);
  for (int32_t i = 0; i < corners; ++i) {
    out->length += static_cast<size_t>(end - to);
    to = make_room(out, longest_number + 2);
    *to = ' ';
    end = write_count(to + 1, *face++);
  }
  *end++ = '\n';
  out->length += static_cast<size_t>(end - to);
  return face;
}

}  // namespace

void write_ply_text(std::FILE *file, const PlyMesh &mesh, const char *object_name) {
  TextFile out;
  out.file = file;
  out.length = 0;
  put_header(&out, mesh, object_name);
  for (size_t i = 0; i < mesh.vertex_count; ++i)
    put_vertex(&out, mesh.vertices[i]);
  const int32_t *face = mesh.faces.get();
  for (int32_t i = 0; i < mesh.face_count; ++i)
    face = put_face(&out, face);
  hand_over(&out);
}

}  // namespace quorix
