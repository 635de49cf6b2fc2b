// SPDX-License-Identifier: MIT
//
// What qqpltif makes of files of five values of 16 bits per pixel.
#include "quorix/imagein.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/imagein/tiff_files.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class TiffChannels : public ReaderTest {};

using Words = std::vector<uint16_t>;

TiffPicture five_values(bool big_endian, int32_t width, int32_t height, int32_t rows_per_strip) {
  TiffPicture picture;
  picture.big_endian = big_endian;
  picture.width = width;
  picture.height = height;
  picture.bits = 16;
  picture.samples = 5;
  picture.photometric = 1;
  picture.rows_per_strip = rows_per_strip;
  return picture;
}

std::vector<uint32_t> fill(TiffPicture *picture) {
  const std::vector<uint32_t> values = random_tiff_samples(*picture, 5);
  cut_into_blocks(picture, values);
  return values;
}

int32_t read_channels(const Bytes &file, Words *array, int32_t size, int32_t channel) {
  MemoryFiles files;
  files.put("channels", file);
  int32_t status = 12345;
  EXPECT_EQ(
      qqpltif("channels", array == nullptr ? nullptr : array->data(), &size, &channel, &status), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return status;
}

// The array, which must be filled to its end and not further.
Words channels_of(const Bytes &file, int32_t channel, size_t expected_count) {
  const auto count = static_cast<int32_t>(expected_count);
  EXPECT_EQ(read_channels(file, nullptr, 0, channel), count);
  Words array(expected_count + 2, 0xABCD);
  EXPECT_EQ(read_channels(file, &array, count, channel), count);
  EXPECT_EQ(array[expected_count], 0xABCD);
  EXPECT_EQ(array[expected_count + 1], 0xABCD);
  array.resize(expected_count);
  return array;
}

void check_channels(const TiffPicture &picture, const std::vector<uint32_t> &values) {
  const Bytes file = tiff_file(tiff_parts(picture, 1));
  const size_t pixels = values.size() / 5;
  Words planes;
  for (size_t value = 0; value < 5; ++value) {
    Words plane;
    for (size_t pixel = 0; pixel < pixels; ++pixel)
      plane.push_back(static_cast<uint16_t>(values[5 * pixel + value]));
    EXPECT_EQ(channels_of(file, static_cast<int32_t>(value) + 1, pixels), plane) << value;
    planes.insert(planes.end(), plane.begin(), plane.end());
  }
  EXPECT_EQ(channels_of(file, 0, 5 * pixels), planes);
  Bytes colours;
  for (size_t pixel = 0; pixel < pixels; ++pixel) {
    for (const size_t value : {2U, 1U, 0U})
      put_u8(&colours, values[5 * pixel + value] >> 8);
  }
  const Words packed = channels_of(file, -1, (3 * pixels + 1) / 2);
  const auto *bytes = reinterpret_cast<const uint8_t *>(packed.data());
  EXPECT_EQ(Bytes(bytes, bytes + colours.size()), colours);
}

TEST_F(TiffChannels, AreTakenApartInBothByteOrders) {
  for (const bool big_endian : {false, true}) {
    for (const int32_t rows : {1, 2, 6}) {
      TiffPicture picture = five_values(big_endian, 4, 6, rows);
      const auto values = fill(&picture);
      check_channels(picture, values);
    }
    TiffPicture odd = five_values(big_endian, 3, 3, 1);
    const auto values = fill(&odd);
    check_channels(odd, values);
  }
}

TEST_F(TiffChannels, OfAShortLastStripEndInZeros) {
  TiffPicture picture = five_values(false, 3, 5, 2);
  const auto values = fill(&picture);
  const Bytes file = tiff_file(tiff_parts(picture, 1));
  // Three strips of at most 60 bytes count as 180 bytes: 18 pixels, of which 15 are there.
  Words expected;
  for (size_t pixel = 0; pixel < 18; ++pixel)
    expected.push_back(pixel < 15 ? static_cast<uint16_t>(values[5 * pixel + 1]) : uint16_t{0});
  EXPECT_EQ(channels_of(file, 2, 18), expected);
  const Words planes = channels_of(file, 0, 90);
  EXPECT_EQ(Words(planes.begin() + 18, planes.begin() + 36), expected);
  const Words colours = channels_of(file, -1, 27);
  EXPECT_EQ(Words(colours.begin() + 23, colours.end()), Words(4, 0));
}

TEST_F(TiffChannels, NeedRoomForAll) {
  TiffPicture picture = five_values(false, 4, 6, 2);
  fill(&picture);
  const Bytes file = tiff_file(tiff_parts(picture, 1));
  Words array(200, 0xABCD);
  EXPECT_EQ(read_channels(file, &array, 119, 0), -12);
  EXPECT_EQ(read_channels(file, &array, 23, 3), -12);
  EXPECT_EQ(read_channels(file, &array, 35, -1), -12);
  EXPECT_EQ(read_channels(file, &array, -1, 0), -12);
  EXPECT_EQ(array, Words(200, 0xABCD));
  EXPECT_EQ(read_channels(file, &array, 200, 3), 24);  // more room than needed
  EXPECT_EQ(Words(array.begin() + 24, array.end()), Words(176, 0xABCD));
}

TEST_F(TiffChannels, NeedAByteOrderMark) {
  TiffPicture picture = five_values(false, 4, 6, 2);
  fill(&picture);
  const Bytes file = tiff_file(tiff_parts(picture, 1));
  for (const auto &[first, second] : {std::pair{'I', 'M'}, {'M', 'I'}, {'I', 'x'}, {'x', 'I'}}) {
    Bytes other = file;
    other[0] = static_cast<uint8_t>(first);
    other[1] = static_cast<uint8_t>(second);
    EXPECT_EQ(read_channels(other, nullptr, 0, 0), -3);
  }
}

TEST_F(TiffChannels, OfUnsupportedKindsAreRefused) {
  TiffPicture picture = five_values(false, 4, 6, 2);
  fill(&picture);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(tiff_compression, {5});
  EXPECT_EQ(read_channels(tiff_file(parts), nullptr, 0, 0), -11);
  parts = tiff_parts(picture, 1);
  parts.set(tiff_planar, {2});
  EXPECT_EQ(read_channels(tiff_file(parts), nullptr, 0, 0), -11);
  parts = tiff_parts(picture, 1);
  parts.set(tiff_strip_counts, {10});
  EXPECT_EQ(read_channels(tiff_file(parts), nullptr, 0, 0), -3);
  for (const int32_t channel : {INT32_MIN, -2, 6, INT32_MAX})
    EXPECT_EQ(read_channels(tiff_file(tiff_parts(picture, 1)), nullptr, 0, channel), -11);
  picture.rows_per_strip = 0;
  picture.tile_width = picture.tile_height = 4;
  fill(&picture);
  EXPECT_EQ(read_channels(tiff_file(tiff_parts(picture, 1)), nullptr, 0, 0), -11);
}

TEST_F(TiffChannels, ThatNoCountCanNameAreTooLarge) {
  // 40,000 strips that share 120,000 bytes count as 2,400,000,000 values.
  TiffPicture picture = five_values(false, 12000, 40000, 1);
  TiffParts parts = tiff_parts(picture, 1);
  parts.blocks = {Bytes(120000, 1)};
  parts.set(tiff_strip_offsets, std::vector<uint32_t>(40000, 8), tiff_long);
  parts.set(tiff_strip_counts, std::vector<uint32_t>(40000, 120000), tiff_long);
  EXPECT_EQ(read_channels(tiff_file(parts), nullptr, 0, 0), -12);
  EXPECT_EQ(read_channels(tiff_file(parts), nullptr, 0, 1), 480000000);  // one value of each pixel
}

TEST_F(TiffChannels, NeedAFile) {
  int32_t status = 0;
  const int32_t zero = 0;
  EXPECT_EQ(qqpltif("no such file.tif", nullptr, &zero, &zero, &status), 0);
  EXPECT_EQ(status, -1);
}

TEST_F(TiffChannels, GiveAStatusWhereMemoryOrDiskFail) {
  TiffPicture picture = five_values(false, 4, 6, 2);
  fill(&picture);
  const Bytes file = tiff_file(tiff_parts(picture, 1));
  size_t n = 1;
  for (;; ++n) {
    Words array(120, 0);
    const FailingMemory memory(n);
    const int32_t status = read_channels(file, &array, 120, 0);
    EXPECT_EQ(memory.live_blocks(), 0U);
    if (!memory.failed()) {
      EXPECT_EQ(status, 120);
      break;
    }
    EXPECT_EQ(status, -2);
  }
  EXPECT_GT(n, 1U);
  MemoryFiles disk;
  disk.put("channels", file);
  for (n = 1;; ++n) {
    Words array(120, 0);
    const FailingFiles files(n);
    int32_t status = 0;
    const int32_t size = 120;
    const int32_t channel = 0;
    qqpltif("channels", array.data(), &size, &channel, &status);
    EXPECT_EQ(files.open_files(), 0U);
    if (!files.failed()) break;
    EXPECT_TRUE(status == 120 || status == -1 || status == -3) << status;
  }
  EXPECT_GT(n, 2U);
}

TEST_F(TiffChannels, OfCutOrChangedFilesNeverGoPastTheArray) {
  TiffPicture picture = five_values(true, 2, 3, 1);
  fill(&picture);
  const Bytes file = tiff_file(tiff_parts(picture, 1));
  const auto check = [](const Bytes &bytes) {
    const FailingMemory memory;
    for (const int32_t channel : {0, 4, -1}) {
      Words array(32, 0xABCD);
      const int32_t status = read_channels(bytes, &array, 30, channel);
      EXPECT_TRUE((status >= 0 && status <= 30) || status == -2 || status == -3 || status == -11 ||
                  status == -12)
          << status;
      EXPECT_EQ(array[30], 0xABCD);
      EXPECT_EQ(array[31], 0xABCD);
    }
    EXPECT_EQ(memory.live_blocks(), 0U);
  };
  for (size_t length = 0; length < file.size(); ++length)
    check(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
  for (uint32_t seed = 0; seed < 1000; ++seed) {
    RandomNumbers random(seed);
    Bytes changed = file;
    for (uint32_t i = 0; i <= seed % 3; ++i)
      changed[random.below(static_cast<uint32_t>(changed.size()))] = random.byte();
    check(changed);
  }
}

}  // namespace
}  // namespace quorix::testing
