// SPDX-License-Identifier: MIT
//
// UTF-8 to 16-bit units and back, into room that the caller gives. Used by text_conversion.cpp.
//
// Every function holds each write against the room, and answers what went wrong with one of the
// messages of text.h, or null where nothing did.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// Units of a string that ends in a zero; none is written for the zero. At most `room` are stored.
// Their number comes back in `count`.
const char *decode_utf8(const char *text, uint16_t *units, size_t room, size_t *count);

// Writes the form of one number at `*position` and moves that on. Numbers from 0x10000 on have
// none here: they would need more than three bytes.
const char *encode_utf8(uint32_t number, char *bytes, size_t room, size_t *position);

}  // namespace quorix
