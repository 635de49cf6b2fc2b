// SPDX-License-Identifier: MIT
//
// Files that cfitsio wrote. Not on Windows, which has no cfitsio.
#ifdef QUORIX_TEST_WITH_CFITSIO

#include <fitsio.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "tests/formats/fits_file.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

// A file that cfitsio writes; every failure of its fails the test.
class WrittenFits {
 public:
  explicit WrittenFits(const std::string &name) {
    check(fits_create_file(&file_, name.c_str(), &status_));
  }
  ~WrittenFits() { EXPECT_EQ(file_, nullptr) << "not closed"; }
  WrittenFits(const WrittenFits &) = delete;
  WrittenFits &operator=(const WrittenFits &) = delete;

  void image(int bitpix, std::vector<long> axes) {
    check(fits_create_img(file_, bitpix, static_cast<int>(axes.size()), axes.data(), &status_));
  }
  template <class T>
  void key(int type, const char *name, T value) {
    check(fits_write_key(file_, type, name, &value, "a comment / with 'quotes'", &status_));
  }
  void text(const char *name, const char *value) {
    check(fits_write_key_str(file_, name, value, "a comment", &status_));
  }
  // Comments until the header, END included, fills its block: then its padding comes out right.
  void fill_header() {
    int keys = 0;
    check(fits_get_hdrspace(file_, &keys, nullptr, &status_));
    for (; keys % 36 != 35; ++keys)
      check(fits_write_comment(file_, "filled", &status_));
  }
  template <class T>
  void pixels(int type, std::vector<T> *values) {
    check(fits_write_img(file_, type, 1, static_cast<LONGLONG>(values->size()), values->data(),
                         &status_));
  }
  void table(int kind, int rows) {
    const char *names[] = {"A", "B"};
    const char *formats[] = {kind == ASCII_TBL ? "I6" : "1J", kind == ASCII_TBL ? "F9.3" : "3D"};
    const char *units[] = {"", "m"};
    check(fits_create_tbl(file_, kind, rows, 2, const_cast<char **>(names),
                          const_cast<char **>(formats), const_cast<char **>(units), "T", &status_));
  }
  void close() {
    check(fits_close_file(file_, &status_));
    file_ = nullptr;
  }

 private:
  void check(int status) { EXPECT_EQ(status, 0); }
  fitsfile *file_ = nullptr;
  int status_ = 0;
};

// The bytes of values, high byte first.
template <class T>
Bytes high_byte_first(const std::vector<T> &values) {
  Bytes bytes;
  for (const T &value : values) {
    const auto *begin = reinterpret_cast<const uint8_t *>(&value);
    bytes.insert(bytes.end(), begin, begin + sizeof(T));
    std::reverse(bytes.end() - sizeof(T), bytes.end());
  }
  return bytes;
}

template <class T>
std::vector<T> random_values(size_t count, RandomNumbers *random) {
  std::vector<T> values;
  for (size_t i = 0; i < count; ++i)
    values.push_back(static_cast<T>(random->between(-100, 120)) / static_cast<T>(3));
  return values;
}

template <class T>
void expect_image(int bitpix, int type, uint32_t seed) {
  const TemporaryFolder folder;
  const std::string name = folder.file("a.fits");
  RandomNumbers random(seed);
  std::vector<T> values = random_values<T>(size_t{17} * 5 * 3, &random);
  WrittenFits file(name);
  file.image(bitpix, {17, 5, 3});
  file.fill_header();
  file.pixels(type, &values);
  file.close();

  ASSERT_EQ(open_fits(name), 0) << bitpix;
  const Bytes expected = high_byte_first(values);
  const auto size = static_cast<int32_t>(expected.size());
  EXPECT_EQ(fits_data(0, nullptr), size);
  Bytes data;
  EXPECT_EQ(fits_data(size, &data), size);
  EXPECT_EQ(data, expected) << bitpix;
  EXPECT_EQ(close_fits(), 0);
}

TEST(CfitsioFile, GivesImagesOfEachElement) {
  expect_image<uint8_t>(BYTE_IMG, TBYTE, 1);
  expect_image<int16_t>(SHORT_IMG, TSHORT, 2);
  expect_image<int32_t>(LONG_IMG, TINT, 3);
  expect_image<long long>(LONGLONG_IMG, TLONGLONG, 4);
  expect_image<float>(FLOAT_IMG, TFLOAT, 5);
  expect_image<double>(DOUBLE_IMG, TDOUBLE, 6);
}

TEST(CfitsioFile, GivesKeywordsOfEachType) {
  const TemporaryFolder folder;
  const std::string name = folder.file("a.fits");
  WrittenFits file(name);
  file.image(SHORT_IMG, {2, 2});
  file.key(TINT, "INTEGER", -12345678);
  file.key(TDOUBLE, "REAL", -2.718281828459045);
  file.key(TDOUBLE, "SMALL", 6.62607015e-34);
  file.key(TDOUBLE, "WHOLE", 4.0);
  file.key(TLOGICAL, "YES", 1);
  file.key(TLOGICAL, "NO", 0);
  file.key(TCOMPLEX, "COMPLEX", std::array<float, 2>{1.5F, -2.5F});
  file.text("TEXT", "NGC 1234");
  file.text("QUOTES", "it's 'quoted' / so");
  file.text("EMPTY", "");
  file.text("LONGWORD", std::string(68, 'w').c_str());
  file.close();

  ASSERT_EQ(open_fits(name), 0);
  EXPECT_EQ(fits_integer("INTEGER"), -12345678);
  EXPECT_EQ(fits_real("INTEGER"), -12345678.0);
  EXPECT_NEAR(fits_real("REAL"), -2.718281828459045, 1e-14) << "fifteen digits are written";
  EXPECT_DOUBLE_EQ(fits_real("SMALL"), 6.62607015e-34);
  EXPECT_EQ(fits_real("WHOLE"), 4.0);
  EXPECT_EQ(fits_kind("WHOLE"), 1);
  EXPECT_EQ(fits_integer("SIMPLE"), 1);
  EXPECT_EQ(fits_integer("YES"), 1);
  EXPECT_EQ(fits_integer("NO"), 0);
  EXPECT_EQ(fits_kind("COMPLEX"), 7);
  EXPECT_EQ(fits_words("TEXT"), "NGC 1234");
  EXPECT_EQ(fits_words("QUOTES"), "it''s ''quoted'' / so");
  EXPECT_EQ(fits_words("EMPTY"), "        ") << "texts are padded to eight characters";
  EXPECT_EQ(fits_words("LONGWORD"), std::string(68, 'w'));
  EXPECT_EQ(fits_integer("BITPIX"), 16);
  EXPECT_EQ(fits_integer("NAXIS2"), 2);
  EXPECT_EQ(fits_kind("COMMENT"), 9);
  EXPECT_EQ(close_fits(), 0);
}

TEST(CfitsioFile, LeadsFromUnitToUnit) {
  const TemporaryFolder folder;
  const std::string name = folder.file("a.fits");
  WrittenFits file(name);
  file.image(BYTE_IMG, {});
  file.fill_header();
  file.image(SHORT_IMG, {100, 7});
  file.fill_header();
  file.table(BINARY_TBL, 11);
  file.fill_header();
  file.table(ASCII_TBL, 5);
  file.fill_header();
  file.image(DOUBLE_IMG, {3, 4, 5});
  file.fill_header();
  file.close();

  ASSERT_EQ(open_fits(name), 0);
  // Rows: an integer and three doubles, 28 bytes; six characters, a blank and nine, 16.
  const int32_t sizes[] = {1, 1400, 11 * 28, 5 * 16, 480};
  for (int32_t unit = 5; unit >= 1; --unit) {
    EXPECT_EQ(select_fits_unit(unit), 0) << "the standard's keyword XTENSION sets no type";
    EXPECT_EQ(fits_data(0, nullptr), sizes[unit - 1]) << unit;
  }
  EXPECT_EQ(select_fits_unit(6), -3);
  EXPECT_EQ(close_fits(), 0);
}

}  // namespace
}  // namespace quorix::testing

#endif
