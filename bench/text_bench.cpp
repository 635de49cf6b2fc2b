// SPDX-License-Identifier: MIT
//
// Numbers into text, as PDF and PostScript streams need them: coordinates with two or three digits
// after the point, and integers, by this library, by the C library and by std::to_chars.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <random>
#include <vector>

#include "platform/text.h"

namespace {

constexpr size_t number_count = 4096;
constexpr size_t buffer_size = 40;

// Page coordinates in points, a quarter of them negative, as a plot's stream has them.
std::vector<double> coordinates() {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> place(-300.0, 900.0);
  std::vector<double> values(number_count);
  for (double &value : values)
    value = place(random);
  return values;
}

// As many of each length from one digit to ten.
std::vector<int32_t> integers() {
  std::mt19937_64 random(2);
  std::uniform_int_distribution<int> shift(0, 30);
  std::vector<int32_t> values(number_count);
  for (int32_t &value : values) {
    value = static_cast<int32_t>(static_cast<uint32_t>(random())) >> shift(random);
  }
  return values;
}

template <class Value, class Write>
void run(benchmark::State &state, const std::vector<Value> &values, Write write) {
  char buffer[buffer_size];
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(write(values[i], buffer));
    benchmark::ClobberMemory();
    i = (i + 1) % number_count;
  }
  state.SetItemsProcessed(state.iterations());
}

void real_by_format_real(benchmark::State &state) {
  const int32_t digits = static_cast<int32_t>(state.range(0));
  run(state, coordinates(), [digits](double value, char *buffer) {
    return quorix::format_real(value, digits, buffer, buffer_size, 0);
  });
}

void real_by_to_chars(benchmark::State &state) {
  const int digits = static_cast<int>(state.range(0));
  run(state, coordinates(), [digits](double value, char *buffer) {
    return std::to_chars(buffer, buffer + buffer_size, value, std::chars_format::fixed, digits).ptr;
  });
}

void real_by_snprintf(benchmark::State &state) {
  const int digits = static_cast<int>(state.range(0));
  run(state, coordinates(), [digits](double value, char *buffer) {
    return std::snprintf(buffer, buffer_size, "%.*f", digits, value);
  });
}

void integer_by_format_int(benchmark::State &state) {
  run(state, integers(), [](int32_t value, char *buffer) {
    return quorix::format_int(value, buffer, buffer_size, 0, 0);
  });
}

void integer_by_to_chars(benchmark::State &state) {
  run(state, integers(), [](int32_t value, char *buffer) {
    return std::to_chars(buffer, buffer + buffer_size, value).ptr;
  });
}

void integer_by_snprintf(benchmark::State &state) {
  run(state, integers(),
      [](int32_t value, char *buffer) { return std::snprintf(buffer, buffer_size, "%d", value); });
}

BENCHMARK(real_by_format_real)->Arg(2)->Arg(3);
BENCHMARK(real_by_to_chars)->Arg(2)->Arg(3);
BENCHMARK(real_by_snprintf)->Arg(2)->Arg(3);
BENCHMARK(integer_by_format_int);
BENCHMARK(integer_by_to_chars);
BENCHMARK(integer_by_snprintf);

}  // namespace

BENCHMARK_MAIN();
