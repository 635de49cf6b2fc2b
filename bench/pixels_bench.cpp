// SPDX-License-Identifier: MIT
//
// True colour into palette indices: reading an RGBA plot as indices, and writing RGB rows into a
// palette raster, against a plain search of the table for every pixel.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

#include "core/output_context.h"
#include "quorix/quorix.h"

namespace {

constexpr int32_t width = 1920;
constexpr int32_t height = 1080;

// Spread evenly, so that a search goes far.
void load_palette() {
  std::vector<uint32_t> table(256);
  for (uint32_t i = 0; i < 256; ++i)
    table[i] = (i & 0xE0) << 16 | (i & 0x1C) << 11 | (i & 3) << 6;
  table[255] = 0xFFFFFF;
  qqvvlt(1, table.data());
}

// A plot: axes, a few hundred curves in packed colours, a field of filled cells.
void draw_plot(int32_t page_w) {
  int32_t w = width;
  int32_t h = height;
  int32_t status = 0;
  qqvini(page_w, 1, &w, &h, 1, &status);
  load_palette();
  for (int32_t i = 0; i < 200; ++i) {
    const int32_t colour = 0x01000000 | i * 80000;
    qqvfll(100 + i % 20 * 40, 100 + i / 20 * 40, 138 + i % 20 * 40, 138 + i / 20 * 40, colour);
    qqvclr(colour);
    qqvlin(100, i * 5, 1800, height - i * 5);
  }
}

int32_t plain_search(const quorix::OutputContext *context, int32_t r, int32_t g, int32_t b) {
  int32_t best = 1000;
  int32_t index = 0;
  for (int32_t i = 0; i < 256; ++i) {
    const int32_t distance = std::abs(r - context->colours.palette_r[i]) +
                             std::abs(g - context->colours.palette_g[i]) +
                             std::abs(b - context->colours.palette_b[i]);
    if (distance >= best) continue;
    best = distance;
    index = i;
    if (distance == 0) break;
  }
  return index;
}

void search_every_pixel(const uint8_t *pixels, size_t step, std::vector<uint8_t> &indices) {
  for (size_t i = 0; i < indices.size(); ++i, pixels += step) {
    indices[i] =
        static_cast<uint8_t>(plain_search(quorix::output_context, pixels[0], pixels[1], pixels[2]));
  }
}

void read_indices(benchmark::State &state, bool plainly) {
  draw_plot(-1);
  std::vector<uint8_t> indices(static_cast<size_t>(width) * height);
  uint8_t *raster = nullptr;
  qqvptr(&raster);
  for (auto _ : state) {
    if (plainly) {
      search_every_pixel(raster, 4, indices);
    } else {
      qqvrdr(indices.data(), 0, 0, width, height);
    }
    benchmark::DoNotOptimize(indices.data());
  }
}

void write_rgb(benchmark::State &state, bool plainly) {
  draw_plot(-1);
  std::vector<uint8_t> rgb(static_cast<size_t>(width) * height * 3);
  std::vector<uint8_t> indices(static_cast<size_t>(width) * height);
  qqvrdr(rgb.data(), 0, 0, -width, height);
  draw_plot(1);
  for (auto _ : state) {
    if (plainly) {
      search_every_pixel(rgb.data(), 3, indices);
      benchmark::DoNotOptimize(indices.data());
    } else {
      for (int32_t y = 0; y < height; ++y) {
        qqvrow(rgb.data() + static_cast<size_t>(y) * width * 3, 0, y, -width);
      }
    }
  }
}

void read_rgb(benchmark::State &state, bool plainly) {
  draw_plot(-1);
  std::vector<uint8_t> rgb(static_cast<size_t>(width) * height * 3);
  uint8_t *raster = nullptr;
  qqvptr(&raster);
  for (auto _ : state) {
    if (plainly) {
      for (size_t i = 0; i < rgb.size() / 3; ++i) {
        rgb[i * 3] = raster[i * 4];
        rgb[i * 3 + 1] = raster[i * 4 + 1];
        rgb[i * 3 + 2] = raster[i * 4 + 2];
      }
    } else {
      qqvrdr(rgb.data(), 0, 0, -width, height);
    }
    benchmark::DoNotOptimize(rgb.data());
  }
}

const bool registered = [] {
  const auto add = [](const char *name, void (*work)(benchmark::State &, bool), bool plainly) {
    benchmark::RegisterBenchmark(name, [=](benchmark::State &state) { work(state, plainly); });
  };
  add("2.07 Mpixel RGBA read as indices/quorix", read_indices, false);
  add("2.07 Mpixel RGBA read as indices/plain search", read_indices, true);
  add("2.07 Mpixel RGB into a palette raster/quorix", write_rgb, false);
  add("2.07 Mpixel RGB into a palette raster/plain search", write_rgb, true);
  add("2.07 Mpixel RGBA read as RGB/quorix", read_rgb, false);
  add("2.07 Mpixel RGBA read as RGB/plain loop", read_rgb, true);
  return true;
}();

}  // namespace
