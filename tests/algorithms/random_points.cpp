// SPDX-License-Identifier: MIT
//
// Point sets of many kinds: scattered, in grids and columns, repeated, on circles, with NaN.
#include "tests/algorithms/random_points.h"

#include <cmath>
#include <limits>

#include "tests/algorithms/random_values.h"

namespace quorix::testing {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double tolerance = 1e-8;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// Most sets are small, so that there can be many; a few are large enough for every shortcut.
size_t random_size(RandomValues *random) {
  const size_t choice = random->below(400);
  if (choice < 100) return 1 + random->below(12);
  if (choice < 300) return 1 + random->below(80);
  if (choice < 399) return 1 + random->below(400);
  return 1000 + random->below(1500);
}

void scattered(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "scattered";
  const double side = random->one_of<double>({1, 10, 1000, 1000, 1000, 1e5, 0.01});
  const double x0 = random->one_in(2) ? 0 : random->real(-side, 100 * side);
  for (size_t i = 0; i < n; i++)
    points->add(x0 + random->real(0, side), random->real(0, side));
}

void lattice_sample(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "drawn from a lattice, with duplicates";
  const int32_t width = random->between(1, 30);
  const int32_t height = random->between(1, 30);
  const double step = random->one_of<double>({1, 0.5, 10, 0.1});
  for (size_t i = 0; i < n; i++)
    points->add(random->between(0, width) * step, random->between(0, height) * step);
}

void grid(PointSet *points, RandomValues *random, size_t n) {
  const bool jittered = random->one_in(3);
  points->kind = jittered ? "jittered grid" : "grid";
  const double root = std::sqrt(static_cast<double>(n));
  const int32_t width = 1 + static_cast<int32_t>(root * random->real(0.3, 2));
  const int32_t height = 1 + static_cast<int32_t>(n) / width;
  const double step = random->one_of<double>({1, 1, 10, 0.1, 1.0 / 3, 1e4 / 7, 1e6 / 3});
  const double jitter = jittered ? random->one_of<double>({1e-9, 1e-6, 0.1}) * step : 0;
  for (int32_t i = 0; i < width; i++) {
    for (int32_t k = 0; k < height; k++)
      points->add(i * step + jitter * random->unit(), k * step + jitter * random->unit());
  }
}

void line(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "on a line";
  const double dx = random->one_of<double>({0, 1, 1, 2, random->real(-1, 1)});
  const double dy = random->one_of<double>({0, 1, -1, 3, random->real(-1, 1)});
  const double bend = random->one_of<double>({0, 0, 1e-12, 1e-5});
  for (size_t i = 0; i < n; i++) {
    const double t = random->one_in(2) ? static_cast<double>(i) : random->real(0, 100);
    points->add(t * dx + bend * t * t, t * dy);
  }
  const size_t others = random->below(4);
  for (size_t i = 0; i < others; i++)
    points->add(random->real(-100, 100), random->real(-100, 100));
}

// Differences of some halves of the tolerance, from one point to the next and to those further on.
void near_duplicates(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "near duplicates";
  const size_t bases = 1 + random->below(1 + n / 3);
  const double extent = random->one_of<double>({1, 1000});
  PointSet base;
  for (size_t i = 0; i < bases; i++)
    base.add(random->real(0, extent), random->real(0, extent));
  for (size_t i = 0; i < n; i++) {
    const size_t b = random->below(bases);
    points->add(base.x[b] + tolerance / 2 * random->between(-2, 2),
                base.y[b] + tolerance / 2 * random->between(-2, 2));
  }
}

void clusters(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "clusters";
  const size_t centres = 1 + random->below(5);
  PointSet centre;
  std::vector<double> spread;
  for (size_t i = 0; i < centres; i++) {
    centre.add(random->real(0, 1000), random->real(0, 1000));
    spread.push_back(random->one_of<double>({1e-7, 1e-4, 0.01, 1, 10}));
  }
  for (size_t i = 0; i < n; i++) {
    const size_t c = random->below(centres);
    points->add(centre.x[c] + spread[c] * random->unit(), centre.y[c] + spread[c] * random->unit());
  }
}

// Few X, or so near to each other that they count as few, and many Y: the duplicate test walks far.
void columns(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "columns";
  if (random->one_in(4)) n += 700;
  const int32_t count = random->between(1, 6);
  const double jitter = random->one_of<double>({0, 0, 0.3, 0.99, 3}) * tolerance;
  const double step = random->one_of<double>({1, 0.1, tolerance, tolerance / 3});
  const int32_t steps = random->one_in(2) ? 100000 : static_cast<int32_t>(n);
  for (size_t i = 0; i < n; i++) {
    const double x = random->between(0, count) * 100.0 + jitter * random->real(-0.5, 0.5);
    points->add(x, random->between(0, steps) * step);
  }
}

void circles(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "on circles";
  const size_t rings = 1 + random->below(3);
  // In the larger ones rounding decides whether a point is in a circle.
  const double unit = random->one_of<double>({100, 100, 1e4, 1e6});
  const double jitter = random->one_of<double>({0, 0, 1e-10, 1e-6});
  const double divisions = random->one_of<double>({12, 60, static_cast<double>(n)});
  for (size_t i = 0; i < n; i++) {
    const double radius =
        unit * static_cast<double>(1 + random->below(rings)) + jitter * random->unit();
    const double angle = 2 * pi * std::floor(random->unit() * divisions) / divisions;
    points->add(radius * std::cos(angle), radius * std::sin(angle));
  }
  if (random->one_in(2)) points->add(0, 0);
}

// Points on an arc that is open to the right, and one or two near its centre: large cavities.
void arc(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "on an arc, seen from its centre";
  const double half = random->real(0.3, 1.0) * pi / 2;
  const double roughness = random->one_of<double>({0, 1e-3, 0.1});
  for (size_t i = 0; i < n; i++) {
    const double t = static_cast<double>(i) / static_cast<double>(n);
    const double angle = pi - half + 2 * half * t;
    const double radius = 100 + roughness * random->unit();
    points->add(radius * std::cos(angle), radius * std::sin(angle));
  }
  points->add(random->real(0.5, 30), random->real(-5, 5));
  if (random->one_in(2)) points->add(random->real(0.5, 30), random->real(-5, 5));
}

double strange_value(RandomValues *random, bool mild) {
  if (mild) return random->one_of<double>({-0.0, 0.0, 5e-324, -1e-310, 1e6, -1e4});
  return random->one_of<double>(
      {infinity, -infinity, 1e300, -1e300, 1.7e308, 1e154, 1e100, -0.0, 0.0, 5e-324, 1e-310, 1e8});
}

// Strange coordinates; NaN in Y alone, so that the order of the sweep is not touched.
void strange(PointSet *points, RandomValues *random, size_t n) {
  scattered(points, random, n);
  points->kind = "strange coordinates";
  const bool mild = random->one_in(2);
  const size_t rarity = 1 + random->below(40);
  for (size_t i = 0; i < n; i++) {
    if (random->one_in(rarity)) points->x[i] = strange_value(random, mild);
    if (random->one_in(rarity)) points->y[i] = strange_value(random, mild);
    if (random->one_in(2 * rarity)) points->y[i] = nan;
  }
}

// Extents about the tolerances: flat triangles, inconsistent cavities, full lists.
void tiny(PointSet *points, RandomValues *random, size_t n) {
  points->kind = "tiny";
  const double side = std::pow(10.0, random->real(-9, -1));
  const int32_t steps = random->between(2, 60);
  for (size_t i = 0; i < n; i++) {
    if (random->one_in(3)) {
      points->add(random->between(0, steps) * side / steps,
                  random->between(0, steps) * side / steps);
    } else {
      points->add(random->real(0, side), random->real(0, side));
    }
  }
}

void reorder(PointSet *points, RandomValues *random) {
  std::vector<size_t> order(points->size());
  for (size_t i = 0; i < order.size(); i++)
    order[i] = i;
  random->shuffle(&order);
  PointSet moved;
  for (const size_t i : order)
    moved.add(points->x[i], points->y[i]);
  points->x = moved.x;
  points->y = moved.y;
}

using Maker = void (*)(PointSet *, RandomValues *, size_t);
constexpr Maker makers[] = {scattered, lattice_sample, grid,    line, near_duplicates,
                            clusters,  columns,        circles, arc,  strange,
                            tiny};
constexpr size_t maker_count = sizeof(makers) / sizeof(makers[0]);

}  // namespace

PointSet random_points(uint64_t number) {
  RandomValues random(number);
  PointSet points;
  const size_t n = random_size(&random);
  makers[number % maker_count](&points, &random, n);
  if (random.one_in(2)) reorder(&points, &random);
  return points;
}

PointSet scattered_points(uint64_t seed, size_t n, double side) {
  RandomValues random(seed);
  PointSet points;
  points.kind = "scattered";
  for (size_t i = 0; i < n; i++) {
    const double x = random.real(0, side);
    points.add(x, random.real(0, side));
  }
  return points;
}

}  // namespace quorix::testing
