// SPDX-License-Identifier: MIT
//
// Random calls of the polygon store: the library against the literal store, call by call.
//
// QUORIX_POLYGON_RUN=<number> makes that run of calls alone; QUORIX_POLYGON_RUNS=<count> compares
// that many.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "quorix/algorithms.h"
#include "tests/algorithms/literal_polygon_store.h"
#include "tests/algorithms/random_cases.h"
#include "tests/algorithms/random_values.h"

namespace quorix::testing {

namespace {

constexpr int32_t most_stored = 30;
constexpr size_t read_room = 12;
constexpr size_t guard_cells = 4;
constexpr double guard = -4444.5;

struct Call {
  enum Name { ini, put, put2, get, get2 } name;
  int32_t a = 0;   // mode, nv or position
  int32_t b = 0;   // capacity or attribute1
  int32_t c = 0;   // attribute2
  int32_t io = 0;  // what stands in io, status or nv before the call
  double key = 0;
  std::vector<double> x;
  std::vector<double> y;
};

// Everything that a call may have written.
struct Outcome {
  int32_t result = -1;
  int32_t io = 0;
  int32_t attribute1 = -99;
  int32_t attribute2 = -98;
  std::vector<double> x = std::vector<double>(read_room + guard_cells, guard);
  std::vector<double> y = x;

  bool operator==(const Outcome &) const = default;
};

struct Operations {
  decltype(&qqsini) ini;
  decltype(&qqsput) put;
  decltype(&qqsput2) put2;
  decltype(&qqsget) get;
  decltype(&qqsget2) get2;
};

Outcome make(const Operations &operations, const Call &call) {
  Outcome outcome;
  outcome.io = call.io;
  double *x = outcome.x.data();
  double *y = outcome.y.data();
  switch (call.name) {
    case Call::ini:
      outcome.result = operations.ini(call.a, call.b, &outcome.io);
      break;
    case Call::put:
      outcome.result = operations.put(call.x.data(), call.y.data(), &call.key, call.b, &outcome.io);
      break;
    case Call::put2:
      outcome.result = operations.put2(call.x.data(), call.y.data(), call.a, &call.key, call.b,
                                       call.c, &outcome.io);
      break;
    case Call::get:
      outcome.result = operations.get(x, y, call.a, &outcome.attribute1, &outcome.io);
      break;
    case Call::get2:
      outcome.result =
          operations.get2(x, y, call.a, &outcome.attribute1, &outcome.attribute2, &outcome.io);
      break;
  }
  return outcome;
}

std::string describe(const Call &call) {
  std::ostringstream out;
  const char *names[] = {"qqsini", "qqsput", "qqsput2", "qqsget", "qqsget2"};
  out << names[call.name] << " " << call.a << " " << call.b << " " << call.c << ", io " << call.io
      << ", key " << call.key << ", " << call.x.size() << " vertices";
  return out.str();
}

std::string describe(const Outcome &outcome) {
  std::ostringstream out;
  out.precision(17);
  out << "result " << outcome.result << ", io " << outcome.io << ", attributes "
      << outcome.attribute1 << " " << outcome.attribute2 << ", vertices";
  for (size_t i = 0; i < read_room; i++) {
    if (outcome.x[i] != guard || outcome.y[i] != guard)
      out << " (" << outcome.x[i] << ", " << outcome.y[i] << ")";
  }
  return out.str();
}

double random_key(RandomValues *random) {
  const double infinity = std::numeric_limits<double>::infinity();
  switch (random->below(6)) {
    case 0:
      return random->real(-1, 1);
    case 1:
      return random->one_of<double>({0.0, -0.0, infinity, -infinity, 1e300});
    default:
      return random->between(0, 5);
  }
}

double random_coordinate(RandomValues *random) {
  switch (random->below(8)) {
    case 0:
      return random->one_of<double>({0.1, 1.0 / 3, 16777217, -0.0, 1e-50, 123456789.123});
    case 1:
      return std::numeric_limits<double>::infinity();
    default:
      return random->real(-1000, 1000);
  }
}

Call random_put(RandomValues *random) {
  Call call;
  call.name = random->one_in(2) ? Call::put : Call::put2;
  call.a = random->one_in(20) ? random->between(-3, -1) : random->between(0, 16);
  call.io = random->one_in(20) ? -2 : random->between(0, most_stored);
  call.b = static_cast<int32_t>(random->word() & 0xffffffffU);
  call.c = static_cast<int32_t>(random->word() & 0xffffffffU);
  call.key = random_key(random);
  for (int32_t i = 0; i < most_stored; i++) {
    call.x.push_back(random_coordinate(random));
    call.y.push_back(random_coordinate(random));
  }
  return call;
}

Call ini(int32_t mode, int32_t capacity, int32_t io) {
  Call call;
  call.name = Call::ini;
  call.a = mode;
  call.b = capacity;
  call.io = io;
  return call;
}

Call random_opening(RandomValues *random) {
  const int32_t capacity = random->one_of<int32_t>({0, 1, 2, 3, 10, 100, -1, -10000, 10001});
  return ini(0, capacity, random->one_of<int32_t>({0, 1, 1, 3, 4, 12, 13, 30, -1}));
}

// Fills, sorts and reads; what is read has been sorted, so that its order is defined.
void add_round(std::vector<Call> *calls, RandomValues *random) {
  const int32_t puts = random->between(0, random->one_in(10) ? 300 : 30);
  for (int32_t i = 0; i < puts; i++) {
    calls->push_back(random_put(random));
    if (random->one_in(15)) calls->push_back(ini(3, random->between(-1, 5), 77));
    if (random->one_in(40)) calls->push_back(ini(random->between(4, 6), 1, 5));
  }
  calls->push_back(ini(2, 0, -6));
  for (int32_t i = -2; i < puts + 3; i++) {
    Call call;
    call.name = random->one_in(2) ? Call::get : Call::get2;
    call.a = random->one_in(3) ? random->between(-1, puts + 1) : i;
    call.io = -5;
    calls->push_back(call);
  }
}

std::vector<Call> random_calls(uint64_t number) {
  RandomValues random(number);
  std::vector<Call> calls;
  if (!random.one_in(5)) calls.push_back(random_opening(&random));
  const int32_t rounds = random.between(1, 4);
  for (int32_t round = 0; round < rounds; round++) {
    add_round(&calls, &random);
    if (random.one_in(3)) calls.push_back(ini(1, 0, 9));
    if (random.one_in(3)) calls.push_back(random_opening(&random));
  }
  calls.push_back(ini(1, 0, 0));
  return calls;
}

constexpr Operations library_operations = {qqsini, qqsput, qqsput2, qqsget, qqsget2};
constexpr Operations literal_operations = {literal::qqsini, literal::qqsput, literal::qqsput2,
                                           literal::qqsget, literal::qqsget2};

std::string compare_run(uint64_t number) {
  const std::vector<Call> calls = random_calls(number);
  for (size_t i = 0; i < calls.size(); i++) {
    const Outcome expected = make(literal_operations, calls[i]);
    const Outcome actual = make(library_operations, calls[i]);
    if (actual == expected) continue;
    return "call " + std::to_string(i) + ", " + describe(calls[i]) + ": " + describe(actual) +
           " instead of " + describe(expected);
  }
  return "";
}

}  // namespace

TEST(RandomPolygons, ComeBackAsFromTheLiteralStore) {
  compare_cases("QUORIX_POLYGON_RUN", 1000, compare_run);
}

}  // namespace quorix::testing
