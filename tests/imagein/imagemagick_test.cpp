// SPDX-License-Identifier: MIT
//
// Bitmaps written by ImageMagick, where the build has it.
#ifdef QUORIX_TEST_WITH_IMAGEMAGICK

#include <cstdlib>

#include "tests/imagein/byte_writing.h"
#include "tests/imagein/expected_picture.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

class BmpFromImageMagick : public ReaderTest {};

// A picture of that many colours, with runs of equal pixels in it.
Bytes picture_of(int32_t width, int32_t height, uint32_t colours, uint32_t seed) {
  const Bytes palette = random_bytes(3 * colours, seed);
  RandomNumbers random(seed);
  Bytes rgb;
  size_t colour = 0;
  for (int32_t i = 0; i < width * height; ++i) {
    // Every colour comes; then runs and noise.
    if (static_cast<uint32_t>(i) < colours) {
      colour = static_cast<size_t>(i);
    } else if (random.below(3) == 0) {
      colour = random.below(colours);
    }
    for (size_t channel = 0; channel < 3; ++channel)
      put_u8(&rgb, palette[3 * colour + channel]);
  }
  return rgb;
}

Bytes converted(int32_t width, int32_t height, const Bytes &rgb, const std::string &options) {
  const TemporaryFolder folder;
  Bytes ppm;
  put_text(&ppm, "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n");
  put_bytes(&ppm, rgb);
  write_whole_file(folder.file("in.ppm"), ppm);
  const std::string command = "convert '" + folder.file("in.ppm") + "' " + options +
                              " 'BMP3:" + folder.file("out.bmp") + "'";
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  return read_whole_file(folder.file("out.bmp"));
}

void check_bmp(int32_t width, int32_t height, uint32_t colours, const std::string &options,
               int bits, int compression) {
  const Bytes rgb = picture_of(width, height, colours, colours);
  const Bytes file = converted(width, height, rgb, options);
  ASSERT_GT(file.size(), 54U);
  EXPECT_EQ(file[28], bits);
  EXPECT_EQ(file[30], compression);
  ExpectedPicture expected = expect_rows(width, height, rgb);
  check_reader(Format::bmp, file, expected, std::to_string(bits) + " bits, " + options);
}

TEST_F(BmpFromImageMagick, IsReadWithEveryDepth) {
  for (const int32_t width : {16, 26, 27}) {
    check_bmp(width, 19, 300, "-type TrueColor", 24, 0);
    check_bmp(width, 19, 200, "-type Palette -compress none", 8, 0);
    check_bmp(width, 19, 11, "-type Palette -compress none", 4, 0);
    check_bmp(width, 19, 2, "-type Palette -compress none", 1, 0);
  }
}

TEST_F(BmpFromImageMagick, IsReadWithRunLengths) {
  for (const int32_t width : {16, 26, 27})
    check_bmp(width, 19, 200, "-type Palette -compress RLE", 8, 1);
}

}  // namespace
}  // namespace quorix::testing

#endif
