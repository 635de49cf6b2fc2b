// SPDX-License-Identifier: MIT
//
// What GIF files give: tables, sizes, interlace, and what stands around the image.
#include "tests/imagein/gif_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class GifReader : public ReaderTest {};

GifFile parts_of(int32_t width, int32_t height, uint32_t bits) {
  GifFile parts;
  parts.screen_width = parts.width = width;
  parts.screen_height = parts.height = height;
  parts.minimum = bits < 2 ? 2 : bits;
  parts.global_table = random_bytes(size_t{3} << bits, 40 + bits);
  return parts;
}

Bytes indices_of(const GifFile &parts, uint32_t bits, uint32_t seed) {
  const size_t pixels = static_cast<size_t>(parts.width) * static_cast<size_t>(parts.height);
  Bytes indices;
  for (const uint32_t sample : random_samples(pixels, bits, seed))
    put_u8(&indices, sample);
  return indices;
}

void check_gif(const GifFile &parts, const Bytes &indices, const std::string &what) {
  check_reader(Format::gif, gif_of(parts, indices), expect_indices(parts, indices), what);
}

ExpectedPicture refused() {
  ExpectedPicture expected;
  expected.status = -3;
  return expected;
}

Bytes first_reds(int32_t height) {
  Bytes reds;
  for (int32_t y = 0; y < height; ++y)
    reds.push_back(picture_row(0, y, 1)[0]);
  return reds;
}

TEST_F(GifReader, ReadsTablesOfEverySize) {
  for (uint32_t bits = 1; bits <= 8; ++bits) {
    const GifFile parts = parts_of(13, 7, bits);
    check_gif(parts, indices_of(parts, bits, bits), std::to_string(bits) + " bits");
  }
}

TEST_F(GifReader, LetsALocalTableReplaceTheGlobalOne) {
  GifFile parts = parts_of(6, 5, 3);
  parts.local_table = random_bytes(24, 3);
  const Bytes indices = indices_of(parts, 3, 8);
  check_gif(parts, indices, "both tables");
  parts.global_table.clear();
  check_gif(parts, indices, "a local table alone");
}

TEST_F(GifReader, RefusesAFileWithoutAnyTable) {
  GifFile parts = parts_of(6, 5, 3);
  const Bytes indices = indices_of(parts, 3, 8);
  parts.global_table.clear();
  check_reader(Format::gif, gif_of(parts, indices), refused(), "no table");
}

TEST_F(GifReader, TakesInterlacedRowsInFourPasses) {
  // A one-column picture whose n-th row in the file has index n.
  const auto rows_in_place = [](int32_t height) {
    GifFile parts = parts_of(1, height, 4);
    parts.global_table.clear();
    for (uint32_t i = 0; i < 16; ++i)
      put_bytes(&parts.global_table, Bytes(3, static_cast<uint8_t>(i)));
    Bytes indices;
    for (int32_t i = 0; i < height; ++i)
      put_u8(&indices, static_cast<uint32_t>(i));
    parts.blocks = gif_blocks(gif_code_bytes(gif_codes(indices, 4)));
    parts.interlaced = true;
    EXPECT_EQ(read_picture(Format::gif, gif_file(parts), store_number), 0);
    const Bytes reds = first_reds(height);
    release_picture();
    return reds;
  };
  // The rows come as 0, 8, 4, 2, 6, 1, 3, 5, 7.
  EXPECT_EQ(rows_in_place(9), (Bytes{0, 5, 3, 6, 2, 7, 4, 8, 1}));
  EXPECT_EQ(rows_in_place(1), (Bytes{0}));
  EXPECT_EQ(rows_in_place(2), (Bytes{0, 1}));
  EXPECT_EQ(rows_in_place(3), (Bytes{0, 2, 1}));
  EXPECT_EQ(rows_in_place(4), (Bytes{0, 2, 1, 3}));
  EXPECT_EQ(rows_in_place(5), (Bytes{0, 3, 2, 4, 1}));
}

TEST_F(GifReader, ReadsInterlacedPicturesOfAnyHeight) {
  for (int32_t height = 1; height <= 18; ++height) {
    GifFile parts = parts_of(5, height, 4);
    parts.interlaced = true;
    check_gif(parts, indices_of(parts, 4, 3), "interlaced, height " + std::to_string(height));
  }
}

TEST_F(GifReader, StoresASmallerImageInTheScreensUpperLeftCorner) {
  GifFile parts = parts_of(6, 4, 4);
  parts.screen_width = 11;
  parts.screen_height = 9;
  parts.left = 3;  // not used
  parts.top = 2;
  check_gif(parts, indices_of(parts, 4, 5), "smaller than the screen");
}

TEST_F(GifReader, CutsALargerImageAtTheScreenInMemoryAlone) {
  GifFile parts = parts_of(11, 9, 4);
  parts.screen_width = 6;
  parts.screen_height = 4;
  check_gif(parts, indices_of(parts, 4, 5), "larger than the screen");
}

TEST_F(GifReader, RefusesSizesOf0) {
  for (int32_t which = 0; which < 2; ++which) {
    GifFile parts = parts_of(3, 3, 4);
    (which == 0 ? parts.width : parts.height) = 0;
    parts.blocks = gif_blocks(gif_code_bytes(gif_codes(Bytes(9, 1), 4)));
    check_reader(Format::gif, gif_file(parts), refused(), "image without pixels");
    parts = parts_of(3, 3, 4);
    (which == 0 ? parts.screen_width : parts.screen_height) = 0;
    const Bytes file = gif_of(parts, Bytes(9, 1));
    EXPECT_EQ(read_picture(Format::gif, file, store_number), -3) << "screen without pixels";
  }
}

TEST_F(GifReader, DoesNotLookAtTheSignature) {
  const GifFile parts = parts_of(3, 3, 4);
  const Bytes indices = indices_of(parts, 4, 1);
  Bytes file = gif_of(parts, indices);
  for (size_t i = 0; i < 6; ++i)
    file[i] = static_cast<uint8_t>(0x2C + i);
  check_reader(Format::gif, file, expect_indices(parts, indices), "another signature");
}

TEST_F(GifReader, PassesOverExtensionsByteByByte) {
  GifFile parts = parts_of(5, 3, 4);
  parts.extensions = {0x21, 0xF9, 4, 1, 0, 0, 3, 0, 0x21, 0xFE, 3, 'a', 'b', 'c', 0};
  check_gif(parts, indices_of(parts, 4, 2), "extensions; nothing is transparent");
}

TEST_F(GifReader, TakesACommaInAnExtensionForTheDescriptor) {
  // The comment holds a whole small image, which is read in place of the one behind it.
  GifFile inner = parts_of(2, 1, 2);
  const Bytes inner_file = gif_of(inner, {3, 1});
  const auto descriptor = inner_file.begin() + 13 + 12;
  ASSERT_EQ(*descriptor, 0x2C);
  GifFile parts = parts_of(5, 3, 2);
  parts.screen_width = 4;
  const Bytes image(descriptor, inner_file.end());
  parts.extensions = {0x21, 0xFE, static_cast<uint8_t>(image.size())};
  put_bytes(&parts.extensions, image);
  put_u8(&parts.extensions, 0);
  inner.screen_width = 4;
  inner.screen_height = 3;
  const Bytes file = gif_of(parts, indices_of(parts, 2, 2));
  check_reader(Format::gif, file, expect_indices(inner, {3, 1}), "image in a comment");
  // And where no image stands behind the comma, what follows is no image either.
  parts.extensions = {0x21, 0xFE, 3, 'a', ',', 'c', 0};
  const Bytes broken = gif_of(parts, indices_of(parts, 2, 2));
  check_reader(Format::gif, broken, expect_gif(broken), "comma in a comment");
}

TEST_F(GifReader, RefusesAFileThatHasNoDescriptor) {
  const GifFile parts = parts_of(3, 3, 4);
  const Bytes file = gif_of(parts, Bytes(9, 1));
  const Bytes head(file.begin(), file.begin() + 13 + 48);
  check_reader(Format::gif, head, refused(), "no image");
  Bytes trailer = head;
  put_u8(&trailer, 0x3B);
  check_reader(Format::gif, trailer, refused(), "a trailer alone");
  check_reader(Format::gif, {}, refused(), "an empty file");
}

TEST_F(GifReader, ReadsTheFirstImageAlone) {
  const GifFile parts = parts_of(4, 3, 4);
  const Bytes indices = indices_of(parts, 4, 6);
  Bytes file = gif_of(parts, indices);
  file.pop_back();
  const Bytes other = gif_of(parts, Bytes(12, 1));
  file.insert(file.end(), other.begin() + 13 + 48, other.end());
  check_reader(Format::gif, file, expect_indices(parts, indices), "two images");
}

TEST_F(GifReader, NeedsNothingBehindTheEmptyBlock) {
  const GifFile parts = parts_of(4, 3, 4);
  const Bytes indices = indices_of(parts, 4, 7);
  Bytes file = gif_of(parts, indices);
  file.pop_back();
  check_reader(Format::gif, file, expect_indices(parts, indices), "no trailer");
  file.pop_back();
  ExpectedPicture expected = expect_indices(parts, indices);
  expected.status = -3;
  check_reader(Format::gif, file, expected, "no empty block");
}

TEST_F(GifReader, TakesAnExtensionThatEndsTwiceForTheEmptyBlock) {
  const GifFile parts = parts_of(4, 3, 4);
  const Bytes indices = indices_of(parts, 4, 7);
  Bytes image = gif_of(parts, indices);
  image.pop_back();  // the trailer
  image.pop_back();  // the empty block
  const struct {
    const char *what;
    Bytes tail;
    int32_t status;
  } cases[] = {
      {"control, its end and an empty block", {0x21, 0xF9, 4, 1, 0, 0, 3, 0, 0}, 0},
      {"no blocks, and an empty block", {0x21, 0xFE, 0, 0}, 0},
      {"the end of the extension alone", {0x21, 0xF9, 4, 1, 0, 0, 3, 0}, -3},
      {"a trailer in place of the empty block", {0x21, 0xF9, 4, 1, 0, 0, 3, 0, 0x3B}, -3},
      {"an extension without an end", {0x21, 0xF9, 4, 1, 0, 0, 3}, -3},
      {"no more than the mark", {0x21}, -3},
      {"no extension", {0x2C, 0xF9, 0, 0}, -3},
  };
  for (const auto &[what, tail, status] : cases) {
    Bytes file = image;
    put_bytes(&file, tail);
    ExpectedPicture expected = expect_indices(parts, indices);
    expected.status = status;
    check_reader(Format::gif, file, expected, what);
  }
}

TEST_F(GifReader, PassesOverBlocksBehindTheEndCode) {
  GifFile parts = parts_of(4, 3, 4);
  const Bytes indices = indices_of(parts, 4, 7);
  const Bytes data = gif_code_bytes(gif_codes(indices, 4));
  for (const size_t extra : {1U, 33U, 44U, 255U}) {
    parts.blocks = gif_blocks(data);
    parts.blocks.pop_back();
    put_bytes(&parts.blocks, gif_blocks(Bytes(extra, 0x2C), 255));
    check_reader(Format::gif, gif_file(parts), expect_indices(parts, indices),
                 std::to_string(extra) + " bytes more");
  }
}

TEST_F(GifReader, NeedsAFile) {
  EXPECT_EQ(read_named(Format::gif, "no such file.gif", store_number), -1);
  EXPECT_TRUE(nothing_is_held());
}

}  // namespace
}  // namespace quorix::testing
