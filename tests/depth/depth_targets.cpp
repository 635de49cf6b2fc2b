// SPDX-License-Identifier: MIT
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

namespace {

void add_word(uint32_t word, std::vector<uint8_t> &bytes) {
  for (int k = 0; k < 4; k++)
    bytes.push_back(static_cast<uint8_t>(word >> (8 * k)));
}

}  // namespace

std::vector<uint8_t> depth_bytes(const float *values, size_t count) {
  std::vector<uint8_t> bytes;
  for (size_t i = 0; i < count; i++) {
    uint32_t word = 0x7FC00000U;
    if (values[i] == values[i]) std::memcpy(&word, &values[i], sizeof(word));
    add_word(word, bytes);
  }
  return bytes;
}

void add_window_parts(const testing::PlainWindow &window, std::vector<Part> &parts) {
  parts.push_back({"window", 0, window.bytes});
  std::vector<uint8_t> bytes;
  for (const uint32_t pixel : window.pixels)
    add_word(pixel, bytes);
  parts.push_back({"window pixels", window.width, bytes});
  parts.push_back({"OpenGL frame", window.width, window.frame});
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
