// SPDX-License-Identifier: MIT
//
// What the GIF, TIFF and BMP writers have in common: clips, statuses, failures, and that the
// library reads its own files.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "quorix/imagein.h"
#include "tests/imageout/random_numbers.h"
#include "tests/imageout/writer_calls.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

using Reader = decltype(&qqpigif);

struct Format {
  const char *name;
  FileWriter write;
  Bytes (*literal)(const WriterCall &call, const KnownArea &area);
  Reader read;
};

constexpr Format formats[] = {{"gif", write_gif, literal_gif, qqpigif},
                              {"tiff", write_tiff, literal_tiff, qqpitif},
                              {"bmp", write_bmp, literal_bmp, qqpibmp}};

// Signs of device, width and height that make sense for a page of true colours, and its indices.
struct Kind {
  const char *name;
  bool rgba;
  int32_t device_sign, height_sign;
};

constexpr Kind indexed = {"indexed", false, 1, 1};
constexpr Kind quantised = {"quantised", true, -1, -1};  // RGB for TIFF and BMP
constexpr Kind computed = {"computed palette", true, 1, -1};

WriterCall call_for(const DrawnPicture &picture, const Kind &kind) {
  WriterCall call;
  call.device = kind.device_sign * 101;
  call.width = picture.width;
  call.height = kind.height_sign * picture.height;
  call.palette = picture.palette.data();
  return call;
}

class FileWriters : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override {
    end_held_picture();
    forget_everything();
  }

  static void end_held_picture() {
    const int32_t zero = 0;
    const int32_t release = -1;
    qqpgrow(nullptr, &zero, &zero, &release);
  }
};

TEST_F(FileWriters, WriteTheClipWhateverSizeTheCallHas) {
  const DrawnPicture picture = plot_picture(40, 30, 2);
  const int32_t areas[][4] = {{3, 4, 10, 5}, {-4, -3, 9, 8}, {35, 28, 8, 8}, {0, 29, 40, 1}};
  for (const Format &format : formats) {
    for (const Kind &kind : {indexed, quantised}) {
      show_on_raster(picture, kind.rgba);
      for (const auto &[x, y, w, h] : areas) {
        set_clip(x, y, w, h);
        WriterCall call = call_for(picture, kind);
        call.width = 1000;
        const KnownArea area = {w, h, picture.index_area(x, y, w, h), picture.rgb_area(x, y, w, h)};
        EXPECT_EQ(file_bytes(format.write, call), format.literal(call, area))
            << format.name << " " << kind.name << " from " << x << ", " << y;
      }
    }
  }
}

TEST_F(FileWriters, TellWhyThereIsNoFile) {
  const DrawnPicture picture = plot_picture(5, 4, 1);
  for (const Format &format : formats) {
    MemoryFiles files;
    WriterCall call = call_for(picture, indexed);
    EXPECT_EQ(format.write(call, "picture"), -1) << format.name;  // nothing was ever drawn
    show_on_raster(picture, false);
    call.device = 100;
    EXPECT_EQ(format.write(call, "picture"), -9) << format.name;  // no window
    call.device = 101;
    {
      const FailingFiles gate(1, file_open);
      EXPECT_EQ(format.write(call, "picture"), -1) << format.name;
    }
    EXPECT_FALSE(files.exists("picture")) << format.name;
    forget_everything();
  }
}

// Every refused request gives -2 and the start of the file, but for the tree of the quantiser,
// without which all pixels have colour 0.
TEST_F(FileWriters, LeaveTheStartOfTheFileWithoutMemory) {
  const DrawnPicture picture = plot_picture(30, 20, 3);
  for (const Format &format : formats) {
    for (const Kind &kind : {indexed, quantised, computed}) {
      show_on_raster(picture, kind.rgba);
      const WriterCall call = call_for(picture, kind);
      const Bytes whole = file_bytes(format.write, call);
      size_t n = 1;
      for (;; ++n) {
        MemoryFiles files;
        const FailingMemory memory(n);
        const int32_t status = format.write(call, "picture");
        EXPECT_EQ(memory.live_blocks(), 0U) << format.name << " " << kind.name << " " << n;
        EXPECT_EQ(files.open_files(), 0U) << format.name << " " << kind.name << " " << n;
        const Bytes &file = files.bytes("picture");
        if (!memory.failed()) break;
        if (status == 0) {
          EXPECT_TRUE(kind.height_sign < 0 && n > 1) << format.name << " " << kind.name << " " << n;
          EXPECT_GT(file.size(), 54U);
          continue;
        }
        EXPECT_EQ(status, -2) << format.name << " " << kind.name << " " << n;
        EXPECT_LT(file.size(), whole.size());
        EXPECT_GE(file.size(), 13U);  // the smallest header
        EXPECT_TRUE(std::equal(file.begin(), file.end(), whole.begin()))
            << format.name << " " << kind.name << " " << n;
      }
      EXPECT_GT(n, 1U) << format.name << " " << kind.name;
    }
  }
}

TEST_F(FileWriters, TellOfNoFullDisk) {
  const DrawnPicture picture = plot_picture(4, 3, 3);
  show_on_raster(picture, true);
  for (const Format &format : formats) {
    const WriterCall call = call_for(picture, quantised);
    const Bytes whole = file_bytes(format.write, call);
    for (size_t limit = 0; limit <= whole.size(); ++limit) {
      MemoryFiles files;
      FailingFiles disk;
      disk.limit_written_bytes(limit);
      EXPECT_EQ(format.write(call, "picture"), 0) << format.name << " " << limit;
      EXPECT_EQ(disk.open_files(), 0U);
      const auto end = whole.begin() + static_cast<ptrdiff_t>(limit);
      EXPECT_EQ(files.bytes("picture"), Bytes(whole.begin(), end)) << format.name;
    }
  }
}

TEST_F(FileWriters, CloseTheirFileWhateverCallFails) {
  const DrawnPicture picture = plot_picture(40, 30, 3);
  show_on_raster(picture, true);
  for (const Format &format : formats) {
    const WriterCall call = call_for(picture, quantised);
    for (size_t n = 1;; ++n) {
      MemoryFiles files;
      const FailingFiles gate(n);
      const int32_t status = format.write(call, "picture");
      EXPECT_EQ(gate.open_files(), 0U) << format.name << " " << n;
      EXPECT_EQ(status, gate.failed() && n == 1 ? -1 : 0) << format.name << " " << n;
      if (!gate.failed()) break;
    }
  }
}

TEST_F(FileWriters, RefuseSizesBeyondAllCounting) {
  const DrawnPicture picture = plot_picture(4, 3, 3);
  show_on_raster(picture, true);
  for (const Format &format : formats) {
    MemoryFiles files;
    WriterCall call = call_for(picture, quantised);
    call.width = INT32_MIN;
    call.height = INT32_MIN;
    EXPECT_EQ(format.write(call, "picture"), -2) << format.name;
    EXPECT_LT(files.bytes("picture").size(), 1000U) << format.name;  // a header, and no arrays
    call.height = -1;
    EXPECT_EQ(format.write(call, "picture"), -2) << format.name;
    EXPECT_LT(files.bytes("picture").size(), 1000U) << format.name;
    EXPECT_EQ(files.open_files(), 0U) << format.name;
  }
}

// ---- our own readers

Bytes read_back(const Format &format, const Bytes &file, int32_t width, int32_t height) {
  MemoryFiles files;
  files.put("picture", file);
  const int32_t zero = 0;
  int32_t status = 12345;
  format.read("picture", &zero, nullptr, &zero, &zero, &zero, &zero, &status);
  EXPECT_EQ(status, 0) << format.name;
  EXPECT_EQ(files.open_files(), 0U);
  Bytes rgb(3 * static_cast<size_t>(width) * static_cast<size_t>(height), 1);
  for (int32_t y = 0; y < height; ++y)
    qqpgrow(&rgb[3 * static_cast<size_t>(y) * static_cast<size_t>(width)], &zero, &y, &width);
  const int32_t release = -1;
  qqpgrow(nullptr, &zero, &zero, &release);
  return rgb;
}

TEST_F(FileWriters, WriteWhatTheReadersReadPixelForPixel) {
  const int32_t sizes[][2] = {{1, 1}, {1, 9}, {9, 1}, {2, 2}, {33, 17}, {255, 256}, {301, 299}};
  uint32_t seed = 20;
  for (const auto &[width, height] : sizes) {
    const DrawnPicture picture = plot_picture(width, height, ++seed);
    for (const Format &format : formats) {
      for (const Kind &kind : {indexed, quantised, computed}) {
        if (format.write == write_gif && kind.device_sign != kind.height_sign) continue;
        show_on_raster(picture, kind.rgba);
        const Bytes file = file_bytes(format.write, call_for(picture, kind));
        EXPECT_EQ(read_back(format, file, width, height), picture.rgb)
            << format.name << " " << kind.name << " " << width << " by " << height;
      }
    }
  }
}

// Strings as long as they get, and as many as there may be: the GIF table is used up in both.
TEST_F(FileWriters, WriteGifFilesOfManyCodesThatTheReaderReads) {
  for (const int32_t side : {2720, 300}) {
    DrawnPicture picture = {side, side, make_palette(5), {}, {}};
    RandomNumbers random(12);
    for (int32_t i = 0; i < side * side; ++i) {
      const uint32_t index = side == 300 ? random.below(256) : 9;
      picture.indices.push_back(static_cast<uint8_t>(index));
      for (const int shift : {16, 8, 0})
        picture.rgb.push_back(static_cast<uint8_t>(picture.palette[index] >> shift & 255));
    }
    show_on_raster(picture, false);
    const Bytes file = file_bytes(write_gif, call_for(picture, indexed));
    EXPECT_TRUE(read_back(formats[0], file, side, side) == picture.rgb) << side;
  }
}

TEST_F(FileWriters, WriteTrueColoursWithoutLoss) {
  const DrawnPicture photo = photo_picture(101, 67, 8);
  show_on_raster(photo, true);
  for (const Format &format : formats) {
    if (format.write == write_gif) continue;
    const Bytes file = file_bytes(format.write, call_for(photo, quantised));
    EXPECT_EQ(read_back(format, file, 101, 67), photo.rgb) << format.name;
  }
}

TEST_F(FileWriters, WriteBilevelFilesThatTheReaderReads) {
  const Format &tiff = formats[1];
  const DrawnPicture photo = plot_picture(61, 35, 8);
  show_on_raster(photo, true);
  WriterCall call = call_for(photo, quantised);
  call.form = -1;
  Bytes expected;
  for (size_t i = 0; i < photo.rgb.size(); i += 3) {
    const bool black = photo.rgb[i] + photo.rgb[i + 1] + photo.rgb[i + 2] == 0;
    expected.insert(expected.end(), 3, black ? 0 : 255);
  }
  EXPECT_EQ(read_back(tiff, file_bytes(write_tiff, call), 61, 35), expected);
}

}  // namespace
}  // namespace quorix::testing
