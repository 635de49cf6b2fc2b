// SPDX-License-Identifier: MIT
//
// qqfits1, qqfits2 and the numbers that a first header gives.
#include <gtest/gtest.h>

#include "quorix/datafiles.h"
#include "tests/formats/fits_file.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

class FitsHeader : public ::testing::Test {
 protected:
  void TearDown() override { close_fits(); }

  int32_t open(const FitsFile &file) {
    files_.put("a", file.bytes());
    return open_fits("a");
  }

  // The size in bytes of the data that the open file declares.
  static int32_t data_size() { return fits_data(0, nullptr); }

  MemoryFiles files_;
};

TEST_F(FitsHeader, OpensAnImage) {
  EXPECT_EQ(open(FitsFile().image(16, {3, 4}).end()), 0);
  EXPECT_EQ(data_size(), 2 * 3 * 4);
  EXPECT_EQ(close_fits(), 0);
}

TEST_F(FitsHeader, TellsThatAFileCannotBeOpened) {
  EXPECT_EQ(open_fits("missing"), -1);
  EXPECT_EQ(close_fits(), -1) << "nothing is open";
  EXPECT_EQ(open_fits(""), -1);
  EXPECT_EQ(open_fits(std::string(100000, 'n')), -1);
}

TEST_F(FitsHeader, KeepsTheOpenFileWhereAnotherCannotBeOpened) {
  ASSERT_EQ(open(FitsFile().image(8, {5}).end()), 0);
  EXPECT_EQ(open_fits("missing"), -1);
  EXPECT_EQ(data_size(), 5);
  EXPECT_EQ(close_fits(), 0);
}

TEST_F(FitsHeader, ClosesTheFileBeforeWhenAnotherIsOpened) {
  ASSERT_EQ(open(FitsFile().image(8, {5}).end()), 0);
  files_.put("b", FitsFile().image(16, {7}).end().bytes());
  ASSERT_EQ(open_fits("b"), 0);
  EXPECT_EQ(data_size(), 14);
  EXPECT_EQ(files_.open_files(), 1U);
  EXPECT_EQ(close_fits(), 0);
  EXPECT_EQ(files_.open_files(), 0U);
}

TEST_F(FitsHeader, TellsThatNothingIsOpen) {
  EXPECT_EQ(close_fits(), -1);
  int32_t integer = 7;
  double real = 7.5;
  EXPECT_EQ(fits_number("NAXIS", 1, &integer, &real), -3);
  EXPECT_EQ(integer, -1);
  EXPECT_EQ(real, 7.5);
  std::string text;
  EXPECT_EQ(fits_text("NAXIS", 80, &text), -3);
  EXPECT_EQ(fits_data(0, nullptr), -3);
  EXPECT_EQ(fits_data(100, nullptr), -3);
  EXPECT_EQ(select_fits_unit(1), -6);
}

TEST_F(FitsHeader, CanBeClosedOnlyOnce) {
  ASSERT_EQ(open(FitsFile().image(8, {5}).end()), 0);
  EXPECT_EQ(close_fits(), 0);
  EXPECT_EQ(close_fits(), -1);
}

TEST_F(FitsHeader, TellsWhichNumberIsMissing) {
  FitsFile no_bitpix;
  no_bitpix.value("SIMPLE", "T").value("NAXIS", "0").end();
  EXPECT_EQ(open(no_bitpix), -3);
  EXPECT_EQ(close_fits(), 0) << "the file is open";

  FitsFile no_naxis;
  no_naxis.value("SIMPLE", "T").value("BITPIX", "8").end();
  EXPECT_EQ(open(no_naxis), -4);
  EXPECT_EQ(close_fits(), 0);

  FitsFile no_second_axis;
  no_second_axis.value("BITPIX", "8").value("NAXIS", "3").value("NAXIS1", "2");
  no_second_axis.value("NAXIS3", "2").end();
  EXPECT_EQ(open(no_second_axis), -5);
  EXPECT_EQ(close_fits(), 0);

  EXPECT_EQ(open(FitsFile().end()), -3) << "the first that is missing decides";
}

TEST_F(FitsHeader, LetsKeywordsBeReadInAFileThatLacksNumbers) {
  FitsFile file;
  file.value("ANSWER", "42").end();
  ASSERT_EQ(open(file), -3);
  EXPECT_EQ(fits_integer("ANSWER"), 42);
}

TEST_F(FitsHeader, TakesAnEmptyOrShortFileForOneWithoutNumbers) {
  EXPECT_EQ(open(FitsFile()), -3);
  FitsFile short_card;
  short_card.data(Bytes(79, 'B'));
  EXPECT_EQ(open(short_card), -3);
}

TEST_F(FitsHeader, NeedsNoEndOfTheHeader) {
  EXPECT_EQ(open(FitsFile().image(-32, {6})), 0);
  EXPECT_EQ(data_size(), 24);
}

TEST_F(FitsHeader, DropsTheSignOfTheElementSize) {
  const int32_t sizes[][2] = {{8, 1}, {16, 2}, {32, 4}, {64, 8}, {-32, 4}, {-64, 8}, {0, 1},
                              {1, 1}, {7, 1},  {-7, 1}, {-8, 1}, {15, 1},  {17, 2},  {-2, 1}};
  for (const auto &[bitpix, bytes] : sizes) {
    ASSERT_EQ(open(FitsFile().image(bitpix, {3}).end()), 0) << bitpix;
    EXPECT_EQ(data_size(), 3 * bytes) << bitpix;
  }
}

TEST_F(FitsHeader, TakesABitpixOfMinusOneForMissing) {
  EXPECT_EQ(open(FitsFile().image(-1, {3}).end()), -3);
}

TEST_F(FitsHeader, GivesTheSizeOfOneElementWithoutAxes) {
  ASSERT_EQ(open(FitsFile().image(-64, {}).end()), 0);
  EXPECT_EQ(data_size(), 8);
}

TEST_F(FitsHeader, GivesNoDataWhereAnAxisIsZero) {
  ASSERT_EQ(open(FitsFile().image(16, {3, 0, 5}).end()), 0);
  EXPECT_EQ(data_size(), 0);
}

TEST_F(FitsHeader, ReadsAxisNumbersOfUpToThreeDigits) {
  std::vector<int32_t> axes(120, 1);
  axes[8] = 3;
  axes[9] = 5;
  axes[98] = 7;
  axes[99] = 2;
  axes[119] = 4;
  ASSERT_EQ(open(FitsFile().image(8, axes).end()), 0);
  EXPECT_EQ(data_size(), 3 * 5 * 7 * 2 * 4);
}

TEST_F(FitsHeader, IgnoresAxesBeyondTheirCount) {
  FitsFile file;
  file.value("BITPIX", "8").value("NAXIS", "1").value("NAXIS1", "5").value("NAXIS2", "9");
  file.value("NAXIS0", "9").value("NAXISX", "9").value("NAXIS999", "9").end();
  ASSERT_EQ(open(file), 0);
  EXPECT_EQ(data_size(), 5);
}

TEST_F(FitsHeader, LosesAnAxisThatStandsBeforeTheirCount) {
  FitsFile file;
  file.value("BITPIX", "8").value("NAXIS1", "5").value("NAXIS", "1").end();
  EXPECT_EQ(open(file), -5);
}

TEST_F(FitsHeader, TakesTheLastOfRepeatedCards) {
  FitsFile file;
  file.value("BITPIX", "8").value("BITPIX", "16").value("NAXIS", "1").value("NAXIS1", "5");
  file.value("NAXIS1", "6").end();
  ASSERT_EQ(open(file), 0);
  EXPECT_EQ(data_size(), 12);

  FitsFile counted_again;
  counted_again.value("BITPIX", "8").value("NAXIS", "1").value("NAXIS1", "5");
  counted_again.value("NAXIS", "1").end();
  EXPECT_EQ(open(counted_again), -5) << "the axes before are forgotten";
}

TEST_F(FitsHeader, RefusesImpossibleCountsOfAxes) {
  for (const char *count : {"-1", "-2", "-2147483648", "1000", "100000000", "2147483647"}) {
    FitsFile file;
    file.value("BITPIX", "8").value("NAXIS", count).value("NAXIS1", "5").end();
    EXPECT_EQ(open(file), -4) << count;
  }
}

TEST_F(FitsHeader, AcceptsTheLargestCountOfAxes) {
  ASSERT_EQ(open(FitsFile().image(8, std::vector<int32_t>(999, 1)).end()), 0);
  EXPECT_EQ(data_size(), 1);
}

TEST_F(FitsHeader, WantsBlanksBehindBitpixAndNaxis) {
  FitsFile file;
  file.value("BITPIX2", "8").value("BITPIXEL", "16").value("NAXIS", "0").end();
  EXPECT_EQ(open(file), -3);
}

TEST_F(FitsHeader, ReadsNumbersAsFarAsTheyGo) {
  FitsFile file;
  file.card("BITPIX  = 16 / two bytes").card("NAXIS   =    +1abc").card("NAXIS1  =\t 7").end();
  EXPECT_EQ(open(file), -5) << "the last card has no blank behind its equals sign";
  FitsFile blanks;
  blanks.card("BITPIX  =                   16 / two bytes").card("NAXIS   =    +1abc");
  blanks.card("NAXIS1  =                  007.9").end();
  ASSERT_EQ(open(blanks), 0);
  EXPECT_EQ(data_size(), 14);
}

TEST_F(FitsHeader, TakesTheFirstEqualsSignThatABlankFollows) {
  FitsFile file;
  file.card("BITPIX  =8= 16").card("NAXIS   = 1").card("NAXIS1  x y z = 3 = 9").end();
  ASSERT_EQ(open(file), 0);
  EXPECT_EQ(data_size(), 6);
}

TEST_F(FitsHeader, EndsAtAnyCardThatStartsWithEnd) {
  for (const char *word : {"END", "ENDURE  = 7", "END-OF-STORY"}) {
    FitsFile file;
    file.image(8, {5}).card(word).value("BITPIX", "16").end();
    ASSERT_EQ(open(file), 0) << word;
    EXPECT_EQ(data_size(), 5) << word;
  }
}

TEST_F(FitsHeader, CutsCardsAtAZeroByte) {
  FitsFile file;
  Bytes card(80, ' ');
  const std::string words = std::string("BITPIX  ") + '\0' + "= 16";
  std::copy(words.begin(), words.end(), card.begin());
  file.value("BITPIX", "8").value("NAXIS", "0").end();
  Bytes bytes = card;
  bytes.insert(bytes.end(), file.bytes().begin(), file.bytes().end());
  files_.put("a", bytes);
  ASSERT_EQ(open_fits("a"), 0);
  EXPECT_EQ(data_size(), 1);
}

}  // namespace

TEST(FitsFileOnDisk, MayBeMissing) {
  const TemporaryFolder folder;
  EXPECT_EQ(open_fits(folder.file("missing")), -1);
  EXPECT_EQ(open_fits(folder.file("no/folder")), -1);
  EXPECT_EQ(open_fits(folder.file(std::string(100000, 'n'))), -1);
}

TEST(FitsFileOnDisk, GivesItsData) {
  const TemporaryFolder folder;
  FitsFile file;
  // 0x1A and the line ends must come through as they are.
  const Bytes bytes = {0x0D, 0x0A, 0x1A, 0x00, 0xFF, 0x0A, 0x0D};
  file.image(8, {7}).blanks_until(35).end().data_blocks(bytes);
  write_whole_file(folder.file("a.fits"), file.bytes());
  ASSERT_EQ(open_fits(folder.file("a.fits")), 0);
  Bytes data;
  EXPECT_EQ(fits_data(7, &data), 7);
  EXPECT_EQ(data, bytes);
  EXPECT_EQ(close_fits(), 0);
}

}  // namespace quorix::testing
