// SPDX-License-Identifier: MIT
//
// Every request for memory of every depth operation refused, one at a time: the operation tells its
// status and leaves everything as it was.

#include <functional>

#include "tests/depth/depth_page.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

using DepthAllocation = DepthTest;

// Runs `attempt` once for each n, with request n refused, until it needs no request n; returns how
// many requests it needed. At the end nothing that was requested inside is left but what `keep`
// says.
size_t refuse_each_request(const std::function<void()> &prepare,
                           const std::function<void()> &attempt,
                           const std::function<void(bool refused)> &check) {
  for (size_t n = 1;; ++n) {
    prepare();
    bool failed = false;
    {
      FailingMemory memory(n);
      attempt();
      failed = memory.failed();
      check(failed);
      qqwfree();
      EXPECT_EQ(memory.live_blocks(), 0U);
    }
    if (!failed || ::testing::Test::HasFatalFailure()) return n - 1;
  }
}

TEST_F(DepthAllocation, OfADepthBufferThatFailsGivesOneAndLeavesItOff) {
  int32_t status = 0;
  const size_t requests =
      refuse_each_request([] { open_page(9, 8); }, [&] { status = depth_buffer(0); },
                          [&](bool refused) {
                            EXPECT_EQ(status, refused ? 1 : 0);
                            EXPECT_EQ(output_context->depth.depth_on, refused ? 0 : 1);
                            depth_line(0, 0, 0.5, 8, 7, 0.5, 2);
                            shaded_sheet(0.5, 3);
                            EXPECT_EQ(index_at(1, 1), 3);
                            EXPECT_EQ(depth_buffer(2), refused ? 2 : 0);
                          });
  EXPECT_EQ(requests, 1U);
}

TEST_F(DepthAllocation, OfALayerThatFailsGivesOneAndLeavesThePage) {
  int32_t status = 0;
  const size_t requests =
      refuse_each_request([] { open_rgba_page(9, 8); }, [&] { status = layer(1); },
                          [&](bool refused) {
                            EXPECT_EQ(status, refused ? 1 : 0);
                            EXPECT_EQ(output_context->buffers.raster_state, refused ? 1 : 2);
                            EXPECT_EQ(output_context->buffers.raster.pixels ==
                                          output_context->buffers.raster_base.pixels,
                                      refused);
                            qqvpix(8, 7, packed_rgb(1, 2, 3));
                            EXPECT_EQ(layer(2), 0);
                            EXPECT_EQ(rgba_at(8, 7), "010203ff");
                          });
  EXPECT_EQ(requests, 1U);
}

TEST_F(DepthAllocation, OfAWindowsLayerThatFailsLeavesThePaletteModeInForce) {
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [&] {
        open_page(9, 8);
        open_window(24);
        make_window_active();
      },
      [&] { status = layer(1); },
      [&](bool refused) {
        EXPECT_EQ(status, refused ? 1 : 0);
        EXPECT_EQ(output_context->page.rgba_mode, refused ? 0 : 1);
        EXPECT_EQ(output_context->page.stride, refused ? 9 : 36);
        qqvfll(0, 0, 8, 7, 3);
        if (refused) {
          EXPECT_EQ(index_at(8, 7), 3);
        }
        EXPECT_EQ(layer(2), 0);
      });
  EXPECT_EQ(requests, 1U);
}

TEST_F(DepthAllocation, OfTheRowForOpenGlThatFailsGivesOneAndClosesTheLayer) {
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [&] {
        open_rgba_page(9, 8);
        open_gl_window();
        layer(1);
        qqvpix(3, 3, packed_rgb(1, 2, 3));
        window.calls.clear();
      },
      [&] { status = layer(2); },
      [&](bool refused) {
        EXPECT_EQ(status, refused ? 1 : 0);
        EXPECT_EQ(output_context->buffers.raster_state, 1);
        EXPECT_EQ(output_context->buffers.raster.pixels,
                  output_context->buffers.raster_base.pixels);
        EXPECT_EQ(window.calls.empty(), refused);
      });
  EXPECT_EQ(requests, 1U);
}

TEST_F(DepthAllocation, OfACropThatFailsLeavesPageLayerAndDepths) {
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [] {
        open_rgba_page(9, 8);
        depth_buffer(0);
        depth_dot(4, 4, 0.5, 2);
        layer(1);
        qqvpix(4, 4, packed_rgb(1, 2, 3));
      },
      [&] {
        const int32_t corner = 2;
        const int32_t size = 4;
        qqvwin(&corner, &corner, &size, &size, &status);
      },
      [&](bool refused) {
        EXPECT_EQ(status, refused ? -2 : 0);
        EXPECT_EQ(output_context->page.width, refused ? 9 : 4);
        const int32_t at = refused ? 4 : 2;
        EXPECT_EQ(depth_at(at, at), 0.5F);
        EXPECT_EQ(rgba_at(at, at), "010203ff");
        layer(2);
        EXPECT_EQ(rgba_at(at, at), "010203ff");
      });
  EXPECT_EQ(requests, 3U);
}

TEST_F(DepthAllocation, OfANewPagesDepthBufferThatFailsSwitchesItOff) {
  int32_t status = 0;
  const size_t requests = refuse_each_request(
      [] {
        open_page(9, 8);
        depth_buffer(0);
      },
      [&] {
        int32_t w = 40;
        int32_t h = 30;
        status = 0;
        qqvini(1, 1, &w, &h, 1, &status);
      },
      [&](bool refused) {
        shaded_sheet(0.5, 3);
        depth_line(0, 0, 0.5, 39, 29, 0.5, 2);
        if (status == 0) {
          EXPECT_EQ(output_context->depth.depth_on, refused ? 0 : 1);
          EXPECT_EQ(index_at(39, 29), 2);
        }
      });
  EXPECT_EQ(requests, 2U);
}

TEST_F(DepthAllocation, IsNotDoneByDrawing) {
  for (const int32_t bits : {8, 16, 24, 32}) {
    open_rgba_page(30, 20);
    open_window(bits);
    depth_buffer(0);
    layer(3);
    FailingMemory memory(1, Failures::that_and_all_later);
    for (const int32_t number : {raster_device_number, window_device_number}) {
      depth_line(-5, 2, 0.5, 40, 15, 0.5, 2, number);
      shaded_sheet(0.25, 5, number);
      index_triangle({0, 0, 1}, {25, 3, 200}, {4, 18, 90}, number);
      quad_half({{0, 0, 1}, {25, 0, 200}, {25, 18, 90}, {0, 18, 9}}, 1, number);
    }
    EXPECT_EQ(memory.requests(), 0U);
  }
}

TEST_F(DepthAllocation, EndsWithTheRecord) {
  FailingMemory memory;
  open_rgba_page(9, 8);
  depth_buffer(0);
  layer(1);
  qqwfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
  open_rgba_page(9, 8);
  depth_buffer(0);
  layer(1);
  qqvfin();
  depth_buffer(1);
  EXPECT_EQ(memory.live_blocks(), 1U);  // the record
  qqwfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
}

}  // namespace
}  // namespace quorix::testing
