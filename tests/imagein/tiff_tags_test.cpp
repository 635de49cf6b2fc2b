// SPDX-License-Identifier: MIT
//
// The tags of TIFF files: what is assumed without them, what is refused, how values may be stored.
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/imagein/tiff_files.h"

namespace quorix::testing {
namespace {

class TiffTags : public ReaderTest {};

TiffPicture grey(int32_t width, int32_t height, int32_t rows_per_strip, uint32_t seed = 1) {
  TiffPicture picture;
  picture.width = width;
  picture.height = height;
  picture.rows_per_strip = rows_per_strip;
  cut_into_blocks(&picture, random_tiff_samples(picture, seed));
  return picture;
}

TiffPicture rgb(int32_t width, int32_t height, int32_t rows_per_strip, uint32_t bits = 8) {
  TiffPicture picture;
  picture.width = width;
  picture.height = height;
  picture.bits = bits;
  picture.samples = 3;
  picture.photometric = 2;
  picture.rows_per_strip = rows_per_strip;
  cut_into_blocks(&picture, random_tiff_samples(picture, 2));
  return picture;
}

TiffPicture mapped(uint32_t bits) {
  TiffPicture picture;
  picture.width = 5;
  picture.height = 4;
  picture.bits = bits;
  picture.photometric = 3;
  picture.rows_per_strip = 2;
  picture.map = random_samples(size_t{3} << std::min(bits, 8U), 16, 3);
  cut_into_blocks(&picture, random_tiff_samples(picture, 3));
  return picture;
}

void check_parts(const TiffParts &parts, const TiffPicture &picture, const std::string &what) {
  check_reader(Format::tiff, tiff_file(parts), expect_tiff(picture), what);
}

void check_refused(const TiffParts &parts, int32_t status, const std::string &what) {
  ExpectedPicture expected;
  expected.status = status;
  check_reader(Format::tiff, tiff_file(parts), expected, what);
}

TEST_F(TiffTags, MayBeShortOrLong) {
  for (const bool big_endian : {false, true}) {
    TiffPicture picture = grey(5, 4, 1);
    picture.big_endian = big_endian;
    TiffParts parts = tiff_parts(picture, 1);
    for (TiffEntry &entry : parts.entries)
      entry.type = tiff_long;
    check_parts(parts, picture, "all LONG");
    for (TiffEntry &entry : parts.entries)
      entry.type = tiff_short;
    check_parts(parts, picture, "all SHORT");
  }
}

TEST_F(TiffTags, OfTwoShortValuesStandInline) {
  for (const bool big_endian : {false, true}) {
    TiffPicture picture = grey(5, 4, 2);
    picture.big_endian = big_endian;
    TiffParts parts = tiff_parts(picture, 1);
    parts.set(tiff_strip_offsets, {}, tiff_short);
    parts.set(tiff_strip_counts, {}, tiff_short);
    check_parts(parts, picture, "two strips, offsets SHORT");
  }
}

TEST_F(TiffTags, OfOneStripStandInline) {
  for (const uint32_t type : {tiff_short, tiff_long}) {
    const TiffPicture picture = grey(5, 4, 4);
    TiffParts parts = tiff_parts(picture, 1);
    parts.set(tiff_strip_offsets, {}, type);
    parts.set(tiff_strip_counts, {}, type);
    check_parts(parts, picture, "one strip");
  }
}

TEST_F(TiffTags, OfTheFirstByteTellTheOrder) {
  TiffPicture picture = grey(5, 4, 2);
  Bytes file = tiff_file(tiff_parts(picture, 1));
  file[1] = 'x';
  file[2] = 99;  // neither the second mark nor the version is looked at
  check_reader(Format::tiff, file, expect_tiff(picture), "I and anything");
  picture.big_endian = true;
  file = tiff_file(tiff_parts(picture, 1));
  file[0] = '?';
  file[1] = 'I';
  check_reader(Format::tiff, file, expect_tiff(picture), "anything else");
}

TEST_F(TiffTags, NobodyKnowsArePassedOver) {
  const TiffPicture picture = grey(5, 4, 2);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(254, {0}, tiff_long);
  parts.set(270, std::vector<uint32_t>(40, 65));
  parts.set(282, {300, 1}, tiff_long);
  parts.set(305, {1, 2}, 99);
  parts.set(65000, std::vector<uint32_t>(1000, 7), tiff_long);
  check_parts(parts, picture, "unknown tags");
}

TEST_F(TiffTags, AreReadInAnyOrder) {
  const TiffPicture picture = rgb(5, 4, 2);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(tiff_sample_format, {1, 1, 1});
  std::reverse(parts.entries.begin(), parts.entries.end());
  check_parts(parts, picture, "backwards");
}

TEST_F(TiffTags, AreReadOnceEachWhereverTheOneOfBitsStands) {
  // Bits per sample as second, third, fourth ... of the entries, with a format of three at the end.
  for (size_t place = 0; place < 8; ++place) {
    const TiffPicture picture = rgb(5, 4, 2);
    TiffParts parts = tiff_parts(picture, 1);
    parts.set(tiff_sample_format, {1, 1, 1});
    const TiffEntry bits = parts.entries[2];
    ASSERT_EQ(bits.tag, static_cast<uint32_t>(tiff_bits));
    parts.entries.erase(parts.entries.begin() + 2);
    parts.entries.insert(parts.entries.begin() + static_cast<std::ptrdiff_t>(place), bits);
    check_parts(parts, picture, "bits at " + std::to_string(place));
  }
}

TEST_F(TiffTags, BeyondTheCountAreNotRead) {
  const TiffPicture picture = grey(5, 4, 2);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(65000, {5}, tiff_short);
  Bytes file = tiff_file(parts);
  // One entry fewer, and the last becomes a compression that would be refused.
  const size_t directory = file[4] + 256U * file[5];
  const size_t count = file[directory];
  file[directory] = static_cast<uint8_t>(count - 1);
  file[directory + 2 + 12 * (count - 1)] = 3;
  file[directory + 2 + 12 * (count - 1) + 1] = 1;  // 259
  check_reader(Format::tiff, file, expect_tiff(picture), "a later entry");
}

TEST_F(TiffTags, OfRowsPerStripMissingMeanOneStrip) {
  const TiffPicture picture = grey(5, 4, 4);
  TiffParts parts = tiff_parts(picture, 1);
  parts.drop(tiff_rows_per_strip);
  check_parts(parts, picture, "no rows per strip");
  parts.set(tiff_rows_per_strip, {0xffffffffU}, tiff_long);
  check_parts(parts, picture, "rows per strip without end");
}

TEST_F(TiffTags, OfByteCountsMissingAreWorkedOutForOnePlainStrip) {
  for (const uint32_t bits : {1U, 4U, 8U}) {
    TiffPicture picture;
    picture.width = 5;
    picture.height = 3;
    picture.bits = bits;
    picture.rows_per_strip = 3;
    cut_into_blocks(&picture, random_tiff_samples(picture, 3));
    TiffParts parts = tiff_parts(picture, 1);
    parts.drop(tiff_strip_counts);
    if (bits == 8) check_parts(parts, picture, "no byte counts");
    if (bits == 8) continue;
    // The count leaves no room for what fills rows up to bytes: 15 bits are 2 bytes, not 3.
    ASSERT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), 0);
    const literal::Picture expected = stored_picture(expect_tiff(picture));
    EXPECT_EQ(picture_row(0, 0, 5), Bytes(expected.rgb.begin(), expected.rgb.begin() + 15));
    release_picture();
  }
  TiffParts parts = tiff_parts(grey(5, 4, 2), 1);
  parts.drop(tiff_strip_counts);
  const int32_t status = read_picture(Format::tiff, tiff_file(parts), store_number);
  EXPECT_TRUE(status == -3 || status == -11) << status;
  EXPECT_TRUE(nothing_is_held());
}

TEST_F(TiffTags, WithDefaultsMayBeMissing) {
  // One bit, one sample... SamplesPerPixel has no default, but nothing depends on it here.
  TiffPicture picture;
  picture.width = 9;
  picture.height = 3;
  picture.bits = 1;
  picture.rows_per_strip = 3;
  cut_into_blocks(&picture, random_tiff_samples(picture, 3));
  TiffParts parts = tiff_parts(picture, 1);
  parts.drop(tiff_bits);
  parts.drop(tiff_samples);
  check_parts(parts, picture, "a bit a pixel");
}

TEST_F(TiffTags, OfUnsupportedKindsAreRefused) {
  const auto with = [](uint32_t tag, std::vector<uint32_t> values) {
    TiffParts parts = tiff_parts(rgb(5, 4, 2), 1);
    parts.set(tag, std::move(values));
    return parts;
  };
  for (const uint32_t bits : {0U, 3U, 5U, 7U, 12U, 24U, 64U, 0xffffU})
    check_refused(with(tiff_bits, {bits, bits, bits}), -11, "bits " + std::to_string(bits));
  check_refused(with(tiff_bits, {8, 8, 4}), -11, "bits that differ");
  check_refused(with(tiff_bits, {8, 4, 8}), -11, "bits that differ");
  for (const uint32_t compression : {0U, 2U, 3U, 4U, 6U, 7U, 8U, 32771U, 32946U})
    check_refused(with(tiff_compression, {compression}), -11, "compression");
  for (const uint32_t photometric : {4U, 5U, 6U, 8U, 32803U})
    check_refused(with(tiff_photometric, {photometric}), -11, "photometric");
  for (const uint32_t samples : {0U, 2U, 4U, 6U, 0xffffU})
    check_refused(with(tiff_samples, {samples}), -11, "samples");
  check_refused(with(tiff_planar, {2}), -11, "planes");
  for (const uint32_t format : {0U, 2U, 4U, 5U})
    check_refused(with(tiff_sample_format, {format, format, format}), -11, "sample format");
  check_refused(with(tiff_sample_format, {1, 1, 3}), -11, "sample formats that differ");
  for (const uint32_t bits : {1U, 4U, 16U}) {
    TiffParts parts = tiff_parts(rgb(5, 4, 2, bits), 1);
    parts.set(tiff_predictor, {2});
    check_refused(parts, -11, "predictor with other than 8 bits");
  }
}

TEST_F(TiffTags, OfKnownKindsAreNot) {
  const TiffPicture picture = rgb(5, 4, 2);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(tiff_planar, {1});
  parts.set(tiff_predictor, {1});
  parts.set(tiff_sample_format, {1, 1, 1});
  check_parts(parts, picture, "all said");
}

TEST_F(TiffTags, OfFiveSamplesGoWithPlainDataAlone) {
  TiffParts parts = tiff_parts(rgb(5, 4, 2), 5);
  parts.set(tiff_samples, {5});
  check_refused(parts, -11, "five samples, LZW");
}

TEST_F(TiffTags, OfPalettesAreRefusedAbove8BitsAndWithoutAMap) {
  check_refused(tiff_parts(mapped(16), 1), -11, "16 bits with a palette");
  TiffParts three = tiff_parts(rgb(5, 4, 2), 1);
  three.set(tiff_photometric, {3});
  three.set(tiff_colour_map, std::vector<uint32_t>(768, 1));
  check_refused(three, -11, "three samples with a palette");
  TiffParts parts = tiff_parts(mapped(8), 1);
  parts.drop(tiff_colour_map);
  check_refused(parts, -11, "no map");
}

TEST_F(TiffTags, Of32BitsNeedOneSampleOrFloats) {
  check_refused(tiff_parts(rgb(5, 4, 2, 32), 1), -11, "three whole numbers of 32 bits");
}

TEST_F(TiffTags, OfByteCountsShorterThanTheOffsetsAreAFormatError) {
  TiffParts parts = tiff_parts(grey(5, 4, 2), 1);
  parts.set(tiff_strip_counts, {10});
  check_refused(parts, -3, "one count for two strips");
}

TEST_F(TiffTags, WithoutPixelsToReadAreRefused) {
  TiffParts parts = tiff_parts(grey(5, 4, 2), 1);
  parts.set(tiff_rows_per_strip, {0});
  check_refused(parts, -11, "no rows in a strip");
  TiffPicture picture = grey(5, 4, 2);
  picture.rows_per_strip = 0;
  picture.tile_width = picture.tile_height = 4;
  cut_into_blocks(&picture, random_tiff_samples(picture, 3));
  for (const uint32_t tag : {tiff_tile_width, tiff_tile_height}) {
    TiffParts tiles = tiff_parts(picture, 1);
    tiles.set(tag, {0});
    check_refused(tiles, -11, "empty tiles");
  }
}

TEST_F(TiffTags, OfMoreSamplesThanBitsConvertWhatThereIs) {
  // Three samples, but bits listed once: rows of 6 bytes for 6 pixels are two pixels.
  TiffPicture picture = grey(6, 1, 1);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(tiff_samples, {3});
  parts.set(tiff_photometric, {2});
  ASSERT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), 0);
  Bytes expected = picture.data[0];
  expected.resize(18, 0);
  EXPECT_EQ(picture_row(0, 0, 6), expected);
}

TEST_F(TiffTags, OfPlainStripsTooShortLeaveTheRestBlack) {
  TiffPicture picture = grey(5, 4, 4);
  TiffParts parts = tiff_parts(picture, 1);
  parts.set(tiff_strip_counts, {10}, tiff_long);
  ASSERT_EQ(read_picture(Format::tiff, tiff_file(parts), store_number), 0);
  for (size_t i = 10; i < 20; ++i)
    picture.data[0][i] = 0;
  EXPECT_TRUE(is_held(stored_picture(expect_tiff(picture))));
}

TEST_F(TiffTags, ThatPointBeyondTheFileGiveAStatus) {
  const auto status_with = [](uint32_t tag, uint32_t value) {
    TiffParts parts = tiff_parts(grey(5, 4, 4), 1);
    parts.set(tag, {value}, tiff_long);
    const int32_t status = read_picture(Format::tiff, tiff_file(parts), store_number);
    release_picture();
    return status;
  };
  for (const uint32_t tag : {tiff_strip_offsets, tiff_strip_counts}) {
    for (const uint32_t value : {100000U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
      const int32_t status = status_with(tag, value);
      EXPECT_TRUE(status == 0 || status == -2 || status == -3 || status == -11 || status == -12)
          << status;
    }
  }
  for (const uint32_t tag : {tiff_width, tiff_height}) {
    for (const uint32_t value : {0U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
      const int32_t status = status_with(tag, value);
      EXPECT_TRUE(status == -2 || status == -3 || status == -11 || status == -12) << status;
    }
  }
}

}  // namespace
}  // namespace quorix::testing
