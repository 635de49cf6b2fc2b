// SPDX-License-Identifier: MIT
//
// A mesh made slowly, and a file taken apart word by word.
#include "tests/formats/ply_mesh.h"

#include <gtest/gtest.h>

#include <charconv>
#include <sstream>

#include "quorix/datafiles.h"

namespace quorix::testing {

int32_t add_face(const std::vector<Corner> &corners, int32_t count) {
  std::vector<double> x, y, z, r, g, b;
  for (const Corner &corner : corners) {
    x.push_back(corner.x);
    y.push_back(corner.y);
    z.push_back(corner.z);
    r.push_back(corner.r);
    g.push_back(corner.g);
    b.push_back(corner.b);
  }
  int32_t status = 99;
  const int32_t returned =
      qqply1(x.data(), y.data(), z.data(), r.data(), g.data(), b.data(), &count, &status);
  EXPECT_EQ(returned, status);
  return status;
}

int32_t add_face(const std::vector<Corner> &corners) {
  return add_face(corners, static_cast<int32_t>(corners.size()));
}

int32_t end_mesh(const std::string &file, const std::string &object, int32_t mode) {
  int32_t status = 99;
  EXPECT_EQ(qqply2(file.c_str(), object.c_str(), &mode, &status), 0);
  return status;
}

void discard_mesh() {
  end_mesh("", "", 1);
}

// ---- the literal mesh

namespace {

// The low 8 bits of the truncated number.
uint8_t stored_colour(double component) {
  const double scaled = component * 255.0 + 0.5;
  return static_cast<uint8_t>(static_cast<int64_t>(scaled) & 255);
}

// Six decimals of the exact value.
std::string six_decimals(double value) {
  char buffer[400];
  const auto end =
      std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed, 6);
  return {buffer, end.ptr};
}

}  // namespace

void LiteralMesh::add(const std::vector<Corner> &corners) {
  std::vector<int32_t> face;
  for (const Corner &c : corners) {
    const Vertex vertex = {static_cast<float>(c.x), static_cast<float>(c.y),
                           static_cast<float>(c.z), stored_colour(c.r),
                           stored_colour(c.g),      stored_colour(c.b)};
    size_t slot = 0;
    for (; slot < vertices_.size(); ++slot) {
      const Vertex &other = vertices_[slot];
      if (vertex.x == other.x && vertex.y == other.y && vertex.z == other.z &&
          vertex.r == other.r && vertex.g == other.g && vertex.b == other.b)
        break;
    }
    if (slot == vertices_.size()) vertices_.push_back(vertex);
    face.push_back(static_cast<int32_t>(slot));
  }
  faces_.push_back(face);
}

std::string LiteralMesh::text(const std::string &object) const {
  std::string text = "ply\nformat ascii 1.0\ncomment author: Quorix\ncomment object: " + object;
  text += "\nelement vertex " + std::to_string(vertices_.size());
  text += "\nproperty float x\nproperty float y\nproperty float z\n";
  text += "property uchar red\nproperty uchar green\nproperty uchar blue\n";
  text += "element face " + std::to_string(faces_.size());
  text += "\nproperty list uchar int vertex_indices\nend_header\n";
  for (const Vertex &v : vertices_) {
    for (const float value : {v.x, v.y, v.z})
      text.append(six_decimals(value)).append(" ");
    text.append(std::to_string(v.r)).append(" ").append(std::to_string(v.g));
    text.append(" ").append(std::to_string(v.b)).append("\n");
  }
  for (const std::vector<int32_t> &face : faces_) {
    text += std::to_string(face.size());
    for (const int32_t vertex : face)
      text.append(" ").append(std::to_string(vertex));
    text += "\n";
  }
  return text;
}

// ---- a reader

namespace {

// The words of a header, sorted by what they declare.
struct Header {
  size_t vertices = 0, faces = 0;
  std::vector<std::string> vertex_properties;
  bool has_list = false, ended = false;
};

Header parse_header(std::istringstream *stream, PlyFile *file) {
  Header header;
  std::string line, element;
  EXPECT_TRUE(std::getline(*stream, line) && line == "ply");
  EXPECT_TRUE(std::getline(*stream, line) && line == "format ascii 1.0");
  const std::string object = "comment object: ";
  while (!header.ended && std::getline(*stream, line)) {
    std::istringstream words(line);
    std::string word, type, name;
    words >> word;
    if (word == "element") {
      words >> element;
      words >> (element == "vertex" ? header.vertices : header.faces);
      EXPECT_TRUE(element == "vertex" || element == "face") << line;
    } else if (word == "property" && element == "vertex") {
      words >> type >> name;
      header.vertex_properties.push_back(type + " " + name);
    } else if (word == "property") {
      EXPECT_EQ(line, "property list uchar int vertex_indices");
      header.has_list = true;
    } else if (word == "comment") {
      if (line.compare(0, object.size(), object) == 0) file->object = line.substr(object.size());
    } else {
      EXPECT_EQ(word, "end_header");
      header.ended = true;
    }
  }
  return header;
}

}  // namespace

PlyFile parse_ply(const std::string &text) {
  PlyFile file;
  std::istringstream stream(text);
  const Header header = parse_header(&stream, &file);
  EXPECT_TRUE(header.ended && header.has_list);
  EXPECT_EQ(header.vertex_properties,
            (std::vector<std::string>{"float x", "float y", "float z", "uchar red", "uchar green",
                                      "uchar blue"}));
  file.vertices.resize(header.vertices);
  for (Corner &v : file.vertices) {
    stream >> v.x >> v.y >> v.z >> v.r >> v.g >> v.b;
    EXPECT_TRUE(v.r >= 0 && v.r <= 255 && v.g >= 0 && v.g <= 255 && v.b >= 0 && v.b <= 255);
  }
  file.faces.resize(header.faces);
  for (std::vector<int32_t> &face : file.faces) {
    size_t corners = 0;
    stream >> corners;
    face.resize(corners <= text.size() ? corners : 0);
    for (int32_t &vertex : face) {
      stream >> vertex;
      EXPECT_TRUE(vertex >= 0 && static_cast<size_t>(vertex) < header.vertices) << vertex;
    }
  }
  EXPECT_TRUE(stream.good()) << "the file is too short";
  std::string rest;
  EXPECT_FALSE(stream >> rest) << "the file goes on: " << rest;
  return file;
}

std::string text_of(const Bytes &bytes) {
#ifdef _WIN32
  constexpr bool with_cr = true;
#else
  constexpr bool with_cr = false;
#endif
  std::string text;
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n') {
      EXPECT_EQ(i > 0 && bytes[i - 1] == '\r', with_cr);
      if (with_cr && !text.empty()) text.pop_back();
    }
    text += static_cast<char>(bytes[i]);
  }
  return text;
}

}  // namespace quorix::testing
