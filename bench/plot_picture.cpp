// SPDX-License-Identifier: MIT
#include "bench/plot_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>

#include "quorix/quorix.h"

namespace {

constexpr int32_t set = 1;
constexpr int32_t option_width = 26, option_smooth = 34;

// A place on a page of 1 by 1, in pixels.
struct Page {
  int32_t width, height;
  int32_t x(double u) const { return static_cast<int32_t>(u * width); }
  int32_t y(double v) const { return static_cast<int32_t>(v * height); }
};

void choose(int32_t option, int32_t value) {
  qqwwid(option, &value, set);
}

void load_colours() {
  std::vector<uint32_t> table(256);
  for (uint32_t i = 0; i < 256; ++i)
    table[i] = i << 16 | (255 - i) << 8 | (i * 5 & 255);
  table[0] = 0xFFFFFF;
  table[1] = 0x000000;
  table[2] = 0xC8C8C8;
  qqvvlt(1, table.data());
}

void draw_grid(const Page &page) {
  qqvclr(2);
  for (int32_t i = 0; i <= 10; ++i) {
    qqvlin(page.x(0.1), page.y(0.1 + 0.08 * i), page.x(0.9), page.y(0.1 + 0.08 * i));
    qqvlin(page.x(0.1 + 0.08 * i), page.y(0.1), page.x(0.1 + 0.08 * i), page.y(0.9));
  }
}

void draw_curves(const Page &page) {
  for (int32_t k = 0; k < 8; ++k) {
    choose(option_smooth, k % 2 == 0 ? 2 : 1);
    choose(option_width, k % 2 == 0 ? 1 : 1 + page.height / 300);
    qqvclr(10 + 25 * k);
    for (int32_t i = 0; i <= 1000; ++i) {
      const double u = i / 1000.0;
      const double v = 0.5 - 0.35 * std::sin((6 + k) * u * 3 + k) * std::exp(-u);
      qqvdrw(page.x(0.1 + 0.8 * u), page.y(v), i == 0 ? 3 : 2);
    }
  }
}

void draw_markers(const Page &page) {
  std::mt19937 random(1);
  choose(option_width, 1);
  for (int32_t i = 0; i < 1500; ++i) {
    qqvclr(1 + i % 250);
    const double u = static_cast<double>(random() % 1000) / 1000;
    const double v = static_cast<double>(random() % 1000) / 1000;
    qqvsym(i % 24, page.x(0.1 + 0.8 * u), page.y(0.5 + 0.4 * v * (1 - u)), 4 + page.height / 100);
  }
}

void draw_cells(const Page &page) {
  for (int32_t i = 0; i < 40; ++i) {
    for (int32_t k = 0; k < 30; ++k) {
      const double height = std::sin(0.2 * i) * std::cos(0.3 * k);
      qqvfll(page.x(0.6 + 0.0075 * i), page.y(0.12 + 0.01 * k), page.x(0.6 + 0.0075 * (i + 1)),
             page.y(0.12 + 0.01 * (k + 1)), 128 + static_cast<int32_t>(120 * height));
    }
  }
}

uint8_t sample(double value) {
  return static_cast<uint8_t>(std::clamp(value, 0.0, 255.0));
}

}  // namespace

void draw_plot(int32_t page_w, int32_t width, int32_t height) {
  int32_t status = 1;  // a white background
  qqvini(page_w, 1, &width, &height, 1, &status);
  load_colours();
  const Page page = {width, height};
  draw_grid(page);
  draw_cells(page);
  draw_curves(page);
  draw_markers(page);
}

std::vector<uint8_t> plot_triples(int32_t width, int32_t height) {
  std::vector<uint8_t> rgb(3 * static_cast<size_t>(width) * static_cast<size_t>(height));
  draw_plot(-1, width, height);
  qqvrdr(rgb.data(), 0, 0, -width, height);
  return rgb;
}

std::vector<uint8_t> photo_triples(int32_t width, int32_t height, double contrast) {
  std::vector<uint8_t> rgb;
  rgb.reserve(3 * static_cast<size_t>(width) * static_cast<size_t>(height));
  std::mt19937 random(1);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      const double u = static_cast<double>(x) / width;
      const double v = static_cast<double>(y) / height;
      double hills = 0;
      for (int o = 1; o < 6; ++o)
        hills += std::sin(u * o * 7.1 + v * o * 3.3 + o) * std::cos(v * o * 9.7 - u * o * 2.2) / o;
      const double grain = static_cast<double>(random() % 16);
      rgb.push_back(sample(contrast * (90 + 70 * hills + 60 * (1 - v) + grain)));
      rgb.push_back(sample(contrast * (100 + 60 * hills + 40 * v + grain)));
      rgb.push_back(sample(contrast * (60 + 50 * hills + 120 * (1 - v) + grain)));
    }
  }
  return rgb;
}
