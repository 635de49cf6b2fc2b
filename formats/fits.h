// SPDX-License-Identifier: MIT
//
// What the FITS reader's files share, grouped by file: cards with their values, and headers.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/memory.h"

namespace quorix {

// ---- fits_card.cpp

inline constexpr int32_t card_bytes = 80;
inline constexpr int32_t keyword_bytes = 8;

// One line of a header. A zero follows, so that searches stop.
struct FitsCard {
  char text[card_bytes + 1];
};

// False if the file has no whole card left.
bool read_card(std::FILE *file, FitsCard *card);

// Whether the card's first characters are those of `start`.
bool card_starts(const FitsCard &card, const char *start);

// What stands after the first "= ", or null if that is missing.
const char *card_value(const FitsCard &card);

enum FitsKind : int32_t {
  kind_integer = 0,
  kind_real = 1,
  kind_empty_text = 2,
  kind_text = 3,
  kind_true = 4,
  kind_false = 5,
  kind_integer_complex = 6,
  kind_real_complex = 7,
  kind_no_value = 8,
  kind_unreadable = 9,  // no "= ", or text without its closing quote
};

// The kind of a value; of null, kind_unreadable.
FitsKind fits_value_kind(const char *value);

// ---- fits_header.cpp

enum FitsUnitType : int32_t { unit_primary = 0, unit_image = 1, unit_ascii = 2, unit_binary = 3 };

inline constexpr int32_t fits_unknown = -1;
inline constexpr int32_t most_axes = 999;  // what three digits of a keyword can number

struct FitsHeader {
  int32_t bitpix;             // fits_unknown until a card says it
  int32_t naxis;              // likewise
  OwnedArray<int32_t> naxes;  // `naxis` lengths, each likewise; empty if naxis is not above 0
  int32_t type;               // FitsUnitType
  int64_t bytes;              // of the header
};

// Reads a header from where the file stands, to its END or to the end of the file. False without
// memory.
bool read_fits_header(std::FILE *file, FitsHeader *header);

// Bytes of the data that a header describes, without padding; a negative number if an axis is
// negative or the product does not fit.
int64_t fits_data_bytes(int32_t bitpix, int32_t naxis, const int32_t *naxes);

}  // namespace quorix
