// SPDX-License-Identifier: MIT
//
// The library as a target of depth drawings, its window a test device.

#include <optional>

#include "core/output_context.h"
#include "quorix/quorix.h"
#include "tests/depth/depth_targets.h"
#include "tests/depth/window_device.h"
#include "tests/support/memory_files.h"

namespace quorix::drawings {

namespace {

WindowPlan the_plan;
testing::PlainWindow the_window;
std::optional<testing::WindowDevice> the_device;

void start(const WindowPlan &plan) {
  qqwfree();
  the_plan = plan;
  the_window = planned_window(plan, fixed_window_width, fixed_window_height);
  the_device.reset();
  if (plan.exists) the_device.emplace(&the_window);
}

void finish() {
  qqwfree();
  the_device.reset();
}

int32_t run(const DepthCall &call, int32_t *status) {
  if (the_plan.exists) testing::WindowDevice::attach(the_plan.opengl);
  const WholeCorners a(call);
  switch (call.operation) {
    case DepthOperation::zbuf:
      return qqzbuf(call.op, status);
    case DepthOperation::zlin:
      return qqzlin(a.x, a.y, call.colour[0], call.zs.data(), call.device);
    case DepthOperation::zlin2:
      return qqzlin2(call.xs.data(), call.ys.data(), call.colour[0], call.zs.data(), call.device);
    case DepthOperation::wabl:
      return qqwabl(call.op, status);
    case DepthOperation::gllin:
      return qqgllin(&call.xs[0], &call.ys[0], &call.xs[1], &call.ys[1]);
    case DepthOperation::ztri:
      return qqztri(a.x, a.y, call.colour.data(), call.zs.data(), call.device);
    case DepthOperation::ztri2:
      return qqztri2(call.xs.data(), call.ys.data(), call.colour.data(), call.zs.data(),
                     call.device);
    case DepthOperation::ztri3:
      return qqztri3(call.xs.data(), call.ys.data(), call.zs.data(), call.r.data(), call.g.data(),
                     call.b.data(), call.device);
    case DepthOperation::dtri:
      return qqdtri(a.x, a.y, call.colour.data(), call.device);
    case DepthOperation::dtri2:
      return qqdtri2(a.x, a.y, call.colour.data(), call.op, call.device);
    case DepthOperation::activate_window:
      if (output_context != nullptr) output_context->window.window_active = 1;
      return 0;
    case DepthOperation::raster:
      break;
  }
  return 0;
}

Part buffer(const char *name, const uint8_t *bytes, const RasterPage &page) {
  const size_t size = static_cast<size_t>(page.width) * static_cast<size_t>(page.height) *
                      (page.rgba != 0 ? 4U : 1U);
  return {name, page.width, bytes, size, false};
}

std::vector<Part> parts() {
  std::vector<Part> parts;
  if (the_plan.exists) add_window_parts(the_window, parts);
  const OutputContext *c = output_context;
  if (c == nullptr) return parts;
  const bool layer_open = c->buffers.raster.pixels != nullptr &&
                          c->buffers.raster.pixels == c->buffers.blend_raster.pixels;
  const bool drawable =
      c->buffers.raster.page.width > 0 && c->buffers.raster.page.rgba == c->page.rgba_mode;
  if (drawable) parts.push_back(buffer("page", c->buffers.raster.pixels, c->buffers.raster.page));
  if (layer_open && c->buffers.raster_base.page.rgba != 0) {
    parts.push_back(buffer("base", c->buffers.raster_base.pixels, c->buffers.raster_base.page));
  }
  if (!layer_open && c->buffers.blend_raster.page.width > 0) {
    parts.push_back(buffer("layer", c->buffers.blend_raster.pixels, c->buffers.blend_raster.page));
  }
  if (c->depth.depth_on != 0 && c->depth.buffer.width > 0) {
    const size_t count =
        static_cast<size_t>(c->depth.buffer.width) * static_cast<size_t>(c->depth.buffer.height);
    parts.push_back(
        {"depths", c->depth.buffer.width, c->depth.buffer.values, count * sizeof(float), true});
  }
  return parts;
}

std::vector<int32_t> state() {
  const OutputContext *c = output_context;
  if (c == nullptr) return {};
  return {c->page.width,           c->page.height,
          c->page.rgba_mode,       c->buffers.raster_state,
          c->depth.depth_on,       c->depth.alpha_blend_on,
          c->window.window_active, c->accumulator.poly_count,
          c->colours.colour_index, c->colours.colour_r,
          c->colours.colour_g,     c->colours.colour_b,
          c->colours.colour_arg,   c->page.clip_x1,
          c->page.clip_y1,         c->page.clip_x2,
          c->page.clip_y2,         c->depth.buffer.width,
          c->depth.buffer.height};
}

int32_t library_write_file(std::vector<uint8_t> *bytes, int32_t *status) {
  testing::MemoryFiles files;
  const int32_t result = qqvfil("drawing", 0, status);
  bytes->clear();
  if (files.exists("drawing")) *bytes = files.bytes("drawing");
  return result;
}

int32_t library_read_file(const std::vector<uint8_t> &bytes, int32_t *status) {
  testing::MemoryFiles files;
  files.put("drawing", bytes);
  return qqvfil("drawing", 1, status);
}

const DrawingTarget &raster_target() {
  static const DrawingTarget target{
      "library",
      qqvini,
      qqvfin,
      qqvers,
      qqvclr,
      qqvvlt,
      qqvptr,
      qqvwin,
      qqvcrp,
      qqvlin,
      qqvdrw,
      qqvfll,
      qqvpix,
      qqvpol,
      qqvsym,
      qqvftr,
      qqvwpx,
      qqvrow,
      qqvrpx,
      qqvrdr,
      library_write_file,
      library_read_file,
      [](int32_t option, int32_t *value, int32_t set) { return qqwwid(option, value, set); },
      qqwfree};
  return target;
}

}  // namespace

const DepthTarget &library_depth_target() {
  static const DepthTarget target{&raster_target(),          start, finish, run, parts, state,
                                  [] { return &the_window; }};
  return target;
}

}  // namespace quorix::drawings
