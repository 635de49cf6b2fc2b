// SPDX-License-Identifier: MIT
//
// Strings of 16-bit units.
#include "base/text.h"

namespace quorix {

size_t length_wide(const uint16_t *text) {
  size_t length = 0;
  while (text[length] != 0)
    ++length;
  return length;
}

size_t copy_wide(uint16_t *destination, const uint16_t *source, size_t limit) {
  size_t length = 0;
  while (length < limit && source[length] != 0) {
    destination[length] = source[length];
    ++length;
  }
  destination[length] = 0;
  return length;
}

size_t append_wide(uint16_t *destination, const uint16_t *source, size_t limit) {
  const size_t length = length_wide(destination);
  if (length >= limit) return length;
  return length + copy_wide(destination + length, source, limit - length);
}

void upper_wide(uint16_t *text) {
  for (; *text != 0; ++text) {
    if (*text >= 'a' && *text <= 'z') *text = static_cast<uint16_t>(*text - 'a' + 'A');
  }
}

int32_t compare_wide(const uint16_t *a, const uint16_t *b) {
  while (*a == *b && *a != 0) {
    ++a;
    ++b;
  }
  return static_cast<int32_t>(*a) - static_cast<int32_t>(*b);
}

}  // namespace quorix
