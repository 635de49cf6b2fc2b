// SPDX-License-Identifier: MIT
//
// Decimal digits to the nearest double, the even one of two: exact for any number of digits,
// without memory, and the same from every C library.
#pragma once

namespace quorix {

// Reads digits, one decimal point among them and an exponent: "12", "1.5", ".5", "5.", "1e-3".
// An exponent without digits is not part of the number. There is no sign and no space in front.
//
// Returns where the number ends, `text` itself if it has no digit; `number` is then left alone.
// What is too large becomes infinity, what is too small 0.
const char *read_nearest_real(const char *text, double *number);

}  // namespace quorix
