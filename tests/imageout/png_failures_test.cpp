// SPDX-License-Identifier: MIT
//
// What qqppng does when memory, the disk or the compressor fails.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/deflate.h"
#include "tests/imageout/writer_calls.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

constexpr int32_t width = 60;
constexpr int32_t height = 40;
constexpr size_t before_palette = 8 + 12 + 13;  // signature, IHDR
constexpr size_t palette_chunk = 12 + 768;
constexpr size_t transparency_chunk = 12 + 1;

class PngFailures : public ::testing::Test {
 protected:
  void SetUp() override {
    forget_everything();
    show_on_raster(photo_picture(width, height, 1), true);
  }
  void TearDown() override {
    deflate_gate = usual_gate_;
    forget_everything();
  }

  // With a tRNS chunk, so that all kinds of chunks are there.
  PngCall true_colour() const { return {-raster_number, 1, -width, height, words_.data(), 256}; }
  PngCall indexed() const { return {raster_number, 1, -width, height, words_.data(), 256}; }
  PngCall quantised() const { return {raster_number, 1, -width, -height, words_.data(), 256}; }

  const PaletteWords words_ = make_palette(9);
  const DeflateGate usual_gate_ = deflate_gate;
};

struct Refusal {
  int32_t status;
  size_t bytes;  // of the stream that are in the file
};

// Refuses one request after the other; the first of them are as listed, then come those of the
// compressor, whose status is -3, with `bytes_then` in the file.
void check_refusals(const PngCall &call, const std::vector<Refusal> &expected, size_t bytes_then) {
  const Bytes whole = png_bytes(call);
  size_t n = 1;
  for (;; ++n) {
    MemoryFiles files;
    const FailingMemory memory(n);
    const int32_t status = write_png(call, "picture");
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    EXPECT_EQ(files.open_files(), 0U) << n;
    if (!memory.failed()) break;
    const Refusal refusal = n <= expected.size() ? expected[n - 1] : Refusal{-3, bytes_then};
    EXPECT_EQ(status, refusal.status) << n;
    const Bytes &file = files.bytes("picture");
    EXPECT_EQ(file.size(), refusal.bytes) << n;
    EXPECT_TRUE(std::equal(file.begin(), file.end(), whole.begin())) << n;
  }
  EXPECT_GT(n, expected.size() + 1);  // the compressor did ask through the gate
}

TEST_F(PngFailures, RefusedMemoryLeavesTheChunksWrittenSoFar) {
  const size_t true_colour_start = before_palette + 12 + 6;
  check_refusals(true_colour(), {{-2, true_colour_start}, {-2, true_colour_start}},
                 true_colour_start);
  const size_t indexed_start = before_palette + palette_chunk + transparency_chunk;
  check_refusals(indexed(), {{-2, before_palette}, {-2, indexed_start}, {-2, indexed_start}},
                 indexed_start);
}

TEST_F(PngFailures, AQuantisedPictureWithoutMemoryForTheTreeIsAllEntry0) {
  const size_t start = before_palette + palette_chunk + transparency_chunk;
  const auto refuse = [&](size_t n, Bytes *file) {
    MemoryFiles files;
    const FailingMemory memory(n);
    const int32_t status = write_png(quantised(), "picture");
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    EXPECT_EQ(files.open_files(), 0U) << n;
    *file = files.bytes("picture");
    return memory.failed() ? status : 1;
  };
  Bytes file;
  EXPECT_EQ(refuse(1, &file), -2);  // the picture
  EXPECT_EQ(file.size(), before_palette);
  EXPECT_EQ(refuse(2, &file), 0);  // the tree
  const PngPicture decoded = decode_png(file);
  EXPECT_EQ(decoded.problem, "");
  EXPECT_EQ(decoded.samples, Bytes(width * height, 0));
  EXPECT_EQ(decoded.palette, Bytes(768, 0));
  EXPECT_EQ(refuse(3, &file), -2);  // the palette
  EXPECT_EQ(file.size(), before_palette);
  for (const size_t n : {size_t{4}, size_t{5}}) {  // a row, the stream
    EXPECT_EQ(refuse(n, &file), -2);
    EXPECT_EQ(file.size(), start);
  }
  size_t n = 6;
  for (; refuse(n, &file) != 1; ++n) {
    EXPECT_EQ(refuse(n, &file), -3) << n;
    EXPECT_EQ(file.size(), start);
  }
  EXPECT_GT(n, 6U);
}

TEST_F(PngFailures, InMemoryARefusalShowsAsTheCountSoFar) {
  Bytes target(100000, 0);
  const auto room = static_cast<int32_t>(target.size());
  const auto whole = static_cast<int32_t>(png_bytes(indexed()).size());
  const auto start = static_cast<int32_t>(before_palette + palette_chunk + transparency_chunk);
  for (const int32_t given : {room, 0}) {
    for (size_t n = 1;; ++n) {
      const FailingMemory memory(n);
      const int32_t count = write_png_to_memory(indexed(), &target, given);
      EXPECT_EQ(memory.live_blocks(), 0U) << n;
      if (!memory.failed()) {
        EXPECT_EQ(count, whole);
        break;
      }
      EXPECT_EQ(count, n == 1 ? static_cast<int32_t>(before_palette) : start) << n;
    }
  }
}

TEST_F(PngFailures, SizesBeyondAllCountingAreMemoryThatIsNotThere) {
  MemoryFiles files;
  PngCall call = true_colour();
  call.width = INT32_MIN;
  EXPECT_EQ(write_png(call, "picture"), -2);
  EXPECT_EQ(big_endian_word(&files.bytes("picture")[16]), 0x80000000U);
  call = quantised();
  call.height = INT32_MIN;
  EXPECT_EQ(write_png(call, "picture"), -2);
  call.height = -INT32_MAX;
  call.width = INT32_MAX;
  EXPECT_EQ(write_png(call, "picture"), -2);
  EXPECT_EQ(files.open_files(), 0U);
}

// ---- the compressor

int runs_before_failure = 0;
int fail_start(z_stream *) {
  return Z_VERSION_ERROR;
}
int fail_later_run(z_stream *stream, int flush) {
  return runs_before_failure-- > 0 ? deflate(stream, flush) : Z_STREAM_ERROR;
}
int never_end_run(z_stream *stream, int flush) {
  const int result = deflate(stream, flush);
  return result == Z_STREAM_END ? Z_OK : result;
}
int fail_end(z_stream *stream) {
  deflateEnd(stream);
  return Z_DATA_ERROR;
}

void expect_compressor_failure(const PngCall &call, int32_t status, size_t bytes) {
  const Bytes stream = [&] {
    const DeflateGate failing = deflate_gate;
    deflate_gate = {[](z_stream *s) { return deflateInit(s, Z_DEFAULT_COMPRESSION); }, deflate,
                    deflateEnd};
    Bytes whole = png_bytes(call);
    deflate_gate = failing;
    return whole;
  }();
  MemoryFiles files;
  const FailingMemory memory;
  EXPECT_EQ(write_png(call, "picture"), status);
  EXPECT_EQ(memory.live_blocks(), 0U);
  EXPECT_EQ(files.open_files(), 0U);
  const Bytes &file = files.bytes("picture");
  EXPECT_EQ(file.size(), bytes);
  EXPECT_TRUE(std::equal(file.begin(), file.end(), stream.begin()));
}

TEST_F(PngFailures, EachFailureOfTheCompressorHasItsStatus) {
  const size_t start = before_palette + palette_chunk + transparency_chunk;
  deflate_gate = usual_gate_;
  deflate_gate.start = fail_start;
  expect_compressor_failure(indexed(), -3, start);
  deflate_gate = usual_gate_;
  deflate_gate.run = fail_later_run;
  for (const int runs : {0, 1, height - 1}) {
    runs_before_failure = runs;
    expect_compressor_failure(indexed(), -4, start);
  }
  deflate_gate.run = never_end_run;
  expect_compressor_failure(indexed(), -4, start);
  deflate_gate = usual_gate_;
  deflate_gate.end = fail_end;
  expect_compressor_failure(indexed(), -5, start);
}

TEST_F(PngFailures, TheWorkOfTheCompressorCountsBeforeItsEnd) {
  deflate_gate.run = never_end_run;
  deflate_gate.end = fail_end;
  MemoryFiles files;
  EXPECT_EQ(write_png(true_colour(), "picture"), -4);
}

TEST_F(PngFailures, InMemoryAFailureOfTheCompressorShowsAsTheCountSoFar) {
  Bytes target(100000, 0);
  const auto start = static_cast<int32_t>(before_palette + palette_chunk + transparency_chunk);
  deflate_gate.end = fail_end;
  EXPECT_EQ(write_png_to_memory(indexed(), &target, 100000), start);
  EXPECT_EQ(write_png_to_memory(indexed(), nullptr, 0), start);
}

// ---- the disk

TEST_F(PngFailures, AFullDiskGivesAShortFileAndStatus0) {
  show_on_raster(photo_picture(3, 2, 1), true);
  PngCall call = quantised();
  call.width = -3;
  call.height = -2;
  const Bytes whole = png_bytes(call);
  for (size_t limit = 0; limit <= whole.size(); ++limit) {
    MemoryFiles files;
    FailingFiles disk;
    disk.limit_written_bytes(limit);
    EXPECT_EQ(write_png(call, "picture"), 0);
    EXPECT_EQ(disk.open_files(), 0U);
    EXPECT_EQ(files.bytes("picture"),
              Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(limit)));
  }
}

TEST_F(PngFailures, AnyWriteAndTheClosingMayFailWithoutAWord) {
  size_t n = 1;
  for (;; ++n) {
    MemoryFiles files;
    const FailingFiles gate(n);
    const int32_t status = write_png(indexed(), "picture");
    EXPECT_EQ(gate.open_files(), 0U);
    EXPECT_EQ(status, gate.failed() && n == 1 ? -1 : 0);  // the first call opens the file
    if (!gate.failed()) break;
  }
  // Open, signature, one write for each of five chunks, close.
  EXPECT_EQ(n, 1U + 1 + 5 + 1 + 1);
}

// ---- memory

TEST_F(PngFailures, HoldsOneRowAndTheRoomForTheStream) {
  constexpr size_t compressor = 300000;  // about 268 KB, by zlib's own account
  const int32_t w = 1000;
  const int32_t h = 700;
  show_on_raster(photo_picture(w, h, 2), true);
  const auto peak = [&](const PngCall &call) {
    MemoryFiles files;
    const FailingMemory memory;
    EXPECT_EQ(write_png(call, "picture"), 0);
    return memory.peak_bytes();
  };
  const auto room = [&](size_t row) { return (row + 1) * h + (row + 1) * h / 100 + 13; };
  EXPECT_LT(peak({-raster_number, 1, w, h, nullptr, 0}), room(3 * w) + 3 * w + compressor);
  EXPECT_LT(peak({raster_number, 1, w, h, words_.data(), 256}), room(w) + w + compressor);
  // The picture as RGB, the stream of its indices.
  EXPECT_LT(peak({raster_number, 1, w, -h, nullptr, 256}),
            size_t{3} * w * h + room(w) + w + compressor);
}

}  // namespace
}  // namespace quorix::testing
