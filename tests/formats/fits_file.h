// SPDX-License-Identifier: MIT
//
// FITS files made card by card, and the reader's operations with plain arguments.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

// Cards of 80 characters, padded with blanks and cut.
class FitsFile {
 public:
  FitsFile &card(const std::string &text);
  FitsFile &value(const std::string &keyword, const std::string &value);  // "KEYWORD = value"
  // SIMPLE (or an extension's card), BITPIX, NAXIS and one card an axis.
  FitsFile &image(int32_t bitpix, const std::vector<int32_t> &axes,
                  const std::string &first_card = "SIMPLE  =                    T");
  FitsFile &blanks(int count);                // cards of blanks
  FitsFile &blanks_until(int cards);          // so that this unit has so many cards
  FitsFile &end();                            // END alone; the next card starts a new unit
  FitsFile &data(const Bytes &bytes);         // as they stand
  FitsFile &data_blocks(const Bytes &bytes);  // and zeroes up to a multiple of 2880
  int cards() const { return cards_; }        // of the present unit
  const Bytes &bytes() const { return bytes_; }

 private:
  Bytes bytes_;
  int cards_ = 0;
};

// Bytes that show where they stand.
Bytes counted_bytes(size_t count, uint8_t first = 0);

// Each gives the status.
int32_t open_fits(const std::string &name);
int32_t close_fits();
int32_t fits_number(const std::string &keyword, int32_t type, int32_t *integer, double *real);
int32_t fits_text(const std::string &keyword, int32_t size, std::string *text);
int32_t fits_data(int32_t size, Bytes *bytes);  // the bytes delivered; none unless it succeeds
int32_t select_fits_unit(int32_t number);

// Alone: the kind of a value, an integer, a real, a text; the test fails if there is none.
int32_t fits_kind(const std::string &keyword);
int32_t fits_integer(const std::string &keyword);
double fits_real(const std::string &keyword);
std::string fits_words(const std::string &keyword);

}  // namespace quorix::testing
