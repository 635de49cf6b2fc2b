// SPDX-License-Identifier: MIT
//
// The structures that make the algorithms fast, each against the plain way of doing its work.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <random>
#include <vector>

#include "algorithms/algorithms.h"
#include "algorithms/arena.h"
#include "algorithms/unfinished_circles.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

using Random = std::mt19937;

int32_t whole(Random &random, int32_t low, int32_t high) {
  return std::uniform_int_distribution<int32_t>(low, high)(random);
}

double real(Random &random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

// ---- Arena

TEST(Arena, GivesBlocksThatDoNotOverlapAndAreAligned) {
  Random random(1);
  FailingMemory memory;
  Arena arena = {};
  std::vector<std::pair<unsigned char *, size_t>> blocks;
  for (int i = 0; i < 5000; ++i) {
    const auto bytes =
        static_cast<size_t>(i % 100 == 0 ? whole(random, 1, 200000) : whole(random, 1, 200));
    auto *const block = static_cast<unsigned char *>(arena_take(&arena, bytes));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % alignof(double), 0U);
    std::memset(block, i % 251, bytes);
    blocks.emplace_back(block, bytes);
  }
  for (size_t i = 0; i < blocks.size(); ++i) {
    const auto [block, bytes] = blocks[i];
    EXPECT_EQ(std::count(block, block + bytes, i % 251), static_cast<ptrdiff_t>(bytes));
  }
  EXPECT_LT(memory.requests(), 200U);
  arena_release(&arena);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST(Arena, StaysAsItWasWhereAPieceCannotBeHad) {
  Arena arena = {};
  ASSERT_NE(arena_take(&arena, 16), nullptr);
  const size_t left = arena.left;
  {
    FailingMemory memory(1);
    EXPECT_EQ(arena_take(&arena, 1 << 24), nullptr);
    EXPECT_EQ(arena_take(&arena, SIZE_MAX), nullptr);
  }
  EXPECT_EQ(arena.left, left);
  EXPECT_NE(arena_take(&arena, 16), nullptr);
  arena_release(&arena);
}

// ---- Edges of a cavity

// Each edge that is left cancels itself with all later ones of the opposite direction.
void cancel_plainly(std::vector<Edge> *edges) {
  for (size_t j = 0; j < edges->size(); ++j) {
    const Edge e = (*edges)[j];
    if (e.from == 0) continue;
    for (size_t k = j + 1; k < edges->size(); ++k) {
      Edge &other = (*edges)[k];
      if (other.from == e.to && other.to == e.from) other.from = (*edges)[j].from = 0;
    }
  }
}

TEST(CancelSharedEdges, DoesTheSameForFewAndForManyEdges) {
  Random random(2);
  std::vector<int32_t> table(4096);
  for (int round = 0; round < 2000; ++round) {
    // Few points, so that edges repeat in both directions.
    const int32_t points = whole(random, 2, 40);
    std::vector<Edge> edges(static_cast<size_t>(whole(random, 0, 400)));
    for (Edge &e : edges) {
      e.from = whole(random, 1, points);
      e.to = e.from % points + 1;
      if (whole(random, 0, 1) == 1) std::swap(e.from, e.to);
    }
    std::vector<Edge> expected = edges;
    cancel_plainly(&expected);
    cancel_shared_edges(edges.data(), static_cast<int32_t>(edges.size()), table.data());
    for (size_t i = 0; i < edges.size(); ++i) {
      ASSERT_EQ(edges[i].from, expected[i].from) << "edge " << i << " of round " << round;
      ASSERT_EQ(edges[i].to, expected[i].to);
    }
    ASSERT_EQ(std::count(table.begin(), table.end(), 0), 4096);
  }
}

// ---- Order of the sweep

TEST(SweepOrder, FindsRepeatedPointsInColumnsAsASearchOfAllPairsDoes) {
  Random random(3);
  for (int round = 0; round < 300; ++round) {
    const int32_t n = whole(random, 1, 600);
    std::vector<double> x;
    std::vector<double> y;
    const double jitter = round % 2 == 0 ? 0.0 : 3e-8;
    for (int32_t i = 0; i < n; ++i) {
      x.push_back(whole(random, 0, 2) + real(random, 0, jitter));
      y.push_back(whole(random, 0, 100) + real(random, 0, jitter));
    }
    std::vector<int32_t> sorted(static_cast<size_t>(n));
    std::iota(sorted.begin(), sorted.end(), 0);
    sort_indices(x.data(), sorted.data(), n);
    std::vector<int32_t> expected;
    const auto at = [](const std::vector<double> &v, int32_t i) {
      return v[static_cast<size_t>(i)];
    };
    for (size_t i = 0; i < sorted.size(); ++i) {
      const bool repeated = std::any_of(
          sorted.begin(), sorted.begin() + static_cast<ptrdiff_t>(i), [&](int32_t earlier) {
            return std::abs(at(x, earlier) - at(x, sorted[i])) < 1e-8 &&
                   std::abs(at(y, earlier) - at(y, sorted[i])) < 1e-8;
          });
      if (!repeated) expected.push_back(sorted[i]);
    }
    std::vector<int32_t> order(static_cast<size_t>(n));
    order.resize(static_cast<size_t>(find_sweep_order(x.data(), y.data(), n, order.data())));
    ASSERT_EQ(order, expected) << "round " << round;
  }
}

TEST(SweepOrder, EndsWithAPointWhoseXIsNaN) {
  const double x[] = {3, NAN, 1, NAN};
  const double y[] = {0, 0, 0, 0};
  int32_t order[4];
  const int32_t n = find_sweep_order(x, y, 4, order);
  ASSERT_GT(n, 0);
  ASSERT_LT(n, 4);
  for (int32_t i = 0; i < n; ++i)
    EXPECT_EQ(std::isnan(x[order[i]]), i == n - 1);
}

// ---- Unfinished circles

struct PlainCircle {
  Circle circle;
  bool gone;
};

// Takes the circles that (x, y) lies in, and those it is beyond.
std::vector<int32_t> take_plainly(std::vector<PlainCircle> *all, double x, double y) {
  std::vector<int32_t> hits;
  for (PlainCircle &p : *all) {
    if (p.gone) continue;
    const bool passed = is_passed(p.circle, x);
    if (!passed && !is_inside(p.circle, x, y)) continue;
    p.gone = true;
    if (!passed) hits.push_back(p.circle.triangle);
  }
  return hits;
}

// A circle that a sweep at x may meet: its left end is not to the right of x.
Circle random_circle(Random &random, double x, int32_t triangle) {
  const double r = std::pow(10.0, real(random, -3, 3));
  const double left = x - real(random, 0, 1) * std::min(r, 1.0);
  return {left + r, real(random, -r, 10 + r), r * r, triangle, 0, 0};
}

TEST(UnfinishedCircles, GiveThoseThatAPointLiesInThroughAllStretches) {
  Random random(4);
  for (int round = 0; round < 30; ++round) {
    constexpr int32_t points = 300;
    constexpr int32_t most = 2000;
    std::vector<double> xs;
    for (int32_t i = 0; i < points; ++i)
      xs.push_back(real(random, 0, 10));
    std::sort(xs.begin(), xs.end());
    UnfinishedCircles circles = {};
    ASSERT_TRUE(open_circles(&circles, points, most, 0.0, 10.0));
    circles.stretch_end = xs[0];
    std::vector<PlainCircle> plain;
    std::vector<int32_t> circle_of;
    size_t next_stretch = 0;
    for (size_t i = 0; i < xs.size(); ++i) {
      const double x = xs[i];
      const double y = real(random, 0, 10);
      if (i == next_stretch) {
        next_stretch = std::min(i + static_cast<size_t>(stretch_points(circles)), xs.size());
        begin_stretch(&circles, x, xs[next_stretch - 1], circle_of.data());
      }
      std::vector<int32_t> hits;
      take_hit_circles(&circles, x, y, circle_of.data(),
                       [&](int32_t triangle) { hits.push_back(triangle); });
      std::sort(hits.begin(), hits.end());
      ASSERT_EQ(hits, take_plainly(&plain, x, y)) << "point " << i << " of round " << round;
      for (int32_t k = whole(random, 0, 6); k > 0; --k) {
        const Circle c = random_circle(random, x, static_cast<int32_t>(plain.size()));
        // What is passed at once on the left is for the caller to watch.
        if (is_passed(c, x)) continue;
        circle_of.push_back(file_circle(&circles, c, x));
        plain.push_back({c, false});
      }
    }
  }
}

}  // namespace
}  // namespace quorix::testing
