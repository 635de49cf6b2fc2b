// SPDX-License-Identifier: MIT
//
// Both zlib gates: streams in pieces, little room, and a compressor that fails. zlib's own calls
// judge.
#include "base/deflate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

using Bytes = std::vector<uint8_t>;

// Rows of a plot, or noise: what compresses well and what does not.
Bytes test_input(size_t count, uint32_t seed, bool noise) {
  std::mt19937 random(seed);
  Bytes bytes(count);
  for (size_t i = 0; i < count; ++i)
    bytes[i] = static_cast<uint8_t>(noise || random() % 50 == 0 ? random() & 255 : i / 3 % 7);
  return bytes;
}

Bytes in_one_go(const Bytes &input) {
  uLongf size = compressBound(static_cast<uLong>(input.size()));
  Bytes output(size);
  EXPECT_EQ(compress(output.data(), &size, input.data(), static_cast<uLong>(input.size())), Z_OK);
  output.resize(size);
  return output;
}

// Status and stream of an input that comes in pieces.
DeflateStatus in_pieces(const Bytes &input, size_t piece, size_t room, Bytes *output) {
  output->assign(room, 0);
  DeflateRun run;
  DeflateStatus status = start_deflate(&run, output->data(), room);
  for (size_t at = 0; at < input.size() && status == DeflateStatus::done; at += piece) {
    const size_t count = std::min(piece, input.size() - at);
    status = feed_deflate(&run, &input[at], count, at + count == input.size());
  }
  if (input.empty() && status == DeflateStatus::done) status = feed_deflate(&run, nullptr, 0, true);
  status = finish_deflate(&run, status);
  output->resize(run.written);
  return status;
}

TEST(Deflate, HasRoomForAHundredthMoreAnd13Bytes) {
  const std::pair<size_t, size_t> rooms[] = {
      {0, 13}, {1, 14}, {99, 112}, {100, 114}, {12345, 12345 + 123 + 13}};
  for (const auto &[bytes, expected] : rooms) {
    size_t room = 0;
    EXPECT_TRUE(deflate_room(bytes, &room));
    EXPECT_EQ(room, expected);
  }
  size_t room = 77;
  EXPECT_TRUE(deflate_room(SIZE_MAX / 2, &room));
  EXPECT_FALSE(deflate_room(SIZE_MAX / 2 + 1, &room));
  EXPECT_FALSE(deflate_room(SIZE_MAX, &room));
}

TEST(Deflate, HasRoomForWhatDoesNotCompress) {
  for (const size_t count : {size_t{0}, size_t{1}, size_t{100}, size_t{70000}, size_t{1000000}}) {
    size_t room = 0;
    ASSERT_TRUE(deflate_room(count, &room));
    Bytes output;
    EXPECT_EQ(in_pieces(test_input(count, 2, true), 4096, room, &output), DeflateStatus::done);
  }
}

TEST(Deflate, GivesTheSameStreamForPiecesOfAnySize) {
  for (const bool noise : {false, true}) {
    for (const size_t count : {size_t{0}, size_t{1}, size_t{1000}, size_t{70000}, size_t{400000}}) {
      const Bytes input = test_input(count, 1, noise);
      const Bytes expected = in_one_go(input);
      for (const size_t piece : {size_t{1}, size_t{7}, size_t{261}, size_t{4097}, size_t{32768},
                                 size_t{100000}, size_t{500000}}) {
        if (piece == 1 && count > 100000) continue;
        Bytes output;
        EXPECT_EQ(in_pieces(input, piece, expected.size() + 50, &output), DeflateStatus::done);
        EXPECT_TRUE(output == expected) << count << " in pieces of " << piece;
      }
    }
  }
}

TEST(Deflate, TakesEmptyPiecesWithoutAnEffect) {
  Bytes output(100);
  DeflateRun run;
  ASSERT_EQ(start_deflate(&run, output.data(), output.size()), DeflateStatus::done);
  const Bytes input = {1, 2, 3};
  EXPECT_EQ(feed_deflate(&run, nullptr, 0, false), DeflateStatus::done);
  EXPECT_EQ(feed_deflate(&run, input.data(), 3, false), DeflateStatus::done);
  EXPECT_EQ(feed_deflate(&run, nullptr, 0, false), DeflateStatus::done);
  EXPECT_EQ(feed_deflate(&run, nullptr, 0, true), DeflateStatus::done);
  EXPECT_EQ(finish_deflate(&run, DeflateStatus::done), DeflateStatus::done);
  output.resize(run.written);
  EXPECT_EQ(output, in_one_go(input));
}

TEST(Deflate, FitsIntoExactlyTheRoomItNeedsAndNeverWritesBehindIt) {
  const Bytes input = test_input(3000, 2, true);
  const Bytes expected = in_one_go(input);
  for (const size_t piece : {size_t{100}, size_t{5000}}) {
    Bytes output;
    EXPECT_EQ(in_pieces(input, piece, expected.size(), &output), DeflateStatus::done);
    EXPECT_EQ(output, expected);
    for (const size_t missing : {size_t{1}, size_t{4}, size_t{1000}, expected.size()}) {
      EXPECT_EQ(in_pieces(input, piece, expected.size() - missing, &output),
                DeflateStatus::not_finished);
      EXPECT_LE(output.size(), expected.size() - missing);
    }
  }
}

TEST(Deflate, AsksForItsMemoryThroughTheGateAndGivesItBack) {
  const Bytes input = test_input(3000, 3, false);
  size_t n = 1;
  for (;; ++n) {
    const FailingMemory memory(n);
    Bytes output;
    const DeflateStatus status = in_pieces(input, 100, 4000, &output);
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    if (!memory.failed()) {
      EXPECT_EQ(status, DeflateStatus::done);
      break;
    }
    EXPECT_EQ(status, DeflateStatus::not_started) << n;
    EXPECT_EQ(output.size(), 0U) << n;
  }
  EXPECT_GT(n, 1U);
}

TEST(Deflate, GivesItsMemoryBackWhenItIsBrokenOff) {
  const FailingMemory memory;
  Bytes output(100);
  DeflateRun run;
  ASSERT_EQ(start_deflate(&run, output.data(), output.size()), DeflateStatus::done);
  EXPECT_GT(memory.live_blocks(), 0U);
  // zlib calls the end of an unfinished stream an error.
  EXPECT_EQ(feed_deflate(&run, output.data(), 10, false), DeflateStatus::done);
  EXPECT_EQ(finish_deflate(&run, DeflateStatus::done), DeflateStatus::not_ended);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

// ---- a compressor that does as it is asked

// What the stream was given at each call of `run`, and what it is to do then.
struct Step {
  uInt taken, written;  // of the input and of the room
  int result;
};

struct Seen {
  uInt input, room;
  int flush;
};

std::vector<Step> steps;
std::vector<Seen> seen;

int scripted_run(z_stream *stream, int flush) {
  const Step step = steps.at(seen.size());
  seen.push_back({stream->avail_in, stream->avail_out, flush});
  stream->avail_in -= step.taken;
  stream->avail_out -= step.written;
  return step.result;
}

class ScriptedDeflate : public ::testing::Test {
 protected:
  void SetUp() override {
    seen.clear();
    deflate_gate = {[](z_stream *) { return Z_OK; }, scripted_run, [](z_stream *) { return Z_OK; }};
  }
  void TearDown() override { deflate_gate = usual_; }

  const DeflateGate usual_ = deflate_gate;
  uint8_t byte_ = 0;  // stands for blocks that nobody touches
};

TEST_F(ScriptedDeflate, GetsInputOfMoreThan32BitsInPieces) {
  steps = {{UINT_MAX, 3, Z_OK}, {5, 4, Z_STREAM_END}};
  DeflateRun run;
  ASSERT_EQ(start_deflate(&run, &byte_, 100), DeflateStatus::done);
  EXPECT_EQ(feed_deflate(&run, &byte_, size_t{UINT_MAX} + 5, true), DeflateStatus::done);
  EXPECT_EQ(finish_deflate(&run, DeflateStatus::done), DeflateStatus::done);
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].input, UINT_MAX);
  EXPECT_EQ(seen[0].flush, Z_NO_FLUSH);
  EXPECT_EQ(seen[1].input, 5U);
  EXPECT_EQ(seen[1].flush, Z_FINISH);
  EXPECT_EQ(run.written, 7U);
}

TEST_F(ScriptedDeflate, GetsRoomOfMoreThan32BitsInPieces) {
  steps = {{1, UINT_MAX, Z_OK}, {1, 7, Z_STREAM_END}};
  DeflateRun run;
  ASSERT_EQ(start_deflate(&run, &byte_, size_t{UINT_MAX} + 10), DeflateStatus::done);
  EXPECT_EQ(feed_deflate(&run, &byte_, 2, true), DeflateStatus::done);
  EXPECT_EQ(finish_deflate(&run, DeflateStatus::done), DeflateStatus::done);
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].room, UINT_MAX);
  EXPECT_EQ(seen[1].room, 10U);
  EXPECT_EQ(run.written, size_t{UINT_MAX} + 7);
}

TEST_F(ScriptedDeflate, EndsWhereItMakesNoProgress) {
  for (const int result : {Z_OK, Z_BUF_ERROR, Z_STREAM_ERROR}) {
    seen.clear();
    steps = {{1, 0, result}};
    DeflateRun run;
    ASSERT_EQ(start_deflate(&run, &byte_, 10), DeflateStatus::done);
    EXPECT_EQ(feed_deflate(&run, &byte_, 2, true), DeflateStatus::not_finished) << result;
    EXPECT_EQ(finish_deflate(&run, DeflateStatus::not_finished), DeflateStatus::not_finished);
    EXPECT_EQ(seen.size(), 1U);
  }
}

TEST_F(ScriptedDeflate, MayLeaveInputOverWhenItCallsItselfDone) {
  steps = {{1, 1, Z_STREAM_END}};
  DeflateRun run;
  ASSERT_EQ(start_deflate(&run, &byte_, 10), DeflateStatus::done);
  EXPECT_EQ(feed_deflate(&run, &byte_, 2, true), DeflateStatus::not_finished);
  EXPECT_EQ(finish_deflate(&run, DeflateStatus::not_finished), DeflateStatus::not_finished);
}

TEST_F(ScriptedDeflate, NeedsNoEndWhereItDidNotStart) {
  deflate_gate.start = [](z_stream *) { return Z_MEM_ERROR; };
  deflate_gate.end = [](z_stream *) {
    ADD_FAILURE() << "ended without a start";
    return Z_OK;
  };
  DeflateRun run;
  EXPECT_EQ(start_deflate(&run, &byte_, 10), DeflateStatus::not_started);
  EXPECT_EQ(finish_deflate(&run, DeflateStatus::not_started), DeflateStatus::not_started);
}

}  // namespace
}  // namespace quorix::testing
