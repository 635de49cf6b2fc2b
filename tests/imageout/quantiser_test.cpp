// SPDX-License-Identifier: MIT
//
// The quantiser against arithmetic on paper and against its literal model.
#include "imageout/quantiser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/imageout/drawn_picture.h"
#include "tests/imageout/literal_quantiser.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

constexpr uint8_t untouched = 77;

struct Quantised {
  Bytes indices;
  Bytes reds = Bytes(256, untouched), greens = reds, blues = reds;

  std::array<int, 3> colour_of(size_t pixel) const {
    const size_t i = indices[pixel];
    return {reds[i], greens[i], blues[i]};
  }
  bool operator==(const Quantised &) const = default;
};

using Rgb = std::array<int, 3>;

Bytes pixels_of(const std::vector<Rgb> &colours) {
  Bytes rgb;
  for (const Rgb &colour : colours)
    for (const int sample : colour)
      rgb.push_back(static_cast<uint8_t>(sample));
  return rgb;
}

Quantised quantised(const Bytes &rgb, size_t width) {
  Quantised result;
  result.indices.resize(rgb.size() / 3);
  quantise(rgb.data(), width, rgb.size() / 3 / width, result.indices.data(), result.reds.data(),
           result.greens.data(), result.blues.data());
  return result;
}

Quantised quantised(const std::vector<Rgb> &colours) {
  return quantised(pixels_of(colours), colours.size());
}

Quantised by_the_model(const Bytes &rgb, LiteralQuantiserReport *report = nullptr,
                       bool refuse_nodes = false) {
  Quantised result;
  result.indices.resize(rgb.size() / 3);
  const LiteralQuantiserReport seen =
      literal_quantise(rgb.data(), rgb.size() / 3, 1, result.indices.data(), result.reds.data(),
                       result.greens.data(), result.blues.data(), refuse_nodes);
  if (report != nullptr) *report = seen;
  return result;
}

size_t merges_of(const std::vector<Rgb> &colours) {
  LiteralQuantiserReport report = {};
  by_the_model(pixels_of(colours), &report);
  return report.merges;
}

std::vector<Rgb> greys() {
  std::vector<Rgb> colours;
  for (int i = 0; i < 256; ++i)
    colours.push_back({i, i, i});
  return colours;
}

// ---- what the tree does, on paper

TEST(Quantiser, KeepsEveryColourOfAPictureWith256) {
  RandomNumbers random(1);
  std::vector<Rgb> colours;
  for (const uint32_t word : make_palette(5)) {
    const auto w = static_cast<int>(word);
    colours.push_back({w >> 16, w >> 8 & 255, w & 255});
  }
  for (size_t i = 0; i < 2000; ++i)
    colours.push_back(colours[random.below(256)]);
  const Quantised result = quantised(colours);
  for (size_t i = 0; i < colours.size(); ++i)
    ASSERT_EQ(result.colour_of(i), colours[i]) << i;
  EXPECT_EQ(std::set<uint8_t>(result.indices.begin(), result.indices.end()).size(), 256U);
}

TEST(Quantiser, GivesASingleColourEntry0AndLeavesTheOtherEntriesAlone) {
  const Quantised result = quantised(std::vector<Rgb>(35, {12, 200, 77}));
  EXPECT_EQ(result.indices, Bytes(35, 0));
  EXPECT_EQ(result.colour_of(0), (Rgb{12, 200, 77}));
  EXPECT_EQ(std::count(result.reds.begin() + 1, result.reds.end(), untouched), 255);
  EXPECT_EQ(std::count(result.greens.begin() + 1, result.greens.end(), untouched), 255);
  EXPECT_EQ(std::count(result.blues.begin() + 1, result.blues.end(), untouched), 255);
}

TEST(Quantiser, OrdersThePaletteByTheBitsOfRedGreenAndBlueFromTheHighest) {
  // Child numbers on the first level: 0, 1 (blue), 2 (green), 4 (red), 7 (all).
  const std::vector<Rgb> colours = {{255, 255, 255}, {200, 0, 0}, {0, 200, 0},
                                    {0, 0, 200},     {0, 0, 0},   {0, 0, 1}};
  EXPECT_EQ(quantised(colours).indices, (Bytes{5, 4, 3, 2, 0, 1}));
}

TEST(Quantiser, MergesTheTwoGreysThatCameLastWhenRedCameFirst) {
  // Grey 255 is colour 257: the node made last on level 7 holds greys 254 and 255.
  std::vector<Rgb> colours = greys();
  colours.insert(colours.begin(), {255, 0, 0});
  const Quantised result = quantised(colours);
  EXPECT_EQ(merges_of(colours), 1U);
  for (size_t i = 0; i <= 255; ++i)
    EXPECT_EQ(result.colour_of(i), colours[i]) << i;
  EXPECT_EQ(result.colour_of(256), (Rgb{254, 254, 254}));  // the mean of both, rounded down
}

TEST(Quantiser, GoesOnMergingWhereANodeWithOneChildWinsNoLeaf) {
  // Red is colour 257 and alone in the node made last; the next one holds greys 254 and 255.
  std::vector<Rgb> colours = greys();
  colours.push_back({255, 0, 0});
  const Quantised result = quantised(colours);
  EXPECT_EQ(merges_of(colours), 2U);
  for (size_t i = 0; i < 255; ++i)
    EXPECT_EQ(result.colour_of(i), colours[i]) << i;
  EXPECT_EQ(result.colour_of(255), (Rgb{254, 254, 254}));
  EXPECT_EQ(result.colour_of(256), (Rgb{255, 0, 0}));
}

TEST(Quantiser, WeighsMergedColoursByTheirPixels) {
  // Even samples only, so each node of level 7 has one child and wins nothing when it merges. Then
  // it is the turn of level 6, whose node made last but for white's holds the last 2 x 2 x 2.
  std::vector<Rgb> colours;
  for (int r = 0; r <= 2; r += 2)
    for (int g = 0; g <= 30; g += 2)
      for (int b = 0; b <= 14; b += 2)
        colours.push_back({r, g, b});
  ASSERT_EQ(colours.size(), 256U);
  colours.insert(colours.end(), 50, {0, 28, 12});
  colours.push_back({255, 255, 255});
  EXPECT_EQ(merges_of(colours), 257U + 2U);
  const Quantised result = quantised(colours);
  // 58 pixels, of which four have red 2, four green 30 and four blue 14. Without weights the means
  // would be 1, 29 and 13.
  EXPECT_EQ(result.colour_of(255), (Rgb{0, 28, 12}));
  EXPECT_EQ(result.colour_of(0), (Rgb{0, 0, 0}));
  EXPECT_EQ(result.colour_of(colours.size() - 1), (Rgb{255, 255, 255}));
}

TEST(Quantiser, NeedsManyMergesForScatteredColoursAndFewForAPlane) {
  std::vector<Rgb> plane;
  for (int i = 0; i < 257; ++i)
    plane.push_back({i % 256, i / 256, 0});
  // Colour 257 is (0, 1, 0): its node is the oldest of all 128, and those made after it hold two
  // colours each, so one merge is enough.
  EXPECT_EQ(merges_of(plane), 1U);
  EXPECT_EQ(quantised(plane), by_the_model(pixels_of(plane)));

  RandomNumbers random(2);
  std::vector<Rgb> scattered;
  for (int i = 0; i < 257; ++i)
    scattered.push_back({random.between(0, 255), random.between(0, 255), random.between(0, 255)});
  EXPECT_GT(merges_of(scattered), 257U);  // hardly a node of level 7 has two children
  EXPECT_EQ(quantised(scattered), by_the_model(pixels_of(scattered)));
}

TEST(Quantiser, SumsMorePixelsThan32BitsHold) {
  // 255 times 4105 * 4105 is more than 2^32.
  const size_t side = 4105;
  Bytes rgb(3 * side * side, 255);
  Bytes entries(3 * 256, untouched);
  quantise(rgb.data(), side, side, rgb.data(), &entries[0], &entries[256], &entries[512]);
  EXPECT_EQ(entries[0], 255);
  EXPECT_EQ(entries[256], 255);
  EXPECT_EQ(entries[512], 255);
  EXPECT_EQ(std::count(rgb.begin(), rgb.begin() + static_cast<ptrdiff_t>(side * side), 0),
            static_cast<ptrdiff_t>(side * side));
}

TEST(Quantiser, WritesTheIndicesOverThePictureItselfIfAsked) {
  const DrawnPicture picture = photo_picture(150, 90, 3);
  Bytes rgb = picture.rgb;
  Quantised in_place;
  quantise(rgb.data(), 150, 90, rgb.data(), in_place.reds.data(), in_place.greens.data(),
           in_place.blues.data());
  in_place.indices.assign(rgb.begin(), rgb.begin() + 150 * 90);
  EXPECT_EQ(in_place, by_the_model(picture.rgb));
}

TEST(Quantiser, TouchesNothingForAPictureWithoutPixels) {
  Quantised result;
  const FailingMemory memory;
  quantise(nullptr, 0, 5, nullptr, result.reds.data(), result.greens.data(), result.blues.data());
  EXPECT_EQ(result, Quantised());
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST(Quantiser, GivesIndex0EverywhereAndNoEntriesWithoutMemory) {
  const DrawnPicture picture = photo_picture(40, 30, 4);
  for (size_t n = 1;; ++n) {
    const FailingMemory memory(n);
    const Quantised result = quantised(picture.rgb, 40);
    EXPECT_EQ(memory.live_blocks(), 0U);
    if (!memory.failed()) break;
    EXPECT_EQ(result, by_the_model(picture.rgb, nullptr, true)) << n;
    EXPECT_EQ(result.indices, Bytes(40 * 30, 0)) << n;
    EXPECT_EQ(result.reds, Bytes(256, untouched)) << n;
  }
}

TEST(Quantiser, NeedsNoMoreMemoryForALargePicture) {
  const auto peak = [](int32_t width, int32_t height) {
    const DrawnPicture picture = photo_picture(width, height, 5);
    const FailingMemory memory;
    quantised(picture.rgb, static_cast<size_t>(width));
    return memory.peak_bytes();
  };
  EXPECT_EQ(peak(1, 1), peak(500, 400));
  EXPECT_LT(peak(500, 400), 680000U);
}

// A sum of 32 bits holds 16.8 million pixels of 255; here are more, in runs too short to be taken
// at once.
TEST(Quantiser, SumsUpMorePixelsThanFitIn32Bits) {
  constexpr size_t width = 6000;
  constexpr size_t height = 4300;  // 25.8 million pixels, two thirds of one colour
  const std::array<uint8_t, 9> pattern = {255, 254, 253, 255, 254, 253, 10, 20, 30};
  Bytes rgb(3 * width * height);
  for (size_t i = 0; i < rgb.size(); ++i)
    rgb[i] = pattern[i % pattern.size()];
  Quantised result;
  quantise(rgb.data(), width, height, rgb.data(), result.reds.data(), result.greens.data(),
           result.blues.data());
  result.indices.assign(rgb.begin(), rgb.begin() + 3);
  EXPECT_EQ(result.colour_of(0), (Rgb{255, 254, 253}));
  EXPECT_EQ(result.colour_of(1), (Rgb{255, 254, 253}));
  EXPECT_EQ(result.colour_of(2), (Rgb{10, 20, 30}));
}

// ---- against the model

class RandomPicture {
 public:
  explicit RandomPicture(uint32_t seed) : random_(seed) {}

  Bytes make() {
    const size_t count = 1 + below(below(10) == 0 ? 8000 : 1500);
    const uint32_t kind = below(7);
    const uint32_t spread = 1 + below(256);
    Bytes rgb;
    Rgb colour = {pick(256), pick(256), pick(256)};
    for (size_t i = 0; i < count; ++i) {
      step(kind, spread, i, &colour);
      for (const int sample : colour)
        rgb.push_back(static_cast<uint8_t>(sample));
    }
    return rgb;
  }

 private:
  uint32_t below(uint32_t limit) { return random_.below(limit); }
  int pick(uint32_t limit) { return static_cast<int>(below(limit)); }

  void step(uint32_t kind, uint32_t spread, size_t i, Rgb *colour) {
    Rgb &c = *colour;
    const int n = static_cast<int>(i);
    switch (kind) {
      case 0:  // greys, every one of them sooner or later
        c.fill(pick(spread));
        break;
      case 1:  // a gradient
        c = {n % 256, n / 4 % 256, (n + n / 256) % 256};
        break;
      case 2:  // about as many colours as there are leaves
        c = {pick(257), 0, pick(2) * pick(3)};
        c[0] = std::min(c[0], 255);
        break;
      case 3:  // noise
        c = {pick(256), pick(256), pick(256)};
        break;
      case 4:  // runs, as in a plot
        if (below(9) == 0) c = {pick(4) * 85, pick(8) * 36, pick(spread)};
        break;
      case 5:  // a walk
        for (int &sample : c)
          sample = std::clamp(sample + pick(5) - 2, 0, 255);
        break;
      default:  // a dark corner of the cube and now and then a bright pixel
        c = {pick(16), pick(16), pick(16)};
        if (below(40) == 0) c = {255 - pick(16), pick(256), 128};
    }
  }

  RandomNumbers random_;
};

TEST(Quantiser, AgreesWithItsModelOnThousandsOfPictures) {
  for (uint32_t seed = 0; seed < 6000; ++seed) {
    const Bytes rgb = RandomPicture(seed).make();
    ASSERT_EQ(quantised(rgb, rgb.size() / 3), by_the_model(rgb)) << "picture " << seed;
  }
}

TEST(Quantiser, AgreesWithItsModelOnPlotsAndPhotographs) {
  for (uint32_t seed = 0; seed < 6; ++seed) {
    const Bytes photo = photo_picture(400, 300, seed).rgb;
    EXPECT_EQ(quantised(photo, 400), by_the_model(photo)) << seed;
    const Bytes plot = plot_picture(400, 300, seed).rgb;
    EXPECT_EQ(quantised(plot, 400), by_the_model(plot)) << seed;
  }
}

}  // namespace
}  // namespace quorix::testing
