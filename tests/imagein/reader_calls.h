// SPDX-License-Identifier: MIT
//
// The image readers with plain arguments, from bytes instead of files.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

enum class Format { bmp, gif, png, tiff };
inline constexpr Format all_formats[] = {Format::bmp, Format::gif, Format::png, Format::tiff};
const char *name_of(Format format);

inline constexpr int32_t store_number = 0;
inline constexpr int32_t raster_number = 101;
inline constexpr int32_t window_number = 72;

// Where a picture goes on a device, and how far the device reaches.
struct Place {
  int32_t x = 0;
  int32_t y = 0;
  int32_t device_width = 10000;
  int32_t device_height = 10000;
};

// Each gives the status.
int32_t read_named(Format format, const std::string &name, int32_t device, const Place &place = {});
// The bytes as a file; the test fails if it is still open afterwards.
int32_t read_picture(Format format, const Bytes &file, int32_t device, const Place &place = {});
int32_t scale_picture(int32_t device, int32_t width, int32_t height, int32_t x = 0, int32_t y = 0);
// The result stands in *result.
int32_t crop_picture(int32_t x, int32_t y, int32_t width, int32_t height,
                     int32_t *result = nullptr);
void release_picture();
// `count` pixels of the held picture.
Bytes picture_row(int32_t x, int32_t y, int32_t count);

// Each test of readers starts without a record, a picture or a window, and leaves none.
class ReaderTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
};

}  // namespace quorix::testing
