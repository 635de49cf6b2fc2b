// SPDX-License-Identifier: MIT
//
// Every request for memory of every raster operation refused, one at a time: the operation tells
// its status and leaves everything as it was.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>

#include "base/memory.h"
#include "core/output_context.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/raster/raster_file_bytes.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/messages_to_stderr.h"

namespace quorix::testing {
namespace {

constexpr int32_t width = 40;
constexpr int32_t height = 30;
constexpr int32_t palette_page = 1;
constexpr int32_t rgba_page = -1;

// A raster with something on it. A test's own record ends with it.
class RasterAllocation : public ::testing::TestWithParam<int32_t> {
 protected:
  void SetUp() override { open(); }
  void TearDown() override { qqwfree(); }

  static void open() {
    int32_t w = width;
    int32_t h = height;
    int32_t status = 0;
    qqvini(GetParam(), 1, &w, &h, 1, &status);
    ASSERT_EQ(status, 0);
    uint32_t greys[256];
    for (uint32_t i = 0; i < 256; ++i)
      greys[i] = i * 0x010101;
    qqvvlt(1, greys);
    for (int32_t i = 0; i < height; ++i)
      qqvfll(i, i, i + 3, i, 0x01000000 + i * 0x030507);
  }

  static std::vector<uint8_t> bytes_of(const uint8_t *buffer) {
    return {buffer, buffer + width * height * (GetParam() < 0 ? 4 : 1)};
  }

  static std::vector<uint8_t> pixels() { return bytes_of(output_context->buffers.raster.pixels); }
};

INSTANTIATE_TEST_SUITE_P(Pages, RasterAllocation, ::testing::Values(palette_page, rgba_page),
                         [](const auto &page) { return page.param < 0 ? "Rgba" : "Palette"; });

// Runs `attempt` once for each n, with request n refused, until it needs no request n; returns how
// many requests it needed.
size_t refuse_each_request(const std::function<void(bool refused)> &check,
                           const std::function<void()> &prepare,
                           const std::function<void()> &attempt) {
  for (size_t n = 1;; ++n) {
    prepare();
    bool failed = false;
    {
      FailingMemory memory(n);
      attempt();
      failed = memory.failed();
    }
    check(failed);
    if (!failed || ::testing::Test::HasFatalFailure()) return n - 1;
  }
}

void do_nothing() {}

// ---- Opening

TEST_P(RasterAllocation, OfAPageThatFailsGivesStatusOneAndNoRaster) {
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [&](bool refused) {
        EXPECT_EQ(status, refused ? 1 : 0);
        uint8_t *raster = nullptr;
        qqvptr(&raster);
        EXPECT_EQ(raster == nullptr, refused);
        // Nothing of this may touch memory that is not there.
        qqvfll(0, 0, width, height, 1);
        qqvlin(0, 0, width, height);
        qqvers();
        int32_t colour = -1;
        qqvrpx(1, 1, &colour);
        EXPECT_EQ(colour, 0);
      },
      do_nothing,
      [&] {
        int32_t w = width;
        int32_t h = height;
        status = 0;
        qqvini(GetParam(), 1, &w, &h, 1, &status);
      });
  EXPECT_EQ(requests, 1U);
}

TEST_P(RasterAllocation, OfAPageKeepsNoMemoryBehind) {
  FailingMemory memory;
  for (int i = 0; i < 3; ++i)
    open();
  EXPECT_EQ(memory.live_blocks(), 1U);
  qqvfin();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_P(RasterAllocation, OfADepthBufferThatFailsSwitchesDepthOff) {
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [&](bool refused) {
        if (refused && status == 1) return;  // the page itself
        EXPECT_EQ(status, 0);
        EXPECT_EQ(output_context->depth.depth_on, refused ? 0 : 1);
        EXPECT_EQ(output_context->depth.buffer.values == nullptr, refused);
        if (refused) return;
        EXPECT_EQ(output_context->depth.buffer.values[width * height - 1], 2.0F);
      },
      [&] {
        qqwfree();
        open();
        output_context->depth.buffer.values = allocate_array<float>(1).release();
        output_context->depth.depth_on = 1;
      },
      [&] {
        int32_t w = width;
        int32_t h = height;
        status = 0;
        qqvini(GetParam(), 1, &w, &h, 1, &status);
      });
  EXPECT_EQ(requests, 2U);
}

// ---- Cropping

TEST_P(RasterAllocation, OfACropThatFailsLeavesTheRaster) {
  const std::vector<uint8_t> before = pixels();
  int32_t status = 0;
  int32_t result = 0;
  const size_t requests = refuse_each_request(
      [&](bool refused) {
        EXPECT_EQ(status, refused ? -2 : 0);
        EXPECT_EQ(result, refused ? 1 : 0);
        if (refused) {
          EXPECT_EQ(pixels(), before);
        }
        EXPECT_EQ(output_context->page.width, refused ? width : 7);
        EXPECT_EQ(output_context->page.clip_y2, refused ? height - 1 : 4);
      },
      do_nothing,
      [&] {
        const int32_t x = 3;
        const int32_t y = 4;
        const int32_t w = 7;
        const int32_t h = 5;
        result = qqvwin(&x, &y, &w, &h, &status);
      });
  EXPECT_EQ(requests, 1U);
}

TEST_P(RasterAllocation, OfACropUnderAnOpenLayerThatFailsLeavesBothBuffers) {
  OutputContext *context = output_context;
  const std::vector<uint8_t> base = pixels();
  const size_t bytes = base.size();
  context->buffers.blend_raster.pixels = allocate_array<uint8_t>(bytes).release();
  std::memset(context->buffers.blend_raster.pixels, 99, bytes);
  context->buffers.blend_raster.page = context->buffers.raster_base.page;
  context->buffers.raster.pixels = context->buffers.blend_raster.pixels;
  context->buffers.raster_state = raster_blending;

  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [&](bool refused) {
        EXPECT_EQ(status, refused ? -2 : 0);
        EXPECT_EQ(context->buffers.raster.pixels, context->buffers.blend_raster.pixels);
        if (!refused) return;
        EXPECT_EQ(bytes_of(context->buffers.raster_base.pixels), base);
        EXPECT_EQ(bytes_of(context->buffers.blend_raster.pixels), std::vector<uint8_t>(bytes, 99));
      },
      do_nothing,
      [&] {
        const int32_t x = 3;
        const int32_t y = 4;
        const int32_t w = 7;
        const int32_t h = 5;
        qqvwin(&x, &y, &w, &h, &status);
      });
  EXPECT_EQ(requests, 2U);
}

// ---- Drawing

TEST_P(RasterAllocation, IsNotDoneByLinesSymbolsAndSmallPolygons) {
  int32_t first_pen = 1;
  qqwwid(26, &first_pen, 1);  // makes what the pen needs of a window
  FailingMemory memory(1, Failures::that_and_all_later);
  for (int32_t pen = 1; pen <= 12; ++pen) {
    for (int32_t style = 0; style < 3; ++style) {
      qqwwid(27, &style, 1);
      qqwwid(28, &style, 1);
      qqwwid(26, &pen, 1);
      for (int32_t i = 0; i < 150; ++i)
        qqvdrw(i * 7 % width, i * 11 % height, i == 0 ? 3 : 2);
    }
  }
  for (int32_t symbol = 0; symbol < 24; ++symbol)
    qqvsym(symbol, 20, 15, 13);
  const int32_t xs[] = {1, 30, 12};
  const int32_t ys[] = {2, 9, 28};
  qqvftr(xs, ys, 3);
  std::vector<double> corner_x(99), corner_y(99);
  for (size_t i = 0; i < 99; ++i) {
    corner_x[i] = static_cast<double>(i * 17 % width);
    corner_y[i] = static_cast<double>(i * 23 % height);
  }
  const int32_t corners = 99;
  int32_t status = 0;
  qqvpol(corner_x.data(), corner_y.data(), &corners, &status);
  EXPECT_EQ(memory.requests(), 0U);
}

TEST_P(RasterAllocation, OfALargePolygonThatFailsGivesTheSamePicture) {
  const int32_t n = 240;
  std::vector<double> xs(n), ys(n);
  for (int32_t i = 0; i < n; ++i) {
    // A star, so that rows have many crossings.
    const double angle = i * 2 * 3.14159265358979 / n;
    const double radius = i % 2 == 0 ? 19.5 : 6.25;
    xs[static_cast<size_t>(i)] = 20 + radius * std::cos(angle);
    ys[static_cast<size_t>(i)] = 15 + radius * 0.7 * std::sin(angle);
  }
  int32_t status = 0;
  std::vector<std::vector<uint8_t>> pictures;
  const size_t requests = refuse_each_request(
      [&](bool) {
        EXPECT_EQ(status, 0);
        pictures.push_back(pixels());
      },
      [] { open(); },
      [&] {
        qqvclr(0x01FFFFFF);
        qqvpol(xs.data(), ys.data(), &n, &status);
      });
  EXPECT_GE(requests, 1U);
  open();
  for (const auto &picture : pictures) {
    EXPECT_EQ(picture, pictures.back());
    EXPECT_NE(picture, pixels());
  }
}

// ---- Files

TEST_P(RasterAllocation, OfASaveThatFailsGivesStatusTwo) {
  MemoryFiles files;
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [&](bool refused) {
        EXPECT_EQ(status, refused ? 2 : 0);
        EXPECT_EQ(files.open_files(), 0U);
      },
      do_nothing, [&] { qqvfil("file", 0, &status); });
  EXPECT_EQ(requests, GetParam() == rgba_page ? 1U : 0U);
}

TEST_P(RasterAllocation, OfALoadThatFailsGivesStatusTwoAndLeavesTheRaster) {
  for (const int32_t bits : {8, 24, 32}) {
    MemoryFiles files;
    files.put("file", make_raster_file({"", 3, 2, bits, bits * 3 / 8, 5, 0}));
    open();
    const std::vector<uint8_t> before = pixels();
    int32_t status = 0;
    const size_t requests = refuse_each_request(
        [&](bool refused) {
          EXPECT_EQ(status, refused ? 2 : 0);
          EXPECT_EQ(pixels() == before, refused);
          EXPECT_EQ(files.open_files(), 0U);
        },
        do_nothing, [&] { qqvfil("file", 1, &status); });
    EXPECT_EQ(requests, bits == 32 ? 2U : 1U) << bits;
  }
}

// ---- The record itself

void open_a_raster() {
  int32_t w = 1;
  int32_t h = 1;
  int32_t status = 0;
  qqvini(1, 1, &w, &h, 1, &status);
}

void set_the_pen() {
  int32_t pen = 2;
  qqwwid(26, &pen, 1);
}

TEST(RecordAllocationDeathTest, ThatFailsSaysSoAndEndsTheProcessWithCodeZero) {
  const auto attempt = [](void (*operation)(), size_t refused) {
    messages_to_stderr();
    FailingMemory memory(refused);
    operation();
    std::_Exit(42);
  };
  const char *message = "Not enough memory for windows output";
  EXPECT_EXIT(attempt(open_a_raster, 1), ::testing::ExitedWithCode(0), message);
  EXPECT_EXIT(attempt(set_the_pen, 1), ::testing::ExitedWithCode(0), message);
  EXPECT_EXIT(attempt(set_the_pen, 2), ::testing::ExitedWithCode(0), message);
  // The next request is the page's, and does not end the process; the pen needs no third.
  EXPECT_EXIT(attempt(open_a_raster, 2), ::testing::ExitedWithCode(42), "");
  EXPECT_EXIT(attempt(set_the_pen, 3), ::testing::ExitedWithCode(42), "");
}

TEST(RecordAllocation, IsGivenBackByTheEndOfTheRecord) {
  FailingMemory memory;
  open_a_raster();
  set_the_pen();
  EXPECT_EQ(memory.live_blocks(), 3U);
  qqwfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

}  // namespace
}  // namespace quorix::testing
