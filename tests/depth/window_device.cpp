// SPDX-License-Identifier: MIT
#include "tests/depth/window_device.h"

#include <algorithm>

#include "window/opengl_depth.h"

namespace quorix::testing {

namespace {

PlainWindow *the_window = nullptr;
std::vector<uint8_t> the_copy;
int32_t copies = 0;
bool refusing = false;

void flush(OutputContext *context) {
  note(*the_window, "flush()");
  context->accumulator.poly_count = 0;
}

void read_rectangle(OutputContext * /*context*/, uint8_t * /*buffer*/, int32_t x, int32_t y,
                    int32_t n, int32_t rows) {
  note(*the_window, call_text("read_rectangle", {double(x), double(y), double(n), double(rows)}));
}

void write_row(OutputContext * /*context*/, const uint8_t * /*buffer*/, int32_t x, int32_t y,
               int32_t n) {
  note(*the_window, call_text("write_row", {double(x), double(y), double(n)}));
}

void set_colour(OutputContext * /*context*/, int32_t colour) {
  note(*the_window, call_text("set_colour", {double(colour)}));
}

uint32_t colour_word(uint8_t r, uint8_t g, uint8_t b) {
  return r + g * 256U + b * 65536U;
}

void fill(OutputContext *context, int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t colour) {
  uint8_t r = 0;
  uint8_t g = 0;
  uint8_t b = 0;
  colour_to_rgb(context, colour, &r, &g, &b);
  fill_rectangle(*the_window, x1, y1, x2, y2, colour, colour_word(r, g, b));
}

void set_pixel(OutputContext * /*context*/, int32_t x, int32_t y, uint8_t r, uint8_t g, uint8_t b) {
  // Off the surface: caught by at() as a fault of the caller.
  const int64_t at = contains(*the_window, x, y) ? int64_t{y} * the_window->width + x : -1;
  the_window->pixels.at(static_cast<size_t>(at)) = colour_word(r, g, b);
}

bool bitmap(OutputContext * /*context*/, DeviceBitmap *bitmap) {
  if (refusing) return false;
  PlainWindow &window = *the_window;
  *bitmap = {window.bytes.data(), window.row_bytes, window.width, window.height,
             window.bits,         PixelOrder::bgr,  nullptr};
  if (window.bits < 9) bitmap->order = PixelOrder::index;
  if (window.bits == 16) {
    bitmap->base = nullptr;
    bitmap->order = PixelOrder::set_pixel;
    bitmap->set_pixel = set_pixel;
  }
  return true;
}

uint8_t map_index(const OutputContext * /*context*/, int32_t index) {
  return index_to_pixel(*the_window, static_cast<uint8_t>(index));
}

bool copy_out(OutputContext * /*context*/, int32_t x, int32_t y, int32_t width, int32_t height,
              DeviceBitmap *copy) {
  PlainWindow &window = *the_window;
  if (refusing || (window.bits != 24 && window.bits != 32)) return false;
  if (width < 1 || height < 1 || !contains(window, x, y)) return false;
  if (!contains(window, x + width - 1, y + height - 1)) return false;
  const size_t row = static_cast<size_t>(width * bytes_per_pixel(window));
  the_copy.clear();
  for (int32_t i = 0; i < height; ++i) {
    const uint8_t *from = pixel_at(window, x, y + i);
    the_copy.insert(the_copy.end(), from, from + row);
  }
  *copy = {the_copy.data(), row, width, height, window.bits, PixelOrder::bgr, nullptr};
  ++copies;
  return true;
}

void copy_in(OutputContext * /*context*/, int32_t x, int32_t y, DeviceBitmap *copy) {
  PlainWindow &window = *the_window;
  const size_t row = static_cast<size_t>(copy->width * bytes_per_pixel(window));
  for (int32_t i = 0; i < copy->height; ++i) {
    const uint8_t *from = copy->base + static_cast<size_t>(i) * copy->row_bytes;
    std::copy(from, from + row, pixel_at(window, x, y + i));
  }
  --copies;
}

// --- OpenGL ---

void noted(const char *name, const std::vector<double> &arguments) {
  note(*the_window, call_text(name, arguments));
}

void gl_read_pixels(int32_t x, int32_t y, int32_t width, int32_t height, uint32_t format,
                    uint32_t type, void *pixels) {
  if (height != 1 || format != 6408 || type != 5121) {
    noted("not a row of RGBA bytes", {double(height), double(format), double(type)});
  }
  read_pixels(*the_window, x, y, width, static_cast<uint8_t *>(pixels));
}

void gl_draw_pixels(int32_t width, int32_t height, uint32_t format, uint32_t type,
                    const void *pixels) {
  if (height != 1 || format != 6408 || type != 5121) {
    noted("not a row of RGBA bytes", {double(height), double(format), double(type)});
  }
  draw_pixels(*the_window, width, static_cast<const uint8_t *>(pixels));
}

const GlCalls gl_calls = {[](uint32_t capability) { noted("glEnable", {double(capability)}); },
                          [](uint32_t capability) { noted("glDisable", {double(capability)}); },
                          [](uint32_t function) { noted("glDepthFunc", {double(function)}); },
                          [](uint32_t source, uint32_t target) {
                            noted("glBlendFunc", {double(source), double(target)});
                          },
                          [](uint32_t buffers) { noted("glClear", {double(buffers)}); },
                          [](uint32_t primitive) { noted("glBegin", {double(primitive)}); },
                          [] { noted("glEnd", {}); },
                          [](float x, float y) {
                            noted("glVertex2f", {x, y});
                          },
                          [](int32_t x, int32_t y) {
                            noted("glVertex2i", {double(x), double(y)});
                          },
                          [](float x, float y, float z) {
                            noted("glVertex3f", {x, y, z});
                          },
                          [](float r, float g, float b) {
                            noted("glColor3f", {r, g, b});
                          },
                          [](float r, float g, float b, float a) {
                            noted("glColor4f", {r, g, b, a});
                          },
                          [](int32_t x, int32_t y) { set_raster_position(*the_window, x, y); },
                          gl_read_pixels,
                          gl_draw_pixels};

const Device plain_device = {flush,  read_rectangle, write_row, set_colour, fill,
                             bitmap, map_index,      copy_out,  copy_in,    &opengl_depth_calls};

}  // namespace

WindowDevice::WindowDevice(PlainWindow *window) {
  the_window = window;
  copies = 0;
  refusing = false;
  use_gl_calls(&gl_calls);
  register_window_device(&plain_device);
}

WindowDevice::~WindowDevice() {
  register_window_device(nullptr);
  use_gl_calls(nullptr);
  the_window = nullptr;
}

void WindowDevice::attach(bool opengl) {
  if (output_context == nullptr) return;
  output_context->page.screen_bits = the_window->bits;
  output_context->window.opengl_on = opengl ? 1 : 0;
}

int32_t WindowDevice::copies_out() {
  return copies;
}

void WindowDevice::refuse_bitmaps(bool refuse) {
  refusing = refuse;
}

}  // namespace quorix::testing
