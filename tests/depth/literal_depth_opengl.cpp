// SPDX-License-Identifier: MIT
//
// Literal depth renderer: the window that draws through OpenGL.

#include <cmath>

#include "tests/depth/literal_depth.h"

namespace quorix::literal {

bool forwards(const LiteralDepth &record) {
  return record.opengl_on && record.raster.raster_state != 2;
}

void call(LiteralDepth &record, const char *name, const std::vector<double> &arguments) {
  if (record.window != nullptr) testing::note(*record.window, testing::call_text(name, arguments));
}

void call_floats(LiteralDepth &record, const char *name, const std::vector<float> &arguments) {
  call(record, name, {arguments.begin(), arguments.end()});
}

void begin(LiteralDepth &record, int32_t mode) {
  call(record, "glBegin", {double(mode)});
}

void end(LiteralDepth &record) {
  call(record, "glEnd", {});
}

int32_t qqgllin(LiteralDepth &record, const double *x1, const double *y1, const double *x2,
                const double *y2) {
  if (!record.raster.exists || !record.opengl_on) return 0;
  const double h = record.raster.height - 1;
  const auto vertex = [&](double x, double y) {
    call_floats(record, "glVertex2f", {static_cast<float>(x), static_cast<float>(h - y)});
  };
  if (std::fabs(*x1 - *x2) < 0.5 && std::fabs(*y1 - *y2) < 0.5) {
    begin(record, 0);
    vertex(*x1, *y1);
  } else {
    begin(record, 3);
    vertex(*x1, *y1);
    vertex(*x2, *y2);
  }
  end(record);
  return 0;
}

}  // namespace quorix::literal
