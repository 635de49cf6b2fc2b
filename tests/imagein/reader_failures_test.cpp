// SPDX-License-Identifier: MIT
//
// What the readers do when memory, the disk, the decompressor or the device fails.
#include "base/inflate.h"
#include "core/device.h"
#include "quorix/raster.h"
#include "quorix/window.h"
#include "tests/imagein/expected_picture.h"
#include "tests/imagein/png_files.h"
#include "tests/imagein/seeds.h"
#include "tests/imagein/twin_pages.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class ReaderFailures : public ReaderTest {
 protected:
  void TearDown() override {
    inflate_gate = usual_gate_;
    ReaderTest::TearDown();
  }
  const InflateGate usual_gate_ = inflate_gate;
};

// Refuses one request after the other, alone or with all that follow.
void refuse_memory(Format format, const Seed &seed, int32_t device, Failures kind) {
  SCOPED_TRACE(std::string(name_of(format)) + ", " + seed.name);
  const int32_t whole = read_picture(format, seed.file, device);
  release_picture();
  size_t n = 1;
  for (;; ++n) {
    const FailingMemory memory(n, kind);
    const int32_t status = read_picture(format, seed.file, device);
    if (!memory.failed()) {
      EXPECT_EQ(status, whole);
      release_picture();
      break;
    }
    // zlib's own requests: it does not start, or cannot go on.
    const bool of_zlib = format == Format::png && (status == -3 || status == -4);
    EXPECT_TRUE(status == -2 || of_zlib) << status << " for request " << n;
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    EXPECT_TRUE(nothing_is_held());
  }
  if (device == store_number) {
    EXPECT_GT(n, 2U);
  }
}

TEST_F(ReaderFailures, OfMemoryGiveAStatusAndLeaveNothing) {
  for (const Format format : all_formats) {
    for (const Seed &seed : seeds_of(format)) {
      for (const Failures kind : {Failures::only_that_one, Failures::that_and_all_later}) {
        refuse_memory(format, seed, store_number, kind);
        const TwinPages pages(true, 8, 8);
        refuse_memory(format, seed, raster_number, kind);
      }
    }
  }
}

TEST_F(ReaderFailures, OfTheDiskGiveAStatusAndLeaveNothing) {
  for (const Format format : all_formats) {
    for (const Seed &seed : seeds_of(format)) {
      for (const int32_t device : {store_number, raster_number}) {
        const TwinPages pages(false, 8, 8);
        MemoryFiles disk;
        disk.put("picture", seed.file);
        size_t n = 1;
        for (;; ++n) {
          const FailingMemory memory;
          const FailingFiles files(n);
          const int32_t status = read_named(format, "picture", device);
          EXPECT_EQ(files.open_files(), 0U);
          EXPECT_TRUE(is_known_status(format, status) || status == -1) << status;
          EXPECT_EQ(memory.live_blocks() > 0, device == store_number && is_delivered(status));
          release_picture();
          if (!files.failed()) break;
          if (n == 1) {
            EXPECT_EQ(status, -1);
          }
        }
        EXPECT_GT(n, 2U);
      }
    }
  }
}

TEST_F(ReaderFailures, OfPipesThatGiveFewBytesAtATimeDoNotMatter) {
  for (const Format format : all_formats) {
    for (const Seed &seed : seeds_of(format)) {
      MemoryFiles disk;
      disk.put("picture", seed.file);
      const int32_t whole = read_named(format, "picture", store_number);
      const Bytes row = picture_row(0, 1, 5);
      release_picture();
      FailingFiles files;
      files.limit_bytes_of_a_read(7);
      const int32_t status = read_named(format, "picture", store_number);
      EXPECT_TRUE(is_known_status(format, status)) << status;
      if (is_delivered(status)) {
        EXPECT_EQ(status, whole);
        EXPECT_EQ(picture_row(0, 1, 5), row) << name_of(format) << ", " << seed.name;
      }
      release_picture();
    }
  }
}

TEST_F(ReaderFailures, OfNamesGiveAStatus) {
  for (const Format format : all_formats) {
    EXPECT_EQ(read_named(format, "", store_number), -1);
    EXPECT_EQ(read_named(format, "no/such/folder/picture", store_number), -1);
    EXPECT_EQ(read_named(format, "no such file", raster_number), -1);
  }
}

TEST_F(ReaderFailures, OfADeviceThatNobodyAnswersForTouchNoFile) {
  for (const Format format : all_formats) {
    const Bytes file = seeds_of(format)[0].file;
    const TwinPages pages(true, 8, 8);
    for (const int32_t device : {window_number, 1, 100, -1}) {
      MemoryFiles disk;
      disk.put("picture", file);
      const FailingFiles files;
      EXPECT_EQ(read_named(format, "picture", device), -9) << device;
      EXPECT_EQ(files.calls(), 0U);
    }
    EXPECT_TRUE(pages.alike());
    EXPECT_TRUE(nothing_is_held());
    EXPECT_EQ(read_picture(format, file, store_number), 0);
    EXPECT_EQ(scale_picture(window_number, 5, 3), -9);
    EXPECT_TRUE(nothing_is_held());
  }
}

TEST_F(ReaderFailures, OfADrawingRecordThatIsNotThereTouchNoFile) {
  for (const Format format : all_formats) {
    const Bytes file = seeds_of(format)[0].file;
    MemoryFiles disk;
    disk.put("picture", file);
    {
      const FailingFiles files;
      EXPECT_EQ(read_named(format, "picture", raster_number), -1);
      EXPECT_EQ(files.calls(), 0U);
    }
    EXPECT_EQ(read_named(format, "picture", store_number), 0);  // memory needs none
    EXPECT_EQ(scale_picture(raster_number, 5, 3), -1);
    EXPECT_TRUE(nothing_is_held());
  }
}

TEST_F(ReaderFailures, BeforeAPictureIsBegunLeaveTheOneThatIsHeld) {
  const Seed seed = seeds_of(Format::png)[2];
  for (const Format format : all_formats) {
    ASSERT_EQ(read_picture(Format::png, seed.file, store_number), 0);
    const Bytes row = picture_row(0, 1, 5);
    EXPECT_EQ(read_named(format, "no such file", store_number), -1);
    EXPECT_EQ(picture_row(0, 1, 5), row);
    EXPECT_EQ(read_picture(format, {}, store_number) < 0, true);
    EXPECT_EQ(picture_row(0, 1, 5), row) << "an empty file is no picture";
    release_picture();
  }
}

// ---- a window

Bytes window_pixels;
constexpr int32_t window_width = 10;
constexpr int32_t window_height = 8;

void read_window(OutputContext * /*context*/, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                 int32_t rows) {
  ASSERT_LT(n, 0);
  ASSERT_EQ(rows, 1);
  const std::ptrdiff_t start = 3 * (y * window_width + x);
  std::copy_n(window_pixels.begin() + start, -3 * std::ptrdiff_t{n}, buffer);
}

void write_window(OutputContext * /*context*/, const uint8_t *buffer, int32_t x, int32_t y,
                  int32_t n) {
  ASSERT_LT(n, 0);
  ASSERT_TRUE(x >= 0 && y >= 0 && x - n <= window_width && y < window_height);
  std::copy_n(buffer, -3 * std::ptrdiff_t{n}, window_pixels.begin() + 3 * (y * window_width + x));
}

void flush_window(OutputContext * /*context*/) {}

const Device plain_window = {flush_window, read_window, write_window, nullptr, nullptr, nullptr};

TEST_F(ReaderFailures, DoNotBefallAWindowThatAnswers) {
  const TwinPages pages(true, window_width, window_height);
  register_window_device(&plain_window);
  PngPicture picture = random_png(6, 8, 5, 4, 3);
  const ExpectedPicture expected = expect_png(picture);
  for (const bool held : {false, true}) {
    for (const Place &place : {Place{2, 3, window_width, window_height},
                               Place{-2, -1, window_width, window_height}, Place{7, 6, 9, 7}}) {
      window_pixels.assign(3 * window_width * window_height, 100);
      // A page of black pixels with alpha is the model: R, G, B of window and page are the same.
      TwinPages model(true, window_width, window_height);
      literal::qqvfll(model.literal, 0, 0, window_width - 1, window_height - 1, 0x01646464);
      if (held) {
        EXPECT_EQ(read_picture(Format::png, png_file(picture), store_number, place), 0);
        EXPECT_EQ(scale_picture(window_number, 5, 4, place.x, place.y), 0);
      } else {
        EXPECT_EQ(read_picture(Format::png, png_file(picture), window_number, place), 0);
      }
      for (DeliveredRow row : expected.rows)
        literal::show_row(model.literal, row.rgb.data(), row.alpha.data(), place.x, place.y + row.y,
                          5, place.device_width, place.device_height);
      Bytes wanted;
      for (size_t i = 0; i < model.literal.pixels.size(); ++i) {
        if (i % 4 != 3) wanted.push_back(model.literal.pixels[i]);
      }
      EXPECT_EQ(window_pixels, wanted) << place.x << (held ? ", held" : "");
      qqwfree();
      register_window_device(&plain_window);
    }
  }
}

// ---- the decompressor

int fail_start(z_stream * /*stream*/) {
  return Z_VERSION_ERROR;
}
int run_result = Z_OK;
int runs_until_failure = 0;
int (*usual_run)(z_stream *, int) = nullptr;
int fail_run(z_stream *stream, int flush) {
  return runs_until_failure-- > 0 ? usual_run(stream, flush) : run_result;
}
int (*usual_end)(z_stream *) = nullptr;
int fail_end(z_stream *stream) {
  usual_end(stream);
  return Z_STREAM_ERROR;
}

TEST_F(ReaderFailures, OfTheDecompressorHaveStatusesOfTheirOwn) {
  for (const bool interlaced : {false, true}) {
    PngPicture picture = random_png(2, 8, 7, 5, 1);
    picture.interlaced = interlaced;
    const Bytes file = png_file(picture);
    const TwinPages pages(true, 8, 8);
    for (const int32_t device : {store_number, raster_number}) {
      const auto check = [&](int32_t status, const char *what) {
        const FailingMemory memory;
        EXPECT_EQ(read_picture(Format::png, file, device), status) << what;
        EXPECT_EQ(memory.live_blocks(), 0U) << what;
        inflate_gate = usual_gate_;
      };
      inflate_gate.start = fail_start;
      check(-3, "not started");
      usual_run = usual_gate_.run;
      inflate_gate.run = fail_run;
      for (const int result : {Z_MEM_ERROR, Z_DATA_ERROR, Z_NEED_DICT}) {
        runs_until_failure = 0;
        run_result = result;
        inflate_gate.run = fail_run;
        check(-4, "damaged");
      }
      usual_end = usual_gate_.end;
      inflate_gate.end = fail_end;
      check(-6, "not ended");
    }
  }
  // A worse status stays.
  PngPicture picture = random_png(2, 8, 7, 5, 1);
  Bytes data = zlib_stream(png_raw_rows(picture, 0));
  data[0] ^= 0x0f;
  inflate_gate.end = fail_end;
  EXPECT_EQ(read_picture(Format::png, png_with_data(picture, data), store_number), -4);
}

}  // namespace
}  // namespace quorix::testing
