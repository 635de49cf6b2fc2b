// SPDX-License-Identifier: MIT
//
// The polygon store: polygons filed under keys and read back from the highest key down.
//
// Vertices stand in an arena, in the order in which the polygons came. Sorting moves numbers of
// polygons alone. Equal keys are sorted by descending number and all is read from the end, so that
// of equal keys the first put is the first got.
//
// Without a store qqsget gives no corners and qqsput status 1. A second opening replaces the store
// once its memory is there.
#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include "algorithms/algorithms.h"
#include "algorithms/arena.h"
#include "base/grow.h"
#include "base/memory.h"
#include "quorix/algorithms.h"

namespace quorix {

namespace {

constexpr int32_t default_capacity = 10000;
constexpr int32_t default_vertices = 4;
constexpr int32_t vertices_per_call = 1;  // each call has its own number then
constexpr int32_t most_vertices_read = 12;
// So far ahead of a read its successors are fetched: positions are mostly read one by one.
constexpr int32_t fetch_ahead = 8;

struct StoredPolygon {
  int32_t attribute1, attribute2;
  int32_t vertices;  // 2 * vertices coordinates follow, x and y in turn, in single precision
};

inline float *coordinates_of(StoredPolygon *polygon) {
  return reinterpret_cast<float *>(polygon + 1);
}

struct PolygonStore {
  OwnedArray<StoredPolygon *> polygons;  // they stand in `arena`
  OwnedArray<int32_t> order;             // valid after the sort; 0 before
  OwnedArray<double> keys;
  int32_t capacity;
  int32_t count;
  int32_t vertex_mode;  // vertices of each polygon of qqsput, or vertices_per_call
  Arena arena;
};

PolygonStore *polygon_store = nullptr;  // owned

bool enlarge(PolygonStore *store, int32_t capacity) {
  if (!grow_array(&store->polygons, store->count, capacity) ||
      !grow_array(&store->order, store->count, capacity, NewValues::zero) ||
      !grow_array(&store->keys, store->count, capacity))
    return false;
  store->capacity = capacity;
  return true;
}

void drop_content(PolygonStore *store) {
  arena_release(&store->arena);
  store->polygons.reset();
  store->order.reset();
  store->keys.reset();
  store->count = store->capacity = 0;
}

void release_store(PolygonStore *store) {
  if (store == nullptr) return;
  arena_release(&store->arena);
  store->~PolygonStore();
  release_bytes(store);
}

void close_store() {
  release_store(polygon_store);
  polygon_store = nullptr;
}

int32_t open_store(int32_t capacity, int32_t vertex_mode) {
  void *const block = allocate_bytes(sizeof(PolygonStore));
  if (block == nullptr) return 1;
  auto *const store = new (block) PolygonStore{};
  if (!enlarge(store, capacity > 0 ? capacity : default_capacity)) {
    release_store(store);
    return 1;
  }
  store->vertex_mode = vertex_mode == 0 ? default_vertices : vertex_mode;
  close_store();
  polygon_store = store;
  return 0;
}

void sort_store(PolygonStore *store) {
  for (int32_t i = 0; i < store->count; ++i)
    store->order.get()[i] = i;
  sort_indices(store->keys.get(), store->order.get(), store->count);
}

StoredPolygon *make_polygon(PolygonStore *store, const double *x, const double *y, int32_t nv) {
  const auto values = 2 * static_cast<size_t>(nv);
  void *const block = arena_take(&store->arena, sizeof(StoredPolygon) + values * sizeof(float));
  if (block == nullptr) return nullptr;
  auto *const polygon = static_cast<StoredPolygon *>(block);
  polygon->vertices = nv;
  float *xy = coordinates_of(polygon);
  for (int32_t i = 0; i < nv; ++i) {
    *xy++ = static_cast<float>(x[i]);
    *xy++ = static_cast<float>(y[i]);
  }
  return polygon;
}

int32_t put_polygon(PolygonStore *store, const double *x, const double *y, int32_t nv, double key,
                    int32_t attribute1, int32_t attribute2) {
  if (store == nullptr || nv < 0) return 1;
  if (store->count == store->capacity) {
    const bool is_full = store->count == INT32_MAX;
    if (is_full || !enlarge(store, grown_room(store->capacity, default_capacity))) {
      drop_content(store);
      return 1;
    }
  }
  StoredPolygon *const polygon = make_polygon(store, x, y, nv);
  if (polygon == nullptr) return 1;
  polygon->attribute1 = attribute1;
  polygon->attribute2 = attribute2;
  store->polygons.get()[store->count] = polygon;
  store->keys.get()[store->count] = key;
  ++store->count;
  return 0;
}

// Has the polygons of the next positions brought near: the pointer first, then what it points to.
void fetch_next(const PolygonStore *store, int32_t place) {
  if (place < 2 * fetch_ahead) return;
  __builtin_prefetch(&store->polygons.get()[store->order.get()[place - 2 * fetch_ahead]]);
  const StoredPolygon *const next = store->polygons.get()[store->order.get()[place - fetch_ahead]];
  __builtin_prefetch(next);
  __builtin_prefetch(next + 3);  // the last vertices of four may stand in another line
}

// The polygon that comes at a position; no corners where there is none, and the rest stays as it
// was.
void get_polygon(const PolygonStore *store, int32_t position, double *x, double *y,
                 int32_t *attribute1, int32_t *attribute2, int32_t *nv) {
  *nv = 0;
  if (store == nullptr || position < 0 || position >= store->count) return;
  const int32_t place = store->count - 1 - position;
  fetch_next(store, place);
  StoredPolygon *const polygon = store->polygons.get()[store->order.get()[place]];
  *nv = std::min(polygon->vertices, most_vertices_read);
  const float *xy = coordinates_of(polygon);
  for (int32_t i = 0; i < *nv; ++i) {
    x[i] = static_cast<double>(*xy++);
    y[i] = static_cast<double>(*xy++);
  }
  *attribute1 = polygon->attribute1;
  *attribute2 = polygon->attribute2;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqsini(int32_t mode, int32_t capacity, int32_t *io) {
  if (mode == 0) {
    *io = quorix::open_store(capacity, *io);
  } else if (mode == 1) {
    quorix::close_store();
    *io = 0;
  } else if (mode == 2) {
    if (quorix::polygon_store != nullptr) quorix::sort_store(quorix::polygon_store);
    *io = 0;
  } else if (mode == 3) {
    *io = quorix::polygon_store == nullptr ? 0 : quorix::polygon_store->count;
  }
  return 0;
}

extern "C" int32_t qqsput2(const double *x, const double *y, int32_t nv, const double *key,
                           int32_t attribute1, int32_t attribute2, int32_t *status) {
  *status = quorix::put_polygon(quorix::polygon_store, x, y, nv, *key, attribute1, attribute2);
  return 0;
}

extern "C" int32_t qqsput(const double *x, const double *y, const double *key, int32_t attribute1,
                          int32_t *io) {
  const bool own_count = quorix::polygon_store == nullptr ||
                         quorix::polygon_store->vertex_mode == quorix::vertices_per_call;
  const int32_t nv = own_count ? *io : quorix::polygon_store->vertex_mode;
  *io = quorix::put_polygon(quorix::polygon_store, x, y, nv, *key, attribute1, 0);
  return 0;
}

extern "C" int32_t qqsget2(double *x, double *y, int32_t position, int32_t *attribute1,
                           int32_t *attribute2, int32_t *nv) {
  quorix::get_polygon(quorix::polygon_store, position, x, y, attribute1, attribute2, nv);
  return 0;
}

extern "C" int32_t qqsget(double *x, double *y, int32_t position, int32_t *attribute1,
                          int32_t *nv) {
  int32_t attribute2 = 0;
  quorix::get_polygon(quorix::polygon_store, position, x, y, attribute1, &attribute2, nv);
  return 0;
}
