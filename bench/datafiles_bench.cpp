// SPDX-License-Identifier: MIT
//
// Data files: the data of a FITS file of 4096 x 4096 floats, against cfitsio (which swaps bytes)
// and against a plain fread; meshes of triangles with shared corners as PLY, against a hash merge
// that writes with fprintf.
#include <benchmark/benchmark.h>
#ifdef HAVE_CFITSIO
#include <fitsio.h>
#endif

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"
#include "quorix/datafiles.h"

namespace {

// ---- files in a folder that goes away with the program

struct Folder {
  std::filesystem::path path = std::filesystem::temp_directory_path() / "quorix_datafiles_bench";
  Folder() { std::filesystem::create_directory(path); }
  ~Folder() { std::filesystem::remove_all(path); }
};

std::string file_name(const char *name) {
  static const Folder folder;
  return (folder.path / name).string();
}

// ---- FITS

constexpr int32_t side = 4096;
constexpr size_t data_bytes = static_cast<size_t>(side) * side * sizeof(float);
constexpr int64_t header_bytes = 2880;

void put_card(std::string *header, const char *text) {
  *header += text;
  header->append(80 - header->size() % 80, ' ');
}

// A header that fills its block, END in its last line.
std::string fits_header() {
  std::string header;
  put_card(&header, "SIMPLE  =                    T");
  put_card(&header, "BITPIX  =                  -32");
  put_card(&header, "NAXIS   =                    2");
  put_card(&header, "NAXIS1  =                 4096");
  put_card(&header, "NAXIS2  =                 4096");
  while (header.size() < 35 * 80)
    put_card(&header, "COMMENT");
  put_card(&header, "END");
  return header;
}

const std::string &fits_file() {
  static const std::string name = [] {
    std::string made = file_name("floats.fits");
    std::FILE *file = std::fopen(made.c_str(), "wb");
    const std::string header = fits_header();
    std::fwrite(header.data(), 1, header.size(), file);
    std::vector<uint8_t> bytes(data_bytes);
    for (size_t i = 0; i < data_bytes; ++i)
      bytes[i] = static_cast<uint8_t>(i * 2654435761U >> 24);
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    const std::vector<char> padding((2880 - data_bytes % 2880) % 2880);
    std::fwrite(padding.data(), 1, padding.size(), file);
    std::fclose(file);
    return made;
  }();
  return name;
}

std::vector<uint8_t> &pixels() {
  static std::vector<uint8_t> bytes(data_bytes);
  return bytes;
}

void fits_quorix(benchmark::State &state) {
  const int32_t size = static_cast<int32_t>(data_bytes);
  for (auto _ : state) {
    int32_t status = 0;
    int32_t result = 0;
    qqfits1(fits_file().c_str(), &status);
    qqfits4(pixels().data(), &size, &result);
    qqfits2(&status);
    if (result != size) state.SkipWithError("not read");
    benchmark::ClobberMemory();
  }
}

void fits_fread(benchmark::State &state) {
  for (auto _ : state) {
    std::FILE *file = std::fopen(fits_file().c_str(), "rb");
    std::fseek(file, header_bytes, SEEK_SET);
    const size_t count = std::fread(pixels().data(), 1, data_bytes, file);
    std::fclose(file);
    if (count != data_bytes) state.SkipWithError("not read");
    benchmark::ClobberMemory();
  }
}

#ifdef HAVE_CFITSIO
void fits_cfitsio(benchmark::State &state) {
  for (auto _ : state) {
    fitsfile *file = nullptr;
    int status = 0;
    int any_null = 0;
    fits_open_file(&file, fits_file().c_str(), READONLY, &status);
    fits_read_img(file, TFLOAT, 1, LONGLONG{side} * side, nullptr, pixels().data(), &any_null,
                  &status);
    fits_close_file(file, &status);
    if (status != 0) state.SkipWithError("not read");
    benchmark::ClobberMemory();
  }
}
#endif

// ---- PLY

// Two triangles in each cell of a square grid, one triangle after another.
struct Triangles {
  std::vector<double> x, y, z, r, g, b;
};

Triangles make_triangles(size_t count) {
  Triangles all;
  const auto cells = static_cast<size_t>(std::ceil(std::sqrt(static_cast<double>(count) / 2)));
  constexpr size_t corners[2][3][2] = {{{0, 0}, {1, 0}, {0, 1}}, {{1, 0}, {1, 1}, {0, 1}}};
  for (size_t i = 0; i < count; ++i) {
    for (const auto &corner : corners[i % 2]) {
      const double x = static_cast<double>(i / 2 % cells + corner[0]) * 0.37;
      const double y = static_cast<double>(i / 2 / cells + corner[1]) * 0.41;
      const double height = std::sin(x * 0.1) * std::cos(y * 0.07);
      all.x.push_back(x);
      all.y.push_back(y);
      all.z.push_back(100 * height);
      all.r.push_back(0.5 + 0.5 * height);
      all.g.push_back(0.5);
      all.b.push_back(0.5 - 0.5 * height);
    }
  }
  return all;
}

std::string whole_file(const std::string &name) {
  std::string text;
  std::FILE *file = std::fopen(name.c_str(), "rb");
  if (file == nullptr) return text;
  char block[65536];
  for (size_t n = 0; (n = std::fread(block, 1, sizeof block, file)) > 0;)
    text.append(block, n);
  std::fclose(file);
  return text;
}

std::string mesh_name(const char *contender, size_t count) {
  return file_name((contender + std::to_string(count)).c_str());
}

// If they do not write the same file, the comparison means nothing. Contenders run in any order.
void require_same_files(size_t count) {
  const std::string ours = whole_file(mesh_name("quorix", count));
  const std::string theirs = whole_file(mesh_name("fprintf", count));
  if (ours.empty() || theirs.empty() || ours == theirs) return;
  std::fputs("the meshes differ\n", stderr);
  std::abort();
}

// The library leaves its files open; here they are closed after each mesh.
std::vector<std::FILE *> opened;
std::FILE *(*plain_open)(const char *, const char *);

std::FILE *open_and_note(const char *name, const char *mode) {
  opened.push_back(plain_open(name, mode));
  return opened.back();
}

void ply_quorix(benchmark::State &state, size_t count) {
  const Triangles all = make_triangles(count);
  const std::string name = mesh_name("quorix", count);
  plain_open = quorix::file_gate.open;
  quorix::file_gate.open = open_and_note;
  for (auto _ : state) {
    const int32_t corners = 3;
    const int32_t mode = 0;
    int32_t status = 0;
    for (size_t i = 0; i < 3 * count; i += 3) {
      qqply1(&all.x[i], &all.y[i], &all.z[i], &all.r[i], &all.g[i], &all.b[i], &corners, &status);
    }
    qqply2(name.c_str(), "bench", &mode, &status);
    for (std::FILE *file : opened)
      std::fclose(file);
    opened.clear();
    if (status != 0) state.SkipWithError("not written");
  }
  quorix::file_gate.open = plain_open;
  require_same_files(count);
}

struct Vertex {
  float x, y, z;
  uint8_t r, g, b, none;
};
static_assert(sizeof(Vertex) == 16);

// Vertices by their bytes, in a table that doubles.
struct HashMerge {
  std::vector<Vertex> vertices;
  std::vector<int32_t> faces;
  std::vector<int32_t> slots = std::vector<int32_t>(32768, -1);
};

size_t slot_of(const HashMerge &mesh, const Vertex &vertex) {
  uint64_t words[2];
  std::memcpy(words, &vertex, sizeof words);
  uint64_t hash = words[0] * 0x9E3779B97F4A7C15U ^ words[1];
  hash = (hash ^ hash >> 29) * 0xBF58476D1CE4E5B9U;
  size_t slot = static_cast<size_t>(hash >> 20) & (mesh.slots.size() - 1);
  while (mesh.slots[slot] >= 0 && std::memcmp(&mesh.vertices[static_cast<size_t>(mesh.slots[slot])],
                                              &vertex, sizeof vertex) != 0) {
    slot = (slot + 1) & (mesh.slots.size() - 1);
  }
  return slot;
}

int32_t merged(HashMerge *mesh, const Vertex &vertex) {
  if (mesh->vertices.size() * 2 >= mesh->slots.size()) {
    mesh->slots.assign(mesh->slots.size() * 2, -1);
    for (size_t i = 0; i < mesh->vertices.size(); ++i)
      mesh->slots[slot_of(*mesh, mesh->vertices[i])] = static_cast<int32_t>(i);
  }
  int32_t *slot = &mesh->slots[slot_of(*mesh, vertex)];
  if (*slot < 0) {
    *slot = static_cast<int32_t>(mesh->vertices.size());
    mesh->vertices.push_back(vertex);
  }
  return *slot;
}

uint8_t colour_byte(double component) {
  return static_cast<uint8_t>(component * 255 + 0.5);
}

void write_with_fprintf(const HashMerge &mesh, const std::string &name) {
  std::FILE *file = std::fopen(name.c_str(), "w");
  std::fprintf(file,
               "ply\nformat ascii 1.0\ncomment author: Quorix\ncomment object: bench\n"
               "element vertex %zu\nproperty float x\nproperty float y\nproperty float z\n"
               "property uchar red\nproperty uchar green\nproperty uchar blue\n"
               "element face %zu\nproperty list uchar int vertex_indices\nend_header\n",
               mesh.vertices.size(), mesh.faces.size() / 3);
  for (const Vertex &v : mesh.vertices) {
    std::fprintf(file, "%f %f %f %d %d %d\n", static_cast<double>(v.x), static_cast<double>(v.y),
                 static_cast<double>(v.z), v.r, v.g, v.b);
  }
  for (size_t i = 0; i < mesh.faces.size(); i += 3) {
    std::fprintf(file, "3 %d %d %d\n", mesh.faces[i], mesh.faces[i + 1], mesh.faces[i + 2]);
  }
  std::fclose(file);
}

void ply_fprintf(benchmark::State &state, size_t count) {
  const Triangles all = make_triangles(count);
  const std::string name = mesh_name("fprintf", count);
  for (auto _ : state) {
    HashMerge mesh;
    for (size_t i = 0; i < 3 * count; ++i) {
      const Vertex vertex = {static_cast<float>(all.x[i]),
                             static_cast<float>(all.y[i]),
                             static_cast<float>(all.z[i]),
                             colour_byte(all.r[i]),
                             colour_byte(all.g[i]),
                             colour_byte(all.b[i]),
                             0};
      mesh.faces.push_back(merged(&mesh, vertex));
    }
    write_with_fprintf(mesh, name);
  }
  require_same_files(count);
}

}  // namespace

BENCHMARK(fits_quorix)->Name("fits 4096x4096 floats/quorix")->Unit(benchmark::kMillisecond);
#ifdef HAVE_CFITSIO
BENCHMARK(fits_cfitsio)->Name("fits 4096x4096 floats/cfitsio")->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(fits_fread)->Name("fits 4096x4096 floats/fread")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ply_quorix, 10000, 10000)->Name("ply 10,000 triangles/quorix");
BENCHMARK_CAPTURE(ply_fprintf, 10000, 10000)->Name("ply 10,000 triangles/fprintf");
BENCHMARK_CAPTURE(ply_quorix, 100000, 100000)->Name("ply 100,000 triangles/quorix");
BENCHMARK_CAPTURE(ply_fprintf, 100000, 100000)->Name("ply 100,000 triangles/fprintf");
BENCHMARK_CAPTURE(ply_quorix, 1000000, 1000000)->Name("ply 1,000,000 triangles/quorix");
BENCHMARK_CAPTURE(ply_fprintf, 1000000, 1000000)->Name("ply 1,000,000 triangles/fprintf");
