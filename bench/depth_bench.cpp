// SPDX-License-Identifier: MIT
//
// Depth rendering on a 1920x1080 RGBA page: shaded triangles against OSMesa's llvmpipe in one
// thread, depth lines against plain lines, compositing against reading and writing the bytes once,
// palette rasters against a search of the palette for every pixel.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "depth/depth.h"
#include "quorix/quorix.h"

#ifdef HAVE_OSMESA
#include <GL/gl.h>
#include <GL/osmesa.h>
#endif

namespace {

constexpr int32_t page_width = 1920;
constexpr int32_t page_height = 1080;
constexpr int32_t raster = 101;

using Random = std::mt19937_64;

double between(Random &random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

struct Triangle {
  double x[3], y[3], z[3], r[3], g[3], b[3];
};

// Triangles whose corners lie `size` from their middle, wholly on the page.
std::vector<Triangle> triangles(int count, double size) {
  Random random(1);
  std::vector<Triangle> all(static_cast<size_t>(count));
  const double radius = size * 0.6;
  for (Triangle &t : all) {
    const double cx = between(random, radius + 1, page_width - radius - 1);
    const double cy = between(random, radius + 1, page_height - radius - 1);
    double angle = between(random, 0, 6.283185);
    for (int i = 0; i < 3; ++i) {
      t.x[i] = cx + radius * std::cos(angle);
      t.y[i] = cy + radius * std::sin(angle);
      t.z[i] = between(random, 0.05, 0.95);
      t.r[i] = between(random, 0, 1);
      t.g[i] = between(random, 0, 1);
      t.b[i] = between(random, 0, 1);
      angle += 2.0943951 + between(random, -0.5, 0.5);
    }
  }
  return all;
}

void open_page(int32_t page_w) {
  int32_t w = page_width;
  int32_t h = page_height;
  int32_t status = 0;
  qqvini(page_w, 1, &w, &h, 1, &status);
  std::vector<uint32_t> table(256);
  for (uint32_t i = 0; i < 256; ++i)
    table[i] = (i & 0xE0) << 16 | (i & 0x1C) << 11 | (i & 3) << 6;
  qqvvlt(1, table.data());
  status = raster;
  qqzbuf(0, &status);
}

void clear_depths() {
  int32_t status = raster;
  qqzbuf(2, &status);
}

using Work = std::function<void()>;

void add(const std::string &workload, const std::string &contender, Work open, Work work) {
  benchmark::RegisterBenchmark((workload + "/" + contender).c_str(), [=](benchmark::State &state) {
    open();
    for (auto _ : state)
      work();
  });
}

void draw_triangles(const std::vector<Triangle> &all) {
  clear_depths();
  for (const Triangle &t : all)
    qqztri3(t.x, t.y, t.z, t.r, t.g, t.b, raster);
}

#ifdef HAVE_OSMESA
struct Vertex {
  float r, g, b;
  float x, y, z;
};

// A context that draws in the calling thread, made once.
void make_mesa_current() {
  static OSMesaContext mesa = nullptr;
  static std::vector<uint8_t> picture(size_t{4} * page_width * page_height);
  if (mesa == nullptr) {
    setenv("GALLIUM_DRIVER", "llvmpipe", 1);
    setenv("LP_NUM_THREADS", "0", 1);
    mesa = OSMesaCreateContextExt(OSMESA_RGBA, 24, 0, 0, nullptr);
  }
  OSMesaMakeCurrent(mesa, picture.data(), GL_UNSIGNED_BYTE, page_width, page_height);
  glViewport(0, 0, page_width, page_height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, page_width, page_height, 0, 0, -1);
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LEQUAL);
  glShadeModel(GL_SMOOTH);
}

// All triangles in one array, as OpenGL likes it best.
std::vector<Vertex> vertices(const std::vector<Triangle> &all) {
  std::vector<Vertex> list;
  for (const Triangle &t : all) {
    for (int i = 0; i < 3; ++i) {
      list.push_back({static_cast<float>(t.r[i]), static_cast<float>(t.g[i]),
                      static_cast<float>(t.b[i]), static_cast<float>(t.x[i]),
                      static_cast<float>(t.y[i]), static_cast<float>(t.z[i])});
    }
  }
  return list;
}

void add_mesa_triangles(const std::string &workload, const std::vector<Triangle> &all) {
  const auto list = vertices(all);
  add(workload, "llvmpipe", make_mesa_current, [=] {
    glClear(GL_DEPTH_BUFFER_BIT);
    glInterleavedArrays(GL_C3F_V3F, 0, list.data());
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(list.size()));
    glFinish();
  });
}
#else
void add_mesa_triangles(const std::string & /*workload*/, const std::vector<Triangle> & /*all*/) {}
#endif

void add_triangles(const std::string &workload, int count, double size) {
  const auto all = triangles(count, size);
  add(
      workload, "quorix", [] { open_page(-1); }, [=] { draw_triangles(all); });
  add_mesa_triangles(workload, all);
}

struct Line {
  int32_t x[2], y[2];
  double z[2];
};

std::vector<Line> lines(int count, double shortest, double longest) {
  Random random(2);
  std::vector<Line> all;
  while (static_cast<int>(all.size()) < count) {
    const double angle = between(random, 0, 6.283185);
    const double length = between(random, shortest, longest);
    const auto x = static_cast<int32_t>(between(random, 0, page_width));
    const auto y = static_cast<int32_t>(between(random, 0, page_height));
    const auto x1 = x + static_cast<int32_t>(length * std::cos(angle));
    const auto y1 = y + static_cast<int32_t>(length * std::sin(angle));
    if (x1 < 0 || x1 >= page_width || y1 < 0 || y1 >= page_height) continue;
    all.push_back({{x, x1}, {y, y1}, {between(random, 0, 1), between(random, 0, 1)}});
  }
  return all;
}

void add_lines(const std::string &workload, int count, double shortest, double longest) {
  const auto all = lines(count, shortest, longest);
  const Work open = [] { open_page(-1); };
  add(workload, "quorix", open, [=] {
    clear_depths();
    for (const Line &l : all)
      qqzlin(l.x, l.y, 0x01FF8040, l.z, raster);
  });
  add(workload, "plain lines", open, [=] {
    qqvclr(0x01FF8040);
    for (const Line &l : all)
      qqvlin(l.x[0], l.y[0], l.x[1], l.y[1]);
  });
}

// A layer that is drawn all over, by the alpha given.
void fill_layer(int32_t alpha) {
  int32_t status = 0;
  qqwwid(19, &alpha, 1);
  qqwabl(1, &status);
  qqvfll(0, 0, page_width - 1, page_height - 1, 0x01204080);
}

void add_composite(const std::string &workload, int32_t alpha) {
  constexpr size_t bytes = size_t{4} * page_width * page_height;
  static std::vector<uint8_t> alphas(bytes);
  // Compositing empties the layer, so its alphas are put back each time; what that takes is timed
  // apart and both contenders do it.
  add(
      workload, "quorix",
      [=] {
        open_page(-1);
        fill_layer(alpha);
      },
      [=] {
        uint8_t *layer = quorix::output_context->buffers.blend_raster.pixels;
        for (size_t i = 3; i < bytes; i += 4)
          layer[i] = static_cast<uint8_t>(alpha);
        benchmark::DoNotOptimize(layer);
        quorix::composite_blend_layer(quorix::output_context);
      });
  add(
      workload, "read and write",
      [=] {
        open_page(-1);
        fill_layer(alpha);
      },
      [=] {
        uint8_t *layer = quorix::output_context->buffers.blend_raster.pixels;
        uint8_t *base = quorix::output_context->buffers.raster_base.pixels;
        for (size_t i = 3; i < bytes; i += 4)
          layer[i] = static_cast<uint8_t>(alpha);
        benchmark::DoNotOptimize(layer);
        for (size_t i = 0; i < bytes; ++i)
          base[i] = static_cast<uint8_t>(base[i] ^ layer[i]);
        benchmark::DoNotOptimize(base);
        for (size_t i = 0; i < bytes; ++i)
          layer[i] = static_cast<uint8_t>(layer[i] ^ 1);
        benchmark::DoNotOptimize(layer);
      });
}

void add_palette_triangles() {
  const auto all = triangles(500, 100);
  const std::string workload = "palette raster, 100 px";
  add(
      workload, "quorix", [] { open_page(1); }, [=] { draw_triangles(all); });
  // As many searches as there are pixels that pass, about half of the area.
  add(
      workload, "search per pixel", [] { open_page(1); },
      [=] {
        Random random(3);
        int32_t sum = 0;
        for (size_t i = 0; i < all.size() * 1800; ++i) {
          const auto word = static_cast<uint32_t>(random());
          sum += quorix::nearest_colour(quorix::output_context, static_cast<uint8_t>(word),
                                        static_cast<uint8_t>(word >> 8),
                                        static_cast<uint8_t>(word >> 16));
        }
        benchmark::DoNotOptimize(sum);
      });
}

const bool registered = [] {
  add_triangles("triangles of 10 px", 100000, 10);
  add_triangles("triangles of 300 px", 1000, 300);
  add_lines("depth lines 10-30 px", 20000, 10, 30);
  add_lines("depth lines 300-900 px", 2000, 300, 900);
  add_composite("composite, translucent", 128);
  add_composite("composite, opaque", 255);
  add_palette_triangles();
  return true;
}();

}  // namespace
