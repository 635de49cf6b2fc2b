// SPDX-License-Identifier: MIT
//
// The slow reader: it holds the whole file and looks at one card after another.
#include "tests/formats/literal_fits.h"

#include <algorithm>
#include <cstdlib>

namespace quorix::testing {

namespace {

constexpr int64_t card_bytes = 80;
constexpr int64_t block_bytes = 2880;

bool starts_with(const std::string &card, const std::string &words) {
  return card.compare(0, words.size(), words) == 0;
}

// What stands behind the first "= "; false where there is none.
bool value_text(const std::string &card, std::string *text) {
  const size_t place = card.find("= ");
  if (place == std::string::npos) return false;
  *text = card.substr(place + 2);
  return true;
}

void read_integer(const std::string &card, int32_t *value) {
  std::string text;
  if (value_text(card, &text)) *value = std::atoi(text.c_str());
}

void look_at_axis_card(const std::string &card, LiteralUnit *unit) {
  if (card.size() > 5 && card[5] == ' ') {
    std::string text;
    if (!value_text(card, &text)) return;  // a card without a value says nothing
    const int32_t count = std::atoi(text.c_str());
    const bool possible = count >= 0 && count <= 999;
    unit->naxis = possible ? count : -1;
    unit->naxes.assign(possible ? static_cast<size_t>(count) : 0, -1);
    return;
  }
  std::string digits = card.substr(5, 3);
  digits = digits.substr(0, digits.find(' '));
  const int axis = std::atoi(digits.c_str());
  if (axis >= 1 && axis <= unit->naxis)
    read_integer(card, &unit->naxes[static_cast<size_t>(axis - 1)]);
}

}  // namespace

bool LiteralUnit::lacks_an_axis() const {
  return std::count(naxes.begin(), naxes.end(), -1) > 0;
}

int64_t LiteralUnit::data_bytes() const {
  int64_t bytes = std::abs(bitpix / 8);
  if (bytes == 0) bytes = 1;
  for (const int32_t length : naxes) {
    if (length < 0) return -1;
    bytes *= length;
  }
  return bytes;
}

bool LiteralFits::card_at(int64_t position, std::string *card) const {
  if (position < 0 || position + card_bytes > static_cast<int64_t>(file_.size())) return false;
  const auto begin = file_.begin() + position;
  card->assign(begin, std::find(begin, begin + card_bytes, 0));
  return true;
}

LiteralUnit LiteralFits::header_at(int64_t position, bool extensions) const {
  LiteralUnit unit;
  int64_t cards = 0;
  std::string card;
  while (card_at(position + unit.header_bytes, &card)) {
    ++cards;
    unit.header_bytes += card_bytes;
    if (starts_with(card, "BITPIX  ")) {
      read_integer(card, &unit.bitpix);
    } else if (starts_with(card, "NAXIS")) {
      look_at_axis_card(card, &unit);
    } else if (extensions && starts_with(card, "EXTENSIO")) {
      if (card.find("IMAGE") != std::string::npos) {
        unit.type = 1;
      } else if (card.find("BINTABLE") != std::string::npos) {
        unit.type = 3;
      } else if (card.find("TABLE") != std::string::npos) {
        unit.type = 2;
      }
    }
    if (starts_with(card, "END")) {
      unit.header_bytes += cards % 36 * card_bytes;
      break;
    }
  }
  return unit;
}

int32_t LiteralFits::open() {
  const LiteralUnit unit = header_at(0, false);
  bitpix_ = unit.bitpix;
  naxis_ = unit.naxis;
  naxes_ = unit.naxes;
  data_offset_ = unit.header_bytes;
  if (bitpix_ == -1) return -3;
  if (naxis_ == -1) return -4;
  return unit.lacks_an_axis() ? -5 : 0;
}

bool LiteralFits::find(const std::string &keyword, std::string *card) const {
  std::string wanted = keyword.substr(0, 8);
  wanted.resize(8, ' ');
  for (int64_t position = 0; card_at(position, card); position += card_bytes) {
    if (starts_with(*card, wanted)) return true;
    if (starts_with(*card, "END")) return false;
  }
  return false;
}

int32_t literal_value_kind(const std::string &card) {
  std::string text;
  if (!value_text(card, &text)) return 9;
  int count = 0;
  bool inside = false;
  bool real = false;
  bool complex = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '/' && !inside) break;
    if (c == '\'') {
      if (!inside) {
        inside = true;
      } else if (i + 1 < text.size() && text[i + 1] == '\'') {
        count += 2;
        ++i;
      } else {
        return count != 0 ? 3 : 2;
      }
    } else if (c == ' ') {
      if (inside) ++count;
    } else {
      if (!inside) {
        if (c == '.') real = true;
        if (c == '(') complex = true;
        if (c == 'T' && count == 0) return 4;
        if (c == 'F' && count == 0) return 5;
      }
      ++count;
    }
  }
  if (inside) return 9;
  if (count == 0) return 8;
  if (complex) return real ? 7 : 6;
  return real ? 1 : 0;
}

int32_t LiteralFits::number(const std::string &keyword, int32_t type, int32_t *integer,
                            double *real) const {
  *integer = -1;
  std::string card;
  if (!find(keyword, &card)) return -1;
  const int32_t kind = literal_value_kind(card);
  if (type == 3) {
    *integer = kind;
    return 0;
  }
  std::string text;
  value_text(card, &text);
  if (type == 1) {
    if (kind != 0 && kind != 4 && kind != 5) return -2;
    *integer = kind == 0 ? std::atoi(text.c_str()) : kind == 4 ? 1 : 0;
    return 0;
  }
  if (kind != 0 && kind != 1) return -2;
  *real = std::atof(text.c_str());
  return 0;
}

int32_t LiteralFits::text(const std::string &keyword, int32_t size, std::string *text) const {
  std::string card;
  if (!find(keyword, &card)) return -1;
  const int32_t kind = literal_value_kind(card);
  if (kind != 2 && kind != 3) return -2;
  text->clear();
  std::string value;
  value_text(card, &value);
  const size_t start = value.find('\'') + 1;
  for (size_t i = start; kind == 3; ++i) {
    if (static_cast<int32_t>(text->size()) >= size - 1) return -4;
    if (value[i] == '\'') {
      if (i + 1 >= value.size() || value[i + 1] != '\'') break;
      *text += value[i++];
      if (static_cast<int32_t>(text->size()) >= size - 1) return -4;
    }
    *text += value[i];
  }
  return 0;
}

int32_t LiteralFits::data(int32_t size, std::vector<uint8_t> *bytes) const {
  LiteralUnit unit;
  unit.bitpix = bitpix_;
  unit.naxes = naxes_;
  const int64_t needed = unit.data_bytes();
  if (needed < 0) return -1;
  if (size == 0 || size < needed) return size == 0 ? static_cast<int32_t>(needed) : -1;
  if (needed == 0) {  // nothing to read is never too little, even behind the file's end
    bytes->clear();
    return 0;
  }
  if (data_offset_ + needed > static_cast<int64_t>(file_.size())) return -2;
  bytes->assign(file_.begin() + data_offset_, file_.begin() + data_offset_ + needed);
  return static_cast<int32_t>(needed);
}

int32_t LiteralFits::select(int32_t number) {
  int64_t position = 0;
  for (int32_t count = 1;; ++count) {
    const LiteralUnit unit = header_at(position, true);
    const bool past_the_end = position >= static_cast<int64_t>(file_.size());
    if (count >= number || past_the_end) {
      data_offset_ = unit.header_bytes;
      if (unit.bitpix == -1) return -3;
      bitpix_ = unit.bitpix;
      if (unit.naxis == -1) return -4;
      naxis_ = unit.naxis;
      naxes_ = unit.naxes;
      return unit.lacks_an_axis() ? -5 : unit.type;
    }
    int64_t bytes = unit.naxis > 0 ? unit.data_bytes() : 0;
    if (bytes < 0) return -1;
    bytes = (bytes + block_bytes - 1) / block_bytes * block_bytes;
    position += unit.header_bytes + bytes;
  }
}

}  // namespace quorix::testing
