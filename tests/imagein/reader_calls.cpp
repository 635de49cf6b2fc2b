// SPDX-License-Identifier: MIT
//
// The readers on files in memory, whichever way a picture goes.
#include "tests/imagein/reader_calls.h"

#include <algorithm>

#include "core/device.h"
#include "quorix/imagein.h"
#include "quorix/window.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {

namespace {

int32_t call_reader(Format format, const char *name, int32_t device, const Place &place) {
  int32_t status = 12345;
  const auto call = [&](auto reader) {
    EXPECT_EQ(reader(name, &device, nullptr, &place.device_width, &place.device_height, &place.x,
                     &place.y, &status),
              0);
  };
  switch (format) {
    case Format::bmp:
      call(qqpibmp);
      break;
    case Format::gif:
      call(qqpigif);
      break;
    case Format::png:
      call(qqpipng);
      break;
    case Format::tiff:
      call(qqpitif);
      break;
  }
  return status;
}

}  // namespace

const char *name_of(Format format) {
  switch (format) {
    case Format::bmp:
      return "BMP";
    case Format::gif:
      return "GIF";
    case Format::png:
      return "PNG";
    default:
      return "TIFF";
  }
}

int32_t read_named(Format format, const std::string &name, int32_t device, const Place &place) {
  return call_reader(format, name.c_str(), device, place);
}

int32_t read_picture(Format format, const Bytes &file, int32_t device, const Place &place) {
  MemoryFiles files;
  files.put("picture", file);
  const int32_t status = call_reader(format, "picture", device, place);
  EXPECT_EQ(files.open_files(), 0U);
  return status;
}

int32_t scale_picture(int32_t device, int32_t width, int32_t height, int32_t x, int32_t y) {
  int32_t status = 12345;
  EXPECT_EQ(qqpiscl(&device, nullptr, &width, &height, &x, &y, &status), 0);
  return status;
}

int32_t crop_picture(int32_t x, int32_t y, int32_t width, int32_t height, int32_t *result) {
  int32_t status = 12345;
  const int32_t given = qqpiwin(&x, &y, &width, &height, &status);
  EXPECT_EQ(given, status == 0 ? 0 : 1);
  if (result != nullptr) *result = given;
  return status;
}

void release_picture() {
  const int32_t none = 0;
  const int32_t release = -1;
  uint8_t unused[3];
  EXPECT_EQ(qqpgrow(unused, &none, &none, &release), 0);
}

Bytes picture_row(int32_t x, int32_t y, int32_t count) {
  // One byte more, so that there is an address even for no pixels.
  Bytes row(3 * static_cast<size_t>(std::max(count, 0)) + 1, 0xEE);
  EXPECT_EQ(qqpgrow(row.data(), &x, &y, &count), 0);
  EXPECT_EQ(row.back(), 0xEE) << "written behind the row";
  row.pop_back();
  return row;
}

void ReaderTest::SetUp() {
  qqwfree();
  register_window_device(nullptr);
  release_picture();
}

void ReaderTest::TearDown() {
  release_picture();
  qqwfree();
  register_window_device(nullptr);
}

}  // namespace quorix::testing
