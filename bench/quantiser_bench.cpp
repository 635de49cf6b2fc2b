// SPDX-License-Identifier: MIT
//
// A palette of 256 colours and the indices of 2.07 million true colour pixels. The peers use other
// methods: libgd counts colours of 5 or 6 bits a channel and cuts boxes, libimagequant looks for
// the best palette there is.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef HAVE_GDLIB
#include <gd.h>
#endif
#ifdef HAVE_IMAGEQUANT
#include <libimagequant.h>
#endif

#include "bench/plot_picture.h"
#include "imageout/quantiser.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr int32_t width = 1920;
constexpr int32_t height = 1080;
constexpr size_t pixels = size_t{width} * height;
constexpr int colours = 256;

void by_quorix(benchmark::State &state, const Bytes &rgb) {
  Bytes indices(pixels);
  Bytes palette(3 * colours);
  for (auto _ : state) {
    quorix::quantise(rgb.data(), width, height, indices.data(), &palette[0], &palette[colours],
                     &palette[2 * colours]);
    benchmark::DoNotOptimize(indices.data());
  }
}

#ifdef HAVE_GDLIB
// It works on a picture of its own kind and changes it, so each turn gets a new one, untimed.
gdImagePtr gd_picture(const Bytes &rgb) {
  gdImagePtr picture = gdImageCreateTrueColor(width, height);
  const uint8_t *at = rgb.data();
  for (int32_t y = 0; y < height; ++y)
    for (int32_t x = 0; x < width; ++x, at += 3)
      picture->tpixels[y][x] = gdTrueColor(at[0], at[1], at[2]);
  return picture;
}

void by_gd(benchmark::State &state, const Bytes &rgb) {
  for (auto _ : state) {
    state.PauseTiming();
    gdImagePtr picture = gd_picture(rgb);
    state.ResumeTiming();
    if (gdImageTrueColorToPalette(picture, 0, colours) == 0) std::abort();
    state.PauseTiming();
    gdImageDestroy(picture);
    state.ResumeTiming();
  }
}
#endif

#ifdef HAVE_IMAGEQUANT
void by_imagequant(benchmark::State &state, const Bytes &rgb) {
  Bytes rgba(4 * pixels, 255);
  for (size_t i = 0; i < pixels; ++i)
    std::copy(&rgb[3 * i], &rgb[3 * i] + 3, &rgba[4 * i]);
  Bytes indices(pixels);
  liq_attr *const attributes = liq_attr_create();
  for (auto _ : state) {
    liq_image *const picture = liq_image_create_rgba(attributes, rgba.data(), width, height, 0);
    liq_result *result = nullptr;
    if (liq_image_quantize(picture, attributes, &result) != LIQ_OK) std::abort();
    liq_set_dithering_level(result, 0);
    if (liq_write_remapped_image(result, picture, indices.data(), pixels) != LIQ_OK) std::abort();
    liq_result_destroy(result);
    liq_image_destroy(picture);
  }
  liq_attr_destroy(attributes);
}
#endif

void add(const std::string &workload, const Bytes *rgb) {
  const auto add_one = [&](const char *contender, void (*work)(benchmark::State &, const Bytes &)) {
    benchmark::RegisterBenchmark((workload + "/" + contender).c_str(),
                                 [=](benchmark::State &state) { work(state, *rgb); });
  };
  add_one("quorix", by_quorix);
#ifdef HAVE_GDLIB
  add_one("libgd", by_gd);
#endif
#ifdef HAVE_IMAGEQUANT
  add_one("libimagequant", by_imagequant);
#endif
}

const bool registered = [] {
  static const Bytes photo = photo_triples(width, height, 1.0);
  static const Bytes faint_photo = photo_triples(width, height, 0.25);
  static const Bytes plot = plot_triples(width, height);
  add("256 colours of a photograph", &photo);
  add("256 colours of a dark photograph", &faint_photo);
  add("256 colours of a plot", &plot);
  return true;
}();

}  // namespace
