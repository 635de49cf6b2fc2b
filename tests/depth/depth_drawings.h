// SPDX-License-Identifier: MIT
//
// Depth drawings made from a number: raster drawings with calls of the depth family among them,
// the same for the same number on every system, run through a target, which is the library or the
// literal model. Each drawing also says what window there is.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/depth/plain_window.h"
#include "tests/raster/random_drawings.h"

namespace quorix::drawings {

enum class DepthOperation {
  raster,  // a call of a raster drawing
  zbuf,
  zlin,
  zlin2,
  wabl,
  gllin,
  ztri,
  ztri2,
  ztri3,
  dtri,
  dtri2,
  activate_window  // what opening a window does to the record
};

// One call. Whole coordinates stand in xs and ys too.
struct DepthCall {
  DepthOperation operation = DepthOperation::raster;
  Call raster;
  int32_t op = 0;  // or `half`
  int32_t status = 0;
  int32_t device = 0;
  std::array<int32_t, 4> colour{};
  std::array<double, 4> xs{};
  std::array<double, 4> ys{};
  std::array<double, 3> zs{};
  std::array<double, 3> r{};
  std::array<double, 3> g{};
  std::array<double, 3> b{};
};

struct WindowPlan {
  bool exists = false;
  bool opengl = false;
  bool follows_page = false;  // has the size of whatever page is opened
  int32_t bits = 24;
  int32_t extra = 0;
  int32_t colour_mode = 0;
  bool compressed = false;
};

struct DepthDrawing {
  WindowPlan window;
  std::vector<DepthCall> calls;
};

DepthDrawing make_depth_drawing(uint64_t number);
// Finite whole numbers become themselves; all others 0.
int32_t whole(double value);
std::string describe(const DepthCall &call);
std::string describe(const WindowPlan &window);

}  // namespace quorix::drawings
