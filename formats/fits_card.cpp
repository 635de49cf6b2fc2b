// SPDX-License-Identifier: MIT
//
// Cards, the lines of a FITS header, and the kind of value that one has.
#include <cstring>

#include "base/files.h"
#include "formats/fits.h"

namespace quorix {

namespace {

// One pass over a value.
struct KindWalk {
  int32_t count;  // characters that carry a value
  bool in_text;
  bool real;
  bool complex;
};

FitsKind kind_at_end(const KindWalk &walk) {
  if (walk.in_text) return kind_unreadable;
  if (walk.count == 0) return kind_no_value;
  if (walk.complex) return walk.real ? kind_real_complex : kind_integer_complex;
  // Kept: the point alone makes a real, so one that has just an exponent counts as integer.
  return walk.real ? kind_real : kind_integer;
}

}  // namespace

bool read_card(std::FILE *file, FitsCard *card) {
  card->text[card_bytes] = '\0';
  return read_file(file, card->text, card_bytes) == card_bytes;
}

bool card_starts(const FitsCard &card, const char *start) {
  return std::memcmp(card.text, start, std::strlen(start)) == 0;
}

const char *card_value(const FitsCard &card) {
  const char *const found = std::strstr(card.text, "= ");
  return found == nullptr ? nullptr : found + 2;
}

FitsKind fits_value_kind(const char *value) {
  if (value == nullptr) return kind_unreadable;
  KindWalk walk = {};
  for (; *value != '\0' && (walk.in_text || *value != '/'); ++value) {
    if (*value == '\'') {
      if (!walk.in_text) {
        walk.in_text = true;
      } else if (value[1] == '\'') {
        walk.count += 2;
        ++value;
      } else {
        return walk.count != 0 ? kind_text : kind_empty_text;
      }
      continue;
    }
    if (*value == ' ') {
      if (walk.in_text) ++walk.count;
      continue;
    }
    if (!walk.in_text) {
      if (*value == '.') walk.real = true;
      if (*value == '(') walk.complex = true;
      if (*value == 'T' && walk.count == 0) return kind_true;
      if (*value == 'F' && walk.count == 0) return kind_false;
    }
    ++walk.count;
  }
  return kind_at_end(walk);
}

}  // namespace quorix
