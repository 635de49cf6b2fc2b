// SPDX-License-Identifier: MIT
//
// qqfits4 and qqfits6: raw data, and moving between units.
#include <gtest/gtest.h>

#include <climits>

#include "tests/formats/fits_file.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

constexpr int full_header = 36;  // cards: the padding after such a header comes out right

class FitsUnits : public ::testing::Test {
 protected:
  void TearDown() override { close_fits(); }

  void open(const FitsFile &file) {
    files_.put("a", file.bytes());
    ASSERT_EQ(open_fits("a"), 0);
  }
  static int32_t data_size() { return fits_data(0, nullptr); }

  MemoryFiles files_;
};

// ---- data

TEST_F(FitsUnits, GiveTheirDataAsTheyStand) {
  for (const int32_t bitpix : {8, 16, 32, 64, -32, -64}) {
    const size_t size = static_cast<size_t>(std::abs(bitpix) / 8 * 3 * 5);
    const Bytes bytes = counted_bytes(size, 11);
    FitsFile file;
    file.image(bitpix, {3, 5}).value("BZERO", "32768").value("BSCALE", "2.0");
    open(file.blanks_until(full_header - 1).end().data_blocks(bytes));
    Bytes data;
    EXPECT_EQ(fits_data(static_cast<int32_t>(size), &data), static_cast<int32_t>(size));
    EXPECT_EQ(data, bytes) << bitpix;
  }
}

TEST_F(FitsUnits, TellTheSizeWithoutReading) {
  open(FitsFile().image(16, {3, 5}).end());  // no data follow
  EXPECT_EQ(data_size(), 30);
  EXPECT_EQ(fits_data(30, nullptr), -2);
}

TEST_F(FitsUnits, TellThatABufferIsTooSmall) {
  open(FitsFile().image(16, {3, 5}).blanks_until(35).end().data_blocks(counted_bytes(30)));
  for (const int32_t size : {29, 1, -1, INT_MIN})
    EXPECT_EQ(fits_data(size, nullptr), -1) << size;
  Bytes data;
  EXPECT_EQ(fits_data(1000, &data), 30) << "and a larger one is not filled";
  EXPECT_EQ(data, counted_bytes(30));
}

TEST_F(FitsUnits, TellThatDataAreShort) {
  Bytes bytes = counted_bytes(29);
  open(FitsFile().image(16, {3, 5}).blanks_until(35).end().data(bytes));
  EXPECT_EQ(fits_data(30, nullptr), -2);
  EXPECT_EQ(data_size(), 30);
}

TEST_F(FitsUnits, GiveTheSameDataAgain) {
  open(FitsFile().image(8, {9}).blanks_until(35).end().data_blocks(counted_bytes(9)));
  for (int i = 0; i < 3; ++i) {
    Bytes data;
    EXPECT_EQ(fits_data(9, &data), 9);
    EXPECT_EQ(data, counted_bytes(9));
  }
}

TEST_F(FitsUnits, PadAHeaderByTheRemainderOfItsCards) {
  // kept: a header of n cards is followed by n modulo 36 more, so only multiples of 36, and those
  // with a remainder of 18, lead to the data's true place.
  for (const int cards : {5, 6, 17, 18, 19, 35, 36, 37, 54, 71, 72, 73}) {
    FitsFile file;
    file.image(8, {9}).blanks_until(cards - 1).end();
    const size_t header = file.bytes().size();
    ASSERT_EQ(header, static_cast<size_t>(cards) * 80);
    const Bytes bytes = counted_bytes(80 * 40, 5);
    open(file.data(bytes));
    const auto skipped = static_cast<std::ptrdiff_t>(cards % 36 * 80);
    Bytes data;
    EXPECT_EQ(fits_data(9, &data), 9);
    EXPECT_EQ(data, Bytes(bytes.begin() + skipped, bytes.begin() + skipped + 9)) << cards;
  }
}

TEST_F(FitsUnits, HaveNoSizeThatThirtyTwoBitsCannotTell) {
  for (const auto &axes : {std::vector<int32_t>{65536, 65536},
                           {INT_MAX, INT_MAX, INT_MAX},
                           {INT_MAX, 2},
                           {INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX}}) {
    open(FitsFile().image(8, axes).end());
    EXPECT_EQ(fits_data(1000, nullptr), -1);
    EXPECT_LT(data_size(), 0);
  }
}

TEST_F(FitsUnits, ReadNothingWhereAnAxisIsNegative) {
  open(FitsFile().image(8, {-5}).blanks_until(35).end().data_blocks(counted_bytes(9)));
  EXPECT_LT(fits_data(100, nullptr), 0);
  EXPECT_LT(data_size(), 0);
}

// ---- selecting

// Two images and a table, all headers of 36 cards, with an extension word of this spelling.
FitsFile three_units(const std::string &word) {
  FitsFile file;
  file.image(8, {10}).blanks_until(full_header - 1).end().data_blocks(counted_bytes(10, 1));
  file.image(16, {20}, word + "= 'IMAGE   '").blanks_until(full_header - 1).end();
  file.data_blocks(counted_bytes(40, 2));
  file.image(8, {30, 2}, word + "= 'BINTABLE'").blanks_until(full_header - 1).end();
  file.data_blocks(counted_bytes(60, 3));
  return file;
}

TEST_F(FitsUnits, TakeTheStandardExtensionForAPrimary) {
  open(three_units("XTENSION"));
  // kept: the card is compared with the eight characters EXTENSIO.
  for (const int32_t number : {1, 2, 3})
    EXPECT_EQ(select_fits_unit(number), 0) << number;
}

TEST_F(FitsUnits, TellTheirTypes) {
  open(three_units("EXTENSIO"));
  EXPECT_EQ(select_fits_unit(1), 0);
  EXPECT_EQ(select_fits_unit(2), 1);
  EXPECT_EQ(select_fits_unit(3), 3);
  const struct {
    const char *card;
    int32_t type;
  } rows[] = {{"EXTENSIO= 'TABLE   '", 2}, {"EXTENSION TABLE", 2},
              {"EXTENSIONBINTABLE", 3},    {"EXTENSIO= 'IMAGE BINTABLE'", 1},
              {"EXTENSIO= 'ATABLE'", 2},   {"EXTENSIO= 'nothing'", 0},
              {"EXTENSIVE 'IMAGE'", 0},    {"extensio= 'IMAGE'", 0}};
  for (const auto &row : rows) {
    open(FitsFile().image(8, {}, row.card).end());
    EXPECT_EQ(select_fits_unit(1), row.type) << row.card;
  }
}

TEST_F(FitsUnits, GiveTheirSizesButReadBehindTheFirstHeader) {
  open(three_units("XTENSION"));
  const int32_t sizes[] = {10, 40, 60};
  for (int32_t number = 3; number >= 1; --number) {
    ASSERT_EQ(select_fits_unit(number), 0);
    const int32_t size = sizes[number - 1];
    EXPECT_EQ(data_size(), size);
    Bytes data;
    ASSERT_EQ(fits_data(size, &data), size);
    // kept: the data's place is the length of the unit's own header, counted from the file's start.
    const Bytes all = files_.bytes("a");
    EXPECT_EQ(data, Bytes(all.begin() + 2880, all.begin() + 2880 + size)) << number;
  }
}

TEST_F(FitsUnits, ReadFromTheSelectedHeadersOwnLength) {
  FitsFile file;
  file.image(8, {10}).blanks_until(35).end().data_blocks(counted_bytes(10));
  file.image(8, {7}, "XTENSION= 'IMAGE   '").blanks_until(71).end().data_blocks(counted_bytes(7));
  open(file);
  ASSERT_EQ(select_fits_unit(2), 0);
  Bytes data;
  ASSERT_EQ(fits_data(7, &data), 7);
  EXPECT_EQ(data, Bytes(file.bytes().begin() + 5760, file.bytes().begin() + 5767));
}

TEST_F(FitsUnits, TakeNumbersBelowOneForTheFirst) {
  open(three_units("EXTENSIO"));
  for (const int32_t number : {0, -1, INT_MIN}) {
    EXPECT_EQ(select_fits_unit(number), 0) << number;
    EXPECT_EQ(data_size(), 10);
  }
}

TEST_F(FitsUnits, EndInMissingBitpixBehindTheLast) {
  open(three_units("EXTENSIO"));
  ASSERT_EQ(select_fits_unit(2), 1);
  for (const int32_t number : {4, 5, 1000, INT_MAX}) {
    EXPECT_EQ(select_fits_unit(number), -3) << number;
    // The size is still that of the unit before, and its data begin at the file's start.
    EXPECT_EQ(data_size(), 40);
    Bytes data;
    EXPECT_EQ(fits_data(40, &data), 40);
    EXPECT_EQ(data, Bytes(files_.bytes("a").begin(), files_.bytes("a").begin() + 40));
  }
  EXPECT_EQ(select_fits_unit(3), 3);
}

TEST_F(FitsUnits, TellWhatTheirHeaderLacks) {
  FitsFile file;
  file.image(8, {}).blanks_until(35).end();
  file.value("NAXIS", "0").blanks_until(35).end();                        // 2: no BITPIX
  file.value("BITPIX", "16").blanks_until(35).end();                      // 3: no NAXIS
  file.value("BITPIX", "32").value("NAXIS", "1").blanks_until(35).end();  // 4: no NAXIS1
  open(file);
  EXPECT_EQ(select_fits_unit(2), -3);
  EXPECT_EQ(data_size(), 1);
  EXPECT_EQ(select_fits_unit(3), -4);
  EXPECT_EQ(data_size(), 2) << "the element size was stored all the same";
  EXPECT_EQ(select_fits_unit(4), -5);
  EXPECT_EQ(select_fits_unit(1), 0);
  EXPECT_EQ(data_size(), 1);
}

TEST_F(FitsUnits, AreNotPassedWhereAnAxisIsNegativeOrMissing) {
  FitsFile negative;
  negative.image(8, {-3}).blanks_until(35).end().image(8, {}).end();
  open(negative);
  EXPECT_EQ(select_fits_unit(1), 0);
  EXPECT_EQ(select_fits_unit(2), -1);

  FitsFile two_negative;
  two_negative.image(8, {-3, -3}).blanks_until(35).end().image(8, {}).end();
  open(two_negative);
  EXPECT_EQ(select_fits_unit(2), -1);

  FitsFile huge;
  huge.image(64, {INT_MAX, INT_MAX, INT_MAX}).blanks_until(35).end().image(8, {}).end();
  open(huge);
  EXPECT_EQ(select_fits_unit(2), -1);
}

TEST_F(FitsUnits, MayLieFarBehindTheEnd) {
  FitsFile file;
  file.image(64, {INT_MAX, 2}).blanks_until(35).end();
  open(file);
  EXPECT_EQ(select_fits_unit(2), -3);
}

TEST_F(FitsUnits, HaveNoDataWithoutAxes) {
  FitsFile file;
  file.image(16, {}).blanks_until(35).end();
  file.image(16, {8}, "EXTENSIO= 'IMAGE'").blanks_until(35).end().data_blocks(counted_bytes(16));
  open(file);
  EXPECT_EQ(data_size(), 2) << "one element is there";
  EXPECT_EQ(select_fits_unit(2), 1) << "and none is passed";
  EXPECT_EQ(data_size(), 16);
}

TEST_F(FitsUnits, FollowDataOfWholeBlocksAtOnce) {
  for (const int32_t size : {0, 1, 2879, 2880, 2881, 5760}) {
    FitsFile file;
    file.image(8, {size}).blanks_until(35).end();
    file.data_blocks(counted_bytes(static_cast<size_t>(size)));
    file.image(16, {8}, "EXTENSIO= 'IMAGE'").blanks_until(35).end();
    open(file);
    EXPECT_EQ(select_fits_unit(2), 1) << size;
  }
}

TEST_F(FitsUnits, BeginEarlyWhereThePaddingBeforeIsTakenForShorter) {
  // kept: a header of 10 cards in its block of 36 counts as 20.
  FitsFile file;
  file.image(8, {}).blanks_until(9).end().blanks(26);
  file.image(16, {8}, "EXTENSIO= 'IMAGE'").blanks(31).end();
  open(file);
  // The second unit's header is taken to begin 16 cards early, in the padding, and is longer then.
  EXPECT_EQ(select_fits_unit(2), 1);
  EXPECT_EQ(data_size(), 16);
  EXPECT_EQ(fits_data(16, nullptr), 16);
}

}  // namespace
}  // namespace quorix::testing
