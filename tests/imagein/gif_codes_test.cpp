// SPDX-License-Identifier: MIT
//
// The code streams of GIF files: sizes of codes, full tables, blocks, and streams with mistakes.
#include "tests/imagein/gif_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class GifCodes : public ReaderTest {};

GifFile grey_file(int32_t width, int32_t height, uint32_t minimum) {
  GifFile parts;
  parts.screen_width = parts.width = width;
  parts.screen_height = parts.height = height;
  parts.minimum = minimum;
  for (uint32_t i = 0; i < 256; ++i)
    put_bytes(&parts.global_table, Bytes(3, static_cast<uint8_t>(i)));
  return parts;
}

Bytes with_codes(GifFile parts, const std::vector<GifCode> &codes, size_t block = 255) {
  parts.blocks = gif_blocks(gif_code_bytes(codes), block);
  return gif_file(parts);
}

// A picture of greys in memory.
void check_indices(const Bytes &file, int32_t width, const Bytes &indices) {
  ASSERT_EQ(read_picture(Format::gif, file, store_number), 0);
  const auto height = static_cast<int32_t>(indices.size() / static_cast<size_t>(width));
  for (int32_t y = 0; y < height; ++y) {
    const Bytes row = picture_row(0, y, width);
    for (int32_t x = 0; x < width; ++x) {
      ASSERT_EQ(row[3 * static_cast<size_t>(x)], indices[static_cast<size_t>(y * width + x)])
          << "column " << x << ", row " << y;
    }
  }
  release_picture();
}

Bytes noise(size_t count, uint32_t bits, uint32_t seed) {
  RandomNumbers random(seed);
  Bytes indices;
  for (size_t i = 0; i < count; ++i)
    put_u8(&indices, random.below(1U << bits));
  return indices;
}

ExpectedPicture only_status(int32_t status) {
  ExpectedPicture expected;
  expected.status = status;
  return expected;
}

TEST_F(GifCodes, GrowToTwelveBitsAndStartAgain) {
  for (uint32_t minimum = 2; minimum <= 8; ++minimum) {
    const Bytes indices = noise(100 * 150, minimum, minimum);
    check_indices(gif_of(grey_file(100, 150, minimum), indices), 100, indices);
  }
}

TEST_F(GifCodes, OfAFullTableGoOnWithoutAClear) {
  for (const uint32_t minimum : {2U, 5U, 8U}) {
    const Bytes indices = noise(100 * 200, minimum, minimum + 50);
    const auto codes = gif_codes(indices, minimum, WhenFull::go_on);
    check_indices(with_codes(grey_file(100, 200, minimum), codes), 100, indices);
  }
}

TEST_F(GifCodes, StandAcrossBlocksOfAnySize) {
  const Bytes indices = noise(40 * 20, 6, 9);
  for (const size_t block : {1U, 2U, 3U, 7U, 254U, 255U})
    check_indices(gif_of(grey_file(40, 20, 6), indices, block), 40, indices);
}

TEST_F(GifCodes, RepeatWhatTheyAreJustAdding) {
  // Clear, 1, and then the entry that is only being made: 1 1, 1 1 1, and so on.
  const std::vector<GifCode> codes = {{4, 3}, {1, 3}, {6, 3}, {7, 3}, {8, 4}, {5, 4}};
  check_indices(with_codes(grey_file(10, 1, 2), codes), 10, Bytes(10, 1));
}

TEST_F(GifCodes, AboveAByteLoseTheirUpperBits) {
  for (uint32_t minimum = 9; minimum <= 11; ++minimum) {
    const uint32_t size = minimum + 1;
    const std::vector<GifCode> codes = {
        {1U << minimum, size}, {300, size}, {511, size}, {3, size}, {(1U << minimum) + 1, size}};
    check_indices(with_codes(grey_file(3, 1, minimum), codes), 3, {44, 255, 3});
  }
}

TEST_F(GifCodes, NeedAMinimumSizeFrom2To11) {
  for (const uint32_t minimum : {0U, 1U, 12U, 255U}) {
    GifFile parts = grey_file(3, 1, minimum);
    parts.blocks = gif_blocks(Bytes(20, 1));
    check_reader(Format::gif, gif_file(parts), only_status(-3), "minimum size");
  }
}

TEST_F(GifCodes, BeyondTheTableAreAnError) {
  const GifFile parts = grey_file(4, 1, 2);
  // After clear and 1 the next entry is 6, which may be named, but 7 may not.
  check_reader(Format::gif, with_codes(parts, {{4, 3}, {1, 3}, {7, 3}, {5, 3}}), only_status(-3),
               "a code past the next entry");
  for (const uint32_t code : {5U, 6U}) {
    check_reader(Format::gif, with_codes(parts, {{4, 3}, {code, 3}, {1, 3}, {5, 3}}),
                 only_status(-3), "no pixel behind a clear code");
    check_reader(Format::gif, with_codes(parts, {{4, 3}, {4, 3}, {code, 3}, {1, 3}, {5, 3}}),
                 only_status(-3), "no pixel behind two clear codes");
  }
}

TEST_F(GifCodes, MayBeClearedTwiceInARow) {
  const GifFile parts = grey_file(4, 1, 2);
  // At the start, twice and four times; 6 is the 1 1 that was just made.
  check_indices(with_codes(parts, {{4, 3}, {4, 3}, {1, 3}, {6, 3}, {2, 3}, {5, 4}}), 4,
                {1, 1, 1, 2});
  check_indices(with_codes(parts, {{4, 3}, {4, 3}, {4, 3}, {4, 3}, {1, 3}, {6, 3}, {2, 3}, {5, 4}}),
                4, {1, 1, 1, 2});
  // In the middle, where codes have grown to 4 bits: the first clear code has 4, the second 3.
  const std::vector<GifCode> codes = {{4, 3}, {1, 3}, {2, 3}, {3, 3}, {4, 4},
                                      {4, 3}, {3, 3}, {6, 3}, {5, 3}};
  check_indices(with_codes(grey_file(6, 1, 2), codes), 6, {1, 2, 3, 3, 3, 3});
}

TEST_F(GifCodes, ClearedTwiceAtAFullTableGiveWhatOneClearGives) {
  for (const uint32_t minimum : {2U, 5U, 8U}) {
    const Bytes indices = noise(100 * 200, minimum, minimum + 70);
    std::vector<GifCode> twice;
    for (const GifCode &code : gif_codes(indices, minimum)) {
      twice.push_back(code);
      if (code.code == 1U << minimum) twice.push_back({code.code, minimum + 1});
    }
    ASSERT_GT(twice.size(), gif_codes(indices, minimum).size() + 1);
    check_indices(with_codes(grey_file(100, 200, minimum), twice), 100, indices);
  }
}

TEST_F(GifCodes, OfClearsAloneAreAnError) {
  for (const size_t count : {1U, 2U, 3U, 100U}) {
    const std::vector<GifCode> codes(count, {4, 3});
    check_reader(Format::gif, with_codes(grey_file(4, 1, 2), codes), only_status(-3),
                 std::to_string(count) + " clear codes");
  }
}

TEST_F(GifCodes, WithoutAnEndCodeAreAnErrorAfterTheirRows) {
  const Bytes indices = noise(12, 2, 5);
  const GifFile parts = grey_file(4, 3, 2);
  auto codes = gif_codes(indices, 2);
  codes.pop_back();
  ExpectedPicture expected = expect_indices(parts, indices);
  expected.status = -3;
  // Filled to whole bytes with 1s, so that what is left is no code that adds a pixel.
  const Bytes file = with_codes(parts, codes);
  check_reader(Format::gif, file, expect_gif(file), "no end code");
  EXPECT_EQ(expect_gif(file).status, -3);
}

TEST_F(GifCodes, AfterTheLastRowAreReadAndDropped) {
  const GifFile parts = grey_file(4, 3, 2);
  const Bytes indices = noise(12, 2, 6);
  Bytes more = indices;
  put_bytes(&more, noise(31, 2, 7));
  check_reader(Format::gif, with_codes(parts, gif_codes(more, 2)), expect_indices(parts, indices),
               "more pixels than the picture has");
  GifFile interlaced = parts;
  interlaced.interlaced = true;
  const Bytes file = with_codes(interlaced, gif_codes(more, 2));
  check_reader(Format::gif, file, expect_gif(file), "the same interlaced");
}

TEST_F(GifCodes, ThatEndEarlyLeaveTheRestAsItWas) {
  const GifFile parts = grey_file(4, 5, 2);
  const Bytes indices = noise(20, 2, 8);
  for (const size_t pixels : {1U, 4U, 7U, 8U, 19U}) {
    const Bytes some(indices.begin(), indices.begin() + static_cast<std::ptrdiff_t>(pixels));
    ExpectedPicture expected = expect_indices(parts, indices);
    expected.rows.resize(pixels / 4);
    check_reader(Format::gif, with_codes(parts, gif_codes(some, 2)), expected,
                 std::to_string(pixels) + " pixels");
  }
}

TEST_F(GifCodes, MayBeClearedAtAnyTime) {
  std::vector<GifCode> codes;
  const Bytes indices = noise(20, 3, 9);
  for (const uint8_t index : indices)
    codes.push_back({8, 4}), codes.push_back({index, 4});
  codes.push_back({9, 4});
  check_indices(with_codes(grey_file(5, 4, 3), codes), 5, indices);
}

TEST_F(GifCodes, OfAnyBitsGiveWhatTheStepsGive) {
  // A clear code, some good codes and then noise, in blocks of any size.
  for (uint32_t seed = 0; seed < 150; ++seed) {
    RandomNumbers random(seed);
    const uint32_t minimum = 2 + random.below(4);
    GifFile parts = grey_file(random.between(1, 12), random.between(1, 12), minimum);
    parts.interlaced = random.below(2) == 1;
    auto codes = gif_codes(noise(1 + random.below(60), minimum, seed), minimum);
    codes.pop_back();
    Bytes data = gif_code_bytes(codes);
    put_bytes(&data, random_bytes(random.below(60), seed + 1000));
    parts.blocks = gif_blocks(data, 1 + random.below(20));
    const Bytes file = gif_file(parts);
    check_reader(Format::gif, file, expect_gif(file), "seed " + std::to_string(seed));
  }
}

}  // namespace
}  // namespace quorix::testing
