// SPDX-License-Identifier: MIT
//
// One function per charset and direction, and the two conversions that find the memory and choose.
#include "base/text_conversion.h"

#include <cstring>
#include <utility>

#include "base/code_pages.h"
#include "base/text.h"
#include "base/utf8.h"

namespace quorix {

namespace {

// Bytes below `first` are units of the same value, the others stand in the table.
void decode_bytes(const char *text, CodePage page, uint16_t *units) {
  for (; *text != '\0'; ++text) {
    const uint8_t byte = static_cast<uint8_t>(*text);
    *units++ = byte < page.first ? byte : page.units[byte - page.first];
  }
  *units = 0;
}

char byte_for_unit(uint16_t unit, CodePage page) {
  if (unit < page.first) return static_cast<char>(unit);
  for (uint32_t byte = page.first; byte < 256; ++byte) {
    if (page.units[byte - page.first] == unit) return static_cast<char>(byte);
  }
  return ' ';
}

void encode_low_bytes(const uint16_t *text, char *bytes) {
  for (; *text != 0; ++text)
    *bytes++ = static_cast<char>(*text & 0xFF);
  *bytes = '\0';
}

void encode_code_page(const uint16_t *text, CodePage page, char *bytes) {
  for (; *text != 0; ++text)
    *bytes++ = byte_for_unit(*text, page);
  *bytes = '\0';
}

bool is_single_byte(int32_t charset) {
  return charset == charset_latin1 || charset == charset_cyrillic || charset == charset_greek;
}

// `room` is without the terminator's cell.
TextStatus decode_into(const char *text, int32_t charset, size_t room, uint16_t *units) {
  if (is_single_byte(charset)) {
    decode_bytes(text, code_page(charset), units);
    return TextStatus::done;
  }
  size_t count = 0;
  const TextStatus status = decode_utf8(text, units, room, &count);
  if (status == TextStatus::done) units[count] = 0;
  return status;
}

// `room` is without the terminator's cell.
TextStatus encode_into(const uint16_t *text, int32_t charset, size_t room, char *bytes) {
  if (charset == charset_latin1) {
    encode_low_bytes(text, bytes);
    return TextStatus::done;
  }
  if (is_single_byte(charset)) {
    encode_code_page(text, code_page(charset), bytes);
    return TextStatus::done;
  }
  size_t position = 0;
  TextStatus status = TextStatus::done;
  for (; *text != 0 && status == TextStatus::done; ++text)
    status = encode_utf8(*text, bytes, room, &position);
  bytes[position] = '\0';
  return status;
}

}  // namespace

const char *text_status_words(TextStatus status) {
  switch (status) {
    case TextStatus::no_memory:
      return "Not enough memory";
    case TextStatus::bad_utf8:
      return "Syntax error in UTF string";
    case TextStatus::array_full:
      return "Not enough space in array";
    case TextStatus::string_full:
      return "Not enough space in string";
    case TextStatus::number_too_big:
      return "Number too big for UTF8 conversion";
    case TextStatus::done:
      break;
  }
  return "";
}

TextStatus decode_text(const char *text, int32_t charset, OwnedArray<uint16_t> *units) {
  const size_t length = std::strlen(text);
  *units = allocate_array<uint16_t>(length + 1);
  if (*units == nullptr) return TextStatus::no_memory;
  const TextStatus status = decode_into(text, charset, length, units->get());
  if (status != TextStatus::done) units->reset();
  return status;
}

TextStatus encode_text(const uint16_t *text, int32_t charset, OwnedArray<char> *bytes) {
  // Half the address space at most is units, so three bytes for each do not overflow unnoticed.
  const size_t bytes_per_unit = charset == charset_latin1 ? 1 : 3;
  size_t room = 0;
  bytes->reset();
  if (!checked_product(&room, length_wide(text), bytes_per_unit)) return TextStatus::no_memory;
  *bytes = allocate_array<char>(room + 1);
  if (*bytes == nullptr) return TextStatus::no_memory;
  const TextStatus status = encode_into(text, charset, room, bytes->get());
  if (status != TextStatus::done) bytes->reset();
  return status;
}

}  // namespace quorix
