// SPDX-License-Identifier: MIT
//
// Meshes: the library's, a slow literal one, and what stands in a file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

struct Corner {
  double x, y, z;
  double r = 0, g = 0, b = 0;
};

// Gives the status; the test fails if the operation returns another number.
int32_t add_face(const std::vector<Corner> &corners);
int32_t add_face(const std::vector<Corner> &corners, int32_t count);
int32_t end_mesh(const std::string &file, const std::string &object, int32_t mode = 0);

// Ends a mesh without a file, if there is one.
void discard_mesh();

// Every vertex compared with every one before it, the text put together number by number.
class LiteralMesh {
 public:
  void add(const std::vector<Corner> &corners);
  // With LF alone at the end of lines.
  std::string text(const std::string &object) const;

 private:
  struct Vertex {
    float x, y, z;
    uint8_t r, g, b;
  };
  std::vector<Vertex> vertices_;
  std::vector<std::vector<int32_t>> faces_;
};

// What a reader of the format finds in a file; the test fails where the file is none.
struct PlyFile {
  std::string object;
  std::vector<Corner> vertices;  // colours from 0 to 255
  std::vector<std::vector<int32_t>> faces;
};
PlyFile parse_ply(const std::string &text);

// The text of a file without the CRs that end lines on Windows. The test fails if lines end in
// another way than text files do here.
std::string text_of(const Bytes &bytes);

}  // namespace quorix::testing
