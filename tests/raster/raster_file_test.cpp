// SPDX-License-Identifier: MIT
// The raster's own files: every byte of what is written, and what is read from files of every
// depth, kind and size.

#include "tests/raster/raster_page.h"
#include "tests/support/failing_files.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

using RasterFileWriter = RasterTest;
using RasterFileReader = RasterTest;

using Bytes = std::vector<uint8_t>;

Bytes bytes_of(const std::string &text) {
  return {text.begin(), text.end()};
}

Bytes file_of(const std::string &header, const Bytes &pixels) {
  Bytes file = bytes_of(header);
  for (const uint8_t byte : pixels)
    file.push_back(byte);
  return file;
}

// The page as it would be on disk; the status must be 0.
Bytes written_file() {
  const MemoryFiles files;
  int32_t status = 77;
  EXPECT_EQ(qqvfil("picture", 0, &status), 0);
  EXPECT_EQ(status, 0);
  return files.bytes("picture");
}

int32_t read_status(const Bytes &file) {
  MemoryFiles files;
  files.put("picture", file);
  int32_t status = 77;
  EXPECT_EQ(qqvfil("picture", 1, &status), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return status;
}

struct Header {
  int32_t width;
  int32_t height;
  int32_t bits_stored;
  int32_t bytes_per_row;
  int32_t pixel_type = 1;
  int32_t index_offset = 0;
};

std::string padded(int32_t value) {
  std::string text = std::to_string(value);
  text.insert(0, text.size() < 5 ? 5 - text.size() : 0, ' ');
  return text;
}

Bytes make_file(const Header &header, const Bytes &pixels) {
  std::string text = "!Bitmap QUORIX GL  ";
  for (const int32_t field : {header.width, header.height, header.bits_stored, header.bytes_per_row,
                              header.bits_stored, 32, 0, header.pixel_type, header.index_offset}) {
    text += ' ';
    text += padded(field);
  }
  text.resize(80, ' ');
  return file_of(text, pixels);
}

// ---- Writing

TEST_F(RasterFileWriter, GivesAPalettePageEightBitsBehindItsHeader) {
  open_page(3, 2);
  qqvwpx(0, 0, 2);
  qqvwpx(2, 1, 255);
  const Bytes expected = file_of(
      "!Bitmap QUORIX VIRT "
      "    3     2     8     3     8    32     0     1     0"
      "       ",
      {2, 0, 0, 0, 0, 255});
  EXPECT_EQ(written_file(), expected);
}

TEST_F(RasterFileWriter, GivesAnRgbaPageTwentyFourBitsWithoutAlpha) {
  open_rgba_page(2, 2);
  qqvwpx(0, 0, packed_rgb(1, 2, 3));
  qqvwpx(1, 1, packed_rgb(4, 5, 6));
  const Bytes expected = file_of(
      "!Bitmap QUORIX VIRT "
      "    2     2    24     6    24    32     0     5     0"
      "       ",
      {1, 2, 3, 0, 0, 0, 0, 0, 0, 4, 5, 6});
  EXPECT_EQ(written_file(), expected);
}

TEST_F(RasterFileWriter, WritesStrideTimesHeightBytesOrThreePerPixel) {
  open_page(101, 37);
  EXPECT_EQ(written_file().size(), 80U + 101U * 37U);
  open_rgba_page(101, 37);
  EXPECT_EQ(written_file().size(), 80U + 101U * 3U * 37U);
}

TEST_F(RasterFileWriter, KeepsToFiveDigitsWhereARowHasMore) {
  open_rgba_page(33334, 1);
  const Bytes file = written_file();
  EXPECT_EQ(file.size(), 80U + 100002U);
  const std::string fields(file.begin() + 20, file.begin() + 73);
  EXPECT_EQ(fields, "33334     1    24 10000    24    32     0     5     0");
}

TEST_F(RasterFileWriter, DrawsGatheredLinesFirst) {
  open_page(3, 1);
  qqvlin(0, 0, 2, 0);
  const Bytes file = written_file();
  EXPECT_EQ(Bytes(file.begin() + 80, file.end()), (Bytes{1, 1, 1}));
}

TEST_F(RasterFileWriter, TellsAFileThatCannotBeOpened) {
  open_page(3, 1);
  const TemporaryFolder folder;
  int32_t status = 77;
  EXPECT_EQ(qqvfil(folder.file("no such folder/picture").c_str(), 0, &status), 0);
  EXPECT_EQ(status, 1);
  const MemoryFiles files;
  const FailingFiles failing(1, file_open);
  status = 77;
  qqvfil("picture", 0, &status);
  EXPECT_EQ(status, 1);
}

TEST_F(RasterFileWriter, MakesARealFileThatCanBeReadBack) {
  const TemporaryFolder folder;
  const std::string name = folder.file("picture");
  open_rgba_page(3, 2);
  qqvwpx(1, 0, packed_rgb(13, 10, 26));
  int32_t status = 77;
  qqvfil(name.c_str(), 0, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(read_whole_file(name).size(), 98U);
  qqvers();
  qqvfil(name.c_str(), 2, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(rgba_at(1, 0), "0d0a1aff");
  EXPECT_EQ(rgba_at(0, 0), "000000ff");
}

// ---- Reading: what is accepted

TEST_F(RasterFileReader, TellsAFileThatIsNotThere) {
  open_page(3, 2);
  const MemoryFiles files;
  int32_t status = 77;
  EXPECT_EQ(qqvfil("nothing", 1, &status), 0);
  EXPECT_EQ(status, 1);
}

TEST_F(RasterFileReader, RefusesAFileOfAnotherKind) {
  open_page(3, 2);
  Bytes file = make_file({3, 2, 8, 3}, {1, 2, 3, 4, 5, 6});
  file[13] = 'x';
  EXPECT_EQ(read_status(file), 3);
  EXPECT_EQ(read_status({}), 3);
  EXPECT_EQ(read_status(bytes_of("!Bitmap QUORIX")), 3);
  EXPECT_EQ(page_content(), Bytes(6, 0));
}

TEST_F(RasterFileReader, LooksAtFourteenCharactersAlone) {
  open_page(3, 2);
  Bytes file = make_file({3, 2, 8, 3}, {1, 2, 3, 4, 5, 6});
  for (size_t i = 14; i < 20; i++)
    file[i] = 'x';
  EXPECT_EQ(read_status(file), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(RasterFileReader, RefusesOtherDepths) {
  open_page(3, 2);
  for (const int32_t bits : {0, 1, 4, 16, -8, 25, 48})
    EXPECT_EQ(read_status(make_file({3, 2, bits, 3}, {1, 2, 3, 4, 5, 6})), 3) << bits;
  EXPECT_EQ(page_content(), Bytes(6, 0));
}

TEST_F(RasterFileReader, RefusesNegativeSizes) {
  open_page(3, 2);
  EXPECT_EQ(read_status(make_file({-3, 2, 8, 3}, {1, 2, 3, 4, 5, 6})), 3);
  EXPECT_EQ(read_status(make_file({3, -2, 8, 3}, {1, 2, 3, 4, 5, 6})), 3);
  EXPECT_EQ(read_status(make_file({3, 2, 8, -3}, {1, 2, 3, 4, 5, 6})), 3);
  EXPECT_EQ(read_status(make_file({3, 2, 8, 0}, {1, 2, 3, 4, 5, 6})), 3);
  EXPECT_EQ(page_content(), Bytes(6, 0));
}

TEST_F(RasterFileReader, TakesTheFieldsByTheBlanksBetweenThem) {
  open_page(3, 2);
  Bytes file = make_file({3, 2, 8, 3}, {1, 2, 3, 4, 5, 6});
  const std::string fields = "3 +2 8x 3 8 \t32 0 1 0";
  for (size_t i = 0; i < 60; i++)
    file[20 + i] = i < fields.size() ? static_cast<uint8_t>(fields[i]) : ' ';
  EXPECT_EQ(read_status(file), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 3, 4, 5, 6}));
}

// ---- Reading: eight bits

TEST_F(RasterFileReader, LoadsAFileOfItsSizeWhole) {
  open_page(3, 2);
  EXPECT_EQ(read_status(make_file({3, 2, 8, 3}, {1, 2, 3, 4, 5, 6})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(RasterFileReader, LoadsTheUpperLeftPartOfALargerFile) {
  open_page(2, 2);
  EXPECT_EQ(read_status(make_file({3, 3, 8, 3}, {1, 2, 3, 4, 5, 6, 7, 8, 9})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 4, 5}));
}

TEST_F(RasterFileReader, LeavesTheRestBesideASmallerFile) {
  open_page(3, 3);
  qqvfll(0, 0, 2, 2, 9);
  EXPECT_EQ(read_status(make_file({2, 2, 8, 2}, {1, 2, 3, 4})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 9, 3, 4, 9, 9, 9, 9}));
}

TEST_F(RasterFileReader, StaysInTheRowsOfThePageWhereTheRecordTellsOfWiderOnes) {
  open_page(2, 3);
  output_context->page.width = output_context->page.stride = 40;
  EXPECT_EQ(read_status(make_file({3, 2, 8, 3}, {1, 2, 3, 4, 5, 6})), 0);
  const uint8_t *page = output_context->buffers.raster.pixels;
  EXPECT_EQ(Bytes(page, page + 6), (Bytes{1, 2, 4, 5, 0, 0}));
}

TEST_F(RasterFileReader, DoublesTheIndicesOfAnOlderFile) {
  open_page(4, 1);
  EXPECT_EQ(read_status(make_file({4, 1, 8, 4, 0, 0}, {0, 1, 2, 127})), 0);
  EXPECT_EQ(page_content(), (Bytes{0, 1, 3, 253}));
}

TEST_F(RasterFileReader, TakesTheOffsetFromTheIndicesOfAnOlderFile) {
  open_page(4, 1);
  EXPECT_EQ(read_status(make_file({4, 1, 8, 4, 0, 10}, {10, 11, 12, 9})), 0);
  EXPECT_EQ(page_content(), (Bytes{0, 1, 3, 253}));  // -3 as a byte
}

TEST_F(RasterFileReader, DoublesTheIndicesOfAnOlderFileOfAnotherSizeToo) {
  open_page(3, 2);
  EXPECT_EQ(read_status(make_file({2, 2, 8, 2, 0, 0}, {0, 1, 2, 3})), 0);
  EXPECT_EQ(page_content(), (Bytes{0, 1, 0, 3, 5, 0}));
  open_page(1, 2);
  EXPECT_EQ(read_status(make_file({2, 2, 8, 2, 0, 0}, {1, 1, 2, 3})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 3}));
}

TEST_F(RasterFileReader, TakesIndicesOnAnRgbaPageByTheTable) {
  open_rgba_page(2, 1);
  set_option(19, 6);
  EXPECT_EQ(read_status(make_file({2, 1, 8, 2}, {2, 3})), 0);
  EXPECT_EQ(page_content(), (Bytes{255, 0, 0, 6, 0, 255, 0, 6}));
  EXPECT_EQ(read_status(make_file({2, 1, 8, 2, 0, 0}, {1, 3})), 0);  // older: 1 and 5
  EXPECT_EQ(page_content(), (Bytes{255, 255, 255, 6, 255, 255, 0, 6}));
}

TEST_F(RasterFileReader, KeepsTheTransparentColourWhereTheFileHasTheRastersDepth) {
  open_page(3, 1);
  set_option(32, 2);
  EXPECT_EQ(read_status(make_file({2, 1, 8, 2}, {2, 3})), 0);
  EXPECT_EQ(page_content(), (Bytes{2, 3, 0}));
}

TEST_F(RasterFileReader, SkipsTheTransparentColourWhereItConverts) {
  open_page(1, 2);
  qqvfll(0, 0, 0, 1, 9);
  set_option(32, 2);
  EXPECT_EQ(read_status(make_file({2, 2, 8, 2}, {2, 3, 4, 5})), 0);  // a row longer than the page's
  EXPECT_EQ(page_content(), (Bytes{9, 4}));
}

// ---- Reading: 24 and 32 bits

TEST_F(RasterFileReader, GivesTriplesOnAnRgbaPageTheAlphaInForce) {
  open_rgba_page(3, 1);
  set_option(19, 6);
  EXPECT_EQ(read_status(make_file({2, 1, 24, 6, 5}, {1, 2, 3, 4, 5, 6})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 3, 6, 4, 5, 6, 6, 0, 0, 0, 0}));
}

TEST_F(RasterFileReader, StaysInTheRowWhereAWiderFileOfTriplesFitsItsBytes) {
  // A row of 4 pixels has 12 bytes, no more than a row of the page: 3 pixels of 4 bytes.
  open_rgba_page(3, 2);
  EXPECT_EQ(read_status(make_file({4, 1, 24, 12, 5}, {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 1, 1, 255, 2, 2, 2, 255, 3, 3, 3, 255,  //
                                   0, 0, 0, 0,   0, 0, 0, 0,   0, 0, 0, 0}));
}

TEST_F(RasterFileReader, TakesTriplesOnAPalettePageByTheNearestColours) {
  open_page(2, 1);
  EXPECT_EQ(read_status(make_file({2, 1, 24, 6, 5}, {250, 10, 10, 10, 250, 10})), 0);
  EXPECT_EQ(page_content(), (Bytes{2, 3}));
}

TEST_F(RasterFileReader, TakesThirtyTwoBitsByTheirPixelType) {
  const Bytes pixels = {1, 2, 3, 99, 4, 5, 6, 99};
  const struct {
    int32_t type;
    Bytes expected;
  } cases[] = {{5, {1, 2, 3, 255, 4, 5, 6, 255}}, {6, {1, 2, 3, 255, 4, 5, 6, 255}},
               {4, {3, 2, 1, 255, 6, 5, 4, 255}}, {7, {3, 2, 1, 255, 6, 5, 4, 255}},
               {1, {0, 0, 0, 255, 0, 0, 0, 255}}, {8, {0, 0, 0, 255, 0, 0, 0, 255}}};
  for (const auto &c : cases) {
    open_rgba_page(2, 1);
    EXPECT_EQ(read_status(make_file({2, 1, 32, 8, c.type}, pixels)), 0);
    EXPECT_EQ(page_content(), c.expected) << c.type;
  }
}

TEST_F(RasterFileReader, TakesThirtyTwoBitsOnAPalettePageByTheNearestColours) {
  open_page(2, 1);
  EXPECT_EQ(read_status(make_file({2, 1, 32, 8, 4}, {10, 10, 250, 0, 10, 250, 10, 0})), 0);
  EXPECT_EQ(page_content(), (Bytes{2, 3}));
}

TEST_F(RasterFileReader, SkipsTheTransparentColourOfTriplesItConverts) {
  open_rgba_page(2, 1);
  set_option(32, packed_rgb(1, 2, 3));
  EXPECT_EQ(read_status(make_file({2, 1, 32, 8, 5}, {1, 2, 3, 0, 4, 5, 6, 0})), 0);
  EXPECT_EQ(page_content(), (Bytes{0, 0, 0, 0, 4, 5, 6, 255}));
}

// ---- Reading: damage

TEST_F(RasterFileReader, KeepsTheRowsThatAShortFileDoesNotHave) {
  open_page(4, 3);
  qqvfll(0, 0, 3, 2, 9);
  EXPECT_EQ(read_status(make_file({3, 3, 8, 3}, {1, 2, 3})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 3, 9, 9, 9, 9, 9, 9, 9, 9, 9}));
}

TEST_F(RasterFileReader, TakesZerosForTheRestOfARowThatAShortFileBegins) {
  open_page(4, 2);
  qqvfll(0, 0, 3, 1, 9);
  EXPECT_EQ(read_status(make_file({3, 2, 8, 3}, {1, 2, 3, 4})), 0);
  EXPECT_EQ(page_content(), (Bytes{1, 2, 3, 9, 4, 0, 0, 9}));
}

TEST_F(RasterFileReader, TakesRowsThatHoldLessThanTheirWidthSays) {
  open_page(2, 1);
  qqvfll(0, 0, 1, 0, 9);
  EXPECT_EQ(read_status(make_file({2, 1, 24, 3, 5}, {250, 10, 10})), 0);
  EXPECT_EQ(page_content(), (Bytes{2, 0}));
}

TEST_F(RasterFileReader, TakesARowLengthBeyondTheFileForWhatTheFileHolds) {
  open_page(2, 1);
  EXPECT_EQ(read_status(make_file({2, 1, 24, 99999, 5}, {250, 10, 10, 10, 250, 10})), 0);
  EXPECT_EQ(page_content(), (Bytes{2, 3}));
}

TEST_F(RasterFileReader, OfNoRowsOrColumnsChangesNothing) {
  open_page(2, 1);
  qqvfll(0, 0, 1, 0, 9);
  EXPECT_EQ(read_status(make_file({2, 0, 8, 2}, {1, 2})), 0);
  EXPECT_EQ(read_status(make_file({0, 1, 24, 6, 5}, {1, 2, 3, 4, 5, 6})), 0);
  EXPECT_EQ(page_content(), (Bytes{9, 9}));
}

TEST_F(RasterFileReader, DrawsGatheredLinesFirst) {
  open_page(3, 1);
  qqvlin(0, 0, 2, 0);
  EXPECT_EQ(read_status(make_file({2, 1, 8, 2}, {5, 5})), 0);
  EXPECT_EQ(picture_without_flush(), rows({"551"}));
}

}  // namespace
}  // namespace quorix::testing
