// SPDX-License-Identifier: MIT
//
// Triangulation, polygon store and seed grid, by this library and by its peers.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "quorix/quorix.h"

#ifdef HAVE_QHULL_R
extern "C" {
#include <libqhull_r/libqhull_r.h>
}
#endif
#ifdef HAVE_CGAL
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#endif
#ifdef HAVE_NANOFLANN
#include <nanoflann.hpp>
#endif

namespace {

using Random = std::mt19937_64;

double between(Random &random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

struct Points {
  std::vector<double> x, y;
};

constexpr double square = 1000.0;

Points uniform_points(int n) {
  Random random(1);
  Points p;
  for (int i = 0; i < n; ++i) {
    p.x.push_back(between(random, 0, square));
    p.y.push_back(between(random, 0, square));
  }
  return p;
}

Points clustered_points(int n, int clusters) {
  Random random(2);
  const Points centres = uniform_points(clusters);
  std::normal_distribution<double> spread(0, 3);
  Points p;
  for (int i = 0; i < n; ++i) {
    const auto c = static_cast<size_t>(i % clusters);
    p.x.push_back(centres.x[c] + spread(random));
    p.y.push_back(centres.y[c] + spread(random));
  }
  return p;
}

Points grid_points(int columns, int rows) {
  Points p;
  for (int i = 0; i < columns * rows; ++i) {
    p.x.push_back(i / rows);
    p.y.push_back(i % rows);
  }
  return p;
}

[[noreturn]] void give_up(const char *who, int32_t status) {
  std::fprintf(stderr, "%s: status %d\n", who, status);
  std::exit(1);
}

// ---- Triangulation

void triangulate(const Points &p) {
  Points with_room = p;
  const size_t n = p.x.size();
  with_room.x.resize(n + 3);
  with_room.y.resize(n + 3);
  const size_t room = 2 * n + 1;
  const auto corners = std::make_unique_for_overwrite<int32_t[]>(3 * room);
  int32_t triangles = 0;
  int32_t status = 0;
  qqdlau(with_room.x.data(), with_room.y.data(), static_cast<int32_t>(n), corners.get(),
         corners.get() + room, corners.get() + 2 * room, static_cast<int32_t>(room), &triangles,
         &status);
  if (status != 0) give_up("qqdlau", status);
  benchmark::DoNotOptimize(triangles);
}

#ifdef HAVE_QHULL_R
void triangulate_by_qhull(const Points &p) {
  std::vector<coordT> xy;
  for (size_t i = 0; i < p.x.size(); ++i) {
    xy.push_back(p.x[i]);
    xy.push_back(p.y[i]);
  }
  qhT record;
  qh_zero(&record, stderr);
  char command[] = "qhull d Qbb Qc Qz Qt";
  const int failed = qh_new_qhull(&record, 2, static_cast<int>(p.x.size()), xy.data(), False,
                                  command, nullptr, stderr);
  if (failed != 0) give_up("qhull", failed);
  benchmark::DoNotOptimize(record.num_facets);
  qh_freeqhull(&record, qh_ALL);
}
#endif

#ifdef HAVE_CGAL
void triangulate_by_cgal(const Points &p) {
  using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
  std::vector<Kernel::Point_2> points;
  for (size_t i = 0; i < p.x.size(); ++i)
    points.emplace_back(p.x[i], p.y[i]);
  const CGAL::Delaunay_triangulation_2<Kernel> triangulation(points.begin(), points.end());
  benchmark::DoNotOptimize(triangulation.number_of_faces());
}
#endif

template <class Work>
void add(const std::string &name, Work work) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
    for (auto _ : state)
      work();
  });
}

void add_triangulation(const std::string &workload, const Points &points) {
  const auto shared = std::make_shared<Points>(points);
  add(workload + "/quorix", [=] { triangulate(*shared); });
#ifdef HAVE_QHULL_R
  add(workload + "/qhull", [=] { triangulate_by_qhull(*shared); });
#endif
#ifdef HAVE_CGAL
  add(workload + "/CGAL", [=] { triangulate_by_cgal(*shared); });
#endif
}

// ---- Polygon store: put, sort and get quadrilaterals

constexpr int32_t polygons = 1000000;
constexpr double quad_x[4] = {0, 1, 1, 0};
constexpr double quad_y[4] = {0, 0, 1, 1};

using Keys = std::shared_ptr<std::vector<double>>;

Keys random_keys(bool tied) {
  Random random(3);
  auto keys = std::make_shared<std::vector<double>>();
  for (int32_t i = 0; i < polygons; ++i) {
    const double key = between(random, 0, square);
    keys->push_back(tied ? std::floor(key) : key);
  }
  return keys;
}

void use_store(const std::vector<double> &keys) {
  int32_t io = 4;
  qqsini(0, 0, &io);
  for (size_t i = 0; i < keys.size(); ++i) {
    int32_t status = 0;
    qqsput2(quad_x, quad_y, 4, &keys[i], static_cast<int32_t>(i), 0, &status);
    if (status != 0) give_up("qqsput2", status);
  }
  qqsini(2, 0, &io);
  double sum = 0;
  for (int32_t i = 0; i < polygons; ++i) {
    double x[12];
    double y[12];
    int32_t attribute1 = 0;
    int32_t attribute2 = 0;
    int32_t nv = 0;
    qqsget2(x, y, i, &attribute1, &attribute2, &nv);
    sum += x[nv - 1] + attribute1;
  }
  benchmark::DoNotOptimize(sum);
  qqsini(1, 0, &io);
}

// One array of polygons of a fixed size and a stable sort of the keys.
void use_stable_sort(const std::vector<double> &keys) {
  struct Polygon {
    float x[4], y[4];
    int32_t nv, attribute1, attribute2;
  };
  struct KeyedIndex {
    double key;
    int32_t index;
  };
  std::vector<Polygon> all;
  std::vector<KeyedIndex> order;
  for (size_t i = 0; i < keys.size(); ++i) {
    Polygon p = {{}, {}, 4, static_cast<int32_t>(i), 0};
    for (int k = 0; k < 4; ++k) {
      p.x[k] = static_cast<float>(quad_x[k]);
      p.y[k] = static_cast<float>(quad_y[k]);
    }
    all.push_back(p);
    order.push_back({keys[i], static_cast<int32_t>(i)});
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const KeyedIndex &a, const KeyedIndex &b) { return a.key > b.key; });
  double sum = 0;
  for (const KeyedIndex &k : order) {
    const Polygon &p = all[static_cast<size_t>(k.index)];
    double x[12];
    double y[12];
    for (int v = 0; v < p.nv; ++v) {
      x[v] = static_cast<double>(p.x[v]);
      y[v] = static_cast<double>(p.y[v]);
    }
    benchmark::DoNotOptimize(y);
    sum += x[p.nv - 1] + p.attribute1;
  }
  benchmark::DoNotOptimize(sum);
}

// ---- Seed grid: filing points, and testing candidates against them

constexpr int filed_points = 1000000;
constexpr double domain = 2000.0;  // 2001 cells of size 1 along each axis
constexpr double factor = 0.5;

Points points_in_domain(unsigned seed) {
  Random random(seed);
  Points p;
  for (int i = 0; i < filed_points; ++i) {
    p.x.push_back(between(random, 0, domain));
    p.y.push_back(between(random, 0, domain));
  }
  return p;
}

const Points &filed() {
  static const Points points = points_in_domain(4);
  return points;
}

const Points &candidates() {
  static const Points points = points_in_domain(5);
  return points;
}

void use_grid(int32_t mode) {
  const double first = 0;
  const double cell_size = 1;
  const int32_t ndim = 2;
  int32_t status = 0;
  qqseed1(&first, &domain, &first, &domain, &first, &first, &cell_size, &ndim, &mode, &status);
  if (status != 0) give_up("qqseed1", status);
}

// Lines of 500 points.
void file_points() {
  const int32_t n = 500;
  const int32_t none = 0;
  int32_t status = 0;
  for (size_t i = 0; i < filed_points; i += n)
    qqseed4(&filed().x[i], &filed().y[i], nullptr, &n, &none, &none, &status);
  if (status != 0) give_up("qqseed4", status);
}

int test_candidates() {
  int accepted = 0;
  for (size_t i = 0; i < filed_points; ++i) {
    int32_t rejected = 0;
    qqseed3(&candidates().x[i], &candidates().y[i], nullptr, &factor, &rejected);
    accepted += 1 - rejected;
  }
  return accepted;
}

#ifdef HAVE_NANOFLANN
struct PointCloud {
  const Points *points;
  size_t kdtree_get_point_count() const { return points->x.size(); }
  double kdtree_get_pt(size_t i, size_t axis) const {
    return axis == 0 ? points->x[i] : points->y[i];
  }
  template <class Box>
  bool kdtree_get_bbox(Box & /*box*/) const {
    return false;
  }
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, PointCloud>,
                                                 PointCloud, 2, uint32_t>;

int test_candidates(const Tree &tree) {
  int accepted = 0;
  for (size_t i = 0; i < filed_points; ++i) {
    const double at[2] = {candidates().x[i], candidates().y[i]};
    uint32_t nearest = 0;
    double squared = 0;
    nanoflann::KNNResultSet<double, uint32_t> result(1);
    result.init(&nearest, &squared);
    tree.findNeighbors(result, at, nanoflann::SearchParams());
    accepted += squared >= factor * factor ? 1 : 0;
  }
  return accepted;
}
#endif

// All points sorted by cell, which takes to know them all beforehand.
struct FlatGrid {
  static constexpr int side = 2001;
  std::vector<int32_t> starts;
  std::vector<double> x, y;
};

FlatGrid make_flat_grid(const Points &p) {
  FlatGrid g;
  const auto cell = [&](size_t i) {
    return static_cast<size_t>(static_cast<int>(p.x[i]) * FlatGrid::side +
                               static_cast<int>(p.y[i]));
  };
  g.starts.resize(FlatGrid::side * FlatGrid::side + 1);
  g.x.resize(p.x.size());
  g.y.resize(p.x.size());
  for (size_t i = 0; i < p.x.size(); ++i)
    ++g.starts[cell(i)];
  std::partial_sum(g.starts.begin(), g.starts.end(), g.starts.begin());
  for (size_t i = p.x.size(); i-- > 0;) {
    const auto to = static_cast<size_t>(--g.starts[cell(i)]);
    g.x[to] = p.x[i];
    g.y[to] = p.y[i];
  }
  return g;
}

bool is_free(const FlatGrid &g, double x, double y) {
  const int ix = static_cast<int>(x);
  const int iy = static_cast<int>(y);
  for (int cx = std::max(ix - 1, 0); cx <= std::min(ix + 1, FlatGrid::side - 1); ++cx) {
    const int row = cx * FlatGrid::side;
    const int32_t first = g.starts[static_cast<size_t>(row + std::max(iy - 1, 0))];
    const int32_t end = g.starts[static_cast<size_t>(row + std::min(iy + 2, FlatGrid::side))];
    for (auto i = static_cast<size_t>(first); i < static_cast<size_t>(end); ++i) {
      const double dx = g.x[i] - x;
      const double dy = g.y[i] - y;
      if (dx * dx + dy * dy < factor * factor) return false;
    }
  }
  return true;
}

int test_candidates(const FlatGrid &g) {
  int accepted = 0;
  for (size_t i = 0; i < filed_points; ++i)
    accepted += is_free(g, candidates().x[i], candidates().y[i]) ? 1 : 0;
  return accepted;
}

// Runs a test of the candidates, after a check that it accepts as many as the flat grid does.
template <class Test>
void run_test(benchmark::State &state, Test test) {
  static const int expected = test_candidates(make_flat_grid(filed()));
  for (auto _ : state) {
    if (test() != expected) state.SkipWithError("not the candidates of the flat grid");
  }
}

void add_seed_grid() {
  filed();
  candidates();
  add("file 1e6 points in 2001 x 2001 cells/quorix", [] {
    use_grid(0);
    file_points();
    use_grid(1);
  });
  add("file 1e6 points in 2001 x 2001 cells/flat grid",
      [] { benchmark::DoNotOptimize(make_flat_grid(filed())); });
  benchmark::RegisterBenchmark("test 1e6 candidates/quorix", [](benchmark::State &state) {
    use_grid(0);
    file_points();
    run_test(state, [] { return test_candidates(); });
    use_grid(1);
  });
  benchmark::RegisterBenchmark("test 1e6 candidates/flat grid", [](benchmark::State &state) {
    const FlatGrid grid = make_flat_grid(filed());
    run_test(state, [&] { return test_candidates(grid); });
  });
#ifdef HAVE_NANOFLANN
  add("file 1e6 points in 2001 x 2001 cells/nanoflann", [] {
    const PointCloud cloud = {&filed()};
    const Tree tree(2, cloud);
    benchmark::DoNotOptimize(&tree);
  });
  benchmark::RegisterBenchmark("test 1e6 candidates/nanoflann", [](benchmark::State &state) {
    const PointCloud cloud = {&filed()};
    const Tree tree(2, cloud);
    run_test(state, [&] { return test_candidates(tree); });
  });
#endif
}

const bool added = [] {
  add_triangulation("triangulate 1e3 points", uniform_points(1000));
  add_triangulation("triangulate 1e4 points", uniform_points(10000));
  add_triangulation("triangulate 1e5 points", uniform_points(100000));
  add_triangulation("triangulate 1e6 points", uniform_points(1000000));
  add_triangulation("triangulate 1e5 points in 20 clusters", clustered_points(100000, 20));
  add_triangulation("triangulate a grid of 300 x 300", grid_points(300, 300));
  add_triangulation("triangulate a grid of 1000 x 1000", grid_points(1000, 1000));
  for (const bool tied : {false, true}) {
    const std::string workload = tied ? "1e6 polygons, tied keys" : "1e6 polygons, distinct keys";
    const Keys keys = random_keys(tied);
    add(workload + "/quorix", [=] { use_store(*keys); });
    add(workload + "/stable_sort", [=] { use_stable_sort(*keys); });
  }
  add_seed_grid();
  return true;
}();

}  // namespace
