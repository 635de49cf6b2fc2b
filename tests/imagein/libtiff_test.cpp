// SPDX-License-Identifier: MIT
//
// TIFF files written by libtiff, where the build has it.
#ifdef QUORIX_TEST_WITH_LIBTIFF

#include <tiffio.h>

#include <cstring>

#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"
#include "tests/imagein/tiff_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

class TiffFromLibtiff : public ReaderTest {};

struct Kind {
  uint32_t photometric, bits, samples, format;
};
constexpr Kind kinds[] = {{0, 1, 1, 1},  {0, 2, 1, 1},  {0, 4, 1, 1},  {0, 8, 1, 1},
                          {1, 1, 1, 1},  {1, 2, 1, 1},  {1, 4, 1, 1},  {1, 8, 1, 1},
                          {1, 16, 1, 1}, {1, 32, 1, 1}, {1, 32, 1, 3}, {2, 8, 3, 1},
                          {2, 16, 3, 1}, {3, 2, 1, 1},  {3, 4, 1, 1},  {3, 8, 1, 1}};
constexpr uint32_t compressions[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_PACKBITS};

TiffPicture picture_of(const Kind &kind, bool tiles, bool big_endian) {
  TiffPicture picture;
  picture.width = 37;
  picture.height = 21;
  picture.photometric = kind.photometric;
  picture.bits = kind.bits;
  picture.samples = kind.samples;
  picture.format = kind.format;
  picture.big_endian = big_endian;
  picture.rows_per_strip = tiles ? 0 : 5;
  picture.tile_width = picture.tile_height = 16;  // the least that the format allows
  if (kind.photometric == 3) picture.map = random_samples(size_t{3} << kind.bits, 16, kind.bits);
  return picture;
}

void set_tags(TIFF *tiff, const TiffPicture &picture, uint32_t compression) {
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, picture.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, picture.samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, picture.photometric);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  if (picture.format == 3) TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_IEEEFP);
  if (picture.predictor == 2) TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  if (picture.rows_per_strip > 0) {
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, picture.rows_per_strip);
  } else {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, picture.tile_width);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, picture.tile_height);
  }
  if (picture.map.empty()) return;
  std::vector<uint16_t> map;
  for (const uint32_t value : picture.map)
    map.push_back(static_cast<uint16_t>(value));
  const size_t entries = map.size() / 3;
  TIFFSetField(tiff, TIFFTAG_COLORMAP, &map[0], &map[entries], &map[2 * entries]);
}

// libtiff takes words in the order of this machine and turns them itself.
Bytes in_host_order(const TiffPicture &picture, Bytes block) {
  const size_t bytes = picture.bits / 8;
  if (!picture.big_endian || bytes < 2) return block;
  for (size_t at = 0; at + bytes <= block.size(); at += bytes)
    std::reverse(block.begin() + static_cast<std::ptrdiff_t>(at),
                 block.begin() + static_cast<std::ptrdiff_t>(at + bytes));
  return block;
}

// Blocks as picture.data has them, before any prediction.
Bytes tiff_by_libtiff(const TiffPicture &picture, uint32_t compression) {
  const TemporaryFolder folder;
  const std::string name = folder.file("picture.tif");
  TIFF *tiff = TIFFOpen(name.c_str(), picture.big_endian ? "wb" : "wl");
  if (tiff == nullptr) {
    ADD_FAILURE() << "libtiff opens nothing";
    return {};
  }
  set_tags(tiff, picture, compression);
  for (size_t i = 0; i < picture.data.size(); ++i) {
    Bytes block = in_host_order(picture, picture.data[i]);
    const auto number = static_cast<uint32_t>(i);
    const auto size = static_cast<tmsize_t>(block.size());
    EXPECT_EQ(picture.rows_per_strip > 0 ? TIFFWriteEncodedStrip(tiff, number, block.data(), size)
                                         : TIFFWriteEncodedTile(tiff, number, block.data(), size),
              size);
  }
  TIFFClose(tiff);
  return read_whole_file(name);
}

// What prediction leaves in the file: differences within each row.
void predict(TiffPicture *picture) {
  const int32_t columns = picture->rows_per_strip > 0 ? picture->width : picture->tile_width;
  const size_t step = picture->samples;
  const size_t row_bytes = static_cast<size_t>(columns) * step;
  for (Bytes &block : picture->data) {
    for (size_t i = block.size(); i > 0; --i) {
      if ((i - 1) % row_bytes < step) continue;
      block[i - 1] = static_cast<uint8_t>(block[i - 1] - block[i - 1 - step]);
    }
  }
}

TEST_F(TiffFromLibtiff, IsReadInEveryForm) {
  uint32_t seed = 1;
  for (const Kind &kind : kinds) {
    for (const uint32_t compression : compressions) {
      for (const bool tiles : {false, true}) {
        const bool big_endian = seed % 2 == 0;
        TiffPicture picture = picture_of(kind, tiles, big_endian);
        cut_into_blocks(&picture, random_tiff_samples(picture, ++seed));
        check_reader(Format::tiff, tiff_by_libtiff(picture, compression), expect_tiff(picture),
                     "photometric " + std::to_string(kind.photometric) + ", bits " +
                         std::to_string(kind.bits) + ", compression " +
                         std::to_string(compression) + (tiles ? ", tiles" : ", strips") +
                         (big_endian ? ", big-endian" : ""));
      }
    }
  }
}

TEST_F(TiffFromLibtiff, IsReadInBothOrdersWithWordsOfEverySize) {
  for (const Kind &kind : {Kind{2, 16, 3, 1}, Kind{1, 32, 1, 3}, Kind{1, 8, 1, 1}}) {
    for (const bool big_endian : {false, true}) {
      TiffPicture picture = picture_of(kind, false, big_endian);
      cut_into_blocks(&picture, random_tiff_samples(picture, 9));
      check_reader(Format::tiff, tiff_by_libtiff(picture, COMPRESSION_LZW), expect_tiff(picture),
                   big_endian ? "big-endian" : "little-endian");
    }
  }
}

TEST_F(TiffFromLibtiff, WithPredictionIsRightForOneRowAStripAlone) {
  for (const Kind &kind : {Kind{1, 8, 1, 1}, Kind{2, 8, 3, 1}}) {
    for (const int32_t rows : {1, 4, 0}) {
      TiffPicture picture = picture_of(kind, rows == 0, false);
      picture.rows_per_strip = rows;
      cut_into_blocks(&picture, random_tiff_samples(picture, 9));
      const ExpectedPicture samples = expect_tiff(picture);
      picture.predictor = 2;
      const Bytes file = tiff_by_libtiff(picture, COMPRESSION_LZW);
      predict(&picture);
      // kept: sums go on from one row to the next
      check_reader(Format::tiff, file, expect_tiff(picture), "prediction");
      if (rows == 1) check_reader(Format::tiff, file, samples, "prediction, one row a strip");
    }
  }
}

TEST_F(TiffFromLibtiff, IsReadWithLongLzwData) {
  TiffPicture picture = picture_of({2, 8, 3, 1}, false, false);
  picture.width = 150;
  picture.height = picture.rows_per_strip = 120;
  for (const uint32_t limit : {255U, 3U}) {
    Bytes data = random_bytes(3 * 150 * 120, limit);
    for (uint8_t &byte : data)
      byte = static_cast<uint8_t>(byte & limit);
    picture.data = {data};
    ASSERT_EQ(read_picture(Format::tiff, tiff_by_libtiff(picture, COMPRESSION_LZW), store_number),
              0);
    EXPECT_TRUE(is_held(stored_picture(expect_tiff(picture))));
  }
}

}  // namespace
}  // namespace quorix::testing

#endif
