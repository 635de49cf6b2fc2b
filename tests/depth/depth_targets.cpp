// SPDX-License-Identifier: MIT
//
// What the targets of depth drawings share.

#include "tests/depth/depth_targets.h"

#include <cstring>

namespace quorix::drawings {

testing::PlainWindow planned_window(const WindowPlan &plan, int32_t width, int32_t height) {
  testing::PlainWindow window =
      testing::make_window(plan.bits, width, height, static_cast<size_t>(plan.extra));
  window.colour_mode = plan.colour_mode;
  window.compressed = plan.compressed;
  return window;
}

uint32_t depth_bits(const Part &part, size_t i) {
  const float value = static_cast<const float *>(part.data)[i];
  uint32_t word = 0x7FC00000U;
  if (value == value) std::memcpy(&word, &value, sizeof(word));
  return word;
}

bool same(const Part &a, const Part &b) {
  if (a.size != b.size) return false;
  if (a.size == 0 || std::memcmp(a.data, b.data, a.size) == 0) return true;
  if (!a.floats || !b.floats) return false;
  for (size_t i = 0; i < a.size / sizeof(float); ++i) {
    if (depth_bits(a, i) != depth_bits(b, i)) return false;
  }
  return true;
}

void add_window_parts(const testing::PlainWindow &window, std::vector<Part> &parts) {
  parts.push_back({"window", 0, window.bytes.data(), window.bytes.size(), false});
  parts.push_back({"window pixels", window.width, window.pixels.data(),
                   window.pixels.size() * sizeof(uint32_t), false});
  parts.push_back({"OpenGL frame", window.width, window.frame.data(), window.frame.size(), false});
}

namespace {

void follow_page(const DepthTarget &target, const Page &page, const WindowPlan &plan) {
  testing::PlainWindow &window = *target.window();
  const std::vector<std::string> calls = window.calls;
  window = planned_window(plan, page.width, page.height);
  window.calls = calls;
}

}  // namespace

Outcome run_depth_call(const DepthTarget &target, Run &run, const WindowPlan &plan,
                       const DepthCall &call) {
  if (call.operation != DepthOperation::raster) {
    int32_t status = call.status;
    Outcome outcome;
    outcome.result = target.run(call, &status);
    outcome.numbers = {status};
    return outcome;
  }
  const Outcome outcome = run_call(run, call.raster);
  const bool sizes =
      call.raster.operation == Operation::vini || call.raster.operation == Operation::vwin;
  if (plan.follows_page && sizes && outcome.result == 0 && outcome.numbers.back() == 0) {
    follow_page(target, run.page, plan);
  }
  return outcome;
}

}  // namespace quorix::drawings
