// SPDX-License-Identifier: MIT
//
// Numbers into text, as PDF and PostScript streams need them, by this library, by the C library and
// by std::to_chars: 4096 coordinates with two or three digits after the point, or integers.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <random>
#include <vector>

#include "base/text.h"

namespace {

constexpr size_t number_count = 4096;
constexpr size_t buffer_size = 40;

// Page coordinates in points, a quarter of them negative, as a plot's stream has them.
std::vector<double> coordinates() {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> place(-300.0, 900.0);
  std::vector<double> values(number_count);
  for (double &value : values) {
    value = place(random);
  }
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
  for (auto _ : state) {
    for (const Value value : values) {
      benchmark::DoNotOptimize(write(value, buffer));
      benchmark::ClobberMemory();
    }
  }
}

template <int digits>
void real_quorix(benchmark::State &state) {
  run(state, coordinates(), [](double value, char *buffer) {
    return quorix::format_real(value, digits, buffer, buffer_size, 0);
  });
}

template <int digits>
void real_to_chars(benchmark::State &state) {
  run(state, coordinates(), [](double value, char *buffer) {
    return std::to_chars(buffer, buffer + buffer_size, value, std::chars_format::fixed, digits).ptr;
  });
}

template <int digits>
void real_snprintf(benchmark::State &state) {
  run(state, coordinates(), [](double value, char *buffer) {
    return std::snprintf(buffer, buffer_size, "%.*f", digits, value);
  });
}

void integer_quorix(benchmark::State &state) {
  run(state, integers(), [](int32_t value, char *buffer) {
    return quorix::format_int(value, buffer, buffer_size, 0, 0);
  });
}

void integer_to_chars(benchmark::State &state) {
  run(state, integers(), [](int32_t value, char *buffer) {
    return std::to_chars(buffer, buffer + buffer_size, value).ptr;
  });
}

void integer_snprintf(benchmark::State &state) {
  run(state, integers(),
      [](int32_t value, char *buffer) { return std::snprintf(buffer, buffer_size, "%d", value); });
}

BENCHMARK(real_quorix<2>)->Name("reals, 2 digits/quorix");
BENCHMARK(real_to_chars<2>)->Name("reals, 2 digits/to_chars");
BENCHMARK(real_snprintf<2>)->Name("reals, 2 digits/snprintf");
BENCHMARK(real_quorix<3>)->Name("reals, 3 digits/quorix");
BENCHMARK(real_to_chars<3>)->Name("reals, 3 digits/to_chars");
BENCHMARK(real_snprintf<3>)->Name("reals, 3 digits/snprintf");
BENCHMARK(integer_quorix)->Name("integers/quorix");
BENCHMARK(integer_to_chars)->Name("integers/to_chars");
BENCHMARK(integer_snprintf)->Name("integers/snprintf");

}  // namespace
