// SPDX-License-Identifier: MIT
//
// The triangulation when memory runs out at each of its requests.
#include <gtest/gtest.h>

#include "tests/algorithms/library_delaunay.h"
#include "tests/algorithms/random_points.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {

namespace {

// Without the memory that it asks for, a call either reports so, having written nothing, or gives
// what it gives with it.
void expect_status_or_result(const LibraryTriangulation &run, const literal::Triangulation &whole,
                             const std::vector<double> &x, const std::vector<double> &y) {
  EXPECT_EQ(run.result, 0);
  EXPECT_EQ(run.damage, "");
  if (run.triangulation.status == whole.status) {
    EXPECT_EQ(run.triangulation.triangles, whole.triangles);
    EXPECT_EQ(run.triangulation.x, whole.x);
    EXPECT_EQ(run.triangulation.y, whole.y);
    return;
  }
  EXPECT_EQ(run.triangulation.status, 2);
  EXPECT_EQ(run.ntri, 0);
  EXPECT_EQ(run.triangulation.x, x);
  EXPECT_EQ(run.triangulation.y, y);
}

void fail_every_request(const PointSet &points, Failures failures) {
  const int32_t n = static_cast<int32_t>(points.size());
  const std::vector<double> x = with_room(points.x);
  const std::vector<double> y = with_room(points.y);
  const literal::Triangulation whole = literal::delaunay(x, y, n, 2 * n + 1);
  size_t refused = 0;
  for (size_t request = 1;; request++) {
    FailingMemory memory(request, failures);
    const LibraryTriangulation run = library_delaunay(x, y, n, 2 * n + 1);
    EXPECT_EQ(memory.live_blocks(), 0U) << "request " << request;
    if (!memory.failed()) {
      EXPECT_EQ(run.triangulation.status, whole.status);
      EXPECT_EQ(run.triangulation.triangles, whole.triangles);
      break;
    }
    expect_status_or_result(run, whole, x, y);
    if (request == 1) {
      EXPECT_EQ(run.triangulation.status, 2);
    }
    refused++;
  }
  EXPECT_GE(refused, 1U);
}

PointSet one_column(size_t n) {
  PointSet points;
  for (size_t i = 0; i < n; i++)
    points.add(i == 0 ? 100 : 0, static_cast<double>(i));
  return points;
}

}  // namespace

TEST(TriangulationMemory, MayRunOutAtEveryRequest) {
  for (const size_t n : {1U, 3U, 13U, 100U, 3000U}) {
    fail_every_request(scattered_points(n, n, 1000), Failures::only_that_one);
    fail_every_request(scattered_points(n, n, 1000), Failures::that_and_all_later);
  }
}

TEST(TriangulationMemory, MayRunOutAtEveryRequestForAColumn) {
  fail_every_request(one_column(2500), Failures::only_that_one);
  fail_every_request(one_column(2500), Failures::that_and_all_later);
}

TEST(TriangulationMemory, IsReleasedAfterEveryStatus) {
  for (uint64_t number = 0; number < 400; number++) {
    const PointSet points = random_points(number);
    const int32_t n = static_cast<int32_t>(points.size());
    FailingMemory memory;
    library_delaunay(with_room(points.x), with_room(points.y), n, 2 * n + 1);
    EXPECT_EQ(memory.live_blocks(), 0U) << number;
  }
}

TEST(TriangulationMemory, IsNotAskedForWithoutRoomOrPoints) {
  const PointSet points = scattered_points(1, 10, 1000);
  FailingMemory memory;
  library_delaunay(with_room(points.x), with_room(points.y), 10, 20);
  library_delaunay(with_room({}), with_room({}), 0, 20);
  EXPECT_EQ(memory.requests(), 0U);
}

}  // namespace quorix::testing
