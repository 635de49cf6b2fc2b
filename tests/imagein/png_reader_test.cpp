// SPDX-License-Identifier: MIT
//
// What PNG files give: every form, transparency, backgrounds, filters.
#include "tests/imagein/png_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class PngReader : public ReaderTest {};

struct Form {
  uint32_t type;
  uint32_t depth;
};
constexpr Form forms[] = {{0, 1}, {0, 2}, {0, 4}, {0, 8}, {0, 16}, {2, 8}, {2, 16}, {3, 1},
                          {3, 2}, {3, 4}, {3, 8}, {4, 8}, {4, 16}, {6, 8}, {6, 16}};

std::string name_of_form(const PngPicture &picture) {
  return "type " + std::to_string(picture.type) + ", depth " + std::to_string(picture.depth) +
         (picture.interlaced ? ", interlaced " : ", ") + std::to_string(picture.width) + " by " +
         std::to_string(picture.height);
}

// By hand with each row's filter another, and by libpng with data in small pieces.
void check_png(const PngPicture &picture) {
  const ExpectedPicture expected = expect_png(picture);
  check_reader(Format::png, png_file(picture, filters_in_turn, 33), expected,
               name_of_form(picture) + ", by hand");
#ifdef QUORIX_TEST_WITH_LIBPNG
  if (picture.palette.size() > (size_t{3} << picture.depth)) return;
  check_reader(Format::png, png_by_libpng(picture, 5, 64), expected,
               name_of_form(picture) + ", by libpng");
#endif
}

PngPicture pixel_of(uint32_t type, uint32_t depth, const std::vector<uint32_t> &samples) {
  PngPicture picture;
  picture.type = type;
  picture.depth = depth;
  picture.width = static_cast<int32_t>(samples.size() / png_channels(type));
  picture.height = 1;
  picture.samples = samples;
  return picture;
}

Bytes stored_row(const PngPicture &picture, int32_t status = 0) {
  EXPECT_EQ(read_picture(Format::png, png_file(picture), store_number), status);
  const Bytes row = picture_row(0, 0, picture.width);
  release_picture();
  return row;
}

TEST_F(PngReader, ReadsEveryForm) {
  uint32_t seed = 1;
  for (const Form &form : forms) {
    for (const int32_t width : {1, 3, 8, 13})
      check_png(random_png(form.type, form.depth, width, 5, ++seed));
  }
}

TEST_F(PngReader, ReadsEveryFormInterlaced) {
  uint32_t seed = 100;
  for (const Form &form : forms) {
    for (const int32_t size : {1, 2, 3, 5, 9, 17}) {
      PngPicture picture = random_png(form.type, form.depth, size, 18 - size, ++seed);
      picture.interlaced = true;
      check_png(picture);
    }
  }
}

TEST_F(PngReader, ReadsInterlacedPicturesTooSmallForSomePasses) {
  for (int32_t width = 1; width <= 5; ++width) {
    for (int32_t height = 1; height <= 5; ++height) {
      PngPicture picture = random_png(2, 8, width, height, 7);
      picture.interlaced = true;
      check_png(picture);
    }
  }
}

TEST_F(PngReader, BringsGreysOfFewBitsToTheWholeScale) {
  EXPECT_EQ(stored_row(pixel_of(0, 1, {0, 1})), (Bytes{0, 0, 0, 255, 255, 255}));
  EXPECT_EQ(stored_row(pixel_of(0, 2, {1, 2})), (Bytes{85, 85, 85, 170, 170, 170}));
  EXPECT_EQ(stored_row(pixel_of(0, 4, {1, 14})), (Bytes{17, 17, 17, 238, 238, 238}));
  EXPECT_EQ(stored_row(pixel_of(0, 16, {0x12FF})), (Bytes{0x12, 0x12, 0x12}));
  EXPECT_EQ(stored_row(pixel_of(2, 16, {0x12FF, 0x3480, 0x56FF})), (Bytes{0x12, 0x34, 0x56}));
}

TEST_F(PngReader, GivesNamedGreysAndColoursAlpha0) {
  for (const uint32_t depth : {2U, 4U, 8U, 16U}) {
    PngPicture picture = random_png(0, depth, 14, 6, depth);
    const uint32_t named = picture.samples[5];
    picture.transparency = {static_cast<uint8_t>(named >> 8), static_cast<uint8_t>(named & 255)};
    check_png(picture);
    picture.interlaced = true;
    check_png(picture);
  }
  for (const uint32_t depth : {8U, 16U}) {
    PngPicture picture = random_png(2, depth, 14, 6, depth + 50);
    for (size_t i = 0; i < 3 * 14; i += 6)  // the named colour, and some that differ in one sample
      for (size_t channel = 0; channel < 3; ++channel)
        picture.samples[i + channel] = 200 + (channel == i / 6 % 5 ? 1U : 0U);
    for (size_t i = 0; i < 3; ++i)
      put_big(&picture.transparency, 200, 2);
    check_png(picture);
    picture.interlaced = true;
    check_png(picture);
  }
}

TEST_F(PngReader, ComparesBothBytesOfANamedSampleOf16Bits) {
  PngPicture picture = pixel_of(0, 16, {0x1234, 0x1235, 0x1134, 0x1234});
  picture.transparency = {0x12, 0x34};
  const ExpectedPicture expected = expect_png(picture);
  EXPECT_EQ(expected.rows[0].alpha, (Bytes{0, 255, 255, 0}));
  check_png(picture);
}

TEST_F(PngReader, ComparesOnlyTheLowByteOfANamedSampleOfUpTo8Bits) {
  struct Case {
    uint32_t depth;
    std::vector<uint32_t> samples;
    Bytes named, alpha;
  };
  const Case cases[] = {
      {2, {0, 1, 2, 3}, {0x01, 2}, {255, 255, 0, 255}},
      {4, {5, 6, 15, 5}, {0xFF, 5}, {0, 255, 255, 0}},
      {8, {5, 1, 0, 255}, {0x01, 5}, {0, 255, 255, 255}},
      {8, {5, 1, 0, 255}, {0x05, 1}, {255, 0, 255, 255}},
  };
  for (const Case &grey : cases) {
    PngPicture picture = pixel_of(0, grey.depth, grey.samples);
    picture.transparency = grey.named;
    const ExpectedPicture expected = expect_png(picture);
    EXPECT_EQ(expected.rows[0].alpha, grey.alpha) << grey.depth << " bits";
    check_reader(Format::png, png_file(picture), expected, name_of_form(picture));
  }
  PngPicture colour = pixel_of(2, 8, {1, 2, 3, 1, 2, 4});
  colour.transparency = {9, 1, 8, 2, 7, 3};
  const ExpectedPicture expected = expect_png(colour);
  EXPECT_EQ(expected.rows[0].alpha, (Bytes{0, 255}));
  check_reader(Format::png, png_file(colour), expected, name_of_form(colour));
}

TEST_F(PngReader, TakesAlphaOfAPaletteAsFarAsThereIsAny) {
  for (const uint32_t depth : {2U, 4U, 8U}) {
    PngPicture picture = random_png(3, depth, 15, 6, depth);
    picture.transparency = {0, 128, 255};
    check_png(picture);
    picture.interlaced = true;
    check_png(picture);
  }
}

TEST_F(PngReader, GivesAlphaToHalfThePixelsOfABitAPiece) {
  for (const int32_t width : {1, 3, 4, 5, 8, 9, 16, 17, 25}) {
    PngPicture grey = random_png(0, 1, width, 4, static_cast<uint32_t>(width));
    grey.transparency = {0, 1};
    check_png(grey);
    PngPicture palette = random_png(3, 1, width, 4, static_cast<uint32_t>(width));
    palette.transparency = {40};
    check_png(palette);
  }
  // 16 pixels of grey are 2 bytes, so colours start at pixel 8, which leaves room for one byte.
  PngPicture picture = pixel_of(0, 1, {1, 0, 1, 1, 0, 0, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1});
  picture.transparency = {0, 0};
  Bytes expected(24, 0);
  for (const uint32_t bit : {1U, 0U, 1U, 1U, 0U, 0U, 1U, 0U})
    put_bytes(&expected, Bytes(3, bit != 0 ? 255 : 0));
  EXPECT_EQ(stored_row(picture), expected);
}

TEST_F(PngReader, BlendsAlphaOfTheFileWithItsBackground) {
  for (const uint32_t depth : {8U, 16U}) {
    PngPicture grey = random_png(4, depth, 12, 5, depth);
    // libpng writes no high byte that the depth does not reach.
    const auto high = [&](uint8_t byte) { return depth == 16 ? byte : uint8_t{0}; };
    grey.background = {high(100), 30};
    check_png(grey);
    grey.interlaced = true;
    check_png(grey);
    PngPicture colour = random_png(6, depth, 12, 5, depth + 1);
    colour.background = {high(10), 20, high(30), 40, high(50), 60};
    check_png(colour);
    colour.interlaced = true;
    check_png(colour);
  }
  // 200 x 128/255 + 40 x 127/255 + 0.5 = 120.8...: 120; the low bytes count for 8 bits.
  PngPicture picture = pixel_of(6, 8, {200, 200, 200, 128});
  picture.background = {99, 40, 99, 40, 99, 40};
  EXPECT_EQ(stored_row(picture), (Bytes{120, 120, 120}));
}

TEST_F(PngReader, DropsTransparencyOfAFileWithABackground) {
  // Neither blended nor transparent: the samples as they are.
  PngPicture colour = random_png(2, 8, 12, 5, 3);
  for (size_t i = 0; i < 6; ++i)
    colour.samples[i] = 255;
  colour.transparency = {0, 255, 0, 255, 0, 255};
  colour.background = {0, 9, 0, 9, 0, 9};
  check_png(colour);
  PngPicture palette = random_png(3, 8, 12, 5, 4);
  palette.transparency = {0, 1, 2};
  palette.background = {7};
  check_png(palette);
  PngPicture grey = random_png(0, 4, 12, 5, 4);
  grey.transparency = {0, 3};
  grey.background = {0, 7};
  check_png(grey);
  for (const PngPicture &picture : {colour, palette, grey})
    EXPECT_TRUE(expect_png(picture).rows[0].alpha.empty());
}

TEST_F(PngReader, WarnsOfIndicesPastThePaletteAndTakesEntry0) {
  for (const bool interlaced : {false, true}) {
    for (const uint32_t depth : {1U, 2U, 4U, 8U}) {
      PngPicture picture = random_png(3, depth, 11, 6, depth);
      picture.interlaced = interlaced;
      picture.palette.resize(depth == 1 ? 3 : 9);
      picture.samples[7] = (1U << depth) - 1;
      EXPECT_EQ(expect_png(picture).status, -5);
      check_reader(Format::png, png_file(picture), expect_png(picture), name_of_form(picture));
      if (depth == 1) continue;
      picture.transparency = {90, 80};  // then alpha is that of entry 0 too
      check_reader(Format::png, png_file(picture), expect_png(picture), name_of_form(picture));
    }
  }
  PngPicture picture = pixel_of(3, 8, {0, 1, 2, 255});
  picture.palette = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(stored_row(picture, -5), (Bytes{1, 2, 3, 4, 5, 6, 1, 2, 3, 1, 2, 3}));
}

TEST_F(PngReader, GivesBlackWithAWarningWithoutAnyPalette) {
  for (const size_t bytes : {0U, 1U, 2U}) {
    PngPicture picture = pixel_of(3, 8, {0, 5});
    picture.palette = Bytes(bytes, 99);
    EXPECT_EQ(stored_row(picture, -5), Bytes(6, 0)) << bytes;
  }
}

TEST_F(PngReader, UndoesEveryFilterOfEveryPixelSize) {
  for (const Form &form : forms) {
    for (int filter = 0; filter <= 4; ++filter) {
      const PngPicture picture = random_png(form.type, form.depth, 37, 4, 60);
      check_reader(Format::png, png_file(picture, filter), expect_png(picture),
                   name_of_form(picture) + ", filter " + std::to_string(filter));
    }
  }
}

TEST_F(PngReader, ChoosesThePaethNeighbourByTheStandardsTies) {
  // Rows 10 20 / filter 4 with 1, 1: left 0, above 10, corner 0: 10 + 1; then left 11, above 20,
  // corner 10: 21 is nearest to above, so 20 + 1.
  PngPicture picture = pixel_of(0, 8, {0, 0, 0, 0});
  picture.width = 2;
  picture.height = 2;
  const Bytes file = png_with_data(picture, zlib_stream({0, 10, 20, 4, 1, 1}));
  ASSERT_EQ(read_picture(Format::png, file, store_number), 0);
  EXPECT_EQ(picture_row(0, 1, 2), (Bytes{11, 11, 11, 21, 21, 21}));
}

TEST_F(PngReader, TakesAnUnknownFilterForNone) {
  PngPicture picture = pixel_of(0, 8, {0, 0, 0, 0});
  picture.width = 2;
  picture.height = 2;
  for (const uint8_t filter : Bytes{5, 99, 255}) {
    const Bytes file = png_with_data(picture, zlib_stream({filter, 10, 20, filter, 30, 40}));
    ASSERT_EQ(read_picture(Format::png, file, store_number), 0);
    EXPECT_EQ(picture_row(0, 0, 2), (Bytes{10, 10, 10, 20, 20, 20}));
    EXPECT_EQ(picture_row(0, 1, 2), (Bytes{30, 30, 30, 40, 40, 40}));
  }
}

TEST_F(PngReader, NeedsAFile) {
  EXPECT_EQ(read_named(Format::png, "no such file.png", store_number), -1);
  EXPECT_TRUE(nothing_is_held());
}

}  // namespace
}  // namespace quorix::testing
