// SPDX-License-Identifier: MIT
//
// The portable sine, cosine and arc tangent against the C library's, on 4096 angles or points.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "base/trig.h"

namespace {

constexpr size_t number_count = 4096;

std::vector<double> numbers(unsigned seed) {
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> any(-3.14, 3.14);
  std::vector<double> values(number_count);
  for (double &value : values) {
    value = any(random);
  }
  return values;
}

template <double (*function)(double)>
void of_angles(benchmark::State &state) {
  const std::vector<double> angles = numbers(1);
  for (auto _ : state) {
    for (const double angle : angles) {
      benchmark::DoNotOptimize(function(angle));
    }
  }
}

template <double (*function)(double, double)>
void of_points(benchmark::State &state) {
  const std::vector<double> xs = numbers(1);
  const std::vector<double> ys = numbers(2);
  for (auto _ : state) {
    for (size_t i = 0; i < number_count; ++i) {
      benchmark::DoNotOptimize(function(ys[i], xs[i]));
    }
  }
}

BENCHMARK(of_angles<quorix::portable_sin>)->Name("sine/quorix");
BENCHMARK(of_angles<std::sin>)->Name("sine/C library");
BENCHMARK(of_angles<quorix::portable_cos>)->Name("cosine/quorix");
BENCHMARK(of_angles<std::cos>)->Name("cosine/C library");
BENCHMARK(of_points<quorix::portable_atan2>)->Name("arc tangent/quorix");
BENCHMARK(of_points<std::atan2>)->Name("arc tangent/C library");

}  // namespace
