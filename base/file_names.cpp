// SPDX-License-Identifier: MIT
//
// Names as UTF-8, strictly: overlong forms, surrogates and what lies beyond Unicode are refused.
#include "base/file_names.h"

#include <cstdint>
#include <cstring>

namespace quorix {

namespace {

constexpr uint32_t no_character = UINT32_MAX;
constexpr uint32_t past_characters = 0x110000;
constexpr uint32_t first_surrogate = 0xD800, past_surrogates = 0xE000;
constexpr uint32_t first_low_surrogate = 0xDC00;
constexpr uint32_t first_pair = 0x10000;

// A form of several bytes: what its first byte shows, and the least number that needs it.
struct Form {
  uint32_t mask, mark;
  int32_t more;
  uint32_t least;
};

constexpr Form forms[] = {
    {0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}};

// The character at *text, which moves behind it; no_character where there is no valid one.
uint32_t next_character(const char **text) {
  const auto first = static_cast<uint8_t>(*(*text)++);
  for (const Form &form : forms) {
    if ((first & form.mask) != form.mark) continue;
    uint32_t character = first & ~form.mask & 0xFFU;
    for (int32_t i = 0; i < form.more; ++i) {
      const auto byte = static_cast<uint8_t>(**text);
      if ((byte & 0xC0U) != 0x80) return no_character;
      character = character << 6 | (byte & 0x3FU);
      ++*text;
    }
    const bool valid = character >= form.least && character < past_characters &&
                       (character < first_surrogate || character >= past_surrogates);
    return valid ? character : no_character;
  }
  return no_character;
}

}  // namespace

bool is_wide_name(const char *name) {
  bool wide = false;
  while (*name != '\0') {
    const uint32_t character = next_character(&name);
    if (character == no_character) return false;
    wide = wide || character >= 0x80;
  }
  return wide;
}

// No character has more units than bytes.
OwnedArray<wchar_t> wide_name(const char *name) {
  OwnedArray<wchar_t> wide = allocate_array<wchar_t>(std::strlen(name) + 1);
  if (wide == nullptr) return wide;
  wchar_t *to = wide.get();
  while (*name != '\0') {
    const uint32_t character = next_character(&name);
    if (character < first_pair) {
      *to++ = static_cast<wchar_t>(character);
    } else {
      *to++ = static_cast<wchar_t>(first_surrogate + ((character - first_pair) >> 10));
      *to++ = static_cast<wchar_t>(first_low_surrogate + ((character - first_pair) & 0x3FFU));
    }
  }
  *to = L'\0';
  return wide;
}

}  // namespace quorix
