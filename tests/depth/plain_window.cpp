// SPDX-License-Identifier: MIT
#include "tests/depth/plain_window.h"

#include <algorithm>
#include <cstdio>

namespace quorix::testing {

PlainWindow make_window(int32_t bits, int32_t width, int32_t height, size_t extra) {
  PlainWindow window;
  window.bits = bits;
  window.width = width;
  window.height = height;
  const size_t columns = static_cast<size_t>(width);
  const size_t rows = static_cast<size_t>(height);
  if (bits == 16) {
    window.pixels.assign(columns * rows, 0xFFFFFFFFU);
  } else {
    window.row_bytes = columns * static_cast<size_t>(bytes_per_pixel(window)) + extra;
    for (size_t i = 0; i < window.row_bytes * rows; ++i)
      window.bytes.push_back(static_cast<uint8_t>(i * 37 + 11));
  }
  for (size_t i = 0; i < columns * rows * 4; ++i)
    window.frame.push_back(static_cast<uint8_t>(i * 53 + 7));
  return window;
}

int32_t bytes_per_pixel(const PlainWindow &window) {
  if (window.bits == 24) return 3;
  return window.bits == 32 ? 4 : 1;
}

bool contains(const PlainWindow &window, int64_t x, int64_t y) {
  return x >= 0 && x < window.width && y >= 0 && y < window.height;
}

uint8_t *pixel_at(PlainWindow &window, int64_t x, int64_t y) {
  const size_t at = static_cast<size_t>(y) * window.row_bytes +
                    static_cast<size_t>(x) * static_cast<size_t>(bytes_per_pixel(window));
  return &window.bytes.at(at);
}

uint8_t index_to_pixel(const PlainWindow &window, uint8_t index) {
  const int i = index;
  if (!window.compressed) return static_cast<uint8_t>(window.colour_mode == 1 ? i : i + 10);
  if (window.bits == 4) {
    if (window.colour_mode != 0) return static_cast<uint8_t>(i % 16);
    if (i == 255) return 15;
    if (i == 0) return 0;
    return static_cast<uint8_t>((i - 1) * 13.0 / 253.0 + 1.5);
  }
  if (window.colour_mode == 0) return static_cast<uint8_t>((i + 1) / 2 + 10);
  if (window.colour_mode == 2) return static_cast<uint8_t>(i % 128 + 10);
  return static_cast<uint8_t>(i);
}

void note(PlainWindow &window, const std::string &call) {
  window.calls.push_back(call);
}

void fill_rectangle(PlainWindow &window, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                    int32_t colour, uint32_t painted) {
  note(window, call_text("fill_rectangle",
                         {double(x1), double(y1), double(x2), double(y2), double(colour)}));
  for (int32_t y = 0; y < window.height && window.bits == 16; ++y) {
    for (int32_t x = 0; x < window.width; ++x) {
      if (x < x1 || x > x2 || y < y1 || y > y2) continue;
      window.pixels.at(static_cast<size_t>(y * window.width + x)) = painted;
    }
  }
}

std::string call_text(const char *name, const std::vector<double> &arguments) {
  std::string text = name;
  char number[40];
  for (size_t i = 0; i < arguments.size(); ++i) {
    std::snprintf(number, sizeof(number), "%s%.17g", i == 0 ? "(" : ", ", arguments[i]);
    text += number;
  }
  if (arguments.empty()) text += "(";
  return text + ")";
}

namespace {

std::string row_text(const uint8_t *row, int32_t n) {
  std::string text;
  char pixel[16];
  for (int32_t i = 0; i < n; ++i) {
    const uint8_t *p = row + 4 * i;
    std::snprintf(pixel, sizeof(pixel), " %02x%02x%02x%02x", p[0], p[1], p[2], p[3]);
    text += pixel;
  }
  return text;
}

// GL_RGBA and GL_UNSIGNED_BYTE.
constexpr double rgba_format = 6408;
constexpr double byte_type = 5121;

}  // namespace

void read_pixels(PlainWindow &window, int32_t x, int32_t y, int32_t n, uint8_t *row) {
  note(window,
       call_text("glReadPixels", {double(x), double(y), double(n), 1, rgba_format, byte_type}));
  std::fill(row, row + 4 * n, uint8_t{0});
  for (int32_t i = 0; i < n; ++i) {
    if (!contains(window, x + i, y)) continue;
    const size_t at =
        (static_cast<size_t>(y) * static_cast<size_t>(window.width) + static_cast<size_t>(x + i)) *
        4;
    for (size_t k = 0; k < 4; ++k)
      row[4 * static_cast<size_t>(i) + k] = window.frame.at(at + k);
  }
}

void set_raster_position(PlainWindow &window, int32_t x, int32_t y) {
  note(window, call_text("glRasterPos2i", {double(x), double(y)}));
  window.raster_x = x;
  window.raster_y = y;
}

void draw_pixels(PlainWindow &window, int32_t n, const uint8_t *row) {
  note(window,
       call_text("glDrawPixels", {double(n), 1, rgba_format, byte_type}) + row_text(row, n));
  for (int32_t i = 0; i < n; ++i) {
    if (!contains(window, window.raster_x + i, window.raster_y)) continue;
    const size_t at = (static_cast<size_t>(window.raster_y) * static_cast<size_t>(window.width) +
                       static_cast<size_t>(window.raster_x + i)) *
                      4;
    for (size_t k = 0; k < 4; ++k)
      window.frame.at(at + k) = row[4 * static_cast<size_t>(i) + k];
  }
}

}  // namespace quorix::testing
