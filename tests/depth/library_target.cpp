// SPDX-License-Identifier: MIT
// The library as a target of depth drawings, its window a test device.

#include <optional>

#include "quorix/output_context.h"
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
      if (output_context != nullptr) output_context->window_active = 1;
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
  const bool layer_open = c->raster != nullptr && c->raster == c->blend_raster;
  const bool drawable = c->page.width > 0 && c->page.rgba == c->rgba_mode;
  if (drawable) parts.push_back(buffer("page", c->raster, c->page));
  if (layer_open && c->base_page.rgba != 0) {
    parts.push_back(buffer("base", c->raster_base, c->base_page));
  }
  if (!layer_open && c->blend_page.width > 0) {
    parts.push_back(buffer("layer", c->blend_raster, c->blend_page));
  }
  if (c->depth_on != 0 && c->depth_width > 0) {
    const size_t count = static_cast<size_t>(c->depth_width) * static_cast<size_t>(c->depth_height);
    parts.push_back({"depths", c->depth_width, c->depth_buffer, count * sizeof(float), true});
  }
  return parts;
}

std::vector<int32_t> state() {
  const OutputContext *c = output_context;
  if (c == nullptr) return {};
  return {c->width,          c->height,        c->rgba_mode,   c->raster_state, c->depth_on,
          c->alpha_blend_on, c->window_active, c->poly_count,  c->colour_index, c->colour_r,
          c->colour_g,       c->colour_b,      c->colour_arg,  c->clip_x1,      c->clip_y1,
          c->clip_x2,        c->clip_y2,       c->depth_width, c->depth_height};
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
