// SPDX-License-Identifier: MIT
//
// From a number to a depth drawing. The raster calls are those of a raster drawing; the depth calls
// between them know the size of the page from them.

#include "tests/depth/depth_drawings.h"

#include <cmath>
#include <limits>
#include <sstream>

namespace quorix::drawings {

int32_t whole(double value) {
  if (!(value >= -2147483648.0 && value <= 2147483647.0)) return 0;
  return static_cast<int32_t>(value);
}

namespace {

struct DepthSketch {
  Random random{0};
  DepthDrawing drawing;
  int32_t width = 16;
  int32_t height = 16;
  int32_t device = 101;
  // The corners before, for surfaces that share edges and for lines that lie on them.
  std::array<double, 4> xs{};
  std::array<double, 4> ys{};
  std::array<double, 3> zs{};
};

void add_call(DepthSketch &sketch, const DepthCall &call) {
  sketch.drawing.calls.push_back(call);
}

void add_option(DepthSketch &sketch, int32_t option, int32_t value) {
  DepthCall call;
  call.raster.operation = Operation::wwid;
  call.raster.args = {option, value, 1};
  add_call(sketch, call);
}

int32_t any_number(Random &random) {
  return static_cast<int32_t>(static_cast<uint32_t>(next_number(random) >> 32));
}

double fraction(Random &random) {
  return static_cast<double>(next_number(random) >> 11) * 0x1p-53;
}

int32_t device_number(DepthSketch &sketch) {
  Random &random = sketch.random;
  if (!one_in(random, 4)) return sketch.device;
  static const int32_t numbers[] = {101, 221, 72, 79, 80, 81, 100, 0, -101};
  return numbers[below(random, 9)];
}

double strange_number(Random &random) {
  static const double strange[] = {std::numeric_limits<double>::quiet_NaN(),
                                   std::numeric_limits<double>::infinity(), 1e300, 4e9, 1e-300};
  return strange[below(random, 5)];
}

// Walks are stepped from their upper or left end, so that end is never very far away.
double far_coordinate(Random &random) {
  if (one_in(random, 2)) return strange_number(random);
  if (one_in(random, 8)) return between(random, -300000, 300000);
  return between(random, -3000, 3000);
}

// A coordinate on an axis of that extent. Style 0: whole numbers.
double coordinate(DepthSketch &sketch, int32_t extent, int32_t style) {
  Random &random = sketch.random;
  if (one_in(random, 90)) {
    const double far = far_coordinate(random);
    if (style != 0) return far;
    return far > 3e9 ? 2147483647.0 : whole(far);
  }
  double value = between(random, -extent / 4 - 1, extent + extent / 4 + 1);
  if (one_in(random, 12)) value = one_in(random, 2) ? 0 : extent - 1;
  switch (style) {
    case 0:
      return value;
    case 1:
      return value + 0.25 * below(random, 4);
    case 2:  // on both sides of the middle between two pixels
      return value + 0.5 + 1e-9 * between(random, -2, 2);
    case 3:  // rows apart by rounding, but hardly in height
      return value + 0.5 + 0.05 * between(random, -2, 2);
    default:
      return value + fraction(random);
  }
}

double depth(DepthSketch &sketch) {
  Random &random = sketch.random;
  const double level = 0.125 * between(random, 0, 8);
  switch (below(random, 12)) {
    case 0:
    case 1:
    case 2:
      return level;
    case 3:  // about as far apart as the tolerances
      return level + 0.0005 * between(random, -4, 4);
    case 4:
      return level + 0.5e-6 * between(random, -4, 4);
    case 5:
      if (one_in(random, 10)) return strange_number(random);
      if (one_in(random, 10)) return one_in(random, 2) ? -1e300 : between(random, -2, 3);
      return level;
    default:
      return fraction(random);
  }
}

int32_t packed(Random &random) {
  static const int32_t common[] = {0x01000000, 0x01FFFFFF, 0x010000FF, 0x01FF0000, 0x01808080};
  if (one_in(random, 2)) return common[below(random, 5)];
  return 0x01000000 | (any_number(random) & 0xFFFFFF);
}

int32_t any_colour(Random &random) {
  if (one_in(random, 30)) return any_number(random);
  if (one_in(random, 10)) return between(random, -3, 600);
  return one_in(random, 3) ? below(random, 256) : packed(random);
}

// Corners for a triangle, or for a quadrilateral with its fourth; and degenerate ones.
void new_corners(DepthSketch &sketch, DepthCall &call, int32_t style) {
  Random &random = sketch.random;
  for (size_t i = 0; i < 4; ++i) {
    call.xs[i] = coordinate(sketch, sketch.width, style);
    call.ys[i] = coordinate(sketch, sketch.height, style);
  }
  for (double &z : call.zs)
    z = depth(sketch);
  switch (below(random, 12)) {
    case 0:  // one row, or nearly
      call.ys[1] = call.ys[0];
      call.ys[2] = call.ys[0] + (style == 0 ? 0 : 0.04 * between(random, -3, 3));
      break;
    case 1:
      call.xs[1] = call.xs[2] = call.xs[0];
      break;
    case 2:  // a sliver
      call.xs[2] = call.xs[0] + (call.xs[1] - call.xs[0]) / 2;
      call.ys[2] = call.ys[0] + (call.ys[1] - call.ys[0]) / 2;
      break;
    case 3:
      call.xs[1] = call.xs[0];
      call.ys[1] = call.ys[0];
      break;
    case 4:
    case 5:  // an edge in common with the one before
      call.xs[0] = sketch.xs[0];
      call.ys[0] = sketch.ys[0];
      call.xs[1] = sketch.xs[1];
      call.ys[1] = sketch.ys[1];
      break;
    case 6:  // as before, at another depth
      call.xs = sketch.xs;
      call.ys = sketch.ys;
      if (one_in(random, 2)) call.zs = sketch.zs;
      break;
    case 7:  // parallel to the picture
      call.zs[1] = call.zs[2] = call.zs[0];
      break;
    default:
      break;
  }
  if (style == 0) {
    for (size_t i = 0; i < 4; ++i) {
      call.xs[i] = whole(call.xs[i]);
      call.ys[i] = whole(call.ys[i]);
    }
  }
  sketch.xs = call.xs;
  sketch.ys = call.ys;
  sketch.zs = call.zs;
}

void new_colours(DepthSketch &sketch, DepthCall &call) {
  Random &random = sketch.random;
  for (int32_t &colour : call.colour)
    colour = any_colour(random);
  if (one_in(random, 4)) call.colour[1] = call.colour[2] = call.colour[0];
}

DepthCall new_call(DepthSketch &sketch, DepthOperation operation) {
  DepthCall call;
  call.operation = operation;
  call.device = device_number(sketch);
  return call;
}

// --- Calls ---

void add_line(DepthSketch &sketch) {
  Random &random = sketch.random;
  DepthCall call = new_call(sketch, DepthOperation::zlin2);
  int32_t style = below(random, 5);
  if (one_in(random, 3)) {
    call.operation = DepthOperation::zlin;
    style = 0;
  }
  const std::array<double, 4> xs = sketch.xs;
  const std::array<double, 4> ys = sketch.ys;
  const std::array<double, 3> zs = sketch.zs;
  new_corners(sketch, call, style);
  sketch.xs = xs;
  sketch.ys = ys;
  sketch.zs = zs;
  if (one_in(random, 3)) {  // along an edge
    for (size_t i = 0; i < 2; ++i) {
      call.xs[i] = style == 0 ? whole(xs[i]) : xs[i];
      call.ys[i] = style == 0 ? whole(ys[i]) : ys[i];
      call.zs[i] = zs[i] + 0.0005 * between(random, -1, 3);
    }
  }
  call.colour[0] = any_colour(random);
  add_call(sketch, call);
}

void add_shaded_triangle(DepthSketch &sketch) {
  Random &random = sketch.random;
  static const DepthOperation operations[] = {DepthOperation::ztri, DepthOperation::ztri2,
                                              DepthOperation::ztri3};
  DepthCall call = new_call(sketch, operations[below(random, 3)]);
  new_corners(sketch, call, call.operation == DepthOperation::ztri ? 0 : below(random, 5));
  new_colours(sketch, call);
  const bool extreme = one_in(random, 8);
  for (std::array<double, 3> *channel : {&call.r, &call.g, &call.b}) {
    for (double &value : *channel) {
      value = one_in(random, 4) ? below(random, 2) : fraction(random);
      if (extreme && one_in(random, 4)) value = strange_number(random);
      if (extreme && one_in(random, 3)) value = between(random, -3, 3);
    }
  }
  add_call(sketch, call);
}

void new_indices(DepthSketch &sketch, DepthCall &call) {
  Random &random = sketch.random;
  for (int32_t &colour : call.colour) {
    colour = below(random, 256);
    if (one_in(random, 20)) colour = any_colour(random);
    if (one_in(random, 20)) colour = between(random, -600, 600);
  }
}

void add_index_triangle(DepthSketch &sketch) {
  DepthCall call = new_call(sketch, DepthOperation::dtri);
  new_corners(sketch, call, 0);
  new_indices(sketch, call);
  add_call(sketch, call);
}

void add_quadrilateral(DepthSketch &sketch) {
  Random &random = sketch.random;
  DepthCall call = new_call(sketch, DepthOperation::dtri2);
  new_corners(sketch, call, 0);
  const double x1 = between(random, 0, sketch.width);
  const double y1 = between(random, 0, sketch.height);
  const double x2 = x1 + between(random, -12, 12);
  const double y2 = y1 + between(random, -12, 12);
  switch (below(random, 5)) {
    case 0:  // a rectangle, its first edge along the row
      call.xs = {x1, x2, x2, x1};
      call.ys = {y1, y1, y2, y2};
      break;
    case 1:  // its first edge upright
      call.xs = {x1, x1, x2, x2};
      call.ys = {y1, y2, y2, y1};
      break;
    case 2:  // a parallelogram
      call.xs[3] = whole(call.xs[0] + call.xs[2] - call.xs[1]);
      call.ys[3] = whole(call.ys[0] + call.ys[2] - call.ys[1]);
      break;
    default:
      break;
  }
  // Every pixel of a span is looked at, wherever it is, and every row above the page.
  for (size_t i = 0; i < 4; ++i) {
    call.xs[i] = std::fmin(std::fmax(call.xs[i], -3000), 3000);
    call.ys[i] = std::fmax(call.ys[i], -300000);
  }
  new_indices(sketch, call);
  const int32_t both = below(random, 2);
  for (int32_t half = both; half <= 1; ++half) {
    call.op = half == 1 ? 1 : between(random, -1, 0) * 2;
    add_call(sketch, call);
  }
}

void add_depth_buffer(DepthSketch &sketch) {
  Random &random = sketch.random;
  DepthCall call = new_call(sketch, DepthOperation::zbuf);
  static const int32_t ops[] = {0, 0, 0, 1, 2, 2, 3, 3};
  call.op = one_in(random, 30) ? any_number(random) : ops[below(random, 8)];
  call.status = device_number(sketch);
  add_call(sketch, call);
}

void add_layer_call(DepthSketch &sketch) {
  Random &random = sketch.random;
  DepthCall call = new_call(sketch, DepthOperation::wabl);
  static const int32_t ops[] = {1, 1, 1, 2, 2, 2, 3, 3, 4};
  call.op = one_in(random, 40) ? between(random, -2, 7) : ops[below(random, 9)];
  call.status = any_number(random);
  add_call(sketch, call);
}

// A layer opened, something translucent, and the layer closed.
void add_whole_layer(DepthSketch &sketch) {
  Random &random = sketch.random;
  DepthCall call = new_call(sketch, DepthOperation::wabl);
  call.op = 1;
  add_call(sketch, call);
  add_option(sketch, 19, one_in(random, 4) ? 255 * below(random, 2) : below(random, 256));
  const int32_t count = between(random, 1, 3);
  for (int32_t i = 0; i < count; ++i)
    add_shaded_triangle(sketch);
  call.op = 2;
  add_call(sketch, call);
}

void add_gl_line(DepthSketch &sketch) {
  Random &random = sketch.random;
  DepthCall call = new_call(sketch, DepthOperation::gllin);
  new_corners(sketch, call, below(random, 5));
  if (one_in(random, 3)) {
    call.xs[1] = call.xs[0] + 0.25 * between(random, -2, 2);
    call.ys[1] = call.ys[0] + 0.25 * between(random, -2, 2);
  }
  add_call(sketch, call);
}

void add_depth_option(DepthSketch &sketch) {
  Random &random = sketch.random;
  switch (below(random, 6)) {
    case 0:
      add_option(sketch, 3, below(random, 2));
      return;
    case 1:
      add_option(sketch, between(random, 17, 18), 0);
      return;
    case 2:
      add_option(sketch, 21, below(random, 2));
      return;
    case 3:
      add_option(sketch, 11, between(random, -2, 6));
      add_option(sketch, 12, between(random, -2, 6));
      return;
    case 4:
      add_option(sketch, 13, sketch.width - between(random, -2, 6));
      add_option(sketch, 14, sketch.height - between(random, -2, 6));
      return;
    default:
      add_option(sketch, 19, one_in(random, 3) ? any_number(random) : below(random, 256));
      return;
  }
}

void add_activation(DepthSketch &sketch) {
  if (sketch.drawing.window.exists) {
    add_call(sketch, new_call(sketch, DepthOperation::activate_window));
  }
}

struct Choice {
  int32_t weight;
  void (*add_calls)(DepthSketch &);
};

constexpr Choice choices[] = {{24, add_line},           {40, add_shaded_triangle},
                              {14, add_index_triangle}, {14, add_quadrilateral},
                              {8, add_depth_buffer},    {8, add_layer_call},
                              {5, add_whole_layer},     {1, add_gl_line},
                              {12, add_depth_option},   {1, add_activation}};

void add_any(DepthSketch &sketch) {
  int32_t total = 0;
  for (const Choice &choice : choices)
    total += choice.weight;
  int32_t left = below(sketch.random, total);
  for (const Choice &choice : choices) {
    left -= choice.weight;
    if (left < 0) {
      choice.add_calls(sketch);
      return;
    }
  }
}

void follow_page(DepthSketch &sketch, const Call &call) {
  const bool opens = call.operation == Operation::vini && call.args[4] != 0;
  const bool crops = call.operation == Operation::vwin;
  if (!opens && !crops) return;
  if (call.args[2] <= 0 || call.args[3] <= 0) return;
  if (crops && (call.args[2] > sketch.width || call.args[3] > sketch.height)) return;
  sketch.width = call.args[2];
  sketch.height = call.args[3];
}

void begin_page(DepthSketch &sketch) {
  Random &random = sketch.random;
  if (!one_in(random, 3)) {
    DepthCall call = new_call(sketch, DepthOperation::zbuf);
    call.status = sketch.device;
    add_call(sketch, call);
  }
  if (one_in(random, 3)) {
    DepthCall call = new_call(sketch, DepthOperation::wabl);
    call.op = 3;
    add_call(sketch, call);
  }
  if (one_in(random, 8)) add_activation(sketch);
}

WindowPlan plan_window(Random &random) {
  static const int32_t depths[] = {24, 32, 16, 8, 8, 4};
  WindowPlan plan;
  plan.exists = !one_in(random, 6);
  plan.bits = depths[below(random, 6)];
  plan.extra = below(random, 4);
  plan.colour_mode = below(random, 3);
  plan.compressed = one_in(random, 2);
  plan.opengl = plan.exists && one_in(random, 12);
  plan.follows_page = !one_in(random, 8);
  return plan;
}

}  // namespace

DepthDrawing make_depth_drawing(uint64_t number) {
  DepthSketch sketch;
  sketch.random.state = ~number * 0xD1342543DE82EF95U;
  Random &random = sketch.random;
  sketch.drawing.window = plan_window(random);
  if (sketch.drawing.window.exists && one_in(random, 2)) sketch.device = 72;
  // Another sequence than that of the raster drawings of the same number.
  const std::vector<Call> raster_calls = make_drawing(number + 0x100000000U);
  for (const Call &raster : raster_calls) {
    DepthCall call;
    call.raster = raster;
    add_call(sketch, call);
    follow_page(sketch, raster);
    if (raster.operation == Operation::vini) begin_page(sketch);
    const bool gathering = raster.operation == Operation::vdrw;
    const int32_t count = one_in(random, gathering ? 40 : 3) ? between(random, 1, 4) : 0;
    for (int32_t i = 0; i < count; ++i)
      add_any(sketch);
  }
  return sketch.drawing;
}

// --- In words ---

namespace {

template <class T, size_t N>
void print(std::ostringstream &out, const std::array<T, N> &values, size_t count) {
  out << "{";
  for (size_t i = 0; i < count; ++i)
    out << (i > 0 ? ", " : "") << values[i];
  out << "}";
}

void print_corners(std::ostringstream &out, const DepthCall &call, const char *name, size_t n) {
  out << name << "(";
  print(out, call.xs, n);
  out << ", ";
  print(out, call.ys, n);
}

}  // namespace

std::string describe(const DepthCall &call) {
  std::ostringstream out;
  out.precision(17);
  switch (call.operation) {
    case DepthOperation::raster:
      return describe(call.raster);
    case DepthOperation::zbuf:
      out << "qqzbuf(" << call.op << ", status " << call.status << ")";
      break;
    case DepthOperation::zlin:
    case DepthOperation::zlin2:
      print_corners(out, call, call.operation == DepthOperation::zlin ? "qqzlin" : "qqzlin2", 2);
      out << ", " << call.colour[0] << ", ";
      print(out, call.zs, 2);
      out << ", " << call.device << ")";
      break;
    case DepthOperation::wabl:
      out << "qqwabl(" << call.op << ")";
      break;
    case DepthOperation::gllin:
      print_corners(out, call, "qqgllin", 2);
      out << ")";
      break;
    case DepthOperation::ztri:
    case DepthOperation::ztri2:
      print_corners(out, call, call.operation == DepthOperation::ztri ? "qqztri" : "qqztri2", 3);
      out << ", ";
      print(out, call.colour, 3);
      out << ", ";
      print(out, call.zs, 3);
      out << ", " << call.device << ")";
      break;
    case DepthOperation::ztri3:
      print_corners(out, call, "qqztri3", 3);
      for (const auto *values : {&call.zs, &call.r, &call.g, &call.b}) {
        out << ", ";
        print(out, *values, 3);
      }
      out << ", " << call.device << ")";
      break;
    case DepthOperation::dtri:
      print_corners(out, call, "qqdtri", 3);
      out << ", ";
      print(out, call.colour, 3);
      out << ", " << call.device << ")";
      break;
    case DepthOperation::dtri2:
      print_corners(out, call, "qqdtri2", 4);
      out << ", ";
      print(out, call.colour, 4);
      out << ", half " << call.op << ", " << call.device << ")";
      break;
    case DepthOperation::activate_window:
      out << "the window becomes active";
      break;
  }
  return out.str();
}

std::string describe(const WindowPlan &window) {
  if (!window.exists) return "no window";
  std::ostringstream out;
  out << "a window of " << window.bits << " bits, " << window.extra << " bytes between rows"
      << ", colour mode " << window.colour_mode << (window.compressed ? ", compressed" : "")
      << (window.opengl ? ", OpenGL" : "") << (window.follows_page ? "" : ", 24 x 20 pixels");
  return out.str();
}

}  // namespace quorix::drawings
