// SPDX-License-Identifier: MIT
//
// Bounded copies of byte strings, and what is read from them.
#include <cstring>

#include "base/text.h"

namespace quorix {

namespace {

bool parts_tokens(char c) {
  return c == ' ' || c == '\t';
}

bool ends_number(char c) {
  return parts_tokens(c) || c == '\n' || c == '\0';
}

// The first character of the token with a 1-based index, or the terminator.
const char *find_token(const char *text, int32_t index) {
  while (parts_tokens(*text))
    ++text;
  for (int32_t passed = 1; passed < index && *text != '\0'; ++passed) {
    while (*text != '\0' && !parts_tokens(*text))
      ++text;
    while (parts_tokens(*text))
      ++text;
  }
  return text;
}

}  // namespace

size_t copy_bytes(char *destination, const char *source, size_t limit) {
  size_t length = 0;
  while (length < limit && source[length] != '\0') {
    destination[length] = source[length];
    ++length;
  }
  destination[length] = '\0';
  return length;
}

size_t append_bytes(char *destination, const char *source, size_t limit) {
  const size_t length = std::strlen(destination);
  if (length >= limit) return length;
  return length + copy_bytes(destination + length, source, limit - length);
}

void exponent_to_e(char *text) {
  for (; *text != '\0'; ++text) {
    if (*text == 'd' || *text == 'D') *text = 'e';
  }
}

int32_t read_int_token(const char *text, int32_t index) {
  if (index < 1) return 0;
  const char *next = find_token(text, index);
  const bool negative = *next == '-';  // passed over below like whatever is no digit
  uint32_t number = 0;
  for (; !ends_number(*next); ++next) {
    if (*next >= '0' && *next <= '9') number = number * 10 + static_cast<uint32_t>(*next - '0');
  }
  return static_cast<int32_t>(negative ? 0 - number : number);
}

}  // namespace quorix
