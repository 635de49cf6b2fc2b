// SPDX-License-Identifier: MIT
//
// The two things a depth drawing can be run on, each with a window of its own.

#pragma once

#include "tests/depth/depth_drawings.h"
#include "tests/depth/literal_depth.h"

namespace quorix::drawings {

// Something that a run has drawn, as it stands in memory: bytes, or depths.
struct Part {
  const char *name;
  int32_t width;  // in pixels, 0 where the bytes are not told apart
  const void *data;
  size_t size;  // in bytes
  bool floats;
};

// The same bytes, or the same depths: what is not a number is the same as any other that is not.
bool same(const Part &a, const Part &b);
// Depth i by its bits, all that are not numbers by one pattern.
uint32_t depth_bits(const Part &part, size_t i);

struct DepthTarget {
  const DrawingTarget *raster;
  // From start to finish there is the planned window; at both there is no record.
  void (*start)(const WindowPlan &window);
  void (*finish)();
  int32_t (*run)(const DepthCall &call, int32_t *status);
  // Those parts that exist.
  std::vector<Part> (*parts)();
  // The record's state that the depth family changes or depends on; empty without a record.
  std::vector<int32_t> (*state)();
  testing::PlainWindow *(*window)();
};

const DepthTarget &library_depth_target();
const DepthTarget &literal_depth_target();

// Runs a call that is not one of the raster's, or one that is, and keeps the window at the size of
// the page where it follows it.
Outcome run_depth_call(const DepthTarget &target, Run &run, const WindowPlan &plan,
                       const DepthCall &call);

// --- For the targets ---

// Whole coordinates, as the operations take them.
struct WholeCorners {
  explicit WholeCorners(const DepthCall &call) {
    for (size_t i = 0; i < 4; ++i) {
      x[i] = whole(call.xs[i]);
      y[i] = whole(call.ys[i]);
    }
  }
  int32_t x[4];
  int32_t y[4];
};

// A window that follows no page, and any window before its first page.
constexpr int32_t fixed_window_width = 24;
constexpr int32_t fixed_window_height = 20;
testing::PlainWindow planned_window(const WindowPlan &plan, int32_t width, int32_t height);
void add_window_parts(const testing::PlainWindow &window, std::vector<Part> &parts);

}  // namespace quorix::drawings
