// SPDX-License-Identifier: MIT
//
// The store as plain vectors.
#include "tests/algorithms/literal_polygon_store.h"

#include <cstddef>
#include <optional>
#include <vector>

#include "tests/algorithms/literal_index_sort.h"

namespace quorix::literal {

namespace {

constexpr int32_t default_vertices = 4;
constexpr int32_t vertices_of_each_call = 1;
constexpr size_t most_vertices_read = 12;

// A vertex count held as a single precision number with a half added, then x and y by turns.
using Block = std::vector<float>;

struct PolygonStore {
  std::vector<Block> polygons;
  std::vector<int32_t> order;
  std::vector<int32_t> attribute1;
  std::vector<int32_t> attribute2;
  std::vector<double> keys;
  int32_t vertex_mode;
};

std::optional<PolygonStore> store;

void sort_polygons() {
  store->order.clear();
  for (size_t i = 0; i < store->polygons.size(); i++)
    store->order.push_back(static_cast<int32_t>(i));
  if (store->polygons.size() > 1) {
    index_sort(store->keys.data(), store->order.data(), static_cast<int32_t>(store->order.size()));
  }
}

}  // namespace

int32_t qqsini(int32_t mode, int32_t /*capacity*/, int32_t *io) {
  if (mode == 0) {
    store = PolygonStore{};
    store->vertex_mode = *io == 0 ? default_vertices : *io;
    *io = 0;
  } else if (mode == 1) {
    store.reset();
    *io = 0;
  } else if (mode == 2) {
    if (store) sort_polygons();
    *io = 0;
  } else if (mode == 3) {
    *io = store ? static_cast<int32_t>(store->polygons.size()) : 0;
  }
  return 0;
}

int32_t qqsput2(const double *x, const double *y, int32_t nv, const double *key, int32_t attribute1,
                int32_t attribute2, int32_t *status) {
  if (!store || nv < 0) {
    *status = 1;
    return 0;
  }
  *status = 0;
  Block block = {static_cast<float>(nv) + 0.5F};
  for (int32_t i = 0; i < nv; i++) {
    block.push_back(static_cast<float>(x[i]));
    block.push_back(static_cast<float>(y[i]));
  }
  store->polygons.push_back(block);
  store->keys.push_back(*key);
  store->attribute1.push_back(attribute1);
  store->attribute2.push_back(attribute2);
  return 0;
}

int32_t qqsput(const double *x, const double *y, const double *key, int32_t attribute1,
               int32_t *io) {
  const int32_t fixed = store ? store->vertex_mode : 0;
  const int32_t nv = fixed == vertices_of_each_call ? *io : fixed;
  return qqsput2(x, y, nv, key, attribute1, 0, io);
}

int32_t qqsget2(double *x, double *y, int32_t position, int32_t *attribute1, int32_t *attribute2,
                int32_t *nv) {
  *nv = 0;
  if (!store || position < 0) return 0;
  const size_t count = store->polygons.size();
  if (static_cast<size_t>(position) >= count) return 0;
  const size_t polygon =
      static_cast<size_t>(store->order[count - 1 - static_cast<size_t>(position)]);
  const Block &block = store->polygons[polygon];
  size_t vertices = static_cast<size_t>(block[0]);
  if (vertices > most_vertices_read) vertices = most_vertices_read;
  for (size_t i = 0; i < vertices; i++) {
    x[i] = static_cast<double>(block[1 + 2 * i]);
    y[i] = static_cast<double>(block[2 + 2 * i]);
  }
  *attribute1 = store->attribute1[polygon];
  *attribute2 = store->attribute2[polygon];
  *nv = static_cast<int32_t>(vertices);
  return 0;
}

int32_t qqsget(double *x, double *y, int32_t position, int32_t *attribute1, int32_t *nv) {
  int32_t attribute2 = 0;
  return qqsget2(x, y, position, attribute1, &attribute2, nv);
}

}  // namespace quorix::literal
