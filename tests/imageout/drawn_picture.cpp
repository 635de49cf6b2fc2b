// SPDX-License-Identifier: MIT
//
// A plot with a grid and dust, a photograph of hills, and a window that is a plain array.
#include "tests/imageout/drawn_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/device.h"
#include "quorix/imageout.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/imageout/random_numbers.h"

namespace quorix::testing {

namespace {

size_t place_of(const DrawnPicture &picture, int64_t x, int64_t y) {
  return static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x);
}

bool is_on_page(const DrawnPicture &picture, int64_t x, int64_t y) {
  return x >= 0 && y >= 0 && x < picture.width && y < picture.height;
}

void colour_by_palette(DrawnPicture *picture) {
  picture->rgb.clear();
  for (const uint8_t index : picture->indices)
    for (const int shift : {16, 8, 0})
      picture->rgb.push_back(static_cast<uint8_t>(picture->palette[index] >> shift & 255));
}

DrawnPicture empty_picture(int32_t width, int32_t height, uint32_t seed) {
  DrawnPicture picture = {width, height, make_palette(seed), {}, {}};
  picture.indices.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
  return picture;
}

uint8_t clamped(double value) {
  return static_cast<uint8_t>(std::clamp(value, 0.0, 255.0));
}

}  // namespace

PaletteWords make_palette(uint32_t seed) {
  // An odd factor takes different numbers below 2^24 to different ones.
  PaletteWords palette;
  for (uint32_t i = 0; i < palette.size(); ++i)
    palette[i] = ((i + 1 + 1000 * seed) * 0x9E3779B1U) & 0xffffffU;
  return palette;
}

uint8_t DrawnPicture::index_at(int64_t x, int64_t y) const {
  return is_on_page(*this, x, y) ? indices[place_of(*this, x, y)] : uint8_t{0};
}

std::array<uint8_t, 3> DrawnPicture::rgb_at(int64_t x, int64_t y) const {
  if (!is_on_page(*this, x, y)) return {0, 0, 0};
  const uint8_t *const at = &rgb[3 * place_of(*this, x, y)];
  return {at[0], at[1], at[2]};
}

Bytes DrawnPicture::index_area(int32_t x, int32_t y, int32_t w, int32_t h) const {
  Bytes area;
  for (int64_t row = y; row < int64_t{y} + h; ++row)
    for (int64_t column = x; column < int64_t{x} + w; ++column)
      area.push_back(index_at(column, row));
  return area;
}

Bytes DrawnPicture::rgb_area(int32_t x, int32_t y, int32_t w, int32_t h) const {
  Bytes area;
  for (int64_t row = y; row < int64_t{y} + h; ++row) {
    for (int64_t column = x; column < int64_t{x} + w; ++column) {
      const auto colour = rgb_at(column, row);
      area.insert(area.end(), colour.begin(), colour.end());
    }
  }
  return area;
}

DrawnPicture plot_picture(int32_t width, int32_t height, uint32_t seed) {
  DrawnPicture picture = empty_picture(width, height, seed);
  RandomNumbers random(seed);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      uint32_t index = x % 50 == 7 || y % 40 == 5 ? 3 : 1;  // a grid on paper
      const double curve = height * (0.5 + 0.4 * std::sin(0.02 * x));
      if (std::abs(y - curve) < 3) index = 200;
      if (x > width / 2 && y > height / 2) index = static_cast<uint32_t>(x + y);  // a colour bar
      if (random.below(64) == 0) index = random.word();                           // and dust
      picture.indices[place_of(picture, x, y)] = static_cast<uint8_t>(index & 255);
    }
  }
  colour_by_palette(&picture);
  return picture;
}

DrawnPicture photo_picture(int32_t width, int32_t height, uint32_t seed) {
  DrawnPicture picture = empty_picture(width, height, seed);
  RandomNumbers random(seed);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const double hill = std::sin(0.011 * x + seed) * std::cos(0.017 * y);
      const double grain = random.below(8);
      picture.rgb.push_back(clamped(90 + 100 * hill + grain));
      picture.rgb.push_back(clamped(250 - 200.0 * y / height + grain));
      picture.rgb.push_back(clamped(60 + 0.1 * x - 40 * hill + grain));
    }
  }
  return picture;
}

void show_on_raster(const DrawnPicture &picture, bool rgba) {
  int32_t width = picture.width;
  int32_t height = picture.height;
  int32_t status = 0;
  qqvini(rgba ? -1000 : 1000, 1000, &width, &height, 1, &status);
  if (status != 0) std::abort();
  qqvvlt(1, picture.palette.data());
  for (int32_t y = 0; y < height; ++y) {
    const size_t start = place_of(picture, 0, y);
    if (rgba) {
      qqvrow(&picture.rgb[3 * start], 0, y, -width);
    } else {
      qqvrow(&picture.indices[start], 0, y, width);
    }
  }
}

void forget_everything() {
  const int32_t zero = 0;
  qqpclp(&zero, &zero, &zero, &zero, &zero);
  qqwfree();
  register_window_device(nullptr);
}

// ---- the window

namespace {

const DrawnPicture *shown = nullptr;
int32_t index_reads_seen = 0;
int32_t rgb_reads_seen = 0;

void read_window(OutputContext * /*context*/, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                 int32_t rows) {
  ++(n < 0 ? rgb_reads_seen : index_reads_seen);
  const Bytes area = n < 0 ? shown->rgb_area(x, y, -n, rows) : shown->index_area(x, y, n, rows);
  std::copy(area.begin(), area.end(), buffer);
}

const Device window = {nullptr, read_window, nullptr, nullptr, nullptr, nullptr};

}  // namespace

FakeWindow::FakeWindow(const DrawnPicture &picture) {
  shown = &picture;
  index_reads_seen = 0;
  rgb_reads_seen = 0;
  register_window_device(&window);
}

FakeWindow::~FakeWindow() {
  register_window_device(nullptr);
  shown = nullptr;
}

int32_t FakeWindow::index_reads() const {
  return index_reads_seen;
}

int32_t FakeWindow::rgb_reads() const {
  return rgb_reads_seen;
}

}  // namespace quorix::testing
