// SPDX-License-Identifier: MIT
//
// Between the caller's byte strings and 16-bit text: one function per charset and direction, and
// the two operations that find the memory, choose and report.
#include <cstring>

#include "base/code_pages.h"
#include "base/memory.h"
#include "base/text.h"
#include "base/utf8.h"

namespace quorix {

namespace {

void say_nothing(WidgetSystem *, const char *) {}

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
const char *decode_into(const char *text, int32_t charset, size_t room, uint16_t *units) {
  if (is_single_byte(charset)) {
    decode_bytes(text, code_page(charset), units);
    return nullptr;
  }
  size_t count = 0;
  const char *problem = decode_utf8(text, units, room, &count);
  if (problem == nullptr) units[count] = 0;
  return problem;
}

// `room` includes the terminator.
const char *encode_into(const uint16_t *text, int32_t charset, size_t room, char *bytes) {
  if (charset == charset_latin1) {
    encode_low_bytes(text, bytes);
    return nullptr;
  }
  if (is_single_byte(charset)) {
    encode_code_page(text, code_page(charset), bytes);
    return nullptr;
  }
  size_t position = 0;
  for (; *text != 0; ++text) {
    const char *problem = encode_utf8(*text, bytes, room, &position);
    if (problem != nullptr) return problem;
  }
  if (position >= room) return message_string_full;
  bytes[position] = '\0';
  return nullptr;
}

}  // namespace

void (*report_text_error)(WidgetSystem *system, const char *message) = say_nothing;

uint16_t *decode_text(WidgetSystem *system, const char *text, int32_t charset) {
  const size_t length = std::strlen(text);
  OwnedArray<uint16_t> units = allocate_array<uint16_t>(length + 1);
  const char *problem =
      units == nullptr ? message_no_memory : decode_into(text, charset, length, units.get());
  if (problem == nullptr) return units.release();
  report_text_error(system, problem);
  return nullptr;
}

char *encode_text(WidgetSystem *system, const uint16_t *text, int32_t charset) {
  // Half the address space at most is units, so three bytes for each do not overflow unnoticed.
  const size_t bytes_per_unit = charset == charset_latin1 ? 1 : 3;
  size_t payload = 0;
  const bool fits = checked_product(&payload, length_wide(text), bytes_per_unit);
  const size_t room = payload + 1;
  OwnedArray<char> bytes;
  if (fits) bytes = allocate_array<char>(room);
  const char *problem =
      bytes == nullptr ? message_no_memory : encode_into(text, charset, room, bytes.get());
  if (problem == nullptr) return bytes.release();
  report_text_error(system, problem);
  return nullptr;
}

}  // namespace quorix
