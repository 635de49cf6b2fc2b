// SPDX-License-Identifier: MIT
//
// Random point sets: the library against the literal triangulation, triangle by triangle in order,
// status by status, with the corners that stand behind the points.
//
// QUORIX_TRIANGULATION=<number> runs that set alone; QUORIX_TRIANGULATIONS=<count> compares that
// many.
#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <sstream>

#include "tests/algorithms/library_delaunay.h"
#include "tests/algorithms/random_cases.h"
#include "tests/algorithms/random_points.h"
#include "tests/algorithms/random_values.h"

namespace quorix::testing {

namespace {

using literal::Triangle;
using literal::Triangulation;

constexpr uint64_t compared_sets = 5000;

std::string text_of(const Triangle &t) {
  std::ostringstream out;
  out << "(" << t[0] << " " << t[1] << " " << t[2] << ")";
  return out.str();
}

// Bit for bit, but any NaN for any NaN: their sign is the compiler's choice.
bool is_same(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return a == b && std::signbit(a) == std::signbit(b);
}

std::string coordinate_difference(const char *name, const std::vector<double> &expected,
                                  const std::vector<double> &actual) {
  for (size_t i = 0; i < expected.size(); i++) {
    if (is_same(expected[i], actual[i])) continue;
    std::ostringstream out;
    out.precision(17);
    out << name << "[" << i << "] is " << actual[i] << " instead of " << expected[i];
    return out.str();
  }
  return "";
}

std::string triangle_difference(const Triangulation &expected, const Triangulation &actual) {
  const size_t count = expected.triangles.size();
  if (actual.triangles.size() != count) {
    return std::to_string(actual.triangles.size()) + " triangles instead of " +
           std::to_string(count);
  }
  for (size_t i = 0; i < count; i++) {
    if (actual.triangles[i] == expected.triangles[i]) continue;
    return "triangle " + std::to_string(i) + " is " + text_of(actual.triangles[i]) +
           " instead of " + text_of(expected.triangles[i]);
  }
  return "";
}

std::string difference_of_runs(const Triangulation &expected, const LibraryTriangulation &run) {
  if (!run.damage.empty()) return run.damage;
  if (run.result != 0) return "returned " + std::to_string(run.result);
  if (run.triangulation.status != expected.status) {
    return "status " + std::to_string(run.triangulation.status) + " instead of " +
           std::to_string(expected.status);
  }
  std::string difference = triangle_difference(expected, run.triangulation);
  if (difference.empty()) difference = coordinate_difference("x", expected.x, run.triangulation.x);
  if (difference.empty()) difference = coordinate_difference("y", expected.y, run.triangulation.y);
  return difference;
}

std::string compare_points(const PointSet &points, int32_t nmax) {
  const int32_t n = static_cast<int32_t>(points.size());
  const std::vector<double> x = with_room(points.x);
  const std::vector<double> y = with_room(points.y);
  const Triangulation expected = literal::delaunay(x, y, n, nmax);
  const std::string difference = difference_of_runs(expected, library_delaunay(x, y, n, nmax));
  if (difference.empty()) return "";
  return points.kind + ", n = " + std::to_string(n) + ", nmax = " + std::to_string(nmax) + ": " +
         difference;
}

// Mostly no more room than is asked for; sometimes too little, sometimes too much.
int32_t random_nmax(uint64_t number, size_t n) {
  RandomValues random(~number);
  const int32_t least = 2 * static_cast<int32_t>(n) + 1;
  if (random.one_in(50)) return least - 1;
  return random.one_in(4) ? least + random.between(1, 1000) : least;
}

}  // namespace

TEST(RandomTriangulations, AreTheSameTriangleByTriangleAsTheLiteralOnes) {
  compare_cases("QUORIX_TRIANGULATION", compared_sets, [](uint64_t number) {
    const PointSet points = random_points(number);
    return compare_points(points, random_nmax(number, points.size()));
  });
}

TEST(RandomTriangulations, MeetEveryStatusButThatOfNoMemory) {
  std::set<int32_t> met;
  for (uint64_t number = 0; number < compared_sets / 4; number++) {
    const PointSet points = random_points(number);
    const int32_t n = static_cast<int32_t>(points.size());
    if (n > 400) continue;
    const LibraryTriangulation run = library_delaunay(with_room(points.x), with_room(points.y), n,
                                                      random_nmax(number, points.size()));
    met.insert(run.triangulation.status);
  }
  EXPECT_EQ(met, (std::set<int32_t>{0, 1, 3, 4, 5}));
}

TEST(RandomTriangulations, OfManyPointsAreTheSameAsTheLiteralOnes) {
  EXPECT_EQ(compare_points(scattered_points(1, 7000, 1000), 14001), "");
}

TEST(RandomTriangulations, OfAGridOfManyPointsAreTheSameAsTheLiteralOnes) {
  PointSet points;
  points.kind = "grid";
  for (int32_t i = 0; i < 70; i++) {
    for (int32_t k = 0; k < 70; k++)
      points.add(i, k);
  }
  EXPECT_EQ(compare_points(points, 9801), "");
}

TEST(RandomTriangulations, OfLongColumnsAreTheSameAsTheLiteralOnes) {
  RandomValues random(5);
  PointSet points;
  points.kind = "columns";
  for (int32_t i = 0; i < 3000; i++) {
    const double x = random.between(0, 2) * 500.0 + 1e-9 * random.between(0, 4);
    points.add(x, 0.1 * random.between(0, 4000) + 3e-9 * random.between(0, 3));
  }
  EXPECT_EQ(compare_points(points, 6001), "");
}

TEST(RandomTriangulations, WithNaNInXAreTheSameAsTheLiteralOnes) {
  compare_cases("QUORIX_NAN_TRIANGULATION", 500, [](uint64_t number) {
    RandomValues random(number + 1000000);
    PointSet points = random_points(number);
    points.kind += ", NaN in x";
    const size_t rarity = 1 + random.below(20);
    for (double &x : points.x) {
      if (random.one_in(rarity)) x = std::nan("");
    }
    return compare_points(points, random_nmax(number, points.size()));
  });
}

}  // namespace quorix::testing
