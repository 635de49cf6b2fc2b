// SPDX-License-Identifier: MIT
//
// What a window that draws through OpenGL is asked to do instead, call by call.

#include "tests/depth/depth_page.h"

namespace quorix::testing {
namespace {

class OpenGl : public DepthTest {
 protected:
  void SetUp() override {
    DepthTest::SetUp();
    open_rgba_page(10, 8);
    open_gl_window();
  }

  void expect_calls(const std::vector<std::string> &calls) {
    EXPECT_EQ(window.calls, calls);
    window.calls.clear();
  }
};

TEST_F(OpenGl, DepthBufferingIsItsDepthTest) {
  EXPECT_EQ(depth_buffer(0), 0);
  expect_calls({"glEnable(2929)", "glDepthFunc(515)", "glClear(256)"});
  EXPECT_EQ(output_context->depth.depth_on, 1);
  EXPECT_EQ(output_context->depth.buffer.values, nullptr);
  EXPECT_EQ(depth_buffer(0), 0);
  expect_calls({"glEnable(2929)", "glDepthFunc(515)", "glClear(256)"});
  EXPECT_EQ(depth_buffer(2), 0);
  expect_calls({"glClear(256)"});
  EXPECT_EQ(depth_buffer(3), 0);
  expect_calls({"glClear(16384)"});
  EXPECT_EQ(depth_buffer(1), 0);
  expect_calls({"glDisable(2929)"});
  EXPECT_EQ(output_context->depth.depth_on, 0);
  EXPECT_EQ(depth_buffer(1), 0);
  expect_calls({"glDisable(2929)"});
  EXPECT_EQ(depth_buffer(4), 0);
  expect_calls({});
}

TEST_F(OpenGl, DrawsDepthLinesALittleInFront) {
  depth_line(1, 2, 0.5, 3.5, 4.25, 0.75, 5);
  const float near = static_cast<float>(0.5 - 0.001F);
  const float far = static_cast<float>(0.75 - 0.001F);
  expect_calls({"set_colour(5)", "glBegin(3)", call_text("glVertex3f", {1, 5, near}),
                call_text("glVertex3f", {3.5, 2.75, far}), "glEnd()"});
  EXPECT_EQ(rgba_at(1, 2), "00000000");
  const int32_t x[2] = {1, 3};
  const int32_t y[2] = {2, 4};
  const double z[2] = {0.5, 0.75};
  qqzlin(x, y, 0x01000007, z, window_device_number);
  expect_calls({"set_colour(16777223)", "glBegin(3)", call_text("glVertex3f", {1, 5, near}),
                call_text("glVertex3f", {3, 3, far}), "glEnd()"});
}

TEST_F(OpenGl, DrawsPlainLinesAndPoints) {
  const double x1 = 1;
  const double y1 = 2;
  double x2 = 1.49;
  double y2 = 1.51;
  qqgllin(&x1, &y1, &x2, &y2);
  expect_calls({"glBegin(0)", "glVertex2f(1, 5)", "glEnd()"});
  x2 = 1.5;
  y2 = 2;
  qqgllin(&x1, &y1, &x2, &y2);
  expect_calls({"glBegin(3)", "glVertex2f(1, 5)", "glVertex2f(1.5, 5)", "glEnd()"});
  x2 = 1;
  y2 = 2.5;
  qqgllin(&x1, &y1, &x2, &y2);
  expect_calls({"glBegin(3)", "glVertex2f(1, 5)", "glVertex2f(1, 4.5)", "glEnd()"});
}

TEST_F(OpenGl, DrawsShadedTrianglesVertexByVertex) {
  set_option(19, 51);
  const double x[3] = {1, 2, 3};
  const double y[3] = {0, 7, 3.5};
  const double z[3] = {0.25, 0.5, 0.75};
  const double r[3] = {0, 0.5, 1};
  const double g[3] = {1, 0.25, 0};
  const double b[3] = {0.75, 0, 0.5};
  qqztri3(x, y, z, r, g, b, window_device_number);
  expect_calls({"glBegin(4)", "glColor3f(0, 1, 0.75)", "glVertex3f(1, 7, 0.25)",
                "glColor3f(0.5, 0.25, 0)", "glVertex3f(2, 0, 0.5)", "glColor3f(1, 0, 0.5)",
                "glVertex3f(3, 3.5, 0.75)", "glEnd()"});
  layer(3);
  window.calls.clear();
  qqztri3(x, y, z, r, g, b, window_device_number);
  const double a = 0.2F;
  expect_calls({"glBegin(4)", call_text("glColor4f", {0, 1, 0.75, a}), "glVertex3f(1, 7, 0.25)",
                call_text("glColor4f", {0.5, 0.25, 0, a}), "glVertex3f(2, 0, 0.5)",
                call_text("glColor4f", {1, 0, 0.5, a}), "glVertex3f(3, 3.5, 0.75)", "glEnd()"});
}

TEST_F(OpenGl, GetsTheColoursOfArguments) {
  shaded({1, 0, 0, 2}, {2, 1, 0, packed_rgb(51, 0, 255)}, {3, 2, 0, 5}, window_device_number);
  const double fifth = 0.2F;
  expect_calls({"glBegin(4)", "glColor3f(1, 0, 0)", "glVertex3f(1, 7, 0)",
                call_text("glColor3f", {fifth, 0, 1}), "glVertex3f(2, 6, 0)", "glColor3f(1, 1, 0)",
                "glVertex3f(3, 5, 0)", "glEnd()"});
}

TEST_F(OpenGl, BlendsWithTheUsualFactors) {
  layer(3);
  expect_calls({"glEnable(3042)", "glBlendFunc(770, 771)"});
  layer(4);
  expect_calls({"glDisable(3042)"});
}

TEST_F(OpenGl, DrawsIndexTrianglesInTheirColoursEvenUnderALayer) {
  const double fifth = 51.0F / 255.0F;
  const std::vector<std::string> triangle = {
      "glBegin(4)",        "glColor3f(1, 0, 0)",
      "glVertex2i(1, 7)",  call_text("glColor3f", {fifth, 0, 1}),
      "glVertex2i(2, 6)",  "glColor3f(0, 0, 1)",
      "glVertex2i(3, -2)", "glEnd()"};
  index_triangle({1, 0, 2}, {2, 1, packed_rgb(51, 0, 255)}, {3, 9, 4}, window_device_number);
  expect_calls(triangle);
  layer(1);
  window.calls.clear();
  index_triangle({1, 0, 2}, {2, 1, packed_rgb(51, 0, 255)}, {3, 9, 4});
  expect_calls(triangle);
}

TEST_F(OpenGl, DrawsHalvesOfQuadrilateralsAsTriangles) {
  const std::vector<IndexCorner> corners = {{1, 0, 0}, {2, 1, 2}, {3, 2, 3}, {4, 3, 4}};
  quad_half(corners, 1, window_device_number);
  expect_calls({"glBegin(4)", "glColor3f(0, 0, 0)", "glVertex2i(1, 7)", "glColor3f(1, 0, 0)",
                "glVertex2i(2, 6)", "glColor3f(0, 1, 0)", "glVertex2i(3, 5)", "glEnd()"});
  quad_half(corners, 2, window_device_number);
  expect_calls({"glBegin(4)", "glColor3f(0, 0, 0)", "glVertex2i(1, 7)", "glColor3f(0, 0, 1)",
                "glVertex2i(4, 4)", "glColor3f(0, 1, 0)", "glVertex2i(3, 5)", "glEnd()"});
}

TEST_F(OpenGl, LeavesDepthDrawingToTheLayerThatIsOpen) {
  set_option(19, 255);
  layer(1);
  window.calls.clear();
  EXPECT_EQ(depth_buffer(0), 0);
  EXPECT_EQ(depth_buffer(0), 2);
  depth_dot(1, 1, 0.5, packed_rgb(1, 2, 3));
  shaded({3, 3, 0.5, 2}, {3, 3, 0.5, 2}, {3, 3, 0.5, 2});
  expect_calls({});
  EXPECT_EQ(rgba_at(1, 1), "010203ff");
  EXPECT_EQ(rgba_at(3, 3), "ff0000ff");
  EXPECT_EQ(depth_at(1, 1), 0.5F);
  EXPECT_EQ(depth_buffer(1), 0);
}

TEST_F(OpenGl, CompositesRowByRowThroughItsPixels) {
  layer(1);
  set_option(19, 127);
  qqvpix(2, 3, packed_rgb(200, 100, 0));
  set_option(19, 255);
  qqvpix(4, 4, packed_rgb(7, 8, 9));
  // The frame's lower row is the picture's last.
  const auto frame = [&](int32_t x, int32_t y) { return &window.frame[size_t(4 * (y * 10 + x))]; };
  for (int32_t x = 2; x <= 4; ++x) {
    for (int32_t y = 3; y <= 4; ++y) {
      uint8_t *pixel = frame(x, y);
      pixel[0] = 100;
      pixel[1] = 200;
      pixel[2] = 1;
      pixel[3] = 77;
    }
  }
  window.calls.clear();
  EXPECT_EQ(layer(2), 0);
  expect_calls({"glReadPixels(2, 4, 3, 1, 6408, 5121)", "glRasterPos2i(2, 4)",
                "glDrawPixels(3, 1, 6408, 5121) 969600ff 64c8014d 64c8014d",
                "glReadPixels(2, 3, 3, 1, 6408, 5121)", "glRasterPos2i(2, 3)",
                "glDrawPixels(3, 1, 6408, 5121) 64c8014d 64c8014d 070809ff"});
  EXPECT_EQ(frame(4, 3)[0], 7);
}

TEST_F(OpenGl, IsNotNeededByTheCallsThatForwardToIt) {
  device.reset();
  EXPECT_EQ(depth_buffer(0), 0);
  depth_line(0, 0, 0, 5, 5, 0, 2);
  shaded_sheet(0.5, 2);
  index_triangle({1, 0, 2}, {2, 1, 3}, {3, 9, 4});
  quad_half({{1, 0, 2}, {2, 1, 3}, {3, 9, 4}, {4, 4, 4}}, 1);
  const double end = 3;
  EXPECT_EQ(qqgllin(&end, &end, &end, &end), 0);
  layer(3);
  layer(1);
  qqvpix(1, 1, 3);
  EXPECT_EQ(layer(2), 1);
  EXPECT_EQ(output_context->buffers.raster_state, 1);
}

TEST_F(OpenGl, IsLeftAloneWithoutARecordOrWhileItIsOff) {
  output_context->window.opengl_on = 0;
  const double end = 3;
  qqgllin(&end, &end, &end, &end);
  layer(3);
  layer(4);
  expect_calls({});
  qqwfree();
  qqgllin(&end, &end, &end, &end);
  expect_calls({});
}

}  // namespace
}  // namespace quorix::testing
