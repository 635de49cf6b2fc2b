// SPDX-License-Identifier: MIT
//
// The triangulation at its edges: few points, duplicates, small extents, points
// on a circle, bad input, and each status.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>

#include "quorix/algorithms.h"
#include "tests/algorithms/library_delaunay.h"
#include "tests/algorithms/random_points.h"
#include "tests/algorithms/random_values.h"

namespace quorix::testing {

namespace {

using literal::Triangle;

struct Point {
  double x;
  double y;
};

LibraryTriangulation triangulate(const std::vector<Point> &points, int32_t spare = 0) {
  std::vector<double> x;
  std::vector<double> y;
  for (const Point &point : points) {
    x.push_back(point.x);
    y.push_back(point.y);
  }
  const int32_t n = static_cast<int32_t>(points.size());
  LibraryTriangulation run = library_delaunay(with_room(x), with_room(y), n, 2 * n + 1 + spare);
  EXPECT_EQ(run.result, 0);
  EXPECT_EQ(run.damage, "");
  return run;
}

void expect_no_triangles(const LibraryTriangulation &run, int32_t status) {
  EXPECT_EQ(run.triangulation.status, status);
  EXPECT_EQ(run.ntri, 0);
}

// The triangles without regard to their order and that of their corners.
std::set<std::set<int32_t>> triangle_set(const LibraryTriangulation &run) {
  std::set<std::set<int32_t>> triangles;
  for (const Triangle &t : run.triangulation.triangles)
    triangles.insert({t[0], t[1], t[2]});
  return triangles;
}

std::set<int32_t> used_vertices(const LibraryTriangulation &run) {
  std::set<int32_t> used;
  for (const Triangle &t : run.triangulation.triangles)
    used.insert(t.begin(), t.end());
  return used;
}

using Triangles = std::set<std::set<int32_t>>;

}  // namespace

// --- Few points ---

TEST(Triangulation, OfOnePointIsAFlatTriangleAndHasNone) {
  // The extent is 0, so that all corners are the point itself.
  const LibraryTriangulation run = triangulate({{5, 7}});
  expect_no_triangles(run, 4);
  for (size_t i = 1; i < 4; i++) {
    EXPECT_EQ(run.triangulation.x[i], 5);
    EXPECT_EQ(run.triangulation.y[i], 7);
  }
}

TEST(Triangulation, OfTwoPointsHasNone) {
  expect_no_triangles(triangulate({{0, 0}, {3, 4}}), 0);
  expect_no_triangles(triangulate({{3, 0}, {3, 4}}), 0);
  expect_no_triangles(triangulate({{3, 4}, {0, 4}}), 0);
}

TEST(Triangulation, OfTwoEqualPointsIsAFlatTriangle) {
  expect_no_triangles(triangulate({{3, 4}, {3, 4}}), 4);
}

TEST(Triangulation, OfThreePointsIsTheirTriangle) {
  const LibraryTriangulation run = triangulate({{0, 0}, {10, 1}, {4, 9}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{1, 2, 3}}));
}

TEST(Triangulation, OfASquareWithItsCentreHasFourTriangles) {
  const LibraryTriangulation run = triangulate({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {5, 5}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{1, 2, 5}, {2, 3, 5}, {3, 4, 5}, {4, 1, 5}}));
}

TEST(Triangulation, OfPointsOnALineHasNone) {
  expect_no_triangles(triangulate({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}}), 0);
  expect_no_triangles(triangulate({{7, 0}, {7, 1}, {7, 2}, {7, 3}, {7, 4}}), 0);
}

// --- The corners behind the points ---

TEST(Triangulation, LeavesTheThreeCornersBehindThePoints) {
  // Ranges 10 and 4, so that the span is 30 about (5, 3); 0.866 is held in single precision.
  const LibraryTriangulation run = triangulate({{0, 1}, {10, 2}, {4, 5}});
  const double wide = 0.8659999966621399 * 30;
  const std::vector<double> x = {0, 10, 4, 5 - wide, 5 + wide, 5};
  const std::vector<double> y = {1, 2, 5, 3 - 15, 3 - 15, 3 + 30};
  EXPECT_EQ(run.triangulation.x, x);
  EXPECT_EQ(run.triangulation.y, y);
}

TEST(Triangulation, TakesTheLargerRangeForTheCorners) {
  // Ranges 4 and 10.
  const LibraryTriangulation run = triangulate({{1, 0}, {2, 10}, {5, 4}});
  const double wide = 0.8659999966621399 * 30;
  EXPECT_EQ(run.triangulation.x, (std::vector<double>{1, 2, 5, 3 - wide, 3 + wide, 3}));
  EXPECT_EQ(run.triangulation.y, (std::vector<double>{0, 10, 4, 5 - 15, 5 - 15, 5 + 30}));
}

TEST(Triangulation, NamesNoCornerInItsResult) {
  const PointSet points = scattered_points(3, 500, 1000);
  const LibraryTriangulation run =
      library_delaunay(with_room(points.x), with_room(points.y), 500, 1001);
  ASSERT_EQ(run.triangulation.status, 0);
  const std::set<int32_t> used = used_vertices(run);
  EXPECT_EQ(*used.begin(), 1);
  EXPECT_EQ(*used.rbegin(), 500);
  for (size_t i = 500; i < 503; i++) {
    EXPECT_NE(run.triangulation.x[i], untouched_coordinate);
    EXPECT_NE(run.triangulation.y[i], untouched_coordinate);
  }
}

// --- Duplicates and tolerances ---

TEST(Triangulation, CountsPointsNearerThanTheToleranceOnce) {
  // The points are swept by X; of the two the left one, number 4, comes first and is kept.
  const LibraryTriangulation run = triangulate({{0, 0}, {10, 1}, {4 + 0.9e-8, 9 + 0.9e-8}, {4, 9}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{1, 2, 4}}));
}

TEST(Triangulation, OfEqualPointsKeepsTheOneWithTheHigherNumber) {
  const LibraryTriangulation run = triangulate({{0, 0}, {4, 9}, {10, 1}, {4, 9}, {4, 9}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{1, 3, 5}}));
}

TEST(Triangulation, ComparesWithSkippedPointsToo) {
  // Each is a duplicate of the one to its left, though the third is far enough from the first.
  const LibraryTriangulation run =
      triangulate({{0, 0}, {10, 1}, {4, 9}, {4 + 0.6e-8, 9}, {4 + 1.2e-8, 9}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{1, 2, 3}}));
}

TEST(Triangulation, KeepsPointsThatAgreeInXButNotInY) {
  const std::vector<Point> points = {{0, 0}, {1e-9, 10}, {2e-9, 20}, {3e-9, 30}, {20, 11}};
  const LibraryTriangulation run = triangulate(points);
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(used_vertices(run), (std::set<int32_t>{1, 2, 3, 4, 5}));
}

TEST(Triangulation, LooksPastPointsOfOtherYForADuplicate) {
  // Number 1 is swept after numbers 3 and 4, which lie between it and number 2.
  const LibraryTriangulation run =
      triangulate({{5e-9, 3}, {0, 3}, {3e-9, 50}, {2e-9, -50}, {40, 0}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(used_vertices(run), (std::set<int32_t>{2, 3, 4, 5}));
}

TEST(Triangulation, OfAnExtentNearTheToleranceIsFlatAndOneBelowItToo) {
  expect_no_triangles(triangulate({{0, 0}, {1e-5, 0}, {0, 1e-5}}), 4);
  expect_no_triangles(triangulate({{0, 0}, {1e-9, 0}, {0, 1e-9}}), 4);
}

TEST(Triangulation, SeesAFlatTriangleOnlyWhenALaterPointTestsIt) {
  // Twice the area of the triangle of the last three is 4.4e-9. The last point makes it, and no
  // other is left to test it.
  std::vector<Point> points = {{-10, 3}, {-11, -3}, {0, 0}, {5e-5, -4e-5}, {6e-5, 4e-5}};
  const LibraryTriangulation run = triangulate(points);
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run).count({3, 4, 5}), 1U);
  points.push_back({1, 0});
  expect_no_triangles(triangulate(points), 4);
}

TEST(Triangulation, IsDoneThoughTheLastPointMadeAFlatTriangleWithACorner) {
  // The triangle of both points and a lower corner: 6e-5 wide, 9e-5 high. It goes away with the
  // corner, unless a third point tests it.
  expect_no_triangles(triangulate({{0, 0}, {6e-5, 0}}), 0);
  expect_no_triangles(triangulate({{0, 0}, {6e-5, 0}, {6.1e-5, 3e-5}}), 4);
}

TEST(Triangulation, OfPointsOnOneCircleIsComplete) {
  // All on the circle of radius 65, exactly: however they are joined, 12 points give 10 triangles.
  std::vector<Point> points;
  for (const Point p : {Point{16, 63}, Point{33, 56}, Point{52, 39}}) {
    for (const double sx : {-1.0, 1.0}) {
      for (const double sy : {-1.0, 1.0})
        points.push_back({sx * p.x, sy * p.y});
    }
  }
  const LibraryTriangulation run = triangulate(points);
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(run.ntri, 10);
  EXPECT_EQ(used_vertices(run).size(), 12U);
}

TEST(Triangulation, LeavesATriangleAloneWhenALaterPointLiesOnItsCircle) {
  // Swept from left to right, by numbers downwards where X is equal: 3, 1, 4, 2. The last point
  // lies on the circle of the first three, so theirs stays.
  const LibraryTriangulation run = triangulate({{-3, -4}, {5, 0}, {-4, 3}, {0, 5}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{3, 1, 4}, {1, 4, 2}}));
}

TEST(Triangulation, LeavesATriangleAloneWhenALaterPointIsInItsCircleByLessThanTheTolerance) {
  // Squared distance to the centre below 25 by 0.8e-8, then by 3e-8.
  const LibraryTriangulation within = triangulate({{-3, -4}, {5 - 0.8e-9, 0}, {-4, 3}, {0, 5}});
  EXPECT_EQ(triangle_set(within), (Triangles{{3, 1, 4}, {1, 4, 2}}));
  const LibraryTriangulation beyond = triangulate({{-3, -4}, {5 - 3e-9, 0}, {-4, 3}, {0, 5}});
  EXPECT_EQ(triangle_set(beyond), (Triangles{{3, 1, 2}, {3, 4, 2}}));
}

// --- Statuses ---

TEST(Triangulation, AsksForRoomForTwiceThePointsAndOneMore) {
  const PointSet points = scattered_points(4, 20, 100);
  const std::vector<double> x = with_room(points.x);
  const std::vector<double> y = with_room(points.y);
  for (const int32_t nmax : {40, 20, 1, 0, -1, std::numeric_limits<int32_t>::min()}) {
    const LibraryTriangulation run = library_delaunay(x, y, 20, nmax);
    EXPECT_EQ(run.result, 0);
    expect_no_triangles(run, 1);
    EXPECT_EQ(run.damage, "");
    EXPECT_EQ(run.written, 0U);
    EXPECT_EQ(run.triangulation.x, x);
    EXPECT_EQ(run.triangulation.y, y);
  }
  EXPECT_EQ(library_delaunay(x, y, 20, 41).triangulation.status, 0);
}

TEST(Triangulation, CountsTheRoomInMoreThan32Bits) {
  constexpr int32_t most = std::numeric_limits<int32_t>::max();
  for (const int32_t n : {most, 1 << 30, (1 << 30) + 5}) {
    int32_t ntri = -1;
    int32_t status = -1;
    EXPECT_EQ(qqdlau(nullptr, nullptr, n, nullptr, nullptr, nullptr, most, &ntri, &status), 0);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(ntri, 0);
  }
}

TEST(Triangulation, OfNoPointsTouchesNoArray) {
  for (const int32_t n : {0, -1, -5, std::numeric_limits<int32_t>::min()}) {
    for (const int32_t nmax : {-1, 0, 1, 100}) {
      int32_t ntri = -1;
      int32_t status = -1;
      EXPECT_EQ(qqdlau(nullptr, nullptr, n, nullptr, nullptr, nullptr, nmax, &ntri, &status), 0);
      EXPECT_EQ(status, 0);
      EXPECT_EQ(ntri, 0);
    }
  }
}

namespace {

// `points` points, of which `on_arc` lie on an arc that opens to the right, one near the centre of
// the arc, to be swept last, and the others far to the left.
std::vector<Point> arc_before_its_centre(size_t on_arc, size_t points) {
  std::vector<Point> set;
  for (size_t i = 0; i < on_arc; i++) {
    const double t = static_cast<double>(i) / static_cast<double>(on_arc - 1);
    const double angle = (0.5 + t) * 3.14159265358979323846;
    set.push_back({100 * std::cos(angle), 100 * std::sin(angle)});
  }
  for (size_t i = on_arc + 1; i < points; i++)
    set.push_back({-5000.0 - 3 * static_cast<double>(i % 7), 40.0 * static_cast<double>(i)});
  set.push_back({10, 0.25});
  return set;
}

literal::Triangulation literal_result(const std::vector<Point> &points) {
  std::vector<double> x;
  std::vector<double> y;
  for (const Point &point : points) {
    x.push_back(point.x);
    y.push_back(point.y);
  }
  const int32_t n = static_cast<int32_t>(points.size());
  return literal::delaunay(with_room(x), with_room(y), n, 2 * n + 1);
}

// The largest number of triangles that one point may remove from among so many points.
size_t largest_cavity_that_fits(size_t points) {
  return (std::max<size_t>(points, 100) - 1) / 3;
}

}  // namespace

TEST(Triangulation, EndsWhenOnePointRemovesTooManyTriangles) {
  EXPECT_EQ(largest_cavity_that_fits(50), 33U);
  for (const size_t points : {60U, 99U, 100U, 101U, 102U, 103U, 104U, 150U, 151U}) {
    const size_t fits = largest_cavity_that_fits(points);
    std::set<size_t> seen;
    for (size_t on_arc = fits - 6; on_arc < std::min(fits + 6, points - 1); on_arc++) {
      const std::vector<Point> set = arc_before_its_centre(on_arc, points);
      const size_t cavity = literal_result(set).largest_cavity;
      seen.insert(cavity);
      const int32_t expected = cavity <= fits ? 0 : 3;
      const LibraryTriangulation run = triangulate(set);
      EXPECT_EQ(run.triangulation.status, expected) << points << " points, cavity of " << cavity;
      EXPECT_EQ(run.ntri == 0, expected != 0);
    }
    EXPECT_EQ(seen.count(fits), 1U) << points;
    EXPECT_EQ(seen.count(fits + 1), 1U) << points;
  }
}

TEST(Triangulation, LeavesTheCornersAfterEveryLateStatus) {
  std::set<int32_t> met;
  for (uint64_t number = 0; number < 1200; number++) {
    const PointSet points = random_points(number);
    const int32_t n = static_cast<int32_t>(points.size());
    if (n > 500) continue;
    const LibraryTriangulation run =
        library_delaunay(with_room(points.x), with_room(points.y), n, 2 * n + 1);
    if (run.triangulation.status < 3) continue;
    met.insert(run.triangulation.status);
    EXPECT_EQ(run.ntri, 0) << number;
    for (size_t i = points.size(); i < points.size() + 3; i++)
      EXPECT_NE(run.triangulation.x[i], untouched_coordinate) << number;
  }
  EXPECT_EQ(met, (std::set<int32_t>{3, 4, 5}));
}

// --- NaN and infinity ---

TEST(Triangulation, PassesAPointWithoutAPlaceByWhenOthersComeFirst) {
  const double nan = std::nan("");
  const LibraryTriangulation run = triangulate({{0, 0}, {10, 1}, {4, 9}, {5, nan}, {6, nan}});
  EXPECT_EQ(run.triangulation.status, 0);
  EXPECT_EQ(triangle_set(run), (Triangles{{1, 2, 3}}));
}

TEST(Triangulation, OfEndlessOrUnknownCoordinatesEnds) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::nan("");
  for (const double strange : {infinity, -infinity, nan, 1e308, -1e308}) {
    for (size_t place = 0; place < 6; place++) {
      std::vector<Point> points = {{0, 0}, {10, 1}, {4, 9}};
      (place % 2 == 0 ? points[place / 2].x : points[place / 2].y) = strange;
      const LibraryTriangulation run = triangulate(points);
      const int32_t status = run.triangulation.status;
      EXPECT_TRUE(status == 0 || (status >= 3 && status <= 5)) << status;
    }
    expect_no_triangles(triangulate({{strange, strange}, {strange, strange}, {strange, strange}}),
                        0);
  }
}

}  // namespace quorix::testing
