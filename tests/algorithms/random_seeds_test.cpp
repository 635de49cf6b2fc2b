// SPDX-License-Identifier: MIT
//
// Random calls of the seed grid: the library against the literal grid, call by call.
//
// QUORIX_SEED_RUN=<number> makes that run of calls alone; QUORIX_SEED_RUNS=<count> compares that
// many.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

#include "quorix/algorithms.h"
#include "tests/algorithms/literal_seed_grid.h"
#include "tests/algorithms/random_cases.h"
#include "tests/algorithms/random_values.h"

namespace quorix::testing {

namespace {

constexpr int32_t longest_line = 24;
constexpr size_t guard_cells = 4;
constexpr double guard = -4444.5;

struct Domain {
  double low[3];
  double high[3];
  double cell_size;
  int32_t ndim;
};

struct Call {
  enum Name { open_or_close, next_line, test_seed, add_line } name;
  Domain domain = {};
  int32_t mode = 0;
  int32_t n1 = 0;
  int32_t n2 = 0;
  int32_t flag = 0;
  double factor = 0;
  std::vector<double> x = {};  // the line, or the candidate alone
  std::vector<double> y = {};
  std::vector<double> z = {};
};

// Everything that a call may have written.
struct Outcome {
  int32_t result = -1;
  int32_t status = -77;
  int32_t n1 = -1111;
  int32_t n2 = -2222;
  std::vector<double> points[3];

  Outcome() {
    for (std::vector<double> &values : points)
      values.assign(longest_line + guard_cells, guard);
  }
};

struct Operations {
  decltype(&qqseed1) seed1;
  decltype(&qqseed2) seed2;
  decltype(&qqseed3) seed3;
  decltype(&qqseed4) seed4;
};

Outcome make(const Operations &operations, const Call &call) {
  Outcome out;
  const Domain &d = call.domain;
  switch (call.name) {
    case Call::open_or_close:
      out.result = operations.seed1(&d.low[0], &d.high[0], &d.low[1], &d.high[1], &d.low[2],
                                    &d.high[2], &d.cell_size, &d.ndim, &call.mode, &out.status);
      break;
    case Call::next_line:
      out.result = operations.seed2(out.points[0].data(), out.points[1].data(),
                                    out.points[2].data(), &out.n1, &out.n2, &out.status);
      break;
    case Call::test_seed:
      out.result =
          operations.seed3(call.x.data(), call.y.data(), call.z.data(), &call.factor, &out.status);
      break;
    case Call::add_line:
      out.result = operations.seed4(call.x.data(), call.y.data(), call.z.data(), &call.n1, &call.n2,
                                    &call.flag, &out.status);
      break;
  }
  return out;
}

bool same_bits(const std::vector<double> &a, const std::vector<double> &b) {
  return std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

std::string difference_of(const Outcome &expected, const Outcome &actual) {
  std::ostringstream out;
  const char *names[] = {"return", "status", "n1", "n2"};
  const int32_t wanted[] = {expected.result, expected.status, expected.n1, expected.n2};
  const int32_t found[] = {actual.result, actual.status, actual.n1, actual.n2};
  for (size_t i = 0; i < 4; i++) {
    if (wanted[i] != found[i])
      out << names[i] << " " << found[i] << " instead of " << wanted[i] << "; ";
  }
  for (size_t i = 0; i < 3; i++) {
    if (!same_bits(expected.points[i], actual.points[i]))
      out << "other "
          << "xyz"[i] << "; ";
  }
  return out.str();
}

std::string describe(const Call &call) {
  std::ostringstream out;
  out.precision(17);
  const Domain &d = call.domain;
  switch (call.name) {
    case Call::open_or_close:
      out << "qqseed1 mode " << call.mode << ", ndim " << d.ndim << ", cell " << d.cell_size;
      for (size_t i = 0; i < 3; i++)
        out << ", " << d.low[i] << " to " << d.high[i];
      break;
    case Call::next_line:
      out << "qqseed2";
      break;
    case Call::test_seed:
      out << "qqseed3 (" << call.x[0] << ", " << call.y[0] << ", " << call.z[0] << ") factor "
          << call.factor;
      break;
    case Call::add_line:
      out << "qqseed4 " << call.n1 << " + " << call.n2 << " points, flag " << call.flag;
      break;
  }
  return out.str();
}

// --- Random calls ---

Domain random_domain(RandomValues *random) {
  Domain domain = {};
  domain.ndim = random->one_of<int32_t>({2, 2, 3, 3, 1, 0, -3, 4});
  domain.cell_size = random->one_of<double>({1, 1, 0.5, 0.1, 2.5, random->real(0.2, 3)});
  const int32_t widest = domain.ndim == 3 ? 8 : 20;
  const bool equal = random->one_in(3);
  const int32_t width = random->between(0, widest);
  for (size_t i = 0; i < 3; i++) {
    domain.low[i] = random->one_of<double>({0, -5, 100, random->real(-50, 50)});
    const int32_t cells = equal ? width : random->between(0, widest);
    const double rest = random->one_of<double>({0, 0, 0.5, random->unit()});
    domain.high[i] = domain.low[i] + (cells + rest) * domain.cell_size;
  }
  return domain;
}

// Mostly inside, often on a border between cells or halfway, sometimes outside, rarely nowhere.
double random_coordinate(RandomValues *random, const Domain &domain, size_t axis) {
  const double low = domain.low[axis];
  const double high = domain.high[axis];
  const int32_t cells = static_cast<int32_t>((high - low) / domain.cell_size);
  switch (random->below(16)) {
    case 0:
      return low;
    case 1:
      return high;
    case 2:
      return random->real(low - 2 * domain.cell_size, high + 2 * domain.cell_size);
    case 3:
      return random->one_in(10) ? std::nan("") : random->real(low, high);
    case 4:
      return random->one_in(10) ? std::numeric_limits<double>::infinity() : low;
    case 5:
      return random->one_in(10) ? -1e300 : high;
    case 6:
    case 7:
    case 8:
      return low + domain.cell_size * random->between(-1, cells + 1);
    case 9:
    case 10:
      return low + domain.cell_size * random->between(-2, 2 * cells + 2) / 2;
    default:
      return random->real(low, high);
  }
}

void add_points(Call *call, RandomValues *random, const Domain &domain, int32_t count) {
  for (int32_t i = 0; i < count; i++) {
    call->x.push_back(random_coordinate(random, domain, 0));
    call->y.push_back(random_coordinate(random, domain, 1));
    call->z.push_back(random_coordinate(random, domain, 2));
  }
}

Call random_line(RandomValues *random, const Domain &domain) {
  Call call = {Call::add_line};
  const int32_t count = random->between(0, random->one_in(3) ? longest_line : 5);
  call.n1 = random->between(-2, count + 2);
  call.n2 = count - call.n1 - (random->one_in(20) ? random->between(0, 3) : 0);
  call.flag = random->one_of<int32_t>({0, 1, 1, 1, 2, -1});
  add_points(&call, random, domain, longest_line);
  return call;
}

Call random_candidate(RandomValues *random, const Domain &domain) {
  Call call = {Call::test_seed};
  add_points(&call, random, domain, 1);
  call.factor = random->one_of<double>({1, 1, 1, 0.5, 0.5, 0.9, 0, 2, -1, random->unit()});
  if (random->one_in(100)) call.factor = std::nan("");
  return call;
}

Call opening(const Domain &domain, int32_t mode) {
  Call call = {Call::open_or_close};
  call.domain = domain;
  call.mode = mode;
  return call;
}

// An opening that must fail, and leave the open grid as it is.
Call bad_opening(RandomValues *random) {
  Call call = opening(random_domain(random), 0);
  const double infinity = std::numeric_limits<double>::infinity();
  if (random->one_in(2)) {
    call.domain.cell_size =
        random->one_of<double>({0, -0.0, -1, std::nan(""), infinity, -infinity});
  } else {
    const size_t axis = random->below(2);
    call.domain.high[axis] = random->one_of<double>({call.domain.low[axis] - 0.25, infinity});
  }
  return call;
}

void add_round(std::vector<Call> *calls, RandomValues *random) {
  const Domain domain = random_domain(random);
  if (!random->one_in(12)) calls->push_back(opening(domain, 0));
  const int32_t length = random->between(0, 120);
  for (int32_t i = 0; i < length; i++) {
    switch (random->below(12)) {
      case 0:
      case 1:
      case 2:
        calls->push_back(random_line(random, domain));
        break;
      case 3:
      case 4:
        calls->push_back({Call::next_line});
        break;
      case 5:
        if (random->one_in(6)) calls->push_back(bad_opening(random));
        if (random->one_in(6))
          calls->push_back(opening(domain, random->one_of<int32_t>({2, -1, 3})));
        break;
      default:
        calls->push_back(random_candidate(random, domain));
        break;
    }
  }
  for (int32_t i = 0; i < 20; i++)
    calls->push_back({Call::next_line});
  if (!random->one_in(3)) calls->push_back(opening(random_domain(random), 1));
}

std::vector<Call> random_calls(uint64_t number) {
  RandomValues random(number);
  std::vector<Call> calls;
  const int32_t rounds = random.between(1, 3);
  for (int32_t i = 0; i < rounds; i++)
    add_round(&calls, &random);
  calls.push_back(opening({}, 1));
  return calls;
}

constexpr Operations library_operations = {qqseed1, qqseed2, qqseed3, qqseed4};
constexpr Operations literal_operations = {literal::qqseed1, literal::qqseed2, literal::qqseed3,
                                           literal::qqseed4};

std::string compare_run(uint64_t number) {
  const std::vector<Call> calls = random_calls(number);
  for (size_t i = 0; i < calls.size(); i++) {
    const Outcome expected = make(literal_operations, calls[i]);
    const std::string difference = difference_of(expected, make(library_operations, calls[i]));
    if (difference.empty()) continue;
    std::ostringstream out;
    out << "call " << i << ": " << difference << "\n";
    for (size_t k = 0; k <= i; k++)
      out << "  " << describe(calls[k]) << "\n";
    return out.str();
  }
  return "";
}

// A long run in one large grid: nearly all that a caller does, with points enough in each cell.
std::string compare_long_run(int32_t ndim, size_t calls) {
  RandomValues random(static_cast<uint64_t>(ndim));
  const Domain domain = {{0, 0, 0}, {40, 40, 12}, 1, ndim};
  make(literal_operations, opening(domain, 0));
  make(library_operations, opening(domain, 0));
  size_t accepted = 0;
  for (size_t i = 0; i < calls; i++) {
    Call call = i % 10 == 0 ? random_line(&random, domain) : random_candidate(&random, domain);
    if (i % 10 == 0) call.n1 = 3, call.n2 = 2;
    if (i % 37 == 0) call = {Call::next_line};
    const Outcome expected = make(literal_operations, call);
    const std::string difference = difference_of(expected, make(library_operations, call));
    if (!difference.empty()) return "call " + std::to_string(i) + ": " + difference;
    if (call.name == Call::test_seed && expected.status == 0) accepted++;
  }
  make(literal_operations, opening(domain, 1));
  make(library_operations, opening(domain, 1));
  // The comparison is worth something only if both answers were frequent.
  if (accepted < calls / 20 || accepted > calls / 10 * 8)
    return std::to_string(accepted) + " accepted";
  return "";
}

}  // namespace

TEST(RandomSeeds, AreAcceptedAndQueuedAsByTheLiteralGrid) {
  compare_cases("QUORIX_SEED_RUN", 1500, compare_run);
}

TEST(RandomSeeds, AreAcceptedAsByTheLiteralGridInALongRun) {
  EXPECT_EQ(compare_long_run(2, 20000), "");
  EXPECT_EQ(compare_long_run(3, 40000), "");
}

}  // namespace quorix::testing
