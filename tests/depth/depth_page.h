// SPDX-License-Identifier: MIT
//
// What the depth tests share: pages as in the raster tests, the depth family in one line a call,
// and a window.

#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "core/output_context.h"
#include "quorix/quorix.h"
#include "tests/depth/window_device.h"
#include "tests/raster/raster_page.h"

namespace quorix::testing {

constexpr int32_t raster_device_number = 101;
constexpr int32_t window_device_number = 72;

class DepthTest : public RasterTest {
 protected:
  void TearDown() override {
    RasterTest::TearDown();
    device.reset();
  }

  // A window of the size of the record's page, which must be open.
  void open_window(int32_t bits, size_t extra = 0);
  void open_gl_window();
  void make_window_active() { output_context->window.window_active = 1; }

  PlainWindow window;
  std::optional<WindowDevice> device;
};

// Give the status.
int32_t depth_buffer(int32_t op, int32_t device = raster_device_number);
int32_t layer(int32_t op);

float depth_at(int32_t x, int32_t y);

void depth_line(double x1, double y1, double z1, double x2, double y2, double z2, int32_t colour,
                int32_t device = raster_device_number);
// One pixel.
void depth_dot(int32_t x, int32_t y, double z, int32_t colour,
               int32_t device = raster_device_number);

struct Vertex {
  double x;
  double y;
  double z;
  int32_t colour;
};
void shaded(const Vertex &a, const Vertex &b, const Vertex &c,
            int32_t device = raster_device_number);
// A triangle of one depth and colour over columns and rows 0 to 7 and more.
void shaded_sheet(double z, int32_t colour, int32_t device = raster_device_number);

struct IndexCorner {
  int32_t x;
  int32_t y;
  int32_t index;
};
void index_triangle(const IndexCorner &a, const IndexCorner &b, const IndexCorner &c,
                    int32_t device = raster_device_number);
void quad_half(const std::vector<IndexCorner> &corners, int32_t half,
               int32_t device = raster_device_number);

// The pixel of a window of 24 or 32 bits as "bbggrr" or "bbggrrxx".
std::string window_pixel(PlainWindow &window, int32_t x, int32_t y);

}  // namespace quorix::testing
