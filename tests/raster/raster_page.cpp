// SPDX-License-Identifier: MIT
#include "tests/raster/raster_page.h"

#include <cstdio>

namespace quorix::testing {

uint32_t test_palette_word(uint32_t index) {
  static const uint32_t first[] = {0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};
  return index < 6 ? first[index] : index * 0x010101U;
}

namespace {

void open_any(int32_t page_w, int32_t width, int32_t height, int32_t status) {
  qqvini(page_w, 1, &width, &height, 1, &status);
  ASSERT_EQ(status, 0);
  uint32_t table[256];
  for (uint32_t i = 0; i < 256; i++)
    table[i] = test_palette_word(i);
  qqvvlt(1, table);
  qqvclr(1);
}

}  // namespace

void open_page(int32_t width, int32_t height) {
  open_any(1, width, height, 0);
}

void open_rgba_page(int32_t width, int32_t height, bool white) {
  open_any(-1, width, height, white ? 1 : 0);
}

int32_t packed_rgb(uint32_t r, uint32_t g, uint32_t b) {
  return static_cast<int32_t>(0x01000000U | b << 16 | g << 8 | r);
}

void set_option(int32_t option, int32_t value) {
  qqwwid(option, &value, 1);
}

void set_pen(int32_t width, int32_t cap, int32_t join) {
  set_option(26, width);
  set_option(27, cap);
  set_option(28, join);
}

void set_clip_rectangle(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  set_option(11, x1);
  set_option(12, y1);
  set_option(13, x2);
  set_option(14, y2);
}

void switch_clipping(bool on) {
  set_option(33, on ? 0 : 1);
}

void flush_lines() {
  int32_t colour = 0;
  qqvrpx(0, 0, &colour);
}

namespace {

const uint8_t *first_byte() {
  uint8_t *bytes = nullptr;
  qqvptr(&bytes);
  return bytes;
}

char character_of(const uint8_t *pixel, bool rgba) {
  if (rgba) return pixel[3] == 0 ? '.' : '#';
  if (pixel[0] == 0) return '.';
  if (pixel[0] < 10) return static_cast<char>('0' + pixel[0]);
  if (pixel[0] < 36) return static_cast<char>('a' + pixel[0] - 10);
  return '?';
}

}  // namespace

std::string picture_without_flush() {
  const bool rgba = output_context->page.rgba_mode != 0;
  const uint8_t *pixel = first_byte();
  std::string text;
  for (int32_t y = 0; y < output_context->page.height; y++) {
    for (int32_t x = 0; x < output_context->page.width; x++) {
      text += character_of(pixel, rgba);
      pixel += rgba ? 4 : 1;
    }
    text += '\n';
  }
  return text;
}

std::string picture() {
  flush_lines();
  return picture_without_flush();
}

std::string rows(const std::vector<std::string> &lines) {
  std::string text;
  for (const std::string &line : lines)
    text += line + '\n';
  return text;
}

std::string row(int32_t width, int32_t first, int32_t last) {
  std::string text(static_cast<size_t>(width), '.');
  for (int32_t x = first; x <= last; x++)
    text[static_cast<size_t>(x)] = '1';
  return text;
}

std::string row_at(int32_t y) {
  const size_t length = static_cast<size_t>(output_context->page.width) + 1;
  return picture().substr(static_cast<size_t>(y) * length, length - 1);
}

int32_t index_at(int32_t x, int32_t y) {
  flush_lines();
  return first_byte()[y * output_context->page.stride + x];
}

std::string rgba_at(int32_t x, int32_t y) {
  flush_lines();
  const uint8_t *pixel = first_byte() + y * output_context->page.stride + 4 * x;
  char text[16];
  std::snprintf(text, sizeof(text), "%02x%02x%02x%02x", pixel[0], pixel[1], pixel[2], pixel[3]);
  return text;
}

void draw_polyline(const std::vector<PenPoint> &points) {
  int32_t code = 3;
  for (const PenPoint &point : points) {
    qqvdrw(point.x, point.y, code);
    code = 2;
  }
  flush_lines();
}

int32_t fill_polygon_of(const std::vector<double> &xs, const std::vector<double> &ys) {
  const int32_t n = static_cast<int32_t>(xs.size());
  int32_t status = 77;
  qqvpol(xs.data(), ys.data(), &n, &status);
  return status;
}

std::vector<uint8_t> page_content() {
  const uint8_t *bytes = first_byte();
  const size_t size = static_cast<size_t>(output_context->page.stride) *
                      static_cast<size_t>(output_context->page.height);
  return {bytes, bytes + size};
}

}  // namespace quorix::testing
