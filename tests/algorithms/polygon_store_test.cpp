// SPDX-License-Identifier: MIT
//
// The polygon store at its edges: empty, full, closed, out of memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <vector>

#include "quorix/algorithms.h"
#include "tests/algorithms/random_values.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {

namespace {

constexpr int32_t first_growth = 10000;

int32_t ini(int32_t mode, int32_t capacity = 0, int32_t io = 0) {
  EXPECT_EQ(qqsini(mode, capacity, &io), 0);
  return io;
}

int32_t count() {
  return ini(3, 0, -1);
}

// A polygon whose vertices are (tag, 0), (tag, 1), ...; the attributes are tag and -tag.
int32_t put(double key, int32_t tag, int32_t nv = 4) {
  std::vector<double> x(static_cast<size_t>(std::max(nv, 0)), tag);
  std::vector<double> y;
  for (int32_t i = 0; i < nv; i++)
    y.push_back(i);
  int32_t status = -1;
  EXPECT_EQ(qqsput2(x.data(), y.data(), nv, &key, tag, -tag, &status), 0);
  return status;
}

struct Read {
  int32_t nv = -1;
  int32_t attribute1 = -9;
  int32_t attribute2 = -9;
  std::vector<double> x = std::vector<double>(16, -1.5);
  std::vector<double> y = std::vector<double>(16, -1.5);
};

Read get(int32_t position) {
  Read read;
  EXPECT_EQ(
      qqsget2(read.x.data(), read.y.data(), position, &read.attribute1, &read.attribute2, &read.nv),
      0);
  return read;
}

void expect_nothing(const Read &read) {
  EXPECT_EQ(read.nv, 0);
  EXPECT_EQ(read.attribute1, -9);
  EXPECT_EQ(read.attribute2, -9);
  EXPECT_EQ(read.x, std::vector<double>(16, -1.5));
  EXPECT_EQ(read.y, std::vector<double>(16, -1.5));
}

// A polygon of `put` with this tag, whole and with nothing behind it.
void expect_polygon(const Read &read, int32_t tag, int32_t nv = 4) {
  EXPECT_EQ(read.nv, nv);
  EXPECT_EQ(read.attribute1, tag);
  EXPECT_EQ(read.attribute2, -tag);
  for (size_t i = 0; i < read.x.size(); i++) {
    const bool is_vertex = i < static_cast<size_t>(nv);
    EXPECT_EQ(read.x[i], is_vertex ? tag : -1.5);
    EXPECT_EQ(read.y[i], is_vertex ? static_cast<double>(i) : -1.5);
  }
}

class PolygonStore : public ::testing::Test {
 protected:
  void SetUp() override { ini(1); }
  void TearDown() override { ini(1); }
};

}  // namespace

// --- The calls in their order ---

TEST_F(PolygonStore, SortsWhenEmptyAndHasNothingToRead) {
  EXPECT_EQ(ini(0), 0);
  EXPECT_EQ(ini(2, 0, 5), 0);
  EXPECT_EQ(count(), 0);
  expect_nothing(get(0));
  expect_nothing(get(1));
}

TEST_F(PolygonStore, OfOnePolygonGivesItAfterTheSort) {
  ini(0);
  EXPECT_EQ(put(3, 17), 0);
  EXPECT_EQ(ini(2), 0);
  EXPECT_EQ(count(), 1);
  expect_polygon(get(0), 17);
  expect_nothing(get(1));
}

TEST_F(PolygonStore, ReadsFromTheHighestKeyToTheLowest) {
  ini(0);
  const double keys[] = {2, -7, 1e30, 0, 2.5};
  for (int32_t i = 0; i < 5; i++)
    EXPECT_EQ(put(keys[i], i), 0);
  ini(2);
  const int32_t order[] = {2, 4, 0, 3, 1};
  for (int32_t i = 4; i >= 0; i--)
    expect_polygon(get(i), order[i]);
  expect_polygon(get(3), order[3]);  // again
}

TEST_F(PolygonStore, ReadsEqualKeysInTheOrderOfInsertion) {
  ini(0);
  for (int32_t i = 0; i < 100; i++)
    put(i % 3, i);
  ini(2);
  int32_t position = 0;
  for (int32_t key = 2; key >= 0; key--) {
    for (int32_t i = key; i < 100; i += 3)
      expect_polygon(get(position++), i);
  }
}

TEST_F(PolygonStore, KeepsKeysThatSinglePrecisionCannotTellApart) {
  ini(0);
  put(1.0, 1);
  put(1.0 + 1e-12, 2);
  put(1.0 + 2e-12, 3);
  ini(2);
  expect_polygon(get(0), 3);
  expect_polygon(get(1), 2);
  expect_polygon(get(2), 1);
}

TEST_F(PolygonStore, MayBeFilledAndSortedAgain) {
  ini(0);
  put(1, 1);
  put(3, 3);
  ini(2);
  expect_polygon(get(0), 3);
  put(2, 2);
  put(4, 4);
  EXPECT_EQ(count(), 4);
  ini(2);
  for (int32_t i = 0; i < 4; i++)
    expect_polygon(get(i), 4 - i);
}

TEST_F(PolygonStore, GivesAStoredPolygonOrNoneBeforeTheSort) {
  ini(0, 3);
  for (int32_t i = 0; i < 5; i++) {
    put(i, 100 + i);
    for (int32_t position = 0; position <= i; position++) {
      const Read read = get(position);
      EXPECT_TRUE(read.nv == 0 || read.nv == 4);
      if (read.nv == 4) {
        EXPECT_GE(read.attribute1, 100);
        expect_polygon(read, read.attribute1);
      }
    }
  }
}

TEST_F(PolygonStore, LeavesItsArgumentAloneInAnUnknownMode) {
  ini(0);
  put(1, 1);
  for (const int32_t mode : {4, 5, -1, 100, std::numeric_limits<int32_t>::min()})
    EXPECT_EQ(ini(mode, 0, 123), 123);
  EXPECT_EQ(count(), 1);
}

// --- Vertices ---

TEST_F(PolygonStore, GivesTheFirstTwelveVerticesOfMore) {
  ini(0);
  const int32_t counts[] = {0, 1, 2, 11, 12, 13, 14, 1000};
  for (int32_t i = 0; i < 8; i++)
    EXPECT_EQ(put(-i, i, counts[i]), 0);
  ini(2);
  for (int32_t i = 0; i < 8; i++)
    expect_polygon(get(i), i, std::min(counts[i], 12));
}

TEST_F(PolygonStore, RoundsCoordinatesToSinglePrecision) {
  ini(0);
  const double x[] = {0.1, 16777217, 1e-60};
  const double y[] = {1.0 / 3, 1e300, -0.0};
  const double key = 0;
  int32_t status = -1;
  qqsput2(x, y, 3, &key, 0, 0, &status);
  EXPECT_EQ(status, 0);
  ini(2);
  const Read read = get(0);
  EXPECT_EQ(read.nv, 3);
  EXPECT_EQ(read.x[0], 0x1.99999ap-4);
  EXPECT_EQ(read.x[1], 16777216);
  EXPECT_EQ(read.x[2], 0);
  EXPECT_EQ(read.y[0], 0x1.555556p-2);
  EXPECT_EQ(read.y[1], std::numeric_limits<double>::infinity());
  EXPECT_TRUE(read.y[2] == 0 && std::signbit(read.y[2]));
}

TEST_F(PolygonStore, HandsAttributesBackBitForBit) {
  ini(0);
  const double x = 1, y = 2, key = 0;
  const int32_t least = std::numeric_limits<int32_t>::min();
  const int32_t most = std::numeric_limits<int32_t>::max();
  int32_t status = -1;
  qqsput2(&x, &y, 1, &key, least, most, &status);
  ini(2);
  const Read read = get(0);
  EXPECT_EQ(read.attribute1, least);
  EXPECT_EQ(read.attribute2, most);
}

TEST_F(PolygonStore, TakesTheNumberOfVerticesFromItsOpening) {
  const double x[] = {1, 2, 3, 4, 5}, y[] = {6, 7, 8, 9, 10}, key = 1;
  const struct {
    int32_t mode, io, expected;
  } cases[] = {{0, 2, 4}, {4, 2, 4}, {4, -3, 4}, {3, 5, 3},
               {5, 0, 5}, {1, 2, 2}, {1, 5, 5},  {1, 0, 0}};
  for (const auto &each : cases) {
    EXPECT_EQ(ini(0, 0, each.mode), 0);
    int32_t io = each.io;
    EXPECT_EQ(qqsput(x, y, &key, 42, &io), 0);
    EXPECT_EQ(io, 0);
    ini(2);
    const Read read = get(0);
    EXPECT_EQ(read.nv, each.expected);
    EXPECT_EQ(read.attribute1, 42);
    EXPECT_EQ(read.attribute2, 0);
    int32_t nv = -1, attribute1 = -1;
    double out_x[12] = {}, out_y[12] = {};
    EXPECT_EQ(qqsget(out_x, out_y, 0, &attribute1, &nv), 0);
    EXPECT_EQ(nv, each.expected);
    EXPECT_EQ(attribute1, 42);
    for (int32_t i = 0; i < nv; i++) {
      EXPECT_EQ(out_x[i], x[i]);
      EXPECT_EQ(out_y[i], y[i]);
    }
  }
}

// --- Bad input ---

TEST_F(PolygonStore, DoesNotStoreANegativeNumberOfVertices) {
  ini(0, 0, 1);
  EXPECT_EQ(put(1, 1, -1), 1);
  EXPECT_EQ(put(1, 1, std::numeric_limits<int32_t>::min()), 1);
  const double key = 1;
  int32_t io = -4;
  EXPECT_EQ(qqsput(nullptr, nullptr, &key, 1, &io), 0);
  EXPECT_EQ(io, 1);
  EXPECT_EQ(count(), 0);
  ini(0, 0, -4);
  io = 3;
  EXPECT_EQ(qqsput(nullptr, nullptr, &key, 1, &io), 0);
  EXPECT_EQ(io, 1);
  EXPECT_EQ(count(), 0);
}

TEST_F(PolygonStore, HasNothingAtANegativePositionOrBeyondItsEnd) {
  ini(0);
  put(1, 1);
  ini(2);
  for (const int32_t position : {-1, -2, 1, 2, 10000, std::numeric_limits<int32_t>::max(),
                                 std::numeric_limits<int32_t>::min()})
    expect_nothing(get(position));
}

TEST_F(PolygonStore, TakesANegativeCapacityForNone) {
  for (const int32_t capacity : {-1, -10000, std::numeric_limits<int32_t>::min()}) {
    EXPECT_EQ(ini(0, capacity), 0);
    EXPECT_EQ(put(1, 5), 0);
    ini(2);
    expect_polygon(get(0), 5);
  }
}

TEST_F(PolygonStore, SurvivesKeysThatAreNotNumbers) {
  ini(0);
  for (int32_t i = 0; i < 200; i++)
    put(i % 3 == 0 ? std::nan("") : i, i);
  ini(2);
  std::set<int32_t> seen;
  for (int32_t i = 0; i < 200; i++) {
    const Read read = get(i);
    expect_polygon(read, read.attribute1);
    seen.insert(read.attribute1);
  }
  EXPECT_EQ(seen.size(), 200U);
}

TEST_F(PolygonStore, DoesNothingBeforeItIsOpenedAndAfterItIsClosed) {
  for (int round = 0; round < 2; round++) {
    EXPECT_EQ(ini(1, 0, 7), 0);
    EXPECT_EQ(ini(1, 0, 7), 0);
    EXPECT_EQ(ini(2, 0, 7), 0);
    EXPECT_EQ(count(), 0);
    expect_nothing(get(0));
    EXPECT_EQ(put(1, 1), 1);
    const double x = 0, key = 0;
    int32_t io = 1;
    qqsput(&x, &x, &key, 0, &io);
    EXPECT_EQ(io, 1);
    EXPECT_EQ(count(), 0);
    ini(0);
    put(1, 1);
  }
}

TEST_F(PolygonStore, OpenedTwiceStartsAgainAndLeaksNothing) {
  FailingMemory memory;
  ini(0, 10);
  put(1, 1);
  put(2, 2);
  EXPECT_EQ(ini(0, 10, 3), 0);
  EXPECT_EQ(count(), 0);
  put(3, 3);
  ini(2);
  expect_polygon(get(0), 3);
  expect_nothing(get(1));
  ini(1);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

// --- Growth and memory ---

TEST_F(PolygonStore, GrowsToTenThousandEntriesAndThenDoubles) {
  FailingMemory memory;
  EXPECT_EQ(ini(0, 1), 0);
  std::set<int32_t> grown_at;
  for (int32_t i = 0; i < 2 * first_growth + 10; i++) {
    const size_t before = memory.live_bytes();
    ASSERT_EQ(put(i, i, 1), 0);
    // At the least a key and two attributes for each new entry.
    if (memory.live_bytes() - before >= static_cast<size_t>(first_growth - 1) * 16) {
      grown_at.insert(i + 1);
    }
  }
  // Vertices may have brought more room too, but not for every polygon.
  for (const int32_t polygon : {2, first_growth + 1, 2 * first_growth + 1})
    EXPECT_EQ(grown_at.count(polygon), 1U) << polygon;
  EXPECT_LT(grown_at.size(), 10U);
  EXPECT_EQ(count(), 2 * first_growth + 10);
  ini(2);
  for (int32_t i = 0; i < 2 * first_growth + 10; i += 17)
    expect_polygon(get(i), 2 * first_growth + 9 - i, 1);
  ini(1);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(PolygonStore, ReportsAnOpeningWithoutMemoryAndKeepsAnOpenStore) {
  size_t refused = 0;
  for (size_t request = 1;; request++) {
    ini(0, 5);
    put(1, 9);
    ini(2);
    {
      FailingMemory memory(request);
      const int32_t status = ini(0, 7);
      if (!memory.failed()) {
        EXPECT_EQ(status, 0);
        EXPECT_EQ(count(), 0);
        ini(1);
        break;
      }
      refused++;
      EXPECT_EQ(status, 1);
      EXPECT_EQ(memory.live_blocks(), 0U);
    }
    EXPECT_EQ(count(), 1);
    expect_polygon(get(0), 9);
  }
  EXPECT_GE(refused, 1U);
}

TEST_F(PolygonStore, ReportsAFirstOpeningWithoutMemory) {
  for (size_t request = 1;; request++) {
    FailingMemory memory(request);
    const int32_t status = ini(0, 7);
    if (!memory.failed()) {
      ini(1);
      EXPECT_EQ(memory.live_blocks(), 0U);
      break;
    }
    EXPECT_EQ(status, 1);
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(put(1, 1), 1);
  }
}

TEST_F(PolygonStore, OfMoreThanThereIsMemoryForIsNotOpened) {
  FailingMemory memory(1, Failures::that_and_all_later);
  EXPECT_EQ(ini(0, std::numeric_limits<int32_t>::max()), 1);
  EXPECT_EQ(put(1, 1), 1);
}

namespace {

constexpr int32_t run_capacity = 3;
constexpr int32_t run_length = 200;

// Puts polygons until one is refused for want of memory; true if none was.
bool put_all_but_refused(const FailingMemory &memory, int32_t *kept) {
  bool whole = true;
  for (int32_t i = 0; i < run_length; i++) {
    const int32_t before = count();
    const int32_t nv = i % 10 == 9 ? 3000 : i % 7;
    const int32_t status = put(i, i, nv);
    if (status == 0) {
      EXPECT_EQ(count(), before + 1);
      continue;
    }
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(memory.failed());
    // Either that polygon alone is missing, or the enlarging failed and all are gone.
    const bool could_grow = before == run_capacity;
    EXPECT_TRUE(count() == before || (could_grow && count() == 0)) << i;
    whole = false;
  }
  *kept = count();
  return whole;
}

void expect_whole_polygons(int32_t kept) {
  int32_t tag = run_length;
  for (int32_t i = 0; i < kept; i++) {
    const Read read = get(i);
    EXPECT_LT(read.attribute1, tag);  // each key, and so each tag, is below the one before
    tag = read.attribute1;
    expect_polygon(read, tag, tag % 10 == 9 ? 12 : tag % 7);
  }
  expect_nothing(get(kept));
}

void run_with_failure(size_t request, Failures failures, bool *finished) {
  FailingMemory memory(request, failures);
  int32_t kept = 0;
  if (ini(0, run_capacity) == 0) {
    const bool whole = put_all_but_refused(memory, &kept);
    EXPECT_EQ(ini(2, 0, 5), 0);
    EXPECT_EQ(count(), kept);
    expect_whole_polygons(kept);
    if (whole) {
      EXPECT_EQ(kept, run_length);
    }
  }
  ini(1);
  EXPECT_EQ(memory.live_blocks(), 0U) << "request " << request;
  *finished = !memory.failed();
}

}  // namespace

TEST_F(PolygonStore, MayRunOutOfMemoryAtEveryRequest) {
  for (const Failures failures : {Failures::only_that_one, Failures::that_and_all_later}) {
    bool finished = false;
    for (size_t request = 1; !finished; request++)
      run_with_failure(request, failures, &finished);
  }
}

TEST_F(PolygonStore, ThatCouldNotGrowIsEmptyAndMayBeFilledAgainOrClosed) {
  for (size_t request = 1;; request++) {
    ini(0, 1);
    put(1, 1, 0);
    int32_t status = 0;
    bool failed = false;
    {
      FailingMemory memory(request);
      status = put(2, 2, 0);
      failed = memory.failed();
    }
    if (!failed) {
      EXPECT_EQ(status, 0);
      EXPECT_EQ(count(), 2);
      break;
    }
    if (status == 1) {
      EXPECT_TRUE(count() == 0 || count() == 1);
    }
    const int32_t before = count();
    EXPECT_EQ(put(3, 3), 0);
    EXPECT_EQ(count(), before + 1);
    ini(2);
    expect_polygon(get(0), 3);
  }
}

}  // namespace quorix::testing
