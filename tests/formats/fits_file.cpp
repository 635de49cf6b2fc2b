// SPDX-License-Identifier: MIT
//
// Puts a FITS file together card by card, and calls the operations.
#include "tests/formats/fits_file.h"

#include <gtest/gtest.h>

#include "quorix/datafiles.h"

namespace quorix::testing {

FitsFile &FitsFile::card(const std::string &text) {
  std::string padded = text;
  padded.resize(80, ' ');
  bytes_.insert(bytes_.end(), padded.begin(), padded.end());
  ++cards_;
  return *this;
}

FitsFile &FitsFile::value(const std::string &keyword, const std::string &value) {
  std::string name = keyword;
  name.resize(8, ' ');
  return card(name + "= " + value);
}

FitsFile &FitsFile::image(int32_t bitpix, const std::vector<int32_t> &axes,
                          const std::string &first_card) {
  card(first_card);
  value("BITPIX", std::to_string(bitpix));
  value("NAXIS", std::to_string(axes.size()));
  for (size_t i = 0; i < axes.size(); ++i)
    value("NAXIS" + std::to_string(i + 1), std::to_string(axes[i]));
  return *this;
}

FitsFile &FitsFile::blanks(int count) {
  for (int i = 0; i < count; ++i)
    card("");
  return *this;
}

FitsFile &FitsFile::blanks_until(int cards) {
  return blanks(cards - cards_);
}

FitsFile &FitsFile::end() {
  card("END");
  cards_ = 0;
  return *this;
}

FitsFile &FitsFile::data(const Bytes &bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

FitsFile &FitsFile::data_blocks(const Bytes &bytes) {
  data(bytes);
  bytes_.resize(bytes_.size() + (2880 - bytes.size() % 2880) % 2880, 0);
  return *this;
}

Bytes counted_bytes(size_t count, uint8_t first) {
  Bytes bytes(count);
  for (size_t i = 0; i < count; ++i)
    bytes[i] = static_cast<uint8_t>(first + i * 7 + i / 256);
  return bytes;
}

int32_t open_fits(const std::string &name) {
  int32_t status = 99;
  EXPECT_EQ(qqfits1(name.c_str(), &status), 0);
  return status;
}

int32_t close_fits() {
  int32_t status = 99;
  EXPECT_EQ(qqfits2(&status), 0);
  return status;
}

int32_t fits_number(const std::string &keyword, int32_t type, int32_t *integer, double *real) {
  int32_t status = 99;
  EXPECT_EQ(qqfits3(keyword.c_str(), integer, real, &type, &status), 0);
  return status;
}

int32_t fits_text(const std::string &keyword, int32_t size, std::string *text) {
  int32_t status = 99;
  constexpr char untouched = '\x7E';
  // Exactly the room that is asked for, so that a sanitizer sees what goes beyond it.
  std::vector<char> buffer(static_cast<size_t>(size > 0 ? size : 0), untouched);
  char none = untouched;
  char *room = buffer.empty() ? &none : buffer.data();
  EXPECT_EQ(qqfits5(keyword.c_str(), room, &size, &status), 0);
  EXPECT_EQ(none, untouched);
  if (text == nullptr || (status != 0 && status != -4)) return status;
  text->clear();
  size_t length = 0;
  while (length < buffer.size() && buffer[length] != '\0')
    ++length;
  EXPECT_TRUE(buffer.empty() || length < buffer.size()) << "the text has no end";
  text->assign(buffer.data(), length);
  return status;
}

int32_t fits_data(int32_t size, Bytes *bytes) {
  int32_t result = 99;
  Bytes buffer(static_cast<size_t>(size > 0 ? size : 1));
  EXPECT_EQ(qqfits4(buffer.data(), &size, &result), 0);
  if (result >= 0 && size > 0 && bytes != nullptr)
    bytes->assign(buffer.begin(), buffer.begin() + result);
  return result;
}

int32_t select_fits_unit(int32_t number) {
  int32_t result = 99;
  EXPECT_EQ(qqfits6(&number, &result), 0);
  return result;
}

int32_t fits_kind(const std::string &keyword) {
  int32_t kind = 99;
  double real = 0;
  EXPECT_EQ(fits_number(keyword, 3, &kind, &real), 0) << keyword;
  return kind;
}

int32_t fits_integer(const std::string &keyword) {
  int32_t value = 99;
  double real = 0;
  EXPECT_EQ(fits_number(keyword, 1, &value, &real), 0) << keyword;
  return value;
}

double fits_real(const std::string &keyword) {
  int32_t integer = 99;
  double value = 0;
  EXPECT_EQ(fits_number(keyword, 2, &integer, &value), 0) << keyword;
  return value;
}

std::string fits_words(const std::string &keyword) {
  std::string text;
  EXPECT_EQ(fits_text(keyword, 81, &text), 0) << keyword;
  return text;
}

}  // namespace quorix::testing
