// SPDX-License-Identifier: MIT
//
// The literal model as a target of depth drawings.

#include "tests/depth/depth_targets.h"

namespace quorix::drawings {

namespace {

WindowPlan the_plan;
testing::PlainWindow the_window;
literal::LiteralDepth the_model;

void start(const WindowPlan &plan) {
  the_model = literal::LiteralDepth{};
  the_plan = plan;
  the_window = planned_window(plan, fixed_window_width, fixed_window_height);
  if (plan.exists) the_model.window = &the_window;
}

void finish() {
  the_model = literal::LiteralDepth{};
}

int32_t run(const DepthCall &call, int32_t *status) {
  literal::LiteralDepth &m = the_model;
  m.opengl_on = the_plan.opengl;
  const WholeCorners a(call);
  switch (call.operation) {
    case DepthOperation::zbuf:
      return literal::qqzbuf(m, call.op, status);
    case DepthOperation::zlin:
      return literal::qqzlin(m, a.x, a.y, call.colour[0], call.zs.data(), call.device);
    case DepthOperation::zlin2:
      return literal::qqzlin2(m, call.xs.data(), call.ys.data(), call.colour[0], call.zs.data(),
                              call.device);
    case DepthOperation::wabl:
      return literal::qqwabl(m, call.op, status);
    case DepthOperation::gllin:
      return literal::qqgllin(m, &call.xs[0], &call.ys[0], &call.xs[1], &call.ys[1]);
    case DepthOperation::ztri:
      return literal::qqztri(m, a.x, a.y, call.colour.data(), call.zs.data(), call.device);
    case DepthOperation::ztri2:
      return literal::qqztri2(m, call.xs.data(), call.ys.data(), call.colour.data(), call.zs.data(),
                              call.device);
    case DepthOperation::ztri3:
      return literal::qqztri3(m, call.xs.data(), call.ys.data(), call.zs.data(), call.r.data(),
                              call.g.data(), call.b.data(), call.device);
    case DepthOperation::dtri:
      return literal::qqdtri(m, a.x, a.y, call.colour.data(), call.device);
    case DepthOperation::dtri2:
      return literal::qqdtri2(m, a.x, a.y, call.colour.data(), call.op, call.device);
    case DepthOperation::activate_window:
      if (m.raster.exists) m.window_active = true;
      return 0;
    case DepthOperation::raster:
      break;
  }
  return 0;
}

std::vector<Part> parts() {
  literal::LiteralDepth &m = the_model;
  std::vector<Part> parts;
  if (the_plan.exists) add_window_parts(the_window, parts);
  if (m.raster.page_valid)
    parts.push_back(
        {"page", m.raster.page_width, m.raster.pixels.data(), m.raster.pixels.size(), false});
  if (m.layer_open && m.base.rgba && m.base.valid) {
    parts.push_back({"base", m.base.width, m.base.pixels.data(), m.base.pixels.size(), false});
  }
  if (m.layer.valid)
    parts.push_back({"layer", m.layer.width, m.layer.pixels.data(), m.layer.pixels.size(), false});
  if (m.depth_on && m.depth_width > 0) {
    parts.push_back(
        {"depths", m.depth_width, m.depth.data(), m.depth.size() * sizeof(float), true});
  }
  return parts;
}

std::vector<int32_t> state() {
  const literal::LiteralDepth &m = the_model;
  const literal::LiteralRaster &r = m.raster;
  if (!r.exists) return {};
  return {r.width,          r.height,        r.rgba_mode,   r.raster_state, m.depth_on,
          m.alpha_blend_on, m.window_active, r.poly_count,  r.colour_index, r.colour_r,
          r.colour_g,       r.colour_b,      r.colour_arg,  r.clip_x1,      r.clip_y1,
          r.clip_x2,        r.clip_y2,       m.depth_width, m.depth_height};
}

// The literal raster's operations on the model's raster, or those of the model itself.
const DrawingTarget &raster_target() {
  using i32 = int32_t;
  static const DrawingTarget target{
      "literal model",
      [](i32 pw, i32 ph, i32 *w, i32 *h, i32 have, i32 *status) {
        return literal::qqvini(the_model, pw, ph, w, h, have, status);
      },
      [] { return literal::qqvfin(the_model); },
      [] { return literal::qqvers(the_model.raster); },
      [](i32 colour) { return literal::qqvclr(the_model.raster, colour); },
      [](uint8_t kind, const uint32_t *table) {
        return literal::qqvvlt(the_model.raster, kind, table);
      },
      [](uint8_t **bytes) { return literal::qqvptr(the_model.raster, bytes); },
      [](const i32 *x, const i32 *y, const i32 *w, const i32 *h, i32 *status) {
        return literal::qqvwin(the_model, x, y, w, h, status);
      },
      [](i32 *x1, i32 *y1, i32 *x2, i32 *y2) {
        return literal::qqvcrp(the_model.raster, x1, y1, x2, y2);
      },
      [](i32 x1, i32 y1, i32 x2, i32 y2) {
        return literal::qqvlin(the_model.raster, x1, y1, x2, y2);
      },
      [](i32 x, i32 y, i32 code) { return literal::qqvdrw(the_model.raster, x, y, code); },
      [](i32 x1, i32 y1, i32 x2, i32 y2, i32 colour) {
        return literal::qqvfll(the_model.raster, x1, y1, x2, y2, colour);
      },
      [](i32 x, i32 y, i32 colour) { return literal::qqvpix(the_model.raster, x, y, colour); },
      [](const double *xs, const double *ys, const i32 *n, i32 *status) {
        return literal::qqvpol(the_model.raster, xs, ys, n, status);
      },
      [](i32 symbol, i32 x, i32 y, i32 size) {
        return literal::qqvsym(the_model.raster, symbol, x, y, size);
      },
      [](const i32 *xs, const i32 *ys, i32 colour) {
        return literal::qqvftr(the_model.raster, xs, ys, colour);
      },
      [](i32 x, i32 y, i32 colour) { return literal::qqvwpx(the_model.raster, x, y, colour); },
      [](const uint8_t *buffer, i32 x, i32 y, i32 n) {
        return literal::qqvrow(the_model.raster, buffer, x, y, n);
      },
      [](i32 x, i32 y, i32 *colour) { return literal::qqvrpx(the_model.raster, x, y, colour); },
      [](uint8_t *buffer, i32 x, i32 y, i32 n, i32 rows) {
        return literal::qqvrdr(the_model.raster, buffer, x, y, n, rows);
      },
      [](std::vector<uint8_t> *file, i32 *status) {
        return literal::write_file(the_model.raster, file, status);
      },
      [](const std::vector<uint8_t> &file, i32 *status) {
        return literal::read_file(the_model.raster, file, status);
      },
      [](i32 option, i32 *value, i32 set) {
        return literal::qqwwid(the_model, option, value, set);
      },
      [] { return literal::qqwfree(the_model); }};
  return target;
}

}  // namespace

const DepthTarget &literal_depth_target() {
  static const DepthTarget target{&raster_target(),          start, finish, run, parts, state,
                                  [] { return &the_window; }};
  return target;
}

}  // namespace quorix::drawings
