// SPDX-License-Identifier: MIT
//
// UTF-8 to 16-bit units and back, into room that the caller gives. Used by text_conversion.cpp.
//
// Both hold each write against the room, and answer what became of the conversion.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/text_conversion.h"

namespace quorix {

// Units of a string that ends in a zero; none is written for the zero. At most `room` are stored.
// Their number comes back in `count`.
TextStatus decode_utf8(const char *text, uint16_t *units, size_t room, size_t *count);

// Writes the form of one number at `*position` and moves that on. Numbers from 0x10000 on have
// none here: they would need more than three bytes.
TextStatus encode_utf8(uint32_t number, char *bytes, size_t room, size_t *position);

}  // namespace quorix
