// SPDX-License-Identifier: MIT
#include "tests/depth/depth_page.h"

#include <cstdio>

namespace quorix::testing {

void DepthTest::open_window(int32_t bits, size_t extra) {
  window = make_window(bits, output_context->page.width, output_context->page.height, extra);
  device.reset();
  device.emplace(&window);
  WindowDevice::attach(false);
}

void DepthTest::open_gl_window() {
  open_window(24);
  WindowDevice::attach(true);
}

int32_t depth_buffer(int32_t op, int32_t device) {
  int32_t status = device;
  EXPECT_EQ(qqzbuf(op, &status), 0);
  return status;
}

int32_t layer(int32_t op) {
  int32_t status = 77;
  const int32_t result = qqwabl(op, &status);
  EXPECT_EQ(result, op == 1 && status != 0 ? 1 : 0);
  return status;
}

float depth_at(int32_t x, int32_t y) {
  return output_context->depth.buffer.values[x + y * output_context->page.width];
}

void depth_line(double x1, double y1, double z1, double x2, double y2, double z2, int32_t colour,
                int32_t device) {
  const double x[2] = {x1, x2};
  const double y[2] = {y1, y2};
  const double z[2] = {z1, z2};
  EXPECT_EQ(qqzlin2(x, y, colour, z, device), 0);
}

void depth_dot(int32_t x, int32_t y, double z, int32_t colour, int32_t device) {
  depth_line(x, y, z, x, y, z, colour, device);
}

void shaded(const Vertex &a, const Vertex &b, const Vertex &c, int32_t device) {
  const double x[3] = {a.x, b.x, c.x};
  const double y[3] = {a.y, b.y, c.y};
  const double z[3] = {a.z, b.z, c.z};
  const int32_t colour[3] = {a.colour, b.colour, c.colour};
  EXPECT_EQ(qqztri2(x, y, colour, z, device), 0);
}

void shaded_sheet(double z, int32_t colour, int32_t device) {
  shaded({0, 0, z, colour}, {20, 0, z, colour}, {0, 20, z, colour}, device);
}

void index_triangle(const IndexCorner &a, const IndexCorner &b, const IndexCorner &c,
                    int32_t device) {
  const int32_t x[3] = {a.x, b.x, c.x};
  const int32_t y[3] = {a.y, b.y, c.y};
  const int32_t index[3] = {a.index, b.index, c.index};
  EXPECT_EQ(qqdtri(x, y, index, device), 0);
}

void quad_half(const std::vector<IndexCorner> &corners, int32_t half, int32_t device) {
  int32_t x[4];
  int32_t y[4];
  int32_t index[4];
  for (size_t i = 0; i < 4; ++i) {
    x[i] = corners[i].x;
    y[i] = corners[i].y;
    index[i] = corners[i].index;
  }
  EXPECT_EQ(qqdtri2(x, y, index, half, device), 0);
}

std::string window_pixel(PlainWindow &window, int32_t x, int32_t y) {
  const uint8_t *pixel = pixel_at(window, x, y);
  std::string text;
  for (int32_t i = 0; i < bytes_per_pixel(window); ++i) {
    char digits[4];
    std::snprintf(digits, sizeof(digits), "%02x", pixel[i]);
    text += digits;
  }
  return text;
}

}  // namespace quorix::testing
