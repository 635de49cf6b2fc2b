// SPDX-License-Identifier: MIT
//
// The header of a unit: what its data look like and where they begin. A NAXIS outside 0 to 999
// counts as missing.
#include <algorithm>
#include <cstring>

#include "base/leading_numbers.h"
#include "base/numbers.h"
#include "formats/fits.h"

namespace quorix {

namespace {

constexpr int32_t block_cards = 36;
constexpr char axis_keyword[] = "NAXIS";
constexpr size_t axis_number_at = sizeof axis_keyword - 1;  // where NAXISn has its n
constexpr size_t axis_number_digits = 3;

// Sets the number of axes, all of them unknown yet. A number that no header can have leaves it
// unknown. False without memory.
bool set_axis_count(FitsHeader *header, int32_t count) {
  header->naxes.reset();
  header->naxis = count >= 0 && count <= most_axes ? count : fits_unknown;
  if (header->naxis <= 0) return true;
  header->naxes = allocate_array<int32_t>(static_cast<size_t>(count));
  if (header->naxes == nullptr) {
    header->naxis = fits_unknown;
    return false;
  }
  std::fill_n(header->naxes.get(), count, fits_unknown);
  return true;
}

// A length that comes before the number of axes is lost. Kept: files have them in order.
void set_axis_length(FitsHeader *header, const FitsCard &card, int32_t length) {
  char digits[axis_number_digits + 1] = {};
  std::memcpy(digits, card.text + axis_number_at, axis_number_digits);
  const int32_t axis = leading_int(digits);
  if (axis >= 1 && axis <= header->naxis) header->naxes[static_cast<size_t>(axis - 1)] = length;
}

// Kept: cards that say XTENSION do not match, only those that say EXTENSION do.
void set_unit_type(FitsHeader *header, const FitsCard &card) {
  if (std::strstr(card.text, "IMAGE") != nullptr) {
    header->type = unit_image;
  } else if (std::strstr(card.text, "BINTABLE") != nullptr) {
    header->type = unit_binary;
  } else if (std::strstr(card.text, "TABLE") != nullptr) {
    header->type = unit_ascii;
  }
}

// False without memory. A card that lacks its "= " says nothing.
bool take_card(FitsHeader *header, const FitsCard &card) {
  if (card_starts(card, "EXTENSIO")) set_unit_type(header, card);
  const char *const value = card_value(card);
  if (value == nullptr) return true;
  if (card_starts(card, "BITPIX  ")) {
    header->bitpix = leading_int(value);
  } else if (card_starts(card, axis_keyword)) {
    if (card.text[axis_number_at] == ' ') return set_axis_count(header, leading_int(value));
    set_axis_length(header, card, leading_int(value));
  }
  return true;
}

}  // namespace

bool read_fits_header(std::FILE *file, FitsHeader *header) {
  *header = {fits_unknown, fits_unknown, {}, unit_primary, 0};
  int64_t cards = 0;
  for (FitsCard card; read_card(file, &card);) {
    ++cards;
    if (card_starts(card, "END")) {
      // Kept: the remainder itself, not what it lacks of a block. That is right for whole blocks
      // and for those that are half full, and others are read the same way.
      cards += cards % block_cards;
      break;
    }
    if (!take_card(header, card)) return false;
  }
  header->bytes = cards * card_bytes;
  return true;
}

int64_t fits_data_bytes(int32_t bitpix, int32_t naxis, const int32_t *naxes) {
  int64_t bytes = std::max<int64_t>(magnitude(bitpix) / 8, 1);
  bool empty = false;
  bool too_large = false;
  for (int32_t i = 0; i < naxis; ++i) {
    if (naxes[i] < 0) return -1;
    empty = empty || naxes[i] == 0;
    too_large = too_large || __builtin_mul_overflow(bytes, int64_t{naxes[i]}, &bytes);
  }
  if (empty) return 0;
  return too_large ? -1 : bytes;
}

}  // namespace quorix
