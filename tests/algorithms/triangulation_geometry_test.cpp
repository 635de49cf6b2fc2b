// SPDX-License-Identifier: MIT
//
// Properties of the triangulation of many points: no point in the circle of a triangle, Euler's
// counts, no edge of three triangles, and the triangles that qhull finds.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

#include "tests/algorithms/library_delaunay.h"
#include "tests/algorithms/random_points.h"
#ifdef QUORIX_TEST_WITH_QHULL
#include "tests/algorithms/qhull_delaunay.h"
#endif

namespace quorix::testing {

namespace {

using literal::Triangle;
using literal::Triangulation;

constexpr size_t many_points = 10000;
constexpr double side = 1000;

using Edge = std::pair<int32_t, int32_t>;

struct Circle {
  double x;
  double y;
  double r2;
};

Triangulation triangulate(const PointSet &points) {
  const int32_t n = static_cast<int32_t>(points.size());
  const LibraryTriangulation run =
      library_delaunay(with_room(points.x), with_room(points.y), n, 2 * n + 1);
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(run.damage, "");
  EXPECT_GT(run.ntri, n);
  return run.triangulation;
}

const Triangulation &many_points_triangulated() {
  static const Triangulation result = triangulate(scattered_points(11, many_points, side));
  return result;
}

size_t point_of(int32_t vertex) {
  return static_cast<size_t>(vertex) - 1;
}

double twice_area(const Triangulation &result, const Triangle &t) {
  const size_t a = point_of(t[0]), b = point_of(t[1]), c = point_of(t[2]);
  return (result.x[b] - result.x[a]) * (result.y[c] - result.y[a]) -
         (result.y[b] - result.y[a]) * (result.x[c] - result.x[a]);
}

// From the lengths of the sides and the area, relative to the second corner.
Circle circle_of(const Triangulation &result, const Triangle &t) {
  const size_t a = point_of(t[0]), b = point_of(t[1]), c = point_of(t[2]);
  const double px = result.x[a] - result.x[b], py = result.y[a] - result.y[b];
  const double qx = result.x[c] - result.x[b], qy = result.y[c] - result.y[b];
  const double p2 = px * px + py * py, q2 = qx * qx + qy * qy;
  const double d = 2 * (px * qy - py * qx);
  const double cx = (qy * p2 - py * q2) / d;
  const double cy = (px * q2 - qx * p2) / d;
  return {result.x[b] + cx, result.y[b] + cy, cx * cx + cy * cy};
}

std::map<Edge, int> edge_uses(const Triangulation &result) {
  std::map<Edge, int> uses;
  for (const Triangle &t : result.triangles) {
    for (size_t i = 0; i < 3; i++)
      uses[std::minmax(t[i], t[(i + 1) % 3])]++;
  }
  return uses;
}

// The neighbours of each vertex along the border.
std::map<int32_t, std::vector<int32_t>> border_of(const std::map<Edge, int> &uses) {
  std::map<int32_t, std::vector<int32_t>> border;
  for (const auto &[edge, count] : uses) {
    if (count != 1) continue;
    border[edge.first].push_back(edge.second);
    border[edge.second].push_back(edge.first);
  }
  return border;
}

// Steps from the first vertex of the border until it comes again.
size_t length_of_first_ring(const std::map<int32_t, std::vector<int32_t>> &border) {
  const int32_t start = border.begin()->first;
  int32_t before = start;
  int32_t at = border.begin()->second[0];
  size_t length = 1;
  while (at != start && length <= border.size()) {
    const std::vector<int32_t> &next = border.at(at);
    const int32_t on = next[0] == before ? next[1] : next[0];
    before = at;
    at = on;
    length++;
  }
  return length;
}

}  // namespace

TEST(TriangulationGeometry, HasNoPointInTheCircleOfATriangle) {
  const Triangulation &result = many_points_triangulated();
  std::vector<size_t> by_x(many_points);
  for (size_t i = 0; i < many_points; i++)
    by_x[i] = i;
  std::sort(by_x.begin(), by_x.end(),
            [&](size_t a, size_t b) { return result.x[a] < result.x[b]; });
  size_t tested = 0;
  for (const Triangle &t : result.triangles) {
    const Circle circle = circle_of(result, t);
    const double left = circle.x - std::sqrt(circle.r2);
    auto at = std::lower_bound(by_x.begin(), by_x.end(), left,
                               [&](size_t i, double x) { return result.x[i] < x; });
    for (; at != by_x.end(); ++at) {
      const double dx = result.x[*at] - circle.x;
      const double dy = result.y[*at] - circle.y;
      if (dx > 0 && dx * dx > circle.r2) break;
      // The library lets a point be inside by 1e-8; the rest is rounding.
      ASSERT_GE(dx * dx + dy * dy, circle.r2 - 1e-8 - 1e-9 * circle.r2);
      tested++;
    }
  }
  EXPECT_GT(tested, 3 * result.triangles.size());
}

TEST(TriangulationGeometry, HasEulersCounts) {
  const Triangulation &result = many_points_triangulated();
  const std::map<Edge, int> uses = edge_uses(result);
  std::set<int32_t> used;
  size_t border_edges = 0;
  for (const auto &[edge, count] : uses) {
    EXPECT_LE(count, 2);
    if (count == 1) border_edges++;
    used.insert({edge.first, edge.second});
  }
  EXPECT_EQ(used.size(), many_points);
  // One piece without holes: vertices - edges + triangles = 1, and so 2 n - 2 - border triangles.
  EXPECT_EQ(many_points + result.triangles.size(), uses.size() + 1);
  EXPECT_EQ(result.triangles.size(), 2 * many_points - 2 - border_edges);
}

TEST(TriangulationGeometry, HasOneClosedBorder) {
  const std::map<Edge, int> uses = edge_uses(many_points_triangulated());
  const std::map<int32_t, std::vector<int32_t>> border = border_of(uses);
  for (const auto &[vertex, neighbours] : border)
    ASSERT_EQ(neighbours.size(), 2U) << vertex;
  EXPECT_EQ(length_of_first_ring(border), border.size());
}

TEST(TriangulationGeometry, CoversNearlyTheWholeSquareOnce) {
  const Triangulation &result = many_points_triangulated();
  double area = 0;
  for (const Triangle &t : result.triangles)
    area += std::fabs(twice_area(result, t)) / 2;
  // The hull of so many points falls short of the square by far less than a hundredth.
  EXPECT_LT(area, side * side);
  EXPECT_GT(area, 0.99 * side * side);
}

TEST(TriangulationGeometry, OfAGridHasTwoTrianglesInEachCell) {
  PointSet points;
  for (int32_t i = 0; i < 60; i++) {
    for (int32_t k = 0; k < 60; k++)
      points.add(i, k);
  }
  const Triangulation result = triangulate(points);
  EXPECT_EQ(result.triangles.size(), 2U * 59 * 59);
  std::map<std::pair<double, double>, int> cells;
  for (const Triangle &t : result.triangles) {
    EXPECT_EQ(std::fabs(twice_area(result, t)), 1);
    double x = side, y = side;
    for (const int32_t vertex : t) {
      x = std::min(x, result.x[point_of(vertex)]);
      y = std::min(y, result.y[point_of(vertex)]);
    }
    cells[{x, y}]++;
  }
  EXPECT_EQ(cells.size(), 59U * 59);
  for (const auto &[cell, count] : cells)
    EXPECT_EQ(count, 2) << cell.first << " " << cell.second;
}

#ifdef QUORIX_TEST_WITH_QHULL

namespace {

using TriangleSet = std::set<std::array<int32_t, 3>>;

TriangleSet sorted_set(const std::vector<Triangle> &triangles) {
  TriangleSet set;
  for (Triangle t : triangles) {
    std::sort(t.begin(), t.end());
    set.insert(t);
  }
  return set;
}

// True if some point but the corners of t lies on its circle, as nearly as makes no difference.
bool is_nearly_cocircular(const Triangulation &result, const Triangle &t) {
  const Circle circle = circle_of(result, t);
  for (size_t i = 0; i < result.x.size(); i++) {
    if (i == point_of(t[0]) || i == point_of(t[1]) || i == point_of(t[2])) continue;
    const double dx = result.x[i] - circle.x;
    const double dy = result.y[i] - circle.y;
    if (std::fabs(dx * dx + dy * dy - circle.r2) < 1e-6 * (1 + circle.r2)) return true;
  }
  return false;
}

// The triangles of a that b does not have, though no other choice was as good.
size_t count_missing(const Triangulation &result, const TriangleSet &a, const TriangleSet &b) {
  size_t missing = 0;
  for (const Triangle &t : a) {
    if (b.count(t) == 0 && !is_nearly_cocircular(result, t)) missing++;
  }
  return missing;
}

TriangleSet without_corners(const TriangleSet &triangles, int32_t n) {
  TriangleSet inner;
  for (const Triangle &t : triangles) {
    if (t[2] <= n) inner.insert(t);
  }
  return inner;
}

void expect_qhulls_triangles(const PointSet &points) {
  const int32_t n = static_cast<int32_t>(points.size());
  const Triangulation result = triangulate(points);
  const TriangleSet ours = sorted_set(result.triangles);
  EXPECT_EQ(ours.size(), result.triangles.size());
  // The three corners are points like the others until the end, so qhull gets them too.
  const TriangleSet theirs = without_corners(qhull_delaunay(result.x, result.y), n);
  EXPECT_GT(theirs.size(), points.size());
  EXPECT_EQ(count_missing(result, ours, theirs), 0U);
  EXPECT_EQ(count_missing(result, theirs, ours), 0U);
}

}  // namespace

TEST(TriangulationGeometry, OfScatteredPointsIsThatOfQhull) {
  expect_qhulls_triangles(scattered_points(11, many_points, side));
}

TEST(TriangulationGeometry, OfClustersIsThatOfQhull) {
  PointSet points = scattered_points(12, 500, side);
  for (uint64_t cluster = 0; cluster < 6; cluster++) {
    const PointSet near = scattered_points(100 + cluster, 500, 5);
    for (size_t i = 0; i < near.size(); i++)
      points.add(points.x[cluster] + near.x[i], points.y[cluster] + near.y[i]);
  }
  expect_qhulls_triangles(points);
}

TEST(TriangulationGeometry, LacksOfQhullsTrianglesOnlyThoseWhoseCirclesReachACorner) {
  const Triangulation &result = many_points_triangulated();
  std::vector<double> x(result.x.begin(), result.x.end() - 3);
  std::vector<double> y(result.y.begin(), result.y.end() - 3);
  const TriangleSet ours = sorted_set(result.triangles);
  const TriangleSet whole = qhull_delaunay(x, y);
  EXPECT_EQ(count_missing(result, ours, whole), 0U);
  size_t lacking = 0;
  for (const Triangle &t : whole) {
    if (ours.count(t) != 0 || is_nearly_cocircular(result, t)) continue;
    lacking++;
    const Circle circle = circle_of(result, t);
    bool reaches = false;
    for (size_t i = many_points; i < many_points + 3; i++) {
      const double dx = result.x[i] - circle.x;
      const double dy = result.y[i] - circle.y;
      reaches = reaches || dx * dx + dy * dy < circle.r2;
    }
    EXPECT_TRUE(reaches) << t[0] << " " << t[1] << " " << t[2];
  }
  EXPECT_LT(lacking, 200U);
}

TEST(TriangulationGeometry, HasTheCornersOfQhullsHullOnItsBorder) {
  const Triangulation &result = many_points_triangulated();
  const std::map<int32_t, std::vector<int32_t>> border = border_of(edge_uses(result));
  std::vector<double> x(result.x.begin(), result.x.end() - 3);
  std::vector<double> y(result.y.begin(), result.y.end() - 3);
  const std::vector<int32_t> hull = qhull_hull(x, y);
  EXPECT_GE(hull.size(), 3U);
  for (const int32_t vertex : hull)
    EXPECT_EQ(border.count(vertex), 1U) << vertex;
}

#endif

}  // namespace quorix::testing
