// SPDX-License-Identifier: MIT
//
// Numbers and strings, without the C library's formatted print.
//
// Byte strings and wide strings end in a zero; a wide string is an array of 16-bit units, whatever
// the platform's own wide character is. Two kinds of bound occur, and they differ by one:
//
//   size    cells of the destination, terminator included
//   limit   characters that the finished string may have, so the destination has limit + 1 cells
//
// What does not fit is cut without a word, and the terminator is always written (where `size` is 0
// nothing is). Nothing here follows the locale, keeps state, asks for memory or fails.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// ---- numbers ----

// Fixed-point text of `value`, rounded half up in its size, the last digit by value * 10^ndigits.
//
//   ndigits > 0   that many digits after the point; 0: digits and a bare point; < 0: digits alone.
//                 12 with ndigits 0, -1 and 2 is "12.", "12" and "12.00"
//   width         blanks lead up to this length; 0 or less: none
//
// A value that rounds to zero loses its minus sign, but only where width is 0: with a width the
// column shows from which side it came. At most the last 100 digits are kept. NaN, infinities and
// values whose product with 10^ndigits is no finite number read as zero.
//
// Returns the length of the text.
size_t format_real(double value, int32_t ndigits, char *buffer, size_t size, int32_t width);

// Decimal text of `value`, filled on the left up to `width` (at most size - 1) with zeros where
// zero_fill is 1 and with blanks otherwise. Two kept peculiarities: the sign stands after the fill
// (-5 at width 4 with zeros is "00-5"), and the smallest integer has no digits, it reads "-".
//
// Returns the length of the text.
size_t format_int(int32_t value, char *buffer, size_t size, int32_t width, int32_t zero_fill);

// Appends a number in plain form (width 0, at most 40 characters) to a byte string, after a blank
// unless the string is empty. Return its new length.
size_t append_real(char *destination, double value, int32_t ndigits, size_t limit);
size_t append_int(char *destination, int32_t value, size_t limit);

// The integer in token `index`, counted from 1, of a string whose tokens stand between blanks and
// tabs. One sign may lead; a blank, tab, line feed or the end finishes it; any other character in
// it is passed over, so "-7x9" is -79. Values beyond 32 bits wrap. 0 where there is no such token.
int32_t read_int_token(const char *text, int32_t index);

// ---- byte strings ----

// Appends `source` while the destination stays within `limit`; returns the new length.
size_t append_bytes(char *destination, const char *source, size_t limit);

// Copies at most `limit` bytes of `source`; returns the length copied.
size_t copy_bytes(char *destination, const char *source, size_t limit);

// Turns each "d" and "D" into "e": 1.5d3, as double precision is written elsewhere, becomes 1.5e3.
void exponent_to_e(char *text);

// ---- wide strings ----

size_t append_wide(uint16_t *destination, const uint16_t *source, size_t limit);
size_t copy_wide(uint16_t *destination, const uint16_t *source, size_t limit);

// Capitals for "a" to "z", in place; other letters stay.
void upper_wide(uint16_t *text);

size_t length_wide(const uint16_t *text);

// 0 for equal strings, else the first unequal unit of `a` less that of `b`.
int32_t compare_wide(const uint16_t *a, const uint16_t *b);

}  // namespace quorix
