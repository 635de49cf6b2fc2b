// SPDX-License-Identifier: MIT
//
// Pictures of all forms and awkward sizes through qqppng, decoded and compared pixel by pixel with
// what was drawn.
#include <gtest/gtest.h>
#include <zlib.h>

#include <string>
#include <tuple>

#include "imageout/imageout.h"
#include "quorix/raster.h"
#include "tests/imageout/literal_quantiser.h"
#include "tests/imageout/random_numbers.h"
#include "tests/imageout/writer_calls.h"

namespace quorix::testing {
namespace {

// A picture on a device, and the area of it that is written.
struct Scene {
  const DrawnPicture *picture;
  int32_t x, y, width, height;
};

// What a decoder has to find.
struct ExpectedPng {
  int colour_type;
  Bytes palette, transparency, samples;
};

Bytes triples_of(const PaletteWords &words) {
  Bytes triples;
  for (const uint32_t word : words)
    for (const int shift : {16, 8, 0})
      triples.push_back(static_cast<uint8_t>(word >> shift & 255));
  return triples;
}

// The palette and the indices that the model of the quantiser finds.
void quantise_expected(const Bytes &rgb, ExpectedPng *expected) {
  expected->samples.resize(rgb.size() / 3);
  Bytes reds(256, 0), greens(256, 0), blues(256, 0);
  literal_quantise(rgb.data(), rgb.size() / 3, 1, expected->samples.data(), reds.data(),
                   greens.data(), blues.data());
  for (size_t i = 0; i < 256; ++i)
    for (const uint8_t sample : {reds[i], greens[i], blues[i]})
      expected->palette.push_back(sample);
}

ExpectedPng expect_png(const Scene &scene, PixelPath path, bool transparent,
                       const PaletteWords &words) {
  ExpectedPng expected = {path == PixelPath::true_colour ? 2 : 3, {}, {}, {}};
  if (transparent)
    expected.transparency =
        path == PixelPath::true_colour ? Bytes{0, 255, 0, 255, 0, 255} : Bytes{0};
  if (path == PixelPath::indexed) {
    expected.palette = triples_of(words);
    expected.samples = scene.picture->index_area(scene.x, scene.y, scene.width, scene.height);
    return expected;
  }
  const Bytes rgb = scene.picture->rgb_area(scene.x, scene.y, scene.width, scene.height);
  if (path == PixelPath::true_colour) {
    expected.samples = rgb;
  } else {
    quantise_expected(rgb, &expected);
  }
  return expected;
}

void expect_decoded(const PngPicture &decoded, const Scene &scene, const ExpectedPng &expected) {
  ASSERT_EQ(decoded.problem, "");
  EXPECT_EQ(decoded.width, static_cast<uint32_t>(scene.width));
  EXPECT_EQ(decoded.height, static_cast<uint32_t>(scene.height));
  EXPECT_EQ(decoded.bit_depth, 8);
  EXPECT_EQ(decoded.colour_type, expected.colour_type);
  EXPECT_EQ(decoded.compression, 0);
  EXPECT_EQ(decoded.filter, 0);
  EXPECT_EQ(decoded.interlace, 0);
  EXPECT_TRUE(decoded.palette == expected.palette);
  EXPECT_EQ(decoded.transparency, expected.transparency);
  EXPECT_TRUE(decoded.samples == expected.samples);
}

void expect_picture(const Bytes &stream, const Scene &scene, const ExpectedPng &expected) {
  expect_decoded(decode_png(stream), scene, expected);
#ifdef QUORIX_TEST_WITH_LIBPNG
  expect_decoded(decode_with_libpng(stream), scene, expected);
#endif
}

PngCall call_for(const Scene &scene, PixelPath path, bool transparent, const PaletteWords &words) {
  PngCall call;
  call.device = path == PixelPath::true_colour ? -raster_number : raster_number;
  call.width = transparent ? -scene.width : scene.width;
  call.height = path == PixelPath::quantised ? -scene.height : scene.height;
  call.palette = words.data();
  return call;
}

// The stream that one call of the compressor makes of all rows at once.
Bytes compressed_in_one_go(const Bytes &filtered) {
  z_stream stream = {};
  EXPECT_EQ(deflateInit(&stream, Z_DEFAULT_COMPRESSION), Z_OK);
  Bytes result(filtered.size() + filtered.size() / 100 + 13);
  stream.next_in = const_cast<uint8_t *>(filtered.data());
  stream.avail_in = static_cast<uInt>(filtered.size());
  stream.next_out = result.data();
  stream.avail_out = static_cast<uInt>(result.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  result.resize(stream.total_out);
  deflateEnd(&stream);
  return result;
}

const PngChunk *chunk_of(const PngPicture &picture, const std::string &type) {
  for (const PngChunk &chunk : picture.chunks)
    if (chunk.type == type) return &chunk;
  return nullptr;
}

// ---- every form in every size

using Size = std::pair<int32_t, int32_t>;
using Form = std::tuple<Size, bool, PixelPath>;

class PngForms : public ::testing::TestWithParam<Form> {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }
};

// An RGBA raster that is asked for indices needs colours of its own palette.
DrawnPicture picture_for(const Size &size, bool rgba, PixelPath path) {
  if (rgba && path != PixelPath::indexed) return photo_picture(size.first, size.second, 1);
  return plot_picture(size.first, size.second, 1);
}

void check_scene(const Scene &scene, PixelPath path, bool transparent) {
  const PaletteWords words = make_palette(9);  // the caller's, not the device's
  const PngCall call = call_for(scene, path, transparent, words);
  const Bytes stream = png_bytes(call);
  expect_picture(stream, scene, expect_png(scene, path, transparent, words));

  Bytes memory(stream.size(), 0);
  const auto size = static_cast<int32_t>(stream.size());
  EXPECT_EQ(write_png_to_memory(call, nullptr, 0), size);
  EXPECT_EQ(write_png_to_memory(call, &memory, size), size);
  EXPECT_TRUE(memory == stream);
}

TEST_P(PngForms, AreDecodedAsDrawn) {
  const auto &[size, rgba, path] = GetParam();
  const DrawnPicture picture = picture_for(size, rgba, path);
  show_on_raster(picture, rgba);
  for (const bool transparent : {false, true}) {
    check_scene({&picture, 0, 0, size.first, size.second}, path, transparent);
    const int32_t x = size.first / 3;
    const int32_t y = size.second / 4;
    const Scene clipped = {&picture, x, y, size.first - x, size.second - y};
    set_clip(clipped.x, clipped.y, clipped.width, clipped.height);
    check_scene(clipped, path, transparent);
    end_clip();
  }
}

TEST_P(PngForms, AreCompressedAsByOneCallOfTheCompressor) {
  const auto &[size, rgba, path] = GetParam();
  const DrawnPicture picture = picture_for(size, rgba, path);
  show_on_raster(picture, rgba);
  const Scene scene = {&picture, 0, 0, size.first, size.second};
  const PaletteWords words = make_palette(9);
  const PngPicture decoded = decode_png(png_bytes(call_for(scene, path, false, words)));
  ASSERT_EQ(decoded.problem, "");
  EXPECT_TRUE(chunk_of(decoded, "IDAT")->data == compressed_in_one_go(decoded.filtered));
}

std::string form_name(const ::testing::TestParamInfo<Form> &info) {
  const auto &[size, rgba, path] = info.param;
  const char *const paths[] = {"TrueColour", "Indexed", "Quantised"};
  return std::to_string(size.first) + "x" + std::to_string(size.second) +
         (rgba ? "FromRgba" : "FromPalette") + paths[static_cast<size_t>(path)];
}

INSTANTIATE_TEST_SUITE_P(
    AllSizes, PngForms,
    ::testing::Combine(::testing::Values(Size{1, 1}, Size{1, 7}, Size{7, 1}, Size{15, 15},
                                         Size{16, 15}, Size{301, 301}, Size{1920, 1080}),
                       ::testing::Bool(),
                       ::testing::Values(PixelPath::true_colour, PixelPath::indexed,
                                         PixelPath::quantised)),
    form_name);

// ---- single cases

class PngPictures : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }

  const PaletteWords words_ = make_palette(9);
};

TEST_F(PngPictures, ShowAWindowThroughItsDevice) {
  const DrawnPicture picture = plot_picture(33, 21, 2);
  show_on_raster(plot_picture(5, 5, 1), true);
  const FakeWindow window(picture);
  const Scene scene = {&picture, 0, 0, 33, 21};
  for (const PixelPath path : {PixelPath::true_colour, PixelPath::indexed, PixelPath::quantised}) {
    PngCall call = call_for(scene, path, false, words_);
    call.device = call.device < 0 ? -window_number : window_number;
    expect_picture(png_bytes(call), scene, expect_png(scene, path, false, words_));
  }
}

TEST_F(PngPictures, AreZeroBeyondThePage) {
  const DrawnPicture picture = plot_picture(20, 10, 3);
  for (const bool rgba : {false, true}) {
    show_on_raster(picture, rgba);
    for (const auto &[x, y] : {std::pair{-5, -4}, std::pair{15, 7}, std::pair{INT32_MIN, 0},
                               std::pair{INT32_MAX - 3, INT32_MAX - 3}}) {
      const Scene scene = {&picture, x, y, 12, 9};
      set_clip(x, y, 12, 9);
      for (const PixelPath path :
           {PixelPath::true_colour, PixelPath::indexed, PixelPath::quantised})
        expect_picture(png_bytes(call_for(scene, path, false, words_)), scene,
                       expect_png(scene, path, false, words_));
    }
  }
}

TEST_F(PngPictures, AreBlackOnceTheRasterIsGone) {
  show_on_raster(plot_picture(20, 10, 4), true);
  qqvfin();
  const PngPicture decoded = decode_png(png_bytes({-raster_number, 1, 20, 10, nullptr, 0}));
  ASSERT_EQ(decoded.problem, "");
  EXPECT_EQ(decoded.samples, Bytes(600, 0));
}

TEST_F(PngPictures, KeepTheFlagsOfTheSizesUnderAClip) {
  const DrawnPicture picture = photo_picture(30, 20, 5);
  show_on_raster(picture, true);
  set_clip(4, 5, 11, 6);
  const Scene scene = {&picture, 4, 5, 11, 6};
  PngCall call = {raster_number, 1, -1, -1, words_.data(), 256};
  expect_picture(png_bytes(call), scene, expect_png(scene, PixelPath::quantised, true, words_));
  call.device = -raster_number;
  expect_picture(png_bytes(call), scene, expect_png(scene, PixelPath::true_colour, true, words_));
}

TEST_F(PngPictures, HaveAPaletteOf768BytesWhenQuantised) {
  const DrawnPicture picture = photo_picture(120, 100, 6);
  show_on_raster(picture, true);
  const PngPicture decoded = decode_png(png_bytes({raster_number, 1, 120, -100, nullptr, 256}));
  ASSERT_EQ(decoded.problem, "");
  EXPECT_EQ(decoded.palette.size(), 768U);
  // Near enough to what was drawn to be the same picture: 256 colours for some thousands.
  const Bytes rgb = rgb_of(decoded);
  int64_t difference = 0;
  for (size_t i = 0; i < rgb.size(); ++i)
    difference += std::abs(rgb[i] - picture.rgb[i]);
  EXPECT_LT(difference / static_cast<int64_t>(rgb.size()), 16);
}

TEST_F(PngPictures, AgreeWithTheDrawingForRandomCalls) {
  RandomNumbers random(7);
  for (int i = 0; i < 1500; ++i) {
    const auto path = static_cast<PixelPath>(random.below(3));
    const bool rgba = random.below(2) == 0;
    const DrawnPicture picture =
        picture_for({random.between(1, 40), random.between(1, 30)}, rgba, path);
    show_on_raster(picture, rgba);
    const Scene scene = {&picture, random.between(-20, 45), random.between(-20, 35),
                         random.between(1, 45), random.between(1, 35)};
    set_clip(scene.x, scene.y, scene.width, scene.height);
    const bool transparent = random.below(2) == 0;
    expect_picture(png_bytes(call_for(scene, path, transparent, words_)), scene,
                   expect_png(scene, path, transparent, words_));
    ASSERT_FALSE(::testing::Test::HasFailure()) << "call " << i;
  }
}

}  // namespace
}  // namespace quorix::testing
