// SPDX-License-Identifier: MIT
//
// Writing GIF, BMP, TIFF and PPM files of what a raster holds. GIF is measured against giflib,
// which is given the raster's rows; the others against what nobody gets by without: one fwrite of
// bytes that are ready, and the same with the conversion from RGBA to RGB before it.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#ifdef HAVE_GIFLIB
#include <gif_lib.h>
#endif

#include "bench/plot_picture.h"
#include "quorix/quorix.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr int32_t width = 1920;
constexpr int32_t height = 1080;
constexpr size_t pixels = size_t{width} * height;
constexpr double full_contrast = 1.0;

void must(bool fine) {
  if (!fine) std::abort();
}

const std::string &file_name() {
  static const std::string name =
      (std::filesystem::temp_directory_path() / "image_writers_bench.out").string();
  return name;
}

// ---- pictures

enum class Picture { plot_rgba, plot_palette, photo_palette };

// Six steps each of red, green and blue.
std::vector<uint32_t> colour_cube() {
  std::vector<uint32_t> palette(256, 0);
  for (uint32_t i = 0; i < 216; ++i)
    palette[i] = i / 36 * 51 << 16 | i / 6 % 6 * 51 << 8 | i % 6 * 51;
  return palette;
}

void show_photo() {
  int32_t w = width;
  int32_t h = height;
  int32_t status = 0;
  qqvini(1000, 1000, &w, &h, 1, &status);
  must(status == 0);
  qqvvlt(1, colour_cube().data());
  const Bytes triples = photo_triples(width, height, full_contrast);
  for (int32_t y = 0; y < height; ++y)
    qqvrow(&triples[3 * size_t{width} * static_cast<size_t>(y)], 0, y, -width);
}

// Draws anew only where the raster shows another picture.
const uint8_t *open_raster(Picture picture) {
  static bool any = false;
  static Picture shown = Picture::plot_rgba;
  if (!any || shown != picture) {
    if (picture == Picture::photo_palette) {
      show_photo();
    } else {
      draw_plot(picture == Picture::plot_rgba ? -1 : 1, width, height);
    }
  }
  any = true;
  shown = picture;
  uint8_t *raster = nullptr;
  qqvptr(&raster);
  return raster;
}

// ---- contenders

const std::vector<uint32_t> grey(256, 0x808080);
const int32_t order = 1;
const int32_t minus_height = -height;

void quorix_gif() {
  const int32_t device = 101;
  const int32_t transparent = 0;
  const uint8_t background = 0;
  int32_t status = -1;
  qqpgif(file_name().c_str(), &device, &order, &width, &height, grey.data(), nullptr, &background,
         &transparent, &status);
  must(status == 0);
}

void quorix_ppm() {
  const int32_t device = -101;
  int32_t status = -1;
  qqpppm(file_name().c_str(), &device, &width, &height, nullptr, &status);
  must(status == 0);
}

void quorix_bmp() {
  const int32_t device = -101;
  const int32_t colours = 0;
  int32_t status = -1;
  qqpbmp(file_name().c_str(), &device, &order, &width, &minus_height, grey.data(), &colours,
         &status);
  must(status == 0);
}

void quorix_tiff() {
  const int32_t device = -101;
  const int32_t form = 0;
  int32_t status = 300;
  qqptif(file_name().c_str(), &device, &order, &width, &minus_height, grey.data(), &form, &status);
  must(status == 0);
}

void write_ready(const Bytes &rgb) {
  std::FILE *const file = std::fopen(file_name().c_str(), "wb");
  must(file != nullptr);
  must(std::fwrite(rgb.data(), 1, rgb.size(), file) == rgb.size());
  must(std::fclose(file) == 0);
}

void convert_and_write(const uint8_t *raster) {
  Bytes rgb(3 * pixels);
  for (size_t i = 0; i < pixels; ++i)
    for (size_t k = 0; k < 3; ++k)
      rgb[3 * i + k] = raster[4 * i + k];
  write_ready(rgb);
}

#ifdef HAVE_GIFLIB
int write_bytes(GifFileType *gif, const GifByteType *bytes, int count) {
  return static_cast<int>(
      std::fwrite(bytes, 1, static_cast<size_t>(count), static_cast<std::FILE *>(gif->UserData)));
}

void giflib_gif(const uint8_t *raster) {
  std::FILE *const file = std::fopen(file_name().c_str(), "wb");
  must(file != nullptr);
  int error = 0;
  GifFileType *const gif = EGifOpen(file, write_bytes, &error);
  must(gif != nullptr);
  ColorMapObject *const map = GifMakeMapObject(256, nullptr);
  must(EGifPutScreenDesc(gif, width, height, 8, 0, map) == GIF_OK);
  must(EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) == GIF_OK);
  for (size_t y = 0; y < size_t{height}; ++y)
    must(EGifPutLine(gif, const_cast<uint8_t *>(raster + y * size_t{width}), width) == GIF_OK);
  must(EGifCloseFile(gif, &error) == GIF_OK);
  GifFreeMapObject(map);
  must(std::fclose(file) == 0);
}
#endif

// ---- workloads

template <class Work>
void add(const std::string &workload, const char *contender, Picture picture, Work work) {
  benchmark::RegisterBenchmark((workload + "/" + contender).c_str(), [=](benchmark::State &state) {
    const uint8_t *const raster = open_raster(picture);
    for (auto _ : state)
      work(raster);
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file_name()));
  })->Unit(benchmark::kMillisecond);
}

void add_gif(const std::string &workload, Picture picture) {
  add(workload, "quorix", picture, [](const uint8_t *) { quorix_gif(); });
#ifdef HAVE_GIFLIB
  add(workload, "giflib", picture, [](const uint8_t *raster) { giflib_gif(raster); });
#endif
}

void add_plain(const std::string &workload, void (*write)()) {
  const Picture picture = Picture::plot_rgba;
  add(workload, "quorix", picture, [=](const uint8_t *) { write(); });
  add(workload, "convert, fwrite", picture, convert_and_write);
  static const Bytes ready(3 * pixels, 77);
  add(workload, "one fwrite", picture, [](const uint8_t *) { write_ready(ready); });
}

const bool registered = [] {
  add_gif("GIF of a plot 1920x1080", Picture::plot_palette);
  add_gif("GIF of a photograph 1920x1080", Picture::photo_palette);
  add_plain("BMP of an RGBA plot 1920x1080", quorix_bmp);
  add_plain("TIFF of an RGBA plot 1920x1080", quorix_tiff);
  add_plain("PPM of an RGBA plot 1920x1080", quorix_ppm);
  return true;
}();

}  // namespace
