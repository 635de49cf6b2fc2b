// SPDX-License-Identifier: MIT
//
// qqpps against texts from paper and a plain transcription.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "quorix/imageout.h"
#include "tests/imageout/page_calls.h"
#include "tests/pdf/literal_numbers.h"
#include "tests/pdf/pdf_calls.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

using literal::integer;
using literal::real;

class PostScript : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override { forget_everything(); }
};

std::string text_of(const Bytes &bytes) {
  return {bytes.begin(), bytes.end()};
}

// What a call writes into a file; the test fails unless its status is 0.
std::string postscript(const PageCall &call) {
  MemoryFiles files;
  EXPECT_EQ(write_postscript(call, "picture"), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return text_of(files.bytes("picture"));
}

// ---- a plain transcription

std::string hex_lines(const Bytes &rgb) {
  static const char digits[] = "0123456789ABCDEF";
  std::string all;
  for (const uint8_t byte : rgb) {
    all += digits[byte / 16];
    all += digits[byte % 16];
  }
  std::string lines;
  for (size_t at = 0; at < all.size(); at += 80)
    lines += all.substr(at, 80) + "\n";
  return lines;
}

std::string literal_postscript(const PageCall &call, int32_t w, int32_t h, const Bytes &rgb) {
  const double k = 0.1417322835;
  const double p = call.page_set == 1 ? 2.0 * call.page_width : 3900.0;
  const double q = call.page_set == 1 ? 2.0 * call.page_height : 5600.0;
  const double x = call.margin_set == 1 ? 2.0 * call.margin_x : 150.0;
  const double y = call.margin_set == 1 ? 2.0 * call.margin_y : 200.0;
  const bool landscape = w > h;
  const double scale = landscape ? std::min(q / w, p / h) : std::min(p / w, q / h);
  const auto whole = [](double number) { return integer(literal::truncated(number)); };
  std::string text = "%!PS-Adobe-2.0\n";
  text += "%%BoundingBox:  " + whole(x * k) + " " + whole(y * k) + " " + whole((p + x) * k + 1) +
          " " + whole((q + y) * k + 1) + "\n";
  text += "%%Creator: QUORIX  10.3\n";
  text += real(x * k, 3) + " " + real(y * k, 3) + " translate \n";
  text += "/DeviceRGB setcolorspace\n";
  text += "gsave " + real(landscape ? p * k : 0.0, 3) + " " + real(0.0, 3) + " translate \n";
  if (landscape) text += "90 rotate\n";
  text += real(w * scale * k, 3) + " " + real(h * scale * k, 3) + " scale \n";
  text += "<<\n/ImageType 1\n/Width " + integer(w) + "\n/Height " + integer(h) + "\n";
  text += "/BitsPerComponent 8\n/Decode [0 1 0 1 0 1]\n";
  text += "/ImageMatrix [ " + integer(w) + " 0 0 " + integer(-h) + " 0 " + integer(h) + "] ";
  text += "/DataSource currentfile /ASCIIHexDecode filter\n>> image\n";
  text += hex_lines(rgb);
  text += "\n> grestore showpage\n";
  return text;
}

// ---- texts from paper

DrawnPicture three_colours() {
  DrawnPicture picture = {3, 1, {}, {}, {255, 0, 16, 1, 2, 171, 0, 128, 254}};
  return picture;
}

TEST_F(PostScript, IsThisTextForThreePixels) {
  show_on_raster(three_colours(), true);
  // Landscape: the scale is the smaller of 5600 / 3 and 3900 / 1, so the width of the picture is
  // 5600 units and its height a third of that; a unit is 0.1417322835 points.
  EXPECT_EQ(postscript({101, 3, 1}),
            "%!PS-Adobe-2.0\n"
            "%%BoundingBox:  21 28 575 823\n"
            "%%Creator: QUORIX  10.3\n"
            "21.260 28.346 translate \n"
            "/DeviceRGB setcolorspace\n"
            "gsave 552.756 0.000 translate \n"
            "90 rotate\n"
            "793.701 264.567 scale \n"
            "<<\n"
            "/ImageType 1\n"
            "/Width 3\n"
            "/Height 1\n"
            "/BitsPerComponent 8\n"
            "/Decode [0 1 0 1 0 1]\n"
            "/ImageMatrix [ 3 0 0 -1 0 1] "
            "/DataSource currentfile /ASCIIHexDecode filter\n"
            ">> image\n"
            "FF00100102AB0080FE\n"
            "\n> grestore showpage\n");
}

TEST_F(PostScript, IsNotTurnedWhereThePictureIsAsHighAsWide) {
  DrawnPicture picture = {2, 2, {}, {}, Bytes(12, 0xA5)};
  show_on_raster(picture, true);
  // 3900 / 2 is the smaller scale, so both sides are 3900 units.
  const std::string text = postscript({101, 2, 2});
  EXPECT_NE(text.find("/DeviceRGB setcolorspace\ngsave 0.000 0.000 translate \n"
                      "552.756 552.756 scale \n<<\n"),
            std::string::npos);
  EXPECT_EQ(text.find("rotate"), std::string::npos);
  EXPECT_NE(text.find("/ImageMatrix [ 2 0 0 -2 0 2] /DataSource"), std::string::npos);
}

TEST_F(PostScript, TakesThePageAndMarginsInTenthsOfAMillimetre) {
  DrawnPicture picture = {1, 2, {}, {}, Bytes(6, 0)};
  show_on_raster(picture, true);
  PageCall call = {101, 1, 2};
  call.page_set = 1;
  call.page_width = 1000;   // 2000 units, 283.464567 points
  call.page_height = 3000;  // 6000 units
  call.margin_set = 1;
  call.margin_x = 50;   // 100 units, 14.17322835 points
  call.margin_y = 250;  // 500 units, 70.86614175 points
  const std::string text = postscript(call);
  // 2100 units are 297.637795 points and 6500 units 921.259843.
  EXPECT_NE(text.find("%%BoundingBox:  14 70 298 922\n"), std::string::npos);
  EXPECT_NE(text.find("\n14.173 70.866 translate \n"), std::string::npos);
  // The scale is the smaller of 2000 / 1 and 6000 / 2.
  EXPECT_NE(text.find("\n283.465 566.929 scale \n"), std::string::npos);
}

TEST_F(PostScript, NeedsAOneToTakePageAndMargins) {
  DrawnPicture picture = {1, 2, {}, {}, Bytes(6, 0)};
  show_on_raster(picture, true);
  const std::string usual = postscript({101, 1, 2});
  for (const int32_t set : {0, 2, -1})
    EXPECT_EQ(postscript({101, 1, 2, set, 10, 20, set, 30, 40}), usual) << set;
}

TEST_F(PostScript, Writes80DigitsToALine) {
  const DrawnPicture picture = photo_picture(14, 1, 1);
  show_on_raster(picture, true);
  const std::string text = postscript({101, 14, 1});
  const size_t start = text.find(">> image\n") + 9;
  EXPECT_EQ(text.find('\n', start), start + 80);
  EXPECT_EQ(text.find('\n', start + 81), start + 85);
  EXPECT_EQ(text.substr(start + 85), "\n\n> grestore showpage\n");
}

TEST_F(PostScript, GoesOnInALineWhereOnePictureRowEnds) {
  const DrawnPicture picture = photo_picture(1, 41, 1);  // 246 digits
  show_on_raster(picture, true);
  const std::string text = postscript({101, 1, 41});
  const size_t start = text.find(">> image\n") + 9;
  EXPECT_EQ(text.substr(start), hex_lines(picture.rgb) + "\n> grestore showpage\n");
  EXPECT_EQ(hex_lines(picture.rgb).size(), 246U + 4);
}

TEST_F(PostScript, EndsALineThatIsJustFull) {
  const DrawnPicture picture = photo_picture(40, 1, 1);  // three lines
  show_on_raster(picture, true);
  const std::string text = postscript({101, 40, 1});
  const size_t start = text.find(">> image\n") + 9;
  EXPECT_EQ(text.size() - start, size_t{3} * 81 + 21);
  EXPECT_EQ(text.substr(start + 2 * 81 + 80), "\n\n> grestore showpage\n");
}

// ---- many pictures

TEST_F(PostScript, IsTheTranscriptionForPicturesOfAllForms) {
  const int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {13, 13}, {14, 13}, {301, 200}, {39, 56}};
  const PageCall pages[] = {{101, 0, 0},
                            {-101, 0, 0},
                            {101, 0, 0, 1, 2100, 2970, 0, 0, 0},
                            {101, 0, 0, 0, 0, 0, 1, 0, 0},
                            {101, 0, 0, 1, 333, 77, 1, 11, 1234}};
  for (const auto &[width, height] : sizes) {
    for (const bool rgba : {false, true}) {
      const DrawnPicture picture =
          rgba ? photo_picture(width, height, 3) : plot_picture(width, height, 3);
      show_on_raster(picture, rgba);
      for (PageCall call : pages) {
        call.width = width;
        call.height = -height;  // signs do not matter
        EXPECT_EQ(
            difference(postscript(call), literal_postscript(call, width, height, picture.rgb)), "")
            << width << " " << height;
      }
    }
  }
}

TEST_F(PostScript, WritesTheClipWhateverSizeTheCallHas) {
  const DrawnPicture picture = plot_picture(40, 30, 4);
  show_on_raster(picture, true);
  set_clip(3, 20, 5, 12);  // two rows below the picture
  const PageCall call = {101, 1000, 7};
  EXPECT_EQ(postscript(call), literal_postscript(call, 5, 12, picture.rgb_area(3, 20, 5, 12)));
}

TEST_F(PostScript, ReadsTheWindow) {
  const DrawnPicture picture = photo_picture(8, 5, 5);
  show_on_raster(plot_picture(8, 5, 6), true);
  const FakeWindow window(picture);
  for (const int32_t device : {100, -100})
    EXPECT_EQ(postscript({device, 8, 5}), literal_postscript({device, 8, 5}, 8, 5, picture.rgb));
  EXPECT_GT(window.rgb_reads(), 0);
  EXPECT_EQ(window.index_reads(), 0);
}

TEST_F(PostScript, EndsItsLinesAsTextFilesOfTheSystemDo) {
  const TemporaryFolder folder;
  show_on_raster(three_colours(), true);
  const std::string name = folder.file("picture.ps");
  EXPECT_EQ(write_postscript({101, 3, 1}, name), 0);
#ifdef _WIN32
  const char *const line_end = "\r\n";
#else
  const char *const line_end = "\n";
#endif
  std::string expected;
  for (const char character : postscript({101, 3, 1})) {
    if (character == '\n') {
      expected += line_end;
    } else {
      expected += character;
    }
  }
  EXPECT_EQ(text_of(read_whole_file(name)), expected);
}

// ---- what fails

TEST_F(PostScript, CannotBeWrittenWithoutRecordDeviceOrFile) {
  MemoryFiles files;
  EXPECT_EQ(write_postscript({101, 3, 1}, "picture"), -1);
  EXPECT_FALSE(files.exists("picture"));
  show_on_raster(three_colours(), true);
  EXPECT_EQ(write_postscript({100, 3, 1}, "picture"), -9);
  EXPECT_FALSE(files.exists("picture"));
  const FailingFiles refuse(1, file_open);
  EXPECT_EQ(write_postscript({101, 3, 1}, "picture"), -1);
}

TEST_F(PostScript, LeavesTheHeaderWhereThereIsNoMemory) {
  show_on_raster(three_colours(), true);
  const std::string whole = postscript({101, 3, 1});
  const size_t header = whole.find(">> image\n") + 9;
  size_t n = 1;
  for (;; ++n) {
    MemoryFiles files;
    const FailingMemory memory(n);
    const int32_t status = write_postscript({101, 3, 1}, "picture");
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_EQ(files.open_files(), 0U);
    if (!memory.failed()) break;
    EXPECT_EQ(status, -2);
    EXPECT_EQ(text_of(files.bytes("picture")), whole.substr(0, header));
  }
  EXPECT_GT(n, 1U);
}

TEST_F(PostScript, OfSizesBeyondAllCountingIsMemoryThatIsNotThere) {
  show_on_raster(three_colours(), true);
  MemoryFiles files;
  EXPECT_EQ(write_postscript({101, INT32_MIN, INT32_MIN}, "picture"), -2);
  EXPECT_EQ(write_postscript({101, INT32_MAX, INT32_MAX}, "picture"), -2);
  EXPECT_EQ(files.open_files(), 0U);
}

TEST_F(PostScript, OfNoSizeHasNoPixels) {
  show_on_raster(three_colours(), true);
  const int32_t sizes[][2] = {{0, 0}, {0, 5}, {5, 0}};
  for (const auto &[width, height] : sizes) {
    const std::string text = postscript({101, width, height});
    EXPECT_NE(text.find("/Width " + integer(width) + "\n/Height " + integer(height) + "\n"),
              std::string::npos);
    EXPECT_NE(text.find(">> image\n\n> grestore showpage\n"), std::string::npos);
  }
  set_clip(0, 0, -5, 7);
  EXPECT_NE(postscript({101, 3, 1}).find(">> image\n\n> grestore showpage\n"), std::string::npos);
}

TEST_F(PostScript, SurvivesPagesOfAnySize) {
  show_on_raster(three_colours(), true);
  for (const int32_t size : {0, -1, -1000, INT32_MAX, INT32_MIN}) {
    const std::string text = postscript({101, 3, 1, 1, size, size, 1, size, size});
    EXPECT_NE(text.find(">> image\nFF00100102AB0080FE\n\n> grestore showpage\n"),
              std::string::npos);
  }
}

TEST_F(PostScript, OnAFullDiskIsShortWithoutAWord) {
  show_on_raster(three_colours(), true);
  const std::string whole = postscript({101, 3, 1});
  for (size_t limit = 0; limit <= whole.size(); ++limit) {
    MemoryFiles files;
    FailingFiles disk;
    disk.limit_written_bytes(limit);
    EXPECT_EQ(write_postscript({101, 3, 1}, "picture"), 0);
    EXPECT_EQ(disk.open_files(), 0U);
    EXPECT_EQ(text_of(files.bytes("picture")), whole.substr(0, limit));
  }
}

TEST_F(PostScript, EndsWellWhicheverCallOfTheDiskFails) {
  show_on_raster(photo_picture(60, 50, 1), true);
  size_t n = 1;
  for (;; ++n) {
    MemoryFiles files;
    const FailingFiles gate(n);
    const int32_t status = write_postscript({101, 60, 50}, "picture");
    EXPECT_EQ(gate.open_files(), 0U);
    EXPECT_EQ(status, gate.failed() && n == 1 ? -1 : 0);
    if (!gate.failed()) break;
  }
  EXPECT_GT(n, 3U);  // opened, written, closed
}

}  // namespace
}  // namespace quorix::testing
