// SPDX-License-Identifier: MIT
//
// A slow reader of FITS files in memory, one step after another. What
// qqfits1 to qqfits6 give is compared with it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

// A unit's header as far as it is looked at.
struct LiteralUnit {
  int32_t bitpix = -1;
  int32_t naxis = -1;
  std::vector<int32_t> naxes;
  int64_t header_bytes = 0;
  int32_t type = 0;

  bool lacks_an_axis() const;
  // Bytes of one element times all axes; -1 where an axis has a negative length.
  int64_t data_bytes() const;
};

class LiteralFits {
 public:
  explicit LiteralFits(const std::vector<uint8_t> &file) : file_(file) {}

  int32_t open();  // as qqfits1
  // As qqfits3: `integer` is always set, `real` only where a real is delivered.
  int32_t number(const std::string &keyword, int32_t type, int32_t *integer, double *real) const;
  int32_t text(const std::string &keyword, int32_t size, std::string *text) const;  // as qqfits5
  int32_t data(int32_t size, std::vector<uint8_t> *bytes) const;                    // as qqfits4
  int32_t select(int32_t number);                                                   // as qqfits6

 private:
  // The card at a position, cut at its first zero byte; false where the file has no 80 bytes there.
  bool card_at(int64_t position, std::string *card) const;
  LiteralUnit header_at(int64_t position, bool extensions) const;
  bool find(const std::string &keyword, std::string *card) const;

  const std::vector<uint8_t> &file_;
  int32_t bitpix_ = -1;
  int32_t naxis_ = -1;
  std::vector<int32_t> naxes_;
  int64_t data_offset_ = 0;
};

// The kind, 0 to 9, of the value on a card.
int32_t literal_value_kind(const std::string &card);

}  // namespace quorix::testing
